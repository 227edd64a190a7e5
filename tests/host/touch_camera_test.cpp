// The camera under fingers: what lies under them follows them.
#include "zovhost/touch_camera.h"

#include <gtest/gtest.h>

#include <cmath>

#include "korvane/application_parameters.h"
#include "korvane/math.h"
#include "support/random.h"
#include "zovhost/view_hub.h"

namespace {

using Korvane::ApplicationParameters;
using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::MoveWithFingers;
using zovhost::TouchMotion;

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;
const Vector3 UP(0, 0, 1);

class TouchCameraTest : public testing::TestWithParam<bool> {
 protected:
  TouchCameraTest() {
    parameters.viewport_width = WIDTH;
    parameters.viewport_height = HEIGHT;
    parameters.scene_bound_radius = 10.0;
    camera.eye = {3, -20, 12};
    camera.centre = {0, 0, 1};
    camera.up = UP;
    camera.pivot = {1, 1, 1};
    camera.SetHorizontalFOV(35.0);
    camera.SetVerticalFOV(std::atan(std::tan(35.0 * Math::DEG_TO_RAD) * HEIGHT / WIDTH) * Math::RAD_TO_DEG);
    camera.ortho_width = 16.0;
    camera.ortho_height = 12.0;
    if (GetParam()) camera.projection_type = CameraParameters::ProjectionType::Orthographic;
  }

  void Free() { parameters.preserve_orbit_up_direction = false; }
  void KeepUp() { parameters.preserve_orbit_up_direction = true; }

  Vector2 Project(const CameraParameters& view, const Vector3& point) const {
    zovhost::ViewHub hub([] {});
    hub.SetViewportSize(WIDTH, HEIGHT);
    hub.SetView(view);
    Vector2 pixel;
    EXPECT_TRUE(hub.GetProjection().WorldToPixel(point, WIDTH, HEIGHT, pixel));
    return pixel;
  }
  // At the depth of the pivot, where a pixel is.
  Vector3 Find(const Vector2& pixel) const {
    const Vector3 forward = (camera.centre - camera.eye).Normalized();
    const Vector3 right = forward.Cross(camera.up).Normalized();
    const Vector3 up = right.Cross(forward);
    const double depth = (camera.pivot - camera.eye).Dot(forward);
    const double across =
        GetParam() ? camera.ortho_width : 2.0 * depth * std::tan(camera.left_fov * Math::DEG_TO_RAD);
    const double unit = across / WIDTH;
    return camera.eye + forward * depth + right * ((pixel.x + 0.5 - WIDTH / 2.0) * unit) +
           up * ((pixel.y + 0.5 - HEIGHT / 2.0) * unit);
  }
  CameraParameters Apply(const TouchMotion& motion) const {
    return MoveWithFingers(camera, Find(motion.from), motion, parameters, UP);
  }

  ApplicationParameters parameters;
  CameraParameters camera;
};

INSTANTIATE_TEST_SUITE_P(each, TouchCameraTest, testing::Bool(),
                         [](const auto& parallel) { return parallel.param ? "parallel" : "perspective"; });

TEST_P(TouchCameraTest, fingers_that_do_nothing_leave_the_camera) {
  const CameraParameters moved = Apply({{100, 500}, {100, 500}, 1.0, 0.0});
  EXPECT_LT((moved.eye - camera.eye).Length(), 1e-12);
  EXPECT_LT((moved.centre - camera.centre).Length(), 1e-12);
}

TEST_P(TouchCameraTest, both_fingers_keep_what_was_under_them) {
  Free();
  Random random(21);
  for (int round = 0; round < 200; ++round) {
    const Vector2 first(random.Uniform(100.0, 700.0), random.Uniform(100.0, 500.0));
    const Vector2 second = first + Vector2(random.Uniform(20.0, 90.0), random.Uniform(20.0, 90.0));
    const Vector2 middle = (first + second) * 0.5;
    const double scale = random.Uniform(0.6, 1.6);
    const double turn = random.Uniform(-2.0, 2.0);
    const Vector2 to = middle + Vector2(random.Uniform(-50.0, 50.0), random.Uniform(-50.0, 50.0));
    const CameraParameters moved = Apply({middle, to, scale, turn});
    const double seen = std::copysign(std::max(0.0, std::abs(turn) - zovhost::TURN_DEAD_ZONE), turn);
    for (const Vector2& finger : {first, second}) {
      const Vector2 arm = (finger - middle) * scale;
      const Vector2 wanted = to + Vector2(arm.x * std::cos(seen) - arm.y * std::sin(seen),
                                          arm.x * std::sin(seen) + arm.y * std::cos(seen));
      EXPECT_LT((Project(moved, Find(finger)) - Project(camera, Find(finger)) - (wanted - finger)).Length(),
                1e-6);
    }
  }
}

TEST_P(TouchCameraTest, an_upright_view_stays_upright_and_orbits_about_what_is_under_the_fingers) {
  KeepUp();
  const TouchMotion motion{{300, 200}, {300, 200}, 1.0, 0.8};
  const CameraParameters moved = Apply(motion);
  const Vector3 anchor = Find(motion.from);
  const auto right = [](const CameraParameters& view) {
    return (view.centre - view.eye).Cross(view.up).Normalized();
  };
  EXPECT_NEAR(right(moved).Dot(UP), 0.0, 1e-12);
  EXPECT_NEAR(std::acos(right(moved).Dot(right(camera))), 0.8 - zovhost::TURN_DEAD_ZONE, 1e-9);
  EXPECT_NEAR(moved.eye.z, camera.eye.z, 1e-12);
  EXPECT_LT((Project(moved, anchor) - Project(camera, anchor)).Length(), 1e-6);
  EXPECT_NEAR((moved.eye - anchor).Length(), (camera.eye - anchor).Length(), 1e-9);
  // From above, what stands to the right of the anchor goes up in the picture.
  const Vector3 beside = anchor + right(camera);
  EXPECT_GT(Project(moved, beside).y, Project(camera, beside).y);
}

TEST_P(TouchCameraTest, a_small_turn_is_none) {
  Free();
  const CameraParameters moved = Apply({{300, 200}, {300, 200}, 1.0, zovhost::TURN_DEAD_ZONE});
  EXPECT_LT((moved.up - camera.up).Length(), 1e-12);
}

TEST_P(TouchCameraTest, an_enlargement_ends_before_the_surface_and_where_the_model_is_a_speck) {
  for (const double scale : {1e-300, 1e-9, 1e9, 1e300}) {
    const CameraParameters moved = Apply({{300, 200}, {300, 200}, scale, 0.0});
    EXPECT_TRUE(moved.IsFinite());
    EXPECT_GT((moved.centre - moved.eye).Length(), 1e-6);
    EXPECT_LT((moved.eye - camera.eye).Length(), 1000.0);
    const bool enlarges = scale > 1.0;
    EXPECT_EQ(moved.ortho_width < camera.ortho_width, enlarges);
  }
}

TEST_P(TouchCameraTest, a_camera_that_sees_nothing_stays_as_it_is) {
  camera.centre = camera.eye;
  const CameraParameters moved =
      MoveWithFingers(camera, {1, 1, 1}, {{300, 200}, {310, 200}, 1.1, 0.5}, parameters, UP);
  EXPECT_EQ(moved.eye, camera.eye);
  EXPECT_EQ(moved.up, camera.up);
}

}  // namespace
