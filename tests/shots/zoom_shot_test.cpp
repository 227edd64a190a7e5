#include "shots/zoom_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

constexpr double TOLERANCE = 0x1p-23;
constexpr std::int32_t IN = ZoomShotParameters::DIRECTION_IN;
constexpr std::int32_t OUT = ZoomShotParameters::DIRECTION_OUT;

ZoomShotParameters Record(std::int32_t direction, TargetCamPos anchor, double amount) {
  return ZoomShotParameters{direction, anchor, 2.0, amount};
}

// Without limits, for perspective.
CameraParameters Expected(const CameraParameters& start, const ZoomShotParameters& record, double t) {
  const double amount = record.direction == OUT ? -record.amount : record.amount;
  const double s = amount * (t - oracle::AnchorPart(record.anchor));
  const Vec way = From(start.pivot) - From(start.eye);
  const Vec forward = oracle::Forward(start);
  const Vec eye = From(start.eye) + way * s;
  CameraParameters camera = start;
  camera.eye = To(eye);
  camera.centre = To(eye + forward * forward.dot(From(start.pivot) - eye));
  oracle::ScaleOrthographic(start, std::abs(1.0 - s), camera);
  return camera;
}

MemoryHub PerspectiveHub() { return MemoryHub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})); }

}  // namespace

TEST(ZoomShot, the_amount_is_a_fraction_of_the_way_to_the_pivot) {
  MemoryHub hub(WithPivot(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), {4, 8, 2}));
  const Step in = StepAt(hub, Record(IN, TARGET_CAM_START, 0.25), 1.0);
  EXPECT_FALSE(in.goesOn);
  EXPECT_TRUE(IsNear(in.camera.eye, Vec(1, 2, 8), 1e-14));
  EXPECT_TRUE(IsNear(in.camera.centre, Vec(1, 2, 2), 1e-14));  // ahead of the eye, at the pivot's depth
  EXPECT_EQ(in.camera.pivot, Vector3(4, 8, 2));
  EXPECT_NEAR(in.camera.ortho_width, 0.75 * hub.view.ortho_width, 1e-13);
  const Step out = StepAt(hub, Record(OUT, TARGET_CAM_START, 0.25), 1.0);
  EXPECT_TRUE(IsNear(out.camera.eye, Vec(-1, -2, 12), 1e-14));
  EXPECT_NEAR(out.camera.ortho_height, 1.25 * hub.view.ortho_height, 1e-13);
}

TEST(ZoomShot, with_anchor_end_starts_as_far_from_the_view_as_the_amount_says_and_ends_on_it) {
  for (const bool orthographic : {false, true}) {
    MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    if (orthographic) hub.view = WithOrthographic(hub.view, 8, 6);
    const ZoomShotParameters record = Record(IN, TARGET_CAM_END, 0.75);
    EXPECT_TRUE(IsNear(StepAt(hub, record, 0.0).camera.eye, Vec(0, 0, 17.5), 1e-14));
    EXPECT_TRUE(IsNear(StepAt(hub, record, 1.0).camera, hub.view, 1e-14));
  }
}

TEST(ZoomShot, the_view_of_now_is_the_first_the_middle_or_the_last_frame) {
  MemoryHub hub = PerspectiveHub();
  for (const TargetCamPos anchor : ANCHORS) {
    for (const std::int32_t direction : {IN, OUT}) {
      const Step step = StepAt(hub, Record(direction, anchor, 0.4), oracle::AnchorPart(anchor));
      EXPECT_TRUE(IsNear(step.camera, hub.view, 1e-14)) << anchor;
    }
  }
}

TEST(ZoomShot, in_orthographic_the_move_cannot_pass_the_pivot) {
  // The eye runs on the z axis from its first to its last place; the view of now is at 10, the pivot at 0.
  struct Row {
    std::int32_t direction;
    TargetCamPos anchor;
    double amount;
    double first;
    double last;
  };
  const Row rows[] = {
      // Forward to the pivot or beyond, the move ends a tolerance short of it.
      {IN, TARGET_CAM_START, 1.0, 10, 10 * TOLERANCE},
      {IN, TARGET_CAM_START, 1.5, 10, 10 * TOLERANCE},
      {IN, TARGET_CAM_START, 0.999, 10, 0.01},
      // Half a move ahead of now and half behind it, as long as the longest that is possible.
      {IN, TARGET_CAM_MIDDLE, 2.0, 20, 10 * TOLERANCE},
      {IN, TARGET_CAM_MIDDLE, 2.5, 20, 10 * TOLERANCE},
      {IN, TARGET_CAM_MIDDLE, 1.5, 17.5, 2.5},
      // The whole move lies behind now.
      {IN, TARGET_CAM_END, 1.5, 25, 10},
      // Backward from now: nothing is in the way.
      {OUT, TARGET_CAM_START, 1.5, 10, 25},
      // Backward, beginning at the pivot or beyond: it begins a tolerance short of it.
      {OUT, TARGET_CAM_MIDDLE, 2.0, 10 * TOLERANCE, 20 + 10 * TOLERANCE},
      {OUT, TARGET_CAM_MIDDLE, 2.5, 10 * TOLERANCE, 20 + 10 * TOLERANCE},
      {OUT, TARGET_CAM_MIDDLE, 1.5, 2.5, 17.5},
      {OUT, TARGET_CAM_END, 1.0, 10 * TOLERANCE, 10 + 10 * TOLERANCE},
      {OUT, TARGET_CAM_END, 1.5, 10 * TOLERANCE, 10 + 10 * TOLERANCE},
      {OUT, TARGET_CAM_END, 0.75, 2.5, 10},
  };
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8, 6));
  for (const Row& row : rows) {
    const ZoomShotParameters record = Record(row.direction, row.anchor, row.amount);
    const auto trace = ::testing::Message() << row.direction << " " << row.anchor << " " << row.amount;
    EXPECT_NEAR(StepAt(hub, record, 0.0).camera.eye.z, row.first, 1e-12) << trace;
    const Step last = StepAt(hub, record, 1.0);
    EXPECT_NEAR(last.camera.eye.z, row.last, 1e-12) << trace;
    EXPECT_GT(last.camera.ortho_width, 0.0) << trace;
  }
}

TEST(ZoomShot, in_perspective_the_move_may_pass_the_pivot) {
  MemoryHub hub = PerspectiveHub();
  EXPECT_NEAR(StepAt(hub, Record(IN, TARGET_CAM_START, 1.5), 1.0).camera.eye.z, -5, 1e-14);
  EXPECT_NEAR(StepAt(hub, Record(OUT, TARGET_CAM_END, 1.5), 0.0).camera.eye.z, -5, 1e-14);
}

TEST(ZoomShot, the_limit_goes_by_the_projection_of_the_camera_that_is_passed_in) {
  MemoryHub hub = PerspectiveHub();
  hub.BeginShot(Record(IN, TARGET_CAM_START, 1.5));
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  StepShot(hub, 2.0);
  EXPECT_NEAR(StepShot(hub, 0.0).camera.eye.z, 10 * TOLERANCE, 1e-14);
}

TEST(ZoomShot, a_centre_that_falls_onto_the_eye_is_kept_a_tolerance_ahead_of_it) {
  MemoryHub hub = PerspectiveHub();
  const Step step = StepAt(hub, Record(IN, TARGET_CAM_START, 1.0), 1.0);
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(0, 0, 0), 1e-15));
  EXPECT_NEAR(step.camera.centre.z, -TOLERANCE, 1e-15);
}

TEST(ZoomShot, an_anchor_outside_ends_the_step_with_nothing_written) {
  MemoryHub hub = PerspectiveHub();
  ExpectNoStepWithAnAnchorOutside(hub, Record(IN, TARGET_CAM_START, 0.5));
}

TEST(ZoomShot, any_direction_but_out_is_in) {
  MemoryHub hub = PerspectiveHub();
  for (const std::int32_t direction : {-1, 2, 1000}) {
    EXPECT_NEAR(StepAt(hub, Record(direction, TARGET_CAM_START, 0.5), 1.0).camera.eye.z, 5, 1e-14);
  }
}

TEST(ZoomShot, random_cameras_follow_the_line_to_the_pivot) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const bool orthographic = random.Coin();
    const CameraParameters start =
        WithMarks(RandomCamera(random, orthographic ? Frustum::Orthographic : Frustum::Asymmetric));
    MemoryHub hub(start);
    // In orthographic an amount that no anchor limits.
    const ZoomShotParameters record = Record(random.Integer(0, 1), random.OneOf(ANCHORS),
                                             random.Uniform(-1, 1) * (orthographic ? 0.99 : 5));
    const double fraction = random.Uniform(0.0, 1.0);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(start, record, oracle::Ease(fraction)), 1e-9)) << i;
  }
}
