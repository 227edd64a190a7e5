#include "pictures/story_painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "korvane/toolbar.h"
#include "pictures/canvas.h"
#include "pictures/disc_colours.h"
#include "pictures/glyph_painter.h"

namespace zovhost {

namespace {

using Korvane::ColorRGBA;
using Korvane::Toolbar;

// Points.
constexpr double radius = 8.0;  // of toolbars too
constexpr double hairline = 1.0;
constexpr double progressLine = 2.0;
constexpr double tabSize = 16.0;
constexpr double glyphSize = 12.0;
constexpr double thinnestGlyphLine = 1.25;

// Along the title bar: its glyph, and the line before its close button.
constexpr double separatorPlace = 151.0;
constexpr double separatorInset = 7.0;
constexpr double stripGlyphSize = 18.0;
constexpr double stripGlyphPlace = 20.0;
constexpr double stripGlyphEdge = 1.0;

constexpr double cardRadius = 1.0 / 16.0;  // of its width: a thumbnail stays within it
constexpr double addShare = 0.375;         // of its glyph
constexpr double cornerShare = 0.25;       // that is left of each side of a broken frame, at each of its ends

constexpr TextColour white = {1.0, 1.0, 1.0, 1.0};
constexpr TextColour lightLine = {1.0, 1.0, 1.0, 0.25};
constexpr TextColour paleLine = {1.0, 1.0, 1.0, 0.9};
constexpr TextColour darkLine = {0.0, 0.0, 0.0, 0.5};
constexpr TextColour lit = {ACCENT_LIGHT_COLOUR[0], ACCENT_LIGHT_COLOUR[1], ACCENT_LIGHT_COLOUR[2], 1.0};
constexpr TextColour buttonGround = {0.985, 0.985, 0.99, 0.86};

// Names stand in white on the ground.
struct CardColours {
  TextColour ground;
  TextColour outer;  // line along its rim
  TextColour inner;  // and the one within it, which is wider under the mouse
};

// At rest and under the mouse, of a card and of a chosen one.
constexpr CardColours cardColours[2][2] = {
    {{{0.13, 0.15, 0.18, 0.9}, darkLine, lightLine}, {{0.25, 0.29, 0.34, 1.0}, discAccent, lit}},
    {{discAccent, discAccent, paleLine}, {{0.06, 0.45, 0.83, 1.0}, discAccent, lit}},
};

struct Rect {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;

  Rect Inset(double by) const { return {x + by, y + by, width - 2.0 * by, height - 2.0 * by}; }
};

TextColour ToTextColour(const ColorRGBA& colour) { return {colour.r, colour.g, colour.b, colour.a}; }

// Whole pixels.
double Snap(const StoryPlace& place, double points) { return std::round(points * place.unit); }
double SnapLine(const StoryPlace& place, double points) { return std::max(1.0, Snap(place, points)); }

Rect GetWhole(const StoryPlace& place) {
  return {0.0, 0.0, Snap(place, place.size.width), Snap(place, place.size.height)};
}

void Fill(const StoryPlace& place, const Rect& rect, double corner, const TextColour& colour) {
  cairo_new_path(place.context);
  AddRoundedRectangle(place.context, rect.x, rect.y, rect.width, rect.height, corner);
  SetColour(place.context, colour);
  cairo_fill(place.context);
}

// Between the rectangle and the one `line` within it.
void FillRim(const StoryPlace& place, const Rect& rect, double corner, double line,
             const TextColour& colour) {
  const Rect inner = rect.Inset(line);
  cairo_new_path(place.context);
  AddRoundedRectangle(place.context, rect.x, rect.y, rect.width, rect.height, corner);
  AddRoundedRectangle(place.context, inner.x, inner.y, inner.width, inner.height, corner - line);
  cairo_set_fill_rule(place.context, CAIRO_FILL_RULE_EVEN_ODD);
  SetColour(place.context, colour);
  cairo_fill(place.context);
}

// What is drawn from now on shows at the corners of the rectangle alone.
void ClipToCorners(const StoryPlace& place, const Rect& rect) {
  const double width = std::round(rect.width * cornerShare);
  const double height = std::round(rect.height * cornerShare);
  cairo_new_path(place.context);
  for (const double x : {rect.x, rect.x + rect.width - width}) {
    for (const double y : {rect.y, rect.y + rect.height - height}) {
      cairo_rectangle(place.context, x, y, width, height);
    }
  }
  cairo_clip(place.context);
}

struct Ink {
  TextColour colour = discInk;
  double size = glyphSize;  // points
  double edge = 0.0;        // likewise
};

void DrawSign(const StoryPlace& place, std::string_view glyph, double x, double y, const Ink& ink) {
  GlyphStyle style;
  style.x = x;
  style.y = y;
  style.size = place.unit * ink.size;
  style.colour = ink.colour;
  style.thinnestLine = place.unit * thinnestGlyphLine;
  style.edge = place.unit * ink.edge;
  DrawGlyph(place.context, glyph, style);
}

void DrawMiddleSign(const StoryPlace& place, std::string_view glyph, const Ink& ink) {
  const Rect whole = GetWhole(place);
  DrawSign(place, glyph, whole.width / 2.0, whole.height / 2.0, ink);
}

}  // namespace

void DrawStoryStrip(const StoryPlace& place, const StoryLook&) {
  const Rect whole = GetWhole(place);
  const double line = SnapLine(place, hairline);
  const double corner = radius * place.unit;
  Fill(place, whole, corner, ToTextColour(Toolbar::DEFAULT_BACKGROUND_COLOR));
  FillRim(place, whole, corner, line, ToTextColour(Toolbar::DEFAULT_BORDER_COLOR));
  FillRim(place, whole.Inset(line), corner - line, line, ToTextColour(Toolbar::DEFAULT_HIGHLIGHT_COLOR));
}

void DrawStoryTitleBar(const StoryPlace& place, const StoryLook& look) {
  DrawStoryStrip(place, look);
  const double height = Snap(place, place.size.height);
  const double inset = Snap(place, separatorInset);
  const Rect separator = {Snap(place, separatorPlace), inset, SnapLine(place, hairline),
                          height - 2.0 * inset};
  Fill(place, separator, 0.0, ToTextColour(Toolbar::DEFAULT_SEPARATOR_COLOR));
  DrawSign(place, look.glyph, Snap(place, stripGlyphPlace), height / 2.0,
           {.size = stripGlyphSize, .edge = stripGlyphEdge});
}

// As the buttons of a toolbar, and filled with the accent while it is on.
void DrawStoryTitleButton(const StoryPlace& place, const StoryLook& look) {
  const Rect whole = GetWhole(place);
  if (look.on || look.lit) Fill(place, whole, 0.0, look.on ? discAccent : lit);
  if (look.lit) FillRim(place, whole, 0.0, SnapLine(place, hairline), look.on ? lit : discAccent);
  const bool bare = !look.on && !look.lit;
  DrawMiddleSign(place, look.glyph, {.colour = look.on ? white : discInk, .edge = bare ? 1.0 : 0.0});
}

void DrawStoryCard(const StoryPlace& place, const StoryLook& look) {
  const CardColours& colours = cardColours[look.on ? 1 : 0][look.lit ? 1 : 0];
  const Rect whole = GetWhole(place);
  const double corner = whole.width * cardRadius;
  const double line = SnapLine(place, hairline);
  Fill(place, whole, corner, colours.ground);
  FillRim(place, whole, corner, line, colours.outer);
  FillRim(place, whole.Inset(line), corner - line, look.lit ? 2.0 * line : line, colours.inner);
}

void DrawStoryAdd(const StoryPlace& place, const StoryLook& look) {
  DrawStoryCard(place, look);
  DrawMiddleSign(place, look.glyph, {.colour = look.lit ? lit : white, .size = place.size.height * addShare});
}

void DrawStoryProgress(const StoryPlace& place, const StoryLook& look) {
  const Rect whole = GetWhole(place);
  const double side = Snap(place, place.size.side);
  const double above = Snap(place, place.size.above);
  const Rect frame = {side, above, whole.width - 2.0 * side,
                      whole.height - above - Snap(place, place.size.below)};
  const double line = SnapLine(place, progressLine);
  const double edge = SnapLine(place, hairline);
  cairo_save(place.context);
  if (!look.on) ClipToCorners(place, frame);
  FillRim(place, frame.Inset(line), 0.0, edge, darkLine);
  FillRim(place, frame, 0.0, line, lit);
  cairo_restore(place.context);
  const double tab = Snap(place, tabSize);
  Fill(place, {frame.x, frame.y, tab, tab}, 0.0, discAccent);
  DrawSign(place, look.glyph, frame.x + tab / 2.0, frame.y + tab / 2.0, {.colour = white});
}

void DrawStoryShade(const StoryPlace& place, const StoryLook& look) {
  const Rect whole = GetWhole(place);
  cairo_pattern_t* const shade = look.on ? cairo_pattern_create_linear(whole.width, 0.0, 0.0, 0.0)
                                         : cairo_pattern_create_linear(0.0, 0.0, whole.width, 0.0);
  cairo_pattern_add_color_stop_rgba(shade, 0.0, 0.0, 0.0, 0.0, 0.6);
  cairo_pattern_add_color_stop_rgba(shade, 1.0, 0.0, 0.0, 0.0, 0.1);
  cairo_new_path(place.context);
  AddRoundedRectangle(place.context, 0.0, 0.0, whole.width, whole.height, whole.width * cardRadius);
  cairo_set_source(place.context, shade);
  cairo_fill(place.context);
  cairo_pattern_destroy(shade);
}

void DrawStoryRoundButton(const StoryPlace& place, const StoryLook& look) {
  const Rect whole = GetWhole(place);
  const double corner = whole.width / 2.0;
  Fill(place, whole, corner, look.lit ? lit : buttonGround);
  FillRim(place, whole, corner, SnapLine(place, hairline), look.lit ? discAccent : darkLine);
  DrawMiddleSign(place, look.glyph, {});
}

void DrawStoryDrop(const StoryPlace& place, const StoryLook&) {
  const Rect whole = GetWhole(place);
  const double line = SnapLine(place, hairline);
  Fill(place, whole, whole.width / 2.0, paleLine);
  const Rect inner = whole.Inset(line);
  Fill(place, inner, inner.width / 2.0, discAccent);
}

}  // namespace zovhost
