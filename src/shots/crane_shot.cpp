#include "shots/crane_shot.h"

#include <cmath>

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void CraneShot::InitShot(const CameraOperations* hub) {
  if (hub != nullptr) startCamera = hub->GetCameraParameters();
}

bool CraneShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  const bool down = parameters.direction == CraneShotParameters::DIRECTION_DOWN;
  const bool up = parameters.direction == CraneShotParameters::DIRECTION_UP;
  if (!GetAnchorValue(parameters.anchor, before) || (!down && !up)) return false;
  const bool goesOn = BeginStep(parameters.duration);

  const Vector3 forward = ViewDirection(startCamera);
  const Vector3 upward = startCamera.up;
  const Vector3 right = forward.Cross(upward).Normalize();
  const double height = std::abs(parameters.height);
  const double depth = height * parameters.forwardRatio;
  const double sideways = parameters.sidewaysDistance;

  // The corner of the ellipse's box from which the motion is measured.
  const double forwardPart = down ? before : 1.0 - before;
  const double upwardPart = 1.0 - forwardPart;
  const Vector3 base = startCamera.eye - forward * depth * forwardPart - upward * height * upwardPart -
                       right * sideways * before;
  const double angle = (down ? unitTime : 1.0 - unitTime) * Math::PI / 2.0;

  camera = startCamera;
  camera.eye = base + forward * (1.0 - std::cos(angle)) * std::abs(depth) +
               upward * (1.0 - std::sin(angle)) * height + right * sideways * unitTime;
  if (!parameters.keepTarget) {
    camera.centre = camera.eye + forward * (startCamera.centre - camera.eye).Length();
    camera.pivot = camera.centre;
  }
  ScaleOrthographicSize(startCamera, ScaleOf(ViewingDistance(camera), ViewingDistance(startCamera)), camera);
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
