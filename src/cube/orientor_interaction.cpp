// What the cube does with the left button: a click turns the view, a drag orbits the scene.
#include <utility>

#include "cube/orientor_parts.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

bool Orientor::OnLeftMouseDown(int x, int y) {
  CubeMouse& mouse = parts->mouse;
  CubeDrag& drag = parts->drag;
  mouse.captured = false;  // the release of an earlier press has been lost
  if (!parameters.visible) EndGesture();
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr || !parameters.visible || parameters.disabled) return false;
  if (parts->closing || hub->IsShotActive()) return false;
  const bool wasDragging = drag.IsOpen();
  mouse.releasing = mouse.pressed = false;
  drag.Rest();
  if (wasDragging) drag.End();  // its release was lost

  mouse.pressedOverlayPart = mouse.activeOverlayPart;
  mouse.pressed = true;
  drag.Press(x, y);
  parts->TakeCompassSense();
  if (!IsMouseOnPart() && !mouse.IsOnCompass()) return false;
  mouse.captured = true;
  return true;
}

bool Orientor::OnMouseMove(int x, int y) {
  if (!parameters.visible) EndGesture();
  CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr || !parameters.visible || parameters.disabled) return false;
  const int height = parts->layout.viewportHeight;
  if (parts->drag.IsActive() && parts->mouse.IsOnCompass()) {
    parts->drag.TurnCompass(x, y, height);
  } else {
    const int fromTop = Truncate(static_cast<double>(height) - y - 1.0);
    hub->UpdateOperationParams(x, fromTop, OPERATION_ORBIT);
  }
  if (StartsDrag(x, y)) {
    parts->drag.Begin(x, y, height, GetOrientorPartForObserver(), parts->mouse.IsOnCompass());
  }
  return IsDragActive();
}

bool Orientor::OnLeftMouseUp(int /*x*/, int /*y*/) {
  CubeMouse& mouse = parts->mouse;
  const bool captured = std::exchange(mouse.captured, false);
  if (!parameters.visible) EndGesture();
  const CameraOperations* const hub = parts->partners.hub.Get();
  const bool pressed = mouse.pressed && !mouse.releasing && hub != nullptr && parameters.visible;
  if (pressed && (parts->drag.IsActive() || !hub->IsShotActive())) {
    mouse.releasing = true;
    if (parts->drag.IsActive()) {
      parts->drag.End();
    } else {
      Click();
    }
    // Whoever was told may have let the user press anew, which is none of this release's business.
    if (!std::exchange(mouse.releasing, false)) return captured;
  }
  parts->drag.Rest();
  mouse.pressed = false;
  return captured;
}

bool Orientor::StartsDrag(int x, int y) const {
  const CubeMouse& mouse = parts->mouse;
  if (!mouse.pressed || parts->drag.IsActive() || !parameters.drag_enable) return false;
  if (!mouse.IsOnGeometry() && !mouse.IsOnCompass()) return false;
  return parts->partners.hub.Get() != nullptr && parts->drag.IsBeyondDeadZone(x, y);
}

void Orientor::SetCompassFollowsPointer(bool follows) { parts->compassFollowsPointer = follows; }
bool Orientor::CompassFollowsPointer() const { return parts->compassFollowsPointer; }

// ---- a gesture that is cut short ----

void Orientor::CancelGesture() {
  const bool showed = parts->ShowsMouse();
  parts->mouse.captured = false;
  EndGesture();
  CameraOperations* const hub = parts->partners.hub.Get();
  const bool changed = showed && !parts->ShowsMouse();
  if (changed && parameters.visible && hub != nullptr) hub->RequestApplicationUpdate();
}

void Orientor::EndGesture() {
  CubeMouse& mouse = parts->mouse;
  mouse.releasing = true;
  if (parts->drag.IsOpen()) parts->drag.End();
  if (!std::exchange(mouse.releasing, false)) return;  // whoever was told has begun anew
  parts->drag.Rest();
  mouse.pressed = false;
  mouse.ForgetParts();
  parts->fade.mouseInRegion = false;
}

// ---- a click ----

void Orientor::Click() {
  const OrientorObserver::OrientorPart part = GetOrientorPartForObserver();
  if (part != OrientorObserver::PART_NONE) {
    parts->partners.observers.Notify([part](OrientorObserver& each) { each.OnClicked(part); });
  }
  StartTransition();
}

OrientorObserver::OrientorPart Orientor::GetOrientorPartForObserver() const {
  const CubeMouse& mouse = parts->mouse;
  if (mouse.IsOnCompass()) {
    if (mouse.activePart >= COMPASS_RING_BEGIN) return OrientorObserver::PART_COMPASS_RING;
    const int letter = mouse.activePart - COMPASS_LETTERS_BEGIN;
    return static_cast<OrientorObserver::OrientorPart>(OrientorObserver::PART_COMPASS_FRONT + letter);
  }
  if (!mouse.IsOnGeometry()) {
    if (!IsMouseOnOverlayPart() || mouse.activeOverlayPart > OVERLAY_CONTEXT_MENU)
      return OrientorObserver::PART_NONE;
    return static_cast<OrientorObserver::OrientorPart>(OrientorObserver::PART_ROTATE_COUNTER_CLOCKWISE +
                                                       mouse.activeOverlayPart);
  }
  const int number = mouse.activePart + (mouse.IsOnArrow() ? OrientorObserver::PART_BACK_ARROW : 0);
  return static_cast<OrientorObserver::OrientorPart>(number);
}

}  // namespace Korvane
