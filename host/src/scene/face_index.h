#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "scene/background_work.h"
#include "zovhost/scene.h"

namespace zovhost {

/// Which triangles of a mesh meet at which points: so that a face is found by walking from triangle to
/// triangle. Points are the same by their places, whatever their vertices.
class SideIndex {
 public:
  /// False when it was stopped.
  bool Build(const SceneMesh& mesh, const std::atomic<bool>& stopped);

  /// The number of a side that lies between points of very many triangles, the same for each that has it;
  /// none for another side. Who walks from triangle to triangle need visit its neighbours once alone.
  std::optional<std::uint64_t> FindCrowdedSide(const SceneMesh& mesh, std::uint32_t side) const {
    const auto [near, far] = GetEnds(mesh, side);
    if (CountAt(near) <= CROWD) return std::nullopt;
    return std::uint64_t{std::min(near, far)} << 32U | std::max(near, far);
  }

  /// Calls `visit` with each triangle that has side `side` of `mesh` too, the one it is of among them. Side i
  /// is that from corner i % 3 of triangle i / 3 to the next.
  template <typename Visit>
  void VisitNeighbours(const SceneMesh& mesh, std::uint32_t side, const Visit& visit) const {
    const auto [near, far] = GetEnds(mesh, side);
    for (std::uint32_t i = starts[near]; i < starts[near + 1]; ++i) {
      if (HasSide(mesh, triangles[i], near, far)) visit(triangles[i]);
    }
  }

 private:
  static constexpr std::uint32_t CROWD = 32;

  // First the one of fewer triangles: the middle of a fan has very many.
  std::pair<std::uint32_t, std::uint32_t> GetEnds(const SceneMesh& mesh, std::uint32_t side) const {
    const std::uint32_t next = side % 3 == 2 ? side - 2 : side + 1;
    const std::uint32_t from = GetPoint(mesh.indices[side]);
    const std::uint32_t to = GetPoint(mesh.indices[next]);
    return CountAt(from) > CountAt(to) ? std::pair(to, from) : std::pair(from, to);
  }
  std::uint32_t GetPoint(std::uint32_t vertex) const { return points.empty() ? vertex : points[vertex]; }
  std::uint32_t CountAt(std::uint32_t point) const { return starts[point + 1] - starts[point]; }
  bool HasSide(const SceneMesh& mesh, std::uint32_t triangle, std::uint32_t a, std::uint32_t b) const;

  std::vector<std::uint32_t> points;     // by vertex; empty where each vertex is a point of its own
  std::vector<std::uint32_t> starts;     // by point, the first of its triangles
  std::vector<std::uint32_t> triangles;  // one for each of their corners
};

/// The sides of all meshes that are large enough to need it, made once by a thread of its own.
class FaceIndex {
 public:
  /// Begins. `meshes` outlive this.
  explicit FaceIndex(const std::vector<SceneMesh>& meshes);

  /// Null where it is not there yet, or not needed.
  const SideIndex* Find(std::size_t mesh) const;
  bool IsFinished() const { return work.IsFinished(); }

 private:
  bool Build(const std::atomic<bool>& stopped);

  const std::vector<SceneMesh>& meshes;
  std::vector<SideIndex> sides;
  std::vector<std::atomic<bool>> ready;
  BackgroundWork work;  // last: its thread uses the others
};

}  // namespace zovhost
