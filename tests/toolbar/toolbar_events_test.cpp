#include <gtest/gtest.h>

#include "support/allocation_counter.h"
#include "toolbar/toolbar_scene.h"

using namespace Korvane;

namespace {

class ToolbarEventsTest : public ToolbarScene, public ::testing::Test {
 protected:
  ToolbarEventsTest() { Start(); }

  const Vector2 OUTSIDE{400, 300};
};

TEST_F(ToolbarEventsTest, stands_where_the_scene_says) {
  EXPECT_EQ(Bounds().Min(), Vector2(764, 238.5));
  EXPECT_EQ(Bounds().Max(), Vector2(800, 361.5));
}

// ---- the state of an item: is hidden or left out, disabled, and the mouse ----

TEST_F(ToolbarEventsTest, an_item_that_does_not_show_keeps_its_state) {
  const Vector2 place = Middle(2);
  Item(2).SetState(ToolbarItem::STATE_SELECTED);
  Item(2).SetHidden(true);
  Move(place);
  EXPECT_EQ(Item(2).GetState(), 2);
  Item(2).SetHidden(false);
  Item(2).SetExcluded(true);
  Move(place);
  EXPECT_EQ(Item(2).GetState(), 2);
}

TEST_F(ToolbarEventsTest, a_disabled_item_and_a_separator_are_state_0) {
  Item(2).SetEnabled(false);
  Move(Middle(2));
  EXPECT_EQ(Item(2).GetState(), 0);
  EXPECT_EQ(Item(4).GetState(), 0);
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(ToolbarEventsTest, rests_normal_or_selected) {
  EXPECT_EQ(Item(2).GetState(), 1);
  toolbar.SetItemSelected(2, true);
  Move(OUTSIDE);
  EXPECT_EQ(Item(2).GetState(), 2);
  toolbar.SetItemSelected(2, false);
  Move(OUTSIDE);
  EXPECT_EQ(Item(2).GetState(), 1);
}

TEST_F(ToolbarEventsTest, knows_the_mouse_over_an_item_and_over_its_arrow) {
  Move(Middle(2));
  EXPECT_EQ(Item(2).GetState(), 3);
  Move(Middle(3));
  EXPECT_EQ(Item(2).GetState(), 1);
  EXPECT_EQ(Item(3).GetState(), 3);
  Move(Arrow(3));
  EXPECT_EQ(Item(3).GetState(), 4);
  Move(OUTSIDE);
  EXPECT_EQ(Item(3).GetState(), 1);
}

TEST_F(ToolbarEventsTest, knows_a_press_on_an_item_and_on_its_arrow) {
  Press(Middle(3));
  EXPECT_EQ(Item(3).GetState(), 5);
  Move(Arrow(3));
  EXPECT_EQ(Item(3).GetState(), 5);  // by where it was pressed
  Move(OUTSIDE);
  EXPECT_EQ(Item(3).GetState(), 3);
  Release(OUTSIDE);
  EXPECT_EQ(Item(3).GetState(), 1);
  Press(Arrow(3));
  EXPECT_EQ(Item(3).GetState(), 6);
  Move(Middle(3));
  EXPECT_EQ(Item(3).GetState(), 6);
}

// Its own type plus 3, though the mouse is not on the arrow.
TEST_F(ToolbarEventsTest, an_arrow_that_was_pressed_stays_lit_after_the_release) {
  Press(Arrow(3));
  Release(Middle(3));
  EXPECT_EQ(Item(3).GetState(), 4);
  Move(Middle(3));
  EXPECT_EQ(Item(3).GetState(), 3);
}

TEST_F(ToolbarEventsTest, an_invisible_strip_has_no_item_under_the_mouse) {
  const Vector2 place = Middle(2);
  toolbar.SetVisible(false);
  EXPECT_FALSE(toolbar.OnMouseMove(static_cast<int>(place.x), static_cast<int>(place.y)));
  EXPECT_EQ(Item(2).GetState(), 1);
  EXPECT_FALSE(toolbar.IsMouseInBounds());
  EXPECT_FALSE(toolbar.IsMouseInRegion());
  EXPECT_FALSE(Press(place));
}

// ---- bounds and region ----

TEST_F(ToolbarEventsTest, knows_the_mouse_in_its_bounds_and_in_its_region) {
  // The region is 144 x 492 around (782, 300).
  struct Row {
    Vector2 point;
    bool bounds;
    bool region;
  };
  for (const Row& row :
       {Row{{764, 300}, true, true}, Row{{763, 300}, false, true}, Row{{710, 300}, false, true},
        Row{{709, 300}, false, false}, Row{{782, 54}, false, true}, Row{{782, 53}, false, false},
        Row{{782, 546}, false, false}}) {
    Move(row.point);
    EXPECT_EQ(toolbar.IsMouseInBounds(), row.bounds) << row.point.x << " " << row.point.y;
    EXPECT_EQ(toolbar.IsMouseInRegion(), row.region) << row.point.x << " " << row.point.y;
  }
  EXPECT_TRUE(toolbar.IsPointInBounds(764, 239));
  EXPECT_FALSE(toolbar.IsPointInBounds(800, 300));
}

TEST_F(ToolbarEventsTest, a_press_beside_the_items_is_used_and_clicks_nothing) {
  EXPECT_TRUE(Press({765, 300}));
  EXPECT_FALSE(toolbar.IsMouseDownOnItem());
  EXPECT_FALSE(Release({765, 300}));
  EXPECT_FALSE(Press(OUTSIDE));
  EXPECT_TRUE(journal.Take().empty());
}

// ---- enter, leave, click ----

TEST_F(ToolbarEventsTest, tells_of_the_item_that_the_mouse_leaves_and_then_of_the_one_that_it_enters) {
  Move(Middle(2));
  EXPECT_EQ(journal.Take(), (Lines{"entered 2"}));
  Move(Middle(2) + Vector2(3, 3));
  EXPECT_TRUE(journal.Take().empty());
  Move(Middle(5));
  EXPECT_EQ(journal.Take(), (Lines{"left 2", "entered 5"}));
  Move(OUTSIDE);
  EXPECT_EQ(journal.Take(), (Lines{"left 5"}));
}

TEST_F(ToolbarEventsTest, a_click_is_a_press_and_a_release_on_one_item) {
  EXPECT_TRUE(Press(Middle(2)));
  EXPECT_TRUE(toolbar.IsMouseDownOnItem());
  EXPECT_EQ(journal.Take(), (Lines{"pressed 2"}));
  EXPECT_TRUE(toolbar.OnMouseMove(781, 330));
  EXPECT_TRUE(Release(Middle(2)));
  EXPECT_FALSE(toolbar.IsMouseDownOnItem());
  EXPECT_EQ(journal.Take(), (Lines{"clicked 2"}));
}

TEST_F(ToolbarEventsTest, a_press_that_is_dragged_off_and_released_outside_is_no_click) {
  Press(Middle(2));
  Move(OUTSIDE);
  EXPECT_TRUE(Release(OUTSIDE));
  EXPECT_EQ(journal.Count("clicked 2"), 0);
  // Nor on another item, which a press does not reach.
  Press(Middle(2));
  Move(Middle(5));
  EXPECT_EQ(Item(5).GetState(), 1);
  EXPECT_TRUE(Release(Middle(5)));
  for (const std::string& line : journal.Take()) EXPECT_EQ(line.find("clicked"), std::string::npos);
}

TEST_F(ToolbarEventsTest, an_item_that_is_disabled_while_it_is_pressed_is_not_clicked) {
  Press(Middle(2));
  toolbar.SetItemEnabled(2, false);
  Move(Middle(2));
  EXPECT_TRUE(Release(Middle(2)));
  EXPECT_EQ(journal.Count("clicked 2"), 0);
}

TEST_F(ToolbarEventsTest, a_press_that_comes_back_is_a_click) {
  Press(Middle(2));
  Move(OUTSIDE);
  Move(Middle(2));
  Release(Middle(2));
  EXPECT_EQ(journal.Count("clicked 2"), 1);
}

TEST_F(ToolbarEventsTest, a_press_on_the_arrow_opens_the_flyout) {
  EXPECT_TRUE(Press(Arrow(3)));
  EXPECT_EQ(journal.Take(), (Lines{"flyout 3"}));
  EXPECT_TRUE(Press(Middle(3)));
  EXPECT_EQ(journal.Take(), (Lines{"pressed 3"}));
}

TEST_F(ToolbarEventsTest, a_plain_item_has_no_click) {
  EXPECT_TRUE(Press(Middle(5)));
  EXPECT_TRUE(Release(Middle(5)));
  EXPECT_EQ(journal.Take(), (Lines{"pressed 5"}));
}

TEST_F(ToolbarEventsTest, every_observer_is_told_whatever_the_first_answers) {
  JournalToolbarObserver second(&toolbar, journal, "second ");
  toolbar.AddObserver(&second);
  Press(Middle(2));
  EXPECT_EQ(journal.Take(), (Lines{"pressed 2", "second pressed 2"}));
  Release(OUTSIDE);
  toolbar.RemoveObserver(&second);
  EXPECT_FALSE(toolbar.AddObserver(nullptr));
}

TEST_F(ToolbarEventsTest, a_right_click_on_an_item_asks_for_its_menu) {
  EXPECT_TRUE(toolbar.OnRightMouseDown(782, 330));
  EXPECT_EQ(journal.Take(), (Lines{"menu 2"}));
  EXPECT_FALSE(toolbar.OnRightMouseUp(782, 330));
  EXPECT_FALSE(toolbar.OnRightMouseDown(400, 300));
  EXPECT_FALSE(toolbar.OnRightMouseDown(765, 300));
  Press(Middle(2));
  journal.Take();
  EXPECT_FALSE(toolbar.OnRightMouseDown(782, 330));
  EXPECT_TRUE(journal.Take().empty());
}

// ---- disabled ----

TEST_F(ToolbarEventsTest, a_disabled_strip_uses_no_event) {
  toolbar.SetDisabled(true);
  const Vector2 place = Middle(2);
  journal.Take();
  EXPECT_FALSE(toolbar.OnMouseMove(782, 330));
  EXPECT_FALSE(Press(place));
  EXPECT_FALSE(Release(place));
  EXPECT_FALSE(toolbar.OnRightMouseDown(782, 330));
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(ToolbarEventsTest, a_release_on_a_disabled_strip_answers_for_the_press_before_and_clicks_nothing) {
  const Vector2 place = Middle(2);
  Press(place);
  toolbar.SetDisabled(true);
  journal.Take();
  EXPECT_TRUE(Release(place));
  EXPECT_FALSE(toolbar.open.mouse.pressed);
  EXPECT_TRUE(toolbar.IsMouseDownOnItem());
  toolbar.SetDisabled(false);
  EXPECT_FALSE(toolbar.IsMouseDownOnItem());
  EXPECT_EQ(journal.Count("clicked 2"), 0);
}

// It would use every move of the mouse.
TEST_F(ToolbarEventsTest, an_item_that_was_left_and_let_go_on_a_disabled_strip_is_not_down_for_ever) {
  Press(Middle(2));
  Move(OUTSIDE);
  toolbar.SetDisabled(true);
  EXPECT_TRUE(Release(OUTSIDE));
  toolbar.SetDisabled(false);
  EXPECT_FALSE(toolbar.OnMouseMove(400, 301));
  EXPECT_FALSE(toolbar.IsMouseDownOnItem());
}

TEST_F(ToolbarEventsTest, a_change_of_disabled_tells_of_the_item_under_the_mouse) {
  toolbar.SetDisabled(true);
  toolbar.OnMouseMove(782, 330);
  toolbar.SetDisabled(false);
  EXPECT_EQ(journal.Take(), (Lines{"entered 2"}));
}

// ---- the end ----

TEST_F(ToolbarEventsTest, a_strip_that_is_destroyed_has_the_mouse_no_more) {
  Move(Middle(2));
  ASSERT_TRUE(toolbar.IsMouseInBounds() && toolbar.IsMouseInRegion());
  ASSERT_EQ(toolbar.GetCurrentTooltipItemTag(), 2);
  toolbar.Destroy();
  EXPECT_FALSE(toolbar.IsMouseInBounds());
  EXPECT_FALSE(toolbar.IsMouseInRegion());
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 0);
  EXPECT_TRUE(toolbar.GetTooltip().empty());
}

// ---- tooltips ----

TEST_F(ToolbarEventsTest, has_the_tooltip_of_the_item_under_the_mouse_but_not_during_a_press) {
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 0);
  EXPECT_TRUE(toolbar.GetTooltip().empty());
  Move(Middle(3));
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 3);
  EXPECT_EQ(toolbar.GetTooltip(), L"tip 3");
  Press(Middle(3));
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 0);
  EXPECT_TRUE(toolbar.GetTooltip().empty());
  Release(Middle(3));
  EXPECT_EQ(toolbar.GetTooltip(), L"tip 3");
  Move(OUTSIDE);
  EXPECT_TRUE(toolbar.GetTooltip().empty());
}

// ---- frames ----

TEST_F(ToolbarEventsTest, asks_for_a_frame_only_when_something_shows) {
  Move(Middle(2));
  EXPECT_EQ(hub.requested, 1);
  Move(Middle(2) + Vector2(1, 1));
  EXPECT_EQ(hub.requested, 1);
  Move({10, 300});
  hub.requested = 0;
  for (int x = 11; x < 100; ++x) Move({static_cast<double>(x), 300});
  EXPECT_EQ(hub.requested, 0);
}

TEST_F(ToolbarEventsTest, moves_without_allocating) {
  for (int i = 0; i < 2; ++i) {
    for (const int tag : {2, 3, 5}) Move(Middle(tag));
    Move(OUTSIDE);
  }
  journal.recording = false;
  toolbar.RemoveObserver(&observer);
  const AllocationCounter counter;
  for (int y = 0; y < 600; ++y) {
    toolbar.OnMouseMove(782, y);
    toolbar.OnMouseMove(10, y);
  }
  for (int i = 0; i < 10; ++i) toolbar.Refresh();
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

}  // namespace
