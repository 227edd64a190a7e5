#pragma once

#include <cmath>

#include "korvane/export.h"
#include "korvane/vector3.h"

namespace Korvane {

/// A half line. The direction need not be of unit length; distances are counted in its length.
struct ZOVTOOLS_API Ray {
  Vector3 origin;
  Vector3 direction;

  constexpr Ray() = default;
  constexpr Ray(const Vector3& originValue, const Vector3& directionValue)
      : origin(originValue), direction(directionValue) {}

  /// Both faces count. False for a ray along the plane, which leaves `t` alone; otherwise `t` receives the
  /// distance to the plane even when the triangle is missed.
  /// Source: T. Möller, B. Trumbore, "Fast, minimum storage ray-triangle intersection", 1997.
  [[nodiscard]] bool IntersectTriangle(const Vector3 p[3], double& t) const {
    return IntersectTriangle(p[0], p[1], p[2], t);
  }
  [[nodiscard]] bool IntersectTriangle(const Vector3& p0, const Vector3& p1, const Vector3& p2,
                                       double& t) const {
    const Vector3 e1 = p1 - p0;
    const Vector3 e2 = p2 - p0;
    const Vector3 h = direction.Cross(e2);
    const double determinant = e1.Dot(h);
    if (!(std::abs(determinant) >= Math::EPSILON_VALUE)) return false;

    const Vector3 s = origin - p0;
    const Vector3 q = s.Cross(e1);
    t = e2.Dot(q) / determinant;
    const double u = s.Dot(h) / determinant;
    const double v = direction.Dot(q) / determinant;
    return t > 0.0 && u >= 0.0 && v >= 0.0 && u + v <= 1.0;
  }

  /// The triangles (q0, q1, q2) and, only if that is missed, (q2, q3, q0). `t` receives the smaller of the
  /// two distances, each Math::MAX_VALUE until written; that of a triangle that was missed counts, too.
  [[nodiscard]] bool IntersectQuad(const Vector3 q[4], double& t) const {
    double first = Math::MAX_VALUE;
    double second = Math::MAX_VALUE;
    const bool hit =
        IntersectTriangle(q[0], q[1], q[2], first) || IntersectTriangle(q[2], q[3], q[0], second);
    t = Math::Min(first, second);
    return hit;
  }
};

}  // namespace Korvane
