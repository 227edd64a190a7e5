#include "disc/region_map.h"

namespace Korvane {

namespace {

constexpr int BISECTIONS = 25;
constexpr double INWARD = 0.5;  // pixels

bool HasColour(const PixelIcon2D& map, const Vector2& point) {
  Vector3 colour;
  return map.GetColor(point, colour);
}

double StepInward(double coordinate, double centre) {
  return coordinate + (centre > coordinate ? INWARD : -INWARD);
}

}  // namespace

Vector2 FindClosestPoint(const PixelIcon2D& map, const Vector2& point) {
  if (HasColour(map, point)) return point;
  const Vector2 centre = map.GetPosition();
  Vector2 inner = centre;
  Vector2 outer = point;
  Vector2 middle = centre;
  for (int i = 0; i < BISECTIONS; ++i) {
    middle = (inner + outer) * 0.5;
    (HasColour(map, middle) ? inner : outer) = middle;
  }
  if (HasColour(map, middle)) return middle;
  return {StepInward(middle.x, centre.x), StepInward(middle.y, centre.y)};
}

bool IsColourAround(const PixelIcon2D& map, const Vector2& point, const Vector3& colour) {
  constexpr double REACH = 3.0;  // pixels
  static constexpr Vector2 AROUND[] = {{1, 1}, {1, 0}, {1, -1}, {0, 1}, {0, -1}, {-1, 1}, {-1, 0}, {-1, -1}};
  for (const Vector2& direction : AROUND) {
    Vector3 found;
    if (map.GetColor(point + direction * REACH, found) && IsSameRegionColour(found, colour)) return true;
  }
  return false;
}

}  // namespace Korvane
