#include "korvane/quaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/random.h"

namespace {

using Korvane::Math;
using Korvane::Quaternion;
using Korvane::Vector3;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
const Vector3 X(1.0, 0.0, 0.0);
const Vector3 Y(0.0, 1.0, 0.0);
const Vector3 Z(0.0, 0.0, 1.0);

// A chain of some ten products and sums of numbers up to 1, each good to 1.1e-16.
constexpr double ROUNDING = 5e-15;
constexpr int RANDOM_CASES = 10000;

void ExpectNear(const Vector3& actual, const Vector3& expected, double tolerance) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

void ExpectNear(const Quaternion& actual, const Quaternion& expected, double tolerance) {
  EXPECT_NEAR(actual.w, expected.w, tolerance);
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

// Evenly over all rotations (K. Shoemake, "Uniform random rotations", 1992).
Quaternion RandomRotation(Random& random) {
  const double u = random.Uniform(0.0, 1.0);
  const double a = random.Uniform(0.0, 2.0 * Math::PI);
  const double b = random.Uniform(0.0, 2.0 * Math::PI);
  const double s = std::sqrt(1.0 - u);
  const double t = std::sqrt(u);
  return {t * std::cos(b), s * std::sin(a), s * std::cos(a), t * std::sin(b)};
}

// The right-handed turn of `v` about a unit axis (O. Rodrigues, 1840).
Vector3 TurnRightHanded(const Vector3& axis, double angle, const Vector3& v) {
  return v * std::cos(angle) + axis.Cross(v) * std::sin(angle) +
         axis * (axis.Dot(v) * (1.0 - std::cos(angle)));
}

// ---- the value ----

TEST(Quaternion, holds_w_first) {
  Quaternion q(1.0, 2.0, 3.0, 4.0);
  EXPECT_TRUE(q.w == 1.0 && q.x == 2.0 && q.y == 3.0 && q.z == 4.0);
  EXPECT_TRUE(q[0] == 1.0 && q[1] == 2.0 && q[2] == 3.0 && q[3] == 4.0);
  EXPECT_LT(&q.w, &q.x);
  EXPECT_LT(&q.x, &q.y);
  EXPECT_LT(&q.y, &q.z);
}

TEST(Quaternion, equals_only_one_of_the_same_four_components) {
  const Quaternion q(1, 2, 3, 4);
  EXPECT_EQ(q, Quaternion(1, 2, 3, 4));
  for (int component = 0; component < 4; ++component) {
    Quaternion other = q;
    other[component] = 9;
    EXPECT_FALSE(q == other) << component;
  }
}

TEST(Quaternion, has_its_constants) {
  EXPECT_EQ(Quaternion::IDENTITY, Quaternion(1.0, 0.0, 0.0, 0.0));
  EXPECT_EQ(Quaternion::ZERO, Quaternion(0.0, 0.0, 0.0, 0.0));
  EXPECT_EQ(Quaternion::ms_iNext[0], 1);
  EXPECT_EQ(Quaternion::ms_iNext[1], 2);
  EXPECT_EQ(Quaternion::ms_iNext[2], 0);
}

TEST(Quaternion, multiplies_by_the_rules_of_hamilton) {
  const Quaternion one = Quaternion::IDENTITY;
  const Quaternion i(0.0, 1.0, 0.0, 0.0);
  const Quaternion j(0.0, 0.0, 1.0, 0.0);
  const Quaternion k(0.0, 0.0, 0.0, 1.0);
  for (const Quaternion& unit : {i, j, k}) {
    EXPECT_EQ(unit * unit, -one);
    EXPECT_EQ(unit * one, unit);
    EXPECT_EQ(one * unit, unit);
  }
  EXPECT_EQ(i * j, k);
  EXPECT_EQ(j * k, i);
  EXPECT_EQ(k * i, j);
  EXPECT_EQ(j * i, -k);
  EXPECT_EQ(k * j, -i);
  EXPECT_EQ(i * k, -j);
}

TEST(Quaternion, adds_negates_scales_and_measures_its_four_components) {
  const Quaternion a(1.0, 2.0, 3.0, 4.0);
  const Quaternion b(10.0, 20.0, 30.0, 40.0);
  EXPECT_EQ(a + b, Quaternion(11.0, 22.0, 33.0, 44.0));
  EXPECT_EQ(-a, Quaternion(-1.0, -2.0, -3.0, -4.0));
  EXPECT_EQ(a * 2.0, Quaternion(2.0, 4.0, 6.0, 8.0));
  EXPECT_EQ(2.0 * a, Quaternion(2.0, 4.0, 6.0, 8.0));
  EXPECT_EQ(b / 10.0, a);
  EXPECT_EQ(a.Dot(b), 10.0 + 40.0 + 90.0 + 160.0);
  EXPECT_EQ(Quaternion(1.0, 5.0, 5.0, 7.0).Length(), 10.0);
}

// ---- axis and angle ----

TEST(FromAxisAngle, halves_the_angle) {
  ExpectNear(Quaternion::AxisAngle(Z, Math::PI / 2.0), Quaternion(std::sqrt(0.5), 0.0, 0.0, std::sqrt(0.5)),
             ROUNDING);
  EXPECT_EQ(Quaternion::AxisAngle(Z, 0.0), Quaternion::IDENTITY);
}

TEST(FromAxisAngle, uses_the_axis_as_given) {
  // sin(PI / 6) = 1/2, times an axis of length 6.
  ExpectNear(Quaternion::AxisAngle(Vector3(0.0, 6.0, 0.0), Math::PI / 3.0),
             Quaternion(std::sqrt(0.75), 0.0, 3.0, 0.0), ROUNDING);
}

TEST(FromAxisAngle, turns_a_vector_against_the_right_hand_rule) {
  ExpectNear(Quaternion::AxisAngle(Z, Math::PI / 2.0).Rotate(X), -Y, ROUNDING);
  ExpectNear(Quaternion::AxisAngle(X, Math::PI / 2.0).Rotate(Y), -Z, ROUNDING);
  ExpectNear(Quaternion::AxisAngle(Y, Math::PI / 2.0).Rotate(Z), -X, ROUNDING);
}

TEST(FromAxisAngle, turns_by_minus_the_angle_for_random_axes_angles_and_vectors) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Vector3 axis = random.Direction();
    const double angle = random.Uniform(-10.0, 10.0);
    const Vector3 v = random.Direction();
    ExpectNear(Quaternion::AxisAngle(axis, angle).Rotate(v), TurnRightHanded(axis, -angle, v), ROUNDING);
  }
}

// ---- matrices ----

TEST(ToRotationMatrix, fills_nine_values_row_by_row) {
  // (1, 2, 3, 4) row by row: 1 - 2(9 + 16), 2(6 - 4), 2(8 + 3); 2(6 + 4), 1 - 2(4 + 16), 2(12 - 2);
  // 2(8 - 3), 2(12 + 2), 1 - 2(4 + 9). The mapping does not normalise.
  const double expected[9] = {-49.0, 4.0, 22.0, 20.0, -39.0, 20.0, 10.0, 28.0, -25.0};
  double matrix[9] = {};
  Vector3 rows[3];
  const Quaternion q(1.0, 2.0, 3.0, 4.0);
  q.ToRotationMatrix(matrix);
  q.ToRotationMatrix(rows);
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(matrix[i], expected[i]) << i;
    EXPECT_EQ(rows[i / 3][i % 3], expected[i]) << i;
  }
}

TEST(FromRotationMatrix, with_a_positive_trace_goes_by_the_trace) {
  const Vector3 identity[3] = {X, Y, Z};
  EXPECT_EQ(Quaternion(identity), Quaternion::IDENTITY);
  // Trace 1: s = sqrt 2, w = s / 2, t = 1 / (2 s); only m[1][0] - m[0][1] = 2 is not 0, so z = 1 / s.
  const Vector3 quarterAboutZ[3] = {-Y, X, Z};
  ExpectNear(Quaternion(quarterAboutZ), Quaternion(std::sqrt(0.5), 0.0, 0.0, std::sqrt(0.5)), ROUNDING);
}

TEST(FromRotationMatrix, of_a_half_turn_goes_by_the_largest_diagonal_element) {
  // Trace -1, one diagonal element 1: s = sqrt(1 + 1 + 1 + 1) = 2, that component s / 2 = 1, the rest 0.
  const Vector3 aboutX[3] = {X, -Y, -Z};
  const Vector3 aboutY[3] = {-X, Y, -Z};
  const Vector3 aboutZ[3] = {-X, -Y, Z};
  EXPECT_EQ(Quaternion(aboutX), Quaternion(0.0, 1.0, 0.0, 0.0));
  EXPECT_EQ(Quaternion(aboutY), Quaternion(0.0, 0.0, 1.0, 0.0));
  EXPECT_EQ(Quaternion(aboutZ), Quaternion(0.0, 0.0, 0.0, 1.0));
}

TEST(FromRotationMatrix, with_a_trace_of_zero_goes_by_the_largest_diagonal_element) {
  // A third of a turn about (1, 1, 1): trace 0, which is not above 0. All diagonal elements tie, so the
  // first counts: s = sqrt(1), x = s / 2, t = 1 / 2, and m[2][1] - m[1][2], m[0][1] + m[1][0] and
  // m[0][2] + m[2][0], which are 1 each, times t are w, y and z.
  const Vector3 third[3] = {Z, X, Y};
  EXPECT_EQ(Quaternion(third), Quaternion(0.5, 0.5, 0.5, 0.5));
}

TEST(FromRotationMatrix, keeps_the_lower_index_on_a_tie) {
  // Half turns whose axis lies between two axes: the diagonal ties, and the component of the lower index
  // comes out positive (s / 2), whatever the sign of the other.
  const double h = std::sqrt(0.5);
  const Vector3 betweenXAndY[3] = {-Y, -X, -Z};
  const Vector3 betweenYAndZ[3] = {-X, -Z, -Y};
  const Vector3 betweenXAndZ[3] = {-Z, -Y, -X};
  ExpectNear(Quaternion(betweenXAndY), Quaternion(0.0, h, -h, 0.0), ROUNDING);
  ExpectNear(Quaternion(betweenYAndZ), Quaternion(0.0, 0.0, h, -h), ROUNDING);
  ExpectNear(Quaternion(betweenXAndZ), Quaternion(0.0, h, 0.0, -h), ROUNDING);
}

TEST(FromRotationMatrix, and_back_returns_the_rows_of_random_rotations) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    Vector3 rows[3];
    Vector3 back[3];
    RandomRotation(random).ToRotationMatrix(rows);
    Quaternion(rows).ToRotationMatrix(back);
    for (int row = 0; row < 3; ++row) ExpectNear(back[row], rows[row], ROUNDING);
  }
}

TEST(ToRotationMatrix, and_back_returns_random_quaternions_up_to_their_sign) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion q = RandomRotation(random);
    Vector3 rows[3];
    q.ToRotationMatrix(rows);
    const Quaternion back(rows);
    ExpectNear(back.Dot(q) < 0.0 ? -back : back, q, ROUNDING);
  }
}

TEST(FromRotationMatrix, of_what_is_no_rotation_gives_some_quaternion) {
  // No trace and no largest element: s = sqrt(1), the first component s / 2, the rest 0.
  const Vector3 nothing[3] = {};
  EXPECT_EQ(Quaternion(nothing), Quaternion(0.0, 0.5, 0.0, 0.0));
  const Vector3 broken[3] = {Vector3(NAN_VALUE), Y, Vector3(INFINITE)};
  EXPECT_EQ(Quaternion(broken).Inverse(), Quaternion::ZERO);
}

// ---- rotating ----

TEST(Rotate, by_no_rotation_returns_the_vector) {
  const Vector3 v(1.0, -2.0, 3.0);
  EXPECT_EQ(Quaternion::IDENTITY.Rotate(v), v);
  EXPECT_EQ(Quaternion::ZERO.Rotate(v), v);
  EXPECT_EQ(Quaternion::AxisAngle(Vector3::Zero, 1.0).Rotate(v), v);
}

TEST(Rotate, carries_the_unit_vectors_onto_the_rows_it_was_built_from) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    Vector3 rows[3];
    RandomRotation(random).ToRotationMatrix(rows);
    const Quaternion q(rows);
    ExpectNear(q.Rotate(X), rows[0], ROUNDING);
    ExpectNear(q.Rotate(Y), rows[1], ROUNDING);
    ExpectNear(q.Rotate(Z), rows[2], ROUNDING);
  }
}

TEST(Rotate, multiplies_by_the_transpose_of_the_matrix) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion q = RandomRotation(random);
    const Vector3 v = random.Point(1.0);
    double m[9] = {};
    q.ToRotationMatrix(m);
    const Vector3 expected(m[0] * v.x + m[3] * v.y + m[6] * v.z, m[1] * v.x + m[4] * v.y + m[7] * v.z,
                           m[2] * v.x + m[5] * v.y + m[8] * v.z);
    ExpectNear(q.Rotate(v), expected, ROUNDING);
  }
}

TEST(Rotate, keeps_lengths_and_angles) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion q = RandomRotation(random);
    const Vector3 a = random.Direction();
    const Vector3 b = random.Direction();
    EXPECT_NEAR(q.Rotate(a).Length(), 1.0, ROUNDING);
    EXPECT_NEAR(q.Rotate(a).Dot(q.Rotate(b)), a.Dot(b), ROUNDING);
  }
}

TEST(Rotate, by_the_inverse_returns) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion q = RandomRotation(random);
    const Vector3 v = random.Point(1.0);
    ExpectNear(q.Inverse().Rotate(q.Rotate(v)), v, ROUNDING);
  }
}

// ---- aligning ----

TEST(Align, carries_one_unit_vector_onto_another) {
  ExpectNear(Quaternion::Align(X, Y).Rotate(X), Y, ROUNDING);
  ExpectNear(Quaternion::Align(Z, X).Rotate(Z), X, ROUNDING);
  ExpectNear(Quaternion::Align(Z, Z), Quaternion::IDENTITY, ROUNDING);
}

TEST(Align, carries_random_unit_vectors_onto_each_other) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Vector3 from = random.Direction();
    const Vector3 to = random.Direction();
    // The bisector of nearly opposite vectors is short, and its direction loses as many digits as its
    // length; w and the vector part multiply that error at most twice.
    const double tolerance = ROUNDING / (from + to).Length() + ROUNDING;
    ExpectNear(Quaternion::Align(from, to).Rotate(from), to, tolerance);
  }
}

TEST(Align, of_opposite_vectors_turns_by_half_a_turn_about_a_perpendicular) {
  // |x| at least |y|: (-z, 0, x) over its length; otherwise (0, z, -y) over its.
  EXPECT_EQ(Quaternion::Align(X, -X), Quaternion(0.0, 0.0, 0.0, 1.0));
  EXPECT_EQ(Quaternion::Align(-X, X), Quaternion(0.0, 0.0, 0.0, -1.0));
  EXPECT_EQ(Quaternion::Align(Y, -Y), Quaternion(0.0, 0.0, 0.0, -1.0));
  EXPECT_EQ(Quaternion::Align(Z, -Z), Quaternion(0.0, -1.0, 0.0, 0.0));
  // 3-4-5: |x| = 0.6 < |y| = 0.8 picks the second form, (0, 0, -0.8) / 0.8.
  const Vector3 slanted(0.6, 0.8, 0.0);
  EXPECT_EQ(Quaternion::Align(slanted, -slanted), Quaternion(0.0, 0.0, 0.0, -1.0));
  for (const Vector3& from : {X, -X, Y, -Y, Z, -Z, slanted}) {
    ExpectNear(Quaternion::Align(from, -from).Rotate(from), -from, ROUNDING);
  }
}

TEST(Align, of_no_direction_is_never_a_nan) {
  for (const Vector3& to : {Vector3::Zero, X}) {
    const Quaternion q = Quaternion::Align(Vector3::Zero, to);
    EXPECT_EQ(q, Quaternion::ZERO);
  }
}

// ---- length and inverse ----

TEST(QuaternionNormalize, scales_to_unit_length_and_returns_the_former_length) {
  Quaternion q(1.0, 5.0, 5.0, 7.0);
  EXPECT_EQ(q.Normalize(), 10.0);
  ExpectNear(q, Quaternion(0.1, 0.5, 0.5, 0.7), ROUNDING);
}

TEST(QuaternionNormalize, of_a_length_not_above_its_limit_gives_zero) {
  Quaternion atLimit(0.0, 1e-5, 0.0, 0.0);
  EXPECT_EQ(atLimit.Normalize(), 0.0);
  EXPECT_EQ(atLimit, Quaternion::ZERO);
  // The length is the root of a square, which may round by an ulp either way; 1e-12 clears that.
  Quaternion above(0.0, 1e-5 * (1.0 + 1e-12), 0.0, 0.0);
  EXPECT_GT(above.Normalize(), 1e-5);
  ExpectNear(above, Quaternion(0.0, 1.0, 0.0, 0.0), ROUNDING);
}

TEST(QuaternionNormalize, of_numbers_that_are_not_finite_gives_zero) {
  for (const double bad : {NAN_VALUE, INFINITE, -INFINITE}) {
    for (int component = 0; component < 4; ++component) {
      Quaternion q(1.0, 2.0, 3.0, 4.0);
      q[component] = bad;
      EXPECT_EQ(q.Normalize(), 0.0);
      EXPECT_EQ(q, Quaternion::ZERO);
    }
  }
}

TEST(QuaternionInverse, is_the_conjugate_over_the_squared_length) {
  // Squared length 1 + 1 + 1 + 1 = 4.
  EXPECT_EQ(Quaternion(1.0, 1.0, -1.0, 1.0).Inverse(), Quaternion(0.25, -0.25, 0.25, -0.25));
}

TEST(QuaternionInverse, of_no_length_is_zero) {
  EXPECT_EQ(Quaternion::ZERO.Inverse(), Quaternion::ZERO);
  EXPECT_EQ(Quaternion(NAN_VALUE, 0.0, 0.0, 0.0).Inverse(), Quaternion::ZERO);
  // Squared, these vanish below the smallest double.
  EXPECT_EQ(Quaternion(1e-200, 0.0, 1e-200, 0.0).Inverse(), Quaternion::ZERO);
}

TEST(QuaternionInverse, times_the_quaternion_is_the_identity) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion q = RandomRotation(random) * random.Magnitude(1e-3, 1e3);
    ExpectNear(q * q.Inverse(), Quaternion::IDENTITY, ROUNDING);
    ExpectNear(q.Inverse() * q, Quaternion::IDENTITY, ROUNDING);
  }
}

// ---- Slerp ----

Quaternion Slerp(double t, const Quaternion& p, const Quaternion& q) {
  Quaternion result;
  result.Slerp(t, p, q);
  return result;
}

TEST(Slerp, of_a_quaternion_with_its_negative_returns_the_first_for_every_t) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion p = RandomRotation(random);
    ExpectNear(Slerp(random.Uniform(-1.0, 2.0), p, -p), p, ROUNDING);
  }
}

TEST(Slerp, begins_at_the_first_and_ends_at_the_second_or_its_negative) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion p = RandomRotation(random);
    const Quaternion q = RandomRotation(random);
    ExpectNear(Slerp(0.0, p, q), p, ROUNDING);
    ExpectNear(Slerp(1.0, p, q), p.Dot(q) < 0.0 ? -q : q, ROUNDING);
  }
}

TEST(Slerp, goes_the_shorter_way_at_an_even_rate) {
  Random random;
  for (int i = 0; i < RANDOM_CASES && !HasFailure(); ++i) {
    const Quaternion p = RandomRotation(random);
    const Quaternion q = RandomRotation(random);
    const double t = random.Uniform(0.0, 1.0);
    const double arc = std::acos(std::min(1.0, std::abs(p.Dot(q))));
    EXPECT_LE(arc, Math::PI / 2.0);
    const Quaternion between = Slerp(t, p, q);
    // The sine of a short arc divides an error of 1e-16; a random arc below 1e-3 is one in 1e9.
    EXPECT_NEAR(between.Dot(p), std::cos(t * arc), 1e-12);
    EXPECT_NEAR(between.Length(), 1.0, 1e-12);
  }
}

TEST(Slerp, halfway_between_two_turns_about_one_axis_is_the_middle_turn) {
  const Quaternion middle = Slerp(0.5, Quaternion::AxisAngle(Y, 0.2), Quaternion::AxisAngle(Y, 1.0));
  ExpectNear(middle, Quaternion::AxisAngle(Y, 0.6), ROUNDING);
}

TEST(Slerp, takes_the_clamped_cosine_of_quaternions_longer_than_one) {
  // The cosine 4 counts as 1, so the arc is empty and the weights are 1 - t and t.
  const Quaternion two(2.0, 0.0, 0.0, 0.0);
  EXPECT_EQ(Slerp(0.25, two, two), two);
}

TEST(Slerp, of_an_arc_below_its_limit_blends_straight) {
  // The cosine of so short an arc differs from 1 by 5e-13, so the arc is known only to about 1e-10; below
  // 1e-5 the weights are 1 - t and t.
  const double arc = 0.9e-5;
  const Quaternion p = Quaternion::IDENTITY;
  const Quaternion q(std::cos(arc), std::sin(arc), 0.0, 0.0);
  EXPECT_EQ(Slerp(0.25, p, q), p * 0.75 + q * 0.25);
}

TEST(Slerp, of_an_arc_above_its_limit_keeps_the_length) {
  // A straight blend would fall short by arc^2 / 8 = 1.25e-7 in the middle.
  const double arc = 1e-3;
  const Quaternion q(std::cos(arc), std::sin(arc), 0.0, 0.0);
  EXPECT_NEAR(Slerp(0.5, Quaternion::IDENTITY, q).Length(), 1.0, 1e-12);
}

TEST(Slerp, does_not_renormalise) {
  const Quaternion p(3.0, 0.0, 0.0, 0.0);
  const Quaternion q(0.0, 3.0, 0.0, 0.0);
  // The dot product is 0, so the arc is a right angle and both weights are sin(45 degrees).
  ExpectNear(Slerp(0.5, p, q), Quaternion(3.0 * std::sqrt(0.5), 3.0 * std::sqrt(0.5), 0.0, 0.0), ROUNDING);
}

TEST(Slerp, between_quaternions_of_no_length_has_none) {
  EXPECT_EQ(Slerp(0.3, Quaternion::ZERO, Quaternion::ZERO), Quaternion::ZERO);
}

TEST(Slerp, may_store_into_one_of_its_ends) {
  const Quaternion p = Quaternion::AxisAngle(Z, 0.3);
  const Quaternion q = Quaternion::AxisAngle(X, 1.1);
  Quaternion first = p;
  Quaternion second = q;
  first.Slerp(0.3, first, q);
  second.Slerp(0.3, p, second);
  EXPECT_EQ(first, Slerp(0.3, p, q));
  EXPECT_EQ(second, Slerp(0.3, p, q));
}

}  // namespace
