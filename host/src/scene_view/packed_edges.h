#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "korvane/vector3.h"
#include "scene_view/crease_edges.h"
#include "zovhost/projection.h"

namespace zovhost {

/// A line as the graphics card reads it: where it runs, and of two faces that meet in it which way they lead
/// and how broad they are, as the shader unpacks it.
struct PackedEdge {
  std::array<float, 3> from = {};
  std::array<float, 3> to = {};
  std::array<std::array<std::int16_t, 4>, 2> faces = {};
};

PackedEdge PackEdge(const Crease& crease);
/// The same placed by a transform, around an origin.
PackedEdge PackEdge(const Crease& crease, const Matrix4& transform, const Korvane::Vector3& origin);

/// Points attributes 0 to 3 of the bound vertex array into the bound buffer, one line an instance, at line
/// `first`.
void PointEdgeAttributes(std::size_t first);

}  // namespace zovhost
