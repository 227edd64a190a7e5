#include "story/history/rewind_interpolation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "camera/camera_frame.h"
#include "camera/lens.h"
#include "support/cameras.h"
#include "support/random.h"

using namespace Korvane;

namespace {

using Elements = std::vector<RewindHistory::HistoryElement>;

RewindHistory::HistoryElement Weighing(double weight, const CameraParameters& camera) {
  RewindHistory::HistoryElement element;
  element.camera = camera;
  element.weight = weight;
  return element;
}

CameraParameters Between(const Elements& elements, bool angular = true) {
  CameraParameters camera;
  EXPECT_TRUE(InterpolateElements(elements, angular, camera));
  return camera;
}

void ExpectNear(const Vector3& a, const Vector3& b, double tolerance) {
  EXPECT_NEAR(a.x, b.x, tolerance);
  EXPECT_NEAR(a.y, b.y, tolerance);
  EXPECT_NEAR(a.z, b.z, tolerance);
}

const CameraParameters FRONT = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
const CameraParameters SIDE = LookAt({20, 0, 0}, {0, 0, 0}, {0, 1, 0});

// Each lens field another number.
CameraParameters WithLens(CameraParameters camera, double base) {
  for (const auto field : LENS_FIELDS) camera.*field = base++;
  return camera;
}

}  // namespace

TEST(RewindInterpolation, gives_nothing_where_nothing_weighs) {
  CameraParameters camera = FRONT;
  EXPECT_FALSE(InterpolateElements({}, true, camera));
  EXPECT_FALSE(InterpolateElements(Elements{Weighing(0.0, SIDE)}, true, camera));
  EXPECT_TRUE(SameBits(camera, FRONT));
}

TEST(RewindInterpolation, at_the_place_of_an_element_it_is_that_of_the_element) {
  Random random;
  for (int i = 0; i < 200; ++i) {
    CameraParameters camera = RandomCamera(random);
    camera.perspective_with_ortho = random.Coin();
    const Elements elements = {Weighing(0, RandomCamera(random)), Weighing(1, camera),
                               Weighing(0, RandomCamera(random))};
    ASSERT_TRUE(SameBits(Between(elements), camera)) << i;
  }
}

// A quarter of a turn about y, from 10 to 20 away: half of it at 45 degrees, 15 away.
TEST(RewindInterpolation, two_elements_turn_on_the_sphere) {
  const CameraParameters half = Between({Weighing(0.5, FRONT), Weighing(0.5, SIDE)});
  const double place = 15.0 * std::sqrt(0.5);
  ExpectNear(half.eye, {place, 0, place}, 1e-12);
  ExpectNear(half.centre, {0, 0, 0}, 1e-12);
  ExpectNear(half.up, {0, 1, 0}, 1e-12);
}

// A third of the quarter.
TEST(RewindInterpolation, the_weight_of_the_later_one_is_the_way) {
  const CameraParameters third = Between({Weighing(2.0 / 3.0, FRONT), Weighing(1.0 / 3.0, SIDE)});
  const double angle = 30.0 * Math::DEG_TO_RAD;
  const double distance = 10.0 + 10.0 / 3.0;
  ExpectNear(third.eye, {distance * std::sin(angle), 0, distance * std::cos(angle)}, 1e-12);
}

TEST(RewindInterpolation, with_the_switch_off_two_elements_go_straight) {
  const CameraParameters half = Between({Weighing(0.5, FRONT), Weighing(0.5, SIDE)}, false);
  ExpectNear(half.eye, {10, 0, 5}, 1e-12);
}

TEST(RewindInterpolation, the_switch_is_for_all_histories_and_on_at_first) {
  ASSERT_TRUE(RewindHistory::GetAngularInterpolation());
  RewindHistory::SetAngularInterpolation(false);
  EXPECT_FALSE(RewindHistory::GetAngularInterpolation());
  RewindHistory::SetAngularInterpolation(true);
}

TEST(RewindInterpolation, three_elements_are_summed_by_weight) {
  const CameraParameters third = LookAt({0, 0, 40}, {0, 8, 0}, {0, 1, 0});
  const CameraParameters sum = Between({Weighing(0.25, FRONT), Weighing(0.25, SIDE), Weighing(0.5, third)});
  ExpectNear(sum.eye, {5, 0, 22.5}, 1e-12);
  ExpectNear(sum.centre, {0, 4, 0}, 1e-12);
  ExpectNear(sum.up, {0, 1, 0}, 1e-12);
}

TEST(RewindInterpolation, every_number_of_two_is_mixed) {
  CameraParameters a = WithPivot(WithLens(FRONT, 1.0), {4, 5, 6});
  CameraParameters b = WithPivot(WithLens(SIDE, 101.0), {8, 1, -2});
  a.centre = {1, 2, 3};
  b.centre = {5, 2, -1};
  const CameraParameters mixed = Between({Weighing(0.75, a), Weighing(0.25, b)});
  ExpectNear(mixed.centre, {2, 2, 2}, 1e-12);
  ExpectNear(mixed.pivot, {5, 4, 4}, 1e-12);
  double expected = 26.0;  // 1 and 101, three to one
  for (const auto field : LENS_FIELDS) EXPECT_NEAR(mixed.*field, expected++, 1e-12);
  EXPECT_EQ(mixed.projection_transition, -1.0);
}

TEST(RewindInterpolation, every_number_of_three_is_summed) {
  const CameraParameters a = WithPivot(WithLens(FRONT, 1.0), {4, 0, 0});
  const CameraParameters b = WithPivot(WithLens(SIDE, 101.0), {0, 4, 0});
  const CameraParameters c = WithPivot(WithLens(SIDE, 201.0), {0, 0, 4});
  const CameraParameters sum = Between({Weighing(0.5, a), Weighing(0.25, b), Weighing(0.25, c)});
  ExpectNear(sum.pivot, {2, 1, 1}, 1e-12);
  double expected = 76.0;  // 0.5 + 25.25 + 50.25
  for (const auto field : LENS_FIELDS) EXPECT_NEAR(sum.*field, expected++, 1e-12);
  EXPECT_EQ(sum.projection_transition, -1.0);
}

TEST(RewindInterpolation, no_blend_of_projections_that_was_recorded_is_taken_up) {
  CameraParameters a = FRONT;
  CameraParameters b = SIDE;
  a.projection_transition = 0.25;
  b.projection_transition = 0.75;
  for (const bool angular : {true, false}) {
    EXPECT_EQ(Between({Weighing(0.5, a), Weighing(0.5, b)}, angular).projection_transition, -1.0);
  }
}

TEST(RewindInterpolation, the_projection_is_that_of_the_heaviest_and_of_the_earliest_at_a_tie) {
  CameraParameters other = WithOrthographic(SIDE, 3, 2);
  other.perspective_with_ortho = true;
  for (const bool angular : {true, false}) {
    for (const double weight : {0.25, 0.5, 0.75}) {
      const CameraParameters camera =
          Between({Weighing(1.0 - weight, FRONT), Weighing(weight, other)}, angular);
      EXPECT_EQ(camera.IsOrthographic(), weight > 0.5) << weight;
      EXPECT_EQ(camera.perspective_with_ortho, weight > 0.5) << weight;
    }
  }
}

// What lies between keeps its distance between those of the two, and an up of unit length across the view.
TEST(RewindInterpolation, between_any_two_cameras_lies_a_camera) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    const double t = random.Uniform(0.001, 0.999);
    const CameraParameters a = RandomCamera(random);
    const CameraParameters b = RandomCamera(random);
    const CameraParameters camera = Between({Weighing(1.0 - t, a), Weighing(t, b)});
    const double distance = (1.0 - t) * ViewingDistance(a) + t * ViewingDistance(b);
    ASSERT_NEAR(ViewingDistance(camera), distance, 1e-9 * distance) << i;
    ASSERT_NEAR(camera.up.Length(), 1.0, 1e-9) << i;
    ASSERT_NEAR(camera.up.Dot(ViewDirection(camera)), 0.0, 1e-9) << i;
  }
}

// Near an element it is near that: no jump where the second one begins to weigh. The view of the elements is
// level, so the up does not jump either.
TEST(RewindInterpolation, it_comes_to_the_element_without_a_jump) {
  Random random;
  for (int i = 0; i < 200; ++i) {
    const CameraParameters a = RandomCamera(random);
    const CameraParameters b = RandomCamera(random);
    const CameraParameters near = Between({Weighing(1.0 - 1e-9, a), Weighing(1e-9, b)});
    ASSERT_LT((near.eye - a.eye).Length(), 1e-5) << i;
    ASSERT_LT((near.centre - a.centre).Length(), 1e-5) << i;
    ASSERT_LT((near.up - CameraFrame(a).up).Length(), 1e-5) << i;
  }
}

TEST(RewindInterpolation, degenerate_cameras_give_finite_ones_or_none) {
  Random random;
  for (int i = 0; i < 2000; ++i) {
    const double t = random.Uniform(0.0, 1.0);
    const Elements elements = {Weighing(1.0 - t, ExtremeCamera(random)), Weighing(t, ExtremeCamera(random))};
    for (const bool angular : {true, false}) {
      CameraParameters camera;
      InterpolateElements(elements, angular, camera);
      ASSERT_TRUE(camera.IsFinite()) << i;
    }
  }
}
