#include "korvane/track_menu.h"

namespace Korvane {

TrackMenu::TrackMenu() = default;
TrackMenu::~TrackMenu() = default;

void TrackMenu::OnMouseMove(int /*x*/, int /*y*/) {}
TrackMenu::Region& TrackMenu::GetActiveRegion() { return activeRegion; }

}  // namespace Korvane
