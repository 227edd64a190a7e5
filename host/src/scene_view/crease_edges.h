#pragma once

#include <cstddef>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

/// What the edges of a mesh tell about it. Vertices at one place count as one, whatever their normals.
struct MeshEdges {
  std::vector<float> creases;  ///< The lines that show its form: open borders and folds. Six floats each.
  /// It encloses solids: nobody outside of them sees the back of a triangle. False where that is not certain.
  bool solid = false;
};
MeshEdges FindEdges(const SceneMesh& mesh);

}  // namespace zovhost
