#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

class TriangleClusters;
class WorkReport;

/// Finds the triangle that a ray meets first, by way of Embree.
///
/// Embree computes in floats. So that its answers are as good for a pin as for a country, and as good a
/// thousand kilometres from the origin as at it, the triangles are stored in units of the scene's radius
/// around its centre, a ray is advanced to the scene before it is rounded, and what it met is worked out
/// again in double precision.
class RayIndex {
 public:
  /// Null when memory does not suffice. `data` must be valid and outlive the index. Throws WorkCancelled.
  /// A scene of more triangles than `mostSingly` is indexed by clusters of them: in a tenth of the memory and
  /// of the time, while a ray takes some microseconds more.
  static std::unique_ptr<RayIndex> Create(const SceneData& data, const Korvane::Vector3& centre,
                                          double radius, WorkReport& report,
                                          std::size_t mostSingly = 2'000'000);
  ~RayIndex();
  RayIndex(const RayIndex&) = delete;
  RayIndex& operator=(const RayIndex&) = delete;

  bool Intersect(const Korvane::Vector3& origin, const Korvane::Vector3& direction, Scene::Hit& hit) const;

 private:
  struct Handles;
  RayIndex(const SceneData& data, const Korvane::Vector3& centre, double radius);
  std::size_t CountTriangles(const ScenePart& part) const;
  bool Build(WorkReport& report, std::size_t mostSingly);
  void AddPart(const ScenePart& part, WorkReport& report);
  void AddClusters(const ScenePart& part, WorkReport& report);

  const SceneData& data;
  const Korvane::Vector3 centre;
  const double radius;
  std::vector<std::unique_ptr<TriangleClusters>> clusters;  // outlive the handles
  std::unique_ptr<Handles> handles;
};

}  // namespace zovhost
