// The styles of navigation: what each button and key does in them.
#include "zovhost/navigation_style.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>
#include <string>

#include "korvane/pivot_ball.h"
#include "korvane/rewind_history.h"
#include "korvane/tool.h"
#include "views/view_tools.h"
#include "wired_view.h"
#include "zovhost/click_watch.h"

namespace {

using Korvane::Box3;
using Korvane::CameraParameters;
using Korvane::Vector3;
using zovhost::NavigationDrag;
using zovhost::NavigationMove;
using zovhost::NavigationStyle;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

const std::array<Box3, 1> HOUSE = {Box3({0, 0, 4}, {6, 5, 4})};
constexpr double SAME = 1e-9;

class OpenManager : public zovview::ViewerViewManager {
 public:
  using ViewerViewManager::ViewerViewManager;
  bool IsToolOperating() const { return activeTool != nullptr && activeTool->IsOperating(); }
  bool IsWheelZooming() const { return navigation.present == Navigation::Zooming; }
};

// What has become of a camera.
struct Change {
  bool moved;       // the eye
  bool turned;      // the direction
  bool keepsPivot;  // the eye keeps its distance from the pivot
  bool rolled;
  double forward;  // of the eye, along the direction
};

Change Compare(const CameraParameters& a, const CameraParameters& b) {
  const Vector3 before = (a.centre - a.eye).Normalized();
  const Vector3 after = (b.centre - b.eye).Normalized();
  const double far = (a.eye - a.pivot).Length();
  return {(a.eye - b.eye).Length() > SAME * far, (before - after).Length() > SAME,
          std::abs((b.eye - a.pivot).Length() - far) < SAME * far, (a.up - b.up).Length() > SAME,
          (b.eye - a.eye).Dot(before)};
}

bool Did(NavigationMove move, const Change& change) {
  switch (move) {
    case NavigationMove::Orbit:
      return change.moved && change.turned && change.keepsPivot;
    case NavigationMove::Pan:
      return change.moved && !change.turned && std::abs(change.forward) < SAME;
    case NavigationMove::Zoom:
      return change.moved && !change.turned && std::abs(change.forward) > 0.1;
    case NavigationMove::Look:
      return !change.moved && change.turned;
    case NavigationMove::Roll:
      return change.rolled && !change.turned;
  }
  return false;
}

class NavigationStyleTest : public apps_test::WiredView<OpenManager> {
 protected:
  NavigationStyleTest() : WiredView(HOUSE) {}

  void Use(const char* name) {
    const NavigationStyle& style = zovhost::FindNavigationStyle(name);
    ASSERT_EQ(style.name, name);
    events.SetNavigationStyle(style);
  }
  bool Do(Type type, int x, int y, MouseButton button, unsigned modifiers = 0) {
    WindowEvent event;
    event.type = type;
    event.x = x;
    event.y = y;
    event.button = button;
    event.modifiers = modifiers;
    return events.OnEvent(event);
  }
  bool Key(Type type, SDL_Keycode key, unsigned modifiers = 0) {
    WindowEvent event;
    event.type = type;
    event.key = key;
    event.modifiers = modifiers;
    return events.OnEvent(event);
  }
  CameraParameters Drag(MouseButton button, unsigned modifiers, int toX = 700, int toY = 460) {
    Do(Type::MouseMove, 600, 400, button, modifiers);
    Do(Type::MouseDown, 600, 400, button, modifiers);
    Draw();
    Do(Type::MouseMove, toX, toY, button, modifiers);
    Draw();
    Do(Type::MouseUp, toX, toY, button, modifiers);
    Draw();
    return hub.GetView();
  }
};

// ---- the table ----

TEST_F(NavigationStyleTest, every_style_has_a_name_and_no_drag_twice) {
  std::set<std::string_view> names;
  EXPECT_GE(zovhost::GetNavigationStyles().size(), 5u);
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    EXPECT_TRUE(names.insert(style.name).second) << style.name;
    EXPECT_STRNE(style.label, "");
    std::set<std::pair<int, unsigned>> drags;
    std::set<NavigationMove> moves;
    for (const NavigationDrag& drag : style.drags) {
      EXPECT_TRUE(drags.insert({static_cast<int>(drag.button), drag.modifiers}).second) << style.name;
      EXPECT_FALSE(drag.button == MouseButton::Left && drag.modifiers == 0) << "the active tool's";
      moves.insert(drag.move);
    }
    EXPECT_TRUE(moves.count(NavigationMove::Orbit) + moves.count(NavigationMove::Look) > 0) << style.name;
    EXPECT_EQ(moves.count(NavigationMove::Pan), 1u) << style.name;
  }
  EXPECT_EQ(&zovhost::FindNavigationStyle("of nobody"), &zovhost::GetNavigationStyles().front());
}

TEST_F(NavigationStyleTest, a_command_chooses_each_and_keeps_its_name) {
  preferences.SetObserver({});
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    const zovview::ViewCommand* const command = zovview::FindViewCommand("style-" + std::string(style.name));
    ASSERT_NE(command, nullptr) << style.name;
    EXPECT_STREQ(command->label, style.label);
    command->run(target);
    EXPECT_EQ(preferences.Get().navigationStyle, style.name);
    for (const zovview::ViewCommand& each : zovview::GetViewCommands()) {
      if (each.place == zovview::ViewCommand::Place::Styles) {
        EXPECT_EQ(each.isOn(target), &each == command) << each.name;
      }
    }
  }
}

// ---- the drags ----

TEST_F(NavigationStyleTest, every_drag_of_every_style_does_what_its_row_says) {
  bool& upright = hub.GetApplicationParameters().preserve_orbit_up_direction;
  const CameraParameters home = hub.GetView();
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    events.SetNavigationStyle(style);
    for (const NavigationDrag& drag : style.drags) {
      SCOPED_TRACE(std::string(style.name) + " " + std::to_string(static_cast<int>(drag.button)) + " " +
                   std::to_string(drag.modifiers));
      hub.SetView(home);
      upright = drag.move != NavigationMove::Roll;
      const bool shift = (drag.modifiers & WindowEvent::SHIFT) != 0;
      if (shift) Key(Type::KeyDown, SDLK_LSHIFT, WindowEvent::SHIFT);
      EXPECT_TRUE(Did(drag.move, Compare(home, Drag(drag.button, drag.modifiers))));
      if (shift) Key(Type::KeyUp, SDLK_LSHIFT);
      EXPECT_FALSE(events.IsPressed());
      EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL));
      EXPECT_FALSE(hub.GetApplicationParameters().mouse_drag);
      EXPECT_FALSE(events.GetPivotBall()->IsVisible());
    }
  }
}

TEST_F(NavigationStyleTest, the_left_button_stays_the_active_tools) {
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    events.SetNavigationStyle(style);
    Do(Type::MouseDown, 600, 400, MouseButton::Left);
    EXPECT_TRUE(events.IsToolOperating()) << style.name;
    Do(Type::MouseUp, 600, 400, MouseButton::Left);
  }
}

TEST_F(NavigationStyleTest, a_button_that_a_style_leaves_free_moves_nothing) {
  Use("alt-drags");
  const CameraParameters before = hub.GetView();
  EXPECT_EQ(Drag(MouseButton::Middle, 0).eye, before.eye);
  EXPECT_EQ(Drag(MouseButton::Right, 0).eye, before.eye);
}

TEST_F(NavigationStyleTest, a_drag_of_a_style_is_one_entry_of_the_history) {
  Use("middle-orbits");
  Drag(MouseButton::Middle, 0);
  for (const unsigned modifiers : {0U, unsigned{WindowEvent::CONTROL}, unsigned{WindowEvent::ALT}}) {
    const int before = disc.GetHistory()->GetElementCount();
    Drag(MouseButton::Middle, modifiers);
    EXPECT_EQ(disc.GetHistory()->GetElementCount(), before + 1) << modifiers;
  }
}

TEST_F(NavigationStyleTest, no_drag_moves_the_camera_at_its_press_or_by_a_motion_of_nothing) {
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    events.SetNavigationStyle(style);
    for (const NavigationDrag& drag : style.drags) {
      const CameraParameters before = hub.GetView();
      Do(Type::MouseDown, 600, 400, drag.button, drag.modifiers);
      Draw();
      Do(Type::MouseMove, 600, 400, drag.button, drag.modifiers);
      Draw();
      EXPECT_LT((hub.GetView().eye - before.eye).Length(), SAME) << style.name;
      EXPECT_LT((hub.GetView().centre - before.centre).Length(), SAME) << style.name;
      EXPECT_LT((hub.GetView().up - before.up).Length(), SAME) << style.name;
      events.Cancel();
    }
  }
}

TEST_F(NavigationStyleTest, a_modifier_that_comes_and_goes_changes_the_drag) {
  Use("middle-turns");
  Do(Type::MouseDown, 600, 400, MouseButton::Middle);
  Draw();
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_ORBIT));
  Key(Type::KeyDown, SDLK_LCTRL, WindowEvent::CONTROL);
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_PAN));
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ORBIT));
  Key(Type::KeyUp, SDLK_LCTRL);
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_ORBIT));
  Key(Type::KeyDown, SDLK_LSHIFT, WindowEvent::SHIFT);
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_ZOOM));
  Key(Type::KeyUp, SDLK_LSHIFT);
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_ORBIT));
  Do(Type::MouseUp, 600, 400, MouseButton::Middle);
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL));
}

TEST_F(NavigationStyleTest, a_lost_focus_ends_every_drag) {
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    events.SetNavigationStyle(style);
    for (const NavigationDrag& drag : style.drags) {
      Do(Type::MouseDown, 600, 400, drag.button, drag.modifiers);
      Send(Type::FocusLost);
      EXPECT_FALSE(events.IsPressed());
      EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL)) << style.name;
      const CameraParameters before = hub.GetView();
      Do(Type::MouseMove, 800, 500, drag.button, drag.modifiers);
      Draw();
      Do(Type::MouseUp, 800, 500, drag.button, drag.modifiers);
      EXPECT_EQ(hub.GetView().eye, before.eye) << style.name;
    }
  }
}

TEST_F(NavigationStyleTest, another_button_beside_a_drag_is_of_no_use) {
  Use("right-orbits");
  Do(Type::MouseDown, 600, 400, MouseButton::Right);
  EXPECT_TRUE(Do(Type::MouseDown, 600, 400, MouseButton::Left));
  EXPECT_TRUE(Do(Type::MouseUp, 600, 400, MouseButton::Left));
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_ORBIT));
  EXPECT_TRUE(Do(Type::MouseDown, 600, 400, MouseButton::Middle));
  Do(Type::MouseMove, 640, 400, MouseButton::Right);
  EXPECT_TRUE(Do(Type::MouseUp, 640, 400, MouseButton::Right));
  EXPECT_TRUE(Do(Type::MouseUp, 640, 400, MouseButton::Middle));
  EXPECT_FALSE(events.IsPressed());
}

// ---- the right button ----

TEST_F(NavigationStyleTest, a_right_click_moves_nothing_and_is_left_to_the_host) {
  for (const char* name : {"right-orbits", "right-looks"}) {
    Use(name);
    const CameraParameters before = hub.GetView();
    Do(Type::MouseDown, 600, 400, MouseButton::Right);
    Draw();
    Do(Type::MouseMove, 602, 401, MouseButton::Right);
    Draw();
    EXPECT_FALSE(Do(Type::MouseUp, 602, 401, MouseButton::Right)) << name;
    Draw();
    EXPECT_EQ(hub.GetView().eye, before.eye) << name;
    EXPECT_EQ(hub.GetView().centre, before.centre) << name;
    Do(Type::MouseDown, 600, 400, MouseButton::Right);
    Do(Type::MouseMove, 640, 400, MouseButton::Right);
    Do(Type::MouseMove, 600, 400, MouseButton::Right);
    EXPECT_TRUE(Do(Type::MouseUp, 600, 400, MouseButton::Right)) << "there and back is no click";
  }
}

TEST_F(NavigationStyleTest, a_right_click_may_stray_by_as_many_points_on_each_display) {
  Use("right-orbits");
  for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
    SCOPED_TRACE(scale);
    hub.GetApplicationParameters().pixels_per_point = static_cast<float>(scale);
    const int reach = static_cast<int>(std::floor(zovhost::ClickWatch::REACH * scale));
    for (const int strayed : {reach, -reach, reach + 1, -reach - 1}) {
      Do(Type::MouseDown, 600, 400, MouseButton::Right);
      Do(Type::MouseMove, 600, 400 + strayed, MouseButton::Right);
      EXPECT_EQ(Do(Type::MouseUp, 600, 400 + strayed, MouseButton::Right), std::abs(strayed) > reach)
          << strayed << ": what is used is a drag";
    }
  }
}

TEST_F(NavigationStyleTest, a_right_press_on_the_cube_is_the_cubes) {
  Use("right-orbits");
  Do(Type::MouseMove, WIDTH - 60, HEIGHT - 60, MouseButton::Right);
  Draw();
  ASSERT_TRUE(ownCube.IsMouseOnGeometryPart());
  Do(Type::MouseDown, WIDTH - 60, HEIGHT - 60, MouseButton::Right);
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL));
  Do(Type::MouseUp, WIDTH - 60, HEIGHT - 60, MouseButton::Right);
}

// ---- keys ----

TEST_F(NavigationStyleTest, letters_move_while_a_look_is_dragged_and_mean_what_they_meant_elsewhere) {
  Use("right-looks");
  EXPECT_FALSE(Key(Type::KeyDown, SDLK_w));
  Key(Type::KeyUp, SDLK_w);
  const Vector3 forward = (hub.GetView().centre - hub.GetView().eye).Normalized();
  Do(Type::MouseDown, 600, 400, MouseButton::Right);
  for (const auto& [key, sense] :
       {std::pair{SDLK_w, 1.0}, {SDLK_s, -1.0}, {SDLK_UP, 1.0}, {SDLK_DOWN, -1.0}}) {
    const Vector3 before = hub.GetView().eye;
    EXPECT_TRUE(Key(Type::KeyDown, key));
    Wait(0.25);
    Key(Type::KeyUp, key);
    const Vector3 after = hub.GetView().eye;
    EXPECT_GT((after - before).Dot(forward) * sense, 0.0) << key;
    Wait(0.25);
    EXPECT_EQ(hub.GetView().eye, after) << "released";
  }
  EXPECT_TRUE(Key(Type::KeyDown, SDLK_d)) << "no disc";
  EXPECT_EQ(disc.GetActiveDisc(), Korvane::DiscType::None);
  Do(Type::MouseUp, 640, 400, MouseButton::Right);
  const Vector3 rest = hub.GetView().eye;
  Wait(0.25);
  EXPECT_EQ(hub.GetView().eye, rest) << "what is still held moves nothing any more";
  Key(Type::KeyUp, SDLK_d);
  EXPECT_TRUE(Key(Type::KeyDown, SDLK_d)) << "the disc";
}

// ---- the wheel ----

TEST_F(NavigationStyleTest, the_wheel_goes_the_way_of_the_style) {
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    events.SetNavigationStyle(style);
    zovhost::EnterScene(hub, *scene);
    const Vector3 forward = (hub.GetView().centre - hub.GetView().eye).Normalized();
    const Vector3 before = hub.GetView().eye;
    Turn(1.0);
    Draw();
    EXPECT_EQ((hub.GetView().eye - before).Dot(forward) < 0.0, style.wheelReversed) << style.name;
    Wait(1.0);
    EXPECT_FALSE(events.IsWheelZooming());
  }
}

TEST_F(NavigationStyleTest, the_wheel_zooms_to_the_pointer_or_to_the_middle) {
  for (const NavigationStyle& style : zovhost::GetNavigationStyles()) {
    events.SetNavigationStyle(style);
    zovhost::EnterScene(hub, *scene);
    const CameraParameters before = hub.GetView();
    const Vector3 forward = (before.centre - before.eye).Normalized();
    Turn(1.0);  // far from the middle
    Draw();
    const Vector3 moved = hub.GetView().eye - before.eye;
    const bool straight = (moved - forward * moved.Dot(forward)).Length() < 0.01 * moved.Length();
    EXPECT_EQ(straight, style.zoomTarget == NavigationStyle::ZoomTarget::Middle) << style.name;
    Wait(1.0);
  }
}

}  // namespace
