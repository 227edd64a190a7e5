#include "scene_view/coarse_parts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "scene/hash_table.h"
#include "scene_view/coarse_mesh.h"

namespace zovhost {

namespace {

constexpr std::size_t PART_TRIANGLES = 16;  // that a part is to have; one of hardly more stays whole

// Parts of about one size are in no order, so that they thin out evenly.
std::pair<int, std::uint64_t> GetRank(const Scene& scene, std::size_t part) {
  const double size = scene.GetParts()[part].bounds.GetExtent().Length();
  return {-std::ilogb(std::max(size, 1e-300)), MixBits(part + 1)};
}

}  // namespace

std::vector<std::uint32_t> CoarseParts::Choose(const PartBatch& batch, std::size_t wanted) {
  std::vector<const PartBatch::Member*> members;
  for (const PartBatch::Member& member : batch.members) members.push_back(&member);
  std::sort(members.begin(), members.end(), [this](const auto* a, const auto* b) {
    return GetRank(scene, a->part) < GetRank(scene, b->part);
  });
  std::vector<std::uint32_t> chosen;
  for (const PartBatch::Member* const member : members) {
    if (chosen.size() / 3 >= wanted) break;
    const std::vector<std::uint32_t>& triangles = FindTriangles(scene.GetParts()[member->part].mesh);
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3) {
      const std::size_t second = member->mirrored ? 2 : 1;
      for (const std::size_t corner : {std::size_t{0}, second, 3 - second})
        chosen.push_back(member->firstVertex + triangles[i + corner]);
    }
  }
  return chosen;
}

const std::vector<std::uint32_t>& CoarseParts::FindTriangles(int mesh) {
  const auto known = found.find(mesh);
  if (known != found.end()) return known->second;
  const SceneMesh& source = scene.GetMeshes()[static_cast<std::size_t>(mesh)];
  const bool whole = source.indices.size() / 3 <= 2 * PART_TRIANGLES;
  return found[mesh] = whole ? source.indices : FindCoarseTriangles(source, PART_TRIANGLES, report);
}

}  // namespace zovhost
