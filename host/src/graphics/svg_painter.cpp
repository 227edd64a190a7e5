#include "graphics/svg_painter.h"

#include <librsvg/rsvg.h>

#include <cmath>
#include <memory>
#include <string_view>

#include "graphics/canvas.h"

namespace zovhost {

namespace {

constexpr double largestSide = 4096.0;  // pixels
constexpr std::string_view crispStyle = "* { shape-rendering: crispEdges !important; }";

struct ObjectDeleter {
  void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
  void operator()(GError* error) const { g_error_free(error); }
};

const guint8* Bytes(std::string_view text) { return reinterpret_cast<const guint8*>(text.data()); }

std::unique_ptr<RsvgHandle, ObjectDeleter> ReadDrawing(const std::string& svg) {
  GError* failure = nullptr;
  std::unique_ptr<RsvgHandle, ObjectDeleter> handle(
      rsvg_handle_new_from_data(Bytes(svg), svg.size(), &failure));
  const std::unique_ptr<GError, ObjectDeleter> error(failure);
  return handle;
}

}  // namespace

bool PaintSvg(const std::string& svg, double scale, bool crisp, Image& image) {
  if (svg.empty()) return false;
  const auto handle = ReadDrawing(svg);
  if (!handle) return false;
  if (crisp && !rsvg_handle_set_stylesheet(handle.get(), Bytes(crispStyle), crispStyle.size(), nullptr)) {
    return false;
  }
  gdouble width = 0.0;
  gdouble height = 0.0;
  if (!rsvg_handle_get_intrinsic_size_in_pixels(handle.get(), &width, &height)) return false;
  width = std::ceil(width * scale);
  height = std::ceil(height * scale);
  if (!(width >= 1.0) || !(height >= 1.0) || width > largestSide || height > largestSide) return false;

  const Canvas canvas(static_cast<int>(width), static_cast<int>(height));
  if (!canvas.IsValid()) return false;
  const RsvgRectangle viewport = {0.0, 0.0, width, height};
  GError* failure = nullptr;
  const bool drawn = rsvg_handle_render_document(handle.get(), canvas.GetContext(), &viewport, &failure) != 0;
  const std::unique_ptr<GError, ObjectDeleter> error(failure);
  if (!drawn || !canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

}  // namespace zovhost
