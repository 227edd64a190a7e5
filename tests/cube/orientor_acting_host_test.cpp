// What the user does with the cube, with a host that does something itself within one of the calls that the
// cube makes meanwhile: in each of them in turn.
#include <functional>
#include <iterator>
#include <string>
#include <tuple>

#include "cube/gesture_scene.h"
#include "support/acting_host.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;

class CubeRenderer : public ActingRenderer {
 public:
  using ActingRenderer::ActingRenderer;
  DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* text, const wchar_t* other, bool flag,
                                    int width) override {
    DynamicIcon2D* const icon = ActingRenderer::CreateUCSMenuLabel(text, other, flag, width);
    if (icon != nullptr) icon->SetSize(100.0, 20.0);
    return icon;
  }
};

class ActingObserver : public OrientorObserver {
 public:
  ActingObserver(Orientor& cube, ActingHost& theHost) : OrientorObserver(&cube), host(theHost) {}
  void OnClicked(OrientorPart /*part*/) override { host.Call(); }
  void OnDragBegin(OrientorPart /*part*/) override { host.Call(); }
  void OnDragEnd() override { host.Call(); }
  void OnPositionChange(OrientorParameters::Location /*location*/) override { host.Call(); }

 private:
  ActingHost& host;
};

struct Stage {
  Stage() {
    ApplicationParameters& scene = hub.GetApplicationParameters();
    scene.viewport_width = WIDTH;
    scene.viewport_height = HEIGHT;
    scene.home_camera = LookAt(Vector3(5, 2, 7), Vector3(1, 2, 0), Vector3(0, 1, 0));
    multiplier = scene.orbit_multiplier;
    history.onBegin = history.onEnd = [this] { told.Call(); };
    OrientorParameters& parameters = cube.GetParameters();
    parameters.draw_compass = parameters.draw_ucs_menu = true;
    parameters.size = OrientorParameters::SIZE_LARGE;
    cube.SetCompassFollowsPointer(true);
    cube.AddObserver(&observer);
    Restore();
    EXPECT_TRUE(cube.Create());
    cube.SetViewportSize(WIDTH, HEIGHT);
    Frames(1);
  }
  ~Stage() {
    EXPECT_FALSE(hub.broken);
    cube.Destroy();
  }

  void Restore() {
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    cube.SetRewindHistory(&history);
    cube.GetParameters().visible = true;
    cube.GetParameters().disabled = false;
  }
  /// The host's camera, which a frame brings into the hub.
  void Look(const Vector3& view) {
    hub.view = LookAlong(view);
    Frames(1);
  }
  void Frames(int count, unsigned milliseconds = 60) {
    for (int i = 0; i < count; ++i) {
      platform.Advance(milliseconds);
      hub.PerformOperations();
      cube.Draw();
    }
  }
  /// As the window gives it, `y` upward, to both entries of the cube.
  void Move(int toX, int toY) {
    x = toX;
    y = toY;
    cube.OnMouseMove(x, y);
    cube.SetViewportMousePosition(x, HEIGHT - y - 1);
  }
  void Press() { cube.OnLeftMouseDown(x, y); }
  void Release() { cube.OnLeftMouseUp(x, y); }
  bool IsOnCube() const { return cube.IsMouseOnPart() || cube.IsMouseOnCompassPart(); }

  ManualPlatform platform;
  ActingHost calls;    // of the hub
  ActingHost told;     // of the observer and the history
  ActingHost drawing;  // of the renderer
  MischievousHub<ActingHost> hub{calls, LookAlong(Vector3(-3.0, -2.0, -1.0))};
  CubeRenderer renderer{drawing};
  RecordingHistory history;
  TouchedOrientor cube;
  ActingObserver observer{cube, told};
  double multiplier = 0.0;  // of orbits, that a drag borrows
  int x = 0;
  int y = 0;
};

// ---- what the user does ----

struct Use {
  const char* name;
  Vector3 view;
  int part;  // of cube or compass; -1: of the overlay
  int overlay;
  bool drags;
};
const Vector3 ASLANT(-3.0, -2.0, -1.0);
const Vector3 STRAIGHT(-1.0, 0.0, 0.0);  // onto the front
const Use USES[] = {
    {"clicks_a_face", ASLANT, 3, -1, false},
    {"clicks_a_letter", ASLANT, 26, -1, false},
    {"clicks_the_ring", ASLANT, 33, -1, false},
    {"goes_home", ASLANT, -1, Orientor::OVERLAY_HOME, false},
    {"opens_the_menu", ASLANT, -1, Orientor::OVERLAY_CONTEXT_MENU, false},
    {"opens_the_list", ASLANT, -1, Orientor::OVERLAY_UCS_MENU, false},
    {"rolls", STRAIGHT, -1, Orientor::OVERLAY_ROTATE_CLOCKWISE, false},
    {"drags_a_face", ASLANT, 3, -1, true},
    {"drags_the_compass", ASLANT, 33, -1, true},
};

bool FindPlace(Stage& s, const Use& use, int& x, int& y) {
  if (use.part >= 0) return s.cube.GetPartPosition(use.part, x, y);
  return s.cube.GetOverlayPartPosition(static_cast<Orientor::OverlayPart>(use.overlay), x, y);
}

/// Brings the mouse there; the arrows that roll show once it is near.
void PointAt(Stage& s, const Use& use) {
  s.Look(use.view);
  s.Move(WIDTH - 60, HEIGHT - 60);
  s.Frames(2);
  int x = 0;
  int y = 0;
  EXPECT_TRUE(FindPlace(s, use, x, y));
  s.Move(x, y);
  s.Frames(2);
  EXPECT_TRUE(s.IsOnCube());
}

void UseCube(Stage& s, const Use& use) {
  s.Move(s.x, s.y);
  s.Press();
  s.Frames(1);
  for (int step = 1; use.drags && step <= 3; ++step) {
    s.Move(s.x - 25, s.y + 10 * step);
    s.Frames(1);
  }
  s.Release();
  s.Frames(12);
}

void Live(Stage& s) {
  int x = 0;
  int y = 0;
  OrientorParameters& parameters = s.cube.GetParameters();
  s.cube.GoToHomeView();
  s.Frames(3);
  s.cube.AlignToOrbitUpDirection();
  s.cube.LockToCurrentSelection(true);
  (void)s.cube.GetPartPosition(0, x, y);
  (void)s.cube.GetOverlayPartPosition(Orientor::OVERLAY_HOME, x, y);
  s.cube.IsPointInBounds(s.x, s.y);
  (void)s.cube.OpenMenu();
  s.cube.SetActiveUCS(L"Top", true);
  for (const auto corner :
       {OrientorParameters::LOCATION_BOTTOM_LEFT, OrientorParameters::LOCATION_TOP_RIGHT}) {
    parameters.screen_location = corner;
    parameters.size = OrientorParameters::SIZE_SMALL;
    s.Move(s.x, s.y);
    s.Frames(1);
  }
  s.cube.SetViewportSize(WIDTH, HEIGHT);
  s.cube.InjectClick(OrientorObserver::PART_TOP);
  s.Frames(2);
  s.Press();
  s.cube.CancelGesture();
  s.cube.SetRenderer(nullptr);
  s.cube.SetRenderer(&s.renderer);
  s.cube.SetKorvane(nullptr);
  s.cube.SetKorvane(&s.hub);
  s.cube.Destroy();
  (void)s.cube.Create();
  s.Frames(1);
}

// ---- what the host does ----

struct Act {
  const char* name;
  void (*commit)(Stage&);
};
constexpr Act ACTS[] = {
    {"takes_the_hub", [](Stage& s) { s.cube.SetKorvane(nullptr); }},
    {"takes_the_renderer", [](Stage& s) { s.cube.SetRenderer(nullptr); }},
    {"takes_the_history", [](Stage& s) { s.cube.SetRewindHistory(nullptr); }},
    {"takes_the_observer", [](Stage& s) { s.cube.RemoveObserver(&s.observer); }},
    {"destroys_it", [](Stage& s) { s.cube.Destroy(); }},
    {"hides_it", [](Stage& s) { s.cube.GetParameters().visible = false; }},
    {"disables_it", [](Stage& s) { s.cube.GetParameters().disabled = true; }},
    {"leaves_out_the_buttons", [](Stage& s) { s.cube.GetParameters().draw_overlay = false; }},
    {"leaves_out_the_label", [](Stage& s) { s.cube.GetParameters().draw_ucs_menu = false; }},
    {"puts_it_elsewhere",
     [](Stage& s) { s.cube.GetParameters().screen_location = OrientorParameters::LOCATION_BOTTOM_LEFT; }},
    {"presses", [](Stage& s) { s.Press(); }},
    {"lets_go", [](Stage& s) { s.Release(); }},
    {"lets_go_and_presses",
     [](Stage& s) {
       s.Release();
       s.Press();
     }},
    {"cancels", [](Stage& s) { s.cube.CancelGesture(); }},
    {"moves_the_pointer", [](Stage& s) { s.Move(5, 5); }},
    {"names_the_system", [](Stage& s) { s.cube.SetActiveUCS(L"Left", true); }},
    {"ends_the_move", [](Stage& s) { s.hub.EndShot(); }},
    {"ends_the_operation", [](Stage& s) { s.hub.EndOperation(OPERATION_ALL); }},
    {"flies_elsewhere",
     [](Stage& s) {
       CenterShotParameters shot;
       shot.point = Vector3(1, 0, 0);
       shot.duration = 0.1;
       s.hub.BeginShot(shot);
     }},
};

void Rest(Stage& s) {
  s.Restore();
  s.Release();
  s.cube.CancelGesture();
  s.Frames(12);
  EXPECT_FALSE(s.cube.IsDragActive());
  EXPECT_FALSE(s.hub.IsShotActive());
  EXPECT_FALSE(s.hub.IsOperationActive(OPERATION_ALL));
  EXPECT_LE(s.history.GetOpenCount(), 1);  // a move that ends as it begins leaves its record to the next
  EXPECT_NEAR(s.hub.GetApplicationParameters().orbit_multiplier, s.multiplier, 1e-6);
  EXPECT_EQ(s.renderer.begun, s.renderer.ended);
}

long RunWith(const Use* use, ActingHost Stage::*host, const Act& act, long number) {
  Stage stage;
  if (use != nullptr) PointAt(stage, *use);
  (stage.*host).ActIn(number, [&] { act.commit(stage); });
  if (use != nullptr) {
    UseCube(stage, *use);
  } else {
    Live(stage);
  }
  const long calls = (stage.*host).GetCalls();
  (stage.*host).ActIn(0, nullptr);
  Rest(stage);
  EXPECT_EQ(stage.renderer.GetForeignDestroyCount(), 0);
  return calls;
}

class ActingHostTest : public ::testing::TestWithParam<std::tuple<int, int>> {
 protected:
  static void Try(ActingHost Stage::*host, long stride) {
    const auto index = static_cast<std::size_t>(std::get<0>(GetParam()));
    const Use* const use = index < std::size(USES) ? &USES[index] : nullptr;
    const Act& act = ACTS[std::get<1>(GetParam())];
    TryInEachCall([&](long number) { return RunWith(use, host, act, number); }, stride);
  }
};

TEST_P(ActingHostTest, may_do_it_in_every_other_call) { Try(&Stage::calls, 2); }
TEST_P(ActingHostTest, may_do_it_as_observer_and_history_hear) {
  const auto use = static_cast<std::size_t>(std::get<0>(GetParam()));
  const bool isUntold = use < std::size(USES) && USES[use].overlay == Orientor::OVERLAY_UCS_MENU;
  if (!isUntold) Try(&Stage::told, 1);
}
TEST_P(ActingHostTest, may_do_it_while_the_cube_is_drawn) {
  constexpr long STRIDE = 601;  // much is drawn alike
  Try(&Stage::drawing, STRIDE);
}

INSTANTIATE_TEST_SUITE_P(Uses, ActingHostTest,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(std::size(USES)) + 1),
                                            ::testing::Range(0, static_cast<int>(std::size(ACTS)))),
                         [](const auto& instance) {
                           const auto use = static_cast<std::size_t>(std::get<0>(instance.param));
                           return std::string(use < std::size(USES) ? USES[use].name : "lives") +
                                  "_and_the_host_" + ACTS[std::get<1>(instance.param)].name;
                         });

}  // namespace
