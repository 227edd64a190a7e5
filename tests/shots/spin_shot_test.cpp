#include "shots/spin_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

SpinShotParameters Record(std::int32_t axis, TargetCamPos anchor, double angle) {
  return SpinShotParameters{axis, anchor, 2.0, angle};
}

CameraParameters Expected(const CameraParameters& start, const Vec& worldUp, const SpinShotParameters& record,
                          double t) {
  const Vec forward = oracle::Forward(start);
  const Vec axis = record.axis == 0 ? worldUp : Vec(forward.cross(worldUp).normalized());
  const double angle = record.angle * (t - oracle::AnchorPart(record.anchor));
  CameraParameters camera = start;
  camera.centre = To(From(start.eye) + oracle::TurnByDegrees(axis, angle, forward));
  camera.up = To(worldUp);
  camera.pivot = camera.centre;
  return camera;
}

}  // namespace

TEST(SpinShot, leaves_the_eye_where_it_is_at_every_step_and_the_target_at_unit_distance) {
  MemoryHub hub(LookAt({1, 2, 10}, {1, 2, 3}, {0, 1, 0}));
  for (const std::int32_t axis : {0, 1}) {
    for (const double fraction : {0.0, 0.25, 0.5, 0.75, 1.0}) {
      const Step step = StepAt(hub, Record(axis, TARGET_CAM_START, 120), fraction);
      EXPECT_EQ(step.camera.eye, hub.view.eye);
      EXPECT_NEAR(oracle::View(step.camera).norm(), 1.0, 1e-15);
    }
  }
}

TEST(SpinShot, a_positive_angle_about_the_world_up_turns_the_head_to_the_right) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record(0, TARGET_CAM_START, 90), 1.0);
  EXPECT_FALSE(step.goesOn);
  // Left-handed about +y: from -z over +x.
  EXPECT_TRUE(IsNear(step.camera.centre, Vec(1, 0, 10), 1e-15));
  EXPECT_EQ(step.camera.pivot, step.camera.centre);
}

TEST(SpinShot, a_positive_angle_about_the_horizontal_axis_turns_the_head_down) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record(1, TARGET_CAM_START, 90), 1.0);
  // Left-handed about the right, +x: from -z over -y.
  EXPECT_TRUE(IsNear(step.camera.centre, Vec(0, -1, 10), 1e-15));
}

TEST(SpinShot, the_up_becomes_the_world_up) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {1, 1, 0}));
  EXPECT_EQ(StepAt(hub, Record(0, TARGET_CAM_START, 30), 0.5).camera.up, Vector3(0, 1, 0));
  hub.GetApplicationParameters().scene_is_world = false;
  hub.GetApplicationParameters().world_up_direction = {1, 0, 0};
  EXPECT_EQ(StepAt(hub, Record(0, TARGET_CAM_START, 30), 0.5).camera.up, Vector3(1, 0, 0));
}

TEST(SpinShot, the_direction_of_now_is_that_of_the_first_the_middle_or_the_last_frame) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const TargetCamPos anchor : ANCHORS) {
    const Step step = StepAt(hub, Record(0, anchor, 70), oracle::AnchorPart(anchor));
    EXPECT_TRUE(IsNear(step.camera.centre, Vec(0, 0, 9), 1e-14)) << anchor;
  }
}

TEST(SpinShot, an_axis_or_an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const std::int32_t axis : {-1, 2, 1000}) ExpectNoStep(hub, Record(axis, TARGET_CAM_START, 30));
  ExpectNoStepWithAnAnchorOutside(hub, Record(0, TARGET_CAM_START, 30));
}

TEST(SpinShot, random_cameras_turn_by_the_eased_angle) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const Vector3 worldUp = random.Direction();
    hub.GetApplicationParameters().scene_up_direction = worldUp;
    const SpinShotParameters record =
        Record(random.Integer(0, 1), random.OneOf(ANCHORS), random.Uniform(-400, 400));
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(start, From(worldUp), record, oracle::Ease(fraction)), 1e-10))
        << i;
  }
}
