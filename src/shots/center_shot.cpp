#include "shots/center_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void CenterShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  startCamera = targetCamera = hub->GetCameraParameters();
  const CameraFrame frame(startCamera);
  const Vector3 toPoint = parameters.point - startCamera.eye;
  // In orthographic the whole camera moves; in perspective only within the plane of the view.
  targetCamera.eye =
      targetCamera.IsOrthographic()
          ? parameters.point - startCamera.centre + startCamera.eye
          : startCamera.eye + frame.right * toPoint.Dot(frame.right) + frame.up * toPoint.Dot(frame.up);
  targetCamera.centre = parameters.point;
  targetCamera.pivot = parameters.point;
}

bool CenterShot::PerformShot(double dt, CameraParameters& camera) {
  const bool goesOn = BeginStep(parameters.duration, parameters.easeEnd);
  const double t = unitTime;
  camera = startCamera;
  camera.eye = Interpolate(t, startCamera.eye, targetCamera.eye);
  camera.centre = Interpolate(t, startCamera.centre, targetCamera.centre);
  camera.pivot = Interpolate(t, startCamera.pivot, targetCamera.pivot);
  ScaleOrthographicSize(startCamera, ScaleOf(ViewingDistance(camera), ViewingDistance(startCamera)), camera);
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
