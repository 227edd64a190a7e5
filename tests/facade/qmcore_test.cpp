#include "zov/qmcore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <compare>
#include <limits>
#include <type_traits>

#include "support/random.h"
#include "zov/qi_iterator.h"
#include "zov/qu_observer_ptr.h"

// A host's own vectors.
struct OwnPlace {
  float east;
  float north;
};
struct OwnVector {
  double v[3];
};

template <>
struct qmTraits<OwnPlace> {
  static constexpr int dimension = 2;
  static constexpr double get(const OwnPlace& p, int index) { return index == 0 ? p.east : p.north; }
  static constexpr OwnPlace make(double x, double y) {
    return {static_cast<float>(x), static_cast<float>(y)};
  }
};
template <>
struct qmTraits<OwnVector> {
  static constexpr int dimension = 3;
  static constexpr double get(const OwnVector& v, int index) { return v.v[index]; }
  static constexpr OwnVector make(double x, double y, double z) { return {{x, y, z}}; }
};

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

TEST(QmPoint, without_arguments_is_the_origin) {
  EXPECT_EQ(qmPoint2(), qmPoint2(0.0, 0.0));
  EXPECT_EQ(qmPoint3(), qmPoint3(0.0, 0.0, 0.0));
}

TEST(QmPoint, interpolates_from_itself_to_the_other_exactly) {
  constexpr qmPoint3 from(0.1, -7.0, 1e300);
  constexpr qmPoint3 to(0.7, 3.0, -1e300);
  EXPECT_EQ(from.interpolate(to, 0.0), from);
  EXPECT_EQ(from.interpolate(to, 1.0), to);
  EXPECT_EQ(qmPoint2(2.0, 8.0).interpolate({4.0, 0.0}, 0.25), qmPoint2(2.5, 6.0));
  EXPECT_EQ(qmPoint3(2.0, 8.0, 0.0).interpolate({4.0, 0.0, 4.0}, 0.25), qmPoint3(2.5, 6.0, 1.0));
  EXPECT_EQ(qmPoint2(0.0, 0.0).interpolate({1.0, 2.0}, 2.0), qmPoint2(2.0, 4.0));
}

TEST(QmPoint, that_holds_no_number_is_equal_to_nothing) {
  const qmPoint3 point(0.0, NOT_A_NUMBER, 0.0);
  EXPECT_FALSE(point == point);
}

template <class A, class B>
concept Comparable = requires(A a, B b) {
  a == b;
};

TEST(QmTypes, of_different_kinds_do_not_mix) {
  EXPECT_FALSE((Comparable<qmPoint3, qmVector3>));
  EXPECT_FALSE((Comparable<qmUnitVec3, qmVector3>));
  EXPECT_FALSE((std::is_convertible_v<qmVector3, qmPoint3>));
  EXPECT_FALSE((std::is_convertible_v<qmVector3, qmUnitVec3>));
  EXPECT_FALSE((std::is_convertible_v<OwnPlace, qmPoint3>));
}

TEST(QmTypes, take_and_become_the_vectors_of_a_host) {
  constexpr OwnVector own = {{1.0, 2.0, 3.0}};
  constexpr qmPoint3 point = own;
  constexpr qmVector3 vector = own;
  EXPECT_EQ(point, qmPoint3(1.0, 2.0, 3.0));
  EXPECT_EQ(vector, qmVector3(1.0, 2.0, 3.0));
  const OwnVector back = qmPoint3(4.0, 5.0, 6.0);
  EXPECT_EQ(back.v[0], 4.0);
  EXPECT_EQ(back.v[1], 5.0);
  EXPECT_EQ(back.v[2], 6.0);
  const qmPoint2 place = OwnPlace{0.5F, -2.0F};
  EXPECT_EQ(place, qmPoint2(0.5, -2.0));
  const OwnPlace placeBack = qmVector2(3.0, 4.0);
  EXPECT_EQ(placeBack.east, 3.0F);
  EXPECT_EQ(placeBack.north, 4.0F);
  const OwnVector direction = qmUnitVec3(qmVector3(0.0, 0.0, -2.0));
  EXPECT_EQ(direction.v[2], -1.0);
}

TEST(QmUnitVec, is_the_direction_of_a_vector) {
  const qmUnitVec3 direction(qmVector3(0.0, 3.0, 4.0));
  EXPECT_EQ(direction, qmUnitVec3(qmVector3(0.0, 0.6, 0.8)));
  EXPECT_DOUBLE_EQ(direction.y(), 0.6);
  EXPECT_DOUBLE_EQ(direction.z(), 0.8);
  const qmUnitVec2 flat(qmVector2(-5.0, 0.0));
  EXPECT_EQ(flat.x(), -1.0);
  EXPECT_EQ(flat.y(), 0.0);
}

TEST(QmUnitVec, of_what_has_no_direction_is_zero) {
  const qmUnitVec3 none;
  const double shortest = 1.1920928955078125e-7;
  const qmVector3 rows[] = {{0.0, 0.0, 0.0},      {shortest, 0.0, 0.0}, {NOT_A_NUMBER, 1.0, 0.0},
                            {0.0, INFINITE, 0.0}, {1e300, 1e300, 0.0},  {-INFINITE, 0.0, NOT_A_NUMBER}};
  for (const qmVector3& row : rows) {
    EXPECT_EQ(qmUnitVec3(row), none) << row.x() << " " << row.y() << " " << row.z();
    EXPECT_EQ(qmUnitVec2(qmVector2(row.x(), row.y())), qmUnitVec2(qmVector2(0.0, 0.0)));
  }
  EXPECT_EQ(none.x(), 0.0);
  EXPECT_EQ(qmUnitVec3(qmVector3(std::nextafter(shortest, 1.0), 0.0, 0.0)).x(), 1.0);
}

// Each component is rounded by a division, half a unit, and by the length that divides it, a unit and a half
// at most; of the squared length that is twice as much, 2^-53 a half unit.
TEST(QmUnitVec, has_unit_length_and_keeps_its_bits) {
  Random random;
  for (int round = 0; round < 100000; ++round) {
    const double length = random.Magnitude(1e-6, 1e12);
    const Korvane::Vector3 way = random.Direction() * length;
    const qmUnitVec3 direction(qmVector3(way.x, way.y, way.z));
    const double squared =
        direction.x() * direction.x() + direction.y() * direction.y() + direction.z() * direction.z();
    ASSERT_NEAR(squared, 1.0, 8.8817841970012523e-16);
    ASSERT_EQ(qmUnitVec3(qmVector3(direction.x(), direction.y(), direction.z())), direction);
  }
}

TEST(QmBox, keeps_its_corners_as_given) {
  constexpr qmBox2 box(qmPoint2(3.0, 1.0), qmPoint2(-3.0, 2.0));
  EXPECT_EQ(box.low(), qmPoint2(3.0, 1.0));
  EXPECT_EQ(box.high(), qmPoint2(-3.0, 2.0));
  EXPECT_EQ(qmBox3(), qmBox3(qmPoint3(), qmPoint3()));
  EXPECT_FALSE(qmBox3() == qmBox3(qmPoint3(), qmPoint3(0.0, 0.0, 1.0)));
}

TEST(QmAngle, in_its_own_unit_is_the_number_of_before) {
  Random random;
  for (int round = 0; round < 10000; ++round) {
    const double number = random.Uniform(-720.0, 720.0);
    ASSERT_EQ(qmAngle(number, qmAngleDegrees).angle(qmAngleDegrees), number);
    ASSERT_EQ(qmAngle(number, qmAngleRadians).angle(qmAngleRadians), number);
  }
}

TEST(QmAngle, turns_into_the_other_unit_to_two_units_of_the_last_place) {
  const long double pi = std::acos(-1.0L);
  Random random;
  for (int round = 0; round < 10000; ++round) {
    const double number = random.Uniform(-720.0, 720.0);
    const double radians = qmAngle(number, qmAngleDegrees).angle(qmAngleRadians);
    const auto expected = static_cast<double>(number * pi / 180.0L);
    ASSERT_NEAR(radians, expected, 2.0 * std::abs(std::nextafter(expected, INFINITE) - expected));
    const double degrees = qmAngle(number, qmAngleRadians).angle(qmAngleDegrees);
    const auto expectedDegrees = static_cast<double>(number * 180.0L / pi);
    ASSERT_NEAR(degrees, expectedDegrees,
                2.0 * std::abs(std::nextafter(expectedDegrees, INFINITE) - expectedDegrees));
  }
}

TEST(QmAngle, compares_across_units) {
  EXPECT_LT(qmAngle(1.0, qmAngleDegrees), qmAngle(1.0, qmAngleRadians));
  EXPECT_GT(qmAngle(58.0, qmAngleDegrees), qmAngle(1.0, qmAngleRadians));
  EXPECT_LT(qmAngle(1.0, qmAngleDegrees), qmAngle(2.0, qmAngleDegrees));
  EXPECT_GT(qmAngle(2.0, qmAngleDegrees), qmAngle(1.0, qmAngleDegrees));
  for (const qmAngleUnit unit : {qmAngleDegrees, qmAngleRadians}) {
    const auto compare = [unit](double one, double other) {
      return qmAngle(one, unit) <=> qmAngle(other, qmAngleRadians);
    };
    EXPECT_EQ(compare(0.0, 0.0), std::partial_ordering::equivalent);
    EXPECT_EQ(compare(-1.0, 1.0), std::partial_ordering::less);
    EXPECT_EQ(compare(1.0, -1.0), std::partial_ordering::greater);
    EXPECT_EQ(compare(1.0, NOT_A_NUMBER), std::partial_ordering::unordered);
  }
  EXPECT_EQ(qmAngle(0.0, qmAngleDegrees), qmAngle(0.0, qmAngleRadians));
  EXPECT_FALSE(qmAngle(NOT_A_NUMBER, qmAngleDegrees) == qmAngle(NOT_A_NUMBER, qmAngleDegrees));
}

TEST(QuObserverPtr, points_and_owns_nothing) {
  int value = 7;
  quObserverPtr<int> pointer(&value);
  EXPECT_TRUE(pointer);
  EXPECT_EQ(*pointer, 7);
  EXPECT_EQ(pointer.get(), &value);
  EXPECT_EQ(pointer, quObserverPtr<int>(&value));
  pointer.reset();
  EXPECT_FALSE(pointer);
  EXPECT_EQ(pointer, quObserverPtr<int>(nullptr));
}

TEST(QiIterator, walks_to_the_end_and_back_to_the_start) {
  const float values[] = {1.0F, 2.0F, 3.0F};
  qiIterator<float> walk(values, 3);
  EXPECT_EQ(walk.count(), 3U);
  float sum = 0.0F;
  while (walk.has_next()) sum = 10.0F * sum + walk.next();
  EXPECT_EQ(sum, 123.0F);
  EXPECT_EQ(walk.next(), 0.0F);
  EXPECT_EQ(walk.count(), 3U);
  walk.reset();
  EXPECT_EQ(walk.next(), 1.0F);
  sum = 0.0F;
  for (const float value : walk) sum = 10.0F * sum + value;
  EXPECT_EQ(sum, 123.0F);
}

TEST(QiIterator, along_nothing_ends_at_once) {
  qiIterator<float> walk(nullptr, 5);
  EXPECT_FALSE(walk.has_next());
  EXPECT_EQ(walk.next(), 0.0F);
  EXPECT_EQ(walk.count(), 0U);
  EXPECT_EQ(walk.data(), nullptr);
  EXPECT_FALSE(qiIterator<float>().has_next());
}

}  // namespace
