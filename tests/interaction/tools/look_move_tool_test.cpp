#include "korvane/look_move_tool.h"

#include <limits>

#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

namespace {

struct LookMoveTest : ::testing::Test {
  LookMoveTest() { bench.Wire(tool); }

  ToolBench bench;
  LookMoveTool tool;
};

}  // namespace

TEST_F(LookMoveTest, runs_a_look_and_a_slide_together) {
  EXPECT_EQ(tool.GetCursorID(), CURSOR_LOOK);
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_TRUE(tool.OnMouseMove(110, 190));
  EXPECT_TRUE(tool.OnMouseUp(110, 190));
  EXPECT_EQ(bench.TakeAsked(), Lines({"begin 2 at 100, 567", "begin record", "begin 8 at 0, 0",
                                      "update 2 at 110, 577", "end 8", "end 2", "end record"}));
}

TEST_F(LookMoveTest, four_keys_steer_the_slide_with_the_speed_in_thousandths) {
  tool.OnMouseDown(100, 200);
  bench.TakeAsked();
  struct Row {
    KeyID key;
    const char* down;
  };
  for (const Row& row : {Row{KEY_RIGHT, "update 8 at 1000, 0"}, Row{KEY_LEFT, "update 8 at -1000, 0"},
                         Row{KEY_UP, "update 8 at 0, 1000"}, Row{KEY_DOWN, "update 8 at 0, -1000"}}) {
    EXPECT_TRUE(tool.OnKeyDown(row.key));
    EXPECT_EQ(bench.TakeAsked(), Lines({row.down}));
    EXPECT_TRUE(tool.OnKeyUp(row.key));
    EXPECT_EQ(bench.TakeAsked(), Lines({"update 8 at 0, 0"}));
  }
}

TEST_F(LookMoveTest, opposite_keys_cancel_and_neighbours_add) {
  tool.OnMouseDown(100, 200);
  tool.OnKeyDown(KEY_RIGHT);
  tool.OnKeyDown(KEY_UP);
  EXPECT_EQ(bench.TakeAsked().back(), "update 8 at 1000, 1000");
  tool.OnKeyDown(KEY_LEFT);
  EXPECT_EQ(bench.TakeAsked().back(), "update 8 at 0, 1000");
}

TEST_F(LookMoveTest, the_speed_is_cut_to_whole_thousandths) {
  tool.OnMouseDown(100, 200);
  struct Row {
    double factor;
    const char* right;
  };
  constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
  for (const Row& row : {Row{2.5, "update 8 at 2500, 0"}, Row{0.0019, "update 8 at 1, 0"},
                         Row{1e300, "update 8 at 2147483647, 0"}, Row{NOT_A_NUMBER, "update 8 at 0, 0"}}) {
    tool.SetSpeedFactor(row.factor);
    tool.OnKeyDown(KEY_RIGHT);
    EXPECT_EQ(bench.TakeAsked().back(), row.right);
  }
}

TEST_F(LookMoveTest, keys_outside_a_drag_do_nothing_and_are_not_used) {
  for (const KeyID key : {KEY_UP, KEY_DOWN, KEY_RIGHT, KEY_LEFT}) {
    EXPECT_FALSE(tool.OnKeyDown(key));
    EXPECT_FALSE(tool.OnKeyUp(key));
  }
  tool.OnMouseDown(100, 200);
  tool.OnMouseUp(100, 200);
  bench.TakeAsked();
  EXPECT_FALSE(tool.OnKeyDown(KEY_UP));
  EXPECT_TRUE(bench.TakeAsked().empty());
}

TEST_F(LookMoveTest, other_keys_are_not_used_in_a_drag_either) {
  tool.OnMouseDown(100, 200);
  bench.TakeAsked();
  for (int key = KEY_SHIFT; key <= KEY_SPACE; ++key) {
    if (key >= KEY_UP && key <= KEY_LEFT) continue;
    EXPECT_FALSE(tool.OnKeyDown(static_cast<KeyID>(key))) << key;
    EXPECT_FALSE(tool.OnKeyUp(static_cast<KeyID>(key))) << key;
  }
  EXPECT_TRUE(bench.TakeAsked().empty());
}

TEST_F(LookMoveTest, shift_is_tracked) {
  tool.OnKeyDown(KEY_SHIFT);
  EXPECT_TRUE(tool.IsShiftKeyDown());
  tool.OnKeyUp(KEY_SHIFT);
  EXPECT_FALSE(tool.IsShiftKeyDown());
}

TEST_F(LookMoveTest, a_key_still_held_from_the_last_drag_does_not_count_in_the_next) {
  for (const KeyID held : {KEY_RIGHT, KEY_LEFT, KEY_UP, KEY_DOWN}) {
    const bool sideways = held == KEY_RIGHT || held == KEY_LEFT;
    tool.OnMouseDown(100, 200);
    tool.OnKeyDown(held);
    tool.OnMouseUp(100, 200);
    tool.OnMouseDown(100, 200);
    tool.OnKeyDown(sideways ? KEY_UP : KEY_RIGHT);
    EXPECT_EQ(bench.TakeAsked().back(), sideways ? "update 8 at 0, 1000" : "update 8 at 1000, 0") << held;
    tool.OnMouseUp(100, 200);
  }
}

TEST_F(LookMoveTest, a_press_whose_release_went_missing_ends_both_operations) {
  tool.OnMouseDown(1, 1);
  tool.OnMouseDown(2, 2);
  tool.OnMouseUp(2, 2);
  EXPECT_TRUE(bench.history.Has(2, 2));
  EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_ALL));
}

TEST_F(LookMoveTest, the_slide_ends_while_the_drag_still_goes_on_at_its_last_position) {
  EndListener listener;
  std::vector<std::string> heard;
  listener.onEnd = [&](OperationType type) {
    std::ostringstream line;
    line << type << " at " << tool.GetMouseX() << (tool.IsOperating() ? " operating" : "")
         << (tool.IsMouseDragging() ? " dragging" : "");
    heard.push_back(line.str());
  };
  bench.hub.AddOperationObserver(&listener);
  tool.OnMouseDown(100, 200);
  tool.OnMouseMove(110, 190);
  tool.OnMouseUp(120, 180);
  EXPECT_EQ(heard, Lines({"8 at 110 operating dragging", "2 at 120"}));
  bench.hub.RemoveOperationObserver(&listener);
}

TEST_F(LookMoveTest, an_end_within_its_end_closes_all_once_and_a_press_there_begins_nothing) {
  EndListener listener;
  listener.onEnd = [this](OperationType type) {
    if (type != OPERATION_SLIDE) return;
    tool.OnMouseUp(120, 180);
    tool.OnMouseDown(130, 180);
  };
  bench.hub.AddOperationObserver(&listener);
  tool.OnMouseDown(100, 200);
  tool.OnMouseUp(120, 180);
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_ALL));
  bench.hub.RemoveOperationObserver(&listener);
}
