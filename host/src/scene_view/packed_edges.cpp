#include "scene_view/packed_edges.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

#include "gl/buffer_offset.h"
#include "projection/matrix.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

constexpr double LARGEST = 32767.0;
constexpr double MOST_DOUBLINGS = 16.0;  // of the line's length, to the breadth of a face; as in the shader

Vector3 ToVector(const std::array<float, 3>& v) { return Vector3(v.data()); }

std::array<float, 3> ToFloats(const Vector3& v) {
  return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

std::int16_t Pack(double value) {
  return static_cast<std::int16_t>(std::lround(std::clamp(value, -1.0, 1.0) * LARGEST));
}

// `inwards` reaches across the whole face.
std::array<std::int16_t, 4> PackFace(const Vector3& inwards, double length) {
  const double breadth = inwards.Length();
  if (!(breadth > 0.0) || !(length > 0.0)) return {0, 0, 0, Pack(-1.0)};
  const Vector3 unit = inwards / breadth;
  return {Pack(unit.x), Pack(unit.y), Pack(unit.z), Pack(std::log2(breadth / length) / MOST_DOUBLINGS)};
}

}  // namespace

PackedEdge PackEdge(const Crease& crease) { return PackEdge(crease, identityMatrix, Vector3::Zero); }

// What leads across the line before it is placed may lead aslant afterwards. A mirror changes left and right.
PackedEdge PackEdge(const Crease& crease, const Matrix4& transform, const Vector3& origin) {
  const Vector3 from = TransformPoint(transform, ToVector(crease.from)) - origin;
  const Vector3 to = TransformPoint(transform, ToVector(crease.to)) - origin;
  const double length = (to - from).Length();
  const Vector3 along = length > 0.0 ? (to - from) / length : Vector3();
  const Vector3 zero = TransformPoint(transform, Vector3());
  PackedEdge edge{ToFloats(from), ToFloats(to), {}};
  const std::size_t swap = IsMirrored(transform) ? 1 : 0;
  for (std::size_t i = 0; i < 2; ++i) {
    const Crease::Face& face = crease.faces[i ^ swap];
    const Vector3 placed = TransformPoint(transform, ToVector(face.inwards) * face.breadth) - zero;
    edge.faces[i] = PackFace(placed - along * placed.Dot(along), length);
  }
  return edge;
}

void PointEdgeAttributes(std::size_t first) {
  constexpr auto stride = static_cast<GLsizei>(sizeof(PackedEdge));
  const std::size_t start = first * sizeof(PackedEdge);
  glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, BufferOffset(start + offsetof(PackedEdge, from)));
  glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, stride, BufferOffset(start + offsetof(PackedEdge, to)));
  for (const GLuint face : {0U, 1U}) {
    const std::size_t place = offsetof(PackedEdge, faces) + face * sizeof(PackedEdge::faces) / 2;
    glVertexAttribPointer(2 + face, 4, GL_SHORT, GL_TRUE, stride, BufferOffset(start + place));
  }
}

}  // namespace zovhost
