#include <gtest/gtest.h>

#include "toolbar/toolbar_scene.h"

using namespace Korvane;

namespace {

class ToolbarDockingTest : public ToolbarScene, public ::testing::Test {
 protected:
  ToolbarDockingTest() { Start(); }

  // Presses the grip and moves the centre of the strip to `center`, as far as it may go.
  void DragTo(const Vector2& center) {
    const Vector2 grip = Middle(1);
    Press(grip);
    cursor = grip + (center - Bounds().center);
    Move(cursor);
  }
  void Drop() { Release(cursor); }

  Vector2 cursor;
};

TEST_F(ToolbarDockingTest, the_grip_takes_the_strip_along) {
  const Vector2 grip = Middle(1);
  EXPECT_TRUE(Press(grip));
  EXPECT_TRUE(toolbar.open.drag.active);
  EXPECT_EQ(renderer.GetCursorID(), 3);
  EXPECT_TRUE(journal.Take().empty());
  hub.requested = 0;
  EXPECT_TRUE(toolbar.OnMouseMove(static_cast<int>(grip.x) - 200, static_cast<int>(grip.y) + 50));
  EXPECT_EQ(toolbar.GetEdgeOffset().y, 50 + std::floor(grip.y) - grip.y + (grip.y - std::floor(grip.y)));
  EXPECT_EQ(Bounds().center, Vector2(582, 350));
  EXPECT_GE(hub.requested, 1);
  renderer.ClearCalls();
  toolbar.Draw();
  EXPECT_EQ(renderer.GetCursorID(), 3);
}

struct EdgeRow {
  Vector2 center;
  int position;
  int orientation;
  Vector2 docked;
};

// Vertical the strip is 36 wide; horizontal 36 high and 12 + 28 + 38 + 4 + 28 + 5 + 8 = 123 long.
TEST_F(ToolbarDockingTest, docks_at_every_edge) {
  const EdgeRow rows[] = {
      {{60, 250}, 0, 0, {18, 250}},
      {{300, 530}, 1, 1, {300, 582}},
      {{700, 200}, 2, 0, {782, 200}},
      {{300, 70}, 3, 1, {300, 18}},
  };
  for (const EdgeRow& row : rows) {
    DragTo(row.center);
    Drop();
    EXPECT_EQ(toolbar.GetPosition(), row.position);
    EXPECT_EQ(toolbar.open.place.orientation, row.orientation);
    EXPECT_EQ(Bounds().center, row.docked);
    EXPECT_EQ(renderer.GetCursorID(), 26);
    EXPECT_EQ(journal.Count("dragged"), 1);
    EXPECT_EQ(journal.Count("position"), 0);
    EXPECT_FALSE(toolbar.open.drag.active);
    EXPECT_FALSE(toolbar.IsMouseDownOnItem());
    journal.Take();
  }
}

TEST_F(ToolbarDockingTest, a_release_with_no_way_gone_stays) {
  const Vector2 grip = Middle(1);
  Press(grip);
  EXPECT_TRUE(Release(grip));
  EXPECT_EQ(toolbar.GetPosition(), 2);
  EXPECT_EQ(Bounds().center, Vector2(782, 300));
  EXPECT_EQ(journal.Take(), (Lines{"dragged"}));
}

TEST_F(ToolbarDockingTest, observers_find_the_new_place_and_then_it_travels_there) {
  toolbar.SetWantAnimation(true);
  DragTo({70, 250});
  Vector2 told;
  observer.onHear = [&](const std::string& line) {
    if (line == "dragged") told = Bounds().center;
  };
  Drop();
  EXPECT_EQ(toolbar.GetPosition(), 0);
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, -50));
  EXPECT_EQ(told, Vector2(18, 250));
  EXPECT_EQ(Bounds().center, Vector2(70, 250));
  platform.Advance(100);
  EXPECT_NEAR(Bounds().center.x, 44, 1e-9);
  EXPECT_EQ(Bounds().center.y, 250);
  platform.Advance(101);
  EXPECT_EQ(Bounds().center, Vector2(18, 250));
}

TEST_F(ToolbarDockingTest, a_strip_under_way_shows_no_items_and_asks_for_frames) {
  toolbar.SetWantAnimation(true);
  DragTo({70, 250});
  Drop();
  renderer.ClearCalls();
  hub.requested = 0;
  platform.Advance(100);
  toolbar.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderResource"), 0);
  EXPECT_GT(renderer.CountCalls("RenderGeometry"), 0);
  EXPECT_GT(hub.requested, 0);
  EXPECT_TRUE(toolbar.open.motion.positionInProgress);
  // The region, of four times the size, goes along.
  const Box2 strip = Bounds();
  const auto move = [&](double halves) {
    toolbar.OnMouseMove(static_cast<int>(strip.center.x + halves * strip.halfExtent.x),
                        static_cast<int>(strip.center.y));
    return toolbar.IsMouseInRegion();
  };
  EXPECT_TRUE(move(3.5));
  EXPECT_FALSE(move(4.5));
}

// The mouse that rests where the button comes to is over it then.
TEST_F(ToolbarDockingTest, corrects_the_items_once_it_has_arrived) {
  toolbar.SetWantAnimation(true);
  DragTo({70, 250});
  Drop();
  toolbar.OnMouseMove(18, 280);
  journal.Take();
  Settle();
  EXPECT_FALSE(toolbar.open.motion.positionInProgress);
  EXPECT_FALSE(toolbar.open.motion.wantPosition);
  EXPECT_EQ(journal.Take(), (Lines{"entered 2"}));
  Forget();
  toolbar.Draw();
  EXPECT_EQ(hub.requested, 0);
  EXPECT_GT(renderer.CountCalls("RenderResource"), 0);
}

// A heavy scene: no frame comes while the strip is under way.
TEST_F(ToolbarDockingTest, brings_the_items_though_its_first_frame_comes_after_the_journey) {
  toolbar.SetWantAnimation(true);
  DragTo({70, 250});
  Drop();
  platform.Advance(500);
  toolbar.OnMouseMove(400, 300);
  toolbar.Draw();
  toolbar.Draw();
  EXPECT_EQ(Bounds().center, Vector2(18, 250));
  EXPECT_EQ(Item(2).GetBounds().center.x, 18.0);
  EXPECT_FALSE(toolbar.open.motion.positionInProgress);
  renderer.ClearCalls();
  toolbar.Draw();
  EXPECT_GT(renderer.CountCalls("RenderResource"), 0);
}

// The journey has gone to where the edge was; the last layout of it sees where it is now.
TEST_F(ToolbarDockingTest, travels_on_to_an_edge_that_has_moved_meanwhile) {
  toolbar.SetWantAnimation(true);
  DragTo({400, 20});  // towards the bottom
  Drop();
  platform.Advance(100);
  toolbar.Draw();
  const Vector2 before = Bounds().center;
  toolbar.SetViewportSize(1000, 700);
  toolbar.Draw();
  platform.Advance(60);
  toolbar.Draw();  // at the end of the way: another one begins, along the edge
  const Vector2 turn = Bounds().center;
  platform.Advance(50);
  toolbar.Draw();
  EXPECT_GT(Bounds().center.x, turn.x + 1.0);
  EXPECT_LT(Bounds().center.x, turn.x + 99.0);
  EXPECT_TRUE(toolbar.open.motion.positionInProgress);
  Settle();
  EXPECT_FALSE(toolbar.open.motion.wantPosition);
  EXPECT_FALSE(toolbar.open.motion.positionInProgress);
  EXPECT_NE(Bounds().center, before);
  EXPECT_EQ(Item(2).GetBounds().center.y, Bounds().center.y);
}

// 400 high the strip of 123 goes up to 200 - 61.5 from the middle.
TEST_F(ToolbarDockingTest, a_viewport_that_shrinks_during_the_journey_holds_the_offset) {
  toolbar.SetWantAnimation(true);
  DragTo({710, 500});
  Drop();
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 200));
  platform.Advance(100);
  toolbar.Draw();
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 200));
  toolbar.SetViewportSize(800, 400);
  toolbar.Draw();
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 138.5));
}

TEST_F(ToolbarDockingTest, kept_in_view_it_goes_back_though_the_viewport_shrank_during_the_journey) {
  toolbar.SetKeepInView(true);
  toolbar.SetWantAnimation(true);
  DragTo({710, 500});
  Drop();
  platform.Advance(100);
  toolbar.SetViewportSize(800, 400);
  Settle();
  EXPECT_EQ(Bounds().center.y, 338);
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 200));
  toolbar.SetViewportSize(800, 600);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 500);
}

TEST_F(ToolbarDockingTest, jumps_where_no_animation_is_wanted) {
  DragTo({70, 250});
  Drop();
  EXPECT_EQ(Bounds().center, Vector2(18, 250));
  Forget();
  toolbar.Draw();
  EXPECT_FALSE(toolbar.open.motion.positionInProgress);
}

TEST_F(ToolbarDockingTest, a_change_of_the_viewport_is_no_journey) {
  toolbar.SetWantAnimation(true);
  DragTo({782, 300});
  Drop();
  Settle();
  toolbar.SetViewportSize(1000, 700);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center, Vector2(982, 350));
}

TEST_F(ToolbarDockingTest, a_strip_in_a_corner_is_on_the_edge_beside_it_once_its_grip_is_pressed) {
  toolbar.SetPosition(Toolbar::POSITION_TOP_LEFT);
  toolbar.SetCornerOffset({30, 10});
  toolbar.Draw();
  const Vector2 center = Bounds().center;
  EXPECT_EQ(center, Vector2(48, 528.5));
  journal.Take();
  Press(Middle(1));
  EXPECT_EQ(toolbar.GetPosition(), 0);
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(30, 228.5));
  EXPECT_EQ(journal.Take(), (Lines{"position"}));
}

TEST_F(ToolbarDockingTest, converts_a_corner_and_leaves_an_edge) {
  EXPECT_FALSE(toolbar.ConvertToEdgePosition());
  toolbar.SetPosition(Toolbar::POSITION_BOTTOM_RIGHT);
  toolbar.Draw();
  Forget();
  EXPECT_TRUE(toolbar.ConvertToEdgePosition());
  EXPECT_EQ(toolbar.GetPosition(), 2);
  EXPECT_GE(hub.requested, 1);  // for the strip as it lies there
}

TEST_F(ToolbarDockingTest, gives_way_to_the_cube_but_not_during_the_press) {
  toolbar.SetOrientorBounds(Box2({740, 540}, {60, 60}));
  toolbar.SetOrientorLocation(OrientorParameters::LOCATION_TOP_RIGHT);
  DragTo({782, 500});
  EXPECT_EQ(Bounds().center.y, 500);
  Drop();
  // 600 - 120 - 61.5, rounded down.
  EXPECT_EQ(Bounds().center, Vector2(782, 418));
}

TEST_F(ToolbarDockingTest, stands_where_it_was_put_when_the_room_changes) {
  toolbar.SetEdgeOffset({0, 200});
  toolbar.SetOrientorBounds(Box2({740, 540}, {60, 60}));
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 500);
  toolbar.SetViewportSize(800, 400);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 400);
}

TEST_F(ToolbarDockingTest, kept_in_view_it_gives_way_when_the_cube_comes_and_goes_back) {
  toolbar.SetKeepInView(true);
  EXPECT_TRUE(toolbar.GetKeepInView());
  toolbar.SetEdgeOffset({0, 200});
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 500);
  toolbar.SetOrientorBounds(Box2({740, 540}, {60, 60}));
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 418);
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 200));
  Press(Middle(2));
  toolbar.SetItemSelected(2, true);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 418);  // also while an item is pressed
  toolbar.SetOrientorBounds(Box2());
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 500);
}

TEST_F(ToolbarDockingTest, kept_in_view_it_comes_along_as_the_viewport_shrinks_and_goes_back) {
  toolbar.SetKeepInView(true);
  toolbar.SetEdgeOffset({0, 200});
  toolbar.SetViewportSize(800, 400);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 338);  // 400 - 61.5, rounded down
  toolbar.SetViewportSize(800, 600);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center.y, 500);
}

TEST_F(ToolbarDockingTest, a_strip_that_is_held_back_is_dragged_from_where_it_shows) {
  toolbar.SetKeepInView(true);
  toolbar.SetEdgeOffset({0, 200});
  toolbar.SetOrientorBounds(Box2({740, 540}, {60, 60}));
  toolbar.Draw();
  const double shown = Bounds().center.y;
  const Vector2 grip = Middle(1);
  Press(grip);
  Move(grip - Vector2(0, 10));
  EXPECT_EQ(Bounds().center.y, shown - 10);
  toolbar.SetDisabled(true);  // the wish is what it was
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 200));
}

TEST_F(ToolbarDockingTest, kept_in_view_it_keeps_below_the_ribbon) {
  toolbar.SetKeepInView(true);
  toolbar.SetPosition(Toolbar::POSITION_TOP);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center, Vector2(400, 582));
  toolbar.SetRibbonSize(500, 50);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center, Vector2(400, 532));
}

// ---- when it moves and when it jumps ----

TEST(StripMotion, moves_only_by_more_than_the_least_difference_on_each_axis) {
  const ManualPlatform platform;
  const double least = 1.1920928955078125e-7;
  StripMotion motion;
  motion.SetCenter({8, 8});
  motion.SetExtent({4, 4});
  motion.wantAnimation = motion.wantPosition = motion.wantSize = true;
  motion.SetCenter({8 + least, 8 - least});
  motion.SetExtent({4 - least, 4 + least});
  EXPECT_FALSE(motion.IsMoving());
  EXPECT_EQ(motion.bounds.centerX.GetValue(), 8.0);
  motion.SetCenter({8, 8 - 1.01 * least});
  EXPECT_FALSE(motion.bounds.centerX.IsChangingInTime());
  EXPECT_TRUE(motion.bounds.centerY.IsChangingInTime());
  motion.SetExtent({4 + 1.01 * least, 4});
  EXPECT_TRUE(motion.bounds.extentX.IsChangingInTime());
  EXPECT_FALSE(motion.bounds.extentY.IsChangingInTime());
}

TEST_F(ToolbarDockingTest, a_second_change_of_size_during_the_first_is_gradual_too) {
  toolbar.SetWantAnimation(true);
  toolbar.SetItemExcluded(2, true);
  toolbar.Draw();
  platform.Advance(100);
  toolbar.SetItemExcluded(5, true);
  toolbar.Draw();
  platform.Advance(110);
  toolbar.Draw();  // the first is over: 123 less 28
  EXPECT_EQ(2 * Bounds().halfExtent.y, 95);
  platform.Advance(100);
  toolbar.Draw();
  EXPECT_LT(2 * Bounds().halfExtent.y, 94.0);
  EXPECT_GT(2 * Bounds().halfExtent.y, 68.0);
  Settle();
  EXPECT_EQ(2 * Bounds().halfExtent.y, 67);
}

// ---- drags that are cut short ----

TEST_F(ToolbarDockingTest, a_strip_that_is_disabled_or_destroyed_in_a_drag_goes_back) {
  DragTo({300, 250});
  toolbar.SetDisabled(true);
  EXPECT_FALSE(toolbar.open.drag.active);
  EXPECT_EQ(renderer.GetCursorID(), 26);
  toolbar.Draw();
  EXPECT_EQ(Bounds().center, Vector2(782, 300));
  EXPECT_TRUE(toolbar.IsMouseDownOnItem());  // the press goes on
  EXPECT_TRUE(Release(cursor));
  toolbar.SetDisabled(false);
  EXPECT_FALSE(toolbar.OnMouseMove(300, 300));
  EXPECT_EQ(journal.Count("dragged"), 0);

  DragTo({300, 250});
  toolbar.Destroy();
  EXPECT_FALSE(toolbar.open.drag.active);
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2());
}

TEST_F(ToolbarDockingTest, what_a_host_sets_in_a_drag_outlasts_it) {
  DragTo({300, 250});
  toolbar.SetPosition(Toolbar::POSITION_LEFT);
  toolbar.SetOrientation(Toolbar::ORIENTATION_HORIZONTAL);
  toolbar.SetCornerOffset({7, 8});
  toolbar.SetEdgeOffset({0, 40});
  toolbar.SetDisabled(true);
  EXPECT_EQ(toolbar.GetPosition(), Toolbar::POSITION_LEFT);
  EXPECT_EQ(toolbar.open.place.orientation, Toolbar::ORIENTATION_HORIZONTAL);
  EXPECT_EQ(toolbar.open.place.cornerOffset, Vector2(7, 8));
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(0, 40));
}

TEST_F(ToolbarDockingTest, an_offset_that_a_host_sets_where_the_drag_is_just_then_outlasts_it) {
  DragTo({300, 250});
  toolbar.SetEdgeOffset(toolbar.GetEdgeOffset());
  const Vector2 chosen = toolbar.GetEdgeOffset();
  EXPECT_NE(chosen, Vector2());
  toolbar.Destroy();
  EXPECT_EQ(toolbar.GetEdgeOffset(), chosen);
}

TEST_F(ToolbarDockingTest, a_corner_that_a_host_sets_in_a_drag_and_converts_stays_an_edge) {
  DragTo({300, 250});
  toolbar.SetPosition(Toolbar::POSITION_TOP_LEFT);
  toolbar.SetCornerOffset({30, 10});
  EXPECT_TRUE(toolbar.ConvertToEdgePosition());
  toolbar.SetDisabled(true);
  EXPECT_EQ(toolbar.GetPosition(), Toolbar::POSITION_LEFT);
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2(30, 300 - 61.5 - 10));
}

// The smaller of two equal ways goes to the edge where the strip was.
TEST_F(ToolbarDockingTest, dropped_as_near_to_the_left_as_to_the_bottom_it_stays_at_the_bottom_only) {
  Item(5).SetSize(27, 27);  // 122 long
  toolbar.ApplyItemChanges();
  for (const int from : {Toolbar::POSITION_BOTTOM, Toolbar::POSITION_LEFT}) {
    toolbar.SetPosition(static_cast<Toolbar::Position>(from));
    toolbar.SetEdgeOffset({});
    toolbar.Draw();
    const Vector2 half = Bounds().halfExtent;
    DragTo(half + Vector2(40, 40));
    ASSERT_EQ(Bounds().Min(), Vector2(40, 40));
    Drop();
    EXPECT_EQ(toolbar.GetPosition(), from);
  }
}

TEST_F(ToolbarDockingTest, a_second_press_ends_the_drag) {
  DragTo({300, 250});
  EXPECT_TRUE(toolbar.open.drag.active);
  Press({300, 580});
  EXPECT_FALSE(toolbar.open.drag.active);
  Move({10, 10});
  EXPECT_EQ(Bounds().center, Vector2(300, 250));
}

TEST_F(ToolbarDockingTest, a_host_may_disable_the_strip_as_its_drag_begins) {
  toolbar.SetPosition(Toolbar::POSITION_TOP_RIGHT);
  toolbar.Draw();
  observer.onHear = [&](const std::string& line) {
    if (line == "position") toolbar.SetDisabled(true);
  };
  Press(Middle(1));
  EXPECT_FALSE(toolbar.open.drag.active);
}

TEST_F(ToolbarDockingTest, a_grip_that_was_not_dragged_is_not_clicked) {
  toolbar.SetPosition(Toolbar::POSITION_TOP_RIGHT);
  toolbar.Draw();
  journal.Take();
  observer.onHear = [&](const std::string& line) {
    if (line == "position") toolbar.SetDisabled(true);
  };
  const Vector2 grip = Middle(1);
  Press(grip);
  toolbar.SetDisabled(false);
  EXPECT_EQ(Item(1).GetState(), 5);
  EXPECT_TRUE(Release(grip));
  EXPECT_EQ(journal.Count("clicked 1"), 0);
  EXPECT_EQ(journal.Count("dragged"), 0);
}

TEST_F(ToolbarDockingTest, a_drag_that_is_cut_short_does_not_go_on_once_the_strip_is_enabled_again) {
  DragTo({300, 250});
  toolbar.SetDisabled(true);
  toolbar.SetDisabled(false);
  Move({200, 200});
  toolbar.Draw();
  EXPECT_EQ(Bounds().center, Vector2(782, 300));
  EXPECT_TRUE(Release({200, 200}));
  for (const std::string& line : journal.Take()) EXPECT_NE(line, "dragged");
}

// Laid along the bottom the strip has room for all items, and tells so.
TEST_F(ToolbarDockingTest, a_host_may_disable_or_destroy_the_strip_in_the_layout_of_its_dock) {
  for (const bool destroys : {false, true}) {
    toolbar.Create();
    toolbar.SetDisabled(false);
    toolbar.SetPosition(Toolbar::POSITION_RIGHT);
    toolbar.SetViewportSize(800, 100);
    toolbar.Draw();
    ASSERT_TRUE(Item(5).IsExcluded());
    Forget();
    observer.onHear = [&](const std::string& line) {
      if (line != "included 5") return;
      observer.onHear = nullptr;
      if (destroys) toolbar.Destroy();
      if (!destroys) toolbar.SetDisabled(true);
    };
    DragTo({300, 40});
    Drop();
    EXPECT_FALSE(toolbar.open.drag.active);
    EXPECT_EQ(journal.Count("included 5"), 1);
    EXPECT_EQ(journal.Count("dragged"), 0) << destroys;
    EXPECT_EQ(toolbar.GetPosition(), Toolbar::POSITION_RIGHT);
    EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2());
  }
}

TEST_F(ToolbarDockingTest, a_host_may_choose_the_edge_when_it_hears_of_the_drag) {
  observer.onHear = [&](const std::string& line) {
    if (line == "dragged") toolbar.SetPosition(Toolbar::POSITION_RIGHT);
  };
  DragTo({70, 250});
  Drop();
  toolbar.Draw();
  EXPECT_EQ(toolbar.GetPosition(), 2);
  EXPECT_EQ(Bounds().center.x, 782);
}

// ---- positions ----

TEST_F(ToolbarDockingTest, a_position_sets_the_orientation) {
  for (int position = 0; position <= 7; ++position) {
    toolbar.SetPosition(static_cast<Toolbar::Position>(position));
    EXPECT_EQ(toolbar.GetPosition(), position);
    EXPECT_EQ(toolbar.open.place.orientation, position == 1 || position == 3 ? 1 : 0) << position;
  }
  EXPECT_EQ(journal.Count("position"), 8);
  for (const int bad : {-1, 8, 99}) toolbar.SetPosition(static_cast<Toolbar::Position>(bad));
  EXPECT_EQ(toolbar.GetPosition(), 7);
  toolbar.SetOrientation(Toolbar::ORIENTATION_HORIZONTAL);
  EXPECT_EQ(toolbar.open.place.orientation, 1);
  toolbar.SetOrientation(static_cast<Toolbar::Orientation>(7));
  EXPECT_EQ(toolbar.open.place.orientation, 1);
  EXPECT_EQ(journal.Count("position"), 8);
}

TEST_F(ToolbarDockingTest, ignores_numbers_that_are_not_finite) {
  const double nan = std::nan("");
  toolbar.SetEdgeOffset({nan, 0});
  toolbar.SetCornerOffset({0, HUGE_VAL});
  toolbar.SetOrientorBounds(Box2({nan, 0}, {1, 1}));
  EXPECT_EQ(toolbar.GetEdgeOffset(), Vector2());
  EXPECT_EQ(toolbar.open.place.cornerOffset, Vector2());
  EXPECT_EQ(toolbar.open.room.orientorBounds.halfExtent, Vector2());
}

}  // namespace
