// A view with a mouse and two devices, and a host that does, at any moment within a call, anything that a
// host may do. For the sanitizers, and for the asserts.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

#include "controller/controller_scene.h"
#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "support/counting_renderer.h"
#include "support/mischievous_hub.h"
#include "support/open_view_manager.h"
#include "support/random.h"

using namespace Korvane;

namespace {

class Storm;

/// Every call out of the library comes here.
class Calls {
 public:
  void Call() const;
  Storm* storm = nullptr;
};

class StormRenderer : public CountingRenderer {
  // Before the operation the host does what it likes.
  template <class Operation>
  auto Within(const Operation& operation) {
    ++depth;
    calls.Call();
    const auto result = operation();
    --depth;
    return result;
  }

 public:
  explicit StormRenderer(Calls& host) : calls(host) {}
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    return Within([&] { return CountingRenderer::BeginRender(viewport, camera, mode); });
  }
  DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return Within([&] { return CountingRenderer::CreateMessageHUD(text); });
  }
  DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    return Within([&] { return CountingRenderer::CreatePivotLabel(text); });
  }

  int depth = 0;  // of its operations

 private:
  Calls& calls;
};

class StormObserver : public Cam3DControllerObserver, public OperationObserver {
 public:
  explicit StormObserver(Calls& host) : calls(host) {}
  void OnInput(Vector3 translation, Vector3 rotation) override {
    sane = sane && translation.IsFinite() && rotation.IsFinite();
    ++inputs;
    calls.Call();
  }
  void OnKeyDown(Cam3DControllerKeyID /*id*/) override { calls.Call(); }
  void OnKeyUp(Cam3DControllerKeyID /*id*/) override { calls.Call(); }
  void OnNavigationModeChanged(Cam3DControllerParameters::NavigationMode /*mode*/) override { calls.Call(); }
  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override { calls.Call(); }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {
    calls.Call();
  }
  void OnEndOperation(OperationType /*type*/) override { calls.Call(); }

  bool sane = true;
  long inputs = 0;

 private:
  Calls& calls;
};

class Storm {
 public:
  Storm(Random& numbers, bool isCrowded) : random(numbers), crowded(isCrowded) {
    calls.storm = this;
    journal.recording = false;
    hub.GetApplicationParameters().cam3d_controller_mode = HOSTS_MODE;
    hub.AddOperationObserver(&observer);
    history.onBegin = history.onEnd = [this] { Call(); };
    ball.onVisible = ball.onSize = [this] { Call(); };
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetOrientor(&cube);
    manager.AddTool(1, new PanTool);
    MakeDevice(0);
    if (crowded) MakeDevice(1);
    manager.Create();
    manager.SetViewportSize(800, 600);
    isReady = true;
  }
  ~Storm() {
    isReady = false;
    manager.Destroy();
    manager.SetCam3DController(nullptr);
    hub.RemoveOperationObserver(&observer);
  }

  /// Something that the user, the device or the clock does.
  void Step() {
    switch (random.Integer(0, 9)) {
      case 0:
        return Mouse();
      case 1:
        manager.OnKeyDown(static_cast<KeyID>(random.Integer(0, 12)));
        manager.OnKeyUp(static_cast<KeyID>(random.Integer(0, 12)));
        return;
      case 2:
      case 3:
        platform.Advance(static_cast<std::uint32_t>(random.Integer(0, 60)));
        hub.PerformOperations();
        manager.OnDraw();
        return;
      case 4:
        return Button();
      default:
        return Deflect();
    }
  }

  /// Within a call of the library: mostly nothing.
  void Call() {
    if (!isReady || depth >= MAX_DEPTH || random.Integer(0, 7) != 0) return;
    ++depth;
    ++deeds;
    Deed();
    --depth;
  }

  // Everything comes to rest.
  void Calm() {
    isReady = false;
    for (auto& device : devices) {
      if (device != nullptr) device->SetEnabled(false);
    }
    manager.CancelGesture();
    hub.EndOperation(OPERATION_ALL);
    hub.EndShot();
    for (auto& device : devices) {  // also one that the manager has switched on again while the shot ran
      if (device == nullptr) continue;
      device->SetEnabled(false);
      device->SetEnabled(true);
    }
    isReady = true;
  }

  bool IsBroken() const { return hub.broken || !observer.sane; }

  static constexpr auto HOSTS_MODE = static_cast<Cam3DControllerParameters::NavigationMode>(2);

  Random& random;
  const bool crowded;  // a second device, and a disc
  Calls calls;
  ManualPlatform platform;
  Journal journal;
  MischievousHub<Calls> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  StormRenderer renderer{calls};
  ControllerHistory history{journal};
  ControllerBall ball{journal};
  StormObserver observer{calls};
  Orientor cube;
  HelmDisc disc;
  std::array<std::unique_ptr<OpenController>, 2> devices;
  OpenViewManager manager;
  long deeds = 0;

 private:
  static constexpr int MAX_DEPTH = 3;

  void MakeDevice(std::size_t index) {
    if (index == 0) manager.SetCam3DController(nullptr);
    devices[index].reset();
    devices[index] = std::make_unique<OpenController>();
    OpenController& device = *devices[index];
    device.SetKorvane(&hub);
    device.SetRenderer(&renderer);
    device.SetRewindHistory(&history);
    device.SetPivotBall(&ball);
    device.AddObserver(&observer);
    for (int id = 0; id < CAM3D_KEY_COUNT; ++id) device.MapKey(id, static_cast<Cam3DControllerKeyID>(id));
    device.Create();
    if (index == 0) manager.SetCam3DController(&device);
  }

  OpenController* Any() { return devices[static_cast<std::size_t>(random.Integer(0, 1))].get(); }

  double Number() {
    static constexpr double NUMBERS[] = {0.0,
                                         5.0,
                                         -5.0,
                                         350.0,
                                         -350.0,
                                         1e300,
                                         std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::quiet_NaN()};
    return random.Integer(0, 19) == 0 ? random.OneOf(NUMBERS) : random.Uniform(-350.0, 350.0);
  }
  Vector3 Numbers() { return random.Integer(0, 3) == 0 ? Vector3() : Vector3(Number(), Number(), Number()); }

  void Deflect() {
    OpenController* const device = Any();
    if (device == nullptr) return;
    const bool rests = random.Integer(0, 5) == 0;  // else a motion that another ends would be the last one
    Vector3 translation = rests ? Vector3() : Numbers();
    Vector3 rotation = rests ? Vector3() : Numbers();
    device->On3DControllerInput(translation, rotation);
  }

  void Button() {
    const int button = random.Integer(-1, CAM3D_KEY_COUNT);
    OpenController* const device = Any();
    if (device == nullptr) return;
    random.Coin() ? device->On3DControllerKeyDown(button) : device->On3DControllerKeyUp(button);
  }

  void Mouse() {
    const int x = random.Integer(-10, 810);
    const int y = random.Integer(-10, 610);
    using Event = bool (ViewManager::*)(int, int);
    static constexpr Event EVENTS[] = {
        &ViewManager::OnLeftMouseDown, &ViewManager::OnLeftMouseUp,    &ViewManager::OnMiddleMouseDown,
        &ViewManager::OnMiddleMouseUp, &ViewManager::OnRightMouseDown, &ViewManager::OnRightMouseUp,
        &ViewManager::OnMouseMove,
    };
    const Event event = random.OneOf(EVENTS);
    (manager.*event)(x, y);
    if (random.Integer(0, 15) == 0) manager.CancelGesture();
    if (random.Integer(0, 15) == 0) manager.SetActiveTool(random.Integer(0, 1));
    if (crowded && random.Integer(0, 15) == 0) {
      disc.SetActiveDisc(random.Coin() ? DiscType::FullNavigation : DiscType::None);
    }
  }

  void Deed() {
    switch (random.Integer(0, 5)) {
      case 0:
        return Deflect();
      case 1:
        return Button();
      case 2:
        return Exchange();
      case 3:
        return Set();
      case 4:
        return Move();
      default:
        return Life();
    }
  }

  void Exchange() {
    OpenController* const device = Any();
    if (device == nullptr) return;
    const bool there = random.Integer(0, 3) != 0;
    switch (random.Integer(0, 5)) {
      case 0:
        return device->SetKorvane(there ? &hub : nullptr);
      case 1:
        return device->SetRewindHistory(there ? &history : nullptr);
      case 2:
        return device->SetPivotBall(there ? &ball : nullptr);
      case 3:
        return device->SetRenderer(there ? &renderer : nullptr);
      case 4:
        return device->RemoveObserver(&observer);
      default:
        device->AddObserver(&observer);
        return;
    }
  }

  void Set() {
    OpenController* const device = Any();
    if (device == nullptr) return;
    switch (random.Integer(0, 7)) {
      case 0:
        return device->SetEnabled(random.Coin());
      case 1:
        return device->SetNavigationMode(
            static_cast<Cam3DControllerParameters::NavigationMode>(random.Integer(-1, 4)));
      case 2:
        return device->SetKeepSceneUpright(random.Coin());
      case 3:
        return device->SetPivotBallThreshold(random.Integer(-1, 4));
      case 4:
        return device->SetEnableRotation(random.Integer(0, 3) != 0);
      case 5:
        return device->SetEnableTranslation(random.Integer(0, 3) != 0);
      case 6:
        hub.GetApplicationParameters().auto_switch_projection = random.Coin();
        return;
      default:
        hub.view.projection_type = random.Coin() ? CameraParameters::ProjectionType::Orthographic
                                                 : CameraParameters::ProjectionType::Perspective;
        return;
    }
  }

  void Move() {
    const auto kind = static_cast<OperationType>(random.Integer(0, 12));
    switch (random.Integer(0, 4)) {
      case 0:
        hub.EndOperation(kind);
        return;
      case 1:
        if (kind != OPERATION_CAM3D_CONTROLLER) hub.BeginOperation(kind, 10, 10);
        return;
      case 2:
        hub.EndShot();
        return;
      case 3:
        hub.BeginShot(TransitionShotParameters{LookAt(random.Point(20.0), {0, 0, 0}, {0, 1, 0}), 1.0, 0.1});
        return;
      default:
        hub.view = LookAt({3, 4, 10}, {0, 0, 0}, {0, 1, 0});
        return;
    }
  }

  // Within an operation of the renderer no controller may be deleted.
  void Life() {
    OpenController* const device = Any();
    if (device == nullptr) return;
    switch (random.Integer(0, 7)) {
      case 0:
        device->Create();
        return;
      case 1:
        device->Destroy();
        return;
      case 2:
        if (renderer.depth == 0) device->Draw();
        return;
      case 3:
        if (renderer.depth == 0) MakeDevice(static_cast<std::size_t>(random.Integer(0, int{crowded})));
        return;
      case 4:
        return device->SetHUDMessage(random.Coin() ? &note : nullptr);
      default:
        return Deflect();
    }
  }

  DynamicIcon2D note{77};
  bool isReady = false;
  int depth = 0;
};

void Calls::Call() const { storm->Call(); }

// ZOV_TEST_DEVICE_STORM sets the number of events.
int StormSize() {
  const char* const wanted = std::getenv("ZOV_TEST_DEVICE_STORM");
  return wanted != nullptr ? std::atoi(wanted) : 20000;
}

}  // namespace

class StormTest : public ::testing::TestWithParam<bool> {};

// After every thousand events all comes to rest: then no record is open and no operation runs. With one
// device the mode is the host's again; two, one of which begins while it hears that the other ends, may keep
// it, and so may the zoom of a disc, which lends all settings at once.
TEST_P(StormTest, of_devices_mouse_keys_and_mischief_does_no_harm) {
  Random random;
  const bool crowded = GetParam();
  Storm storm(random, crowded);
  const int events = StormSize();
  for (int i = 0; i < events; ++i) {
    storm.Step();
    ASSERT_FALSE(storm.IsBroken()) << "event " << i;
    if (i % 1000 != 999) continue;
    storm.Calm();
    ASSERT_EQ(storm.history.open, 0) << "event " << i;
    ASSERT_FALSE(storm.hub.IsOperationActive(OPERATION_ALL)) << "event " << i;
    if (crowded) continue;
    ASSERT_EQ(storm.hub.GetApplicationParameters().cam3d_controller_mode, Storm::HOSTS_MODE) << "event " << i;
  }
  EXPECT_GT(storm.deeds, events / 50);
  EXPECT_GT(storm.observer.inputs, events / 50);
}

INSTANTIATE_TEST_SUITE_P(Cam3DController, StormTest, ::testing::Bool());
