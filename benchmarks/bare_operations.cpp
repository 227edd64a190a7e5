#include "bare_operations.h"

#include <algorithm>
#include <cmath>

using Eigen::AngleAxisd;
using Eigen::Matrix3d;
using Eigen::Vector3d;

namespace {

constexpr double TOLERANCE = 1.1920928955078125e-07;
constexpr double PI = 3.141592653589793;
constexpr double DEG_TO_RAD = 0.017453292519943295;

// The library turns against the right-hand rule.
Matrix3d Turn(const Vector3d& axis, double angle) { return AngleAxisd(-angle, axis).toRotationMatrix(); }

Vector3d Flatten(const Vector3d& v, const Vector3d& normal) { return v - normal * v.dot(normal); }

// The signed angle from `to` to `from`, right-handed about the axis.
double FindAngle(Vector3d from, Vector3d to, const Vector3d& axis) {
  from.normalize();
  to.normalize();
  const double cosine = from.dot(to);
  Vector3d normal = from.cross(to);
  const double sine = normal.norm();
  if (sine <= TOLERANCE) return cosine > 0.0 ? 0.0 : PI;
  normal /= sine;
  if (!(normal.dot(axis.normalized()) > 0.0)) normal = -normal;
  const Vector3d side = Turn(normal, PI / 2.0) * to;
  const double angle = std::acos(std::clamp(cosine, -1.0, 1.0));
  return side.normalized().dot(from) > 0.0 ? -angle : angle;
}

bool IsSame(double a, double b) { return !(std::abs(a - b) > TOLERANCE); }
bool IsSame(const Vector3d& a, const Vector3d& b) { return !((a - b).squaredNorm() > TOLERANCE); }

}  // namespace

bool IsSameView(const BareCamera& a, const BareCamera& b) {
  for (std::size_t i = 0; i < a.halfAngles.size(); ++i) {
    if (!IsSame(a.halfAngles[i], b.halfAngles[i])) return false;
  }
  return IsSame(a.eye, b.eye) && IsSame(a.centre, b.centre) && IsSame(a.up, b.up) &&
         IsSame(a.pivot, b.pivot) && IsSame(a.orthoWidth, b.orthoWidth) &&
         IsSame(a.orthoHeight, b.orthoHeight) && IsSame(a.pageScale, b.pageScale) &&
         IsSame(a.pageOriginX, b.pageOriginX) && IsSame(a.pageOriginY, b.pageOriginY) &&
         a.projection == b.projection && a.projectionTransition == b.projectionTransition;
}

// ---- orbit ----

BareOrbit::BareOrbit(const BareSettings& orbitSettings, const BareCamera& camera, BareCursor cursor)
    : settings(orbitSettings), initial(camera), working(camera), first(cursor), previous(cursor) {
  const Vector3d side = settings.front.cross(settings.up).normalized();
  // Faces, edges, corners: in this order a tie goes to the lowest.
  std::size_t count = 0;
  for (int parts = 1; parts <= 3; ++parts) {
    for (int a = -1; a <= 1; ++a) {
      for (int b = -1; b <= 1; ++b) {
        for (int c = -1; c <= 1; ++c) {
          if (std::abs(a) + std::abs(b) + std::abs(c) != parts) continue;
          views[count++] = -(settings.front * a + settings.up * b + side * c).normalized();
        }
      }
    }
  }
}

void BareOrbit::Step(BareCursor cursor, BareCamera& camera) {
  const double tx = static_cast<double>(cursor.x - first.x) / settings.width;
  const double ty = static_cast<double>(cursor.y - first.y) / settings.height;
  const double dx = static_cast<double>(cursor.x - previous.x) / settings.width;
  const double dy = static_cast<double>(cursor.y - previous.y) / settings.height;
  previous = cursor;

  const Vector3d side = settings.front.cross(settings.up);
  const Vector3d upAxis = side.cross(settings.front).normalized();
  const double pivotDistance = (initial.eye - initial.pivot).norm();
  const double viewingDistance = (initial.eye - initial.centre).norm();
  const Vector3d forward = (initial.centre - initial.eye).normalized();
  Vector3d fromPivot = (initial.eye - initial.pivot).normalized();
  Vector3d backward = -forward;
  Vector3d right = forward.cross(initial.up);
  Vector3d up = initial.up;

  double remainingX = 0.0;
  double remainingY = 0.0;
  if (settings.snapping) Measure(upAxis, remainingX, remainingY);

  const double sense = upAxis.dot(initial.up) < -TOLERANCE ? -1.0 : 1.0;
  horizontal.rotation =
      settings.snapping
          ? horizontal.rotation + NextRotation(horizontal, settings.horizontalSnap, remainingX, dx * sense)
          : tx * sense * settings.orbitMultiplier;
  const Matrix3d turn = Turn(upAxis, horizontal.rotation);
  fromPivot = turn * fromPivot;
  backward = turn * backward;
  right = turn * right;
  up = turn * up;

  const Vector3d tiltAxis =
      (settings.front * right.dot(settings.front) + side * right.dot(side)).normalized();
  vertical.rotation = settings.snapping
                          ? vertical.rotation + NextRotation(vertical, settings.verticalSnap, remainingY, dy)
                          : ty * settings.orbitMultiplier;
  const Matrix3d tilt = Turn(tiltAxis, vertical.rotation);
  fromPivot = (tilt * fromPivot).normalized();
  backward = (tilt * backward).normalized();
  up = (tilt * up).normalized();

  camera.eye = initial.pivot + fromPivot * pivotDistance;
  camera.centre = camera.eye - backward * viewingDistance;
  camera.up = up;
  working = camera;
}

void BareOrbit::Measure(const Vector3d& upAxis, double& remainingX, double& remainingY) {
  const Vector3d forward = (working.centre - working.eye).normalized();
  const auto target = std::max_element(views.begin(), views.end(), [&](const auto& a, const auto& b) {
    return forward.dot(a) < forward.dot(b);
  });
  if (std::abs(std::abs(upAxis.dot(forward)) - 1.0) >= TOLERANCE) {
    remainingX = FindAngle(Flatten(forward, upAxis), Flatten(*target, upAxis), upAxis);
    const Matrix3d turn = Turn(upAxis, remainingX);
    remainingY = FindAngle(turn * forward, *target, turn * forward.cross(working.up));
  }
  if (*target == closest) return;
  if (std::abs(target->dot(upAxis) - closest.dot(upAxis)) > TOLERANCE) vertical.snapped = false;
  closest = *target;
}

double BareOrbit::NextRotation(AxisSnap& snap, const BareSettings::Snap& curve, double remaining,
                               double delta) {
  if (snap.snapped) {
    snap.accumulated += delta;
    const double past =
        snap.accumulated - std::clamp(snap.accumulated, -settings.deadZone, settings.deadZone);
    if (past == 0.0) return 0.0;
    snap.snapped = false;
    return past * settings.orbitMultiplier / curve.innerAcceleration;
  }
  double step = settings.orbitMultiplier * delta;
  const double distance = std::abs(remaining);
  if (distance <= curve.threshold) {
    const bool outer = distance > (1.0 - curve.innerBandBegins) * curve.threshold;
    const double acceleration = outer ? curve.outerAcceleration : curve.innerAcceleration;
    step = remaining * delta > 0.0 ? step * acceleration : step / acceleration;
  }
  if (step * remaining <= 0.0 || std::abs(step) <= distance) return step;
  horizontal.accumulated = vertical.accumulated = 0.0;
  snap.snapped = true;
  return remaining;
}

// ---- pan ----

void BarePan::Step(BareCursor cursor, BareCamera& camera) {
  const double dx = static_cast<double>(cursor.x - previous.x) / settings.width;
  const double dy = static_cast<double>(cursor.y - previous.y) / settings.height;
  previous = cursor;

  const Vector3d forward = (camera.centre - camera.eye).normalized();
  const Vector3d toTheLeft = camera.up.cross(forward);
  const Vector3d trueUp = forward.cross(toTheLeft).normalized();
  const double depth = (camera.pivot - camera.eye).dot(forward);
  std::array<double, 4> tangents;
  for (std::size_t i = 0; i < 4; ++i) tangents[i] = std::tan(camera.halfAngles[i] * DEG_TO_RAD);
  const double width = (tangents[0] + tangents[1]) * depth;
  const double height = (tangents[2] + tangents[3]) * depth;
  const Vector3d shift =
      (toTheLeft.normalized() * (std::abs(width) * dx) + trueUp * (std::abs(height) * dy)) *
      settings.panMultiplier;
  camera.centre += shift;
  camera.eye += shift;
}

// ---- zoom ----

void BareZoom::Step(BareCursor cursor, BareCamera& camera) {
  const double offset = (first.x - cursor.x) + (cursor.y - first.y);
  if (!Move(offset, camera)) return;
  const double scale = (camera.centre - camera.eye).norm() / (initial.centre - initial.eye).norm();
  camera.orthoWidth = initial.orthoWidth * scale;
  camera.orthoHeight = initial.orthoHeight * scale;
}

bool BareZoom::Move(double offset, BareCamera& camera) {
  const Vector3d toPivot = initial.pivot - initial.eye;
  const Vector3d forward = (initial.centre - initial.eye).normalized();
  const double ratio = std::pow(settings.zoomSensitivity, offset);
  if (offset > 0.0) {
    if (offset < settings.zoomOutSnapSize) {
      unitAmount = 0.0;
      return false;
    }
    const double outward = std::pow(settings.zoomSensitivity, offset - settings.zoomOutSnapSize);
    camera.eye = initial.pivot - toPivot * outward;
    const double back = (camera.eye - initial.eye).dot(-toPivot.normalized());
    const bool limited = back > settings.zoomBackDistance;
    if (limited) camera.eye = initial.eye - toPivot.normalized() * settings.zoomBackDistance;
    unitAmount = limited ? -1.0 : -back / settings.zoomBackDistance;
  } else {
    camera.eye = initial.pivot - toPivot * ratio;
    unitAmount = 1.0 - std::clamp((ratio - settings.zoomMinLimit) / (1.0 - settings.zoomMinLimit), 0.0, 1.0);
  }
  camera.centre = camera.eye + forward * (initial.pivot - camera.eye).dot(forward);
  return true;
}
