#include "scene/face_index.h"

#include <algorithm>
#include <utility>

#include "scene/hash_table.h"
#include "scene/point_numbers.h"

namespace zovhost {

namespace {

constexpr std::size_t FEWEST_TRIANGLES = 20'000;      // fewer are looked through in less than a millisecond
constexpr std::size_t ROUNDS = std::size_t{1} << 16;  // between two looks

}  // namespace

bool SideIndex::Build(const SceneMesh& mesh, const std::atomic<bool>& stopped) {
  std::uint32_t pointCount = 0;
  const std::vector<std::uint32_t> points =
      NumberPoints(mesh.positions, pointCount, [&stopped] { return !stopped; });
  const std::size_t count = mesh.indices.size();
  const auto ends = [&](std::size_t side) {
    const std::uint32_t a = points[mesh.indices[side]];
    const std::uint32_t b = points[mesh.indices[side % 3 == 2 ? side - 2 : side + 1]];
    return std::pair(std::min(a, b), std::max(a, b));
  };
  std::vector<std::uint32_t> rings(count);
  HashTable firsts(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (i % ROUNDS == 0 && stopped) return false;
    const auto own = ends(i);
    const auto side = static_cast<std::uint32_t>(i);
    const std::uint64_t hash = MixBits(std::uint64_t{own.first} << 32 | own.second);
    const std::uint32_t first =
        firsts.FindOrAdd(hash, side, [&](std::uint32_t other) { return ends(other) == own; });
    rings[side] = side;
    if (first != side) std::swap(rings[first], rings[side]);
  }
  next = std::move(rings);
  return true;
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
