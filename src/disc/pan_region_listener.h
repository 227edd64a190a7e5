#pragma once

#include "disc/wedge_tool.h"
#include "korvane/pan_tool.h"

namespace Korvane {

/// The wedge that pans.
class PanRegionListener : public ToolRegionListener<PanTool> {
 public:
  PanRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
};

}  // namespace Korvane
