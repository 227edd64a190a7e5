// The window, offscreen, with events as the window system library would deliver them.
#include "zovhost/window.h"

#include <SDL.h>
#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "korvane/interval_timer.h"
#include "zovhost/image.h"

namespace {

using zovhost::MouseButton;
using zovhost::Window;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

constexpr int WIDTH = 400;
constexpr int HEIGHT = 300;

class WindowTest : public testing::Test {
 protected:
  void SetUp() override {
    Window::Options options;
    options.title = "test";
    options.width = WIDTH;
    options.height = HEIGHT;
    options.offscreen = true;
    options.clock = [this] { return now; };
    std::string error;
    window = Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    while (window->Step(0) && window->IsFrameRequested()) {
    }
    window->SetEventHandler([this](const WindowEvent& event) { events.push_back(event); });
  }

  void Advance(int milliseconds) { now += std::chrono::milliseconds(milliseconds); }

  void Pump() { window->Step(0); }

  SDL_Event MakeEvent(Uint32 type) const {
    SDL_Event event = {};
    event.type = type;
    event.window.windowID = SDL_GetWindowID(window->GetNativeWindow());
    return event;
  }
  void PushMotion(int pointX, int pointY) {
    SDL_Event event = MakeEvent(SDL_MOUSEMOTION);
    event.motion.x = pointX;
    event.motion.y = pointY;
    SDL_PushEvent(&event);
  }
  void PushButton(Uint32 type, Uint8 button, int pointX, int pointY) {
    SDL_Event event = MakeEvent(type);
    event.button.button = button;
    event.button.clicks = 1;
    event.button.x = pointX;
    event.button.y = pointY;
    SDL_PushEvent(&event);
  }

  std::chrono::steady_clock::time_point now{std::chrono::hours(1)};
  std::unique_ptr<Window> window;
  std::vector<WindowEvent> events;
};

TEST_F(WindowTest, a_frame_is_asked_for_when_it_gets_the_focus) {
  EXPECT_TRUE(window->IsFocused());  // no other has it
  SDL_Event event = MakeEvent(SDL_WINDOWEVENT);
  event.window.event = SDL_WINDOWEVENT_FOCUS_GAINED;
  SDL_PushEvent(&event);
  int frames = 0;
  window->SetFrameHandler([&] { ++frames; });
  Advance(1000);
  Pump();
  EXPECT_EQ(frames, 1);
}

TEST_F(WindowTest, offers_opengl_3_3_or_later_at_the_size_asked_for) {
  EXPECT_TRUE(window->IsOffscreen());
  EXPECT_EQ(window->GetWidth(), WIDTH);
  EXPECT_EQ(window->GetHeight(), HEIGHT);
  EXPECT_GE(epoxy_gl_version(), 33);
}

TEST_F(WindowTest, counts_pixels_from_the_bottom_left) {
  PushMotion(0, 0);
  PushMotion(10, HEIGHT - 1);
  Pump();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].type, Type::MouseMove);
  EXPECT_EQ(events[0].x, 0);
  EXPECT_EQ(events[0].y, HEIGHT - 1);
  EXPECT_EQ(events[1].x, 10);
  EXPECT_EQ(events[1].y, 0);
}

TEST_F(WindowTest, reports_a_drag_beyond_its_edges) {
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 5, 5);
  PushMotion(-20, HEIGHT + 30);
  Pump();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[1].x, -20);
  EXPECT_EQ(events[1].y, -31);
}

TEST_F(WindowTest, names_the_buttons) {
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_MIDDLE, 1, 1);
  PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_MIDDLE, 1, 1);
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 1, 1);
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X1, 1, 1);
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X2, 1, 1);
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X2 + 1, 1, 1);
  Pump();
  ASSERT_EQ(events.size(), 5U);  // the sixth has no use
  EXPECT_EQ(events[0].type, Type::MouseDown);
  EXPECT_EQ(events[0].button, MouseButton::Middle);
  EXPECT_EQ(events[1].type, Type::MouseUp);
  EXPECT_EQ(events[2].button, MouseButton::Right);
  EXPECT_EQ(events[3].button, MouseButton::Back);
  EXPECT_EQ(events[4].button, MouseButton::Forward);
}

TEST_F(WindowTest, each_event_has_the_modifiers_of_its_moment_though_a_slow_frame_hears_of_all_at_once) {
  const auto push = [this](Uint32 type, SDL_Keycode key, SDL_Keymod held) {
    SDL_Event event = MakeEvent(type);
    event.key.keysym.sym = key;
    event.key.keysym.mod = static_cast<Uint16>(held);
    SDL_PushEvent(&event);
  };
  PushMotion(10, 10);
  push(SDL_KEYDOWN, SDLK_LSHIFT, KMOD_LSHIFT);
  push(SDL_KEYDOWN, SDLK_F1, KMOD_LSHIFT);
  PushMotion(20, 20);
  push(SDL_KEYUP, SDLK_LSHIFT, KMOD_NONE);
  push(SDL_KEYUP, SDLK_F1, KMOD_NONE);
  PushMotion(30, 30);
  Pump();
  std::vector<unsigned> modifiers;
  for (const WindowEvent& event : events) modifiers.push_back(event.modifiers);
  const unsigned shift = WindowEvent::SHIFT;
  EXPECT_EQ(modifiers, (std::vector<unsigned>{0, shift, shift, shift, 0, 0, 0}));
}

TEST_F(WindowTest, has_no_display_to_fill_offscreen) {
  EXPECT_FALSE(window->SetFullScreen(true));
  EXPECT_FALSE(window->IsFullScreen());
}

TEST_F(WindowTest, turns_a_flipped_wheel_round) {
  SDL_Event event = MakeEvent(SDL_MOUSEWHEEL);
  event.wheel.preciseY = 0.5F;
  SDL_PushEvent(&event);
  event.wheel.direction = SDL_MOUSEWHEEL_FLIPPED;
  SDL_PushEvent(&event);
  Pump();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].wheel, 0.5);
  EXPECT_EQ(events[1].wheel, -0.5);
}

TEST_F(WindowTest, hands_over_a_dropped_file) {
  SDL_Event event = MakeEvent(SDL_DROPFILE);
  event.drop.file = SDL_strdup("/some/model.glb");
  SDL_PushEvent(&event);
  Pump();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].type, Type::FileDropped);
  EXPECT_EQ(events[0].path, "/some/model.glb");
}

TEST_F(WindowTest, says_that_it_closes_and_then_runs_no_more) {
  SDL_Event event = MakeEvent(SDL_QUIT);
  SDL_PushEvent(&event);
  EXPECT_FALSE(window->Step(0));
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].type, Type::Closing);
  EXPECT_FALSE(window->Step(0));
}

TEST_F(WindowTest, stays_when_its_handler_has_something_to_ask_first) {
  window->SetEventHandler([this](const WindowEvent& event) {
    if (event.type == Type::Closing) window->KeepOpen();
  });
  SDL_Event event = MakeEvent(SDL_QUIT);
  SDL_PushEvent(&event);
  EXPECT_TRUE(window->Step(0));
  EXPECT_TRUE(window->IsOpen());
  window->Close();
  EXPECT_FALSE(window->Step(0));
}

TEST_F(WindowTest, a_hook_that_consumes_an_event_keeps_it_from_the_handler) {
  window->SetNativeEventHook([](const SDL_Event& event) { return event.type == SDL_MOUSEMOTION; });
  PushMotion(3, 3);
  PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 3, 3);
  Pump();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].type, Type::MouseDown);
}

// ---- pointer jumps ----

TEST_F(WindowTest, keeps_back_the_motion_of_a_jump_and_what_was_under_way_before_it) {
  window->WarpPointer(100, HEIGHT - 1 - 50);
  SDL_FlushEvent(SDL_MOUSEMOTION);  // whatever this driver has made of it
  PushMotion(390, 20);              // still from before
  PushMotion(100, 50);              // the jump
  PushMotion(104, 51);              // the user goes on
  Pump();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].x, 104);
  EXPECT_EQ(events[0].y, HEIGHT - 1 - 51);
}

TEST_F(WindowTest, hears_the_user_again_when_a_jump_never_arrives) {
  window->WarpPointer(100, 100);
  SDL_FlushEvent(SDL_MOUSEMOTION);
  PushMotion(5, 5);
  Pump();
  EXPECT_TRUE(events.empty());
  Advance(101);  // a window system that jumps has done so by then
  PushMotion(7, 7);
  Pump();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].x, 7);
}

// ---- frames ----

TEST_F(WindowTest, draws_only_when_asked_and_once_for_many_requests) {
  int frames = 0;
  window->SetFrameHandler([&frames] { ++frames; });
  Advance(1000);
  window->Step(0);
  EXPECT_EQ(frames, 0);
  window->RequestFrame();
  window->RequestFrame();
  window->Step(0);
  Advance(1000);
  window->Step(0);
  EXPECT_EQ(frames, 1);
}

// Displays show from 30 to 240 frames a second: one every 4 to 33 milliseconds. The window draws a little
// sooner, and the display's own pace does the rest.
TEST_F(WindowTest, does_not_draw_faster_than_a_display_shows) {
  int frames = 0;
  window->SetFrameHandler([&] {
    ++frames;
    window->RequestFrame();
  });
  window->RequestFrame();
  Advance(1000);
  window->Step(0);
  EXPECT_EQ(frames, 1);
  Advance(2);
  window->Step(0);
  EXPECT_EQ(frames, 1);
  Advance(32);
  window->Step(0);
  EXPECT_EQ(frames, 2);
}

// A wait that outlasts the test, should nothing end it.
constexpr int TEN_MINUTES = 600000;

TEST_F(WindowTest, wakes_for_a_call_from_another_thread) {
  bool woken = false;
  window->SetWakeHandler([&woken] { woken = true; });
  std::thread other([this] { window->Wake(); });
  while (!woken) window->Step(TEN_MINUTES);
  other.join();
  EXPECT_TRUE(woken);
}

TEST_F(WindowTest, wakes_for_a_timer_of_the_library) {
  class Alarm : public Korvane::IntervalTimer {
   public:
    void Timeout() override { ++count; }
    int count = 0;
  };
  Alarm alarm;
  ASSERT_TRUE(alarm.Start(0.03, false));
  while (alarm.count == 0) window->Step(TEN_MINUTES);
  EXPECT_EQ(alarm.count, 1);
}

// ---- cursors ----

TEST_F(WindowTest, refuses_a_cursor_without_pixels_or_with_too_few) {
  zovhost::Image image;
  EXPECT_FALSE(window->DefineCursor(1, image, 0, 0));
  image.width = image.height = 8;
  image.rgba.assign(8 * 8 * 4 - 1, 255);
  EXPECT_FALSE(window->DefineCursor(1, image, 0, 0));
  window->SetCursor(1);  // shows the arrow
  window->SetCursor(99);
}

TEST(WindowScale, makes_a_window_of_points_have_more_pixels) {
  for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
    Window::Options options;
    options.width = 400;
    options.height = 200;
    options.offscreen = true;
    options.scale = scale;
    std::string error;
    const auto scaled = Window::Create(options, error);
    ASSERT_NE(scaled, nullptr) << error;
    EXPECT_EQ(scaled->GetScale(), scale);
    EXPECT_EQ(scaled->GetWidth(), static_cast<int>(400 * scale));
    EXPECT_EQ(scaled->GetHeight(), static_cast<int>(200 * scale));
  }
}

TEST(WindowScale, is_told_when_it_becomes_another) {
  Window::Options options;
  options.offscreen = true;
  std::string error;
  const auto scaled = Window::Create(options, error);
  ASSERT_NE(scaled, nullptr) << error;
  int told = 0;
  scaled->SetEventHandler(
      [&told](const WindowEvent& event) { told += event.type == WindowEvent::Type::Resized; });
  EXPECT_EQ(scaled->GetScale(), 1.0);
  scaled->SetScale(1.5);
  EXPECT_EQ(scaled->GetScale(), 1.5);
  EXPECT_EQ(scaled->GetWidth(), options.width);
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(scaled->IsFrameRequested());
  scaled->SetScale(1.5);
  EXPECT_EQ(told, 1);
  scaled->SetScale(99.0);
  EXPECT_EQ(scaled->GetScale(), 4.0);
  scaled->SetScale(0.01);
  EXPECT_EQ(scaled->GetScale(), 1.0);
  scaled->SetScale(std::nan(""));  // none is chosen
  EXPECT_EQ(scaled->GetScale(), 1.0);
  scaled->SetEventHandler(nullptr);
}

}  // namespace
