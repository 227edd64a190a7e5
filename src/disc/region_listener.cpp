#include "korvane/region_listener.h"

#include "korvane/track_menu.h"

namespace Korvane {

RegionListener::RegionListener(TrackMenu* menu) : trackMenu(menu) {}
RegionListener::~RegionListener() = default;

void RegionListener::OnMouseMove(int x, int y) {
  mouseX = x;
  mouseY = y;
  if (mouseDown) mouseDrag = true;
}

void RegionListener::OnLeftMouseDown(int x, int y) {
  mouseX = downX = x;
  mouseY = downY = y;
  mouseDown = true;
  mouseDrag = false;
}

void RegionListener::OnLeftMouseUp(int x, int y) {
  mouseX = x;
  mouseY = y;
  mouseDown = false;
}

void RegionListener::OnKeyDown(KeyID /*key*/) {}
void RegionListener::OnKeyUp(KeyID /*key*/) {}
void RegionListener::OnDraw() {}
void RegionListener::OnTrackMenuActivate(bool /*active*/) {}
bool RegionListener::IsWelcomeListener() { return false; }

NullRegionListener::~NullRegionListener() = default;

}  // namespace Korvane
