#include "pictures/disc_plan.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "zovhost/host_texts.h"

namespace zovhost {

namespace {

constexpr double degree = std::numbers::pi / 180.0;

// ---- what all discs share ----

constexpr double hubRadius = 21.0;
constexpr double rimRadius = 62.0;
constexpr Sector hub = {0.0, hubRadius, 0.0, 360.0};
// Close and menu lie outside of the rim, where the square around the disc has room in its corners.
constexpr Sector closeTab = {rimRadius, 76.0, 34.0, 56.0};
constexpr Sector menuTab = {rimRadius, 76.0, 124.0, 146.0};

// One of `count` equal wedges around the hub; the middle of the first points straight up.
constexpr Sector Around(int index, int count) {
  const double span = 360.0 / count;
  return {hubRadius, rimRadius, (index - 0.5) * span, (index + 0.5) * span};
}

constexpr DiscWedge Hub(MapKey key, int picture) {
  return {DiscAction::Rewind, hub, key, picture, 0.0, 14.0, 22.0};
}

constexpr DiscWedge Close(MapKey key, int picture) {
  return {DiscAction::Close, closeTab, key, picture, 69.0, 10.0, 12.0};
}

constexpr DiscWedge Menu(MapKey key, int picture) {
  return {DiscAction::Menu, menuTab, key, picture, 69.0, 11.0, 13.0};
}

// Of a disc with few wedges.
constexpr DiscWedge Wide(DiscAction action, Sector sector, MapKey key, int picture) {
  return {action, sector, key, picture, 41.0, 18.0, 30.0};
}

// Of a disc with many.
constexpr DiscWedge Narrow(DiscAction action, int index, MapKey key, int picture) {
  return {action, Around(index, 7), key, picture, 43.0, 15.0, 24.0};
}

constexpr MapKey red = {255, 0, 0};
constexpr MapKey green = {0, 255, 0};
constexpr MapKey blue = {0, 0, 255};
constexpr MapKey yellow = {255, 255, 0};
constexpr MapKey cyan = {0, 255, 255};
constexpr MapKey darkRed = {128, 0, 0};
constexpr MapKey darkGreen = {0, 128, 0};
constexpr MapKey darkBlue = {0, 0, 128};
constexpr MapKey olive = {128, 128, 0};
constexpr MapKey purple = {128, 0, 128};
constexpr MapKey grey = {128, 128, 128};

// ---- the large discs ----

constexpr DiscWedge viewObject[] = {
    Close(cyan, 19),
    Menu(darkGreen, 20),
    Hub(yellow, 21),
    Wide(DiscAction::Centre, Around(1, 3), blue, 22),
    Wide(DiscAction::Orbit, Around(2, 3), red, 23),
    Wide(DiscAction::Zoom, Around(0, 3), green, 24),
};

constexpr DiscWedge tourBuilding[] = {
    Close(cyan, 28),
    Menu(darkGreen, 29),
    Hub(blue, 30),
    Wide(DiscAction::Forward, Around(0, 3), green, 31),
    Wide(DiscAction::Look, Around(2, 3), red, 32),
    Wide(DiscAction::UpDown, Around(1, 3), yellow, 33),
};

constexpr DiscWedge fullNavigation[] = {
    Close(cyan, 37),
    Menu(purple, 38),
    Hub(red, 39),
    Narrow(DiscAction::Orbit, 6, blue, 40),
    Narrow(DiscAction::Zoom, 0, yellow, 41),
    Narrow(DiscAction::Pan, 5, green, 42),
    Narrow(DiscAction::Look, 1, darkBlue, 43),
    Narrow(DiscAction::Walk, 2, darkRed, 44),
    Narrow(DiscAction::UpDown, 3, darkGreen, 45),
    Narrow(DiscAction::Centre, 4, grey, 46),
};

constexpr DiscWedge twoD[] = {
    Close(cyan, 75),
    Menu(darkGreen, 76),
    Hub(blue, 73),
    Wide(DiscAction::Zoom, Around(0, 2), red, 74),
    Wide(DiscAction::Pan, Around(1, 2), green, 72),
};

// ---- the small discs ----

constexpr DiscWedge miniViewObject[] = {
    Hub(red, 49),
    Wide(DiscAction::Orbit, Around(2, 3), blue, 50),
    Wide(DiscAction::Zoom, Around(0, 3), yellow, 51),
    Wide(DiscAction::Pan, Around(1, 3), green, 52),
};

constexpr DiscWedge miniTourBuilding[] = {
    Hub(red, 58),
    Wide(DiscAction::Walk, Around(0, 3), darkRed, 55),
    Wide(DiscAction::UpDown, Around(1, 3), darkGreen, 56),
    Wide(DiscAction::Look, Around(2, 3), darkBlue, 57),
};

constexpr DiscWedge miniFullNavigation[] = {
    Hub(red, 61),
    Narrow(DiscAction::Orbit, 6, blue, 62),
    Narrow(DiscAction::Zoom, 0, yellow, 63),
    Narrow(DiscAction::Pan, 5, green, 64),
    Narrow(DiscAction::Centre, 4, olive, 65),
    Narrow(DiscAction::Walk, 2, darkRed, 66),
    Narrow(DiscAction::Look, 1, darkBlue, 67),
    Narrow(DiscAction::UpDown, 3, darkGreen, 68),
};

constexpr DiscPlan plans[] = {
    {16, 17, 18, viewObject},         {25, 26, 27, tourBuilding},
    {34, 35, 36, fullNavigation},     {69, 70, 71, twoD},
    {-1, 47, 48, miniViewObject},     {-1, 53, 54, miniTourBuilding},
    {-1, 59, 60, miniFullNavigation},
};

constexpr std::array<DiscSign, 11> signs = {{
    {"glyphs/rewind.svg", 64},
    {"cursors/001-orbit.svg", 62},
    {"cursors/002-zoom.svg", 66},
    {"cursors/003-pan.svg", 63},
    {"cursors/004-look.svg", 61},
    {"cursors/006-walk.svg", 65},
    {"glyphs/up-down.svg", 60},
    {"glyphs/centre.svg", 58},
    {"glyphs/forward.svg", HOST_TEXT_FORWARD},
    {"glyphs/close.svg", -1},
    {"pictures/011-cube-menu.svg", -1},
}};

}  // namespace

bool Sector::Contains(const DiscPoint& point) const {
  const double radius = std::hypot(point.x, point.y);
  if (radius < inner || radius >= outer) return false;
  const double angle = std::atan2(point.x, -point.y) / degree;  // -180 to 180
  const double turns = std::floor((angle - from) / 360.0);
  return angle - turns * 360.0 < to;
}

const DiscSign& GetDiscSign(DiscAction action) { return signs[static_cast<std::size_t>(action)]; }

DiscPoint DiscWedge::GetContent() const {
  const double angle = (sector.from + sector.to) / 2.0 * degree;
  return {reach * std::sin(angle), -reach * std::cos(angle)};
}

const DiscWedge* DiscPlan::FindWedge(const DiscPoint& point) const {
  const auto found = std::find_if(wedges.begin(), wedges.end(),
                                  [&point](const DiscWedge& wedge) { return wedge.sector.Contains(point); });
  return found != wedges.end() ? &*found : nullptr;
}

std::span<const DiscPlan> GetDiscPlans() { return plans; }

}  // namespace zovhost
