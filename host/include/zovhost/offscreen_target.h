#pragma once

#include "zovhost/image.h"

namespace zovhost {

/// A picture to draw into without a window: colour and depth with several samples a pixel, and the texture
/// into which they are resolved.
///
/// All calls need the context in which it was created.
class OffscreenTarget {
 public:
  OffscreenTarget() = default;
  ~OffscreenTarget();
  OffscreenTarget(const OffscreenTarget&) = delete;
  OffscreenTarget& operator=(const OffscreenTarget&) = delete;

  /// Sizes in pixels. Makes it anew when anything differs. False for a size below 1 or beyond what the
  /// driver offers, and when memory is short; the target is then empty. `samples` is held to what there is.
  bool Create(int width, int height, int samples = 4);
  void Destroy();

  int GetWidth() const { return width; }
  int GetHeight() const { return height; }
  int GetSamples() const { return samples; }

  /// Binds it for drawing, with a viewport of its size. The caller puts its own framebuffer back.
  bool Bind() const;
  /// Brings what was drawn into the texture, whose rows run from the bottom. The framebuffer binding stays.
  bool Resolve() const;
  /// Copies colour and depth, with all their samples, into a target of the same size and samples. False for
  /// any other. The framebuffer binding stays.
  bool CopyTo(const OffscreenTarget& other) const;
  unsigned GetTexture() const { return resolveTexture; }
  /// The texture becomes the caller's; the target is empty afterwards.
  unsigned TakeTexture();
  /// Resolves and reads the picture back, rows from the top, opaque. False leaves `image` alone.
  bool Read(Image& image) const;

 private:
  bool CreateMultisampled();
  bool CreateResolved();

  int width = 0;
  int height = 0;
  int samples = 0;
  int wantedSamples = 0;
  unsigned drawFramebuffer = 0;
  unsigned colourBuffer = 0;
  unsigned depthBuffer = 0;
  unsigned resolveFramebuffer = 0;
  unsigned resolveTexture = 0;
};

}  // namespace zovhost
