#include "pictures/welcome_plan.h"

#include <algorithm>
#include <cmath>

#include "korvane/resource_ids.h"
#include "zovhost/host_texts.h"

namespace zovhost {

namespace {

constexpr WelcomePlace panel = {8.0, 8.0, 496.0, 496.0, 12.0};
constexpr WelcomePlace title = {32.0, 32.0, 448.0, 84.0, 8.0};
constexpr WelcomePlace choices = {32.0, 132.0, 448.0, 304.0, 8.0};
constexpr WelcomePlace toOtherPage = {176.0, 452.0, 160.0, 34.0, 8.0};

// One of two in a row, one of two rows.
constexpr WelcomePlace Quarter(int column, int row) {
  return {32.0 + 228.0 * column, 132.0 + 156.0 * row, 220.0, 148.0, 8.0};
}

constexpr WelcomePlace Half(int column) { return {32.0 + 228.0 * column, 132.0, 220.0, 304.0, 8.0}; }

constexpr WelcomeArea Panel() { return {WelcomeRole::Ground, panel, {255, 0, 0}}; }
constexpr WelcomeArea Between() { return {WelcomeRole::Between, choices, {0, 255, 255}}; }
constexpr WelcomeArea Title(int picture, int line) {
  return {WelcomeRole::Title, title, {0, 0, 128}, picture, HOST_TEXT_WELCOME, line};
}
constexpr WelcomeArea Choice(WelcomePlace place, MapKey key, int picture, int name, int disc) {
  return {WelcomeRole::Choice, place, key, picture, name, name + 1, disc};
}
constexpr WelcomeArea Switch(MapKey key, int name) {
  return {WelcomeRole::Switch, toOtherPage, key, -1, name};
}

// Discs by their places in the list of plans.
enum DiscPlace : int { viewObject, tourBuilding, fullNavigation, twoD, miniObject, miniBuilding, miniFull };

constexpr WelcomeArea advanced[] = {
    Panel(),
    Between(),
    Title(78, HOST_TEXT_WELCOME_ADVANCED),
    Choice(Quarter(0, 0), {255, 255, 0}, 79, HOST_TEXT_MINI_VIEW_OBJECT, miniObject),
    Choice(Quarter(1, 0), {0, 255, 0}, 80, HOST_TEXT_MINI_TOUR_BUILDING, miniBuilding),
    Choice(Quarter(0, 1), {255, 0, 255}, 81, HOST_TEXT_MINI_FULL_NAVIGATION, miniFull),
    Choice(Quarter(1, 1), {0, 0, 255}, 82, HOST_TEXT_FULL_NAVIGATION, fullNavigation),
    Switch({0, 128, 0}, HOST_TEXT_TO_BASIC),
};

constexpr WelcomeArea basic[] = {
    Panel(),
    Between(),
    Title(85, HOST_TEXT_WELCOME_BASIC),
    Choice(Half(0), {128, 128, 0}, 86, HOST_TEXT_VIEW_OBJECT, viewObject),
    Choice(Half(1), {128, 0, 128}, 87, HOST_TEXT_TOUR_BUILDING, tourBuilding),
    Switch({128, 0, 0}, HOST_TEXT_TO_ADVANCED),
};

constexpr WelcomePage pages[] = {{77, Korvane::TEXTURE_WELCOME_ADVANCED_MAP, advanced},
                                 {84, Korvane::TEXTURE_WELCOME_BASIC_MAP, basic}};

}  // namespace

bool WelcomePlace::Contains(const DiscPoint& point) const {
  const double fromMiddleX = std::abs(point.x - x - width / 2.0);
  const double fromMiddleY = std::abs(point.y - y - height / 2.0);
  if (fromMiddleX >= width / 2.0 || fromMiddleY >= height / 2.0) return false;
  const double intoCornerX = std::max(0.0, fromMiddleX - (width / 2.0 - radius));
  const double intoCornerY = std::max(0.0, fromMiddleY - (height / 2.0 - radius));
  return std::hypot(intoCornerX, intoCornerY) < radius;
}

const WelcomeArea* WelcomePage::FindArea(const DiscPoint& point) const {
  const auto found = std::find_if(areas.rbegin(), areas.rend(),
                                  [&point](const WelcomeArea& area) { return area.place.Contains(point); });
  return found != areas.rend() ? &*found : nullptr;
}

std::span<const WelcomePage> GetWelcomePages() { return pages; }

}  // namespace zovhost
