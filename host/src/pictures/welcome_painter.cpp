#include "pictures/welcome_painter.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "pictures/canvas.h"
#include "pictures/disc_colours.h"
#include "pictures/disc_painter.h"
#include "pictures/region_map.h"
#include "pictures/text_font.h"

namespace zovhost {

namespace {

// Points.
constexpr double headingSize = 20.0;
constexpr double nameSize = 14.0;
constexpr double lineSize = 12.0;
constexpr double leastSize = 8.0;
constexpr double padding = 12.0;
constexpr double smallDisc = 64.0;
constexpr double middleDisc = 80.0;
constexpr double largeDisc = 176.0;

constexpr TextColour quiet = {0.27, 0.30, 0.34, 1.0};

// Draws in points.
class WelcomeBrush {
 public:
  WelcomeBrush(cairo_t* cairo, double pixelsForPoint, const FindText& find)
      : context(cairo), unit(pixelsForPoint), findText(find) {
    cairo_scale(context, unit, unit);
  }

  void DrawArea(const WelcomeArea& area, bool isLit) {
    if (area.role == WelcomeRole::Ground) DrawPlate(area.place, discPlate, discHairline);
    if (area.role == WelcomeRole::Title) DrawTitle(area, isLit);
    if (area.role == WelcomeRole::Choice) DrawChoice(area, isLit);
    if (area.role == WelcomeRole::Switch) DrawSwitch(area);
  }

 private:
  struct Setting {
    double size = lineSize;
    bool bold = false;
    TextColour colour = discInk;
  };

  void DrawPlate(const WelcomePlace& place, const TextColour& fill, const TextColour& edge) {
    const double line = std::max(1.0, std::round(unit)) / unit;
    AddRoundedRectangle(context, place.x, place.y, place.width, place.height, place.radius);
    SetColour(context, fill);
    cairo_fill(context);
    AddRoundedRectangle(context, place.x + line / 2.0, place.y + line / 2.0, place.width - line,
                        place.height - line, place.radius - line / 2.0);
    SetColour(context, edge);
    cairo_set_line_width(context, line);
    cairo_stroke(context);
  }

  std::string GetText(int number) const { return number >= 0 && findText ? findText(number) : std::string(); }

  TextLayout LayOut(const std::string& text, const Setting& setting, double width) const {
    TextLayout layout(pango_cairo_create_layout(context));
    SetFont(layout.get(), setting.size, setting.bold, true);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    pango_layout_set_width(layout.get(), static_cast<int>(width * PANGO_SCALE));
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_alignment(layout.get(), PANGO_ALIGN_CENTER);
    return layout;
  }

  // Centred in the width of the place, from its top. Smaller where it would be too high; what is too high
  // even so ends in an ellipsis. Returns the height.
  double DrawText(int number, Setting setting, const WelcomePlace& place) {
    const std::string text = GetText(number);
    if (text.empty()) return 0.0;
    PangoRectangle extents;
    TextLayout layout = LayOut(text, setting, place.width);
    pango_layout_get_extents(layout.get(), nullptr, &extents);
    while (extents.height > place.height * PANGO_SCALE && setting.size > leastSize) {
      setting.size -= 0.5;
      layout = LayOut(text, setting, place.width);
      pango_layout_get_extents(layout.get(), nullptr, &extents);
    }
    pango_layout_set_height(layout.get(), static_cast<int>(place.height * PANGO_SCALE));
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    pango_layout_get_extents(layout.get(), nullptr, &extents);
    SetColour(context, setting.colour);
    cairo_move_to(context, place.x, place.y);
    pango_cairo_show_layout(context, layout.get());
    return static_cast<double>(extents.height) / PANGO_SCALE;
  }

  void DrawTitle(const WelcomeArea& area, bool isLit) {
    const WelcomePlace& place = area.place;
    if (isLit) DrawPlate(place, discLit, discAccent);
    const double width = place.width - 2.0 * padding;
    DrawText(area.name, {headingSize, true, discInk}, {place.x + padding, place.y + 8.0, width, 28.0});
    DrawText(area.line, {lineSize, false, isLit ? discInk : quiet},
             {place.x + padding, place.y + 42.0, width, place.height - 48.0});
  }

  void DrawChoice(const WelcomeArea& area, bool isLit) {
    const WelcomePlace& place = area.place;
    DrawPlate(place, isLit ? discLit : discGround, isLit ? discAccent : discHairline);
    const DiscPlan& plan = GetDiscPlans()[static_cast<std::size_t>(area.disc)];
    const bool isTall = place.height > place.width;
    const double disc = isTall ? largeDisc : plan.IsLarge() ? middleDisc : smallDisc;
    const double room = isTall ? largeDisc + 2.0 * padding : middleDisc;
    DrawDisc(plan, disc, {place.x + place.width / 2.0, place.y + padding / 2.0 + room / 2.0});
    const double width = place.width - 2.0 * padding;
    const double top = place.y + room + padding;
    const double height =
        DrawText(area.name, {nameSize, true, discInk}, {place.x + padding, top, width, 20.0});
    DrawText(area.line, {lineSize, false, isLit ? discInk : quiet},
             {place.x + padding, top + height + 2.0, width, place.y + place.height - top - height - 6.0});
  }

  void DrawDisc(const DiscPlan& plan, double points, const DiscPoint& middle) {
    cairo_save(context);
    cairo_translate(context, std::round((middle.x - points / 2.0) * unit) / unit,
                    std::round((middle.y - points / 2.0) * unit) / unit);
    cairo_scale(context, 1.0 / unit, 1.0 / unit);
    DrawRestingDisc(context, plan, {points, unit}, findText);
    cairo_restore(context);
  }

  void DrawSwitch(const WelcomeArea& area) {
    const WelcomePlace& place = area.place;
    DrawPlate(place, discGround, discHairline);
    DrawText(area.name, {nameSize, true, discAccent},
             {place.x + padding, place.y + 8.0, place.width - 2.0 * padding, place.height - 12.0});
  }

  cairo_t* context;
  const double unit;
  const FindText& findText;
};

}  // namespace

bool PaintWelcome(const WelcomePage& page, const WelcomeArea* lit, double unit, const FindText& findText,
                  Image& image) {
  const int side = static_cast<int>(std::lround(welcomePoints * unit));
  const Canvas canvas(side, side);
  if (!canvas.IsValid()) return false;
  WelcomeBrush brush(canvas.GetContext(), unit, findText);
  for (const WelcomeArea& area : page.areas) brush.DrawArea(area, &area == lit);
  if (!canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

Image PaintWelcomeMap(const WelcomePage& page) {
  return PaintRegionMap(static_cast<int>(welcomePoints), welcomePoints,
                        [&page](const DiscPoint& point) { return FindKey(page.FindArea(point)); });
}

}  // namespace zovhost
