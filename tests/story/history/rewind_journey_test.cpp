// A view with its tools, worked by a hand through the view manager: what it leaves in the history, and the
// way back along it.
#include "korvane/helm_disc.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/view_manager.h"
#include "story/history/rewind_scene.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

constexpr int ORBIT = 1;
constexpr int PAN = 2;

struct RewindJourney : ::testing::Test {
  RewindJourney() {
    hub.SetSceneBoundingSphere(5.0, Vector3());
    hub.view = LookAt({30, 0, 0}, {0, 0, 0}, {0, 1, 0});
    renderer.SetSceneHit({2, 0, 0});
    Furnish(*disc.GetHistory(), &hub, &renderer);
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.Create();
    manager.SetViewportSize(800, 600);
    manager.AddTool(ORBIT, new OrbitTool);
    manager.AddTool(PAN, new PanTool);
    manager.SetActiveTool(ORBIT);
  }
  ~RewindJourney() override { manager.Destroy(); }

  void Frame() {
    platform.Advance(20);
    hub.PerformOperations();
    manager.OnDraw();
  }
  void Frames() {
    for (int i = 0; i < 100; ++i) Frame();
  }
  // Both in steps, with a frame each.
  void Drag(int tool, int dx, int dy) {
    manager.SetActiveTool(tool);
    manager.OnMouseMove(400, 300);
    manager.OnLeftMouseDown(400, 300);
    for (int step = 1; step <= 5; ++step) {
      manager.OnMouseMove(400 + dx * step / 5, 300 + dy * step / 5);
      Frame();
    }
    manager.OnLeftMouseUp(400 + dx, 300 + dy);
    Frame();
  }
  CameraParameters GetElement(int index) {
    CameraParameters camera;
    EXPECT_TRUE(history.GetElementCamera(index, camera));
    return camera;
  }

  ManualPlatform platform;
  MemoryHub hub;
  RecordingRenderer renderer;
  HelmDisc disc;
  RewindHistory& history = *disc.GetHistory();
  ViewManager manager;
};

}  // namespace

TEST_F(RewindJourney, each_gesture_is_one_entry_after_that_of_the_start) {
  const CameraParameters start = hub.view;
  Drag(ORBIT, 100, 0);
  EXPECT_EQ(history.GetElementCount(), 2);
  EXPECT_EQ(GetElement(0).eye, start.eye);
  EXPECT_EQ(GetElement(1).eye, hub.view.eye);
  Drag(PAN, 50, 20);
  Drag(ORBIT, 0, 60);
  EXPECT_EQ(history.GetElementCount(), 4);
  EXPECT_EQ(history.GetCurrentElementIndex(), 3);
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 4);
}

TEST_F(RewindJourney, a_click_that_moves_nothing_is_no_entry) {
  Drag(ORBIT, 100, 0);
  Drag(ORBIT, 0, 0);
  EXPECT_EQ(history.GetElementCount(), 2);
}

TEST_F(RewindJourney, an_animated_move_is_one_entry_when_it_has_ended) {
  EXPECT_TRUE(manager.FitAllToView());
  Frame();
  EXPECT_EQ(history.GetElementCount(), 1);
  Frames();
  EXPECT_EQ(history.GetElementCount(), 2);
  EXPECT_EQ(GetElement(1).eye, hub.view.eye);
}

TEST_F(RewindJourney, a_slide_goes_back_through_the_gestures_and_a_new_one_begins_from_there) {
  Drag(ORBIT, 100, 0);
  Drag(ORBIT, 100, 0);
  Drag(ORBIT, 100, 0);
  ASSERT_EQ(history.GetElementCount(), 4);
  history.OpenTimeline({400, 300}, hub.view);
  for (int x = 390; x >= 264; x -= 6) {
    history.SlideTimeline({static_cast<double>(x), 300});
    CameraParameters camera;
    ASSERT_TRUE(history.GetInterpolatedCamera(camera));
    EXPECT_NEAR((camera.eye - camera.centre).Length(), 30.0, 1e-6);  // on the sphere all the way
    hub.ApplyCameraParameters(camera);
  }
  history.CloseTimeline({264, 300});
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  EXPECT_NEAR((hub.view.eye - GetElement(1).eye).Length(), 0.0, 1e-9);

  Drag(ORBIT, 0, 80);
  EXPECT_EQ(history.GetElementCount(), 3);
  EXPECT_EQ(history.GetCurrentElementIndex(), 2);
  EXPECT_EQ(GetElement(2).eye, hub.view.eye);
}

TEST_F(RewindJourney, steps_lead_back_to_each_view_and_forward_again) {
  Numbers eyes{hub.view.eye.z};
  for (int i = 0; i < 4; ++i) {
    Drag(ORBIT, 40, 0);
    eyes.push_back(hub.view.eye.z);
  }
  for (int at = 3; at >= 0; --at) {
    ASSERT_TRUE(history.ShiftBackOneElement());
    CameraParameters camera;
    ASSERT_TRUE(history.GetTransitionCamera(camera));
    EXPECT_EQ(camera.eye.z, eyes[static_cast<std::size_t>(at)]);
  }
  EXPECT_FALSE(history.ShiftBackOneElement());
  for (int at = 1; at <= 4; ++at) {
    ASSERT_TRUE(history.ShiftForwardOneElement());
    CameraParameters camera;
    ASSERT_TRUE(history.GetTransitionCamera(camera));
    EXPECT_EQ(camera.eye.z, eyes[static_cast<std::size_t>(at)]);
  }
}
