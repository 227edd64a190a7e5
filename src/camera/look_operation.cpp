#include "camera/look_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "korvane/camera_operations.h"

namespace Korvane {

void LookOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  if (hub == nullptr) return;
  initialCamera = hub->GetCameraParameters();
  if (IsKeepSceneUpright()) LevelCameraUpToSceneUp(initialCamera);
  workingCamera = initialCamera;
}

void LookOperation::GetDeltaXY(double& dx, double& dy) const { GetRotationMotion(dx, dy); }

bool LookOperation::IsKeepSceneUpright() const {
  const ApplicationParameters& parameters = GetParameters();
  return parameters.preserve_orbit_up_direction && parameters.align_orbit_up_direction;
}

void LookOperation::LevelCameraUpToSceneUp(CameraParameters& camera) const {
  const Vector3 worldUp = hub->GetWorldUpDirection().Normalized();
  const Vector3 forward = ViewDirection(camera);
  camera.up.Normalize();
  const double a = camera.up.Dot(worldUp);
  const double b = forward.Dot(worldUp);
  if (std::abs(a) < Math::EPSILON_VALUE && std::abs(b) < Math::EPSILON_VALUE) {
    camera.up = worldUp;
    return;
  }
  const bool slanted = 1.0 - std::abs(a) > Math::EPSILON_VALUE && 1.0 - std::abs(b) > Math::EPSILON_VALUE;
  if (!slanted) return;
  const Vector3 level = forward.Cross(worldUp).Cross(forward);
  camera.up = a < 0.0 ? -level : level;
}

bool LookOperation::HasTippedOver(const Vector3& up) const {
  const double limit = (GetParameters().look_invert_tolerance + 90.0) * Math::DEG_TO_RAD;
  return up.Dot(hub->GetWorldUpDirection()) < std::cos(limit);
}

void LookOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  const ApplicationParameters& parameters = GetParameters();
  double dx = 0.0;
  double dy = 0.0;
  GetDeltaXY(dx, dy);
  if (parameters.look_invert_vertical_axis) dy = -dy;

  const Vector3 view = workingCamera.centre - workingCamera.eye;
  const Vector3 right = view.Cross(workingCamera.up).Normalized();
  const Quaternion pitch = Quaternion::AxisAngle(right, parameters.look_multiplier * dy);
  const Vector3 pitchedView = pitch.Rotate(view);
  const Vector3 pitchedUp = pitch.Rotate(workingCamera.up).Normalized();

  const bool upright = IsKeepSceneUpright();
  double heading = parameters.look_multiplier * dx;
  if (upright && HasTippedOver(pitchedUp)) heading = -heading;
  const Vector3 axis = upright ? hub->GetWorldUpDirection().Normalized() : pitchedUp;
  const Quaternion yaw = Quaternion::AxisAngle(axis, heading);

  camera.centre = camera.eye + yaw.Rotate(pitchedView);
  camera.up = yaw.Rotate(pitchedUp);
  if (camera.IsFinite()) workingCamera = camera;
}

}  // namespace Korvane
