#pragma once

#include <epoxy/gl.h>

namespace zovhost {

/// Colours and depths of a part of a framebuffer, kept to be put back.
class KeptPicture {
 public:
  /// Room for the first `width` by `height` pixels of the framebuffer that is bound for drawing, of its very
  /// kind. False where the driver cannot copy between them. Wrap all in a GLStateGuard.
  bool Create(int width, int height);
  void Destroy();

  /// Draw into it, at the places that things have in the framebuffer.
  void Bind() const { glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer); }
  /// Copies a rectangle into the framebuffer of this name, from or to the same place, and leaves it bound.
  void Restore(GLuint target, int x, int y, int width, int height) const;
  void Save(GLuint source, int x, int y, int width, int height) const;

 private:
  static void Copy(GLuint from, GLuint to, int x, int y, int width, int height);

  GLuint framebuffer = 0;
  GLuint colours = 0;
  GLuint depths = 0;
};

}  // namespace zovhost
