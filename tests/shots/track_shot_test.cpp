#include "shots/track_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

TrackShotParameters Record(std::int32_t direction, TargetCamPos anchor, double distance,
                           bool keepTarget = false) {
  return TrackShotParameters{direction, anchor, 2.0, distance, keepTarget};
}

CameraParameters Expected(const CameraParameters& start, const TrackShotParameters& record, double t) {
  const Vec along = record.direction < 2 ? oracle::Right(start) : oracle::Forward(start);
  const double sign = record.direction % 2 == 0 ? 1.0 : -1.0;
  const Vec shift = along * sign * record.distance * (t - oracle::AnchorPart(record.anchor));
  CameraParameters camera = start;
  camera.eye = To(From(start.eye) + shift);
  if (!record.keepTarget) camera.centre = To(From(start.centre) + shift);
  return camera;
}

}  // namespace

TEST(TrackShot, each_direction_runs_along_its_axis_of_the_camera) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Vec ends[] = {{4, 0, 10}, {-4, 0, 10}, {0, 0, 6}, {0, 0, 14}};
  for (std::int32_t direction = 0; direction < 4; ++direction) {
    const Step step = StepAt(hub, Record(direction, TARGET_CAM_START, 4), 1.0);
    EXPECT_FALSE(step.goesOn);
    EXPECT_TRUE(IsNear(step.camera.eye, ends[direction], 1e-14)) << direction;
    EXPECT_TRUE(IsNear(step.camera.centre, ends[direction] - Vec(0, 0, 10), 1e-14)) << direction;
  }
}

TEST(TrackShot, with_keep_target_the_centre_stays) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record(0, TARGET_CAM_START, 4, true), 1.0);
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(4, 0, 10), 1e-14));
  EXPECT_EQ(step.camera.centre, Vector3(0, 0, 0));
}

TEST(TrackShot, with_anchor_end_it_begins_a_full_distance_behind_the_present_view_and_ends_on_it) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const TrackShotParameters record = Record(2, TARGET_CAM_END, 4);
  EXPECT_TRUE(IsNear(StepAt(hub, record, 0.0).camera.eye, Vec(0, 0, 14), 1e-14));
  EXPECT_TRUE(IsNear(StepAt(hub, record, 1.0).camera, hub.view, 1e-14));
}

TEST(TrackShot, the_view_of_now_is_the_first_the_middle_or_the_last_frame) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const TargetCamPos anchor : ANCHORS) {
    const Step step = StepAt(hub, Record(0, anchor, 4), oracle::AnchorPart(anchor));
    EXPECT_TRUE(IsNear(step.camera, hub.view, 1e-14)) << anchor;
  }
}

TEST(TrackShot, a_direction_or_an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const std::int32_t direction : {-1, 4, 1000})
    ExpectNoStep(hub, Record(direction, TARGET_CAM_START, 4));
  ExpectNoStepWithAnAnchorOutside(hub, Record(0, TARGET_CAM_START, 4));
}

TEST(TrackShot, random_cameras_follow_the_line) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const TrackShotParameters record =
        Record(random.Integer(0, 3), random.OneOf(ANCHORS), random.Uniform(-50, 50), random.Coin());
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(start, record, oracle::Ease(fraction)), 1e-11)) << i;
  }
}
