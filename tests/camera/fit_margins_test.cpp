// Fits that leave room beside what they fit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "camera/oracle.h"
#include "korvane/camera_operations.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;
using oracle::From;
using oracle::Vec;

namespace {

constexpr double CLOSE = 1e-9;  // of the view's size

FitMargins RandomMargins(Random& random) {
  return {random.Uniform(0, 0.45), random.Uniform(0, 0.45), random.Uniform(0, 0.45), random.Uniform(0, 0.45)};
}

// A symmetric view of some aspect, as a window has it.
CameraParameters RandomWindowCamera(Random& random, bool orthographic) {
  CameraParameters camera = RandomCamera(random, Frustum::Symmetric);
  const double aspect = random.Uniform(0.5, 2.0);
  const double tangent = random.Uniform(0.3, 1.2);
  camera.SetHorizontalFOV(std::atan(tangent * aspect) * Math::RAD_TO_DEG);
  camera.SetVerticalFOV(std::atan(tangent) * Math::RAD_TO_DEG);
  camera.ortho_height = random.Magnitude(0.1, 100);
  camera.ortho_width = camera.ortho_height * aspect;
  camera.perspective_with_ortho = false;
  camera.projection_type = orthographic ? CameraParameters::ProjectionType::Orthographic
                                        : CameraParameters::ProjectionType::Perspective;
  return camera;
}

struct Picture {
  Eigen::Vector2d low{1e9, 1e9};
  Eigen::Vector2d high{-1e9, -1e9};

  void Include(const Eigen::Vector2d& place) {
    low = low.cwiseMin(place);
    high = high.cwiseMax(place);
  }
};

// Where a box stands in the picture; 0 to 1 from the bottom left.
Picture Show(const CameraParameters& camera, Box3 box, const Vector3& centre) {
  box.SetCenter(centre);
  Picture picture;
  for (int corner = 0; corner < 8; ++corner) {
    picture.Include(oracle::Project(camera, From(box.GetCorner(corner))));
  }
  return picture;
}

void ExpectFitted(const Picture& picture, const FitMargins& margins) {
  const Eigen::Vector2d low(margins.left, margins.bottom);
  const Eigen::Vector2d high(1.0 - margins.right, 1.0 - margins.top);
  const Eigen::Vector2d room = (picture.low - low).cwiseMin(high - picture.high);
  const Eigen::Vector2d widest = (picture.low - low).cwiseMax(high - picture.high);
  ASSERT_GT(room.minCoeff(), -CLOSE);
  ASSERT_LT(widest.minCoeff(), CLOSE) << "touches neither pair of sides";
}

class FitMarginsTest : public ::testing::Test {
 protected:
  ManualPlatform clock;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
};

}  // namespace

TEST_F(FitMarginsTest, a_box_stays_within_them_and_touches_them_on_one_pair_of_sides) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomWindowCamera(random, random.Coin());
    const FitMargins margins = RandomMargins(random);
    ASSERT_TRUE(hub.SetFitMargins(margins));
    const Box3 box({0, 0, 0}, {random.Magnitude(1, 30), random.Magnitude(1, 30), random.Magnitude(1, 30)});
    const Vector3 centre = random.Point(100);
    ASSERT_TRUE(hub.FitBoundingBoxToView(centre, box, random.Direction(), random.Direction(), camera));
    ASSERT_NO_FATAL_FAILURE(ExpectFitted(Show(camera, box, centre), margins)) << i;
  }
}

TEST_F(FitMarginsTest,
       an_orthographic_sphere_stands_in_the_middle_of_what_is_free_and_fills_its_narrower_way) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomWindowCamera(random, true);
    const FitMargins margins = RandomMargins(random);
    ASSERT_TRUE(hub.SetFitMargins(margins));
    const Vector3 centre = random.Point(100);
    const double radius = random.Magnitude(0.1, 30);
    const double aspect = camera.ortho_width / camera.ortho_height;
    ASSERT_TRUE(hub.FitBoundingSphereToView(centre, radius, random.Direction(), random.Direction(), camera));
    const Eigen::Vector2d middle = oracle::Project(camera, From(centre));
    ASSERT_NEAR(middle.x(), (margins.left + 1.0 - margins.right) / 2.0, CLOSE);
    ASSERT_NEAR(middle.y(), (margins.bottom + 1.0 - margins.top) / 2.0, CLOSE);
    const double wide = camera.ortho_width * (1.0 - margins.left - margins.right);
    const double high = camera.ortho_height * (1.0 - margins.bottom - margins.top);
    ASSERT_NEAR(std::min(wide, high), 2.0 * radius, CLOSE * radius);
    ASSERT_NEAR(camera.ortho_width / camera.ortho_height, aspect, CLOSE * aspect);
  }
}

// The planes of the free view, each through the eye, touch the ball or stay away from it.
TEST_F(FitMarginsTest, a_sphere_in_perspective_touches_what_is_free_and_stays_within) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomWindowCamera(random, false);
    const FitMargins margins = RandomMargins(random);
    ASSERT_TRUE(hub.SetFitMargins(margins));
    const Vector3 centre = random.Point(100);
    const double radius = random.Magnitude(0.1, 30);
    const Vector3 direction = random.Direction();
    // A sphere is fitted with the frame of the up as it is given, which the camera keeps.
    ASSERT_TRUE(hub.FitBoundingSphereToView(centre, radius, direction, camera.up, camera));
    const Vec forward = From(direction).normalized();
    const Vec right = forward.cross(From(camera.up)).normalized();
    const Vec up = right.cross(forward);
    const Vec offset = From(centre) - From(camera.eye);
    const double wide = 2.0 * std::tan(camera.left_fov * Math::DEG_TO_RAD);
    const double high = 2.0 * std::tan(camera.top_fov * Math::DEG_TO_RAD);
    const auto roomBeside = [&](const Vec& axis, double low, double far) {
      const double position = offset.dot(axis);
      const double depth = offset.dot(forward);
      const double below = (position - low * depth) / std::hypot(1.0, low);
      const double above = (far * depth - position) / std::hypot(1.0, far);
      return std::min(below, above) - radius;
    };
    const double across = roomBeside(right, wide * (margins.left - 0.5), wide * (0.5 - margins.right));
    const double upward = roomBeside(up, high * (margins.bottom - 0.5), high * (0.5 - margins.top));
    const double slack = 1e-8 * offset.norm();
    ASSERT_GT(std::min(across, upward), -slack) << i;
    ASSERT_LT(std::min(across, upward), slack) << i;
  }
}

TEST_F(FitMarginsTest, the_camera_keeps_its_half_angles_and_turns_about_the_middle_of_what_was_fitted) {
  Random random;
  for (int i = 0; i < 1000; ++i) {
    CameraParameters camera = RandomWindowCamera(random, random.Coin());
    const CameraParameters before = camera;
    ASSERT_TRUE(hub.SetFitMargins(RandomMargins(random)));
    const Vector3 centre = random.Point(100);
    const bool box = random.Coin();
    const bool fitted =
        box ? hub.FitBoundingBoxToView(centre, Box3(), random.Direction(), random.Direction(), camera)
            : hub.FitBoundingSphereToView(centre, 2.0, random.Direction(), random.Direction(), camera);
    ASSERT_TRUE(fitted);
    ASSERT_EQ(camera.left_fov, before.left_fov);
    ASSERT_EQ(camera.right_fov, before.right_fov);
    ASSERT_EQ(camera.bottom_fov, before.bottom_fov);
    ASSERT_EQ(camera.top_fov, before.top_fov);
    ASSERT_EQ(camera.pivot, centre);
  }
}

TEST_F(FitMarginsTest, without_any_a_fit_is_the_same_to_the_last_bit_as_before_there_were_some) {
  Random random;
  MemoryHub plain(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (int i = 0; i < 1000; ++i) {
    CameraParameters camera = RandomCamera(random);
    CameraParameters other = camera;
    const Vector3 direction = random.Direction();
    ASSERT_TRUE(hub.SetFitMargins({0.1, 0.2, 0.3, 0.4}));
    ASSERT_TRUE(hub.SetFitMargins({}));
    ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), direction, {0, 1, 0}, camera));
    ASSERT_TRUE(plain.FitBoundingBoxToView({1, 2, 3}, Box3(), direction, {0, 1, 0}, other));
    ASSERT_TRUE(SameBits(camera, other));
  }
}

TEST_F(FitMarginsTest, moves_and_shots_that_fit_arrive_within_them) {
  const Box3 box({0, 0, 0}, {3, 2, 1});
  const Vector3 centre(5, 6, 7);
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.global_bound_geometry = ApplicationParameters::BoundGeometryType::Box;
  p.global_bound_box = box;
  p.global_bound_centre = centre;
  hub.SetSceneBoundingBox(box, centre);
  hub.SetUCSBoundingBox(box, centre);
  hub.view.SetHorizontalFOV(25);
  hub.view.SetVerticalFOV(25);
  ASSERT_TRUE(hub.SetFitMargins({0.3, 0.05, 0.05, 0.05}));
  const auto expectWithin = [&] {
    while (hub.PerformOperations()) clock.Advance(100);
    ExpectFitted(Show(hub.view, box, centre), hub.GetFitMargins());
  };
  ASSERT_TRUE(hub.FitAllToView());
  expectWithin();
  ASSERT_TRUE(hub.FitSelectionToView());
  expectWithin();
  ViewAlignShotParameters align;
  align.directionFlags[ViewAlignShotParameters::CAMERA_FRONT] = true;
  align.duration = 0.5;
  align.fit = true;
  ASSERT_TRUE(hub.BeginShot(align));
  expectWithin();
}

TEST_F(FitMarginsTest, margins_that_leave_nothing_or_are_no_numbers_are_refused) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  const FitMargins good = {0.1, 0.2, 0.3, 0.4};
  ASSERT_TRUE(hub.SetFitMargins(good));
  for (const double bad : {nan, infinite, -infinite, -0.01, 1.0, 0.9}) {
    for (double FitMargins::*side :
         {&FitMargins::left, &FitMargins::right, &FitMargins::bottom, &FitMargins::top}) {
      FitMargins margins = good;
      margins.*side = bad;
      EXPECT_FALSE(hub.SetFitMargins(margins)) << bad;
      EXPECT_EQ(hub.GetFitMargins().*side, good.*side);
    }
  }
}

TEST(FitMargins, are_none_only_where_no_side_is_left_free) {
  EXPECT_TRUE(FitMargins().IsNone());
  for (double FitMargins::*const side :
       {&FitMargins::left, &FitMargins::right, &FitMargins::bottom, &FitMargins::top}) {
    FitMargins margins;
    margins.*side = 0.1;
    EXPECT_FALSE(margins.IsNone());
  }
}
