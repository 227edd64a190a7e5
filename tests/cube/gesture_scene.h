#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "cube/cube_scene.h"
#include "korvane/icon2d.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/recording_history.h"

/// A hub that notes what is asked of it from outside; what it asks of itself on the way is not noted.
class SpyHub : public MemoryHub {
 public:
  explicit SpyHub(Journal& whatWasSeen) : journal(whatWasSeen) {}

  using MemoryHub::BeginShot;
  using MemoryHub::GetApplicationParameters;
  using MemoryHub::UpdateOperationParams;

  bool BeginOperation(Korvane::OperationType type, int x, int y) override {
    const Call call(*this, "begin operation " + Describe(type, x, y));
    return MemoryHub::BeginOperation(type, x, y);
  }
  bool EndOperation(Korvane::OperationType type) override {
    const Call call(*this, "end operation " + std::to_string(type));
    if (onEndOperation) onEndOperation();
    return MemoryHub::EndOperation(type);
  }
  bool UpdateOperationParams(int x, int y, Korvane::OperationType type) override {
    const Call call(*this, "update " + Describe(type, x, y));
    return MemoryHub::UpdateOperationParams(x, y, type);
  }
  bool BeginShot(const Korvane::ViewAlignShotParameters& shot) override {
    const Call call(*this, "begin view shot");
    viewShots.push_back(shot);
    return !refusesShots && MemoryHub::BeginShot(shot);
  }
  bool BeginShot(const Korvane::TransitionShotParameters& shot) override {
    const Call call(*this, "begin transition shot");
    transitionShots.push_back(shot);
    return !refusesShots && MemoryHub::BeginShot(shot);
  }
  bool EndShot() override {
    const Call call(*this, "end shot");
    return MemoryHub::EndShot();
  }
  bool SetActiveShotObserver(Korvane::ShotObserver* observer) override {
    const Call call(*this, "observe shot");
    return MemoryHub::SetActiveShotObserver(observer);
  }
  bool ConstrainPivotToViewport() override {
    const Call call(*this, "constrain pivot");
    if (onConstrainPivot) onConstrainPivot();
    return MemoryHub::ConstrainPivotToViewport();
  }
  bool AlignToSceneUpDirection(double duration) override {
    const Call call(*this, "align " + std::to_string(duration));
    return MemoryHub::AlignToSceneUpDirection(duration);
  }
  void ApplyCameraParameters(const Korvane::CameraParameters& camera) override {
    const Call call(*this, "apply");
    MemoryHub::ApplyCameraParameters(camera);
  }
  void QueryCameraParameters(Korvane::CameraParameters& out) const override {
    MemoryHub::QueryCameraParameters(out);
    if (onQuery) onQuery();
  }
  Korvane::Vector3 GetWorldUpDirection() const override {
    if (onWorldUp) onWorldUp();
    return MemoryHub::GetWorldUpDirection();
  }
  void RecalculateSelectionBounds() override {
    const Call call(*this, "recalculate selection");
    MemoryHub::RecalculateSelectionBounds();
  }
  void SetSceneBoundingSphere(double radius, Korvane::Vector3 centre) override {
    const Call call(*this, "set scene sphere");
    MemoryHub::SetSceneBoundingSphere(radius, centre);
  }
  void SetSceneBoundingBox(Korvane::Box3 box, Korvane::Vector3 centre) override {
    const Call call(*this, "set scene box");
    MemoryHub::SetSceneBoundingBox(box, centre);
  }
  void ResetSceneBoundingSphere() override {
    const Call call(*this, "reset scene sphere");
    MemoryHub::ResetSceneBoundingSphere();
  }
  void ResetSceneBoundingBox() override {
    const Call call(*this, "reset scene box");
    MemoryHub::ResetSceneBoundingBox();
  }
  void ResetUCSBoundingSphere() override {
    const Call call(*this, "reset UCS sphere");
    MemoryHub::ResetUCSBoundingSphere();
  }
  void ResetUCSBoundingBox() override {
    const Call call(*this, "reset UCS box");
    MemoryHub::ResetUCSBoundingBox();
  }

  std::vector<Korvane::ViewAlignShotParameters> viewShots;
  std::vector<Korvane::TransitionShotParameters> transitionShots;
  bool refusesShots = false;
  std::function<void()> onQuery;
  std::function<void()> onWorldUp;
  std::function<void()> onConstrainPivot;
  std::function<void()> onEndOperation;

 private:
  struct Call {
    Call(SpyHub& spied, const std::string& line) : hub(spied) {
      if (hub.depth++ == 0) hub.journal.Add(line);
    }
    ~Call() { --hub.depth; }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    SpyHub& hub;
  };

  static std::string Describe(Korvane::OperationType type, int x, int y) {
    return std::to_string(type) + " (" + std::to_string(x) + ", " + std::to_string(y) + ")";
  }

  Journal& journal;
  int depth = 0;
};

/// Notes what it is told and then does what the test wants.
class NotingOrientorObserver : public Korvane::OrientorObserver {
 public:
  NotingOrientorObserver(Korvane::Orientor& cube, Journal& whatWasSeen, std::string whoAmI = "")
      : OrientorObserver(&cube), journal(whatWasSeen), name(std::move(whoAmI)) {}

  void OnClicked(OrientorPart part) override { Note("clicked " + std::to_string(part), onClicked); }
  void OnDragBegin(OrientorPart part) override { Note("drag began " + std::to_string(part), onDragBegin); }
  void OnDragEnd() override { Note("drag ended", onDragEnd); }
  void OnPositionChange(Korvane::OrientorParameters::Location /*location*/) override {}

  std::function<void()> onClicked;
  std::function<void()> onDragBegin;
  std::function<void()> onDragEnd;

 private:
  void Note(const std::string& what, const std::function<void()>& then) {
    journal.Add(name + what);
    if (then) then();
  }

  Journal& journal;
  std::string name;
};

/// A host's menus and icons, in which the test may do something.
class MenuRenderer : public RecordingRenderer {
 public:
  bool OpenMenu(Korvane::MenuID id) override {
    const bool opened = RecordingRenderer::OpenMenu(id);
    if (inMenu) inMenu();
    return opened;
  }
  bool OpenUCSMenu(int x, int y) override {
    const bool opened = RecordingRenderer::OpenUCSMenu(x, y);
    if (inMenu) inMenu();
    return opened;
  }
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* text, const wchar_t* other, bool flag,
                                             int width) override {
    Korvane::DynamicIcon2D* const icon = RecordingRenderer::CreateUCSMenuLabel(text, other, flag, width);
    if (icon != nullptr) icon->SetSize(100.0, 20.0);
    RunOnce(afterMakingLabel);
    return icon;
  }
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override {
    RunOnce(beforeDestroyingIcon);
    return RecordingRenderer::DestroyIcon(icon);
  }

  std::function<void()> inMenu;
  // These run once.
  std::function<void()> afterMakingLabel;
  std::function<void()> beforeDestroyingIcon;

 private:
  static void RunOnce(std::function<void()>& hook) {
    const std::function<void()> run = std::exchange(hook, nullptr);
    if (run) run();
  }
};

class TouchedOrientor : public OpenOrientor {
 public:
  using Orientor::GetOrientorPartForObserver;
  using Orientor::InjectClick;
  using Orientor::OnTransitionEnded;
  using Orientor::OnTransitionStarted;
  using Orientor::StartTransition;
};

/// A cube of 120 pixels in the top right corner of a viewport of 1024 by 768 pixels, with everything that
/// it works with. The camera stands ten units from the origin.
struct GestureScene {
  static constexpr int WIDTH = 1024;
  static constexpr int HEIGHT = 768;

  GestureScene() : hub(journal), observer(cube, journal) {
    history.onBegin = [this] { journal.Add("record begun"); };
    history.onEnd = [this] { journal.Add("record ended"); };
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    cube.SetRewindHistory(&history);
    cube.AddObserver(&observer);
    Scene().viewport_width = WIDTH;
    Scene().viewport_height = HEIGHT;
    cube.SetViewportSize(WIDTH, HEIGHT);
    Look(Korvane::Vector3(-3.0, -2.0, -1.0));
  }

  /// The host's camera, which a frame brings into the hub.
  void Look(const Korvane::Vector3& view) { SetCamera(LookAlong(view)); }
  void SetCamera(const Korvane::CameraParameters& camera) {
    hub.view = camera;
    hub.PerformOperations();
    cube.SetViewportMousePosition(0, 0);
    journal.Take();
  }

  /// As the window gives it, `y` upward, to both entries of the cube.
  bool MoveMouse(int x, int y) {
    const bool kept = cube.OnMouseMove(x, y);
    cube.SetViewportMousePosition(x, HEIGHT - y - 1);
    return kept;
  }
  /// Frames of 20 milliseconds until nothing moves; how many.
  int RunFrames() {
    int frames = 1;
    while (hub.PerformOperations() && frames < 1000) {
      platform.Advance(20);
      ++frames;
    }
    return frames;
  }
  /// Puts the mouse on a part without a hit test, and presses at (500, 300).
  bool PressOnPart(int part) {
    cube.activePart = part;
    return cube.OnLeftMouseDown(500, 300);
  }
  bool PressOnOverlay(int part) {
    cube.activeOverlayPart = part;
    return cube.OnLeftMouseDown(500, 300);
  }

  Korvane::ApplicationParameters& Scene() { return hub.GetApplicationParameters(); }
  Korvane::OrientorParameters& Parameters() { return cube.GetParameters(); }

  ManualPlatform platform;
  Journal journal;
  SpyHub hub;
  MenuRenderer renderer;
  RecordingHistory history;
  TouchedOrientor cube;
  NotingOrientorObserver observer;
};
