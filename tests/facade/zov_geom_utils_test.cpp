#include "zov/zov_geom_utils.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "support/random.h"

namespace {

using Korvane::Box2;
using Korvane::Box3;
using Korvane::Vector2;
using Korvane::Vector3;
using Utils = zovGeomUtils;

// Any double at all: the bits are random, so that numbers of all sizes, NaN and infinities come up.
double AnyDouble(Random& random) {
  constexpr double SPECIAL[] = {0.0, -0.0, std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()};
  if (random.Integer(0, 3) == 0) return random.OneOf(SPECIAL);
  return random.Uniform(-1.0, 1.0) * std::ldexp(1.0, random.Integer(-1060, 1020));
}

::testing::AssertionResult SameBits(double a, double b) {
  if (std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b))
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << a << " and " << b << " differ";
}

::testing::AssertionResult AllSameBits(const auto& there, const Vector3& v, const Vector3& back) {
  const double rows[][2] = {{there.x(), v.x}, {there.y(), v.y}, {there.z(), v.z},
                            {back.x, v.x},    {back.y, v.y},    {back.z, v.z}};
  for (const auto& row : rows) {
    if (!SameBits(row[0], row[1])) return SameBits(row[0], row[1]);
  }
  return ::testing::AssertionSuccess();
}
::testing::AssertionResult AllSameBits(const auto& there, const Vector2& v, const Vector2& back) {
  const double rows[][2] = {{there.x(), v.x}, {there.y(), v.y}, {back.x, v.x}, {back.y, v.y}};
  for (const auto& row : rows) {
    if (!SameBits(row[0], row[1])) return SameBits(row[0], row[1]);
  }
  return ::testing::AssertionSuccess();
}

TEST(ZovGeomUtils, keeps_every_bit_of_points_and_vectors_there_and_back) {
  Random random;
  for (int round = 0; round < 10000; ++round) {
    const Vector3 v(AnyDouble(random), AnyDouble(random), AnyDouble(random));
    const qmPoint3 point = Utils::kvvec_to_qmpnt(v);
    ASSERT_TRUE(AllSameBits(point, v, Utils::qmpnt_to_kvvec(point)));
    const qmVector3 vector = Utils::kvvec_to_qmvec(v);
    ASSERT_TRUE(AllSameBits(vector, v, Utils::qmvec_to_kvvec(vector)));
    const Vector2 f(v.y, v.z);
    const qmPoint2 flatPoint = Utils::kvvec_to_qmpnt(f);
    ASSERT_TRUE(AllSameBits(flatPoint, f, Utils::qmpnt_to_kvvec(flatPoint)));
    const qmVector2 flatVector = Utils::kvvec_to_qmvec(f);
    ASSERT_TRUE(AllSameBits(flatVector, f, Utils::qmvec_to_kvvec(flatVector)));
  }
}

// The host's direction is the library's own, but for what the rounding of a division makes of it.
TEST(ZovGeomUtils, makes_the_direction_that_the_library_makes) {
  Random random;
  for (int round = 0; round < 10000; ++round) {
    const Vector3 v(AnyDouble(random), AnyDouble(random), AnyDouble(random));
    const Vector3 direction = Utils::qmuvc_to_kvvec(Utils::kvvec_to_qmuvc(v));
    const Vector3 expected = v.Normalized();
    ASSERT_NEAR(direction.x, expected.x, 1e-15);
    ASSERT_NEAR(direction.y, expected.y, 1e-15);
    ASSERT_NEAR(direction.z, expected.z, 1e-15);
    ASSERT_EQ(direction == Vector3::Zero, expected == Vector3::Zero);
    const Vector2 flat(v.x, v.y);
    const Vector2 flatDirection = Utils::qmuvc_to_kvvec(Utils::kvvec_to_qmuvc(flat));
    const Vector2 flatExpected = flat.Normalized();
    ASSERT_NEAR(flatDirection.x, flatExpected.x, 1e-15);
    ASSERT_NEAR(flatDirection.y, flatExpected.y, 1e-15);
    ASSERT_EQ(flatDirection == Vector2(), flatExpected == Vector2());
  }
}

TEST(ZovGeomUtils, keeps_every_bit_of_a_direction_there_and_back) {
  Random random;
  for (int round = 0; round < 10000; ++round) {
    const qmUnitVec3 direction = Utils::kvvec_to_qmuvc(random.Direction() * random.Magnitude(1e-6, 1e9));
    ASSERT_EQ(Utils::kvvec_to_qmuvc(Utils::qmuvc_to_kvvec(direction)), direction);
    const qmUnitVec2 flat = Utils::kvvec_to_qmuvc(Vector2(random.Uniform(-9.0, 9.0), 1.0));
    ASSERT_EQ(Utils::kvvec_to_qmuvc(Utils::qmuvc_to_kvvec(flat)), flat);
  }
  EXPECT_EQ(Utils::kvvec_to_qmuvc(Vector3()), qmUnitVec3());
  EXPECT_EQ(Utils::qmuvc_to_kvvec(qmUnitVec3()), Vector3::Zero);
}

TEST(ZovGeomUtils, turns_centre_and_half_extents_into_corners) {
  EXPECT_EQ(Utils::kvbox_to_qmbox(Box2(Vector2(5.0, 3.0), Vector2(2.0, 1.0))),
            qmBox2(qmPoint2(3.0, 2.0), qmPoint2(7.0, 4.0)));
  EXPECT_EQ(Utils::kvbox_to_qmbox(Box3(Vector3(5.0, 3.0, -1.0), Vector3(2.0, 1.0, 4.0))),
            qmBox3(qmPoint3(3.0, 2.0, -5.0), qmPoint3(7.0, 4.0, 3.0)));
}

TEST(ZovGeomUtils, turns_corners_into_centre_and_half_extents) {
  const Box2 flat = Utils::qmbox_to_kvbox(qmBox2(qmPoint2(3.0, 2.0), qmPoint2(7.0, 4.0)));
  EXPECT_EQ(flat.center, Vector2(5.0, 3.0));
  EXPECT_EQ(flat.halfExtent, Vector2(2.0, 1.0));
  const Box3 box = Utils::qmbox_to_kvbox(qmBox3(qmPoint3(3.0, 2.0, -5.0), qmPoint3(7.0, 4.0, 3.0)));
  EXPECT_EQ(box.GetCenter(), Vector3(5.0, 3.0, -1.0));
  EXPECT_EQ(box.GetExtent(), Vector3(2.0, 1.0, 4.0));
  EXPECT_EQ(box.GetCorner(7), Vector3(7.0, 4.0, 3.0));
}

TEST(ZovGeomUtils, leaves_the_axes_of_a_turned_box_behind) {
  Box3 box(Vector3(1.0, 1.0, 1.0), Vector3(1.0, 2.0, 3.0));
  box.SetAxis(0, Vector3(0.0, 1.0, 0.0));
  box.SetAxis(1, Vector3(-1.0, 0.0, 0.0));
  EXPECT_EQ(Utils::kvbox_to_qmbox(box), qmBox3(qmPoint3(0.0, -1.0, -2.0), qmPoint3(2.0, 3.0, 4.0)));
  EXPECT_EQ(Utils::qmbox_to_kvbox(Utils::kvbox_to_qmbox(box)).GetAxis(0), Vector3(1.0, 0.0, 0.0));
}

// A corner is rounded once, by half a unit of |c| + |h|, which is 2^-53 of it; the mean of both corners and
// half their difference carry that, and a rounding of their own.
TEST(ZovGeomUtils, brings_boxes_back_within_two_to_the_minus_52_of_their_reach) {
  Random random;
  for (int round = 0; round < 10000; ++round) {
    const double size = random.Magnitude(1e-3, 1e6);
    const Box3 box(random.Point(size), random.Point(random.Magnitude(1e-3, 1e6)));
    const Box3 back = Utils::qmbox_to_kvbox(Utils::kvbox_to_qmbox(box));
    for (int axis = 0; axis < 3; ++axis) {
      const double reach = std::abs(box.GetCenter()[axis]) + std::abs(box.GetExtent()[axis]);
      ASSERT_NEAR(back.GetCenter()[axis], box.GetCenter()[axis], std::ldexp(reach, -52));
      ASSERT_NEAR(back.GetExtent()[axis], box.GetExtent()[axis], std::ldexp(reach, -52));
    }
    const Box2 flat(Vector2(box.GetCenter().x, box.GetCenter().y),
                    Vector2(box.GetExtent().x, box.GetExtent().y));
    const Box2 flatBack = Utils::qmbox_to_kvbox(Utils::kvbox_to_qmbox(flat));
    EXPECT_EQ(flatBack.center, Vector2(back.GetCenter().x, back.GetCenter().y));
    EXPECT_EQ(flatBack.halfExtent, Vector2(back.GetExtent().x, back.GetExtent().y));
  }
}

TEST(ZovGeomUtils, reaches_as_far_as_doubles_do) {
  const double most = std::numeric_limits<double>::max();
  const Box2 box = Utils::qmbox_to_kvbox(qmBox2(qmPoint2(-most, 0.0), qmPoint2(most, most)));
  EXPECT_EQ(box.center, Vector2(0.0, most / 2.0));
  EXPECT_EQ(box.halfExtent, Vector2(most, most / 2.0));
}

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

::testing::AssertionResult IsLike(double value, double expected) {
  if (value == expected || (std::isnan(value) && std::isnan(expected))) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << value << " and not " << expected;
}

// The other axes hear nothing of it.
TEST(ZovGeomUtils, makes_of_corners_that_are_not_finite_no_finite_box) {
  const struct {
    double low, high;
    double centre, half;
  } rows[] = {
      {NOT_A_NUMBER, 1.0, NOT_A_NUMBER, NOT_A_NUMBER},
      {0.0, NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER},
      {-ENDLESS, 1.0, -ENDLESS, ENDLESS},
      {0.0, ENDLESS, ENDLESS, ENDLESS},
      {-ENDLESS, ENDLESS, NOT_A_NUMBER, ENDLESS},
      {ENDLESS, ENDLESS, ENDLESS, NOT_A_NUMBER},
      {ENDLESS, -ENDLESS, NOT_A_NUMBER, -ENDLESS},
  };
  for (const auto& row : rows) {
    for (int axis = 0; axis < 3; ++axis) {
      Vector3 low(3.0, 2.0, -5.0);
      Vector3 high(7.0, 4.0, 3.0);
      low[axis] = row.low;
      high[axis] = row.high;
      const Box3 box = Utils::qmbox_to_kvbox(qmBox3(Utils::kvvec_to_qmpnt(low), Utils::kvvec_to_qmpnt(high)));
      const Vector3 centre(5.0, 3.0, -1.0);
      const Vector3 half(2.0, 1.0, 4.0);
      for (int each = 0; each < 3; ++each) {
        EXPECT_TRUE(IsLike(box.GetCenter()[each], each == axis ? row.centre : centre[each]));
        EXPECT_TRUE(IsLike(box.GetExtent()[each], each == axis ? row.half : half[each]));
      }
      const Box2 flat = Utils::qmbox_to_kvbox(qmBox2(qmPoint2(low.x, low.y), qmPoint2(high.x, high.y)));
      EXPECT_TRUE(IsLike(flat.center.x, box.GetCenter().x));
      EXPECT_TRUE(IsLike(flat.center.y, box.GetCenter().y));
      EXPECT_TRUE(IsLike(flat.halfExtent.x, box.GetExtent().x));
      EXPECT_TRUE(IsLike(flat.halfExtent.y, box.GetExtent().y));
    }
  }
}

TEST(ZovGeomUtils, makes_of_a_box_that_is_not_finite_no_finite_corners) {
  const struct {
    double centre, half;
    double low, high;
  } rows[] = {
      {NOT_A_NUMBER, 1.0, NOT_A_NUMBER, NOT_A_NUMBER},
      {0.0, NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER},
      {ENDLESS, 1.0, ENDLESS, ENDLESS},
      {0.0, ENDLESS, -ENDLESS, ENDLESS},
      {ENDLESS, ENDLESS, NOT_A_NUMBER, ENDLESS},
      {-ENDLESS, ENDLESS, -ENDLESS, NOT_A_NUMBER},
      {1.2e308, 1e308, 1.2e308 - 1e308, ENDLESS},  // further out than doubles go
  };
  for (const auto& row : rows) {
    for (int axis = 0; axis < 3; ++axis) {
      Vector3 centre(5.0, 3.0, -1.0);
      Vector3 half(2.0, 1.0, 4.0);
      centre[axis] = row.centre;
      half[axis] = row.half;
      const qmBox3 box = Utils::kvbox_to_qmbox(Box3(centre, half));
      const Vector3 low = Utils::qmpnt_to_kvvec(box.low());
      const Vector3 high = Utils::qmpnt_to_kvvec(box.high());
      const Vector3 usualLow(3.0, 2.0, -5.0);
      const Vector3 usualHigh(7.0, 4.0, 3.0);
      for (int each = 0; each < 3; ++each) {
        EXPECT_TRUE(IsLike(low[each], each == axis ? row.low : usualLow[each]));
        EXPECT_TRUE(IsLike(high[each], each == axis ? row.high : usualHigh[each]));
      }
      const qmBox2 flat = Utils::kvbox_to_qmbox(Box2(Vector2(centre.x, centre.y), Vector2(half.x, half.y)));
      EXPECT_TRUE(IsLike(flat.low().x(), low.x));
      EXPECT_TRUE(IsLike(flat.low().y(), low.y));
      EXPECT_TRUE(IsLike(flat.high().x(), high.x));
      EXPECT_TRUE(IsLike(flat.high().y(), high.y));
    }
  }
}

}  // namespace
