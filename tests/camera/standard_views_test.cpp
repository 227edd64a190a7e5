#include "camera/standard_views.h"

#include <gtest/gtest.h>

#include <vector>

#include "camera/oracle.h"
#include "support/cameras.h"

using namespace Korvane;

namespace {

using Triple = Eigen::Vector3d;

// The table built by its rule: faces by component, edges by the cycle of pairs, corners by three loops.
std::vector<Triple> ByRule() {
  std::vector<Triple> rows;
  for (int component = 0; component < 3; ++component) {
    for (const double sign : {-1.0, 1.0}) rows.push_back(Triple::Unit(component) * sign);
  }
  for (int first = 0; first < 3; ++first) {
    const int second = (first + 1) % 3;
    for (const double a : {-1.0, 1.0}) {
      for (const double b : {-1.0, 1.0}) rows.push_back(Triple::Unit(first) * a + Triple::Unit(second) * b);
    }
  }
  for (const double x : {-1.0, 1.0}) {
    for (const double y : {-1.0, 1.0}) {
      for (const double z : {-1.0, 1.0}) rows.emplace_back(x, y, z);
    }
  }
  return rows;
}

StandardViews OfUnitAxes() {
  StandardViews views;
  views.Fill({1, 0, 0}, {0, 1, 0}, {0, 0, 1});
  return views;
}

}  // namespace

TEST(StandardViewTable, holds_the_26_directions_row_by_row) {
  const std::vector<Triple> expected = ByRule();
  ASSERT_EQ(expected.size(), 26U);
  const StandardViews views = OfUnitAxes();
  for (int i = 0; i < 26; ++i) {
    EXPECT_EQ(views.GetDirection(i), oracle::To(expected[static_cast<std::size_t>(i)])) << i;
  }
}

TEST(StandardViewTable, each_row_is_a_front_plus_b_up_plus_c_side_and_is_not_normalised) {
  const Vector3 front(0, 0, 2);
  const Vector3 up(3, 0, 0);
  const Vector3 side(0, 1, 0);
  StandardViews views;
  views.Fill(front, up, side);
  const std::vector<Triple> rows = ByRule();
  for (int i = 0; i < 26; ++i) {
    const Triple& abc = rows[static_cast<std::size_t>(i)];
    EXPECT_EQ(views.GetDirection(i), Vector3(3 * abc.y(), abc.z(), 2 * abc.x())) << i;
  }
}

TEST(StandardViewChoice, finds_for_each_views_own_direction_that_view) {
  const StandardViews views = OfUnitAxes();
  for (int i = 0; i < 26; ++i) {
    // The entry points from the target to the eye, the view the other way.
    EXPECT_EQ(views.GetClosestAlignDir(-views.GetDirection(i), false), views.GetDirection(i)) << i;
  }
}

TEST(StandardViewChoice, picks_the_greatest_cosine_for_random_views_and_axes) {
  Random random;
  const std::vector<Triple> rows = ByRule();
  for (int round = 0; round < 10000; ++round) {
    const Axes axes = RandomAxes(random);
    const Vector3 side = oracle::To(oracle::From(axes.front).cross(oracle::From(axes.up)));
    StandardViews views;
    views.Fill(axes.front, axes.up, side);
    const Vector3 view = random.Direction() * random.Magnitude(0.01, 100.0);
    const bool facesOnly = random.Coin();
    int best = 0;
    double greatest = -2.0;
    for (int i = 0; i < (facesOnly ? 6 : 26); ++i) {
      const Triple& abc = rows[static_cast<std::size_t>(i)];
      const oracle::Vec entry =
          oracle::From(axes.front) * abc.x() + oracle::From(axes.up) * abc.y() + oracle::From(side) * abc.z();
      const double cosine = -entry.normalized().dot(oracle::From(view).normalized());
      if (cosine <= greatest) continue;
      greatest = cosine;
      best = i;
    }
    ASSERT_EQ(views.GetClosestAlignDir(view, facesOnly), views.GetDirection(best)) << round;
  }
}

TEST(StandardViewChoice, the_lowest_index_wins_a_tie) {
  const StandardViews views = OfUnitAxes();
  EXPECT_EQ(views.GetClosestAlignDir({0, 0, 0}, false), Vector3(-1, 0, 0));
  // Halfway between the faces (1, 0, 0) and (0, 1, 0): both cosines are the same number.
  EXPECT_EQ(views.GetClosestAlignDir({-1, -1, 0}, true), Vector3(1, 0, 0));
  EXPECT_EQ(views.GetClosestAlignDir({1, -1, -1}, true), Vector3(-1, 0, 0));
}

TEST(StandardViewChoice, faces_only_looks_at_the_first_six) {
  const StandardViews views = OfUnitAxes();
  const Vector3 view(-1, -0.9, 0);
  EXPECT_EQ(views.GetClosestAlignDir(view, false), Vector3(1, 1, 0));
  EXPECT_EQ(views.GetClosestAlignDir(view, true), Vector3(1, 0, 0));
}
