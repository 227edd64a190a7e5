#include "cube/cube_drag.h"

#include <cmath>
#include <utility>

#include "camera/find_operation.h"
#include "camera/orbit_operation.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor_parameters.h"

namespace Korvane {

namespace {

// From `y` upward to y downward.
int CountFromTop(int height, int y) { return Truncate(static_cast<double>(height) - y - 1.0); }

}  // namespace

void CubeDrag::Press(int x, int y) {
  accumulatedX = accumulatedY = 0;
  pressX = lastX = x;
  pressY = lastY = y;
}

bool CubeDrag::IsBeyondDeadZone(int x, int y) const {
  const double deadZone = parameters.drag_dead_zone;
  return std::abs(static_cast<double>(x) - pressX) > deadZone ||
         std::abs(static_cast<double>(y) - pressY) > deadZone;
}

// ---- the begin ----

void CubeDrag::Begin(int x, int y, int height, OrientorObserver::OrientorPart part, bool compass) {
  CameraOperations& hub = *partners.hub.Get();
  const Lifeline::Watch goesOn(life);
  active = true;
  hub.ConstrainPivotToViewport();
  if (!goesOn) return;
  tellsEnd = true;
  partners.observers.Notify([&](OrientorObserver& each) {
    if (goesOn) each.OnDragBegin(part);
  });
  if (!goesOn) return;

  draggedHub.Set(&hub);  // from here on the hub is the cube's, until End
  BorrowSettings(hub, compass);
  hub.EndOperation(OPERATION_ALL);
  if (goesOn) hub.EndShot();
  if (goesOn) BeginOrbit(hub, x, y, height, compass);
  if (goesOn) ApplyOrbitStart(hub);
  if (goesOn) record.Begin(partners.history.Get(), hub.GetCameraParameters());
}

// What comes back is the multiplier of before, narrowed to a float.
void CubeDrag::BorrowSettings(CameraOperations& hub, bool compass) {
  ApplicationParameters& scene = hub.GetApplicationParameters();
  scene.orbit_multiplier = static_cast<float>(scene.orbit_multiplier);
  settings.Borrow(hub);
  scene.orbit_multiplier = parameters.drag_multiplier;
  scene.preserve_orbit_up_direction = compass || parameters.preserve_scene_up;
  scene.align_orbit_up_direction = !compass && parameters.preserve_scene_up;
}

// The compass turns about the axes of the world, which its moves set; the cube about those of the scene.
void CubeDrag::BeginOrbit(CameraOperations& hub, int x, int y, int height, bool compass) {
  if (compass) {
    const bool follows = !(tangent == Vector2());
    const int start = follows ? GetCompassX(GetWayAlongTangent(x, y)) : x;
    hub.BeginOperation(OPERATION_ORBIT, start, CountFromTop(height, pressY));
    return;
  }
  ApplicationParameters& scene = hub.GetApplicationParameters();
  scene.do_snap_orbit = parameters.drag_snap;
  scene.do_custom_orbit = true;
  scene.custom_orbit_up = scene.scene_up_direction;
  scene.custom_orbit_front = scene.scene_front_direction;
  hub.BeginOperation(OPERATION_ORBIT, x, CountFromTop(height, y));
}

// The orbit may have straightened its camera; the host's view follows at once.
void CubeDrag::ApplyOrbitStart(CameraOperations& hub) {
  const auto* const orbit = FindOperation<OrbitOperation>(&hub, OPERATION_ORBIT);
  if (orbit == nullptr) return;
  const CameraParameters start = orbit->GetInitialCamera();
  if (!start.IsFinite() || hub.CheckCamerasEqual(&start, &hub.GetCameraParameters())) return;
  hub.ApplyCameraParameters(start);
}

// ---- the compass ----

double CubeDrag::GetWayAlongTangent(int x, int y) const {
  return (static_cast<double>(x) - pressX) * tangent.x + (static_cast<double>(y) - pressY) * tangent.y;
}

int CubeDrag::GetCompassX(double way) const {
  return Truncate(Truncate(way / 2.0) + static_cast<double>(pressX));
}

void CubeDrag::TurnCompass(int x, int y, int height) {
  CameraOperations& hub = *partners.hub.Get();
  const double dx = static_cast<double>(x) - lastX;  // the difference of two ints may not fit an int
  const double dy = static_cast<double>(y) - lastY;
  accumulatedX = Truncate(accumulatedX + (sense.reverseX ? -dx : dx));
  accumulatedY = Truncate(accumulatedY + (sense.reverseY ? dy : -dy));
  const bool follows = !(tangent == Vector2());
  const double way = follows ? GetWayAlongTangent(x, y) : static_cast<double>(accumulatedX) + accumulatedY;

  ApplicationParameters& scene = hub.GetApplicationParameters();
  scene.do_custom_orbit = true;
  scene.custom_orbit_up = hub.GetWorldUpDirection();
  scene.custom_orbit_front = hub.GetWorldFrontDirection();
  lastX = x;
  lastY = y;
  hub.UpdateOperationParams(GetCompassX(way), CountFromTop(height, pressY), OPERATION_ORBIT);
}

// ---- the end ----

// A press or a Destroy while the observers are told ends the drag at once, and what is told ends with it.
void CubeDrag::End() {
  life.Cut();
  const bool tells = std::exchange(tellsEnd, false);
  if (!std::exchange(tellingEnd, true) && tells) {
    partners.observers.Notify([](OrientorObserver& each) { each.OnDragEnd(); });
  }
  if (!std::exchange(tellingEnd, false)) return;
  CameraOperations* const dragged = draggedHub.Get();
  draggedHub.Set(nullptr);
  settings.GiveBack(dragged);
  RewindRecord ending = std::move(record);
  if (dragged == nullptr) return;
  ApplicationParameters& scene = dragged->GetApplicationParameters();
  scene.do_custom_orbit = false;
  scene.do_snap_orbit = false;
  dragged->EndOperation(OPERATION_ORBIT);
  dragged->EndShot();
  ending.End(dragged->GetCameraParameters());
}

}  // namespace Korvane
