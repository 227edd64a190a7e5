// What a wheel turns, in the library's counts.
#include "zovhost/wheel_counter.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace {

TEST(WheelCounter, a_notch_is_120_counts_either_way) {
  zovhost::WheelCounter wheel;
  EXPECT_EQ(wheel.Turn(1.0), 120);
  EXPECT_EQ(wheel.Turn(-2.0), -240);
}

// A step of 1/480 notch is a quarter of a count.
TEST(WheelCounter, what_is_left_of_fine_steps_adds_up) {
  zovhost::WheelCounter wheel;
  int counts = 0;
  for (int step = 0; step < 7; ++step) counts += *wheel.Turn(1.0 / 480.0);
  EXPECT_EQ(counts, 1);
  EXPECT_EQ(wheel.Turn(1.0 / 480.0), 1);
}

TEST(WheelCounter, a_restart_forgets_what_was_left) {
  zovhost::WheelCounter wheel;
  EXPECT_EQ(wheel.Turn(3.0 / 480.0), 0);
  wheel.Restart();
  EXPECT_EQ(wheel.Turn(1.0 / 480.0), 0);
}

TEST(WheelCounter, what_no_hand_turns_is_refused_and_leaves_nothing) {
  zovhost::WheelCounter wheel;
  for (const double notches :
       {1000.1, -1e9, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(wheel.Turn(notches), std::nullopt);
  }
  EXPECT_EQ(wheel.Turn(1.0), 120);
}

}  // namespace
