// The pull of the 26 standard views on an orbit, in both modes.
#include <gtest/gtest.h>

#include <cmath>

#include "camera/orbit_operation.h"
#include "camera/reference_orbit.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

constexpr OrbitOperation::RotationType HORIZONTAL = OrbitOperation::ROTATION_HORIZONTAL;
constexpr OrbitOperation::RotationType VERTICAL = OrbitOperation::ROTATION_VERTICAL;

class OpenOrbit : public OrbitOperation {
 public:
  using OrbitOperation::GetDeltaXY;
  using OrbitOperation::GetNextRotation;
  using OrbitOperation::GetWorldUpAndFront;
  using OrbitOperation::SnapToClosestView;
};

double Degrees(double degrees) { return degrees * oracle::PI / 180.0; }

// A camera 10 away from its pivot at the origin, by its azimuth (right-handed about y, 0 along the front,
// x) and elevation. A positive angle of the orbit lowers the azimuth and raises the elevation.
CameraParameters At(double azimuth, double elevation) {
  const double c = std::cos(elevation);
  return LookAt({10 * c * std::cos(azimuth), 10 * std::sin(elevation), -10 * c * std::sin(azimuth)},
                {0, 0, 0}, {0, 1, 0});
}

// 1000 by 1000 pixels and the multiplier 5: a pixel turns by 0.005 radians. The views pull within 15 degrees
// (0.2618), the inner band begins halfway (0.1309).
class Snapping : public ::testing::Test {
 protected:
  explicit Snapping(bool turntable = true) : p(hub.GetApplicationParameters()) {
    p.viewport_width = 1000;
    p.viewport_height = 1000;
    p.do_snap_orbit = true;
    p.preserve_orbit_up_direction = turntable;
  }

  void Start(double azimuth, double elevation = 0.0) {
    hub.view = At(azimuth, elevation);
    hub.BeginOperation(OPERATION_ORBIT, 0, 0);
    x = y = 0;
  }
  // From where the cursor is.
  void Move(int dx, int dy = 0) { hub.Drag(OPERATION_ORBIT, x += dx, y += dy); }

  double Azimuth() const {
    const Vector3& eye = hub.GetCameraParameters().eye;
    return std::atan2(-eye.z, eye.x);
  }
  double Elevation() const { return std::asin(hub.GetCameraParameters().eye.y / 10.0); }

  // Angles near zero are measured by an arc cosine, which holds sqrt(2^-53) = 1e-8 of them.
  static constexpr double NEAR = 1e-7;

  MemoryHub hub;
  ApplicationParameters& p;
  int x = 0;
  int y = 0;
};

class FreeSnapping : public Snapping {
 protected:
  FreeSnapping() : Snapping(false) {}
};

// The curve alone, on numbers that binary holds exactly: multiplier 4, threshold 1/4 with its inner band
// from 1/8 on, other numbers for the vertical axis.
class SnapCurve : public ::testing::Test {
 protected:
  SnapCurve() : p(hub.GetApplicationParameters()) {
    p.do_snap_orbit = true;
    p.orbit_multiplier = 4.0;
    p.snap_orbit_dead_zone = 0.0625;
    p.snap_orbit_threshold_h = 0.25;
    p.snap_orbit_acceleration_ax = 1.5;
    p.snap_orbit_acceleration_bx = 2.0;
    p.snap_orbit_acceleration_point_x = 0.5;
    p.snap_orbit_threshold_v = 0.5;
    p.snap_orbit_acceleration_ay = 4.0;
    p.snap_orbit_acceleration_by = 8.0;
    p.snap_orbit_acceleration_point_y = 0.25;
    hub.view = At(1.0, 0.0);
    hub.PerformOperations();
    orbit.InitOperation(0, 0, &hub);
  }

  double Horizontal(double remaining, double delta) {
    return orbit.GetNextRotation(HORIZONTAL, remaining, delta);
  }
  double Vertical(double remaining, double delta) {
    return orbit.GetNextRotation(VERTICAL, remaining, delta);
  }
  static double Above(double value) { return std::nextafter(value, 1.0); }

  MemoryHub hub;
  ApplicationParameters& p;
  OpenOrbit orbit;
};

constexpr double DELTA = 1.0 / 64.0;  // a plain step of 1/16

}  // namespace

// ---- the curve ----

TEST_F(SnapCurve, beyond_the_threshold_a_step_is_the_motion_times_the_multiplier) {
  EXPECT_EQ(Horizontal(Above(0.25), DELTA), 0.0625);
  EXPECT_EQ(Horizontal(Above(0.25), -DELTA), -0.0625);
  EXPECT_EQ(Horizontal(-Above(0.25), DELTA), 0.0625);
  EXPECT_EQ(Vertical(Above(0.5), DELTA), 0.0625);
}

TEST_F(SnapCurve,
       in_the_outer_band_which_includes_the_threshold_motion_towards_is_sped_up_and_away_slowed_down) {
  for (const double remaining : {0.25, Above(0.125)}) {
    EXPECT_EQ(Horizontal(remaining, DELTA), 0.0625 * 1.5);
    EXPECT_EQ(Horizontal(remaining, -DELTA), -0.0625 / 1.5);
    EXPECT_EQ(Horizontal(-remaining, -DELTA), -0.0625 * 1.5);
    EXPECT_EQ(Horizontal(-remaining, DELTA), 0.0625 / 1.5);
  }
}

TEST_F(SnapCurve, in_the_inner_band_which_includes_its_edge_the_second_acceleration_holds) {
  EXPECT_EQ(Horizontal(0.125, DELTA / 2), 0.03125 * 2);
  EXPECT_EQ(Horizontal(0.125, -DELTA), -0.0625 / 2);
  EXPECT_EQ(Horizontal(-0.0625, -DELTA / 4), -0.015625 * 2);
  EXPECT_EQ(Horizontal(-0.0625, DELTA), 0.0625 / 2);
}

TEST_F(SnapCurve, the_vertical_axis_has_its_own_numbers) {
  // The inner band begins at (1 - 0.25) 0.5 = 0.375.
  EXPECT_EQ(Vertical(0.5, DELTA), 0.0625 * 4);
  EXPECT_EQ(Vertical(0.5, -DELTA), -0.0625 / 4);
  EXPECT_EQ(Vertical(Above(0.375), DELTA), 0.0625 * 4);
  EXPECT_EQ(Vertical(0.375, DELTA / 4), 0.015625 * 8);
  EXPECT_EQ(Vertical(0.375, -DELTA), -0.0625 / 8);
}

TEST_F(SnapCurve, on_the_view_itself_every_motion_leads_away) {
  EXPECT_EQ(Horizontal(0.0, DELTA), 0.0625 / 2);
  EXPECT_EQ(Horizontal(0.0, -DELTA), -0.0625 / 2);
  EXPECT_EQ(Horizontal(0.0, 0.0), 0.0);
}

TEST_F(SnapCurve, a_step_that_would_exactly_reach_the_view_is_not_an_overshoot) {
  // 1/16 doubled is exactly the 1/8 that remains: the view is reached and not held.
  EXPECT_EQ(Horizontal(0.125, DELTA), 0.125);
  EXPECT_EQ(Horizontal(0.0, DELTA), 0.03125);
}

TEST_F(SnapCurve, a_step_that_overshoots_lands_exactly_on_the_view_and_is_held) {
  const double below = std::nextafter(0.125, 0.0);
  EXPECT_EQ(Horizontal(below, DELTA), below);
  EXPECT_EQ(Horizontal(0.0, DELTA), 0.0);
}

TEST_F(SnapCurve, a_step_beyond_the_threshold_may_overshoot_too) {
  EXPECT_EQ(Horizontal(-0.3, -0.1), -0.3);
  EXPECT_EQ(Horizontal(1.0, 0.01), 0.0);
}

TEST_F(SnapCurve, a_step_away_never_lands) {
  EXPECT_EQ(Horizontal(0.01, -1.0), -2.0);
  EXPECT_EQ(Horizontal(1.0, DELTA), 0.0625);
}

TEST_F(SnapCurve, the_hold_includes_both_edges_of_the_dead_zone) {
  Horizontal(0.01, DELTA);
  EXPECT_EQ(Horizontal(0.3, 0.0625), 0.0);     // accumulated 1/16
  EXPECT_EQ(Horizontal(0.3, -0.125), 0.0);     // accumulated -1/16
  EXPECT_EQ(Horizontal(0.3, 0.0625), 0.0);     // accumulated 0
  EXPECT_EQ(Horizontal(0.3, 0.03125), 0.0);    // and the motion adds up: 1/32
  EXPECT_EQ(Horizontal(0.3, 0.0625), 0.0625);  // 3/32: the 1/32 past the zone, times 4 / 2
}

TEST_F(SnapCurve, leaving_backward_counts_what_lies_past_the_zone_too) {
  Horizontal(0.01, DELTA);
  EXPECT_EQ(Horizontal(0.3, -0.125), -0.0625 * 4 / 2);
}

TEST_F(SnapCurve, leaving_is_at_the_inner_speed_of_its_own_axis_wherever_the_view_is) {
  Vertical(0.01, DELTA);
  EXPECT_EQ(Vertical(3.0, 0.125), 0.0625 * 4 / 8);
}

TEST_F(SnapCurve, once_left_the_view_no_longer_holds) {
  Horizontal(0.01, DELTA);
  Horizontal(0.3, 0.125);
  EXPECT_EQ(Horizontal(0.3, DELTA), 0.0625);
}

TEST_F(SnapCurve, each_axis_is_held_by_itself) {
  Horizontal(0.01, DELTA);
  EXPECT_EQ(Horizontal(0.3, DELTA), 0.0);
  EXPECT_EQ(Vertical(0.6, DELTA), 0.0625);
}

TEST_F(SnapCurve, each_landing_starts_the_accumulated_motion_of_both_axes_from_zero) {
  Horizontal(0.01, DELTA);
  EXPECT_EQ(Horizontal(0.0, 0.05), 0.0);
  Vertical(0.01, DELTA);
  // 0.05 + 0.05 would be past 0.0625.
  EXPECT_EQ(Horizontal(0.0, 0.05), 0.0);
  EXPECT_EQ(Vertical(0.0, 0.05), 0.0);
  // Left and landed again: the hold has its whole zone again.
  EXPECT_NE(Horizontal(0.0, 0.05), 0.0);
  EXPECT_EQ(Horizontal(0.01, 1.0), 0.01);
  EXPECT_EQ(Horizontal(0.0, 0.0625), 0.0);
  EXPECT_EQ(Vertical(0.0, 0.0625), 0.0);
}

TEST_F(SnapCurve, a_new_drag_forgets_the_hold) {
  Horizontal(0.01, DELTA);
  orbit.InitOperation(0, 0, &hub);
  EXPECT_EQ(Horizontal(0.3, DELTA), 0.0625);
}

// ---- the closest view ----

TEST_F(SnapCurve, without_snapping_the_outputs_stay_as_the_caller_set_them) {
  p.do_snap_orbit = false;
  orbit.InitOperation(0, 0, &hub);
  double remainingX = 7.0;
  double remainingY = 8.0;
  orbit.SnapToClosestView({0, 1, 0}, remainingX, remainingY);
  EXPECT_EQ(remainingX, 7.0);
  EXPECT_EQ(remainingY, 8.0);
}

TEST_F(SnapCurve, the_remaining_angles_lead_to_the_nearest_view) {
  struct {
    double azimuth, elevation, viewAzimuth, viewElevation;
  } const cases[] = {
      {10, 5, 0, 0},
      {-10, -5, 0, 0},
      {100, 10, 90, 0},
      {-170, 8, 180, 0},
      {40, 3, 45, 0},
      {50, -4, 45, 0},
      {5, 40, 0, 45},
      {-95, -50, -90, -45},
      {40, 30, 45, 35.2643896827546},
      {-130, -40, -135, -35.2643896827546},
  };
  for (const auto& each : cases) {
    hub.view = At(Degrees(each.azimuth), Degrees(each.elevation));
    hub.PerformOperations();
    orbit.InitOperation(0, 0, &hub);
    double remainingX = 0.0;
    double remainingY = 0.0;
    orbit.SnapToClosestView({0, 1, 0}, remainingX, remainingY);
    const double apart = std::remainder(each.azimuth - each.viewAzimuth, 360.0);
    EXPECT_NEAR(remainingX, Degrees(apart), 1e-9) << each.azimuth << " " << each.elevation;
    EXPECT_NEAR(remainingY, Degrees(each.viewElevation - each.elevation), 1e-9)
        << each.azimuth << " " << each.elevation;
  }
}

TEST_F(SnapCurve, a_view_along_the_axis_is_measured_on_the_up_direction_against_faces_only) {
  // Straight down; up at the azimuth 40 degrees. The nearest face is x, 40 degrees off, although an edge
  // view lies only 5 degrees off.
  hub.view = LookAt({0, 10, 0}, {0, 0, 0}, {std::cos(Degrees(40)), 0, -std::sin(Degrees(40))});
  hub.PerformOperations();
  orbit.InitOperation(0, 0, &hub);
  double remainingX = 7.0;
  double remainingY = 7.0;
  orbit.SnapToClosestView({0, 1, 0}, remainingX, remainingY);
  EXPECT_NEAR(remainingX, Degrees(40), 1e-9);
  EXPECT_EQ(remainingY, 0.0);
}

TEST_F(SnapCurve, the_views_stand_in_the_axes_that_the_hub_does_not_take) {
  p.world_up_direction = {0, 0, 1};
  p.world_front_direction = {0, 1, 0};
  p.scene_up_direction = {1, 0, 0};
  p.scene_front_direction = {0, 0, 1};
  Vector3 front;
  Vector3 up;
  orbit.GetWorldUpAndFront(front, up);
  EXPECT_EQ(front, Vector3(0, 1, 0));
  EXPECT_EQ(up, Vector3(0, 0, 1));
  EXPECT_EQ(hub.GetWorldUpDirection(), Vector3(1, 0, 0));
  p.scene_is_world = false;
  orbit.GetWorldUpAndFront(front, up);
  EXPECT_EQ(front, Vector3(0, 0, 1));
  EXPECT_EQ(up, Vector3(1, 0, 0));
  EXPECT_EQ(hub.GetWorldUpDirection(), Vector3(0, 0, 1));
}

TEST_F(SnapCurve, motion_since_the_last_frame_is_the_cursors_or_the_controllers) {
  p.viewport_width = 1000;
  p.viewport_height = 500;
  double dx = 0.0;
  double dy = 0.0;
  orbit.UpdateCursor(100, 50);
  orbit.GetDeltaXY(dx, dy);
  EXPECT_EQ(dx, 0.1);
  EXPECT_EQ(dy, 0.1);
  orbit.UpdatePreviousCursor();
  orbit.GetDeltaXY(dx, dy);
  EXPECT_EQ(dx, 0.0);
  orbit.Set3DControllerOperation(true);
  orbit.Update3DControllerInput({9, 9, 9}, {0.25, 0.5, 9});
  orbit.GetDeltaXY(dx, dy);
  EXPECT_EQ(dx, 0.5);
  EXPECT_EQ(dy, 0.25);
}

// ---- drags on the turntable ----

TEST_F(Snapping, far_from_a_view_the_drag_is_plain) {
  Start(0.3);
  Move(4);
  EXPECT_NEAR(Azimuth(), 0.28, NEAR);
}

TEST_F(Snapping, the_bands_speed_up_towards_and_slow_down_away) {
  Start(0.2);
  Move(4);  // outer, 0.02 times 1.5
  EXPECT_NEAR(Azimuth(), 0.17, NEAR);
  Move(-4);  // outer, 0.02 / 1.5
  EXPECT_NEAR(Azimuth(), 0.17 + 0.02 / 1.5, NEAR);
  hub.EndOperation(OPERATION_ORBIT);
  Start(0.1);
  Move(4);  // inner, 0.02 times 2
  EXPECT_NEAR(Azimuth(), 0.06, NEAR);
  Move(-4);
  EXPECT_NEAR(Azimuth(), 0.07, NEAR);
}

TEST_F(Snapping, without_the_setting_the_same_drag_is_plain) {
  p.do_snap_orbit = false;
  Start(0.1);
  Move(4);
  EXPECT_NEAR(Azimuth(), 0.08, 1e-14);
}

TEST_F(Snapping, the_setting_is_read_when_the_drag_begins) {
  Start(0.1);
  p.do_snap_orbit = false;
  Move(4);
  EXPECT_NEAR(Azimuth(), 0.06, NEAR);
}

TEST_F(Snapping, lands_on_the_view_holds_in_the_dead_zone_and_leaves_it) {
  Start(0.1);
  Move(12);  // 0.06 doubled is more than 0.1
  EXPECT_NEAR(Azimuth(), 0.0, NEAR);
  const Vector3 held = hub.GetCameraParameters().eye;
  for (const int dx : {20, 25, -60, -30, 45}) {  // within 45 pixels of the landing all the time
    Move(dx);
    EXPECT_EQ(hub.GetCameraParameters().eye, held);
  }
  Move(47);  // 47 pixels past the landing: 2 of them count, 0.01 / 2
  EXPECT_NEAR(Azimuth(), -0.005, NEAR);
  Move(2);  // the inner band, away: 0.01 / 2
  EXPECT_NEAR(Azimuth(), -0.01, NEAR);
}

TEST_F(Snapping, lands_holds_and_leaves_vertically) {
  Start(0.0, -0.1);
  Move(0, 12);
  EXPECT_NEAR(Elevation(), 0.0, NEAR);
  Move(0, 45);
  EXPECT_NEAR(Elevation(), 0.0, NEAR);
  Move(0, 2);
  EXPECT_NEAR(Elevation(), 0.005, NEAR);
}

TEST_F(Snapping, the_whole_drag_is_the_sum_of_its_steps_from_the_initial_camera) {
  Start(0.5);
  for (int i = 0; i < 10; ++i) Move(4);
  // Ten plain steps of 0.02. The start is 0.285 off the edge view at 0.785, the end 0.3 off the face at 0:
  // both outside the threshold of 0.2618.
  EXPECT_NEAR(Azimuth(), 0.3, NEAR);
  for (int i = 0; i < 3; ++i) Move(4);  // 0.28, 0.26, then the outer band: 0.23
  EXPECT_NEAR(Azimuth(), 0.23, NEAR);
}

TEST_F(Snapping, an_upside_down_drag_snaps_with_its_reversed_sense) {
  hub.view = At(-0.1, 0.0);
  hub.view.up = {0, -1, 0};
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  Move(4);  // reversed: the azimuth grows, towards the view, doubled
  EXPECT_NEAR(Azimuth(), -0.06, NEAR);
}

TEST_F(Snapping, a_new_view_at_another_elevation_releases_the_vertical_hold) {
  const double corner = std::asin(std::sqrt(1.0 / 3.0));  // 35.26 degrees
  Start(Degrees(45), corner - 0.05);
  Move(0, 8);  // 0.04 doubled lands on the corner's elevation
  EXPECT_NEAR(Elevation(), corner, NEAR);
  // Far round to azimuth 10 degrees: past half the way the view of the edge at 45 degrees is nearest.
  // From the corner itself the first 35 degrees go in one step of the inner band, at half the speed.
  Move(static_cast<int>(std::lround(Degrees(35) / 0.005 * 2)));
  EXPECT_NEAR(Azimuth(), Degrees(10), 0.003);
  EXPECT_NEAR(Elevation(), corner, NEAR);
  // Had the hold remained, two pixels would stay within its dead zone. The edge is 0.17 off: outer band.
  Move(0, 2);
  EXPECT_NEAR(Elevation(), corner + 0.01 * 1.5, NEAR);
}

TEST_F(Snapping, a_new_view_at_the_same_elevation_keeps_the_vertical_hold) {
  Start(0.0, -0.05);
  Move(0, 8);
  EXPECT_NEAR(Elevation(), 0.0, NEAR);
  Move(static_cast<int>(std::lround(Degrees(-40) / 0.005 * 2)));  // to 40 degrees, near the edge at 45
  EXPECT_NEAR(Azimuth(), Degrees(40), 0.003);
  Move(0, 20);
  EXPECT_NEAR(Elevation(), 0.0, NEAR);
}

TEST_F(Snapping, the_horizontal_hold_outlives_a_new_view_on_the_turntable) {
  Start(0.05);
  Move(8);
  EXPECT_NEAR(Azimuth(), 0.0, NEAR);
  Move(0, static_cast<int>(std::lround(Degrees(40) / 0.005 * 2)));  // towards the edge above
  EXPECT_NEAR(Elevation(), Degrees(40), 0.003);
  Move(20);
  EXPECT_NEAR(Azimuth(), 0.0, NEAR);
}

TEST_F(Snapping, a_constrained_axis_neither_moves_nor_lands) {
  p.constrain_orbit_horizontal = true;
  Start(0.1);
  Move(12);
  EXPECT_NEAR(Azimuth(), 0.1, NEAR);
  p.constrain_orbit_horizontal = false;
  Move(2);  // not held: 0.01 doubled
  EXPECT_NEAR(Azimuth(), 0.08, NEAR);
}

TEST_F(Snapping, straight_down_the_up_direction_turns_onto_the_axes) {
  // Up at azimuth 0.1; the drag to the right lowers it and lands on the front axis.
  hub.view = LookAt({0, 10, 0}, {0, 0, 0}, {std::cos(0.1), 0, -std::sin(0.1)});
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  Move(12);
  const Vector3 up = hub.GetCameraParameters().up;
  EXPECT_NEAR(std::atan2(-up.z, up.x), 0.0, NEAR);
}

// ---- drags in the free mode ----

TEST_F(FreeSnapping, the_bands_speed_up_towards_and_slow_down_away) {
  Start(0.2);
  Move(4);
  EXPECT_NEAR(Azimuth(), 0.17, NEAR);
  Move(-4);
  EXPECT_NEAR(Azimuth(), 0.17 + 0.02 / 1.5, NEAR);
}

TEST_F(FreeSnapping, lands_on_the_view_holds_in_the_dead_zone_and_leaves_it) {
  Start(0.1);
  Move(12);
  EXPECT_NEAR(Azimuth(), 0.0, NEAR);
  Move(45);
  EXPECT_NEAR(Azimuth(), 0.0, NEAR);
  Move(2);
  EXPECT_NEAR(Azimuth(), -0.005, NEAR);
}

TEST_F(FreeSnapping, a_new_view_releases_both_holds) {
  Start(0.05);
  Move(8);
  EXPECT_NEAR(Azimuth(), 0.0, NEAR);
  Move(0, static_cast<int>(std::lround(Degrees(40) / 0.005 * 2)));
  EXPECT_NEAR(Elevation(), Degrees(40), 0.003);
  // On the turntable this would be held. Straight above the front the flat target is the view's own.
  Move(20);
  EXPECT_GT(std::abs(Azimuth()), 0.01);
}

// ---- properties ----

namespace {

// Every frame of a drag of 12 against the second writing of the orbit.
void CompareDrags(bool turntable, int cameras) {
  Random random;
  for (int i = 0; i < cameras; ++i) {
    MemoryHub hub(RandomCamera(random));
    ApplicationParameters& p = hub.GetApplicationParameters();
    p.do_snap_orbit = true;
    p.preserve_orbit_up_direction = turntable;
    p.snap_orbit_dead_zone = random.Uniform(0.0, 0.05);
    p.snap_orbit_threshold_v = random.Uniform(0.1, 0.4);
    p.snap_orbit_acceleration_ay = random.Uniform(1.0, 2.0);
    p.snap_orbit_acceleration_by = random.Uniform(1.5, 3.0);
    p.snap_orbit_acceleration_point_y = random.Uniform(0.2, 0.8);
    const Axes axes = RandomAxes(random);
    p.scene_up_direction = p.world_up_direction = axes.up;
    p.scene_front_direction = p.world_front_direction = axes.front;
    if (random.Integer(0, 3) == 0) {
      const Axes other = RandomAxes(random);
      p.world_up_direction = other.up;
      p.world_front_direction = other.front;
    }
    p.scene_is_world = random.Coin();
    oracle::ReferenceOrbit reference(hub.view, p);
    hub.BeginOperation(OPERATION_ORBIT, 0, 0);
    int x = 0;
    int y = 0;
    for (int frame = 0; frame < 12; ++frame) {
      const int dx = random.Integer(-80, 80);
      const int dy = random.Integer(-20, 20);
      // Another speed each time: whole pixels there and back would reach a view exactly, where the last bit
      // decides whether it holds.
      p.orbit_multiplier = random.Uniform(4.0, 6.0);
      hub.Drag(OPERATION_ORBIT, x += dx, y += dy);
      reference.Frame(dx / 1024.0, dy / 768.0);
      const CameraParameters& c = hub.GetCameraParameters();
      const oracle::Camera expected = reference.GetCamera();
      // Landings are measured by an arc cosine on one side: 1e-8 of a radian near a view, on up to 100
      // units, and the tolerance of parallel vectors, 1.2e-7, on the other.
      ASSERT_LT((oracle::From(c.eye) - expected.eye).norm(), 1e-4) << i << " frame " << frame;
      ASSERT_LT((oracle::From(c.centre) - expected.centre).norm(), 1e-4) << i << " frame " << frame;
      ASSERT_LT((oracle::From(c.up) - expected.up).norm(), 1e-6) << i << " frame " << frame;
    }
  }
}

}  // namespace

TEST(SnappingProperty, agrees_with_a_second_writing_of_it_on_the_turntable) { CompareDrags(true, 10000); }

TEST(SnappingProperty, agrees_with_a_second_writing_of_it_in_the_free_mode) { CompareDrags(false, 10000); }
