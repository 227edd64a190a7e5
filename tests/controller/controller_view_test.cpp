// A device beside the mouse, through a view manager.
#include <memory>

#include "controller/controller_scene.h"
#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/storyboard.h"
#include "support/counting_renderer.h"
#include "support/open_view_manager.h"

using namespace Korvane;

namespace {

constexpr int X = 300;
constexpr int Y = 200;

class ViewWithDevice : public ::testing::Test {
 protected:
  ViewWithDevice() {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetOrientor(&cube);
    manager.SetCam3DController(&device);
    manager.AddTool(1, new PanTool);
    EXPECT_TRUE(manager.Create());
    manager.SetViewportSize(800, 600);
    disc.GetParameters().suppressWelcome = true;
    Frame();
  }
  ~ViewWithDevice() override {
    if (manager.pivotBall != nullptr) manager.Destroy();
  }

  bool Push() {
    Vector3 translation(105, 0, 0);
    Vector3 rotation(0, 105, 0);
    return device.On3DControllerInput(translation, rotation);
  }
  void Frame() {
    platform.Advance(16);
    hub.PerformOperations();
    manager.OnDraw();
  }
  bool HasOperation() const { return hub.IsOperationActive(OPERATION_CAM3D_CONTROLLER); }
  /// A motion goes on.
  void Start() {
    Push();
    Push();
    Frame();
    ASSERT_TRUE(device.IsOperating());
  }

  ManualPlatform platform;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  CountingRenderer renderer;
  Orientor cube;
  HelmDisc disc;
  OpenController device;
  OpenViewManager manager;
};

}  // namespace

TEST_F(ViewWithDevice, has_what_the_view_manager_hands_on) {
  EXPECT_NE(device.GetPivotBall(), nullptr);
  EXPECT_EQ(device.GetPivotBall(), manager.pivotBall.get());
  EXPECT_EQ(device.GetRenderer(), &renderer);
  EXPECT_EQ(device.GetParts().partners.history.Get(), disc.GetHistory());
  for (int i = 0; i < 10; ++i) {
    Push();
    Frame();
  }
  EXPECT_TRUE(manager.pivotBall->IsVisible());
  EXPECT_NE(hub.view.eye, Vector3(0, 0, 10));
  device.SetEnabled(false);
  EXPECT_EQ(disc.GetHistory()->GetElementCount(), 2);
}

TEST_F(ViewWithDevice, a_press_that_a_tool_takes_keeps_the_device_off_until_the_release) {
  manager.SetActiveTool(1);
  Start();
  EXPECT_TRUE(manager.OnLeftMouseDown(X, Y));
  EXPECT_FALSE(HasOperation());
  EXPECT_FALSE(Push());
  manager.OnMouseMove(X + 20, Y);
  Frame();
  EXPECT_FALSE(Push());
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_PAN));
  manager.OnLeftMouseUp(X + 20, Y);
  EXPECT_TRUE(Push());
  EXPECT_TRUE(HasOperation());
}

TEST_F(ViewWithDevice, a_press_that_nobody_takes_only_ends_the_motion) {
  using Event = bool (ViewManager::*)(int, int);
  struct Button {
    const char* name;
    Event press;
    Event release;
  };
  const Button buttons[] = {{"left", &ViewManager::OnLeftMouseDown, &ViewManager::OnLeftMouseUp},
                            {"middle", &ViewManager::OnMiddleMouseDown, &ViewManager::OnMiddleMouseUp},
                            {"right", &ViewManager::OnRightMouseDown, &ViewManager::OnRightMouseUp}};
  for (const Button& button : buttons) {
    Start();
    EXPECT_FALSE((manager.*button.press)(X, Y)) << button.name;
    EXPECT_FALSE(HasOperation()) << button.name;
    EXPECT_TRUE(Push()) << button.name;  // with the next input it moves again, also while the button is held
    EXPECT_TRUE(HasOperation()) << button.name;
    (manager.*button.release)(X, Y);
    EXPECT_TRUE(device.GetEnabled()) << button.name;
    device.SetEnabled(false);
    device.SetEnabled(true);
  }
}

TEST_F(ViewWithDevice, the_middle_button_keeps_the_device_off_while_it_moves_the_view) {
  disc.SetActiveDisc(DiscType::FullNavigation);
  manager.OnMouseMove(X, Y);
  Frame();
  Start();
  ASSERT_TRUE(manager.OnMiddleMouseDown(X, Y));
  EXPECT_FALSE(HasOperation());
  EXPECT_FALSE(Push());
  const Vector3 before = hub.view.eye;
  manager.OnMouseMove(X + 40, Y);
  Frame();
  EXPECT_NE(hub.view.eye, before);
  manager.OnMiddleMouseUp(X + 40, Y);
  EXPECT_TRUE(Push());
  EXPECT_TRUE(HasOperation());
}

TEST_F(ViewWithDevice, a_middle_click_within_a_drag_leaves_the_device_off) {
  manager.SetActiveTool(1);
  Start();
  EXPECT_TRUE(manager.OnLeftMouseDown(X, Y));
  manager.OnMiddleMouseDown(X, Y);
  manager.OnMiddleMouseUp(X, Y);
  EXPECT_FALSE(Push());
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_PAN));
  manager.OnLeftMouseUp(X, Y);
  EXPECT_TRUE(Push());
}

TEST_F(ViewWithDevice, a_click_of_another_button_within_a_drag_of_the_middle_one_leaves_the_device_off) {
  disc.SetActiveDisc(DiscType::FullNavigation);
  manager.OnMouseMove(X, Y);
  Frame();
  ASSERT_TRUE(manager.OnMiddleMouseDown(X, Y));
  for (const bool left : {true, false}) {
    left ? manager.OnLeftMouseDown(X, Y) : manager.OnRightMouseDown(X, Y);
    left ? manager.OnLeftMouseUp(X, Y) : manager.OnRightMouseUp(X, Y);
    EXPECT_FALSE(Push()) << left;
  }
  manager.OnMiddleMouseUp(X, Y);
  EXPECT_TRUE(Push());
}

TEST_F(ViewWithDevice, a_drag_that_loses_its_release_gives_the_device_back) {
  manager.SetActiveTool(1);
  Start();
  manager.OnLeftMouseDown(X, Y);
  manager.OnMouseMove(X + 20, Y);
  Frame();
  manager.CancelGesture();
  EXPECT_TRUE(Push());
  EXPECT_TRUE(HasOperation());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
  manager.OnLeftMouseUp(X + 20, Y);  // it comes after all
  EXPECT_TRUE(device.IsOperating());
}

TEST_F(ViewWithDevice, a_middle_drag_that_loses_its_release_gives_the_device_back) {
  disc.SetActiveDisc(DiscType::FullNavigation);
  manager.OnMouseMove(X, Y);
  Frame();
  ASSERT_TRUE(manager.OnMiddleMouseDown(X, Y));
  EXPECT_FALSE(Push());
  manager.CancelGesture();
  EXPECT_TRUE(Push());
}

TEST_F(ViewWithDevice, a_drag_of_the_cube_keeps_the_device_off) {
  cube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
  manager.Refresh();
  Frame();
  int x = 0;
  int y = 0;
  ASSERT_TRUE(cube.GetPartPosition(4, x, y) || cube.GetPartPosition(5, x, y) ||
              cube.GetPartPosition(1, x, y));
  manager.OnMouseMove(x, y);
  Frame();
  Start();
  EXPECT_TRUE(manager.OnLeftMouseDown(x, y));
  EXPECT_FALSE(HasOperation());
  manager.OnMouseMove(x + 30, y);
  Frame();
  ASSERT_TRUE(cube.IsDragActive());
  EXPECT_FALSE(Push());
  manager.OnLeftMouseUp(x + 30, y);
  EXPECT_TRUE(Push());
}

TEST_F(ViewWithDevice, a_click_during_a_playback_keeps_the_device_off) {
  Storyboard panel;
  manager.SetStoryboard(&panel);
  manager.OnReelshowStartPlayback();
  manager.OnLeftMouseDown(X, Y);
  manager.OnLeftMouseUp(X, Y);
  EXPECT_FALSE(Push());
  manager.OnReelshowStopPlayback();
  manager.OnRightMouseDown(X, Y);
  manager.OnRightMouseUp(X, Y);
  EXPECT_TRUE(Push());
  manager.SetStoryboard(nullptr);
}

TEST_F(ViewWithDevice, a_disc_that_goes_takes_its_history_and_the_record_closes) {
  Start();
  const int before = disc.GetHistory()->GetElementCount();
  manager.SetHelmDisc(nullptr);
  EXPECT_EQ(device.GetParts().partners.history.Get(), nullptr);
  EXPECT_TRUE(device.IsOperating());
  EXPECT_EQ(disc.GetHistory()->GetElementCount(), before + 1);
}

// The device moves in another view. Its motion ends there when it gets the hub of this one, and whoever hears
// of that puts another device in its place.
TEST_F(ViewWithDevice, a_device_that_goes_while_it_is_handed_things_has_a_successor_that_is_created) {
  manager.Destroy();
  MemoryHub other{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  OpenController successor;
  auto mortal = std::make_unique<OpenController>();
  mortal->SetKorvane(&other);
  Vector3 translation(105, 0, 0);
  Vector3 rotation;
  mortal->On3DControllerInput(translation, rotation);
  OperationHooks exchange;
  other.AddOperationObserver(&exchange);
  exchange.onEnd = [&] {
    manager.SetCam3DController(&successor);
    mortal.reset();
  };
  manager.SetCam3DController(mortal.get());
  EXPECT_TRUE(manager.Create());
  EXPECT_EQ(mortal, nullptr);
  EXPECT_EQ(successor.GetRenderer(), &renderer);
  EXPECT_EQ(successor.GetPivotBall(), manager.pivotBall.get());
  EXPECT_EQ(successor.GetParts().partners.history.Get(), disc.GetHistory());
  manager.Destroy();
  manager.SetCam3DController(nullptr);
}

TEST_F(ViewWithDevice, a_view_that_is_destroyed_in_a_motion_leaves_a_device_that_works) {
  for (int i = 0; i < 8; ++i) Push();
  manager.Destroy();
  EXPECT_EQ(device.GetPivotBall(), nullptr);
  Push();
  hub.PerformOperations();
  EXPECT_TRUE(device.IsOperating());
  device.SetKorvane(nullptr);
  EXPECT_FALSE(HasOperation());
}
