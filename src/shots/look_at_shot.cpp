#include "shots/look_at_shot.h"

#include <algorithm>
#include <cmath>

#include "camera/view_size.h"
#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

namespace {

bool RunsAlong(const Vector3& axis, const Vector3& direction) {
  const double angle = std::acos(std::clamp(axis.Dot(direction), -1.0, 1.0));
  return angle <= Math::EPSILON_VALUE || std::abs(angle - Math::PI) <= Math::EPSILON_VALUE;
}

}  // namespace

void LookAtShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  startCamera = hub->GetCameraParameters();
  startCamera.up.Normalize();
  worldUp = hub->GetWorldUpDirection().Normalized();
  parameters.direction.Normalize();
  eyeOffset = parameters.point + parameters.direction * parameters.distance - startCamera.eye;
  MeasureTurn(ViewDirection(startCamera), -parameters.direction);

  const FrustumTangents tangents(startCamera);
  targetOrthoWidth = (tangents.right + tangents.left) * parameters.distance;
  targetOrthoHeight = (tangents.bottom + tangents.top) * parameters.distance;

  const bool isThere = eyeOffset.Length() < Math::EPSILON_VALUE && std::abs(yaw) < Math::EPSILON_VALUE &&
                       std::abs(pitch) < Math::EPSILON_VALUE;
  if (isThere) elapsedTime = parameters.duration;
}

// Between two views along the world up there is no axis to tilt about: the view holds until it arrives.
void LookAtShot::MeasureTurn(const Vector3& startView, const Vector3& targetView) {
  Vector3 right = targetView.Cross(worldUp).Normalize();
  Vector3 forward = startView;
  const Vector3 flatTarget = ProjectOnPlane(targetView, worldUp);
  if (RunsAlong(worldUp, targetView)) {
    right = forward.Cross(worldUp).Normalize();
  } else if (!RunsAlong(worldUp, forward)) {
    yaw = ProjectOnPlane(forward, worldUp).FindAngleWith(flatTarget, worldUp);
    forward = RotateAbout(worldUp, yaw, forward).Normalize();
  } else {
    const bool looksDown = worldUp.Dot(forward) < 0.0;
    yaw = Vector3(startCamera.up).FindAngleWith(looksDown ? flatTarget : -flatTarget, worldUp);
    upPath = true;
  }
  pitch = forward.FindAngleWith(targetView, right);
}

bool LookAtShot::PerformShot(double dt, CameraParameters& camera) {
  const bool goesOn = BeginStep(parameters.duration);
  const double t = unitTime;
  const Vector3 view = startCamera.centre - startCamera.eye;
  camera.eye = startCamera.eye + eyeOffset * t;
  if (upPath) {
    TurnUp(t, view, camera);
  } else {
    TurnView(t, view, camera);
  }
  if (ViewingDistance(camera) <= Math::EPSILON_VALUE) camera.centre = camera.eye - parameters.direction;
  if (t == 1.0) camera.centre = parameters.point;
  camera.ortho_width = Math::LinearInterp(t, startCamera.ortho_width, targetOrthoWidth);
  camera.ortho_height = Math::LinearInterp(t, startCamera.ortho_height, targetOrthoHeight);
  return EndStep(dt, goesOn);
}

void LookAtShot::TurnUp(double t, const Vector3& view, CameraParameters& camera) const {
  const Quaternion turn = Quaternion::AxisAngle(worldUp, t * yaw);
  const Vector3 up = turn.Rotate(startCamera.up);
  const Quaternion tilt = Quaternion::AxisAngle(view.Cross(up).Normalized(), t * pitch);
  camera.up = tilt.Rotate(up).Normalized();
  camera.centre = camera.eye + tilt.Rotate(turn.Rotate(view)).Normalized();
}

void LookAtShot::TurnView(double t, const Vector3& view, CameraParameters& camera) const {
  const Quaternion turn = Quaternion::AxisAngle(worldUp, t * yaw);
  const Vector3 turned = turn.Rotate(view);
  const Quaternion tilt = Quaternion::AxisAngle(turned.Cross(worldUp).Normalized(), t * pitch);
  camera.centre = camera.eye + tilt.Rotate(turned).Normalized();
  camera.up = tilt.Rotate(turn.Rotate(startCamera.up));
}

}  // namespace Korvane
