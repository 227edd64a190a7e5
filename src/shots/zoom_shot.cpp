#include "shots/zoom_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void ZoomShot::InitShot(const CameraOperations* hub) {
  if (hub != nullptr) startCamera = hub->GetCameraParameters();
}

bool ZoomShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  if (!GetAnchorValue(parameters.anchor, before)) return false;
  const bool goesOn = BeginStep(parameters.duration);
  double amount =
      parameters.direction == ZoomShotParameters::DIRECTION_OUT ? -parameters.amount : parameters.amount;
  before *= amount;
  if (camera.IsOrthographic()) LimitToPivot(amount, before);

  const Vector3 forward = ViewDirection(startCamera);
  const Vector3 toPivot = startCamera.pivot - startCamera.eye;
  camera = startCamera;
  camera.eye = startCamera.eye + toPivot * (amount * unitTime - before);
  camera.centre = camera.eye + forward * (startCamera.pivot - camera.eye).Dot(forward);
  if (ViewingDistance(camera) <= Math::EPSILON_VALUE) {
    camera.centre = camera.eye + forward * Math::EPSILON_VALUE;
  }
  const double scale = ScaleOf((camera.pivot - camera.eye).Length(), toPivot.Length());
  ScaleOrthographicSize(startCamera, scale, camera);
  return EndStep(dt, goesOn);
}

// In orthographic the move may come up to the pivot, at its end or, run backward, at its start.
void ZoomShot::LimitToPivot(double& amount, double& before) const {
  if (amount - before >= 1.0) {
    if (parameters.anchor == TARGET_CAM_START) {
      before = 0.0;
      amount = 1.0 - Math::EPSILON_VALUE;
    } else if (parameters.anchor == TARGET_CAM_MIDDLE) {
      before = 1.0;
      amount = 2.0 - Math::EPSILON_VALUE;
    }
    return;
  }
  if (before > -1.0) return;
  before = Math::EPSILON_VALUE - 1.0;
  if (parameters.anchor == TARGET_CAM_MIDDLE) amount = -2.0;
  if (parameters.anchor == TARGET_CAM_END) amount = -1.0;
}

}  // namespace Korvane
