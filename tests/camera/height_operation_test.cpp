#include "camera/height_operation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "camera/stepper.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

constexpr int LOWEST = std::numeric_limits<int>::min();
constexpr int HIGHEST = std::numeric_limits<int>::max();

class OpenHeight : public HeightOperation {
 public:
  using HeightOperation::CheckBoundaryConditions;
  using HeightOperation::GetMoveAmountFromCursorOffset;
  using HeightOperation::SetCamera;
};

// The scene reaches from -5 to 5 and the eye stands at 0. A step of n pixels moves by
// n^2 / 500 * 10 * 0.01 * 2 = n^2 / 2500 units: 50 pixels make 1, 100 make 4, 150 make 9.
class Height : public ::testing::Test, public Stepper<OpenHeight> {
 protected:
  Height() : Stepper(LookAt({0, 0, 10}, {3, -1, 0}, {0, 1, 0})) {
    camera.pivot = {7, 8, 9};
    p.global_bound_radius = 5.0;
  }

  void BeginAt(double height) {
    camera = LookAt({0, height, 10}, {3, height - 1, 0}, {0, 1, 0});
    Begin();
    y = 0;
  }
  void StepBy(int offset) { Step(0, y += offset); }
  void ExpectHeight(double height) { ExpectNear(camera.eye, {0, height, 10}); }
  // What an indicator shows after the frame.
  double UnitHeight() {
    hub.view = camera;
    hub.PerformOperations();
    return operation.GetUnitHeight();
  }

  int y = 0;
};

// The height written a second time.
class ReferenceHeight {
 public:
  ReferenceHeight(const CameraParameters& start, const ApplicationParameters& parameters,
                  const oracle::Vec& upward)
      : p(parameters), u(oracle::Unit(upward)), initial(start), camera(start) {
    const double middle = oracle::From(p.scene_bound_centre).dot(u);
    const double e = initial.eye.dot(u);
    lowest = std::min(middle - p.scene_bound_radius, e);
    highest = std::max(middle + p.scene_bound_radius, e);
  }

  void Frame(int o) {
    const double square = static_cast<double>(o) * o * (o < 0 ? -1.0 : 1.0);
    double amount = square / p.viewport_height * (highest - lowest) * 0.01 * p.height_multiplier;
    const double thousandth = (highest - lowest) / 1000.0;
    const double present = initial.eye.dot(u) - move;
    double test = present - amount;
    if (top && o >= 1) {
      top = false;
      test = highest - thousandth;
    } else if (bottom && o < 0) {
      bottom = false;
      test = lowest + thousandth;
    }
    const auto isTie = [&](double h) {
      return h != initial.eye.dot(u) && (Near(h, lowest) || Near(h, highest));
    };
    tied = tied || isTie(test) || isTie(present);
    if (test < lowest && present < lowest) {
      bottom = true;
      amount = 0.0;
    }
    if (test > highest && present > highest) {
      top = true;
      amount = 0.0;
    }
    move += amount;
    const double height = initial.eye.dot(u) - move;
    const double held = std::clamp(height, lowest, highest);
    camera.eye = initial.eye - u * move + u * (held - height);
    camera.centre = camera.eye + (initial.centre - initial.eye);
  }

  const ApplicationParameters& p;
  oracle::Vec u;
  oracle::Camera initial;
  oracle::Camera camera;
  double lowest;
  double highest;
  double move = 0.0;
  bool top = false;
  bool bottom = false;
  bool tied = false;  // a height came so near to an end that rounding decides on which side it lies

 private:
  static bool Near(double a, double b) { return std::abs(a - b) < 1e-9; }
};

}  // namespace

TEST(HeightTable, adds_no_virtual_operation) {
  EXPECT_EQ(VirtualSlot(&HeightOperation::GetUnitHeight), -1);
  EXPECT_EQ(VirtualSlot(&OpenHeight::GetMoveAmountFromCursorOffset), -1);
  EXPECT_EQ(VirtualSlot(&OpenHeight::CheckBoundaryConditions), -1);
  EXPECT_EQ(VirtualSlot(&OpenHeight::SetCamera), -1);
}

// ---- the motion ----

TEST_F(Height, a_cursor_moving_down_lowers_the_camera_by_the_square_of_its_step) {
  Begin();
  StepBy(50);
  ExpectHeight(-1);
  StepBy(-100);
  ExpectHeight(3);
  StepBy(5);
  ExpectHeight(2.99);
}

TEST_F(Height, the_view_vector_is_kept_and_nothing_else_moves) {
  camera = WithAsymmetricFrustum(camera, 10, 20, 30, 40);
  Begin();
  StepBy(50);
  ExpectNear(camera.eye, {0, -1, 10});
  ExpectNear(camera.centre, {3, -2, 0});
  ExpectOnlyMoved({&CameraParameters::eye, &CameraParameters::centre});
}

TEST_F(Height, only_the_vertical_motion_since_the_last_frame_counts) {
  Begin();
  Step(900, 50);
  Step(100, 50);
  Step(-100, 50);
  ExpectHeight(-1);
}

TEST_F(Height, takes_no_account_of_time) {
  Begin();
  Step(0, 50, 1e9);
  ExpectHeight(-1);
}

TEST_F(Height, the_amount_is_the_signed_square_over_the_viewport_times_the_range) {
  Begin();
  const struct {
    double offset;
    double amount;
  } rows[] = {
      {0, 0},       {1, 0.0004},   {-1, -0.0004},   {10, 0.04}, {-10, -0.04}, {500, 100},
      {-500, -100}, {1.5, 0.0008}, {-1.5, -0.0008}, {0.9, 0.0}};  // of a part of a pixel, whole squares
  for (const auto& row : rows) {
    EXPECT_NEAR(operation.GetMoveAmountFromCursorOffset(row.offset), row.amount, 1e-13) << row.offset;
  }
  p.height_multiplier = 3.0;
  EXPECT_NEAR(operation.GetMoveAmountFromCursorOffset(50), 1.5, 1e-13);
  p.viewport_height = 1000;
  EXPECT_NEAR(operation.GetMoveAmountFromCursorOffset(50), 0.75, 1e-13);
  p.viewport_width = 1;
  EXPECT_NEAR(operation.GetMoveAmountFromCursorOffset(50), 0.75, 1e-13);
}

TEST_F(Height, goes_on_from_the_start_of_the_drag_whatever_the_host_does) {
  Begin();
  StepBy(50);
  camera = LookAt({9, 9, 9}, {1, 1, 1}, {0, 1, 0});
  StepBy(50);
  ExpectHeight(-2);
  ExpectNear(camera.centre, {3, -3, 0});
}

// ---- the range ----

TEST_F(Height, the_range_is_that_of_the_bounding_sphere_along_the_up_direction) {
  p.global_bound_centre = {100, 2, 100};
  BeginAt(0);
  EXPECT_NEAR(UnitHeight(), 3.0 / 10.0, 1e-15);
  p.global_bound_centre = {100, 100, -1};
  p.scene_up_direction = {0, 0, 8};
  camera.eye = {0, 0, 1};
  Begin();
  EXPECT_NEAR(UnitHeight(), 7.0 / 10.0, 1e-15);
}

TEST_F(Height, the_bounds_are_brought_up_to_date_first) {
  hub.onRecalculateGlobal = [this] { p.global_bound_radius = 20.0; };
  Begin();
  EXPECT_EQ(hub.recalculatedGlobal, 1);
  StepBy(50);
  ExpectHeight(-4);
}

TEST_F(Height, of_a_camera_above_the_scenes_top_the_range_starts_with_the_cameras_height) {
  BeginAt(15);
  EXPECT_EQ(UnitHeight(), 1.0);
  // The range is 20 now: 50 pixels make 2 units.
  StepBy(50);
  ExpectHeight(13);
  EXPECT_NEAR(UnitHeight(), 0.9, 1e-15);
  StepBy(-50);
  StepBy(-50);
  ExpectHeight(15);
}

TEST_F(Height, of_a_camera_below_the_scene_the_range_starts_with_the_cameras_height) {
  BeginAt(-15);
  EXPECT_EQ(UnitHeight(), 0.0);
  StepBy(-50);
  ExpectHeight(-13);
  StepBy(50);
  StepBy(50);
  ExpectHeight(-15);
}

TEST_F(Height, the_unit_height_runs_from_the_lowest_to_the_highest) {
  Begin();
  const struct {
    double height;
    double unit;
  } rows[] = {{-7, 0}, {-5, 0}, {-2.5, 0.25}, {0, 0.5}, {4, 0.9}, {5, 1}, {9, 1}};
  for (const auto& row : rows) {
    camera.eye.y = row.height;
    EXPECT_NEAR(UnitHeight(), row.unit, 1e-15) << row.height;
  }
}

TEST_F(Height, up_is_the_cameras_without_planar_motion) {
  p.fly_planar_motion = false;
  camera.up = {0, 0, 4};
  camera.eye = {0, 0, 0};
  camera.centre = {0, 5, 0};
  Begin();
  hub.view = camera;
  StepBy(50);
  ExpectNear(camera.eye, {0, 0, -1});
  EXPECT_NEAR(UnitHeight(), 0.4, 1e-15);
}

// ---- the ends ----

TEST_F(Height, at_the_top_motion_further_up_yields_nothing_and_the_first_motion_down_releases) {
  Begin();
  StepBy(-150);  // to 9, which shows as 5
  ExpectHeight(5);
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -50), 0.0);  // at the top from now on
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -50), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(1.0, 50), 1.0);  // released, though 8 is still above
  EXPECT_EQ(operation.CheckBoundaryConditions(1.0, 50), 0.0);  // that is the top again
  EXPECT_EQ(operation.CheckBoundaryConditions(1.0, 50), 1.0);
}

TEST_F(Height, at_the_bottom_motion_further_down_yields_nothing_and_the_first_motion_up_releases) {
  Begin();
  StepBy(150);
  ExpectHeight(-5);
  EXPECT_EQ(operation.CheckBoundaryConditions(1.0, 50), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(1.0, 50), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -50), -1.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -50), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -50), -1.0);
}

TEST_F(Height, what_one_step_overshot_has_to_be_walked_back) {
  BeginAt(0.25);
  StepBy(-150);  // to 9.25
  StepBy(-50);   // refused; at the top
  // To 8.25, 7.25, 6.25 and 5.25, every other step being refused since it would end above the top.
  for (int step = 0; step < 7; ++step) {
    StepBy(50);
    ExpectHeight(5);
  }
  StepBy(50);
  ExpectHeight(4.25);
  StepBy(50);
  ExpectHeight(3.25);
}

TEST_F(Height, at_an_end_a_step_of_less_than_a_pixel_downward_does_not_release) {
  // "Down" begins with a whole pixel, "up" with anything.
  Begin();
  StepBy(-150);
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -1), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(0.5, 0.999), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(0.5, 1.0), 0.5);
  BeginAt(0);
  StepBy(150);
  EXPECT_EQ(operation.CheckBoundaryConditions(1.0, 1), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(0.0, 0.0), 0.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(-0.5, -0.001), -0.5);
}

TEST_F(Height, the_last_step_to_an_end_is_taken_whole) {
  // From within the range any amount stands; the eye is held at the end.
  Begin();
  EXPECT_EQ(operation.CheckBoundaryConditions(-100.0, -500), -100.0);
  EXPECT_EQ(operation.CheckBoundaryConditions(100.0, 500), 100.0);
  BeginAt(5);  // on the end is within
  EXPECT_EQ(operation.CheckBoundaryConditions(-1.0, -50), -1.0);
}

TEST_F(Height, a_new_drag_has_forgotten_the_ends_and_the_way) {
  for (const int sense : {-1, 1}) {
    BeginAt(0);
    StepBy(150 * sense);
    StepBy(150 * sense);
    BeginAt(0);
    StepBy(50 * sense);
    ExpectHeight(-sense);
    StepBy(150 * sense);
    // Were it still at the end of the first drag, this would release it and stand.
    EXPECT_EQ(operation.CheckBoundaryConditions(-1.0 * sense, -50 * sense), 0.0);
  }
}

// ---- bad input ----

TEST_F(Height, does_nothing_without_a_hub) {
  operation.InitOperation(0, 0, nullptr);
  const CameraParameters before = camera;
  StepBy(100);
  EXPECT_TRUE(SameBits(camera, before));
  EXPECT_EQ(operation.GetUnitHeight(), 0.0);
}

TEST_F(Height, a_viewport_a_scene_or_an_up_without_size_does_not_move) {
  p.viewport_height = 0;
  Begin();
  StepBy(100);
  ExpectHeight(0);
  p.viewport_height = 500;
  p.global_bound_radius = p.scene_bound_radius = 1e-300;
  camera.eye.y = 0;
  Begin();
  StepBy(100);
  ExpectHeight(0);
  p.global_bound_radius = 5;
  p.scene_up_direction = {};
  Begin();
  StepBy(100);
  ExpectHeight(0);
}

TEST_F(Height, cursors_at_both_ends_of_int_stop_at_the_ends) {
  Begin(0, LOWEST);
  Step(0, HIGHEST);
  ExpectHeight(-5);
  Step(0, LOWEST);
  EXPECT_GE(camera.eye.y, -5.0);
  EXPECT_LE(camera.eye.y, 5.0);
}

TEST_F(Height, a_multiplier_that_is_no_number_moves_nothing_and_leaves_the_next_step_good) {
  Begin();
  p.height_multiplier = std::numeric_limits<double>::quiet_NaN();
  StepBy(50);
  ExpectHeight(0);
  p.height_multiplier = 2.0;
  StepBy(50);
  ExpectHeight(-1);
}

// ---- properties ----

TEST(HeightProperty, follows_the_reference_and_stays_within_the_range) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenHeight> height(RandomCamera(random));
    ApplicationParameters& p = height.p;
    RandomDirections(random, p);
    p.fly_planar_motion = random.Coin();
    p.global_bound_radius = p.ucs_bound_radius = random.Magnitude(1.0, 200.0);
    p.global_bound_centre = random.Point(50.0);
    p.ucs_bound_centre = random.Point(50.0);
    p.height_multiplier = random.Uniform(-2.0, 8.0);
    height.Begin(0, 250);
    const Vector3 up = p.fly_planar_motion ? height.hub.GetWorldUpDirection() : height.camera.up;
    ReferenceHeight reference(height.camera, p, oracle::From(up));
    for (int frame = 0, y = 250; frame < 12; ++frame) {
      const int toY = random.Integer(-100, 600);
      height.Step(random.Integer(-100, 1100), toY);
      reference.Frame(toY - y);
      y = toY;
      if (reference.tied) break;
      // Moves of up to 12 * 1000 * 400 * 0.08 units hold 1e-10 of one.
      ASSERT_NO_FATAL_FAILURE(AssertSame(height.camera, reference.camera, 1e-9)) << i;
      const double h = oracle::From(height.camera.eye).dot(reference.u);
      ASSERT_GE(h, reference.lowest - 1e-9) << i;
      ASSERT_LE(h, reference.highest + 1e-9) << i;
    }
  }
}

TEST(HeightProperty, moves_along_the_up_direction_only) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenHeight> height(RandomCamera(random));
    RandomDirections(random, height.p);
    height.p.global_bound_radius = height.p.ucs_bound_radius = 50.0;
    const oracle::Camera start(height.camera);
    height.Begin();
    height.Step(random.Integer(-1000, 1000), random.Integer(-500, 500));
    const oracle::Camera camera(height.camera);
    const oracle::Vec up = oracle::From(height.hub.GetWorldUpDirection()).normalized();
    ASSERT_LT((camera.eye - start.eye).cross(up).norm(), 1e-11) << i;
    ASSERT_LT((camera.centre - camera.eye - start.centre + start.eye).norm(), 1e-12) << i;
    ASSERT_EQ(camera.up, start.up) << i;
    ASSERT_EQ(camera.pivot, start.pivot) << i;
  }
}
