// The view in which a model is first shown, and what the hub is told of the model.
#include "zovhost/start_camera.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>

#include "zovhost/projection.h"
#include "zovhost/scene.h"
#include "zovhost/view_hub.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector2;
using Korvane::Vector3;

// A scene of one triangle that spans the given box.
std::unique_ptr<zovhost::Scene> MakeBox(const Vector3& low, const Vector3& high, const Vector3& up) {
  zovhost::SceneData data;
  zovhost::SceneMesh mesh;
  for (const Vector3& point : {low, high, Vector3(low.x, high.y, low.z)}) {
    for (int axis = 0; axis < 3; ++axis) mesh.positions.push_back(static_cast<float>(point[axis]));
    mesh.normals.insert(mesh.normals.end(), {0.0F, 0.0F, 1.0F});
  }
  mesh.indices = {0, 1, 2};
  data.meshes.push_back(mesh);
  data.materials.emplace_back();
  data.parts.emplace_back();
  data.upDirection = up;
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

struct Case {
  const char* name;
  Vector3 low;
  Vector3 high;
  Vector3 up;
  double width;
  double height;
};

class StartCameraTest : public testing::TestWithParam<Case> {
 protected:
  std::unique_ptr<zovhost::Scene> scene = MakeBox(GetParam().low, GetParam().high, GetParam().up);
  CameraParameters camera = zovhost::MakeStartCamera(*scene, GetParam().width, GetParam().height);

  double LargestOffset(const CameraParameters& view) const {
    const zovhost::Projection projection(view, {scene->GetCentre(), scene->GetRadius()});
    double largest = 0.0;
    for (int corner = 0; corner < 8; ++corner) {
      Vector2 pixel;
      EXPECT_TRUE(projection.WorldToPixel(scene->GetBoundingBox().GetCorner(corner), 2.0, 2.0, pixel));
      largest = std::max({largest, std::abs(pixel.x - 1.0), std::abs(pixel.y - 1.0)});
    }
    return largest;
  }
};

TEST_P(StartCameraTest, shows_the_model_whole_with_a_margin_and_not_tiny) {
  EXPECT_LT(LargestOffset(camera), 0.97);
  EXPECT_GT(LargestOffset(camera), 0.3);
}

TEST_P(StartCameraTest, the_model_stays_whole_when_it_is_turned_about_its_up_axis) {
  for (int step = 0; step < 36; ++step) {
    const double angle = step * Math::PI / 18.0;
    const auto turn = [&](const Vector3& v) {
      const Vector3 up = GetParam().up;
      const Vector3 along = up * up.Dot(v);
      return along + (v - along) * std::cos(angle) + up.Cross(v) * std::sin(angle);
    };
    CameraParameters turned = camera;
    turned.eye = camera.pivot + turn(camera.eye - camera.pivot);
    turned.centre = camera.pivot + turn(camera.centre - camera.pivot);
    turned.up = turn(camera.up);
    EXPECT_LT(LargestOffset(turned), 0.97) << angle;
  }
}

TEST_P(StartCameraTest, stands_upright_and_looks_from_the_front_and_above) {
  const Vector3 toEye = (camera.eye - camera.centre).Normalized();
  EXPECT_GT(camera.up.Dot(GetParam().up), 0.5);
  EXPECT_GT(toEye.Dot(GetParam().up), 0.2);
  EXPECT_GT(toEye.Dot(zovhost::ChooseFront(GetParam().up)), 0.5);
  EXPECT_NEAR(camera.up.Dot(toEye), 0.0, 1e-12);
}

TEST_P(StartCameraTest, both_projections_show_the_same_at_the_centre) {
  const double distance = (camera.centre - camera.eye).Length();
  EXPECT_NEAR(camera.ortho_height, 2.0 * std::tan(camera.top_fov * Math::DEG_TO_RAD) * distance,
              1e-12 * distance);
  EXPECT_NEAR(camera.ortho_width, 2.0 * std::tan(camera.right_fov * Math::DEG_TO_RAD) * distance,
              1e-12 * distance);
  EXPECT_NEAR(camera.ortho_width / camera.ortho_height, GetParam().width / GetParam().height, 1e-12);
}

// Where the corners of the model show, from 0 to 1 each way; y upward.
struct Shown {
  Vector2 low = Vector2(9, 9);
  Vector2 high = Vector2(-9, -9);
};
Shown FindShown(const zovhost::Scene& scene, const CameraParameters& camera) {
  const zovhost::Projection projection(camera, {scene.GetCentre(), scene.GetRadius()});
  Shown shown;
  for (int corner = 0; corner < 8; ++corner) {
    Vector2 pixel;
    EXPECT_TRUE(projection.WorldToPixel(scene.GetBoundingBox().GetCorner(corner), 1.0, 1.0, pixel));
    shown.low = Vector2(std::min(shown.low.x, pixel.x), std::min(shown.low.y, pixel.y));
    shown.high = Vector2(std::max(shown.high.x, pixel.x), std::max(shown.high.y, pixel.y));
  }
  return shown;
}

TEST_P(StartCameraTest, keeps_to_what_the_margins_leave_in_both_projections) {
  const Korvane::FitMargins margins = {0.4, 0.05, 0.1, 0.05};
  CameraParameters beside = zovhost::MakeStartCamera(*scene, GetParam().width, GetParam().height, margins);
  for (const bool orthographic : {false, true}) {
    if (orthographic) beside.projection_type = CameraParameters::ProjectionType::Orthographic;
    beside.projection_transition = orthographic ? 1.0 : 0.0;
    const Shown shown = FindShown(*scene, beside);
    EXPECT_GT(shown.low.x, 0.4 - 1e-9);
    EXPECT_LT(shown.high.x, 0.95 + 1e-9);
    EXPECT_GT(shown.low.y, 0.1 - 1e-9);
    EXPECT_LT(shown.high.y, 0.95 + 1e-9);
  }
  Vector2 middle;
  const zovhost::Projection projection(beside, {scene->GetCentre(), scene->GetRadius()});
  ASSERT_TRUE(projection.WorldToPixel(beside.pivot, 1.0, 1.0, middle));
  EXPECT_NEAR(middle.x, 0.675, 1e-9);
  EXPECT_NEAR(middle.y, 0.525, 1e-9);
  EXPECT_EQ(beside.pivot, scene->GetCentre());
}

TEST_P(StartCameraTest, margins_that_leave_nothing_count_as_none) {
  const CameraParameters other =
      zovhost::MakeStartCamera(*scene, GetParam().width, GetParam().height, {0.6, 0.5, 0.0, 0.0});
  EXPECT_EQ(other.eye, camera.eye);
  EXPECT_EQ(other.centre, camera.centre);
}

INSTANTIATE_TEST_SUITE_P(
    of, StartCameraTest,
    testing::Values(Case{"a_house_on_z", {0, 0, 0}, {12, 8, 7}, {0, 0, 1}, 1280, 800},
                    Case{"a_figure_on_y", {-1, 0, -1}, {1, 6, 1}, {0, 1, 0}, 1280, 800},
                    Case{"a_plate", {-50, -30, 0}, {50, 30, 0.1}, {0, 0, 1}, 1280, 800},
                    Case{"a_tall_window", {0, 0, 0}, {12, 8, 7}, {0, 0, 1}, 400, 900},
                    Case{"far_away", {1e5, 1e5, 0}, {1.001e5, 1.0005e5, 30}, {0, 0, 1}, 1280, 800},
                    Case{"on_x", {0, 0, 0}, {5, 3, 2}, {1, 0, 0}, 800, 800}),
    [](const testing::TestParamInfo<Case>& parameter) { return std::string(parameter.param.name); });

TEST(choose_front, is_as_the_axis_of_the_file_suggests) {
  EXPECT_EQ(zovhost::ChooseFront({0, 0, 1}), Vector3(0, -1, 0));
  EXPECT_EQ(zovhost::ChooseFront({0, 1, 0}), Vector3(0, 0, 1));
  EXPECT_EQ(zovhost::ChooseFront({1, 0, 0}), Vector3(0, 0, 1));
}

TEST(enter_scene, tells_the_hub_directions_bounds_and_home) {
  const auto scene = MakeBox({0, 0, 0}, {12, 8, 7}, {0, 0, 1});
  int requests = 0;
  zovhost::ViewHub hub([&requests] { ++requests; });
  hub.SetViewportSize(1280, 800);
  hub.SetGeometrySelection(1.0, {5, 5, 5});
  requests = 0;
  zovhost::EnterScene(hub, *scene);
  const Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  EXPECT_EQ(hub.GetWorldUpDirection(), Vector3(0, 0, 1));
  EXPECT_EQ(hub.GetWorldFrontDirection(), Vector3(0, -1, 0));
  EXPECT_EQ(parameters.world_up_direction, Vector3(0, 0, 1));
  EXPECT_EQ(parameters.global_bound_centre, Vector3(6, 4, 3.5));
  EXPECT_EQ(parameters.scene_bound_centre, Vector3(6, 4, 3.5));
  EXPECT_EQ(parameters.scene_bound_radius, scene->GetRadius());
  EXPECT_EQ(parameters.scene_bound_box.GetExtent(), Vector3(6, 4, 3.5));
  EXPECT_FALSE(hub.IsGeometrySelected());
  EXPECT_TRUE(hub.CheckCamerasEqual(&parameters.home_camera, &hub.GetView()));
  EXPECT_GT(requests, 0);
}

TEST(enter_scene, the_paces_of_the_hub_are_of_the_size_of_the_scene) {
  zovhost::ViewHub hub([] {});
  const Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  for (const double size : {0.001, 1.0, 1000.0}) {
    const auto scene = MakeBox({0, 0, 0}, Vector3(size), {0, 0, 1});
    zovhost::EnterScene(hub, *scene);
    EXPECT_DOUBLE_EQ(parameters.scene_scale, scene->GetRadius() * 0.1);
    EXPECT_DOUBLE_EQ(parameters.slide_multiplier, scene->GetRadius() * 0.1);
  }
}

TEST(viewport, a_change_of_size_there_and_back_returns_the_view) {
  const auto scene = MakeBox({0, 0, 0}, {12, 8, 7}, {0, 0, 1});
  zovhost::ViewHub hub([] {});
  hub.SetViewportSize(1280, 800);
  zovhost::EnterScene(hub, *scene);
  const CameraParameters before = hub.GetView();
  hub.SetViewportSize(300, 900);
  EXPECT_NEAR(hub.GetView().left_fov, before.top_fov, 1e-12);
  hub.SetViewportSize(0, 0);
  hub.SetViewportSize(1280, 800);
  EXPECT_NEAR(hub.GetView().right_fov, before.right_fov, 1e-12);
  EXPECT_NEAR(hub.GetView().ortho_width, before.ortho_width, 1e-9);
}

}  // namespace
