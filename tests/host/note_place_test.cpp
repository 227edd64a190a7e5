// Where a note stands: near the pointer, but not over what it tells of, nor over panels, while there is room.
#include "../../host/src/bars/note_place.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

using Korvane::Box2;
using Korvane::Vector2;
using zovhost::FindNotePlace;
using zovhost::NoteRoom;

constexpr Vector2 HALF(60.0, 10.0);
constexpr Vector2 VIEW(800.0, 600.0);

bool DoOverlap(const Box2& a, const Box2& b) {
  const Vector2 apart = a.center - b.center;
  const Vector2 reach = a.halfExtent + b.halfExtent;
  return std::abs(apart.x) < reach.x && std::abs(apart.y) < reach.y;
}

NoteRoom MakeRoom(const Vector2& pointer, const Box2& thing = Box2()) {
  return {pointer, HALF, VIEW, 1.0, thing, {}};
}

bool IsInView(const Box2& note) {
  return note.Min().x >= 4.0 && note.Min().y >= 4.0 && note.Max().x <= VIEW.x - 4.0 &&
         note.Max().y <= VIEW.y - 4.0;
}

TEST(NotePlaceTest, is_below_the_pointer_and_to_its_right_where_nothing_is_in_the_way) {
  const Vector2 place = FindNotePlace(MakeRoom({100.0, 300.0}));
  EXPECT_EQ(place, Vector2(100.0 + 10.0 + HALF.x, 300.0 - 22.0 - HALF.y));
}

TEST(NotePlaceTest, is_beside_what_it_tells_of_wherever_that_stands) {
  for (double x = 0.0; x <= VIEW.x; x += 40.0) {
    for (double y = 0.0; y <= VIEW.y; y += 40.0) {
      const Box2 thing({x, y}, {64.0, 64.0});
      const Box2 note(FindNotePlace(MakeRoom({x, y}, thing)), HALF);
      EXPECT_FALSE(DoOverlap(note, thing)) << x << ' ' << y;
      EXPECT_TRUE(IsInView(note)) << x << ' ' << y;
    }
  }
}

TEST(NotePlaceTest, is_beside_the_panels_as_well) {
  const std::array panels = {Box2({160.0, 300.0}, {160.0, 290.0}), Box2({560.0, 100.0}, {240.0, 100.0})};
  for (double x = 330.0; x <= VIEW.x; x += 40.0) {
    for (double y = 210.0; y <= VIEW.y; y += 40.0) {
      const Box2 thing({x, y}, {64.0, 64.0});
      NoteRoom room = MakeRoom({x, y}, thing);
      room.panels = panels;
      const Box2 note(FindNotePlace(room), HALF);
      EXPECT_FALSE(DoOverlap(note, thing)) << x << ' ' << y;
      for (const Box2& panel : panels) EXPECT_FALSE(DoOverlap(note, panel)) << x << ' ' << y;
      EXPECT_TRUE(IsInView(note)) << x << ' ' << y;
    }
  }
}

TEST(NotePlaceTest, is_in_a_view_that_is_hardly_higher_than_itself) {
  NoteRoom room = MakeRoom({100.0, 25.0});
  room.viewport.y = 40.0;
  const Box2 note(FindNotePlace(room), HALF);
  EXPECT_GE(note.Min().y, 4.0);
  EXPECT_LE(note.Max().y, 36.0);
}

TEST(NotePlaceTest, is_near_the_pointer) {
  const Box2 bar({780.0, 300.0}, {20.0, 200.0});
  const Box2 note(FindNotePlace(MakeRoom({785.0, 420.0}, bar)), HALF);
  EXPECT_FALSE(DoOverlap(note, bar));
  EXPECT_NEAR(note.center.y, 420.0, 40.0);
  EXPECT_NEAR(note.Max().x, 760.0, 10.0);
}

TEST(NotePlaceTest, goes_over_what_it_tells_of_rather_than_over_a_panel_where_there_is_no_other_room) {
  const Box2 thing({400.0, 300.0}, {400.0, 300.0});
  const std::array panels = {Box2({400.0, 150.0}, {400.0, 150.0})};
  NoteRoom room = MakeRoom({400.0, 310.0}, thing);
  room.panels = panels;
  const Box2 note(FindNotePlace(room), HALF);
  EXPECT_FALSE(DoOverlap(note, panels[0]));
  EXPECT_TRUE(IsInView(note));
}

TEST(NotePlaceTest, is_at_the_pointer_where_panels_take_all) {
  const std::array panels = {Box2(VIEW / 2.0, VIEW / 2.0)};
  NoteRoom room = MakeRoom({100.0, 300.0});
  room.panels = panels;
  EXPECT_EQ(FindNotePlace(room), FindNotePlace(MakeRoom({100.0, 300.0})));
}

}  // namespace
