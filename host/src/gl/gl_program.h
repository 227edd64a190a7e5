#pragma once

#include <epoxy/gl.h>

#include <array>

#include "zovhost/image.h"

namespace zovhost {

/// Compiles and links. The sources begin after the version line, which is chosen for the current context.
/// 0 on failure.
GLuint BuildProgram(const char* vertexSource, const char* fragmentSource);

/// Whether the current context offers OpenGL 3.3 or OpenGL ES 3.0. False without a context.
bool IsContextFit();

struct TextureOptions {
  bool mipmaps = false;
  bool repeat = false;
  bool premultiply = true;  // the colours by their alpha, as the kit's blending expects
};
/// A texture with the image's first row at v = 0. 0 for an image that is empty, inconsistent or larger than
/// the driver takes. Changes pixel store and the binding of texture unit 0: wrap it in a GLStateGuard.
GLuint UploadTexture(const Image& image, const TextureOptions& options);

void SetMatrix(GLint location, const std::array<float, 16>& matrix);

}  // namespace zovhost
