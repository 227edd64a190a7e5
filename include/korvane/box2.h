#pragma once

#include "korvane/vector2.h"

namespace Korvane {

/// A rectangle by its centre and half extent. In widgets: viewport pixels, origin at the bottom left, y up.
struct Box2 {
  Vector2 center;
  Vector2 halfExtent;

  constexpr Box2() = default;
  constexpr Box2(const Vector2& centerValue, const Vector2& halfExtentValue)
      : center(centerValue), halfExtent(halfExtentValue) {}

  constexpr Vector2 Min() const { return center - halfExtent; }
  constexpr Vector2 Max() const { return center + halfExtent; }

  /// The low edges belong to the box and the high edges do not, so that boxes side by side share no point.
  constexpr bool IsPointInside(const Vector2& p) const {
    const Vector2 low = Min();
    const Vector2 high = Max();
    return p.x >= low.x && p.x < high.x && p.y >= low.y && p.y < high.y;
  }

  /// Writes `p` in the box's own scale, -1 to 1 across it, inside or not; the result is IsPointInside.
  /// A box without extent writes infinities or NaN and answers false.
  constexpr bool GetLocalCoords(const Vector2& p, Vector2& out) const {
    const bool inside = IsPointInside(p);  // first: `out` may be `p`
    out = Vector2((p.x - center.x) / halfExtent.x, (p.y - center.y) / halfExtent.y);
    return inside;
  }

  /// Twelve floats: the corners as x, y, z in the order low-low, low-high, high-high, high-low.
  void ToArray(float* out, float z) const {
    const Vector2 low = Min();
    const Vector2 high = Max();
    const Vector2 corners[4] = {low, {low.x, high.y}, high, {high.x, low.y}};
    for (const Vector2& corner : corners) {
      corner.ToArray(out);
      out[2] = z;
      out += 3;
    }
  }
};

}  // namespace Korvane
