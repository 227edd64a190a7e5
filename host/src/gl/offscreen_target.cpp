#include "zovhost/offscreen_target.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "zovhost/gl_state_guard.h"

namespace zovhost {

namespace {

bool IsBoundFramebufferComplete() {
  return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void ClearErrors() {
  for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
  }
}

int LargestSize() {
  GLint texture = 0;
  GLint buffer = 0;
  GLint viewport[2] = {0, 0};
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &texture);
  glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &buffer);
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
  return std::min({texture, buffer, viewport[0], viewport[1]});
}

}  // namespace

OffscreenTarget::~OffscreenTarget() { Destroy(); }

bool OffscreenTarget::Create(int newWidth, int newHeight, int newSamples) {
  const bool same = newWidth == width && newHeight == height && newSamples == wantedSamples;
  if (resolveTexture != 0 && same) return true;
  Destroy();
  if (newWidth < 1 || newHeight < 1) return false;
  const GLStateGuard guard;
  ClearErrors();
  const int largest = LargestSize();
  if (newWidth > largest || newHeight > largest) return false;
  GLint largestSamples = 0;
  glGetIntegerv(GL_MAX_SAMPLES, &largestSamples);
  width = newWidth;
  height = newHeight;
  wantedSamples = newSamples;
  samples = std::clamp(newSamples, 0, largestSamples);
  if (CreateMultisampled() && CreateResolved() && glGetError() == GL_NO_ERROR) return true;
  Destroy();
  return false;
}

bool OffscreenTarget::CreateMultisampled() {
  glGenRenderbuffers(1, &colourBuffer);
  glBindRenderbuffer(GL_RENDERBUFFER, colourBuffer);
  glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, width, height);
  glGenRenderbuffers(1, &depthBuffer);
  glBindRenderbuffer(GL_RENDERBUFFER, depthBuffer);
  glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH_COMPONENT24, width, height);
  glGenFramebuffers(1, &drawFramebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, drawFramebuffer);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colourBuffer);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depthBuffer);
  return IsBoundFramebufferComplete();
}

bool OffscreenTarget::CreateResolved() {
  glGenTextures(1, &resolveTexture);
  glBindTexture(GL_TEXTURE_2D, resolveTexture);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glGenFramebuffers(1, &resolveFramebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, resolveFramebuffer);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, resolveTexture, 0);
  return IsBoundFramebufferComplete();
}

void OffscreenTarget::Destroy() {
  if (drawFramebuffer != 0) glDeleteFramebuffers(1, &drawFramebuffer);
  if (resolveFramebuffer != 0) glDeleteFramebuffers(1, &resolveFramebuffer);
  if (colourBuffer != 0) glDeleteRenderbuffers(1, &colourBuffer);
  if (depthBuffer != 0) glDeleteRenderbuffers(1, &depthBuffer);
  if (resolveTexture != 0) glDeleteTextures(1, &resolveTexture);
  drawFramebuffer = resolveFramebuffer = colourBuffer = depthBuffer = resolveTexture = 0;
  width = height = samples = wantedSamples = 0;
}

bool OffscreenTarget::Bind() const {
  if (drawFramebuffer == 0) return false;
  glBindFramebuffer(GL_FRAMEBUFFER, drawFramebuffer);
  glViewport(0, 0, width, height);
  return true;
}

bool OffscreenTarget::Resolve() const {
  if (drawFramebuffer == 0) return false;
  const GLStateGuard guard;
  glBindFramebuffer(GL_READ_FRAMEBUFFER, drawFramebuffer);
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolveFramebuffer);
  glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
  return true;
}

// Drivers take the colours alone, and the depths alone, for a plain copy.
bool OffscreenTarget::CopyTo(const OffscreenTarget& other) const {
  const bool alike = width == other.width && height == other.height && samples == other.samples;
  if (drawFramebuffer == 0 || other.drawFramebuffer == 0 || !alike) return false;
  const GLStateGuard guard;
  glBindFramebuffer(GL_READ_FRAMEBUFFER, drawFramebuffer);
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, other.drawFramebuffer);
  glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
  glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_DEPTH_BUFFER_BIT, GL_NEAREST);
  return true;
}

unsigned OffscreenTarget::TakeTexture() {
  const unsigned taken = std::exchange(resolveTexture, 0U);
  Destroy();
  return taken;
}

bool OffscreenTarget::Read(Image& image) const {
  if (!Resolve()) return false;
  const GLStateGuard guard;
  glBindFramebuffer(GL_READ_FRAMEBUFFER, resolveFramebuffer);
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 4;
  std::vector<std::uint8_t> pixels(rowBytes * static_cast<std::size_t>(height));
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
  for (std::size_t i = 3; i < pixels.size(); i += 4) pixels[i] = 255;
  for (std::size_t top = 0, low = static_cast<std::size_t>(height) - 1; top < low; ++top, --low) {
    const auto row = [&](std::size_t y) {
      return pixels.begin() + static_cast<std::ptrdiff_t>(y * rowBytes);
    };
    std::swap_ranges(row(top), row(top + 1), row(low));
  }
  image = {width, height, std::move(pixels)};
  return true;
}

}  // namespace zovhost
