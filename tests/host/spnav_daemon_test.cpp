// The system's own daemon, fed by a device at the end of a serial line, moves a camera.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "host/serial_six_axis.h"
#include "host/woken_source.h"
#include "korvane/cam3d_controller.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "zovhost/six_axis_hand.h"
#include "zovhost/spnav_source.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector3;
using zovhost::SixAxes;
using Mode = Korvane::Cam3DControllerParameters;

class SpnavDaemonTest : public testing::Test {
 protected:
  SpnavDaemonTest() {
    char pattern[] = "/tmp/zov_daemon_XXXXXX";
    folder = mkdtemp(pattern);
    device = std::make_unique<SerialSixAxis>(folder);
    setenv("SPNAV_SOCKET", device->GetSocket().c_str(), 1);
    controller.SetKorvane(&hub);
  }
  ~SpnavDaemonTest() override {
    device.reset();
    std::filesystem::remove_all(folder);
  }

  void SetUp() override {
    ASSERT_TRUE(device->IsOpen());
    ASSERT_TRUE(device->StartDaemon());
    ASSERT_TRUE(woken.WaitUntil([&] { return source.HasDevice(); }));
    hand.AddSource(&source);
    hand.SetWake(woken.GetWake());
  }

  void Frame() {
    platform.Advance(16);
    hand.Advance(true);
    hub.PerformOperations();
  }
  /// The device is moved until it is felt, for ten frames, and let go.
  void Push(const SixAxes& axes) {
    const auto send = [&](const SixAxes& state) {
      const auto number = [&](int axis) { return static_cast<int>(state[static_cast<std::size_t>(axis)]); };
      device->Move(number(0), number(1), number(2), number(3), number(4), number(5));
      ASSERT_TRUE(woken.WaitUntil([&] { return hand.GetAxes() == state; }, [&] { Frame(); }));
    };
    hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    hub.view.pivot = {0, 0, 0};
    Frame();
    send(axes);
    for (int i = 0; i < 10; ++i) Frame();
    EXPECT_TRUE(controller.IsOperating());
    send({});
    EXPECT_FALSE(controller.IsOperating());
  }
  const CameraParameters& Push(Mode::NavigationMode mode, const SixAxes& axes) {
    controller.SetNavigationMode(mode);
    Push(axes);
    return hub.view;
  }

  ManualPlatform platform;
  std::filesystem::path folder;
  std::unique_ptr<SerialSixAxis> device;
  MemoryHub hub;
  Korvane::Cam3DController controller;
  zovhost::SpnavSource source{0.005};
  WokenSource woken{source};
  zovhost::SixAxisHand hand{&controller};
};

Vector3 Forward(const CameraParameters& view) { return (view.centre - view.eye).Normalized(); }

}  // namespace

// The camera stands at z = 10 and looks at the origin, x to its right and y up.

TEST_F(SpnavDaemonTest, each_axis_of_the_device_is_that_of_the_library) {
  for (std::size_t axis = 0; axis < 6; ++axis) {
    for (const double value : {120.0, -120.0}) {
      SixAxes state{};
      state[axis] = value;
      Push(state);
    }
  }
}

TEST_F(SpnavDaemonTest, it_moves_and_turns_the_model) {
  EXPECT_LT(Push(Mode::MODE_OBJECT, {100, 0, 0, 0, 0, 0}).eye.x, -0.1);  // the model goes to the right
  EXPECT_LT(Push(Mode::MODE_OBJECT, {0, 100, 0, 0, 0, 0}).eye.y, -0.1);  // up
  EXPECT_GT(Push(Mode::MODE_OBJECT, {0, 0, 100, 0, 0, 0}).eye.z, 10.1);  // away
  const CameraParameters turned = Push(Mode::MODE_OBJECT, {0, 0, 0, 0, 100, 0});
  EXPECT_LT(turned.eye.x, -0.1);  // counter-clockwise, seen from above
  EXPECT_NEAR(turned.eye.Length(), 10.0, 1e-9);
  EXPECT_NEAR(turned.eye.y, 0.0, 1e-9);
}

TEST_F(SpnavDaemonTest, it_walks) {
  EXPECT_LT(Push(Mode::MODE_WALK, {0, 0, 100, 0, 0, 0}).eye.z, 9.9);
  EXPECT_GT(Push(Mode::MODE_WALK, {100, 0, 0, 0, 0, 0}).eye.x, 0.1);
  const CameraParameters turned = Push(Mode::MODE_WALK, {0, 0, 0, 0, 100, 0});
  EXPECT_LT(Forward(turned).x, -0.1);  // to the left
  EXPECT_EQ(turned.eye, Vector3(0, 0, 10));
}

TEST_F(SpnavDaemonTest, it_flies) {
  EXPECT_GT(Push(Mode::MODE_FLY, {0, 100, 0, 0, 0, 0}).eye.y, 0.1);
  EXPECT_LT(Push(Mode::MODE_FLY, {0, 0, 100, 0, 0, 0}).eye.z, 9.9);
  EXPECT_GT(Forward(Push(Mode::MODE_FLY, {0, 0, 0, 100, 0, 0})).y, 0.1);  // up
}

TEST_F(SpnavDaemonTest, it_moves_the_page_which_does_not_turn) {
  EXPECT_LT(Push(Mode::MODE_PAN, {100, 0, 0, 0, 0, 0}).eye.x, -0.1);
  const CameraParameters moved = Push(Mode::MODE_PAN, {0, 100, 0, 100, 100, 100});
  EXPECT_LT(moved.eye.y, -0.1);
  EXPECT_NEAR(Forward(moved).z, -1.0, 1e-12);
}

TEST_F(SpnavDaemonTest, its_buttons_are_commands) {
  const auto wait = [&](Mode::NavigationMode mode) {
    return woken.WaitUntil([&] { return controller.GetNavigationMode() == mode; }, [&] { Frame(); });
  };
  device->Press(2);  // the second
  EXPECT_TRUE(wait(Mode::MODE_PAN));
  device->Press(0);
  device->Press(2);
  EXPECT_TRUE(wait(Mode::MODE_OBJECT));
}

TEST_F(SpnavDaemonTest, a_daemon_that_dies_in_mid_motion_ends_it_and_a_new_one_moves_again) {
  device->Move(100, 0, 0, 0, 0, 0);
  ASSERT_TRUE(woken.WaitUntil([&] { return controller.IsOperating(); }, [&] { Frame(); }));
  device->StopDaemon();
  EXPECT_TRUE(woken.WaitUntil([&] { return !controller.IsOperating(); }, [&] { Frame(); }));
  ASSERT_TRUE(device->StartDaemon());
  ASSERT_TRUE(woken.WaitUntil([&] { return source.HasDevice(); }, [&] { Frame(); }));
  Push({0, 100, 0, 0, 0, 0});
}
