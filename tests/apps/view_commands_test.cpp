// The commands of the viewer: where the camera arrives, and that it travels.
#include "view_commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

#include "navigation.h"
#include "travelling_hub.h"

namespace {

using Korvane::Box2;
using Korvane::Box3;
using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovview::ViewCommand;

const std::array<Box3, 1> HOUSE = {Box3({30, -20, 4}, {6, 5, 4})};

class ViewCommandsTest : public apps_test::TravellingHub {
 protected:
  ViewCommandsTest() { Show(HOUSE); }

  Vector3 ViewDirection() const { return (hub.GetView().centre - hub.GetView().eye).Normalize(); }

  void StartAtHome(bool orthographic) {
    zovview::GoHome(target);
    Arrive();
    if (orthographic) zovview::ToggleProjection(target);
    Arrive();
  }

  struct Extent {
    Vector2 low = {1e9, 1e9};
    Vector2 high = {-1e9, -1e9};
  };
  // Of the model's box in the picture.
  Extent MeasurePicture() const {
    Extent extent;
    for (int corner = 0; corner < 8; ++corner) {
      const Vector2 pixel = Project(scene->GetBoundingBox().GetCorner(corner));
      extent.low = {std::min(extent.low.x, pixel.x), std::min(extent.low.y, pixel.y)};
      extent.high = {std::max(extent.high.x, pixel.x), std::max(extent.high.y, pixel.y)};
    }
    return extent;
  }

  // Touches two opposite sides of the frame, keeps within the other two.
  void ExpectFitted() const {
    const double tolerance = 1e-6;  // pixels; sums over distances of a hundred
    const Extent extent = MeasurePicture();
    const double width = hub.GetViewportWidth();
    const double height = hub.GetViewportHeight();
    EXPECT_GE(extent.low.x, -tolerance);
    EXPECT_GE(extent.low.y, -tolerance);
    EXPECT_LE(extent.high.x, width + tolerance);
    EXPECT_LE(extent.high.y, height + tolerance);
    const bool wide = extent.low.x < tolerance && extent.high.x > width - tolerance;
    const bool tall = extent.low.y < tolerance && extent.high.y > height - tolerance;
    EXPECT_TRUE(wide || tall) << extent.low.x << " " << extent.low.y << " " << extent.high.x << " "
                              << extent.high.y;
  }
};

// ---- the table ----

TEST_F(ViewCommandsTest, each_key_and_each_label_stands_for_one_command) {
  std::set<SDL_Keycode> keys;
  std::set<std::string> labels;
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    EXPECT_TRUE(keys.insert(command.key).second) << command.label;
    EXPECT_TRUE(labels.insert(command.label).second) << command.label;
    EXPECT_EQ(zovview::FindViewCommand(command.key), &command);
    EXPECT_EQ(command.isOn != nullptr, command.place == ViewCommand::Place::Settings) << command.label;
  }
  EXPECT_EQ(zovview::FindViewCommand(SDLK_F12), nullptr);
}

TEST_F(ViewCommandsTest, every_command_keeps_the_camera_usable_without_a_model) {
  zovview::ViewerHub empty([] {});
  zovview::Selection none(empty);
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    command.run({empty, none});
    for (int i = 0; i < 60; ++i) {
      clock.Advance();
      empty.PerformOperations();
    }
    EXPECT_TRUE(empty.GetView().IsFinite()) << command.label;
  }
}

TEST_F(ViewCommandsTest, a_setting_says_whether_it_is_on) {
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    if (command.place != ViewCommand::Place::Settings) continue;
    const bool before = command.isOn(target);
    command.run(target);
    Arrive();
    EXPECT_NE(command.isOn(target), before) << command.label;
    command.run(target);
    Arrive();
    EXPECT_EQ(command.isOn(target), before) << command.label;
  }
}

// ---- standard views ----

struct StandardView {
  const char* name;
  void (*show)(const zovview::ViewTarget& target);
  Vector3 toEye;  // the model stands on z and faces -y
  Vector3 up;     // the middle of the screen upward; from above and below that of the start view goes on
};

class StandardViewTest : public ViewCommandsTest, public testing::WithParamInterface<StandardView> {};

TEST_P(StandardViewTest, is_upright_and_fitted_in_both_projections) {
  for (const bool orthographic : {false, true}) {
    StartAtHome(orthographic);
    GetParam().show(target);
    Arrive();
    const Vector3 toEye = GetParam().toEye.Normalized();
    EXPECT_NEAR(ViewDirection().Dot(toEye), -1.0, 1e-12);
    EXPECT_NEAR(
        hub.GetView().up.Normalized().Dot((GetParam().up - toEye * GetParam().up.Dot(toEye)).Normalize()),
        1.0, 1e-12);
    EXPECT_EQ(hub.GetView().IsOrthographic(), orthographic);
    ExpectFitted();
  }
}

INSTANTIATE_TEST_SUITE_P(
    each, StandardViewTest,
    testing::Values(StandardView{"front", zovview::ShowFront, {0, -1, 0}, {0, 0, 1}},
                    StandardView{"back", zovview::ShowBack, {0, 1, 0}, {0, 0, 1}},
                    StandardView{"left", zovview::ShowLeft, {-1, 0, 0}, {0, 0, 1}},
                    StandardView{"right", zovview::ShowRight, {1, 0, 0}, {0, 0, 1}},
                    StandardView{"top", zovview::ShowTop, {0, 0, 1}, {0, 1, 0}},
                    StandardView{"bottom", zovview::ShowBottom, {0, 0, -1}, {0, -1, 0}},
                    StandardView{"isometric", zovview::ShowIsometric, {1, -1, 1}, {0, 0, 1}}),
    [](const testing::TestParamInfo<StandardView>& view) { return std::string(view.param.name); });

TEST_F(ViewCommandsTest, a_fit_keeps_the_direction_and_touches_the_frame_in_every_shape_of_window) {
  struct Shape {
    int width;
    int height;
  };
  for (const Shape& shape : {Shape{1280, 800}, Shape{300, 900}, Shape{1600, 200}, Shape{500, 500}}) {
    hub.SetViewportSize(shape.width, shape.height);
    for (const Vector3& toEye : {Vector3(1, 2, 3), Vector3(-4, 1, 0.5), Vector3(0.1, -3, -1)}) {
      CameraParameters camera = hub.GetView();
      camera.eye = camera.centre + toEye.Normalized() * 500.0;
      camera.up = {0, 0, 1};
      hub.SetView(camera);
      zovview::FitAll(target);
      Arrive();
      EXPECT_NEAR(ViewDirection().Dot(toEye.Normalized()), -1.0, 1e-12);
      ExpectFitted();
    }
  }
}

// ---- travelling ----

TEST_F(ViewCommandsTest, home_is_reached_by_travelling) {
  zovview::ShowTop(target);
  Arrive();
  const CameraParameters start = hub.GetView();
  zovview::GoHome(target);
  Frame();
  EXPECT_NEAR((hub.GetView().eye - start.eye).Length(), 0.0, 1e-9);
  for (int i = 0; i < 15; ++i) Frame();
  const CameraParameters home = hub.GetHomeCamera();
  EXPECT_GT((hub.GetView().eye - start.eye).Length(), 1.0);
  EXPECT_GT((hub.GetView().eye - home.eye).Length(), 1.0);
  Arrive();
  EXPECT_LT((hub.GetView().eye - home.eye).Length(), 1e-9);
}

TEST_F(ViewCommandsTest, a_drag_or_a_turn_of_the_wheel_takes_over_from_a_travelling_camera) {
  zovview::Navigation navigation(
      hub, {[](const Vector3&, const Vector3&, Vector3&) { return false; }, [](Korvane::CursorID) {}});
  zovview::ShowTop(target);
  navigation.OnMouseDown(zovhost::MouseButton::Left, 10, 10);
  EXPECT_FALSE(hub.IsShotActive());
  navigation.OnMouseUp(zovhost::MouseButton::Left, 10, 10);
  zovview::ShowTop(target);
  navigation.OnWheel(10, 10, 1.0);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(ViewCommandsTest, a_window_that_changes_its_shape_stops_a_travelling_camera) {
  zovview::FitAll(target);
  Frame();
  hub.SetViewportSize(WIDTH, HEIGHT / 2);
  EXPECT_FALSE(hub.IsShotActive());
}

// ---- the projection ----

TEST_F(ViewCommandsTest, the_projection_blends_both_ways) {
  for (const bool orthographic : {true, false}) {
    zovview::ToggleProjection(target);
    double previous = orthographic ? 0.0 : 1.0;
    int between = 0;
    for (int i = 0; i < 40; ++i) {
      Frame();
      const double blend = hub.GetView().projection_transition;
      EXPECT_GE(orthographic ? blend - previous : previous - blend, -1e-6);
      if (blend > 0.01 && blend < 0.99) ++between;
      previous = blend;
    }
    EXPECT_GT(between, 15);
    EXPECT_EQ(previous, orthographic ? 1.0 : 0.0);
    EXPECT_EQ(hub.GetView().IsOrthographic(), orthographic);
    Arrive();
  }
}

TEST_F(ViewCommandsTest, a_projection_that_is_turned_round_halfway_goes_back_from_there) {
  for (const int framesBetween : {4, 12, 20}) {
    zovview::ToggleProjection(target);
    for (int i = 0; i < framesBetween; ++i) Frame();
    const double halfway = hub.GetView().projection_transition;
    zovview::ToggleProjection(target);
    Frame();
    // The hub blends by 7 a second; a sixtieth takes 17 ms at most.
    EXPECT_NEAR(hub.GetView().projection_transition, halfway, 7.0 * 0.017 + 1e-9);
    Arrive();
    EXPECT_EQ(hub.GetView().projection_transition, 0.0);
    EXPECT_FALSE(hub.GetView().IsOrthographic());
  }
}

// ---- to a place of the view ----

TEST_F(ViewCommandsTest, a_point_is_brought_to_the_middle) {
  for (const bool orthographic : {false, true}) {
    StartAtHome(orthographic);
    zovhost::Scene::Hit hit;
    ASSERT_TRUE(zovview::FindHit(hub, *scene, WIDTH / 2 + 90, HEIGHT / 2 - 60, hit));
    ASSERT_TRUE(zovview::CentreOnPixel(target, WIDTH / 2 + 90, HEIGHT / 2 - 60));
    Arrive();
    EXPECT_NEAR(Project(hit.point).x, WIDTH / 2.0, 1e-6);
    EXPECT_NEAR(Project(hit.point).y, HEIGHT / 2.0, 1e-6);
  }
}

TEST_F(ViewCommandsTest, beside_the_model_there_is_no_point_to_bring_to_the_middle) {
  EXPECT_FALSE(zovview::CentreOnPixel(target, 2, 2));
  EXPECT_FALSE(hub.IsShotActive());
}

// Two opposite sides of the rectangle come to lie on the frame, at the depth of what it shows in its middle.
TEST_F(ViewCommandsTest, a_rectangle_comes_to_fill_the_view) {
  const Box2 wide({WIDTH * 0.55, HEIGHT * 0.45}, {100, 20});
  const Box2 tall({WIDTH * 0.48, HEIGHT * 0.52}, {20, 60});
  for (const Box2& rectangle : {wide, tall}) {
    for (const bool orthographic : {false, true}) {
      StartAtHome(orthographic);
      zovhost::Scene::Hit hit;
      ASSERT_TRUE(zovview::FindHit(hub, *scene, static_cast<int>(rectangle.center.x),
                                   static_cast<int>(rectangle.center.y), hit));
      const zovhost::Projection before = hub.GetProjection();
      const double depth = (hit.point - before.GetFrame().eye).Dot(before.GetFrame().forward);
      Vector3 low;
      Vector3 high;
      ASSERT_TRUE(before.PixelToWorld(rectangle.Min(), depth, WIDTH, HEIGHT, low));
      ASSERT_TRUE(before.PixelToWorld(rectangle.Max(), depth, WIDTH, HEIGHT, high));

      ASSERT_TRUE(zovview::ZoomIntoRectangle(target, rectangle));
      Arrive();
      // 100 by 20 in 1280 by 800 grows 6.4 times, to the whole width; 20 by 60 6.67 times, to the height.
      const bool fillsWidth = rectangle.halfExtent.x == 100;
      const Vector2 half = fillsWidth ? Vector2(640, 128) : Vector2(400.0 / 3.0, 400);
      EXPECT_NEAR(Project(low).x, 640 - half.x, 1e-6);
      EXPECT_NEAR(Project(low).y, 400 - half.y, 1e-6);
      EXPECT_NEAR(Project(high).x, 640 + half.x, 1e-6);
      EXPECT_NEAR(Project(high).y, 400 + half.y, 1e-6);
    }
  }
}

TEST_F(ViewCommandsTest, a_rectangle_beside_the_model_is_flown_into_at_the_depth_of_the_centre) {
  const double before = (hub.GetView().centre - hub.GetView().eye).Length();
  ASSERT_TRUE(zovview::ZoomIntoRectangle(target, Box2({60, 40}, {32, 20})));
  Arrive();
  // A twentieth of the view: a twentieth of the distance.
  EXPECT_NEAR((hub.GetView().centre - hub.GetView().eye).Length(), before / 20.0, 1e-9 * before);
}

TEST_F(ViewCommandsTest, a_rectangle_without_size_is_none) {
  const double nan = std::nan("");
  for (const Vector2& half : {Vector2(0, 10), Vector2(10, 0), Vector2(-5, 5), Vector2(nan, 5)}) {
    EXPECT_FALSE(zovview::ZoomIntoRectangle(target, Box2({640, 400}, half)));
  }
  EXPECT_FALSE(zovview::ZoomIntoRectangle(target, Box2({nan, 400}, {5, 5})));
  EXPECT_FALSE(hub.IsShotActive());
}

}  // namespace
