#include "pictures/canvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numbers>

namespace zovhost {

namespace {

std::uint8_t Straighten(std::uint32_t premultiplied, std::uint32_t alpha) {
  if (alpha == 0) return 0;
  return static_cast<std::uint8_t>(std::min<std::uint32_t>(255, (premultiplied * 255 + alpha / 2) / alpha));
}

}  // namespace

Canvas::Canvas(int width, int height)
    : surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      context(cairo_create(surface.get())) {}

bool Canvas::IsValid() const {
  return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS &&
         cairo_status(context.get()) == CAIRO_STATUS_SUCCESS;
}

Image Canvas::MakeImage() const {
  cairo_surface_flush(surface.get());
  Image image;
  image.width = cairo_image_surface_get_width(surface.get());
  image.height = cairo_image_surface_get_height(surface.get());
  const unsigned char* data = cairo_image_surface_get_data(surface.get());
  if (data == nullptr) return {};
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
  const auto width = static_cast<std::size_t>(image.width);
  const auto height = static_cast<std::size_t>(image.height);
  image.rgba.resize(width * height * 4);
  std::uint8_t* out = image.rgba.data();
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x, out += 4) {
      std::uint32_t pixel = 0;  // alpha, red, green, blue from the high byte, premultiplied
      std::memcpy(&pixel, data + y * stride + x * 4, sizeof pixel);
      const std::uint32_t alpha = pixel >> 24;
      out[0] = Straighten((pixel >> 16) & 0xFF, alpha);
      out[1] = Straighten((pixel >> 8) & 0xFF, alpha);
      out[2] = Straighten(pixel & 0xFF, alpha);
      out[3] = static_cast<std::uint8_t>(alpha);
    }
  }
  return image;
}

void AddRoundedRectangle(cairo_t* context, double x, double y, double width, double height, double radius) {
  constexpr double quarter = std::numbers::pi / 2.0;
  const double r = std::max(0.0, std::min({radius, width / 2.0, height / 2.0}));
  cairo_new_sub_path(context);
  cairo_arc(context, x + width - r, y + r, r, -quarter, 0.0);
  cairo_arc(context, x + width - r, y + height - r, r, 0.0, quarter);
  cairo_arc(context, x + r, y + height - r, r, quarter, 2.0 * quarter);
  cairo_arc(context, x + r, y + r, r, 2.0 * quarter, 3.0 * quarter);
  cairo_close_path(context);
}

}  // namespace zovhost
