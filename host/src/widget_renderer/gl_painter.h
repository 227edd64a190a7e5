#pragma once

#include <epoxy/gl.h>

#include <array>
#include <vector>

#include "widget_renderer/outline.h"
#include "zovhost/projection.h"

namespace zovhost {

/// How a draw mode treats depth and faces.
struct DrawState {
  bool depthTest;
  GLenum depthFunction;
  bool depthWrite;
  bool cull;
};

/// The state of a draw mode (Korvane::Renderer::DrawMode); modes without a meaning are drawn as plain quads.
/// Everything is blended.
const DrawState& GetDrawState(int drawMode);

/// Streams triangles to the graphics card. One buffer is written from end to end and then given up for a
/// fresh one, so no draw waits for an earlier one; memory is allocated only when a draw is larger than all
/// before. Between Begin and End only.
class GLPainter {
 public:
  bool Create();
  void Destroy();

  /// Binds what the painting needs; a GLStateGuard puts it back.
  void Begin();
  void SetState(const DrawState& state);
  void SetDepthIgnored();

  /// Quads of 4 vertices, 3 floats each, and 2 floats of texture coordinates each or null.
  void AddQuads(unsigned quadCount, const float* vertices, const float* texCoords);
  /// Vertices already in clip space, three a triangle.
  std::vector<StreamVertex>& GetScratch() { return scratch; }

  struct Material {
    std::array<float, 4> colour;  // straight alpha
    GLuint texture = 0;           // 0: none; premultiplied otherwise
  };
  /// Draws what has been added, and forgets it.
  void Draw(const std::array<float, 16>& matrix, const Material& material);

 private:
  void Upload(std::size_t bytes, GLint& firstVertex);

  std::vector<StreamVertex> scratch;
  GLuint program = 0;
  GLuint vertexArray = 0;
  GLuint buffer = 0;
  GLuint white = 0;  // 1 by 1, stands for no texture
  GLint matrixLocation = -1;
  GLint colourLocation = -1;
  std::size_t capacity = 0;
  std::size_t used = 0;
};

}  // namespace zovhost
