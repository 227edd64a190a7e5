#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "controller/cam3d_controller_parts.h"
#include "cube/orientor_parts.h"
#include "disc/helm_disc_parts.h"
#include "disc/track_menu_parts.h"
#include "interaction/view_manager/view_manager_observers.h"
#include "korvane/cam3d_controller.h"
#include "korvane/helm_disc.h"
#include "korvane/icon2d.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/navigation_bar.h"
#include "korvane/orbit_tool.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/pivot_ball.h"
#include "korvane/storyboard.h"
#include "korvane/toolbar.h"
#include "korvane/track_menu.h"
#include "story/storyboard_parts.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/open_view_manager.h"
#include "support/recording_history.h"
#include "support/recording_renderer.h"
#include "toolbar/navigation_bar_parts.h"
#include "toolbar/toolbar_parts.h"

// Widgets that write down what they are asked, as `name.Operation(arguments)`, and take what the test says.

/// The answer to a question is whether the test has `who` take things.
class WidgetJournal : public Journal {
 public:
  bool Ask(const std::string& who, const std::string& what) {
    Add(who + "." + what);
    return takers.count(who) != 0;
  }

  std::set<std::string> takers;
};

inline std::string Call(const char* operation, int x, int y) {
  return std::string(operation) + "(" + std::to_string(x) + ", " + std::to_string(y) + ")";
}

/// What every fake has: a name, the journal, and operations that the test makes fail.
class Fake {
 public:
  Fake(std::string widgetName, WidgetJournal& theJournal)
      : name(std::move(widgetName)), journal(theJournal) {}

  std::string name;
  WidgetJournal& journal;
  bool createFails = false;
  bool destroyFails = false;

 protected:
  bool Ask(const std::string& what) { return journal.Ask(name, what); }
};

class FakeOrientor : public Korvane::Orientor, public Fake {
 public:
  explicit FakeOrientor(WidgetJournal& theJournal) : Fake("cube", theJournal) {}

  void SetKorvane(Korvane::CameraOperations* hub) override {
    Ask("SetKorvane");
    Orientor::SetKorvane(hub);
  }
  void SetRenderer(Korvane::Renderer* value) override {
    Ask("SetRenderer");
    Orientor::SetRenderer(value);
  }
  void SetRewindHistory(Korvane::RewindHistory* history) override {
    Ask("SetRewindHistory");
    Orientor::SetRewindHistory(history);
  }
  bool Create() override {
    Ask("Create");
    return !createFails;
  }
  bool Destroy() override {
    Ask("Destroy");
    return !destroyFails;
  }
  void Draw() override {
    Ask("Draw");
    disabledWhileDrawn = GetParameters().disabled;
  }
  bool OnMouseMove(int x, int y) override { return Ask(Call("OnMouseMove", x, y)); }
  bool OnLeftMouseDown(int x, int y) override { return Ask(Call("OnLeftMouseDown", x, y)); }
  bool OnLeftMouseUp(int x, int y) override { return Ask(Call("OnLeftMouseUp", x, y)); }
  bool OpenMenu() override { return Ask("OpenMenu()"); }
  void Update(bool /*redraw*/) override {}

  Korvane::OrientorParts& open = GetParts();
  int& activePart = open.mouse.activePart;
  int& activeOverlayPart = open.mouse.activeOverlayPart;
  int& rawOverlayPart = open.mouse.rawOverlayPart;
  int& mouseX = open.mouse.x;
  int& mouseY = open.mouse.y;
  bool& dragging = open.drag.active;
  bool& mouseInRegion = open.fade.mouseInRegion;
  std::wstring& homeTooltip = open.tooltips.home;
  int& viewportWidth = open.layout.viewportWidth;
  int& viewportHeight = open.layout.viewportHeight;
  Korvane::RewindHistory* GetRewindHistory() const { return open.partners.history.Get(); }
  Korvane::ObserverSet<Korvane::OrientorObserver>& observers = open.partners.observers;
  Korvane::Borrowed<Korvane::Renderer>& renderer = open.renderer;

  bool disabledWhileDrawn = false;
};

class FakeTrackMenu : public Korvane::TrackMenu {
 public:
  FakeTrackMenu() : icon(Korvane::TEXTURE_NONE) {
    SetRendererShared(true);  // as those of a disc
    activeRegion.icon = &icon;
  }
  void OnMouseMove(int x, int y) override {
    movedX = x;
    movedY = y;
    ++moves;
  }

  Korvane::TrackMenuParts& open = GetParts();
  int& viewportHeight = open.viewportHeight;
  int& viewportWidth = open.viewportWidth;
  Region& activeRegion = open.active;
  bool& enabled = open.state.enabled;
  bool& visible = open.state.visible;
  Korvane::CursorID& menuCursorID = open.look.menuCursorID;

  Korvane::ResourceIcon2D icon;
  int movedX = 0;
  int movedY = 0;
  int moves = 0;
};

class FakeDisc : public Korvane::HelmDisc, public Fake {
 public:
  explicit FakeDisc(WidgetJournal& theJournal) : Fake("disc", theJournal) {
    auto recordingHistory = std::make_unique<RecordingHistory>();
    record = recordingHistory.get();
    open.history = std::move(recordingHistory);
    open.menus[0].reset(&menu);
    auto fakeWelcome = std::make_unique<FakeTrackMenu>();
    welcome = fakeWelcome.get();
    open.welcome.menu = std::move(fakeWelcome);
  }

  void SetKorvane(Korvane::CameraOperations* hub) override {
    Ask("SetKorvane");
    HelmDisc::SetKorvane(hub);
  }
  void SetRenderer(Korvane::Renderer* value) override {
    Ask("SetRenderer");
    HelmDisc::SetRenderer(value);
  }
  bool Create() override {
    Ask("Create");
    return !createFails;
  }
  bool Destroy() override {
    Ask("Destroy");
    return !destroyFails;
  }
  void SetActiveDisc(Korvane::DiscType type) override {
    Ask("SetActiveDisc(" + std::to_string(static_cast<int>(type)) + ")");
    const bool opens = type != Korvane::DiscType::None;
    activeDisc = type;
    activeTrackMenu = opens ? &menu : nullptr;
    observers.Notify([&](Korvane::HelmDiscObserver& observer) {
      if (opens) {
        observer.OnActivated(type);
      } else {
        observer.OnClosed();
      }
    });
  }
  Korvane::DiscType GetActiveDisc() const override { return activeDisc; }
  void DrawOverlay() override { Ask("DrawOverlay"); }
  bool OpenMenu() override { return Ask("OpenMenu()"); }
  bool OnMouseMove(int x, int y) override { return Ask(Call("OnMouseMove", x, y)); }
  bool OnLeftMouseDown(int x, int y) override { return Ask(Call("OnLeftMouseDown", x, y)); }
  bool OnLeftMouseUp(int x, int y) override { return Ask(Call("OnLeftMouseUp", x, y)); }
  bool OnKeyDown(Korvane::KeyID key) override { return Ask("OnKeyDown(" + std::to_string(key) + ")"); }
  bool OnKeyUp(Korvane::KeyID key) override { return Ask("OnKeyUp(" + std::to_string(key) + ")"); }

  /// Opens a disc without a word to anybody.
  void Open(Korvane::DiscType type) {
    activeDisc = type;
    activeTrackMenu = type == Korvane::DiscType::None ? nullptr : &menu;
  }

  Korvane::HelmDiscParts& open = GetParts();
  Korvane::TrackMenu*& activeTrackMenu = open.active;
  bool& dragBegun = open.press.dragBegun;
  Korvane::ObserverSet<Korvane::HelmDiscObserver>& observers = open.partners.observers;
  bool& overWelcome = open.welcome.over;
  bool& visible = open.visible;
  int& welcomeX = open.welcome.x;
  int& welcomeY = open.welcome.y;

  Korvane::DiscType activeDisc = Korvane::DiscType::None;
  FakeTrackMenu& menu = *new FakeTrackMenu;  // of any kind; the disc's
  FakeTrackMenu* welcome;
  RecordingHistory* record;
};

class FakeStoryboard : public Korvane::Storyboard, public Fake {
 public:
  explicit FakeStoryboard(WidgetJournal& theJournal) : Fake("panel", theJournal) {}

  void SetKorvane(Korvane::CameraOperations* hub) override {
    Ask("SetKorvane");
    Storyboard::SetKorvane(hub);
  }
  void SetRenderer(Korvane::Renderer* value) override {
    Ask("SetRenderer");
    Storyboard::SetRenderer(value);
  }
  void SetRewindHistory(Korvane::RewindHistory* history) override {
    Ask("SetRewindHistory");
    Storyboard::SetRewindHistory(history);
  }
  bool Create() override {
    Ask("Create");
    return !createFails;
  }
  bool Destroy() override {
    Ask("Destroy");
    return !destroyFails;
  }
  void Draw() override { Ask("Draw"); }
  bool OnMouseMove(int column, int row) override { return Ask(Call("OnMouseMove", column, row)); }
  bool OnLeftMouseDown(int column, int row) override { return Ask(Call("OnLeftMouseDown", column, row)); }
  bool OnLeftMouseUp(int column, int row) override { return Ask(Call("OnLeftMouseUp", column, row)); }
  bool OnRightMouseDown(int column, int row) override { return Ask(Call("OnRightMouseDown", column, row)); }
  bool OnKeyDown(Korvane::KeyID key) override { return Ask("OnKeyDown(" + std::to_string(key) + ")"); }
  bool OnKeyUp(Korvane::KeyID key) override { return Ask("OnKeyUp(" + std::to_string(key) + ")"); }
  bool OpenMenu() override { return Ask("OpenMenu()"); }

  void SetRecordingWalk(bool recording) {
    GetParts().walk.recorder = recording ? std::make_shared<Korvane::WalkRecorder>() : nullptr;
  }
  void SetDraggingSequence(bool dragging) {
    GetParts().grab.active = dragging;
    GetParts().grab.sequence.Set(dragging ? &dragged : nullptr);
  }
  void SetDraggingShot(bool dragging) {
    GetParts().grab.active = dragging;
    GetParts().grab.shot.Set(dragging ? &draggedShot : nullptr);
  }
  /// In a hub of its own and without a word, so that the rest of the test stays as it is.
  void SetPlaying(bool plays) {
    Korvane::CameraOperations* const hub = GetKorvane();
    std::vector<Korvane::StoryboardObserver*> told;
    observers.Notify([&](Korvane::StoryboardObserver& each) { told.push_back(&each); });
    for (Korvane::StoryboardObserver* const each : told) observers.Remove(each);
    GetParts().partners.hub.Set(&playedIn);
    plays ? PlaybackSingleShot(&draggedShot) : StopPlayback();
    GetParts().partners.hub.Set(hub);
    for (Korvane::StoryboardObserver* const each : told) observers.Add(each);
  }
  bool& visible = GetParts().life.visible;
  bool& mouseInRegion = GetParts().mouse.inRegion;
  std::wstring& tooltip = GetParts().tooltip;
  Korvane::ObserverSet<Korvane::StoryboardObserver>& observers = GetParts().partners.observers;
  int& viewportWidth = GetParts().room.viewportWidth;
  int& viewportHeight = GetParts().room.viewportHeight;
  int GetLeft() { return GetParts().room.x; }
  int GetBottom() { return GetParts().room.y; }
  Korvane::RewindHistory* GetHistory() { return GetParts().partners.history.Get(); }

 private:
  MemoryHub playedIn;
  Korvane::Sequence dragged;
  Korvane::ShotSpecification draggedShot{Korvane::CameraParameters()};
};

class FakeToolbar : public Korvane::Toolbar, public Fake {
 public:
  FakeToolbar(const std::string& widgetName, WidgetJournal& theJournal) : Fake(widgetName, theJournal) {}

  bool Create() override {
    Ask("Create");
    return !createFails;
  }
  bool Destroy() override {
    Ask("Destroy");
    return !destroyFails;
  }
  void Draw() override { Ask("Draw"); }
  bool OnMouseMove(int x, int y) override { return Ask(Call("OnMouseMove", x, y)); }
  bool OnLeftMouseDown(int x, int y) override { return Ask(Call("OnLeftMouseDown", x, y)); }
  bool OnLeftMouseUp(int x, int y) override { return Ask(Call("OnLeftMouseUp", x, y)); }
  bool OnRightMouseDown(int x, int y) override { return Ask(Call("OnRightMouseDown", x, y)); }
  bool OnRightMouseUp(int x, int y) override { return Ask(Call("OnRightMouseUp", x, y)); }

  Korvane::ToolbarParts& open = GetParts();
  Korvane::ChangingInTimeBox2& bounds = open.motion.bounds;
  Korvane::Vector2& cornerOffset = open.place.cornerOffset;
  bool& disabled = open.life.disabled;
  bool& mouseDownOnItem = open.mouse.downOnItem;
  bool& mouseInRegion = open.mouse.inRegion;
  Korvane::Box2& orientorBounds = open.room.orientorBounds;
  Korvane::OrientorParameters::Location& orientorLocation = open.room.orientorLocation;
  Position& position = open.place.position;
  int& ribbonHeight = open.room.ribbonHeight;
  int& ribbonWidth = open.room.ribbonWidth;
  int& sizeLimitHeight = open.room.sizeLimitHeight;
  int& sizeLimitWidth = open.room.sizeLimitWidth;
  std::wstring& tooltip = open.mouse.tooltip;
  int& viewportHeight = open.room.viewportHeight;
  int& viewportWidth = open.room.viewportWidth;
  bool& visible = open.life.visible;
  Korvane::CameraOperations* GetKorvane() const { return open.partners.hub.Get(); }
  Korvane::Renderer* GetRenderer() const { return open.partners.renderer.Get(); }
};

/// Holds a toolbar from the start.
class FakeBar : public Korvane::NavigationBar, public Fake {
 public:
  explicit FakeBar(WidgetJournal& theJournal) : Fake("bar", theJournal) {
    auto fakeToolbar = std::make_unique<FakeToolbar>("bar toolbar", theJournal);
    strip = fakeToolbar.get();
    open.toolbar = std::move(fakeToolbar);
  }

  void SetViewportSize(int width, int height) override { Ask(Call("SetViewportSize", width, height)); }
  void SetOrientorIsVisible(bool value) override {
    Ask(std::string("SetOrientorIsVisible(") + (value ? "true)" : "false)"));
  }
  void SetLinkedToOrientor(bool linked) override {
    Ask(std::string("SetLinkedToOrientor(") + (linked ? "true)" : "false)"));
    NavigationBar::SetLinkedToOrientor(linked);
  }
  void SetActiveHelmDisc(Korvane::DiscType type) override {
    Ask("SetActiveHelmDisc(" + std::to_string(static_cast<int>(type)) + ")");
  }
  bool Create() override {
    Ask("Create");
    return !createFails;
  }
  bool Destroy() override {
    Ask("Destroy");
    return !destroyFails;
  }
  void Draw() override { Ask("Draw"); }
  bool OnMouseMove(int x, int y) override { return Ask(Call("OnMouseMove", x, y)); }
  bool OnLeftMouseDown(int x, int y) override { return Ask(Call("OnLeftMouseDown", x, y)); }
  bool OnLeftMouseUp(int x, int y) override { return Ask(Call("OnLeftMouseUp", x, y)); }
  bool OnRightMouseDown(int x, int y) override { return Ask(Call("OnRightMouseDown", x, y)); }
  bool OnRightMouseUp(int x, int y) override { return Ask(Call("OnRightMouseUp", x, y)); }
  bool SetItemSelected(int tag, bool selected) override {
    return Ask("SetItemSelected(" + std::to_string(tag) + (selected ? ", true)" : ", false)"));
  }

  void LoseToolbar() {
    open.toolbar.reset();
    strip = nullptr;
  }

  Korvane::NavigationBarParts& open = GetParts();
  Location& location = open.location;
  bool& visible = open.visible;
  Korvane::CameraOperations* GetKorvane() const { return open.partners.hub.Get(); }
  Korvane::Renderer* GetRenderer() const { return open.partners.renderer.Get(); }

  FakeToolbar* strip;
};

class FakeController : public Korvane::Cam3DController, public Fake {
 public:
  explicit FakeController(WidgetJournal& theJournal) : Fake("controller", theJournal) {}

  void SetPivotBall(Korvane::PivotBall* ball) override {
    Ask("SetPivotBall");
    Cam3DController::SetPivotBall(ball);
  }
  void SetRenderer(Korvane::Renderer* value) override {
    Ask("SetRenderer");
    Cam3DController::SetRenderer(value);
  }
  bool Create() override {
    Ask("Create");
    return !createFails;
  }
  bool Destroy() override {
    Ask("Destroy");
    return !destroyFails;
  }
  void Draw() override { Ask("Draw"); }
  void SetEnabled(bool value) override {
    switches += value ? '1' : '0';
    Cam3DController::SetEnabled(value);
  }

  Korvane::CameraOperations* GetKorvane() { return GetParts().partners.hub.Get(); }
  Korvane::RewindHistory* GetRewindHistory() { return GetParts().partners.history.Get(); }

  std::string switches;  // what it was set to, one after another
};

/// A tool that takes what the test says, and says itself that it operates when the test wants it.
template <class Base>
class FakeToolOf : public Base, public Fake {
 public:
  FakeToolOf(const std::string& toolName, WidgetJournal& theJournal) : Fake(toolName, theJournal) {}
  ~FakeToolOf() override { Ask("~"); }

  void OnDraw() override { Ask("OnDraw"); }
  bool OnMouseMove(int x, int y) override { return Ask(Call("OnMouseMove", x, y)); }
  bool OnMouseWheel(int x, int y, int delta) override {
    return Ask(Call("OnMouseWheel", x, y) + std::to_string(delta));
  }
  bool OnMouseDown(int x, int y) override { return Ask(Call("OnMouseDown", x, y)); }
  bool OnMouseUp(int x, int y) override { return Ask(Call("OnMouseUp", x, y)); }
  bool OnKeyDown(Korvane::KeyID key) override { return Ask("OnKeyDown(" + std::to_string(key) + ")"); }
  bool OnKeyUp(Korvane::KeyID key) override { return Ask("OnKeyUp(" + std::to_string(key) + ")"); }
  void Activate() override { Ask("Activate"); }
  void Deactivate() override { Ask("Deactivate"); }

  using Base::cursorID;
  using Base::mouseDown;
  using Base::mouseDragged;
  using Base::operating;
  using Base::wrapCursor;
};
using FakeTool = FakeToolOf<Korvane::Tool>;

/// A view of 800 x 600 with one of everything: two toolbars of the host, and the tool 7, active.
class ViewManagerTest : public ::testing::Test {
 protected:
  static constexpr int TOOL = 7;

  ViewManagerTest() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetCam3DController(&controller);
    manager.SetNavigationBar(&bar);
    manager.SetHelmDisc(&disc);
    manager.SetStoryboard(&panel);
    manager.SetOrientor(&cube);
    manager.AddToolbar(&first);
    manager.AddToolbar(&second);
    cube.GetParameters().size = Korvane::OrientorParameters::SIZE_NORMAL;
    hub.PerformOperations();
  }

  void Start() {
    tool = new FakeTool("tool", journal);
    manager.AddTool(TOOL, tool);
    manager.SetViewportSize(800, 600);
    manager.Create();
    manager.SetActiveTool(TOOL);
    Forget();
  }

  void Forget() {
    journal.lines.clear();
    renderer.ClearCalls();
    controller.switches.clear();
    hub.requested = 0;
    hub.applied = 0;
  }

  bool& MouseDrag() { return hub.GetApplicationParameters().mouse_drag; }

  ManualPlatform platform;
  WidgetJournal journal;
  MemoryHub hub;
  RecordingRenderer renderer;
  FakeController controller{journal};
  FakeBar bar{journal};
  FakeDisc disc{journal};
  FakeStoryboard panel{journal};
  FakeOrientor cube{journal};
  FakeToolbar first{"first", journal};
  FakeToolbar second{"second", journal};
  OpenViewManager manager;
  FakeTool* tool = nullptr;  // the manager's
};
