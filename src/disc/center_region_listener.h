#pragma once

#include "disc/wedge_texts.h"
#include "disc/wedge_tool.h"
#include "korvane/center_tool.h"

namespace Korvane {

/// The wedge that brings a point of the scene to the middle of the view.
class CenterRegionListener : public ToolRegionListener<CenterTool> {
 public:
  /// The text of the pivot ball.
  CenterRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabel);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  WedgeTexts<1> offModelHUD;
};

}  // namespace Korvane
