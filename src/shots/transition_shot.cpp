#include "shots/transition_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

void TransitionShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  startCamera = hub->GetCameraParameters();
  startRotation = CameraRotation(startCamera);
  targetRotation = CameraRotation(parameters.targetCamera);
}

bool TransitionShot::PerformShot(double dt, CameraParameters& camera) {
  const bool goesOn = BeginStep(parameters.duration, parameters.easeEnd);
  const double t = unitTime;
  const CameraParameters& target = parameters.targetCamera;
  const double projectionTransition = camera.projection_transition;  // the frame's own, not the move's

  Quaternion rotation;
  rotation.Slerp(t, startRotation, targetRotation);
  Vector3 rows[3];
  rotation.ToRotationMatrix(rows);
  const double distance = Math::LinearInterp(t, ViewingDistance(startCamera), ViewingDistance(target));

  camera = startCamera;
  camera.centre = Interpolate(t, startCamera.centre, target.centre);
  camera.eye = camera.centre - rows[0] * distance;
  camera.up = rows[1];
  camera.pivot = Interpolate(t, startCamera.pivot, target.pivot);
  InterpolateLens(t, startCamera, target, camera);
  camera.projection_type = target.projection_type;
  camera.perspective_with_ortho = target.perspective_with_ortho;
  camera.projection_transition = projectionTransition;
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
