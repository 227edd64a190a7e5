#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "scene/background_work.h"
#include "zovhost/scene.h"

namespace zovhost {

/// Which triangles of a mesh meet at which points: so that a face is found by walking from triangle to
/// triangle. Points are the same by their places, whatever their vertices.
///
/// It stays for as long as the scene does, so it is small: of each point it has the blocks of neighbouring
/// triangles in which its own are, a byte or two a block.
class SideIndex {
 public:
  /// False when it was stopped.
  bool Build(const SceneMesh& mesh, const std::atomic<bool>& stopped);

  /// The number of a side that lies between points of very many triangles, the same for each that has it;
  /// none for another side. Who walks from triangle to triangle need visit its neighbours once alone.
  std::optional<std::uint64_t> FindCrowdedSide(const SceneMesh& mesh, std::uint32_t side) const {
    const Ends ends = GetEnds(mesh, side);
    if (ends.blocks.size() <= CROWD) return std::nullopt;
    return std::uint64_t{std::min(ends.near, ends.far)} << 32U | std::max(ends.near, ends.far);
  }

  /// Calls `visit` with each triangle that has side `side` of `mesh` too, the one it is of among them. Side i
  /// is that from corner i % 3 of triangle i / 3 to the next.
  template <typename Visit>
  void VisitNeighbours(const SceneMesh& mesh, std::uint32_t side, const Visit& visit) const {
    const Ends ends = GetEnds(mesh, side);
    const auto count = static_cast<std::uint32_t>(mesh.indices.size() / 3);
    std::uint32_t block = 0;
    for (const std::uint8_t* at = ends.blocks.data(); at != ends.blocks.data() + ends.blocks.size();) {
      block += TakeNumber(at);
      const std::uint32_t end = std::min((block + 1) * BLOCK, count);
      for (std::uint32_t triangle = block * BLOCK; triangle < end; ++triangle) {
        if (HasSide(mesh, triangle, ends.near, ends.far)) visit(triangle);
      }
    }
  }

 private:
  static constexpr std::uint32_t BLOCK = 32;         // triangles
  static constexpr std::uint32_t GROUP = 16;         // points, of which the first one's place is known
  static constexpr std::size_t CROWD = 16;           // bytes
  static constexpr std::uint32_t RANGE = 1U << 20U;  // points that are worked out together
  static constexpr std::uint32_t NONE = UINT32_MAX;

  // Of a side; `near` is at fewer triangles: the middle of a fan has very many.
  struct Ends {
    std::uint32_t near;
    std::uint32_t far;
    std::span<const std::uint8_t> blocks;  // at the near one, each counted from the one before
  };
  Ends GetEnds(const SceneMesh& mesh, std::uint32_t side) const {
    const std::uint32_t next = side % 3 == 2 ? side - 2 : side + 1;
    const std::uint32_t from = GetPoint(mesh.indices[side]);
    const std::uint32_t to = GetPoint(mesh.indices[next]);
    const std::span<const std::uint8_t> atFrom = FindBlocks(from);
    const std::span<const std::uint8_t> atTo = FindBlocks(to);
    return atFrom.size() > atTo.size() ? Ends{to, from, atTo} : Ends{from, to, atFrom};
  }
  std::uint32_t GetPoint(std::uint32_t vertex) const { return points.empty() ? vertex : points[vertex]; }
  bool HasSide(const SceneMesh& mesh, std::uint32_t triangle, std::uint32_t a, std::uint32_t b) const;

  // Seven bits a byte, the lowest first; the eighth tells of more.
  static std::uint32_t TakeNumber(const std::uint8_t*& at) {
    std::uint32_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
      const std::uint32_t byte = *at++;
      number |= (byte & 0x7FU) << shift;
      if (byte < 0x80U) return number;
    }
  }
  std::span<const std::uint8_t> FindBlocks(std::uint32_t point) const {
    const std::uint8_t* at = ranges[point / RANGE].data() + groups[point / GROUP];
    for (std::uint32_t skipped = point % GROUP; skipped > 0; --skipped) {
      const std::uint32_t size = TakeNumber(at);
      at += size;
    }
    const std::uint32_t size = TakeNumber(at);
    return {at, size};
  }
  template <typename Visit>
  bool VisitBlocks(const SceneMesh& mesh, std::uint32_t first, std::uint32_t end,
                   const std::atomic<bool>& stopped, const Visit& visit) const;
  bool AddRange(const SceneMesh& mesh, std::uint32_t first, std::uint32_t end,
                const std::atomic<bool>& stopped);

  std::vector<std::uint32_t> points;              // by vertex; empty where each vertex is a point of its own
  std::vector<std::vector<std::uint8_t>> ranges;  // of each point how many bytes follow, and its blocks
  std::vector<std::uint32_t> groups;              // where in its range the first point of each is told of
};

/// The sides of all meshes that are large enough to need it, made once by a thread of its own.
class FaceIndex {
 public:
  /// Fewer of a mesh are looked through in less than a millisecond.
  static constexpr std::size_t FEWEST_TRIANGLES = 20'000;

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
