#pragma once

#include <cstddef>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

class WorkReport;

/// What the edges of a mesh tell about it. Vertices at one place count as one, whatever their normals.
struct MeshEdges {
  std::vector<float> creases;  ///< The lines that show its form: open borders and folds. Six floats each.
  /// It encloses solids: nobody outside of them sees the back of a triangle. False where that is not certain.
  bool solid = false;
};
/// With a `report` it can be broken off, by a throw.
MeshEdges FindEdges(const SceneMesh& mesh, const WorkReport* report = nullptr);

}  // namespace zovhost
