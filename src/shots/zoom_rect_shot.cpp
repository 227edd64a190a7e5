#include "shots/zoom_rect_shot.h"

#include <cmath>

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

namespace {

const double SMALLEST_SIZE = std::sqrt(Math::EPSILON_VALUE);

}  // namespace

double ZoomRectShot::getCurrentScale() { return currentScale; }

void ZoomRectShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  active = true;
  currentScale = 1.0;
  startCamera = hub->GetCameraParameters();
  if (ViewingDistance(startCamera) >= Math::EPSILON_VALUE) {
    const Vector3 forward = ViewDirection(startCamera);
    const Vector3 up = startCamera.up.Normalized();
    const Vector3 right = forward.Cross(up).Normalize();
    eyeOffset =
        right * parameters.sidewaysOffset + up * parameters.upwardOffset + forward * parameters.forwardOffset;
  }
  const bool tooSmall = startCamera.ortho_width <= SMALLEST_SIZE || startCamera.ortho_height <= SMALLEST_SIZE;
  if (startCamera.IsOrthographic() && tooSmall) {
    elapsedTime = parameters.duration;
    active = false;
  }
}

bool ZoomRectShot::PerformShot(double dt, CameraParameters& camera) {
  const bool goesOn = BeginStep(parameters.duration);
  if (!active) return EndStep(dt, goesOn);

  const Vector3 forward = ViewDirection(startCamera);
  camera = startCamera;
  camera.eye = startCamera.eye + eyeOffset * unitTime;
  camera.centre = CentreOf(camera, forward);

  const double startDepth = (startCamera.pivot - startCamera.eye).Dot(forward);
  const double depth = (startCamera.pivot - camera.eye).Dot(forward);
  currentScale = startDepth != 0.0 ? startDepth / depth : 1.0;
  camera.ortho_width = Math::Max(startCamera.ortho_width / currentScale, SMALLEST_SIZE);
  camera.ortho_height = Math::Max(startCamera.ortho_height / currentScale, SMALLEST_SIZE);
  return EndStep(dt, goesOn);
}

// One unit ahead on the way, and where the pivot has no depth to speak of; at the end at its depth.
Vector3 ZoomRectShot::CentreOf(const CameraParameters& camera, const Vector3& forward) const {
  const double depth = std::abs((camera.pivot - camera.eye).Dot(forward));
  const bool atPivot = unitTime == 1.0 && depth >= SMALLEST_SIZE;
  return camera.eye + (atPivot ? forward * depth : forward);
}

}  // namespace Korvane
