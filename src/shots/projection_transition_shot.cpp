#include "shots/projection_transition_shot.h"

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

// Without `use_projection_transitions` both cameras stay at their defaults.
void ProjectionTransitionShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr || !hub->GetApplicationParameters().use_projection_transitions) return;
  using Type = CameraParameters::ProjectionType;
  startCamera = targetCamera = hub->GetCameraParameters();
  const auto present = startCamera.projection_type;
  const auto wanted = static_cast<Type>(parameters.targetProjection);

  if (present == Type::Perspective && wanted == Type::Orthographic) {
    startCamera.projection_transition = Math::EPSILON_VALUE;
    targetCamera.projection_transition = 1.0;
    targetCamera.projection_type = Type::Orthographic;
  } else if (present == Type::Orthographic && wanted == Type::Perspective) {
    startCamera.projection_transition = 1.0 - Math::EPSILON_VALUE;
    targetCamera.projection_transition = 0.0;
    targetCamera.projection_type = Type::Perspective;
  } else {
    parameters.duration = 0.0;
  }
}

bool ProjectionTransitionShot::PerformShot(double dt, CameraParameters& camera) {
  const bool goesOn = BeginStep(parameters.duration, parameters.easeEnd);
  const double t = unitTime;
  const double from = startCamera.projection_transition;
  const double to = targetCamera.projection_transition;

  camera = startCamera;
  if (from > to) {
    camera.projection_transition = to >= from - t ? to : Math::Min(1.0, from - t);
  } else {
    camera.projection_transition = from + t > 0.0 ? Math::Min(to, from + t) : 0.0;
  }
  camera.projection_type = targetCamera.projection_type;
  return EndStep(dt, goesOn);
}

}  // namespace Korvane
