#pragma once

#include "korvane/vector3.h"
#include "zovhost/scene.h"

namespace zovhost {

class WorkReport;

/// Coordinates beyond this count as broken: their squares no longer fit a float.
inline constexpr double LARGEST_COORDINATE = 1e18;

/// Drops broken triangles, with a vertex that does not exist, is not finite or is too large, and collapsed
/// ones, of which two corners fall together; then the vertices that nothing uses any more. Returns how many
/// were broken: collapsed ones are common, show nothing and are no loss.
std::size_t DropBrokenTriangles(SceneMesh& mesh);

/// Gives every vertex a normal of unit length. A mesh without normals gets smooth ones that break at
/// creases, for which vertices are split; single normals that are zero or not finite are taken from the
/// triangles around them. With a `report` it can be broken off, by a throw.
void CompleteNormals(SceneMesh& mesh, WorkReport* report = nullptr);

/// Moves a mesh that lies far from its own origin, compared with its size, around that origin. Returns the
/// way back, exact: what the placement has to add. Floats near zero are finer than floats far away, so
/// everything computed from the moved mesh keeps its precision.
Korvane::Vector3 MoveToOrigin(SceneMesh& mesh);

}  // namespace zovhost
