#include "disc/menu_region_listener.h"

#include "korvane/track_menu.h"

namespace Korvane {

void MenuRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  IgnoreMouse(true);
}

void MenuRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  IgnoreMouse(false);
  if (TrackMenu* const menu = GetTrackMenu()) menu->OpenMenu();
}

}  // namespace Korvane
