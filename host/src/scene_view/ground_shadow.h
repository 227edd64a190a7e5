#pragma once

#include <epoxy/gl.h>

#include "scene/ground_place.h"
#include "scene_view/scene_buffers.h"
#include "zovhost/projection.h"

namespace zovhost {

/// A soft shadow on the plane at the foot of a scene, drawn once and kept as a small picture.
class GroundShadow {
 public:
  /// Wrap in a GLStateGuard.
  bool Create(const Scene& scene, const SceneBuffers& buffers);
  void Destroy();
  /// At its darkest as opaque as `strength`, 0 to 1. Nothing when the eye is below the ground.
  void Draw(const Projection& projection, float strength) const;

 private:
  bool CastShadow(const SceneBuffers& buffers, std::vector<unsigned char>& coverage) const;
  Matrix4 MakeGroundMatrix() const;
  void DrawHeights(GLuint cast, const SceneBuffers& buffers, std::vector<unsigned char>& coverage) const;
  void MakeCorners();

  GroundPlace ground;
  GLuint texture = 0;
  GLuint program = 0;
  GLuint vertexArray = 0;
  GLuint buffer = 0;
  GLint matrixLocation = -1;
  GLint strengthLocation = -1;
};

}  // namespace zovhost
