#include "korvane/timer.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "support/manual_platform.h"

namespace {

using Korvane::Timer;

// Times are ticks divided by 1000 and subtracted: numbers up to 5e6 carry an error of up to 5e-10.
constexpr double SECONDS_TOLERANCE = 1e-9;

TEST(TimerGetTime, is_the_tick_count_in_seconds) {
  ManualPlatform platform(1500);
  EXPECT_EQ(Timer::GetTime(), 1.5);
  platform.Advance(250);
  EXPECT_EQ(Timer::GetTime(), 1.75);
}

TEST(TimerGetTime, takes_the_tick_count_as_unsigned) {
  ManualPlatform platform(0xFFFFFFFF);
  EXPECT_EQ(Timer::GetTime(), 4294967.295);
}

TEST(TimerGetTime, wraps_after_two_to_the_32_milliseconds) {
  ManualPlatform platform(0xFFFFFFFF);
  platform.Advance(1001);
  EXPECT_EQ(Timer::GetTime(), 1.0);
}

TEST(TimerGetTime, costs_one_call_of_the_clock) {
  ManualPlatform platform;
  Timer::GetTime();
  EXPECT_EQ(platform.GetClockReads(), 1);
}

TEST(TimerEnd, on_a_fresh_timer_leaves_both_times_at_zero_and_does_not_read_the_clock) {
  ManualPlatform platform;
  Timer timer;
  platform.Advance(500);
  timer.End();
  EXPECT_EQ(timer.GetLastInterval(), 0.0);
  EXPECT_EQ(timer.GetTotalTime(), 0.0);
  EXPECT_EQ(platform.GetClockReads(), 0);
}

TEST(TimerEnd, measures_the_interval_since_start) {
  ManualPlatform platform;
  Timer timer;
  timer.Start();
  platform.Advance(250);
  timer.End();
  EXPECT_EQ(timer.GetLastInterval(), 0.25);
  EXPECT_EQ(timer.GetTotalTime(), 0.25);
}

TEST(TimerEnd, twice_without_a_start_in_between_adds_the_span_twice_to_the_total) {
  ManualPlatform platform;
  Timer timer;
  timer.Start();
  platform.Advance(1000);
  timer.End();
  timer.End();
  EXPECT_EQ(timer.GetLastInterval(), 1.0);
  EXPECT_EQ(timer.GetTotalTime(), 2.0);
  // The whole span since the start again: 1.5 on top of 2.
  platform.Advance(500);
  timer.End();
  EXPECT_EQ(timer.GetLastInterval(), 1.5);
  EXPECT_EQ(timer.GetTotalTime(), 3.5);
}

TEST(TimerEnd, with_a_start_after_each_end_gives_increments) {
  ManualPlatform platform;
  Timer timer;
  double sum = 0.0;
  timer.Start();
  for (const std::uint32_t step : {16U, 17U, 0U, 33U}) {
    platform.Advance(step);
    timer.End();
    EXPECT_NEAR(timer.GetLastInterval(), step / 1000.0, SECONDS_TOLERANCE);
    sum += timer.GetLastInterval();
    timer.Start();
  }
  EXPECT_NEAR(sum, 0.066, SECONDS_TOLERANCE);
  EXPECT_EQ(timer.GetTotalTime(), sum);
}

TEST(TimerLap, is_an_end_and_a_start_at_one_look_at_the_clock) {
  ManualPlatform platform;
  Timer timer;
  timer.Start();
  platform.Advance(250);
  const int reads = platform.GetClockReads();
  timer.Lap();
  EXPECT_EQ(platform.GetClockReads(), reads + 1);
  EXPECT_EQ(timer.GetLastInterval(), 0.25);
  platform.Advance(500);
  timer.Lap();
  EXPECT_EQ(timer.GetLastInterval(), 0.5);
  EXPECT_EQ(timer.GetTotalTime(), 0.75);
}

TEST(TimerLap, on_a_timer_that_was_not_started_measures_nothing_and_starts_it) {
  ManualPlatform platform;
  Timer timer;
  platform.Advance(500);
  timer.Lap();
  EXPECT_EQ(timer.GetLastInterval(), 0.0);
  platform.Advance(250);
  timer.Lap();
  EXPECT_EQ(timer.GetLastInterval(), 0.25);
}

TEST(TimerReset, returns_to_the_state_after_construction) {
  ManualPlatform platform;
  Timer timer;
  timer.Start();
  platform.Advance(1000);
  timer.End();
  timer.Reset();
  EXPECT_EQ(timer.GetLastInterval(), 0.0);
  EXPECT_EQ(timer.GetTotalTime(), 0.0);
  // Not started again, so a pause after it does not count.
  platform.Advance(1000);
  timer.End();
  EXPECT_EQ(timer.GetLastInterval(), 0.0);
}

TEST(Timer, started_at_tick_zero_counts_as_not_started) {
  ManualPlatform platform(0);
  Timer timer;
  timer.Start();
  platform.Advance(1000);
  timer.End();
  EXPECT_EQ(timer.GetLastInterval(), 0.0);
}

TEST(Timer, across_the_wrap_of_the_clock_measures_the_interval_less_two_to_the_32) {
  ManualPlatform platform(0xFFFFFF00);
  Timer timer;
  timer.Start();
  platform.Advance(1000);
  timer.End();
  EXPECT_NEAR(timer.GetLastInterval(), 1.0 - 4294967.296, SECONDS_TOLERANCE);
}

TEST(Timer, copies_go_on_by_themselves) {
  ManualPlatform platform;
  Timer timer;
  timer.Start();
  Timer copy = timer;
  platform.Advance(500);
  timer.Start();
  copy.End();
  EXPECT_EQ(copy.GetLastInterval(), 0.5);
}

}  // namespace
