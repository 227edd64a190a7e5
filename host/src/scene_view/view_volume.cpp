#include "scene_view/view_volume.h"

#include <cmath>

namespace zovhost {

using Korvane::Vector3;

namespace {

constexpr double SLACK = 1e-3;  // of the radius, for what rounding takes away

}  // namespace

// A side is where x or y is w or -w in clip space. Taken from the eye, where no digits are lost to a scene
// that stands far from the origin.
ViewVolume::ViewVolume(const Projection& shown, int viewportHeight)
    : projection(shown), height(viewportHeight), eye(shown.GetFrame().eye) {
  const Matrix4& p = shown.GetProjection();
  const CameraFrame& frame = shown.GetFrame();
  // Coordinates of the view: to the right, up, backwards.
  const auto row = [&](std::size_t r) { return std::array<double, 4>{p[r], p[4 + r], p[8 + r], p[12 + r]}; };
  const std::array<double, 4> w = row(3);
  for (std::size_t side = 0; side < 4; ++side) {
    const std::array<double, 4> axis = row(side / 2);
    const double sign = side % 2 == 0 ? 1.0 : -1.0;
    const Vector3 normal = frame.right * (w[0] + sign * axis[0]) + frame.up * (w[1] + sign * axis[1]) -
                           frame.forward * (w[2] + sign * axis[2]);
    const double length = std::sqrt(normal.LengthSquared());
    const double offset = w[3] + sign * axis[3];
    if (!(length > 0.0) || !std::isfinite(length) || !std::isfinite(offset)) continue;
    planes[side] = {normal / length, offset / length};
  }
}

bool ViewVolume::Shows(const Vector3& centre, double radius, double leastPixels) const {
  const Vector3 offset = centre - eye;
  const double reach = radius * (1.0 + SLACK);
  for (const Plane& plane : planes) {
    if (plane.normal.Dot(offset) + plane.offset < -reach) return false;
  }
  const double depth = offset.Dot(projection.GetFrame().forward);
  return leastPixels <= 0.0 || 2.0 * radius >= leastPixels * projection.GetPixelSize(depth, height);
}

bool ViewVolume::IsOutside(const Vector3& centre, double radius) const {
  const double depth = (centre - eye).Dot(projection.GetFrame().forward);
  return depth - radius * (1.0 + SLACK) > projection.GetNear();
}

}  // namespace zovhost
