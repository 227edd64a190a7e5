#include "camera/orbit_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "camera/finite_camera.h"
#include "korvane/camera_operations.h"
#include "korvane/quaternion.h"

namespace Korvane {

namespace {

// An angle that is no number would collapse the camera onto its pivot.
double FiniteOrZero(double angle) { return std::isfinite(angle) ? angle : 0.0; }

}  // namespace

// The settings of the pull about one axis.
struct OrbitOperation::SnapCurve {
  double threshold;  // radians
  double outerAcceleration;
  double innerAcceleration;
  double innerBandBegins;  // fraction of the threshold, from its outer edge
};

bool OrbitOperation::KeepsUp() const { return GetParameters().preserve_orbit_up_direction; }

void OrbitOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  snaps[ROTATION_HORIZONTAL] = snaps[ROTATION_VERTICAL] = AxisSnap();
  closestView = Vector3::Zero;
  if (hub == nullptr) return;

  const ApplicationParameters& parameters = GetParameters();
  initialCamera = hub->GetCameraParameters();
  doSnap = parameters.do_snap_orbit;
  if (KeepsUp() && parameters.align_orbit_up_direction) {
    AlignCameraToUpDirection(
        initialCamera, parameters.do_custom_orbit ? parameters.custom_orbit_up : hub->GetWorldUpDirection());
  }
  initialTurntable = Turntable(initialCamera);
  workingCamera = initialCamera;

  Vector3 front;
  Vector3 up;
  GetWorldUpAndFront(front, up);
  standardViews.Fill(front, up, front.Cross(up).Normalized());
}

void OrbitOperation::GetWorldUpAndFront(Vector3& front, Vector3& up) const {
  const ApplicationParameters& parameters = GetParameters();
  front = parameters.scene_is_world ? parameters.world_front_direction : parameters.scene_front_direction;
  up = parameters.scene_is_world ? parameters.world_up_direction : parameters.scene_up_direction;
}

void OrbitOperation::GetDeltaXY(double& dx, double& dy) const { GetRotationMotion(dx, dy); }

void OrbitOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  if (KeepsUp()) {
    PerformTurntable(camera);
  } else {
    PerformFree(camera);
  }
  KeepPlace(camera);
}

// One bad frame must not spoil the rest of the drag.
void OrbitOperation::KeepPlace(const CameraParameters& camera) {
  if (!IsCameraFinite(camera)) return;
  workingCamera.eye = camera.eye;
  workingCamera.centre = camera.centre;
  workingCamera.up = camera.up;
  workingCamera.pivot = camera.pivot;
}

// ---- the turntable ----

OrbitOperation::Turntable::Turntable(const CameraParameters& camera)
    : pivot(camera.pivot),
      pivotDistance((camera.eye - camera.pivot).Length()),
      viewingDistance((camera.eye - camera.centre).Length()),
      fromPivot((camera.eye - camera.pivot).Normalized()),
      backward(-ViewDirection(camera)),
      right(ViewDirection(camera).Cross(camera.up)),
      up(camera.up) {}

const OrbitOperation::TurntableAxes& OrbitOperation::GetTurntableAxes(
    const ApplicationParameters& parameters) {
  const bool custom = parameters.do_custom_orbit;
  const Vector3 up = custom ? parameters.custom_orbit_up : hub->GetWorldUpDirection();
  const Vector3 front = custom ? parameters.custom_orbit_front : hub->GetWorldFrontDirection();
  if (front != turntableAxes.front || up != turntableAxes.up) turntableAxes = TurntableAxes(front, up);
  return turntableAxes;
}

void OrbitOperation::PerformTurntable(CameraParameters& camera) {
  const ApplicationParameters& parameters = GetParameters();
  double x = 0.0;
  double y = 0.0;
  GetTurntableMotion(x, y);

  const TurntableAxes& axes = GetTurntableAxes(parameters);
  Turntable view = IsCombined() ? Turntable(workingCamera) : initialTurntable;

  double remainingX = 0.0;
  double remainingY = 0.0;
  SnapToClosestView(axes.upAxis, remainingX, remainingY);

  if (!parameters.constrain_orbit_horizontal) {
    const double sense = ReversesHorizontalSense(axes.upAxis) ? -1.0 : 1.0;
    view.TurnAbout(axes.upAxis, ChooseAngle(ROTATION_HORIZONTAL, remainingX, x * sense));
  }
  if (!parameters.constrain_orbit_vertical) {
    // The tilt axis stays horizontal.
    const Vector3 tiltAxis =
        (axes.front * view.right.Dot(axes.front) + axes.side * view.right.Dot(axes.side)).Normalize();
    view.TurnAbout(tiltAxis, ChooseAngle(ROTATION_VERTICAL, remainingY, y));
    view.fromPivot.Normalize();
    view.backward.Normalize();
    view.up.Normalize();
  }

  camera.eye = view.pivot + view.fromPivot * view.pivotDistance;
  camera.centre = camera.eye - view.backward * view.viewingDistance;
  camera.up = view.up;
}

// The motion of the frame where each frame counts by itself, that of the whole drag else.
void OrbitOperation::GetTurntableMotion(double& x, double& y) const {
  if (IsCombined() || doSnap) {
    GetDeltaXY(x, y);
  } else {
    GetCursorMotion(initialCursor, currentCursor, x, y);
  }
}

// The angle to turn the base camera by: this frame's for a combined operation, the total of the drag else.
double OrbitOperation::ChooseAngle(RotationType type, double remaining, double motion) {
  double& rotation = snaps[type].rotation;
  if (doSnap && !IsCombined()) {
    rotation += FiniteOrZero(GetNextRotation(type, remaining, motion));
  } else {
    rotation = FiniteOrZero(motion * GetParameters().orbit_multiplier);
  }
  return rotation;
}

// A camera upside down, or looking up along the axis, at the start of the drag turns the other way round.
bool OrbitOperation::ReversesHorizontalSense(const Vector3& upAxis) const {
  const double upright = upAxis.Dot(initialCamera.up);
  if (upright < -Math::EPSILON_VALUE) return true;
  const double alongAxis = upAxis.Dot(initialCamera.centre - initialCamera.eye);
  return std::abs(upright) < Math::EPSILON_VALUE && alongAxis > 0.0;
}

// ---- the free mode ----

void OrbitOperation::PerformFree(CameraParameters& camera) {
  const ApplicationParameters& parameters = GetParameters();
  double dx = 0.0;
  double dy = 0.0;
  GetDeltaXY(dx, dy);

  Vector3 forward = workingCamera.centre - workingCamera.eye;
  Vector3 toPivot = workingCamera.pivot - workingCamera.eye;
  const Vector3 right = forward.Cross(workingCamera.up);
  Vector3 up = right.Cross(forward).Normalize();
  const double pivotDistance = toPivot.Length();
  const double viewingDistance = forward.Length();

  double remainingX = 0.0;
  double remainingY = 0.0;
  SnapToClosestView(up, remainingX, remainingY);

  if (!parameters.constrain_orbit_horizontal) {
    const Quaternion q = Quaternion::AxisAngle(up, GetFreeAngle(ROTATION_HORIZONTAL, remainingX, dx));
    toPivot = q.Rotate(toPivot);
    forward = q.Rotate(forward);
  }
  if (!parameters.constrain_orbit_vertical) {
    const double angle = GetFreeAngle(ROTATION_VERTICAL, remainingY, dy);
    const Quaternion q = Quaternion::AxisAngle(right.Normalized(), angle);
    toPivot = q.Rotate(toPivot);
    forward = q.Rotate(forward);
    up = q.Rotate(up);
  }

  camera.eye = camera.pivot - toPivot.Normalize() * pivotDistance;
  camera.centre = camera.eye + forward.Normalize() * viewingDistance;
  camera.up = up.Normalize();
}

double OrbitOperation::GetFreeAngle(RotationType type, double remaining, double delta) {
  return FiniteOrZero(doSnap ? GetNextRotation(type, remaining, delta)
                             : delta * GetParameters().orbit_multiplier);
}

// ---- snapping ----

OrbitOperation::SnapCurve OrbitOperation::GetSnapCurve(RotationType type) const {
  const ApplicationParameters& p = GetParameters();
  if (type == ROTATION_HORIZONTAL) {
    return {p.snap_orbit_threshold_h, p.snap_orbit_acceleration_ax, p.snap_orbit_acceleration_bx,
            p.snap_orbit_acceleration_point_x};
  }
  return {p.snap_orbit_threshold_v, p.snap_orbit_acceleration_ay, p.snap_orbit_acceleration_by,
          p.snap_orbit_acceleration_point_y};
}

double OrbitOperation::GetNextRotation(RotationType type, double remaining, double delta) {
  AxisSnap& snap = snaps[type];
  const SnapCurve curve = GetSnapCurve(type);
  if (snap.snapped) return LeaveSnap(snap, delta, curve);

  double step = GetParameters().orbit_multiplier * delta;
  const double distance = std::abs(remaining);
  if (!(distance > curve.threshold)) {
    const bool outerBand = distance > (1.0 - curve.innerBandBegins) * curve.threshold;
    const double acceleration = outerBand ? curve.outerAcceleration : curve.innerAcceleration;
    step = remaining * delta > 0.0 ? step * acceleration : step / acceleration;
  }
  const bool overshoots = step * remaining > 0.0 && std::abs(step) > distance;
  if (!overshoots) return step;

  snaps[ROTATION_HORIZONTAL].accumulated = snaps[ROTATION_VERTICAL].accumulated = 0.0;
  snap.snapped = true;
  return remaining;
}

// Held until the cursor has left the dead zone; then only what lies past it counts.
double OrbitOperation::LeaveSnap(AxisSnap& snap, double delta, const SnapCurve& curve) {
  const double deadZone = GetParameters().snap_orbit_dead_zone;
  snap.accumulated += delta;
  if (snap.accumulated >= -deadZone && snap.accumulated <= deadZone) return 0.0;
  snap.snapped = false;
  const double past =
      snap.accumulated < -deadZone ? snap.accumulated + deadZone : snap.accumulated - deadZone;
  return past * GetParameters().orbit_multiplier / curve.innerAcceleration;
}

void OrbitOperation::SnapToClosestView(const Vector3& upAxis, double& remainingX, double& remainingY) {
  if (!doSnap) return;
  const Vector3 view = workingCamera.centre - workingCamera.eye;
  const Vector3 forward = KeepsUp() ? view.Normalized() : view;
  const Vector3 target = -standardViews.GetClosestAlignDir(forward, false).Normalized();
  const bool alongAxis = std::abs(std::abs(upAxis.Dot(forward)) - 1.0) < Math::EPSILON_VALUE;
  if (!KeepsUp()) {
    MeasureRemaining(forward, forward, target, upAxis, remainingX, remainingY);
  } else if (alongAxis) {
    // A horizontal angle has no meaning for the view, so the camera's up stands in for it.
    const Vector3 face = -standardViews.GetClosestAlignDir(workingCamera.up, true).Normalized();
    remainingX = Vector3(workingCamera.up).FindAngleWith(face, upAxis);
    remainingY = 0.0;
  } else {
    MeasureRemaining(forward, ProjectOnPlane(forward, upAxis), target, upAxis, remainingX, remainingY);
  }
  ReleaseSnapOnNewView(upAxis, target);
}

// First about the up axis, from `heading` to the target laid flat; then, so turned, about the right.
void OrbitOperation::MeasureRemaining(const Vector3& forward, Vector3 heading, const Vector3& target,
                                      const Vector3& upAxis, double& remainingX, double& remainingY) const {
  remainingX = heading.FindAngleWith(ProjectOnPlane(target, upAxis), upAxis);
  const Quaternion q = Quaternion::AxisAngle(upAxis, remainingX);
  const Vector3 right = q.Rotate(forward.Cross(workingCamera.up));
  remainingY = q.Rotate(forward).FindAngleWith(target, right);
}

// On the turntable a new view at the same elevation keeps the vertical hold, and the horizontal hold is
// never released here: only leaving the dead zone does that.
void OrbitOperation::ReleaseSnapOnNewView(const Vector3& upAxis, const Vector3& target) {
  if (target == closestView) return;
  const bool elevationChanged = std::abs(target.Dot(upAxis) - closestView.Dot(upAxis)) > Math::EPSILON_VALUE;
  if (!KeepsUp()) snaps[ROTATION_HORIZONTAL].snapped = false;
  if (!KeepsUp() || elevationChanged) snaps[ROTATION_VERTICAL].snapped = false;
  closestView = target;
}

}  // namespace Korvane
