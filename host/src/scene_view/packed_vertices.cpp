#include "scene_view/packed_vertices.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "gl/buffer_offset.h"

namespace zovhost {

namespace {

struct Vertex {
  std::array<float, 3> position = {};
  std::array<std::int16_t, 4> normal = {};  // of 32767; zero: the shader takes the triangle's own
  std::array<std::uint8_t, 4> colour = {255, 255, 255, 255};
};
using TexCoord = std::array<float, 2>;

template <typename Value>
void AppendBytes(std::vector<std::uint8_t>& bytes, const Value& value) {
  const auto* const first = reinterpret_cast<const std::uint8_t*>(&value);
  bytes.insert(bytes.end(), first, first + sizeof(Value));
}

template <typename From, std::size_t COUNT>
void Copy(const From& from, std::size_t index, std::array<typename From::value_type, COUNT>& to) {
  if (from.size() < COUNT * (index + 1)) return;
  std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(COUNT * index), COUNT, to.begin());
}

}  // namespace

std::size_t GetVertexSize(bool hasTexCoords) {
  return sizeof(Vertex) + (hasTexCoords ? sizeof(TexCoord) : 0);
}

void AppendVertex(const SceneMesh& mesh, std::size_t index, bool hasTexCoords,
                  std::vector<std::uint8_t>& bytes) {
  constexpr float LARGEST = 32767.0F;
  Vertex vertex;
  std::array<float, 3> normal = {};
  Copy(mesh.positions, index, vertex.position);
  Copy(mesh.normals, index, normal);
  Copy(mesh.colours, index, vertex.colour);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const float limited = normal[axis] >= -1.0F ? std::min(normal[axis], 1.0F) : -1.0F;
    vertex.normal[axis] = static_cast<std::int16_t>(limited * LARGEST + (limited < 0.0F ? -0.5F : 0.5F));
  }
  AppendBytes(bytes, vertex);
  if (!hasTexCoords) return;
  TexCoord texCoord = {};
  Copy(mesh.texCoords, index, texCoord);
  AppendBytes(bytes, texCoord);
}

void PointAttributes(bool hasTexCoords) {
  const auto stride = static_cast<GLsizei>(GetVertexSize(hasTexCoords));
  const auto point = [stride](GLuint location, GLint size, GLenum type, GLboolean normalised,
                              std::size_t offset) {
    glEnableVertexAttribArray(location);
    glVertexAttribPointer(location, size, type, normalised, stride, BufferOffset(offset));
  };
  point(0, 3, GL_FLOAT, GL_FALSE, offsetof(Vertex, position));
  point(1, 4, GL_SHORT, GL_TRUE, offsetof(Vertex, normal));
  if (hasTexCoords) point(2, 2, GL_FLOAT, GL_FALSE, sizeof(Vertex));
  point(3, 4, GL_UNSIGNED_BYTE, GL_TRUE, offsetof(Vertex, colour));
}

}  // namespace zovhost
