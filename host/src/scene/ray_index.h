#pragma once

#include <memory>

#include "zovhost/scene.h"

namespace zovhost {

/// Finds the triangle that a ray meets first, by way of Embree.
///
/// Embree computes in floats. So that its answers are as good for a pin as for a country, and as good a
/// thousand kilometres from the origin as at it, the triangles are stored in units of the scene's radius
/// around its centre, a ray is advanced to the scene before it is rounded, and what it met is worked out
/// again in double precision.
class RayIndex {
 public:
  /// Null when memory does not suffice. `data` must be valid and outlive the index.
  static std::unique_ptr<RayIndex> Create(const SceneData& data, const Korvane::Vector3& centre,
                                          double radius);
  ~RayIndex();
  RayIndex(const RayIndex&) = delete;
  RayIndex& operator=(const RayIndex&) = delete;

  bool Intersect(const Korvane::Vector3& origin, const Korvane::Vector3& direction, Scene::Hit& hit) const;

 private:
  struct Handles;
  RayIndex(const SceneData& data, const Korvane::Vector3& centre, double radius);
  bool Build();
  void AddPart(const ScenePart& part);

  const SceneData& data;
  const Korvane::Vector3 centre;
  const double radius;
  std::unique_ptr<Handles> handles;
};

}  // namespace zovhost
