#pragma once

#include <cstdint>

#include "zovhost/scene.h"

namespace zovhost {

/// Fills in the triangles and corners of the face of a mesh around one of its triangles.
void FindFaceOf(const SceneMesh& mesh, std::uint32_t triangle, SceneFace& face);

}  // namespace zovhost
