#include "korvane/rect_zoom_tool.h"

#include <cmath>

#include "interaction/tools/tool_fakes.h"

using namespace Korvane;

namespace {

using Geometry = RecordingRenderer::Geometry;

struct RectTest : ::testing::Test {
  RectTest() { bench.Wire(tool); }

  void Drag(int fromX, int fromY, int toX, int toY) {
    tool.OnMouseDown(fromX, fromY);
    tool.OnMouseMove(toX, toY);
  }
  std::vector<Geometry> Draw() {
    bench.renderer.ClearCalls();
    tool.OnDraw();
    return bench.renderer.GetGeometry();
  }

  ToolBench bench;
  RectZoomTool tool;
};

struct Rect {
  double left, bottom, right, top;
};

std::vector<float> Corners(const Rect& r) {
  const double values[] = {r.left, r.top, 0, r.right, r.top, 0, r.right, r.bottom, 0, r.left, r.bottom, 0};
  return {std::begin(values), std::end(values)};
}

bool IsWhite(const Geometry& g) { return g.material.colour[0] == 1.0F; }

// The state of the crosshair as it is told in words: near the press it vanishes, and from then on shows every
// second time at a small size.
struct CrosshairOracle {
  int size = 10;
  void Step(int d) {
    if (d < 15 && size != 0) {
      size = 0;
    } else if (d < 25) {
      size = std::min(d - 10, 10);
    } else {
      size = 10;
    }
  }
};

}  // namespace

TEST_F(RectTest, has_the_zoom_cursor_and_does_not_wrap_it) {
  EXPECT_EQ(tool.GetCursorID(), CURSOR_ZOOM);
  tool.OnMouseDown(1, 1);
  EXPECT_TRUE(tool.IsOperating());
  EXPECT_FALSE(tool.WantCursorWrapping());
}

TEST_F(RectTest, a_press_begins_a_record_and_nothing_else) {
  EXPECT_TRUE(tool.OnMouseDown(100, 200));
  EXPECT_EQ(bench.TakeAsked(), Lines({"begin record"}));
  EXPECT_TRUE(SameBits(bench.history.beginCamera, bench.hub.view));
  EXPECT_FALSE(bench.ball.IsVisible());
}

TEST_F(RectTest, at_the_press_the_rectangle_is_a_point) {
  tool.OnMouseDown(100, 200);
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_EQ(drawn[0].vertices, Corners({100, 200, 100, 200}));
  EXPECT_EQ(drawn[1].vertices, Corners({100, 200, 100, 200}));
}

TEST_F(RectTest, every_move_and_key_is_consumed) {
  EXPECT_TRUE(tool.OnMouseMove(1, 1));
  EXPECT_TRUE(tool.OnKeyDown(KEY_SPACE));
  EXPECT_TRUE(tool.OnKeyUp(KEY_SPACE));
}

TEST_F(RectTest, spans_the_press_and_the_cursor_in_every_direction) {
  Random random;
  for (int i = 0; i < 300; ++i) {
    const int x0 = random.Integer(0, 1024);
    const int y0 = random.Integer(0, 768);
    const int x1 = random.Integer(-300, 1400);
    const int y1 = random.Integer(-300, 1100);
    Drag(x0, y0, x1, y1);
    const int x = std::min(std::max(x1, 0), 1024);
    const int y = std::min(std::max(y1, 0), 768);
    const Rect white = {std::fmin(x, x0), std::fmin(y, y0), std::fmax(x, x0), std::fmax(y, y0)};
    const auto drawn = Draw();
    ASSERT_GE(drawn.size(), 2U);
    EXPECT_EQ(drawn[0].vertices, Corners(white));
    EXPECT_EQ(drawn[1].vertices, Corners({white.left - 1, white.bottom - 1, white.right + 1, white.top + 1}));
    EXPECT_EQ(tool.GetMouseX(), x);
    EXPECT_EQ(tool.GetMouseY(), y);
    tool.OnKeyDown(KEY_ESCAPE);
  }
}

TEST_F(RectTest, with_control_held_the_press_is_the_middle_and_the_shape_that_of_the_viewport) {
  Random random;
  tool.OnKeyDown(KEY_CONTROL);
  for (int i = 0; i < 300; ++i) {
    const int x0 = random.Integer(0, 1024);
    const int y0 = random.Integer(0, 768);
    const int x1 = random.Integer(-600, 1700);
    const int y1 = random.Integer(-600, 1400);
    Drag(x0, y0, x1, y1);
    // The factor by which the viewport's half sizes, 512 and 384, must shrink to hold the cursor.
    const double factor = std::fmin(1.0, std::fmax(std::abs(x1 - x0) / 512.0, std::abs(y1 - y0) / 384.0));
    const auto drawn = Draw();
    ASSERT_GE(drawn.size(), 2U);
    const std::vector<float> expected =
        Corners({x0 - 512 * factor, y0 - 384 * factor, x0 + 512 * factor, y0 + 384 * factor});
    for (std::size_t k = 0; k < expected.size(); ++k) {
      EXPECT_NEAR(drawn[0].vertices[k], expected[k], 1e-3);  // floats up to 2000
    }
    EXPECT_EQ(tool.GetMouseX(), x1);  // not clamped
    tool.OnKeyDown(KEY_ESCAPE);
  }
}

TEST_F(RectTest, with_control_held_a_wide_drag_cannot_exceed_the_viewport) {
  tool.OnKeyDown(KEY_CONTROL);
  Drag(512, 384, 4000, 390);
  EXPECT_EQ(Draw()[0].vertices, Corners({0, 0, 1024, 768}));
  tool.OnMouseMove(520, 2000);
  EXPECT_EQ(Draw()[0].vertices, Corners({0, 0, 1024, 768}));
}

TEST_F(RectTest, control_switches_the_shape_at_once_during_the_drag) {
  Drag(512, 384, 612, 394);
  bench.hub.requested = 0;
  EXPECT_TRUE(tool.OnKeyDown(KEY_CONTROL));
  EXPECT_EQ(Draw()[0].vertices, Corners({412, 309, 612, 459}));  // 100 by 75 about the press
  EXPECT_TRUE(tool.OnKeyUp(KEY_CONTROL));
  EXPECT_EQ(Draw()[0].vertices, Corners({512, 384, 612, 394}));
  EXPECT_EQ(bench.hub.requested, 2);
}

TEST_F(RectTest, the_white_and_the_black_rectangle_and_the_crosshair_are_drawn_in_one_pass) {
  Drag(100, 100, 300, 200);
  const auto drawn = Draw();
  EXPECT_EQ(bench.renderer.TakeCalls(),
            Lines({"SetCursorIcon(2)", "BeginRender(512, 384, 512, 384, 0)", "RenderGeometry(4, 185, 3)",
                   "RenderGeometry(4, 185, 3)", "RenderGeometry(2, 185, 3)", "RenderGeometry(2, 185, 3)",
                   "RenderGeometry(2, 185, 3)", "RenderGeometry(2, 185, 3)", "EndRender()"}));
  ASSERT_EQ(drawn.size(), 6U);
  const bool whites[] = {true, false, false, false, true, true};
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(IsWhite(drawn[i]), whites[i]) << i;
    const float shade = whites[i] ? 1.0F : 0.0F;
    for (int k = 0; k < 3; ++k) EXPECT_EQ(drawn[i].material.colour[k], shade);
    EXPECT_EQ(drawn[i].material.colour[3], 1.0F);
    EXPECT_EQ(drawn[i].material.lineWidth, 1.0F);
    EXPECT_TRUE(drawn[i].texCoords.empty());
  }
  // About (200, 150), 10 pixels each way; the black copies one to the left and one up.
  EXPECT_EQ(drawn[4].vertices, (std::vector<float>{200, 160, 0, 200, 140, 0}));
  EXPECT_EQ(drawn[5].vertices, (std::vector<float>{190, 150, 0, 210, 150, 0}));
  EXPECT_EQ(drawn[2].vertices, (std::vector<float>{199, 161, 0, 199, 141, 0}));
  EXPECT_EQ(drawn[3].vertices, (std::vector<float>{189, 151, 0, 209, 151, 0}));
}

TEST_F(RectTest, with_control_held_the_crosshair_stands_at_the_press) {
  tool.OnKeyDown(KEY_CONTROL);
  Drag(500, 400, 600, 400);
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 6U);
  EXPECT_EQ(drawn[4].vertices, (std::vector<float>{500, 410, 0, 500, 390, 0}));
}

TEST_F(RectTest, a_crosshair_near_the_press_alternates_between_none_and_small) {
  for (const bool control : {false, true}) {
    for (int reach = 0; reach < 60; ++reach) {
      RectZoomTool fresh;
      bench.Wire(fresh);
      if (control) fresh.OnKeyDown(KEY_CONTROL);
      fresh.OnMouseDown(400, 300);
      fresh.OnMouseMove(400 + reach, 300 + reach);
      // From the press to the middle, cut to whole pixels; or the lesser half size, a third wider than high.
      const int d = reach / 2;
      const int aboutPress = reach;
      CrosshairOracle oracle;
      oracle.Step(control ? aboutPress : d);
      for (int frame = 0; frame < 4; ++frame) {
        bench.renderer.ClearCalls();
        fresh.OnDraw();
        oracle.Step(control ? aboutPress : d);
        EXPECT_EQ(bench.renderer.GetGeometry().size(), oracle.size != 0 ? 6U : 2U)
            << control << ", " << reach << ", " << frame;
      }
    }
  }
}

TEST_F(RectTest, a_crosshair_far_enough_from_the_press_reaches_ten_pixels_less_and_at_most_ten) {
  for (int d = 15; d < 30; ++d) {
    Drag(400, 300, 400 + 2 * d, 300 + 2 * d);
    const auto drawn = Draw();
    ASSERT_EQ(drawn.size(), 6U) << d;
    const auto size = static_cast<float>(std::min(d - 10, 10));
    const auto x = static_cast<float>(400 + d);
    const auto y = static_cast<float>(300 + d);
    EXPECT_EQ(drawn[4].vertices, (std::vector<float>{x, y + size, 0, x, y - size, 0})) << d;
    EXPECT_EQ(drawn[5].vertices, (std::vector<float>{x - size, y, 0, x + size, y, 0})) << d;
    tool.OnKeyDown(KEY_ESCAPE);
  }
}

TEST_F(RectTest, the_middle_is_cut_to_whole_pixels_before_it_is_measured) {
  // To (371, 271): the middle at (385.5, 285.5) counts as (385, 285), 15 pixels from the press, not 14.
  Drag(400, 300, 371, 271);
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 6U);
  EXPECT_EQ(drawn[4].vertices, (std::vector<float>{385.5F, 290.5F, 0, 385.5F, 280.5F, 0}));
}

TEST_F(RectTest, a_crosshair_that_comes_up_before_the_first_move_stands_at_the_press) {
  tool.OnMouseDown(100, 200);
  EXPECT_EQ(Draw().size(), 2U);
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 6U);
  EXPECT_EQ(drawn[4].vertices, (std::vector<float>{100, 210, 0, 100, 190, 0}));
}

TEST_F(RectTest, a_refused_pass_draws_nothing) {
  Drag(100, 100, 300, 200);
  bench.renderer.FailAlways("BeginRender");
  EXPECT_TRUE(Draw().empty());
  EXPECT_EQ(bench.renderer.CountCalls("EndRender"), 0);
}

TEST_F(RectTest, escape_cancels_and_the_later_release_starts_nothing) {
  Drag(100, 100, 300, 200);
  bench.hub.requested = 0;
  EXPECT_TRUE(tool.OnKeyDown(KEY_ESCAPE));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_EQ(bench.hub.requested, 1);
  EXPECT_FALSE(tool.OnMouseUp(300, 200));
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_TRUE(Draw().empty());
  EXPECT_TRUE(bench.history.Has(1, 0));
}

TEST_F(RectTest, a_rectangle_without_width_or_height_is_given_up_and_its_record_stays_open) {
  const int ends[][2] = {{100, 300}, {300, 100}, {100, 100}};
  int presses = 0;
  for (const auto& end : ends) {
    Drag(100, 100, 300, 300);
    tool.OnMouseMove(end[0], end[1]);
    EXPECT_FALSE(tool.OnMouseUp(end[0], end[1]));
    EXPECT_FALSE(tool.IsOperating());
    EXPECT_TRUE(bench.history.Has(++presses, 0));
  }
  EXPECT_EQ(bench.hub.shotsBegun, 0);
}

TEST_F(RectTest, a_click_zooms_nowhere) {
  tool.OnMouseDown(100, 100);
  EXPECT_FALSE(tool.OnMouseUp(100, 100));
  EXPECT_EQ(bench.hub.shotsBegun, 0);
  EXPECT_FALSE(tool.IsOperating());
}

TEST_F(RectTest, a_rectangle_within_the_drag_threshold_zooms_nowhere) {
  struct SteadyTool : RectZoomTool {
    SteadyTool() { dragThreshold = 5; }
  } steady;
  bench.Wire(steady);
  for (const int reach : {5, 6}) {
    steady.OnMouseDown(100, 100);
    steady.OnMouseMove(100 + reach, 100 + reach);
    EXPECT_EQ(steady.OnMouseUp(100 + reach, 100 + reach), reach == 6);
  }
  EXPECT_EQ(bench.hub.shotsBegun, 1);
}

TEST_F(RectTest, a_release_asks_for_a_point_in_the_rectangle_first_and_then_under_its_middle) {
  Drag(100, 101, 203, 302);
  bench.renderer.rectangleHit = Vector3(0, 0, 2);
  tool.OnMouseUp(203, 302);
  EXPECT_EQ(bench.renderer.lastRectangle, (std::vector<int>{100, 101, 203, 302}));
  EXPECT_EQ(bench.renderer.rays, 0);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(0, 0, 2));
  bench.RunFor(tool, 1000);

  bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  bench.renderer.rectangleHit.reset();
  Vector3 asked;
  bench.renderer.scene = [&](const Vector3& origin, const Vector3& direction) {
    asked = origin + direction;
    return Vector3(0, 0, 3);
  };
  Drag(100, 101, 203, 302);
  tool.OnMouseUp(203, 302);
  EXPECT_EQ(bench.hub.view.pivot, Vector3(0, 0, 3));
  // (151.5, 201.5) is cut to (151, 201).
  EXPECT_NEAR(asked.x, (151 / 512.0 - 1.0) * 10.0, 1e-12);
  EXPECT_NEAR(asked.y, (201 / 384.0 - 1.0) * 10.0, 1e-12);
}

// Toward (3, 2, 4) from (0, 0, 10), 3 to the right: up x direction points to the left.
TEST_F(RectTest, unless_told_otherwise_the_flight_leads_to_the_other_side) {
  bench.renderer.rectangleHit = Vector3(3, 2, 4);
  bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 3, 0});
  Drag(100, 100, 612, 196);
  EXPECT_TRUE(tool.OnMouseUp(612, 196));
  EXPECT_NEAR(bench.hub.rectShot.sidewaysOffset, -3.0, 1e-12);
  EXPECT_NEAR(bench.hub.rectShot.upwardOffset, 2.0, 1e-12);
}

TEST_F(RectTest, the_flight_leads_to_the_pivot_and_as_far_in_as_the_larger_side_allows) {
  tool.SetFlyToRectangle(true);
  bench.renderer.rectangleHit = Vector3(3, 2, 4);
  struct Row {
    int width, height;
    double scale;
  };
  for (const Row& row : {Row{512, 96, 2.0}, Row{128, 192, 4.0}, Row{256, 192, 4.0}}) {
    bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 3, 0});
    Drag(100, 100, 100 + row.width, 100 + row.height);
    EXPECT_TRUE(tool.OnMouseUp(100 + row.width, 100 + row.height));
    const ZoomRectShotParameters& shot = bench.hub.rectShot;
    EXPECT_EQ(shot.reserved, 0U);
    EXPECT_EQ(shot.duration, 0.75);
    EXPECT_NEAR(shot.sidewaysOffset, 3.0, 1e-12);
    EXPECT_NEAR(shot.upwardOffset, 2.0, 1e-12);
    EXPECT_NEAR(shot.forwardOffset, 6.0 * (1.0 - 1.0 / row.scale), 1e-12);
    bench.RunFor(tool, 1000);
    // The eye ends in front of the pivot.
    EXPECT_NEAR(bench.hub.view.eye.x, 3.0, 1e-9);
    EXPECT_NEAR(bench.hub.view.eye.y, 2.0, 1e-9);
    EXPECT_NEAR(bench.hub.view.eye.z, 4.0 + 6.0 / row.scale, 1e-9);
  }
}

TEST_F(RectTest, the_ball_is_placed_and_stays_hidden) {
  bench.renderer.rectangleHit = Vector3(3, 2, 4);
  bench.ball.SetVisible(true);
  Drag(100, 100, 300, 300);
  tool.OnMouseUp(300, 300);
  EXPECT_FALSE(bench.ball.IsVisible());
  EXPECT_EQ(bench.ball.GetPosition(), Vector3(3, 2, 4));
  EXPECT_NEAR(bench.ball.GetSize(), 12.0 / 40.0, 1e-12);
}

TEST_F(RectTest, the_record_is_ended_once_by_the_draw_that_finds_the_shot_over) {
  Drag(100, 100, 300, 300);
  tool.OnMouseUp(300, 300);
  EXPECT_TRUE(tool.IsAnimating());
  bench.Frame(tool);
  bench.Frame(tool);
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_EQ(bench.history.samples, 2);
  bench.RunFor(tool, 1000);
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(tool.IsAnimating());
  bench.Frame(tool);
  EXPECT_TRUE(bench.history.Has(1, 1));
}

TEST_F(RectTest, during_the_flight_the_rectangle_grows_from_its_place_to_the_viewport) {
  // The rectangle of a half of the viewport about its middle; the pivot is seen where the middle is.
  bench.renderer.rectangleHit = Vector3(0, 0, 0);
  bench.renderer.project = [](const Vector3&) { return Vector2(512, 384); };
  Drag(256, 192, 768, 576);
  tool.OnMouseUp(768, 576);
  double before = 512;
  for (int i = 0; i < 48; ++i) {
    bench.renderer.ClearCalls();
    bench.Frame(tool);
    const auto& drawn = bench.renderer.GetGeometry();
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(drawn[1].vertices[0], drawn[0].vertices[0] - 1);
    const double width = drawn[0].vertices[3] - drawn[0].vertices[0];
    EXPECT_GE(width, before);
    before = width;
  }
  EXPECT_NEAR(before, 1024, 2);  // the last frame but one, a hundredth of a second before the end
}

TEST_F(RectTest, the_growth_is_that_of_the_shot_about_the_pivot_as_it_is_seen) {
  bench.renderer.rectangleHit = Vector3(0, 0, 0);
  bench.renderer.project = [](const Vector3&) { return Vector2(500, 300); };
  Drag(200, 100, 712, 484);  // centre (456, 292), scale 2
  tool.OnMouseUp(712, 484);
  bench.Frame(tool, 0);
  bench.Frame(tool, 375);
  bench.renderer.ClearCalls();
  bench.Frame(tool, 0);
  // Half the time, t = 0.5 on the ease; the eye, 10 from the pivot at first, is at 10 - 5 t = 7.5.
  const double scale = 10.0 / 7.5;
  const auto& drawn = bench.renderer.GetGeometry();
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_NEAR(drawn[0].vertices[0], 0.5 * (-256 * scale + 500) + 0.5 * 200, 1e-3);
  EXPECT_NEAR(drawn[0].vertices[1], 0.5 * (192 * scale + 300) + 0.5 * 484, 1e-3);
  EXPECT_NEAR(drawn[0].vertices[6], 0.5 * (256 * scale + 500) + 0.5 * 712, 1e-3);
  EXPECT_NEAR(drawn[0].vertices[7], 0.5 * (-192 * scale + 300) + 0.5 * 100, 1e-3);
}

TEST_F(RectTest, where_the_host_cannot_project_the_rectangle_stays_as_it_was_drawn) {
  bench.renderer.rectangleHit = Vector3(0, 0, 0);
  Drag(200, 100, 712, 484);
  tool.OnMouseUp(712, 484);
  bench.Frame(tool, 0);
  bench.Frame(tool, 375);
  EXPECT_EQ(Draw()[0].vertices, Corners({200, 100, 712, 484}));
}

TEST_F(RectTest, while_the_shot_runs_a_press_starts_nothing) {
  Drag(200, 100, 712, 484);
  tool.OnMouseUp(712, 484);
  EXPECT_TRUE(tool.OnMouseDown(5, 5));
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_TRUE(tool.OnMouseUp(5, 5));
  EXPECT_TRUE(bench.history.Has(1, 0));
  EXPECT_EQ(bench.hub.shotsBegun, 1);
}

TEST(RectZoomToolRecord, a_rectangle_that_was_abandoned_keeps_its_record_open_when_the_history_goes) {
  for (const bool escaped : {false, true}) {
    ToolBench bench;
    RectZoomTool tool;
    bench.Wire(tool);
    tool.OnMouseDown(100, 200);
    if (escaped) tool.OnKeyDown(KEY_ESCAPE);
    tool.OnMouseUp(100, 200);
    tool.SetRewindHistory(nullptr);
    EXPECT_TRUE(bench.history.Has(1, 0)) << escaped;
  }
}

// Half of the width, by the shape of the view, is half of its height and a rounding more.
TEST_F(RectTest, about_the_press_it_does_not_leave_the_view_by_a_rounding) {
  bench.Parameters().viewport_width = 100;
  bench.Parameters().viewport_height = 116;
  tool.OnKeyDown(KEY_CONTROL);
  Drag(50, 58, 100, 58);
  for (const Geometry& each : Draw()) {
    if (!IsWhite(each) || each.vertices.size() != 12) continue;
    EXPECT_EQ(each.vertices, Corners({0, 0, 100, 116}));
  }
}
