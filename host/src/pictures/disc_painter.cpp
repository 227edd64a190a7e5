#include "pictures/disc_painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "pictures/disc_colours.h"
#include "pictures/glyph_painter.h"
#include "pictures/region_map.h"

namespace zovhost {

namespace {

constexpr double degree = std::numbers::pi / 180.0;
constexpr int mapSide = 256;  // pixels, so that the largest disc has one for each of its own

constexpr double litLine = 1.5;  // points
constexpr double marginUnits = 2.0;
constexpr double glyphLine = 1.35;  // points, at least
// A small disc shows the glyphs of its wedges from this size on, below it only that of the one in use.
constexpr double leastPointsForGlyphs = 48.0;
constexpr double onlyGlyphSize = 48.0;   // units
constexpr double onlyGlyphPlate = 32.0;  // units, the radius

// Draws in pixels.
class DiscBrush {
 public:
  DiscBrush(const DiscPlan& discPlan, const DiscSize& discSize, cairo_t* cairo)
      : plan(discPlan), size(discSize), context(cairo), middle(discSize.GetPixels() / 2.0) {
    cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
  }

  void DrawGrounds(const DiscWedge* highlight) {
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
    const double line = GetHairline();
    for (const DiscWedge& wedge : plan.wedges) {
      AddSector(wedge.sector);
      SetColour(context, &wedge == highlight ? discLit : discGround);
      cairo_fill(context);
    }
    for (const DiscWedge& wedge : plan.wedges) StrokeSector(wedge.sector, discHairline, line);
    if (highlight != nullptr) StrokeSector(highlight->sector, discAccent, std::max(line, GetLitLine()));
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
  }

  void DrawGlyphs(const DiscLayout& layout, const DiscWedge* highlight) {
    if (!plan.IsLarge() && size.points < leastPointsForGlyphs) {
      if (highlight != nullptr) DrawOnlyGlyph(*highlight);
      return;
    }
    for (const WedgeContent& content : layout.contents) {
      DrawOne(content.action, content.glyphMiddle, content.glyphSize, content.wedge == highlight);
    }
  }

 private:
  // Not wider than the margin around the rim has room for.
  double GetLitLine() const { return std::min(litLine * size.scale, 2.0 * marginUnits * size.GetUnit()); }

  double GetHairline() const { return std::max(1.0, std::round(size.scale)); }

  // A line of an odd number of pixels along a pixel row lies in the middle of it.
  double GetShift(double line) const {
    return (std::lround(line) + std::lround(2.0 * middle)) % 2 != 0 ? 0.5 : 0.0;
  }

  void AddSector(const Sector& sector) {
    const double unit = size.GetUnit();
    const double from = (sector.from - 90.0) * degree;
    const double to = (sector.to - 90.0) * degree;
    cairo_new_path(context);
    if (sector.to - sector.from >= 360.0) {
      cairo_arc(context, middle, middle, sector.outer * unit, 0.0, 2.0 * std::numbers::pi);
      return;
    }
    cairo_arc(context, middle, middle, sector.outer * unit, from, to);
    cairo_arc_negative(context, middle, middle, sector.inner * unit, to, from);
    cairo_close_path(context);
  }

  void StrokeSector(const Sector& sector, const TextColour& colour, double line) {
    SetColour(context, colour);
    cairo_set_line_width(context, line);
    const bool upright = IsUpright(sector.from) || IsUpright(sector.to);
    cairo_save(context);
    if (upright) cairo_translate(context, GetShift(line), GetShift(line));
    AddSector(sector);
    cairo_stroke(context);
    cairo_restore(context);
  }

  static bool IsUpright(double angle) {
    return std::abs(std::remainder(angle, 90.0)) < 1e-9 && std::abs(angle) < 360.0;
  }

  void DrawOne(DiscAction action, const DiscPoint& at, double glyphSize, bool isLit) {
    DrawGlyph(context, GetDiscSign(action).glyph,
              {at.x, at.y, glyphSize, isLit ? discAccent : discInk, glyphLine * size.scale});
  }

  // In the middle of the disc, on a plate that keeps the borders of the wedges out of it.
  void DrawOnlyGlyph(const DiscWedge& wedge) {
    cairo_new_path(context);
    cairo_arc(context, middle, middle, onlyGlyphPlate * size.GetUnit(), 0.0, 2.0 * std::numbers::pi);
    const bool isHub = wedge.sector.inner == 0.0;
    SetColour(context, isHub ? discLit : discPlate);
    cairo_fill_preserve(context);
    SetColour(context, isHub ? discAccent : discHairline);
    cairo_set_line_width(context, GetHairline());
    cairo_stroke(context);
    DrawOne(wedge.action, {middle, middle}, onlyGlyphSize * size.GetUnit(), true);
  }

  const DiscPlan& plan;
  const DiscSize& size;
  cairo_t* context;
  const double middle;
};

int GetSide(const DiscSize& size) { return static_cast<int>(std::lround(size.GetPixels())); }

void DrawCaptions(cairo_t* context, const DiscLayout& layout, const CaptionSetter& setter) {
  for (const WedgeContent& content : layout.contents) {
    for (const PlacedLine& line : content.caption) {
      setter.Draw(context, line.text, layout.capHeight, line.middle.x, line.middle.y, discInk);
    }
  }
}

}  // namespace

bool PaintDisc(const DiscPlan& plan, const DiscWedge* highlight, const DiscSize& size,
               const FindText& findText, Image& image) {
  const Canvas canvas(GetSide(size), GetSide(size));
  if (!canvas.IsValid()) return false;
  DiscBrush brush(plan, size, canvas.GetContext());
  brush.DrawGrounds(highlight);
  brush.DrawGlyphs(LayOutDisc(plan, size, findText, CaptionSetter()), highlight);
  if (!canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

bool PaintDiscCaptions(const DiscPlan& plan, const DiscSize& size, const FindText& findText, Image& image) {
  const Canvas canvas(GetSide(size), GetSide(size));
  if (!canvas.IsValid()) return false;
  const CaptionSetter setter;
  DrawCaptions(canvas.GetContext(), LayOutDisc(plan, size, findText, setter), setter);
  if (!canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

void DrawRestingDisc(cairo_t* context, const DiscPlan& plan, const DiscSize& size, const FindText& findText) {
  const CaptionSetter setter;
  const DiscLayout layout = LayOutDisc(plan, size, findText, setter);
  cairo_push_group(context);
  DiscBrush brush(plan, size, context);
  brush.DrawGrounds(nullptr);
  brush.DrawGlyphs(layout, nullptr);
  DrawCaptions(context, layout, setter);
  cairo_pop_group_to_source(context);
  cairo_paint(context);
}

Image PaintDiscMap(const DiscPlan& plan) {
  constexpr double half = discUnits / 2.0;
  return PaintRegionMap(mapSide, discUnits, [&plan](const DiscPoint& point) {
    return FindKey(plan.FindWedge({point.x - half, point.y - half}));
  });
}

}  // namespace zovhost
