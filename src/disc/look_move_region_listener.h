#pragma once

#include "disc/wedge_texts.h"
#include "disc/wedge_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"

namespace Korvane {

/// The wedge that looks around and moves by the arrow keys, or, with Shift, flies in front of a face.
class LookMoveRegionListener : public DiscRegionListener {
 public:
  LookMoveRegionListener(TrackMenu* menu, HelmDisc* helmDisc, bool lookAt);

  void OnMouseMove(int x, int y) override;
  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnKeyDown(KeyID key) override;
  void OnKeyUp(KeyID key) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  enum Mode : int { MODE_LOOK = 0, MODE_LOOK_AT = 1 };
  enum Text : int { TEXT_KEYS, TEXT_LOOK, TEXT_LOOK_AT };

  bool IsAnimating() { return lookTool.IsAnimating() || lookAtTool.IsAnimating(); }
  Tool& GetToolOfMode();
  void ChangeRegion();
  void PrepareLook();
  void RefreshSpeed();

  const bool allowLookAt;
  Mode mode = MODE_LOOK;
  WedgeTexts<3> texts;
  WedgeTool<LookMoveTool> lookTool;
  WedgeTool<LookAtTool> lookAtTool;
};

}  // namespace Korvane
