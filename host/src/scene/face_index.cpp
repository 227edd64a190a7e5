#include "scene/face_index.h"

#include <algorithm>
#include <numeric>

#include "scene/point_numbers.h"

namespace zovhost {

namespace {

constexpr std::size_t FEWEST_TRIANGLES = 20'000;      // fewer are looked through in less than a millisecond
constexpr std::size_t ROUNDS = std::size_t{1} << 16;  // between two looks

}  // namespace

bool SideIndex::Build(const SceneMesh& mesh, const std::atomic<bool>& stopped) {
  std::uint32_t pointCount = 0;
  points = NumberPoints(mesh.positions, pointCount, [&stopped] { return !stopped; });
  if (stopped) return false;
  if (pointCount == points.size()) points = {};
  // Filled from the ends, so that the places of the ends become those of the starts.
  const std::size_t count = mesh.indices.size();
  starts.assign(std::size_t{pointCount} + 1, 0);
  for (std::size_t i = 0; i < count; ++i) {
    if (i % ROUNDS == 0 && stopped) return false;
    ++starts[GetPoint(mesh.indices[i])];
  }
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  triangles.resize(count);
  for (std::size_t i = count; i-- > 0;) {
    if (i % ROUNDS == 0 && stopped) return false;
    triangles[--starts[GetPoint(mesh.indices[i])]] = static_cast<std::uint32_t>(i / 3);
  }
  return true;
}

bool SideIndex::HasSide(const SceneMesh& mesh, std::uint32_t triangle, std::uint32_t a,
                        std::uint32_t b) const {
  const std::uint32_t* const corner = mesh.indices.data() + std::size_t{3} * triangle;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::uint32_t from = GetPoint(corner[i]);
    const std::uint32_t to = GetPoint(corner[(i + 1) % 3]);
    if ((from == a && to == b) || (from == b && to == a)) return true;
  }
  return false;
}

FaceIndex::FaceIndex(const std::vector<SceneMesh>& sceneMeshes)
    : meshes(sceneMeshes),
      sides(sceneMeshes.size()),
      ready(sceneMeshes.size()),
      work([this](const std::atomic<bool>& stopped) { return Build(stopped); }) {}

const SideIndex* FaceIndex::Find(std::size_t mesh) const { return ready[mesh] ? &sides[mesh] : nullptr; }

bool FaceIndex::Build(const std::atomic<bool>& stopped) {
  for (std::size_t i = 0; i < meshes.size(); ++i) {
    if (ready[i] || meshes[i].indices.size() / 3 < FEWEST_TRIANGLES) continue;
    if (!sides[i].Build(meshes[i], stopped)) return false;
    ready[i] = true;
  }
  return true;
}

}  // namespace zovhost
