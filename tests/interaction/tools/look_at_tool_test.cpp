#include "korvane/look_at_tool.h"

#include "interaction/tools/tool_fakes.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

struct LookAtToolTest : ::testing::Test {
  LookAtToolTest() {
    bench.Wire(tool);
    bench.Parameters().global_bound_radius = 1000;
    bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0, 1}};
  }

  void Click() {
    tool.OnMouseDown(100, 200);
    tool.OnMouseUp(110, 190);
  }

  ToolBench bench;
  LookAtTool tool;
};

}  // namespace

TEST(LookAtTool, adds_six_virtual_operations_after_those_of_the_base) {
  EXPECT_EQ(VirtualSlot(&LookAtTool::EnableFaceHighlighting), 14);
  EXPECT_EQ(VirtualSlot(&LookAtTool::DisableFaceHighlighting), 15);
  EXPECT_EQ(VirtualSlot(&LookAtTool::EnableObstructionDetection), 16);
  EXPECT_EQ(VirtualSlot(&LookAtTool::DisableObstructionDetection), 17);
  EXPECT_EQ(VirtualSlot(&LookAtTool::EnableBackfaceViewing), 18);
  EXPECT_EQ(VirtualSlot(&LookAtTool::DisableBackfaceViewing), 19);
}

TEST_F(LookAtToolTest, has_its_cursor_and_does_not_wrap_it) {
  EXPECT_EQ(tool.GetCursorID(), CURSOR_LOOK_AT);
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_FALSE(tool.WantCursorWrapping());
}

TEST_F(LookAtToolTest, a_press_opens_the_mouseover_and_moves_nothing) {
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_EQ(bench.renderer.mouseoverBegun, 1);
  EXPECT_TRUE(bench.renderer.highlighted);
  EXPECT_TRUE(bench.TakeAsked().empty());
  EXPECT_TRUE(bench.history.Has(0, 0));
}

TEST_F(LookAtToolTest, a_renderer_that_refuses_the_mouseover_ends_the_press_silently) {
  bench.renderer.offersMouseover = false;
  bench.Parameters().use_look_at_obstruction_detection = true;
  EXPECT_FALSE(tool.OnMouseDown(100, 200));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(tool.OnMouseMove(110, 190));
  EXPECT_FALSE(tool.OnMouseUp(110, 190));
  EXPECT_EQ(bench.renderer.mouseoverAsked, 0);
  EXPECT_EQ(bench.renderer.mouseoverEnded, 0);
}

TEST_F(LookAtToolTest, the_face_under_the_cursor_is_asked_for_at_each_move_only_if_it_is_to_be_highlighted) {
  tool.OnMouseDown(100, 200);
  bench.hub.requested = 0;
  EXPECT_TRUE(tool.OnMouseMove(110, 190));
  EXPECT_EQ(bench.renderer.mouseoverAsked, 1);
  EXPECT_EQ(bench.renderer.lastPixel, Vector2(110, 190));
  EXPECT_EQ(bench.hub.requested, 1);
  tool.DisableFaceHighlighting();
  EXPECT_TRUE(tool.OnMouseMove(120, 180));
  EXPECT_EQ(bench.renderer.mouseoverAsked, 1);
  EXPECT_EQ(bench.hub.requested, 2);
  tool.EnableFaceHighlighting();
  tool.OnMouseMove(121, 180);
  EXPECT_EQ(bench.renderer.mouseoverAsked, 2);
}

TEST_F(LookAtToolTest, the_renderer_is_told_whether_to_highlight) {
  tool.DisableFaceHighlighting();
  tool.OnMouseDown(1, 1);
  EXPECT_FALSE(bench.renderer.highlighted);
}

TEST_F(LookAtToolTest, all_keys_are_consumed) {
  for (int key = KEY_SHIFT; key <= KEY_SPACE; ++key) EXPECT_TRUE(tool.OnKeyDown(static_cast<KeyID>(key)));
  EXPECT_TRUE(tool.IsShiftKeyDown());
  EXPECT_EQ(bench.renderer.mouseoverEnded, 0);
}

TEST_F(LookAtToolTest, escape_gives_the_press_up) {
  tool.OnMouseDown(100, 200);
  bench.hub.requested = 0;
  EXPECT_TRUE(tool.OnKeyDown(KEY_ESCAPE));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
  EXPECT_EQ(bench.hub.requested, 1);
  EXPECT_FALSE(tool.OnMouseUp(100, 200));
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_TRUE(bench.history.Has(0, 0));
}

TEST_F(LookAtToolTest, a_release_off_every_face_ends_the_mouseover_and_starts_no_shot) {
  bench.renderer.component.reset();
  tool.OnMouseDown(100, 200);
  EXPECT_TRUE(tool.OnMouseUp(100, 200));
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(bench.history.Has(0, 0));
  EXPECT_EQ(bench.hub.view.pivot, Vector3(1, 2, -3));
}

TEST_F(LookAtToolTest, a_release_on_a_face_flies_in_front_of_it_at_the_distance_that_it_has) {
  tool.OnMouseDown(100, 200);
  EXPECT_TRUE(tool.OnMouseUp(110, 190));
  EXPECT_EQ(bench.renderer.lastPixel, Vector2(110, 190));
  EXPECT_EQ(bench.TakeAsked(), Lines({"apply", "recalculate global", "look-at shot", "begin record"}));
  const LookAtShotParameters& shot = bench.hub.lookAtShot;
  EXPECT_EQ(shot.reserved, 0U);
  EXPECT_EQ(shot.duration, 0.75);
  EXPECT_EQ(shot.point, Vector3(0, 0, 2));
  EXPECT_EQ(shot.direction, Vector3(0, 0, 1));
  EXPECT_EQ(shot.distance, 8.0);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(0, 0, 2));
  EXPECT_TRUE(bench.ball.IsVisible());
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(0, 0, 2));
  EXPECT_NEAR(bench.ball.GetSize(), 16.0 / 40.0, 1e-12);
  EXPECT_TRUE(tool.IsAnimating());
  EXPECT_EQ(bench.renderer.mouseoverEnded, 0);
}

TEST_F(LookAtToolTest, a_face_seen_from_behind_is_approached_from_the_side_of_the_viewer) {
  bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0.6, -0.8}};
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.direction, Vector3(0, -0.6, 0.8));
}

TEST_F(LookAtToolTest, without_backface_viewing_it_is_approached_from_its_own_side) {
  tool.DisableBackfaceViewing();
  bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0.6, -0.8}};
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.direction, Vector3(0, 0.6, -0.8));
  bench.RunFor(tool, 1000);
  tool.EnableBackfaceViewing();
  bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.direction, Vector3(0, -0.6, 0.8));
}

TEST_F(LookAtToolTest, a_face_seen_from_its_edge_keeps_its_side) {
  bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 1, 0}};
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.direction, Vector3(0, 1, 0));
}

TEST_F(LookAtToolTest, stays_in_front_of_what_stands_between_where_the_parameters_say_so) {
  bench.renderer.scene = [](const Vector3& origin, const Vector3& direction) {
    return origin + direction * 5.0;
  };
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.distance, 8.0);
  bench.RunFor(tool, 1000);

  bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  bench.Parameters().use_look_at_obstruction_detection = true;
  Click();
  EXPECT_NEAR(bench.hub.lookAtShot.distance, 4.5, 1e-12);
}

TEST_F(LookAtToolTest, what_stands_beyond_the_camera_is_no_obstruction) {
  bench.Parameters().use_look_at_obstruction_detection = true;
  bench.renderer.scene = [](const Vector3& origin, const Vector3& direction) {
    return origin + direction * 8.0;
  };
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.distance, 8.0);
}

TEST_F(LookAtToolTest, each_press_takes_the_obstruction_setting_of_the_parameters) {
  bench.renderer.scene = [](const Vector3& origin, const Vector3& direction) {
    return origin + direction * 5.0;
  };
  tool.EnableObstructionDetection();
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.distance, 8.0);
  bench.RunFor(tool, 1000);
  bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  tool.OnMouseDown(1, 1);
  tool.EnableObstructionDetection();
  tool.OnMouseUp(1, 1);
  EXPECT_NEAR(bench.hub.lookAtShot.distance, 4.5, 1e-12);
  bench.RunFor(tool, 1000);
  bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  bench.Parameters().use_look_at_obstruction_detection = true;
  tool.OnMouseDown(1, 1);
  tool.DisableObstructionDetection();
  tool.OnMouseUp(1, 1);
  EXPECT_EQ(bench.hub.lookAtShot.distance, 8.0);
}

TEST_F(LookAtToolTest, never_keeps_a_distance_above_the_radius_of_the_model) {
  bench.hub.onRecalculateGlobal = [&] { bench.Parameters().global_bound_radius = 3; };
  Click();
  EXPECT_EQ(bench.hub.lookAtShot.distance, 3.0);
}

TEST_F(LookAtToolTest, the_record_and_the_mouseover_end_once_in_the_draw_that_finds_the_shot_over) {
  bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0.6, 0.8}};
  Click();
  bench.Frame(tool);
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_EQ(bench.history.samples, 1);
  bench.RunFor(tool, 1000);
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_FALSE(tool.IsAnimating());
  bench.hub.requested = 0;
  bench.Frame(tool);
  EXPECT_EQ(bench.hub.requested, 0);
  EXPECT_TRUE(bench.history.Has(1, 1));
  // 8 in front of the face.
  EXPECT_NEAR((bench.hub.view.eye - Vector3(0, 4.8, 8.4)).Length(), 0.0, 1e-9);
}

TEST_F(LookAtToolTest, draws_the_ball_itself_after_its_notes) {
  bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0.6, 0.8}};
  Click();
  bench.Frame(tool, 0);
  EXPECT_EQ(bench.renderer.CountCalls("RenderIcon3D"), 3);
}

TEST_F(LookAtToolTest, while_the_shot_runs_a_press_starts_nothing) {
  Click();
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_TRUE(tool.OnMouseUp(1, 1));
  EXPECT_EQ(bench.renderer.mouseoverBegun, 1);
  EXPECT_EQ(bench.hub.shotsBegun, 1);
}

TEST_F(LookAtToolTest, a_shot_that_the_hub_refuses_is_over_at_the_next_draw) {
  bench.hub.refusesShots = true;
  Click();
  tool.OnDraw();
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
}

TEST_F(LookAtToolTest, a_press_whose_release_went_missing_leaves_no_mouseover_open) {
  tool.OnMouseDown(1, 1);
  tool.OnMouseDown(2, 2);
  EXPECT_EQ(bench.renderer.mouseoverBegun, 2);
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
}

TEST_F(LookAtToolTest, a_flight_that_never_begins_leaves_neither_a_mouseover_nor_the_ball) {
  bench.hub.onApply = [this] { tool.SetKorvane(nullptr); };
  Click();
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
  EXPECT_FALSE(bench.ball.IsVisible());
}

TEST_F(LookAtToolTest, the_mouseover_ends_in_the_renderer_in_which_it_was_begun) {
  ToolRenderer other;
  tool.OnMouseDown(100, 200);
  tool.SetRenderer(&other);
  tool.OnKeyDown(KEY_ESCAPE);
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
  EXPECT_EQ(other.mouseoverEnded, 0);
}

TEST_F(LookAtToolTest, a_press_that_is_cut_off_as_the_mouseover_begins_begins_nothing) {
  struct CuttingRenderer : ToolRenderer {
    bool BeginMouseoverComponent(bool highlight) override {
      cut->EndGesture();
      return ToolRenderer::BeginMouseoverComponent(highlight);
    }
    Tool* cut = nullptr;
  } cutting;
  cutting.cut = &tool;
  tool.SetRenderer(&cutting);
  EXPECT_FALSE(tool.OnMouseDown(100, 200));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(cutting.mouseoverEnded, 1);
}

TEST_F(LookAtToolTest, a_hub_taken_away_as_the_mouseover_begins_leaves_none_open) {
  struct TakingRenderer : ToolRenderer {
    bool BeginMouseoverComponent(bool highlight) override {
      taker->SetKorvane(nullptr);
      return ToolRenderer::BeginMouseoverComponent(highlight);
    }
    Tool* taker = nullptr;
  } taking;
  taking.taker = &tool;
  tool.SetRenderer(&taking);
  EXPECT_FALSE(tool.OnMouseDown(100, 200));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(taking.mouseoverEnded, 1);
}

// Replaced first, as a renderer may not end while a tool has it.
TEST_F(LookAtToolTest, a_renderer_that_is_gone_by_the_release_is_asked_nothing) {
  for (const bool released : {true, false}) {
    auto gone = std::make_unique<ToolRenderer>();
    gone->component = bench.renderer.component;
    tool.SetRenderer(gone.get());
    EXPECT_TRUE(tool.OnMouseDown(100, 200));
    tool.SetRenderer(&bench.renderer);
    gone.reset();
    EXPECT_TRUE(tool.OnMouseMove(110, 190));
    if (released) {
      EXPECT_TRUE(tool.OnMouseUp(110, 190));
    } else {
      EXPECT_TRUE(tool.OnKeyDown(KEY_ESCAPE));
    }
    EXPECT_FALSE(tool.IsOperating());
  }
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_EQ(bench.renderer.mouseoverAsked + bench.renderer.mouseoverEnded, 0);
}

TEST_F(LookAtToolTest, escape_without_a_hub_ends_the_mouseover) {
  tool.OnMouseDown(100, 200);
  tool.SetKorvane(nullptr);
  EXPECT_TRUE(tool.OnKeyDown(KEY_ESCAPE));
  EXPECT_EQ(bench.renderer.mouseoverEnded, 1);
  EXPECT_FALSE(tool.IsOperating());
}

TEST_F(LookAtToolTest, keeps_its_distance_where_nothing_stands_between) {
  bench.Parameters().use_look_at_obstruction_detection = true;
  Click();
  EXPECT_EQ(bench.hub.shotsBegun, 1);
  EXPECT_EQ(bench.renderer.rays, 1);
  EXPECT_DOUBLE_EQ(bench.hub.lookAtShot.distance, 8.0);
}
