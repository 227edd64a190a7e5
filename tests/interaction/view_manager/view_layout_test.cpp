// Invariants of the layout's arithmetic over random viewports; the exact places stand in
// view_manager_layout_test.cpp.
#include "interaction/view_manager/view_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "support/random.h"

using namespace Korvane;

namespace {

using Location = OrientorParameters::Location;
constexpr Location LOCATIONS[] = {
    OrientorParameters::LOCATION_TOP_RIGHT, OrientorParameters::LOCATION_BOTTOM_RIGHT,
    OrientorParameters::LOCATION_TOP_LEFT, OrientorParameters::LOCATION_BOTTOM_LEFT};
constexpr int ROUNDS = 20000;
constexpr int HIGHEST = std::numeric_limits<int>::max();
constexpr int LOWEST = std::numeric_limits<int>::min();

ViewArea RandomArea(Random& random) {
  ViewArea area;
  area.size = {random.Integer(0, 4000), random.Integer(0, 3000)};
  area.ribbon = {random.Integer(0, 4000), random.Integer(0, 300)};
  area.ribbonVisible = random.Coin();
  return area;
}

OrientorParameters RandomCube(Random& random) {
  OrientorParameters cube;
  cube.screen_location = random.OneOf(LOCATIONS);
  cube.draw_compass = random.Coin();
  cube.draw_ucs_menu = random.Coin();
  return cube;
}

TEST(ViewLayout, the_ribbon_is_the_rectangle_in_the_top_left_corner) {
  Random random;
  for (int i = 0; i < ROUNDS; ++i) {
    const ViewArea area = RandomArea(random);
    const int x = random.Integer(-10, 4010);
    const int y = random.Integer(-10, 3010);
    const bool isBelow = y < area.size.height - area.ribbon.height;
    EXPECT_EQ(IsInRibbon(area, x, y), area.ribbonVisible && x < area.ribbon.width && !isBelow);
  }
}

TEST(ViewLayout, a_ribbon_is_in_the_way_of_whatever_is_wider_than_the_rest_and_only_when_it_shows) {
  Random random;
  for (int i = 0; i < ROUNDS; ++i) {
    ViewArea area = RandomArea(random);
    area.ribbonVisible = true;
    const int rest = area.size.width - area.ribbon.width;
    EXPECT_FALSE(IsRibbonInTheWay(area, rest));  // what fits exactly stands beside it
    EXPECT_TRUE(IsRibbonInTheWay(area, rest + 1));
    area.ribbonVisible = false;
    EXPECT_FALSE(IsRibbonInTheWay(area, rest + 1));
  }
}

// Down by the ribbon, by the strip, or not at all; at the bottom never.
TEST(ViewLayout, a_cube_moves_down_by_what_is_above_it_and_nothing_else) {
  Random random;
  int moved = 0;
  for (int i = 0; i < ROUNDS; ++i) {
    const ViewArea area = RandomArea(random);
    const CornerStrip strip{random.Coin(), {random.Integer(1, 4000), random.Integer(1, 300)}};
    const OrientorParameters cube = RandomCube(random);
    const int offset = GetCubeOffset(area, strip, cube, random.Integer(0, 300));
    if (!IsAtTop(cube.screen_location)) {
      EXPECT_EQ(offset, 0);
      continue;
    }
    const bool isUnderRibbon = area.ribbonVisible && offset == -area.ribbon.height;
    const bool isUnderStrip = strip.exists && offset == -strip.size.height;
    EXPECT_TRUE(offset == 0 || isUnderRibbon || isUnderStrip) << offset;
    EXPECT_TRUE(isUnderRibbon || IsAtRight(cube.screen_location) || !area.ribbonVisible);
    moved += offset != 0 ? 1 : 0;
  }
  EXPECT_GT(moved, ROUNDS / 10);
}

// In a viewport large enough for both, the room lies in its corner, within the viewport, and is as large as
// was asked, to whole half pixels. It ends where a ribbon above it begins.
TEST(ViewLayout, the_room_of_a_cube_lies_in_its_corner_below_the_ribbon) {
  Random random;
  for (int i = 0; i < ROUNDS; ++i) {
    ViewArea area = RandomArea(random);
    const PixelSize room = {random.Integer(0, 400), random.Integer(0, 400)};
    area.size.width += 400;
    area.size.height += 800;
    const Location location = random.OneOf(LOCATIONS);
    const Box2 bounds = GetCubeBounds(area, location, room);
    EXPECT_EQ(bounds.halfExtent.x, room.width / 2);
    EXPECT_EQ(bounds.halfExtent.y, room.height / 2);
    EXPECT_GE(bounds.Min().x, 0.0);
    EXPECT_GE(bounds.Min().y, 0.0);
    EXPECT_LE(bounds.Max().x, area.size.width);
    EXPECT_LE(bounds.Max().y, area.size.height);
    EXPECT_EQ(IsAtRight(location) ? bounds.Max().x : bounds.Min().x,
              IsAtRight(location) ? area.size.width : 0.0);
    if (!IsAtTop(location)) {
      EXPECT_EQ(bounds.Min().y, 0.0);
      continue;
    }
    const bool reaches = !IsAtRight(location) || IsRibbonInTheWay(area, room.width);
    EXPECT_EQ(bounds.Max().y, area.size.height - (area.ribbonVisible && reaches ? area.ribbon.height : 0));
  }
}

// From the edge of the viewport on: the cube's room moved by its offset, the gap of two pixels, and the bar.
// A ribbon over a bar at the bottom takes its height from it.
TEST(ViewLayout, a_linked_bar_has_what_the_cube_and_the_ribbon_leave) {
  Random random;
  for (int i = 0; i < ROUNDS; ++i) {
    const ViewArea area = RandomArea(random);
    const Location location = random.OneOf(LOCATIONS);
    const int room = random.Integer(0, 400);
    const int offset = random.Integer(-300, 300);
    const double barWidth = random.Integer(0, 200);
    const LinkedBarPlace place = PlaceLinkedBar(area, location, room, offset, barWidth);
    EXPECT_TRUE(GetLinkedPosition(location).has_value());
    const int free = area.size.height - room - 2;
    if (IsAtTop(location)) {
      EXPECT_EQ(place.offset, room - offset);
      EXPECT_EQ(place.heightLimit, free + offset);
      continue;
    }
    const bool covered = area.ribbonVisible && (!IsAtRight(location) || IsRibbonInTheWay(area, barWidth));
    EXPECT_EQ(place.offset, room + offset);
    EXPECT_EQ(place.heightLimit, std::max(0, free - (covered ? area.ribbon.height : 0)));
  }
}

TEST(ViewLayout, a_bar_cannot_hang_on_a_cube_that_is_in_no_corner) {
  for (const int location : {-1, 4, HIGHEST, LOWEST}) {
    EXPECT_FALSE(GetLinkedPosition(static_cast<Location>(location)).has_value());
  }
}

// The panel begins where the cube on its left ends, or ends where the one on its right begins; a cube at the
// top is no neighbour.
TEST(ViewLayout, a_panel_shares_its_edge_with_the_cube_at_the_bottom) {
  Random random;
  for (int i = 0; i < ROUNDS; ++i) {
    const ViewArea area = RandomArea(random);
    const OrientorParameters cube = RandomCube(random);
    const int size = random.Integer(0, 300);
    const int barHeight = random.Integer(0, 100);
    const PanelPlace place = PlacePanel(area, &cube, size, barHeight);
    const int taken = place.x + (area.size.width - place.viewport.width);
    EXPECT_EQ(place.y, barHeight);
    EXPECT_EQ(place.viewport.height, area.size.height);
    EXPECT_TRUE(place.x == 0 || place.viewport.width == area.size.width);
    if (IsAtTop(cube.screen_location)) {
      EXPECT_EQ(taken, 0);
    } else {
      EXPECT_GE(taken, size);
      EXPECT_LE(taken, 1.3 * size + 1.0);  // as wide as a compass
    }
    const PanelPlace alone = PlacePanel(area, nullptr, size, barHeight);
    EXPECT_EQ(alone.x, 0);
    EXPECT_EQ(alone.viewport.width, area.size.width);
  }
}

TEST(ViewLayout, a_welcome_screen_stands_no_lower_than_the_cube_is_high) {
  Random random;
  for (int i = 0; i < ROUNDS; ++i) {
    const OrientorParameters cube = RandomCube(random);
    const int size = random.Integer(0, 300);
    const int height = GetHeightAboveCube(cube, size);
    EXPECT_GE(height, size);
    EXPECT_TRUE(height == size || cube.draw_ucs_menu || cube.draw_compass);
  }
}

// Sizes that no window has overflow nothing; the sanitizers look on.
TEST(ViewLayout, bears_any_size) {
  Random random;
  const int sizes[] = {LOWEST, HIGHEST, 0, -1, 1};
  const auto any = [&] { return random.OneOf(sizes); };
  for (int i = 0; i < ROUNDS; ++i) {
    const ViewArea area = {{any(), any()}, {any(), any()}, random.Coin()};
    const CornerStrip strip = {random.Coin(), {any(), any()}};
    const OrientorParameters cube = RandomCube(random);
    EXPECT_LE(GetCubeOffset(area, strip, cube, any()), HIGHEST);
    EXPECT_TRUE(GetCubeBounds(area, cube.screen_location, {any(), any()}).center.x < 1e10);
    EXPECT_GE(PlaceLinkedBar(area, cube.screen_location, any(), any(), any()).heightLimit, LOWEST);
    EXPECT_GE(PlacePanel(area, &cube, any(), any()).viewport.height, LOWEST);
    EXPECT_GE(GetHeightAboveCube(cube, any()), LOWEST);
  }
}

}  // namespace
