#include "korvane/plane3d.h"

namespace Korvane {

void Plane3D::SetNormalAndPoint(Vector3 normalValue, Vector3 pointValue) {
  normal = normalValue.Normalize();
  normalLength = normal == Vector3::Zero ? 0.0 : 1.0;
  point = pointValue;
}

}  // namespace Korvane
