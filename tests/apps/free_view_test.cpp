#include "views/free_view.h"

#include <gtest/gtest.h>

#include <cmath>

#include "korvane/math.h"
#include "zovhost/projection.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::Projection;
using zovview::FreeView;

constexpr double WIDTH = 1280.0;
constexpr double HEIGHT = 800.0;

CameraParameters MakeCamera(bool orthographic) {
  CameraParameters camera;
  camera.eye = {3.0, -20.0, 5.0};
  camera.centre = {0.0, 0.0, 1.0};
  camera.up = {0.0, 0.0, 1.0};
  camera.SetVerticalFOV(20.0);
  camera.SetHorizontalFOV(std::atan(std::tan(20.0 * Korvane::Math::DEG_TO_RAD) * WIDTH / HEIGHT) *
                          Korvane::Math::RAD_TO_DEG);
  camera.ortho_height = 10.0;
  camera.ortho_width = camera.ortho_height * WIDTH / HEIGHT;
  if (orthographic) camera.projection_type = CameraParameters::ProjectionType::Orthographic;
  return camera;
}

// The point at the depth of the centre that a place of a view shows, both from 0 to 1.
Vector3 PointAt(const CameraParameters& camera, double x, double y) {
  const Projection projection(camera, 0.1, 100.0);
  Vector3 point;
  EXPECT_TRUE(projection.PixelToWorld({x, y}, projection.GetFrame().distance, 1.0, 1.0, point));
  return point;
}

Vector2 PlaceOf(const CameraParameters& camera, const Vector3& point) {
  Vector2 place;
  EXPECT_TRUE(Projection(camera, 0.1, 100.0).WorldToPixel(point, 1.0, 1.0, place));
  return place;
}

class FreeViewTest : public testing::TestWithParam<bool> {
 protected:
  const CameraParameters camera = MakeCamera(GetParam());
};

TEST_P(FreeViewTest, what_no_panel_covers_is_in_the_middle_of_the_picture) {
  const FreeView part = {WIDTH / HEIGHT, {0.25, 0.05, 0.05, 0.05}};  // a fifth is covered
  for (const double proportions : {1.6, 1.0, 3.0}) {
    const CameraParameters framed = part.Frame(camera, proportions);
    const Vector2 middle = PlaceOf(framed, PointAt(camera, 0.6, 0.5));
    EXPECT_NEAR(middle.x, 0.5, 1e-9);
    EXPECT_NEAR(middle.y, 0.5, 1e-9);
    for (const double x : {0.2, 1.0}) {
      for (const double y : {0.0, 1.0}) {
        const Vector2 corner = PlaceOf(framed, PointAt(camera, x, y));
        EXPECT_LE(std::abs(corner.x - 0.5), 0.5 + 1e-9);
        EXPECT_LE(std::abs(corner.y - 0.5), 0.5 + 1e-9);
      }
    }
    const Vector2 corner = PlaceOf(framed, PointAt(camera, 1.0, 1.0));
    EXPECT_NEAR(std::max(corner.x, corner.y), 1.0, 1e-9) << "it is no smaller than it has to be";
  }
}

TEST_P(FreeViewTest, where_nothing_is_covered_a_picture_of_the_same_proportions_shows_the_view) {
  const FreeView part = {WIDTH / HEIGHT, {0.05, 0.05, 0.05, 0.05}};
  const CameraParameters framed = part.Frame(camera, WIDTH / HEIGHT);
  EXPECT_NEAR(framed.left_fov, camera.left_fov, 1e-9);
  EXPECT_NEAR(framed.top_fov, camera.top_fov, 1e-9);
  EXPECT_NEAR(framed.ortho_width, camera.ortho_width, 1e-9);
  EXPECT_NEAR(framed.ortho_height, camera.ortho_height, 1e-9);
}

// As a renderer makes it for a square picture.
TEST_P(FreeViewTest, a_camera_that_was_widened_gives_the_same_picture) {
  const FreeView part = {WIDTH / HEIGHT, {0.25, 0.05, 0.05, 0.05}};
  const CameraParameters own = part.Frame(camera, 1.0);
  const CameraParameters widened = part.Frame(zovhost::WidenToViewport(camera, 100.0, 100.0), 1.0);
  EXPECT_NEAR(widened.left_fov, own.left_fov, 1e-9);
  EXPECT_NEAR(widened.right_fov, own.right_fov, 1e-9);
  EXPECT_NEAR(widened.top_fov, own.top_fov, 1e-9);
  EXPECT_NEAR(widened.ortho_width, own.ortho_width, 1e-9);
}

TEST_P(FreeViewTest, what_makes_no_sense_leaves_the_camera_as_it_is) {
  for (const double wrong : {0.0, -1.0, std::nan("")}) {
    EXPECT_EQ((FreeView{wrong, {}}.Frame(camera, 1.6)).left_fov, camera.left_fov);
    EXPECT_EQ((FreeView{1.6, {}}.Frame(camera, wrong)).left_fov, camera.left_fov);
  }
  const FreeView part = {1.6, {0.9, 0.9, 0.0, 0.0}};
  EXPECT_NEAR(part.Frame(camera, 1.6).left_fov, camera.left_fov, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Projections, FreeViewTest, testing::Bool(),
                         [](const auto& shown) { return shown.param ? "orthographic" : "perspective"; });

}  // namespace
