#include "korvane/mouse_wheel_zoom_tool.h"

#include <limits>

#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

namespace {

struct WheelTest : ::testing::Test {
  WheelTest() { bench.Wire(tool); }

  Lines Turn(int delta, int x = 100, int y = 200) {
    EXPECT_TRUE(tool.OnMouseWheel(x, y, delta));
    return bench.TakeAsked();
  }

  ToolBench bench;
  MouseWheelZoomTool tool;
};

}  // namespace

TEST_F(WheelTest, has_the_zoom_cursor_and_no_click_zoom) {
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ZOOM);
  EXPECT_FALSE(tool.GetClickZoomEnabled());
}

TEST_F(WheelTest, notches_move_the_virtual_cursor_four_pixels_each_from_where_the_gesture_began) {
  // A notch up is 4 pixels up: the row counts from the top, 767 - 200 - 4.
  EXPECT_EQ(Turn(120), Lines({"apply", "begin 5 at 100, 567", "begin record", "update 5 at 100, 563"}));
  EXPECT_EQ(Turn(120), Lines({"update 5 at 100, 559"}));
  EXPECT_EQ(Turn(-360, 300, 400), Lines({"update 5 at 100, 571"}));
}

TEST_F(WheelTest, a_delta_of_29_moves_it_nothing_and_is_kept_for_the_next_notch) {
  EXPECT_EQ(Turn(29).back(), "update 5 at 100, 567");
  EXPECT_EQ(Turn(1).back(), "update 5 at 100, 566");
  EXPECT_EQ(Turn(-59).back(), "update 5 at 100, 567");  // -29, cut toward zero
  EXPECT_EQ(Turn(-1).back(), "update 5 at 100, 568");
}

TEST_F(WheelTest, notches_during_a_gesture_restart_its_half_second_and_begin_no_second_record) {
  Turn(120);
  for (int i = 0; i < 5; ++i) {
    bench.Frame(tool, 499);
    EXPECT_TRUE(tool.IsOperating());
    Turn(120);
  }
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_EQ(bench.history.samples, 5);
}

TEST_F(WheelTest, the_gesture_ends_on_the_frame_half_a_second_after_the_last_notch) {
  Turn(120);
  bench.Frame(tool, 250);
  EXPECT_TRUE(bench.ball.IsVisible());
  bench.Frame(tool, 249);
  EXPECT_TRUE(tool.IsOperating());
  bench.Frame(tool, 1);
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_EQ(bench.history.samples, 2);
  EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_ZOOM));
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  bench.Frame(tool, 1000);
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(WheelTest, the_next_gesture_starts_anew) {
  Turn(120);
  bench.Frame(tool, 500);
  bench.TakeAsked();
  EXPECT_EQ(Turn(30, 10, 20), Lines({"apply", "begin 5 at 10, 747", "begin record", "update 5 at 10, 746"}));
  bench.Frame(tool, 499);
  EXPECT_TRUE(tool.IsOperating());
}

TEST_F(WheelTest, a_notch_away_from_the_user_zooms_in) {
  Turn(1200);
  bench.Frame(tool);
  EXPECT_LT((bench.hub.view.eye - bench.hub.view.pivot).Length(), 10.0);
}

TEST_F(WheelTest, the_mouse_is_swallowed_during_a_gesture_and_cannot_interfere) {
  EXPECT_FALSE(tool.OnMouseDown(1, 1));
  EXPECT_FALSE(tool.OnMouseMove(2, 2));
  EXPECT_FALSE(tool.OnMouseUp(3, 3));
  Turn(120);
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_TRUE(tool.OnMouseMove(200, 2));
  EXPECT_TRUE(tool.OnMouseUp(3, 3));
  EXPECT_TRUE(bench.TakeAsked().empty());
  EXPECT_TRUE(tool.IsOperating());
  EXPECT_EQ(tool.GetMouseX(), 3);
}

TEST_F(WheelTest, without_a_hub_a_notch_is_not_used) {
  tool.SetKorvane(nullptr);
  EXPECT_FALSE(tool.OnMouseWheel(1, 1, 120));
  EXPECT_FALSE(tool.IsOperating());
}

TEST_F(WheelTest, the_wheel_can_be_turned_without_end) {
  constexpr int HIGHEST = std::numeric_limits<int>::max();
  for (int i = 0; i < 3; ++i) {
    Turn(HIGHEST, 5, HIGHEST - 3);
    bench.Frame(tool);
  }
  EXPECT_TRUE(bench.hub.view.IsFinite());
}

TEST_F(WheelTest, where_a_host_enables_the_click_zoom_its_shot_ends_the_gesture) {
  tool.SetClickZoomEnabled(true);
  Turn(120);
  bench.Frame(tool, 500);
  EXPECT_TRUE(tool.IsAnimating());
  bench.RunFor(tool, 700);
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(WheelTest, every_parameter_is_put_back_at_the_end) {
  tool.SetConstrainZoom(true);
  bench.Parameters().zoom_back_distance = 77;
  Turn(120);
  EXPECT_NE(bench.Parameters().zoom_back_distance, 77);
  bench.Frame(tool, 500);
  EXPECT_EQ(bench.Parameters().zoom_back_distance, 77);
}

TEST_F(WheelTest, may_be_ended_before_its_pause_is_over) {
  Turn(120);
  tool.EndGesture();
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(bench.TakeAsked(), Lines({"end 5", "end record"}));
  EXPECT_FALSE(bench.ball.IsVisible());
  tool.EndGesture();
  EXPECT_TRUE(bench.TakeAsked().empty());
}
