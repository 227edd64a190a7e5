#include "korvane/vector3.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/random.h"

namespace {

using Korvane::Math;
using Korvane::Vector3;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
const Vector3 X(1.0, 0.0, 0.0);
const Vector3 Y(0.0, 1.0, 0.0);
const Vector3 Z(0.0, 0.0, 1.0);

TEST(Vector3, is_made_from_nothing_one_value_three_values_an_array_or_another) {
  EXPECT_EQ(Vector3().x, 0.0);
  EXPECT_EQ(Vector3().y, 0.0);
  EXPECT_EQ(Vector3().z, 0.0);
  const Vector3 all(3.0);
  EXPECT_TRUE(all.x == 3.0 && all.y == 3.0 && all.z == 3.0);
  const Vector3 three(1.0, 2.0, 3.0);
  EXPECT_TRUE(three.x == 1.0 && three.y == 2.0 && three.z == 3.0);
  const double doubles[3] = {4.0, 5.0, 6.0};
  EXPECT_EQ(Vector3(doubles), Vector3(4.0, 5.0, 6.0));
  const float floats[3] = {0.5F, -1.5F, 2.5F};
  EXPECT_EQ(Vector3(floats), Vector3(0.5, -1.5, 2.5));
  const Vector3 copy(three);
  EXPECT_EQ(copy, three);
}

TEST(Vector3, has_a_constant_zero) { EXPECT_EQ(Vector3::Zero, Vector3(0.0, 0.0, 0.0)); }

TEST(Vector3, does_ordinary_arithmetic) {
  const Vector3 a(1.0, 2.0, 3.0);
  const Vector3 b(10.0, 20.0, 40.0);
  EXPECT_EQ(a + b, Vector3(11.0, 22.0, 43.0));
  EXPECT_EQ(b - a, Vector3(9.0, 18.0, 37.0));
  EXPECT_EQ(-a, Vector3(-1.0, -2.0, -3.0));
  EXPECT_EQ(a * 4.0, Vector3(4.0, 8.0, 12.0));
  EXPECT_EQ(4.0 * a, Vector3(4.0, 8.0, 12.0));
  EXPECT_EQ(b / 4.0, Vector3(2.5, 5.0, 10.0));
  Vector3 c = a;
  EXPECT_EQ(c += b, Vector3(11.0, 22.0, 43.0));
  EXPECT_EQ(c -= a, b);
  EXPECT_EQ(c *= 2.0, Vector3(20.0, 40.0, 80.0));
  EXPECT_EQ(c /= 4.0, Vector3(5.0, 10.0, 20.0));
  EXPECT_EQ(a.Dot(b), 10.0 + 40.0 + 120.0);
  EXPECT_EQ(Vector3(2.0, 3.0, 6.0).LengthSquared(), 49.0);
  EXPECT_EQ(Vector3(2.0, 3.0, 6.0).Length(), 7.0);
}

TEST(Vector3, crosses_right_handed) {
  EXPECT_EQ(X.Cross(Y), Z);
  EXPECT_EQ(Y.Cross(Z), X);
  EXPECT_EQ(Z.Cross(X), Y);
  EXPECT_EQ(Y.Cross(X), -Z);
}

TEST(Vector3, compares_exactly) {
  const double next = std::nextafter(1.0, 2.0);
  EXPECT_TRUE(Vector3(1.0, 2.0, 3.0) == Vector3(1.0, 2.0, 3.0));
  EXPECT_FALSE(Vector3(1.0, 2.0, 3.0) != Vector3(1.0, 2.0, 3.0));
  EXPECT_TRUE(Vector3(next, 1.0, 1.0) != Vector3(1.0));
  EXPECT_TRUE(Vector3(1.0, next, 1.0) != Vector3(1.0));
  EXPECT_TRUE(Vector3(1.0, 1.0, next) != Vector3(1.0));
  EXPECT_FALSE(Vector3(1.0, 1.0, next) == Vector3(1.0));
  EXPECT_FALSE(Vector3(NAN_VALUE) == Vector3(NAN_VALUE));
}

TEST(Vector3, gives_its_components_by_index) {
  Vector3 v(1.0, 2.0, 3.0);
  v[0] += 10.0;
  v[1] += 20.0;
  v[2] += 30.0;
  const Vector3& constant = v;
  EXPECT_EQ(constant[0], 11.0);
  EXPECT_EQ(constant[1], 22.0);
  EXPECT_EQ(constant[2], 33.0);
}

TEST(Vector3, writes_itself_into_arrays) {
  double doubles[3] = {};
  float floats[3] = {};
  Vector3(1.5, -2.5, 3.5).ToArray(doubles);
  Vector3(1.5, -2.5, 3.5).ToArray(floats);
  EXPECT_TRUE(doubles[0] == 1.5 && doubles[1] == -2.5 && doubles[2] == 3.5);
  EXPECT_TRUE(floats[0] == 1.5F && floats[1] == -2.5F && floats[2] == 3.5F);
}

TEST(Vector3, knows_whether_it_is_finite) {
  EXPECT_TRUE(Vector3(1.0, -2.0, Math::MAX_VALUE).IsFinite());
  for (const double bad : {NAN_VALUE, INFINITE, -INFINITE}) {
    EXPECT_FALSE(Vector3(bad, 0.0, 0.0).IsFinite());
    EXPECT_FALSE(Vector3(0.0, bad, 0.0).IsFinite());
    EXPECT_FALSE(Vector3(0.0, 0.0, bad).IsFinite());
  }
}

TEST(Vector3Normalize, divides_by_the_length_and_returns_the_vector_itself) {
  Vector3 v(0.0, 3.0, -4.0);
  EXPECT_EQ(&v.Normalize(), &v);
  EXPECT_EQ(v, Vector3(0.0, 0.6, -0.8));
}

TEST(Vector3Normalize, of_a_length_exactly_equal_to_the_tolerance_yields_zero) {
  EXPECT_EQ(Vector3(0.0, Math::EPSILON_VALUE, 0.0).Normalize(), Vector3::Zero);
}

TEST(Vector3Normalize, of_a_length_just_above_the_tolerance_yields_a_unit_vector) {
  EXPECT_EQ(Vector3(0.0, std::nextafter(Math::EPSILON_VALUE, 1.0), 0.0).Normalize(), Y);
}

TEST(Vector3Normalize, of_a_degenerate_vector_is_zero_and_never_a_nan) {
  const Vector3 degenerate[] = {Vector3::Zero,
                                Vector3(1e-8),
                                Vector3(NAN_VALUE, 0.0, 0.0),
                                Vector3(0.0, NAN_VALUE, 1.0),
                                Vector3(INFINITE, 0.0, 0.0),
                                Vector3(0.0, 1.0, -INFINITE),
                                Vector3(INFINITE, NAN_VALUE, 0.0)};
  for (Vector3 v : degenerate) EXPECT_EQ(v.Normalize(), Vector3::Zero) << v.x << ", " << v.y << ", " << v.z;
}

TEST(Vector3Normalized, leaves_the_vector_alone) {
  const Vector3 v(0.0, 0.0, -8.0);
  EXPECT_EQ(v.Normalized(), -Z);
  EXPECT_EQ(v, Vector3(0.0, 0.0, -8.0));
}

TEST(Vector3PreventCollapse, normalises_a_length_below_the_root_of_the_tolerance) {
  const double root = 0.00034526698300124393;
  Vector3 shorter(0.0, std::nextafter(root, 0.0), 0.0);
  shorter.preventCollapse();
  EXPECT_EQ(shorter, Y);
}

TEST(Vector3PreventCollapse, leaves_a_vector_of_that_length_or_longer_as_it_is) {
  const double root = 0.00034526698300124393;
  for (const double length : {root, std::nextafter(root, 1.0), 0.5, 7.0}) {
    Vector3 v(length, 0.0, 0.0);
    v.preventCollapse();
    EXPECT_EQ(v, Vector3(length, 0.0, 0.0));
  }
}

TEST(Vector3PreventCollapse, turns_a_vanished_vector_into_zero) {
  // Below the tolerance itself there is no direction left to keep.
  Vector3 v(1e-9, 0.0, 0.0);
  v.preventCollapse();
  EXPECT_EQ(v, Vector3::Zero);
}

// ---- FindAngleWith ----

// An arc cosine loses half the digits near 0 and PI: an error of 1e-16 in the cosine moves the angle by up
// to sqrt(2e-16), 1.5e-8. Away from there it is good to a few 1e-16.
constexpr double ARC_COSINE_TOLERANCE = 2e-8;
constexpr double EXACT_ANGLE_TOLERANCE = 1e-14;

double Angle(Vector3 self, const Vector3& other, const Vector3& axis) {
  return self.FindAngleWith(other, axis);
}

TEST(FindAngleWith, is_signed_from_the_other_to_this_vector_right_handed_about_the_axis) {
  EXPECT_NEAR(Angle(Y, X, Z), Math::PI / 2.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(X, Y, Z), -Math::PI / 2.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(Y, X, -Z), -Math::PI / 2.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(Vector3(1.0, 1.0, 0.0), X, Z), Math::PI / 4.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(Vector3(-1.0, 1.0, 0.0), X, Z), 3.0 * Math::PI / 4.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(Vector3(-1.0, -1.0, 0.0), X, Z), -3.0 * Math::PI / 4.0, EXACT_ANGLE_TOLERANCE);
}

TEST(FindAngleWith, of_two_parallel_vectors_is_0_and_of_two_opposite_vectors_is_pi_whatever_the_axis) {
  const Vector3 v(1.0, -2.0, 3.0);
  for (const Vector3& axis : {X, Y, Z, -Z, v, Vector3::Zero, Vector3(NAN_VALUE)}) {
    EXPECT_EQ(Angle(v, v * 5.0, axis), 0.0);
    EXPECT_EQ(Angle(v, v * -5.0, axis), Math::PI);
  }
}

TEST(FindAngleWith, snaps_to_exactly_a_right_angle_within_the_tolerance_in_degrees) {
  const double right = 90.0 * Math::DEG_TO_RAD;
  const double tolerance = Math::EPSILON_VALUE * Math::DEG_TO_RAD;  // in radians
  for (const double offset : {0.0, 0.9 * tolerance, -0.9 * tolerance}) {
    const Vector3 self(std::cos(right + offset), std::sin(right + offset), 0.0);
    EXPECT_EQ(Angle(self, X, Z), right) << offset;
    EXPECT_EQ(Angle(self, X, -Z), -right) << offset;
  }
}

TEST(FindAngleWith, does_not_snap_outside_that_tolerance) {
  const double right = 90.0 * Math::DEG_TO_RAD;
  const double tolerance = Math::EPSILON_VALUE * Math::DEG_TO_RAD;
  for (const double offset : {1.1 * tolerance, -1.1 * tolerance}) {
    const Vector3 self(std::cos(right + offset), std::sin(right + offset), 0.0);
    // A tenth of the tolerance, 2e-10, is far above the error of an arc cosine at a right angle.
    EXPECT_NEAR(Angle(self, X, Z) - right, offset, 0.01 * tolerance);
  }
}

TEST(FindAngleWith, normalises_this_vector_and_leaves_the_arguments) {
  Vector3 self(0.0, 8.0, 0.0);
  const Vector3 other(4.0, 0.0, 0.0);
  const Vector3 axis(0.0, 0.0, 2.0);
  self.FindAngleWith(other, axis);
  EXPECT_EQ(self, Y);
  EXPECT_EQ(other, Vector3(4.0, 0.0, 0.0));
  EXPECT_EQ(axis, Vector3(0.0, 0.0, 2.0));
}

TEST(FindAngleWith, about_an_axis_in_the_plane_of_both_is_positive) {
  // The normal, this x other, is at right angles to the axis, so it is flipped; about other x this the way
  // from the other to this vector is the positive one.
  EXPECT_NEAR(Angle(Y, X, X), Math::PI / 2.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(X, Y, X), Math::PI / 2.0, EXACT_ANGLE_TOLERANCE);
  EXPECT_NEAR(Angle(X, Y, Vector3::Zero), Math::PI / 2.0, EXACT_ANGLE_TOLERANCE);
}

TEST(FindAngleWith, of_a_degenerate_vector_counts_as_opposite) {
  for (const Vector3& bad : {Vector3::Zero, Vector3(NAN_VALUE), Vector3(INFINITE, 0.0, 0.0)}) {
    EXPECT_EQ(Angle(bad, X, Z), Math::PI);
    EXPECT_EQ(Angle(X, bad, Z), Math::PI);
  }
}

TEST(FindAngleWith, agrees_with_the_arc_tangent_for_random_vectors) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const Vector3 self = random.Direction();
    const Vector3 other = random.Direction();
    const Vector3 axis = random.Direction();
    const Vector3 normal = other.Cross(self);
    const double magnitude = std::atan2(normal.Length(), other.Dot(self));
    const double expected = normal.Dot(axis) < 0.0 ? -magnitude : magnitude;
    ASSERT_NEAR(Angle(self, other, axis), expected, ARC_COSINE_TOLERANCE) << i;
  }
}

TEST(FindAngleWith, changes_sign_with_the_axis_for_random_vectors) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const Vector3 self = random.Direction();
    const Vector3 other = random.Direction();
    const Vector3 axis = random.Direction();
    ASSERT_EQ(Angle(self, other, axis), -Angle(self, other, -axis)) << i;
  }
}

}  // namespace
