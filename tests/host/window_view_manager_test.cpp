// The view manager of the kit: events of a window, without a window.
#include "zovhost/window_view_manager.h"

#include <gtest/gtest.h>

#include <vector>

#include "korvane/cam3d_controller.h"
#include "korvane/orientor.h"
#include "support/window_hand.h"

namespace {

using Korvane::KeyID;

class Manager : public zovhost::WindowViewManager {
 public:
  bool OnMouseWheel(int /*x*/, int /*y*/, int delta) override {
    counts.push_back(delta);
    return true;
  }
  bool OnKeyDown(KeyID key) override {
    pressed.push_back(key);
    return true;
  }
  bool OnKeyUp(KeyID key) override {
    released.push_back(key);
    return true;
  }

  std::vector<int> counts;
  std::vector<KeyID> pressed;
  std::vector<KeyID> released;
};

class WindowViewManagerTest : public testing::Test, public WindowHand {
 protected:
  bool Take(const WindowEvent& event) override { return manager.OnEvent(event); }

  Manager manager;
};

TEST_F(WindowViewManagerTest, each_button_is_held_from_its_press_to_its_release) {
  for (const MouseButton button : {MouseButton::Left, MouseButton::Middle, MouseButton::Right}) {
    Send(Type::MouseDown, 0, 0, button);
    EXPECT_TRUE(manager.IsPressed());
    Send(Type::MouseUp, 0, 0, button);
    EXPECT_FALSE(manager.IsPressed());
  }
}

TEST_F(WindowViewManagerTest, a_lost_focus_lets_go_of_buttons_and_keys) {
  Key(Type::KeyDown, SDLK_LSHIFT);
  Send(Type::MouseDown);
  Send(Type::FocusLost);
  EXPECT_FALSE(manager.IsPressed());
  ASSERT_FALSE(manager.released.empty());
  EXPECT_EQ(manager.released.front(), Korvane::KEY_SHIFT);
}

TEST_F(WindowViewManagerTest, a_fine_wheel_is_counted_over_its_events) {
  EXPECT_TRUE(Turn(1.0));
  EXPECT_TRUE(Turn(1.0 / 240.0));  // half a count
  EXPECT_TRUE(Turn(1.0 / 240.0));
  EXPECT_FALSE(Turn(1e9));
  EXPECT_EQ(manager.counts, (std::vector<int>{120, 0, 1}));
}

TEST_F(WindowViewManagerTest, a_lost_focus_forgets_a_fraction_of_a_count) {
  EXPECT_TRUE(Turn(1.0 / 240.0));  // half a count
  Send(Type::FocusLost);
  EXPECT_TRUE(Turn(1.0 / 240.0));
  EXPECT_EQ(manager.counts, (std::vector<int>{0, 0}));
}

TEST_F(WindowViewManagerTest, a_press_that_nothing_takes_is_free_for_a_click) {
  Send(Type::MouseDown);
  EXPECT_TRUE(manager.IsClickFree());
  Send(Type::FocusLost);
  EXPECT_FALSE(manager.IsClickFree());
}

TEST_F(WindowViewManagerTest, no_push_of_its_device_turns_a_parallel_view_inside_out) {
  Korvane::Cam3DController device;
  EXPECT_FALSE(device.GetLimitOrthographicZoom());
  manager.SetCam3DController(&device);
  EXPECT_TRUE(device.GetLimitOrthographicZoom());
  manager.SetCam3DController(nullptr);
}

TEST_F(WindowViewManagerTest, the_compass_of_its_cube_follows_the_pointer) {
  Korvane::Orientor cube;
  ASSERT_FALSE(cube.CompassFollowsPointer());
  manager.SetOrientor(&cube);
  EXPECT_TRUE(cube.CompassFollowsPointer());
  manager.SetOrientor(nullptr);
}

}  // namespace
