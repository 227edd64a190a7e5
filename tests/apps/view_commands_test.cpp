// The commands of the viewer: where the camera arrives, and that it travels.
#include "commands/view_commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <utility>

#include "travelling_hub.h"

namespace {

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

TEST_F(ViewCommandsTest, each_key_and_each_name_stands_for_one_command) {
  std::set<std::pair<SDL_Keycode, unsigned>> keys;
  std::set<std::string_view> names;
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    EXPECT_TRUE(names.insert(command.name).second) << command.name;
    EXPECT_EQ(command.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), std::string_view::npos)
        << command.name;
    EXPECT_EQ(zovview::FindViewCommand(command.name), &command);
    EXPECT_EQ(*command.keyName == '\0', command.key == SDLK_UNKNOWN) << command.name;
    if (command.key == SDLK_UNKNOWN) continue;
    EXPECT_TRUE(keys.insert({command.key, command.modifiers}).second) << command.name;
    EXPECT_EQ(zovview::FindViewCommand(command.key, command.modifiers), &command);
  }
  EXPECT_EQ(zovview::FindViewCommand(SDLK_F12), nullptr);
  EXPECT_EQ(zovview::FindViewCommand(SDLK_UNKNOWN), nullptr);
  EXPECT_EQ(zovview::FindViewCommand("Orbit"), nullptr);
}

TEST_F(ViewCommandsTest, every_command_keeps_the_camera_usable_without_a_model) {
  zovhost::ViewHub empty([] {});
  zovview::Selection none(empty);
  zovview::ViewerViewManager idle(empty);
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    command.run({empty, none, idle, cube, mainDisc});
    for (int i = 0; i < 60; ++i) {
      clock.Advance();
      empty.PerformOperations();
    }
    EXPECT_TRUE(empty.GetView().IsFinite()) << command.name;
  }
}

TEST_F(ViewCommandsTest, a_setting_says_whether_it_is_on) {
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    if (command.place != ViewCommand::Place::Settings) continue;
    const bool before = command.isOn(target);
    command.run(target);
    Arrive();
    EXPECT_NE(command.isOn(target), before) << command.name;
    command.run(target);
    Arrive();
    EXPECT_EQ(command.isOn(target), before) << command.name;
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

// ---- keys ----

TEST_F(ViewCommandsTest, the_number_pad_lies_as_the_sides_do) {
  constexpr unsigned CONTROL = zovhost::WindowEvent::CONTROL;
  const struct {
    SDL_Keycode key;
    unsigned modifiers;
    const char* name;
  } rows[] = {{SDLK_KP_1, 0, "front"},         {SDLK_KP_1, CONTROL, "back"},
              {SDLK_KP_3, 0, "right"},         {SDLK_KP_3, CONTROL, "left"},
              {SDLK_KP_7, 0, "top"},           {SDLK_KP_7, CONTROL, "bottom"},
              {SDLK_KP_9, 0, "isometric"},     {SDLK_KP_5, 0, "toggle-projection"},
              {SDLK_KP_0, 0, "home"},          {SDLK_KP_PERIOD, 0, "fit-selection"},
              {SDLK_KP_MULTIPLY, 0, "fit-all"}};
  for (const auto& row : rows) {
    const ViewCommand* const found = zovview::FindViewCommand(row.key, row.modifiers);
    ASSERT_NE(found, nullptr) << row.name;
    EXPECT_EQ(found->name, row.name);
  }
  EXPECT_EQ(zovview::FindViewCommand(SDLK_KP_9, CONTROL), nullptr);
  EXPECT_EQ(zovview::FindViewCommand(SDLK_KP_1, zovhost::WindowEvent::ALT), nullptr);
  EXPECT_EQ(zovview::FindViewCommand(SDLK_KP_2), nullptr);
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

TEST_F(ViewCommandsTest, home_keeps_the_projection) {
  for (const bool orthographic : {false, true}) {
    StartAtHome(orthographic);
    zovview::ShowTop(target);
    Arrive();
    zovview::GoHome(target);
    Arrive();
    EXPECT_EQ(hub.GetView().IsOrthographic(), orthographic);
    EXPECT_LT((hub.GetView().eye - hub.GetHomeCamera().eye).Length(), 1e-9);
  }
}

TEST_F(ViewCommandsTest, with_reduced_motion_the_camera_is_there_in_the_next_frame) {
  StartAtHome(false);
  for (const char* const name : {"top", "isometric", "home", "fit-all", "toggle-projection"}) {
    const ViewCommand* const command = zovview::FindViewCommand(name);
    ASSERT_NE(command, nullptr) << name;
    hub.SetReducedMotion(false);
    const CameraParameters start = hub.GetView();
    command->run(target);
    Arrive();
    const CameraParameters expected = hub.GetView();
    hub.SetView(start);
    hub.SetReducedMotion(true);
    command->run(target);
    Frame();
    Frame();
    EXPECT_FALSE(hub.IsShotActive()) << name;
    EXPECT_TRUE(CameraCheckEqual(&hub.GetView(), &expected)) << name;
    EXPECT_EQ(hub.GetView().IsOrthographic(), expected.IsOrthographic()) << name;
  }
}

TEST_F(ViewCommandsTest, a_window_that_changes_its_shape_lets_a_travelling_camera_go_on_in_the_new_one) {
  zovview::FitAll(target);
  Frame();
  hub.SetViewportSize(WIDTH, HEIGHT / 2);
  EXPECT_TRUE(hub.IsShotActive());
  const double proportions = 2.0 * WIDTH / HEIGHT;
  const auto tangent = [](double degrees) { return std::tan(degrees * Korvane::Math::DEG_TO_RAD); };
  while (hub.IsShotActive()) {
    Frame();
    const CameraParameters& camera = hub.GetView();
    EXPECT_NEAR(tangent(camera.GetHorizontalFOV()) / tangent(camera.GetVerticalFOV()), proportions, 1e-6);
    EXPECT_NEAR(camera.ortho_width / camera.ortho_height, proportions, 1e-6);
  }
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

}  // namespace
