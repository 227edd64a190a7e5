#include "widget_renderer/gl_painter.h"

#include <algorithm>
#include <cstddef>

#include "gl/buffer_offset.h"
#include "gl/gl_program.h"
#include "korvane/renderer.h"

namespace zovhost {

namespace {

constexpr std::size_t initialCapacity = std::size_t{256} * 1024;  // bytes
constexpr std::size_t initialVertices = 4096;

// The picture hides what it covers only where it has colour: what is fully transparent leaves no depth.
constexpr const char* vertexSource = R"(
layout(location = 0) in vec4 position;
layout(location = 1) in vec2 texCoord;
uniform mat4 matrix;
out vec2 uv;
void main() {
  uv = texCoord;
  gl_Position = matrix * position;
}
)";
// A face of the cube seen at a low angle covers more of its picture along one direction than along the
// other. Several samples along the first, each as fine as the second asks for, keep its word sharp; drivers
// offer the same, but not all, and not all well. Half a level finer than the mean, since pictures are mostly
// fine lines and text.
constexpr const char* fragmentSource = R"(
uniform sampler2D picture;
uniform vec4 colour;
in vec2 uv;
out vec4 fragment;
vec4 SamplePicture() {
  vec2 size = vec2(textureSize(picture, 0));
  vec2 across = dFdx(uv);
  vec2 along = dFdy(uv);
  vec2 dx = across * size;
  vec2 dy = along * size;
  bool acrossIsLonger = dot(dx, dx) > dot(dy, dy);
  float longest = max(length(acrossIsLonger ? dx : dy), 1e-6);
  float shortest = max(abs(dx.x * dy.y - dx.y * dy.x) / longest, 1.0);  // closer samples than texels only blur
  float count = clamp(floor(longest / shortest + 0.5), 1.0, 8.0);
  float level = log2(longest / count) - 0.5;
  vec4 sum = vec4(0.0);
  for (float i = 0.5; i < count; i += 1.0) {
    sum += textureLod(picture, uv + (acrossIsLonger ? across : along) * (i / count - 0.5), level);
  }
  return sum / count;
}
void main() {
  fragment = SamplePicture() * colour;
  if (fragment.a < 0.002) discard;
}
)";

constexpr DrawState plain = {true, GL_LEQUAL, true, true};
constexpr DrawState overFaces = {true, GL_LEQUAL, false, true};
constexpr DrawState lines = {true, GL_LEQUAL, false, false};    // their facing is looked at one by one
constexpr DrawState behind = {true, GL_GREATER, false, false};  // only where something nearer stands
constexpr DrawState flat = {false, GL_ALWAYS, false, false};

constexpr std::array<DrawState, 7> states = {
    plain,      // DRAW_QUADS
    plain,      // 1, without a name
    overFaces,  // DRAW_CUBE_LABELS
    lines,      // DRAW_SOLID: outlines
    overFaces,  // DRAW_CUBE_SHADOW
    behind,     // DRAW_THROUGH
    flat,       // DRAW_OVERLAY_ICONS
};

}  // namespace

const DrawState& GetDrawState(int drawMode) {
  const bool known = drawMode >= 0 && static_cast<std::size_t>(drawMode) < states.size();
  return known ? states[static_cast<std::size_t>(drawMode)] : plain;
}

bool GLPainter::Create() {
  program = BuildProgram(vertexSource, fragmentSource);
  if (program == 0) return false;
  matrixLocation = glGetUniformLocation(program, "matrix");
  colourLocation = glGetUniformLocation(program, "colour");
  white = UploadTexture({1, 1, {255, 255, 255, 255}}, {});
  glGenVertexArrays(1, &vertexArray);
  glGenBuffers(1, &buffer);
  glBindVertexArray(vertexArray);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  const auto attribute = [](GLuint location, GLint size, std::size_t offset) {
    glEnableVertexAttribArray(location);
    glVertexAttribPointer(location, size, GL_FLOAT, GL_FALSE, sizeof(StreamVertex), BufferOffset(offset));
  };
  attribute(0, 4, offsetof(StreamVertex, position));
  attribute(1, 2, offsetof(StreamVertex, texCoord));
  scratch.reserve(initialVertices);
  capacity = used = 0;
  return white != 0;
}

void GLPainter::Destroy() {
  glDeleteProgram(program);
  glDeleteTextures(1, &white);
  glDeleteBuffers(1, &buffer);
  glDeleteVertexArrays(1, &vertexArray);
  program = white = buffer = vertexArray = 0;
}

void GLPainter::Begin() {
  glUseProgram(program);
  glBindVertexArray(vertexArray);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glEnable(GL_BLEND);
  glFrontFace(GL_CW);  // the library winds its quads clockwise, seen from their front
}

void GLPainter::SetState(const DrawState& state) {
  state.depthTest ? glEnable(GL_DEPTH_TEST) : glDisable(GL_DEPTH_TEST);
  state.cull ? glEnable(GL_CULL_FACE) : glDisable(GL_CULL_FACE);
  glDepthFunc(state.depthFunction);
  glDepthMask(state.depthWrite ? GL_TRUE : GL_FALSE);
}

void GLPainter::SetDepthIgnored() { SetState(flat); }

void GLPainter::AddQuads(unsigned quadCount, const float* vertices, const float* texCoords) {
  constexpr unsigned corners[6] = {0, 1, 2, 0, 2, 3};
  for (unsigned quad = 0; quad < quadCount; ++quad) {
    for (const unsigned corner : corners) {
      const std::size_t vertex = std::size_t{4} * quad + corner;
      const float* p = vertices + 3 * vertex;
      StreamVertex& out = scratch.emplace_back();
      std::copy_n(p, 3, out.position);
      out.position[3] = 1.0F;
      if (texCoords != nullptr) std::copy_n(texCoords + 2 * vertex, 2, out.texCoord);
    }
  }
}

void GLPainter::Upload(std::size_t bytes, GLint& firstVertex) {
  if (used + bytes > capacity) {
    capacity = std::max({capacity, bytes, initialCapacity});
    capacity -= capacity % sizeof(StreamVertex);
    capacity = std::max(capacity, bytes);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(capacity), nullptr, GL_STREAM_DRAW);
    used = 0;
  }
  glBufferSubData(GL_ARRAY_BUFFER, static_cast<GLintptr>(used), static_cast<GLsizeiptr>(bytes),
                  scratch.data());
  firstVertex = static_cast<GLint>(used / sizeof(StreamVertex));
  used += bytes;
}

void GLPainter::Draw(const std::array<float, 16>& matrix, const Material& material) {
  if (scratch.empty()) return;
  GLint firstVertex = 0;
  Upload(scratch.size() * sizeof(StreamVertex), firstVertex);
  SetMatrix(matrixLocation, matrix);
  const auto& c = material.colour;
  glUniform4f(colourLocation, c[0] * c[3], c[1] * c[3], c[2] * c[3], c[3]);
  glBindTexture(GL_TEXTURE_2D, material.texture != 0 ? material.texture : white);
  glDrawArrays(GL_TRIANGLES, firstVertex, static_cast<GLsizei>(scratch.size()));
  scratch.clear();
}

}  // namespace zovhost
