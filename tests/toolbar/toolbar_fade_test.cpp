#include <gtest/gtest.h>

#include "toolbar/strip_fade.h"
#include "toolbar/toolbar_scene.h"

using namespace Korvane;

namespace {

class ToolbarFadeTest : public ToolbarScene, public ::testing::Test {
 protected:
  ToolbarFadeTest() { Start(); }
  ~ToolbarFadeTest() override {
    Toolbar::SetFadeDistanceFactor(Toolbar::DEFAULT_FADE_DISTANCE_FACTOR);
    Toolbar::SetFadeStepValue(Toolbar::DEFAULT_FADE_STEP_VALUE);
  }

  double OpacityAt(double x, double y) {
    toolbar.open.fade.opacity.SetValue(0.123);
    Move({x, y});
    return toolbar.open.fade.Get();
  }

  static constexpr double LEAST = 0.3F;
};

TEST_F(ToolbarFadeTest, has_its_constants) {
  EXPECT_EQ(Toolbar::DEFAULT_FADE_DISTANCE_FACTOR, 2.0);
  EXPECT_EQ(Toolbar::DEFAULT_FADE_STEP_VALUE, 0.01);
  EXPECT_EQ(Toolbar::POSITION_ANIMATION_TIME, 0.2);
  EXPECT_EQ(Toolbar::OPACITY_ANIMATION_TIME, 0.5);
  EXPECT_EQ(Toolbar::SIZE_ANIMATION_TIME, 0.2);
  EXPECT_EQ(Toolbar::sm_fadeDistanceFactor, 2.0);
  EXPECT_EQ(Toolbar::sm_fadeStepValue, 0.01);
  EXPECT_EQ(toolbar.open.fade.minimum, 0.3F);
  EXPECT_EQ(toolbar.open.fade.maximum, 1.0F);
  struct Row {
    ColorRGBA color;
    double r, g, b, a;
  };
  const Row rows[] = {
      {Toolbar::DEFAULT_BACKGROUND_COLOR, 225.0 / 255, 225.0 / 255, 225.0 / 255, 0.65},
      {Toolbar::DEFAULT_BORDER_COLOR, 0, 0, 0, 0.5},
      {Toolbar::DEFAULT_HIGHLIGHT_COLOR, 1, 1, 1, 0.25},
      {Toolbar::DEFAULT_MOUSEOVER_COLOR, 0.71, 0.84, 0.95, 1},
      {Toolbar::DEFAULT_MOUSEDOWN_COLOR, 184.0 / 255, 214.0 / 255, 242.0 / 255, 1},
      {Toolbar::DEFAULT_OUTLINE_COLOR, 1.0 / 255, 96.0 / 255, 191.0 / 255, 1},
      {Toolbar::DEFAULT_SELECTED_COLOR, 185.0 / 255, 215.0 / 255, 243.0 / 255, 1},
      {Toolbar::DEFAULT_GRIP_COLOR, 187.0 / 255, 187.0 / 255, 187.0 / 255, 1},
      {Toolbar::DEFAULT_SEPARATOR_COLOR, 0, 0, 0, 0.2},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.color.r, row.r);
    EXPECT_EQ(row.color.g, row.g);
    EXPECT_EQ(row.color.b, row.b);
    EXPECT_EQ(row.color.a, row.a);
  }
}

// The smaller extent is 18, so d is 36: full opacity from x = 764 - 36 = 728, the least from 728 - 144 = 584.
TEST_F(ToolbarFadeTest, at_4_d_past_the_box_the_opacity_is_the_minimum) {
  EXPECT_EQ(OpacityAt(770, 300), 1.0);
  EXPECT_EQ(OpacityAt(728, 300), 1.0);
  EXPECT_EQ(OpacityAt(584, 300), LEAST);
  EXPECT_EQ(OpacityAt(100, 300), LEAST);
  EXPECT_GT(OpacityAt(585, 300), LEAST);
  // The ease is a half in the middle.
  EXPECT_DOUBLE_EQ(OpacityAt(656, 300), (1.0 - LEAST) * 0.5 + LEAST);
}

// Above: 361.5 + 36 = 397.5 and 541.5; the smaller of the two axes counts.
TEST_F(ToolbarFadeTest, counts_the_axis_on_which_the_mouse_is_farther) {
  EXPECT_DOUBLE_EQ(OpacityAt(782, 397), 1.0);
  EXPECT_EQ(OpacityAt(782, 542), LEAST);
  EXPECT_EQ(OpacityAt(656, 542), LEAST);
  EXPECT_DOUBLE_EQ(OpacityAt(656, 390), (1.0 - LEAST) * 0.5 + LEAST);
}

TEST_F(ToolbarFadeTest, a_press_on_an_item_keeps_the_maximum_wherever_the_mouse_is) {
  Press(Middle(2));
  EXPECT_EQ(OpacityAt(10, 300), 1.0);
  Release({10, 300});
  EXPECT_EQ(OpacityAt(11, 300), LEAST);
}

TEST_F(ToolbarFadeTest, a_drag_elsewhere_and_a_disabled_strip_have_the_minimum) {
  hub.GetApplicationParameters().mouse_drag = true;
  EXPECT_EQ(OpacityAt(770, 300), LEAST);
  hub.GetApplicationParameters().mouse_drag = false;
  EXPECT_EQ(OpacityAt(770, 300), 1.0);
  toolbar.SetDisabled(true);
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST);
}

TEST_F(ToolbarFadeTest, a_drag_elsewhere_fades_the_strip_in_its_frame) {
  Move({770, 300});
  hub.GetApplicationParameters().mouse_drag = true;
  toolbar.Draw();
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST);
}

TEST_F(ToolbarFadeTest, steps_below_a_hundredth_cause_no_frame) {
  Move({10, 300});
  hub.requested = 0;
  toolbar.open.fade.opacity.SetValue(LEAST + 0.0099);
  Move({11, 300});
  EXPECT_EQ(hub.requested, 0);
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST + 0.0099);
  toolbar.open.fade.opacity.SetValue(LEAST + 0.011);
  Move({12, 300});
  EXPECT_EQ(hub.requested, 1);
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST);
}

TEST_F(ToolbarFadeTest, distance_and_step_are_set_for_all_toolbars) {
  Toolbar::SetFadeDistanceFactor(1.0);
  EXPECT_EQ(OpacityAt(764 - 18 - 72, 300), LEAST);
  Toolbar::SetFadeStepValue(0.5);
  toolbar.open.fade.opacity.SetValue(LEAST + 0.5);
  Move({10, 300});
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST + 0.5);
  for (const double bad : {-1.0, std::nan(""), HUGE_VAL}) {
    Toolbar::SetFadeDistanceFactor(bad);
    Toolbar::SetFadeStepValue(bad);
    EXPECT_EQ(Toolbar::sm_fadeDistanceFactor, 1.0);
    EXPECT_EQ(Toolbar::sm_fadeStepValue, 0.5);
  }
}

// ---- coming and going ----

TEST_F(ToolbarFadeTest, without_animation_it_comes_and_goes_at_once) {
  toolbar.SetVisible(false);
  EXPECT_FALSE(toolbar.IsVisible());
  EXPECT_FALSE(toolbar.open.fade.inProgress);
  toolbar.SetVisible(true);
  EXPECT_TRUE(toolbar.IsVisible());
}

TEST_F(ToolbarFadeTest, stays_visible_while_it_fades_out) {
  Move({770, 300});
  toolbar.SetWantAnimation(true);
  toolbar.SetVisible(false);
  EXPECT_TRUE(toolbar.IsVisible());
  platform.Advance(250);
  EXPECT_NEAR(toolbar.open.fade.Get(), 0.5, 1e-9);
  toolbar.Draw();
  EXPECT_TRUE(toolbar.IsVisible());
  EXPECT_GT(renderer.CountCalls("BeginRender"), 0);
  EXPECT_GT(hub.requested, 0);
  platform.Advance(260);
  EXPECT_EQ(toolbar.open.fade.Get(), 0.0);
  EXPECT_FALSE(toolbar.IsVisible());
  Settle();
  Forget();
  toolbar.Draw();
  EXPECT_EQ(hub.requested, 0);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
}

TEST_F(ToolbarFadeTest, fades_in_from_nothing_to_what_the_mouse_makes_it) {
  toolbar.SetWantAnimation(true);
  toolbar.SetVisible(false);
  Settle();
  Move({100, 300});
  toolbar.SetVisible(true);
  EXPECT_EQ(toolbar.open.fade.Get(), 0.0);
  platform.Advance(250);
  EXPECT_NEAR(toolbar.open.fade.Get(), LEAST / 2.0, 1e-9);
  Settle();
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST);
}

TEST_F(ToolbarFadeTest, turns_back_where_it_is) {
  Move({770, 300});
  toolbar.SetWantAnimation(true);
  toolbar.SetVisible(false);
  Settle();
  toolbar.SetVisible(true);
  platform.Advance(250);
  const double half = toolbar.open.fade.Get();
  EXPECT_GT(half, 0.0);
  toolbar.SetVisible(false);
  EXPECT_EQ(toolbar.open.fade.Get(), half);
}

TEST_F(ToolbarFadeTest, to_show_what_fades_in_already_stops_the_fade_and_asks_for_a_frame) {
  toolbar.SetWantAnimation(true);
  toolbar.SetVisible(false);
  Settle();
  Move({100, 300});
  toolbar.SetVisible(true);
  platform.Advance(250);
  Forget();
  toolbar.SetVisible(true);
  EXPECT_EQ(toolbar.open.fade.Get(), LEAST);
  EXPECT_FALSE(toolbar.open.fade.inProgress);
  EXPECT_EQ(hub.requested, 1);
  toolbar.SetVisible(true);
  EXPECT_EQ(hub.requested, 1);
}

TEST_F(ToolbarFadeTest, to_hide_what_fades_out_already_hides_it_at_once) {
  toolbar.SetWantAnimation(true);
  toolbar.SetVisible(false);
  platform.Advance(100);
  Forget();
  toolbar.SetVisible(false);
  EXPECT_FALSE(toolbar.IsVisible());
  EXPECT_EQ(hub.requested, 1);
  toolbar.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
}

TEST_F(ToolbarFadeTest, a_strip_on_its_way_out_takes_no_press) {
  toolbar.SetWantAnimation(true);
  const Vector2 place = Middle(2);
  toolbar.SetVisible(false);
  EXPECT_FALSE(Press(place));
  EXPECT_TRUE(journal.Take().empty());
}

TEST(StripNearness, falls_alike_on_each_of_the_four_sides) {
  const Box2 strip({100, 80}, {20, 10});
  constexpr double distance = 5.0;
  for (int way = 0; way <= 40; ++way) {
    const double right = GetNearness(strip, {120.0 + way, 80}, distance);
    EXPECT_NEAR(GetNearness(strip, {80.0 - way, 80}, distance), right, 1e-12) << way;
    EXPECT_NEAR(GetNearness(strip, {100, 90.0 + way}, distance), right, 1e-12) << way;
    EXPECT_NEAR(GetNearness(strip, {100, 70.0 - way}, distance), right, 1e-12) << way;
  }
  EXPECT_NEAR(GetNearness(strip, {120 + 3 * distance, 80}, distance), 0.5, 1e-12);
}

}  // namespace
