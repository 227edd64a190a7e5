#include "shots/spin_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void SpinShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  startCamera = hub->GetCameraParameters();
  worldUp = hub->GetWorldUpDirection();
}

bool SpinShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  const bool aboutUp = parameters.axis == SpinShotParameters::AXIS_WORLD_UP;
  const bool aboutHorizontal = parameters.axis == SpinShotParameters::AXIS_CAMERA_HORIZONTAL;
  if (!GetAnchorValue(parameters.anchor, before) || (!aboutUp && !aboutHorizontal)) return false;

  const bool goesOn = BeginStep(parameters.duration);
  const double angle = (unitTime - before) * parameters.angle * Math::DEG_TO_RAD;
  const Vector3 forward = ViewDirection(startCamera);
  const Vector3 axis = aboutUp ? worldUp : forward.Cross(worldUp).Normalized();
  camera = startCamera;
  camera.centre = camera.eye + RotateAbout(axis, angle, forward);  // unit length: only the direction matters
  camera.up = worldUp;
  camera.pivot = camera.centre;
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
