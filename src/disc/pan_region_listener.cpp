#include "disc/pan_region_listener.h"

namespace Korvane {

PanRegionListener::PanRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : ToolRegionListener(menu, helmDisc) {}

void PanRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this).HideMenu().Then([&] { tool->OnMouseDown(x, y); });
}

}  // namespace Korvane
