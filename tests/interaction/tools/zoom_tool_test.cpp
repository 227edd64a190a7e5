#include "korvane/zoom_tool.h"

#include <cmath>
#include <limits>

#include "interaction/tools/tool_fakes.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

struct ZoomToolTest : ::testing::Test {
  ZoomToolTest() { bench.Wire(tool); }

  void Click(int x, int y) {
    tool.OnMouseDown(x, y);
    tool.OnMouseUp(x, y);
  }

  ToolBench bench;
  ZoomTool tool;
};

}  // namespace

TEST(ZoomTool, adds_three_virtual_operations_after_those_of_the_base) {
  EXPECT_EQ(VirtualSlot(&ZoomTool::BeginZoom), 14);
  EXPECT_EQ(VirtualSlot(&ZoomTool::UpdateZoom), 15);
  EXPECT_EQ(VirtualSlot(&ZoomTool::EndZoom), 16);
}

TEST_F(ZoomToolTest, has_the_zoom_cursor_and_zooms_by_clicks) {
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ZOOM);
  EXPECT_TRUE(tool.GetClickZoomEnabled());
}

TEST_F(ZoomToolTest, a_drag_begins_updates_and_ends_one_operation_at_the_flipped_position) {
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_TRUE(tool.OnMouseMove(110, 190));
  EXPECT_TRUE(tool.OnMouseUp(120, 180));
  EXPECT_EQ(bench.TakeAsked(), Lines({"apply", "begin 5 at 100, 567", "begin record", "update 5 at 110, 577",
                                      "end 5", "end record"}));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_FALSE(bench.ball.IsVisible());
}

TEST_F(ZoomToolTest, a_move_that_is_no_drag_yet_updates_nothing) {
  tool.OnMouseDown(100, 200);
  bench.TakeAsked();
  EXPECT_FALSE(tool.OnMouseMove(100, 200));
  EXPECT_TRUE(bench.TakeAsked().empty());
}

TEST_F(ZoomToolTest, the_point_under_the_cursor_becomes_the_marked_pivot_and_stays_it) {
  bench.renderer.scene = [](const Vector3&, const Vector3&) { return Vector3(1, 0, 5); };
  tool.OnMouseDown(512, 384);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 0, 5));
  EXPECT_TRUE(bench.ball.IsVisible());
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(1, 0, 5));
  EXPECT_NEAR(bench.ball.GetSize(), 0.25, 1e-12);  // a view of 10 at a depth of 5, a fortieth
  tool.OnMouseMove(520, 384);
  tool.OnMouseUp(520, 384);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 0, 5));
}

TEST_F(ZoomToolTest, about_the_current_pivot_asks_the_scene_nothing) {
  tool.SetUseCurrentPivotPoint(true);
  tool.OnMouseDown(100, 200);
  EXPECT_EQ(bench.renderer.rays, 0);
  EXPECT_EQ(bench.TakeAsked(), Lines({"constrain pivot", "begin 5 at 100, 567", "begin record"}));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(1, 2, -3));
  EXPECT_TRUE(bench.ball.IsVisible());
}

TEST_F(ZoomToolTest, a_press_and_release_with_no_movement_zooms_in_by_a_shot) {
  Click(512, 384);
  EXPECT_EQ(bench.TakeAsked(), Lines({"apply", "begin 5 at 512, 383", "begin record", "end 5", "zoom shot"}));
  EXPECT_EQ(bench.hub.zoomShot.direction, ZoomShotParameters::DIRECTION_IN);
  EXPECT_EQ(bench.hub.zoomShot.anchor, TARGET_CAM_START);
  EXPECT_EQ(bench.hub.zoomShot.duration, 0.5);
  EXPECT_EQ(bench.hub.zoomShot.amount, 0.3333333333333333);
  EXPECT_TRUE(tool.IsAnimating());
  EXPECT_FALSE(tool.IsOperating());
}

TEST_F(ZoomToolTest, a_press_and_release_with_shift_zooms_out_by_a_shot) {
  tool.OnKeyDown(KEY_SHIFT);
  Click(512, 384);
  EXPECT_EQ(bench.hub.zoomShot.direction, ZoomShotParameters::DIRECTION_OUT);
  EXPECT_EQ(bench.hub.zoomShot.amount, 0.5);
  EXPECT_EQ(bench.hub.zoomShot.duration, 0.5);
}

TEST_F(ZoomToolTest, with_click_zoom_disabled_a_click_ends_at_once) {
  tool.SetClickZoomEnabled(false);
  EXPECT_FALSE(tool.GetClickZoomEnabled());
  Click(512, 384);
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(ZoomToolTest, the_record_of_a_click_stays_open_until_the_draw_that_finds_the_shot_over) {
  Click(512, 384);
  EXPECT_TRUE(bench.ball.IsVisible());
  bench.Frame(tool);
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_EQ(bench.history.samples, 1);
  bench.RunFor(tool, 700);
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_FALSE(bench.ball.IsVisible());
  // A third of the way from 10 to the end of the ray through the middle, 0.
  EXPECT_NEAR(bench.hub.view.eye.z, 10.0 * 2.0 / 3.0, 1e-9);
  const int samples = bench.history.samples;
  bench.Frame(tool);
  EXPECT_EQ(bench.history.samples, samples);
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(ZoomToolTest, while_the_shot_runs_all_input_is_swallowed) {
  Click(512, 384);
  bench.TakeAsked();
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_TRUE(tool.OnMouseMove(50, 50));
  EXPECT_TRUE(tool.OnMouseUp(60, 60));
  EXPECT_TRUE(bench.TakeAsked().empty());
  EXPECT_TRUE(bench.history.Has(1, 0));
}

TEST_F(ZoomToolTest, a_second_begin_is_refused_while_a_gesture_goes_on) {
  EXPECT_TRUE(tool.BeginZoom(1, 1));
  EXPECT_FALSE(tool.BeginZoom(2, 2));
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_TRUE(tool.EndZoom());
  EXPECT_FALSE(tool.EndZoom());
  EXPECT_FALSE(tool.UpdateZoom(3, 3));
}

TEST_F(ZoomToolTest, every_parameter_that_the_gesture_or_the_host_changed_in_it_is_put_back) {
  tool.SetConstrainZoom(true);
  ApplicationParameters& parameters = bench.Parameters();
  parameters.zoom_back_distance = 77;
  parameters.zoom_min_limit_motion = true;
  parameters.pan_multiplier = 3;
  tool.OnMouseDown(512, 384);
  EXPECT_FALSE(parameters.zoom_min_limit_motion);
  EXPECT_NE(parameters.zoom_back_distance, 77);
  parameters.pan_multiplier = 5;
  parameters.scene_scale = 9;
  tool.OnMouseMove(520, 384);
  tool.OnMouseUp(520, 384);
  EXPECT_EQ(parameters.zoom_back_distance, 77);
  EXPECT_TRUE(parameters.zoom_min_limit_motion);
  EXPECT_EQ(parameters.pan_multiplier, 3);
  EXPECT_EQ(parameters.scene_scale, 1);
}

TEST_F(ZoomToolTest, whoever_hears_of_the_end_finds_the_parameters_put_back) {
  double found = -1.0;
  EndListener listener;
  listener.onEnd = [&](OperationType) { found = bench.Parameters().zoom_back_distance; };
  bench.hub.AddOperationObserver(&listener);
  tool.SetConstrainZoom(true);
  bench.Parameters().zoom_back_distance = 77;
  tool.OnMouseDown(512, 384);
  tool.OnMouseMove(520, 384);
  tool.OnMouseUp(520, 384);
  EXPECT_EQ(found, 77);
  bench.hub.RemoveOperationObserver(&listener);
}

TEST_F(ZoomToolTest, whoever_hears_of_the_end_may_still_forbid_the_click) {
  EndListener listener;
  listener.onEnd = [this](OperationType) { tool.SetClickZoomEnabled(false); };
  bench.hub.AddOperationObserver(&listener);
  Click(512, 384);
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_TRUE(bench.history.Has(1, 1));
  bench.hub.RemoveOperationObserver(&listener);
}

TEST_F(ZoomToolTest, a_window_resized_in_the_gesture_keeps_its_new_size) {
  tool.OnMouseDown(512, 384);
  bench.Parameters().viewport_width = 640;
  bench.Parameters().viewport_height = 480;
  tool.OnMouseMove(520, 384);
  tool.OnMouseUp(520, 384);
  EXPECT_EQ(bench.Parameters().viewport_width, 640);
  EXPECT_EQ(bench.Parameters().viewport_height, 480);
}

TEST_F(ZoomToolTest, without_the_constraint_the_limits_stay) {
  bench.Parameters().zoom_back_distance = 77;
  tool.OnMouseDown(512, 384);
  EXPECT_EQ(bench.Parameters().zoom_back_distance, 77);
  EXPECT_EQ(bench.Parameters().zoom_min_limit_motion, ApplicationParameters::defaultZoomMinLimitMotion);
}

TEST_F(ZoomToolTest, a_constrained_zoom_goes_out_until_the_view_is_eight_scene_radii_wide) {
  tool.SetConstrainZoom(true);
  ApplicationParameters& parameters = bench.Parameters();
  parameters.scene_bound_radius = 7;
  parameters.scene_bound_centre = {3, 4, 1};  // 9 ahead of the eye
  bench.hub.view = WithAsymmetricFrustum(bench.hub.view, 40, 30, 20, 25);
  tool.OnMouseDown(512, 384);
  const auto tan = [](double degrees) { return std::tan(degrees * 3.14159265358979323846 / 180.0); };
  const double horizontal = 28.0 / (tan(40) + tan(30));
  const double vertical = 28.0 / (tan(20) + tan(25));  // the narrower side rules
  EXPECT_GT(vertical, horizontal);
  EXPECT_NEAR(parameters.zoom_back_distance, vertical - 9.0, 1e-12);
}

TEST_F(ZoomToolTest, a_constrained_orthographic_zoom_goes_out_eight_scene_radii) {
  tool.SetConstrainZoom(true);
  bench.Parameters().scene_bound_radius = 7;
  bench.Parameters().scene_bound_centre = {0, 0, 20};  // 10 behind the eye
  bench.hub.view = WithOrthographic(bench.hub.view, 4, 3);
  tool.OnMouseDown(512, 384);
  EXPECT_EQ(bench.Parameters().zoom_back_distance, 2 * 28.0 + 10.0);
}

TEST_F(ZoomToolTest, a_constrained_zoom_from_beyond_the_limit_does_not_go_out) {
  tool.SetConstrainZoom(true);
  bench.Parameters().scene_bound_radius = 1e-3;
  tool.OnMouseDown(512, 384);
  EXPECT_EQ(bench.Parameters().zoom_back_distance, 0.0);
}

TEST_F(ZoomToolTest, a_constrained_zoom_notes_the_end_that_it_has_reached) {
  DynamicIcon2D in(1);
  DynamicIcon2D out(2);
  tool.SetMaxZoomInHUD(&in);
  tool.SetMaxZoomOutHUD(&out);
  tool.SetConstrainZoom(true);
  bench.Parameters().scene_bound_radius = 1000;
  bench.Parameters().zoom_sensitivity = 1.05;
  bench.Parameters().zoom_out_snap_size = 0;
  tool.OnMouseDown(512, 384);
  struct Row {
    int x;
    int notesIn, notesOut;
  };
  // To the right goes in, to the left out; thousands of pixels reach the ends. The way out is 2000 - 10 long:
  // 104 pixels go 10 (1.05^104 - 1), four fifths of it.
  for (const Row& row : {Row{560, 0, 0}, Row{5000, 1, 0}, Row{408, 0, 0}, Row{-4000, 0, 1}}) {
    tool.OnMouseMove(row.x, 384);
    bench.renderer.ClearCalls();
    bench.Frame(tool);
    int notes[2] = {};
    for (const std::string& call : bench.renderer.GetCalls()) {
      notes[0] += call == "RenderDynamic(1)" ? 1 : 0;
      notes[1] += call == "RenderDynamic(2)" ? 1 : 0;
    }
    EXPECT_EQ(notes[0], row.notesIn) << row.x;
    EXPECT_EQ(notes[1], row.notesOut) << row.x;
  }
}

TEST_F(ZoomToolTest, where_there_is_no_way_out_at_all_rest_counts_as_the_outer_end) {
  DynamicIcon2D out(2);
  tool.SetMaxZoomOutHUD(&out);
  tool.SetConstrainZoom(true);
  bench.Parameters().scene_bound_radius = 1e-3;
  tool.OnMouseDown(512, 384);
  bench.Frame(tool);
  EXPECT_EQ(bench.renderer.CountCalls("RenderDynamic"), 1);
}

TEST_F(ZoomToolTest, without_the_constraint_the_note_of_the_view_stays) {
  DynamicIcon2D note(3);
  tool.SetViewportHUD(&note);
  tool.OnMouseDown(512, 384);
  bench.Frame(tool);
  EXPECT_EQ(bench.renderer.CountCalls("RenderDynamic"), 1);
}

TEST_F(ZoomToolTest, a_shot_that_the_hub_refuses_is_over_at_the_next_draw) {
  bench.hub.refusesShots = true;
  Click(1, 1);
  EXPECT_TRUE(tool.IsAnimating());
  tool.OnDraw();
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(ZoomToolTest, a_shot_that_is_cut_off_as_the_hub_refuses_it_is_over_and_ends_no_other) {
  struct RefusingHub : ToolHub {
    using ToolHub::BeginShot;
    using ToolHub::ToolHub;
    bool BeginShot(const ZoomShotParameters& /*parameters*/) override {
      cut->EndGesture();
      SpinShotParameters spin;
      spin.duration = 1.0;
      MemoryHub::BeginShot(spin);
      return false;
    }
    Tool* cut = nullptr;
  } refusing(bench.hub.view);
  refusing.cut = &tool;
  tool.SetKorvane(&refusing);
  Click(100, 200);
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(refusing.IsShotActive());
  tool.SetKorvane(nullptr);
}
