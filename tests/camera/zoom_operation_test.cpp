#include "camera/zoom_operation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "camera/oracle.h"
#include "support/cameras.h"
#include "support/memory_hub.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

// Looking along -z; the pivot is the centre, 10 units away. A pixel multiplies the distance by 1.015.
class Zoom : public ::testing::Test {
 protected:
  Zoom() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), p(hub.GetApplicationParameters()) {
    p.viewport_width = 1000;
    p.viewport_height = 500;
  }

  void Begin() { hub.BeginOperation(OPERATION_ZOOM, 0, 0); }
  // A positive offset leads away from the pivot: the cursor moves to the left by that many pixels.
  void DragBy(int offset) { hub.Drag(OPERATION_ZOOM, -offset, 0); }
  void ZoomBy(int offset) {
    Begin();
    DragBy(offset);
  }

  double UnitAmount() const {
    return dynamic_cast<const ZoomOperation&>(*hub.GetActiveOperation(OPERATION_ZOOM)).GetUnitAmount();
  }
  void ExpectEyeZ(double z) { EXPECT_NEAR(hub.view.eye.z, z, NEAR); }
  void ExpectCentreZ(double z) { EXPECT_NEAR(hub.view.centre.z, z, NEAR); }

  // Powers up to 1.015^300 of lengths near 10, each of a relative error of 1e-15.
  static constexpr double NEAR = 1e-11;

  MemoryHub hub;
  ApplicationParameters& p;
};

double Power(double offset) { return std::exp(offset * std::log(1.015)); }

}  // namespace

TEST(ZoomTable, the_unit_amount_is_the_seventh_virtual_operation) {
  // The destructor is the first operation and takes two places of the table.
  EXPECT_EQ(VirtualSlot(&ZoomOperation::GetUnitAmount), 7);
  EXPECT_EQ(ZoomOperation().GetUnitAmount(), 0.0);
}

// ---- the sense ----

TEST_F(Zoom, a_drag_to_the_left_or_downward_leads_away_and_both_add_up) {
  Begin();
  hub.Drag(OPERATION_ZOOM, -30, 0);
  ExpectEyeZ(10 * Power(30));
  hub.Drag(OPERATION_ZOOM, 0, 30);
  ExpectEyeZ(10 * Power(30));
  hub.Drag(OPERATION_ZOOM, -10, 20);
  ExpectEyeZ(10 * Power(30));
  hub.Drag(OPERATION_ZOOM, 30, 0);
  ExpectEyeZ(10 * Power(-30));
  hub.Drag(OPERATION_ZOOM, 0, -30);
  ExpectEyeZ(10 * Power(-30));
  hub.Drag(OPERATION_ZOOM, 40, 40);
  ExpectEyeZ(10);
}

TEST_F(Zoom, the_sense_can_be_reversed) {
  p.zoom_sense_reversed = true;
  Begin();
  hub.Drag(OPERATION_ZOOM, -30, 0);
  ExpectEyeZ(10 * Power(-30));
  hub.Drag(OPERATION_ZOOM, 0, -30);
  ExpectEyeZ(10 * Power(30));
}

TEST_F(Zoom, always_computes_from_the_start_of_the_drag) {
  Begin();
  for (const int offset : {5, 80, -60, 30}) DragBy(offset);
  ExpectEyeZ(10 * Power(30));
}

TEST_F(Zoom, the_eye_runs_on_the_line_to_the_pivot_and_the_centre_takes_the_pivots_depth) {
  // The pivot off the axis: P - E0 = (3, 4, -6), F0 = (0, 0, -1).
  hub.view.pivot = {3, 4, 4};
  ZoomBy(30);
  const double r = Power(30);
  EXPECT_NEAR(hub.view.eye.x, 3 - 3 * r, NEAR);
  EXPECT_NEAR(hub.view.eye.y, 4 - 4 * r, NEAR);
  EXPECT_NEAR(hub.view.eye.z, 4 + 6 * r, NEAR);
  // The centre is straight ahead of the new eye, at the depth 6 r of the pivot.
  EXPECT_NEAR(hub.view.centre.x, 3 - 3 * r, NEAR);
  EXPECT_NEAR(hub.view.centre.y, 4 - 4 * r, NEAR);
  EXPECT_NEAR(hub.view.centre.z, 4, NEAR);
  EXPECT_EQ(hub.view.pivot, Vector3(3, 4, 4));
  DragBy(-30);
  EXPECT_NEAR(hub.view.eye.z, 4 + 6 / r, NEAR);
  EXPECT_NEAR(hub.view.centre.z, 4, NEAR);
}

// ---- moving away ----

TEST_F(Zoom, with_an_out_snap_size_of_0_there_is_no_dead_zone_and_an_offset_of_0_runs_the_zoom_in_branch) {
  ASSERT_EQ(p.zoom_out_snap_size, 0);
  hub.view.centre = {0, 0, 5};  // the zoom-in branch puts it at the pivot's depth even with r = 1
  ZoomBy(0);
  ExpectEyeZ(10);
  ExpectCentreZ(0);
  EXPECT_EQ(UnitAmount(), 0.0);
  DragBy(1);
  ExpectEyeZ(10 * 1.015);
}

TEST_F(Zoom, the_out_snap_size_is_a_dead_zone_that_does_not_count) {
  p.zoom_out_snap_size = 20;
  ZoomBy(19);
  ExpectEyeZ(10);
  EXPECT_EQ(UnitAmount(), 0.0);
  EXPECT_EQ(hub.applied, 0);
  DragBy(20);
  ExpectEyeZ(10);
  DragBy(50);
  ExpectEyeZ(10 * Power(30));
  DragBy(-20);  // no dead zone towards the pivot
  ExpectEyeZ(10 * Power(-20));
}

TEST_F(Zoom, the_out_dead_zone_ends_before_its_last_pixel_and_begins_after_an_offset_of_0) {
  p.zoom_out_snap_size = 20;
  ZoomBy(50);
  DragBy(20);
  ExpectEyeZ(10);
  DragBy(50);
  DragBy(0);
  ExpectEyeZ(10);
}

TEST_F(Zoom, within_the_out_dead_zone_the_camera_keeps_what_the_frame_before_made_of_it) {
  p.zoom_out_snap_size = 20;
  ZoomBy(50);
  DragBy(10);
  ExpectEyeZ(10 * Power(30));
  EXPECT_EQ(UnitAmount(), 0.0);
}

TEST_F(Zoom, zooming_out_ends_at_the_back_distance) {
  p.zoom_back_distance = 4.0;
  ZoomBy(10);  // 10 * 1.015^10 = 11.605
  ExpectEyeZ(10 * Power(10));
  EXPECT_NEAR(UnitAmount(), -(10 * Power(10) - 10) / 4.0, 1e-12);
  DragBy(200);
  ExpectEyeZ(14);
  ExpectCentreZ(0);
  EXPECT_EQ(UnitAmount(), -1.0);
}

TEST_F(Zoom, the_back_distance_counts_along_the_line_to_the_pivot) {
  hub.view.pivot = {3, 0, 6};  // P - E0 = (3, 0, -4), 5 long
  p.zoom_back_distance = 5.0;
  ZoomBy(200);
  EXPECT_NEAR(hub.view.eye.x, -3, NEAR);
  EXPECT_NEAR(hub.view.eye.z, 14, NEAR);
}

TEST_F(Zoom, without_a_back_distance_nothing_limits_the_way_back) {
  ASSERT_EQ(p.zoom_back_distance, std::numeric_limits<double>::max());
  ZoomBy(1000);
  EXPECT_NEAR(hub.view.eye.z / (10 * Power(1000)), 1.0, 1e-11);
  EXPECT_NEAR(UnitAmount(), 0.0, 1e-290);
}

TEST_F(Zoom, a_back_distance_of_0_holds_the_eye_and_shows_no_progress) {
  p.zoom_back_distance = 0.0;
  ZoomBy(50);
  ExpectEyeZ(10);
  EXPECT_EQ(UnitAmount(), 0.0);
}

TEST_F(Zoom, a_negative_back_distance_shows_no_progress) {
  p.zoom_back_distance = -3.0;
  ZoomBy(50);
  ExpectEyeZ(7);  // E0 - G D
  EXPECT_EQ(UnitAmount(), 0.0);
}

TEST_F(Zoom, a_negative_back_distance_that_is_not_passed_counts_as_any_other) {
  // A sensitivity below 1 leads in where another leads back: 10 * 0.5 = 5 units, so b = -5.
  p.zoom_sensitivity = 0.5;
  p.zoom_back_distance = -5.0;
  ZoomBy(1);
  ExpectEyeZ(5);
  EXPECT_EQ(UnitAmount(), -1.0);  // -b / D
  DragBy(2);                      // b = -7.5
  ExpectEyeZ(2.5);
  EXPECT_EQ(UnitAmount(), -1.5);
}

TEST_F(Zoom, no_back_distance_makes_an_amount_that_is_not_finite) {
  for (const double sensitivity : {0.5, 1.0, 1.015}) {
    for (const double distance : {0.0, -0.0, std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity(), -1e-320}) {
      p.zoom_sensitivity = sensitivity;
      p.zoom_back_distance = distance;
      ZoomBy(1);
      EXPECT_TRUE(std::isfinite(UnitAmount())) << sensitivity << ' ' << distance;
    }
  }
}

// ---- moving in ----

TEST_F(Zoom, the_limit_is_reached_at_about_201_pixels) {
  // log(0.05) / log(1.015) = -201.21
  EXPECT_NEAR(std::log(0.05) / std::log(1.015), -201.2, 0.05);
  ZoomBy(-201);
  ExpectEyeZ(10 * Power(-201));  // 0.5016, above 0.5
  EXPECT_NEAR(UnitAmount(), 1 - (Power(-201) - 0.05) / 0.95, 1e-12);
  EXPECT_LT(UnitAmount(), 1.0);
  DragBy(-202);
  ExpectEyeZ(10 * Power(-201));
  EXPECT_EQ(UnitAmount(), 1.0);
}

TEST_F(Zoom, the_unit_amount_grows_from_0_towards_1) {
  ZoomBy(-20);
  const double r = Power(-20);
  EXPECT_NEAR(UnitAmount(), 1 - (r - 0.05) / 0.95, 1e-12);
  DragBy(-100);
  EXPECT_NEAR(UnitAmount(), 1 - (Power(-100) - 0.05) / 0.95, 1e-12);
}

TEST_F(Zoom, a_ratio_of_exactly_the_limit_is_still_allowed) {
  p.zoom_sensitivity = 2.0;
  p.zoom_min_limit = 0.25;
  ZoomBy(-2);
  ExpectEyeZ(2.5);
  EXPECT_EQ(UnitAmount(), 1.0);
}

// ---- the push through the limit ----

TEST_F(Zoom, with_an_in_snap_size_of_50_the_next_50_pixels_do_nothing_and_only_then_the_camera_moves_on) {
  ASSERT_EQ(p.zoom_in_snap_size, 50);
  ZoomBy(-201);
  const double held = hub.view.eye.z;
  for (const int offset : {-202, -230, -251}) {  // 251 - 201.2 = 49.8
    DragBy(offset);
    EXPECT_EQ(hub.view.eye.z, held) << offset;
    EXPECT_EQ(UnitAmount(), 1.0) << offset;
  }
  // 262 - 201.21 - 50 = 10.8, truncated to 10 pixels: f = 0.01 of the width. The eye stands at
  // (m - f) of the way: 10 (0.05 - 0.01) = 0.4, the centre m = 0.05 units ahead.
  DragBy(-262);
  ExpectEyeZ(0.4);
  ExpectCentreZ(0.35);
  EXPECT_NEAR(UnitAmount(), 1.01, 1e-15);
}

TEST_F(Zoom, the_first_pixel_past_the_dead_stretch_truncates_to_no_motion) {
  // 252 - 201.21 - 50 = 0.79 truncates to 0.
  ZoomBy(-252);
  ExpectEyeZ(0.5);
  ExpectCentreZ(0.45);
  EXPECT_EQ(UnitAmount(), 1.0);
}

TEST_F(Zoom, the_camera_can_be_pushed_through_the_pivot) {
  // 352 - 201.21 - 50 = 100.79: f = 0.1; (0.05 - 0.1) 10 = -0.5, past the pivot.
  ZoomBy(-352);
  ExpectEyeZ(-0.5);
  ExpectCentreZ(-0.55);
  EXPECT_NEAR(UnitAmount(), 1.1, 1e-15);
}

TEST_F(Zoom, the_push_is_scaled_by_its_multiplier_and_the_unit_amount_is_not) {
  p.zoom_min_limit_multiplier = 3.0;
  ZoomBy(-262);
  ExpectEyeZ(0.2);  // 10 (0.05 - 3 * 0.01)
  ExpectCentreZ(0.15);
  EXPECT_NEAR(UnitAmount(), 1.01, 1e-15);
}

TEST_F(Zoom, the_push_follows_the_line_to_the_pivot_and_looks_along_the_first_view) {
  hub.view.pivot = {3, 4, 4};  // P - E0 = (3, 4, -6)
  ZoomBy(-262);
  // P - (P - E0) (0.05 - 0.01)
  EXPECT_NEAR(hub.view.eye.x, 3 - 0.12, NEAR);
  EXPECT_NEAR(hub.view.eye.y, 4 - 0.16, NEAR);
  EXPECT_NEAR(hub.view.eye.z, 4 + 0.24, NEAR);
  EXPECT_NEAR(hub.view.centre.x, 3 - 0.12, NEAR);
  EXPECT_NEAR(hub.view.centre.z, 4 + 0.24 - 0.05, NEAR);
}

TEST_F(Zoom, the_push_can_be_forbidden) {
  p.zoom_min_limit_motion = false;
  ZoomBy(-150);
  DragBy(-600);
  ExpectEyeZ(10 * Power(-150));
  EXPECT_EQ(UnitAmount(), 1.0);
}

TEST_F(Zoom, an_excess_of_exactly_the_in_snap_size_does_not_push) {
  // Sensitivity 2 and limit 1/4: the limit lies at exactly 2 pixels.
  p.zoom_sensitivity = 2.0;
  p.zoom_min_limit = 0.25;
  p.zoom_in_snap_size = 3;
  ZoomBy(-2);
  DragBy(-5);
  ExpectEyeZ(2.5);
  ExpectCentreZ(0);  // a push would bring it to the limit's distance
  EXPECT_EQ(UnitAmount(), 1.0);
  DragBy(-6);  // one pixel: f = 0.001
  ExpectEyeZ(2.5 - 0.01);
  EXPECT_NEAR(UnitAmount(), 1.001, 1e-15);
}

// ---- orthographic ----

TEST_F(Zoom, orthographic_keeps_the_offset_of_the_centre_from_the_pivots_depth_in_scale) {
  // The centre lies 4 beyond the depth of the pivot: axis offset 4.
  hub.view = WithOrthographic(WithPivot(hub.view, {0, 0, 4}), 8.0, 6.0);
  Begin();
  for (const int offset : {30, -30}) {
    DragBy(offset);
    const double r = Power(offset);
    ExpectEyeZ(4 + 6 * r);
    ExpectCentreZ(4 - 4 * r);
    EXPECT_NEAR(hub.view.ortho_width, 8.0 * r, NEAR);
    EXPECT_NEAR(hub.view.ortho_height, 6.0 * r, NEAR);
  }
  EXPECT_NEAR(UnitAmount(), 1 - (Power(-30) - 0.05) / 0.95, 1e-12);
}

TEST_F(Zoom, an_axis_offset_below_1e_5_counts_as_none) {
  const auto offsetAfter = [&](double axisOffset) {
    hub.view = WithOrthographic(LookAt({0, 0, 10}, {0, 0, -axisOffset}, {0, 1, 0}), 8.0, 6.0);
    hub.view.pivot = {0, 0, 0};
    ZoomBy(100);
    hub.EndOperation(OPERATION_ZOOM);
    return -hub.view.centre.z;
  };
  EXPECT_NEAR(offsetAfter(0.9e-5), 0.0, 1e-12);
  EXPECT_NEAR(offsetAfter(1.1e-5), 1.1e-5 * Power(100), 1e-12);
  EXPECT_NEAR(offsetAfter(-0.9e-5), 0.0, 1e-12);
  EXPECT_NEAR(offsetAfter(-1.1e-5), -1.1e-5 * Power(100), 1e-12);
}

TEST_F(Zoom, perspective_drops_the_offset_of_the_centre) {
  hub.view.pivot = {0, 0, 4};
  ZoomBy(-30);
  ExpectCentreZ(4);
}

TEST_F(Zoom, orthographic_stops_at_the_limit_and_cannot_be_pushed_through) {
  hub.view = WithOrthographic(hub.view, 8.0, 6.0);
  ZoomBy(-201);
  ExpectEyeZ(10 * Power(-201));
  DragBy(-202);
  ExpectEyeZ(10 * Power(-201));
  EXPECT_EQ(UnitAmount(), 1.0);
  DragBy(-600);
  ExpectEyeZ(10 * Power(-201));
  EXPECT_EQ(UnitAmount(), 1.0);
}

TEST_F(Zoom, orthographic_does_not_move_in_while_the_present_distance_is_below_the_limit) {
  hub.view = WithOrthographic(LookAt({0, 0, 0.04}, {0, 0, 0}, {0, 1, 0}), 8.0, 6.0);
  ZoomBy(-10);
  EXPECT_EQ(hub.view.eye.z, 0.04);
  EXPECT_EQ(UnitAmount(), 1.0);
  DragBy(10);  // out it may
  ExpectEyeZ(0.04 * Power(10));
}

TEST_F(Zoom, orthographic_zooming_out_shows_the_back_distance_too) {
  hub.view = WithOrthographic(hub.view, 8.0, 6.0);
  p.zoom_back_distance = 4.0;
  ZoomBy(200);
  ExpectEyeZ(14);
  EXPECT_EQ(UnitAmount(), -1.0);
}

TEST_F(Zoom, in_perspective_the_orthographic_size_follows_the_distance) {
  hub.view.ortho_width = 8.0;
  hub.view.ortho_height = 6.0;
  ZoomBy(-30);
  EXPECT_NEAR(hub.view.ortho_width, 8.0 * Power(-30), NEAR);
  EXPECT_NEAR(hub.view.ortho_height, 6.0 * Power(-30), NEAR);
  DragBy(30);
  EXPECT_NEAR(hub.view.ortho_width, 8.0 * Power(30), NEAR);
}

// ---- the restored step ----

TEST_F(Zoom, with_an_eye_that_coincides_with_the_pivot_the_eye_stays_and_the_step_is_undone) {
  // t = 0 puts the centre on the eye.
  hub.view.pivot = hub.view.eye;
  const CameraParameters before = hub.view;
  Begin();
  for (const int offset : {30, -30, 0}) {
    DragBy(offset);
    EXPECT_EQ(hub.view.eye, before.eye) << offset;
    EXPECT_EQ(hub.view.centre, before.centre) << offset;
    EXPECT_EQ(hub.view.ortho_width, before.ortho_width) << offset;
  }
}

TEST_F(Zoom, a_step_that_puts_the_eye_on_the_centre_returns_to_the_frame_before) {
  // The pivot straight beside the eye: its depth is 0, so the centre would fall on the eye.
  hub.view.pivot = {5, 0, 10};
  ZoomBy(-30);
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10));
  EXPECT_EQ(hub.view.centre, Vector3(0, 0, 0));
}

TEST_F(Zoom, a_distance_of_the_tolerance_or_less_is_undone) {
  // The pivot at a depth of d: the new distance is d at an offset of 0. 2^-23 itself is too little.
  const auto isUndone = [&](double depth) {
    hub.view = LookAt({0, 0, 0}, {0, 0, -10}, {0, 1, 0});
    hub.view.pivot = {5, 0, -depth};
    ZoomBy(0);
    hub.EndOperation(OPERATION_ZOOM);
    return hub.view.centre == Vector3(0, 0, -10);
  };
  EXPECT_TRUE(isUndone(0x1p-23));
  EXPECT_FALSE(isUndone(0x1.00002p-23));
}

TEST_F(Zoom, a_power_beyond_all_bounds_does_nothing_at_all) {
  // 1.015^48000 is above 1.8e308.
  ZoomBy(40);
  const CameraParameters before = hub.view;
  const double unit = UnitAmount();
  DragBy(48000);
  EXPECT_TRUE(SameBits(hub.view, before));
  EXPECT_EQ(UnitAmount(), unit);
}

TEST_F(Zoom, a_sensitivity_of_1_moves_nothing) {
  p.zoom_sensitivity = 1.0;
  ZoomBy(-500);
  ExpectEyeZ(10);
  DragBy(500);
  ExpectEyeZ(10);
}

TEST_F(Zoom, a_new_drag_starts_at_0_from_the_camera_of_now) {
  ZoomBy(-100);
  hub.EndOperation(OPERATION_ZOOM);
  Begin();
  EXPECT_EQ(UnitAmount(), 0.0);
  DragBy(-50);
  ExpectEyeZ(10 * Power(-150));
}

// ---- properties ----

TEST(ZoomProperty, keeps_the_direction_and_scales_the_offset_from_the_pivot) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters start = RandomCamera(random);
    const oracle::Vec forward = (oracle::From(start.centre) - oracle::From(start.eye)).normalized();
    // In front of the eye by a tenth of a unit or more, or the view would turn round with the centre.
    if (forward.dot(oracle::From(start.pivot) - oracle::From(start.eye)) < 0.1) continue;
    MemoryHub hub(start);
    hub.BeginOperation(OPERATION_ZOOM, 0, 0);
    const int offset = random.Integer(-200, 200);
    hub.Drag(OPERATION_ZOOM, -offset, 0);
    const oracle::Camera camera(hub.view);
    const oracle::Vec eye = camera.pivot - (camera.pivot - oracle::From(start.eye)) * Power(offset);
    // The orthographic guard, which compares the distance with the limit, may hold.
    if (start.IsOrthographic() && offset <= 0 && hub.view.eye == start.eye) continue;
    // Positions up to 200 * 1.015^200 = 4000 units hold 1e-12; a step below 3.45e-4 is not applied.
    ASSERT_LT((camera.eye - eye).norm(), 3.5e-4) << i;
    ASSERT_LT(((camera.centre - camera.eye).normalized() - forward).norm(), 1e-3) << i;
    if (hub.applied == 0) continue;
    ASSERT_LT((camera.eye - eye).norm(), 1e-9) << i;
    // Over a viewing distance of at least 0.1 / 20 units: 1e-12 / 0.005.
    ASSERT_LT(((camera.centre - camera.eye).normalized() - forward).norm(), 1e-9) << i;
  }
}

TEST(ZoomProperty, there_and_back_returns) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters start = RandomCamera(random);
    start.pivot = start.centre;
    MemoryHub hub(start);
    hub.BeginOperation(OPERATION_ZOOM, 0, 0);
    hub.Drag(OPERATION_ZOOM, random.Integer(-200, 200), 0);
    // An orthographic view nearer than the limit does not move in, and not back to where it was either.
    if (start.IsOrthographic() && (hub.view.centre - hub.view.eye).Length() < 0.05) continue;
    hub.Drag(OPERATION_ZOOM, 0, 0);
    const oracle::Camera camera(hub.GetCameraParameters());
    // Positions within 300 units hold 1e-13.
    ASSERT_LT((camera.eye - oracle::From(start.eye)).norm(), 1e-11) << i;
    ASSERT_LT((camera.centre - oracle::From(start.centre)).norm(), 1e-11) << i;
  }
}
