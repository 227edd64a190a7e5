#include "scene/face_index.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "scene/point_numbers.h"

namespace zovhost {

namespace {

constexpr std::size_t ROUNDS = std::size_t{1} << 16;  // between two looks

std::uint32_t CountBytes(std::uint32_t number) {
  std::uint32_t count = 1;
  for (; number >= 0x80U; number >>= 7U) ++count;
  return count;
}

// At a place, which goes on behind it.
void WriteNumber(std::uint8_t* bytes, std::uint32_t& place, std::uint32_t number) {
  for (; number >= 0x80U; number >>= 7U) bytes[place++] = static_cast<std::uint8_t>(number | 0x80U);
  bytes[place++] = static_cast<std::uint8_t>(number);
}

}  // namespace

bool SideIndex::Build(const SceneMesh& mesh, const std::atomic<bool>& stopped) {
  std::uint32_t pointCount = 0;
  points = NumberPoints(mesh.positions, pointCount, [&stopped] { return !stopped; });
  if (stopped) return false;
  if (pointCount == points.size()) points = {};
  groups.clear();
  ranges.clear();
  for (std::uint32_t first = 0; first < pointCount; first += RANGE) {
    if (!AddRange(mesh, first, std::min(first + RANGE, pointCount), stopped)) return false;
  }
  return true;
}

// Calls `visit` with each point of a range, counted from its first, and a block that has a triangle there, as
// the number to be written: in the order of the blocks, each block once.
template <typename Visit>
bool SideIndex::VisitBlocks(const SceneMesh& mesh, std::uint32_t first, std::uint32_t end,
                            const std::atomic<bool>& stopped, const Visit& visit) const {
  std::vector<std::uint32_t> last(end - first, NONE);
  for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
    if (i % ROUNDS == 0 && stopped) return false;
    const std::uint32_t point = GetPoint(mesh.indices[i]);
    if (point < first || point >= end) continue;
    const auto block = static_cast<std::uint32_t>(i / 3 / BLOCK);
    std::uint32_t& before = last[point - first];
    if (before == block) continue;
    visit(point - first, before == NONE ? block : block - before);
    before = block;
  }
  return true;
}

// Once to know how much there is of each point, and once to write it.
bool SideIndex::AddRange(const SceneMesh& mesh, std::uint32_t first, std::uint32_t end,
                         const std::atomic<bool>& stopped) {
  std::vector<std::uint32_t> sizes(end - first);
  const auto measure = [&](std::uint32_t point, std::uint32_t number) { sizes[point] += CountBytes(number); };
  if (!VisitBlocks(mesh, first, end, stopped, measure)) return false;
  std::size_t size = 0;
  for (const std::uint32_t own : sizes) size += CountBytes(own) + own;
  std::vector<std::uint8_t>& bytes = ranges.emplace_back(size);
  std::uint32_t place = 0;
  for (std::uint32_t point = first; point < end; ++point) {
    if (point % GROUP == 0) groups.push_back(place);
    const std::uint32_t own = std::exchange(sizes[point - first], 0);
    WriteNumber(bytes.data(), place, own);
    sizes[point - first] = place;
    place += own;
  }
  const auto write = [&](std::uint32_t point, std::uint32_t number) {
    WriteNumber(bytes.data(), sizes[point], number);
  };
  return VisitBlocks(mesh, first, end, stopped, write);
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
