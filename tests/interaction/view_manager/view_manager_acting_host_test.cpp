// What the user and the host do with a view that has everything, with a host that does something itself
// within one of the calls that come meanwhile - of the hub, the history, the renderer, the observers and the
// virtual operations of widgets and tools: in each of them in turn.
#include <functional>
#include <memory>
#include <string>
#include <tuple>

#include "interaction/view_manager/fakes.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/zoom_tool.h"
#include "support/acting_host.h"
#include "support/acting_operations.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

/// A widget or a tool whose host has a hand in its virtual operations.
template <class Widget>
class Acting : public Widget {
 public:
  template <class... Arguments>
  explicit Acting(ActingHost& theHost, Arguments&&... arguments)
      : Widget(std::forward<Arguments>(arguments)...), host(theHost) {}

  bool OnMouseMove(int x, int y) override { return Tell(Widget::OnMouseMove(x, y)); }

 protected:
  bool Tell(bool answer) {
    host.Call();
    return answer;
  }

  ActingHost& host;
};

class ActingCube : public Acting<Orientor> {
 public:
  using Acting::Acting;
  bool OnLeftMouseDown(int x, int y) override { return Tell(Orientor::OnLeftMouseDown(x, y)); }
  void Draw() override {
    Orientor::Draw();
    host.Call();
  }
};

class ActingBar : public Acting<NavigationBar> {
 public:
  using Acting::Acting;
  void SetOrientorIsVisible(bool value) override {
    NavigationBar::SetOrientorIsVisible(value);
    host.Call();
  }
  void SetActiveHelmDisc(DiscType type) override {
    NavigationBar::SetActiveHelmDisc(type);
    host.Call();
  }
  bool SetItemSelected(int tag, bool selected) override {
    return Tell(NavigationBar::SetItemSelected(tag, selected));
  }
};

class ActingDisc : public Acting<FakeDisc> {
 public:
  using Acting::Acting;
  void SetActiveDisc(DiscType type) override {
    FakeDisc::SetActiveDisc(type);
    host.Call();
  }
  bool Create() override { return Tell(FakeDisc::Create()); }
  bool OnLeftMouseDown(int x, int y) override { return Tell(FakeDisc::OnLeftMouseDown(x, y)); }
  bool OnKeyDown(KeyID key) override { return Tell(FakeDisc::OnKeyDown(key)); }
  void DrawOverlay() override { host.Call(); }
};

class ActingTool : public Acting<Tool> {
 public:
  using Acting::Acting;
  bool OnMouseDown(int x, int y) override {
    operating = true;
    return Tell(Tool::OnMouseDown(x, y));
  }
  bool OnMouseUp(int x, int y) override {
    operating = false;
    return Tell(Tool::OnMouseUp(x, y));
  }
  bool OnKeyDown(KeyID key) override {
    operating = operating && key != KEY_ESCAPE;
    return Tell(Tool::OnKeyDown(key));
  }
  bool OnKeyUp(KeyID key) override { return Tell(Tool::OnKeyUp(key)); }
  void Activate() override { host.Call(); }
  void Deactivate() override { host.Call(); }
  void OnDraw() override { host.Call(); }
};

enum ToolTag : int { NO_TOOL, TOOL_ORBIT, TOOL_ZOOM, TOOL_RECT_ZOOM, TOOL_ACTING };

struct Stage {
  Stage() {
    journal.recording = false;
    for (auto* const each : {&hub, &otherHub}) each->AddOperationObserver(&operations);
    disc.record->onBegin = disc.record->onEnd = [this] { calls.Call(); };
    cube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
    strip->SetPosition(Toolbar::POSITION_TOP_RIGHT);
    strip->SetVisible(true);
    manager->AddTool(TOOL_ORBIT, new OrbitTool);
    manager->AddTool(TOOL_ZOOM, new ZoomTool);
    manager->AddTool(TOOL_RECT_ZOOM, new RectZoomTool);
    manager->AddTool(TOOL_ACTING, new ActingTool(calls));
    Restore();
    manager->SetViewportSize(800, 600);
    manager->Create();
    panel.SetVisible(true);
    manager->SetNavigationBarVisible(true);
    Frame();
  }
  ~Stage() {
    calls.ActIn(0, nullptr);
    manager->Destroy();
    manager.reset();
    EXPECT_FALSE(hub.broken || otherHub.broken);
    EXPECT_EQ(renderer.begun, renderer.ended);
    for (auto* const each : {&hub, &otherHub}) each->RemoveOperationObserver(&operations);
  }

  void Restore() {
    manager->SetKorvane(&hub);
    manager->SetRenderer(&renderer);
    manager->SetCam3DController(&controller);
    manager->SetNavigationBar(&bar);
    manager->SetHelmDisc(&disc);
    manager->SetStoryboard(&panel);
    manager->SetOrientor(&cube);
    if (strip != nullptr) manager->AddToolbar(strip.get());
  }
  void Frame(unsigned milliseconds = 40) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    otherHub.PerformOperations();
    manager->OnDraw();
  }
  void Frames(int count, unsigned milliseconds = 150) {
    for (int i = 0; i < count; ++i) Frame(milliseconds);
  }
  void Drag(int fromX, int fromY, int toX, int toY) {
    manager->OnMouseMove(fromX, fromY);
    Frame();
    manager->OnLeftMouseDown(fromX, fromY);
    manager->OnMouseMove(toX, toY);
    Frame();
    manager->OnMouseMove(toX - 200, toY - 200);
    Frame();
    manager->OnLeftMouseUp(toX - 200, toY - 200);
    Frame();
  }
  void DropStrip() {
    manager->RemoveToolbar(strip.get());
    strip.reset();
  }

  ManualPlatform platform;
  ActingHost calls;
  ActingHost drawing;
  WidgetJournal journal;
  MischievousHub<ActingHost> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  MischievousHub<ActingHost> otherHub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  ActingOperations operations{calls};
  ActingRenderer renderer{drawing};
  ActingDisc disc{calls, journal};
  ActingCube cube{calls};
  Acting<Storyboard> panel{calls};
  ActingBar bar{calls};
  Cam3DController controller;
  std::unique_ptr<Toolbar> strip = std::make_unique<Toolbar>();
  std::unique_ptr<OpenViewManager> manager = std::make_unique<OpenViewManager>();
};

// ---- what the user and the host do ----

void LayOut(Stage& s) {
  ViewManager& view = *s.manager;
  for (const bool on : {true, false}) {
    view.SetNavigationBarLinkedToOrientor(on);
    view.SetRibbonSize(300, on ? 100 : 50);
    view.SetRibbonVisible(on);
    view.SetViewportSize(on ? 1000 : 800, 600);
    view.SetOrientorVisible(!on);
    s.panel.SetVisible(!on);
    view.SetCleanScreen(on);
    view.SetNavigationBarVisible(!on);
    s.cube.GetParameters().screen_location =
        on ? OrientorParameters::LOCATION_BOTTOM_LEFT : OrientorParameters::LOCATION_TOP_RIGHT;
    view.Refresh();
    s.Frame();
  }
}

void DragTools(Stage& s) {
  for (const int id : {TOOL_ORBIT, TOOL_ZOOM, TOOL_RECT_ZOOM, TOOL_ACTING, NO_TOOL}) {
    s.manager->SetActiveTool(id);
    s.Drag(400, 350, 450, 380);
    s.Frames(2, 600);
    s.manager->OnLeftMouseDown(400, 350);
    s.manager->OnKeyDown(KEY_SHIFT);
    s.manager->OnKeyUp(KEY_SHIFT);
    s.manager->OnMouseMove(420, 350);
    s.manager->CancelGesture();
    s.manager->OnLeftMouseUp(420, 350);
  }
  s.manager->SetActiveTool(TOOL_ORBIT);
  s.manager->OnLeftMouseDown(400, 350);
  s.manager->OnLeftMouseUp(400, 350);
  s.manager->OnSetCursor();
  s.manager->SetActiveTool(0);
}

void DragCube(Stage& s) {
  s.Drag(740, 540, 700, 540);
  s.Frames(4);
  s.manager->OnMouseMove(740, 540);
  s.manager->OnRightMouseDown(740, 540);
  s.manager->OnRightMouseUp(740, 540);
  s.manager->OnLeftMouseDown(740, 540);
  s.manager->OnMouseMove(700, 540);
  s.Frame();
  s.manager->CancelGesture();
  s.Frame();
}

void Navigate(Stage& s) {
  s.disc.SetActiveDisc(DiscType::FullNavigation);
  s.disc.SetEnabled(true);
  s.manager->OnMouseMove(400, 350);
  s.manager->OnMiddleMouseDown(400, 350);
  s.manager->OnMouseMove(420, 350);
  s.Frame();
  s.manager->OnKeyDown(KEY_SHIFT);
  s.manager->OnMouseMove(440, 350);
  s.Frame();
  s.manager->OnKeyUp(KEY_SHIFT);
  s.manager->OnMouseMove(400, 350);
  s.manager->OnMiddleMouseUp(400, 350);
  s.manager->OnMouseWheel(400, 350, 120);
  s.Frame();
  s.manager->OnMouseWheel(400, 350, -120);
  s.Frames(3, 400);
  s.manager->OnMouseWheel(400, 350, 120);
  s.manager->OnMiddleMouseDown(400, 350);
  s.Frame();
  s.manager->CancelGesture();
  s.manager->OnMouseWheel(400, 350, 120);
  s.manager->OnLeftMouseDown(400, 350);
  s.manager->OnLeftMouseUp(400, 350);
  s.manager->OnKeyDown(KEY_SHIFT);
  s.manager->OnMiddleMouseDown(400, 350);
  s.Frame();
  s.manager->OnMiddleMouseUp(400, 350);
  s.manager->OnKeyUp(KEY_SHIFT);
  s.manager->SetActiveTool(TOOL_ORBIT);
}

void MoveCamera(Stage& s) {
  s.manager->FitAllToView();
  s.Frames(3);
  s.manager->LevelCamera();
  s.Frame();
  s.manager->RestoreCenter(Vector3(1.0, 2.0, 3.0));
  s.manager->SetKorvane(&s.otherHub);
  s.manager->FitBoundsToView(Vector3(), 5.0);
  s.manager->SetKorvane(&s.hub);
  s.otherHub.EndShot();
  s.manager->FitAllToView();
  s.manager->SetHelmDisc(nullptr);
  s.manager->SetHelmDisc(&s.disc);
  s.manager->Destroy();
  s.manager->Create();
}

void ChangePartners(Stage& s) {
  s.disc.SetActiveDisc(DiscType::FullNavigation);
  s.disc.SetEnabled(true);
  s.manager->OnMiddleMouseDown(400, 350);
  s.manager->OnMouseMove(420, 350);
  s.manager->SetHelmDisc(nullptr);
  s.manager->OnMiddleMouseUp(420, 350);
  s.manager->SetHelmDisc(&s.disc);
  s.manager->OnMouseWheel(400, 350, 120);
  s.manager->SetOrientor(nullptr);
  s.manager->SetStoryboard(nullptr);
  s.manager->SetNavigationBar(nullptr);
  s.Frame();
  s.Restore();
  s.manager->SetActiveTool(TOOL_ZOOM);
  s.manager->OnLeftMouseDown(400, 350);
  s.manager->OnMouseMove(420, 350);
  s.manager->Destroy();
  s.manager->Create();
  s.Frame();
}

struct Use {
  const char* name;
  void (*play)(Stage&);
};
constexpr Use USES[] = {
    {"lays_out", LayOut},    {"drags_tools", DragTools},       {"drags_the_cube", DragCube},
    {"navigates", Navigate}, {"moves_the_camera", MoveCamera}, {"changes_partners", ChangePartners}};

// ---- what the host does ----

struct Act {
  const char* name;
  void (*commit)(Stage&);
  bool isForRenderer = true;  // may be done in its calls as well
};
constexpr Act ACTS[] = {
    {"takes_the_hub", [](Stage& s) { s.manager->SetKorvane(nullptr); }},
    {"gives_another_hub", [](Stage& s) { s.manager->SetKorvane(&s.otherHub); }},
    {"takes_the_renderer", [](Stage& s) { s.manager->SetRenderer(nullptr); }},
    {"takes_the_controller", [](Stage& s) { s.manager->SetCam3DController(nullptr); }},
    {"takes_the_bar", [](Stage& s) { s.manager->SetNavigationBar(nullptr); }},
    {"takes_the_disc", [](Stage& s) { s.manager->SetHelmDisc(nullptr); }},
    {"takes_the_panel", [](Stage& s) { s.manager->SetStoryboard(nullptr); }},
    {"takes_the_cube", [](Stage& s) { s.manager->SetOrientor(nullptr); }},
    {"deletes_a_toolbar", [](Stage& s) { s.DropStrip(); }, false},
    {"chooses_a_tool", [](Stage& s) { s.manager->SetActiveTool(TOOL_ORBIT); }},
    {"chooses_no_tool", [](Stage& s) { s.manager->SetActiveTool(0); }},
    {"removes_a_tool", [](Stage& s) { delete s.manager->RemoveTool(TOOL_ZOOM); }},
    {"deletes_the_tool",
     [](Stage& s) {
       s.manager->SetActiveTool(NO_TOOL);
       for (const int id : {TOOL_ORBIT, TOOL_ZOOM, TOOL_RECT_ZOOM}) delete s.manager->RemoveTool(id);
     }},
    {"presses_the_middle_button", [](Stage& s) { s.manager->OnMiddleMouseDown(300, 300); }},
    {"cancels", [](Stage& s) { s.manager->CancelGesture(); }},
    {"releases_the_left_button", [](Stage& s) { s.manager->OnLeftMouseUp(300, 300); }},
    {"releases_the_middle_button", [](Stage& s) { s.manager->OnMiddleMouseUp(300, 300); }},
    {"turns_the_wheel", [](Stage& s) { s.manager->OnMouseWheel(300, 300, 120); }},
    {"ends_the_move", [](Stage& s) { s.hub.EndShot(); }},
    {"moves_the_camera", [](Stage& s) { s.manager->RestoreCenter(Vector3(1.0, 0.0, 0.0)); }},
    {"opens_a_disc", [](Stage& s) { s.disc.SetActiveDisc(DiscType::ViewObject); }},
    {"hides_the_cube", [](Stage& s) { s.manager->SetOrientorVisible(false); }},
    {"clears_the_screen", [](Stage& s) { s.manager->SetCleanScreen(true); }},
};

class ActingHostTest : public ::testing::TestWithParam<std::tuple<int, int>> {};

void ComeToRest(Stage& s) {
  s.Restore();
  s.manager->CancelGesture();
  s.manager->OnMiddleMouseUp(1, 1);
  s.manager->SetActiveTool(0);
  for (auto* const each : {&s.hub, &s.otherHub}) {
    each->EndShot();
    each->EndOperation(OPERATION_ALL);
  }
  s.Frame();
  EXPECT_EQ(s.manager->navigation.present, OpenViewManager::Navigation::None);
  EXPECT_FALSE(s.manager->orientorDrag.seen);
  EXPECT_FALSE(s.manager->wantCursorWrapping);
  EXPECT_FALSE(s.manager->mouse.leftDown || s.manager->mouse.middleDown || s.manager->mouse.rightDown);
  EXPECT_LE(s.disc.record->ended, s.disc.record->begun);
}

// The act comes within the call of this number of `host`; the answer is how many there were.
long RunWith(const Use& use, ActingHost Stage::*host, const Act& act, long number) {
  Stage stage;
  (stage.*host).ActIn(number, [&] { act.commit(stage); });
  use.play(stage);
  const long calls = (stage.*host).GetCalls();
  ComeToRest(stage);
  return calls;
}

TEST_P(ActingHostTest, may_do_it_in_each_call) {
  constexpr long STRIDE = 2;
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  TryInEachCall([&](long number) { return RunWith(use, &Stage::calls, act, number); }, STRIDE);
}

TEST_P(ActingHostTest, may_do_it_in_a_call_of_the_renderer) {
  constexpr long STRIDE = 61;  // much is drawn alike
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  if (!act.isForRenderer) return;
  TryInEachCall([&](long number) { return RunWith(use, &Stage::drawing, act, number); }, STRIDE);
}

INSTANTIATE_TEST_SUITE_P(Uses, ActingHostTest,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(std::size(USES))),
                                            ::testing::Range(0, static_cast<int>(std::size(ACTS)))),
                         [](const auto& instance) {
                           return std::string(USES[std::get<0>(instance.param)].name) + "_and_the_host_" +
                                  ACTS[std::get<1>(instance.param)].name;
                         });

}  // namespace
