// The orbit without snapping: the turntable and the free mode. Snapping has a file of its own.
#include "camera/orbit_operation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "camera/oracle.h"
#include "camera/reference_orbit.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

// The multiplier of 5 on 1000 by 500 pixels: 100 pixels across, or 50 down, turn by half a radian.
class Orbit : public ::testing::Test {
 protected:
  Orbit() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), p(hub.GetApplicationParameters()) {
    p.viewport_width = 1000;
    p.viewport_height = 500;
  }

  OrbitOperation& Begin() {
    hub.BeginOperation(OPERATION_ORBIT, 0, 0);
    return dynamic_cast<OrbitOperation&>(*hub.GetActiveOperation(OPERATION_ORBIT));
  }
  void Drag(int x, int y) { hub.Drag(OPERATION_ORBIT, x, y); }
  const CameraParameters& Camera() { return hub.GetCameraParameters(); }

  // Lengths near 10 through a dozen roundings.
  static constexpr double NEAR = 1e-13;

  static void ExpectNear(const Vector3& actual, const Vector3& expected, double tolerance = NEAR) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
  }

  MemoryHub hub;
  ApplicationParameters& p;
};

}  // namespace

TEST(OrbitTypes, rotation_types_have_their_numbers) {
  EXPECT_EQ(static_cast<int>(OrbitOperation::ROTATION_HORIZONTAL), 0);
  EXPECT_EQ(static_cast<int>(OrbitOperation::ROTATION_VERTICAL), 1);
}

// ---- the turntable ----

TEST_F(Orbit, a_drag_to_the_right_moves_the_camera_to_the_left_about_the_up_axis) {
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
  ExpectNear(Camera().centre, {0, 0, 0});
  ExpectNear(Camera().up, {0, 1, 0});
}

TEST_F(Orbit, a_drag_downward_lifts_the_camera) {
  Begin();
  Drag(0, 50);
  ExpectNear(Camera().eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
  ExpectNear(Camera().up, {0, std::cos(0.5), -std::sin(0.5)});
}

TEST_F(Orbit, a_full_width_drag_turns_by_5_radians) {
  Begin();
  Drag(1000, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(5.0), 0, 10 * std::cos(5.0)});
}

TEST_F(Orbit, turns_about_the_pivot_and_keeps_where_the_centre_stands_to_the_eye) {
  hub.view.pivot = {0, 0, 4};
  Begin();
  Drag(100, 0);
  const double s = std::sin(0.5);
  const double c = std::cos(0.5);
  ExpectNear(Camera().eye, {-6 * s, 0, 4 + 6 * c});
  ExpectNear(Camera().centre, {-6 * s + 10 * s, 0, 4 + 6 * c - 10 * c});
}

TEST_F(Orbit, changes_eye_centre_and_up_and_nothing_else) {
  hub.view.page_scale = 3.0;
  hub.view.perspective_with_ortho = false;
  CameraParameters expected = hub.view;
  Begin();
  Drag(100, 50);
  expected.eye = hub.view.eye;
  expected.centre = hub.view.centre;
  expected.up = hub.view.up;
  EXPECT_TRUE(SameBits(hub.view, expected));
  EXPECT_EQ(hub.applied, 1);
}

TEST_F(Orbit, takes_no_account_of_time) {
  OrbitOperation orbit;
  hub.PerformOperations();
  orbit.InitOperation(0, 0, &hub);
  orbit.UpdateCursor(100, 50);
  CameraParameters first = hub.view;
  orbit.PerformOperation(0.0, first);
  CameraParameters second = hub.view;
  orbit.PerformOperation(1e9, second);
  EXPECT_TRUE(SameBits(first, second));
}

TEST_F(Orbit, the_multiplier_scales_the_angle) {
  p.orbit_multiplier = 2.0;
  Begin();
  Drag(250, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
}

TEST_F(Orbit, both_rotations_turn_first_about_the_axis_and_then_about_the_level_right) {
  hub.view = LookAt({3, 4, 10}, {1, 2, 3}, {0, 1, 0});
  hub.view.pivot = {-1, 0.5, 2};
  const oracle::Camera start(hub.view);
  Begin();
  Drag(100, 50);
  const Eigen::Matrix3d turn = oracle::RightHanded({0, 1, 0}, -0.5);
  const oracle::Vec right = turn * (start.centre - start.eye).cross(oracle::Vec(0, 1, 0)).normalized();
  const Eigen::Matrix3d both = oracle::RightHanded(right, -0.5) * turn;
  ExpectNear(Camera().eye, oracle::To(start.pivot + both * (start.eye - start.pivot)));
  ExpectNear(Camera().centre, oracle::To(oracle::From(Camera().eye) + both * (start.centre - start.eye)));
}

TEST_F(Orbit, the_axis_is_the_hubs_world_up) {
  p.scene_up_direction = {1, 0, 0};
  p.scene_front_direction = {0, 0, 1};
  p.world_up_direction = {0, 0, -1};
  p.world_front_direction = {0, 1, 0};
  hub.view = LookAt({0, 10, 0}, {0, 0, 0}, {1, 0, 0});
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, oracle::To(oracle::RightHanded({1, 0, 0}, -0.5) * oracle::Vec(0, 10, 0)));
  hub.EndOperation(OPERATION_ORBIT);

  p.scene_is_world = false;
  hub.view = LookAt({0, 10, 0}, {0, 0, 0}, {0, 0, -1});
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, oracle::To(oracle::RightHanded({0, 0, -1}, -0.5) * oracle::Vec(0, 10, 0)));
}

TEST_F(Orbit, custom_axes_take_their_place) {
  p.do_custom_orbit = true;
  p.custom_orbit_up = {1, 0, 0};
  p.custom_orbit_front = {0, 0, 1};
  hub.view = LookAt({0, 10, 0}, {0, 0, 0}, {1, 0, 0});
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, oracle::To(oracle::RightHanded({1, 0, 0}, -0.5) * oracle::Vec(0, 10, 0)));
  ExpectNear(Camera().up, {1, 0, 0});
}

TEST_F(Orbit, the_axis_is_made_perpendicular_to_front) {
  p.scene_up_direction = {1, 1, 0};  // leans towards the front (1, 0, 0)
  p.align_orbit_up_direction = false;
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
}

// Half a turn about a carries v to 2 (a v) a - v.
TEST_F(Orbit, axes_that_the_host_changes_in_mid_drag_count_from_the_next_frame) {
  hub.view = LookAt({10, 0, 0}, {0, 0, 0}, {0, 1, 0});
  p.orbit_multiplier = oracle::PI;
  Begin();
  Drag(1000, 0);
  ExpectNear(Camera().eye, {-10, 0, 0});
  p.scene_front_direction = {1, 1, 0};  // the axis: up without its part along front, (-1, 1, 0)
  Drag(1000, 0);
  ExpectNear(Camera().eye, {0, -10, 0});
  ExpectNear(Camera().up, {-1, 0, 0});
  p.scene_up_direction = {0, 0, 1};  // perpendicular to front, so the axis itself
  Drag(1000, 0);
  ExpectNear(Camera().eye, {-10, 0, 0});
  ExpectNear(Camera().up, {0, -1, 0});
}

TEST_F(Orbit, up_is_normalised_by_the_vertical_rotation) {
  hub.view.up = {0, 4, 0};
  Begin();
  Drag(100, 50);
  EXPECT_NEAR(Camera().up.Length(), 1.0, 1e-15);
}

TEST_F(Orbit, without_the_vertical_rotation_up_keeps_its_length) {
  hub.view.up = {0, 4, 0};
  p.constrain_orbit_vertical = true;
  Begin();
  Drag(100, 50);
  ExpectNear(Camera().up, {0, 4, 0});
}

// ---- constraints ----

TEST_F(Orbit, with_both_constraints_the_camera_stands_still) {
  p.constrain_orbit_horizontal = true;
  p.constrain_orbit_vertical = true;
  hub.view = LookAt({3, 4, 10}, {1, 2, 3}, {0, 1, 0});
  hub.view.pivot = {-1, 0.5, 2};
  const CameraParameters before = hub.view;
  Begin();
  Drag(300, 200);
  ExpectNear(Camera().eye, before.eye);
  ExpectNear(Camera().centre, before.centre);
  ExpectNear(Camera().up, before.up);
  EXPECT_EQ(hub.applied, 0);
}

TEST_F(Orbit, with_both_constraints_the_camera_still_takes_the_straightened_up_of_the_start) {
  p.constrain_orbit_horizontal = true;
  p.constrain_orbit_vertical = true;
  hub.view = LookAt({0, 5, 5}, {0, 0, 0}, {1, 1, 0});
  Begin();
  Drag(300, 200);
  ExpectNear(Camera().up, {0, 0.5, -0.5});
}

TEST_F(Orbit, with_the_horizontal_constraint_only_the_motion_is_a_pure_tilt_about_the_level_right) {
  p.constrain_orbit_horizontal = true;
  Begin();
  Drag(300, 50);
  ExpectNear(Camera().eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
}

TEST_F(Orbit, with_the_vertical_constraint_only_the_motion_is_a_pure_turn) {
  p.constrain_orbit_vertical = true;
  Begin();
  Drag(100, 300);
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
}

// ---- straightening ----

TEST_F(Orbit, a_rolled_camera_is_straightened_at_the_start_and_the_initial_camera_shows_it) {
  hub.view = LookAt({0, 5, 5}, {0, 0, 0}, {1, 1, 0});
  const OrbitOperation& orbit = Begin();
  // f = (0, -1, -1) / sqrt 2; the part of (0, 1, 0) perpendicular to it is (0, 0.5, -0.5).
  ExpectNear(orbit.GetInitialCamera().up, {0, 0.5, -0.5});
  EXPECT_EQ(orbit.GetInitialCamera().eye, Vector3(0, 5, 5));
  Drag(0, 0);
  ExpectNear(Camera().up, {0, std::sqrt(0.5), -std::sqrt(0.5)});
}

TEST_F(Orbit, straightening_can_be_switched_off) {
  p.align_orbit_up_direction = false;
  hub.view = LookAt({0, 5, 5}, {0, 0, 0}, {1, 1, 0});
  EXPECT_EQ(Begin().GetInitialCamera().up, Vector3(1, 1, 0));
}

TEST_F(Orbit, the_free_mode_does_not_straighten) {
  p.preserve_orbit_up_direction = false;
  hub.view = LookAt({0, 5, 5}, {0, 0, 0}, {1, 1, 0});
  EXPECT_EQ(Begin().GetInitialCamera().up, Vector3(1, 1, 0));
}

TEST_F(Orbit, a_custom_orbit_straightens_to_the_custom_up) {
  p.do_custom_orbit = true;
  p.custom_orbit_up = {0, 0, 2};
  p.custom_orbit_front = {1, 0, 0};
  hub.view = LookAt({0, 5, 5}, {0, 0, 0}, {1, 0, 1});
  ExpectNear(Begin().GetInitialCamera().up, {0, -0.5, 0.5});
}

TEST_F(Orbit, a_camera_whose_view_is_parallel_to_the_orbit_up_keeps_its_up_unchanged) {
  for (const double height : {10.0, -10.0}) {
    hub.view = LookAt({0, height, 0}, {0, 0, 0}, {1, 0.25, 2});
    EXPECT_EQ(Begin().GetInitialCamera().up, Vector3(1, 0.25, 2));
    hub.EndOperation(OPERATION_ORBIT);
  }
}

// ---- the sense ----

TEST_F(Orbit, an_upside_down_start_reverses_the_horizontal_sense_for_the_whole_drag) {
  hub.view.up = {0, -1, 0};
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, {10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
  // Tilted over the top, upright again: still reversed. A tilt by PI is 314.16 pixels of 500.
  Drag(100, 314);
  EXPECT_GT(Camera().up.y, 0.9);
  const Vector3 before = Camera().eye;
  Drag(110, 314);
  const oracle::Vec expected = oracle::RightHanded({0, 1, 0}, 0.05) * oracle::From(before);
  ExpectNear(Camera().eye, oracle::To(expected));
}

TEST_F(Orbit, an_upright_start_keeps_its_sense_when_tilted_over_the_top) {
  Begin();
  Drag(100, 314);
  EXPECT_LT(Camera().up.y, -0.9);
  const Vector3 before = Camera().eye;
  Drag(110, 314);
  const oracle::Vec expected = oracle::RightHanded({0, 1, 0}, -0.05) * oracle::From(before);
  ExpectNear(Camera().eye, oracle::To(expected));
}

TEST_F(Orbit, a_start_looking_up_along_the_axis_reverses_the_sense_and_one_looking_down_does_not) {
  for (const bool up : {true, false}) {
    hub.view = LookAt({0, up ? -10.0 : 10.0, 0}, {0, 0, 0}, {0, 0, 1});
    Begin();
    Drag(100, 0);
    const double sense = up ? 1.0 : -1.0;
    ExpectNear(Camera().up, oracle::To(oracle::RightHanded({0, 1, 0}, sense * 0.5) * oracle::Vec(0, 0, 1)));
    hub.EndOperation(OPERATION_ORBIT);
  }
}

// ---- a member of a combined operation ----

TEST_F(Orbit, a_combined_orbit_works_from_frame_to_frame) {
  Begin().SetCombined(true);
  Drag(100, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
  Drag(100, 0);  // no motion since the last frame
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
  Drag(150, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.75), 0, 10 * std::cos(0.75)});
}

TEST_F(Orbit, a_combined_orbit_does_not_snap) {
  p.do_snap_orbit = true;
  Begin().SetCombined(true);
  Drag(20, 0);  // away from a view and near to it: snapping would halve it
  ExpectNear(Camera().eye, {-10 * std::sin(0.1), 0, 10 * std::cos(0.1)});
}

TEST_F(Orbit, a_combined_orbit_starts_from_what_its_own_last_frame_made) {
  // The host's camera of the second frame has been moved; the orbit's base is its own.
  Begin().SetCombined(true);
  Drag(100, 0);
  hub.view.eye = {50, 50, 50};
  Drag(150, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.75), 0, 10 * std::cos(0.75)});
}

TEST_F(Orbit, a_plain_orbit_does_not_care_what_the_host_made_of_the_frame_before) {
  Begin();
  Drag(100, 0);
  hub.view.eye = {50, 50, 50};
  Drag(150, 0);
  ExpectNear(Camera().eye, {-10 * std::sin(0.75), 0, 10 * std::cos(0.75)});
}

// ---- the six-axis controller ----

TEST_F(Orbit, a_six_axis_controller_turns_by_the_change_of_its_rotation) {
  p.preserve_orbit_up_direction = false;
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  hub.GetActiveOperation(OPERATION_ORBIT)->Set3DControllerOperation(true);
  hub.UpdateOperationParams(400, 300, OPERATION_ORBIT);  // the cursor takes no part
  hub.UpdateOperationParams({7, 7, 7}, {0.0, 0.1, 9.0}, OPERATION_ORBIT);
  hub.PerformOperations();
  ExpectNear(Camera().eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
  hub.EndOperation(OPERATION_ORBIT);

  hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  hub.GetActiveOperation(OPERATION_ORBIT)->Set3DControllerOperation(true);
  hub.UpdateOperationParams({7, 7, 7}, {0.1, 0.0, 9.0}, OPERATION_ORBIT);
  hub.PerformOperations();
  ExpectNear(Camera().eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
}

// ---- the free mode ----

TEST_F(Orbit, the_free_mode_turns_about_the_cameras_own_up_and_right) {
  p.preserve_orbit_up_direction = false;
  hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {1, 0, 0});  // lying on its side: up is +x, right is -y
  Begin();
  Drag(100, 0);
  ExpectNear(Camera().eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
  ExpectNear(Camera().up, {1, 0, 0});
}

TEST_F(Orbit, the_free_mode_adds_each_frame_to_the_one_before) {
  p.preserve_orbit_up_direction = false;
  hub.view = LookAt({3, 4, 10}, {1, 2, 3}, {0.2, 1, 0.1});
  hub.view.pivot = {-1, 0.5, 2};
  oracle::ReferenceOrbit reference(hub.view, p);
  Begin();
  Drag(100, 50);
  reference.Frame(0.1, 0.1);
  Drag(40, 150);
  reference.Frame(-0.06, 0.2);
  ExpectNear(Camera().eye, oracle::To(reference.GetCamera().eye));
  ExpectNear(Camera().centre, oracle::To(reference.GetCamera().centre));
  ExpectNear(Camera().up, oracle::To(reference.GetCamera().up));
}

TEST_F(Orbit, the_free_mode_is_held_by_the_constraints) {
  p.preserve_orbit_up_direction = false;
  p.constrain_orbit_horizontal = true;
  Begin();
  Drag(300, 50);
  ExpectNear(Camera().eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
  p.constrain_orbit_vertical = true;
  Drag(600, 200);
  ExpectNear(Camera().eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
}

TEST_F(Orbit, the_free_mode_turns_about_the_pivot_that_the_host_has_now) {
  p.preserve_orbit_up_direction = false;
  Begin();
  Drag(100, 0);
  hub.view.pivot = {7, 0, 0};
  Drag(100, 0);  // no motion; the eye keeps its place from the pivot of the working camera
  ExpectNear(Camera().eye, {7 - 10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
}

TEST_F(Orbit, the_free_mode_keeps_the_last_view_where_nothing_is_left_of_the_up) {
  // The new up is the normalised (F x up) x F, of the length |F|^2: nothing below a viewing distance of
  // sqrt(2^-23) = 3.4527e-4.
  p.preserve_orbit_up_direction = false;
  for (const double distance : {3.4e-4, 1e-5, 1e-7}) {
    hub.view = LookAt({0, 0, distance}, {0, 0, 0}, {0, 1, 0});
    hub.view.pivot = {0, 0, -5};
    const CameraParameters before = hub.view;
    Begin();
    Drag(100, 50);
    EXPECT_EQ(hub.view.up, before.up) << distance;
    EXPECT_EQ(hub.view.eye, before.eye) << distance;
    EXPECT_EQ(hub.view.centre, before.centre) << distance;
    hub.EndOperation(OPERATION_ORBIT);
  }
  hub.view = LookAt({0, 0, 3.5e-4}, {0, 0, 0}, {0, 1, 0});
  hub.view.pivot = {0, 0, -5};
  Begin();
  Drag(100, 0);
  EXPECT_NEAR(hub.view.up.Length(), 1.0, NEAR);
  EXPECT_NEAR(hub.view.eye.z, -5 + 5.00035 * std::cos(0.5), NEAR);
}

TEST_F(Orbit, the_free_mode_normalises_up_and_makes_it_perpendicular) {
  p.preserve_orbit_up_direction = false;
  hub.view.up = {0, 3, 4};
  Begin();
  Drag(0, 0);
  ExpectNear(Camera().up, {0, 1, 0});
}

// ---- properties ----

namespace {

void RandomSettings(Random& random, ApplicationParameters& p) {
  const Axes scene = RandomAxes(random);
  const Axes world = RandomAxes(random);
  const Axes custom = RandomAxes(random);
  p.scene_up_direction = scene.up;
  p.scene_front_direction = scene.front;
  p.world_up_direction = world.up;
  p.world_front_direction = world.front;
  p.custom_orbit_up = custom.up;
  p.custom_orbit_front = custom.front;
  p.scene_is_world = random.Coin();
  p.do_custom_orbit = random.Coin();
  p.align_orbit_up_direction = random.Coin();
  p.constrain_orbit_horizontal = random.Integer(0, 5) == 0;
  p.constrain_orbit_vertical = random.Integer(0, 5) == 0;
}

void ExpectCamera(const CameraParameters& actual, const oracle::Camera& expected, double tolerance) {
  ASSERT_LT((oracle::From(actual.eye) - expected.eye).norm(), tolerance);
  ASSERT_LT((oracle::From(actual.centre) - expected.centre).norm(), tolerance);
  ASSERT_LT((oracle::From(actual.up) - expected.up).norm(), tolerance);
}

}  // namespace

TEST(OrbitProperty, agrees_with_a_second_writing_of_it_in_both_modes) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(RandomCamera(random));
    ApplicationParameters& p = hub.GetApplicationParameters();
    RandomSettings(random, p);
    p.preserve_orbit_up_direction = random.Coin();
    oracle::ReferenceOrbit reference(hub.view, p);
    hub.BeginOperation(OPERATION_ORBIT, 0, 0);
    reference.combined = p.preserve_orbit_up_direction && random.Integer(0, 3) == 0;
    hub.GetActiveOperation(OPERATION_ORBIT)->SetCombined(reference.combined);
    int x = 0;
    int y = 0;
    for (int frame = 0; frame < 4; ++frame) {
      const int toX = random.Integer(-1024, 1024);
      const int toY = random.Integer(-768, 768);
      reference.Frame((toX - x) / 1024.0, (toY - y) / 768.0);
      hub.Drag(OPERATION_ORBIT, x = toX, y = toY);
      // Positions within 300 units hold 1e-13, seven turns each a dozen roundings. The projection of the
      // right onto the level can be short, down to some 1e-4 of it in 10,000 cameras.
      ASSERT_NO_FATAL_FAILURE(ExpectCamera(hub.GetCameraParameters(), reference.GetCamera(), 1e-8))
          << i << " frame " << frame << " preserving " << p.preserve_orbit_up_direction;
    }
  }
}

TEST(OrbitProperty, there_and_back_returns_to_the_last_bit_on_the_turntable) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(RandomCamera(random));
    RandomSettings(random, hub.GetApplicationParameters());
    hub.BeginOperation(OPERATION_ORBIT, 300, 200);
    hub.PerformOperations();
    const CameraParameters start = hub.GetCameraParameters();
    for (int frame = random.Integer(1, 4); frame > 0; --frame) {
      hub.Drag(OPERATION_ORBIT, random.Integer(-2000, 2000), random.Integer(-2000, 2000));
    }
    hub.Drag(OPERATION_ORBIT, 300, 200);
    ASSERT_EQ(hub.GetCameraParameters().eye, start.eye) << i;
    ASSERT_EQ(hub.GetCameraParameters().centre, start.centre) << i;
    ASSERT_EQ(hub.GetCameraParameters().up, start.up) << i;
  }
}

TEST(OrbitProperty, there_and_back_along_one_axis_returns_in_the_free_mode) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = RandomCamera(random);
    MemoryHub hub(start);
    hub.GetApplicationParameters().preserve_orbit_up_direction = false;
    hub.BeginOperation(OPERATION_ORBIT, 0, 0);
    const bool horizontal = random.Coin();
    const int way = random.Integer(-1000, 1000);
    hub.Drag(OPERATION_ORBIT, horizontal ? way : 0, horizontal ? 0 : way);
    hub.Drag(OPERATION_ORBIT, 0, 0);
    // Positions within 300 units hold 1e-13.
    ASSERT_LT((hub.GetCameraParameters().eye - start.eye).Length(), 1e-11) << i;
    ASSERT_LT((hub.GetCameraParameters().centre - start.centre).Length(), 1e-11) << i;
  }
}

TEST(OrbitProperty, on_the_turntable_the_result_depends_on_the_total_motion_alone_to_the_last_bit) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = RandomCamera(random);
    MemoryHub once(start);
    RandomSettings(random, once.GetApplicationParameters());
    MemoryHub often(start);
    often.GetApplicationParameters() = once.GetApplicationParameters();
    const int x = random.Integer(-3000, 3000);
    const int y = random.Integer(-3000, 3000);
    once.BeginOperation(OPERATION_ORBIT, 7, 9);
    once.Drag(OPERATION_ORBIT, x, y);
    often.BeginOperation(OPERATION_ORBIT, 7, 9);
    for (int frame = random.Integer(1, 6); frame > 0; --frame) {
      often.Drag(OPERATION_ORBIT, random.Integer(-3000, 3000), random.Integer(-3000, 3000));
    }
    often.Drag(OPERATION_ORBIT, x, y);
    ASSERT_EQ(often.GetCameraParameters().eye, once.GetCameraParameters().eye) << i;
    ASSERT_EQ(often.GetCameraParameters().centre, once.GetCameraParameters().centre) << i;
    ASSERT_EQ(often.GetCameraParameters().up, once.GetCameraParameters().up) << i;
  }
}

TEST(OrbitProperty, the_distances_of_the_eye_from_the_pivot_and_from_the_centre_are_kept) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = RandomCamera(random);
    MemoryHub hub(start);
    ApplicationParameters& p = hub.GetApplicationParameters();
    RandomSettings(random, p);
    p.preserve_orbit_up_direction = random.Coin();
    p.do_snap_orbit = random.Coin();
    hub.BeginOperation(OPERATION_ORBIT, 0, 0);
    for (int frame = 0; frame < 5; ++frame) {
      hub.Drag(OPERATION_ORBIT, random.Integer(-1024, 1024), random.Integer(-768, 768));
      const CameraParameters& c = hub.GetCameraParameters();
      // Five turns of lengths up to 100 on positions up to 300.
      ASSERT_NEAR((c.eye - c.pivot).Length(), (start.eye - start.pivot).Length(), 1e-11) << i;
      ASSERT_NEAR((c.eye - c.centre).Length(), (start.eye - start.centre).Length(), 1e-11) << i;
    }
  }
}
