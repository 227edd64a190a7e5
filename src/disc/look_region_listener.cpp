#include "disc/look_region_listener.h"

namespace Korvane {

LookRegionListener::LookRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : ToolRegionListener(menu, helmDisc) {}

void LookRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this).HideMenu().Then([&] {
    tool->SetInvertVerticalAxis(IsSet(&HelmDiscParameters::invertLookVertical));
    tool->OnMouseDown(x, y);
  });
}

}  // namespace Korvane
