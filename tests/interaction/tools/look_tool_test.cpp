#include "korvane/look_tool.h"

#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

TEST(LookTool, has_the_look_cursor) { EXPECT_EQ(LookTool().GetCursorID(), CURSOR_LOOK); }

TEST(LookTool, a_gesture_begins_updates_and_ends_one_operation_at_the_flipped_position) {
  ToolBench bench;
  LookTool tool;
  bench.Wire(tool);
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_TRUE(tool.WantCursorWrapping());
  EXPECT_TRUE(tool.OnMouseMove(110, 190));
  bench.Frame(tool);
  EXPECT_TRUE(tool.OnMouseUp(120, 180));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(bench.TakeAsked(), Lines({"begin 2 at 100, 567", "begin record", "update 2 at 110, 577", "apply",
                                      "end 2", "end record"}));
  EXPECT_EQ(bench.history.samples, 1);
}

TEST(LookTool, restores_both_parameters_on_release_whatever_they_were) {
  for (int bits = 0; bits < 16; ++bits) {
    const bool inverted = (bits & 1) != 0;
    const bool aligned = (bits & 2) != 0;
    const bool invert = (bits & 4) != 0;
    const bool align = (bits & 8) != 0;
    ToolBench bench;
    LookTool tool;
    bench.Wire(tool);
    tool.SetInvertVerticalAxis(invert);
    tool.SetAlignUpDirection(align);
    bench.Parameters().look_invert_vertical_axis = inverted;
    bench.Parameters().align_orbit_up_direction = aligned;
    tool.OnMouseDown(1, 1);
    EXPECT_EQ(bench.Parameters().look_invert_vertical_axis, invert);
    EXPECT_EQ(bench.Parameters().align_orbit_up_direction, align);
    tool.OnMouseUp(1, 1);
    EXPECT_EQ(bench.Parameters().look_invert_vertical_axis, inverted);
    EXPECT_EQ(bench.Parameters().align_orbit_up_direction, aligned);
  }
}

TEST(LookTool, by_default_it_keeps_upright_and_does_not_invert) {
  ToolBench bench;
  LookTool tool;
  bench.Wire(tool);
  bench.Parameters().look_invert_vertical_axis = true;
  bench.Parameters().align_orbit_up_direction = false;
  tool.OnMouseDown(1, 1);
  EXPECT_FALSE(bench.Parameters().look_invert_vertical_axis);
  EXPECT_TRUE(bench.Parameters().align_orbit_up_direction);
}

TEST(LookTool, a_press_whose_release_went_missing_is_closed_by_the_next_press) {
  ToolBench bench;
  LookTool tool;
  bench.Wire(tool);
  bench.Parameters().look_invert_vertical_axis = true;
  tool.OnMouseDown(1, 1);
  tool.OnMouseDown(2, 2);
  tool.OnMouseUp(2, 2);
  EXPECT_TRUE(bench.history.Has(2, 2));
  EXPECT_TRUE(bench.Parameters().look_invert_vertical_axis);
}

TEST(LookTool, moves_and_releases_without_a_press_are_not_used) {
  ToolBench bench;
  LookTool tool;
  bench.Wire(tool);
  EXPECT_FALSE(tool.OnMouseMove(1, 1));
  EXPECT_FALSE(tool.OnMouseUp(1, 1));
  EXPECT_TRUE(bench.TakeAsked().empty());
}
