#pragma once

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
  bool IntersectTriangle(const Vector3 p[3], double& t) const;

  /// The triangles (q0, q1, q2) and, only if that is missed, (q2, q3, q0). `t` receives the smaller of the
  /// two distances, each Math::MAX_VALUE until written; that of a triangle that was missed counts, too.
  bool IntersectQuad(const Vector3 q[4], double& t) const;
};

}  // namespace Korvane
