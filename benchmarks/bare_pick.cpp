#include "bare_pick.h"

#include <Eigen/Geometry>
#include <algorithm>
#include <cmath>
#include <limits>

using Eigen::Vector3d;
using Eigen::Vector3f;

namespace {

constexpr double TOLERANCE = 1.1920928955078125e-07;
constexpr double FARTHEST = std::numeric_limits<double>::max();

double Tangent(double degrees) { return std::tan(degrees * 0.017453292519943295); }

Vector3d Widen(const float* values) { return Eigen::Map<const Vector3f>(values).cast<double>(); }

}  // namespace

void BarePick::Begin(double x, double y, double halfWidth, double halfHeight, const BareCamera& camera) {
  nearest = FARTHEST;
  selection = -1;
  const Vector3d forward = camera.centre - camera.eye;
  const Vector3d right = forward.cross(camera.up);
  const double distance = forward.norm();
  const double horizontal = distance * std::max(Tangent(camera.halfAngles[0]), Tangent(camera.halfAngles[1]));
  const double vertical = distance * std::max(Tangent(camera.halfAngles[2]), Tangent(camera.halfAngles[3]));
  origin = camera.eye;
  direction = (forward + right.normalized() * (horizontal * (x - halfWidth) / halfWidth) +
               right.cross(forward).normalized() * (vertical * (y - halfHeight) / halfHeight))
                  .normalized();
}

void BarePick::Offer(const float* quad, int id) {
  const Vector3d a = Widen(quad);
  const Vector3d b = Widen(quad + 3);
  const Vector3d c = Widen(quad + 6);
  const Vector3d d = Widen(quad + 9);
  double first = FARTHEST;
  double second = FARTHEST;
  const bool hitFirst = Meet(a, b, c, first);
  const bool hitSecond = Meet(c, d, a, second);
  const double distance = std::min(first, second);
  if (!(hitFirst || hitSecond) || distance >= nearest) return;
  nearest = distance;
  selection = id;
}

// T. Möller, B. Trumbore, "Fast, minimum storage ray-triangle intersection", 1997.
bool BarePick::Meet(const Vector3d& a, const Vector3d& b, const Vector3d& c, double& t) const {
  const Vector3d e1 = b - a;
  const Vector3d e2 = c - a;
  const Vector3d h = direction.cross(e2);
  const double determinant = e1.dot(h);
  if (std::abs(determinant) < TOLERANCE) return false;
  const Vector3d s = origin - a;
  const Vector3d q = s.cross(e1);
  t = e2.dot(q) / determinant;
  const double u = s.dot(h) / determinant;
  const double v = direction.dot(q) / determinant;
  return t > 0.0 && u >= 0.0 && v >= 0.0 && u + v <= 1.0;
}
