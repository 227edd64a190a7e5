// What a device and its host do with a controller, with a host that does something itself within one of the
// calls that the controller makes meanwhile: in each of them in turn. It may delete the controller in those
// that are not the renderer's.
#include <string>
#include <tuple>

#include "controller/controller_scene.h"
#include "support/acting_host.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

using Mode = Cam3DControllerParameters;

constexpr auto HOSTS_MODE = Mode::MODE_FLY;

class HistoryHooks : public RewindHistoryObserver {
 public:
  explicit HistoryHooks(ActingHost& theHost) : host(theHost) {}
  void OnCurrentElementChanged(int /*index*/) override { host.Call(); }
  void OnElementAdded(int /*index*/, const CameraParameters& /*camera*/) override { host.Call(); }
  void OnElementUpdated(int /*index*/, const CameraParameters& /*camera*/) override { host.Call(); }
  void OnElementRemoved(int /*index*/) override { host.Call(); }
  void OnHistoryCleared() override {}
  void OnTimelineClosed() override {}
  void OnTimelineOpened() override {}
  void OnTimelineSlid(int /*index*/, double /*weight*/) override {}

 private:
  ActingHost& host;
};

/// Takes the watch over a move away from whoever has it.
class Watcher : public ShotObserver {
 public:
  void OnEndShot(Shot* /*shot*/, const CameraParameters& /*camera*/) override {}
};

struct Stage {
  Stage() {
    const auto call = [this] { calls.Call(); };
    journal.recording = false;
    for (auto* const each : {&hub, &otherHub}) {
      each->GetApplicationParameters().cam3d_controller_mode = HOSTS_MODE;
      each->GetApplicationParameters().viewport_width = 800;
      each->GetApplicationParameters().viewport_height = 600;
      each->AddOperationObserver(&operations);
    }
    operations.onBegin = operations.onPerform = operations.onEnd = call;
    for (ControllerHistory* const each : {&history, &otherHistory}) {
      each->onBegin = each->onEnd = call;
      each->AddObserver(&elements);
      each->SetKorvane(&hub);
      each->AddHistoryElement(LookAt({0, 3, 10}, {0, 0, 0}, {0, 1, 0}), nullptr);
      each->AddHistoryElement(LookAt({3, 0, 10}, {0, 0, 0}, {0, 1, 0}), nullptr);
      each->AddHistoryElement(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), nullptr);
    }
    for (ControllerBall* const each : {&ball, &otherBall}) {
      each->SetKorvane(&hub);
      each->SetRenderer(&renderer);
      each->onVisible = each->onSize = call;
    }
    observer.onInput = observer.onKeyDown = observer.onKeyUp = observer.onMode = call;
    controller->AddObserver(&observer);
    for (int id = 0; id < CAM3D_KEY_COUNT; ++id)
      controller->MapKey(id, static_cast<Cam3DControllerKeyID>(id));
    Restore();
  }
  ~Stage() {
    EXPECT_FALSE(hub.broken || otherHub.broken);
    for (auto* const each : {&hub, &otherHub}) each->RemoveOperationObserver(&operations);
  }

  void Restore() {
    controller->SetKorvane(&hub);
    controller->SetRewindHistory(&history);
    controller->SetPivotBall(&ball);
    controller->SetRenderer(&renderer);
    controller->SetEnabled(true);
  }
  /// As long as there is a controller.
  void Do(const std::function<void(OpenController&)>& step) const {
    if (controller != nullptr) step(*controller);
  }
  void Input(const Vector3& translation, const Vector3& rotation) {
    Vector3 moved = translation;
    Vector3 turned = rotation;
    Do([&](OpenController& device) { device.On3DControllerInput(moved, turned); });
  }
  void Push() { Input({105, 0, 0}, {}); }
  void Turn() { Input({}, {0, 105, 0}); }
  void Rest() { Input({}, {}); }
  void Button(int id) {
    Do([&](OpenController& device) { device.On3DControllerKeyDown(id); });
    Do([&](OpenController& device) { device.On3DControllerKeyUp(id); });
  }
  void Frame(unsigned milliseconds = 16) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    otherHub.PerformOperations();
    Do([](OpenController& device) { device.Draw(); });
  }
  void Frames(int count, unsigned milliseconds) {
    for (int i = 0; i < count; ++i) Frame(milliseconds);
  }
  void SetMode(Mode::NavigationMode mode) {
    Do([mode](OpenController& device) { device.SetNavigationMode(mode); });
  }

  ManualPlatform platform;
  ActingHost calls;    // but for those of the renderer
  ActingHost drawing;  // those
  Journal journal;
  OperationHooks operations;
  HistoryHooks elements{calls};
  MischievousHub<ActingHost> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  MischievousHub<ActingHost> otherHub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  Watcher watcher;
  ActingRenderer renderer{drawing};
  ControllerHistory history{journal};
  ControllerHistory otherHistory{journal};
  ControllerBall ball{journal};
  ControllerBall otherBall{journal};
  ControllerObserver observer{journal};
  std::unique_ptr<OpenController> controller = std::make_unique<OpenController>();
};

// ---- what the device and its host do ----

void Deflect(Stage& s) {
  s.Push();
  s.Push();
  s.Frame();
  s.hub.BeginOperation(OPERATION_PAN, 1, 1);
  s.hub.EndOperation(OPERATION_PAN);
  for (int i = 0; i < 7; ++i) s.Turn();
  s.Frame();
  for (const unsigned rest : {0U, 300U, 300U}) {
    s.platform.Advance(rest);
    s.Push();
  }
  s.Rest();
  s.Push();
  s.SetMode(Mode::MODE_PAN);
  s.Rest();
  s.Turn();
  s.Push();
  s.Rest();
}

void PressButtons(Stage& s) {
  for (const Cam3DControllerKeyID id : {CAM3D_KEY_FIT, CAM3D_KEY_TOP, CAM3D_KEY_ROLL_CLOCKWISE,
                                        CAM3D_KEY_HOME, CAM3D_KEY_PAN_MODE, CAM3D_KEY_PAN_MODE}) {
    s.Push();
    s.Button(id);
    s.Frames(2, 100);
    s.Rest();
  }
  s.Frames(6, 100);
}

void StepBack(Stage& s) {
  s.Do([](OpenController& device) { device.SetKeepSceneUpright(true); });
  for (const Cam3DControllerKeyID id :
       {CAM3D_KEY_HISTORY_BACK, CAM3D_KEY_HISTORY_BACK, CAM3D_KEY_HISTORY_FORWARD}) {
    s.Button(id);
    s.Frames(6, 100);
  }
}

void WalkInParallelView(Stage& s) {
  s.hub.view = WithOrthographic(s.hub.view, 8.0, 6.0);
  s.SetMode(Mode::MODE_WALK);
  for (const bool may : {false, true}) {
    s.hub.GetApplicationParameters().auto_switch_projection = may;
    s.Push();
    s.Push();
    s.Frame();
    s.Rest();
    s.Frame(600);
  }
}

// Another has the hub's operation, or the watch over the move of a command.
void ShareHub(Stage& s) {
  OpenController second;
  second.SetKorvane(&s.hub);
  second.SetRewindHistory(&s.otherHistory);
  Vector3 push(105, 0, 0);
  Vector3 turn;
  second.On3DControllerInput(push, turn);
  s.Push();
  s.Push();
  s.Rest();
  s.Do([](OpenController& device) { device.SetEnabled(false); });
  s.Do([](OpenController& device) { device.FitToView(); });
  s.hub.SetActiveShotObserver(&s.watcher);
  s.Frames(12, 100);
  s.Do([](OpenController& device) { device.SetEnabled(true); });
  s.Frame();
}

void ChangePartners(Stage& s) {
  s.Do([](OpenController& device) { device.Create(); });
  s.Push();
  s.Do([&](OpenController& device) { device.SetRewindHistory(&s.otherHistory); });
  s.Do([&](OpenController& device) { device.SetPivotBall(&s.otherBall); });
  s.Do([&](OpenController& device) { device.SetKorvane(&s.otherHub); });
  s.Rest();
  s.Do([](OpenController& device) { device.FitToView(); });
  s.Do([&](OpenController& device) { device.SetRewindHistory(&s.history); });
  s.Do([](OpenController& device) { device.AlignToView(ViewAlignShotParameters::CAMERA_TOP); });
  s.Do([&](OpenController& device) { device.SetKorvane(&s.hub); });
  s.Do([](OpenController& device) { device.RotateView(90.0); });
  s.Do([](OpenController& device) { device.SetKorvane(nullptr); });
  s.Do([&](OpenController& device) { device.SetKorvane(&s.hub); });
  s.Push();
  s.Do([](OpenController& device) { device.SetEnabled(false); });
  s.Do([](OpenController& device) { device.Destroy(); });
  s.otherHub.EndShot();
}

struct Use {
  const char* name;
  void (*play)(Stage&);
};
constexpr Use USES[] = {{"is_deflected", Deflect},    {"presses_buttons", PressButtons},
                        {"steps_back", StepBack},     {"walks_in_a_parallel_view", WalkInParallelView},
                        {"shares_its_hub", ShareHub}, {"changes_partners", ChangePartners}};

// ---- what the host does ----

struct Act {
  const char* name;
  void (*commit)(Stage&);
  bool isForRenderer = true;  // may be done in its calls as well
};
constexpr Act ACTS[] = {
    {"deletes_it", [](Stage& s) { s.controller.reset(); }, false},
    {"takes_the_hub", [](Stage& s) { s.Do([](OpenController& device) { device.SetKorvane(nullptr); }); }},
    {"gives_another_hub",
     [](Stage& s) { s.Do([&](OpenController& device) { device.SetKorvane(&s.otherHub); }); }},
    {"takes_the_history",
     [](Stage& s) { s.Do([](OpenController& device) { device.SetRewindHistory(nullptr); }); }},
    {"gives_another_history",
     [](Stage& s) { s.Do([&](OpenController& device) { device.SetRewindHistory(&s.otherHistory); }); }},
    {"clears_the_history", [](Stage& s) { s.history.ClearHistory(); }},
    {"takes_the_ball", [](Stage& s) { s.Do([](OpenController& device) { device.SetPivotBall(nullptr); }); }},
    {"takes_the_renderer",
     [](Stage& s) { s.Do([](OpenController& device) { device.SetRenderer(nullptr); }); }},
    {"switches_it_off", [](Stage& s) { s.Do([](OpenController& device) { device.SetEnabled(false); }); }},
    {"switches_it_on", [](Stage& s) { s.Do([](OpenController& device) { device.SetEnabled(true); }); }},
    {"deflects_it", [](Stage& s) { s.Push(); }},
    {"rests_it", [](Stage& s) { s.Rest(); }},
    {"presses_a_button", [](Stage& s) { s.Button(CAM3D_KEY_FRONT); }},
    {"changes_the_mode", [](Stage& s) { s.SetMode(Mode::MODE_FLY); }},
    {"ends_the_move", [](Stage& s) { s.hub.EndShot(); }},
    {"ends_the_operation", [](Stage& s) { s.hub.EndOperation(OPERATION_CAM3D_CONTROLLER); }},
    {"begins_the_operation", [](Stage& s) { s.hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0); }},
};

class ActingHostTest : public ::testing::TestWithParam<std::tuple<int, int>> {};

void ComeToRest(Stage& s) {
  if (s.controller == nullptr) return;
  s.Restore();
  s.Rest();
  s.hub.EndShot();
  s.hub.EndOperation(OPERATION_ALL);
  s.Frame();
  EXPECT_FALSE(s.controller->IsOperating());
  EXPECT_TRUE(s.controller->GetEnabled());
}

// The act comes within the call of this number of `host`; the answer is how many there were.
long RunWith(const Use& use, ActingHost Stage::*host, const Act& act, long number) {
  Stage stage;
  (stage.*host).ActIn(number, [&] { act.commit(stage); });
  use.play(stage);
  const long calls = (stage.*host).GetCalls();
  ComeToRest(stage);
  EXPECT_TRUE(stage.controller != nullptr || !act.isForRenderer);
  stage.controller.reset();
  for (auto* const each : {&stage.hub, &stage.otherHub}) {
    each->EndOperation(OPERATION_ALL);
    EXPECT_EQ(each->GetApplicationParameters().cam3d_controller_mode, HOSTS_MODE);
  }
  EXPECT_EQ(stage.history.open, 0);
  EXPECT_EQ(stage.otherHistory.open, 0);
  EXPECT_EQ(stage.renderer.begun, stage.renderer.ended);
  return calls;
}

TEST_P(ActingHostTest, may_do_it_in_each_call) {
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  TryInEachCall([&](long number) { return RunWith(use, &Stage::calls, act, number); });
}

TEST_P(ActingHostTest, may_do_it_while_the_note_is_made_and_drawn) {
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  if (!act.isForRenderer) return;
  TryInEachCall([&](long number) { return RunWith(use, &Stage::drawing, act, number); });
}

INSTANTIATE_TEST_SUITE_P(Uses, ActingHostTest,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(std::size(USES))),
                                            ::testing::Range(0, static_cast<int>(std::size(ACTS)))),
                         [](const auto& instance) {
                           return std::string(USES[std::get<0>(instance.param)].name) + "_and_the_host_" +
                                  ACTS[std::get<1>(instance.param)].name;
                         });

}  // namespace
