#include "shots/look_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

LookShotParameters Record(TargetCamPos anchor, double horizontal, double vertical) {
  return LookShotParameters{anchor, 2.0, horizontal, vertical};
}

// `sense` is -1 where the camera pans the other way round. The tilt axis is the turned right without its
// part along the world up.
CameraParameters Expected(const CameraParameters& start, const Vec& worldUp, double sense,
                          const LookShotParameters& record, double t) {
  const double s = t - oracle::AnchorPart(record.anchor);
  const double pan = sense * s * record.horizontalAngle;
  const double tilt = s * record.verticalAngle;
  const Vec right = oracle::TurnByDegrees(worldUp, pan, oracle::Right(start));
  const Vec axis = (right - worldUp * worldUp.dot(right)).normalized();
  const auto turn = [&](const Vec& v) {
    return oracle::TurnByDegrees(axis, tilt, oracle::TurnByDegrees(worldUp, pan, v));
  };
  CameraParameters camera = start;
  camera.centre = To(From(start.eye) + turn(oracle::View(start)));
  camera.up = To(turn(From(start.up)).normalized());
  return camera;
}

Vec PanBy90(const CameraParameters& start) {
  MemoryHub hub(start);
  return oracle::Forward(StepAt(hub, Record(TARGET_CAM_START, 90, 0), 1.0).camera);
}

}  // namespace

TEST(LookShot, a_positive_horizontal_angle_looks_to_the_right) {
  const CameraParameters start = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  EXPECT_NEAR((PanBy90(start) - Vec(1, 0, 0)).norm(), 0.0, 1e-15);
}

TEST(LookShot, a_positive_vertical_angle_looks_down) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record(TARGET_CAM_START, 0, 90), 1.0);
  EXPECT_FALSE(step.goesOn);
  EXPECT_TRUE(IsNear(step.camera.centre, Vec(0, -10, 10), 1e-14));
  EXPECT_TRUE(IsNear(step.camera.up, Vec(0, 0, -1), 1e-15));
  EXPECT_EQ(step.camera.eye, hub.view.eye);
  EXPECT_EQ(step.camera.pivot, hub.view.pivot);
}

TEST(LookShot, a_camera_upside_down_pans_the_other_way_round) {
  EXPECT_NEAR((PanBy90(LookAt({0, 0, 10}, {0, 0, 0}, {0, -1, 0})) - Vec(-1, 0, 0)).norm(), 0.0, 1e-15);
}

TEST(LookShot, a_view_straight_up_pans_the_other_way_round_and_straight_down_does_not) {
  // With the view along the world up a pan turns the picture: look at where the up goes.
  const auto upAfterPan = [](const Vector3& centre) {
    MemoryHub hub(LookAt({0, 0, 0}, centre, {0, 0, -1}));
    return From(StepAt(hub, Record(TARGET_CAM_START, 90, 0), 1.0).camera.up);
  };
  EXPECT_NEAR((upAfterPan({0, -5, 0}) - Vec(1, 0, 0)).norm(), 0.0, 1e-15);  // left-handed: -z to +x
  EXPECT_NEAR((upAfterPan({0, 5, 0}) - Vec(-1, 0, 0)).norm(), 0.0, 1e-15);
}

TEST(LookShot, an_up_across_the_world_up_pans_by_where_the_view_points) {
  // Rolled by 90 degrees, the up level: the sense turns only when the view points upward.
  const auto turnsLeftHanded = [](double height) {
    const Vec forward = Vec(0, height, -1).normalized();
    const CameraParameters start = LookAt({0, 0, 0}, {0, height, -1}, {1, 0, 0});
    return (PanBy90(start) - oracle::TurnByDegrees(Vec::UnitY(), 90, forward)).norm() < 1e-14;
  };
  EXPECT_FALSE(turnsLeftHanded(0.5));
  EXPECT_TRUE(turnsLeftHanded(0.0));
  EXPECT_TRUE(turnsLeftHanded(-0.5));
}

TEST(LookShot, the_view_of_now_is_the_first_the_middle_or_the_last_frame) {
  MemoryHub hub(LookAt({0, 3, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const TargetCamPos anchor : ANCHORS) {
    const Step step = StepAt(hub, Record(anchor, 70, 20), oracle::AnchorPart(anchor));
    EXPECT_TRUE(IsNear(step.camera, hub.view, 1e-14)) << anchor;
  }
}

TEST(LookShot, an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  ExpectNoStepWithAnAnchorOutside(hub, Record(TARGET_CAM_START, 30, 40));
}

TEST(LookShot, the_length_of_the_world_directions_does_not_matter) {
  MemoryHub hub(LookAt({0, 3, 10}, {0, 0, 0}, {0, 1, 0}));
  const CameraParameters expected = StepAt(hub, Record(TARGET_CAM_START, 70, 20), 0.5).camera;
  hub.GetApplicationParameters().scene_up_direction = {0, 3, 0};
  EXPECT_TRUE(IsNear(StepAt(hub, Record(TARGET_CAM_START, 70, 20), 0.5).camera, expected, 1e-14));
}

TEST(LookShot, random_cameras_turn_by_the_eased_angles) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const Axes world = RandomAxes(random);
    hub.GetApplicationParameters().scene_up_direction = world.up;
    hub.GetApplicationParameters().scene_front_direction = world.front;
    const LookShotParameters record =
        Record(random.OneOf(ANCHORS), random.Uniform(-400, 400), random.Uniform(-400, 400));
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    const double sense = From(world.up).dot(From(start.up)) < 0.0 ? -1.0 : 1.0;
    ASSERT_TRUE(
        IsNear(step.camera, Expected(start, From(world.up), sense, record, oracle::Ease(fraction)), 1e-9))
        << i;
  }
}
