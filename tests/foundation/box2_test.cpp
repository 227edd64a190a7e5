#include "korvane/box2.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/random.h"

namespace {

using Korvane::Box2;
using Korvane::Vector2;

// x from -1 to 7, y from 4 to 6.
const Box2 BOX(Vector2(3.0, 5.0), Vector2(4.0, 1.0));

TEST(Box2, is_zero_from_nothing_and_takes_the_centre_first) {
  EXPECT_EQ(Box2().center, Vector2());
  EXPECT_EQ(Box2().halfExtent, Vector2());
  EXPECT_EQ(BOX.center, Vector2(3.0, 5.0));
  EXPECT_EQ(BOX.halfExtent, Vector2(4.0, 1.0));
}

TEST(Box2, reaches_from_the_centre_minus_to_the_centre_plus_the_half_extent) {
  EXPECT_EQ(BOX.Min(), Vector2(-1.0, 4.0));
  EXPECT_EQ(BOX.Max(), Vector2(7.0, 6.0));
}

TEST(Box2IsPointInside, is_false_on_the_top_and_right_edges_and_true_on_the_bottom_and_left_edges) {
  EXPECT_TRUE(BOX.IsPointInside(Vector2(-1.0, 5.0)));
  EXPECT_TRUE(BOX.IsPointInside(Vector2(3.0, 4.0)));
  EXPECT_TRUE(BOX.IsPointInside(Vector2(-1.0, 4.0)));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(7.0, 5.0)));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(3.0, 6.0)));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(-1.0, 6.0)));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(7.0, 4.0)));
}

TEST(Box2IsPointInside, is_true_just_inside_and_false_just_outside_each_edge) {
  EXPECT_TRUE(BOX.IsPointInside(Vector2(std::nextafter(7.0, 0.0), 5.0)));
  EXPECT_TRUE(BOX.IsPointInside(Vector2(3.0, std::nextafter(6.0, 0.0))));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(std::nextafter(-1.0, -2.0), 5.0)));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(3.0, std::nextafter(4.0, 0.0))));
}

TEST(Box2IsPointInside, is_false_for_every_point_of_a_box_without_extent_and_for_no_number) {
  EXPECT_FALSE(Box2().IsPointInside(Vector2()));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(BOX.IsPointInside(Vector2(nan, 5.0)));
  EXPECT_FALSE(BOX.IsPointInside(Vector2(3.0, nan)));
}

TEST(Box2IsPointInside, holds_for_exactly_one_of_two_boxes_side_by_side) {
  Random random;
  for (int i = 0; i < 1000; ++i) {
    const Box2 left(Vector2(-1.0, 0.0), Vector2(1.0, 1.0));
    const Box2 right(Vector2(1.0, 0.0), Vector2(1.0, 1.0));
    const Vector2 p(random.Integer(-8, 7) / 4.0, random.Integer(-4, 3) / 4.0);
    ASSERT_NE(left.IsPointInside(p), right.IsPointInside(p)) << p.x << ", " << p.y;
  }
}

TEST(Box2GetLocalCoords, runs_from_minus_one_to_one_across_the_box) {
  Vector2 local;
  EXPECT_TRUE(BOX.GetLocalCoords(Vector2(-1.0, 4.0), local));
  EXPECT_EQ(local, Vector2(-1.0, -1.0));
  EXPECT_TRUE(BOX.GetLocalCoords(Vector2(5.0, 5.5), local));
  EXPECT_EQ(local, Vector2(0.5, 0.5));
}

TEST(Box2GetLocalCoords, may_write_over_its_own_point) {
  Vector2 point(5.0, 5.5);
  EXPECT_TRUE(BOX.GetLocalCoords(point, point));  // (5 - 3) / 4 and (5.5 - 5) / 1
  EXPECT_EQ(point, Vector2(0.5, 0.5));
  Vector2 outside(9.0, 5.5);
  EXPECT_FALSE(BOX.GetLocalCoords(outside, outside));
}

TEST(Box2GetLocalCoords, writes_outside_the_box_too_and_answers_as_is_point_inside) {
  Vector2 local;
  EXPECT_FALSE(BOX.GetLocalCoords(Vector2(11.0, 3.0), local));
  EXPECT_EQ(local, Vector2(2.0, -2.0));
  EXPECT_FALSE(BOX.GetLocalCoords(Vector2(7.0, 5.0), local));
  EXPECT_EQ(local, Vector2(1.0, 0.0));
}

TEST(Box2GetLocalCoords, of_a_box_without_extent_is_false) {
  Vector2 local;
  EXPECT_FALSE(Box2().GetLocalCoords(Vector2(1.0, 0.0), local));
  EXPECT_FALSE(Box2().GetLocalCoords(Vector2(), local));
}

TEST(Box2ToArray, writes_the_corners_from_low_low_clockwise_with_the_given_z) {
  float array[13];
  array[12] = 99.0F;
  BOX.ToArray(array, 0.5F);
  const float expected[13] = {-1.0F, 4.0F, 0.5F, -1.0F, 6.0F, 0.5F, 7.0F,
                              6.0F,  0.5F, 7.0F, 4.0F,  0.5F, 99.0F};
  for (int i = 0; i < 13; ++i) EXPECT_EQ(array[i], expected[i]) << i;
}

}  // namespace
