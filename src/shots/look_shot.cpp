#include "shots/look_shot.h"

#include <cmath>

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void LookShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  startCamera = hub->GetCameraParameters();
  worldFront = hub->GetWorldFrontDirection();
  worldUp = hub->GetWorldUpDirection();
  worldSide = worldFront.Cross(worldUp);
}

// A camera upside down, or looking up along the axis, pans the other way round.
bool LookShot::ReversesHorizontalSense(const Vector3& view) const {
  const double upright = worldUp.Dot(startCamera.up);
  if (upright < -Math::EPSILON_VALUE) return true;
  return std::abs(upright) < Math::EPSILON_VALUE && worldUp.Dot(view) > Math::EPSILON_VALUE;
}

bool LookShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  if (!GetAnchorValue(parameters.anchor, before)) return false;
  const bool goesOn = BeginStep(parameters.duration);
  const double s = unitTime - before;
  const Vector3 view = startCamera.centre - startCamera.eye;
  const double sense = ReversesHorizontalSense(view) ? -1.0 : 1.0;
  const double horizontal = sense * s * parameters.horizontalAngle * Math::DEG_TO_RAD;
  const double vertical = s * parameters.verticalAngle * Math::DEG_TO_RAD;

  const Quaternion pan = Quaternion::AxisAngle(worldUp.Normalized(), horizontal);
  const Vector3 right = pan.Rotate(view.Cross(startCamera.up));
  // In the plane of the world's front and side, whatever their lengths.
  const Vector3 planeNormal = worldFront.Cross(worldSide).Normalized();
  const Vector3 tiltAxis = ProjectOnPlane(right, planeNormal).Normalized();
  const Quaternion tilt = Quaternion::AxisAngle(tiltAxis, vertical);

  camera = startCamera;
  camera.centre = camera.eye + tilt.Rotate(pan.Rotate(view));
  camera.up = tilt.Rotate(pan.Rotate(startCamera.up)).Normalized();
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
