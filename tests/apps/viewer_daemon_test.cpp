// The system's own daemon, fed by a device at the end of a serial line, moves the view of the viewer.
#include <SDL_keycode.h>

#include <cstdlib>

#include "host/serial_six_axis.h"
#include "viewer_fixture.h"

namespace {

using apps_test::ViewerTest;
using Korvane::CameraParameters;
using Korvane::Vector3;

class ViewerDaemonTest : public ViewerTest {
 protected:
  void SetUp() override {
    device = std::make_unique<SerialSixAxis>(daemonFolder.GetPath());
    ASSERT_TRUE(device->IsOpen());
    ASSERT_TRUE(device->StartDaemon());
    setenv("SPNAV_SOCKET", device->GetSocket().c_str(), 1);
    ViewerTest::SetUp();
    StepUntil([this] { return viewer->GetDevices().IsConnected(); });
  }
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();
    device.reset();
    unsetenv("SPNAV_SOCKET");
  }

  // The window waits, and is woken by what comes.
  void StepUntil(const std::function<bool()>& condition) {
    for (int i = 0; i < 6000 && !condition(); ++i) window->Step(10);
    ASSERT_TRUE(condition());
  }
  // The device is held until the view has gone some way, and let go.
  const CameraParameters& Push(SDL_Keycode mode, int y, int z, int ry) {
    Press(mode);
    ComeToRest();
    before = GetHub().GetView();
    device->Move(0, y, z, 0, ry, 0);
    StepUntil([this] {
      const CameraParameters& view = GetHub().GetView();
      return (view.eye - before.eye).Length() > 0.01 || (view.centre - before.centre).Length() > 0.01;
    });
    device->Move(0, 0, 0, 0, 0, 0);
    StepUntil(
        [this] { return !viewer->GetView(0).GetDevice().IsOperating() && !window->IsFrameRequested(); });
    return GetHub().GetView();
  }
  static Vector3 DirectionOf(const CameraParameters& view) { return (view.centre - view.eye).Normalized(); }

  const apps_test::TemporaryFolder daemonFolder;
  std::unique_ptr<SerialSixAxis> device;
  CameraParameters before;
};

TEST_F(ViewerDaemonTest, moves_the_view_in_each_mode) {
  constexpr double ALMOST = 1.0 - 1e-9;
  const CameraParameters turned = Push(SDLK_7, 0, 0, 300);
  EXPECT_NEAR((turned.eye - turned.pivot).Length(), (before.eye - before.pivot).Length(), 1e-6);
  EXPECT_LT(DirectionOf(turned).Dot(DirectionOf(before)), ALMOST);

  const CameraParameters walked = Push(SDLK_8, 0, 300, 0);
  EXPECT_NEAR((walked.eye - before.eye).Dot(GetHub().GetWorldUpDirection()), 0.0, 1e-9) << "on the level";
  EXPECT_GT((walked.eye - before.eye).Dot(DirectionOf(before)), 0.0);

  const CameraParameters flown = Push(SDLK_9, 0, 300, 0);
  EXPECT_GT((flown.eye - before.eye).Normalized().Dot(DirectionOf(before)), ALMOST) << "where the view goes";

  const CameraParameters moved = Push(SDLK_0, 300, 0, 300);
  EXPECT_GT(DirectionOf(moved).Dot(DirectionOf(before)), ALMOST) << "nothing turns";
  EXPECT_NEAR((moved.eye - before.eye).Normalized().Dot(DirectionOf(before)), 0.0, 1e-6);
}

TEST_F(ViewerDaemonTest, a_daemon_that_ends_in_mid_motion_ends_the_motion) {
  device->Move(0, 0, 0, 0, 300, 0);
  StepUntil([this] { return viewer->GetView(0).GetDevice().IsOperating(); });
  device->StopDaemon();
  StepUntil([this] { return !viewer->GetView(0).GetDevice().IsOperating(); });
  StepUntil([this] { return !viewer->GetDevices().IsConnected() && !window->IsFrameRequested(); });
}

}  // namespace
