#include "korvane/camera_parameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "camera/oracle.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

using ProjectionType = CameraParameters::ProjectionType;

// A camera whose fields all differ, so that a copy that mixes two of them up is seen.
CameraParameters AllFieldsDiffer() {
  CameraParameters c;
  c.eye = {1.0, 2.0, 3.0};
  c.centre = {4.0, 5.0, 6.0};
  c.up = {7.0, 8.0, 9.0};
  c.pivot = {10.0, 11.0, 12.0};
  c.left_fov = 13.0;
  c.right_fov = 14.0;
  c.top_fov = 15.0;
  c.bottom_fov = 16.0;
  c.ortho_width = 17.0;
  c.ortho_height = 18.0;
  c.projection_type = ProjectionType::Orthographic;
  c.perspective_with_ortho = true;
  c.projection_transition = 0.5;
  c.page_scale = 19.0;
  c.page_origin_x = 20.0;
  c.page_origin_y = 21.0;
  return c;
}

struct Number {
  const char* name;
  double CameraParameters::*field;
};
constexpr Number NUMBERS_WITH_TOLERANCE[] = {
    {"left_fov", &CameraParameters::left_fov},
    {"right_fov", &CameraParameters::right_fov},
    {"top_fov", &CameraParameters::top_fov},
    {"bottom_fov", &CameraParameters::bottom_fov},
    {"ortho_width", &CameraParameters::ortho_width},
    {"ortho_height", &CameraParameters::ortho_height},
    {"page_scale", &CameraParameters::page_scale},
    {"page_origin_x", &CameraParameters::page_origin_x},
    {"page_origin_y", &CameraParameters::page_origin_y},
};

struct Position {
  const char* name;
  Vector3 CameraParameters::*field;
};
constexpr Position POSITIONS[] = {
    {"eye", &CameraParameters::eye},
    {"centre", &CameraParameters::centre},
    {"up", &CameraParameters::up},
    {"pivot", &CameraParameters::pivot},
};

constexpr double TOLERANCE = 1.1920928955078125e-07;  // 2^-23

void ExpectNear(const Vector3& actual, const Vector3& expected, double tolerance) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

}  // namespace

// ---- the record ----

TEST(CameraParametersRecord, values_after_construction) {
  const CameraParameters c;
  EXPECT_EQ(c.eye, Vector3(0, 0, 0));
  EXPECT_EQ(c.centre, Vector3(0, 0, 0));
  EXPECT_EQ(c.up, Vector3(0, 0, 0));
  EXPECT_EQ(c.pivot, Vector3(0, 0, 0));
  EXPECT_EQ(c.left_fov, 0.0);
  EXPECT_EQ(c.right_fov, 0.0);
  EXPECT_EQ(c.top_fov, 0.0);
  EXPECT_EQ(c.bottom_fov, 0.0);
  EXPECT_EQ(c.ortho_width, 0.0);
  EXPECT_EQ(c.ortho_height, 0.0);
  EXPECT_EQ(c.projection_type, ProjectionType::Perspective);
  EXPECT_FALSE(c.perspective_with_ortho);
  EXPECT_EQ(c.projection_transition, -1.0);
  EXPECT_EQ(c.page_scale, 1.0);
  EXPECT_EQ(c.page_origin_x, 0.0);
  EXPECT_EQ(c.page_origin_y, 0.0);
}

TEST(CameraParametersRecord, fields_lie_in_order) {
  const CameraParameters c;
  const void* const order[] = {&c.eye,
                               &c.centre,
                               &c.up,
                               &c.pivot,
                               &c.left_fov,
                               &c.right_fov,
                               &c.top_fov,
                               &c.bottom_fov,
                               &c.ortho_width,
                               &c.ortho_height,
                               &c.projection_type,
                               &c.perspective_with_ortho,
                               &c.projection_transition,
                               &c.page_scale,
                               &c.page_origin_x,
                               &c.page_origin_y};
  for (std::size_t i = 1; i < std::size(order); ++i) {
    EXPECT_LT(reinterpret_cast<std::uintptr_t>(order[i - 1]), reinterpret_cast<std::uintptr_t>(order[i]))
        << i;
  }
}

TEST(CameraParametersRecord, projection_type_is_a_32_bit_enumeration_of_0_and_1) {
  EXPECT_EQ(sizeof(ProjectionType), 4U);
  EXPECT_EQ(static_cast<int>(ProjectionType::Perspective), 0);
  EXPECT_EQ(static_cast<int>(ProjectionType::Orthographic), 1);
}

TEST(CameraParametersRecord, copies_and_moves_carry_every_field) {
  const CameraParameters original = AllFieldsDiffer();
  CameraParameters source = original;
  EXPECT_TRUE(SameBits(source, original));
  const CameraParameters moved = std::move(source);
  EXPECT_TRUE(SameBits(moved, original));
  CameraParameters assigned;
  assigned = original;
  EXPECT_TRUE(SameBits(assigned, original));
  CameraParameters other = original;
  CameraParameters moveAssigned;
  moveAssigned = std::move(other);
  EXPECT_TRUE(SameBits(moveAssigned, original));
}

TEST(CameraParametersRecord, greater_half_angle_is_the_field_of_view) {
  CameraParameters c = WithAsymmetricFrustum({}, 10.0, 20.0, 40.0, 30.0);
  EXPECT_EQ(c.GetHorizontalFOV(), 20.0);
  EXPECT_EQ(c.GetVerticalFOV(), 40.0);
  c = WithAsymmetricFrustum({}, 20.0, 10.0, 30.0, 40.0);
  EXPECT_EQ(c.GetHorizontalFOV(), 20.0);
  EXPECT_EQ(c.GetVerticalFOV(), 40.0);
}

TEST(CameraParametersRecord, setting_a_field_of_view_writes_both_of_its_halves_and_no_other) {
  CameraParameters c = WithAsymmetricFrustum({}, 1.0, 2.0, 3.0, 4.0);
  c.SetHorizontalFOV(50.0);
  EXPECT_EQ(c.left_fov, 50.0);
  EXPECT_EQ(c.right_fov, 50.0);
  EXPECT_EQ(c.top_fov, 3.0);
  EXPECT_EQ(c.bottom_fov, 4.0);
  c.SetVerticalFOV(60.0);
  EXPECT_EQ(c.left_fov, 50.0);
  EXPECT_EQ(c.right_fov, 50.0);
  EXPECT_EQ(c.top_fov, 60.0);
  EXPECT_EQ(c.bottom_fov, 60.0);
}

TEST(CameraParametersRecord, is_finite_sees_every_number) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(AllFieldsDiffer().IsFinite());
  for (const double bad : {nan, infinity, -infinity}) {
    for (const Position& position : POSITIONS) {
      for (int i = 0; i < 3; ++i) {
        CameraParameters c = AllFieldsDiffer();
        (c.*position.field)[i] = bad;
        EXPECT_FALSE(c.IsFinite()) << position.name << i;
      }
    }
    for (const Number& number : NUMBERS_WITH_TOLERANCE) {
      CameraParameters c = AllFieldsDiffer();
      c.*number.field = bad;
      EXPECT_FALSE(c.IsFinite()) << number.name;
    }
    CameraParameters c = AllFieldsDiffer();
    c.projection_transition = bad;
    EXPECT_FALSE(c.IsFinite());
  }
}

// ---- equality ----

TEST(CameraCheckEqual, null_makes_the_result_false) {
  const CameraParameters c;
  EXPECT_FALSE(CameraCheckEqual(nullptr, &c));
  EXPECT_FALSE(CameraCheckEqual(&c, nullptr));
  EXPECT_FALSE(CameraCheckEqual(nullptr, nullptr));
}

TEST(CameraCheckEqual, a_camera_equals_itself_and_its_copy) {
  const CameraParameters a = AllFieldsDiffer();
  const CameraParameters b = a;
  EXPECT_TRUE(CameraCheckEqual(&a, &a));
  EXPECT_TRUE(CameraCheckEqual(&a, &b));
}

TEST(CameraCheckEqual, two_records_that_differ_by_1e_4_in_one_eye_component_are_equal) {
  // (1e-4)^2 = 1e-8 is below 1.19e-7.
  const CameraParameters a = AllFieldsDiffer();
  CameraParameters b = a;
  b.eye.y += 1e-4;
  EXPECT_TRUE(CameraCheckEqual(&a, &b));
}

TEST(CameraCheckEqual, positions_resolve_about_3_45e_4) {
  // sqrt(2^-23) = 3.4526698e-4.
  for (const Position& position : POSITIONS) {
    for (int i = 0; i < 3; ++i) {
      const CameraParameters a;
      CameraParameters b = a;
      (b.*position.field)[i] = 3.4526e-4;
      EXPECT_TRUE(CameraCheckEqual(&a, &b)) << position.name << i;
      (b.*position.field)[i] = 3.4527e-4;
      EXPECT_FALSE(CameraCheckEqual(&a, &b)) << position.name << i;
      EXPECT_FALSE(CameraCheckEqual(&b, &a)) << position.name << i;
    }
  }
}

TEST(CameraCheckEqual, a_squared_distance_of_exactly_the_tolerance_counts_as_equal) {
  // 2^-24 + 2^-24 = 2^-23, each the square of 2^-12.
  CameraParameters a;
  CameraParameters b;
  b.centre = {0x1p-12, 0x1p-12, 0.0};
  EXPECT_TRUE(CameraCheckEqual(&a, &b));
  b.centre.z = 0x1p-20;
  EXPECT_FALSE(CameraCheckEqual(&a, &b));
}

TEST(CameraCheckEqual, numbers_compare_by_difference_with_the_tolerance) {
  for (const Number& number : NUMBERS_WITH_TOLERANCE) {
    CameraParameters a;
    a.*number.field = 0.0;
    CameraParameters b = a;
    b.*number.field = TOLERANCE;
    EXPECT_TRUE(CameraCheckEqual(&a, &b)) << number.name;
    EXPECT_TRUE(CameraCheckEqual(&b, &a)) << number.name;
    b.*number.field = std::nextafter(TOLERANCE, 1.0);
    EXPECT_FALSE(CameraCheckEqual(&a, &b)) << number.name;
    EXPECT_FALSE(CameraCheckEqual(&b, &a)) << number.name;
  }
}

TEST(CameraCheckEqual, projection_types_must_be_the_same) {
  const CameraParameters a;
  CameraParameters b = a;
  b.projection_type = ProjectionType::Orthographic;
  EXPECT_FALSE(CameraCheckEqual(&a, &b));
}

TEST(CameraCheckEqual, records_that_differ_only_in_perspective_with_ortho_are_equal) {
  const CameraParameters a = AllFieldsDiffer();
  CameraParameters b = a;
  b.perspective_with_ortho = !a.perspective_with_ortho;
  EXPECT_TRUE(CameraCheckEqual(&a, &b));
}

TEST(CameraCheckEqual, the_smallest_difference_in_projection_transition_makes_records_differ) {
  CameraParameters a;
  a.projection_transition = 0.5;
  CameraParameters b = a;
  b.projection_transition = std::nextafter(0.5, 1.0);
  EXPECT_FALSE(CameraCheckEqual(&a, &b));
}

TEST(CameraCheckEqual, the_hub_forwards_to_it) {
  const MemoryHub hub;
  const CameraParameters a;
  CameraParameters b = a;
  EXPECT_TRUE(hub.CheckCamerasEqual(&a, &b));
  b.page_scale += 1.0;
  EXPECT_FALSE(hub.CheckCamerasEqual(&a, &b));
  EXPECT_FALSE(hub.CheckCamerasEqual(&a, nullptr));
}

// ---- straightening ----

TEST(AlignCameraToUpDirection, up_becomes_the_part_perpendicular_to_the_view) {
  // View f = (1, 0, 0), u = (0.6, 0.8, 0): (f x u) x f = u - (u . f) f = (0, 0.8, 0), not normalised. The
  // camera's up leans to the side: u . c = 0.8 * cos.
  CameraParameters c = LookAt({0, 0, 0}, {5, 0, 0}, {0, 2, 1});
  EXPECT_TRUE(AlignCameraToUpDirection(c, {3.0, 4.0, 0.0}));  // u normalised is (0.6, 0.8, 0)
  ExpectNear(c.up, {0.0, 0.8, 0.0}, 1e-15);
}

TEST(AlignCameraToUpDirection, an_upside_down_camera_stays_upside_down) {
  CameraParameters c = LookAt({0, 0, 0}, {5, 0, 0}, {0, -2, 1});
  EXPECT_TRUE(AlignCameraToUpDirection(c, {3.0, 4.0, 0.0}));
  ExpectNear(c.up, {0.0, -0.8, 0.0}, 1e-15);
}

TEST(AlignCameraToUpDirection, touches_nothing_but_up) {
  CameraParameters c = AllFieldsDiffer();
  CameraParameters expected = c;
  ASSERT_TRUE(AlignCameraToUpDirection(c, {0, 1, 0}));
  expected.up = c.up;
  EXPECT_TRUE(SameBits(c, expected));
}

TEST(AlignCameraToUpDirection, a_camera_that_looks_straight_along_up_is_left_unchanged) {
  for (const double along : {5.0, -5.0}) {
    CameraParameters c = LookAt({0, 0, 0}, {0, along, 0}, {1, 0.5, 0});
    const CameraParameters before = c;
    EXPECT_FALSE(AlignCameraToUpDirection(c, {0, 1, 0}));
    EXPECT_TRUE(SameBits(c, before));
  }
}

struct NothingToDo {
  const char* why;
  Vector3 view;
  Vector3 up;
};

TEST(AlignCameraToUpDirection, nothing_to_do_leaves_the_camera_unchanged) {
  const NothingToDo cases[] = {
      {"up already parallel", {1, 0.5, 0}, {0, 1, 0}},
      {"up already opposite", {1, 0.5, 0}, {0, -1, 0}},
      {"up at right angles", {1, 0.5, 0}, {0, 0, 1}},
      {"view at right angles", {1, 0, 0}, {0, 1, 1}},
      {"no up", {1, 0.5, 0}, {0, 0, 0}},
      {"no view", {0, 0, 0}, {0, 1, 1}},
  };
  for (const NothingToDo& each : cases) {
    CameraParameters c = LookAt({0, 0, 0}, each.view, each.up);
    const CameraParameters before = c;
    EXPECT_FALSE(AlignCameraToUpDirection(c, {0, 1, 0})) << each.why;
    EXPECT_TRUE(SameBits(c, before)) << each.why;
  }
}

TEST(AlignCameraToUpDirection, a_zero_direction_leaves_the_camera_unchanged) {
  CameraParameters c = LookAt({0, 0, 0}, {1, 0.5, 0}, {0, 1, 1});
  const CameraParameters before = c;
  EXPECT_FALSE(AlignCameraToUpDirection(c, {0, 0, 0}));
  EXPECT_TRUE(SameBits(c, before));
}

TEST(AlignCameraToUpDirection, the_tolerance_bounds_what_counts_as_parallel_and_perpendicular) {
  const auto aligns = [](const Vector3& view, const Vector3& up) {
    CameraParameters c = LookAt({0, 0, 0}, view, up);
    return AlignCameraToUpDirection(c, {0, 1, 0});
  };
  const Vector3 view(1, 1, 0);
  const Vector3 up(0, 1, 1);
  // The cosine of an up tilted by s off the perpendicular is s, within s^3.
  EXPECT_FALSE(aligns(view, {0, 1.1e-7, 1}));
  EXPECT_TRUE(aligns(view, {0, 1.3e-7, 1}));
  EXPECT_FALSE(aligns({1, 1.1e-7, 0}, up));
  EXPECT_TRUE(aligns({1, 1.3e-7, 0}, up));
  // 1 - cosine of an up tilted by s off the parallel is s^2 / 2: 4.8e-4 gives 1.15e-7, 5e-4 gives 1.25e-7.
  EXPECT_FALSE(aligns(view, {0, 1, 4.8e-4}));
  EXPECT_TRUE(aligns(view, {0, 1, 5e-4}));
  EXPECT_FALSE(aligns({4.8e-4, 1, 0}, up));
  EXPECT_TRUE(aligns({5e-4, 1, 0}, up));
}

TEST(AlignCameraToUpDirection, agrees_with_the_projection_of_up_for_random_cameras) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters before = RandomCamera(random);
    const Vector3 wanted = random.Direction();
    CameraParameters c = before;
    if (!AlignCameraToUpDirection(c, wanted * random.Magnitude(0.01, 100.0))) continue;
    const oracle::Camera o(before);
    const oracle::Vec f = (o.centre - o.eye).normalized();
    const oracle::Vec u = oracle::From(wanted);
    const oracle::Vec expected = (u - u.dot(f) * f) * (u.dot(o.up) < 0.0 ? -1.0 : 1.0);
    // Unit vectors through a dozen roundings.
    ASSERT_LT((oracle::From(c.up) - expected).norm(), 1e-13);
  }
}

// ---- rays ----

TEST(GetScreenRay, the_middle_of_a_symmetric_view_looks_along_the_view) {
  const CameraParameters c = LookAt({1, 2, 3}, {1, 2, -7}, {0, 1, 0});
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(400, 300, 800, 600, c, origin, direction);
  EXPECT_EQ(origin, Vector3(1, 2, 3));
  ExpectNear(direction, {0, 0, -10}, 1e-13);  // not normalised
}

TEST(GetScreenRay, x_runs_to_the_right_and_y_upward_from_the_bottom_left_corner) {
  // Looking along -z with length 10, right is +x; the tangents are 1 (45 degrees) everywhere.
  const CameraParameters c = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(0, 0, 800, 600, c, origin, direction);
  ExpectNear(direction, {-10, -10, -10}, 1e-13);
  GetScreenRay(800, 600, 800, 600, c, origin, direction);
  ExpectNear(direction, {10, 10, -10}, 1e-13);
  GetScreenRay(800, 0, 800, 600, c, origin, direction);
  ExpectNear(direction, {10, -10, -10}, 1e-13);
}

TEST(GetScreenRay, an_asymmetric_frustum_is_cut_by_its_own_half_angles) {
  // tan(45) = 1; tan of atan(1/2), atan(1/4), atan(3/4) are these numbers.
  const auto degrees = [](double tangent) { return std::atan(tangent) * 180.0 / oracle::PI; };
  const CameraParameters c = WithAsymmetricFrustum(LookAt({0, 0, 4}, {0, 0, 0}, {0, 1, 0}), 45.0,
                                                   degrees(0.5), degrees(0.25), degrees(0.75));
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(0, 0, 100, 100, c, origin, direction);
  ExpectNear(direction, {-4, -3, -4}, 1e-13);
  GetScreenRay(100, 100, 100, 100, c, origin, direction);
  ExpectNear(direction, {2, 1, -4}, 1e-13);
  GetScreenRay(50, 25, 100, 100, c, origin, direction);
  ExpectNear(direction, {-1, -2, -4}, 1e-13);  // -4 + 6/2, -3 + 4/4
}

TEST(GetScreenRay, orthographic_rays_start_on_the_grid_of_the_tangents_and_run_along_the_view) {
  CameraParameters c = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  c = WithOrthographic(c, 12345.0, 54321.0);  // takes no part
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(0, 600, 800, 600, c, origin, direction);
  ExpectNear(origin, {-10, 10, 10}, 1e-13);
  ExpectNear(direction, {0, 0, -10}, 1e-13);
}

TEST(GetScreenRay, the_up_of_the_grid_is_the_cameras_up_normalised_not_the_perpendicular) {
  // up = (0, 3, 4) leans against the view -z; normalised it is (0, 0.6, 0.8).
  const CameraParameters c = LookAt({0, 0, 10}, {0, 0, 0}, {0, 3, 4});
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(400, 600, 800, 600, c, origin, direction);
  ExpectNear(direction, {0, 6, -2}, 1e-13);  // (0, 0, -10) + 10 (0, 0.6, 0.8)
}

TEST(GetScreenRay, the_ray_meets_the_pixel_it_was_cast_through) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters c = RandomCamera(random, random.Coin() ? Frustum::Symmetric : Frustum::Asymmetric);
    const oracle::Camera o(c);
    const oracle::Vec view = o.centre - o.eye;
    c.up = oracle::To(view.cross(o.up).cross(view));
    const double x = random.Uniform(0, 800);
    const double y = random.Uniform(0, 600);
    Vector3 origin;
    Vector3 direction;
    GetScreenRay(x, y, 800, 600, c, origin, direction);
    const Eigen::Vector2d where = oracle::Project(c, oracle::From(origin) + oracle::From(direction));
    // A coordinate of 100 units holds 1e-14; seen over half a unit of view, on 800 pixels: 1e-9.
    ASSERT_NEAR(where.x() * 800, x, 1e-8);
    ASSERT_NEAR(where.y() * 600, y, 1e-8);
  }
}

TEST(GetScreenRay, a_view_without_size_gives_the_axis_of_the_view_and_false) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const CameraParameters c = LookAt({1, 2, 3}, {1, 2, -7}, {0, 1, 0});
  for (const double bad : {0.0, -1.0, nan}) {
    for (const bool inWidth : {true, false}) {
      Vector3 origin;
      Vector3 direction;
      EXPECT_FALSE(GetScreenRay(5, 5, inWidth ? bad : 800, inWidth ? 600 : bad, c, origin, direction));
      EXPECT_EQ(origin, Vector3(1, 2, 3));
      EXPECT_EQ(direction, Vector3(0, 0, -10));
    }
  }
}

TEST(GetScreenRay, a_degenerate_camera_gives_a_degenerate_ray_and_no_nan) {
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(10, 10, 100, 100, CameraParameters(), origin, direction);
  EXPECT_EQ(origin, Vector3());
  EXPECT_EQ(direction, Vector3());
}
