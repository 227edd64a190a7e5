#pragma once

#include "korvane/pixel_icon2d.h"

namespace Korvane {

/// Whether two colours of a region map stand for the same region. The pictures of a map may have passed
/// through a format that bends its colours a little.
inline bool IsSameRegionColour(const Vector3& a, const Vector3& b) {
  constexpr double REACH = 0.14;
  return (a - b).Length() < REACH;
}

/// The point of a map, taken to be star-shaped around its centre, that is nearest to a point.
Vector2 FindClosestPoint(const PixelIcon2D& map, const Vector2& point);

/// Whether the colour stands in the map at any of the corners and the middles of the sides of a square
/// around a point.
bool IsColourAround(const PixelIcon2D& map, const Vector2& point, const Vector3& colour);

}  // namespace Korvane
