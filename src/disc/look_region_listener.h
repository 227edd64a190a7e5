#pragma once

#include "disc/wedge_tool.h"
#include "korvane/look_tool.h"

namespace Korvane {

/// The wedge that turns the camera on the spot.
class LookRegionListener : public ToolRegionListener<LookTool> {
 public:
  LookRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
};

}  // namespace Korvane
