#include "korvane/interval_timer.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include "foundation/interval_timer_impl.h"
#include "support/manual_platform.h"
#include "support/virtual_slot.h"

namespace {

using Korvane::IntervalTimer;
using Korvane::IntervalTimerImpl;

class CountingTimer : public IntervalTimer {
 public:
  int count = 0;
  std::function<void()> onTimeout;

  static int TimeoutSlot() { return VirtualSlot(&CountingTimer::Timeout); }

 protected:
  void Timeout() override {
    ++count;
    const std::function<void()> reaction = onTimeout;  // the timer may be gone when it returns
    if (reaction) reaction();
  }
};

TEST(IntervalTimer, has_its_timeout_right_after_its_destructor) {
  EXPECT_EQ(CountingTimer::TimeoutSlot(), 2);
}

TEST(IntervalTimer, is_not_running_at_first) {
  ManualPlatform platform;
  const CountingTimer timer;
  EXPECT_FALSE(timer.IsRunning());
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST(IntervalTimerStart, sets_a_timer_with_the_period_in_whole_milliseconds) {
  ManualPlatform platform;
  CountingTimer timer;
  struct Case {
    double seconds;
    std::uint32_t milliseconds;
  };
  // 0.0019999 s is 1.9999 ms: truncated, not rounded.
  const Case cases[] = {{1.0, 1000}, {0.25, 250}, {0.0019999, 1}, {0.0009, 0}, {3600.0, 3600000}};
  for (const Case& each : cases) {
    EXPECT_TRUE(timer.Start(each.seconds, false));
    EXPECT_TRUE(timer.IsRunning());
    EXPECT_EQ(platform.GetLastRequestedPeriod(), each.milliseconds) << each.seconds;
  }
}

TEST(IntervalTimerStart, with_zero_seconds_asks_for_a_period_of_zero_which_the_platform_raises) {
  ManualPlatform platform;
  CountingTimer timer;
  EXPECT_TRUE(timer.Start(0.0, true));
  EXPECT_EQ(platform.GetLastRequestedPeriod(), 0U);
  platform.Advance(ManualPlatform::MINIMUM_PERIOD - 1);
  EXPECT_EQ(timer.count, 0);
  platform.Advance(1);
  EXPECT_EQ(timer.count, 1);
}

TEST(IntervalTimerStart, of_a_repeating_timer_runs_until_stop) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.Start(0.1, true);
  platform.Advance(99);
  EXPECT_EQ(timer.count, 0);
  platform.Advance(1);
  EXPECT_EQ(timer.count, 1);
  platform.Advance(300);
  EXPECT_EQ(timer.count, 4);
  EXPECT_TRUE(timer.IsRunning());
  timer.Stop();
  EXPECT_FALSE(timer.IsRunning());
  platform.Advance(1000);
  EXPECT_EQ(timer.count, 4);
}

TEST(IntervalTimerStart, of_a_one_shot_timer_runs_once) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.Start(0.1, false);
  platform.Advance(1000);
  EXPECT_EQ(timer.count, 1);
  EXPECT_FALSE(timer.IsRunning());
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST(IntervalTimerStart, on_a_running_timer_leaves_one_map_entry_and_not_two) {
  ManualPlatform platform;
  CountingTimer timer;
  const std::size_t before = IntervalTimerImpl::GetMapSize();
  timer.Start(0.1, true);
  const std::uint64_t firstID = platform.GetLastTimerID();
  timer.Start(0.1, true);
  EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before + 1);
  EXPECT_EQ(platform.GetTimerCount(), 1);
  EXPECT_NE(platform.GetLastTimerID(), firstID);
}

TEST(IntervalTimerStart, on_a_running_timer_counts_anew_and_takes_the_new_kind) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.Start(0.1, true);
  platform.Advance(60);
  timer.Start(0.1, false);
  platform.Advance(60);
  EXPECT_EQ(timer.count, 0);
  platform.Advance(400);
  EXPECT_EQ(timer.count, 1);
}

TEST(IntervalTimerStart, that_is_refused_is_false_and_leaves_the_timer_stopped) {
  ManualPlatform platform;
  CountingTimer timer;
  platform.RefuseTimers(true);
  const std::size_t before = IntervalTimerImpl::GetMapSize();
  EXPECT_FALSE(timer.Start(0.1, true));
  EXPECT_FALSE(timer.IsRunning());
  EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before);
  platform.Advance(1000);
  EXPECT_EQ(timer.count, 0);
}

TEST(IntervalTimerStart, that_is_refused_stops_a_running_timer) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.Start(0.1, true);
  platform.RefuseTimers(true);
  EXPECT_FALSE(timer.Start(0.1, true));
  EXPECT_FALSE(timer.IsRunning());
  EXPECT_EQ(platform.GetTimerCount(), 0);
  platform.RefuseTimers(false);
  EXPECT_TRUE(timer.Start(0.1, true));
}

TEST(IntervalTimerStart, with_a_period_that_is_none_is_false_and_stops_the_timer) {
  ManualPlatform platform;
  CountingTimer timer;
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double bad :
       {-1.0, -0.0005, std::numeric_limits<double>::quiet_NaN(), infinite, -infinite, 1e308}) {
    timer.Start(0.1, true);
    EXPECT_FALSE(timer.Start(bad, false)) << bad;
    EXPECT_FALSE(timer.IsRunning()) << bad;
    EXPECT_EQ(platform.GetTimerCount(), 0) << bad;
  }
}

TEST(IntervalTimerStart, with_a_period_past_32_bits_takes_the_longest_there_is) {
  ManualPlatform platform;
  CountingTimer timer;
  EXPECT_TRUE(timer.Start(1e300, false));
  EXPECT_EQ(platform.GetLastRequestedPeriod(), 0xFFFFFFFFU);
}

TEST(IntervalTimerStop, of_a_timer_that_does_not_run_does_nothing) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.Stop();
  timer.Stop();
  EXPECT_FALSE(timer.IsRunning());
}

TEST(IntervalTimerStop, takes_the_entry_out_of_the_map_and_kills_the_platforms_timer) {
  ManualPlatform platform;
  CountingTimer timer;
  const std::size_t before = IntervalTimerImpl::GetMapSize();
  timer.Start(0.1, true);
  timer.Stop();
  EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before);
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST(IntervalTimer, that_is_destroyed_is_stopped) {
  ManualPlatform platform;
  const std::size_t before = IntervalTimerImpl::GetMapSize();
  {
    CountingTimer timer;
    timer.Start(0.1, true);
  }
  EXPECT_EQ(platform.GetTimerCount(), 0);
  EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before);
  platform.Advance(1000);
}

TEST(IntervalTimerTimeout, finds_a_one_shot_timer_already_stopped) {
  ManualPlatform platform;
  CountingTimer timer;
  bool wasRunning = true;
  timer.onTimeout = [&] { wasRunning = timer.IsRunning(); };
  timer.Start(0.1, false);
  platform.Advance(100);
  EXPECT_EQ(timer.count, 1);
  EXPECT_FALSE(wasRunning);
}

TEST(IntervalTimerTimeout, finds_a_repeating_timer_running) {
  ManualPlatform platform;
  CountingTimer timer;
  bool wasRunning = false;
  timer.onTimeout = [&] { wasRunning = timer.IsRunning(); };
  timer.Start(0.1, true);
  platform.Advance(100);
  EXPECT_TRUE(wasRunning);
}

TEST(IntervalTimerTimeout, of_a_one_shot_timer_may_start_it_again) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.onTimeout = [&] {
    if (timer.count < 3) timer.Start(0.2, false);
  };
  timer.Start(0.1, false);
  platform.Advance(100);
  EXPECT_EQ(timer.count, 1);
  EXPECT_TRUE(timer.IsRunning());
  platform.Advance(199);
  EXPECT_EQ(timer.count, 1);
  platform.Advance(10000);
  EXPECT_EQ(timer.count, 3);
  EXPECT_FALSE(timer.IsRunning());
}

TEST(IntervalTimerTimeout, that_stops_its_own_repeating_timer_ends_the_repetition) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.onTimeout = [&] {
    if (timer.count == 2) timer.Stop();
  };
  timer.Start(0.1, true);
  platform.Advance(10000);
  EXPECT_EQ(timer.count, 2);
  EXPECT_FALSE(timer.IsRunning());
}

TEST(IntervalTimerTimeout, may_restart_its_own_repeating_timer) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.onTimeout = [&] {
    if (timer.count == 1) timer.Start(0.5, true);
  };
  timer.Start(0.1, true);
  platform.Advance(100 + 3 * 500);
  EXPECT_EQ(timer.count, 4);
}

TEST(IntervalTimerTimeout, may_destroy_its_own_timer) {
  for (const bool repeat : {false, true}) {
    ManualPlatform platform;
    const std::size_t before = IntervalTimerImpl::GetMapSize();
    auto timer = std::make_unique<CountingTimer>();
    int calls = 0;
    timer->onTimeout = [&] {
      ++calls;
      timer.reset();
    };
    timer->Start(0.1, repeat);
    platform.Advance(10000);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(timer, nullptr);
    EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before);
    EXPECT_EQ(platform.GetTimerCount(), 0);
  }
}

TEST(IntervalTimerTimeout, may_destroy_another_timer_that_is_due_at_the_same_moment) {
  ManualPlatform platform;
  CountingTimer first;
  auto second = std::make_unique<CountingTimer>();
  first.onTimeout = [&] { second.reset(); };
  first.Start(0.1, true);
  second->Start(0.1, true);
  platform.Advance(300);
  EXPECT_EQ(first.count, 3);
}

TEST(IntervalTimer, runs_several_in_the_order_in_which_they_fall_due) {
  ManualPlatform platform;
  CountingTimer slow;
  CountingTimer fast;
  std::vector<char> order;
  slow.onTimeout = [&] { order.push_back('s'); };
  fast.onTimeout = [&] { order.push_back('f'); };
  slow.Start(0.25, true);
  fast.Start(0.1, true);
  platform.Advance(500);  // 100 f, 200 f, 250 s, 300 f, 400 f, 500 s (set first), 500 f
  EXPECT_EQ(order, (std::vector<char>{'f', 'f', 's', 'f', 'f', 's', 'f'}));
}

TEST(IntervalTimer, runs_across_the_wrap_of_the_tick_count) {
  ManualPlatform platform(0xFFFFFFFF - 149);
  CountingTimer timer;
  timer.Start(0.1, true);
  platform.Advance(1000);
  EXPECT_EQ(timer.count, 10);
}

TEST(TimerProc, ignores_an_unknown_identifier_and_leaves_a_null_entry_behind) {
  ManualPlatform platform;
  // Of each run its own: the map is the process's, and what was looked up once stays in it.
  static std::uint64_t unknown = 0xABCDEF0000000000;
  ++unknown;
  const std::size_t before = IntervalTimerImpl::GetMapSize();
  IntervalTimerImpl::TimerProc(nullptr, 0, unknown, 0);
  EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before + 1);
  IntervalTimerImpl::TimerProc(nullptr, 0, unknown, 0);
  EXPECT_EQ(IntervalTimerImpl::GetMapSize(), before + 1);
}

TEST(TimerProc, that_comes_late_for_a_stopped_timer_runs_nothing) {
  ManualPlatform platform;
  CountingTimer timer;
  timer.Start(0.1, true);
  const std::uint64_t timerID = platform.GetLastTimerID();
  const Korvane::TimerProc proc = platform.GetLastProc();
  timer.Stop();
  proc(nullptr, 0, timerID, 0);
  EXPECT_EQ(timer.count, 0);
}

TEST(TimerProc, without_an_owner_stops_a_one_shot_timer_and_tells_nobody) {
  ManualPlatform platform;
  IntervalTimerImpl once(nullptr);
  IntervalTimerImpl repeating(nullptr);
  once.Start(0.1, false);
  repeating.Start(0.1, true);
  platform.Advance(150);
  EXPECT_FALSE(once.IsRunning());
  EXPECT_TRUE(repeating.IsRunning());
}

}  // namespace
