// What fingers mean together, over fingers of chance.
#include "zovhost/touch_gestures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "korvane/math.h"
#include "support/random.h"

namespace {

using Korvane::Math;
using Korvane::Vector2;
using zovhost::TouchGestures;
using zovhost::TouchMotion;

constexpr double CLOSE = 1e-9;

Vector2 RandomPoint(Random& random) { return {random.Uniform(0.0, 2000.0), random.Uniform(0.0, 2000.0)}; }

std::vector<Vector2> RandomPoints(Random& random, int count) {
  std::vector<Vector2> points;
  for (int i = 0; i < count; ++i) points.push_back(RandomPoint(random));
  return points;
}

void Press(TouchGestures& gestures, const std::vector<Vector2>& points) {
  for (std::size_t i = 0; i < points.size(); ++i) gestures.Press(static_cast<int>(i), points[i]);
}

void Move(TouchGestures& gestures, const std::vector<Vector2>& points) {
  for (std::size_t i = 0; i < points.size(); ++i) gestures.Move(static_cast<int>(i), points[i]);
}

// About `middle`, then shifted.
Vector2 Carry(const Vector2& point, const Vector2& middle, double scale, double turn, const Vector2& shift) {
  const Vector2 arm = point - middle;
  return middle + shift +
         Vector2(arm.x * std::cos(turn) - arm.y * std::sin(turn),
                 arm.x * std::sin(turn) + arm.y * std::cos(turn)) *
             scale;
}

void ExpectNothing(const TouchMotion& motion, double tolerance = CLOSE) {
  EXPECT_LE(motion.GetTranslation().Length(), tolerance);
  EXPECT_NEAR(motion.scale, 1.0, tolerance);
  EXPECT_NEAR(motion.turn, 0.0, tolerance);
}

void ExpectSame(const TouchMotion& a, const TouchMotion& b) {
  EXPECT_LE((a.from - b.from).Length(), CLOSE);
  EXPECT_LE((a.to - b.to).Length(), CLOSE);
  EXPECT_NEAR(a.scale, b.scale, CLOSE);
  EXPECT_NEAR(a.turn, b.turn, CLOSE);
}

TEST(TouchGesturesTest, one_finger_shifts_and_neither_enlarges_nor_turns) {
  TouchGestures gestures;
  EXPECT_TRUE(gestures.Press(7, {100, 50}));
  EXPECT_TRUE(gestures.Move(7, {130, 10}));
  const TouchMotion motion = gestures.GetMotion();
  EXPECT_EQ(motion.from, Vector2(100, 50));
  EXPECT_EQ(motion.GetTranslation(), Vector2(30, -40));
  EXPECT_EQ(motion.scale, 1.0);
  EXPECT_EQ(motion.turn, 0.0);
}

TEST(TouchGesturesTest, a_shift_an_enlargement_and_a_turn_are_found_again) {
  Random random(11);
  for (int round = 0; round < 500; ++round) {
    const std::vector<Vector2> before = RandomPoints(random, 2 + round % 4);
    TouchGestures gestures;
    Press(gestures, before);
    const double scale = random.Uniform(0.5, 2.0);
    const double turn = random.Uniform(-3.0, 3.0);
    const Vector2 shift = RandomPoint(random) - RandomPoint(random);
    const Vector2 middle = gestures.GetMotion().from;
    for (std::size_t i = 0; i < before.size(); ++i) {
      gestures.Move(static_cast<int>(i), Carry(before[i], middle, scale, turn, shift));
    }
    const TouchMotion motion = gestures.GetMotion();
    EXPECT_LE((motion.GetTranslation() - shift).Length(), 1e-8);
    EXPECT_NEAR(motion.scale, scale, 1e-8);
    // The fingers have come one by one, and may have gone round.
    EXPECT_NEAR(std::remainder(motion.turn - turn, 2.0 * Math::PI), 0.0, 1e-8);
  }
}

TEST(TouchGesturesTest, fingers_that_go_there_and_back_have_done_nothing) {
  Random random(12);
  for (int round = 0; round < 500; ++round) {
    const int count = 1 + round % TouchGestures::MOST_FINGERS;
    const std::vector<Vector2> before = RandomPoints(random, count);
    TouchGestures gestures;
    Press(gestures, before);
    Move(gestures, RandomPoints(random, count));
    const double turnThere = gestures.GetMotion().turn;
    Move(gestures, before);
    TouchMotion motion = gestures.GetMotion();
    // Round the other way is a whole turn.
    if (std::abs(turnThere) > 0.0) motion.turn = std::remainder(motion.turn, 2.0 * Math::PI);
    ExpectNothing(motion);
  }
}

TEST(TouchGesturesTest, the_numbers_and_the_order_of_the_fingers_do_not_matter) {
  Random random(13);
  for (int round = 0; round < 300; ++round) {
    const int count = 2 + round % 4;
    const std::vector<Vector2> before = RandomPoints(random, count);
    std::vector<Vector2> after = before;
    for (Vector2& point : after) point += Vector2(random.Uniform(-40.0, 40.0), random.Uniform(-40.0, 40.0));
    TouchGestures gestures;
    Press(gestures, before);
    Move(gestures, after);
    TouchGestures reversed;
    for (int i = count - 1; i >= 0; --i) reversed.Press(100 - i, before[static_cast<std::size_t>(i)]);
    for (int i = 0; i < count; ++i) reversed.Move(100 - i, after[static_cast<std::size_t>(i)]);
    ExpectSame(gestures.GetMotion(), reversed.GetMotion());
  }
}

TEST(TouchGesturesTest, whatever_the_fingers_do_the_numbers_are_finite) {
  Random random(14);
  const std::array<double, 8> odd = {0.0,
                                     -0.0,
                                     TouchGestures::FURTHEST,
                                     -TouchGestures::FURTHEST,
                                     std::numeric_limits<double>::quiet_NaN(),
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::max(),
                                     std::numeric_limits<double>::denorm_min()};
  TouchGestures gestures;
  for (int step = 0; step < 20000; ++step) {
    const int finger = random.Integer(-1, 12);
    Vector2 at = RandomPoint(random);
    if (random.Integer(0, 2) == 0) at.x = odd[static_cast<std::size_t>(random.Integer(0, 7))];
    if (random.Integer(0, 2) == 0) at.y = odd[static_cast<std::size_t>(random.Integer(0, 7))];
    if (random.Integer(0, 3) == 0) at = {10.0, 10.0};  // two on one spot
    switch (random.Integer(0, 4)) {
      case 0:
        gestures.Press(finger, at);
        break;
      case 1:
        gestures.Release(finger);
        break;
      default:
        gestures.Move(finger, at);
    }
    const TouchMotion motion = gestures.GetMotion();
    ASSERT_TRUE(motion.from.IsFinite() && motion.to.IsFinite());
    ASSERT_TRUE(std::isfinite(motion.scale) && motion.scale > 0.0);
    ASSERT_TRUE(std::isfinite(motion.turn));
    ASSERT_LE(gestures.GetFingerCount(), TouchGestures::MOST_FINGERS);
  }
}

TEST(TouchGesturesTest, a_finger_that_comes_or_goes_begins_the_motion_anew) {
  TouchGestures gestures;
  gestures.Press(0, {0, 0});
  gestures.Press(1, {100, 0});
  gestures.Move(1, {0, 300});
  gestures.Press(2, {500, 500});
  ExpectNothing(gestures.GetMotion());
  gestures.Move(2, {600, 500});
  gestures.Release(0);
  ExpectNothing(gestures.GetMotion());
  gestures.Move(2, {610, 500});
  gestures.Release(1);
  ExpectNothing(gestures.GetMotion());
}

TEST(TouchGesturesTest, a_turn_counts_on_past_whole_turns) {
  TouchGestures gestures;
  gestures.Press(0, {100, 0});
  gestures.Press(1, {-100, 0});
  for (int degree = 0; degree <= 900; ++degree) {
    const double angle = degree * Math::DEG_TO_RAD;
    gestures.Move(0, Vector2(std::cos(angle), std::sin(angle)) * 100.0);
    gestures.Move(1, Vector2(std::cos(angle), std::sin(angle)) * -100.0);
  }
  EXPECT_NEAR(gestures.GetMotion().turn, 5.0 * Math::PI, 1e-6);
}

TEST(TouchGesturesTest, fingers_that_meet_do_not_enlarge_without_end) {
  TouchGestures gestures;
  gestures.Press(0, {100, 100});
  gestures.Press(1, {100, 100});
  ExpectNothing(gestures.GetMotion());
  gestures.Move(1, {101, 100});
  ExpectNothing(TouchMotion{{}, {}, gestures.GetMotion().scale, gestures.GetMotion().turn});
  gestures.Move(1, {300, 100});
  EXPECT_NEAR(gestures.GetMotion().scale, 100.0 / TouchGestures::CLOSEST, CLOSE);
}

TEST(TouchGesturesTest, what_is_no_finger_is_refused) {
  TouchGestures gestures;
  EXPECT_FALSE(gestures.Move(0, {1, 1}));
  EXPECT_FALSE(gestures.Release(0));
  EXPECT_FALSE(gestures.Press(0, {std::numeric_limits<double>::quiet_NaN(), 1}));
  EXPECT_FALSE(gestures.Press(0, {1, TouchGestures::FURTHEST * 2.0}));
  for (int i = 0; i < TouchGestures::MOST_FINGERS; ++i) EXPECT_TRUE(gestures.Press(i, {1, 1}));
  EXPECT_FALSE(gestures.Press(0, {1, 1})) << "is down";
  EXPECT_FALSE(gestures.Press(50, {1, 1})) << "a palm";
  gestures.ReleaseAll();
  EXPECT_EQ(gestures.GetFingerCount(), 0);
  ExpectNothing(gestures.GetMotion());
}

}  // namespace
