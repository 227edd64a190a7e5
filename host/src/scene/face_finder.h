#pragma once

#include <cstdint>

#include "zovhost/scene.h"

namespace zovhost {

class SideIndex;

/// Fills in the triangles and corners of the face of a mesh around one of its triangles: by walking from side
/// to side with the `sides` of the mesh, or without, when null, by looking at all of its triangles. The face
/// is the same.
void FindFaceOf(const SceneMesh& mesh, const SideIndex* sides, std::uint32_t triangle, SceneFace& face);

}  // namespace zovhost
