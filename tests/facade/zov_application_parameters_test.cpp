#include "zov/zov_application_parameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "facade/field_walk.h"
#include "support/manual_platform.h"

namespace {

using Record = Korvane::ApplicationParameters;
using Facade = zovApplicationParameters;

Korvane::CameraParameters CameraUnlikeAnyDefault() {
  Korvane::CameraParameters camera;
  camera.eye = Korvane::Vector3(7.0, 8.0, 9.0);
  camera.centre = Korvane::Vector3(-1.0, -2.0, -3.0);
  camera.up = Korvane::Vector3(0.5, 2.0, 0.25);
  camera.pivot = Korvane::Vector3(4.0, 5.0, 6.0);
  camera.left_fov = 11.0;
  camera.right_fov = 12.0;
  camera.top_fov = 13.0;
  camera.bottom_fov = -14.0;
  camera.ortho_width = 15.0;
  camera.ortho_height = 16.0;
  camera.projection_type = Korvane::CameraParameters::ProjectionType::Orthographic;
  camera.perspective_with_ortho = true;
  camera.projection_transition = 0.5;
  camera.page_scale = 17.0;
  camera.page_origin_x = 18.0;
  camera.page_origin_y = 19.0;
  return camera;
}

FieldRow<Facade, Record> HomeCamera() {
  const auto write = [](Facade& facade, const Record& record) {
    const Korvane::CameraParameters camera = CameraUnlikeAnyDefault();
    facade.set_home_camera(zovCameraParameters(camera));
    const Facade& looked = facade;
    return SameValue(record.home_camera, camera) && SameValue(looked.home_camera().korvane(), camera);
  };
  return {"home_camera", write,
          [](const Record& a, const Record& b) { return SameValue(a.home_camera, b.home_camera); }};
}

#define FIELD(name) Field(#name, &Record::name, &Facade::name, &Facade::set_##name)
#define ANGLE(name, unit) AngleField(#name, &Record::name, unit, &Facade::name, &Facade::set_##name)

std::vector<FieldRow<Facade, Record>> Rows() {
  return {
      FIELD(fly_turn_multiplier),
      FIELD(fly_dead_zone_radius),
      FIELD(fly_ramp_up_radius),
      FIELD(fly_planar_motion),
      FIELD(fly_up_down_sensitivity),
      FIELD(cam3d_controller_mode),
      ANGLE(look_invert_tolerance, qmAngleDegrees),
      FIELD(pan_multiplier),
      FIELD(look_multiplier),
      FIELD(orbit_multiplier),
      FIELD(dolly_multiplier),
      FIELD(height_multiplier),
      FIELD(slide_multiplier),
      FIELD(zoom_sensitivity),
      FIELD(zoom_min_limit),
      FIELD(zoom_min_limit_motion),
      FIELD(zoom_min_limit_multiplier),
      FIELD(zoom_back_distance),
      FIELD(zoom_out_snap_size),
      FIELD(zoom_in_snap_size),
      FIELD(zoom_sense_reversed),
      FIELD(look_invert_vertical_axis),
      FIELD(use_look_at_obstruction_detection),
      FIELD(pixels_per_point),
      FIELD(scene_up_direction),
      FIELD(scene_front_direction),
      FIELD(scene_scale),
      FIELD(scene_bound_radius),
      FIELD(scene_bound_box),
      FIELD(scene_bound_centre),
      FIELD(global_bound_geometry),
      FIELD(global_bound_radius),
      FIELD(global_bound_centre),
      FIELD(global_bound_box),
      FIELD(ucs_bound_radius),
      FIELD(ucs_bound_box),
      FIELD(ucs_bound_centre),
      FIELD(selected_bound_radius),
      FIELD(selected_bound_box),
      FIELD(selected_bound_centre),
      FIELD(world_up_direction),
      FIELD(world_front_direction),
      FIELD(scene_is_world),
      HomeCamera(),
      FIELD(preserve_orbit_up_direction),
      FIELD(align_orbit_up_direction),
      FIELD(constrain_orbit_horizontal),
      FIELD(constrain_orbit_vertical),
      FIELD(do_custom_orbit),
      FIELD(do_snap_orbit),
      FIELD(custom_orbit_up),
      FIELD(custom_orbit_front),
      FIELD(snap_orbit_dead_zone),
      ANGLE(snap_orbit_threshold_h, qmAngleRadians),
      FIELD(snap_orbit_acceleration_ax),
      FIELD(snap_orbit_acceleration_bx),
      FIELD(snap_orbit_acceleration_point_x),
      ANGLE(snap_orbit_threshold_v, qmAngleRadians),
      FIELD(snap_orbit_acceleration_ay),
      FIELD(snap_orbit_acceleration_by),
      FIELD(snap_orbit_acceleration_point_y),
      FIELD(lock_to_selection),
      FIELD(auto_switch_projection),
      FIELD(tool_selection_sensitivity),
      FIELD(use_projection_transitions),
      FIELD(viewport_width),
      FIELD(viewport_height),
      FIELD(mouse_drag),
  };
}

#undef FIELD
#undef ANGLE

TEST(ZovApplicationParameters, reach_every_field_of_the_record_and_no_other) {
  WalkFields(Rows(),
             FieldsBetween("application_parameters.h", "/// Scales how fast a walk turns.",
                           "/// The speed of a walk, which may be"),
             [](const auto& use) {
               Record record;
               Facade settings(record);
               use(settings, record);
             });
}

TEST(ZovApplicationParameters, write_through_the_reference_to_the_home_camera) {
  Record record;
  Facade settings(record);
  EXPECT_EQ(settings.home_camera().eye(), qmPoint3(1.0, 1.0, 1.0));
  settings.home_camera().set_pivot(qmPoint3(2.0, 3.0, 4.0));
  EXPECT_EQ(record.home_camera.pivot, Korvane::Vector3(2.0, 3.0, 4.0));
  zovCameraParameters camera;
  camera.set_page_scale(3.0);
  settings.home_camera() = camera;
  EXPECT_EQ(record.home_camera.page_scale, 3.0);
  record.home_camera.page_scale = 4.0;
  EXPECT_EQ(settings.home_camera().page_scale(), 4.0);
}

TEST(ZovApplicationParameters, give_a_copy_of_the_home_camera_a_life_of_its_own) {
  Record record;
  Facade settings(record);
  zovCameraParameters copy = settings.home_camera();
  copy.set_page_scale(3.0);
  EXPECT_EQ(record.home_camera.page_scale, 1.0);
}

TEST(ZovApplicationParameters, read_directions_at_unit_length) {
  Record record;
  record.world_up_direction = Korvane::Vector3(0.0, 0.0, 4.0);
  record.custom_orbit_up = Korvane::Vector3();
  const Facade settings(record);
  EXPECT_EQ(settings.world_up_direction(), qmUnitVec3(qmVector3(0.0, 0.0, 1.0)));
  EXPECT_EQ(settings.custom_orbit_up(), qmUnitVec3());
}

TEST(ZovApplicationParameters, know_no_scale_beyond_single_precision) {
  Record record;
  Facade settings(record);
  for (const double beyond : {1e39, -1e39, std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::infinity(), std::nan("")}) {
    settings.set_pixels_per_point(2.0);
    settings.set_pixels_per_point(beyond);
    EXPECT_FALSE(std::isfinite(record.pixels_per_point)) << beyond;
  }
  settings.set_pixels_per_point(1.5);
  EXPECT_EQ(settings.pixels_per_point(), 1.5);
}

// 15 degrees are 0.2617993877991494 radians.
TEST(ZovApplicationParameters, keep_angles_in_the_unit_of_each) {
  Record record;
  Facade settings(record);
  EXPECT_EQ(settings.look_invert_tolerance().angle(qmAngleDegrees), 10.0);
  EXPECT_EQ(settings.snap_orbit_threshold_h().angle(qmAngleRadians), 0.2617993877991494);
  EXPECT_NEAR(settings.snap_orbit_threshold_v().angle(qmAngleDegrees), 15.0, 1e-14);
}

TEST(ZovApplicationParameters, change_the_speed_of_a_walk_in_time) {
  ManualPlatform platform;
  Record record;
  Facade settings(record);
  EXPECT_EQ(settings.fly_move_multiplier(), 1.0);
  settings.set_fly_move_multiplier(2.0);
  EXPECT_EQ(record.GetFlyMoveMultiplier(), 2.0);

  const zovChangingInTimeValue& speed = settings.change_fly_move_multiplier_in_time(2.0, 4.0, 1.0);
  EXPECT_TRUE(speed.is_changing_in_time());
  platform.Advance(250);
  EXPECT_NEAR(settings.fly_move_multiplier(), 2.5, 1e-9);
  EXPECT_EQ(speed.value(), settings.fly_move_multiplier());
  platform.Advance(751);
  EXPECT_EQ(settings.fly_move_multiplier(), 4.0);
  EXPECT_EQ(speed.value(), 4.0);
  EXPECT_FALSE(speed.is_changing_in_time());
}

TEST(ZovApplicationParameters, hand_out_the_speed_of_a_walk_itself) {
  ManualPlatform platform;
  Record record;
  Facade settings(record);
  zovChangingInTimeValue& speed = settings.change_fly_move_multiplier_in_time(2.0, 4.0, 1.0);
  speed *= 3.0;
  platform.Advance(500);
  EXPECT_NEAR(record.GetFlyMoveMultiplier(), 9.0, 1e-9);
  speed.stop();
  EXPECT_EQ(record.GetFlyMoveMultiplier(), 12.0);
  speed = 5.0;
  EXPECT_EQ(record.GetFlyMoveMultiplier(), 5.0);
  speed = zovChangingInTimeValue(6.0);
  EXPECT_EQ(record.GetFlyMoveMultiplier(), 6.0);
  // The library eases the speed by itself, and the host sets it at once.
  record.ChangeFlyMoveMultiplierInTime(0.0, 1.0, 1.0);
  EXPECT_TRUE(speed.is_changing_in_time());
  settings.set_fly_move_multiplier(3.0);
  EXPECT_FALSE(speed.is_changing_in_time());
  EXPECT_EQ(speed.value(), 3.0);
}

TEST(ZovApplicationParameters, give_a_copy_of_the_speed_of_a_walk_a_life_of_its_own) {
  ManualPlatform platform;
  Record record;
  Facade settings(record);
  zovChangingInTimeValue copy = settings.change_fly_move_multiplier_in_time(2.0, 4.0, 1.0);
  copy.stop();
  EXPECT_EQ(record.GetFlyMoveMultiplier(), 2.0);
  settings.set_fly_move_multiplier(7.0);
  EXPECT_EQ(copy.value(), 4.0);
}

}  // namespace
