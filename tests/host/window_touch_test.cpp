// Fingers, pens and trackpads in a window, offscreen, as the window system library would tell of them.
#include <SDL.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zovhost/window.h"

namespace {

using zovhost::FindTouchDevice;
using zovhost::TouchDevice;
using zovhost::Window;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

constexpr int WIDTH = 400;
constexpr int HEIGHT = 200;
constexpr SDL_TouchID SCREEN = 5;
constexpr SDL_TouchID PEN = 6;
constexpr SDL_TouchID TRACKPAD = 7;

class WindowTouchTest : public testing::Test {
 protected:
  void SetUp() override {
    Window::Options options;
    options.width = WIDTH;
    options.height = HEIGHT;
    options.offscreen = true;
    options.touchDevice = [this](std::int64_t device) {
      const auto found = devices.find(device);
      return found != devices.end() ? found->second : TouchDevice::Gone;
    };
    std::string error;
    window = Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    while (window->Step(0) && window->IsFrameRequested()) {
    }
    window->SetEventHandler([this](const WindowEvent& event) { events.push_back(event); });
  }

  void Push(Uint32 type, SDL_FingerID finger, float x, float y, SDL_TouchID device = SCREEN) {
    SDL_Event event = {};
    event.type = type;
    event.tfinger.touchId = device;
    event.tfinger.fingerId = finger;
    event.tfinger.x = x;
    event.tfinger.y = y;
    event.tfinger.pressure = 0.5F;
    SDL_PushEvent(&event);
    window->Step(0);
  }
  void PushMouse(Uint32 which) {
    SDL_Event event = {};
    event.type = SDL_MOUSEBUTTONDOWN;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.which = which;
    SDL_PushEvent(&event);
    window->Step(0);
  }
  void PushWheel(float across, float up) {
    SDL_Event event = {};
    event.type = SDL_MOUSEWHEEL;
    event.wheel.preciseX = across;
    event.wheel.preciseY = up;
    SDL_PushEvent(&event);
    window->Step(0);
  }

  std::map<std::int64_t, TouchDevice> devices = {
      {SCREEN, TouchDevice::Screen}, {PEN, TouchDevice::Pen}, {TRACKPAD, TouchDevice::Trackpad}};
  std::unique_ptr<Window> window;
  std::vector<WindowEvent> events;
};

TEST_F(WindowTouchTest, a_finger_comes_moves_and_goes_in_pixels_from_the_bottom_left) {
  Push(SDL_FINGERDOWN, 77, 0.0F, 0.0F);
  Push(SDL_FINGERMOTION, 77, 0.25F, 0.5F);
  Push(SDL_FINGERUP, 77, 0.75F, 0.995F);
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[0].type, Type::FingerDown);
  EXPECT_EQ(events[0].x, 0);
  EXPECT_EQ(events[0].y, HEIGHT - 1);
  EXPECT_EQ(events[0].pressure, 0.5);
  EXPECT_FALSE(events[0].pen);
  EXPECT_EQ(events[1].type, Type::FingerMove);
  EXPECT_EQ(events[1].x, 100);
  EXPECT_EQ(events[1].y, 99);
  EXPECT_EQ(events[2].type, Type::FingerUp);
  EXPECT_EQ(events[2].x, 300);
  EXPECT_EQ(events[2].y, 0);
}

TEST_F(WindowTouchTest, fingers_have_the_least_numbers_that_are_free) {
  Push(SDL_FINGERDOWN, 100, 0.1F, 0.1F);
  Push(SDL_FINGERDOWN, 200, 0.2F, 0.1F);
  Push(SDL_FINGERUP, 100, 0.1F, 0.1F);
  Push(SDL_FINGERDOWN, 300, 0.3F, 0.1F);
  Push(SDL_FINGERMOTION, 200, 0.3F, 0.1F);
  std::vector<int> numbers;
  for (const WindowEvent& event : events) numbers.push_back(event.finger);
  EXPECT_EQ(numbers, (std::vector<int>{0, 1, 0, 0, 1}));
}

TEST_F(WindowTouchTest, a_finger_that_nobody_has_seen_come_does_nothing) {
  Push(SDL_FINGERMOTION, 1, 0.1F, 0.1F);
  Push(SDL_FINGERUP, 1, 0.1F, 0.1F);
  EXPECT_TRUE(events.empty());
  Push(SDL_FINGERDOWN, 1, 0.1F, 0.1F);
  Push(SDL_FINGERDOWN, 1, 0.2F, 0.1F);
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[1].type, Type::FingerMove);
}

TEST_F(WindowTouchTest, positions_that_are_none_are_left_out_and_far_ones_stay_numbers) {
  Push(SDL_FINGERDOWN, 1, std::numeric_limits<float>::quiet_NaN(), 0.1F);
  EXPECT_TRUE(events.empty());
  Push(SDL_FINGERDOWN, 1, 1e30F, -1e30F);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].x, 1'000'000);
}

TEST_F(WindowTouchTest, there_is_an_end_to_the_number_of_fingers) {
  for (int i = 0; i < 40; ++i) Push(SDL_FINGERDOWN, i, 0.1F, 0.1F);
  EXPECT_EQ(events.size(), 16U);
}

TEST_F(WindowTouchTest, the_mouse_that_is_made_of_fingers_is_not_heard) {
  PushMouse(SDL_TOUCH_MOUSEID);
  EXPECT_TRUE(events.empty());
  PushMouse(0);
  EXPECT_EQ(events.size(), 1U);
  Push(SDL_FINGERDOWN, 1, 0.1F, 0.1F, SDL_MOUSE_TOUCHID);
  EXPECT_EQ(events.size(), 1U) << "nor fingers that are made of a mouse";
}

TEST_F(WindowTouchTest, fingers_on_a_trackpad_are_not_on_the_picture) {
  Push(SDL_FINGERDOWN, 1, 0.1F, 0.1F, TRACKPAD);
  Push(SDL_FINGERMOTION, 1, 0.2F, 0.1F, TRACKPAD);
  EXPECT_TRUE(events.empty());
}

TEST_F(WindowTouchTest, the_tip_of_a_pen_is_told_from_a_finger) {
  Push(SDL_FINGERDOWN, 1, 0.1F, 0.1F, PEN);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_TRUE(events[0].pen);
}

TEST_F(WindowTouchTest, fingers_of_a_device_that_goes_are_lost) {
  Push(SDL_FINGERDOWN, 1, 0.1F, 0.1F);
  devices.erase(SCREEN);
  PushMouse(0);
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[1].type, Type::FingersLost);
  EXPECT_EQ(events[2].type, Type::MouseDown);
  PushMouse(0);
  EXPECT_EQ(events.size(), 4U) << "once";
}

TEST_F(WindowTouchTest, a_lost_focus_forgets_the_fingers) {
  Push(SDL_FINGERDOWN, 1, 0.1F, 0.1F);
  SDL_Event event = {};
  event.type = SDL_WINDOWEVENT;
  event.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
  SDL_PushEvent(&event);
  Push(SDL_FINGERMOTION, 1, 0.2F, 0.1F);
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[1].type, Type::FocusLost);
}

TEST_F(WindowTouchTest, a_wheel_turns_by_fractions_of_a_notch_and_a_level_one_not_at_all) {
  PushWheel(0.0F, 0.125F);
  PushWheel(0.5F, 0.0F);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].wheel, 0.125);
}

TEST_F(WindowTouchTest, a_wheel_that_shift_has_laid_over_turns_as_upright) {
  SDL_SetModState(KMOD_LSHIFT);
  window->Step(0);
  PushWheel(0.25F, 0.0F);
  SDL_SetModState(KMOD_NONE);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].wheel, 0.25);
}

TEST(TouchDeviceTest, is_found_by_its_type_and_its_name) {
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_DIRECT, nullptr), TouchDevice::Screen);
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_DIRECT, "Happened to open"), TouchDevice::Screen);
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_DIRECT, "Tablet Pen (0)"), TouchDevice::Pen);
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_DIRECT, "a STYLUS"), TouchDevice::Pen);
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_INDIRECT_RELATIVE, ""), TouchDevice::Pen);
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_INDIRECT_ABSOLUTE, ""), TouchDevice::Trackpad);
  EXPECT_EQ(FindTouchDevice(SDL_TOUCH_DEVICE_INVALID, "pen"), TouchDevice::Gone);
  EXPECT_EQ(FindTouchDevice(1000, nullptr), TouchDevice::Screen);
}

}  // namespace
