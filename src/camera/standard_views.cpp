#include "camera/standard_views.h"

namespace Korvane {

namespace {

// (front, up, side). Faces; edges, through the pairs of axes in the cycle; corners, counting in binary.
// clang-format off
constexpr int VIEWS[StandardViews::COUNT][3] = {
    {-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1},
    {-1, -1, 0}, {-1, 1, 0}, {1, -1, 0}, {1, 1, 0},
    {0, -1, -1}, {0, -1, 1}, {0, 1, -1}, {0, 1, 1},
    {-1, 0, -1}, {1, 0, -1}, {-1, 0, 1}, {1, 0, 1},
    {-1, -1, -1}, {-1, -1, 1}, {-1, 1, -1}, {-1, 1, 1},
    {1, -1, -1}, {1, -1, 1}, {1, 1, -1}, {1, 1, 1},
};
// clang-format on

}  // namespace

void StandardViews::Fill(const Vector3& front, const Vector3& up, const Vector3& side) {
  for (std::size_t i = 0; i < COUNT; ++i) {
    directions[i] = front * VIEWS[i][0] + up * VIEWS[i][1] + side * VIEWS[i][2];
    viewDirections[i] = (-directions[i]).Normalize();
  }
}

const Vector3& StandardViews::GetClosestAlignDir(const Vector3& view, bool facesOnly) const {
  const std::size_t count = facesOnly ? FACE_COUNT : COUNT;
  std::size_t closest = 0;
  double largest = view.Dot(viewDirections[0]);
  for (std::size_t i = 1; i < count; ++i) {
    const double cosine = view.Dot(viewDirections[i]);
    if (!(cosine > largest)) continue;
    largest = cosine;
    closest = i;
  }
  return directions[closest];
}

}  // namespace Korvane
