#include "scene_view/face_highlight.h"

#include "gl/gl_program.h"
#include "scene_view/scene_shaders.h"
#include "zovhost/accent.h"

namespace zovhost {

namespace {

constexpr double OPACITY = 0.6;

GLfloat GetTint(std::size_t channel) { return static_cast<GLfloat>(ACCENT_COLOUR[channel] * OPACITY); }

}  // namespace

bool FaceHighlight::Create() {
  program = BuildProgram(faceVertexShader, faceFragmentShader);
  if (program == 0) return false;
  matrixLocation = glGetUniformLocation(program, "matrix");
  tintLocation = glGetUniformLocation(program, "tint");
  glGenVertexArrays(1, &vertexArray);
  glGenBuffers(1, &buffer);
  glBindVertexArray(vertexArray);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glEnableVertexAttribArray(0);
  glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
  return true;
}

void FaceHighlight::Destroy() {
  glDeleteProgram(program);
  glDeleteVertexArrays(1, &vertexArray);
  glDeleteBuffers(1, &buffer);
  *this = {};
}

void FaceHighlight::SetFace(const SceneFace* face) {
  const bool same = face != nullptr && face->part == shown.part && face->triangles == shown.triangles;
  if (same) return;
  shown = face != nullptr ? *face : SceneFace{};
  uploaded = false;
}

void FaceHighlight::Draw(const Projection& projection, const SceneBuffers& buffers) {
  const SceneBuffers::Part* const part = buffers.FindPart(shown.part);
  if (part == nullptr || shown.corners.empty()) return;
  glUseProgram(program);
  glBindVertexArray(vertexArray);
  if (!uploaded) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(shown.corners.size() * sizeof(float)),
                 shown.corners.data(), GL_DYNAMIC_DRAW);
    uploaded = true;
  }
  SetMatrix(matrixLocation, ToFloat(Multiply(projection.GetViewProjection(), part->transform)));
  glUniform4f(tintLocation, GetTint(0), GetTint(1), GetTint(2), static_cast<GLfloat>(OPACITY));
  glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(shown.corners.size() / 3));
}

}  // namespace zovhost
