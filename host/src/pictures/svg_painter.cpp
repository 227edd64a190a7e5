#include "pictures/svg_painter.h"

#include <librsvg/rsvg.h>

#include <charconv>
#include <cmath>
#include <memory>
#include <string_view>
#include <vector>

#include "pictures/canvas.h"
#include "pictures/fitted_text.h"

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

// From "text-7-turned" on, up to the closing quotation mark. False when it names no text.
bool ReadTextPlace(std::string_view id, const FindText& findText, TextPlace& place) {
  int number = 0;
  const std::string_view digits = id.substr(std::string_view("text-").size());
  const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (failure != std::errc()) return false;
  place.text = findText(number);
  place.turned = id.find("-turned") != std::string_view::npos;
  place.edged = id.find("-edged") != std::string_view::npos;
  return !place.text.empty();
}

// In units of the drawing, which is `width` by `height`.
std::vector<TextPlace> FindTextPlaces(RsvgHandle* handle, const std::string& svg, const FindText& findText,
                                      double width, double height) {
  constexpr std::string_view mark = "id=\"text-";
  const RsvgRectangle viewport = {0.0, 0.0, width, height};
  std::vector<TextPlace> places;
  for (std::size_t at = svg.find(mark); at != std::string::npos; at = svg.find(mark, at + 1)) {
    const std::size_t begin = at + std::string_view("id=\"").size();
    const std::string id = svg.substr(begin, svg.find('"', begin) - begin);
    RsvgRectangle ink;
    RsvgRectangle box;
    TextPlace place;
    if (!ReadTextPlace(id, findText, place)) continue;
    if (!rsvg_handle_get_geometry_for_layer(handle, ("#" + id).c_str(), &viewport, &ink, &box, nullptr)) {
      continue;
    }
    place.x = box.x, place.y = box.y;
    place.width = box.width, place.height = box.height;
    places.push_back(std::move(place));
  }
  return places;
}

bool Render(RsvgHandle* handle, const SvgPlace& place, cairo_t* context) {
  const RsvgRectangle viewport = {place.x, place.y, place.width, place.height};
  GError* failure = nullptr;
  const bool drawn = rsvg_handle_render_document(handle, context, &viewport, &failure) != 0;
  const std::unique_ptr<GError, ObjectDeleter> error(failure);
  return drawn;
}

}  // namespace

bool DrawSvg(const std::string& svg, const SvgPlace& place, cairo_t* context) {
  const auto handle = ReadDrawing(svg);
  return handle && Render(handle.get(), place, context);
}

bool PaintSvg(const std::string& svg, double scale, bool crisp, const FindText& findText, Image& image) {
  if (svg.empty()) return false;
  const auto handle = ReadDrawing(svg);
  if (!handle) return false;
  if (crisp && !rsvg_handle_set_stylesheet(handle.get(), Bytes(crispStyle), crispStyle.size(), nullptr)) {
    return false;
  }
  gdouble unitWidth = 0.0;
  gdouble unitHeight = 0.0;
  if (!rsvg_handle_get_intrinsic_size_in_pixels(handle.get(), &unitWidth, &unitHeight)) return false;
  const double width = std::ceil(unitWidth * scale);
  const double height = std::ceil(unitHeight * scale);
  if (!(width >= 1.0) || !(height >= 1.0) || width > largestSide || height > largestSide) return false;

  const Canvas canvas(static_cast<int>(width), static_cast<int>(height));
  if (!canvas.IsValid()) return false;
  if (!Render(handle.get(), {0.0, 0.0, width, height}, canvas.GetContext())) return false;
  if (findText && !crisp) {
    cairo_scale(canvas.GetContext(), scale, scale);
    DrawFittedTexts(canvas.GetContext(), FindTextPlaces(handle.get(), svg, findText, unitWidth, unitHeight));
  }
  if (!canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

}  // namespace zovhost
