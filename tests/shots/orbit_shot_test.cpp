#include "shots/orbit_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

OrbitShotParameters Record(TargetCamPos anchor, double horizontal, double vertical) {
  return OrbitShotParameters{anchor, 2.0, horizontal, vertical};
}

CameraParameters Expected(const CameraParameters& start, const Vec& axis, const OrbitShotParameters& record,
                          double t) {
  const double s = t - oracle::AnchorPart(record.anchor);
  const Vec turned = oracle::TurnByDegrees(axis, s * record.horizontalAngle, oracle::View(start));
  const Vec right = turned.cross(axis).normalized();
  CameraParameters camera = start;
  camera.eye = To(From(start.centre) - oracle::TurnByDegrees(right, s * record.verticalAngle, turned));
  camera.up = To(oracle::TurnByDegrees(right, s * record.verticalAngle, axis));
  camera.pivot = start.centre;
  return camera;
}

}  // namespace

TEST(OrbitShot, circles_the_centre_and_not_the_pivot) {
  MemoryHub hub(WithPivot(LookAt({0, 0, 10}, {0, 0, 4}, {0, 1, 0}), {7, 8, 9}));
  const Step step = StepAt(hub, Record(TARGET_CAM_START, 90, 0), 1.0);
  EXPECT_FALSE(step.goesOn);
  // The view turns left-handed about +y, from -z to +x, so the eye goes to the other side, -x.
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(-6, 0, 4), 1e-14));
  EXPECT_EQ(step.camera.centre, Vector3(0, 0, 4));
  EXPECT_EQ(step.camera.pivot, Vector3(0, 0, 4));
}

TEST(OrbitShot, a_positive_vertical_angle_lifts_the_eye) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record(TARGET_CAM_START, 0, 90), 1.0);
  // The view turns left-handed about the right, +x: from -z to -y.
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(0, 10, 0), 1e-14));
  EXPECT_TRUE(IsNear(step.camera.up, Vec(0, 0, -1), 1e-15));
}

TEST(OrbitShot, with_the_view_parallel_to_the_world_up_turns_about_the_starts_up) {
  MemoryHub hub(LookAt({0, 10, 0}, {0, 0, 0}, {0, 0, -1}));
  const Step step = StepAt(hub, Record(TARGET_CAM_START, 90, 0), 1.0);
  // The view, -y, turns left-handed about -z: right-handed by 90 degrees about +z, to +x.
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(-10, 0, 0), 1e-14));
  EXPECT_TRUE(IsNear(step.camera.up, Vec(0, 0, -1), 1e-15));
}

TEST(OrbitShot, the_eye_of_now_is_that_of_the_first_the_middle_or_the_last_frame) {
  MemoryHub hub(LookAt({0, 3, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const TargetCamPos anchor : ANCHORS) {
    const Step step = StepAt(hub, Record(anchor, 70, 20), oracle::AnchorPart(anchor));
    EXPECT_TRUE(IsNear(step.camera.eye, Vec(0, 3, 10), 1e-14)) << anchor;
  }
}

TEST(OrbitShot, an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  ExpectNoStepWithAnAnchorOutside(hub, Record(TARGET_CAM_START, 30, 40));
}

TEST(OrbitShot, random_cameras_keep_their_distance_and_turn_by_the_eased_angles) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const Vector3 worldUp = random.Direction();
    hub.GetApplicationParameters().scene_up_direction = worldUp;
    const OrbitShotParameters record =
        Record(random.OneOf(ANCHORS), random.Uniform(-400, 400), random.Uniform(-90, 90));
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(start, From(worldUp), record, oracle::Ease(fraction)), 1e-9))
        << i;
    ASSERT_TRUE(IsNear(oracle::View(step.camera).norm(), oracle::View(start).norm(), 1e-12)) << i;
  }
}
