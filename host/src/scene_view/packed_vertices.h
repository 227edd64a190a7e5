#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

/// Vertices as the graphics card gets them: the position in floats, the normal in 16 bits an axis, and only
/// in a scene that has any the colour in bytes and texture coordinates.
struct VertexKind {
  bool hasColours = false;
  bool hasTexCoords = false;
};
std::size_t GetVertexSize(const VertexKind& kind);
/// Of so many vertices and the end.
std::size_t GetBufferSize(const VertexKind& kind, std::size_t count);
void AppendVertex(const SceneMesh& mesh, std::size_t index, const VertexKind& kind,
                  std::vector<std::uint8_t>& bytes);
/// What follows all vertices: the colour that all of them have where they have none of their own.
void AppendEnd(const VertexKind& kind, std::vector<std::uint8_t>& bytes);
/// Attributes 0 to 3 of the bound vertex array, position, normal, texture coordinate and colour, out of the
/// bound buffer of so many vertices.
void PointAttributes(const VertexKind& kind, std::size_t count);

}  // namespace zovhost
