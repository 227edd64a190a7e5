#pragma once

#include "disc/wedge_texts.h"
#include "disc/wedge_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"

namespace Korvane {

/// The wedge that looks around and moves by the arrow keys, or, with Shift, flies in front of a face.
class LookMoveRegionListener : public ShiftToolRegionListener<LookMoveTool, LookAtTool> {
 public:
  LookMoveRegionListener(TrackMenu* menu, HelmDisc* helmDisc, bool lookAt);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnKeyDown(KeyID key) override;
  void OnKeyUp(KeyID key) override;
  void OnTrackMenuActivate(bool active) override;

 protected:
  Tool& GetToolOfMode() override;

 private:
  enum Text : int { TEXT_KEYS, TEXT_LOOK, TEXT_LOOK_AT };

  void ChangeRegion();
  void PrepareLook();
  void RefreshSpeed();

  WedgeTexts<3> texts;
};

}  // namespace Korvane
