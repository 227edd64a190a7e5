// Nothing that a host or a user can do makes a frame crash, loop, or send out a camera with a number that is
// not finite.
#include <gtest/gtest.h>

#include <limits>

#include "camera/hub_fakes.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr int LOWEST = std::numeric_limits<int>::min();
constexpr int HIGHEST = std::numeric_limits<int>::max();

int ExtremeCursor(Random& random) {
  static constexpr int SPECIAL[] = {LOWEST, HIGHEST, 0, 1, -1, LOWEST + 1, HIGHEST - 1};
  return random.Coin() ? random.OneOf(SPECIAL) : random.Integer(-2000, 2000);
}

double ExtremeSetting(Random& random) {
  static constexpr double SPECIAL[] = {0.0,          1.0,      -1.0,      1e300,     -1e300,   1e-300,
                                       NOT_A_NUMBER, INFINITE, -INFINITE, 1.0000001, 0.999999, 5e-324};
  return random.Coin() ? random.OneOf(SPECIAL) : random.Uniform(-10.0, 10.0);
}

Vector3 ExtremeDirection(Random& random) {
  if (random.Coin()) return random.Direction();
  const double x = ExtremeSetting(random);
  const double y = ExtremeSetting(random);
  return {x, y, ExtremeSetting(random)};
}

void ExtremeSettings(Random& random, ApplicationParameters& p) {
  using P = ApplicationParameters;
  static constexpr double P::*NUMBERS[] = {
      &P::fly_turn_multiplier,
      &P::fly_ramp_up_radius,
      &P::fly_up_down_sensitivity,
      &P::look_invert_tolerance,
      &P::pan_multiplier,
      &P::look_multiplier,
      &P::orbit_multiplier,
      &P::dolly_multiplier,
      &P::height_multiplier,
      &P::slide_multiplier,
      &P::scene_scale,
      &P::global_bound_radius,
      &P::zoom_sensitivity,
      &P::zoom_min_limit,
      &P::zoom_min_limit_multiplier,
      &P::zoom_back_distance,
      &P::snap_orbit_dead_zone,
      &P::snap_orbit_threshold_h,
      &P::snap_orbit_acceleration_ax,
      &P::snap_orbit_acceleration_bx,
      &P::snap_orbit_acceleration_point_x,
      &P::snap_orbit_threshold_v,
      &P::snap_orbit_acceleration_ay,
      &P::snap_orbit_acceleration_by,
      &P::snap_orbit_acceleration_point_y,
  };
  static constexpr Vector3 P::*DIRECTIONS[] = {
      &P::scene_up_direction, &P::scene_front_direction, &P::world_up_direction,  &P::world_front_direction,
      &P::custom_orbit_up,    &P::custom_orbit_front,    &P::global_bound_centre,
  };
  static constexpr bool P::*FLAGS[] = {
      &P::fly_planar_motion,
      &P::look_invert_vertical_axis,
      &P::preserve_orbit_up_direction,
      &P::align_orbit_up_direction,
      &P::constrain_orbit_horizontal,
      &P::constrain_orbit_vertical,
      &P::do_custom_orbit,
      &P::do_snap_orbit,
      &P::zoom_min_limit_motion,
      &P::zoom_sense_reversed,
      &P::use_projection_transitions,
      &P::scene_is_world,
  };
  static constexpr int P::*SIZES[] = {&P::viewport_width, &P::viewport_height, &P::zoom_in_snap_size,
                                      &P::zoom_out_snap_size, &P::fly_dead_zone_radius};
  for (const auto field : NUMBERS) {
    if (random.Integer(0, 3) == 0) p.*field = ExtremeSetting(random);
  }
  for (const auto field : DIRECTIONS) {
    if (random.Integer(0, 3) == 0) p.*field = ExtremeDirection(random);
  }
  for (const auto field : FLAGS) p.*field = random.Coin();
  for (const auto field : SIZES) {
    if (random.Integer(0, 3) == 0) p.*field = ExtremeCursor(random);
  }
  if (random.Integer(0, 3) == 0) p.SetFlyMoveMultiplier(ExtremeSetting(random));
  p.cam3d_controller_mode = static_cast<Cam3DControllerParameters::NavigationMode>(random.Integer(-1, 4));
}

constexpr OperationType BUILT[] = {OPERATION_PAN,   OPERATION_ORBIT, OPERATION_LOOK,   OPERATION_FLY,
                                   OPERATION_DOLLY, OPERATION_ZOOM,  OPERATION_ZOOM2D, OPERATION_HEIGHT,
                                   OPERATION_SLIDE, OPERATION_ROLL};

// A hub whose host counts what it must never be given, with an observer that does the same.
class Guarded {
 public:
  explicit Guarded(const CameraParameters& start) : hub(start), observer(hub, "") {
    hub.onApply = [this] { broken = broken || !hub.view.IsFinite(); };
    observer.onPerform = [this](OperationType) {
      seenBroken = seenBroken || !observer.lastCamera.IsFinite();
    };
    hub.AddOperationObserver(&observer);
  }

  void Play(Random& random, ManualPlatform& platform) {
    const OperationType type = random.OneOf(BUILT);
    hub.BeginOperation(type, ExtremeCursor(random), ExtremeCursor(random));
    Operation& operation = *hub.GetActiveOperation(type);
    operation.Set3DControllerOperation(random.Integer(0, 4) == 0);
    operation.SetCombined(random.Integer(0, 4) == 0);
    for (int frame = random.Integer(1, 4); frame > 0; --frame) {
      platform.Advance(static_cast<std::uint32_t>(random.Integer(0, 100)));
      hub.UpdateOperationParams(ExtremeDirection(random), ExtremeDirection(random), type);
      hub.UpdateOperationParams(random.Coin() ? KEY_UP : KEY_DOWN, random.Coin(), type);
      hub.Drag(type, ExtremeCursor(random), ExtremeCursor(random));
    }
    hub.EndOperation(type);
    hub.PerformOperations();
  }

  MemoryHub hub;
  FakeObserver observer;
  bool broken = false;
  bool seenBroken = false;
};

}  // namespace

TEST(HubRobustness, finite_cameras_stay_finite_whatever_the_settings_and_the_input) {
  Random random;
  ManualPlatform platform;
  for (int i = 0; i < 10000; ++i) {
    Guarded guarded(random.Coin() ? ExtremeCamera(random) : RandomCamera(random));
    ExtremeSettings(random, guarded.hub.GetApplicationParameters());
    for (int drag = 0; drag < 3; ++drag) guarded.Play(random, platform);
    ASSERT_FALSE(guarded.broken) << i;
    ASSERT_FALSE(guarded.seenBroken) << i;
    ASSERT_TRUE(guarded.hub.view.IsFinite()) << i;
    ASSERT_TRUE(guarded.hub.GetCameraParameters().IsFinite()) << i;
  }
}

TEST(HubRobustness, a_broken_camera_of_the_host_never_comes_back_to_it) {
  Random random;
  ManualPlatform platform;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters broken = BrokenCamera(random);
    ASSERT_FALSE(broken.IsFinite());
    Guarded guarded(broken);
    if (random.Coin()) ExtremeSettings(random, guarded.hub.GetApplicationParameters());
    guarded.Play(random, platform);
    ASSERT_FALSE(guarded.broken) << i;
  }
}

TEST(HubRobustness, a_drag_that_began_on_a_broken_camera_leaves_a_good_one_that_comes_later_good) {
  Random random;
  ManualPlatform platform;
  for (int i = 0; i < 10000; ++i) {
    Guarded guarded(BrokenCamera(random));
    const OperationType type = random.OneOf(BUILT);
    guarded.hub.GetApplicationParameters().preserve_orbit_up_direction = random.Coin();
    guarded.hub.GetApplicationParameters().do_snap_orbit = random.Coin();
    guarded.hub.BeginOperation(type, 0, 0);
    guarded.hub.Drag(type, random.Integer(-500, 500), random.Integer(-500, 500));
    guarded.hub.view = RandomCamera(random);
    guarded.seenBroken = false;
    guarded.hub.Drag(type, random.Integer(-500, 500), random.Integer(-500, 500));
    ASSERT_FALSE(guarded.broken) << i;
    ASSERT_FALSE(guarded.seenBroken) << i;
    ASSERT_TRUE(guarded.hub.view.IsFinite()) << i;
  }
}

TEST(HubRobustness, one_bad_frame_of_the_host_does_not_spoil_the_rest_of_a_drag) {
  ManualPlatform platform;
  for (const bool preserve : {false, true}) {
    Random random;
    MemoryHub hub(RandomCamera(random));
    hub.GetApplicationParameters().preserve_orbit_up_direction = preserve;
    hub.BeginOperation(Korvane::OPERATION_ORBIT, 0, 0);
    hub.Drag(Korvane::OPERATION_ORBIT, 10, 0);
    const CameraParameters good = hub.view;
    hub.view.pivot.x = std::numeric_limits<double>::quiet_NaN();
    hub.Drag(Korvane::OPERATION_ORBIT, 20, 0);
    hub.view = good;
    hub.Drag(Korvane::OPERATION_ORBIT, 60, 0);
    EXPECT_TRUE(hub.view.IsFinite());
    EXPECT_GT((hub.view.eye - good.eye).Length(), 1e-3 * (good.eye - good.pivot).Length()) << preserve;
  }
}

TEST(HubRobustness, settings_that_are_no_numbers_leave_the_camera_where_it_was) {
  using P = ApplicationParameters;
  const struct {
    OperationType type;
    double P::*field;
  } cases[] = {
      {OPERATION_PAN, &P::pan_multiplier},     {OPERATION_ORBIT, &P::orbit_multiplier},
      {OPERATION_LOOK, &P::look_multiplier},   {OPERATION_DOLLY, &P::dolly_multiplier},
      {OPERATION_ZOOM, &P::zoom_sensitivity},  {OPERATION_HEIGHT, &P::height_multiplier},
      {OPERATION_SLIDE, &P::slide_multiplier}, {OPERATION_ROLL, &P::orbit_multiplier},
  };
  for (const auto& each : cases) {
    for (const bool preserving : {true, false}) {
      const CameraParameters start = LookAt({3, 4, 10}, {1, 2, 3}, {0, 1, 0});
      MemoryHub hub(start);
      hub.GetApplicationParameters().*each.field = NOT_A_NUMBER;
      hub.GetApplicationParameters().preserve_orbit_up_direction = preserving;
      hub.BeginOperation(each.type, 0, 0);
      hub.Drag(each.type, 100, 50);
      // A free orbit makes up perpendicular to the view all the same.
      EXPECT_LT((hub.view.eye - start.eye).Length(), 1e-13) << each.type;
      EXPECT_LT((hub.view.centre - start.centre).Length(), 1e-13) << each.type;
    }
  }
}

TEST(HubRobustness, a_multiplier_of_zero_holds_the_camera) {
  const CameraParameters start = LookAt({3, 4, 10}, {1, 2, 3}, {0, 1, 0});
  MemoryHub hub(start);
  hub.GetApplicationParameters().pan_multiplier = 0.0;
  hub.GetApplicationParameters().orbit_multiplier = 0.0;
  for (const OperationType type : {OPERATION_PAN, OPERATION_ORBIT}) {
    hub.BeginOperation(type, 0, 0);
    EXPECT_TRUE(hub.Drag(type, 300, 200));
    hub.EndOperation(type);
  }
  EXPECT_TRUE(CameraCheckEqual(&hub.view, &start));
}

TEST(HubRobustness, a_borrower_forgets_a_hub_that_is_gone) {
  Borrowed<CameraOperations> borrowed;
  {
    MemoryHub hub;
    borrowed.Set(&hub);
    EXPECT_EQ(borrowed.Get(), &hub);
  }
  EXPECT_EQ(borrowed.Get(), nullptr);
}
