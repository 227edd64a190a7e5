#include "cube/quad_list.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "cube/pass_view.h"

namespace Korvane {

QuadList::QuadList(unsigned runCount, unsigned vertexCount) {
  runs.reserve(runCount);
  vertices.reserve(std::size_t{3} * vertexCount);
}

void QuadList::Clear() {
  runs.clear();
  vertices.clear();
}

void QuadList::Take(int id, unsigned vertexCount, const float* corners, const float* /*texCoords*/) {
  runs.push_back({id, static_cast<unsigned>(vertices.size() / 3), vertexCount});
  vertices.insert(vertices.end(), corners, corners + std::size_t{3} * vertexCount);
}

// A host may change the list from within.
void QuadList::Offer(int end, QuadSink& sink) const {
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const Run run = runs[i];
    if (run.id < end) sink.Take(run.id, run.count, vertices.data() + std::size_t{3} * run.first, nullptr);
  }
}

std::vector<Vector3> QuadList::GetCorners(int id) const {
  std::vector<Vector3> corners;
  for (const Run& run : runs) {
    for (unsigned i = 0; run.id == id && i < run.count; ++i) {
      corners.emplace_back(vertices.data() + std::size_t{3} * (run.first + i));
    }
  }
  return corners;
}

void QuadList::Bounds::Join(const Bounds& other) {
  low = Vector2(std::min(low.x, other.low.x), std::min(low.y, other.low.y));
  high = Vector2(std::max(high.x, other.high.x), std::max(high.y, other.high.y));
}

QuadList::Bounds QuadList::GetBounds(const CameraParameters& camera) const {
  static constexpr double BEYOND_ROUNDING = 1e-3;  // of half a pass; far more than any rounding of a pick
  constexpr double INF = std::numeric_limits<double>::infinity();
  const PassView pass(camera);
  Bounds bounds{Vector2(INF, INF), Vector2(-INF, -INF)};
  for (std::size_t i = 0; i < vertices.size(); i += 3) {
    Vector2 local;
    if (!pass.Project(Vector3(vertices.data() + i), local)) return {Vector2(-INF, -INF), Vector2(INF, INF)};
    bounds.low = Vector2(std::min(bounds.low.x, local.x), std::min(bounds.low.y, local.y));
    bounds.high = Vector2(std::max(bounds.high.x, local.x), std::max(bounds.high.y, local.y));
  }
  const Vector2 margin(BEYOND_ROUNDING, BEYOND_ROUNDING);
  return {bounds.low - margin, bounds.high + margin};
}

}  // namespace Korvane
