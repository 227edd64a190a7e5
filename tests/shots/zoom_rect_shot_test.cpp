#include "shots/zoom_rect_shot.h"

#include "shots/shot_steps.h"
#include "support/virtual_slot.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

constexpr double TOLERANCE = 0x1p-23;
const double SMALLEST_SIZE = std::sqrt(TOLERANCE);

ZoomRectShotParameters Record(double sideways, double upward, double forward) {
  return ZoomRectShotParameters{0, 2.0, sideways, upward, forward};
}

double ScaleOf(MemoryHub& hub) { return dynamic_cast<ZoomRectShot&>(*hub.GetActiveShot()).getCurrentScale(); }

CameraParameters Expected(const CameraParameters& start, const ZoomRectShotParameters& record, double t,
                          double& scale) {
  const Vec forward = oracle::Forward(start);
  const Vec offset = oracle::Right(start) * record.sidewaysOffset +
                     From(start.up).normalized() * record.upwardOffset + forward * record.forwardOffset;
  const Vec eye = From(start.eye) + offset * t;
  const double depth = forward.dot(From(start.pivot) - eye);
  scale = forward.dot(From(start.pivot) - From(start.eye)) / depth;
  CameraParameters camera = start;
  camera.eye = To(eye);
  camera.centre = To(eye + forward * (t == 1.0 ? std::abs(depth) : 1.0));
  camera.ortho_width = std::fmax(start.ortho_width / scale, SMALLEST_SIZE);
  camera.ortho_height = std::fmax(start.ortho_height / scale, SMALLEST_SIZE);
  return camera;
}

}  // namespace

TEST(ZoomRectShot, adds_one_virtual_operation_after_those_of_the_base) {
  EXPECT_EQ(VirtualSlot(&ZoomRectShot::InitShot), 2);
  EXPECT_EQ(VirtualSlot(&ZoomRectShot::PerformShot), 3);
  EXPECT_EQ(VirtualSlot(&ZoomRectShot::GetElapsedTime), 4);
  EXPECT_EQ(VirtualSlot(&ZoomRectShot::GetUnitTime), 5);
  EXPECT_EQ(VirtualSlot(&ZoomRectShot::getCurrentScale), 6);
}

TEST(ZoomRectShot, the_offset_counts_sideways_upward_and_forward) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 2, 0}));
  const Step step = StepAt(hub, Record(3, 4, 5), 0.5);
  EXPECT_TRUE(step.goesOn);
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(1.5, 2, 7.5), 1e-14));
}

TEST(ZoomRectShot, on_the_way_the_centre_is_one_unit_ahead_and_at_the_end_at_the_depth_of_the_pivot) {
  MemoryHub hub(WithPivot(LookAt({0, 0, 10}, {0, 0, 7}, {0, 1, 0}), {5, 5, 2}));
  EXPECT_TRUE(IsNear(StepAt(hub, Record(3, 4, 5), 0.0).camera.centre, Vec(0, 0, 9), 1e-14));
  EXPECT_TRUE(IsNear(StepAt(hub, Record(3, 4, 5), 0.5).camera.centre, Vec(1.5, 2, 6.5), 1e-14));
  const Step last = StepAt(hub, Record(3, 4, 5), 1.0);
  EXPECT_FALSE(last.goesOn);
  EXPECT_TRUE(IsNear(last.camera.centre, Vec(3, 4, 2), 1e-14));
  EXPECT_EQ(last.camera.pivot, hub.view.pivot);
}

TEST(ZoomRectShot, an_eye_that_ends_beyond_the_pivot_still_looks_ahead) {
  MemoryHub hub(WithPivot(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), {0, 0, 4}));
  EXPECT_TRUE(IsNear(StepAt(hub, Record(0, 0, 8), 1.0).camera.centre, Vec(0, 0, 0), 1e-14));
}

TEST(ZoomRectShot, a_centre_that_would_fall_onto_the_eye_stays_one_unit_ahead) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  // Shorter than the square root of the tolerance, 3.45e-4, the way to the centre is made a unit long.
  EXPECT_TRUE(
      IsNear(StepAt(hub, Record(0, 0, 10 - 3.4e-4), 1.0).camera.centre, Vec(0, 0, 3.4e-4 - 1), 1e-12));
  EXPECT_TRUE(IsNear(StepAt(hub, Record(0, 0, 10 - 3.5e-4), 1.0).camera.centre, Vec(0, 0, 0), 1e-12));
}

TEST(ZoomRectShot, the_scale_tells_how_much_larger_the_depth_of_the_pivot_appears) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  hub.view.ortho_width = 8;
  hub.view.ortho_height = 6;
  hub.BeginShot(Record(0, 0, 7.5));
  EXPECT_EQ(ScaleOf(hub), 1.0);
  StepShot(hub, 1.0);
  EXPECT_NEAR(ScaleOf(hub), 1.0, 1e-15);
  StepShot(hub, 1.0);
  EXPECT_NEAR(ScaleOf(hub), 10.0 / 6.25, 1e-14);
  const Step last = StepShot(hub, 0.0);
  EXPECT_NEAR(ScaleOf(hub), 4.0, 1e-14);
  EXPECT_NEAR(last.camera.ortho_width, 2.0, 1e-14);
  EXPECT_NEAR(last.camera.ortho_height, 1.5, 1e-14);
}

TEST(ZoomRectShot, the_orthographic_size_never_falls_below_the_smallest) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const double forward : {9.99999, 10.0, 12.0}) {
    const Step step = StepAt(hub, Record(0, 0, forward), 1.0);
    EXPECT_EQ(step.camera.ortho_width, SMALLEST_SIZE) << forward;
    EXPECT_EQ(step.camera.ortho_height, SMALLEST_SIZE) << forward;
    EXPECT_TRUE(step.camera.IsFinite());
  }
}

TEST(ZoomRectShot, in_an_orthographic_view_at_the_smallest_size_it_does_nothing_except_wait) {
  const double sizes[][2] = {{SMALLEST_SIZE, 6}, {8, SMALLEST_SIZE}, {1e-5, 1e-5}};
  for (const auto& size : sizes) {
    MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), size[0], size[1]));
    hub.BeginShot(Record(3, 4, 5));
    EXPECT_EQ(hub.GetActiveShot()->GetElapsedTime(), 2.0);
    const Step step = StepShot(hub, 0.25);
    EXPECT_FALSE(step.goesOn);
    EXPECT_TRUE(SameBits(step.camera, hub.view));
    EXPECT_EQ(hub.GetActiveShot()->GetElapsedTime(), 2.25);
    EXPECT_EQ(ScaleOf(hub), 1.0);
  }
}

TEST(ZoomRectShot, just_above_the_smallest_size_or_in_perspective_it_moves) {
  const double size = 1.001 * SMALLEST_SIZE;
  MemoryHub hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), size, size));
  EXPECT_TRUE(IsNear(StepAt(hub, Record(3, 4, 5), 1.0).camera.eye, Vec(3, 4, 5), 1e-14));
  hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  hub.view.ortho_width = hub.view.ortho_height = 1e-5;
  EXPECT_TRUE(IsNear(StepAt(hub, Record(3, 4, 5), 1.0).camera.eye, Vec(3, 4, 5), 1e-14));
}

TEST(ZoomRectShot, a_camera_with_its_eye_on_its_centre_stays_where_it_is) {
  MemoryHub hub(LookAt({1, 2, 3}, {1, 2, 3}, {0, 1, 0}));
  for (const double fraction : {0.0, 0.5, 1.0}) {
    EXPECT_EQ(StepAt(hub, Record(3, 4, 5), fraction).camera.eye, hub.view.eye);
  }
}

TEST(ZoomRectShot, random_cameras_follow_the_line) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters start = WithMarks(RandomCamera(random));
    // A pivot ahead of the view's whole way.
    start.pivot = To(From(start.eye) + oracle::Forward(start) * random.Uniform(30, 100) +
                     oracle::Right(start) * random.Uniform(-50, 50));
    MemoryHub hub(start);
    const ZoomRectShotParameters record =
        Record(random.Uniform(-20, 20), random.Uniform(-9, 9), random.Uniform(-20, 15));
    const double fraction = random.Uniform(0.0, 1.2);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_EQ(step.goesOn, fraction < 1.0);
    double scale = 0.0;
    const double t = fraction < 1.0 ? oracle::Ease(fraction) : 1.0;
    ASSERT_TRUE(IsNear(step.camera, Expected(start, record, t, scale), 1e-9)) << i;
    ASSERT_TRUE(IsNear(ScaleOf(hub), scale, 1e-9)) << i;
  }
}
