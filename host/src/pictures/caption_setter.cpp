#include "pictures/caption_setter.h"

#include <cmath>

#include "pictures/text_font.h"

namespace zovhost {

namespace {

constexpr double trialSize = 200.0;

TextLayout LayOut(cairo_t* context, const std::string& text, double size) {
  TextLayout layout(pango_cairo_create_layout(context));
  SetFont(layout.get(), size, true, true);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  return layout;
}

}  // namespace

CaptionSetter::CaptionSetter() : measure(1, 1) {
  PangoRectangle ink;
  pango_layout_get_pixel_extents(LayOut(measure.GetContext(), "H", trialSize).get(), &ink, nullptr);
  if (ink.height > 0) capRatio = ink.height / trialSize;
}

double CaptionSetter::GetWidth(const std::string& text, double capHeight) const {
  PangoRectangle extents;
  const TextLayout layout = LayOut(measure.GetContext(), text, GetFontSize(capHeight));
  pango_layout_get_extents(layout.get(), nullptr, &extents);
  return static_cast<double>(extents.width) / PANGO_SCALE;
}

void CaptionSetter::Draw(cairo_t* context, const std::string& text, double capHeight, double x, double y,
                         const TextColour& colour) const {
  const TextLayout layout = LayOut(context, text, GetFontSize(capHeight));
  PangoRectangle extents;
  pango_layout_get_extents(layout.get(), nullptr, &extents);
  const double width = static_cast<double>(extents.width) / PANGO_SCALE;
  const double ascent = static_cast<double>(pango_layout_get_baseline(layout.get())) / PANGO_SCALE;
  cairo_move_to(context, std::round(x - width / 2.0), std::round(y + capHeight / 2.0) - ascent);
  cairo_set_source_rgba(context, colour.red, colour.green, colour.blue, colour.alpha);
  pango_cairo_show_layout(context, layout.get());
}

}  // namespace zovhost
