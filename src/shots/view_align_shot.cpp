#include "shots/view_align_shot.h"

#include <cmath>

#include "camera/scene_bounds.h"
#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

namespace {

bool IsNearlyOne(double cosine) { return std::abs(1.0 - cosine) < Math::EPSILON_VALUE; }

// The candidate most nearly along `wanted`; the first wins a tie.
template <std::size_t count>
const Vector3& ClosestOf(const Vector3 (&candidates)[count], const Vector3& wanted) {
  std::size_t closest = 0;
  for (std::size_t i = 1; i < count; ++i) {
    if (candidates[i].Dot(wanted) > candidates[closest].Dot(wanted)) closest = i;
  }
  return candidates[closest];
}

}  // namespace

void ViewAlignShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  const ApplicationParameters& scene = hub->GetApplicationParameters();
  startCamera = targetCamera = hub->GetCameraParameters();

  Axes axes;
  axes.up = scene.scene_up_direction.Normalized();
  axes.front = scene.scene_front_direction.Normalized();
  axes.side = axes.front.Cross(axes.up).Normalize();
  const Vector3 direction = GetDirection(axes);
  if (parameters.useCustom) {
    axes.up = parameters.customUp;
    axes.front = parameters.customFront;
    axes.side = axes.front.Cross(axes.up).Normalize();
  }
  if (!parameters.keepSceneUp) TurnUpTowardsCamera(axes);

  targetCamera.up = ChooseUp(axes, direction);
  if (parameters.fit) {
    FitTarget(*hub, direction);
  } else {
    MoveTargetAboutCentre(direction);
  }
  SetRotations();
}

Vector3 ViewAlignShot::GetDirection(const Axes& axes) const {
  if (parameters.useCustom) {
    const Vector3& custom = parameters.customDirection;
    return (axes.front * custom.x + axes.up * custom.y + axes.side * custom.z).Normalize();
  }
  const Vector3 directions[ViewAlignShotParameters::DIRECTION_COUNT] = {
      axes.front, -axes.front, axes.up, -axes.up, axes.side, -axes.side,
  };
  Vector3 sum;
  for (int i = 0; i < ViewAlignShotParameters::DIRECTION_COUNT; ++i) {
    if (parameters.directionFlags[i]) sum += directions[i];
  }
  return sum;
}

// Turns the frame so that its up is the axis nearest to the camera's present up.
void ViewAlignShot::TurnUpTowardsCamera(Axes& axes) const {
  // The small step back against the view settles ties on a diagonal.
  const Vector3 wanted = startCamera.up - ViewDirection(startCamera) * Math::EPSILON_VALUE;
  const Vector3 candidates[] = {axes.front, -axes.front, axes.side, -axes.side, axes.up, -axes.up};
  const Quaternion q = Quaternion::Align(axes.up, ClosestOf(candidates, wanted));
  axes.up = q.Rotate(axes.up);
  axes.front = q.Rotate(axes.front);
  axes.side = q.Rotate(axes.side);
}

Vector3 ViewAlignShot::ChooseUp(const Axes& axes, const Vector3& direction) const {
  const Vector3 unitDirection = direction.Normalized();
  const double cosine = unitDirection.Dot(axes.up);
  if (1.0 - std::abs(cosine) < Math::EPSILON_VALUE) return ChooseUpAlongAxis(axes, cosine);
  if (!parameters.useCustom && KeepsPresentUp(axes, unitDirection)) return startCamera.up;
  return axes.up;
}

// A view from the top or the bottom keeps the direction on the screen that the camera has now.
Vector3 ViewAlignShot::ChooseUpAlongAxis(const Axes& axes, double cosine) const {
  const double sign = cosine > 0.0 ? 1.0 : -1.0;
  const Vector3 wanted = (ViewDirection(startCamera) + startCamera.up * sign).Normalize();
  const Vector3 candidates[] = {axes.front, -axes.front, axes.side, -axes.side};
  return ClosestOf(candidates, wanted) * sign;
}

// In the view already: a camera rolled onto another axis keeps its roll.
bool ViewAlignShot::KeepsPresentUp(const Axes& axes, const Vector3& direction) const {
  if (!IsNearlyOne(ViewDirection(startCamera).Dot(-direction))) return false;
  for (const Vector3& axis : {axes.front, axes.up, axes.side}) {
    const double cosine = axis.Dot(startCamera.up);
    if (IsNearlyOne(cosine) || IsNearlyOne(-cosine)) return true;
  }
  return false;
}

// The fit of a box squares the up of the target, or finds another for one along the view. The target's frame
// squares its up, too: what it can square is left to it, so that it is rounded once. What cannot be fitted
// leaves the target where it is, which is then the end of the move.
void ViewAlignShot::FitTarget(const CameraOperations& hub, const Vector3& direction) {
  const Vector3 up = targetCamera.up;
  RecalculateSceneBoundsOf(hub);
  const ApplicationParameters& scene = hub.GetApplicationParameters();
  if (scene.global_bound_geometry == ApplicationParameters::BoundGeometryType::Box) {
    (void)hub.FitBoundingBoxToView(scene.scene_bound_centre, scene.scene_bound_box, -direction, up,
                                   targetCamera);
  } else {
    (void)hub.FitBoundingSphereToView(scene.scene_bound_centre, scene.scene_bound_radius, -direction, up,
                                      targetCamera);
  }
  if (direction.Normalized().Cross(up).Normalized() != Vector3::Zero) targetCamera.up = up;
  startDistance = ViewingDistance(startCamera);
  targetDistance = ViewingDistance(targetCamera);
}

// The camera keeps its target and its distance.
void ViewAlignShot::MoveTargetAboutCentre(const Vector3& direction) {
  startDistance = targetDistance = (startCamera.pivot - startCamera.eye).Length();
  targetCamera.eye = targetCamera.centre + direction.Normalized() * ViewingDistance(startCamera);
}

void ViewAlignShot::SetRotations() {
  startRotation = CameraRotation(startCamera);
  const CameraFrame target(targetCamera);
  const Quaternion roll = Quaternion::AxisAngle(target.forward, -parameters.rollAngle * Math::DEG_TO_RAD);
  const Quaternion pan = Quaternion::AxisAngle(target.up, parameters.panAngle * Math::DEG_TO_RAD);
  targetRotation = CameraRotation(targetCamera) * roll * pan;
  targetRotation.Normalize();
}

bool ViewAlignShot::PerformShot(double dt, CameraParameters& camera) {
  const bool goesOn = BeginStep(parameters.duration);
  const double t = unitTime;
  Quaternion rotation;
  rotation.Slerp(t, startRotation, targetRotation);
  Vector3 rows[3];
  rotation.ToRotationMatrix(rows);
  const double distance = Math::LinearInterp(t, startDistance, targetDistance);

  if (parameters.fit) {
    camera.centre = Interpolate(t, startCamera.centre, targetCamera.centre);
    camera.eye = camera.centre - rows[0] * distance;
    camera.pivot = camera.centre;
  } else {
    camera.pivot = Interpolate(t, startCamera.pivot, targetCamera.pivot);
    TurnAboutPivot(rotation, rows[0], distance, camera);
  }
  camera.up = rows[1];
  InterpolateLens(t, startCamera, targetCamera, camera);
  return EndStep(dt, goesOn);
}

void ViewAlignShot::TurnAboutPivot(const Quaternion& rotation, const Vector3& forward, double distance,
                                   CameraParameters& camera) const {
  Quaternion turned = startRotation.Inverse() * rotation;
  turned.Normalize();
  const Vector3 toPivot = turned.Rotate(startCamera.pivot - startCamera.eye).Normalize();
  camera.eye = camera.pivot - toPivot * distance;
  camera.centre = camera.eye + forward * distance;
}

}  // namespace Korvane
