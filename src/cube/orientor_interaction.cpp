// What the cube does with the left button: a click turns the view, a drag orbits the scene.
#include <cmath>
#include <utility>

#include "camera/orbit_operation.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"
#include "korvane/rewind_history.h"

namespace Korvane {

bool Orientor::OnLeftMouseDown(int x, int y) {
  mouseCaptured = false;  // the release of an earlier press has been lost
  if (!parameters.visible) EndGesture();
  if (cameraOperations == nullptr || !parameters.visible || parameters.disabled) return false;
  if (cameraOperations->IsShotActive()) return false;
  const bool wasDragging = dragging || draggedHub != nullptr;
  releasing = dragging = mousePressed = false;
  if (wasDragging) EndDrag();  // its release was lost

  pressedOverlayPart = activeOverlayPart;
  accumulatedDragX = accumulatedDragY = 0;
  mousePressed = true;
  pressX = lastX = x;
  pressY = lastY = y;
  CalculateDirectionOfRotation();
  if (!IsMouseOnPart() && !IsMouseOnCompassPart() && !IsMouseOnUCSMenu()) return false;
  mouseCaptured = true;
  return true;
}

bool Orientor::OnMouseMove(int x, int y) {
  if (!parameters.visible) EndGesture();
  if (cameraOperations == nullptr || !parameters.visible || parameters.disabled) return false;
  if (dragging && IsMouseOnCompassPart()) {
    UpdateCompassDrag(x, y);
  } else {
    cameraOperations->UpdateOperationParams(x, CountFromTop(y), OPERATION_ORBIT);
  }
  if (StartsDrag(x, y)) BeginDrag(x, y);
  return IsDragActive();
}

bool Orientor::OnLeftMouseUp(int /*x*/, int /*y*/) {
  const bool captured = std::exchange(mouseCaptured, false);
  if (!parameters.visible) EndGesture();
  const bool pressed = mousePressed && !releasing && cameraOperations != nullptr && parameters.visible;
  if (pressed && (dragging || !cameraOperations->IsShotActive())) {
    releasing = true;
    if (dragging) {
      EndDrag();
    } else {
      Click();
    }
    // Whoever was told may have let the user press anew, which is none of this release's business.
    if (!std::exchange(releasing, false)) return captured;
  }
  dragging = mousePressed = false;
  return captured;
}

void Orientor::CancelGesture() {
  mouseCaptured = false;
  EndGesture();
}

void Orientor::EndGesture() {
  releasing = true;
  if (dragging || draggedHub != nullptr) EndDrag();
  if (!std::exchange(releasing, false)) return;  // whoever was told has begun anew
  dragging = mousePressed = mouseInRegion = false;
  LeaveParts();
  rawOverlayPart = -1;
}

// From y upward to y downward.
int Orientor::CountFromTop(int y) const { return Truncate(static_cast<double>(viewportHeight) - y - 1.0); }

// ---- a click ----

void Orientor::Click() {
  const OrientorObserver::OrientorPart part = GetOrientorPartForObserver();
  if (part != OrientorObserver::PART_NONE) {
    observers.Notify([part](OrientorObserver& each) { each.OnClicked(part); });
  }
  StartTransition();
}

OrientorObserver::OrientorPart Orientor::GetOrientorPartForObserver() const {
  if (IsMouseOnCompassPart()) {
    if (activePart >= COMPASS_RING_BEGIN) return OrientorObserver::PART_COMPASS_RING;
    const int letter = activePart - COMPASS_LETTERS_BEGIN;
    return static_cast<OrientorObserver::OrientorPart>(OrientorObserver::PART_COMPASS_FRONT + letter);
  }
  if (!IsMouseOnGeometryPart()) {
    if (!IsMouseOnOverlayPart() || activeOverlayPart > OVERLAY_CONTEXT_MENU)
      return OrientorObserver::PART_NONE;
    return static_cast<OrientorObserver::OrientorPart>(OrientorObserver::PART_ROTATE_COUNTER_CLOCKWISE +
                                                       activeOverlayPart);
  }
  const bool byArrow = activePart < FACE_COUNT && faceArrows[activePart];
  return static_cast<OrientorObserver::OrientorPart>(byArrow ? OrientorObserver::PART_BACK_ARROW + activePart
                                                             : activePart);
}

// ---- a drag ----

bool Orientor::StartsDrag(int x, int y) const {
  if (!mousePressed || dragging || !parameters.drag_enable) return false;
  if (!IsMouseOnGeometryPart() && !IsMouseOnCompassPart()) return false;
  const double deadZone = parameters.drag_dead_zone;
  return std::abs(static_cast<double>(x) - pressX) > deadZone ||
         std::abs(static_cast<double>(y) - pressY) > deadZone;
}

// Whoever is told of a step may end the drag, which then goes no further.
void Orientor::BeginDrag(int x, int y) {
  if (cameraOperations == nullptr) return;
  CameraOperations& hub = *cameraOperations;
  const Lifeline::Watch goesOn(dragLife);
  dragging = true;
  hub.ConstrainPivotToViewport();
  if (!goesOn) return;
  tellsDragEnd = true;
  const OrientorObserver::OrientorPart part = GetOrientorPartForObserver();
  observers.Notify([part](OrientorObserver& each) { each.OnDragBegin(part); });
  if (!goesOn) return;

  draggedHub = &hub;  // from here on the hub is the cube's, until EndDrag
  TakeOverOrbitSettings();
  hub.EndOperation(OPERATION_ALL);
  if (goesOn) hub.EndShot();
  if (goesOn) BeginDragOrbit(x, y);
  if (goesOn) ApplyOrbitStart();
  if (!goesOn || rewindHistory == nullptr) return;
  recordOpen = true;
  rewindHistory->BeginElementRecord(hub.GetCameraParameters());
}

void Orientor::TakeOverOrbitSettings() {
  ApplicationParameters& scene = cameraOperations->GetApplicationParameters();
  savedOrbitMultiplier = static_cast<float>(scene.orbit_multiplier);
  savedPreserveOrbitUp = scene.preserve_orbit_up_direction;
  savedAlignOrbitUp = scene.align_orbit_up_direction;
  const bool onCompass = IsMouseOnCompassPart();
  scene.orbit_multiplier = parameters.drag_multiplier;
  scene.preserve_orbit_up_direction = onCompass || parameters.preserve_scene_up;
  scene.align_orbit_up_direction = !onCompass && parameters.preserve_scene_up;
}

// The compass turns about the axes of the world, which its moves set; the cube about those of the scene.
void Orientor::BeginDragOrbit(int x, int y) {
  CameraOperations& hub = *cameraOperations;
  if (IsMouseOnCompassPart()) {
    hub.BeginOperation(OPERATION_ORBIT, x, CountFromTop(pressY));
    return;
  }
  ApplicationParameters& scene = hub.GetApplicationParameters();
  scene.do_snap_orbit = parameters.drag_snap;
  scene.do_custom_orbit = true;
  scene.custom_orbit_up = scene.scene_up_direction;
  scene.custom_orbit_front = scene.scene_front_direction;
  hub.BeginOperation(OPERATION_ORBIT, x, CountFromTop(y));
}

// The orbit may have straightened its camera; the host's view follows at once.
void Orientor::ApplyOrbitStart() {
  CameraOperations& hub = *cameraOperations;
  const auto* const orbit = dynamic_cast<const OrbitOperation*>(hub.GetActiveOperation(OPERATION_ORBIT));
  if (orbit == nullptr) return;
  const CameraParameters start = orbit->GetInitialCamera();
  if (!start.IsFinite() || hub.CheckCamerasEqual(&start, &hub.GetCameraParameters())) return;
  hub.ApplyCameraParameters(start);
}

// A press or a Destroy while the observers are told ends the drag at once, and what is told ends with it.
void Orientor::EndDrag() {
  dragLife.Cut();
  const bool tells = std::exchange(tellsDragEnd, false);
  if (!std::exchange(tellingDragEnd, true) && tells) {
    observers.Notify([](OrientorObserver& each) { each.OnDragEnd(); });
  }
  if (!std::exchange(tellingDragEnd, false)) return;
  const CameraOperations* const dragged = std::exchange(draggedHub, nullptr);
  if (dragged == nullptr || dragged != cameraOperations) return;  // the cube has gone to another hub
  CameraOperations& hub = *cameraOperations;
  ApplicationParameters& scene = hub.GetApplicationParameters();
  scene.orbit_multiplier = savedOrbitMultiplier;
  scene.preserve_orbit_up_direction = savedPreserveOrbitUp;
  scene.align_orbit_up_direction = savedAlignOrbitUp;
  scene.do_custom_orbit = false;
  scene.do_snap_orbit = false;
  hub.EndOperation(OPERATION_ORBIT);
  hub.EndShot();
  if (std::exchange(recordOpen, false) && rewindHistory != nullptr) {
    rewindHistory->EndElementRecord(hub.GetCameraParameters());
  }
}

}  // namespace Korvane
