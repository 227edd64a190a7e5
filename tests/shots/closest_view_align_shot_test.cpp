#include "shots/closest_view_align_shot.h"

#include <vector>

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

constexpr double TOLERANCE = 0x1p-23;

ClosestViewAlignShotParameters Record(bool alignUp, bool soft, double threshold) {
  return ClosestViewAlignShotParameters{alignUp, soft, threshold};
}

Vec Nearest(const std::vector<Vec>& directions, const Vec& wanted) {
  Vec nearest = directions.front();
  for (const Vec& each : directions) {
    if (each.dot(wanted) > nearest.dot(wanted)) nearest = each;
  }
  return nearest;
}

// All 26 views of an orthonormal frame, or its six faces, as unit view directions.
std::vector<Vec> Views(const Vec& front, const Vec& up, bool facesOnly) {
  const Vec side = front.cross(up);
  std::vector<Vec> views;
  for (int a = -1; a <= 1; ++a) {
    for (int b = -1; b <= 1; ++b) {
      for (int c = -1; c <= 1; ++c) {
        const int axes = std::abs(a) + std::abs(b) + std::abs(c);
        if (axes == 0 || (facesOnly && axes > 1)) continue;
        views.push_back((front * a + up * b + side * c).normalized());
      }
    }
  }
  return views;
}

// A bell that is 1 from three quarters of its height on.
double SoftWeight(double x) { return std::fmin(1.0, std::exp(-2.0 * x * x) / 0.75); }

struct Pull {
  double view;
  double up;
};

Pull WeightsOf(const CameraParameters& camera, const ClosestViewAlignShotParameters& record, const Vec& view,
               const Vec& up) {
  const double viewOff = std::abs(1.0 - oracle::Forward(camera).dot(view));
  const double upOff = std::abs(1.0 - From(camera.up).normalized().dot(up));
  if (record.soft) {
    return {SoftWeight(viewOff / record.threshold), SoftWeight(upOff / (4.0 * record.threshold))};
  }
  return {viewOff < 0.2 * record.threshold ? 1.0 : 0.0, upOff < 0.2 * record.threshold ? 1.0 : 0.0};
}

CameraParameters Expected(const CameraParameters& camera, const ClosestViewAlignShotParameters& record,
                          const Vec& front, const Vec& axis) {
  const Vec forward = oracle::Forward(camera);
  const Vec up = From(camera.up).normalized();
  const Vec view = Nearest(Views(front, axis, false), forward);
  const Vec face = Nearest(Views(front, axis, true), up);
  const Pull pull = WeightsOf(camera, record, view, face);

  // The pivot keeps its place in the picture: the offsets from it to the axis of the view.
  const Vec offset = From(camera.centre) - From(camera.pivot);
  const auto across = [](const Vec& someUp, const Vec& someView) {
    return oracle::Unit(someUp.cross(someView));
  };
  const Vec across0 = across(up, forward);
  const Vec bentUp = up + pull.up * (face - up);
  const Vec across1 = across(bentUp, view);
  const double depth = forward.dot(From(camera.pivot) - From(camera.eye));
  const Vec alignedEye =
      From(camera.pivot) + across1 * offset.dot(across0) +
      oracle::Unit(across1.cross(view)) * offset.dot(oracle::Unit(across0.cross(forward))) - view * depth;

  CameraParameters expected = camera;
  const Vec eye = From(camera.eye) + pull.view * (alignedEye - From(camera.eye));
  const Vec blend = forward + pull.view * (view - forward);
  expected.eye = To(eye);
  expected.centre = To(eye + blend * depth);
  expected.up = To(bentUp);
  const double upright = up.dot(axis);
  if (record.alignUp && view.cross(axis).norm() > TOLERANCE && std::abs(upright) > TOLERANCE) {
    const Vec ahead = blend * depth;
    expected.up = To(ahead.cross(axis * (upright > 0.0 ? 1.0 : -1.0)).cross(ahead).normalized());
  }
  return expected;
}

Step StepOnce(MemoryHub& hub, const ClosestViewAlignShotParameters& record) {
  EXPECT_TRUE(hub.BeginShot(record));
  return StepShot(hub, 0.016);
}

// A camera whose view leaves the front view, -x, by an angle in the level plane.
CameraParameters OffFront(double radians) {
  return LookAt({10 * std::cos(radians), 0, 10 * std::sin(radians)}, {0, 0, 0}, {0, 1, 0});
}

}  // namespace

TEST(ClosestViewAlignShot, never_returns_false_and_stays_active_until_it_is_ended) {
  MemoryHub hub(OffFront(0.3));
  hub.BeginShot(Record(true, true, 0.1));
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(hub.GetActiveShot()->PerformShot(1e6, hub.view));
  for (int i = 0; i < 5; ++i) ASSERT_TRUE(hub.PerformOperations());
  EXPECT_TRUE(hub.IsShotActive());
  hub.EndShot();
  EXPECT_FALSE(hub.IsShotActive());
}

TEST(ClosestViewAlignShot, with_soft_clear_moves_nothing_until_the_view_is_within_a_fifth_of_the_threshold) {
  // 1 - cos(s) = 0.2 * 0.1 at s = 0.200335 radians.
  const ClosestViewAlignShotParameters record = Record(false, false, 0.1);
  MemoryHub hub(OffFront(0.2004));
  EXPECT_TRUE(IsNear(StepOnce(hub, record).camera, hub.view, 1e-14));
  hub.view = OffFront(0.2003);
  const Step snapped = StepOnce(hub, record);
  EXPECT_TRUE(IsNear(snapped.camera.eye, Vec(10, 0, 0), 1e-14));
  EXPECT_TRUE(IsNear(snapped.camera.centre, Vec(0, 0, 0), 1e-14));
}

TEST(ClosestViewAlignShot, with_soft_clear_the_up_snaps_within_the_same_reach) {
  const auto upAfter = [](double roll) {
    MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, std::cos(roll), std::sin(roll)}));
    return StepOnce(hub, Record(false, false, 0.1)).camera.up;
  };
  EXPECT_TRUE(IsNear(upAfter(0.2004), Vec(0, std::cos(0.2004), std::sin(0.2004)), 1e-15));
  EXPECT_TRUE(IsNear(upAfter(0.2003), Vec(0, 1, 0), 1e-15));
}

TEST(ClosestViewAlignShot, with_soft_the_pull_is_a_bell_that_counts_as_full_from_three_quarters_on) {
  const double threshold = 0.1;
  const auto weightAt = [&](double deviation) {
    const double angle = std::acos(1.0 - deviation);
    MemoryHub hub(OffFront(angle));
    const Vec eye = From(StepOnce(hub, Record(false, true, threshold)).camera.eye);
    // The eye runs on the chord from where it was to (10, 0, 0).
    return (eye - From(hub.view.eye)).norm() / (Vec(10, 0, 0) - From(hub.view.eye)).norm();
  };
  EXPECT_NEAR(weightAt(0.03), 1.0, 1e-9);  // exp(-2 * 0.09) = 0.835
  EXPECT_NEAR(weightAt(0.05), std::exp(-0.5) / 0.75, 1e-9);
  EXPECT_NEAR(weightAt(0.0703), std::exp(-2 * 0.703 * 0.703) / 0.75, 1e-9);
}

TEST(ClosestViewAlignShot, with_soft_the_up_is_drawn_from_four_times_as_far) {
  const double deviation = 0.2;  // of a threshold of 0.1: half of its reach of 0.4
  const double roll = std::acos(1.0 - deviation);
  MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, std::cos(roll), std::sin(roll)}));
  const double weight = std::exp(-0.5) / 0.75;
  const Vec start = From(hub.view.up);
  EXPECT_TRUE(IsNear(StepOnce(hub, Record(false, true, 0.1)).camera.up,
                     start + weight * (Vec(0, 1, 0) - start), 1e-12));
}

TEST(ClosestViewAlignShot, the_pivot_keeps_its_place_in_the_picture) {
  MemoryHub hub(WithPivot(OffFront(0.1), {1, 2, 0.5}));
  const Eigen::Vector2d before = oracle::Project(hub.view, From(hub.view.pivot));
  const Step step = StepOnce(hub, Record(false, false, 0.1));
  EXPECT_NEAR((oracle::Project(step.camera, From(hub.view.pivot)) - before).norm(), 0.0, 1e-12);
  EXPECT_TRUE(IsNear(To(oracle::Forward(step.camera)), Vec(-1, 0, 0), 1e-14));
}

TEST(ClosestViewAlignShot, each_of_the_26_views_draws_what_is_near_it) {
  const std::vector<Vec> views = Views(Vec::UnitX(), Vec::UnitY(), false);
  ASSERT_EQ(views.size(), 26U);
  for (const Vec& view : views) {
    const Vec up = std::abs(view.y()) > 0.9 ? Vec(1, 0, 0) : Vec(0, 1, 0);
    const Vec near = (view + 0.02 * up.cross(view)).normalized();
    MemoryHub hub(LookAt(To(-10 * near), {0, 0, 0}, To(up)));
    EXPECT_TRUE(IsNear(To(oracle::Forward(StepOnce(hub, Record(false, false, 0.1)).camera)), view, 1e-14));
  }
}

TEST(ClosestViewAlignShot, with_align_up_the_up_stays_upright) {
  // Rolled by 20 degrees in the front view: too far to snap, but straightened.
  const double roll = 20 * oracle::PI / 180;
  MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, std::cos(roll), std::sin(roll)}));
  EXPECT_TRUE(IsNear(StepOnce(hub, Record(true, false, 0.1)).camera.up, Vec(0, 1, 0), 1e-14));
  // Upside down it becomes straight upside down.
  hub.view.up = {0, -std::cos(roll), std::sin(roll)};
  EXPECT_TRUE(IsNear(StepOnce(hub, Record(true, false, 0.1)).camera.up, Vec(0, -1, 0), 1e-14));
}

TEST(ClosestViewAlignShot, with_align_up_a_view_along_the_axis_or_a_level_up_is_left_alone) {
  MemoryHub hub(LookAt({0, 10, 0}, {0, 0, 0}, {0.6, 0.1, 0.8}));
  const Vec up = From(hub.view.up).normalized();
  EXPECT_TRUE(IsNear(StepOnce(hub, Record(true, false, 0.01)).camera.up, up, 1e-14));
  hub.view = LookAt({10, 0, 0}, {0, 0, 0}, {0, 0, 1});
  EXPECT_TRUE(IsNear(StepOnce(hub, Record(true, false, 0.1)).camera.up, Vec(0, 0, 1), 1e-14));
}

TEST(ClosestViewAlignShot, custom_orbit_axes_take_the_place_of_the_worlds) {
  MemoryHub hub(LookAt({10, 9, 0}, {0, 0, 0}, {0, 0, 1}));
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.custom_orbit_front = {3, 4, 0};
  p.custom_orbit_up = {0, 0, 7};
  EXPECT_TRUE(IsNear(To(oracle::Forward(StepOnce(hub, Record(false, true, 1e3)).camera)),
                     Vec(-1, -1, 0).normalized(), 1e-14));
  p.do_custom_orbit = true;
  EXPECT_TRUE(IsNear(To(oracle::Forward(StepOnce(hub, Record(false, true, 1e3)).camera)),
                     Vec(-3, -4, 0).normalized(), 1e-14));
}

TEST(ClosestViewAlignShot, an_up_that_leans_on_the_front_is_made_perpendicular) {
  MemoryHub hub(LookAt({1, 10, 0}, {0, 0, 0}, {0, 0, 1}));
  hub.GetApplicationParameters().scene_up_direction = {0.5, 0.9, 0};
  EXPECT_TRUE(
      IsNear(To(oracle::Forward(StepOnce(hub, Record(false, true, 1e3)).camera)), Vec(0, -1, 0), 1e-14));
}

TEST(ClosestViewAlignShot, reads_the_camera_as_the_operations_of_the_frame_left_it) {
  MemoryHub hub(OffFront(1.0));
  hub.BeginShot(Record(false, false, 0.1));
  hub.view = OffFront(0.1);
  EXPECT_TRUE(IsNear(StepShot(hub, 0.016).camera.eye, Vec(10, 0, 0), 1e-14));
}

TEST(ClosestViewAlignShot, random_cameras_are_bent_by_the_weights) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(WithMarks(RandomCamera(random)));
    // A pivot beside the eye would bring the centre onto the eye.
    const double depth = oracle::Forward(hub.view).dot(From(hub.view.pivot) - From(hub.view.eye));
    if (std::abs(depth) < 0.01) continue;
    const Axes world = RandomAxes(random);
    ApplicationParameters& p = hub.GetApplicationParameters();
    p.scene_up_direction = world.up * random.Magnitude(0.1, 10);
    p.scene_front_direction = world.front * random.Magnitude(0.1, 10);
    const ClosestViewAlignShotParameters record =
        Record(random.Coin(), random.Coin(), random.Magnitude(0.01, 1));
    const Step step = StepOnce(hub, record);
    ASSERT_TRUE(step.goesOn);
    ASSERT_TRUE(IsNear(step.camera, Expected(hub.view, record, From(world.front), From(world.up)), 1e-9))
        << i;
  }
}
