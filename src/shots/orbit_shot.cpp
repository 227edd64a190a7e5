#include "shots/orbit_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void OrbitShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  startCamera = hub->GetCameraParameters();
  worldUp = hub->GetWorldUpDirection();
}

bool OrbitShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  if (!GetAnchorValue(parameters.anchor, before)) return false;
  const bool goesOn = BeginStep(parameters.duration);
  const double s = unitTime - before;
  const double horizontal = s * parameters.horizontalAngle * Math::DEG_TO_RAD;
  const double vertical = s * parameters.verticalAngle * Math::DEG_TO_RAD;

  const Vector3 view = startCamera.centre - startCamera.eye;
  // A view along the world up turns about its own up.
  const bool parallel = worldUp.Cross(view).Length() < Math::EPSILON_VALUE;
  const Vector3 axis = parallel ? startCamera.up : worldUp;
  const Vector3 turned = RotateAbout(axis, horizontal, view);
  const Quaternion tilt = Quaternion::AxisAngle(turned.Cross(axis).Normalized(), vertical);

  camera = startCamera;
  camera.eye = startCamera.centre - tilt.Rotate(turned);
  camera.up = tilt.Rotate(axis);
  camera.pivot = camera.centre;
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
