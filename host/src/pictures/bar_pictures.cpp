#include "pictures/bar_pictures.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numbers>
#include <string_view>

#include "korvane/resource_ids.h"
#include "korvane/toolbar.h"
#include "pictures/canvas.h"
#include "pictures/disc_colours.h"
#include "pictures/glyph_painter.h"
#include "zovhost/host_pictures.h"
#include "zovhost/resource_pack.h"

namespace zovhost {

namespace {

// Points: those of a button and of what is small on a strip, and the grid of 24 units within them.
constexpr double buttonPoints = 32.0;
constexpr double buttonGlyph = 24.0;
constexpr double smallPoints = 8.0;
constexpr double smallGlyph = 10.5;  // its margin falls outside
constexpr double smallLine = 1.5;
constexpr double smallEdge = 0.75;
constexpr double buttonEdge = 1.25;

struct Icon {
  int id;
  std::string_view glyph;
  bool small = false;
};

constexpr Icon icons[] = {
    {Korvane::TEXTURE_BAR_CLOSE, "glyphs/close.svg", true},
    {Korvane::TEXTURE_BAR_MENU, "pictures/011-cube-menu.svg", true},
    {Korvane::TEXTURE_BAR_FLYOUT, "glyphs/flyout.svg", true},
    {Korvane::TEXTURE_BAR_MORE_HORIZONTAL, "glyphs/more-right.svg", true},
    {Korvane::TEXTURE_BAR_MORE_VERTICAL, "glyphs/more-down.svg", true},
    {Korvane::TEXTURE_BAR_ORIENTOR, "glyphs/cube.svg"},
    {Korvane::TEXTURE_BAR_FULL_NAVIGATION, "glyphs/disc-full.svg"},
    {Korvane::TEXTURE_BAR_MINI_FULL_NAVIGATION, "glyphs/disc-mini-full.svg"},
    {Korvane::TEXTURE_BAR_MINI_VIEW_OBJECT, "glyphs/disc-mini-object.svg"},
    {Korvane::TEXTURE_BAR_MINI_TOUR_BUILDING, "glyphs/disc-mini-building.svg"},
    {Korvane::TEXTURE_BAR_VIEW_OBJECT, "glyphs/disc-object.svg"},
    {Korvane::TEXTURE_BAR_TOUR_BUILDING, "glyphs/disc-building.svg"},
    {Korvane::TEXTURE_BAR_TWO_D, "glyphs/disc-plan.svg"},
    {Korvane::TEXTURE_BAR_STORYBOARD, "glyphs/film.svg"},
    // Numbers between those of the bar that the library leaves to its host: tools, devices and views.
    {162, "cursors/001-orbit.svg"},
    {163, "cursors/003-pan.svg"},
    {164, "cursors/002-zoom.svg"},
    {165, "glyphs/rectangle-zoom.svg"},
    {166, "cursors/004-look.svg"},
    {167, "cursors/005-look-at.svg"},
    {168, "glyphs/centre.svg"},
    {169, "cursors/006-walk.svg"},
    {179, "glyphs/device-object.svg"},
    {180, "glyphs/device-walk.svg"},
    {181, "glyphs/device-fly.svg"},
    {182, "glyphs/device-pan.svg"},
    {183, "pictures/007-cube-home.svg"},
    {184, "glyphs/fit.svg"},
    {HOST_PICTURE_HOME, "pictures/007-cube-home.svg"},
    {HOST_PICTURE_FIT, "glyphs/fit.svg"},
    {HOST_PICTURE_PROJECTION, "glyphs/projection.svg"},
    {HOST_PICTURE_ORBIT, "cursors/001-orbit.svg"},
    {HOST_PICTURE_PAN, "cursors/003-pan.svg"},
    {HOST_PICTURE_ZOOM, "cursors/002-zoom.svg"},
    {HOST_PICTURE_RECTANGLE_ZOOM, "glyphs/rectangle-zoom.svg"},
    {HOST_PICTURE_LOOK, "cursors/004-look.svg"},
    {HOST_PICTURE_LOOK_MOVE, "glyphs/look-move.svg"},
    {HOST_PICTURE_LOOK_AT, "cursors/005-look-at.svg"},
    {HOST_PICTURE_CENTRE, "glyphs/centre.svg"},
    {HOST_PICTURE_WALK, "cursors/006-walk.svg"},
    {HOST_PICTURE_DEVICE_OBJECT, "glyphs/device-object.svg"},
    {HOST_PICTURE_DEVICE_WALK, "glyphs/device-walk.svg"},
    {HOST_PICTURE_DEVICE_FLY, "glyphs/device-fly.svg"},
    {HOST_PICTURE_DEVICE_PAN, "glyphs/device-pan.svg"},
    {HOST_PICTURE_PREVIOUS_VIEW, "glyphs/previous.svg"},
    {HOST_PICTURE_NEXT_VIEW, "glyphs/next.svg"},
    {HOST_PICTURE_ISOMETRIC, "glyphs/isometric.svg"},
    {HOST_PICTURE_FIT_SELECTION, "glyphs/fit-selection.svg"},
    {HOST_PICTURE_FRONT, "glyphs/side-front.svg"},
    {HOST_PICTURE_BACK, "glyphs/side-back.svg"},
    {HOST_PICTURE_LEFT, "glyphs/side-left.svg"},
    {HOST_PICTURE_RIGHT, "glyphs/side-right.svg"},
    {HOST_PICTURE_TOP, "glyphs/side-top.svg"},
    {HOST_PICTURE_BOTTOM, "glyphs/side-bottom.svg"},
    {HOST_PICTURE_KEEP_VIEW, "glyphs/keep.svg"},
    {HOST_PICTURE_IMPORT, "glyphs/import.svg"},
    {HOST_PICTURE_EXPORT, "glyphs/export.svg"},
    {HOST_PICTURE_PLAY, "glyphs/play.svg"},
    {HOST_PICTURE_PRESENT, "glyphs/present.svg"},
    {HOST_PICTURE_ADD_SEQUENCE, "glyphs/add-sequence.svg"},
    {HOST_PICTURE_ADD_SHOT, "glyphs/add.svg"},
    {HOST_PICTURE_UNDO, "glyphs/undo.svg"},
    {HOST_PICTURE_REDO, "glyphs/redo.svg"},
    {HOST_PICTURE_LOOP, "glyphs/loop.svg"},
    {HOST_PICTURE_NEW_FILE, "glyphs/new-file.svg"},
    {HOST_PICTURE_OPEN_FILE, "glyphs/open-file.svg"},
    {HOST_PICTURE_SAVE, "glyphs/save.svg"},
    {HOST_PICTURE_SAVE_AS, "glyphs/save-as.svg"},
    {HOST_PICTURE_UPRIGHT, "glyphs/upright.svg"},
    {HOST_PICTURE_ROTATION, "glyphs/turn.svg"},
    {HOST_PICTURE_TRANSLATION, "glyphs/move.svg"},
    {HOST_PICTURE_SETTINGS, "glyphs/settings.svg"},
    {HOST_PICTURE_FOLD, "glyphs/fold.svg"},
    {HOST_PICTURE_UNFOLD, "glyphs/unfold.svg"},
};

static_assert(HOST_PICTURE_UNFOLD + 1 == ResourcePack::pictureCount, "a picture without a number");

constexpr double iconLine = 1.5;  // pixels, the thinnest; of an icon
constexpr int largestIcon = 512;

// Of before and after.
constexpr int directed[] = {HOST_PICTURE_UNDO, HOST_PICTURE_REDO, HOST_PICTURE_PREVIOUS_VIEW,
                            HOST_PICTURE_NEXT_VIEW};

// From the top left, clockwise, as quarter turns.
struct Corner {
  int id;
  int turns;
  bool edge;
};

constexpr Corner corners[] = {
    {Korvane::TEXTURE_BAR_TOP_LEFT, 0, false},         {Korvane::TEXTURE_BAR_TOP_RIGHT, 1, false},
    {Korvane::TEXTURE_BAR_BOTTOM_RIGHT, 2, false},     {Korvane::TEXTURE_BAR_BOTTOM_LEFT, 3, false},
    {Korvane::TEXTURE_BAR_TOP_LEFT_EDGE, 0, true},     {Korvane::TEXTURE_BAR_TOP_RIGHT_EDGE, 1, true},
    {Korvane::TEXTURE_BAR_BOTTOM_RIGHT_EDGE, 2, true}, {Korvane::TEXTURE_BAR_BOTTOM_LEFT_EDGE, 3, true},
};

template <typename Rows>
auto* Find(Rows& rows, int id) {
  const auto found =
      std::find_if(std::begin(rows), std::end(rows), [id](const auto& row) { return row.id == id; });
  return found != std::end(rows) ? &*found : nullptr;
}

void DrawIcon(const Icon& icon, cairo_t* context, double pixels) {
  const double unit = pixels / (icon.small ? smallPoints : buttonPoints);
  GlyphStyle style;
  style.x = style.y = pixels / 2.0;
  style.size = unit * (icon.small ? smallGlyph : buttonGlyph);
  style.colour = discInk;
  style.thinnestLine = icon.small ? unit * smallLine : 0.0;
  style.edge = unit * (icon.small ? smallEdge : buttonEdge);
  DrawGlyph(context, icon.glyph, style);
}

// A quarter of a ring about the inner corner of the top left piece. In points.
void DrawRing(cairo_t* context, double inner, double outer, const Korvane::ColorRGBA& colour) {
  constexpr double pi = std::numbers::pi;
  cairo_new_path(context);
  cairo_arc(context, smallPoints, smallPoints, outer, pi, 1.5 * pi);
  cairo_arc_negative(context, smallPoints, smallPoints, inner, 1.5 * pi, pi);
  cairo_close_path(context);
  cairo_set_source_rgba(context, colour.r, colour.g, colour.b, colour.a);
  cairo_fill(context);
}

// Fillings are white, for the strip tints them; edges continue its two lines, which are a pixel wide.
void DrawCorner(const Corner& corner, cairo_t* context, double pixels) {
  const double line = smallPoints / pixels;
  cairo_translate(context, pixels / 2.0, pixels / 2.0);
  cairo_rotate(context, corner.turns * std::numbers::pi / 2.0);
  cairo_translate(context, -pixels / 2.0, -pixels / 2.0);
  cairo_scale(context, pixels / smallPoints, pixels / smallPoints);
  if (!corner.edge) return DrawRing(context, 0.0, smallPoints, {1.0, 1.0, 1.0, 1.0});
  DrawRing(context, smallPoints - line, smallPoints, Korvane::Toolbar::DEFAULT_BORDER_COLOR);
  DrawRing(context, smallPoints - 2.0 * line, smallPoints - line, Korvane::Toolbar::DEFAULT_HIGHLIGHT_COLOR);
}

// Drawn in black, so that what a glyph has in white covers nothing.
void TakeDarkness(Image& image) {
  constexpr unsigned full = 255;
  for (std::size_t i = 0; i + 3 < image.rgba.size(); i += 4) {
    std::uint8_t* const pixel = &image.rgba[i];
    pixel[3] = static_cast<std::uint8_t>(pixel[3] * (full - pixel[0]) / full);
    std::fill_n(pixel, 3, static_cast<std::uint8_t>(full));
  }
}

}  // namespace

bool IsBarPicture(int id) { return Find(icons, id) != nullptr || Find(corners, id) != nullptr; }

double GetBarPoints(int id) {
  const Icon* const icon = Find(icons, id);
  if (icon != nullptr) return icon->small ? smallPoints : buttonPoints;
  return Find(corners, id) != nullptr ? smallPoints : 0.0;
}

// At 3 to 1 or more on every ground.
double FindBarOpacity(int id, double opacity) {
  constexpr double rest = 0.3;
  constexpr double legible = 0.72;
  if (Find(icons, id) == nullptr || opacity >= 1.0) return opacity;
  if (opacity <= rest) return opacity * legible / rest;
  return legible + (opacity - rest) * (1.0 - legible) / (1.0 - rest);
}

bool PaintBarPicture(int id, int pixels, Image& image) {
  const Icon* const icon = Find(icons, id);
  const Corner* const corner = Find(corners, id);
  if (icon == nullptr && corner == nullptr) return false;
  const Canvas canvas(pixels, pixels);
  if (!canvas.IsValid()) return false;
  if (icon != nullptr) DrawIcon(*icon, canvas.GetContext(), pixels);
  if (corner != nullptr) DrawCorner(*corner, canvas.GetContext(), pixels);
  if (!canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

bool PaintIcon(int picture, int pixels, bool fromRight, Image& image) {
  const Icon* const icon = Find(icons, picture);
  if (icon == nullptr || icon->small || pixels < 1 || pixels > largestIcon) return false;
  const Canvas canvas(pixels, pixels);
  if (!canvas.IsValid()) return false;
  const bool turned = fromRight && std::ranges::find(directed, picture) != std::end(directed);
  if (turned) cairo_translate(canvas.GetContext(), pixels, 0.0);
  if (turned) cairo_scale(canvas.GetContext(), -1.0, 1.0);
  GlyphStyle style;
  style.x = style.y = pixels / 2.0;
  style.size = pixels;
  style.thinnestLine = iconLine;
  style.colour = {0.0, 0.0, 0.0, 1.0};
  if (!DrawGlyph(canvas.GetContext(), icon->glyph, style) || !canvas.IsValid()) return false;
  image = canvas.MakeImage();
  TakeDarkness(image);
  return true;
}

}  // namespace zovhost
