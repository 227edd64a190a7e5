#include "pictures/text_painter.h"

#include <algorithm>
#include <cmath>

#include "pictures/canvas.h"
#include "pictures/text_font.h"

namespace zovhost {

namespace {

constexpr int shadowSteps = 6;
constexpr double shadowOpacity = 0.20;
constexpr double shadowDrop = 1.5;  // points, as of a light from above
constexpr double lineGap = 2.0;     // points, between the first and the second text
constexpr double lineHeight = 1.4;  // at most, of the size of the font
constexpr double markerSize = 7.0;
constexpr double markerGap = 6.0;

// Everything below is in pixels.
struct Block {
  TextLayout layout;
  int width = 0;
  int height = 0;
};

void SetColour(cairo_t* context, const TextColour& colour) {
  cairo_set_source_rgba(context, colour.red, colour.green, colour.blue, colour.alpha);
}

// Up to the line break of the given number, 1 or more.
std::string FirstLines(const std::string& text, int count) {
  std::size_t end = text.find('\n');
  while (--count > 0 && end != std::string::npos) end = text.find('\n', end + 1);
  return text.substr(0, end);
}

Block MakeBlock(cairo_t* context, const TextStyle& style, const std::string& text, double size,
                double scale) {
  Block block{TextLayout(pango_cairo_create_layout(context))};
  PangoLayout* layout = block.layout.get();
  SetFont(layout, size * scale, style.bold);
  const std::string shown = FirstLines(text, style.maximumLines);
  pango_layout_set_text(layout, shown.data(), static_cast<int>(shown.size()));
  pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
  pango_layout_set_alignment(layout, PANGO_ALIGN_CENTER);
  const double markerRoom = style.marker ? markerSize + markerGap : 0.0;
  const bool fixed = style.width > 0.0;
  const double room = fixed ? style.width - 2.0 * style.paddingX - markerRoom : style.wrapWidth;
  pango_layout_set_width(layout, static_cast<int>(std::max(1.0, room * scale) * PANGO_SCALE));
  // A negative height counts lines, a positive one is a length.
  const double mostHeight = style.maximumLines * lineHeight * size * scale;
  pango_layout_set_height(layout, fixed ? -1 : static_cast<int>(mostHeight * PANGO_SCALE));
  pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
  PangoRectangle extents;
  pango_layout_get_pixel_extents(layout, nullptr, &extents);
  // Centred lines stand in the middle of the layout's width, so the width becomes that of the text.
  pango_layout_set_width(layout, extents.width * PANGO_SCALE);
  block.width = extents.width;
  block.height = extents.height;
  return block;
}

void DrawBlock(cairo_t* context, const TextStyle& style, const Block& block, const TextColour& colour,
               double x, double y, double scale) {
  cairo_move_to(context, x, y);
  if (style.edge.alpha > 0.0) {
    pango_cairo_layout_path(context, block.layout.get());
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    SetColour(context, style.edge);
    cairo_set_line_width(context, 2.0 * style.edgeWidth * scale);
    cairo_stroke(context);
    cairo_move_to(context, x, y);
  }
  SetColour(context, colour);
  pango_cairo_show_layout(context, block.layout.get());
}

void DrawPlate(cairo_t* context, const TextStyle& style, double inset, double width, double height,
               double scale) {
  const double radius = style.radius * scale;
  for (int step = shadowSteps; style.shadow > 0.0 && step > 0; --step) {
    const double reach = inset * step / shadowSteps;
    cairo_set_source_rgba(context, 0.0, 0.0, 0.0, shadowOpacity / shadowSteps);
    AddRoundedRectangle(context, inset - reach,
                        inset - reach + std::round(shadowDrop * scale) * (1.0 - reach / inset),
                        width + 2.0 * reach, height + 2.0 * reach, radius + reach);
    cairo_fill(context);
  }
  if (style.plate.alpha <= 0.0) return;
  // The plate replaces what the shadow left below it, so its own opacity counts.
  cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
  AddRoundedRectangle(context, inset, inset, width, height, radius);
  SetColour(context, style.plate);
  cairo_fill(context);
  cairo_set_operator(context, CAIRO_OPERATOR_OVER);
  if (style.border.alpha <= 0.0) return;
  const double line = std::max(1.0, std::round(scale));
  AddRoundedRectangle(context, inset + line / 2.0, inset + line / 2.0, width - line, height - line,
                      radius - line / 2.0);
  SetColour(context, style.border);
  cairo_set_line_width(context, line);
  cairo_stroke(context);
}

void DrawMarker(cairo_t* context, const TextStyle& style, double right, double middle, double scale) {
  const double half = markerSize * scale / 2.0;
  cairo_new_path(context);
  cairo_move_to(context, right - 2.0 * half, middle - half / 2.0);
  cairo_line_to(context, right, middle - half / 2.0);
  cairo_line_to(context, right - half, middle + half / 2.0);
  cairo_close_path(context);
  SetColour(context, style.text);
  cairo_fill(context);
}

// What stands where on the picture, in pixels.
struct Sheet {
  double inset = 0.0;  // of the plate, for its shadow
  double width = 0.0;  // of the plate
  double height = 0.0;
  double paddingX = 0.0;
  double gap = 0.0;  // between the two texts
  double textHeight = 0.0;
  double below = 0.0;  // the plate
  double markerRoom = 0.0;
};

Sheet LayOut(const TextStyle& style, const Block& first, const Block& second, double scale) {
  Sheet sheet;
  sheet.inset = std::ceil(style.shadow * scale);
  sheet.gap = second.height > 0 ? std::round(lineGap * scale) : 0.0;
  sheet.markerRoom = style.marker ? std::ceil((markerSize + markerGap) * scale) : 0.0;
  sheet.textHeight = first.height + sheet.gap + second.height;
  // The edge of the glyphs needs room as well.
  sheet.paddingX = std::ceil(std::max(style.paddingX, style.edgeWidth) * scale);
  const double paddingY = std::ceil(std::max(style.paddingY, style.edgeWidth) * scale);
  const double textWidth = std::max(first.width, second.width);
  sheet.width = textWidth + sheet.markerRoom + 2.0 * sheet.paddingX;
  sheet.height = sheet.textHeight + 2.0 * paddingY;
  const double width = std::round(style.width * scale);
  if (width > 0.0) sheet.width = style.hugs ? std::min(sheet.width, width) : width;
  sheet.below = std::ceil(style.roomBelow * scale);
  if (style.height > 0.0) sheet.height = std::round(style.height * scale);
  return sheet;
}

void DrawSheet(cairo_t* context, const TextStyle& style, const Sheet& sheet, const Block& first,
               const Block& second, double scale) {
  DrawPlate(context, style, sheet.inset, sheet.width, sheet.height, scale);
  const double middle = sheet.inset + std::floor((sheet.width - sheet.markerRoom) / 2.0);
  const double top = sheet.inset + std::floor((sheet.height - sheet.textHeight) / 2.0);
  const auto leftOf = [middle](const Block& block) { return middle - std::floor(0.5 * block.width); };
  DrawBlock(context, style, first, style.text, leftOf(first), top, scale);
  if (second.layout) {
    DrawBlock(context, style, second, style.secondText, leftOf(second), top + first.height + sheet.gap,
              scale);
  }
  if (style.marker) {
    DrawMarker(context, style, sheet.inset + sheet.width - sheet.paddingX,
               sheet.inset + std::floor(sheet.height / 2.0), scale);
  }
}

}  // namespace

bool PaintText(const TextStyle& style, const std::string& text, const std::string& second, double scale,
               Image& image) {
  if (text.empty() || !(scale > 0.0)) return false;
  const Canvas measure(1, 1);
  const Block first = MakeBlock(measure.GetContext(), style, text, style.size, scale);
  Block below;
  if (!second.empty()) below = MakeBlock(measure.GetContext(), style, second, style.secondSize, scale);
  if (first.width < 1 || first.height < 1) return false;

  const Sheet sheet = LayOut(style, first, below, scale);
  if (!(sheet.width >= 1.0) || !(sheet.height >= 1.0)) return false;
  const Canvas canvas(static_cast<int>(sheet.width + 2.0 * sheet.inset),
                      static_cast<int>(sheet.height + sheet.below + 2.0 * sheet.inset));
  if (!canvas.IsValid()) return false;
  DrawSheet(canvas.GetContext(), style, sheet, first, below, scale);
  image = canvas.MakeImage();
  return true;
}

}  // namespace zovhost
