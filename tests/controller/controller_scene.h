#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "controller/cam3d_controller_parts.h"
#include "korvane/cam3d_controller.h"
#include "korvane/icon2d.h"
#include "korvane/pivot_ball.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

inline std::string Text(const Korvane::Vector3& v) {
  std::ostringstream text;
  text << "(" << v.x << " " << v.y << " " << v.z << ")";
  return text.str();
}

/// Writes what the controller asks of it into the journal, and keeps the records of the shots.
class ControllerHub : public MemoryHub {
 public:
  ControllerHub(Journal& theJournal, const Korvane::CameraParameters& start)
      : MemoryHub(start), journal(theJournal) {}

  using MemoryHub::BeginShot;
  using MemoryHub::UpdateOperationParams;

  /// One of its calls goes on: it may not be destroyed.
  bool IsCalled() const { return depth > 0; }

  bool PerformOperations() override {
    const Call call(depth);
    return MemoryHub::PerformOperations();
  }
  bool BeginOperation(Korvane::OperationType type, int x, int y) override {
    const Call call(depth);
    Note("begin " + std::to_string(type) + " at " + std::to_string(x) + " " + std::to_string(y));
    return MemoryHub::BeginOperation(type, x, y);
  }
  bool EndOperation(Korvane::OperationType type) override {
    const Call call(depth);
    Note("end " + std::to_string(type));
    return MemoryHub::EndOperation(type);
  }
  bool UpdateOperationParams(Korvane::Vector3 translation, Korvane::Vector3 rotation,
                             Korvane::OperationType type) override {
    const Call call(depth);
    if (journal.recording) Note("update " + Text(translation) + " " + Text(rotation));
    lastTranslation = translation;
    lastRotation = rotation;
    if (onUpdate) onUpdate();
    return MemoryHub::UpdateOperationParams(translation, rotation, type);
  }
  bool BeginShot(const Korvane::ViewAlignShotParameters& parameters) override {
    const Call call(depth);
    align = parameters;
    Note("align shot");
    return MemoryHub::BeginShot(parameters);
  }
  bool BeginShot(const Korvane::TransitionShotParameters& parameters) override {
    const Call call(depth);
    transition = parameters;
    Note("transition shot");
    return MemoryHub::BeginShot(parameters);
  }
  bool EndShot() override {
    const Call call(depth);
    return MemoryHub::EndShot();
  }
  bool FitAllToView() override {
    const Call call(depth);
    Note("fit");
    return MemoryHub::FitAllToView();
  }
  bool SetActiveShotObserver(Korvane::ShotObserver* observer) override {
    Note("watch shot");
    return MemoryHub::SetActiveShotObserver(observer);
  }
  void ApplyCameraParameters(const Korvane::CameraParameters& camera) override {
    const Call call(depth);
    if (notesCamera) Note("apply");
    MemoryHub::ApplyCameraParameters(camera);
  }
  void RequestApplicationUpdate() override {
    const Call call(depth);
    MemoryHub::RequestApplicationUpdate();
    if (onRequest) onRequest();
  }

  Korvane::ViewAlignShotParameters align;
  Korvane::TransitionShotParameters transition;
  Korvane::Vector3 lastTranslation;
  Korvane::Vector3 lastRotation;
  bool notesCamera = false;
  std::function<void()> onUpdate;
  std::function<void()> onRequest;

 private:
  class Call {
   public:
    explicit Call(int& ofHub) : depth(ofHub) { ++depth; }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() { --depth; }

   private:
    int& depth;
  };

  void Note(const std::string& line) { journal.Add(line); }

  Journal& journal;
  int depth = 0;
};

/// A hook that may destroy whoever runs it.
inline void RunLast(const std::function<void()>& hook) {
  const std::function<void()> running(hook);
  if (running) running();
}

class ControllerHistory : public Korvane::RewindHistory {
 public:
  explicit ControllerHistory(Journal& theJournal) : journal(theJournal) {}
  ~ControllerHistory() override { GetLifeline().Cut(); }

  bool BeginElementRecord(const Korvane::CameraParameters& camera) override {
    journal.Add("open record");
    ++open;
    beginCamera = camera;
    const bool result = RewindHistory::BeginElementRecord(camera);
    RunLast(onBegin);
    return result;
  }
  bool EndElementRecord(const Korvane::CameraParameters& camera) override {
    journal.Add("close record");
    --open;
    endCamera = camera;
    const bool result = RewindHistory::EndElementRecord(camera);
    RunLast(onEnd);
    return result;
  }

  int open = 0;
  Korvane::CameraParameters beginCamera;
  Korvane::CameraParameters endCamera;
  std::function<void()> onBegin;
  std::function<void()> onEnd;

 private:
  Journal& journal;
};

class ControllerBall : public Korvane::PivotBall {
 public:
  explicit ControllerBall(Journal& theJournal) : journal(theJournal) {}

  void SetVisible(bool visible) override {
    journal.Add(visible ? "show ball" : "hide ball");
    PivotBall::SetVisible(visible);
    RunLast(onVisible);
  }
  void SetPosition(const Korvane::Vector3& position) override {
    journal.Add("place ball " + Text(position));
    PivotBall::SetPosition(position);
  }
  void UpdateSize(const Korvane::CameraParameters& camera) override {
    journal.Add("size ball");
    PivotBall::UpdateSize(camera);
    RunLast(onSize);
  }

  std::function<void()> onVisible;
  std::function<void()> onSize;

 private:
  Journal& journal;
};

class ControllerObserver : public Korvane::Cam3DControllerObserver {
 public:
  explicit ControllerObserver(Journal& theJournal, std::string prefix = "")
      : journal(theJournal), name(std::move(prefix)) {}

  void OnInput(Korvane::Vector3 translation, Korvane::Vector3 rotation) override {
    if (journal.recording) journal.Add(name + "input " + Text(translation) + " " + Text(rotation));
    ++inputs;
    if (onInput) onInput();
  }
  void OnKeyDown(Korvane::Cam3DControllerKeyID id) override {
    journal.Add(name + "key down " + std::to_string(id));
    if (onKeyDown) onKeyDown();
  }
  void OnKeyUp(Korvane::Cam3DControllerKeyID id) override {
    journal.Add(name + "key up " + std::to_string(id));
    if (onKeyUp) onKeyUp();
  }
  void OnNavigationModeChanged(Korvane::Cam3DControllerParameters::NavigationMode mode) override {
    journal.Add(name + "mode " + std::to_string(mode));
    if (onMode) onMode();
  }

  int inputs = 0;
  std::function<void()> onInput;
  std::function<void()> onKeyDown;
  std::function<void()> onKeyUp;
  std::function<void()> onMode;

 private:
  Journal& journal;
  std::string name;
};

/// Hears of the operations of a hub.
class OperationHooks : public Korvane::OperationObserver {
 public:
  void OnBeginOperation(Korvane::OperationType /*type*/,
                        const Korvane::CameraParameters& /*camera*/) override {
    RunLast(onBegin);
  }
  void OnPerformOperation(Korvane::OperationType /*type*/, double /*dt*/,
                          const Korvane::CameraParameters& /*camera*/) override {
    RunLast(onPerform);
  }
  void OnEndOperation(Korvane::OperationType /*type*/) override { RunLast(onEnd); }

  std::function<void()> onBegin;
  std::function<void()> onPerform;
  std::function<void()> onEnd;
};

/// Shows what a host's derived class can reach.
class OpenController : public Korvane::Cam3DController {
 public:
  using Cam3DController::AdjustInput;
  using Cam3DController::AdjustInputParameter;
  using Cam3DController::AlignToView;
  using Cam3DController::FitToView;
  using Cam3DController::GetAlignDir;
  using Cam3DController::GetParts;
  using Cam3DController::GoToHomeView;
  using Cam3DController::IsValidMode;
  using Cam3DController::RotateView;
  using Cam3DController::ShouldKeepSceneUpright;
  using Cam3DController::StepHistory;
};

/// A view of 800 x 600 with a device, a ball and a history. The camera stands at (0, 0, 10) and looks at the
/// origin. A deflection of 105 is an input of 0.09 before its multiplier.
class ControllerScene : public ::testing::Test {
 protected:
  using Mode = Korvane::Cam3DControllerParameters;

  ControllerScene() {
    hub.GetApplicationParameters().viewport_width = 800;
    hub.GetApplicationParameters().viewport_height = 600;
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    history.SetKorvane(&hub);
    controller->SetKorvane(&hub);
    controller->SetRewindHistory(&history);
    controller->SetPivotBall(&ball);
    controller->SetRenderer(&renderer);
    controller->AddObserver(&observer);
    hub.PerformOperations();
    journal.Take();
  }

  /// Device numbers.
  bool Input(const Korvane::Vector3& translation, const Korvane::Vector3& rotation) {
    Korvane::Vector3 moved = translation;
    Korvane::Vector3 turned = rotation;
    return controller->On3DControllerInput(moved, turned);
  }
  bool Push() { return Input({105, 0, 0}, {}); }
  bool Turn() { return Input({}, {0, 105, 0}); }
  bool Rest() { return Input({}, {}); }
  void Frame(unsigned milliseconds = 16) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
  }
  /// Until a shot is over.
  void Land() {
    for (int i = 0; i < 60 && hub.IsShotActive(); ++i) Frame(50);
    Frame(50);
  }
  bool HasOperation() const { return hub.IsOperationActive(Korvane::OPERATION_CAM3D_CONTROLLER); }
  Lines TakeLines() { return journal.Take(); }

  ManualPlatform platform;
  Journal journal;
  RecordingRenderer renderer;
  ControllerHub hub{journal, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  ControllerHistory history{journal};
  ControllerBall ball{journal};
  ControllerObserver observer{journal};
  std::unique_ptr<OpenController> controller = std::make_unique<OpenController>();
};

/// A host with settings of its own.
class HostScene : public ControllerScene {
 protected:
  HostScene() {
    Korvane::ApplicationParameters& p = hub.GetApplicationParameters();
    p.cam3d_controller_mode = Mode::MODE_FLY;
    p.preserve_orbit_up_direction = true;
    p.align_orbit_up_direction = false;
  }

  /// The settings are the host's, no record is open and no operation of the device runs.
  void ExpectAllGivenBack() const {
    const Korvane::ApplicationParameters& p = hub.GetApplicationParameters();
    EXPECT_EQ(p.cam3d_controller_mode, Mode::MODE_FLY);
    EXPECT_TRUE(p.preserve_orbit_up_direction);
    EXPECT_FALSE(p.align_orbit_up_direction);
    EXPECT_EQ(history.open, 0);
    EXPECT_FALSE(HasOperation());
  }
  void ShowBall() {
    for (int i = 0; i < 6; ++i) Turn();
    ASSERT_TRUE(ball.IsVisible());
  }
};
