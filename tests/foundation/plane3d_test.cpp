#include "korvane/plane3d.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Korvane::Plane3D;
using Korvane::Vector3;

TEST(Plane3D, is_all_zero_after_construction) {
  const Plane3D plane;
  EXPECT_EQ(plane.GetNormal(), Vector3::Zero);
  EXPECT_EQ(plane.GetPoint(), Vector3::Zero);
  EXPECT_EQ(plane.GetNormalLength(), 0.0);
}

TEST(Plane3D, normalises_its_normal_and_keeps_its_point) {
  Plane3D plane;
  plane.SetNormalAndPoint(Vector3(0.0, 3.0, 4.0), Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(plane.GetNormal(), Vector3(0.0, 0.6, 0.8));
  EXPECT_EQ(plane.GetPoint(), Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(plane.GetNormalLength(), 1.0);
}

TEST(Plane3D, has_a_zero_normal_of_length_zero_when_given_none) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  for (const Vector3& normal : {Vector3::Zero, Vector3(1e-8), Vector3(nan), Vector3(infinite, 0.0, 0.0)}) {
    Plane3D plane;
    plane.SetNormalAndPoint(normal, Vector3(1.0, 2.0, 3.0));
    EXPECT_EQ(plane.GetNormal(), Vector3::Zero);
    EXPECT_EQ(plane.GetNormalLength(), 0.0);
    EXPECT_EQ(plane.Distance(Vector3(5.0, 5.0, 5.0)), 0.0);
  }
}

TEST(Plane3DDistance, is_positive_on_the_side_of_the_normal) {
  Plane3D plane;
  plane.SetNormalAndPoint(Vector3(0.0, 0.0, -2.0), Vector3(7.0, 8.0, 10.0));
  EXPECT_EQ(plane.Distance(Vector3(0.0, 0.0, 4.0)), 6.0);
  EXPECT_EQ(plane.Distance(Vector3(0.0, 0.0, 13.0)), -3.0);
  EXPECT_EQ(plane.Distance(Vector3(-100.0, 50.0, 10.0)), 0.0);
}

}  // namespace
