// Mouse gestures as operations of the hub.
#include "navigation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "start_camera.h"
#include "tour_clock.h"
#include "zovhost/projection.h"
#include "zovhost/scene.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::MouseButton;

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 800;

class NavigationTest : public testing::Test {
 protected:
  NavigationTest()
      : scene(zovhost::MakeDemoBuilding()),
        hub([this] { ++requests; }),
        navigation(hub, {[this](const Vector3& origin, const Vector3& direction, Vector3& point) {
                           zovhost::Scene::Hit hit;
                           if (blind || !scene->Intersect(origin, direction, hit)) return false;
                           point = hit.point;
                           return true;
                         },
                         [this](Korvane::CursorID id) { cursor = id; }}) {
    hub.SetViewportSize(WIDTH, HEIGHT);
    zovview::EnterScene(hub, *scene);
  }

  void Frame() {
    clock.Advance();
    navigation.PerformFrame();
  }

  void Drag(MouseButton button, int fromX, int fromY, int toX, int toY) {
    navigation.OnMouseDown(button, fromX, fromY);
    Frame();
    for (int i = 1; i <= 10; ++i) {
      navigation.OnMouseMove(fromX + (toX - fromX) * i / 10, fromY + (toY - fromY) * i / 10);
      Frame();
    }
    navigation.OnMouseUp(button, toX, toY);
    Frame();
  }

  Vector2 Project(const Vector3& point) const {
    const zovhost::Projection projection(hub.GetView(), {scene->GetCentre(), scene->GetRadius()});
    Vector2 pixel;
    EXPECT_TRUE(projection.WorldToPixel(point, WIDTH, HEIGHT, pixel));
    return pixel;
  }

  zovview::TourClock clock;
  std::unique_ptr<zovhost::Scene> scene;
  bool blind = false;  // rays meet nothing, so the pivot stays
  int requests = 0;
  Korvane::CursorID cursor = Korvane::CURSOR_NONE;
  zovview::ViewerHub hub;
  zovview::Navigation navigation;
};

double Distance(const Vector3& a, const Vector3& b) { return (a - b).Length(); }

TEST_F(NavigationTest, a_press_sets_the_pivot_to_the_model_under_the_cursor_and_moves_nothing) {
  const CameraParameters before = hub.GetView();
  navigation.OnMouseDown(MouseButton::Left, WIDTH / 2 + 40, HEIGHT / 2 - 20);
  Frame();
  const CameraParameters after = hub.GetView();
  EXPECT_NE(after.pivot, before.pivot);
  EXPECT_LT(Distance(after.eye, before.eye), 1e-9);
  EXPECT_LT(Distance((after.centre - after.eye).Normalized(), (before.centre - before.eye).Normalized()),
            1e-9);
  const Vector2 pixel = Project(after.pivot);
  EXPECT_NEAR(pixel.x, WIDTH / 2 + 40.5, 0.01);  // the hit is traced in single precision
  EXPECT_NEAR(pixel.y, HEIGHT / 2 - 19.5, 0.01);
}

TEST_F(NavigationTest, a_press_beside_the_model_keeps_the_pivot) {
  navigation.OnMouseDown(MouseButton::Left, 3, HEIGHT - 3);
  EXPECT_EQ(hub.GetView().pivot, scene->GetCentre());
}

TEST_F(NavigationTest, a_left_drag_orbits_about_the_pivot) {
  const CameraParameters before = hub.GetView();
  Drag(MouseButton::Left, 10, HEIGHT - 10, 10 + WIDTH / 5, HEIGHT - 10);
  const CameraParameters after = hub.GetView();
  EXPECT_NEAR(Distance(after.eye, after.pivot), Distance(before.eye, before.pivot), 1e-9);
  // A fifth of the width is one radian about the up axis.
  const Vector3 up = scene->GetUpDirection();
  const Vector3 from = before.eye - before.pivot - up * (before.eye - before.pivot).Dot(up);
  const Vector3 to = after.eye - after.pivot - up * (after.eye - after.pivot).Dot(up);
  EXPECT_NEAR(std::acos(from.Normalized().Dot(to.Normalized())), 1.0, 1e-9);
}

TEST_F(NavigationTest, an_orbit_there_and_back_returns) {
  const CameraParameters before = hub.GetView();
  Drag(MouseButton::Left, 500, 300, 800, 420);
  Drag(MouseButton::Left, 10, HEIGHT - 10, 10, HEIGHT - 10);
  const CameraParameters turned = hub.GetView();
  EXPECT_GT(Distance(turned.eye, before.eye), 0.1);
  navigation.OnMouseDown(MouseButton::Left, 500, 300);
  for (const int x : {600, 900, 500}) {
    navigation.OnMouseMove(x, 300);
    Frame();
  }
  navigation.OnMouseUp(MouseButton::Left, 500, 300);
  EXPECT_LT(Distance(hub.GetView().eye, turned.eye), 1e-9);
}

TEST_F(NavigationTest, a_middle_drag_keeps_the_point_under_the_cursor) {
  navigation.OnMouseDown(MouseButton::Middle, 640, 380);
  const Vector3 grabbed = hub.GetView().pivot;
  const Vector2 before = Project(grabbed);
  Frame();
  navigation.OnMouseMove(700, 300);
  Frame();
  navigation.OnMouseMove(790, 230);
  navigation.OnMouseUp(MouseButton::Middle, 790, 230);
  const Vector2 after = Project(grabbed);
  EXPECT_NEAR(after.x - before.x, 150.0, 1e-6);
  EXPECT_NEAR(after.y - before.y, -150.0, 1e-6);
}

TEST_F(NavigationTest, a_right_drag_upward_comes_nearer) {
  const double before = Distance(hub.GetView().eye, scene->GetCentre());
  Drag(MouseButton::Right, 10, 600, 10, 640);
  EXPECT_NEAR(Distance(hub.GetView().eye, scene->GetCentre()), before * std::pow(1.015, -40), 1e-6);
}

TEST_F(NavigationTest, motion_after_the_last_frame_counts_when_the_button_is_released) {
  navigation.OnMouseDown(MouseButton::Right, 10, 600);
  Frame();
  const double before = Distance(hub.GetView().eye, scene->GetCentre());
  navigation.OnMouseUp(MouseButton::Right, 10, 620);
  EXPECT_NEAR(Distance(hub.GetView().eye, scene->GetCentre()), before * std::pow(1.015, -20), 1e-6);
}

TEST_F(NavigationTest, shows_the_cursor_of_what_a_drag_does) {
  navigation.OnMouseDown(MouseButton::Middle, 10, 10);
  EXPECT_EQ(cursor, Korvane::CURSOR_PAN);
  navigation.OnMouseUp(MouseButton::Middle, 10, 10);
  EXPECT_EQ(cursor, Korvane::CURSOR_ARROW);
}

TEST_F(NavigationTest, a_second_button_does_not_disturb_a_drag) {
  navigation.OnMouseDown(MouseButton::Left, 10, 10);
  navigation.OnMouseDown(MouseButton::Right, 10, 10);
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ZOOM));
  navigation.OnMouseUp(MouseButton::Right, 10, 10);
  EXPECT_TRUE(hub.IsOperationActive(Korvane::OPERATION_ORBIT));
  navigation.OnWheel(10, 10, 3.0);
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ZOOM));
  navigation.Cancel();
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL));
}

// ---- the wheel ----

TEST_F(NavigationTest, a_notch_of_the_wheel_comes_a_fifth_nearer_and_back) {
  const double before = Distance(hub.GetView().eye, scene->GetCentre());
  navigation.OnWheel(3, HEIGHT - 3, 1.0);
  for (int i = 0; i < 60; ++i) Frame();
  EXPECT_NEAR(Distance(hub.GetView().eye, scene->GetCentre()), before * std::pow(1.015, -12), 1e-9);
  navigation.OnWheel(3, HEIGHT - 3, -1.0);
  for (int i = 0; i < 60; ++i) Frame();
  EXPECT_NEAR(Distance(hub.GetView().eye, scene->GetCentre()), before, 1e-9);
}

TEST_F(NavigationTest, the_wheel_glides_over_several_frames_and_then_asks_for_none) {
  navigation.OnWheel(3, HEIGHT - 3, 2.0);
  int moving = 0;
  for (int i = 0; i < 60; ++i) {
    const Vector3 eye = hub.GetView().eye;
    Frame();
    if (Distance(eye, hub.GetView().eye) > 0.0) ++moving;
  }
  EXPECT_GT(moving, 4);
  EXPECT_LT(moving, 30);
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL));
  const int asked = requests;
  Frame();
  EXPECT_EQ(requests, asked);
}

TEST_F(NavigationTest, the_wheel_keeps_the_point_under_the_cursor) {
  navigation.OnWheel(700, 380, 2.0);
  const Vector3 point = hub.GetView().pivot;
  const Vector2 before = Project(point);
  for (int i = 0; i < 60; ++i) Frame();
  const Vector2 after = Project(point);
  EXPECT_NEAR(after.x, before.x, 1e-6);
  EXPECT_NEAR(after.y, before.y, 1e-6);
}

TEST_F(NavigationTest, many_notches_go_on_past_the_halt_of_one_zoom) {
  blind = true;
  const double before = Distance(hub.GetView().eye, scene->GetCentre());
  double last = before;
  for (int notch = 0; notch < 30; ++notch) {
    navigation.OnWheel(3, HEIGHT - 3, 1.0);
    Frame();
    const double now = Distance(hub.GetView().eye, scene->GetCentre());
    EXPECT_LT(now, last);
    last = now;
  }
  for (int i = 0; i < 60; ++i) Frame();
  EXPECT_NEAR(Distance(hub.GetView().eye, scene->GetCentre()) / before, std::pow(1.015, -360), 1e-9);
}

TEST_F(NavigationTest, small_turns_of_a_fine_wheel_add_up) {
  blind = true;
  const double before = Distance(hub.GetView().eye, scene->GetCentre());
  for (int i = 0; i < 100; ++i) {
    navigation.OnWheel(3, HEIGHT - 3, 0.01);
    for (int frame = 0; frame < 20; ++frame) Frame();
  }
  const double notch = std::pow(1.015, -12);
  EXPECT_NEAR(Distance(hub.GetView().eye, scene->GetCentre()) / before, notch, 0.02);
}

TEST_F(NavigationTest, a_wheel_that_is_not_a_number_does_nothing) {
  const CameraParameters before = hub.GetView();
  navigation.OnWheel(3, 3, std::nan(""));
  navigation.OnWheel(3, 3, std::numeric_limits<double>::infinity());
  Frame();
  EXPECT_LT(Distance(hub.GetView().eye, before.eye), 1e-12);
}

// ---- harmless before there is anything ----

TEST(navigation_without_scene, input_before_the_first_frame_and_camera_is_harmless) {
  const zovview::TourClock clock;
  zovview::ViewerHub hub([] {});
  zovview::Navigation navigation(
      hub, {[](const Vector3&, const Vector3&, Vector3&) { return false; }, [](Korvane::CursorID) {}});
  navigation.OnMouseMove(5, 5);
  navigation.OnMouseUp(MouseButton::Left, 5, 5);
  for (const MouseButton button : {MouseButton::Left, MouseButton::Middle, MouseButton::Right}) {
    navigation.OnMouseDown(button, 5, 5);
    navigation.OnMouseMove(50, 70);
    navigation.PerformFrame();
    navigation.OnMouseUp(button, 60, 80);
  }
  navigation.OnWheel(5, 5, 3.0);
  for (int i = 0; i < 30; ++i) navigation.PerformFrame();
  EXPECT_TRUE(hub.GetView().IsFinite());
}

}  // namespace
