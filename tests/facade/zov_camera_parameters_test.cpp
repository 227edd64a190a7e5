#include "zov/zov_camera_parameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "facade/field_walk.h"

namespace {

using Record = Korvane::CameraParameters;
using Facade = zovCameraParameters;

#define FIELD(name) Field(#name, &Record::name, &Facade::name, &Facade::set_##name)
#define ANGLE(name) AngleField(#name, &Record::name, qmAngleDegrees, &Facade::name, &Facade::set_##name)

TEST(ZovCameraParameters, reach_every_field_of_the_record_and_no_other) {
  const std::vector<FieldRow<Facade, Record>> rows = {
      FIELD(eye),
      FIELD(centre),
      FIELD(up),
      FIELD(pivot),
      ANGLE(left_fov),
      ANGLE(right_fov),
      ANGLE(top_fov),
      ANGLE(bottom_fov),
      FIELD(ortho_width),
      FIELD(ortho_height),
      FIELD(projection_type),
      FIELD(perspective_with_ortho),
      FIELD(projection_transition),
      FIELD(page_scale),
      FIELD(page_origin_x),
      FIELD(page_origin_y),
  };
  WalkFields(rows, FieldsBetween("camera_parameters.h", "  Vector3 eye;", "\n};"), [](const auto& use) {
    Facade camera;
    use(camera, camera.korvane());
  });
}

#undef FIELD
#undef ANGLE

TEST(ZovCameraParameters, are_as_the_record_at_first) {
  const Facade camera;
  EXPECT_EQ(camera.eye(), qmPoint3());
  EXPECT_EQ(camera.up(), qmUnitVec3());
  EXPECT_EQ(camera.left_fov(), qmAngle(0.0, qmAngleDegrees));
  EXPECT_EQ(camera.projection_type(), zovProjectionType::Perspective);
  EXPECT_FALSE(camera.perspective_with_ortho());
  EXPECT_EQ(camera.projection_transition(), -1.0);
  EXPECT_EQ(camera.page_scale(), 1.0);
}

TEST(ZovCameraParameters, have_the_greater_half_angle_and_set_both) {
  Facade camera;
  camera.set_left_fov(qmAngle(20.0, qmAngleDegrees));
  camera.set_right_fov(qmAngle(30.0, qmAngleDegrees));
  camera.set_top_fov(qmAngle(25.0, qmAngleDegrees));
  camera.set_bottom_fov(qmAngle(15.0, qmAngleDegrees));
  EXPECT_EQ(camera.horizontal_fov().angle(qmAngleDegrees), 30.0);
  EXPECT_EQ(camera.vertical_fov().angle(qmAngleDegrees), 25.0);
  camera.set_horizontal_fov(qmAngle(40.0, qmAngleDegrees));
  EXPECT_EQ(camera.left_fov(), qmAngle(40.0, qmAngleDegrees));
  EXPECT_EQ(camera.right_fov(), qmAngle(40.0, qmAngleDegrees));
  EXPECT_EQ(camera.top_fov(), qmAngle(25.0, qmAngleDegrees));
  camera.set_vertical_fov(qmAngle(35.0, qmAngleDegrees));
  EXPECT_EQ(camera.top_fov(), qmAngle(35.0, qmAngleDegrees));
  EXPECT_EQ(camera.bottom_fov(), qmAngle(35.0, qmAngleDegrees));
  EXPECT_EQ(camera.korvane().left_fov, 40.0);
}

// An up need not be of unit length within: a host that only hands a camera on must not change it.
TEST(ZovCameraParameters, copied_keep_what_no_accessor_shows) {
  Record record;
  record.up = Korvane::Vector3(-1.0, 2.0, -1.0);
  const Facade camera(record);
  const Facade copy = camera;
  Facade assigned;
  assigned = copy;
  EXPECT_EQ(assigned.korvane().up, record.up);
  EXPECT_DOUBLE_EQ(assigned.up().y(), 2.0 / std::sqrt(6.0));
}

TEST(ZovCameraParameters, copied_are_a_camera_of_their_own) {
  Facade camera;
  Facade copy = camera;
  copy.set_eye(qmPoint3(1.0, 2.0, 3.0));
  EXPECT_EQ(camera.eye(), qmPoint3());
  camera = copy;
  camera = *&camera;
  EXPECT_EQ(camera.eye(), qmPoint3(1.0, 2.0, 3.0));
  copy.set_eye(qmPoint3());
  EXPECT_EQ(camera.eye(), qmPoint3(1.0, 2.0, 3.0));
}

TEST(ZovCameraParameters, store_numbers_that_are_not_finite_as_given) {
  Facade camera;
  const double infinite = std::numeric_limits<double>::infinity();
  camera.set_eye(qmPoint3(std::numeric_limits<double>::quiet_NaN(), infinite, 0.0));
  EXPECT_TRUE(std::isnan(camera.korvane().eye.x));
  EXPECT_EQ(camera.eye().y(), infinite);
  EXPECT_FALSE(camera.korvane().IsFinite());
}

}  // namespace
