#pragma once

#include "korvane/export.h"
#include "korvane/vector3.h"

namespace Korvane {

/// An oriented plane by a normal and a point on it. All zero after construction.
class ZOVTOOLS_API Plane3D {
 public:
  Plane3D() = default;

  /// The normal is normalised; a degenerate one becomes zero, and every distance is then 0.
  void SetNormalAndPoint(Vector3 normalValue, Vector3 pointValue) {
    normal = normalValue.Normalize();
    normalLength = normal == Vector3() ? 0.0 : 1.0;
    point = pointValue;
  }

  const Vector3& GetNormal() const { return normal; }
  const Vector3& GetPoint() const { return point; }
  /// 1, or 0 for a degenerate normal.
  double GetNormalLength() const { return normalLength; }

  /// Positive on the side that the normal points to.
  double Distance(const Vector3& p) const { return (p - point).Dot(normal); }

 private:
  Vector3 normal;
  Vector3 point;
  double normalLength = 0.0;
};

}  // namespace Korvane
