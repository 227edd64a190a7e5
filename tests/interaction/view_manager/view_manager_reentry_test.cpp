// Hosts that do, at any moment within a call, anything that a host may do: two view managers on one renderer
// that fails now and then, a cube, tools and a disc each. For the sanitizers, and for the asserts.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>

#include "interaction/view_manager/fakes.h"
#include "korvane/center_tool.h"
#include "korvane/look_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/walk_tool.h"
#include "korvane/zoom_tool.h"
#include "support/counting_renderer.h"
#include "support/mischievous_hub.h"
#include "support/random.h"

using namespace Korvane;

namespace {

class View;

/// Decides whether a call of the library is answered by an action of the host.
class Mischief {
 public:
  explicit Mischief(Random& numbers) : random(numbers) {}

  /// Every call out comes here.
  void Call();
  /// Now and then a call of the renderer fails.
  bool Fails() {
    Call();
    return depth < MAX_DEPTH && random.Integer(0, 63) == 0;
  }

  std::vector<View*> views;
  long actions = 0;
  long calls = 0;

 private:
  static constexpr int MAX_DEPTH = 4;

  Random& random;
  int depth = 0;
};

class MischievousObserver : public OperationObserver {
 public:
  explicit MischievousObserver(Mischief& host) : mischief(host) {}
  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override {
    mischief.Call();
  }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {
    mischief.Call();
  }
  void OnEndOperation(OperationType /*type*/) override { mischief.Call(); }

 private:
  Mischief& mischief;
};

class MischievousCubeObserver : public OrientorObserver {
 public:
  MischievousCubeObserver(Orientor& cube, Mischief& host) : OrientorObserver(&cube), mischief(host) {}
  void OnClicked(OrientorPart /*part*/) override { mischief.Call(); }
  void OnDragBegin(OrientorPart /*part*/) override { mischief.Call(); }
  void OnDragEnd() override { mischief.Call(); }
  void OnPositionChange(OrientorParameters::Location /*location*/) override { mischief.Call(); }

 private:
  Mischief& mischief;
};

class MischievousRenderer : public CountingRenderer {
 public:
  explicit MischievousRenderer(Mischief& host) : mischief(host) {}

  bool LoadTexture(TextureID /*id*/) override { return !mischief.Fails(); }
  void ReleaseTexture(TextureID /*id*/) override { mischief.Call(); }
  bool BeginRender(const Box2& /*viewport*/, const CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return !mischief.Fails();
  }
  bool EndRender() override { return !mischief.Fails(); }
  bool RenderGeometry(unsigned /*count*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return !mischief.Fails();
  }
  bool Render(ResourceIcon3D* /*icon*/) override { return !mischief.Fails(); }
  bool Render(DynamicIcon2D* /*icon*/) override { return !mischief.Fails(); }
  bool Render(ResourceIcon2D* /*icon*/) override { return !mischief.Fails(); }
  std::wstring LoadStringResource(int /*id*/) override { return mischief.Fails() ? L"" : L"text"; }
  DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : RecordingRenderer::CreateTooltipHUD(text);
  }
  DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : RecordingRenderer::CreatePivotLabel(text);
  }
  bool QueryRaySceneIntersection(const Vector3& /*origin*/, const Vector3& /*direction*/,
                                 Vector3& hit) override {
    hit = Vector3(1, 2, 3);
    return !mischief.Fails();
  }
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return !mischief.Fails(); }
  bool SetCursorIcon(CursorID /*id*/) override { return !mischief.Fails(); }
  bool OpenMenu(MenuID /*id*/) override { return !mischief.Fails(); }
  bool OpenUCSMenu(int /*x*/, int /*y*/) override { return !mischief.Fails(); }

 private:
  Mischief& mischief;
};

Tool* MakeTool(int kind) {
  static constexpr std::array<Tool* (*)(), 8> MAKERS = {
      [] { return static_cast<Tool*>(new OrbitTool); },
      [] { return static_cast<Tool*>(new PanTool); },
      [] { return static_cast<Tool*>(new ZoomTool); },
      [] { return static_cast<Tool*>(new MouseWheelZoomTool); },
      [] { return static_cast<Tool*>(new LookTool); },
      [] { return static_cast<Tool*>(new CenterTool(nullptr, nullptr, STRING_PIVOT)); },
      [] { return static_cast<Tool*>(new WalkTool); },
      [] { return static_cast<Tool*>(new RectZoomTool); },
  };
  return MAKERS[static_cast<std::size_t>(kind) % MAKERS.size()]();
}

/// One of the two views, and everything that its host may do at any moment.
class View {
 public:
  View(Random& numbers, Mischief& host, Renderer& pictures)
      : random(numbers),
        mischief(host),
        renderer(pictures),
        hub(host, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})),
        observer(host),
        disc(journal),
        cubeObserver(cube, host) {
    journal.recording = false;
    disc.record->onBegin = disc.record->onEnd = [this] { mischief.Call(); };
    hub.AddOperationObserver(&observer);
    cube.AddObserver(&cubeObserver);
    cube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
    for (int id = 1; id <= TOOLS; ++id) manager.AddTool(id, MakeTool(id));
    Begin();
  }
  ~View() {
    manager.Destroy();
    manager.SetOrientor(nullptr);
    manager.SetHelmDisc(nullptr);
    hub.EndShot();
    hub.EndOperation(OPERATION_ALL);
    cube.RemoveObserver(&cubeObserver);
    hub.RemoveOperationObserver(&observer);
  }

  // As a host begins, and goes on after it has taken everything away.
  void Begin() {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetOrientor(&cube);
    manager.SetViewportSize(800, 600);
    manager.Create();
  }
  void Frame() {
    hub.PerformOperations();
    manager.OnDraw();
  }

  void Act() {
    using Action = void (View::*)(int x, int y);
    static constexpr Action ACTIONS[] = {&View::Move,           &View::LeftDown,    &View::LeftUp,
                                         &View::MiddleDown,     &View::MiddleUp,    &View::RightDown,
                                         &View::RightUp,        &View::Wheel,       &View::KeyDown,
                                         &View::KeyUp,          &View::Cancel,      &View::Choose,
                                         &View::ChooseNone,     &View::Add,         &View::Remove,
                                         &View::BeginMove,      &View::BeginOp,     &View::EndOp,
                                         &View::UpdateOp,       &View::EndMove,     &View::Centre,
                                         &View::Level,          &View::Fit,         &View::ChangeHub,
                                         &View::ChangeRenderer, &View::ChangeCube,  &View::ChangeDisc,
                                         &View::ShowCube,       &View::CleanScreen, &View::Resize,
                                         &View::ShowRibbon,     &View::CubeCorner,  &View::OpenDisc,
                                         &View::ChangeObserver, &View::LoseCubeHub, &View::CancelTool};
    int x = random.Integer(-20, 820);
    int y = random.Integer(-20, 620);
    if (random.Coin()) {  // over the cube
      x = random.Integer(680, 799);
      y = random.Integer(480, 599);
    }
    (this->*random.OneOf(ACTIONS))(x, y);
  }

  bool IsBroken() const { return hub.broken; }

 private:
  static constexpr int TOOLS = 8;

  void Move(int x, int y) { manager.OnMouseMove(x, y); }
  void LeftDown(int x, int y) { manager.OnLeftMouseDown(x, y); }
  void LeftUp(int x, int y) { manager.OnLeftMouseUp(x, y); }
  void MiddleDown(int x, int y) { manager.OnMiddleMouseDown(x, y); }
  void MiddleUp(int x, int y) { manager.OnMiddleMouseUp(x, y); }
  void RightDown(int x, int y) { manager.OnRightMouseDown(x, y); }
  void RightUp(int x, int y) { manager.OnRightMouseUp(x, y); }
  void Wheel(int x, int y) { manager.OnMouseWheel(x, y, 120 * random.Integer(-2, 2)); }
  void KeyDown(int x, int /*y*/) { manager.OnKeyDown(static_cast<KeyID>(std::abs(x) % 14)); }
  void KeyUp(int x, int /*y*/) { manager.OnKeyUp(static_cast<KeyID>(std::abs(x) % 14)); }
  void Cancel(int /*x*/, int /*y*/) { manager.CancelGesture(); }
  void Choose(int x, int /*y*/) { manager.SetActiveTool(x % (TOOLS + 1)); }
  void ChooseNone(int /*x*/, int /*y*/) { manager.SetActiveTool(0); }
  void Add(int x, int y) {
    Tool* const tool = MakeTool(std::abs(x));
    if (!manager.AddTool(y % (TOOLS + 1), tool)) delete tool;
  }
  void Remove(int x, int /*y*/) { delete manager.RemoveTool(x % (TOOLS + 1)); }
  void BeginMove(int x, int y) {
    CenterShotParameters shot;
    shot.point = Vector3(x * 0.01, y * 0.01, 0.0);
    shot.duration = 0.1;
    shot.easeEnd = 1.0;
    hub.BeginShot(shot);
  }
  void BeginOp(int x, int y) { hub.BeginOperation(OPERATION_ORBIT, x, y); }
  void EndOp(int /*x*/, int /*y*/) { hub.EndOperation(OPERATION_ALL); }
  void UpdateOp(int x, int y) { hub.UpdateOperationParams(x, y, OPERATION_ALL); }
  void EndMove(int /*x*/, int /*y*/) { hub.EndShot(); }
  void Centre(int x, int y) { manager.RestoreCenter(Vector3(x * 0.01, y * 0.01, 0.0)); }
  void Level(int /*x*/, int /*y*/) { manager.LevelCamera(); }
  void Fit(int /*x*/, int /*y*/) { manager.FitAllToView(); }
  void ChangeHub(int x, int /*y*/) { manager.SetKorvane(IsThere(x) ? &hub : nullptr); }
  void ChangeRenderer(int x, int /*y*/) { manager.SetRenderer(IsThere(x) ? &renderer : nullptr); }
  void ChangeCube(int x, int /*y*/) { manager.SetOrientor(IsThere(x) ? &cube : nullptr); }
  void ChangeDisc(int x, int /*y*/) { manager.SetHelmDisc(IsThere(x) ? &disc : nullptr); }
  void ShowCube(int x, int /*y*/) { manager.SetOrientorVisible(IsThere(x)); }
  void CleanScreen(int x, int /*y*/) { manager.SetCleanScreen(!IsThere(x)); }
  void Resize(int x, int y) { manager.SetViewportSize(std::max(x, 0), std::max(y, 0)); }
  void ShowRibbon(int x, int y) {
    manager.SetRibbonSize(x, y);
    manager.SetRibbonVisible(!IsThere(x));
  }
  void CubeCorner(int x, int /*y*/) {
    cube.GetParameters().screen_location = static_cast<OrientorParameters::Location>(std::abs(x) % 4);
  }
  void OpenDisc(int x, int /*y*/) { disc.Open(IsThere(x) ? DiscType::FullNavigation : DiscType::None); }
  void ChangeObserver(int x, int /*y*/) {
    hub.RemoveOperationObserver(&observer);
    if (IsThere(x)) hub.AddOperationObserver(&observer);
  }
  void LoseCubeHub(int x, int /*y*/) { cube.SetKorvane(IsThere(x) ? &hub : nullptr); }
  void CancelTool(int /*x*/, int /*y*/) {
    if (manager.activeTool != nullptr) manager.activeTool->EndGesture(1, 2);
  }
  static bool IsThere(int x) { return x % 4 != 0; }

  Random& random;
  Mischief& mischief;
  Renderer& renderer;
  WidgetJournal journal;
  MischievousHub<Mischief> hub;
  MischievousObserver observer;
  FakeDisc disc;
  Orientor cube;
  MischievousCubeObserver cubeObserver;
  OpenViewManager manager;
};

void Mischief::Call() {
  ++calls;
  if (views.empty() || depth >= MAX_DEPTH || random.Integer(0, 39) != 0) return;
  ++depth;
  ++actions;
  views[static_cast<std::size_t>(random.Integer(0, static_cast<int>(views.size()) - 1))]->Act();
  --depth;
}

// ZOV_TEST_REENTRY sets the number of events.
int EventCount() {
  const char* const wanted = std::getenv("ZOV_TEST_REENTRY");
  return wanted != nullptr ? std::atoi(wanted) : 30000;
}

class ViewManagerReentry : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(ViewManagerReentry, bears_hosts_that_do_anything_within_any_call) {
  ManualPlatform platform;
  Random random(GetParam());
  Mischief mischief(random);
  MischievousRenderer renderer(mischief);
  {
    View first(random, mischief, renderer);
    View second(random, mischief, renderer);
    View* const views[] = {&first, &second};
    mischief.views = {&first, &second};
    for (int event = 0; event < EventCount(); ++event) {
      View& view = *random.OneOf(views);
      view.Act();
      if (event % 3 == 0) {
        platform.AdvanceWithoutTimers(16);
        view.Frame();
      }
      if (event % 50 == 0) view.Begin();
      ASSERT_FALSE(first.IsBroken() || second.IsBroken()) << "event " << event;
      renderer.ClearCalls();
    }
    mischief.views.clear();
  }
  EXPECT_GT(mischief.actions, EventCount() / 10);
  RecordProperty("calls", std::to_string(mischief.calls));
  RecordProperty("actions", std::to_string(mischief.actions));
  EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Streams, ViewManagerReentry, ::testing::Range<std::uint64_t>(0, 6));

}  // namespace
