#include "shots/crane_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

constexpr std::int32_t DOWN = CraneShotParameters::DIRECTION_DOWN;
constexpr std::int32_t UP = CraneShotParameters::DIRECTION_UP;

CraneShotParameters Record(std::int32_t direction, TargetCamPos anchor, double height, double sideways,
                           double forwardRatio, bool keepTarget = false) {
  return CraneShotParameters{direction, anchor, 2.0, height, sideways, forwardRatio, keepTarget};
}

CameraParameters Expected(const CameraParameters& start, const CraneShotParameters& record, double t) {
  const Vec forward = oracle::Forward(start);
  const Vec up = From(start.up);
  const Vec right = oracle::Right(start);
  const double height = std::abs(record.height);
  const double depth = height * record.forwardRatio;
  const double p = oracle::AnchorPart(record.anchor);
  const double m1 = record.direction == DOWN ? p : 1.0 - p;
  const double m2 = 1.0 - m1;
  const double angle = (record.direction == DOWN ? t : 1.0 - t) * oracle::PI / 2.0;
  CameraParameters camera = start;
  camera.eye = To(From(start.eye) + forward * ((1.0 - std::cos(angle)) * std::abs(depth) - depth * m1) +
                  up * height * (1.0 - std::sin(angle) - m2) + right * record.sidewaysDistance * (t - p));
  if (!record.keepTarget) {
    const double distance = (From(start.centre) - From(camera.eye)).norm();
    camera.centre = camera.pivot = To(From(camera.eye) + forward * distance);
  }
  oracle::ScaleOrthographic(start, oracle::View(camera).norm() / oracle::View(start).norm(), camera);
  return camera;
}

}  // namespace

TEST(CraneShot, either_direction_at_anchor_start_begins_exactly_at_the_start_eye) {
  MemoryHub hub(LookAt({1, 2, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const std::int32_t direction : {DOWN, UP}) {
    const Step step = StepAt(hub, Record(direction, TARGET_CAM_START, 4, 3, 1.5), 0.0);
    EXPECT_TRUE(IsNear(step.camera.eye, From(hub.view.eye), 1e-14)) << direction;
  }
}

TEST(CraneShot, either_direction_at_anchor_end_ends_at_the_start_eye) {
  MemoryHub hub(LookAt({1, 2, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const std::int32_t direction : {DOWN, UP}) {
    const Step step = StepAt(hub, Record(direction, TARGET_CAM_END, 4, 3, 1.5), 1.0);
    EXPECT_TRUE(IsNear(step.camera.eye, From(hub.view.eye), 1e-14)) << direction;
  }
}

TEST(CraneShot, down_sinks_first_and_then_goes_forward_up_goes_back_along_the_same_curve) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  // A quarter of an ellipse, 4 down and 6 forward, from (0, 0, 10): a quarter of the time is sin^2 of 22.5
  // degrees of the way, which is an angle of 13.18 degrees.
  const CraneShotParameters down = Record(DOWN, TARGET_CAM_START, 4, 0, 1.5);
  EXPECT_TRUE(IsNear(StepAt(hub, down, 1.0).camera.eye, Vec(0, -4, 4), 1e-14));
  const double angle = oracle::Ease(0.25) * oracle::PI / 2;
  EXPECT_TRUE(IsNear(StepAt(hub, down, 0.25).camera.eye,
                     Vec(0, -4 * std::sin(angle), 10 - 6 * (1 - std::cos(angle))), 1e-14));
  const CraneShotParameters up = Record(UP, TARGET_CAM_START, 4, 0, 1.5);
  EXPECT_TRUE(IsNear(StepAt(hub, up, 1.0).camera.eye, Vec(0, 4, 16), 1e-14));
}

TEST(CraneShot, the_sideways_part_is_a_line) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const TargetCamPos anchor : ANCHORS) {
    const Step step = StepAt(hub, Record(DOWN, anchor, 0, 8, 1), 0.5);
    EXPECT_TRUE(IsNear(step.camera.eye, Vec(8 * (0.5 - oracle::AnchorPart(anchor)), 0, 10), 1e-14)) << anchor;
  }
}

TEST(CraneShot, with_keep_target_it_looks_at_the_same_point_and_without_in_the_same_direction) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step kept = StepAt(hub, Record(DOWN, TARGET_CAM_START, 4, 3, 1.5, true), 0.5);
  EXPECT_EQ(kept.camera.centre, hub.view.centre);
  EXPECT_EQ(kept.camera.pivot, hub.view.pivot);
  const Step free = StepAt(hub, Record(DOWN, TARGET_CAM_START, 4, 3, 1.5), 0.5);
  EXPECT_NEAR((oracle::Forward(free.camera) - Vec(0, 0, -1)).norm(), 0.0, 1e-15);
  EXPECT_EQ(free.camera.pivot, free.camera.centre);
}

TEST(CraneShot, the_sign_of_the_height_does_not_matter) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const CameraParameters expected = StepAt(hub, Record(DOWN, TARGET_CAM_START, 4, 3, 1.5), 0.5).camera;
  EXPECT_TRUE(IsNear(StepAt(hub, Record(DOWN, TARGET_CAM_START, -4, 3, 1.5), 0.5).camera, expected, 0.0));
}

TEST(CraneShot, the_orthographic_size_follows_the_distance_to_the_target) {
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8, 6));
  // 10 down and 10 forward: the same 10 units away from the kept target.
  const Step step = StepAt(hub, Record(DOWN, TARGET_CAM_START, 10, 0, 0.5, true), 1.0);
  const double distance = std::hypot(10.0, 5.0);
  EXPECT_NEAR(step.camera.ortho_width, 8 * distance / 10, 1e-14);
  EXPECT_NEAR(step.camera.ortho_height, 6 * distance / 10, 1e-14);
}

TEST(CraneShot, a_direction_or_an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const std::int32_t direction : {-1, 2, 1000}) {
    ExpectNoStep(hub, Record(direction, TARGET_CAM_START, 4, 3, 1.5));
  }
  ExpectNoStepWithAnAnchorOutside(hub, Record(DOWN, TARGET_CAM_START, 4, 3, 1.5));
}

TEST(CraneShot, random_cameras_follow_the_ellipse) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const CraneShotParameters record =
        Record(random.Integer(0, 1), random.OneOf(ANCHORS), random.Uniform(-20, 20), random.Uniform(-20, 20),
               random.Uniform(-3, 3), random.Coin());
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(start, record, oracle::Ease(fraction)), 1e-9)) << i;
  }
}
