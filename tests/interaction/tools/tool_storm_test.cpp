// Hosts that act inside whatever they are called for: take collaborators away, end or begin gestures and
// moves, destroy the tool. Nothing may break, and what one call has opened is closed once. Under the
// sanitizers this finds a tool that goes on in freed memory.
#include <memory>
#include <utility>

#include "interaction/tools/tool_fakes.h"
#include "korvane/center_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/walk_tool.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

// Calls back from every call of a host.
struct StormRenderer : CountingRenderer {
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    onCall();
    return !fails && CountingRenderer::BeginRender(viewport, camera, mode);
  }
  bool EndRender() override {
    onCall();
    return CountingRenderer::EndRender();
  }
  bool RenderGeometry(unsigned count, const float* vertices, const float* texCoords,
                      const MaterialParams* material) override {
    onCall();
    return !fails && CountingRenderer::RenderGeometry(count, vertices, texCoords, material);
  }
  bool Render(ResourceIcon3D* icon) override {
    onCall();
    return !fails && CountingRenderer::Render(icon);
  }
  bool Render(DynamicIcon2D* icon) override {
    onCall();
    return !fails && CountingRenderer::Render(icon);
  }
  bool Render(ResourceIcon2D* icon) override {
    onCall();
    icon->SetVisible(true);  // still there
    return !fails && CountingRenderer::Render(icon);
  }
  bool LoadTexture(TextureID /*id*/) override {
    onCall();
    return !fails;
  }
  void ReleaseTexture(TextureID /*id*/) override { onCall(); }
  std::wstring LoadStringResource(int /*id*/) override {
    onCall();
    return fails ? L"" : L"text";
  }
  bool QueryRaySceneIntersection(const Vector3& /*origin*/, const Vector3& /*direction*/,
                                 Vector3& hit) override {
    onCall();
    hit = {0, 0, 2};
    return !fails;
  }
  bool QueryScreenRectRaySceneIntersection(int /*left*/, int /*bottom*/, int /*right*/, int /*top*/,
                                           Vector3& hit) override {
    onCall();
    hit = {0, 0, 2};
    return !fails;
  }
  bool BeginMouseoverComponent(bool /*highlightFaces*/) override {
    onCall();
    return !fails;
  }
  bool GetMouseoverComponent(Vector2 /*pixel*/, Vector3& point, Vector3& normal) override {
    onCall();
    point = {0, 0, 2};
    normal = {0, 0.6, 0.8};
    return !fails;
  }
  bool EndMouseoverComponent() override {
    onCall();
    return true;
  }
  bool ProjectToScreen(Vector3 /*point*/, Vector2& pixel) override {
    onCall();
    pixel = {500, 300};
    return !fails;
  }
  bool SetCursorPosition(int x, int y) override {
    onCall();
    return CountingRenderer::SetCursorPosition(x, y);
  }
  bool SetCursorIcon(CursorID id) override {
    onCall();
    return CountingRenderer::SetCursorIcon(id);
  }

  std::function<void()> onCall = [] {};
  bool fails = false;
};

struct StormHub : MemoryHub {
  using MemoryHub::MemoryHub;
  void QueryCameraParameters(CameraParameters& out) const override {
    MemoryHub::QueryCameraParameters(out);
    onCall();
  }
  void RequestApplicationUpdate() override { onCall(); }
  std::function<void()> onCall = [] {};
};

struct StormObserver : OperationObserver {
  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override { onCall(); }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {
    onCall();
  }
  void OnEndOperation(OperationType /*type*/) override { onCall(); }
  std::function<void()> onCall = [] {};
};

template <class Made>
std::unique_ptr<Tool> Make() {
  return std::make_unique<Made>();
}

using MakeTool = std::unique_ptr<Tool> (*)();
constexpr MakeTool KINDS[] = {
    Make<OrbitTool>,
    Make<PanTool>,
    Make<ZoomTool>,
    Make<MouseWheelZoomTool>,
    Make<RectZoomTool>,
    Make<LookTool>,
    Make<LookMoveTool>,
    Make<LookAtTool>,
    Make<WalkTool>,
    [] { return std::unique_ptr<Tool>(new CenterTool(nullptr, nullptr, STRING_PIVOT)); },
    // Each that may differ from its default does.
    [] {
      auto tool = std::make_unique<ZoomTool>();
      tool->SetConstrainZoom(true);
      tool->SetUseCurrentPivotPoint(true);
      return std::unique_ptr<Tool>(std::move(tool));
    },
    [] {
      auto tool = std::make_unique<WalkTool>();
      tool->SetRewindHistoryInterval(1.0);
      return std::unique_ptr<Tool>(std::move(tool));
    },
};

constexpr std::size_t RECTANGLE = 4;

struct Storm : ::testing::Test {
  Storm() {
    const auto act = [this] { Act(); };
    hub.onCall = renderer.onCall = observer.onCall = act;
    hub.onApply = hub.onRecalculateSelection = hub.onRecalculateGlobal = act;
    hub.onBeginShotHook = hub.onEndShotHook = [this](Shot*) { Act(); };
    hub.AddOperationObserver(&observer);
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    ball.Create();
  }
  ~Storm() override {
    chance = 0;
    tool.reset();
  }

  void MakeAndWire(MakeTool make) {
    history = MakeHistory();
    tool = make();
    Wire();
    tool->SetMouseHUD(&mouseNote);
    tool->SetViewportHUD(&viewNote);
    tool->Activate();
  }
  std::unique_ptr<RecordingHistory> MakeHistory() {
    auto made = std::make_unique<RecordingHistory>();
    made->onBegin = made->onEnd = [this] { Act(); };
    return made;
  }
  void Wire() {
    tool->SetKorvane(&hub);
    tool->SetRenderer(&renderer);
    tool->SetRewindHistory(history.get());
    tool->SetPivotBall(&ball);
  }

  // While nothing happens: a tool takes its textures as it gets its renderer.
  void Rewire() {
    const int storm = std::exchange(chance, 0);
    Wire();
    chance = storm;
  }

  // One time in `chance` the host does something, to a depth of a few calls in each other.
  void Act() {
    if (chance == 0 || depth == 3 || tool == nullptr || random.Integer(1, chance) != 1) return;
    ++depth;
    ++actions;
    DoAction(random.Integer(0, 21));
    --depth;
  }

  void DoAction(int action) {
    const int x = random.Integer(-10, 1030);
    const int y = random.Integer(-10, 770);
    switch (action) {
      case 0:
        return tool->SetKorvane(nullptr);
      case 1:
        return tool->SetRenderer(nullptr);
      case 2:
        return tool->SetRewindHistory(nullptr);
      case 3:
        return tool->SetPivotBall(nullptr);
      case 4:
        tool.reset();
        return;
      case 5:
        tool->SetRewindHistory(nullptr);
        retired = std::exchange(history, nullptr);  // it may be calling: it goes with the end of the event
        return;
      case 6:
        tool->EndGesture();
        return;
      case 7:
        tool->OnKeyDown(KEY_ESCAPE);
        return;
      case 8:
        tool->OnKeyDown(KEY_RUN);
        return;
      case 9:
        hub.EndOperation(OPERATION_ALL);
        return;
      case 10:
        hub.EndShot();
        return;
      case 11: {
        SpinShotParameters spin;
        spin.duration = 0.2;
        hub.BeginShot(spin);
        return;
      }
      case 12:
        tool->Deactivate();
        return;
      case 13:
        tool->Activate();
        return;
      case 14:
        tool->OnDraw();
        return;
      case 15:
        return tool->SetMouseHUD(nullptr);
      case 16:
        ball.SetLabel(static_cast<StringID>(random.Integer(39, 42)));
        return;
      default:
        return SendMouse(random.Integer(0, 3), x, y);
    }
  }

  void SendMouse(int kind, int x, int y) {
    if (kind == 0) {
      tool->OnMouseDown(x, y);
    } else if (kind == 1) {
      tool->OnMouseUp(x, y);
    } else if (kind == 2) {
      tool->OnMouseWheel(x, y, 120);
    } else {
      tool->OnMouseMove(x, y);
    }
  }

  void SendEvent() {
    const int kind = random.Integer(0, 9);
    if (kind < 6) {
      SendMouse(kind % 4, random.Integer(-10, 1030), random.Integer(-10, 770));
    } else if (kind < 7) {
      const auto key = static_cast<KeyID>(random.Integer(0, 12));
      if (random.Coin()) {
        tool->OnKeyDown(key);
      } else {
        tool->OnKeyUp(key);
      }
    } else {
      platform.Advance(static_cast<std::uint32_t>(random.Integer(0, 300)));
      hub.PerformOperations();
      if (tool != nullptr) tool->OnDraw();
    }
  }

  void RunGesture() {
    const auto send = [this](auto event) {
      if (tool != nullptr) event();
    };
    send([&] { tool->OnMouseDown(300, 300); });
    send([&] { tool->OnMouseWheel(300, 300, 120); });
    send([&] { tool->OnMouseMove(400, 380); });
    send([&] { tool->OnDraw(); });
    send([&] { tool->EndGesture(); });
  }

  void SetOnCall(const std::function<void()>& onCall) {
    hub.onCall = renderer.onCall = observer.onCall = hub.onApply = onCall;
    hub.onRecalculateSelection = hub.onRecalculateGlobal = onCall;
    if (history != nullptr) history->onBegin = history->onEnd = onCall;
  }

  // With a quiet host: all that goes on comes to its end.
  void Rest() {
    chance = 0;
    if (tool != nullptr) Wire();
    if (tool != nullptr) tool->EndGesture();
    hub.EndShot();
    hub.EndOperation(OPERATION_ALL);
  }

  Random random;
  int chance = 0;
  int depth = 0;
  long actions = 0;
  ManualPlatform platform;
  StormHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  StormRenderer renderer;
  StormObserver observer;
  DynamicIcon2D mouseNote{1};
  DynamicIcon2D viewNote{2};
  PivotBall ball;
  std::unique_ptr<RecordingHistory> history;
  std::unique_ptr<RecordingHistory> retired;
  std::unique_ptr<Tool> tool;
};

}  // namespace

TEST_F(Storm, no_tool_breaks_whatever_its_host_does_inside_its_calls) {
  const CameraParameters start = hub.view;
  for (int stream = 0; stream < 1500; ++stream) {
    chance = 0;
    hub.view = start;
    MakeAndWire(KINDS[static_cast<std::size_t>(stream) % std::size(KINDS)]);
    renderer.fails = random.Integer(0, 4) == 0;
    const ApplicationParameters before = hub.GetApplicationParameters();
    chance = random.Integer(4, 30);
    for (int i = 0; i < 40 && tool != nullptr; ++i) {
      SendEvent();
      retired.reset();
      if (tool != nullptr && random.Integer(0, 9) == 0) Rewire();
      if (history == nullptr) history = MakeHistory();
      ASSERT_LE(history->ended, history->begun);
    }
    Rest();
    ASSERT_TRUE(hub.view.IsFinite());
    ASSERT_EQ(renderer.begun, renderer.ended);
    if (tool == nullptr) continue;
    EXPECT_FALSE(tool->IsOperating());
    EXPECT_FALSE(tool->IsAnimating());
    tool.reset();
    hub.GetApplicationParameters() = before;
  }
  EXPECT_GT(actions, 5000);
}

// Each call of a gesture in its turn is the one in which the host ends the gesture, and may destroy the tool.
TEST_F(Storm, a_gesture_ended_in_any_of_its_calls_leaves_nothing_open) {
  int ended = 0;
  for (std::size_t kind = 0; kind < std::size(KINDS); ++kind) {
    for (const bool destroyed : {false, true}) {
      for (int call = 0; call < 60; ++call) {
        SetOnCall([] {});
        MakeAndWire(KINDS[kind]);
        const ApplicationParameters before = hub.GetApplicationParameters();
        int calls = 0;
        SetOnCall([&] {
          if (calls++ != call || tool == nullptr) return;
          ++ended;
          tool->EndGesture();
          if (destroyed) tool.reset();
        });
        RunGesture();
        SetOnCall([] {});
        hub.EndShot();
        const ApplicationParameters& now = hub.GetApplicationParameters();
        EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL)) << kind << ", call " << call;
        EXPECT_EQ(now.preserve_orbit_up_direction, before.preserve_orbit_up_direction) << kind << call;
        EXPECT_EQ(now.align_orbit_up_direction, before.align_orbit_up_direction) << kind << call;
        EXPECT_EQ(now.zoom_back_distance, before.zoom_back_distance) << kind << ", call " << call;
        EXPECT_EQ(now.zoom_min_limit_motion, before.zoom_min_limit_motion) << kind << ", call " << call;
        EXPECT_EQ(renderer.begun, renderer.ended);
        // A rectangle that is given up leaves its record open.
        EXPECT_TRUE(destroyed || kind == RECTANGLE || history->GetOpenCount() == 0)
            << kind << ", call " << call;
        tool.reset();
        ball.SetVisible(false);
      }
    }
  }
  EXPECT_GT(ended, 240);  // ten calls of each kind, both ways
}

TEST_F(Storm, a_tool_destroyed_as_its_operation_ends_has_closed_its_record_and_given_its_settings_back) {
  for (const MakeTool make :
       {Make<OrbitTool>, Make<PanTool>, Make<LookTool>, Make<LookMoveTool>, Make<WalkTool>, Make<ZoomTool>}) {
    MakeAndWire(make);
    hub.GetApplicationParameters().align_orbit_up_direction = false;
    SetOnCall([] {});
    tool->OnMouseDown(300, 300);
    tool->OnMouseMove(350, 300);
    observer.onCall = [this] { tool.reset(); };
    tool->OnMouseUp(350, 300);
    EXPECT_EQ(tool, nullptr);
    EXPECT_TRUE(history->Has(1, 1));
    EXPECT_FALSE(hub.GetApplicationParameters().align_orbit_up_direction);
    EXPECT_FALSE(ball.IsVisible());
  }
}
