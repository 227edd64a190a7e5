#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "scene/work_report.h"
#include "zovhost/scene.h"

namespace zovhost {

/// About `wanted` triangles, and hardly more, that show the form of a mesh of far more: vertices that lie in
/// one cell of a grid become the first of them. Three indices a triangle, into the vertices of the mesh.
std::vector<std::uint32_t> FindCoarseTriangles(const SceneMesh& mesh, std::size_t wanted, WorkReport& report);

}  // namespace zovhost
