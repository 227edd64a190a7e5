#include "korvane/vector2.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Korvane::Math;
using Korvane::Vector2;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

TEST(Vector2, is_made_from_nothing_one_value_two_values_or_another) {
  EXPECT_EQ(Vector2().x, 0.0);
  EXPECT_EQ(Vector2().y, 0.0);
  const Vector2 both(3.0);
  EXPECT_EQ(both.x, 3.0);
  EXPECT_EQ(both.y, 3.0);
  const Vector2 two(1.0, 2.0);
  EXPECT_EQ(two.x, 1.0);
  EXPECT_EQ(two.y, 2.0);
  const Vector2 copy(two);
  EXPECT_EQ(copy.x, 1.0);
  EXPECT_EQ(copy.y, 2.0);
}

TEST(Vector2, does_ordinary_arithmetic) {
  const Vector2 a(1.0, 2.0);
  const Vector2 b(10.0, 20.0);
  EXPECT_EQ(a + b, Vector2(11.0, 22.0));
  EXPECT_EQ(b - a, Vector2(9.0, 18.0));
  EXPECT_EQ(-a, Vector2(-1.0, -2.0));
  EXPECT_EQ(a * 4.0, Vector2(4.0, 8.0));
  EXPECT_EQ(4.0 * a, Vector2(4.0, 8.0));
  EXPECT_EQ(b / 4.0, Vector2(2.5, 5.0));
  Vector2 c = a;
  EXPECT_EQ(c += b, Vector2(11.0, 22.0));
  EXPECT_EQ(c -= a, b);
  EXPECT_EQ(c *= 2.0, Vector2(20.0, 40.0));
  EXPECT_EQ(c /= 4.0, Vector2(5.0, 10.0));
  EXPECT_EQ(a.Dot(b), 50.0);
  EXPECT_EQ(Vector2(3.0, 4.0).LengthSquared(), 25.0);
  EXPECT_EQ(Vector2(3.0, 4.0).Length(), 5.0);
}

TEST(Vector2, compares_exactly) {
  const double next = std::nextafter(1.0, 2.0);
  EXPECT_TRUE(Vector2(1.0, 2.0) == Vector2(1.0, 2.0));
  EXPECT_TRUE(Vector2(next, 2.0) != Vector2(1.0, 2.0));
  EXPECT_FALSE(Vector2(2.0, next) == Vector2(2.0, 1.0));
  EXPECT_FALSE(Vector2(NAN_VALUE, 0.0) == Vector2(NAN_VALUE, 0.0));
}

TEST(Vector2, gives_its_components_by_index) {
  Vector2 v(1.0, 2.0);
  v[0] += 10.0;
  v[1] += 20.0;
  const Vector2& constant = v;
  EXPECT_EQ(constant[0], 11.0);
  EXPECT_EQ(constant[1], 22.0);
}

TEST(Vector2, writes_itself_into_arrays) {
  double doubles[2] = {};
  float floats[2] = {};
  Vector2(1.5, -2.5).ToArray(doubles);
  Vector2(1.5, -2.5).ToArray(floats);
  EXPECT_EQ(doubles[0], 1.5);
  EXPECT_EQ(doubles[1], -2.5);
  EXPECT_EQ(floats[0], 1.5F);
  EXPECT_EQ(floats[1], -2.5F);
}

TEST(Vector2Normalize, divides_by_the_length) {
  Vector2 v(3.0, -4.0);
  EXPECT_EQ(&v.Normalize(), &v);
  EXPECT_EQ(v, Vector2(0.6, -0.8));
}

TEST(Vector2Normalize, of_a_degenerate_vector_is_zero_and_never_a_nan) {
  const Vector2 degenerate[] = {Vector2(), Vector2(Math::EPSILON_VALUE, 0.0), Vector2(NAN_VALUE, 1.0),
                                Vector2(INFINITE, 1.0), Vector2(1.0, -INFINITE)};
  for (Vector2 v : degenerate) EXPECT_EQ(v.Normalize(), Vector2()) << v.x << ", " << v.y;
}

TEST(Vector2Normalized, leaves_the_vector_alone) {
  const Vector2 v(0.0, -8.0);
  EXPECT_EQ(v.Normalized(), Vector2(0.0, -1.0));
  EXPECT_EQ(v, Vector2(0.0, -8.0));
}

TEST(Vector2, knows_whether_it_is_finite) {
  EXPECT_TRUE(Vector2(-1.0, Math::MAX_VALUE).IsFinite());
  for (const double bad : {NAN_VALUE, INFINITE, -INFINITE}) {
    EXPECT_FALSE(Vector2(bad, 0.0).IsFinite());
    EXPECT_FALSE(Vector2(0.0, bad).IsFinite());
  }
}

}  // namespace
