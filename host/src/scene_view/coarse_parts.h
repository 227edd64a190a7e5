#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "scene/work_report.h"
#include "scene_view/part_batches.h"
#include "zovhost/scene.h"

namespace zovhost {

/// Chooses which parts of a batch show while the view moves, and their coarse triangles.
class CoarseParts {
 public:
  /// Borrowed.
  CoarseParts(const Scene& from, WorkReport& told) : scene(from), report(told) {}

  /// At most `wanted` triangles, but for the last part: of the largest parts, and of those of one size of
  /// parts all over the batch. Indices into its mesh. Throws WorkCancelled.
  std::vector<std::uint32_t> Choose(const PartBatch& batch, std::size_t wanted);

 private:
  const std::vector<std::uint32_t>& FindTriangles(int mesh);

  const Scene& scene;
  WorkReport& report;
  std::map<int, std::vector<std::uint32_t>> found;  // by mesh
};

}  // namespace zovhost
