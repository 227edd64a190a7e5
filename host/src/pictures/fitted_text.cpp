#include "pictures/fitted_text.h"

#include <algorithm>
#include <numbers>

#include "pictures/text_font.h"

namespace zovhost {

namespace {

constexpr double trialSize = 100.0;  // texts are measured at this size and then scaled
constexpr double edgeWidth = 0.16;   // of the height of the place, on both sides of the outline together

struct SetText {
  TextLayout layout;
  PangoRectangle ink;  // trial units
};

SetText LayOut(cairo_t* context, const std::string& text) {
  SetText result{TextLayout(pango_cairo_create_layout(context)), {}};
  SetFont(result.layout.get(), trialSize, true);
  pango_layout_set_single_paragraph_mode(result.layout.get(), TRUE);
  pango_layout_set_text(result.layout.get(), text.data(), static_cast<int>(text.size()));
  pango_layout_get_pixel_extents(result.layout.get(), &result.ink, nullptr);
  return result;
}

double FitScale(const SetText& text, const TextPlace& place) {
  if (text.ink.width < 1 || text.ink.height < 1) return 1.0;
  return std::min(place.width / text.ink.width, place.height / text.ink.height);
}

void Draw(cairo_t* context, const SetText& text, const TextPlace& place, double scale) {
  cairo_save(context);
  cairo_translate(context, place.x + place.width / 2.0, place.y + place.height / 2.0);
  if (place.turned) cairo_rotate(context, std::numbers::pi);
  cairo_scale(context, scale, scale);
  cairo_new_path(context);
  cairo_move_to(context, -text.ink.x - text.ink.width / 2.0, -text.ink.y - text.ink.height / 2.0);
  pango_cairo_layout_path(context, text.layout.get());
  if (place.edged) {
    cairo_set_source_rgba(context, 0.07, 0.08, 0.10, 0.80);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_width(context, edgeWidth * place.height / scale);
    cairo_stroke_preserve(context);
  }
  cairo_set_source_rgb(context, 1.0, 1.0, 1.0);
  cairo_fill(context);
  cairo_restore(context);
}

}  // namespace

void DrawFittedTexts(cairo_t* context, const std::vector<TextPlace>& places) {
  std::vector<SetText> texts;
  texts.reserve(places.size());
  for (const TextPlace& place : places) texts.push_back(LayOut(context, place.text));
  double scale = 1e9;
  for (std::size_t i = 0; i < places.size(); ++i) scale = std::min(scale, FitScale(texts[i], places[i]));
  for (std::size_t i = 0; i < places.size(); ++i) Draw(context, texts[i], places[i], scale);
}

}  // namespace zovhost
