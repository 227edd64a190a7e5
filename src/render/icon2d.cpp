#include "korvane/icon2d.h"

namespace Korvane {

Icon2D::Icon2D() = default;
Icon2D::~Icon2D() = default;

namespace {

double InHalfSizes(double offset, double halfSize) { return halfSize == 0.0 ? 0.0 : offset / halfSize; }

}  // namespace

bool Icon2D::GetIcon2DCoords(const Vector2& point, Vector2& result) const {
  const Vector2 offset = point - bounds.center;
  const Vector2& half = bounds.halfExtent;
  result = Vector2(InHalfSizes(offset.x, half.x), InHalfSizes(offset.y, half.y));
  return half.x != 0.0 && half.y != 0.0;
}

}  // namespace Korvane
