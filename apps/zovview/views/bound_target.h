#pragma once

#include <epoxy/gl.h>

#include "zovhost/offscreen_target.h"

namespace zovview {

/// Binds a target for its life; what was bound comes back.
class BoundTarget {
 public:
  explicit BoundTarget(const zovhost::OffscreenTarget& target) {
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &shown);
    good = target.Bind();
  }
  ~BoundTarget() { glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(shown)); }
  BoundTarget(const BoundTarget&) = delete;
  BoundTarget& operator=(const BoundTarget&) = delete;

  bool IsGood() const { return good; }

 private:
  GLint shown = 0;
  bool good = false;
};

}  // namespace zovview
