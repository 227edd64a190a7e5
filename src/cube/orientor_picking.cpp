// What is under the mouse.
#include "cube/orientor_parts.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

bool Orientor::UpdateSelection() {
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr || !parameters.visible || parts->drag.IsActive()) return false;
  CubeMouse& mouse = parts->mouse;
  const int highlightedBefore = mouse.highlightedPart;
  const int overlayBefore = mouse.activeOverlayPart;
  const bool shotActive = hub->IsShotActive();
  const bool reacts = !parameters.disabled && !mouse.menuOpen;
  const Vector2 point(mouse.x, static_cast<double>(parts->layout.viewportHeight) - mouse.y);

  if (!mouse.pressed) {
    mouse.activePart = -1;
    if (reacts && parameters.select_parts) mouse.activePart = parts->PickGeometry(point);
    if (!shotActive) mouse.highlightedPart = mouse.activePart;
  }

  mouse.activeOverlayPart = mouse.rawOverlayPart = -1;
  if (reacts) {
    mouse.rawOverlayPart = parts->PickOverlay(point, parts->arrowsVisible);
    if (mouse.pressed && mouse.rawOverlayPart != mouse.pressedOverlayPart) mouse.rawOverlayPart = -1;
    if (!shotActive) mouse.activeOverlayPart = mouse.rawOverlayPart;
  }
  return mouse.highlightedPart != highlightedBefore || mouse.activeOverlayPart != overlayBefore;
}

bool Orientor::IsPointInBounds(int x, int y) {
  if (!parts->Look()) return false;
  const Vector2 point(x, y);
  const int part = parts->PickGeometry(point);
  const int overlay = parts->PickOverlay(point, parts->arrowsVisible);
  return part >= 0 || overlay != part;
}

// The mouse is looked up one pixel above the row that it is on.
bool Orientor::GetPartPosition(int part, int& x, int& y) {
  const bool isPart = part >= 0 && part < PART_COUNT;
  Vector2 point;
  if (!isPart || !parameters.visible || !parts->Look() || !parts->FindGeometry(part, point)) return false;
  x = Truncate(point.x);
  y = Truncate(point.y) - 1;
  return true;
}

bool Orientor::GetOverlayPartPosition(OverlayPart part, int& x, int& y) const {
  Vector2 point;
  if (!parameters.visible || !parts->FindOverlay(part, point)) return false;
  x = Truncate(point.x);
  y = Truncate(point.y) - 1;
  return true;
}

}  // namespace Korvane
