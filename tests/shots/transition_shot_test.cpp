#include "shots/transition_shot.h"

#include "shots/shot_steps.h"
#include "support/manual_platform.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

using ProjectionType = CameraParameters::ProjectionType;

TransitionShotParameters Record(const CameraParameters& target, double duration = 2.0, double easeEnd = 1.0) {
  return TransitionShotParameters{target, easeEnd, duration};
}

// The frame on the way, by the axis and the angle that lead from one frame to the other.
Eigen::Matrix3d FrameOnTheWay(double t, const Eigen::Matrix3d& start, const Eigen::Matrix3d& target) {
  const Eigen::AngleAxisd turn(Eigen::Matrix3d(target * start.transpose()));
  return oracle::RightHanded(turn.axis(), turn.angle() * t) * start;
}

CameraParameters Expected(const CameraParameters& start, const CameraParameters& target, double t) {
  const Eigen::Matrix3d frame = FrameOnTheWay(t, oracle::Frame(start), oracle::Frame(target));
  const double distance = oracle::Mix(t, oracle::View(start).norm(), oracle::View(target).norm());
  CameraParameters camera = start;
  camera.centre = To(oracle::Mix(t, start.centre, target.centre));
  camera.eye = To(From(camera.centre) - frame.col(0) * distance);
  camera.up = To(frame.col(1));
  camera.pivot = To(oracle::Mix(t, start.pivot, target.pivot));
  oracle::MixLens(t, start, target, camera);
  camera.projection_type = target.projection_type;
  camera.perspective_with_ortho = target.perspective_with_ortho;
  return camera;
}

}  // namespace

TEST(TransitionShot, a_duration_of_0_makes_the_first_step_the_last_and_writes_the_target) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  CameraParameters target = WithMarks(LookAt({5, 0, 0}, {1, 0, 0}, {0, 0, 1}));
  ASSERT_TRUE(hub.BeginShot(Record(target, 0.0)));
  const Step step = StepShot(hub, 0.016);
  EXPECT_FALSE(step.goesOn);
  EXPECT_EQ(step.unitTime, 1.0);
  target.projection_transition = hub.view.projection_transition;
  EXPECT_TRUE(IsNear(step.camera, target, 1e-15));
}

TEST(TransitionShot, with_an_ease_end_of_one_half_the_target_is_reached_at_half_the_duration) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const CameraParameters target = LookAt({8, 0, 10}, {8, 0, 0}, {0, 1, 0});
  EXPECT_NEAR(StepAt(hub, Record(target, 2.0, 0.5), 0.25).camera.eye.x, 4.0, 1e-14);
  const Step arrived = StepAt(hub, Record(target, 2.0, 0.5), 0.5);
  EXPECT_TRUE(arrived.goesOn);
  EXPECT_EQ(arrived.unitTime, 1.0);
  EXPECT_NEAR(arrived.camera.eye.x, 8.0, 1e-14);
}

TEST(TransitionShot, the_first_step_is_the_start_with_its_up_made_perpendicular) {
  CameraParameters start = LookAt({0, 0, 10}, {0, 0, 0}, {0, 3, 4});
  MemoryHub hub(start);
  const Step step = StepAt(hub, Record(LookAt({5, 0, 0}, {1, 0, 0}, {0, 0, 1})), 0.0);
  start.up = {0, 1, 0};
  EXPECT_TRUE(step.goesOn);
  EXPECT_TRUE(IsNear(step.camera, start, 1e-14));
}

TEST(TransitionShot, between_nearly_opposite_view_directions_takes_the_shorter_arc) {
  // 170 degrees to the left, or 190 to the right: half of the way is 85 degrees to the left.
  const double angle = 170.0 * oracle::PI / 180.0;
  MemoryHub hub(LookAt({0, 0, 0}, {0, 0, -1}, {0, 1, 0}));
  const auto halfWay = [&](double sign) {
    const CameraParameters target =
        LookAt({0, 0, 0}, {-std::sin(sign * angle), 0, -std::cos(angle)}, {0, 1, 0});
    return oracle::Forward(StepAt(hub, Record(target), 0.5).camera);
  };
  const double half = angle / 2;
  EXPECT_NEAR((halfWay(1.0) - Vec(-std::sin(half), 0, -std::cos(half))).norm(), 0.0, 1e-14);
  EXPECT_NEAR((halfWay(-1.0) - Vec(std::sin(half), 0, -std::cos(half))).norm(), 0.0, 1e-14);
}

TEST(TransitionShot, between_exactly_opposite_rotations_takes_some_valid_arc) {
  const CameraParameters start = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  MemoryHub hub(start);
  const CameraParameters targets[] = {LookAt({0, 0, -10}, {0, 0, 0}, {0, 1, 0}),
                                      LookAt({0, 0, -10}, {0, 0, 0}, {0, -1, 0}),
                                      LookAt({0, 0, 10}, {0, 0, 0}, {0, -1, 0})};
  for (const CameraParameters& target : targets) {
    for (const double fraction : {0.0, 0.2, 0.5, 0.8, 1.0}) {
      const Step step = StepAt(hub, Record(target), fraction);
      const Eigen::Matrix3d frame = oracle::Frame(step.camera);
      ASSERT_TRUE(step.camera.IsFinite());
      EXPECT_NEAR(From(step.camera.up).norm(), 1.0, 1e-14);
      EXPECT_NEAR(From(step.camera.up).dot(frame.col(0)), 0.0, 1e-14);
      EXPECT_NEAR(oracle::View(step.camera).norm(), 10.0, 1e-13);
      // Half a turn: the eased part of it lies behind, the rest ahead.
      const Eigen::AngleAxisd behind(Eigen::Matrix3d(frame * oracle::Frame(start).transpose()));
      EXPECT_NEAR(behind.angle(), oracle::PI * oracle::Ease(fraction), 1e-7);
    }
    EXPECT_TRUE(IsNear(StepAt(hub, Record(target), 1.0).camera, target, 1e-14));
  }
}

TEST(TransitionShot, projection_and_wish_are_the_targets_from_the_first_step_on) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  CameraParameters target = WithOrthographic(LookAt({5, 0, 0}, {1, 0, 0}, {0, 0, 1}), 4, 3);
  target.perspective_with_ortho = true;
  const Step first = StepAt(hub, Record(target), 0.0);
  EXPECT_TRUE(first.camera.IsOrthographic());
  EXPECT_TRUE(first.camera.perspective_with_ortho);
  EXPECT_EQ(first.camera.ortho_width, hub.view.ortho_width);  // the lens only begins to change
}

TEST(TransitionShot, the_blend_of_the_camera_that_is_passed_in_stays) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  CameraParameters target = LookAt({5, 0, 0}, {1, 0, 0}, {0, 0, 1});
  target.projection_transition = 0.9;
  hub.BeginShot(Record(target));
  for (const double blend : {-1.0, 0.0, 0.25, 1.0}) {
    hub.view.projection_transition = blend;
    EXPECT_EQ(StepShot(hub, 0.5).camera.projection_transition, blend);
  }
}

TEST(TransitionShot, a_blend_in_progress_in_the_hubs_frame_goes_on_during_a_transition) {
  ManualPlatform platform;
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 4, 3));
  hub.GetApplicationParameters().use_projection_transitions = true;
  hub.view.projection_transition = 0.0;
  CameraParameters target = hub.view;
  target.eye = {0, 0, 20};
  hub.BeginShot(Record(target));
  hub.PerformOperations();
  for (const double blend : {0.35, 0.70, 1.0, 1.0}) {
    platform.Advance(50);  // seven per second
    hub.PerformOperations();
    EXPECT_NEAR(hub.view.projection_transition, blend, 1e-11);
  }
  EXPECT_TRUE(hub.IsShotActive());
}

TEST(TransitionShot, with_a_null_hub_both_ends_keep_their_defaults) {
  TransitionShot shot(Record(LookAt({5, 0, 0}, {1, 0, 0}, {0, 0, 1})));
  shot.InitShot(nullptr);
  CameraParameters camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  EXPECT_TRUE(shot.PerformShot(1.0, camera));
  EXPECT_EQ(camera.eye, Vector3::Zero);
  EXPECT_EQ(camera.left_fov, 0.0);
}

TEST(TransitionShot, random_ways_lead_the_target_on_a_line_and_the_rotation_on_the_sphere) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    const CameraParameters target = RandomCamera(random);
    MemoryHub hub(start);
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, Record(target), fraction);
    ASSERT_TRUE(step.goesOn);
    // Near half a turn the axis of the turn is ill-conditioned, in either computation.
    ASSERT_TRUE(IsNear(step.camera, Expected(start, target, oracle::Ease(fraction)), 1e-8)) << i;
  }
}

TEST(TransitionShot, random_ways_end_on_the_target) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(RandomCamera(random));
    CameraParameters target = WithMarks(RandomCamera(random));
    const Step step = StepAt(hub, Record(target), 1.0);
    ASSERT_FALSE(step.goesOn);
    target.up = To(oracle::Upright(target));
    target.projection_transition = hub.view.projection_transition;
    ASSERT_TRUE(IsNear(step.camera, target, 1e-12)) << i;
  }
}
