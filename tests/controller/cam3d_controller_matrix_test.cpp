// Every call out, and everything that a host may do in it.
#include <vector>

#include "controller/controller_scene.h"

using namespace Korvane;

namespace {

// Does a deed at the nth call of a hook, once.
class Matrix : public HostScene {
 protected:
  using Act = std::function<void(Matrix&)>;

  struct Hook {
    const char* name;
    std::function<void()>& (*find)(Matrix&);
  };

  static const std::vector<Hook>& Hooks() {
    static const std::vector<Hook> HOOKS = {
        {"update", [](Matrix& m) -> std::function<void()>& { return m.hub.onUpdate; }},
        {"request", [](Matrix& m) -> std::function<void()>& { return m.hub.onRequest; }},
        {"apply", [](Matrix& m) -> std::function<void()>& { return m.hub.onApply; }},
        {"selection", [](Matrix& m) -> std::function<void()>& { return m.hub.onRecalculateSelection; }},
        {"record begins", [](Matrix& m) -> std::function<void()>& { return m.history.onBegin; }},
        {"record ends", [](Matrix& m) -> std::function<void()>& { return m.history.onEnd; }},
        {"ball visible", [](Matrix& m) -> std::function<void()>& { return m.ball.onVisible; }},
        {"ball size", [](Matrix& m) -> std::function<void()>& { return m.ball.onSize; }},
        {"input", [](Matrix& m) -> std::function<void()>& { return m.observer.onInput; }},
        {"key down", [](Matrix& m) -> std::function<void()>& { return m.observer.onKeyDown; }},
        {"key up", [](Matrix& m) -> std::function<void()>& { return m.observer.onKeyUp; }},
        {"mode", [](Matrix& m) -> std::function<void()>& { return m.observer.onMode; }},
        {"shot begins", [](Matrix& m) -> std::function<void()>& { return m.onShotBegins; }},
        {"shot ends", [](Matrix& m) -> std::function<void()>& { return m.onShotEnds; }},
        {"operation begins", [](Matrix& m) -> std::function<void()>& { return m.watch.onBegin; }},
        {"operation ends", [](Matrix& m) -> std::function<void()>& { return m.watch.onEnd; }},
        {"operation performs", [](Matrix& m) -> std::function<void()>& { return m.watch.onPerform; }},
    };
    return HOOKS;
  }

  struct Named {
    const char* name;
    Act act;
  };
  static const std::vector<Named>& Deeds() {
    static const std::vector<Named> DEEDS = {
        {"delete", [](Matrix& m) { m.controller.reset(); }},
        {"switch off", [](Matrix& m) { m.controller->SetEnabled(false); }},
        {"switch off and on",
         [](Matrix& m) { m.controller->SetEnabled(false), m.controller->SetEnabled(true); }},
        {"no hub", [](Matrix& m) { m.controller->SetKorvane(nullptr); }},
        {"no history", [](Matrix& m) { m.controller->SetRewindHistory(nullptr); }},
        {"no ball", [](Matrix& m) { m.controller->SetPivotBall(nullptr); }},
        {"no renderer", [](Matrix& m) { m.controller->SetRenderer(nullptr); }},
        {"destroy", [](Matrix& m) { m.controller->Destroy(); }},
        {"end operations", [](Matrix& m) { m.hub.EndOperation(OPERATION_ALL); }},
        {"end shot", [](Matrix& m) { m.hub.EndShot(); }},
        {"begin shot",
         [](Matrix& m) {
           m.hub.BeginShot(TransitionShotParameters{m.hub.view, 1.0, 0.1});
         }},
        {"begin operation", [](Matrix& m) { m.hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0); }},
        {"mode", [](Matrix& m) { m.controller->SetNavigationMode(Mode::MODE_WALK); }},
        {"toggle", [](Matrix& m) { m.controller->Toggle2DNavigationMode(); }},
        {"push", [](Matrix& m) { m.Push(); }},
        {"rest", [](Matrix& m) { m.Rest(); }},
        {"key", [](Matrix& m) { m.controller->On3DControllerKeyDown(1); }},
        {"home", [](Matrix& m) { m.controller->On3DControllerKeyDown(7); }},
        {"leave", [](Matrix& m) { m.controller->RemoveObserver(&m.observer); }},
        {"draw", [](Matrix& m) { m.controller->Draw(); }},
    };
    return DEEDS;
  }

  // Everything that a device can do.
  void Play() {
    for (int id = 0; id < CAM3D_KEY_COUNT; ++id)
      Do([&] { controller->MapKey(id, static_cast<Cam3DControllerKeyID>(id)); });
    Do([&] { controller->Create(); });
    for (int i = 0; i < 7; ++i) {
      Do([&] { Turn(); });
      Frame();
    }
    for (const unsigned rest : {0U, 300U, 300U}) {
      platform.Advance(rest);
      Do([&] { Push(); });
    }
    Do([&] { Rest(); });
    Do([&] { controller->SetNavigationMode(Mode::MODE_WALK); });
    hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
    for (int i = 0; i < 2; ++i) Do([&] { Push(); });
    Do([&] { Rest(); });
    Do([&] { controller->SetNavigationMode(Mode::MODE_OBJECT); });
    for (const int id : {1, 7, 8, 11, 10, 15, 21, 0, 21}) {
      Do([&] { Push(); });
      Do([&] { controller->On3DControllerKeyDown(id); });
      Frame(100);
      Do([&] { controller->On3DControllerKeyUp(id); });
      Do([&] { controller->Draw(); });
    }
    Land();
    Do([&] { Push(); });
    Frame();
  }
  // The host knows whether it has deleted the controller.
  template <class Step>
  void Do(const Step& step) {
    if (controller != nullptr) step();
  }

  OperationHooks watch;
  std::function<void()> onShotBegins;
  std::function<void()> onShotEnds;
};

}  // namespace

TEST_F(Matrix, no_deed_in_any_call_leaves_anything_open) {
  journal.recording = false;
  hub.AddOperationObserver(&watch);
  hub.onBeginShotHook = [this](Shot*) {
    if (onShotBegins) onShotBegins();
  };
  hub.onEndShotHook = [this](Shot*) {
    if (onShotEnds) onShotEnds();
  };
  int done = 0;
  for (const Hook& hook : Hooks()) {
    for (const Named& deed : Deeds()) {
      for (int nth = 1; nth <= 4; ++nth) {
        SCOPED_TRACE(std::string(deed.name) + " at call " + std::to_string(nth) + " of " + hook.name);
        hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
        controller = std::make_unique<OpenController>();
        controller->SetKorvane(&hub);
        controller->SetRewindHistory(&history);
        controller->SetPivotBall(&ball);
        controller->SetRenderer(&renderer);
        controller->AddObserver(&observer);
        int calls = 0;
        std::function<void()>& found = hook.find(*this);
        found = [&] {
          if (++calls != nth || controller == nullptr) return;
          deed.act(*this);
          ++done;
        };
        Play();
        found = nullptr;
        controller.reset();
        hub.EndOperation(OPERATION_ALL);
        hub.EndShot();
        ExpectAllGivenBack();
        if (HasFailure()) return;
        renderer.ClearCalls();
      }
    }
  }
  hub.RemoveOperationObserver(&watch);
  EXPECT_GT(done, 900);
}
