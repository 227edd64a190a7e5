#pragma once

#include <epoxy/gl.h>

#include "scene_view/scene_buffers.h"
#include "zovhost/projection.h"
#include "zovhost/scene.h"

namespace zovhost {

/// A face of the scene that is tinted with the accent colour.
class FaceHighlight {
 public:
  /// Wrap in a GLStateGuard.
  bool Create();
  void Destroy();

  /// Copies the face; null for none. Needs no context.
  void SetFace(const SceneFace* face);
  /// With blending on, over surfaces of the same depth or pushed back.
  void Draw(const Projection& projection, const SceneBuffers& buffers);

 private:
  SceneFace shown;
  bool uploaded = false;
  GLuint program = 0;
  GLuint vertexArray = 0;
  GLuint buffer = 0;
  GLint matrixLocation = -1;
  GLint tintLocation = -1;
};

}  // namespace zovhost
