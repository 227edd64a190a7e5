#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "picture_files/image_check.h"
#include "zovhost/picture.h"
#include "zovhost/typefaces.h"

namespace zovhost {

namespace {

// Pixels. Sizes of type are in pixels as well, so that the sheet does not depend on a resolution.
constexpr int MARGIN = 48;
constexpr int GAP = 28;
constexpr int LABEL_HEIGHT = 34;
constexpr int LABEL_SIZE = 17;
constexpr int TITLE_SIZE = 34;
constexpr int TITLE_HEIGHT = 50;
constexpr int SUBTITLE_SIZE = 18;
constexpr int SUBTITLE_HEIGHT = 34;
constexpr int CORNER = 6;            // radius
constexpr int LARGEST_SIDE = 32767;  // of a Cairo image surface

struct Colour {
  double red, green, blue;
};
constexpr Colour SHEET = {0.972, 0.974, 0.978};
constexpr Colour EDGE = {0.80, 0.815, 0.835};
constexpr Colour TITLE = {0.13, 0.15, 0.18};
constexpr Colour TEXT = {0.29, 0.32, 0.37};

struct Release {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(PangoLayout* layout) const { g_object_unref(layout); }
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
template <typename T>
using Owned = std::unique_ptr<T, Release>;

struct Rectangle {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

struct Layout {
  int width = 0;
  int height = 0;
  std::vector<Rectangle> places;  // of the pictures; labels stand below
};

int GetScaledHeight(const Image& image, int width) {
  const double height = std::round(static_cast<double>(width) * image.height / image.width);
  return static_cast<int>(std::clamp(height, 1.0, double{LARGEST_SIDE}));
}

// Rows are as high as their highest picture.
Layout Arrange(const std::vector<LabelledImage>& pictures, const ContactSheetParameters& parameters) {
  Layout layout;
  const int columns =
      std::clamp(parameters.columns, 1, static_cast<int>(std::min<std::size_t>(pictures.size(), 64)));
  const int width = std::clamp(parameters.thumbnailWidth, 16, 8192);
  layout.width = 2 * MARGIN + columns * width + (columns - 1) * GAP;
  double y = MARGIN + (parameters.title.empty() ? 0 : TITLE_HEIGHT) +
             (parameters.subtitle.empty() ? 0 : SUBTITLE_HEIGHT);
  if (!parameters.title.empty() || !parameters.subtitle.empty()) y += GAP / 2.0;
  for (std::size_t first = 0; first < pictures.size(); first += static_cast<std::size_t>(columns)) {
    const std::size_t end = std::min(first + static_cast<std::size_t>(columns), pictures.size());
    int rowHeight = 0;
    for (std::size_t i = first; i < end; ++i) {
      const int height = GetScaledHeight(pictures[i].image, width);
      layout.places.push_back({MARGIN + static_cast<int>(i - first) * (width + GAP),
                               static_cast<int>(std::min(y, 1e9)), width, height});
      rowHeight = std::max(rowHeight, height);
    }
    y += rowHeight + LABEL_HEIGHT + GAP;
  }
  layout.height = static_cast<int>(std::min(y - GAP + MARGIN, 1e9));
  return layout;
}

void SetColour(cairo_t* context, const Colour& c) { cairo_set_source_rgb(context, c.red, c.green, c.blue); }

void DrawText(cairo_t* context, const std::string& text, int size, PangoWeight weight, const Colour& colour,
              const Rectangle& place) {
  const Owned<PangoLayout> layout(pango_cairo_create_layout(context));
  const Owned<PangoFontDescription> font(pango_font_description_new());
  pango_font_description_set_family(font.get(), TYPEFACE_LIST);
  pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
  pango_font_description_set_weight(font.get(), weight);
  pango_layout_set_font_description(layout.get(), font.get());
  pango_layout_set_width(layout.get(), place.width * PANGO_SCALE);
  pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
  pango_layout_set_text(layout.get(), valid, -1);
  g_free(valid);
  SetColour(context, colour);
  cairo_move_to(context, place.x, place.y);
  pango_cairo_show_layout(context, layout.get());
}

void AddRoundedRectangle(cairo_t* context, const Rectangle& r) {
  const double radius = std::min({CORNER * 1.0, r.width / 2.0, r.height / 2.0});
  const double right = r.x + r.width - radius;
  const double bottom = r.y + r.height - radius;
  cairo_new_sub_path(context);
  cairo_arc(context, right, r.y + radius, radius, -M_PI / 2, 0);
  cairo_arc(context, right, bottom, radius, 0, M_PI / 2);
  cairo_arc(context, r.x + radius, bottom, radius, M_PI / 2, M_PI);
  cairo_arc(context, r.x + radius, r.y + radius, radius, M_PI, 1.5 * M_PI);
  cairo_close_path(context);
}

// Cairo wants words of alpha, red, green, blue with the colours multiplied by alpha.
Owned<cairo_surface_t> MakeSurface(const Image& image) {
  Owned<cairo_surface_t> surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
  unsigned char* rows = cairo_image_surface_get_data(surface.get());
  if (rows == nullptr) return surface;
  const int stride = cairo_image_surface_get_stride(surface.get());
  const std::uint8_t* from = image.rgba.data();
  const auto scale = [](unsigned colour, unsigned alpha) { return (colour * alpha + 127u) / 255u; };
  for (int y = 0; y < image.height; ++y) {
    auto* to = reinterpret_cast<std::uint32_t*>(rows + static_cast<std::ptrdiff_t>(y) * stride);
    for (int x = 0; x < image.width; ++x, from += 4)
      to[x] = static_cast<std::uint32_t>(from[3]) << 24 | scale(from[0], from[3]) << 16 |
              scale(from[1], from[3]) << 8 | scale(from[2], from[3]);
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

void DrawPicture(cairo_t* context, const Image& image, const Rectangle& place) {
  const Owned<cairo_surface_t> surface = MakeSurface(image);
  cairo_save(context);
  AddRoundedRectangle(context, place);
  cairo_clip(context);
  cairo_translate(context, place.x, place.y);
  cairo_scale(context, static_cast<double>(place.width) / image.width,
              static_cast<double>(place.height) / image.height);
  cairo_set_source_surface(context, surface.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);  // no soft outermost row
  cairo_paint(context);
  cairo_restore(context);
  AddRoundedRectangle(context, place);
  SetColour(context, EDGE);
  cairo_set_line_width(context, 1.0);
  cairo_stroke(context);
}

void DrawHeading(cairo_t* context, const ContactSheetParameters& parameters, int width) {
  int y = MARGIN - 8;
  if (!parameters.title.empty()) {
    DrawText(context, parameters.title, TITLE_SIZE, PANGO_WEIGHT_SEMIBOLD, TITLE,
             {MARGIN, y, width - 2 * MARGIN, TITLE_HEIGHT});
    y += TITLE_HEIGHT;
  }
  if (!parameters.subtitle.empty())
    DrawText(context, parameters.subtitle, SUBTITLE_SIZE, PANGO_WEIGHT_NORMAL, TEXT,
             {MARGIN, y, width - 2 * MARGIN, SUBTITLE_HEIGHT});
}

void DrawSheet(cairo_t* context, const std::vector<LabelledImage>& pictures,
               const ContactSheetParameters& parameters, const Layout& layout) {
  SetColour(context, SHEET);
  cairo_paint(context);
  DrawHeading(context, parameters, layout.width);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const Rectangle& place = layout.places[i];
    DrawPicture(context, pictures[i].image, place);
    DrawText(context, pictures[i].label, LABEL_SIZE, PANGO_WEIGHT_NORMAL, TEXT,
             {place.x + 2, place.y + place.height + 8, place.width - 4, LABEL_HEIGHT});
  }
}

// The sheet is opaque, so there is no alpha to divide by.
Image ReadBack(cairo_surface_t* surface) {
  cairo_surface_flush(surface);
  Image image;
  image.width = cairo_image_surface_get_width(surface);
  image.height = cairo_image_surface_get_height(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  const unsigned char* rows = cairo_image_surface_get_data(surface);
  image.rgba.reserve(4 * static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
  for (int y = 0; y < image.height; ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(rows + static_cast<std::ptrdiff_t>(y) * stride);
    for (int x = 0; x < image.width; ++x) {
      const std::uint32_t pixel = row[x];
      for (const int shift : {16, 8, 0}) image.rgba.push_back(static_cast<std::uint8_t>(pixel >> shift));
      image.rgba.push_back(255);
    }
  }
  return image;
}

}  // namespace

bool MakeContactSheet(const std::vector<LabelledImage>& pictures, const ContactSheetParameters& parameters,
                      Image& sheet, std::string& error) {
  const auto fail = [&error](const std::string& reason) {
    error = "contact sheet: " + reason;
    return false;
  };
  if (pictures.empty()) return fail("there are no pictures");
  std::string reason;
  for (const LabelledImage& picture : pictures)
    if (!IsDrawable(picture.image, reason)) return fail(picture.label + ": " + reason);
  const Layout layout = Arrange(pictures, parameters);
  if (layout.width > LARGEST_SIDE || layout.height > LARGEST_SIDE) return fail("there are too many pictures");
  const Owned<cairo_surface_t> surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, layout.width, layout.height));
  const Owned<cairo_t> context(cairo_create(surface.get()));
  DrawSheet(context.get(), pictures, parameters, layout);
  if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS)
    return fail(cairo_status_to_string(cairo_status(context.get())));
  sheet = ReadBack(surface.get());
  return true;
}

}  // namespace zovhost
