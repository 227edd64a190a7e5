#include "scene_view/kept_picture.h"

#include <algorithm>

namespace zovhost {

namespace {

GLint GetDepthParameter(GLint bound, bool stencil, GLenum parameter) {
  const GLenum attachment = bound != 0 ? (stencil ? GL_STENCIL_ATTACHMENT : GL_DEPTH_ATTACHMENT)
                                       : (stencil ? GL_STENCIL : GL_DEPTH);
  GLint kind = GL_NONE;
  glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, attachment,
                                        GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE, &kind);
  GLint value = 0;
  if (kind != GL_NONE)
    glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, attachment, parameter, &value);
  return value;
}

// Depths are copied between buffers of one format only.
GLenum GetDepthFormat(GLint bound) {
  const bool stencil = GetDepthParameter(bound, true, GL_FRAMEBUFFER_ATTACHMENT_STENCIL_SIZE) > 0;
  const GLint bits = GetDepthParameter(bound, false, GL_FRAMEBUFFER_ATTACHMENT_DEPTH_SIZE);
  const GLint type = GetDepthParameter(bound, false, GL_FRAMEBUFFER_ATTACHMENT_COMPONENT_TYPE);
  if (type == GL_FLOAT) return stencil ? GL_DEPTH32F_STENCIL8 : GL_DEPTH_COMPONENT32F;
  if (bits == 16) return GL_DEPTH_COMPONENT16;
  return stencil ? GL_DEPTH24_STENCIL8 : GL_DEPTH_COMPONENT24;
}

GLuint MakeBuffer(GLint samples, GLenum format, int width, int height) {
  GLuint buffer = 0;
  glGenRenderbuffers(1, &buffer);
  glBindRenderbuffer(GL_RENDERBUFFER, buffer);
  glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
  return buffer;
}

void ClearErrors() {
  for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
  }
}

}  // namespace

bool KeptPicture::Create(int width, int height) {
  Destroy();
  ClearErrors();
  GLint bound = 0;
  GLint samples = 0;
  glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &bound);
  glGetIntegerv(GL_SAMPLES, &samples);
  const GLenum depthFormat = GetDepthFormat(bound);
  colours = MakeBuffer(samples, GL_RGBA8, width, height);
  depths = MakeBuffer(samples, depthFormat, width, height);
  glGenFramebuffers(1, &framebuffer);
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
  glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colours);
  glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depths);
  const bool whole = glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
  const auto target = static_cast<GLuint>(bound);
  if (whole) {  // and there and back, to know
    Save(target, 0, 0, width, height);
    Restore(target, 0, 0, width, height);
  }
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, target);
  if (whole && glGetError() == GL_NO_ERROR) return true;
  Destroy();
  ClearErrors();
  return false;
}

void KeptPicture::Destroy() {
  glDeleteFramebuffers(1, &framebuffer);
  const GLuint buffers[2] = {colours, depths};
  glDeleteRenderbuffers(2, buffers);
  *this = {};
}

void KeptPicture::Copy(GLuint from, GLuint to, int x, int y, int width, int height) {
  glBindFramebuffer(GL_READ_FRAMEBUFFER, from);
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, to);
  glBlitFramebuffer(x, y, x + width, y + height, x, y, x + width, y + height,
                    GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT, GL_NEAREST);
}

void KeptPicture::Restore(GLuint target, int x, int y, int width, int height) const {
  Copy(framebuffer, target, x, y, width, height);
}

void KeptPicture::Save(GLuint source, int x, int y, int width, int height) const {
  Copy(source, framebuffer, x, y, width, height);
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, source);
}

}  // namespace zovhost
