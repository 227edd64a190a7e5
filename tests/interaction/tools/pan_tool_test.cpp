#include "korvane/pan_tool.h"

#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

TEST(PanTool, has_the_pan_cursor) { EXPECT_EQ(PanTool().GetCursorID(), CURSOR_PAN); }

TEST(PanTool, a_gesture_begins_updates_and_ends_one_operation_at_the_flipped_position) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_TRUE(tool.WantCursorWrapping());
  EXPECT_TRUE(tool.OnMouseMove(110, 190));
  EXPECT_TRUE(tool.OnMouseUp(120, 180));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(bench.TakeAsked(), Lines({"apply", "begin 0 at 100, 567", "begin record", "update 0 at 110, 577",
                                      "end 0", "apply", "end record"}));
}

TEST(PanTool, is_anchored_at_what_is_under_the_cursor) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  // The middle of the view: the ray runs from (0, 0, 10) along -z.
  bench.renderer.scene = [](const Vector3& origin, const Vector3& direction) {
    EXPECT_EQ(origin, Vector3(0, 0, 10));
    EXPECT_NEAR(direction.x, 0.0, 1e-12);
    EXPECT_NEAR(direction.y, 0.0, 1e-12);
    EXPECT_NEAR(direction.z, -10.0, 1e-12);
    return Vector3(0, 0, 4);
  };
  tool.OnMouseDown(512, 384);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(0, 0, 4));
}

TEST(PanTool, over_nothing_it_is_anchored_at_the_end_of_the_ray) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  // The right edge of a view of 45 degrees, 10 away.
  tool.OnMouseDown(1024, 384);
  EXPECT_NEAR(bench.hub.view.pivot.x, 10.0, 1e-12);
  EXPECT_NEAR(bench.hub.view.pivot.y, 0.0, 1e-12);
  EXPECT_NEAR(bench.hub.view.pivot.z, 0.0, 1e-12);
}

TEST(PanTool, a_press_that_is_cut_off_while_it_ends_the_former_one_begins_nothing) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(1, 1);
  bench.history.onEnd = [&] { tool.EndGesture(); };
  tool.OnMouseDown(2, 2);
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_PAN));
}

TEST(PanTool, a_gesture_leaves_the_pivot_of_the_camera_as_it_found_it) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  bench.renderer.scene = [](const Vector3&, const Vector3&) { return Vector3(0, 0, 4); };
  tool.OnMouseDown(512, 384);
  tool.OnMouseMove(600, 384);
  bench.Frame(tool);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(0, 0, 4));
  tool.OnMouseUp(600, 384);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
  EXPECT_LT(bench.hub.view.eye.x, -0.1);  // the scene follows the cursor to the right
}

TEST(PanTool, the_record_holds_cameras_with_their_own_pivot_so_that_a_click_leaves_both_ends_equal) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  bench.renderer.scene = [](const Vector3&, const Vector3&) { return Vector3(0, 0, 4); };
  tool.OnMouseDown(512, 384);
  bench.Frame(tool);
  tool.OnMouseUp(512, 384);
  EXPECT_EQ(bench.history.beginCamera.pivot, Vector3(1, 2, -3));
  EXPECT_TRUE(CameraCheckEqual(&bench.history.beginCamera, &bench.history.endCamera));
}

TEST(PanTool, every_frame_of_the_gesture_is_sampled_into_the_record) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(512, 384);
  bench.Frame(tool);
  bench.Frame(tool);
  tool.OnMouseUp(512, 384);
  bench.Frame(tool);
  EXPECT_EQ(bench.history.samples, 2);
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST(PanTool, a_press_whose_release_went_missing_is_closed_by_the_next_press) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(10, 10);
  tool.OnMouseDown(20, 20);
  tool.OnMouseUp(20, 20);
  EXPECT_TRUE(bench.history.Has(2, 2));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
}

TEST(PanTool, moves_and_releases_without_a_press_are_not_used) {
  ToolBench bench;
  PanTool tool;
  bench.Wire(tool);
  EXPECT_FALSE(tool.OnMouseMove(1, 1));
  EXPECT_FALSE(tool.OnMouseUp(1, 1));
  EXPECT_TRUE(bench.TakeAsked().empty());
}

TEST(PanToolHubs, the_pivot_of_one_hub_is_not_put_into_the_camera_of_another) {
  ToolBench bench;
  ToolHub other(bench.hub.view);
  other.view.pivot = {7, 8, 9};
  PanTool tool;
  bench.Wire(tool);
  tool.OnMouseDown(100, 200);
  tool.SetKorvane(&other);
  tool.OnMouseUp(100, 200);
  EXPECT_EQ(other.view.pivot, Vector3(7, 8, 9));
}
