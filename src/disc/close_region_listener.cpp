#include "disc/close_region_listener.h"

#include "korvane/helm_disc.h"

namespace Korvane {

void CloseRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  IgnoreMouse(true);
}

void CloseRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  IgnoreMouse(false);
  if (HelmDisc* const owner = GetDisc()) owner->SetActiveDisc(DiscType::None);
}

}  // namespace Korvane
