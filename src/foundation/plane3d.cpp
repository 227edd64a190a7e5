#include "korvane/plane3d.h"

namespace Korvane {

void Plane3D::SetNormalAndPoint(const Vector3& normalValue, const Vector3& pointValue) {
  normal = normalValue;
  normal.Normalize();
  normalLength = normal == Vector3::Zero ? 0.0 : 1.0;
  point = pointValue;
}

}  // namespace Korvane
