// The lines of the guide for hosts that take the kit's devices: they move the camera of a window that waits.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "host/fake_spnav_daemon.h"
#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"
#include "support/cameras.h"
#include "support/memory_hub.h"
#include "zovhost/game_controller_source.h"
#include "zovhost/six_axis_hand.h"
#include "zovhost/spnav_source.h"
#include "zovhost/window.h"

namespace {

class DocumentedDevicesTest : public testing::Test {
 protected:
  DocumentedDevicesTest() {
    char pattern[] = "/tmp/zov_guide_XXXXXX";
    folder = mkdtemp(pattern);
    setenv("SPNAV_SOCKET", (folder / "socket").c_str(), 1);
    zovhost::Window::Options options;
    options.offscreen = true;
    std::string error;
    window = zovhost::Window::Create(options, error);
    controller.SetKorvane(&hub);
  }
  ~DocumentedDevicesTest() override { std::filesystem::remove_all(folder); }

  /// Handles what comes; no step waits for longer than a generous time.
  template <class Condition>
  bool StepUntil(const Condition& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition() && std::chrono::steady_clock::now() < end) window->Step(20000);
    return condition();
  }

  std::filesystem::path folder;
  std::unique_ptr<zovhost::Window> window;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  Korvane::Cam3DController controller;
};

}  // namespace

TEST_F(DocumentedDevicesTest, move_the_camera_of_a_window_that_waits) {
  ASSERT_NE(window, nullptr);
  FakeSpnavDaemon daemon(folder / "socket", {});
  int frames = 0;

  zovhost::SpnavSource device;  // its daemon may come later
  zovhost::GameControllerSource gameController;
  zovhost::SixAxisHand hand(&controller);
  hand.AddSource(&device);
  hand.AddSource(&gameController);
  hand.SetWake([&] { window->Wake(); });
  window->SetWakeHandler([&] {
    if (window->IsFocused()) window->RequestFrame();
  });

  window->SetFrameHandler([&] {
    ++frames;
    hand.Advance(window->IsFocused());  // right before the hub's frame
    hub.PerformOperations();
    if (hand.IsMoving()) window->RequestFrame();
  });

  ASSERT_TRUE(StepUntil([&] { return device.HasDevice() && !window->IsFrameRequested(); }));
  daemon.Move(0, 0, 300, 0, 0, 0);
  EXPECT_TRUE(StepUntil([&] { return hub.view.eye.z > 10.5; }));  // the model goes away
  daemon.Move(0, 0, 0, 0, 0, 0);
  EXPECT_TRUE(StepUntil([&] { return !hand.IsMoving() && !window->IsFrameRequested(); }));

  // At rest there is nothing to draw.
  const int framesAtRest = frames;
  window->Step(0);
  window->Step(0);
  EXPECT_EQ(frames, framesAtRest);
  window->SetFrameHandler(nullptr);
}

TEST_F(DocumentedDevicesTest, have_settings) {
  zovhost::FedSource device;
  zovhost::SixAxisHand hand(&controller);
  hand.AddSource(&device);

  zovhost::SixAxisSettings settings = hand.GetSettings(&device);
  settings.axes[1].inverted = true;
  settings.locked[5] = true;  // no roll
  settings.deadZone = 20.0;
  settings.commands[2] = Korvane::CAM3D_KEY_HOME;
  hand.SetSettings(&device, settings);

  device.Feed({0, 100, 0, 0, 0, 100});
  hand.Advance(true);
  EXPECT_EQ(hand.GetAxes(), (zovhost::SixAxes{0, -80, 0, 0, 0, 0}));
}
