#include "scene/ground_place.h"

#include <algorithm>
#include <cmath>

namespace zovhost {

using Korvane::Vector3;

namespace {

constexpr double MARGIN = 0.35;  // of the scene's extent, on each side, for the soft border

}  // namespace

// The ground touches the scene's box from below, along the box's own axes when the scene stands on one.
GroundPlace FindGroundPlace(const Scene& scene) {
  GroundPlace place;
  place.up = scene.GetUpDirection();
  const Vector3& up = place.up;
  Vector3 u = std::abs(up.x) < 0.9 ? Vector3(1, 0, 0) : Vector3(0, 1, 0);
  u = (u - up * u.Dot(up)).Normalized();
  const Vector3 v = up.Cross(u);
  const Vector3 half = (scene.GetMax() - scene.GetMin()) * 0.5;
  const auto reach = [&half](const Vector3& axis) {
    return std::abs(axis.x) * half.x + std::abs(axis.y) * half.y + std::abs(axis.z) * half.z;
  };
  const double smallest = 1e-3 * scene.GetRadius();
  const double widest = std::max({reach(u), reach(v), smallest});
  const double halfU = reach(u) + MARGIN * widest;
  const double halfV = reach(v) + MARGIN * widest;
  place.height = std::max(2.0 * reach(up), smallest);
  // A little lower, so that a floor at the very bottom is not mixed with its shadow.
  const Vector3 foot = scene.GetCentre() - up * (reach(up) + 2e-3 * scene.GetRadius());
  place.origin = foot - u * halfU - v * halfV;
  place.sideU = u * (2.0 * halfU);
  place.sideV = v * (2.0 * halfV);
  return place;
}

}  // namespace zovhost
