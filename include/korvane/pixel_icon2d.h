#pragma once

#include <memory>

#include "korvane/icon2d.h"
#include "korvane/vector3.h"

namespace Korvane {

/// An image that is asked and not drawn: the hit map of a menu's regions, shaped by its opacity.
class ZOVTOOLS_API PixelIcon2D : public Icon2D {
 public:
  /// The order of the first three bytes of a pixel; the fourth is opacity.
  enum PixelFormat : int { PIXEL_FORMAT_BGRA = 0, PIXEL_FORMAT_RGBA = 1 };

  /// Copies width * height * 4 bytes, rows from the top. A size below 1, null pixels, or more pixels than
  /// memory holds: no image.
  PixelIcon2D(int width, int height, const unsigned char* pixels, PixelFormat format);
  ~PixelIcon2D() override;
  PixelIcon2D(const PixelIcon2D&) = delete;
  PixelIcon2D& operator=(const PixelIcon2D&) = delete;

  int GetImageWidth() const { return imageWidth; }
  int GetImageHeight() const { return imageHeight; }
  /// Null without an image. The buffer belongs to the icon.
  const unsigned char* GetImagePixels() const { return imagePixels.get(); }
  PixelFormat GetPixelFormat() const { return pixelFormat; }

  /// The colour, each part 0 to 1, under a viewport pixel. False, with `colour` untouched, outside the
  /// image and where it is transparent.
  [[nodiscard]] bool GetColor(const Vector2& point, Vector3& colour) const;

 private:
  int imageWidth;
  int imageHeight;
  std::unique_ptr<unsigned char[]> imagePixels;
  PixelFormat pixelFormat;
};

}  // namespace Korvane
