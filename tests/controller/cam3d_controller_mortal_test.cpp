// A hub, a history and a ball that die, or give way to others, while they are called.
#include <vector>

#include "controller/controller_scene.h"

using namespace Korvane;

namespace {

constexpr auto HOSTS_MODE = Cam3DControllerParameters::MODE_FLY;

class MortalTest : public ::testing::Test {
 protected:
  using Hook = std::function<void()>;

  void SetUp() override { journal.recording = false; }

  std::unique_ptr<ControllerHub> MakeHub() {
    auto made = std::make_unique<ControllerHub>(journal, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    made->GetApplicationParameters().cam3d_controller_mode = HOSTS_MODE;
    return made;
  }

  // Everybody is there, and every call out comes to `hook`.
  void Begin(const Hook& hook) {
    hub = MakeHub();
    otherHub = MakeHub();
    history = std::make_unique<ControllerHistory>(journal);
    ball = std::make_unique<ControllerBall>(journal);
    controller = std::make_unique<OpenController>();
    controller->SetKorvane(hub.get());
    controller->SetRewindHistory(history.get());
    controller->SetPivotBall(ball.get());
    controller->SetRenderer(&renderer);
    controller->AddObserver(&observer);
    for (int id = 0; id < CAM3D_KEY_COUNT; ++id)
      controller->MapKey(id, static_cast<Cam3DControllerKeyID>(id));
    history->onBegin = history->onEnd = ball->onVisible = ball->onSize = hook;
    otherHistory.onBegin = otherHistory.onEnd = hook;
    hub->onUpdate = hub->onRequest = hub->onRecalculateSelection = hook;
    observer.onInput = observer.onKeyDown = observer.onKeyUp = observer.onMode = hook;
  }
  // Nobody calls any more.
  void End() {
    otherHistory.onBegin = otherHistory.onEnd = nullptr;
    observer.onInput = observer.onKeyDown = observer.onKeyUp = observer.onMode = nullptr;
    if (hub != nullptr) hub->onUpdate = hub->onRequest = hub->onRecalculateSelection = nullptr;
    if (history != nullptr) history->onBegin = history->onEnd = nullptr;
    if (ball != nullptr) ball->onVisible = ball->onSize = nullptr;
    controller.reset();
  }

  void Input(const Vector3& translation, const Vector3& rotation) {
    if (controller == nullptr) return;
    Vector3 moved = translation;
    Vector3 turned = rotation;
    controller->On3DControllerInput(moved, turned);
  }
  void Press(int button) {
    if (controller != nullptr) controller->On3DControllerKeyDown(button);
    if (controller != nullptr) controller->On3DControllerKeyUp(button);
  }
  void Frame(unsigned milliseconds) {
    platform.Advance(milliseconds);
    for (const auto* each : {&hub, &otherHub}) {
      if (*each != nullptr) (*each)->PerformOperations();
    }
  }
  void Play() {
    for (int i = 0; i < 7; ++i) {
      Input({}, {0, 105, 0});
      Frame(16);
    }
    for (const unsigned rest : {0U, 300U, 300U}) {
      platform.Advance(rest);
      Input({105, 0, 0}, {});
    }
    Input({}, {});
    for (const int id : {1, 7, 15, 11, 10, 8, 21, 0, 21}) {
      Input({105, 0, 0}, {});
      Press(id);
      Frame(100);
      Input({}, {});
    }
    for (int i = 0; i < 6; ++i) Frame(100);
    Input({105, 0, 0}, {});
    Frame(16);
  }

  static void ExpectAtRest(const ControllerHub* each) {
    if (each == nullptr) return;
    EXPECT_EQ(each->GetApplicationParameters().cam3d_controller_mode, HOSTS_MODE);
    EXPECT_FALSE(each->IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  }

  ManualPlatform platform;
  Journal journal;
  RecordingRenderer renderer;
  ControllerObserver observer{journal};
  std::unique_ptr<ControllerHub> hub;
  std::unique_ptr<ControllerHub> otherHub;
  std::unique_ptr<ControllerHistory> history;
  ControllerHistory otherHistory{journal};
  std::unique_ptr<ControllerBall> ball;
  ControllerBall otherBall{journal};
  std::unique_ptr<OpenController> controller;
};

}  // namespace

// At every call out of a whole play. A record whose hub is gone has no camera to be closed with.
TEST_F(MortalTest, whoever_dies_or_gives_way_leaves_nothing_open) {
  struct Deed {
    const char* name;
    std::function<void()> act;
  };
  const std::vector<Deed> deeds = {
      {"the hub dies",
       [this] {
         if (hub != nullptr && !hub->IsCalled()) hub.reset();
       }},
      {"the history dies", [this] { history.reset(); }},
      {"the ball dies", [this] { ball.reset(); }},
      {"another hub", [this] { controller->SetKorvane(otherHub.get()); }},
      {"another history", [this] { controller->SetRewindHistory(&otherHistory); }},
      {"another ball", [this] { controller->SetPivotBall(&otherBall); }},
      {"the hub gives way and dies",
       [this] {
         controller->SetKorvane(otherHub.get());
         if (hub != nullptr && !hub->IsCalled()) hub.reset();
       }},
      {"the history gives way and dies",
       [this] {
         controller->SetRewindHistory(&otherHistory);
         history.reset();
       }},
      {"delete", [this] { controller.reset(); }},
  };
  for (const Deed& deed : deeds) {
    int calls = 0;
    int nth = 0;
    do {
      ++nth;
      calls = 0;
      SCOPED_TRACE(std::string(deed.name) + " at call " + std::to_string(nth));
      Begin([&] {
        if (++calls == nth && controller != nullptr) deed.act();
      });
      Play();
      End();
      ExpectAtRest(hub.get());
      ExpectAtRest(otherHub.get());
      const bool canClose = history != nullptr && hub != nullptr;
      EXPECT_EQ(canClose ? history->open : 0, 0);
      EXPECT_EQ(otherHistory.open, 0);
      ASSERT_FALSE(HasFailure());
    } while (calls >= nth);
    EXPECT_GT(nth, 50) << deed.name;
  }
}
