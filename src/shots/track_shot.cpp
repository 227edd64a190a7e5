#include "shots/track_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void TrackShot::InitShot(const CameraOperations* hub) {
  if (hub != nullptr) startCamera = hub->GetCameraParameters();
}

bool TrackShot::GetDirection(Vector3& direction) const {
  const Vector3 forward = ViewDirection(startCamera);
  const Vector3 right = forward.Cross(startCamera.up).Normalize();
  const Vector3 directions[] = {right, -right, forward, -forward};
  const std::int32_t index = parameters.direction;
  if (index < TrackShotParameters::DIRECTION_RIGHT || index > TrackShotParameters::DIRECTION_BACKWARD) {
    return false;
  }
  direction = directions[index];
  return true;
}

bool TrackShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  Vector3 direction;
  if (!GetAnchorValue(parameters.anchor, before) || !GetDirection(direction)) return false;
  const bool goesOn = BeginStep(parameters.duration);
  const Vector3 shift = direction * ((unitTime - before) * parameters.distance);
  camera = startCamera;
  camera.eye += shift;
  if (!parameters.keepTarget) camera.centre += shift;
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
