// Whatever the host's camera, the scene and the record hold, the host is never given a number that is not
// finite, and every shot that has an end comes to it.
#include <gtest/gtest.h>

#include <limits>

#include "shots/shot_steps.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

constexpr int KINDS = 15;

// Mostly ordinary; now and then nothing, or far too much.
double SomeNumber(Random& random) {
  static constexpr double ODD[] = {0.0, -0.0, 1e-300, -1e-300, 1e300, -1e300, 1e-8, -1.0};
  return random.Integer(0, 3) == 0 ? random.OneOf(ODD) : random.Uniform(-50, 50);
}

Vector3 SomePoint(Random& random) {
  const double x = SomeNumber(random);
  const double y = SomeNumber(random);
  return {x, y, SomeNumber(random)};
}

double SomeDuration(Random& random) {
  static constexpr double DURATIONS[] = {0.0, -1.0, 5e-324, 0.05, 0.1, 0.1, 0.1};
  return random.OneOf(DURATIONS);
}

// Finite, of any sort, or with a number that is not.
CameraParameters SomeCamera(Random& random) {
  CameraParameters camera = RandomCamera(random);
  switch (random.Integer(0, 8)) {
    case 0:
      camera.centre = camera.eye;
      break;
    case 1:
      camera.up = camera.centre - camera.eye;
      break;
    case 2:
      camera.up = Vector3::Zero;
      break;
    case 3:
      camera.pivot = camera.eye;
      break;
    case 4:
      camera = CameraParameters();
      break;
    case 5:
      camera = ExtremeCamera(random);
      break;
    case 6:
      camera = BrokenCamera(random);
      break;
    default:
      break;
  }
  camera.perspective_with_ortho = random.Coin();
  return camera;
}

TargetCamPos SomeAnchor(Random& random) { return static_cast<TargetCamPos>(random.Integer(-1, 3)); }

void SetSomeScene(MemoryHub& hub, Random& random) {
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.use_projection_transitions = random.Coin();
  p.scene_is_world = random.Coin();
  p.do_custom_orbit = random.Integer(0, 3) == 0;
  if (random.Integer(0, 3) == 0) p.scene_up_direction = p.world_up_direction = SomePoint(random);
  if (random.Integer(0, 3) == 0) p.scene_front_direction = p.custom_orbit_up = SomePoint(random);
  p.global_bound_geometry = random.Coin() ? ApplicationParameters::BoundGeometryType::Box
                                          : ApplicationParameters::BoundGeometryType::Sphere;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  switch (random.Integer(0, 5)) {
    case 0:
      p.global_bound_radius = p.ucs_bound_radius = SomeNumber(random);
      p.global_bound_centre = SomePoint(random);
      p.global_bound_box = Box3(SomePoint(random), SomePoint(random));
      break;
    case 1:
      p.global_bound_radius = p.scene_bound_radius = nan;
      p.global_bound_box = p.scene_bound_box = Box3(Vector3(nan), Vector3(nan));
      break;
    case 2:
      p.global_bound_radius = p.scene_bound_radius = 0.0;
      p.global_bound_box = p.scene_bound_box = Box3(Vector3(), Vector3());
      break;
    default:
      break;
  }
}

bool BeginSome(MemoryHub& hub, int kind, Random& r) {
  const double duration = SomeDuration(r);
  switch (kind) {
    case 0:
      return hub.BeginShot(LookAtShotParameters{0, duration, SomePoint(r), SomePoint(r), SomeNumber(r)});
    case 1:
      return hub.BeginShot(ZoomRectShotParameters{0, duration, SomeNumber(r), SomeNumber(r), SomeNumber(r)});
    case 2:
      return hub.BeginShot(ProjectionTransitionShotParameters{SomeNumber(r), duration, r.Integer(-1, 2)});
    case 3:
      return hub.BeginShot(
          PanZoomShotParameters{SomeAnchor(r), duration, SomeNumber(r), SomeNumber(r), SomeNumber(r)});
    case 4:
      return hub.BeginShot(CenterShotParameters{SomePoint(r), SomeNumber(r), duration});
    case 5: {
      KeyframeShotParameters record;
      record.duration = duration;
      const int count = r.Integer(1, 4);
      for (int i = 0; i < count; ++i) record.keyframes.push_back(ExtremeCamera(r));
      if (r.Coin()) {
        for (int i = 0; i < count; ++i) record.times.push_back(SomeNumber(r));
      }
      return hub.BeginShot(record);
    }
    case 6:
      return hub.BeginShot(TransitionShotParameters{ExtremeCamera(r), SomeNumber(r), duration});
    case 7:
      return hub.BeginShot(ClosestViewAlignShotParameters{r.Coin(), r.Coin(), SomeNumber(r)});
    case 8: {
      ViewAlignShotParameters record;
      for (bool& flag : record.directionFlags) flag = r.Coin();
      record.duration = duration;
      record.rollAngle = SomeNumber(r);
      record.panAngle = SomeNumber(r);
      record.fit = r.Coin();
      record.keepSceneUp = r.Coin();
      record.customDirection = SomePoint(r);
      record.customUp = SomePoint(r);
      record.customFront = SomePoint(r);
      record.useCustom = r.Coin();
      return hub.BeginShot(record);
    }
    case 9:
      return hub.BeginShot(LookShotParameters{SomeAnchor(r), duration, SomeNumber(r), SomeNumber(r)});
    case 10:
      return hub.BeginShot(SpinShotParameters{r.Integer(-1, 2), SomeAnchor(r), duration, SomeNumber(r)});
    case 11:
      return hub.BeginShot(CraneShotParameters{r.Integer(-1, 2), SomeAnchor(r), duration, SomeNumber(r),
                                               SomeNumber(r), SomeNumber(r), r.Coin()});
    case 12:
      return hub.BeginShot(OrbitShotParameters{SomeAnchor(r), duration, SomeNumber(r), SomeNumber(r)});
    case 13:
      return hub.BeginShot(ZoomShotParameters{r.Integer(-1, 2), SomeAnchor(r), duration, SomeNumber(r)});
    default:
      return hub.BeginShot(
          TrackShotParameters{r.Integer(-1, 4), SomeAnchor(r), duration, SomeNumber(r), r.Coin()});
  }
}

class ShotOfKind : public ::testing::TestWithParam<int> {};

}  // namespace

TEST_P(ShotOfKind, never_gives_the_host_a_number_that_is_not_finite_and_comes_to_its_end) {
  const int kind = GetParam();
  ManualPlatform platform;
  Random random(static_cast<std::uint64_t>(kind));
  constexpr int ROUNDS = 10000;
  int moved = 0;
  for (int i = 0; i < ROUNDS; ++i) {
    MemoryHub hub(SomeCamera(random));
    SetSomeScene(hub, random);
    bool finite = true;
    hub.onApply = [&] { finite = finite && hub.view.IsFinite(); };
    ASSERT_TRUE(BeginSome(hub, kind, random));
    if (random.Integer(0, 3) == 0) hub.AdvanceActiveShot(SomeNumber(random));
    for (int frame = 0; frame < 4; ++frame) {
      platform.Advance(40);
      hub.PerformOperations();
      ASSERT_TRUE(finite) << "round " << i << " frame " << frame;
    }
    moved += hub.applied > 0 ? 1 : 0;
    // However long it was stepped back, enough time brings it to its end; the field of views has none.
    hub.AdvanceActiveShot(1e300);
    hub.AdvanceActiveShot(1e300);
    hub.PerformOperations();
    ASSERT_TRUE(finite) << "round " << i;
    ASSERT_EQ(hub.IsShotActive(), kind == 7) << "round " << i;
  }
  EXPECT_GT(moved, ROUNDS / 10);
}

INSTANTIATE_TEST_SUITE_P(All, ShotOfKind, ::testing::Range(0, KINDS));

TEST(ShotRobustness, a_step_of_no_length_that_can_be_told_does_no_harm) {
  for (int kind = 0; kind < KINDS; ++kind) {
    Random random(100);
    MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    ASSERT_TRUE(BeginSome(hub, kind, random));
    for (const double dt : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), 0.1}) {
      EXPECT_TRUE(hub.AdvanceActiveShot(dt));
      EXPECT_TRUE(hub.view.IsFinite()) << kind;
    }
  }
}
