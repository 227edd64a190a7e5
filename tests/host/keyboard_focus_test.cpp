// The focus that keys move, without any widget, and the way that arrows take around a cube.
#include "zovhost/keyboard_focus.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "src/focus/cube_steps.h"

namespace {

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::CubeAxes;
using zovhost::FocusStep;
using zovhost::FocusThing;
using zovhost::KeyboardFocus;
using zovhost::StepOnCube;
using zovhost::WindowEvent;

class KeyboardFocusTest : public testing::Test {
 protected:
  KeyboardFocusTest() {
    focus.AddGroup([this] { return first; });
    focus.AddGroup([] { return std::vector<FocusThing>(); });
    focus.AddGroup([this] { return second; });
    focus.SetObserver([this](const FocusThing* thing) {
      told.push_back(thing == nullptr ? "-" : thing->name + (thing->on ? "+" : ""));
    });
    first = {Make(1, "a", 0, 0), Make(2, "b", 50, 0), Make(3, "c", 50, 50)};
    second = {Make(1, "x", 0, 0)};
  }

  FocusThing Make(int id, const char* name, double x, double y) {
    FocusThing thing;
    thing.id = id;
    thing.name = name;
    thing.bounds = Box2(Vector2(x, y), Vector2(5, 5));
    thing.press = [this, id](bool down) { presses.push_back(down ? id : -id); };
    thing.drag = [this](int right, int up) { dragged += Vector2(right, up); };
    return thing;
  }
  bool Send(SDL_Keycode key, unsigned modifiers = 0, WindowEvent::Type type = WindowEvent::Type::KeyDown) {
    WindowEvent event;
    event.type = type;
    event.key = key;
    event.modifiers = modifiers;
    return focus.OnEvent(event);
  }
  std::string GetName() {
    const FocusThing* const thing = focus.Get();
    return thing != nullptr ? thing->name : "";
  }

  KeyboardFocus focus;
  std::vector<FocusThing> first;
  std::vector<FocusThing> second;
  std::vector<std::string> told;
  std::vector<int> presses;
  Vector2 dragged;
};

TEST_F(KeyboardFocusTest, tab_goes_from_group_to_group_and_leaves_at_the_end) {
  EXPECT_FALSE(Send(SDLK_RIGHT)) << "nothing is under it";
  EXPECT_TRUE(Send(SDLK_TAB));
  EXPECT_EQ(GetName(), "a");
  EXPECT_TRUE(Send(SDLK_TAB));
  EXPECT_EQ(GetName(), "x") << "an empty group is passed";
  EXPECT_FALSE(Send(SDLK_TAB));
  EXPECT_FALSE(focus.IsActive());
  EXPECT_TRUE(Send(SDLK_TAB, WindowEvent::SHIFT));
  EXPECT_EQ(GetName(), "x");
  EXPECT_TRUE(Send(SDLK_TAB, WindowEvent::SHIFT));
  EXPECT_FALSE(Send(SDLK_TAB, WindowEvent::SHIFT));
  EXPECT_EQ(told, (std::vector<std::string>{"a", "x", "-", "x", "a", "-"}));
}

TEST_F(KeyboardFocusTest, arrows_lead_to_the_nearest_on_that_side) {
  Send(SDLK_TAB);
  EXPECT_TRUE(Send(SDLK_LEFT));
  EXPECT_EQ(GetName(), "a") << "there is nothing";
  Send(SDLK_RIGHT);
  EXPECT_EQ(GetName(), "b");
  Send(SDLK_UP);
  EXPECT_EQ(GetName(), "c");
  Send(SDLK_DOWN);
  Send(SDLK_LEFT);
  EXPECT_EQ(GetName(), "a");
}

TEST_F(KeyboardFocusTest, enter_and_space_press_until_they_are_let_go_and_arrows_drag_meanwhile) {
  Send(SDLK_TAB);
  for (const SDL_Keycode key : {SDLK_RETURN, SDLK_KP_ENTER, SDLK_SPACE}) {
    EXPECT_TRUE(Send(key));
    EXPECT_TRUE(focus.IsPressed());
    EXPECT_TRUE(Send(SDLK_UP));
    EXPECT_TRUE(Send(key, 0, WindowEvent::Type::KeyUp));
  }
  EXPECT_EQ(presses, (std::vector<int>{1, -1, 1, -1, 1, -1}));
  EXPECT_EQ(dragged, Vector2(0, 3));
  EXPECT_EQ(GetName(), "a");
  EXPECT_FALSE(Send(SDLK_RETURN, 0, WindowEvent::Type::KeyUp)) << "went down for another";
}

TEST_F(KeyboardFocusTest, whatever_ends_it_lets_go_of_what_is_pressed) {
  for (int way = 0; way < 4; ++way) {
    presses.clear();
    focus.Enter(false);
    Send(SDLK_RETURN);
    if (way == 0) Send(SDLK_ESCAPE);
    if (way == 1) Send(0, 0, WindowEvent::Type::MouseDown);
    if (way == 2) Send(0, 0, WindowEvent::Type::FocusLost);
    if (way == 3) Send(0, 0, WindowEvent::Type::FingerDown);
    EXPECT_FALSE(focus.IsActive()) << way;
    EXPECT_EQ(presses, (std::vector<int>{1, -1})) << way;
  }
  EXPECT_FALSE(Send(SDLK_ESCAPE)) << "is somebody else's then";
}

TEST_F(KeyboardFocusTest, tells_of_a_state_that_changes_and_goes_on_where_a_thing_has_gone) {
  Send(SDLK_TAB);
  Send(SDLK_RIGHT);
  first[1].on = true;
  EXPECT_EQ(GetName(), "b");
  first.erase(first.begin() + 1);
  EXPECT_EQ(GetName(), "a");
  first.clear();
  EXPECT_EQ(focus.Get(), nullptr);
  EXPECT_EQ(told, (std::vector<std::string>{"a", "b", "b+", "a", "-"}));
}

TEST_F(KeyboardFocusTest, what_is_not_enabled_is_passed) {
  first[0].enabled = false;
  Send(SDLK_TAB);
  EXPECT_EQ(GetName(), "b");
  Send(SDLK_LEFT);
  EXPECT_EQ(GetName(), "b");
}

TEST_F(KeyboardFocusTest, keys_with_control_are_not_its_own) {
  EXPECT_FALSE(Send(SDLK_TAB, WindowEvent::CONTROL));
  Send(SDLK_TAB);
  EXPECT_FALSE(Send(SDLK_RIGHT, WindowEvent::ALT));
}

// ---- around a cube ----

const CubeAxes AXES{{0, -1, 0}, {0, 0, 1}, Vector3(0, -1, 0).Cross({0, 0, 1})};

CameraParameters LookAlong(const Vector3& direction, const Vector3& up) {
  CameraParameters camera;
  camera.eye = -direction;
  camera.up = up;
  return camera;
}

constexpr std::array<FocusStep, 4> STEPS = {{{1, 0}, {-1, 0}, {0, 1}, {0, -1}}};

Vector3 ToWorld(const Vector3& part) { return AXES.front * part.x + AXES.top * part.y + AXES.left * part.z; }

TEST(CubeStepsTest, arrows_reach_all_26_parts_from_any_of_them_in_any_view) {
  for (const Vector3& view : {Vector3(0, 1, 0), Vector3(1, 1, -0.8), Vector3(0.1, 0.2, -3.0),
                              Vector3(0, 0, 1), Vector3(-1, 0.3, 0.4), Vector3(0, 0, -1)}) {
    const bool isVertical = view.x == 0.0 && view.y == 0.0;
    for (const double sense : {1.0, -1.0}) {
      const Vector3 up = (isVertical ? Vector3(0, 1, 0) : Vector3(0, 0, 1)) * sense;
      const CameraParameters camera = LookAlong(view, up);
      std::set<std::array<double, 3>> seen;
      std::vector<Vector3> ahead = {{1, 0, 0}};
      while (!ahead.empty()) {
        const Vector3 part = ahead.back();
        ahead.pop_back();
        if (!seen.insert({part.x, part.y, part.z}).second) continue;
        for (const FocusStep& step : STEPS) ahead.push_back(StepOnCube(part, step, AXES, camera));
      }
      EXPECT_EQ(seen.size(), 26U);
    }
  }
}

TEST(CubeStepsTest, an_arrow_leads_that_way_on_the_screen) {
  for (const Vector3& view : {Vector3(0, 1, 0), Vector3(0.3, 1, -0.5), Vector3(0.1, 0.2, -3.0)}) {
    for (const double sense : {1.0, -1.0}) {
      const CameraParameters camera = LookAlong(view, Vector3(0, 0, 1) * sense);
      const Vector3 forward = view.Normalized();
      const Vector3 right = forward.Cross(camera.up).Normalized();
      const Vector3 up = right.Cross(forward);
      // From the face that is looked at, which shows on all sides.
      const bool isSteep = std::abs(forward.z) > 0.8;
      const Vector3 face = isSteep ? Vector3(0, 1, 0) : Vector3(1, 0, 0);
      for (const FocusStep& step : STEPS) {
        const Vector3 way = ToWorld(StepOnCube(face, step, AXES, camera)) - ToWorld(face);
        EXPECT_GT(way.Dot(right) * step.right + way.Dot(up) * step.up, 0.0);
      }
    }
  }
}

TEST(CubeStepsTest, an_arrow_pressed_eight_times_goes_round) {
  const CameraParameters camera = LookAlong({0.3, 1, -0.5}, {0, 0, 1});
  Vector3 part(1, 1, 0);
  for (int i = 0; i < 8; ++i) part = StepOnCube(part, {1, 0}, AXES, camera);
  EXPECT_EQ(part, Vector3(1, 1, 0));
}

}  // namespace
