#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

/// Vertices as the graphics card gets them: the position in floats, the normal in 16 bits an axis, the colour
/// in bytes, and texture coordinates only in a scene that has any.
std::size_t GetVertexSize(bool hasTexCoords);
void AppendVertex(const SceneMesh& mesh, std::size_t index, bool hasTexCoords,
                  std::vector<std::uint8_t>& bytes);
/// Attributes 0 to 3 of the bound vertex array, position, normal, texture coordinate and colour, out of the
/// bound buffer.
void PointAttributes(bool hasTexCoords);

}  // namespace zovhost
