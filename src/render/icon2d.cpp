#include "korvane/icon2d.h"

namespace Korvane {

Icon2D::Icon2D() = default;
Icon2D::~Icon2D() = default;

bool Icon2D::GetIcon2DCoords(const Vector2& point, Vector2& result) const {
  const Vector2& half = bounds.halfExtent;
  if (half.x == 0.0 || half.y == 0.0) return false;
  result = Vector2((point.x - bounds.center.x) / half.x, (point.y - bounds.center.y) / half.y);
  return true;
}

}  // namespace Korvane
