#include "widget_renderer/ball_painter.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "gl/gl_program.h"
#include "projection/matrix.h"

namespace zovhost {

namespace {

constexpr int slices = 32;  // around
constexpr int stacks = 16;  // from pole to pole

constexpr const char* vertexSource = R"(
layout(location = 0) in vec3 position;  // of the unit ball, and its normal
uniform mat4 matrix;
uniform mat4 view;
uniform vec4 ball;  // its middle in view space, and its radius
uniform float perspective;
out vec3 normal;
out vec3 toEye;
void main() {
  normal = mat3(view) * position;
  toEye = mix(vec3(0.0, 0.0, 1.0), -(ball.xyz + ball.w * normal), perspective);
  gl_Position = matrix * vec4(position, 1.0);
}
)";
constexpr const char* fragmentSource = R"(
uniform vec4 colour;
in vec3 normal;
in vec3 toEye;
out vec4 fragment;
// Green is calmer here than in the numbers that ask for it.
vec3 Calm(vec3 c) { return vec3(c.r, 0.0, c.b) + c.g * vec3(0.14, 0.60, 0.29); }
void main() {
  vec3 n = normalize(normal);
  float light = max(dot(n, normalize(vec3(-0.45, 0.65, 0.75))), 0.0);
  float shine = pow(light, 24.0);
  vec3 shaded = Calm(colour.rgb) * (0.55 + 0.45 * light) + vec3(0.25 * shine);
  // A light rim, for a dark view; around it lies the dark one of the shadow, for a light view.
  shaded = mix(vec3(0.93, 0.98, 0.94), shaded, smoothstep(0.36, 0.50, dot(n, normalize(toEye))));
  fragment = vec4(min(shaded, 1.0) * colour.a, colour.a);
}
)";

std::vector<float> MakeVertices() {
  std::vector<float> positions;
  for (int stack = 0; stack <= stacks; ++stack) {
    const double polar = Korvane::Math::PI * stack / stacks;
    for (int slice = 0; slice <= slices; ++slice) {
      const double around = 2.0 * Korvane::Math::PI * slice / slices;
      positions.push_back(static_cast<float>(std::sin(polar) * std::cos(around)));
      positions.push_back(static_cast<float>(std::cos(polar)));
      positions.push_back(static_cast<float>(std::sin(polar) * std::sin(around)));
    }
  }
  return positions;
}

// Clockwise seen from outside, like everything of the library.
std::vector<std::uint16_t> MakeIndices() {
  std::vector<std::uint16_t> result;
  const auto add = [&result](int index) { result.push_back(static_cast<std::uint16_t>(index)); };
  for (int stack = 0; stack < stacks; ++stack) {
    for (int slice = 0; slice < slices; ++slice) {
      const int first = stack * (slices + 1) + slice;
      const int below = first + slices + 1;
      add(first), add(below), add(first + 1);
      add(first + 1), add(below), add(below + 1);
    }
  }
  return result;
}

}  // namespace

bool BallPainter::Create() {
  program = BuildProgram(vertexSource, fragmentSource);
  if (program == 0) return false;
  matrixLocation = glGetUniformLocation(program, "matrix");
  viewLocation = glGetUniformLocation(program, "view");
  ballLocation = glGetUniformLocation(program, "ball");
  perspectiveLocation = glGetUniformLocation(program, "perspective");
  colourLocation = glGetUniformLocation(program, "colour");
  const std::vector<float> positions = MakeVertices();
  const std::vector<std::uint16_t> corners = MakeIndices();
  indexCount = static_cast<GLsizei>(corners.size());
  glGenVertexArrays(1, &vertexArray);
  glBindVertexArray(vertexArray);
  glGenBuffers(1, &vertices);
  glBindBuffer(GL_ARRAY_BUFFER, vertices);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(positions.size() * sizeof(float)), positions.data(),
               GL_STATIC_DRAW);
  glEnableVertexAttribArray(0);
  glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
  glGenBuffers(1, &indices);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indices);
  glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(corners.size() * sizeof(std::uint16_t)),
               corners.data(), GL_STATIC_DRAW);
  return true;
}

void BallPainter::Destroy() {
  glDeleteProgram(program);
  glDeleteBuffers(1, &vertices);
  glDeleteBuffers(1, &indices);
  glDeleteVertexArrays(1, &vertexArray);
  program = vertices = indices = vertexArray = 0;
}

void BallPainter::Draw(const Projection& projection, const Korvane::Vector3& position, double radius,
                       const std::array<float, 4>& colour) const {
  const Matrix4 place = {radius, 0.0, 0.0,    0.0, 0.0,        radius,     0.0,        0.0,
                         0.0,    0.0, radius, 0.0, position.x, position.y, position.z, 1.0};
  glUseProgram(program);
  glBindVertexArray(vertexArray);
  SetMatrix(matrixLocation, ToFloat(Multiply(projection.GetViewProjection(), place)));
  SetMatrix(viewLocation, ToFloat(projection.GetView()));
  const Korvane::Vector3 middle = TransformPoint(projection.GetView(), position);
  glUniform4f(ballLocation, static_cast<float>(middle.x), static_cast<float>(middle.y),
              static_cast<float>(middle.z), static_cast<float>(radius));
  glUniform1f(perspectiveLocation, projection.GetProjection()[11] == 0.0 ? 0.0F : 1.0F);
  glUniform4fv(colourLocation, 1, colour.data());
  glDrawElements(GL_TRIANGLES, indexCount, GL_UNSIGNED_SHORT, nullptr);
}

}  // namespace zovhost
