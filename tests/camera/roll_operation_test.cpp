#include "camera/roll_operation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "camera/stepper.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

class OpenRoll : public RollOperation {
 public:
  using RollOperation::GetRollAmount;
};

// Looking along -z from (0, 0, 10); the pivot 2 units to the right of the axis. About the view direction,
// against the right hand: a positive angle carries up towards the left, as a drag to the right turns
// the picture to the right.
class Roll : public ::testing::Test, public Stepper<OpenRoll> {
 protected:
  Roll() : Stepper(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) { camera.pivot = {2, 0, 3}; }

  void ExpectUpTurned(double angle) { ExpectNear(camera.up, {-std::sin(angle), std::cos(angle), 0}); }
  void ExpectRolled(double angle) {
    ExpectUpTurned(angle);
    // The eye is 2 units to the left of the pivot.
    ExpectNear(camera.eye, {2 - 2 * std::cos(angle), -2 * std::sin(angle), 10});
    ExpectNear(camera.centre, {2 - 2 * std::cos(angle), -2 * std::sin(angle), 0});
    EXPECT_EQ(camera.pivot, Vector3(2, 0, 3));
  }
};

}  // namespace

TEST(RollTable, adds_no_virtual_operation) {
  EXPECT_EQ(VirtualSlot(&RollOperation::GetInitialUp), -1);
  EXPECT_EQ(VirtualSlot(&RollOperation::GetUnitAmount), -1);
  EXPECT_EQ(VirtualSlot(&OpenRoll::GetRollAmount), -1);
}

TEST_F(Roll, with_a_full_width_drag_turns_by_the_orbit_multiplier) {
  Begin();
  Step(1000, 0);
  ExpectRolled(5.0);
  // (5 + 2 PI) / 4 PI
  EXPECT_NEAR(operation.GetUnitAmount(), 0.8978873577, 1e-10);
}

TEST_F(Roll, a_drag_up_or_down_does_nothing) {
  Begin();
  Step(100, 400);
  ExpectRolled(0.5);
  Step(100, -400);
  ExpectRolled(0.5);
}

TEST_F(Roll, the_unit_amount_runs_from_two_turns_back_to_two_turns_forward) {
  EXPECT_EQ(operation.GetUnitAmount(), 0.5);
  Begin();
  EXPECT_EQ(operation.GetUnitAmount(), 0.5);
  const struct {
    int x;
    double unit;
  } rows[] = {{0, 0.5}, {-1000, 0.1021126423}, {1257, 1.0}, {-1257, 0.0}, {9000, 1.0}, {-9000, 0.0}};
  for (const auto& row : rows) {
    Step(row.x, 0);
    EXPECT_NEAR(operation.GetUnitAmount(), row.unit, 1e-10) << row.x;
  }
  Step(1256, 0);
  EXPECT_LT(operation.GetUnitAmount(), 1.0);  // 6.28, not quite two turns of PI
  Begin();
  EXPECT_EQ(operation.GetUnitAmount(), 0.5);
}

TEST_F(Roll, always_computes_from_the_start_of_the_drag) {
  Begin(300, 0);
  for (const int x : {900, -400, 320, 400}) Step(x, 0);
  ExpectRolled(0.5);
  camera.eye = {9, 9, 9};
  camera.up = {1, 0, 0};
  Step(400, 0);
  ExpectRolled(0.5);
}

TEST_F(Roll, the_initial_up_is_as_the_host_stored_it) {
  camera.up = {0, 3, 0};
  Begin();
  Step(100, 0);
  EXPECT_EQ(operation.GetInitialUp(), Vector3(0, 3, 0));
  ExpectNear(camera.up, {-3 * std::sin(0.5), 3 * std::cos(0.5), 0});
}

TEST_F(Roll, combined_goes_on_from_the_camera_it_is_given) {
  operation.SetCombined(true);
  Begin();
  Step(100, 0);
  ExpectRolled(0.5);
  Step(100, 0);
  ExpectRolled(1.0);
  Step(20, 0);
  ExpectRolled(1.1);
}

TEST_F(Roll, a_controller_turns_by_its_rotation_z_so_far) {
  operation.Set3DControllerOperation(true);
  Begin();
  operation.UpdateCursor(700, 300);  // takes no part
  StepController({9, 9, 9}, {9, 9, 0.1});
  ExpectRolled(0.5);
  StepController({9, 9, 9}, {9, 9, 0.2});
  ExpectRolled(1.5);
}

TEST_F(Roll, a_controller_leans_only_unless_it_moves_the_object) {
  operation.Set3DControllerOperation(true);
  double total = 0.0;
  for (const int mode : {0, 1, 2, 3, 7}) {
    camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    camera.pivot = {2, 0, 3};
    p.cam3d_controller_mode = static_cast<Cam3DControllerParameters::NavigationMode>(mode);
    Begin();
    total += 0.1;  // the sum outlives a drag
    StepController({}, {0, 0, 0.1});
    ExpectUpTurned(5.0 * total);
    EXPECT_EQ(camera.eye == Vector3(0, 0, 10), mode != 0) << mode;
    EXPECT_EQ(camera.centre == Vector3(0, 0, 0), mode != 0) << mode;
  }
}

TEST_F(Roll, the_cursor_turns_the_whole_camera_in_every_mode_of_the_controller) {
  p.cam3d_controller_mode = Cam3DControllerParameters::MODE_WALK;
  Begin();
  Step(100, 0);
  ExpectRolled(0.5);
}

TEST_F(Roll, takes_no_account_of_time) {
  Begin();
  Step(100, 0, 1e9);
  ExpectRolled(0.5);
}

TEST_F(Roll, no_other_field_changes) {
  camera = WithAsymmetricFrustum(camera, 10, 20, 30, 40);
  Begin();
  Step(300, 0);
  ExpectOnlyMoved({&CameraParameters::eye, &CameraParameters::centre, &CameraParameters::up});
}

TEST_F(Roll, does_nothing_without_a_hub_or_a_viewport) {
  const CameraParameters before = camera;
  operation.InitOperation(0, 0, nullptr);
  Step(100, 100);
  EXPECT_TRUE(SameBits(camera, before));
  p.viewport_width = p.viewport_height = 0;
  Begin();
  Step(100, 100);
  ExpectRolled(0);
}

TEST_F(Roll, an_amount_that_is_no_number_changes_neither_the_camera_nor_the_indicator) {
  Begin();
  Step(100, 0);
  const double unit = operation.GetUnitAmount();
  for (const double bad :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    p.orbit_multiplier = bad;
    Step(200, 0);
    ExpectRolled(0.5);
    EXPECT_EQ(operation.GetUnitAmount(), unit);
  }
}

TEST_F(Roll, a_camera_without_a_view_stays) {
  camera.centre = camera.eye;
  const CameraParameters before = camera;
  Begin();
  Step(100, 0);
  ExpectNear(camera.eye, before.eye);
  ExpectNear(camera.up, before.up);
}

TEST_F(Roll, cursors_at_both_ends_of_int_keep_the_distance_from_the_pivot) {
  Begin(std::numeric_limits<int>::min(), 0);
  Step(std::numeric_limits<int>::max(), 0);
  EXPECT_NEAR((camera.eye - camera.pivot).Length(), std::sqrt(53.0), 1e-12);
  EXPECT_EQ(operation.GetUnitAmount(), 1.0);
}

TEST(RollProperty, follows_the_reference) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenRoll> roll(RandomCamera(random));
    roll.p.orbit_multiplier = random.Uniform(-8.0, 8.0);
    roll.operation.SetCombined(random.Coin());
    const bool controller = random.Coin();
    roll.operation.Set3DControllerOperation(controller);
    roll.p.cam3d_controller_mode =
        static_cast<Cam3DControllerParameters::NavigationMode>(random.Integer(0, 3));
    roll.Begin(500, 250);
    const oracle::Camera initial(roll.camera);
    oracle::Camera expected = initial;
    double push = 0.0;
    for (int frame = 0; frame < 3; ++frame) {
      double amount = 0.0;
      if (controller) {
        const Vector3 rotation = random.Point(0.5);
        push += rotation.z;
        amount = push;
        roll.StepController(random.Point(1.0), rotation);
      } else {
        const int x = random.Integer(-500, 1500);
        roll.Step(x, random.Integer(-500, 1500));
        amount = (x - 500) / 1000.0;
      }
      const double angle = amount * roll.p.orbit_multiplier;
      const oracle::Camera base = roll.operation.IsCombined() ? expected : initial;
      const oracle::Vec f = (base.centre - base.eye).normalized();
      expected.up = oracle::Turn(f, angle, base.up);
      if (!controller || roll.p.cam3d_controller_mode == 0) {
        expected.centre = base.pivot + oracle::Turn(f, angle, base.centre - base.pivot);
        expected.eye = base.pivot + oracle::Turn(f, angle, base.eye - base.pivot);
      }
      // Offsets of up to 200 units; a viewing distance of half a unit divides what a position of 300 holds.
      ASSERT_NO_FATAL_FAILURE(AssertSame(roll.camera, expected, 1e-9)) << i;
      ASSERT_NEAR(roll.operation.GetUnitAmount(), std::clamp(0.5 + angle / (4.0 * oracle::PI), 0.0, 1.0),
                  1e-14);
    }
  }
}

TEST(RollProperty, keeps_the_view_direction_and_the_distances_and_leads_back) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenRoll> roll(RandomCamera(random));
    const oracle::Camera start(roll.camera);
    roll.Begin();
    roll.Step(random.Integer(-1000, 1000), 0);
    const oracle::Camera camera(roll.camera);
    ASSERT_LT((camera.centre - camera.eye - (start.centre - start.eye)).norm(), 1e-11) << i;
    ASSERT_NEAR((camera.eye - camera.pivot).norm(), (start.eye - start.pivot).norm(), 1e-11) << i;
    roll.Step(0, 0);
    ASSERT_NO_FATAL_FAILURE(AssertSame(roll.camera, start, 1e-12)) << i;
  }
}
