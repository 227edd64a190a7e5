#include "camera/zoom2d_operation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

// 1.005 rounded to single precision and widened; the fraction is exact in decimal.
constexpr double FACTOR = 1.00499999523162841796875;

class Zoom2D : public ::testing::Test {
 protected:
  Zoom2D() : hub(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8.0, 6.0)) {
    hub.BeginOperation(OPERATION_ZOOM2D, 100, 100);
  }

  // From the point where the button went down.
  void Drag(int dx, int dy) { hub.Drag(OPERATION_ZOOM2D, 100 + dx, 100 + dy); }

  void ExpectFactor(double factor) {
    EXPECT_DOUBLE_EQ(hub.view.ortho_width, 8.0 * factor);
    EXPECT_DOUBLE_EQ(hub.view.ortho_height, 6.0 * factor);
  }

  MemoryHub hub;
};

}  // namespace

TEST_F(Zoom2D, the_factor_of_a_pixel_is_the_single_precision_value_of_1_005_widened) {
  EXPECT_EQ(FACTOR, static_cast<double>(1.005f));
  Drag(11, 0);
  Drag(12, 0);
  EXPECT_EQ(hub.view.ortho_width, 8.0 * static_cast<double>(1.005f));
  EXPECT_EQ(hub.view.ortho_height, 6.0 * static_cast<double>(1.005f));
}

TEST_F(Zoom2D, a_drag_of_ten_pixels_does_not_yet_change_the_size_and_its_axis_stays_open) {
  Drag(10, 0);
  ExpectFactor(1.0);
  Drag(5, -5);
  ExpectFactor(1.0);
  // Still open: the drag now takes the other axis.
  Drag(3, 8);
  Drag(3, 18);
  ExpectFactor(std::pow(FACTOR, 10));
}

TEST_F(Zoom2D, eleven_pixels_of_both_together_decide_and_the_size_starts_from_there) {
  Drag(-6, 5);
  ExpectFactor(1.0);  // the anchor is where the axis was decided
  Drag(-26, 400);
  ExpectFactor(std::pow(FACTOR, -20));
}

TEST_F(Zoom2D, motion_along_the_other_axis_has_no_effect_after_the_axis_is_chosen) {
  Drag(20, 0);
  Drag(20, 700);
  ExpectFactor(1.0);
  Drag(50, -700);
  ExpectFactor(std::pow(FACTOR, 30));
}

TEST_F(Zoom2D, equal_motion_on_both_axes_chooses_the_vertical_one) {
  Drag(8, -8);
  Drag(500, -18);
  ExpectFactor(std::pow(FACTOR, -10));  // y runs downward
}

TEST_F(Zoom2D, always_scales_the_size_at_the_start_of_the_drag) {
  Drag(11, 0);
  Drag(61, 0);
  Drag(61, 0);
  ExpectFactor(std::pow(FACTOR, 50));
  Drag(11, 0);
  ExpectFactor(1.0);
}

TEST_F(Zoom2D, changes_nothing_but_the_two_sizes) {
  CameraParameters expected = hub.view;
  Drag(0, 20);
  Drag(0, 60);
  expected.ortho_width = hub.view.ortho_width;
  expected.ortho_height = hub.view.ortho_height;
  EXPECT_TRUE(SameBits(hub.view, expected));
  EXPECT_NE(hub.view.ortho_width, 8.0);
}

TEST_F(Zoom2D, a_new_drag_decides_anew_from_the_size_of_now) {
  Drag(0, 20);
  Drag(0, 60);
  hub.EndOperation(OPERATION_ZOOM2D);
  hub.BeginOperation(OPERATION_ZOOM2D, 100, 100);
  Drag(20, 0);
  ExpectFactor(std::pow(FACTOR, 40));
  Drag(30, 0);
  ExpectFactor(std::pow(FACTOR, 50));
}

TEST_F(Zoom2D, cursors_at_both_ends_of_int_leave_a_finite_camera) {
  const int lowest = std::numeric_limits<int>::min();
  const int highest = std::numeric_limits<int>::max();
  for (const int x : {lowest, highest, lowest}) {
    hub.Drag(OPERATION_ZOOM2D, x, highest);
    EXPECT_TRUE(hub.view.IsFinite());
  }
}
