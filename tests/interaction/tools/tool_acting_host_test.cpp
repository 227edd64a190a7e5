// What the user and the host do with each of the tools, with a host that does something itself within one of
// the calls that the tool makes meanwhile: in each of them in turn.
#include <memory>
#include <string>
#include <tuple>

#include "interaction/tools/tool_fakes.h"
#include "korvane/center_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/walk_tool.h"
#include "support/acting_host.h"
#include "support/acting_operations.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

/// A scene, with something under every pixel.
class SceneRenderer : public ActingRenderer {
 public:
  explicit SceneRenderer(ActingHost& theHost) : ActingRenderer(theHost), told(theHost) {
    SetSceneHit(Vector3(0.0, 0.0, 2.0));
  }

  bool QueryScreenRectRaySceneIntersection(int /*left*/, int /*bottom*/, int /*right*/, int /*top*/,
                                           Vector3& hit) override {
    hit = Vector3(0.0, 0.0, 2.0);
    return Tell();
  }
  bool BeginMouseoverComponent(bool /*highlightFaces*/) override {
    pointing = true;
    return Tell();
  }
  bool GetMouseoverComponent(Vector2 /*pixel*/, Vector3& point, Vector3& normal) override {
    point = Vector3(0.0, 0.0, 2.0);
    normal = Vector3(0.0, 0.6, 0.8);
    return Tell();
  }
  bool EndMouseoverComponent() override {
    pointing = false;
    return Tell();
  }
  bool ProjectToScreen(Vector3 /*point*/, Vector2& pixel) override {
    pixel = Vector2(500.0, 300.0);
    return Tell();
  }

  bool pointing = false;  // a mouse-over is open

 private:
  bool Tell() {
    told.Call();
    return true;
  }

  ActingHost& told;
};

using MakeTool = std::unique_ptr<Tool> (*)();

struct Stage {
  explicit Stage(MakeTool make) : tool(make()) {
    for (auto* const each : {&hub, &otherHub}) {
      each->GetApplicationParameters().viewport_width = 1024;
      each->GetApplicationParameters().viewport_height = 768;
      each->GetApplicationParameters().use_look_at_obstruction_detection = true;
      each->AddOperationObserver(&operations);
    }
    history.onBegin = history.onEnd = otherHistory.onBegin = otherHistory.onEnd = [this] { calls.Call(); };
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    ball.Create();
    Restore();
    tool->SetMouseHUD(&mouseNote);
    tool->SetViewportHUD(&viewNote);
  }
  ~Stage() {
    EXPECT_FALSE(hub.broken || otherHub.broken);
    for (auto* const each : {&hub, &otherHub}) each->RemoveOperationObserver(&operations);
  }

  void Restore() {
    tool->SetKorvane(&hub);
    tool->SetRenderer(&renderer);
    tool->SetRewindHistory(&history);
    tool->SetPivotBall(&ball);
  }
  /// As long as there is a tool.
  void Do(const std::function<void(Tool&)>& step) const {
    if (tool != nullptr) step(*tool);
  }
  void Press(int x, int y) {
    Do([=](Tool& each) { each.OnMouseDown(x, y); });
  }
  void Move(int x, int y) {
    Do([=](Tool& each) { each.OnMouseMove(x, y); });
  }
  void Release(int x, int y) {
    Do([=](Tool& each) { each.OnMouseUp(x, y); });
  }
  void Turn(int notches) {
    Do([=](Tool& each) { each.OnMouseWheel(300, 300, 120 * notches); });
  }
  void Key(KeyID key, bool down) {
    Do([=](Tool& each) { down ? each.OnKeyDown(key) : each.OnKeyUp(key); });
  }
  void Cut() {
    Do([](Tool& each) { each.EndGesture(); });
  }
  void Frame(unsigned milliseconds = 100) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    otherHub.PerformOperations();
    Do([](Tool& each) { each.OnDraw(); });
  }
  void Frames(int count) {
    for (int i = 0; i < count; ++i) Frame();
  }

  ManualPlatform platform;
  ActingHost calls;
  MischievousHub<ActingHost> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  MischievousHub<ActingHost> otherHub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  ActingOperations operations{calls};
  SceneRenderer renderer{calls};
  SceneRenderer otherRenderer{calls};
  RecordingHistory history;
  RecordingHistory otherHistory;
  DynamicIcon2D mouseNote{1};
  DynamicIcon2D viewNote{2};
  PivotBall ball;
  std::unique_ptr<Tool> tool;
};

// ---- the tools, each also in other settings than it begins with ----

template <class Made>
std::unique_ptr<Tool> Make() {
  return std::make_unique<Made>();
}

struct FixedAxesOrbit : OrbitTool {
  FixedAxesOrbit() { fixedAxesOrbit = true; }
};

struct Kind {
  const char* name;
  MakeTool make;
};
constexpr Kind KINDS[] = {
    {"orbit", Make<OrbitTool>},
    {"orbit_about_fixed_axes", Make<FixedAxesOrbit>},
    {"pan", Make<PanTool>},
    {"zoom", Make<ZoomTool>},
    {"zoom_with_limits",
     [] {
       auto made = std::make_unique<ZoomTool>();
       made->SetConstrainZoom(true);
       made->SetUseCurrentPivotPoint(true);
       return std::unique_ptr<Tool>(std::move(made));
     }},
    {"wheel", Make<MouseWheelZoomTool>},
    {"wheel_with_clicks",
     [] {
       auto made = std::make_unique<MouseWheelZoomTool>();
       made->SetClickZoomEnabled(true);
       return std::unique_ptr<Tool>(std::move(made));
     }},
    {"rectangle", Make<RectZoomTool>},
    {"look", Make<LookTool>},
    {"look_and_move", Make<LookMoveTool>},
    {"look_at", Make<LookAtTool>},
    {"look_at_faces",
     [] {
       auto made = std::make_unique<LookAtTool>();
       made->EnableFaceHighlighting();
       made->EnableBackfaceViewing();
       return std::unique_ptr<Tool>(std::move(made));
     }},
    {"centre", [] { return std::unique_ptr<Tool>(new CenterTool(nullptr, nullptr, STRING_PIVOT)); }},
    {"walk", Make<WalkTool>},
    {"walk_by_intervals",
     [] {
       auto made = std::make_unique<WalkTool>();
       made->SetRewindHistoryInterval(1.0);
       return std::unique_ptr<Tool>(std::move(made));
     }},
};

// ---- what the user and the host do ----

void Drag(Stage& s) {
  s.Do([](Tool& each) { each.Activate(); });
  s.Press(300, 300);
  s.Turn(1);
  s.Move(340, 320);
  s.Frame(16);
  s.Move(400, 380);
  s.Frame(1100);
  s.Release(400, 380);
  s.Frames(10);
  s.Press(300, 300);
  s.Press(310, 300);
  s.Do([](Tool& each) { each.Deactivate(); });
}

void Click(Stage& s) {
  s.Press(300, 300);
  s.Release(300, 300);
  s.Frame();
  s.Turn(1);
  s.Press(500, 300);
  s.Move(505, 300);
  s.Release(505, 300);
  s.Frames(9);
  s.Key(KEY_SHIFT, true);
  s.Press(300, 300);
  s.Release(300, 300);
  s.Key(KEY_SHIFT, false);
  s.Frames(9);
}

void BeginSpin(Stage& s) {
  SpinShotParameters spin;
  spin.duration = 0.2;
  s.hub.BeginShot(spin);
}

void TurnWheel(Stage& s) {
  s.Turn(1);
  s.Frame(16);
  s.Turn(2);
  s.Frame(600);
  s.Turn(-1);
  s.Press(300, 300);
  s.Move(310, 300);
  s.Release(310, 300);
  s.Frames(8);
}

// The release begins its move while another one goes on.
void TakeOver(Stage& s) {
  s.Press(300, 300);
  s.Turn(1);
  BeginSpin(s);
  s.Release(300, 300);
  s.Frame(600);
  s.Press(300, 300);
  s.Move(340, 320);
  BeginSpin(s);
  s.Release(340, 320);
  s.Frames(3);
}

void UseKeys(Stage& s) {
  s.Press(300, 300);
  s.Turn(1);
  s.Key(KEY_CONTROL, true);
  s.Move(380, 300);
  for (const KeyID key : {KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_RUN}) {
    s.Key(key, true);
    s.Frame(16);
    s.Key(key, false);
  }
  s.Key(KEY_CONTROL, false);
  s.Key(KEY_ESCAPE, true);
  s.Key(KEY_ESCAPE, false);
  s.Release(380, 300);
  s.Frame();
}

void CutOff(Stage& s) {
  s.Cut();
  s.Press(300, 300);
  s.Turn(-1);
  s.Move(340, 320);
  s.Cut();
  s.Press(300, 300);
  s.Move(340, 320);
  s.Release(340, 320);
  s.Frame(16);
  s.Cut();
  s.Frame();
}

// Between the events of a gesture.
void ChangePartners(Stage& s) {
  s.Do([](Tool& each) { each.Activate(); });
  s.Press(300, 300);
  s.Turn(1);
  s.Move(340, 320);
  s.Do([&](Tool& each) { each.SetRewindHistory(&s.otherHistory); });
  s.Do([&](Tool& each) { each.SetRenderer(&s.otherRenderer); });
  s.Move(350, 320);
  s.Release(350, 320);
  s.Do([&](Tool& each) { each.SetRewindHistory(&s.history); });
  s.Frame(16);
  s.Cut();
  s.Press(300, 300);
  s.Turn(1);
  s.Do([](Tool& each) { each.SetKorvane(nullptr); });
  s.Move(340, 320);
  s.Key(KEY_ESCAPE, true);
  s.Frame(16);
  s.Do([&](Tool& each) { each.SetKorvane(&s.hub); });
  s.Release(340, 320);
  s.Do([](Tool& each) { each.SetRenderer(nullptr); });
  s.Press(300, 300);
  s.Frame(16);
}

struct Use {
  const char* name;
  void (*play)(Stage&);
};
constexpr Use USES[] = {
    {"drag", Drag},    {"click", Click}, {"wheel", TurnWheel},        {"take_over", TakeOver},
    {"keys", UseKeys}, {"cuts", CutOff}, {"partners", ChangePartners}};

// ---- what the host does ----

struct Act {
  const char* name;
  void (*commit)(Stage&);
};
constexpr Act ACTS[] = {
    {"destroys_it", [](Stage& s) { s.tool.reset(); }},
    {"takes_the_hub", [](Stage& s) { s.Do([](Tool& each) { each.SetKorvane(nullptr); }); }},
    {"gives_another_hub", [](Stage& s) { s.Do([&](Tool& each) { each.SetKorvane(&s.otherHub); }); }},
    {"takes_the_renderer", [](Stage& s) { s.Do([](Tool& each) { each.SetRenderer(nullptr); }); }},
    {"takes_the_history", [](Stage& s) { s.Do([](Tool& each) { each.SetRewindHistory(nullptr); }); }},
    {"takes_the_ball", [](Stage& s) { s.Do([](Tool& each) { each.SetPivotBall(nullptr); }); }},
    {"takes_the_notes",
     [](Stage& s) {
       s.Do([](Tool& each) { each.SetMouseHUD(nullptr); });
       s.Do([](Tool& each) { each.SetViewportHUD(nullptr); });
     }},
    {"cuts_it_off", [](Stage& s) { s.Cut(); }},
    {"presses", [](Stage& s) { s.Press(200, 200); }},
    {"releases", [](Stage& s) { s.Release(250, 200); }},
    {"moves", [](Stage& s) { s.Move(260, 200); }},
    {"turns_the_wheel", [](Stage& s) { s.Turn(1); }},
    {"cancels", [](Stage& s) { s.Key(KEY_ESCAPE, true); }},
    {"puts_it_away", [](Stage& s) { s.Do([](Tool& each) { each.Deactivate(); }); }},
    {"draws", [](Stage& s) { s.Do([](Tool& each) { each.OnDraw(); }); }},
    {"ends_the_move", [](Stage& s) { s.hub.EndShot(); }},
    {"begins_a_move", BeginSpin},
    {"ends_the_operations", [](Stage& s) { s.hub.EndOperation(OPERATION_ALL); }},
};

class ActingHostTest : public ::testing::TestWithParam<std::tuple<int, int>> {};

void ComeToRest(Stage& s) {
  if (s.tool == nullptr) return;
  s.Restore();
  s.tool->EndGesture();
  EXPECT_FALSE(s.tool->IsOperating());
  EXPECT_FALSE(s.tool->IsAnimating());
}

// The act comes within the call of this number; the answer is how many there were.
long RunWith(const Kind& kind, const Use& use, const Act& act, long number) {
  Stage stage(kind.make);
  stage.calls.ActIn(number, [&] { act.commit(stage); });
  use.play(stage);
  const long calls = stage.calls.GetCalls();
  ComeToRest(stage);
  const bool isThere = stage.tool != nullptr;
  stage.tool.reset();
  for (auto* const each : {&stage.hub, &stage.otherHub}) {
    each->EndShot();
    each->EndOperation(OPERATION_ALL);
  }
  for (const RecordingHistory* const each : {&stage.history, &stage.otherHistory})
    EXPECT_LE(each->ended, each->begun);
  for (const SceneRenderer* const each : {&stage.renderer, &stage.otherRenderer}) {
    EXPECT_EQ(each->begun, each->ended);
    EXPECT_FALSE(isThere && each->pointing);
  }
  return calls;
}

TEST_P(ActingHostTest, may_do_it_in_each_call) {
  const Kind& kind = KINDS[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  for (const Use& use : USES) {
    SCOPED_TRACE(use.name);
    TryInEachCall([&](long number) { return RunWith(kind, use, act, number); });
  }
}

INSTANTIATE_TEST_SUITE_P(Tools, ActingHostTest,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(std::size(KINDS))),
                                            ::testing::Range(0, static_cast<int>(std::size(ACTS)))),
                         [](const auto& instance) {
                           return std::string(KINDS[std::get<0>(instance.param)].name) + "_and_the_host_" +
                                  ACTS[std::get<1>(instance.param)].name;
                         });

}  // namespace
