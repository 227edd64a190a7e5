#include "korvane/box3.h"

namespace Korvane {

const int Box3::facesLookUp[6][4] = {
    {1, 5, 7, 3}, {5, 4, 6, 7}, {4, 0, 2, 6}, {0, 1, 3, 2}, {3, 7, 6, 2}, {0, 4, 5, 1},
};

Box3::Box3() : Box3(Vector3::Zero, Vector3(1.0)) {}

Box3::Box3(const Vector3& centerValue, const Vector3& extentValue)
    : center(centerValue),
      extent(extentValue),
      axes{Vector3(1.0, 0.0, 0.0), Vector3(0.0, 1.0, 0.0), Vector3(0.0, 0.0, 1.0)} {
  SetCorners();
}

const Vector3& Box3::GetAxis(int index) const {
  return index >= 0 && index < 3 ? axes[index] : Vector3::Zero;
}

void Box3::SetCenter(const Vector3& value) {
  center = value;
  SetCorners();
}

void Box3::SetExtent(const Vector3& value) {
  extent = value;
  SetCorners();
}

void Box3::SetAxis(int index, const Vector3& value) {
  if (index < 0 || index >= 3) return;
  axes[index] = value;
  SetCorners();
}

void Box3::SetCorner(int index, const Vector3& value) {
  if (index >= 0 && index < 8) corners[index] = value;
}

void Box3::SetCorners() {
  for (Vector3& axis : axes) {
    if (axis.LengthSquared() != 1.0) axis.Normalize();  // the division by 1 changes nothing
  }
  for (int corner = 0; corner < 8; ++corner) {
    const double a = (corner & 4) != 0 ? extent.x : -extent.x;
    const double b = (corner & 2) != 0 ? extent.y : -extent.y;
    const double c = (corner & 1) != 0 ? extent.z : -extent.z;
    corners[corner] = center + axes[0] * a + axes[1] * b + axes[2] * c;
  }
}

}  // namespace Korvane
