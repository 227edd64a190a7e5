#include "scene_view/ground_shadow.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "gl/buffer_offset.h"
#include "gl/gl_program.h"
#include "scene_view/scene_shaders.h"

namespace zovhost {

namespace {

using Korvane::Vector3;

constexpr int resolution = 256;
constexpr std::size_t mostIndices =
    3'000'000;  // of more the coarse model casts it: nobody sees that in a blur
constexpr int blurRadius = 7;
constexpr int blurPasses = 3;  // three box filters are close to a bell curve

// One box filter along rows (step 1) or columns (step of a row).
void BlurLines(const std::vector<float>& from, std::vector<float>& to, int step, int lineStep) {
  for (int line = 0; line < resolution; ++line) {
    const auto at = [&](int i) {
      return static_cast<std::size_t>(line * lineStep + std::clamp(i, 0, resolution - 1) * step);
    };
    float sum = 0.0F;
    for (int i = -blurRadius; i <= blurRadius; ++i) sum += from[at(i)];
    for (int i = 0; i < resolution; ++i) {
      to[at(i)] = sum / static_cast<float>(2 * blurRadius + 1);
      sum += from[at(i + blurRadius + 1)] - from[at(i - blurRadius)];
    }
  }
}

Image BlurToImage(const std::vector<unsigned char>& coverage) {
  std::vector<float> values(static_cast<std::size_t>(resolution) * resolution);
  std::vector<float> other(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = coverage[4 * i];
  for (int pass = 0; pass < blurPasses; ++pass) {
    BlurLines(values, other, 1, resolution);
    BlurLines(other, values, resolution, 1);
  }
  Image image{resolution, resolution, std::vector<std::uint8_t>(4 * values.size(), 255)};
  for (std::size_t i = 0; i < values.size(); ++i) {
    image.rgba[4 * i] = static_cast<std::uint8_t>(std::clamp(values[i] + 0.5F, 0.0F, 255.0F));
  }
  return image;
}

}  // namespace

bool GroundShadow::Create(const Scene& scene, const SceneBuffers& buffers) {
  ground = FindGroundPlace(scene);
  program = BuildProgram(shadowVertexShader, shadowFragmentShader);
  std::vector<unsigned char> coverage;
  if (program == 0 || !CastShadow(buffers, coverage)) return false;
  matrixLocation = glGetUniformLocation(program, "matrix");
  strengthLocation = glGetUniformLocation(program, "strength");
  texture = UploadTexture(BlurToImage(coverage), {.premultiply = false});
  MakeCorners();
  return texture != 0;
}

void GroundShadow::Destroy() {
  glDeleteTextures(1, &texture);
  glDeleteProgram(program);
  glDeleteBuffers(1, &buffer);
  glDeleteVertexArrays(1, &vertexArray);
  *this = {};
}

// Ground coordinates to -1 to 1; the height to -1 at the ground and 1 at the top.
Matrix4 GroundShadow::MakeGroundMatrix() const {
  const auto row = [](const Vector3& axis) { return axis * (2.0 / axis.LengthSquared()); };
  const Vector3 rows[3] = {row(ground.sideU), row(ground.sideV), row(ground.up * ground.height)};
  Matrix4 matrix = identityMatrix;
  for (std::size_t i = 0; i < 3; ++i) {
    for (int axis = 0; axis < 3; ++axis) matrix[4 * static_cast<std::size_t>(axis) + i] = rows[i][axis];
    matrix[12 + i] = -rows[i].Dot(ground.origin) - 1.0;
  }
  return matrix;
}

// The greatest height over each place, into what is bound.
void GroundShadow::DrawHeights(GLuint cast, const SceneBuffers& buffers,
                               std::vector<unsigned char>& coverage) const {
  const Matrix4 onGround = MakeGroundMatrix();
  glViewport(0, 0, resolution, resolution);
  glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
  glClear(GL_COLOR_BUFFER_BIT);
  glEnable(GL_BLEND);
  glBlendEquation(GL_MAX);
  glUseProgram(cast);
  glBindVertexArray(buffers.GetTriangleArray());
  const GLint location = glGetUniformLocation(cast, "matrix");
  std::size_t indices = 0;
  for (const SceneBuffers::Drawn& drawn : buffers.GetDrawn()) {
    indices += static_cast<std::size_t>(buffers.GetMeshes()[drawn.mesh].indexCount);
  }
  const bool coarse = indices > mostIndices;
  for (const SceneBuffers::Drawn& drawn : buffers.GetDrawn()) {
    const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
    if (mesh.transparent) continue;
    SetMatrix(location, ToFloat(Multiply(onGround, drawn.transform)));
    const std::size_t first = coarse ? mesh.firstCoarse : mesh.firstIndex;
    glDrawElements(GL_TRIANGLES, coarse ? mesh.coarseCount : mesh.indexCount, GL_UNSIGNED_INT,
                   BufferOffset(first * sizeof(std::uint32_t)));
  }
  coverage.resize(std::size_t{4} * resolution * resolution);
  glReadPixels(0, 0, resolution, resolution, GL_RGBA, GL_UNSIGNED_BYTE, coverage.data());
  glBlendEquation(GL_FUNC_ADD);
}

bool GroundShadow::CastShadow(const SceneBuffers& buffers, std::vector<unsigned char>& coverage) const {
  const GLuint cast = BuildProgram(castVertexShader, castFragmentShader);
  GLuint target = 0;
  GLuint framebuffer = 0;
  glGenRenderbuffers(1, &target);
  glBindRenderbuffer(GL_RENDERBUFFER, target);
  glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, resolution, resolution);
  glGenFramebuffers(1, &framebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, target);
  const bool ready = cast != 0 && glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
  if (ready) DrawHeights(cast, buffers, coverage);
  glDeleteFramebuffers(1, &framebuffer);
  glDeleteRenderbuffers(1, &target);
  glDeleteProgram(cast);
  return ready;
}

void GroundShadow::MakeCorners() {
  constexpr float corners[8] = {0, 0, 1, 0, 0, 1, 1, 1};
  glGenVertexArrays(1, &vertexArray);
  glBindVertexArray(vertexArray);
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners, GL_STATIC_DRAW);
  glEnableVertexAttribArray(0);
  glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
}

void GroundShadow::Draw(const Projection& projection, float strength) const {
  const auto& [origin, sideU, sideV, up, height] = ground;
  const bool orthographic = projection.GetProjection()[11] == 0.0;
  const Vector3 from =
      orthographic ? projection.GetFrame().forward * -1.0 : projection.GetFrame().eye - origin;
  if (texture == 0 || from.Dot(up) <= 0.0) return;
  const Matrix4 place = {sideU.x, sideU.y, sideU.z, 0, sideV.x,  sideV.y,  sideV.z,  0,
                         up.x,    up.y,    up.z,    0, origin.x, origin.y, origin.z, 1};
  glUseProgram(program);
  glBindVertexArray(vertexArray);
  glBindTexture(GL_TEXTURE_2D, texture);
  SetMatrix(matrixLocation, ToFloat(Multiply(projection.GetViewProjection(), place)));
  glUniform1f(strengthLocation, strength);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

}  // namespace zovhost
