#pragma once

#include <epoxy/gl.h>

#include <array>

#include "korvane/vector3.h"
#include "zovhost/projection.h"

namespace zovhost {

/// Draws shaded balls.
class BallPainter {
 public:
  bool Create();
  void Destroy();
  /// `colour` with straight alpha. Leaves its program and vertex array bound.
  void Draw(const Projection& projection, const Korvane::Vector3& position, double radius,
            const std::array<float, 4>& colour) const;

 private:
  GLuint program = 0;
  GLuint vertexArray = 0;
  GLuint vertices = 0;
  GLuint indices = 0;
  GLsizei indexCount = 0;
  GLint matrixLocation = -1;
  GLint viewLocation = -1;
  GLint colourLocation = -1;
  GLint ballLocation = -1;
  GLint perspectiveLocation = -1;
};

}  // namespace zovhost
