// Every tool, alone or wired to what fails: nothing breaks, no record is left open that should be closed, no
// parameter stays changed, and a mouse move or a draw allocates nothing.
#include <limits>
#include <memory>

#include "interaction/tools/tool_fakes.h"
#include "korvane/center_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/walk_tool.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr int HIGHEST = std::numeric_limits<int>::max();
constexpr int LOWEST = std::numeric_limits<int>::min();

struct Kind {
  const char* name;
  std::unique_ptr<Tool> (*make)();
};

template <class Made>
std::unique_ptr<Tool> Make() {
  return std::make_unique<Made>();
}

const Kind KINDS[] = {
    {"Orbit", Make<OrbitTool>},
    {"Pan", Make<PanTool>},
    {"Zoom", Make<ZoomTool>},
    {"MouseWheelZoom", Make<MouseWheelZoomTool>},
    {"RectZoom", Make<RectZoomTool>},
    {"Look", Make<LookTool>},
    {"LookMove", Make<LookMoveTool>},
    {"LookAt", Make<LookAtTool>},
    {"Center",
     [] {
       auto tool = std::make_unique<CenterTool>(nullptr, nullptr, STRING_PIVOT);
       tool->SetHideBallAtStrayRelease(true);
       return std::unique_ptr<Tool>(std::move(tool));
     }},
    {"Walk", Make<WalkTool>},
};

class EveryTool : public ::testing::TestWithParam<Kind> {
 protected:
  EveryTool() {
    bench.hub.recording = false;
    bench.renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0.6, 0.8}};
    bench.renderer.scene = [](const Vector3&, const Vector3&) { return Vector3(0, 0, 2); };
    bench.renderer.project = [](const Vector3&) { return Vector2(500, 300); };
    Rewire();
  }

  void Rewire() {
    tool = GetParam().make();
    bench.Wire(*tool);
  }
  bool IsWheel() const { return std::string(GetParam().name) == "MouseWheelZoom"; }
  bool IsRect() const { return std::string(GetParam().name) == "RectZoom"; }

  void Begin(int x = 300, int y = 300) {
    tool->OnMouseDown(x, y);
    if (IsWheel()) tool->OnMouseWheel(x, y, 120);
  }
  void End(int x = 400, int y = 350) {
    tool->OnMouseUp(x, y);
    if (IsWheel()) bench.Frame(*tool, 500);
  }
  // All that a host can send, once each.
  void RunGesture() {
    tool->Activate();
    Begin();
    tool->OnMouseMove(350, 320);
    Draw();
    for (int key = KEY_SHIFT; key <= KEY_SPACE; ++key) {
      if (key == KEY_ESCAPE) continue;
      tool->OnKeyDown(static_cast<KeyID>(key));
      tool->OnKeyUp(static_cast<KeyID>(key));
    }
    tool->OnMouseMove(400, 350);
    Draw();
    End();
    for (int i = 0; i < 12; ++i) Draw();
    tool->Deactivate();
  }
  void Draw() { bench.Frame(*tool, 100); }

  ToolBench bench;
  std::unique_ptr<Tool> tool;
};

bool SameParameters(const ApplicationParameters& a, const ApplicationParameters& b) {
  return a.preserve_orbit_up_direction == b.preserve_orbit_up_direction &&
         a.align_orbit_up_direction == b.align_orbit_up_direction && a.do_custom_orbit == b.do_custom_orbit &&
         a.look_invert_vertical_axis == b.look_invert_vertical_axis &&
         a.zoom_back_distance == b.zoom_back_distance && a.zoom_min_limit_motion == b.zoom_min_limit_motion;
}

}  // namespace

TEST_P(EveryTool, ends_each_gesture_with_one_record_no_operation_and_the_old_parameters) {
  for (const bool flag : {false, true}) {
    ApplicationParameters& parameters = bench.Parameters();
    parameters.preserve_orbit_up_direction = flag;
    parameters.align_orbit_up_direction = flag;
    parameters.look_invert_vertical_axis = flag;
    parameters.zoom_min_limit_motion = flag;
    const ApplicationParameters before = parameters;
    const int records = bench.history.begun + 1;
    RunGesture();
    EXPECT_TRUE(bench.history.Has(records, records));
    EXPECT_TRUE(SameParameters(bench.Parameters(), before));
    EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_ALL));
    EXPECT_FALSE(bench.hub.IsShotActive());
    EXPECT_FALSE(tool->IsOperating());
    EXPECT_FALSE(tool->IsAnimating());
    EXPECT_FALSE(bench.ball.IsVisible());
    EXPECT_EQ(bench.renderer.mouseoverBegun, bench.renderer.mouseoverEnded);
    EXPECT_TRUE(bench.hub.view.IsFinite());
  }
}

TEST_P(EveryTool, ends_its_record_once_when_something_else_ends_its_shot) {
  Begin();
  tool->OnMouseMove(400, 350);
  if (std::string(GetParam().name) == "Zoom") tool->OnMouseDown(300, 300);  // no drag any more
  End();
  bench.hub.EndShot();
  Draw();
  Draw();
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(tool->IsAnimating());
}

TEST_P(EveryTool, outlasts_a_shot_that_replaces_its_own) {
  Begin();
  tool->OnMouseMove(400, 350);
  End();
  SpinShotParameters other;
  other.duration = 0.3;
  bench.hub.BeginShot(other);
  for (int i = 0; i < 10; ++i) Draw();
  EXPECT_TRUE(bench.history.Has(1, 1));
  EXPECT_FALSE(tool->IsAnimating());
}

TEST_P(EveryTool, works_with_any_of_its_collaborators_missing) {
  for (int missing = 0; missing < 16; ++missing) {
    Rewire();
    if ((missing & 1) != 0) tool->SetKorvane(nullptr);
    if ((missing & 2) != 0) tool->SetRenderer(nullptr);
    if ((missing & 4) != 0) tool->SetRewindHistory(nullptr);
    if ((missing & 8) != 0) tool->SetPivotBall(nullptr);
    const int open = bench.history.begun - bench.history.ended;
    RunGesture();
    EXPECT_FALSE(tool->IsOperating()) << missing;
    EXPECT_FALSE(tool->IsAnimating()) << missing;
    EXPECT_EQ(bench.history.begun - bench.history.ended, open) << missing;
    EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_ALL)) << missing;
  }
}

TEST_P(EveryTool, survives_the_loss_of_a_collaborator_in_mid_gesture) {
  for (int lost = 0; lost < 16; ++lost) {
    Rewire();
    Begin();
    tool->OnMouseMove(400, 350);
    if ((lost & 1) != 0) tool->SetKorvane(nullptr);
    if ((lost & 2) != 0) tool->SetRenderer(nullptr);
    if ((lost & 4) != 0) tool->SetRewindHistory(nullptr);
    if ((lost & 8) != 0) tool->SetPivotBall(nullptr);
    tool->OnMouseMove(380, 340);
    tool->OnKeyDown(KEY_UP);
    tool->OnKeyDown(KEY_CONTROL);
    tool->OnKeyUp(KEY_CONTROL);
    tool->OnDraw();
    End();
    for (int i = 0; i < 12; ++i) Draw();
    EXPECT_FALSE(tool->IsOperating()) << lost;
    EXPECT_FALSE(tool->IsAnimating() && (lost & 1) == 0) << lost;
    bench.hub.EndOperation(OPERATION_ALL);
    bench.hub.EndShot();
  }
}

TEST_P(EveryTool, lets_go_of_a_hub_that_is_taken_away_during_its_shot) {
  Begin();
  tool->OnMouseMove(400, 350);
  End();
  tool->SetKorvane(nullptr);
  tool->OnDraw();
  // The centre tool draws nothing without a hub, so it learns of the end when it has one again.
  tool->SetKorvane(&bench.hub);
  bench.hub.EndShot();
  tool->OnDraw();
  EXPECT_FALSE(tool->IsAnimating());
}

TEST_P(EveryTool, works_in_a_viewport_without_size) {
  const int sizes[][2] = {{0, 0}, {0, 768}, {1024, 0}, {-5, -7}};
  for (const auto& size : sizes) {
    Rewire();
    bench.Parameters().viewport_width = size[0];
    bench.Parameters().viewport_height = size[1];
    RunGesture();
    EXPECT_TRUE(bench.hub.view.IsFinite()) << size[0];
    EXPECT_FALSE(tool->IsOperating());
    EXPECT_FALSE(tool->IsAnimating());
  }
}

TEST_P(EveryTool, hands_no_bad_number_to_the_host) {
  const Vector3 bad(NOT_A_NUMBER, 0, 0);
  int worse = 0;
  bench.hub.onApply = [&] { worse += bench.hub.view.IsFinite() ? 0 : 1; };
  for (Vector3 CameraParameters::*const field :
       {&CameraParameters::eye, &CameraParameters::centre, &CameraParameters::up, &CameraParameters::pivot}) {
    Rewire();
    bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    bench.hub.view.*field = bad;
    RunGesture();
    EXPECT_EQ(worse, 0);
    EXPECT_FALSE(tool->IsOperating());
    EXPECT_FALSE(tool->IsAnimating());
  }
}

TEST_P(EveryTool, believes_no_hit_that_is_no_point) {
  int worse = 0;
  bench.hub.onApply = [&] { worse += bench.hub.view.IsFinite() ? 0 : 1; };
  bench.renderer.scene = [](const Vector3&, const Vector3&) { return Vector3(0, NOT_A_NUMBER, 0); };
  bench.renderer.rectangleHit = Vector3(NOT_A_NUMBER, 0, 0);
  bench.renderer.component = ToolRenderer::Component{{0, 0, NOT_A_NUMBER}, {0, 0, NOT_A_NUMBER}};
  RunGesture();
  EXPECT_EQ(worse, 0);
  EXPECT_TRUE(bench.hub.view.IsFinite());
  EXPECT_FALSE(tool->IsAnimating());
}

TEST_P(EveryTool, takes_degenerate_and_extreme_cameras) {
  Random random;
  for (int i = 0; i < 50; ++i) {
    Rewire();
    bench.hub.view = ExtremeCamera(random);
    RunGesture();
    EXPECT_TRUE(bench.hub.view.IsFinite());
    EXPECT_FALSE(tool->IsOperating());
  }
}

TEST_P(EveryTool, takes_cursors_from_the_ends_of_the_range) {
  for (const int x : {LOWEST, -1, 0, HIGHEST}) {
    for (const int y : {HIGHEST, 0, LOWEST}) {
      Rewire();
      DynamicIcon2D note(1);
      tool->SetMouseHUD(&note);
      for (const bool control : {false, true}) {
        if (control) tool->OnKeyDown(KEY_CONTROL);
        Begin(x, y);
        tool->OnMouseMove(y, x);
        Draw();
        tool->OnMouseWheel(y, x, LOWEST);
        Draw();
        EXPECT_LE(std::abs(note.GetPosition().x), 1024.0);
        End(x, y);
        for (int i = 0; i < 12; ++i) Draw();
        EXPECT_FALSE(tool->IsOperating());
        EXPECT_TRUE(bench.hub.view.IsFinite());
      }
    }
  }
}

TEST_P(EveryTool, keeps_its_brackets_balanced_through_any_stream_of_events) {
  // A rectangle that is given up leaves its record open, and the next press takes its place.
  Random random;
  for (int stream = 0; stream < 40; ++stream) {
    Rewire();
    const ApplicationParameters before = bench.Parameters();
    for (int i = 0; i < 100; ++i) {
      const int x = random.Integer(-100, 1100);
      const int y = random.Integer(-100, 900);
      switch (random.Integer(0, 6)) {
        case 0:
          tool->OnMouseDown(x, y);
          break;
        case 1:
          tool->OnMouseUp(x, y);
          break;
        case 2:
          tool->OnMouseWheel(x, y, random.Integer(-300, 300));
          break;
        case 3:
          tool->OnKeyDown(static_cast<KeyID>(random.Integer(0, 12)));
          break;
        case 4:
          tool->OnKeyUp(static_cast<KeyID>(random.Integer(0, 12)));
          break;
        case 5:
          bench.Frame(*tool, static_cast<std::uint32_t>(random.Integer(0, 400)));
          break;
        default:
          tool->OnMouseMove(x, y);
          break;
      }
      const int open = bench.history.begun - bench.history.ended;
      EXPECT_GE(open, 0);
      EXPECT_TRUE(IsRect() || open <= 1);
    }
    tool->OnMouseUp(1, 1);
    for (int i = 0; i < 15; ++i) Draw();
    EXPECT_TRUE(IsRect() || bench.history.begun == bench.history.ended);
    EXPECT_TRUE(SameParameters(bench.Parameters(), before));
    EXPECT_FALSE(bench.hub.IsOperationActive(OPERATION_ALL));
    EXPECT_FALSE(bench.ball.IsVisible());
    EXPECT_EQ(bench.renderer.mouseoverBegun, bench.renderer.mouseoverEnded);
    EXPECT_TRUE(bench.hub.view.IsFinite());
    if (IsRect()) bench.history.ended = bench.history.begun;
    bench.hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    bench.renderer.ClearCalls();
  }
}

TEST_P(EveryTool, may_be_destroyed_in_mid_gesture_after_its_hub) {
  auto hub = std::make_unique<ToolHub>(bench.hub.view);
  RecordingHistory history;
  tool->SetKorvane(hub.get());
  tool->SetRewindHistory(&history);
  Begin();
  tool->OnMouseMove(400, 350);
  hub.reset();
  tool.reset();
  EXPECT_LE(history.ended, history.begun);
}

TEST_P(EveryTool, asks_no_hub_that_is_gone_when_its_history_is_taken_away) {
  auto hub = std::make_unique<ToolHub>(bench.hub.view);
  tool->SetKorvane(hub.get());
  Begin();
  tool->OnMouseMove(400, 350);
  hub.reset();
  tool->SetRewindHistory(nullptr);
  EXPECT_EQ(bench.history.ended, 0);
}

TEST_P(EveryTool, a_move_and_a_draw_in_mid_gesture_allocate_nothing) {
  DynamicIcon2D mouseNote(1);
  DynamicIcon2D viewNote(2);
  tool->SetMouseHUD(&mouseNote);
  tool->SetViewportHUD(&viewNote);
  bench.renderer.quiet = true;
  Begin();
  for (int i = 0; i < 3; ++i) {
    tool->OnMouseMove(310 + i, 305);
    Draw();
    if (IsWheel()) tool->OnMouseWheel(300, 300, 120);
  }
  ASSERT_TRUE(tool->IsOperating());
  const AllocationCounter counter;
  for (int i = 0; i < 50; ++i) {
    tool->OnMouseMove(320 + 3 * i, 310 + i);
    if (IsWheel()) tool->OnMouseWheel(300, 300, 30);
    Draw();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

TEST_P(EveryTool, a_draw_during_its_shot_allocates_nothing) {
  bench.renderer.quiet = true;
  Begin();
  tool->OnMouseMove(400, 350);
  End();
  Draw();
  const AllocationCounter counter;
  for (int i = 0; i < 4; ++i) Draw();
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Tools, EveryTool, ::testing::ValuesIn(KINDS),
                         [](const auto& kind) { return kind.param.name; });
