#include "shots/pan_zoom_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void PanZoomShot::InitShot(const CameraOperations* hub) {
  if (hub != nullptr) startCamera = hub->GetCameraParameters();
}

bool PanZoomShot::PerformShot(double dt, CameraParameters& camera) {
  double before = 0.0;
  const double distance = ViewingDistance(startCamera);
  if (!GetAnchorValue(parameters.anchor, before) || distance < Math::EPSILON_VALUE) return false;

  const bool goesOn = BeginStep(parameters.duration);
  const double s = unitTime - before;
  double forwardStep = s * parameters.zoomDistance;
  // The eye stays in front of the target.
  if (camera.IsOrthographic() && forwardStep >= distance) forwardStep = distance - Math::EPSILON_VALUE;

  const Vector3 forward = ViewDirection(startCamera);
  const Vector3 right = forward.Cross(startCamera.up).Normalize();
  const Vector3 up = startCamera.up.Normalized();
  const Vector3 shift = (right * parameters.sidewaysDistance + up * parameters.upwardDistance) * s;

  camera = startCamera;
  camera.eye += shift + forward * forwardStep;
  camera.centre += shift;
  ScaleOrthographicSize(startCamera, ViewingDistance(camera) / distance, camera);
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
