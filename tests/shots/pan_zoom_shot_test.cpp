#include "shots/pan_zoom_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

constexpr double TOLERANCE = 0x1p-23;

PanZoomShotParameters Record(TargetCamPos anchor, double sideways, double upward, double zoom) {
  return PanZoomShotParameters{anchor, 2.0, sideways, upward, zoom};
}

CameraParameters Expected(const CameraParameters& start, const PanZoomShotParameters& record, double t) {
  const double s = t - oracle::AnchorPart(record.anchor);
  const double length = oracle::View(start).norm();
  double zoom = s * record.zoomDistance;
  if (start.IsOrthographic() && zoom >= length) zoom = length - TOLERANCE;
  const Vec pan = oracle::Right(start) * record.sidewaysDistance * s +
                  From(start.up).normalized() * record.upwardDistance * s;
  CameraParameters camera = start;
  camera.eye = To(From(start.eye) + pan + oracle::Forward(start) * zoom);
  camera.centre = To(From(start.centre) + pan);
  oracle::ScaleOrthographic(start, oracle::View(camera).norm() / length, camera);
  return camera;
}

}  // namespace

TEST(PanZoomShot, each_distance_runs_along_its_axis_of_the_camera) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 2, 0}));
  const Step step = StepAt(hub, Record(TARGET_CAM_START, 3, 4, 5), 1.0);
  EXPECT_FALSE(step.goesOn);
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(3, 4, 5), 1e-14));
  EXPECT_TRUE(IsNear(step.camera.centre, Vec(3, 4, 0), 1e-14));
  EXPECT_EQ(step.camera.pivot, hub.view.pivot);
  EXPECT_NEAR(step.camera.ortho_width, hub.view.ortho_width / 2, 1e-14);
  EXPECT_NEAR(step.camera.ortho_height, hub.view.ortho_height / 2, 1e-14);
}

TEST(PanZoomShot, the_view_of_now_is_the_first_the_middle_or_the_last_frame) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const TargetCamPos anchor : ANCHORS) {
    const Step step = StepAt(hub, Record(anchor, 3, 4, 5), oracle::AnchorPart(anchor));
    EXPECT_TRUE(IsNear(step.camera, hub.view, 1e-14)) << anchor;
  }
}

TEST(PanZoomShot, a_start_camera_whose_eye_equals_its_centre_gives_false_in_the_first_step_without_writing) {
  MemoryHub hub(LookAt({1, 2, 3}, {1, 2, 3}, {0, 1, 0}));
  ExpectNoStep(hub, Record(TARGET_CAM_START, 3, 4, 5));
  hub.view.centre.x += 0.9 * TOLERANCE;
  ExpectNoStep(hub, Record(TARGET_CAM_START, 3, 4, 5));
  hub.view = LookAt({0, 0, 0}, {TOLERANCE, 0, 0}, {0, 1, 0});  // just long enough to count
  EXPECT_TRUE(hub.BeginShot(Record(TARGET_CAM_START, 3, 4, 5)));
  EXPECT_TRUE(StepShot(hub, 0.25).goesOn);
}

TEST(PanZoomShot, in_orthographic_the_eye_stays_in_front_of_the_target) {
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8, 6));
  for (const double zoom : {10.0, 25.0}) {
    const Step step = StepAt(hub, Record(TARGET_CAM_START, 0, 0, zoom), 1.0);
    EXPECT_NEAR(step.camera.eye.z, TOLERANCE, 1e-14) << zoom;
    EXPECT_GT(step.camera.ortho_width, 0.0) << zoom;
  }
  EXPECT_NEAR(StepAt(hub, Record(TARGET_CAM_START, 0, 0, 9.5), 1.0).camera.eye.z, 0.5, 1e-14);
}

TEST(PanZoomShot, in_perspective_the_eye_may_pass_the_target) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  EXPECT_NEAR(StepAt(hub, Record(TARGET_CAM_START, 0, 0, 25), 1.0).camera.eye.z, -15, 1e-14);
}

TEST(PanZoomShot, the_limit_goes_by_the_projection_of_the_camera_that_is_passed_in) {
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8, 6));
  hub.BeginShot(Record(TARGET_CAM_START, 0, 0, 25));
  hub.view.projection_type = CameraParameters::ProjectionType::Perspective;
  StepShot(hub, 2.0);
  EXPECT_NEAR(StepShot(hub, 0.0).camera.eye.z, -15, 1e-14);
}

TEST(PanZoomShot, an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  ExpectNoStepWithAnAnchorOutside(hub, Record(TARGET_CAM_START, 3, 4, 5));
}

TEST(PanZoomShot, random_cameras_follow_the_lines) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    MemoryHub hub(start);
    const PanZoomShotParameters record = Record(random.OneOf(ANCHORS), random.Uniform(-20, 20),
                                                random.Uniform(-20, 20), random.Uniform(-50, 50));
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(start, record, oracle::Ease(fraction)), 1e-9)) << i;
  }
}
