#include "gl/gl_program.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zovhost {

namespace {

GLuint CompileShader(GLenum kind, const char* source) {
  const char* version =
      epoxy_is_desktop_gl() ? "#version 330 core\n" : "#version 300 es\nprecision highp float;\n";
  const char* parts[2] = {version, source};
  const GLuint shader = glCreateShader(kind);
  glShaderSource(shader, 2, parts, nullptr);
  glCompileShader(shader);
  GLint compiled = GL_FALSE;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
  if (compiled == GL_TRUE) return shader;
  glDeleteShader(shader);
  return 0;
}

std::vector<std::uint8_t> Premultiply(const std::vector<std::uint8_t>& rgba) {
  std::vector<std::uint8_t> result(rgba);
  for (std::size_t i = 0; i + 3 < result.size(); i += 4) {
    const unsigned alpha = result[i + 3];
    for (std::size_t c = i; c < i + 3; ++c)
      result[c] = static_cast<std::uint8_t>((result[c] * alpha + 127) / 255);
  }
  return result;
}

bool IsUsable(const Image& image) {
  if (image.width < 1 || image.height < 1) return false;
  const std::size_t pixels = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
  if (image.rgba.size() != 4 * pixels) return false;
  GLint largest = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
  return image.width <= largest && image.height <= largest;
}

}  // namespace

bool IsContextFit() {
  const int version = epoxy_gl_version();  // 0 without a context
  return version >= (epoxy_is_desktop_gl() ? 33 : 30);
}

GLuint BuildProgram(const char* vertexSource, const char* fragmentSource) {
  const GLuint vertex = CompileShader(GL_VERTEX_SHADER, vertexSource);
  const GLuint fragment = CompileShader(GL_FRAGMENT_SHADER, fragmentSource);
  GLuint program = 0;
  if (vertex != 0 && fragment != 0) {
    program = glCreateProgram();
    glAttachShader(program, vertex);
    glAttachShader(program, fragment);
    glLinkProgram(program);
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked != GL_TRUE) {
      glDeleteProgram(program);
      program = 0;
    }
  }
  glDeleteShader(vertex);
  glDeleteShader(fragment);
  return program;
}

GLuint UploadTexture(const Image& image, const TextureOptions& options) {
  if (!IsUsable(image)) return 0;
  const std::vector<std::uint8_t> pixels = options.premultiply ? Premultiply(image.rgba) : image.rgba;
  const GLint wrap = options.repeat ? GL_REPEAT : GL_CLAMP_TO_EDGE;
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, image.width, image.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
               pixels.data());
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                  options.mipmaps ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
  if (options.mipmaps) glGenerateMipmap(GL_TEXTURE_2D);
  return texture;
}

void SetMatrix(GLint location, const std::array<float, 16>& matrix) {
  glUniformMatrix4fv(location, 1, GL_FALSE, matrix.data());
}

}  // namespace zovhost
