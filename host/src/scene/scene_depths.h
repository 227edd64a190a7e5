#pragma once

#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/vector3.h"
#include "zovhost/projection.h"

namespace zovhost {

class Scene;

/// The depths between which a scene is drawn. Depth is resolved in proportion to the distance of the near
/// plane, so that stands as far off as what is to be seen allows: a sphere alone holds the eye most of the
/// time, the boxes of the parts seldom do.
///
/// Whoever draws into the same picture takes the same depths. Rays begin where the sphere alone says.
class SceneDepths {
 public:
  /// Along the world's axes.
  struct Box {
    Korvane::Vector3 low;
    Korvane::Vector3 high;
  };

  SceneDepths() = default;
  /// What is in a sphere, all that is known.
  explicit SceneDepths(const SceneSphere& around) : sphere(around) {}
  /// Of the parts of a scene, and the ground below it.
  explicit SceneDepths(const Scene& scene);

  const SceneSphere& GetSphere() const { return sphere; }
  Projection MakeProjection(const Korvane::CameraParameters& camera) const;

 private:
  SceneSphere sphere;
  std::vector<Box> boxes;
};

}  // namespace zovhost
