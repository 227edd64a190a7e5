#include "toolbar/toolbar_place.h"

#include <gtest/gtest.h>

#include "support/random.h"

using namespace Korvane;

namespace {

using Location = OrientorParameters::Location;

// 800 x 600 with a cube of 120 x 100 in a corner.
StripRoom MakeRoom(int location = 0, int ribbonWidth = 0, int ribbonHeight = 0) {
  StripRoom room;
  room.viewportWidth = 800;
  room.viewportHeight = 600;
  room.ribbonWidth = ribbonWidth;
  room.ribbonHeight = ribbonHeight;
  room.orientorLocation = static_cast<Location>(location);
  const bool right = location == 0 || location == 1;
  const bool top = location == 0 || location == 2;
  room.orientorBounds = Box2({right ? 740.0 : 60.0, top ? 550.0 : 50.0}, {60.0, 50.0});
  return room;
}

StripPlace MakePlace(int position, const Vector2& edgeOffset = {}, const Vector2& cornerOffset = {}) {
  StripPlace place;
  place.position = static_cast<Toolbar::Position>(position);
  place.orientation =
      position == 1 || position == 3 ? Toolbar::ORIENTATION_HORIZONTAL : Toolbar::ORIENTATION_VERTICAL;
  place.edgeOffset = edgeOffset;
  place.cornerOffset = cornerOffset;
  return place;
}

// ---- how long ----

struct WidthRow {
  int position;
  int location;
  int viewportHeight;
  int ribbonHeight;
  double available;
};

// The cube is 120 wide and 100 high.
TEST(ToolbarPlace, is_as_wide_as_the_viewport_and_the_cube_allow) {
  const WidthRow rows[] = {
      {1, 0, 600, 0, 680},   {1, 2, 600, 0, 680},    // the cube is not at the bottom
      {1, 1, 600, 0, 800},   {1, 3, 600, 500, 800},  // what is left is as high as the cube
      {1, 1, 600, 501, 680}, {1, 3, 99, 0, 680},    {3, 1, 600, 0, 680},
      {3, 3, 600, 0, 680},  // the cube is at the bottom
      {3, 0, 600, 0, 800},   {3, 2, 600, 500, 800}, {3, 0, 600, 501, 680},
  };
  for (const WidthRow& row : rows) {
    StripRoom room = MakeRoom(row.location, 0, row.ribbonHeight);
    room.viewportHeight = row.viewportHeight;
    EXPECT_EQ(GetAvailableLength(room, MakePlace(row.position), 36), row.available)
        << row.position << " " << row.location << " " << row.ribbonHeight;
  }
}

TEST(ToolbarPlace, is_as_wide_as_the_viewport_elsewhere) {
  for (const int position : {0, 2, 4, 5, 6, 7}) {
    StripPlace place = MakePlace(position);
    place.orientation = Toolbar::ORIENTATION_HORIZONTAL;
    EXPECT_EQ(GetAvailableLength(MakeRoom(), place, 36), 800) << position;
  }
}

struct HeightRow {
  int position;
  int location;
  int ribbonWidth;
  int viewportWidth;
  double available;
};

// The ribbon is 30 high, the strip 36 thick.
TEST(ToolbarPlace, is_as_high_as_the_viewport_the_ribbon_and_the_cube_allow) {
  const HeightRow rows[] = {
      {0, 0, 700, 800, 570}, {0, 1, 700, 800, 570}, {0, 2, 700, 800, 470}, {0, 3, 700, 800, 470},
      {0, 0, 700, 156, 570},                         // 36 are left beside the cube
      {0, 0, 700, 155, 470}, {2, 2, 764, 800, 600},  // 36 are left beside the ribbon
      {2, 2, 765, 800, 570}, {2, 3, 765, 800, 570}, {2, 3, 0, 155, 500},   {2, 2, 120, 155, 470},
      {2, 1, 764, 800, 500}, {2, 1, 765, 800, 470}, {2, 0, 680, 800, 500},  // 120 are left beside the ribbon
      {2, 0, 681, 800, 470}, {6, 2, 765, 800, 570}, {6, 1, 765, 800, 470}, {6, 0, 681, 800, 470},
      {4, 0, 700, 800, 600}, {5, 0, 700, 800, 600}, {7, 3, 700, 800, 600},
  };
  for (const HeightRow& row : rows) {
    StripRoom room = MakeRoom(row.location, row.ribbonWidth, 30);
    room.viewportWidth = row.viewportWidth;
    EXPECT_EQ(GetAvailableLength(room, MakePlace(row.position), 36), row.available)
        << row.position << " " << row.location << " " << row.ribbonWidth << " " << row.viewportWidth;
  }
}

TEST(ToolbarPlace, is_no_longer_than_its_limit) {
  StripRoom room = MakeRoom();
  room.sizeLimitHeight = 499;
  room.sizeLimitWidth = 300;
  EXPECT_EQ(GetAvailableLength(room, MakePlace(2), 36), 499);
  EXPECT_EQ(GetAvailableLength(room, MakePlace(3), 36), 300);
  room.sizeLimitHeight = 501;
  EXPECT_EQ(GetAvailableLength(room, MakePlace(2), 36), 500);
  room.sizeLimitHeight = 0;
  EXPECT_EQ(GetAvailableLength(room, MakePlace(2), 36), 0);
  room.sizeLimitHeight = -1;
  EXPECT_EQ(GetAvailableLength(room, MakePlace(2), 36), 500);
}

// ---- where ----

struct CenterRow {
  int position;
  double x;
  double y;
};

// A half size of 20 x 100, 30.5 and 10.5 off the edge or the corner.
TEST(ToolbarPlace, stands_at_its_edge_or_in_its_corner) {
  const CenterRow rows[] = {{0, 50.5, 310},   {1, 430, 510.5},   {2, 810.5, 310},   {3, 430, 110.5},
                            {4, 50.5, 489.5}, {5, 749.5, 489.5}, {6, 749.5, 110.5}, {7, 50.5, 110.5}};
  for (const CenterRow& row : rows) {
    const StripPlace place = MakePlace(row.position, {30.5, 10.5}, {30.5, 10.5});
    EXPECT_EQ(GetStripCenter(MakeRoom(), place, {20, 100}), Vector2(row.x, row.y)) << row.position;
  }
}

TEST(ToolbarPlace, stays_in_the_viewport) {
  // No cube, no ribbon: along its edge up to the ends, away from it up to the opposite edge.
  StripRoom room = MakeRoom();
  room.orientorBounds = Box2();
  const Vector2 half(20, 100);
  const Vector2 far(5000, 5000);
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(0, far), half, false), Vector2(760, 200));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(0, -far), half, false), Vector2(0, -200));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(2, far), half, false), Vector2(0, 200));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(2, -far), half, false), Vector2(-760, -200));
  const Vector2 flat(100, 20);
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(1, far), flat, false), Vector2(300, 0));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(1, -far), flat, false), Vector2(-300, -560));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(3, far), flat, false), Vector2(300, 560));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(3, -far), flat, false), Vector2(-300, 0));
  for (const int corner : {4, 5, 6, 7})
    EXPECT_EQ(GetConstrainedOffset(room, MakePlace(corner, far), half, false), far);
}

// 600 - 2 * 400 is less than nothing: the minimum, -(300 - 400).
TEST(ToolbarPlace, takes_the_minimum_where_there_is_no_room) {
  StripRoom room = MakeRoom();
  room.orientorBounds = Box2();
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(0, {0, -50}), {20, 400}, false), Vector2(0, 100));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(0, {0, 150}), {20, 400}, false), Vector2(0, 100));
}

TEST(ToolbarPlace, keeps_below_the_ribbon_within_its_width) {
  StripRoom room = MakeRoom(0, 500, 30);
  room.orientorBounds = Box2();
  // Along the top: the left end is at 400 + x - 100.
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(1, {199, 0}), {100, 20}, false), Vector2(199, -30));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(1, {200, 0}), {100, 20}, false), Vector2(200, 0));
  // On the left: 300 - 100 - 30.
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(0, {0, 500}), {20, 100}, false), Vector2(0, 170));
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(2, {0, 500}), {20, 100}, false), Vector2(0, 200));
}

struct CubeRow {
  int location;
  int position;
  Vector2 wanted;
  Vector2 offset;
};

// A strip of 200 x 40 or 40 x 200; the cube of 120 x 100 pixels. Along the top or bottom it may go up to 300,
// less 120; along a side up to 200, less 100.
TEST(ToolbarPlace, a_strip_that_would_cover_the_cube_gives_way_by_its_size) {
  const CubeRow rows[] = {
      {0, 1, {300, 0}, {180, 0}},
      {0, 2, {0, 200}, {0, 100}},
      {1, 3, {300, 0}, {180, 0}},
      {1, 2, {0, -200}, {0, -100}},
      {2, 1, {-300, 0}, {-180, 0}},
      {2, 0, {0, 200}, {0, 100}},
      {3, 3, {-300, 0}, {-180, 0}},
      {3, 0, {0, -200}, {0, -100}},
      // Not near the cube.
      {0, 3, {300, 0}, {300, 0}},
      {0, 0, {0, 200}, {0, 200}},
      {2, 2, {0, 200}, {0, 200}},
      {0, 1, {-300, 0}, {-300, 0}},
      {0, 2, {0, -200}, {0, -200}},
  };
  for (const CubeRow& row : rows) {
    const bool flat = row.position == 1 || row.position == 3;
    const Vector2 half = flat ? Vector2(100, 20) : Vector2(20, 100);
    const StripRoom room = MakeRoom(row.location);
    EXPECT_EQ(GetConstrainedOffset(room, MakePlace(row.position, row.wanted), half, false), row.offset)
        << row.location << " " << row.position;
    EXPECT_EQ(GetConstrainedOffset(room, MakePlace(row.position, row.wanted), half, true), row.wanted)
        << "pressed";
  }
}

// A strip of 760 x 40 has 20 to either side; less 120 the maximum is -100, and the minimum follows.
TEST(ToolbarPlace, lets_the_other_bound_follow_one_that_crosses_it) {
  const StripRoom room = MakeRoom(0);
  EXPECT_EQ(GetConstrainedOffset(room, MakePlace(1, {0, 0}), {380, 20}, false), Vector2(-100, 0));
  EXPECT_EQ(GetConstrainedOffset(MakeRoom(2), MakePlace(1, {0, 0}), {380, 20}, false), Vector2(100, 0));
}

// ---- docking ----

Toolbar::Position DockAt(const StripRoom& room, int current, const Vector2& center,
                         const Vector2& half = {1, 1}) {
  return GetDock(room, MakePlace(current), {center, half}).position;
}

TEST(ToolbarPlace, docks_at_the_nearest_edge) {
  const StripRoom room = MakeRoom();
  for (const int current : {0, 1, 2, 3}) {
    EXPECT_EQ(DockAt(room, current, {100, 300}), 0);
    EXPECT_EQ(DockAt(room, current, {400, 500}), 1);
    EXPECT_EQ(DockAt(room, current, {700, 300}), 2);
    EXPECT_EQ(DockAt(room, current, {400, 100}), 3);
  }
}

struct TieRow {
  Vector2 center;
  int width;
  int height;
  int wasLeft;
  int wasTop;
  int wasRight;
  int wasBottom;
};

TEST(ToolbarPlace, settles_a_tie_between_two_edges_by_where_it_was) {
  const TieRow rows[] = {
      {{100, 500}, 800, 600, 0, 1, 0, 0},  // left and top
      {{100, 300}, 200, 600, 2, 2, 2, 2},  // left and right
      {{100, 100}, 800, 600, 0, 0, 0, 3},  // left and bottom
      {{700, 500}, 800, 600, 2, 1, 2, 2},  // top and right
      {{400, 100}, 800, 200, 1, 1, 1, 1},  // top and bottom
      {{700, 100}, 800, 600, 2, 2, 2, 3},  // right and bottom
  };
  for (const TieRow& row : rows) {
    StripRoom room;
    room.viewportWidth = row.width;
    room.viewportHeight = row.height;
    const int expected[] = {row.wasLeft, row.wasTop, row.wasRight, row.wasBottom};
    for (int current = 0; current < 4; ++current)
      EXPECT_EQ(DockAt(room, current, row.center), expected[current])
          << row.center.x << " " << row.center.y << " from " << current;
  }
}

TEST(ToolbarPlace, a_release_as_near_to_the_left_as_to_the_bottom_keeps_the_bottom_only_if_it_was_there) {
  for (const int current : {0, 1, 2}) EXPECT_EQ(DockAt(MakeRoom(), current, {60, 60}), 0);
  EXPECT_EQ(DockAt(MakeRoom(), 3, {60, 60}), 3);
}

// Half a pixel counts up: 99.5 is as far as 100.
TEST(ToolbarPlace, rounds_the_centre_before_it_compares) {
  EXPECT_EQ(DockAt(MakeRoom(), 3, {99.5, 100}), 3);
  EXPECT_EQ(DockAt(MakeRoom(), 3, {99.4, 100}), 0);
}

// 100 from the left; from the top 120, of which the ribbon takes 30 while the left end is below it.
TEST(ToolbarPlace, counts_from_the_ribbon_where_the_left_end_is_below_it) {
  const StripRoom room = MakeRoom(0, 90, 30);
  EXPECT_EQ(DockAt(room, 2, {100, 480}, {11, 11}), 1);
  EXPECT_EQ(DockAt(room, 2, {100, 480}, {10, 10}), 0);
}

TEST(ToolbarPlace, docks_with_the_orientation_and_the_offset_of_the_edge) {
  const StripRoom room = MakeRoom();
  const StripPlace left = GetDock(room, MakePlace(3, {1, 2}), {{50, 200}, {100, 20}});
  EXPECT_EQ(left.orientation, Toolbar::ORIENTATION_VERTICAL);
  EXPECT_EQ(left.edgeOffset, Vector2(0, -100));
  const StripPlace top = GetDock(room, MakePlace(0, {1, 2}), {{300, 580}, {20, 100}});
  EXPECT_EQ(top.orientation, Toolbar::ORIENTATION_HORIZONTAL);
  EXPECT_EQ(top.edgeOffset, Vector2(-100, 0));
}

// ---- corners ----

struct CornerRow {
  int corner;
  int edge;
  Vector2 offset;
};

// A half height of 100, 30 and 10 off the corner: 300 - 110.
TEST(ToolbarPlace, a_corner_becomes_the_edge_beside_it) {
  const CornerRow rows[] = {{4, 0, {30, 190}}, {5, 2, {-30, 190}}, {6, 2, {-30, -190}}, {7, 0, {30, -190}}};
  for (const CornerRow& row : rows) {
    const StripPlace corner = MakePlace(row.corner, {7, 7}, {30, 10});
    const StripPlace edge = GetEdgeBeside(MakeRoom(), corner, {20, 100});
    EXPECT_EQ(edge.position, row.edge);
    EXPECT_EQ(edge.edgeOffset, row.offset);
    EXPECT_EQ(GetStripCenter(MakeRoom(), edge, {20, 100}), GetStripCenter(MakeRoom(), corner, {20, 100}));
  }
  for (const int edge : {0, 1, 2, 3}) {
    const StripPlace same = GetEdgeBeside(MakeRoom(), MakePlace(edge, {7, 7}), {20, 100});
    EXPECT_EQ(same.position, edge);
    EXPECT_EQ(same.edgeOffset, Vector2(7, 7));
  }
}

// ---- anything ----

TEST(ToolbarPlace, of_random_rooms_stays_in_the_viewport_where_there_is_room) {
  Random random;
  for (int i = 0; i < 20000; ++i) {
    StripRoom room = MakeRoom(random.Integer(0, 3), random.Integer(0, 900), random.Integer(0, 80));
    room.viewportWidth = random.Integer(1, 65535);
    room.viewportHeight = random.Integer(1, 65535);
    StripPlace place =
        MakePlace(random.Integer(0, 3), {random.Uniform(-1e5, 1e5), random.Uniform(-1e5, 1e5)});
    const Vector2 half(random.Integer(1, 200) / 2.0, random.Integer(1, 200) / 2.0);
    place.edgeOffset = GetConstrainedOffset(room, place, half, true);
    const Vector2 center = GetStripCenter(room, place, half);
    ASSERT_TRUE(center.IsFinite());
    if (2.0 * half.x <= room.viewportWidth) {
      // The centre is rounded down along the edge.
      ASSERT_GE(center.x - half.x, -1.0) << i;
      ASSERT_LE(center.x + half.x, room.viewportWidth) << i;
    }
    if (2.0 * half.y + room.ribbonHeight <= room.viewportHeight) {
      ASSERT_GE(center.y - half.y, -1.0) << i;
      ASSERT_LE(center.y + half.y, room.viewportHeight) << i;
    }
  }
}

}  // namespace
