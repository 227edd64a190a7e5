#include "camera/slide_operation.h"

#include <gtest/gtest.h>

#include <limits>

#include "camera/stepper.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

// Looking along -z from (0, 0, 10), right is +x. An offset of a whole view is a speed of 1 unit a second.
class Slide : public ::testing::Test, public Stepper<SlideOperation> {
 protected:
  Slide() : Stepper(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) { camera.pivot = {1, 2, 3}; }

  void ExpectShifted(double right, double forward) {
    ExpectNear(camera.eye, {right, 0, 10 - forward});
    ExpectNear(camera.centre, {right, 0, -forward});
    ExpectNear(camera.pivot, {1 + right, 2, 3 - forward});
  }
};

}  // namespace

TEST_F(Slide, an_offset_to_the_right_slides_to_the_right_and_one_down_slides_forward) {
  Begin();
  Step(500, 0, 2.0);
  ExpectShifted(1, 0);
  Step(0, 250, 2.0);
  ExpectShifted(1, 1);
  Step(-1000, -500, 0.5);
  ExpectShifted(0.5, 0.5);
}

TEST_F(Slide, goes_on_while_the_cursor_stands_off_its_start) {
  Begin(100, 100);
  Step(600, 100, 0.1);
  Step(600, 100, 0.1);
  Step(600, 100, 0.2);
  ExpectShifted(0.2, 0);
  Step(100, 100, 5.0);
  ExpectShifted(0.2, 0);
}

TEST_F(Slide, the_hub_gives_it_the_time_of_the_frame) {
  ManualPlatform platform;
  hub.view = camera;
  hub.BeginOperation(OPERATION_SLIDE, 0, 0);
  hub.Drag(OPERATION_SLIDE, 1000, 0);  // the first frame lasts no time
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10));
  platform.Advance(250);
  hub.PerformOperations();
  camera = hub.view;
  ExpectShifted(0.25, 0);
}

TEST_F(Slide, the_multiplier_scales_the_speed) {
  p.slide_multiplier = 3.0;
  Begin();
  Step(1000, 500, 1.0);
  ExpectShifted(3, 3);
}

TEST_F(Slide, neither_the_length_of_up_nor_its_slant_nor_the_distance_counts) {
  camera.up = {0, 3, 4};
  camera.centre = {0, 0, 9.5};
  Begin();
  Step(1000, 500, 1.0);
  ExpectNear(camera.eye, {1, 0, 9});
  ExpectNear(camera.centre, {1, 0, 8.5});
  EXPECT_EQ(camera.up, Vector3(0, 3, 4));
}

TEST_F(Slide, only_the_three_points_move) {
  camera = WithAsymmetricFrustum(camera, 10, 20, 30, 40);
  Begin();
  Step(300, 200, 1.0);
  ExpectOnlyMoved({&CameraParameters::eye, &CameraParameters::centre, &CameraParameters::pivot});
}

TEST_F(Slide, does_not_touch_the_bounds_of_the_scene) {
  Begin();
  EXPECT_EQ(hub.recalculatedGlobal, 0);
}

TEST_F(Slide, does_nothing_without_a_hub_a_viewport_or_a_frame) {
  operation.InitOperation(0, 0, nullptr);
  Step(100, 100, 1.0);
  ExpectShifted(0, 0);
  p.viewport_width = p.viewport_height = 0;
  Begin();
  Step(200, 200, 1.0);
  ExpectShifted(0, 0);
  p.viewport_width = p.viewport_height = 500;
  camera.up = {0, 0, 1};
  Step(700, 0, 1.0);  // no side without an up
  ExpectShifted(0, 0);
}

TEST_F(Slide, cursors_at_both_ends_of_int_do_not_overflow) {
  Begin(std::numeric_limits<int>::min(), 0);
  Step(std::numeric_limits<int>::max(), 0, 1.0);
  EXPECT_NEAR(camera.eye.x, 4294967.295, 1e-6);
}

TEST(SlideProperty, follows_the_reference) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<SlideOperation> slide(RandomCamera(random));
    slide.p.slide_multiplier = random.Uniform(-5.0, 5.0);
    slide.Begin(500, 250);
    oracle::Camera expected(slide.camera);
    for (int frame = 0; frame < 3; ++frame) {
      const int x = random.Integer(-500, 1500);
      const int y = random.Integer(-500, 1500);
      const double dt = random.Uniform(0.0, 2.0);
      slide.Step(x, y, dt);
      const oracle::Vec f = (expected.centre - expected.eye).normalized();
      const oracle::Vec left = expected.up.cross(f).normalized();
      const oracle::Vec shift =
          (left * (-(x - 500) / 1000.0) + f * ((y - 250) / 500.0)) * dt * slide.p.slide_multiplier;
      expected.eye += shift;
      expected.centre += shift;
      expected.pivot += shift;
      ASSERT_NO_FATAL_FAILURE(AssertSame(slide.camera, expected, 1e-11)) << i;
    }
  }
}
