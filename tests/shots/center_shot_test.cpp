#include "shots/center_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

CenterShotParameters Record(const Vector3& point, double duration = 2.0, double easeEnd = 1.0) {
  return CenterShotParameters{point, easeEnd, duration};
}

// In perspective the eye takes the way to the point but for its part along the view; in orthographic the
// camera goes as far as its centre.
CameraParameters Expected(const CameraParameters& start, const Vector3& point, double t) {
  const Vec forward = oracle::Forward(start);
  const Vec way = From(point) - From(start.eye);
  const Vec shift =
      start.IsOrthographic() ? Vec(From(point) - From(start.centre)) : Vec(way - forward * forward.dot(way));
  CameraParameters camera = start;
  camera.eye = To(From(start.eye) + shift * t);
  camera.centre = To(oracle::Mix(t, start.centre, point));
  camera.pivot = To(oracle::Mix(t, start.pivot, point));
  oracle::ScaleOrthographic(start, oracle::View(camera).norm() / oracle::View(start).norm(), camera);
  return camera;
}

}  // namespace

TEST(CenterShot, a_point_at_the_centre_of_the_view_gives_a_target_eye_equal_to_the_start_eye) {
  MemoryHub hub(LookAt({1, 2, 10}, {1, 2, 3}, {0, 1, 0}));
  for (const double fraction : {0.0, 0.5, 1.0}) {
    const Step step = StepAt(hub, Record({1, 2, 3}), fraction);
    EXPECT_TRUE(IsNear(step.camera.eye, Vec(1, 2, 10), 1e-15)) << fraction;
    EXPECT_TRUE(IsNear(step.camera.centre, Vec(1, 2, 3), 1e-15)) << fraction;
  }
}

TEST(CenterShot, in_perspective_the_eye_slides_in_the_plane_of_the_view_and_keeps_its_depth) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record({3, 4, -10}), 1.0);
  EXPECT_FALSE(step.goesOn);
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(3, 4, 10), 1e-14));
  EXPECT_EQ(step.camera.centre, Vector3(3, 4, -10));
  EXPECT_EQ(step.camera.pivot, Vector3(3, 4, -10));
  // Twice as far from its centre, so the orthographic view would be twice as large.
  EXPECT_NEAR(step.camera.ortho_width, 2 * hub.view.ortho_width, 1e-13);
  EXPECT_NEAR(step.camera.ortho_height, 2 * hub.view.ortho_height, 1e-13);
}

TEST(CenterShot, in_orthographic_the_whole_camera_moves_until_its_centre_is_the_point) {
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8, 6));
  const Step step = StepAt(hub, Record({3, 4, -10}), 1.0);
  EXPECT_EQ(step.camera.eye, Vector3(3, 4, 0));
  EXPECT_EQ(step.camera.centre, Vector3(3, 4, -10));
  EXPECT_EQ(step.camera.ortho_width, 8);
  EXPECT_EQ(step.camera.ortho_height, 6);
}

TEST(CenterShot, the_point_ends_in_the_middle_of_the_picture) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(RandomCamera(random, Frustum::Orthographic));
    const Vector3 point = random.Point(100);
    const CameraParameters end = StepAt(hub, Record(point), 1.0).camera;
    const Eigen::Vector2d place = oracle::Project(end, From(point));
    ASSERT_NEAR(place.x(), 0.5, 1e-9);
    ASSERT_NEAR(place.y(), 0.5, 1e-9);
  }
}

TEST(CenterShot, with_an_ease_end_of_one_half_it_arrives_early_and_waits) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const CenterShotParameters record = Record({3, 4, 0}, 2.0, 0.5);
  EXPECT_TRUE(IsNear(StepAt(hub, record, 0.25).camera.eye, Vec(1.5, 2, 10), 1e-14));
  const Step arrived = StepAt(hub, record, 0.5);
  EXPECT_TRUE(arrived.goesOn);
  EXPECT_TRUE(IsNear(arrived.camera.eye, Vec(3, 4, 10), 1e-14));
}

TEST(CenterShot, random_cameras_follow_the_line_to_the_point) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const Vector3 point = random.Point(100);
    const double fraction = random.Uniform(0.0, 1.1);
    const Step step = StepAt(hub, Record(point), fraction);
    ASSERT_EQ(step.goesOn, fraction < 1.0);
    const double t = fraction < 1.0 ? oracle::Ease(fraction) : 1.0;
    ASSERT_TRUE(IsNear(step.camera, Expected(start, point, t), 1e-10)) << i;
  }
}
