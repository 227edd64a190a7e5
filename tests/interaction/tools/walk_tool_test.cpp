#include "korvane/walk_tool.h"

#include "camera/fly_operation.h"
#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

namespace {

struct WalkToolTest : ::testing::Test {
  WalkToolTest() { bench.Wire(tool); }
  ~WalkToolTest() override { SetRunning(false); }  // one switch for all walks

  FlyOperation* Fly() { return dynamic_cast<FlyOperation*>(bench.hub.GetActiveOperation(OPERATION_FLY)); }
  void SetRunning(bool running) {
    bench.hub.BeginOperation(OPERATION_FLY, 0, 0);
    Fly()->SetMoveAccelerated(running);
    bench.hub.EndOperation(OPERATION_FLY);
  }
  void ForbidWalking() {
    bench.hub.view = WithOrthographic(bench.hub.view, 4, 3);
    bench.Parameters().auto_switch_projection = false;
  }

  ToolBench bench;
  WalkTool tool;
};

}  // namespace

TEST_F(WalkToolTest, has_the_walk_cursor_and_wraps_it) {
  EXPECT_EQ(tool.GetCursorID(), CURSOR_WALK);
  tool.OnMouseDown(1, 1);
  EXPECT_TRUE(tool.WantCursorWrapping());
}

TEST_F(WalkToolTest, the_press_takes_the_pointer_to_the_start_and_walks_from_there) {
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  // (1024 / 2, 768 / 5 = 153.6); the row counts from the top, 768 - 153 - 1.
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"SetCursorPosition(512, 153)"}));
  EXPECT_EQ(bench.TakeAsked(), Lines({"begin 3 at 512, 614", "recalculate global", "begin record"}));
  EXPECT_TRUE(tool.OnMouseMove(512, 300));
  EXPECT_TRUE(tool.OnMouseUp(512, 300));
  EXPECT_EQ(bench.TakeAsked(), Lines({"update 3 at 512, 467", "end 3", "end record"}));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(tool.OnMouseMove(1, 1));
  EXPECT_FALSE(tool.OnMouseUp(1, 1));
}

TEST_F(WalkToolTest, a_view_that_may_become_perspective_does) {
  bench.hub.view = WithOrthographic(bench.hub.view, 4, 3);
  bench.Parameters().auto_switch_projection = true;
  tool.OnMouseDown(1, 1);
  EXPECT_FALSE(bench.hub.view.IsOrthographic());
  EXPECT_TRUE(bench.hub.IsOperationActive(OPERATION_FLY));
}

TEST_F(WalkToolTest, a_refused_walk_operates_with_a_warning_and_runs_no_operation) {
  ForbidWalking();
  DynamicIcon2D warning(9);
  tool.SetWarningHUD(&warning);
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_TRUE(tool.IsOperating());
  EXPECT_TRUE(tool.OnMouseMove(5, 5));
  EXPECT_TRUE(bench.TakeAsked().empty());
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"BeginRender(512, 384, 512, 384, 0)", "RenderResource(93)",
                                               "EndRender()", "BeginRender(512, 384, 512, 384, 0)",
                                               "RenderDynamic(9)", "EndRender()", "SetCursorIcon(6)"}));
  EXPECT_EQ(bench.renderer.lastOpacity, 1.0);
  EXPECT_TRUE(tool.OnMouseUp(5, 5));
  EXPECT_TRUE(bench.TakeAsked().empty());
  EXPECT_TRUE(bench.history.Has(0, 0));
  EXPECT_EQ(bench.history.samples, 0);
}

TEST_F(WalkToolTest, a_walk_that_is_refused_after_another_one_warns_as_well) {
  DynamicIcon2D warning(9);
  tool.SetWarningHUD(&warning);
  tool.OnMouseDown(1, 1);
  tool.OnMouseUp(1, 1);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.CountCalls("RenderDynamic"), 0);
  ForbidWalking();
  tool.OnMouseDown(1, 1);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.CountCalls("RenderDynamic"), 1);
}

TEST_F(WalkToolTest, the_warning_is_not_cleared_at_the_release) {
  ForbidWalking();
  DynamicIcon2D warning(9);
  tool.SetWarningHUD(&warning);
  tool.OnMouseDown(1, 1);
  tool.OnMouseUp(1, 1);
  bench.Parameters().auto_switch_projection = true;
  tool.OnMouseDown(1, 1);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.CountCalls("RenderDynamic"), 1);
}

TEST_F(WalkToolTest, a_press_that_cannot_even_begin_leaves_the_warning_too) {
  DynamicIcon2D warning(9);
  tool.SetWarningHUD(&warning);
  tool.SetRenderer(nullptr);
  EXPECT_FALSE(tool.OnMouseDown(1, 1));
  EXPECT_FALSE(tool.IsOperating());
  tool.SetRenderer(&bench.renderer);
  tool.OnMouseDown(1, 1);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.CountCalls("RenderDynamic"), 1);
}

TEST_F(WalkToolTest, the_start_is_drawn_as_large_as_the_dead_zone_and_faint_outside_it) {
  bench.Parameters().fly_dead_zone_radius = 20;
  tool.OnMouseDown(1, 1);
  bench.Frame(tool);
  EXPECT_EQ(bench.renderer.lastIcon.center, Vector2(512, 768 * 0.2));
  EXPECT_EQ(bench.renderer.lastIcon.halfExtent, Vector2(20, 20));
  EXPECT_EQ(bench.renderer.lastOpacity, 1.0);
  tool.OnMouseMove(512, 400);
  bench.renderer.ClearCalls();
  bench.Frame(tool);
  EXPECT_EQ(bench.renderer.lastOpacity, 0.4);
  const Lines& calls = bench.renderer.GetCalls();
  EXPECT_NE(std::find(calls.begin(), calls.end(), "RenderResource(94)"), calls.end());
  EXPECT_EQ(tool.GetCursorID(), CURSOR_WALK_FORWARD);
}

TEST_F(WalkToolTest, the_cursor_is_that_of_the_walk_only_while_it_walks) {
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_WALK);
  tool.OnMouseDown(1, 1);
  tool.OnMouseMove(512, 400);
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_WALK_FORWARD);
  tool.OnMouseMove(900, 153);
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_WALK_RIGHT);
  bench.hub.EndOperation(OPERATION_FLY);
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_WALK);
  tool.SetKorvane(nullptr);
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_WALK);
}

TEST_F(WalkToolTest, a_walk_that_is_refused_keeps_its_cursor_while_somebody_else_walks) {
  ForbidWalking();
  tool.OnMouseDown(1, 1);
  ASSERT_TRUE(bench.hub.BeginOperation(OPERATION_FLY, 512, 300));
  bench.hub.UpdateOperationParams(512, 600, OPERATION_FLY);
  ASSERT_FALSE(Fly()->IsInDeadZone());
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_WALK);
}

TEST_F(WalkToolTest, up_and_down_reach_all_operations) {
  EXPECT_FALSE(tool.OnKeyDown(KEY_UP));
  tool.OnMouseDown(1, 1);
  bench.TakeAsked();
  EXPECT_TRUE(tool.OnKeyDown(KEY_UP));
  EXPECT_TRUE(tool.OnKeyUp(KEY_UP));
  EXPECT_TRUE(tool.OnKeyDown(KEY_DOWN));
  EXPECT_TRUE(tool.OnKeyUp(KEY_DOWN));
  EXPECT_EQ(bench.TakeAsked(), Lines({"key 3 down", "key 3 up", "key 4 down", "key 4 up"}));
}

TEST_F(WalkToolTest, the_run_key_runs_and_is_not_consumed) {
  tool.OnMouseDown(1, 1);
  EXPECT_FALSE(tool.OnKeyDown(KEY_RUN));
  EXPECT_TRUE(Fly()->IsMoveAccelerated());
  tool.OnMouseMove(512, 400);
  EXPECT_EQ(tool.GetWalkCursorID(), CURSOR_RUN_FORWARD);
  EXPECT_FALSE(tool.OnKeyUp(KEY_RUN));
  EXPECT_FALSE(Fly()->IsMoveAccelerated());
  EXPECT_FALSE(tool.OnKeyDown(KEY_SPACE));
}

TEST_F(WalkToolTest, shift_never_goes_up_once_it_has_been_touched) {
  EXPECT_FALSE(tool.IsShiftKeyDown());
  tool.OnKeyUp(KEY_SHIFT);
  EXPECT_TRUE(tool.IsShiftKeyDown());
  tool.OnKeyDown(KEY_SHIFT);
  tool.OnKeyUp(KEY_SHIFT);
  EXPECT_TRUE(tool.IsShiftKeyDown());
}

TEST_F(WalkToolTest, with_an_interval_of_half_a_second_it_records_per_frame) {
  tool.SetRewindHistoryInterval(0.5);
  tool.OnMouseDown(1, 1);
  for (int i = 0; i < 4; ++i) bench.Frame(tool, 400);
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_EQ(bench.history.samples, 4);
  tool.OnMouseUp(1, 1);
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(WalkToolTest, from_an_interval_of_one_second_on_it_leaves_a_chain_of_records) {
  tool.SetRewindHistoryInterval(1.0);
  tool.OnMouseDown(1, 1);
  bench.Frame(tool, 600);
  EXPECT_TRUE(bench.history.Has(1, 0));
  bench.Frame(tool, 400);
  EXPECT_TRUE(bench.history.Has(2, 1));
  bench.Frame(tool, 999);
  EXPECT_TRUE(bench.history.Has(2, 1));
  bench.Frame(tool, 1);
  EXPECT_TRUE(bench.history.Has(3, 2));
  EXPECT_EQ(bench.history.samples, 0);
  tool.OnMouseUp(1, 1);
  EXPECT_TRUE(bench.history.Has(3, 3));
}

TEST_F(WalkToolTest, the_interval_counts_anew_in_each_walk) {
  tool.SetRewindHistoryInterval(2.0);
  tool.OnMouseDown(1, 1);
  bench.Frame(tool, 1500);
  tool.OnMouseUp(1, 1);
  bench.platform.Advance(5000);
  tool.OnMouseDown(1, 1);
  bench.Frame(tool, 1500);
  EXPECT_TRUE(bench.history.Has(2, 1));
}

TEST_F(WalkToolTest, a_press_whose_release_went_missing_is_closed_by_the_next_press) {
  tool.OnMouseDown(1, 1);
  tool.OnMouseDown(2, 2);
  tool.OnMouseUp(2, 2);
  EXPECT_TRUE(bench.history.Has(2, 2));
}

TEST_F(WalkToolTest, the_notes_for_the_host_are_kept) {
  DynamicIcon2D message(1);
  DynamicIcon2D upDown(2);
  tool.SetMessageHUD(&message);
  tool.SetUpDownHUD(&upDown);
  EXPECT_EQ(tool.GetMessageHUD(), &message);
  EXPECT_EQ(tool.GetUpDownHUD(), &upDown);
}

TEST_F(WalkToolTest, walks_forward_while_the_cursor_stands_above_the_start) {
  tool.OnMouseDown(1, 1);
  tool.OnMouseMove(512, 600);
  bench.RunFor(tool, 500);
  EXPECT_LT(bench.hub.view.eye.z, 10.0);
  EXPECT_NEAR(bench.hub.view.eye.x, 0.0, 1e-9);
}

TEST_F(WalkToolTest, holds_the_pictures_of_its_start_while_it_is_active) {
  tool.Activate();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"LoadTexture(93)", "LoadTexture(94)"}));
  tool.OnMouseDown(1, 1);
  tool.OnDraw();
  tool.OnMouseUp(1, 1);
  EXPECT_EQ(bench.renderer.CountCalls("LoadTexture"), 0);
  EXPECT_EQ(bench.renderer.CountCalls("ReleaseTexture"), 0);
  bench.renderer.ClearCalls();
  tool.Deactivate();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"ReleaseTexture(93)", "ReleaseTexture(94)"}));
}

TEST_F(WalkToolTest, an_active_tool_holds_its_pictures_in_the_renderer_that_it_is_given) {
  tool.SetRenderer(nullptr);
  tool.Activate();
  tool.SetRenderer(&bench.renderer);
  tool.SetRenderer(&bench.renderer);
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"LoadTexture(93)", "LoadTexture(94)"}));
  tool.SetRenderer(nullptr);
  EXPECT_EQ(bench.renderer.CountCalls("ReleaseTexture"), 2);
  tool.Deactivate();
  bench.renderer.ClearCalls();
  tool.SetRenderer(&bench.renderer);
  EXPECT_TRUE(bench.renderer.GetCalls().empty());
}

TEST_F(WalkToolTest, the_end_of_a_walk_lets_go_of_the_run_key_for_every_view) {
  tool.OnMouseDown(1, 1);
  tool.OnKeyDown(KEY_RUN);
  EXPECT_TRUE(FlyOperation().IsMoveAccelerated());
  tool.OnMouseUp(1, 1);
  EXPECT_FALSE(FlyOperation().IsMoveAccelerated());
}

TEST_F(WalkToolTest, a_walk_that_the_host_ends_lets_go_of_the_run_key_with_the_release) {
  tool.OnMouseDown(1, 1);
  tool.OnKeyDown(KEY_RUN);
  bench.hub.EndOperation(OPERATION_FLY);
  tool.OnMouseUp(1, 1);
  EXPECT_FALSE(FlyOperation().IsMoveAccelerated());
}

TEST_F(WalkToolTest, a_walk_that_loses_its_hub_lets_go_of_the_run_key) {
  tool.OnMouseDown(1, 1);
  tool.OnKeyDown(KEY_RUN);
  tool.SetKorvane(nullptr);
  tool.OnMouseUp(1, 1);
  EXPECT_FALSE(FlyOperation().IsMoveAccelerated());
}

TEST_F(WalkToolTest, a_tool_that_is_destroyed_in_its_walk_lets_go_of_the_run_key) {
  {
    WalkTool other;
    bench.Wire(other);
    other.OnMouseDown(1, 1);
    other.OnKeyDown(KEY_RUN);
  }
  EXPECT_FALSE(FlyOperation().IsMoveAccelerated());
}

TEST_F(WalkToolTest, a_walk_that_did_not_press_the_run_key_leaves_it_to_the_one_that_did) {
  WalkTool other;
  bench.Wire(other);
  tool.OnMouseDown(1, 1);
  tool.OnKeyDown(KEY_RUN);
  other.OnMouseDown(1, 1);
  other.OnMouseUp(1, 1);
  EXPECT_TRUE(FlyOperation().IsMoveAccelerated());
  tool.OnMouseUp(1, 1);
}

TEST_F(WalkToolTest, without_a_history_it_asks_for_no_camera_to_record) {
  tool.SetRewindHistory(nullptr);
  tool.SetRewindHistoryInterval(1.0);
  tool.OnMouseDown(1, 1);
  bench.platform.Advance(1500);
  const int queried = bench.hub.queried;
  tool.OnDraw();
  EXPECT_EQ(bench.hub.queried, queried);
}

TEST_F(WalkToolTest, the_interval_counts_from_the_moment_in_which_its_record_is_open) {
  tool.SetRewindHistoryInterval(1.0);
  tool.OnMouseDown(1, 1);
  bench.history.onBegin = [this] { bench.platform.Advance(600); };
  bench.Frame(tool, 1000);
  EXPECT_TRUE(bench.history.Has(2, 1));
  bench.Frame(tool, 999);
  EXPECT_TRUE(bench.history.Has(2, 1));
}

TEST_F(WalkToolTest, a_walk_that_ends_between_two_records_of_its_chain_opens_no_other) {
  tool.SetRewindHistoryInterval(1.0);
  tool.OnMouseDown(1, 1);
  bench.history.onEnd = [this] { tool.OnMouseUp(1, 1); };
  bench.Frame(tool, 1000);
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(tool.IsOperating());
}
