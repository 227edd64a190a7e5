// Game controllers, which the window system library makes up.
#include "zovhost/game_controller_source.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>

#include "support/allocation_counter.h"
#include "support/manual_platform.h"
#include "zovhost/six_axis_settings.h"

namespace {

using zovhost::GameControllerSource;
using zovhost::SixAxes;

constexpr int AXES = SDL_CONTROLLER_AXIS_MAX;
constexpr int BUTTONS = SDL_CONTROLLER_BUTTON_MAX;

/// A controller that is plugged in for as long as it lives.
class MadeUpController {
 public:
  MadeUpController()
      : index(SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, AXES, BUTTONS, 0)),
        joystick(SDL_JoystickOpen(index)),
        id(SDL_JoystickInstanceID(joystick)) {
    SetAxis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_JOYSTICK_AXIS_MIN);  // triggers that are let go
    SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, SDL_JOYSTICK_AXIS_MIN);
  }
  ~MadeUpController() {
    SDL_JoystickClose(joystick);
    for (int i = 0; i < SDL_NumJoysticks(); ++i) {
      if (SDL_JoystickGetDeviceInstanceID(i) == id) SDL_JoystickDetachVirtual(i);
    }
  }
  MadeUpController(const MadeUpController&) = delete;
  MadeUpController& operator=(const MadeUpController&) = delete;

  void SetAxis(int axis, int value) const {
    SDL_JoystickSetVirtualAxis(joystick, axis, static_cast<Sint16>(value));
  }
  void SetButton(int button, bool pressed) const {
    SDL_JoystickSetVirtualButton(joystick, button, pressed ? SDL_PRESSED : SDL_RELEASED);
  }

 private:
  int index;
  SDL_Joystick* joystick;
  SDL_JoystickID id;
};

class GameControllerSourceTest : public testing::Test {
 protected:
  void PlugIn() {
    controller = std::make_unique<MadeUpController>();
    source->Poll();
    ASSERT_TRUE(source->HasDevice());
  }
  std::string TakeButton() {
    const auto button = source->TakeButton();
    if (!button.has_value()) return "none";
    return std::to_string(button->number) + (button->pressed ? " down" : " up");
  }

  ManualPlatform platform;
  std::unique_ptr<GameControllerSource> source = std::make_unique<GameControllerSource>();
  std::unique_ptr<MadeUpController> controller;
};

}  // namespace

TEST_F(GameControllerSourceTest, without_a_controller_there_is_no_device_and_a_poll_allocates_nothing) {
  source->Poll();
  const AllocationCounter counter;
  for (int i = 0; i < 1000; ++i) source->Poll();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_FALSE(source->HasDevice());
  EXPECT_EQ(source->GetAxes(), SixAxes{});
}

TEST_F(GameControllerSourceTest, sticks_and_triggers_are_six_axes) {
  PlugIn();
  EXPECT_EQ(source->GetAxes(), SixAxes{});
  constexpr int TABLE[6] = {SDL_CONTROLLER_AXIS_LEFTX,       SDL_CONTROLLER_AXIS_LEFTY,
                            SDL_CONTROLLER_AXIS_RIGHTX,      SDL_CONTROLLER_AXIS_RIGHTY,
                            SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT};
  for (std::size_t i = 0; i < 6; ++i) {
    controller->SetAxis(TABLE[i], 32767);
    source->Poll();
    SixAxes expected{};
    expected[i] = 400.0;
    EXPECT_EQ(source->GetAxes(), expected) << i;
    controller->SetAxis(TABLE[i], -32768);
    source->Poll();
    expected[i] = i < 4 ? -400.0 : 0.0;
    EXPECT_EQ(source->GetAxes(), expected) << i;
    controller->SetAxis(TABLE[i], i < 4 ? 0 : -32768);
  }
  controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 16384);
  source->Poll();
  EXPECT_NEAR(source->GetAxes()[0], 200.0, 0.01);
}

TEST_F(GameControllerSourceTest, buttons_have_their_own_numbers) {
  PlugIn();
  for (int button = 0; button < 15; ++button) {
    controller->SetButton(button, true);
    source->Poll();
    EXPECT_EQ(TakeButton(), std::to_string(button) + " down");
    controller->SetButton(button, false);
    source->Poll();
    EXPECT_EQ(TakeButton(), std::to_string(button) + " up");
    EXPECT_EQ(TakeButton(), "none");
  }
}

TEST_F(GameControllerSourceTest, a_press_between_two_polls_is_not_lost) {
  PlugIn();
  controller->SetButton(SDL_CONTROLLER_BUTTON_B, true);
  SDL_GameControllerUpdate();  // as the window does when it looks for events
  controller->SetButton(SDL_CONTROLLER_BUTTON_B, false);
  source->Poll();
  EXPECT_EQ(TakeButton(), "1 down");
  EXPECT_EQ(TakeButton(), "1 up");
}

TEST_F(GameControllerSourceTest, a_controller_that_is_unplugged_rests_and_another_takes_its_place) {
  PlugIn();
  controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 32767);
  controller->SetButton(SDL_CONTROLLER_BUTTON_A, true);
  source->Poll();
  EXPECT_EQ(source->GetAxes()[0], 400.0);
  EXPECT_EQ(TakeButton(), "0 down");
  controller.reset();
  source->Poll();
  EXPECT_FALSE(source->HasDevice());
  EXPECT_EQ(source->GetAxes(), SixAxes{});
  EXPECT_EQ(TakeButton(), "0 up");
  PlugIn();
  controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTY, 32767);
  source->Poll();
  EXPECT_EQ(source->GetAxes()[1], 400.0);
}

TEST_F(GameControllerSourceTest, of_two_controllers_the_first_is_used) {
  PlugIn();
  const MadeUpController second;
  second.SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 32767);
  second.SetButton(SDL_CONTROLLER_BUTTON_A, true);
  source->Poll();
  EXPECT_EQ(source->GetAxes(), SixAxes{});
  EXPECT_EQ(TakeButton(), "none");
  controller.reset();
  source->Poll();
  ASSERT_TRUE(source->HasDevice());
  EXPECT_EQ(source->GetAxes()[0], 400.0);
}

TEST_F(GameControllerSourceTest, a_host_is_woken_once_until_the_next_poll) {
  PlugIn();
  int woken = 0;
  source->SetWake([&] { ++woken; });
  source->Poll();
  woken = 0;
  for (const int value : {10000, 20000, 30000}) {
    controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, value);
    SDL_GameControllerUpdate();
  }
  EXPECT_EQ(woken, 1);
  source->Poll();
  controller->SetButton(0, true);
  SDL_GameControllerUpdate();
  EXPECT_EQ(woken, 2);
  source->SetWake(nullptr);
  source->Poll();
  controller->SetButton(0, false);
  SDL_GameControllerUpdate();
  EXPECT_EQ(woken, 2);
}

TEST_F(GameControllerSourceTest,
       a_host_that_waits_is_woken_by_a_motion_and_by_a_controller_that_is_plugged_in) {
  int woken = 0;
  source->SetWake([&] { ++woken; });
  controller = std::make_unique<MadeUpController>();
  source->Poll();
  woken = 0;
  platform.Advance(1000);
  EXPECT_EQ(woken, 0);  // nothing moves
  controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 20000);
  platform.Advance(16);
  EXPECT_EQ(woken, 1);
  source->Poll();
  controller.reset();
  source->Poll();
  woken = 0;
  controller = std::make_unique<MadeUpController>();
  platform.Advance(1000);
  EXPECT_EQ(woken, 1);
  source->Poll();
  EXPECT_TRUE(source->HasDevice());
  source->SetWake(nullptr);  // the controller goes after this test
}

TEST_F(GameControllerSourceTest, a_controller_is_looked_after_often_and_looked_for_seldom) {
  EXPECT_STREQ(SDL_GetHint(SDL_HINT_AUTO_UPDATE_JOYSTICKS), "0");
  EXPECT_EQ(platform.GetTimerCount(), 1);
  EXPECT_EQ(platform.GetLastRequestedPeriod(), 1000U);
  PlugIn();
  EXPECT_EQ(platform.GetTimerCount(), 1);
  EXPECT_EQ(platform.GetLastRequestedPeriod(), 16U);
  controller.reset();
  source->Poll();
  EXPECT_EQ(platform.GetLastRequestedPeriod(), 1000U);
  source.reset();
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST_F(GameControllerSourceTest, a_poll_of_a_moving_controller_allocates_nothing) {
  PlugIn();
  const AllocationCounter counter;
  for (int i = 0; i < 1000; ++i) {
    controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, i * 30);
    source->Poll();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

TEST_F(GameControllerSourceTest, two_sources_may_stand_beside_each_other) {
  PlugIn();
  GameControllerSource second;
  controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 32767);
  second.Poll();
  EXPECT_EQ(second.GetAxes()[0], 400.0);
  source.reset();
  controller->SetAxis(SDL_CONTROLLER_AXIS_LEFTX, -32768);
  second.Poll();
  EXPECT_EQ(second.GetAxes()[0], -400.0);
  controller.reset();
}
