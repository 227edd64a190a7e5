#include "scene_view/coarse_mesh.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "scene/hash_table.h"

namespace zovhost {

namespace {

constexpr double MOST_CELLS = 1 << 20;  // along an axis
constexpr int TRIES = 4;

struct Grid {
  std::array<float, 3> low = {};
  float cellsPerUnit = 0.0F;
};

std::array<float, 3> GetSize(const SceneMesh& mesh, Grid& grid) {
  std::array<float, 3> high = {};
  for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
    const std::size_t axis = i % 3;
    grid.low[axis] = i < 3 ? mesh.positions[i] : std::min(grid.low[axis], mesh.positions[i]);
    high[axis] = i < 3 ? mesh.positions[i] : std::max(high[axis], mesh.positions[i]);
  }
  return {high[0] - grid.low[0], high[1] - grid.low[1], high[2] - grid.low[2]};
}

std::uint64_t GetCell(const Grid& grid, const float* point) {
  std::uint64_t cell = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    cell = cell << 21 | static_cast<std::uint64_t>((point[axis] - grid.low[axis]) * grid.cellsPerUnit);
  }
  return cell;
}

// For each vertex the first one of its cell.
std::vector<std::uint32_t> FindFirsts(const SceneMesh& mesh, const Grid& grid, WorkReport& report) {
  const std::size_t count = mesh.positions.size() / 3;
  std::vector<std::uint32_t> firsts(count);
  HashTable cells(count);
  for (std::size_t i = 0; i < count; ++i) {
    report.Count(i, count);
    const std::uint64_t cell = GetCell(grid, mesh.positions.data() + 3 * i);
    firsts[i] = cells.FindOrAdd(MixBits(cell), static_cast<std::uint32_t>(i), [&](std::uint32_t other) {
      return GetCell(grid, mesh.positions.data() + std::size_t{3} * other) == cell;
    });
  }
  return firsts;
}

std::vector<std::uint32_t> KeepSpanning(const SceneMesh& mesh, const std::vector<std::uint32_t>& firsts,
                                        WorkReport& report) {
  std::vector<std::uint32_t> kept;
  for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    report.Count(i, mesh.indices.size());
    const std::uint32_t a = firsts[mesh.indices[i]];
    const std::uint32_t b = firsts[mesh.indices[i + 1]];
    const std::uint32_t c = firsts[mesh.indices[i + 2]];
    if (a != b && b != c && c != a) kept.insert(kept.end(), {a, b, c});
  }
  return kept;
}

}  // namespace

// A surface meets cells by the square of how many lie along a side.
std::vector<std::uint32_t> FindCoarseTriangles(const SceneMesh& mesh, std::size_t wanted,
                                               WorkReport& report) {
  Grid grid;
  const std::array<float, 3> size = GetSize(mesh, grid);
  const double longest = std::max({size[0], size[1], size[2]});
  if (!(longest > 0.0)) return {};
  std::vector<std::uint32_t> found;
  double along = std::clamp(std::sqrt(static_cast<double>(wanted) / 3.0), 2.0, MOST_CELLS);
  for (int i = 0; i < TRIES; ++i) {
    grid.cellsPerUnit = static_cast<float>(along * 0.999 / longest);
    found = KeepSpanning(mesh, FindFirsts(mesh, grid, report), report);
    const std::size_t count = found.size() / 3;
    const double excess = static_cast<double>(count) / static_cast<double>(wanted);
    if (excess <= 1.2) break;
    along = std::max(along / std::sqrt(excess) * 0.95, 1.0);
  }
  return found;
}

}  // namespace zovhost
