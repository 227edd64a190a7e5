#include "korvane/application_parameters.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "support/cameras.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

using Parameters = ApplicationParameters;

// One row of the table of settings: the field's default, the exported constant that holds it, both against
// a value written here.
template <class T>
struct Row {
  const char* name;
  T Parameters::*field;
  const T* constant;  // null: the field has none
  T expected;
};

template <class T, std::size_t N>
void CheckRows(const Row<T> (&rows)[N]) {
  const Parameters parameters;
  for (const Row<T>& row : rows) {
    EXPECT_EQ(parameters.*row.field, row.expected) << row.name;
    if (row.constant != nullptr) {
      EXPECT_EQ(*row.constant, row.expected) << row.name;
    }
  }
}

constexpr double FIFTEEN_DEGREES = 0.2617993877991494;
constexpr double NO_LIMIT = 1.7976931348623157e+308;

}  // namespace

TEST(ApplicationParametersDefaults, numbers) {
  const Row<double> rows[] = {
      {"fly_turn_multiplier", &Parameters::fly_turn_multiplier, &Parameters::defaultFlyTurnMultiplier, 1.0},
      {"fly_ramp_up_radius", &Parameters::fly_ramp_up_radius, &Parameters::defaultFlyRampUpRadius, 0.25},
      {"fly_up_down_sensitivity", &Parameters::fly_up_down_sensitivity,
       &Parameters::defaultFlyUpDownSensitivity, 0.01},
      {"look_invert_tolerance", &Parameters::look_invert_tolerance, &Parameters::defaultLookInvertTolerance,
       10.0},
      {"pan_multiplier", &Parameters::pan_multiplier, &Parameters::defaultPanMultiplier, 1.0},
      {"look_multiplier", &Parameters::look_multiplier, &Parameters::defaultLookMultiplier, 2.0},
      {"orbit_multiplier", &Parameters::orbit_multiplier, &Parameters::defaultOrbitMultiplier, 5.0},
      {"dolly_multiplier", &Parameters::dolly_multiplier, &Parameters::defaultDollyMultiplier, 4.0},
      {"height_multiplier", &Parameters::height_multiplier, &Parameters::defaultHeightMultiplier, 2.0},
      {"slide_multiplier", &Parameters::slide_multiplier, &Parameters::defaultSlideMultiplier, 1.0},
      {"zoom_sensitivity", &Parameters::zoom_sensitivity, &Parameters::defaultZoomSensitivity, 1.015},
      {"zoom_min_limit", &Parameters::zoom_min_limit, &Parameters::defaultZoomMinLimit, 0.05},
      {"zoom_min_limit_multiplier", &Parameters::zoom_min_limit_multiplier,
       &Parameters::defaultZoomMinLimitMultiplier, 1.0},
      {"zoom_back_distance", &Parameters::zoom_back_distance, &Parameters::defaultZoomBackDistance, NO_LIMIT},
      {"scene_scale", &Parameters::scene_scale, nullptr, 1.0},
      {"scene_bound_radius", &Parameters::scene_bound_radius, nullptr, 1.0},
      {"global_bound_radius", &Parameters::global_bound_radius, nullptr, 1.0},
      {"ucs_bound_radius", &Parameters::ucs_bound_radius, nullptr, 0.0},
      {"selected_bound_radius", &Parameters::selected_bound_radius, nullptr, 0.0},
      {"snap_orbit_dead_zone", &Parameters::snap_orbit_dead_zone, &Parameters::defaultSnapOrbitDeadZone,
       0.045},
      {"snap_orbit_threshold_h", &Parameters::snap_orbit_threshold_h, &Parameters::defaultSnapOrbitThresholdH,
       FIFTEEN_DEGREES},
      {"snap_orbit_acceleration_ax", &Parameters::snap_orbit_acceleration_ax,
       &Parameters::defaultSnapOrbitAccelerationAX, 1.5},
      {"snap_orbit_acceleration_bx", &Parameters::snap_orbit_acceleration_bx,
       &Parameters::defaultSnapOrbitAccelerationBX, 2.0},
      {"snap_orbit_acceleration_point_x", &Parameters::snap_orbit_acceleration_point_x,
       &Parameters::defaultSnapOrbitAccelerationPointX, 0.5},
      {"snap_orbit_threshold_v", &Parameters::snap_orbit_threshold_v, &Parameters::defaultSnapOrbitThresholdV,
       FIFTEEN_DEGREES},
      {"snap_orbit_acceleration_ay", &Parameters::snap_orbit_acceleration_ay,
       &Parameters::defaultSnapOrbitAccelerationAY, 1.5},
      {"snap_orbit_acceleration_by", &Parameters::snap_orbit_acceleration_by,
       &Parameters::defaultSnapOrbitAccelerationBY, 2.0},
      {"snap_orbit_acceleration_point_y", &Parameters::snap_orbit_acceleration_point_y,
       &Parameters::defaultSnapOrbitAccelerationPointY, 0.5},
  };
  CheckRows(rows);
}

TEST(ApplicationParametersDefaults, whole_numbers) {
  const Row<int> rows[] = {
      {"fly_dead_zone_radius", &Parameters::fly_dead_zone_radius, &Parameters::defaultFlyDeadZoneRadius, 30},
      {"zoom_out_snap_size", &Parameters::zoom_out_snap_size, &Parameters::defaultZoomOutSnapSize, 0},
      {"zoom_in_snap_size", &Parameters::zoom_in_snap_size, &Parameters::defaultZoomInSnapSize, 50},
      {"viewport_width", &Parameters::viewport_width, nullptr, 1024},
      {"viewport_height", &Parameters::viewport_height, nullptr, 768},
  };
  CheckRows(rows);
}

TEST(ApplicationParametersDefaults, flags) {
  const Row<bool> rows[] = {
      {"fly_planar_motion", &Parameters::fly_planar_motion, &Parameters::defaultFlyPlanarMotion, true},
      {"zoom_min_limit_motion", &Parameters::zoom_min_limit_motion, &Parameters::defaultZoomMinLimitMotion,
       true},
      {"zoom_sense_reversed", &Parameters::zoom_sense_reversed, &Parameters::defaultZoomSenseReversed, false},
      {"look_invert_vertical_axis", &Parameters::look_invert_vertical_axis,
       &Parameters::defaultLookInvertVerticalAxis, false},
      {"use_look_at_obstruction_detection", &Parameters::use_look_at_obstruction_detection,
       &Parameters::defaultUseLookAtObstructionDetection, false},
      {"scene_is_world", &Parameters::scene_is_world, nullptr, true},
      {"preserve_orbit_up_direction", &Parameters::preserve_orbit_up_direction,
       &Parameters::defaultPreserveOrbitUpDirection, true},
      {"align_orbit_up_direction", &Parameters::align_orbit_up_direction,
       &Parameters::defaultAlignOrbitUpDirection, true},
      {"constrain_orbit_horizontal", &Parameters::constrain_orbit_horizontal,
       &Parameters::defaultConstrainOrbitHorizontal, false},
      {"constrain_orbit_vertical", &Parameters::constrain_orbit_vertical,
       &Parameters::defaultConstrainOrbitVertical, false},
      {"do_custom_orbit", &Parameters::do_custom_orbit, &Parameters::defaultDoCustomOrbit, false},
      {"do_snap_orbit", &Parameters::do_snap_orbit, &Parameters::defaultDoSnapOrbit, false},
      {"lock_to_selection", &Parameters::lock_to_selection, &Parameters::defaultLockToSelection, false},
      {"auto_switch_projection", &Parameters::auto_switch_projection,
       &Parameters::defaultAutoSwitchProjection, true},
      {"tool_selection_sensitivity", &Parameters::tool_selection_sensitivity,
       &Parameters::defaultToolSelectionSensitivity, true},
      {"use_projection_transitions", &Parameters::use_projection_transitions,
       &Parameters::defaultUseProjectionTransitions, false},
      {"mouse_drag", &Parameters::mouse_drag, nullptr, false},
  };
  CheckRows(rows);
}

TEST(ApplicationParametersDefaults, directions_and_points) {
  const Row<Vector3> rows[] = {
      {"scene_up_direction", &Parameters::scene_up_direction, nullptr, {0, 1, 0}},
      {"scene_front_direction", &Parameters::scene_front_direction, nullptr, {1, 0, 0}},
      {"scene_bound_centre", &Parameters::scene_bound_centre, nullptr, {0, 0, 0}},
      {"global_bound_centre", &Parameters::global_bound_centre, nullptr, {0, 0, 0}},
      {"ucs_bound_centre", &Parameters::ucs_bound_centre, nullptr, {0, 0, 0}},
      {"selected_bound_centre", &Parameters::selected_bound_centre, nullptr, {0, 0, 0}},
      {"world_up_direction", &Parameters::world_up_direction, nullptr, {0, 1, 0}},
      {"world_front_direction", &Parameters::world_front_direction, nullptr, {1, 0, 0}},
      {"custom_orbit_up", &Parameters::custom_orbit_up, nullptr, {0, 1, 0}},
      {"custom_orbit_front", &Parameters::custom_orbit_front, nullptr, {1, 0, 0}},
  };
  CheckRows(rows);
}

TEST(ApplicationParametersDefaults, boxes_are_the_default_box) {
  const Parameters p;
  for (const Box3* const box :
       {&p.scene_bound_box, &p.global_bound_box, &p.ucs_bound_box, &p.selected_bound_box}) {
    EXPECT_EQ(box->GetCenter(), Vector3(0, 0, 0));
    EXPECT_EQ(box->GetExtent(), Vector3(1, 1, 1));
    EXPECT_EQ(box->GetCorner(0), Vector3(-1, -1, -1));
    EXPECT_EQ(box->GetCorner(7), Vector3(1, 1, 1));
  }
}

TEST(ApplicationParametersDefaults, enumerations) {
  const Parameters p;
  EXPECT_EQ(static_cast<int>(p.cam3d_controller_mode), 0);
  EXPECT_EQ(static_cast<int>(Parameters::defaultCam3DControllerMode), 0);
  EXPECT_EQ(p.global_bound_geometry, Parameters::BoundGeometryType::Sphere);
  EXPECT_EQ(Parameters::defaultGlobalBoundGeometry, Parameters::BoundGeometryType::Sphere);
  EXPECT_EQ(static_cast<int>(Parameters::BoundGeometryType::Sphere), 0);
  EXPECT_EQ(static_cast<int>(Parameters::BoundGeometryType::Box), 1);
}

TEST(ApplicationParametersDefaults, snap_thresholds_are_fifteen_degrees_in_radians) {
  EXPECT_EQ(Parameters::defaultSnapOrbitThresholdH, 15 * 0.017453292519943295);
  EXPECT_EQ(Parameters::defaultSnapOrbitThresholdV, 15 * 0.017453292519943295);
}

TEST(ApplicationParametersDefaults, home_camera) {
  CameraParameters expected;
  expected.eye = {1, 1, 1};
  expected.centre = {0, 0, 0};
  expected.up = {-1, 2, -1};  // unnormalised
  expected.pivot = {0, 0, 0};
  expected.left_fov = 45;
  expected.right_fov = 45;
  expected.top_fov = 45;
  expected.bottom_fov = 45;
  expected.ortho_width = 1;
  expected.ortho_height = 1;
  expected.projection_type = CameraParameters::ProjectionType::Perspective;
  expected.perspective_with_ortho = false;
  expected.projection_transition = -1;
  expected.page_scale = 1;
  expected.page_origin_x = 0;
  expected.page_origin_y = 0;
  EXPECT_TRUE(SameBits(Parameters().home_camera, expected));
}

TEST(ApplicationParametersDefaults,
     the_world_is_the_scene_with_no_selection_and_a_unit_sphere_at_the_origin) {
  const Parameters p;
  EXPECT_TRUE(p.scene_is_world);
  EXPECT_EQ(p.selected_bound_radius, 0.0);
  EXPECT_EQ(p.global_bound_geometry, Parameters::BoundGeometryType::Sphere);
  EXPECT_EQ(p.global_bound_radius, 1.0);
  EXPECT_EQ(p.global_bound_centre, Vector3(0, 0, 0));
}

TEST(ApplicationParametersRecord, fields_lie_in_order) {
  const Parameters p;
  const void* const order[] = {
      &p.fly_turn_multiplier,
      &p.fly_dead_zone_radius,
      &p.fly_ramp_up_radius,
      &p.fly_planar_motion,
      &p.fly_up_down_sensitivity,
      &p.cam3d_controller_mode,
      &p.look_invert_tolerance,
      &p.pan_multiplier,
      &p.look_multiplier,
      &p.orbit_multiplier,
      &p.dolly_multiplier,
      &p.height_multiplier,
      &p.slide_multiplier,
      &p.zoom_sensitivity,
      &p.zoom_min_limit,
      &p.zoom_min_limit_motion,
      &p.zoom_min_limit_multiplier,
      &p.zoom_back_distance,
      &p.zoom_out_snap_size,
      &p.zoom_in_snap_size,
      &p.zoom_sense_reversed,
      &p.look_invert_vertical_axis,
      &p.use_look_at_obstruction_detection,
      &p.scene_up_direction,
      &p.scene_front_direction,
      &p.scene_scale,
      &p.scene_bound_radius,
      &p.scene_bound_box,
      &p.scene_bound_centre,
      &p.global_bound_geometry,
      &p.global_bound_radius,
      &p.global_bound_centre,
      &p.global_bound_box,
      &p.ucs_bound_radius,
      &p.ucs_bound_box,
      &p.ucs_bound_centre,
      &p.selected_bound_radius,
      &p.selected_bound_box,
      &p.selected_bound_centre,
      &p.world_up_direction,
      &p.world_front_direction,
      &p.scene_is_world,
      &p.home_camera,
      &p.preserve_orbit_up_direction,
      &p.align_orbit_up_direction,
      &p.constrain_orbit_horizontal,
      &p.constrain_orbit_vertical,
      &p.do_custom_orbit,
      &p.do_snap_orbit,
      &p.custom_orbit_up,
      &p.custom_orbit_front,
      &p.snap_orbit_dead_zone,
      &p.snap_orbit_threshold_h,
      &p.snap_orbit_acceleration_ax,
      &p.snap_orbit_acceleration_bx,
      &p.snap_orbit_acceleration_point_x,
      &p.snap_orbit_threshold_v,
      &p.snap_orbit_acceleration_ay,
      &p.snap_orbit_acceleration_by,
      &p.snap_orbit_acceleration_point_y,
      &p.lock_to_selection,
      &p.auto_switch_projection,
      &p.tool_selection_sensitivity,
      &p.use_projection_transitions,
      &p.viewport_width,
      &p.viewport_height,
      &p.mouse_drag,
  };
  EXPECT_EQ(std::size(order), 67U);
  for (std::size_t i = 1; i < std::size(order); ++i) {
    EXPECT_LT(reinterpret_cast<std::uintptr_t>(order[i - 1]), reinterpret_cast<std::uintptr_t>(order[i]))
        << i;
  }
  // The walk's speed, which has no public field, comes last.
  EXPECT_LE(reinterpret_cast<std::uintptr_t>(&p.mouse_drag) + sizeof(ChangingInTimeValue),
            reinterpret_cast<std::uintptr_t>(&p + 1));
}

TEST(ApplicationParametersRecord, has_a_virtual_destructor_and_copies_field_by_field) {
  static_assert(std::has_virtual_destructor_v<Parameters>);
  Parameters source;
  source.fly_turn_multiplier = 3.0;
  source.scene_up_direction = {0, 0, 1};
  source.home_camera.eye = {7, 8, 9};
  source.mouse_drag = true;
  source.SetFlyMoveMultiplier(4.0);
  Parameters target;
  target = source;
  EXPECT_EQ(target.fly_turn_multiplier, 3.0);
  EXPECT_EQ(target.scene_up_direction, Vector3(0, 0, 1));
  EXPECT_EQ(target.home_camera.eye, Vector3(7, 8, 9));
  EXPECT_TRUE(target.mouse_drag);
  EXPECT_EQ(target.GetFlyMoveMultiplier(), 4.0);
}

TEST(FlyMoveMultiplier, rests_at_its_default) {
  EXPECT_EQ(Parameters().GetFlyMoveMultiplier(), 1.0);
  EXPECT_EQ(Parameters::defaultFlyMoveMultiplier, 1.0);
}

TEST(FlyMoveMultiplier, is_set_at_once) {
  Parameters p;
  p.SetFlyMoveMultiplier(2.5);
  EXPECT_EQ(p.GetFlyMoveMultiplier(), 2.5);
}

TEST(FlyMoveMultiplier, changes_in_time_on_a_straight_line) {
  ManualPlatform platform;
  Parameters p;
  p.ChangeFlyMoveMultiplierInTime(2.0, 6.0, 1.0);
  EXPECT_EQ(p.GetFlyMoveMultiplier(), 2.0);
  platform.Advance(250);
  // A quarter of the way; an eased curve would read 2.586. The clock's seconds carry 1e-13.
  EXPECT_NEAR(p.GetFlyMoveMultiplier(), 3.0, 1e-12);
  platform.Advance(751);
  EXPECT_EQ(p.GetFlyMoveMultiplier(), 6.0);
}

TEST(FlyMoveMultiplier, setting_it_ends_a_change) {
  ManualPlatform platform;
  Parameters p;
  p.ChangeFlyMoveMultiplierInTime(2.0, 6.0, 1.0);
  p.SetFlyMoveMultiplier(3.0);
  platform.Advance(500);
  EXPECT_EQ(p.GetFlyMoveMultiplier(), 3.0);
}
