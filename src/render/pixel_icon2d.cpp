#include "korvane/pixel_icon2d.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

namespace Korvane {

namespace {

constexpr std::size_t BYTES_PER_PIXEL = 4;

// 0 for an image that has no pixels or that no memory can hold.
std::size_t BufferSize(int width, int height) {
  if (width < 1 || height < 1) return 0;
  const std::size_t most = std::numeric_limits<std::size_t>::max() / 2 / BYTES_PER_PIXEL;
  const auto columns = static_cast<std::size_t>(width);
  const auto rows = static_cast<std::size_t>(height);
  return columns <= most / rows ? columns * rows * BYTES_PER_PIXEL : 0;
}

}  // namespace

PixelIcon2D::PixelIcon2D(int width, int height, const unsigned char* pixels, PixelFormat format)
    : imageWidth(width), imageHeight(height), pixelFormat(format) {
  const std::size_t size = BufferSize(width, height);
  if (size == 0 || pixels == nullptr) return;
  imagePixels.reset(new (std::nothrow) unsigned char[size]);
  if (imagePixels != nullptr) std::memcpy(imagePixels.get(), pixels, size);
}

PixelIcon2D::~PixelIcon2D() = default;

// The column is rounded up and the row down: the hit maps are drawn for it.
bool PixelIcon2D::GetColor(const Vector2& point, Vector3& colour) const {
  if (imagePixels == nullptr) return false;
  const Vector2 low = GetBounds().Min();
  const double u = (point.x - low.x) / GetWidth();
  const double v = (point.y - low.y) / GetHeight();
  const double column = std::ceil(imageWidth * u);
  const double row = std::floor(imageHeight * (1.0 - v));
  const bool inside = column >= 0.0 && column < imageWidth && row >= 0.0 && row < imageHeight;
  if (!inside) return false;

  const std::size_t index =
      static_cast<std::size_t>(row) * static_cast<std::size_t>(imageWidth) + static_cast<std::size_t>(column);
  const unsigned char* const pixel = imagePixels.get() + index * BYTES_PER_PIXEL;
  if (pixel[3] == 0) return false;
  const bool redFirst = pixelFormat == PIXEL_FORMAT_RGBA;
  colour = Vector3(pixel[redFirst ? 0 : 2], pixel[1], pixel[redFirst ? 2 : 0]) / 255.0;
  return true;
}

}  // namespace Korvane
