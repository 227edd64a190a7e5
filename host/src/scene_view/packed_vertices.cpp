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
};
// What follows where some mesh has it.
using Colour = std::array<std::uint8_t, 4>;
constexpr Colour WHITE = {255, 255, 255, 255};
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

std::size_t GetVertexSize(const VertexKind& kind) {
  return sizeof(Vertex) + (kind.hasColours ? sizeof(Colour) : 0) + (kind.hasTexCoords ? sizeof(TexCoord) : 0);
}

void AppendVertex(const SceneMesh& mesh, std::size_t index, const VertexKind& kind,
                  std::vector<std::uint8_t>& bytes) {
  constexpr float LARGEST = 32767.0F;
  Vertex vertex;
  std::array<float, 3> normal = {};
  Copy(mesh.positions, index, vertex.position);
  Copy(mesh.normals, index, normal);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const float limited = normal[axis] >= -1.0F ? std::min(normal[axis], 1.0F) : -1.0F;
    vertex.normal[axis] = static_cast<std::int16_t>(limited * LARGEST + (limited < 0.0F ? -0.5F : 0.5F));
  }
  AppendBytes(bytes, vertex);
  if (kind.hasColours) {
    Colour colour = WHITE;
    Copy(mesh.colours, index, colour);
    AppendBytes(bytes, colour);
  }
  if (!kind.hasTexCoords) return;
  TexCoord texCoord = {};
  Copy(mesh.texCoords, index, texCoord);
  AppendBytes(bytes, texCoord);
}

std::size_t GetBufferSize(const VertexKind& kind, std::size_t count) {
  return count * GetVertexSize(kind) + (kind.hasColours ? 0 : sizeof(Colour));
}

void AppendEnd(const VertexKind& kind, std::vector<std::uint8_t>& bytes) {
  if (!kind.hasColours) AppendBytes(bytes, WHITE);
}

void PointAttributes(const VertexKind& kind, std::size_t count) {
  const auto stride = static_cast<GLsizei>(GetVertexSize(kind));
  const auto point = [stride](GLuint location, GLint size, GLenum type, GLboolean normalised,
                              std::size_t offset) {
    glEnableVertexAttribArray(location);
    glVertexAttribPointer(location, size, type, normalised, stride, BufferOffset(offset));
  };
  const std::size_t ofTexCoord = sizeof(Vertex) + (kind.hasColours ? sizeof(Colour) : 0);
  point(0, 3, GL_FLOAT, GL_FALSE, offsetof(Vertex, position));
  point(1, 4, GL_SHORT, GL_TRUE, offsetof(Vertex, normal));
  if (kind.hasTexCoords) point(2, 2, GL_FLOAT, GL_FALSE, ofTexCoord);
  point(3, 4, GL_UNSIGNED_BYTE, GL_TRUE, kind.hasColours ? sizeof(Vertex) : count * GetVertexSize(kind));
  glVertexAttribDivisor(3, kind.hasColours ? 0 : 1);
}

}  // namespace zovhost
