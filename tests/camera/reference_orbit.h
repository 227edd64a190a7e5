#pragma once

#include <cmath>
#include <vector>

#include "camera/oracle.h"
#include "korvane/application_parameters.h"

namespace oracle {

/// The orbit written a second time, on Eigen, to compare whole drags with.
///
/// `Frame` takes the motion of a frame in fractions of the viewport. Angles are measured with the arc
/// tangent and vectors turned by rotation matrices, where the library uses the arc cosine and quaternions.
class ReferenceOrbit {
 public:
  ReferenceOrbit(const Korvane::CameraParameters& start, const Korvane::ApplicationParameters& parameters)
      : p(parameters), initial(start), working(start), doSnap(p.do_snap_orbit) {
    if (p.preserve_orbit_up_direction && p.align_orbit_up_direction) Straighten();
    working = initial;
    FillViews();
  }

  void Frame(double dx, double dy) {
    total += Eigen::Vector2d(dx, dy);
    if (p.preserve_orbit_up_direction) {
      Turntable(dx, dy);
    } else {
      Free(dx, dy);
    }
  }

  bool combined = false;
  Camera GetCamera() const { return working; }

 private:
  static constexpr double SMALL = 0x1p-23;

  static Vec Turned(const Vec& axis, double angle, const Vec& v) { return RightHanded(axis, -angle) * v; }
  static Vec Flat(const Vec& v, const Vec& normal) { return v - v.dot(normal) * normal; }

  // From `other` to `v`; what is parallel within the tolerance counts as exactly so, and a vector without a
  // direction as opposite.
  static double Angle(const Vec& v, const Vec& other, const Vec& axis) {
    if (v.norm() < SMALL || other.norm() < SMALL) return PI;
    const Vec a = v.normalized();
    const Vec b = other.normalized();
    if (a.cross(b).norm() < SMALL) return a.dot(b) > 0.0 ? 0.0 : PI;
    return SignedAngle(b, a, axis);
  }

  Vec HubUp() const { return From(p.scene_is_world ? p.scene_up_direction : p.world_up_direction); }
  Vec HubFront() const { return From(p.scene_is_world ? p.scene_front_direction : p.world_front_direction); }
  Vec OrbitUp() const { return p.do_custom_orbit ? From(p.custom_orbit_up) : HubUp(); }
  Vec OrbitFront() const { return p.do_custom_orbit ? From(p.custom_orbit_front) : HubFront(); }

  void Straighten() {
    const Vec u = OrbitUp().normalized();
    const Vec f = (initial.centre - initial.eye).normalized();
    const auto oblique = [](double c) { return std::abs(c) > SMALL && 1.0 - std::abs(c) > SMALL; };
    const double a = u.dot(initial.up.normalized());
    if (oblique(a) && oblique(u.dot(f))) initial.up = Flat(u, f) * (a < 0.0 ? -1.0 : 1.0);
  }

  void FillViews() {
    // The pair that the hub does not take.
    const Vec front = From(p.scene_is_world ? p.world_front_direction : p.scene_front_direction);
    const Vec up = From(p.scene_is_world ? p.world_up_direction : p.scene_up_direction);
    const Vec side = front.cross(up).normalized();
    for (int a = -1; a <= 1; ++a) {
      for (int b = -1; b <= 1; ++b) {
        for (int c = -1; c <= 1; ++c) {
          if (a == 0 && b == 0 && c == 0) continue;
          // From the eye to the target.
          const Vec view = -(front * a + up * b + side * c).normalized();
          views.push_back(view);
          if (std::abs(a) + std::abs(b) + std::abs(c) == 1) faces.push_back(view);
        }
      }
    }
  }

  static Vec Closest(const std::vector<Vec>& among, const Vec& direction) {
    const Vec* best = &among.front();
    for (const Vec& view : among) {
      if (view.dot(direction) > best->dot(direction)) best = &view;
    }
    return *best;
  }

  Eigen::Vector2d Remaining(const Vec& upAxis) {
    if (!doSnap) return {0.0, 0.0};
    const Vec f = (working.centre - working.eye).normalized();
    const Vec n = Closest(views, f);
    Eigen::Vector2d remaining(0.0, 0.0);
    if (p.preserve_orbit_up_direction && std::abs(std::abs(upAxis.dot(f)) - 1.0) < SMALL) {
      remaining.x() = Angle(working.up, Closest(faces, working.up), upAxis);
    } else {
      remaining.x() = Angle(p.preserve_orbit_up_direction ? Flat(f, upAxis) : f, Flat(n, upAxis), upAxis);
      const Vec right = Turned(upAxis, remaining.x(), f.cross(working.up));
      remaining.y() = Angle(Turned(upAxis, remaining.x(), f), n, right);
    }
    if (n != closest) {
      const bool elevationChanged = std::abs(n.dot(upAxis) - closest.dot(upAxis)) > SMALL;
      if (!p.preserve_orbit_up_direction) snapped[0] = false;
      if (!p.preserve_orbit_up_direction || elevationChanged) snapped[1] = false;
      closest = n;
    }
    return remaining;
  }

  double Next(int axis, double remaining, double delta) {
    const double threshold = axis == 0 ? p.snap_orbit_threshold_h : p.snap_orbit_threshold_v;
    const double outer = axis == 0 ? p.snap_orbit_acceleration_ax : p.snap_orbit_acceleration_ay;
    const double inner = axis == 0 ? p.snap_orbit_acceleration_bx : p.snap_orbit_acceleration_by;
    const double point = axis == 0 ? p.snap_orbit_acceleration_point_x : p.snap_orbit_acceleration_point_y;
    const double z = p.snap_orbit_dead_zone;
    const double m = p.orbit_multiplier;
    if (snapped[axis]) {
      accumulated[axis] += delta;
      if (std::abs(accumulated[axis]) <= z) return 0.0;
      snapped[axis] = false;
      return (accumulated[axis] - std::copysign(z, accumulated[axis])) * m / inner;
    }
    double step = m * delta;
    const double a = std::abs(remaining);
    if (a <= threshold) {
      const double speed = a > (1.0 - point) * threshold ? outer : inner;
      step = remaining * delta > 0.0 ? step * speed : step / speed;
    }
    if (step * remaining > 0.0 && std::abs(step) > a) {
      accumulated[0] = accumulated[1] = 0.0;
      snapped[axis] = true;
      return remaining;
    }
    return step;
  }

  double TurntableAngle(int axis, double remaining, double delta, double whole) {
    if (combined) return rotation[axis] = delta * p.orbit_multiplier;
    if (doSnap) return rotation[axis] += Next(axis, remaining, delta);
    return rotation[axis] = whole * p.orbit_multiplier;
  }

  void Turntable(double dx, double dy) {
    const Vec front = OrbitFront();
    const Vec side = front.cross(OrbitUp());
    const Vec upAxis = side.cross(front).normalized();
    const Camera base = combined ? working : initial;
    const Eigen::Vector2d remaining = Remaining(upAxis);
    Eigen::Matrix3d turn = Eigen::Matrix3d::Identity();
    if (!p.constrain_orbit_horizontal) {
      const double upright = upAxis.dot(initial.up);
      const bool upwards = upAxis.dot(initial.centre - initial.eye) > 0.0;
      const double sense = upright < -SMALL || (std::abs(upright) < SMALL && upwards) ? -1.0 : 1.0;
      turn = RightHanded(upAxis, -TurntableAngle(0, remaining.x(), dx * sense, total.x() * sense));
    }
    if (!p.constrain_orbit_vertical) {
      const Vec right = turn * (base.centre - base.eye).cross(base.up);
      const Vec tilt = Flat(right, upAxis).normalized();
      turn = RightHanded(tilt, -TurntableAngle(1, remaining.y(), dy, total.y())) * turn;
    }
    working.eye = base.pivot + turn * (base.eye - base.pivot);
    working.centre = working.eye + turn * (base.centre - base.eye);
    working.up = turn * base.up;
    if (!p.constrain_orbit_vertical) working.up.normalize();
  }

  double FreeAngle(int axis, double remaining, double delta) {
    return doSnap ? Next(axis, remaining, delta) : delta * p.orbit_multiplier;
  }

  void Free(double dx, double dy) {
    const Vec f = working.centre - working.eye;
    const Vec right = f.cross(working.up).normalized();
    const Vec up = right.cross(f).normalized();
    const Eigen::Vector2d remaining = Remaining(up);
    Eigen::Matrix3d turn = Eigen::Matrix3d::Identity();
    Eigen::Matrix3d tilt = Eigen::Matrix3d::Identity();
    if (!p.constrain_orbit_horizontal) turn = RightHanded(up, -FreeAngle(0, remaining.x(), dx));
    if (!p.constrain_orbit_vertical) tilt = RightHanded(right, -FreeAngle(1, remaining.y(), dy));
    working.eye = working.pivot + tilt * turn * (working.eye - working.pivot);
    working.centre = working.eye + tilt * turn * f;
    working.up = tilt * up;
  }

  const Korvane::ApplicationParameters& p;
  Camera initial;
  Camera working;
  bool doSnap;
  std::vector<Vec> views;
  std::vector<Vec> faces;
  Eigen::Vector2d total = Eigen::Vector2d::Zero();
  double accumulated[2] = {};
  double rotation[2] = {};
  bool snapped[2] = {};
  Vec closest = Vec::Zero();
};

}  // namespace oracle
