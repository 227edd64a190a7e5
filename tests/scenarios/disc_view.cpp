#include "scenarios/disc_view.h"

#include <cmath>

#include "korvane/pixel_icon2d.h"
#include "korvane/track_menu.h"

namespace scenarios {

using Korvane::Math;
using Korvane::TrackMenu;
using Korvane::Vector2;

DiscView::DiscView(bool orthographic)
    : HouseViewport(orthographic), manager(std::make_unique<OpenViewManager>()) {
  renderer.hasRegionMaps = true;
  disc.GetParameters().suppressWelcome = true;
  manager->SetKorvane(&hub);
  manager->SetRenderer(&renderer);
  manager->SetHelmDisc(&disc);
  manager->Create();
  manager->SetViewportSize(WIDTH, HEIGHT);
  MovePointer(x, y);
  Frame();
}

DiscView::~DiscView() {
  manager->Destroy();
  manager->SetHelmDisc(nullptr);
}

void DiscView::Frame(unsigned milliseconds) {
  platform.Advance(milliseconds);
  hub.PerformOperations();
  manager->OnDraw();
  renderer.ClearCalls();
}

void DiscView::Wait(unsigned milliseconds) {
  for (unsigned passed = 0; passed < milliseconds; passed += 16) Frame();
}

void DiscView::PressHotKey() {
  manager->OnKeyDown(Korvane::KEY_DISC);
  manager->OnKeyUp(Korvane::KEY_DISC);
  Frame();
}

void DiscView::MovePointer(int toX, int toY) {
  x = toX;
  y = toY;
  manager->OnMouseMove(x, y);
}

// Ring after ring from the inside.
bool DiscView::FindWedge(Korvane::HelmDiscZone zone) {
  constexpr int DIRECTIONS = 48;
  TrackMenu* const menu = disc.GetActiveTrackMenu();
  if (menu == nullptr) return false;
  const Vector2 middle = menu->GetRegionMap()->GetPosition();
  for (double radius = 4.0; radius < menu->GetWidth() / 2.0 - 2.0; radius += 4.0) {
    for (int i = 0; i < DIRECTIONS; ++i) {
      const double angle = 2.0 * Math::PI * i / DIRECTIONS;
      MovePointer(static_cast<int>(middle.x + radius * std::cos(angle)),
                  static_cast<int>(middle.y + radius * std::sin(angle)));
      if (menu->GetActiveRegion().zone == static_cast<int>(zone)) return true;
    }
  }
  return false;
}

bool DiscView::FindWedgeAt(Korvane::HelmDiscZone zone, int toX, int toY) {
  if (!FindWedge(zone)) return false;
  TrackMenu& menu = *disc.GetActiveTrackMenu();
  const Vector2 place = menu.GetRegionMap()->GetPosition() + Vector2(toX - x, toY - y);
  menu.SetLocation(static_cast<int>(place.x), static_cast<int>(place.y));
  MovePointer(toX, toY);
  return menu.GetActiveRegion().zone == static_cast<int>(zone);
}

void DiscView::Press() {
  manager->OnLeftMouseDown(x, y);
  Frame();
}

void DiscView::Release() {
  manager->OnLeftMouseUp(x, y);
  Frame();
}

bool DiscView::IsDiscShown() const {
  const TrackMenu* const menu = disc.GetActiveTrackMenu();
  return menu != nullptr && menu->GetVisible();
}

}  // namespace scenarios
