#include "korvane/center_tool.h"

#include "interaction/tools/tool_fakes.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

struct CenterToolTest : ::testing::Test {
  CenterToolTest() { bench.Wire(tool); }
  ~CenterToolTest() override { tool.Deactivate(); }

  void SetHit(const Vector3& point) {
    bench.renderer.scene = [=](const Vector3&, const Vector3&) { return point; };
  }
  // The note of the view that a draw shows; -1 for none.
  int DrawnNote() {
    bench.renderer.ClearCalls();
    tool.OnDraw();
    for (const std::string& call : bench.renderer.GetCalls()) {
      if (call.rfind("RenderDynamic(", 0) == 0) return std::stoi(call.substr(14));
    }
    return -1;
  }

  ToolBench bench;
  CenterTool tool{nullptr, nullptr, static_cast<StringID>(42)};
};

}  // namespace

TEST(CenterTool, adds_one_virtual_operation_after_those_of_the_base) {
  EXPECT_EQ(VirtualSlot(&CenterTool::UpdatePivotPosition), 14);
}

TEST_F(CenterToolTest, has_the_normal_cursor) { EXPECT_EQ(tool.GetCursorID(), CURSOR_ARROW); }

TEST_F(CenterToolTest, a_press_moves_the_pivot_to_the_point_under_the_cursor_and_marks_it) {
  SetHit({2, 0, 5});
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(2, 0, 5));
  EXPECT_TRUE(bench.ball.IsVisible());
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(2, 0, 5));
  EXPECT_NEAR(bench.ball.GetSize(), 10.0 / 40.0, 1e-12);
  EXPECT_EQ(bench.renderer.CountCalls("CreatePivotLabel"), 1);  // the text of the ball
  EXPECT_TRUE(bench.history.Has(0, 0));
}

TEST_F(CenterToolTest, the_pivot_follows_the_cursor) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  SetHit({3, 0, 5});
  EXPECT_TRUE(tool.OnMouseMove(110, 200));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(3, 0, 5));
  EXPECT_EQ(tool.GetMouseX(), 100);  // the position of the press is what its notes go by
}

TEST_F(CenterToolTest, off_the_scene_the_ball_hides_and_the_last_pivot_stays_during_the_gesture) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  bench.renderer.scene = nullptr;
  tool.OnMouseMove(110, 200);
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_EQ(bench.hub.view.pivot, Vector3(2, 0, 5));
}

TEST_F(CenterToolTest, outside_the_viewport_nothing_is_asked_and_its_edges_count_as_inside) {
  SetHit({2, 0, 5});
  struct Row {
    int x, y, rays;
  };
  for (const Row& row :
       {Row{0, 0, 1}, Row{1024, 768, 1}, Row{-1, 5, 0}, Row{5, -1, 0}, Row{1025, 5, 0}, Row{5, 769, 0}}) {
    bench.renderer.rays = 0;
    tool.UpdatePivotPosition(row.x, row.y);
    EXPECT_EQ(bench.renderer.rays, row.rays) << row.x << ", " << row.y;
    EXPECT_EQ(bench.ball.IsVisible(), row.rays == 1);
  }
}

TEST_F(CenterToolTest, a_release_on_the_scene_flies_there) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  bench.TakeAsked();
  EXPECT_TRUE(tool.OnMouseUp(100, 200));
  EXPECT_EQ(bench.TakeAsked(), Lines({"apply", "begin record", "center shot"}));
  EXPECT_EQ(bench.hub.centerShot.point, Vector3(2, 0, 5));
  EXPECT_EQ(bench.hub.centerShot.easeEnd, 1.0);
  EXPECT_EQ(bench.hub.centerShot.duration, 0.5);
  EXPECT_TRUE(tool.IsAnimating());
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_TRUE(bench.ball.IsVisible());
  bench.RunFor(tool, 700);
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(2, 0, 5));
  EXPECT_NEAR(bench.hub.view.eye.x, 2.0, 1e-9);
}

TEST_F(CenterToolTest, the_flight_has_the_label_of_the_tool_whoever_changed_it_meanwhile) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  bench.ball.SetLabel(STRING_PIVOT);
  bench.renderer.ApplyTextureUsage();
  bench.renderer.ClearCalls();
  tool.OnMouseUp(100, 200);
  EXPECT_EQ(bench.renderer.CountCalls("CreatePivotLabel"), 1);
}

TEST_F(CenterToolTest, the_frames_of_the_flight_are_sampled) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  bench.Frame(tool);
  EXPECT_EQ(bench.history.samples, 0);
  tool.OnMouseUp(100, 200);
  bench.Frame(tool);
  bench.Frame(tool);
  EXPECT_EQ(bench.history.samples, 2);
}

TEST_F(CenterToolTest, released_over_empty_space_puts_the_old_pivot_back_and_animates_nothing) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  bench.renderer.scene = nullptr;
  bench.hub.requested = 0;
  EXPECT_TRUE(tool.OnMouseUp(100, 200));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ARROW);
  EXPECT_TRUE(bench.history.Has(0, 0));
  EXPECT_EQ(bench.hub.requested, 2);  // for the ball, and for the end
}

TEST_F(CenterToolTest, moves_are_always_consumed_and_ask_nothing_without_a_press) {
  SetHit({2, 0, 5});
  EXPECT_TRUE(tool.OnMouseMove(1, 1));
  EXPECT_EQ(bench.renderer.rays, 0);
}

TEST_F(CenterToolTest, while_the_shot_runs_a_press_starts_nothing) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  tool.OnMouseUp(100, 200);
  EXPECT_TRUE(tool.OnMouseDown(5, 5));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_TRUE(tool.OnMouseUp(5, 5));
  EXPECT_EQ(bench.hub.shotsBegun, 1);
}

TEST_F(CenterToolTest, a_release_whose_press_was_swallowed_flies_nowhere_and_leaves_the_ball) {
  SetHit({2, 0, 5});
  EXPECT_TRUE(tool.OnMouseUp(100, 200));
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_TRUE(bench.ball.IsVisible());
  EXPECT_EQ(bench.hub.view.pivot, Vector3(2, 0, 5));
  EXPECT_TRUE(bench.history.Has(0, 0));
}

TEST_F(CenterToolTest, the_ball_of_such_a_release_goes_on_request) {
  SetHit({2, 0, 5});
  tool.SetHideBallAtStrayRelease(true);
  EXPECT_TRUE(tool.OnMouseUp(100, 200));
  EXPECT_FALSE(bench.ball.IsVisible());
}

TEST_F(CenterToolTest, a_press_whose_release_went_missing_does_not_cost_the_old_pivot) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  tool.OnMouseDown(110, 200);
  bench.renderer.scene = nullptr;
  tool.OnMouseUp(110, 200);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
}

TEST_F(CenterToolTest, without_a_hub_no_press_and_no_release_is_used) {
  tool.SetKorvane(nullptr);
  EXPECT_FALSE(tool.OnMouseDown(1, 1));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(tool.OnMouseUp(1, 1));
}

TEST_F(CenterToolTest, without_a_renderer_nothing_is_ever_hit) {
  tool.SetRenderer(nullptr);
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_TRUE(tool.OnMouseUp(1, 1));
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
  tool.SetRenderer(&bench.renderer);
}

TEST_F(CenterToolTest, an_active_tool_shows_its_hint_unless_it_is_on_the_scene_or_flying) {
  tool.Activate();
  EXPECT_EQ(bench.renderer.GetCalls(), Lines({"LoadStringResource(31)", "CreateMessageHUD(text 31)"}));
  const int hint = 1;
  EXPECT_EQ(DrawnNote(), hint);
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  EXPECT_EQ(DrawnNote(), -1);
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ARROW);
  bench.renderer.scene = nullptr;
  tool.OnMouseMove(101, 200);
  EXPECT_EQ(DrawnNote(), hint);
  EXPECT_EQ(tool.GetCursorID(), CURSOR_NO_TARGET);
  SetHit({2, 0, 5});
  tool.OnMouseMove(102, 200);
  EXPECT_EQ(DrawnNote(), -1);
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ARROW);
  tool.OnMouseUp(102, 200);
  EXPECT_EQ(DrawnNote(), -1);
  bench.RunFor(tool, 1000);
  EXPECT_EQ(DrawnNote(), hint);
}

TEST_F(CenterToolTest, an_inactive_tool_shows_the_note_of_its_owner_where_it_is_off_the_scene) {
  DynamicIcon2D offModel(77);
  tool.SetOffModelHUD(&offModel);
  EXPECT_EQ(DrawnNote(), -1);
  tool.OnMouseDown(100, 200);
  EXPECT_EQ(DrawnNote(), 77);
}

TEST_F(CenterToolTest, the_hint_stands_by_its_own_height_above_the_others_place) {
  tool.Activate();
  DynamicIcon2D* const hint = bench.renderer.GetStringTexture(STRING_OFF_MODEL);
  hint->SetSize(100, 30);
  tool.Deactivate();
  tool.Activate();
  tool.OnDraw();
  EXPECT_EQ(hint->GetPosition(), Vector2(512, 60));
  bench.renderer.ReleaseStringTexture(STRING_OFF_MODEL);
}

TEST_F(CenterToolTest, a_hint_that_was_given_back_is_not_drawn_any_more) {
  tool.Activate();
  tool.OnDraw();
  tool.Deactivate();
  bench.renderer.ApplyTextureUsage();
  EXPECT_EQ(bench.renderer.CountCalls("DestroyIcon"), 1);
  EXPECT_EQ(DrawnNote(), -1);
}

TEST_F(CenterToolTest, activating_twice_takes_the_hint_once) {
  tool.Activate();
  tool.Activate();
  tool.Deactivate();
  bench.renderer.ApplyTextureUsage();
  EXPECT_EQ(bench.renderer.GetLiveIconCount(), 0);
}

TEST_F(CenterToolTest, a_shot_that_the_hub_refuses_is_over_at_the_next_draw) {
  bench.hub.refusesShots = true;
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  tool.OnMouseUp(100, 200);
  tool.OnDraw();
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(CenterToolTest, while_its_end_is_told_neither_a_release_nor_a_press_counts) {
  SetHit({2, 0, 5});
  tool.OnMouseDown(100, 200);
  int rays = 0;
  bench.history.onBegin = [&] {
    rays = bench.renderer.rays;
    tool.OnMouseUp(100, 200);
    tool.OnMouseDown(100, 200);
    rays = bench.renderer.rays - rays;
  };
  tool.OnMouseUp(100, 200);
  EXPECT_EQ(rays, 0);
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_TRUE(tool.IsAnimating());
  bench.RunFor(tool, 700);
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(CenterToolTest, a_hub_taken_away_before_the_flight_gets_its_old_pivot_and_a_closed_record) {
  for (const bool atRecord : {false, true}) {
    SetHit({2, 0, 5});
    tool.SetKorvane(&bench.hub);
    tool.OnMouseDown(100, 200);
    const auto take = [this] { tool.SetKorvane(nullptr); };
    (atRecord ? bench.history.onBegin : bench.hub.onApply) = take;
    tool.OnMouseUp(100, 200);
    bench.hub.onApply = nullptr;
    EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
    EXPECT_EQ(bench.hub.shotsBegun, 0);
    EXPECT_EQ(bench.history.GetOpenCount(), 0);
    EXPECT_FALSE(bench.ball.IsVisible());
    EXPECT_FALSE(tool.IsAnimating());
  }
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(CenterToolTest, the_pivot_of_one_hub_is_not_put_into_the_camera_of_another) {
  ToolHub other(bench.hub.view);
  other.view.pivot = {7, 8, 9};
  tool.OnMouseDown(100, 200);
  tool.SetKorvane(&other);
  tool.OnMouseUp(100, 200);
  EXPECT_EQ(other.view.pivot, Vector3(7, 8, 9));
  tool.SetKorvane(&bench.hub);
}

TEST_F(CenterToolTest, the_hint_goes_with_its_renderer_and_comes_anew_with_the_next) {
  auto first = std::make_unique<ToolRenderer>();
  tool.SetRenderer(first.get());
  tool.Activate();
  tool.OnDraw();
  first.reset();
  bench.renderer.GetStringTexture(STRING_PIVOT);  // so that the hint is not icon 1 here, too
  tool.SetRenderer(&bench.renderer);
  EXPECT_EQ(DrawnNote(), 2);
  bench.renderer.ReleaseStringTexture(STRING_PIVOT);
}

TEST_F(CenterToolTest, a_tool_that_is_deactivated_after_its_renderer_is_gone_shows_its_hint_nowhere) {
  auto first = std::make_unique<ToolRenderer>();
  tool.SetRenderer(first.get());
  tool.Activate();
  tool.OnDraw();
  first.reset();
  tool.Deactivate();
  tool.SetRenderer(&bench.renderer);
  EXPECT_EQ(DrawnNote(), -1);
}
