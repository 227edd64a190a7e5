#include "korvane/ray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/random.h"

namespace {

using Korvane::Math;
using Korvane::Ray;
using Korvane::Vector3;

constexpr double UNTOUCHED = -77.0;
const Vector3 TRIANGLE[3] = {{0.0, 0.0, 5.0}, {4.0, 0.0, 5.0}, {0.0, 4.0, 5.0}};
const Vector3 TO_Z(0.0, 0.0, 1.0);

TEST(Ray, is_zero_after_construction) {
  EXPECT_EQ(Ray().origin, Vector3::Zero);
  EXPECT_EQ(Ray().direction, Vector3::Zero);
}

TEST(IntersectTriangle, tells_the_distance_in_lengths_of_the_direction) {
  double t = UNTOUCHED;
  EXPECT_TRUE(Ray(Vector3(1.0, 1.0, 0.0), TO_Z).IntersectTriangle(TRIANGLE, t));
  EXPECT_EQ(t, 5.0);
  EXPECT_TRUE(Ray(Vector3(1.0, 1.0, 0.0), TO_Z * 2.0).IntersectTriangle(TRIANGLE, t));
  EXPECT_EQ(t, 2.5);
}

TEST(IntersectTriangle, counts_both_faces) {
  double t = UNTOUCHED;
  EXPECT_TRUE(Ray(Vector3(1.0, 1.0, 9.0), -TO_Z).IntersectTriangle(TRIANGLE, t));
  EXPECT_EQ(t, 4.0);
  const Vector3 turned[3] = {TRIANGLE[0], TRIANGLE[2], TRIANGLE[1]};
  EXPECT_TRUE(Ray(Vector3(1.0, 1.0, 0.0), TO_Z).IntersectTriangle(turned, t));
  EXPECT_EQ(t, 5.0);
}

TEST(IntersectTriangle, counts_its_edges_and_corners) {
  double t = UNTOUCHED;
  for (const Vector3& p : {Vector3(2.0, 0.0, 0.0), Vector3(0.0, 2.0, 0.0), Vector3(2.0, 2.0, 0.0),
                           Vector3(0.0, 0.0, 0.0), Vector3(4.0, 0.0, 0.0), Vector3(0.0, 4.0, 0.0)}) {
    EXPECT_TRUE(Ray(p, TO_Z).IntersectTriangle(TRIANGLE, t)) << p.x << ", " << p.y;
  }
}

TEST(IntersectTriangle, misses_past_each_edge_and_still_writes_the_distance_to_the_plane) {
  for (const Vector3& p : {Vector3(2.0, -0.001, 0.0), Vector3(-0.001, 2.0, 0.0), Vector3(2.001, 2.0, 0.0)}) {
    double t = UNTOUCHED;
    EXPECT_FALSE(Ray(p, TO_Z).IntersectTriangle(TRIANGLE, t)) << p.x << ", " << p.y;
    EXPECT_NEAR(t, 5.0, 1e-12);
  }
}

TEST(IntersectTriangle, misses_what_lies_behind_or_at_the_origin_and_still_writes_the_distance) {
  double t = UNTOUCHED;
  EXPECT_FALSE(Ray(Vector3(1.0, 1.0, 8.0), TO_Z).IntersectTriangle(TRIANGLE, t));
  EXPECT_EQ(t, -3.0);
  EXPECT_FALSE(Ray(Vector3(1.0, 1.0, 5.0), TO_Z).IntersectTriangle(TRIANGLE, t));
  EXPECT_EQ(t, 0.0);
}

TEST(IntersectTriangle, of_a_ray_along_the_plane_is_false_and_leaves_the_distance) {
  double t = UNTOUCHED;
  EXPECT_FALSE(Ray(Vector3(-1.0, 1.0, 5.0), Vector3(1.0, 0.0, 0.0)).IntersectTriangle(TRIANGLE, t));
  EXPECT_EQ(t, UNTOUCHED);
}

TEST(IntersectTriangle, needs_a_determinant_of_at_least_the_tolerance) {
  // Two legs of length l and a ray square to them: the determinant is l^2 in magnitude, on either face.
  // Powers of two keep it exact: 2^-23 is the tolerance itself.
  const Vector3 atTolerance[3] = {{}, {std::ldexp(1.0, -12), 0.0, 0.0}, {0.0, std::ldexp(1.0, -11), 0.0}};
  const Vector3 below[3] = {{}, {std::ldexp(1.0, -12), 0.0, 0.0}, {0.0, std::ldexp(1.0, -12), 0.0}};
  const Vector3 inside(1e-5, 1e-5, -1.0);
  double t = UNTOUCHED;
  EXPECT_TRUE(Ray(inside, TO_Z).IntersectTriangle(atTolerance, t));
  EXPECT_TRUE(Ray(Vector3(1e-5, 1e-5, 1.0), -TO_Z).IntersectTriangle(atTolerance, t));
  t = UNTOUCHED;
  EXPECT_FALSE(Ray(inside, TO_Z).IntersectTriangle(below, t));
  EXPECT_EQ(t, UNTOUCHED);
}

TEST(IntersectTriangle, misses_when_anything_is_zero_or_not_a_number) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  double t = UNTOUCHED;
  EXPECT_FALSE(Ray().IntersectTriangle(TRIANGLE, t));
  EXPECT_FALSE(Ray(Vector3(nan), TO_Z).IntersectTriangle(TRIANGLE, t));
  EXPECT_FALSE(Ray(Vector3(1.0, 1.0, 0.0), Vector3(nan)).IntersectTriangle(TRIANGLE, t));
  const Vector3 point[3] = {{1.0, 1.0, 5.0}, {1.0, 1.0, 5.0}, {1.0, 1.0, 5.0}};
  EXPECT_FALSE(Ray(Vector3(1.0, 1.0, 0.0), TO_Z).IntersectTriangle(point, t));
  const Vector3 broken[3] = {{0.0, 0.0, 5.0}, {nan, 0.0, 5.0}, {0.0, 4.0, 5.0}};
  EXPECT_FALSE(Ray(Vector3(1.0, 1.0, 0.0), TO_Z).IntersectTriangle(broken, t));
}

TEST(IntersectTriangle, finds_the_point_that_random_barycentric_coordinates_name) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const Vector3 p[3] = {random.Point(10.0), random.Point(10.0), random.Point(10.0)};
    const double u = random.Uniform(-0.5, 1.5);
    const double v = random.Uniform(-0.5, 1.5);
    const double margin = std::min({std::abs(u), std::abs(v), std::abs(1.0 - u - v)});
    const Vector3 target = p[0] + (p[1] - p[0]) * u + (p[2] - p[0]) * v;
    const Vector3 origin = random.Point(10.0);
    const Vector3 direction = target - origin;
    const double determinant = (p[1] - p[0]).Dot(direction.Cross(p[2] - p[0]));
    // Products of three lengths up to 60, 2e5 in all, lose up to 1e-10; with a determinant of 1 and a margin
    // of 1e-9 no rounding turns a hit into a miss.
    if (std::abs(determinant) < 1.0 || margin < 1e-9) continue;
    double t = UNTOUCHED;
    const bool expected = u > 0.0 && v > 0.0 && u + v < 1.0;
    ASSERT_EQ(Ray(origin, direction).IntersectTriangle(p, t), expected) << i;
    ASSERT_NEAR(t, 1.0, 1e-9) << i;  // the target lies one length of the direction away
  }
}

// ---- quads ----

// The square 0 to 4 at z = 5; the diagonal runs from (0, 0) to (4, 4).
const Vector3 QUAD[4] = {{0.0, 0.0, 5.0}, {4.0, 0.0, 5.0}, {4.0, 4.0, 5.0}, {0.0, 4.0, 5.0}};

TEST(IntersectQuad, finds_a_hit_in_either_of_its_triangles) {
  double t = UNTOUCHED;
  EXPECT_TRUE(Ray(Vector3(3.0, 1.0, 0.0), TO_Z).IntersectQuad(QUAD, t));
  EXPECT_EQ(t, 5.0);
  t = UNTOUCHED;
  EXPECT_TRUE(Ray(Vector3(1.0, 3.0, 0.0), TO_Z).IntersectQuad(QUAD, t));
  EXPECT_EQ(t, 5.0);
}

TEST(IntersectQuad, that_is_missed_leaves_the_parameter_of_the_rejected_triangles) {
  double t = UNTOUCHED;
  EXPECT_FALSE(Ray(Vector3(9.0, 1.0, 0.0), TO_Z).IntersectQuad(QUAD, t));
  EXPECT_EQ(t, 5.0);
  EXPECT_FALSE(Ray(Vector3(1.0, 1.0, 8.0), TO_Z).IntersectQuad(QUAD, t));
  EXPECT_EQ(t, -3.0);
}

TEST(IntersectQuad, along_the_plane_leaves_the_largest_double) {
  double t = UNTOUCHED;
  EXPECT_FALSE(Ray(Vector3(-1.0, 1.0, 5.0), Vector3(1.0, 0.0, 0.0)).IntersectQuad(QUAD, t));
  EXPECT_EQ(t, Math::MAX_VALUE);
}

TEST(IntersectQuad, tests_the_second_triangle_only_if_the_first_is_missed) {
  // Bent along the diagonal: seen from (3, 1) the plane of the second triangle, z = 5 + y - x, lies at 3.
  const Vector3 bent[4] = {QUAD[0], QUAD[1], QUAD[2], {0.0, 4.0, 9.0}};
  double t = UNTOUCHED;
  EXPECT_TRUE(Ray(Vector3(3.0, 1.0, 0.0), TO_Z).IntersectQuad(bent, t));
  EXPECT_EQ(t, 5.0);
}

TEST(IntersectQuad, gives_the_smaller_distance_also_when_that_is_the_one_of_the_missed_triangle) {
  // At (1, 3) the second triangle lies at 5 + 3 - 1 = 7 and the plane of the missed first one at 5.
  const Vector3 bent[4] = {QUAD[0], QUAD[1], QUAD[2], {0.0, 4.0, 9.0}};
  double t = UNTOUCHED;
  EXPECT_TRUE(Ray(Vector3(1.0, 3.0, 0.0), TO_Z).IntersectQuad(bent, t));
  EXPECT_EQ(t, 5.0);
}

}  // namespace
