#pragma once

#include <eigen3/Eigen/Core>
#include <eigen3/Eigen/Geometry>

#include <cmath>

#include "korvane/camera_parameters.h"

/// Expected mathematics, written apart from the library on Eigen: rotations by Rodrigues, right-handed, and
/// signed angles by the arc tangent.
namespace oracle {

using Vec = Eigen::Vector3d;
constexpr double PI = 3.14159265358979323846;

inline Vec From(const Korvane::Vector3& v) { return {v.x, v.y, v.z}; }
inline Korvane::Vector3 To(const Vec& v) { return {v.x(), v.y(), v.z()}; }

/// Right-handed about a unit axis. (The engine turns the other way round for a positive angle.)
inline Eigen::Matrix3d RightHanded(const Vec& axis, double angle) {
  return Eigen::AngleAxisd(angle, axis).toRotationMatrix();
}

/// Of unit length; zero where the length is at most 2^-23, as the engine has it.
inline Vec Unit(const Vec& v) {
  const double length = v.norm();
  return length > 0x1p-23 ? Vec(v / length) : Vec(Vec::Zero());
}

/// The engine's turn: `v` by `angle` about `axis` against the right hand, by Rodrigues' formula. An axis of
/// another length than 1 scales the tangent of half the angle.
inline Vec Turn(const Vec& axis, double angle, const Vec& v) {
  const double length = axis.norm();
  if (length == 0.0) return v;
  const Vec n = axis / length;
  const double a = -2.0 * std::atan2(length * std::sin(angle / 2.0), std::cos(angle / 2.0));
  return v * std::cos(a) + n.cross(v) * std::sin(a) + n * n.dot(v) * (1.0 - std::cos(a));
}

/// From `from` to `to`, in 0 to PI, with the sign of the turn about `axis`.
inline double SignedAngle(const Vec& from, const Vec& to, const Vec& axis) {
  const Vec normal = from.cross(to);
  const double magnitude = std::atan2(normal.norm(), from.dot(to));
  return normal.dot(axis) >= 0.0 ? magnitude : -magnitude;
}

struct Camera {
  Vec eye;
  Vec centre;
  Vec up;
  Vec pivot;

  explicit Camera(const Korvane::CameraParameters& c)
      : eye(From(c.eye)), centre(From(c.centre)), up(From(c.up)), pivot(From(c.pivot)) {}
};

/// Where a point lies in the view, in fractions of its width and height from its left and its bottom edge.
/// Written out from the meaning of the frustum: on the plane at the point's depth the view reaches from
/// -tan(left) depth to tan(right) depth.
inline Eigen::Vector2d Project(const Korvane::CameraParameters& c, const Vec& point) {
  const Camera camera(c);
  const Vec forward = (camera.centre - camera.eye).normalized();
  const Vec right = forward.cross(camera.up).normalized();
  const Vec up = right.cross(forward);
  const Vec offset = point - camera.eye;
  const double x = offset.dot(right);
  const double y = offset.dot(up);
  if (c.IsOrthographic()) return {x / c.ortho_width + 0.5, y / c.ortho_height + 0.5};
  const auto tangent = [](double degrees) { return std::tan(degrees * PI / 180.0); };
  const double depth = offset.dot(forward);
  const double left = tangent(c.left_fov) * depth;
  const double bottom = tangent(c.bottom_fov) * depth;
  return {(x + left) / (left + tangent(c.right_fov) * depth),
          (y + bottom) / (bottom + tangent(c.top_fov) * depth)};
}

}  // namespace oracle
