#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/cameras.h"
#include "support/random.h"
#include "zovhost/projection.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::Matrix4;
using zovhost::Projection;
using zovhost::SceneSphere;

constexpr double width = 800.0;
constexpr double height = 600.0;

// The four clip coordinates of a point.
std::array<double, 4> ToClip(const Matrix4& m, const Vector3& p) {
  std::array<double, 4> clip{};
  for (std::size_t row = 0; row < 4; ++row) {
    clip[row] = m[row] * p.x + m[4 + row] * p.y + m[8 + row] * p.z + m[12 + row];
  }
  return clip;
}

CameraParameters AlongZ() { return LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}); }

TEST(Projection, each_half_angle_reaches_its_own_edge_of_the_viewport) {
  const CameraParameters camera = WithAsymmetricFrustum(AlongZ(), 10.0, 40.0, 30.0, 20.0);
  const Projection projection(camera, SceneSphere{});
  const auto tangent = [](double degrees) { return std::tan(degrees * Korvane::Math::DEG_TO_RAD); };
  Vector2 pixel;
  ASSERT_TRUE(projection.WorldToPixel({-10.0 * tangent(10.0), 0, 0}, width, height, pixel));
  EXPECT_NEAR(pixel.x, 0.0, 1e-9);
  ASSERT_TRUE(projection.WorldToPixel({10.0 * tangent(40.0), 0, 0}, width, height, pixel));
  EXPECT_NEAR(pixel.x, width, 1e-9);
  ASSERT_TRUE(projection.WorldToPixel({0, 10.0 * tangent(30.0), 0}, width, height, pixel));
  EXPECT_NEAR(pixel.y, height, 1e-9);
  ASSERT_TRUE(projection.WorldToPixel({0, -10.0 * tangent(20.0), 0}, width, height, pixel));
  EXPECT_NEAR(pixel.y, 0.0, 1e-9);
}

TEST(Projection, a_negative_half_angle_puts_that_side_beyond_the_axis) {
  const CameraParameters camera = WithAsymmetricFrustum(AlongZ(), -10.0, 40.0, 30.0, 30.0);
  Vector2 pixel;
  ASSERT_TRUE(Projection(camera, SceneSphere{}).WorldToPixel({0, 0, 0}, width, height, pixel));
  EXPECT_LT(pixel.x, 0.0);
}

TEST(Projection, orthographic_shows_its_width_and_height) {
  const CameraParameters camera = WithOrthographic(AlongZ(), 8.0, 6.0);
  const Projection projection(camera, SceneSphere{});
  Vector2 pixel;
  for (const double depth : {-5.0, 0.0, 7.0}) {
    ASSERT_TRUE(projection.WorldToPixel({4.0, -3.0, depth}, width, height, pixel));
    EXPECT_NEAR(pixel.x, width, 1e-9);
    EXPECT_NEAR(pixel.y, 0.0, 1e-9);
  }
}

TEST(Projection, an_orthographic_view_is_split_as_its_half_angles_are) {
  const CameraParameters camera =
      WithOrthographic(WithAsymmetricFrustum(AlongZ(), 0.0, 45.0, 45.0, 45.0), 8.0, 6.0);
  Vector2 pixel;
  ASSERT_TRUE(Projection(camera, SceneSphere{}).WorldToPixel({0, 0, 0}, width, height, pixel));
  EXPECT_NEAR(pixel.x, 0.0, 1e-9);
  EXPECT_NEAR(pixel.y, height / 2.0, 1e-9);
}

TEST(Projection, the_matrices_agree_with_the_pixels_for_any_camera) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random);
    if (random.Coin()) camera.projection_transition = random.Uniform(0.0, 1.0);
    const Projection projection(camera, SceneSphere{random.Point(10.0), random.Uniform(0.1, 100.0)});
    const Vector3 point = camera.centre + random.Point(0.2 * projection.GetFrame().distance);
    Vector2 pixel;
    ASSERT_TRUE(projection.WorldToPixel(point, width, height, pixel));
    const auto clip = ToClip(projection.GetViewProjection(), point);
    EXPECT_NEAR((clip[0] / clip[3] + 1.0) * width / 2.0, pixel.x, 1e-6);
    EXPECT_NEAR((clip[1] / clip[3] + 1.0) * height / 2.0, pixel.y, 1e-6);
  }
}

TEST(Projection, a_pixel_leads_back_to_the_point_it_shows) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random);
    if (random.Coin()) camera.projection_transition = random.Uniform(0.0, 1.0);
    const Projection projection(camera, SceneSphere{{0, 0, 0}, 50.0});
    const double scale = projection.GetFrame().distance;
    const Vector3 point = camera.centre + random.Point(0.2 * scale);
    const double depth = (point - camera.eye).Dot(projection.GetFrame().forward);
    Vector2 pixel;
    Vector3 back;
    ASSERT_TRUE(projection.WorldToPixel(point, width, height, pixel));
    ASSERT_TRUE(projection.PixelToWorld(pixel, depth, width, height, back));
    EXPECT_LT((back - point).Length(), 1e-9 * (scale + 100.0));

    Vector3 origin;
    Vector3 direction;
    ASSERT_TRUE(projection.PixelToRay(pixel, width, height, origin, direction));
    EXPECT_NEAR(direction.Length(), 1.0, 1e-12);
    EXPECT_LT((point - origin).Cross(direction).Length(), 1e-7 * (scale + 100.0));
  }
}

TEST(Projection, its_rays_are_those_of_the_library_in_perspective) {
  Random random;
  for (int i = 0; i < 1000; ++i) {
    const CameraParameters camera = RandomCamera(random, Frustum::Asymmetric);
    const Vector2 pixel(random.Uniform(0.0, width), random.Uniform(0.0, height));
    Vector3 origin;
    Vector3 direction;
    Vector3 expectedOrigin;
    Vector3 expectedDirection;
    // The library takes the camera's up as it is; the projection makes it perpendicular.
    CameraParameters straight = camera;
    straight.up = zovhost::MakeCameraFrame(camera).up;
    ASSERT_TRUE(Projection(straight, SceneSphere{}).PixelToRay(pixel, width, height, origin, direction));
    ASSERT_TRUE(
        Korvane::GetScreenRay(pixel.x, pixel.y, width, height, straight, expectedOrigin, expectedDirection));
    EXPECT_LT((expectedDirection.Normalized() - direction).Length(), 1e-9);
    EXPECT_LT((origin - expectedOrigin).Cross(direction).Length(), 1e-9 * (1.0 + origin.Length()));
  }
}

TEST(Projection, a_blend_keeps_the_size_of_what_stands_at_the_centre) {
  CameraParameters camera = WithSymmetricFrustum(AlongZ(), 30.0, 25.0);
  camera.ortho_width = 20.0 * std::tan(30.0 * Korvane::Math::DEG_TO_RAD);
  camera.ortho_height = 20.0 * std::tan(25.0 * Korvane::Math::DEG_TO_RAD);
  Vector2 still;
  ASSERT_TRUE(Projection(camera, SceneSphere{}).WorldToPixel({2.0, 1.0, 0.0}, width, height, still));
  double nearerBefore = 1e9;
  for (int step = 0; step <= 100; ++step) {
    camera.projection_transition = step / 100.0;
    const Projection projection(camera, SceneSphere{});
    Vector2 pixel;
    ASSERT_TRUE(projection.WorldToPixel({2.0, 1.0, 0.0}, width, height, pixel));
    EXPECT_NEAR(pixel.x, still.x, 1e-9);
    EXPECT_NEAR(pixel.y, still.y, 1e-9);
    // What stands nearer shrinks steadily to the same scale.
    ASSERT_TRUE(projection.WorldToPixel({2.0, 1.0, 4.0}, width, height, pixel));
    EXPECT_LT(pixel.x, nearerBefore);
    nearerBefore = pixel.x;
  }
  EXPECT_NEAR(nearerBefore, still.x, 1e-9);
}

TEST(Projection, the_ends_of_a_blend_are_the_two_projections) {
  CameraParameters camera = AlongZ();
  const auto matrix = [&camera](CameraParameters::ProjectionType type, double transition) {
    camera.projection_type = type;
    camera.projection_transition = transition;
    return Projection(camera, SceneSphere{}).GetViewProjection();
  };
  using Type = CameraParameters::ProjectionType;
  EXPECT_EQ(matrix(Type::Orthographic, 0.0), matrix(Type::Perspective, -1.0));
  EXPECT_EQ(matrix(Type::Perspective, 1.0), matrix(Type::Orthographic, -1.0));
  EXPECT_EQ(matrix(Type::Perspective, 7.0), matrix(Type::Orthographic, -1.0));
}

TEST(Projection, nothing_of_the_scene_before_the_eye_is_clipped) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters camera = RandomCamera(random);
    const SceneSphere sphere{random.Point(50.0), random.Uniform(1.0, 80.0)};
    const Projection projection(camera, sphere);
    const Vector3 point = sphere.centre + random.Direction() * (sphere.radius * random.Uniform(0.0, 1.0));
    const double depth = (point - camera.eye).Dot(projection.GetFrame().forward);
    // A perspective near plane stays clear of the eye, but nearer than any point that a user looks at.
    const double gap = 0.1 * projection.GetFrame().distance;
    if (!camera.IsOrthographic() && depth < gap) continue;
    const auto clip = ToClip(projection.GetViewProjection(), point);
    EXPECT_LE(std::abs(clip[2]), std::abs(clip[3]) * (1.0 + 1e-9));
  }
}

TEST(Projection, an_orthographic_view_shows_what_lies_behind_its_eye) {
  const CameraParameters camera = WithOrthographic(AlongZ(), 8.0, 6.0);
  const Projection projection(camera, SceneSphere{{0, 0, 0}, 100.0});
  const auto clip = ToClip(projection.GetViewProjection(), {0, 0, 99.0});
  EXPECT_GT(clip[2], -clip[3]);
  Vector3 origin;
  Vector3 direction;
  ASSERT_TRUE(projection.PixelToRay({400, 300}, width, height, origin, direction));
  EXPECT_GT(origin.z, 100.0);
}

TEST(Projection, no_camera_makes_a_matrix_that_is_not_a_number) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = random.Coin() ? ExtremeCamera(random) : BrokenCamera(random);
    const double radii[] = {0.0, -1.0, 1e300, std::nan(""), 1.0};
    const Projection projection(camera, SceneSphere{random.Point(1e6), random.OneOf(radii)});
    for (const float value : zovhost::ToFloat(projection.GetViewProjection())) {
      ASSERT_TRUE(std::isfinite(value));
    }
    EXPECT_LT(projection.GetNear(), projection.GetFar());
  }
}

TEST(Projection, the_default_camera_looks_down_the_z_axis) {
  const zovhost::CameraFrame frame = zovhost::MakeCameraFrame(CameraParameters{});
  EXPECT_EQ(frame.forward, Vector3(0, 0, -1));
  EXPECT_NEAR(frame.right.Dot(frame.up), 0.0, 1e-15);
  EXPECT_GT(frame.distance, 0.0);
}

TEST(Projection, a_viewport_without_size_answers_nothing) {
  const Projection projection(AlongZ(), SceneSphere{});
  Vector2 pixel(1.0, 2.0);
  Vector3 origin;
  Vector3 direction;
  EXPECT_FALSE(projection.WorldToPixel({0, 0, 0}, 0.0, height, pixel));
  EXPECT_FALSE(projection.WorldToPixel({0, 0, 0}, width, -1.0, pixel));
  EXPECT_FALSE(projection.WorldToPixel({0, 0, 20}, width, height, pixel));  // behind the eye
  EXPECT_FALSE(projection.WorldToPixel({std::nan(""), 0, 0}, width, height, pixel));
  EXPECT_FALSE(projection.PixelToRay({0, 0}, width, 0.0, origin, direction));
  EXPECT_EQ(pixel, Vector2(1.0, 2.0));
}

TEST(Projection, widening_keeps_all_that_was_seen_and_stretches_nothing) {
  Random random;
  for (int i = 0; i < 1000; ++i) {
    const CameraParameters camera = RandomCamera(random);
    const double wide = random.Uniform(50.0, 500.0);
    const double high = random.Uniform(50.0, 500.0);
    const CameraParameters widened = zovhost::WidenToViewport(camera, wide, high);
    EXPECT_GE(widened.left_fov + 1e-9, camera.left_fov);
    EXPECT_GE(widened.top_fov + 1e-9, camera.top_fov);
    const Projection projection(widened, SceneSphere{});
    const Matrix4& p = projection.GetProjection();
    EXPECT_NEAR(p[0] * wide, p[5] * high, 1e-9 * std::abs(p[0] * wide));
  }
}

}  // namespace
