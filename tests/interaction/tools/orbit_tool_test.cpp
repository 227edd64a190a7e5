#include "korvane/orbit_tool.h"

#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

namespace {

struct FixedOrbitTool : OrbitTool {
  FixedOrbitTool() { fixedAxesOrbit = true; }
};

template <class Each>
void ForBothFlags(Each each) {
  for (const bool a : {false, true}) {
    for (const bool b : {false, true}) each(a, b);
  }
}

}  // namespace

TEST(OrbitTool, has_the_orbit_cursor_and_keeps_the_scene_up) {
  OrbitTool tool;
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ORBIT);
  EXPECT_TRUE(tool.GetPreserveSceneUp());
}

TEST(OrbitTool, a_gesture_begins_updates_and_ends_one_operation_at_the_flipped_position) {
  ToolBench bench;
  OrbitTool tool;
  bench.Wire(tool);
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_TRUE(tool.IsOperating());
  EXPECT_TRUE(tool.WantCursorWrapping());
  EXPECT_TRUE(tool.OnMouseMove(110, 190));
  EXPECT_TRUE(tool.OnMouseUp(120, 180));
  EXPECT_FALSE(tool.IsOperating());
  // 768 - 200 - 1 and 768 - 190 - 1.
  EXPECT_EQ(bench.TakeAsked(), Lines({"constrain pivot", "begin 1 at 100, 567", "begin record",
                                      "update 1 at 110, 577", "end 1", "end record"}));
}

TEST(OrbitTool, marks_the_pivot_during_the_gesture_with_a_ball_of_its_proper_size) {
  ToolBench bench;
  OrbitTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(100, 200);
  EXPECT_TRUE(bench.ball.IsVisible());
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(1, 2, -3));
  // 45 degrees at a depth of 13: the view is 26 wide, a fortieth of which is 0.65.
  EXPECT_NEAR(bench.ball.GetSize(), 0.65, 1e-12);
  tool.OnMouseUp(100, 200);
  EXPECT_FALSE(bench.ball.IsVisible());
}

TEST(OrbitTool, brings_a_pivot_out_of_sight_back_into_the_view_before_it_is_marked) {
  ToolBench bench;
  bench.hub.view.pivot = {100, 0, 0};
  OrbitTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(100, 200);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(0, 0, 0));
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(0, 0, 0));
}

TEST(OrbitTool, sets_the_up_flags_for_the_gesture_and_restores_them_whatever_they_were) {
  ForBothFlags([](bool preserve, bool align) {
    for (const bool keepsUp : {false, true}) {
      ToolBench bench;
      OrbitTool tool;
      tool.SetPreserveSceneUp(keepsUp);
      bench.Wire(tool);
      bench.Parameters().preserve_orbit_up_direction = preserve;
      bench.Parameters().align_orbit_up_direction = align;
      tool.OnMouseDown(1, 1);
      EXPECT_EQ(bench.Parameters().preserve_orbit_up_direction, keepsUp);
      EXPECT_EQ(bench.Parameters().align_orbit_up_direction, keepsUp);
      EXPECT_FALSE(bench.Parameters().do_custom_orbit);
      tool.OnMouseUp(1, 1);
      EXPECT_EQ(bench.Parameters().preserve_orbit_up_direction, preserve);
      EXPECT_EQ(bench.Parameters().align_orbit_up_direction, align);
    }
  });
}

TEST(OrbitTool, about_fixed_axes_takes_those_of_the_world_and_does_not_straighten) {
  ForBothFlags([](bool preserve, bool align) {
    ToolBench bench;
    FixedOrbitTool tool;
    tool.SetPreserveSceneUp(!align);  // of no account
    bench.Wire(tool);
    ApplicationParameters& parameters = bench.Parameters();
    parameters.preserve_orbit_up_direction = preserve;
    parameters.align_orbit_up_direction = align;
    parameters.scene_up_direction = {0, 0, 1};
    parameters.scene_front_direction = {0, 1, 0};
    tool.OnMouseDown(1, 1);
    EXPECT_TRUE(parameters.do_custom_orbit);
    EXPECT_EQ(parameters.custom_orbit_up, Vector3(0, 0, 1));
    EXPECT_EQ(parameters.custom_orbit_front, Vector3(0, 1, 0));
    EXPECT_TRUE(parameters.preserve_orbit_up_direction);
    EXPECT_FALSE(parameters.align_orbit_up_direction);
    tool.OnMouseUp(1, 1);
    EXPECT_FALSE(parameters.do_custom_orbit);
    EXPECT_EQ(parameters.preserve_orbit_up_direction, preserve);
    EXPECT_EQ(parameters.align_orbit_up_direction, align);
  });
}

TEST(OrbitTool, about_fixed_axes_the_row_stays_that_of_the_press) {
  ToolBench bench;
  FixedOrbitTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(100, 200);
  bench.TakeAsked();
  tool.OnMouseMove(300, 700);
  EXPECT_EQ(bench.TakeAsked(), Lines({"update 1 at 300, 567"}));
}

TEST(OrbitTool, every_frame_of_the_gesture_is_sampled_into_the_record) {
  ToolBench bench;
  OrbitTool tool;
  bench.Wire(tool);
  bench.Frame(tool);
  EXPECT_EQ(bench.history.samples, 0);
  tool.OnMouseDown(100, 200);
  for (int i = 1; i <= 3; ++i) {
    tool.OnMouseMove(100 + 40 * i, 200);
    bench.Frame(tool);
    EXPECT_EQ(bench.history.samples, i);
    EXPECT_TRUE(SameBits(bench.history.sampleCamera, bench.hub.view));
  }
  tool.OnMouseUp(250, 200);
  bench.Frame(tool);
  EXPECT_EQ(bench.history.samples, 3);
  EXPECT_TRUE(SameBits(bench.history.endCamera, bench.hub.view));
  EXPECT_FALSE(bench.hub.view.eye == Vector3(0, 0, 10));
}

TEST(OrbitTool, moves_and_releases_without_a_press_are_not_used) {
  ToolBench bench;
  OrbitTool tool;
  bench.Wire(tool);
  EXPECT_FALSE(tool.OnMouseMove(1, 1));
  EXPECT_FALSE(tool.OnMouseUp(1, 1));
  EXPECT_TRUE(bench.TakeAsked().empty());
}

TEST(OrbitTool, a_press_whose_release_went_missing_is_closed_by_the_next_press) {
  ToolBench bench;
  OrbitTool tool;
  bench.Wire(tool);
  bench.Parameters().preserve_orbit_up_direction = false;
  tool.OnMouseDown(1, 1);
  tool.OnMouseDown(2, 2);
  EXPECT_TRUE(bench.history.Has(2, 1));
  tool.OnMouseUp(2, 2);
  EXPECT_TRUE(bench.history.Has(2, 2));
  EXPECT_FALSE(bench.Parameters().preserve_orbit_up_direction);
}
