#pragma once

#include <cstddef>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

/// The lines of a mesh that show its form: open borders and folds. Six floats each, from end to end.
/// Vertices at one place count as one, whatever their normals.
std::vector<float> FindCreaseEdges(const SceneMesh& mesh);

}  // namespace zovhost
