#include "disc/disc_tables.h"

#include <array>
#include <cstddef>

namespace Korvane {

namespace {

using Kind = DiscListenerKind;

constexpr int NONE = STRING_NONE;
constexpr int NO_ZONE = -1;
constexpr auto RECT_ZOOM = &HelmDiscParameters::rectZoomOnShift;
constexpr auto LOOK_AT = &HelmDiscParameters::lookAtOnShift;

constexpr StringID Text(int id) { return static_cast<StringID>(id); }

constexpr DiscListener NOTHING = {};
constexpr DiscListener CLOSE = {Kind::Close};
constexpr DiscListener FORWARD = {Kind::Forward};
constexpr DiscListener HEIGHT = {Kind::Height};
constexpr DiscListener LOOK = {Kind::Look};
constexpr DiscListener MENU = {Kind::Menu};
constexpr DiscListener PAN = {Kind::Pan};
constexpr DiscListener PICK_PIVOT = {Kind::PivotPick};
constexpr DiscListener REWIND = {Kind::Rewind};
constexpr DiscListener ROLL = {Kind::Roll};
constexpr DiscListener WALK = {Kind::Walk};

constexpr DiscListener Center(int pivotLabel) {
  return {Kind::Center, {Text(pivotLabel), STRING_NONE, STRING_NONE}};
}
constexpr DiscListener LookMove(bool allowLookAt) {
  return {Kind::LookMove, {STRING_NONE, STRING_NONE, STRING_NONE}, {allowLookAt, false}};
}
constexpr DiscListener Orbit(int pivotLabel, int viewHUD, bool forceUp) {
  return {Kind::Orbit, {Text(pivotLabel), Text(viewHUD), STRING_NONE}, {forceUp, false}};
}
constexpr DiscListener Zoom(int pivotLabel, int maxZoomIn, int maxZoomOut, bool constrain,
                            bool allowRectZoom) {
  return {Kind::Zoom, {Text(pivotLabel), Text(maxZoomIn), Text(maxZoomOut)}, {constrain, allowRectZoom}};
}

constexpr DiscRegion Disabled(int icon) {
  return {{0, 0, 0}, NOTHING, icon, NONE, NONE, NONE, CURSOR_ARROW, NO_ZONE};
}

// A row: colour, listener, icon, label, tooltip, note, cursor, zone, flags. The first of the two zoom rows of
// a colour is never enabled by anything.
//
// Mini discs begin with a region that is not enabled: it only turns on the tolerance of a sticky disc.

constexpr DiscRegion VIEW_OBJECT[] = {
    {{0, 1, 1}, CLOSE, 19, NONE, 21, NONE, 26, 1},
    {{0, 0.5, 0}, MENU, 20, NONE, 22, NONE, 26, 4},
    {{1, 1, 0}, REWIND, 21, NONE, 25, NONE, 0, 7},
    {{0, 0, 1}, Center(39), 22, NONE, 20, 47, 26, 0, REGION_UNWRAPPED},
    {{1, 0, 0}, Orbit(41, NONE, true), 23, NONE, 23, 50, 1, 5},
    {{0, 1, 0}, Zoom(39, 29, 30, true, false), 24, NONE, 26, 55, 2, 10},
};

constexpr DiscRegion TOUR_BUILDING[] = {
    {{0, 1, 1}, CLOSE, 28, NONE, 13, NONE, 26, 1}, {{0, 0.5, 0}, MENU, 29, NONE, 16, NONE, 26, 4},
    {{0, 0, 1}, REWIND, 30, NONE, 17, NONE, 0, 7}, {{0, 1, 0}, FORWARD, 31, NONE, 14, NONE, 0, 2},
    {{1, 0, 0}, LOOK, 32, NONE, 15, 49, 4, 3},     {{1, 1, 0}, HEIGHT, 33, NONE, 18, NONE, 0, 9},
};

constexpr DiscRegion FULL_NAVIGATION[] = {
    {{0, 1, 1}, CLOSE, 37, NONE, 1, NONE, 26, 1},
    {{0.5, 0, 0.5}, MENU, 38, NONE, 4, NONE, 26, 4},
    {{1, 0, 0}, REWIND, 39, NONE, 7, NONE, 0, 7},
    {{0, 0, 1}, Orbit(41, 35, false), 40, NONE, 5, 50, 1, 5},
    {{0, 0, 1}, PICK_PIVOT, 40, NONE, 5, 50, 26, 5, REGION_DISABLED | REGION_UNWRAPPED},
    {{0, 0, 1}, ROLL, 40, NONE, 5, NONE, 0, 5, REGION_DISABLED},
    {{1, 1, 0}, Zoom(41, NONE, NONE, false, true), 41, NONE, 10, 55, 2, 10, REGION_DISABLED},
    {{1, 1, 0}, Zoom(41, NONE, NONE, false, true), 41, NONE, {RECT_ZOOM, 11, 10}, 55, 2, 10},
    {{0, 1, 0}, PAN, 42, NONE, 6, 51, 3, 6},
    {{0, 0, 0.5}, LookMove(true), 43, NONE, {LOOK_AT, 12, 3}, 49, 4, 3},
    {{0.5, 0, 0}, WALK, 44, NONE, 9, NONE, 6, 8},
    {{0.5, 0, 0}, HEIGHT, 44, NONE, 9, NONE, 0, 8, REGION_DISABLED},
    {{0, 0.5, 0}, HEIGHT, 45, NONE, 8, NONE, 0, 9},
    {{0.5, 0.5, 0.5}, Center(41), 46, NONE, 0, 47, 26, 0, REGION_UNWRAPPED},
};

constexpr DiscRegion TWO_D[] = {
    {{0, 1, 1}, CLOSE, 75, NONE, 1, NONE, 26, 1},
    {{0, 0.5, 0}, MENU, 76, NONE, 4, NONE, 26, 4},
    {{0, 0, 1}, REWIND, 73, NONE, 7, NONE, 0, 7},
    {{1, 0, 0}, Zoom(39, NONE, NONE, false, true), 74, NONE, NONE, 55, 2, 10},
    {{0, 1, 0}, PAN, 72, NONE, NONE, 51, 3, 6},
};

constexpr DiscRegion MINI_VIEW_OBJECT[] = {
    {{1, 0, 1}, NOTHING, 48, NONE, NONE, NONE, 26, NO_ZONE, REGION_DISABLED | REGION_STICKY},
    {{1, 0, 0}, REWIND, 49, 64, 25, NONE, 0, 7},
    {{0, 0, 1}, Orbit(41, 35, false), 50, 62, 23, 50, 1, 5},
    {{0, 0, 1}, PICK_PIVOT, 50, 62, 23, 50, 26, 5, REGION_DISABLED},
    {{0, 0, 1}, ROLL, 50, 62, 23, NONE, 0, 5, REGION_DISABLED},
    {{1, 1, 0}, Zoom(41, 29, 30, true, true), 51, 66, 26, 55, 2, 10, REGION_DISABLED},
    {{1, 1, 0}, Zoom(41, NONE, NONE, false, true), 51, 66, {RECT_ZOOM, 11, 26}, 55, 2, 10},
    {{0, 1, 0}, PAN, 52, 63, 24, 51, 3, 6},
};

constexpr DiscRegion MINI_TOUR_BUILDING[] = {
    {{0.5, 0, 0.5}, NOTHING, 48, NONE, NONE, NONE, 26, NO_ZONE, REGION_DISABLED | REGION_STICKY},
    {{0.5, 0, 0}, WALK, 55, 65, 19, NONE, 6, 8},
    {{0.5, 0, 0}, HEIGHT, 55, 65, 19, NONE, 0, 8, REGION_DISABLED},
    {{0, 0, 0.5}, LookMove(true), 57, 61, {LOOK_AT, 12, 15}, 49, 4, 3},
    {{0, 0.5, 0}, HEIGHT, 56, 60, 18, NONE, 0, 9},
    {{1, 0, 0}, REWIND, 58, 64, 17, NONE, 0, 7},
};

constexpr DiscRegion MINI_FULL_NAVIGATION[] = {
    {{0.5, 0, 0.5}, NOTHING, 48, NONE, NONE, NONE, 26, NO_ZONE, REGION_DISABLED | REGION_STICKY},
    {{1, 0, 0}, REWIND, 61, 64, 7, NONE, 0, 7},
    {{0, 0, 1}, Orbit(41, 35, false), 62, 62, 5, 50, 1, 5},
    {{0, 0, 1}, PICK_PIVOT, 62, 62, 5, 50, 26, 5, REGION_DISABLED | REGION_UNWRAPPED},
    {{0, 0, 1}, ROLL, 62, 62, 23, NONE, 0, 5, REGION_DISABLED},
    {{1, 1, 0}, Zoom(41, NONE, NONE, false, true), 63, 66, 10, 55, 2, 5, REGION_DISABLED},
    {{1, 1, 0}, Zoom(41, NONE, NONE, false, true), 63, 66, {RECT_ZOOM, 11, 10}, 55, 2, 10},
    {{0, 1, 0}, PAN, 64, 63, 6, 51, 3, 6},
    {{0.5, 0, 0}, WALK, 66, 65, 9, NONE, 6, 8},
    {{0.5, 0, 0}, HEIGHT, 66, 65, 9, NONE, 0, 8, REGION_DISABLED},
    {{0, 0, 0.5}, LookMove(true), 67, 61, {LOOK_AT, 12, 3}, 49, 4, 3},
    {{0, 0.5, 0}, HEIGHT, 68, 60, 8, NONE, 0, 9},
    {{0.5, 0.5, 0}, Center(41), 65, 58, 0, 47, 26, 0, REGION_UNWRAPPED},
};

}  // namespace

const DiscTable& GetDiscTable(DiscType type) {
  static constexpr std::array<DiscTable, DISC_KIND_COUNT> TABLES = {{
      {17, 16, MENU_VIEW_OBJECT, Disabled(18), VIEW_OBJECT},
      {26, 25, MENU_TOUR_BUILDING, Disabled(27), TOUR_BUILDING},
      {35, 34, MENU_FULL_NAVIGATION, Disabled(36), FULL_NAVIGATION},
      {70, 69, MENU_TWO_D, Disabled(71), TWO_D},
      {47, TEXTURE_NONE, MENU_FULL_NAVIGATION, Disabled(48), MINI_VIEW_OBJECT},
      {53, TEXTURE_NONE, MENU_FULL_NAVIGATION, Disabled(54), MINI_TOUR_BUILDING},
      {59, TEXTURE_NONE, MENU_FULL_NAVIGATION, Disabled(60), MINI_FULL_NAVIGATION},
  }};
  return TABLES[static_cast<std::size_t>(type)];
}

// Control turns orbit into picking the pivot; Shift turns walk into up-and-down, and orbit into roll.
std::span<const DiscKeyFlip> GetDiscKeyFlips() {
  static constexpr DiscKeyFlip FLIPS[] = {
      {KEY_CONTROL, DiscType::FullNavigation, 3, 4, false},
      {KEY_CONTROL, DiscType::MiniViewObject, 2, 3, false},
      {KEY_CONTROL, DiscType::MiniFullNavigation, 2, 3, false},
      {KEY_SHIFT, DiscType::FullNavigation, 10, 11, false},
      {KEY_SHIFT, DiscType::MiniTourBuilding, 1, 2, false},
      {KEY_SHIFT, DiscType::MiniFullNavigation, 8, 9, false},
      {KEY_SHIFT, DiscType::FullNavigation, 3, 5, true},
      {KEY_SHIFT, DiscType::MiniViewObject, 2, 4, true},
      {KEY_SHIFT, DiscType::MiniFullNavigation, 2, 4, true},
  };
  return FLIPS;
}

}  // namespace Korvane
