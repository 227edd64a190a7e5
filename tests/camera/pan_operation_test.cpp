#include "camera/pan_operation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "camera/oracle.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

// Looking along -z from (0, 0, 10): right is +x. At the depth of the pivot, 10, the tangents of 45 degrees
// make the view 20 units wide and high. The viewport is 1000 by 500 pixels.
class Pan : public ::testing::Test {
 protected:
  Pan() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), p(hub.GetApplicationParameters()) {
    p.viewport_width = 1000;
    p.viewport_height = 500;
  }

  void Drag(int x, int y) {
    hub.BeginOperation(OPERATION_PAN, 0, 0);
    hub.Drag(OPERATION_PAN, x, y);
    hub.EndOperation(OPERATION_PAN);
  }

  void ExpectEye(double x, double y, double z) {
    // Tens of units through a dozen roundings.
    EXPECT_NEAR(hub.view.eye.x, x, 1e-13);
    EXPECT_NEAR(hub.view.eye.y, y, 1e-13);
    EXPECT_NEAR(hub.view.eye.z, z, 1e-13);
  }

  MemoryHub hub;
  ApplicationParameters& p;
};

}  // namespace

TEST_F(Pan, a_full_width_drag_moves_the_scene_at_the_pivots_depth_by_a_full_view_width) {
  Drag(1000, 0);
  ExpectEye(-20, 0, 10);
  EXPECT_NEAR(hub.view.centre.x, -20.0, 1e-13);
  EXPECT_NEAR(hub.view.centre.z, 0.0, 1e-13);
}

TEST_F(Pan, a_full_height_drag_downward_moves_the_camera_up_by_a_full_view_height) {
  Drag(0, 500);
  ExpectEye(0, 20, 10);
  EXPECT_NEAR(hub.view.centre.y, 20.0, 1e-13);
}

TEST_F(Pan, the_pivot_does_not_move_and_no_other_field_changes) {
  CameraParameters expected = hub.view;
  Drag(250, -125);
  expected.eye = hub.view.eye;
  expected.centre = hub.view.centre;
  EXPECT_TRUE(SameBits(hub.view, expected));
  ExpectEye(-5, -5, 10);
}

TEST_F(Pan, the_depth_is_the_pivots_along_the_view_and_not_its_distance) {
  hub.view.pivot = {30, 40, 8};  // depth 2: a view of 4 units
  Drag(500, 0);
  ExpectEye(-2, 0, 10);
}

TEST_F(Pan, an_asymmetric_frustum_counts_all_four_half_angles) {
  const auto degrees = [](double tangent) { return std::atan(tangent) * 180.0 / oracle::PI; };
  hub.view = WithAsymmetricFrustum(hub.view, degrees(0.1), degrees(0.3), degrees(0.5), degrees(0.2));
  Drag(1000, 500);
  ExpectEye(-4, 7, 10);  // (0.1 + 0.3) 10 and (0.5 + 0.2) 10
}

// A tenth of the view a frame: 2 units; once a half angle has the tangent 0.5, 1.5 units on its axis.
TEST_F(Pan, a_half_angle_that_the_host_changes_in_mid_drag_counts_from_the_next_frame) {
  const CameraParameters start = hub.view;
  for (double CameraParameters::*const angle : {&CameraParameters::left_fov, &CameraParameters::right_fov,
                                                &CameraParameters::top_fov, &CameraParameters::bottom_fov}) {
    const bool across = angle == &CameraParameters::left_fov || angle == &CameraParameters::right_fov;
    hub.view = start;
    hub.BeginOperation(OPERATION_PAN, 0, 0);
    hub.Drag(OPERATION_PAN, 100, 50);
    ExpectEye(-2, 2, 10);
    hub.view.*angle = std::atan(0.5) * 180.0 / oracle::PI;
    hub.Drag(OPERATION_PAN, 200, 100);
    ExpectEye(across ? -3.5 : -4, across ? 4 : 3.5, 10);
    hub.EndOperation(OPERATION_PAN);
  }
}

TEST_F(Pan, orthographic_uses_the_orthographic_size) {
  hub.view = WithOrthographic(hub.view, 6.0, 4.0);
  Drag(500, 250);
  ExpectEye(-3, 2, 10);
}

TEST_F(Pan, a_pivot_behind_the_eye_never_moves_the_scene_opposite_to_the_cursor) {
  hub.view.pivot = {0, 0, 20};  // depth -10
  Drag(500, 250);
  ExpectEye(-10, 10, 10);
}

TEST_F(Pan, a_negative_orthographic_size_does_not_turn_the_motion_round) {
  hub.view = WithOrthographic(hub.view, -6.0, -4.0);
  Drag(500, 250);
  ExpectEye(-3, 2, 10);
}

TEST_F(Pan, up_need_be_neither_normalised_nor_perpendicular) {
  hub.view.up = {0, 3, 4};
  Drag(500, 250);
  ExpectEye(-10, 10, 10);
}

TEST_F(Pan, the_multiplier_scales_the_motion) {
  p.pan_multiplier = 0.25;
  Drag(500, 250);
  ExpectEye(-2.5, 2.5, 10);
}

TEST_F(Pan, the_motion_is_that_since_the_frame_before) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.Drag(OPERATION_PAN, 100, 0);
  ExpectEye(-2, 0, 10);
  hub.PerformOperations();
  ExpectEye(-2, 0, 10);
  hub.Drag(OPERATION_PAN, 150, 0);
  ExpectEye(-3, 0, 10);
}

TEST_F(Pan, takes_no_account_of_time) {
  PanOperation pan;
  pan.InitOperation(0, 0, &hub);
  pan.UpdateCursor(100, 0);
  for (const double dt : {0.0, 1.0, 1e9}) {
    CameraParameters camera = hub.view;
    pan.PerformOperation(dt, camera);
    EXPECT_NEAR(camera.eye.x, -2.0, 1e-13);
  }
}

TEST_F(Pan, an_adjuster_scales_the_motion_and_gets_the_hubs_camera_and_the_viewport) {
  class Doubling : public AspectRatioAdjuster {
   public:
    void Adjust(const CameraParameters& camera, int width, int height, double& horizontal,
                double& vertical) override {
      eye = camera.eye;
      size = {static_cast<double>(width), static_cast<double>(height)};
      motion = {horizontal, vertical};
      horizontal *= 2.0;
      vertical *= 3.0;
    }
    Vector3 eye;
    Vector2 size;
    Vector2 motion;
  };
  Doubling adjuster;
  SetAspectRatioAdjuster(&adjuster);
  Drag(500, 250);
  SetAspectRatioAdjuster(nullptr);
  EXPECT_EQ(adjuster.eye, Vector3(0, 0, 10));
  EXPECT_EQ(adjuster.size.x, 1000.0);
  EXPECT_EQ(adjuster.size.y, 500.0);
  EXPECT_EQ(adjuster.motion.x, 0.5);
  EXPECT_EQ(adjuster.motion.y, 0.5);
  ExpectEye(-20, 30, 10);
}

TEST_F(Pan, a_six_axis_controller_pans_by_half_the_change_of_its_translation) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.GetActiveOperation(OPERATION_PAN)->Set3DControllerOperation(true);
  hub.UpdateOperationParams(400, 400, OPERATION_PAN);  // the cursor takes no part
  hub.UpdateOperationParams({0.2, 0.4, 9.0}, {9, 9, 9}, OPERATION_PAN);
  hub.PerformOperations();
  ExpectEye(-2, -4, 10);  // dx = 0.1, dy = -0.2 of 20 units
  // A second input in the same frame replaces the first: only the last change counts.
  hub.UpdateOperationParams({5.0, 5.0, 0.0}, {}, OPERATION_PAN);
  hub.UpdateOperationParams({-0.1, 0.0, 0.0}, {}, OPERATION_PAN);
  hub.PerformOperations();
  ExpectEye(-1, -4, 10);
}

TEST_F(Pan, a_six_axis_input_goes_on_until_the_next_one) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.GetActiveOperation(OPERATION_PAN)->Set3DControllerOperation(true);
  hub.UpdateOperationParams({0.2, 0.0, 0.0}, {}, OPERATION_PAN);
  hub.PerformOperations();
  hub.PerformOperations();
  ExpectEye(-4, 0, 10);
}

TEST_F(Pan, a_camera_without_an_up_or_a_view_stays) {
  hub.view.up = {};
  Drag(500, 250);
  ExpectEye(0, 0, 10);
  hub.view.up = {0, 0, 1};  // along the view
  Drag(500, 250);
  ExpectEye(0, 0, 10);
  hub.view.centre = hub.view.eye;
  Drag(500, 250);
  ExpectEye(0, 0, 10);
}

TEST(PanProperty, the_point_at_the_pivots_depth_stays_under_the_cursor) {
  // Positions of up to 100 units hold 1.4e-14 of one. The views are at least 0.7 of the pivot's distance
  // wide and high, on 1024 pixels: 1e-9 of a pixel is 1e-12 of the view, 50 times what the positions hold.
  Random random;
  for (int i = 0; i < 10000; ++i) {
    static constexpr Frustum FRUSTA[] = {Frustum::Symmetric, Frustum::Asymmetric, Frustum::Orthographic};
    CameraParameters start = RandomCamera(random, FRUSTA[i % 3]);
    for (double* const angle : {&start.left_fov, &start.right_fov, &start.top_fov, &start.bottom_fov}) {
      *angle = Math::Max(*angle, 20.0);
    }
    const Vector3 forward = (start.centre - start.eye).Normalized();
    const double depth = random.Magnitude(0.5, 50.0);
    start.eye = random.Point(depth);
    start.centre = start.eye + forward * random.Magnitude(0.5, 50.0);
    start.pivot = start.eye + forward * depth + forward.Cross(random.Direction()) * (0.3 * depth);
    start.ortho_width = depth * random.Uniform(0.7, 4.0);
    start.ortho_height = depth * random.Uniform(0.7, 4.0);

    MemoryHub hub(start);
    ApplicationParameters& p = hub.GetApplicationParameters();
    const int x = random.Integer(0, 1023);
    const int y = random.Integer(0, 767);
    const int toX = random.Integer(0, 1023);
    const int toY = random.Integer(0, 767);
    hub.BeginOperation(OPERATION_PAN, x, y);
    hub.Drag(OPERATION_PAN, toX, toY);
    const oracle::Vec pivot = oracle::From(start.pivot);
    const Eigen::Vector2d moved =
        oracle::Project(hub.GetCameraParameters(), pivot) - oracle::Project(start, pivot);
    // The cursor's y runs downward, the projection's upward.
    ASSERT_NEAR(moved.x() * p.viewport_width, toX - x, 1e-9) << i;
    ASSERT_NEAR(moved.y() * p.viewport_height, y - toY, 1e-9) << i;
  }
}
