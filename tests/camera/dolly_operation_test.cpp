#include "camera/dolly_operation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "camera/stepper.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

class OpenDolly : public DollyOperation {
 public:
  using DollyOperation::GetDollyAmount;
};

// Looking along -z from (0, 0, 10). A drag across the view moves by 4 units.
class Dolly : public ::testing::Test, public Stepper<OpenDolly> {
 protected:
  Dolly() : Stepper(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {}

  void ExpectMoved(double forward) {
    ExpectNear(camera.eye, {0, 0, 10 - forward});
    ExpectNear(camera.centre, {0, 0, -forward});
  }
  // With the pivot at a depth, of a controller pushed by that much along z.
  void Push(double depth, double push) {
    camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    camera.pivot = {3, 4, 10 - depth};
    operation.Set3DControllerOperation(true);
    Begin();
    StepController({7, 7, push}, {7, 7, 7});
  }
};

}  // namespace

TEST(DollyTable, adds_no_virtual_operation_and_no_field) {
  EXPECT_EQ(VirtualSlot(&OpenDolly::GetDollyAmount), -1);
  EXPECT_EQ(sizeof(DollyOperation), sizeof(Operation));
}

TEST_F(Dolly, a_full_drag_to_the_right_or_down_moves_forward_by_the_multiplier) {
  Begin();
  Step(1000, 0);
  ExpectMoved(4);
  Step(1000, 500);
  ExpectMoved(8);
  Step(0, 500);
  ExpectMoved(4);
  Step(0, 0);
  ExpectMoved(0);
}

TEST_F(Dolly, the_greater_of_the_two_motions_counts_and_on_a_tie_the_vertical_one) {
  const struct {
    int x;
    int y;
    double amount;
  } rows[] = {
      {300, 100, 0.3},
      {-300, 100, -0.3},
      {100, 200, 0.4},
      {300, -200, -0.4},
      {250, -125, -0.25} /* both a quarter */,
      {-250, 125, 0.25},
      {0, 0, 0.0},
  };
  for (const auto& row : rows) {
    Begin();
    operation.UpdateCursor(row.x, row.y);
    EXPECT_NEAR(operation.GetDollyAmount(), row.amount, 1e-15) << row.x << " " << row.y;
  }
}

TEST_F(Dolly, the_motion_is_that_since_the_frame_before) {
  Begin(200, 100);
  Step(200, 100);
  ExpectMoved(0);
  Step(450, 100);
  Step(450, 100);
  ExpectMoved(1);
}

TEST_F(Dolly, takes_no_account_of_time) {
  Begin();
  Step(250, 0, 1e9);
  ExpectMoved(1);
}

TEST_F(Dolly, the_multiplier_and_the_scale_of_the_scene_scale_the_step) {
  p.dolly_multiplier = 0.5;
  p.scene_scale = 6.0;
  Begin();
  Step(500, 0);
  ExpectMoved(1.5);
}

TEST_F(Dolly, the_viewing_distance_does_not_scale_the_step) {
  camera.centre = {0, 0, 9};
  Begin();
  Step(1000, 0);
  ExpectNear(camera.eye, {0, 0, 6});
  ExpectNear(camera.centre, {0, 0, 5});
}

TEST_F(Dolly, runs_through_the_pivot_which_stays) {
  Begin();
  Step(4000, 0);
  ExpectMoved(16);
  ExpectOnlyMoved({&CameraParameters::eye, &CameraParameters::centre});
}

TEST_F(Dolly, begins_with_the_bounds_of_the_scene_brought_up_to_date) {
  Begin();
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

TEST_F(Dolly, goes_on_from_the_camera_it_is_given) {
  hub.BeginOperation(OPERATION_DOLLY, 0, 0);
  hub.Drag(OPERATION_DOLLY, 250, 0);
  hub.view = LookAt({5, 0, 0}, {0, 0, 0}, {0, 1, 0});
  hub.Drag(OPERATION_DOLLY, 500, 0);
  ExpectNear(hub.view.eye, {4, 0, 0});
}

TEST_F(Dolly, a_controller_moves_by_half_its_change_in_the_ratio_of_the_pivots_depth) {
  Push(5, -0.2);  // a = 0.1 * 5 / 10
  ExpectMoved(0.2);
  Push(20, 0.2);
  ExpectMoved(-0.8);
}

TEST_F(Dolly, a_controller_counts_a_pivot_behind_the_eye_as_one_in_front) {
  Push(-5, -0.2);
  ExpectMoved(0.2);
}

TEST_F(Dolly, a_controller_near_the_pivot_moves_at_a_fifth_at_least) {
  Push(2.01, -0.2);
  ExpectMoved(0.1 * 0.201 * 4);
  Push(1.99, -0.2);
  ExpectMoved(0.1 * 0.2 * 4);
  Push(0, -0.2);
  ExpectMoved(0.1 * 0.2 * 4);
}

TEST_F(Dolly, a_controllers_floor_holds_for_a_camera_without_a_view) {
  // No direction to go, and no ratio to anything.
  operation.Set3DControllerOperation(true);
  camera.centre = camera.eye;
  Begin();
  StepController({0, 0, -1}, {});
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
  EXPECT_EQ(camera.centre, Vector3(0, 0, 10));
}

TEST_F(Dolly, the_cursor_does_not_ask_for_the_pivot) {
  camera.pivot = {0, 0, 9.9};
  Begin();
  Step(250, 0);
  ExpectMoved(1);
}

TEST_F(Dolly, does_nothing_without_a_hub) {
  operation.InitOperation(0, 0, nullptr);
  Step(100, 100);
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
}

TEST_F(Dolly, a_viewport_or_a_view_without_size_does_not_move) {
  camera.centre = camera.eye;
  Begin();
  Step(100, 100);
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
  camera.centre = {0, 0, 0};
  p.viewport_width = p.viewport_height = 0;
  Begin();
  Step(100, 100);
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
}

TEST_F(Dolly, cursors_at_both_ends_of_int_do_not_overflow) {
  Begin(std::numeric_limits<int>::min(), 0);
  Step(std::numeric_limits<int>::max(), 0);
  EXPECT_NEAR(camera.eye.z, 10 - 4294967.295 * 4, 1e-6);
}

TEST(DollyProperty, follows_the_reference) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenDolly> dolly(RandomCamera(random));
    dolly.p.dolly_multiplier = random.Uniform(-5.0, 5.0);
    dolly.p.scene_scale = random.Magnitude(0.01, 10.0);
    const bool controller = random.Coin();
    dolly.operation.Set3DControllerOperation(controller);
    dolly.Begin(500, 250);
    oracle::Camera expected(dolly.camera);
    const oracle::Vec f = (expected.centre - expected.eye).normalized();
    double a = 0.0;
    if (controller) {
      const Vector3 push = random.Point(1.0);
      dolly.StepController(push, random.Point(1.0));
      const double depth = std::abs((expected.pivot - expected.eye).dot(f));
      a = push.z * -0.5 * std::max(0.2, depth / (expected.centre - expected.eye).norm());
    } else {
      const int x = random.Integer(-500, 1500);
      const int y = random.Integer(-500, 1500);
      dolly.Step(x, y);
      const double wx = (x - 500) / 1000.0;
      const double wy = (y - 250) / 500.0;
      a = std::abs(wx) > std::abs(wy) ? wx : wy;
    }
    const oracle::Vec step = f * (dolly.p.scene_scale * a * dolly.p.dolly_multiplier);
    expected.eye += step;
    expected.centre += step;
    // Steps of up to 100 * 200 * 10 * 5 / 2 units.
    ASSERT_NO_FATAL_FAILURE(AssertSame(dolly.camera, expected, 1e-12 * (1000.0 + step.norm()))) << i;
  }
}

TEST(DollyProperty, there_and_back_on_one_axis_leads_back) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenDolly> dolly(RandomCamera(random));
    const oracle::Camera start(dolly.camera);
    dolly.Begin();
    dolly.Step(random.Integer(-1000, 1000), 0);
    dolly.Step(0, 0);
    ASSERT_NO_FATAL_FAILURE(AssertSame(dolly.camera, start, 1e-12)) << i;
  }
}
