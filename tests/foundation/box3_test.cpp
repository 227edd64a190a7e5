#include "korvane/box3.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "korvane/quaternion.h"
#include "support/random.h"

namespace {

using Korvane::Box3;
using Korvane::Math;
using Korvane::Quaternion;
using Korvane::Vector3;

TEST(Box3, from_nothing_has_centre_zero_and_half_extent_one) {
  const Box3 box;
  EXPECT_EQ(box.GetCenter(), Vector3::Zero);
  EXPECT_EQ(box.GetExtent(), Vector3(1.0, 1.0, 1.0));
  EXPECT_EQ(box.GetCorner(0), Vector3(-1.0, -1.0, -1.0));
  EXPECT_EQ(box.GetCorner(7), Vector3(1.0, 1.0, 1.0));
}

TEST(Box3, from_a_centre_and_a_half_extent_has_the_unit_axes) {
  const Box3 box(Vector3(1.0, 2.0, 3.0), Vector3(4.0, 5.0, 6.0));
  EXPECT_EQ(box.GetCenter(), Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(box.GetExtent(), Vector3(4.0, 5.0, 6.0));
  EXPECT_EQ(box.GetAxis(0), Vector3(1.0, 0.0, 0.0));
  EXPECT_EQ(box.GetAxis(1), Vector3(0.0, 1.0, 0.0));
  EXPECT_EQ(box.GetAxis(2), Vector3(0.0, 0.0, 1.0));
}

TEST(Box3, numbers_its_corners_by_three_signs) {
  const Box3 box(Vector3(10.0, 20.0, 30.0), Vector3(1.0, 2.0, 3.0));
  const Vector3 expected[8] = {{9.0, 18.0, 27.0},  {9.0, 18.0, 33.0},  {9.0, 22.0, 27.0},
                               {9.0, 22.0, 33.0},  {11.0, 18.0, 27.0}, {11.0, 18.0, 33.0},
                               {11.0, 22.0, 27.0}, {11.0, 22.0, 33.0}};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(box.GetCorner(i), expected[i]) << i;
}

TEST(Box3, has_its_table_of_faces) {
  const int expected[6][4] = {{1, 5, 7, 3}, {5, 4, 6, 7}, {4, 0, 2, 6},
                              {0, 1, 3, 2}, {3, 7, 6, 2}, {0, 4, 5, 1}};
  for (int face = 0; face < 6; ++face) {
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Box3::facesLookUp[face][i], expected[face][i]) << face << ' ' << i;
  }
}

TEST(Box3, has_faces_that_are_planar_and_cover_each_side_once) {
  const Box3 box;
  Vector3 sum;
  for (const auto& face : Box3::facesLookUp) {
    Vector3 center;
    for (const int corner : face) center += box.GetCorner(corner) * 0.25;
    // The middle of a side of the unit box lies at distance 1; the six cancel out.
    EXPECT_EQ(center.Length(), 1.0);
    sum += center;
  }
  EXPECT_EQ(sum, Vector3::Zero);
}

TEST(Box3SetCenter, moves_all_corners) {
  Box3 box(Vector3::Zero, Vector3(1.0, 2.0, 3.0));
  box.SetCenter(Vector3(10.0, 20.0, 30.0));
  EXPECT_EQ(box.GetCenter(), Vector3(10.0, 20.0, 30.0));
  EXPECT_EQ(box.GetCorner(0), Vector3(9.0, 18.0, 27.0));
  EXPECT_EQ(box.GetCorner(7), Vector3(11.0, 22.0, 33.0));
}

TEST(Box3SetExtent, moves_all_corners) {
  Box3 box(Vector3(10.0, 20.0, 30.0), Vector3(1.0));
  box.SetExtent(Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(box.GetExtent(), Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(box.GetCorner(0), Vector3(9.0, 18.0, 27.0));
  EXPECT_EQ(box.GetCorner(7), Vector3(11.0, 22.0, 33.0));
}

TEST(Box3SetExtent, stores_a_negative_extent_which_mirrors_the_corners) {
  Box3 box;
  box.SetExtent(Vector3(-1.0, 1.0, 1.0));
  EXPECT_EQ(box.GetExtent(), Vector3(-1.0, 1.0, 1.0));
  EXPECT_EQ(box.GetCorner(0), Vector3(1.0, -1.0, -1.0));
  EXPECT_EQ(box.GetCorner(4), Vector3(-1.0, -1.0, -1.0));
}

TEST(Box3SetAxis, renormalises_the_axis_and_recomputes_the_corners) {
  Box3 box(Vector3::Zero, Vector3(1.0, 2.0, 3.0));
  box.SetAxis(0, Vector3(0.0, 0.0, 5.0));
  EXPECT_EQ(box.GetAxis(0), Vector3(0.0, 0.0, 1.0));
  EXPECT_EQ(box.GetCorner(4), Vector3(0.0, -2.0, 1.0 - 3.0));
}

TEST(Box3SetAxis, of_no_direction_becomes_zero_and_never_a_nan) {
  Box3 box;
  box.SetAxis(1, Vector3(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ(box.GetAxis(1), Vector3::Zero);
  for (int i = 0; i < 8; ++i) EXPECT_TRUE(box.GetCorner(i).IsFinite()) << i;
}

TEST(Box3SetCorner, writes_the_cache_and_touches_neither_centre_nor_extent) {
  Box3 box;
  box.SetCorner(3, Vector3(7.0, 8.0, 9.0));
  EXPECT_EQ(box.GetCorner(3), Vector3(7.0, 8.0, 9.0));
  EXPECT_EQ(box.GetCorner(2), Vector3(-1.0, 1.0, -1.0));
  EXPECT_EQ(box.GetCenter(), Vector3::Zero);
  EXPECT_EQ(box.GetExtent(), Vector3(1.0));
}

TEST(Box3SetCorner, lasts_until_the_corners_are_recomputed) {
  Box3 box;
  box.SetCorner(3, Vector3(7.0, 8.0, 9.0));
  box.SetCenter(Vector3::Zero);
  EXPECT_EQ(box.GetCorner(3), Vector3(-1.0, 1.0, 1.0));
}

TEST(Box3, answers_zero_for_an_index_out_of_range_and_ignores_a_write_there) {
  Box3 box;
  for (const int index : {-1, 8, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    box.SetCorner(index, Vector3(5.0));
    box.SetAxis(index, Vector3(5.0));
    EXPECT_EQ(box.GetCorner(index), Vector3::Zero) << index;
    EXPECT_EQ(box.GetAxis(index), Vector3::Zero) << index;
  }
  EXPECT_EQ(box.GetAxis(3), Vector3::Zero);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(box.GetCorner(i), Box3().GetCorner(i)) << i;
}

TEST(Box3IsEmpty, when_the_length_of_the_half_extent_is_below_the_tolerance) {
  EXPECT_FALSE(Box3().IsEmpty());
  EXPECT_TRUE(Box3(Vector3(5.0), Vector3::Zero).IsEmpty());
  EXPECT_TRUE(Box3(Vector3(5.0), Vector3(0.0, std::nextafter(Math::EPSILON_VALUE, 0.0), 0.0)).IsEmpty());
  EXPECT_FALSE(Box3(Vector3(5.0), Vector3(0.0, Math::EPSILON_VALUE, 0.0)).IsEmpty());
  // A flat box is not empty.
  EXPECT_FALSE(Box3(Vector3(5.0), Vector3(1.0, 0.0, 0.0)).IsEmpty());
}

TEST(Box3, has_each_random_oriented_corner_on_the_side_its_signs_say) {
  Random random;
  for (int i = 0; i < 2000; ++i) {
    Box3 box(random.Point(100.0), random.Point(10.0));
    const Quaternion turn = Quaternion::AxisAngle(random.Direction(), random.Uniform(-4.0, 4.0));
    Vector3 axes[3];
    turn.ToRotationMatrix(axes);
    for (int axis = 0; axis < 3; ++axis) box.SetAxis(axis, axes[axis] * random.Magnitude(0.01, 100.0));
    for (int corner = 0; corner < 8; ++corner) {
      const Vector3 offset = box.GetCorner(corner) - box.GetCenter();
      const int bits[3] = {corner >> 2 & 1, corner >> 1 & 1, corner & 1};
      for (int axis = 0; axis < 3; ++axis) {
        const double expected = (bits[axis] == 1 ? 1.0 : -1.0) * box.GetExtent()[axis];
        // Positions up to 120 and their differences: 120 times 1e-16 a few times over.
        ASSERT_NEAR(offset.Dot(axes[axis]), expected, 1e-12) << corner << ' ' << axis;
      }
    }
  }
}

}  // namespace
