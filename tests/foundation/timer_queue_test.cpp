#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <limits>
#include <map>
#include <thread>
#include <vector>

#include "korvane/platform.h"
#include "support/random.h"

namespace {

using namespace std::chrono_literals;
using Korvane::TimerQueue;

// A timer message carries nothing but its identifier, so what it runs is looked up here.
std::map<std::uint64_t, std::function<void()>>& Actions() {
  static std::map<std::uint64_t, std::function<void()>> actions;
  return actions;
}

std::vector<std::uint64_t>& Calls() {
  static std::vector<std::uint64_t> calls;
  return calls;
}

void Proc(void* window, unsigned message, std::uint64_t timerID, std::uint32_t /*time*/) {
  EXPECT_EQ(window, nullptr);
  EXPECT_EQ(message, 0U);
  Calls().push_back(timerID);
  const auto found = Actions().find(timerID);
  if (found != Actions().end()) std::function<void()>(found->second)();
}

// A queue whose time moves only when the test says so.
class TimerQueueTest : public ::testing::Test {
 protected:
  TimerQueueTest() {
    Actions().clear();
    Calls().clear();
  }

  std::uint64_t Set(std::uint32_t period) { return queue.SetTimer(period, &Proc); }
  void Pass(std::chrono::nanoseconds time) { now += time; }

  std::chrono::nanoseconds now{12345678};
  TimerQueue queue{[this] { return now; }};
};

TEST_F(TimerQueueTest, counts_whole_milliseconds_from_one) {
  EXPECT_EQ(queue.GetTickCount(), 1U);
  Pass(19ms + 999999ns);
  EXPECT_EQ(queue.GetTickCount(), 20U);
  Pass(1ns);
  EXPECT_EQ(queue.GetTickCount(), 21U);
}

TEST_F(TimerQueueTest, goes_by_the_wall_when_no_clock_is_set) {
  // Only that time passes at all is certain.
  TimerQueue usual;
  const std::uint32_t start = usual.GetTickCount();
  EXPECT_GE(start, 1U);
  while (usual.GetTickCount() == start) std::this_thread::yield();
  EXPECT_GT(usual.GetTickCount(), start);
}

TEST_F(TimerQueueTest, keeps_what_has_passed_and_what_is_left_when_the_clock_changes) {
  Set(100);
  Pass(30ms);
  auto other = std::chrono::nanoseconds(1h);
  queue.SetClock([&other] { return other; });
  EXPECT_EQ(queue.GetTickCount(), 31U);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 70);
  Pass(1h);  // on the old clock
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 70);
  other += 70ms;
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 0);
  EXPECT_EQ(queue.GetTickCount(), 101U);
  queue.SetClock(nullptr);
  EXPECT_GE(queue.GetTickCount(), 101U);
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, names_timers_by_numbers_above_zero_that_do_not_come_back) {
  const std::uint64_t first = Set(1000);
  queue.KillTimer(first);
  const std::uint64_t second = Set(1000);
  EXPECT_NE(first, 0U);
  EXPECT_NE(second, 0U);
  EXPECT_NE(first, second);
}

TEST_F(TimerQueueTest, refuses_a_timer_that_calls_nothing) {
  EXPECT_EQ(queue.SetTimer(100, nullptr), 0U);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), -1);
}

TEST_F(TimerQueueTest, kills_a_timer_once) {
  const std::uint64_t timer = Set(1000);
  EXPECT_TRUE(queue.KillTimer(timer));
  EXPECT_FALSE(queue.KillTimer(timer));
  EXPECT_FALSE(queue.KillTimer(0));
}

TEST_F(TimerQueueTest, runs_a_timer_when_its_period_has_passed_and_not_before) {
  Set(60);
  Pass(60ms - 1ns);
  EXPECT_EQ(queue.DispatchTimers(), 0);
  EXPECT_TRUE(Calls().empty());
  Pass(1ns);
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, tells_what_an_event_wait_may_sleep) {
  EXPECT_EQ(queue.MillisecondsToNextTimer(), -1);
  Set(60);
  const std::uint64_t sooner = Set(30);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 30);
  queue.KillTimer(sooner);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 60);
  Pass(60ms);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 0);
  Pass(60ms);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 0);
}

TEST_F(TimerQueueTest, has_a_timer_due_after_the_sleep_it_asked_for) {
  Set(15);
  Pass(300us);  // 14.7 ms are left, and a wait knows whole ones
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 15);
  Pass(15ms);
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, holds_the_longest_period_without_overflow) {
  Set(0xFFFFFFFF);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), std::numeric_limits<int>::max());
  EXPECT_EQ(queue.DispatchTimers(), 0);
}

TEST_F(TimerQueueTest, raises_a_short_period_to_its_minimum) {
  Set(0);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), static_cast<int>(TimerQueue::MINIMUM_PERIOD));
  Pass(std::chrono::milliseconds(TimerQueue::MINIMUM_PERIOD));
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, repeats_until_killed) {
  const std::uint64_t timer = Set(10);
  for (int i = 0; i < 3; ++i) {
    Pass(12ms);
    EXPECT_EQ(queue.DispatchTimers(), 1);
    EXPECT_EQ(queue.MillisecondsToNextTimer(), 10);  // counted from the run
  }
  queue.KillTimer(timer);
  Pass(12ms);
  EXPECT_EQ(queue.DispatchTimers(), 0);
}

TEST_F(TimerQueueTest, runs_a_timer_late_by_several_periods_once) {
  Set(10);
  Pass(45ms);
  EXPECT_EQ(queue.DispatchTimers(), 1);
  EXPECT_EQ(queue.DispatchTimers(), 0);
}

TEST_F(TimerQueueTest, runs_what_is_due_in_the_order_of_the_due_times) {
  std::map<std::uint64_t, std::chrono::nanoseconds> due;
  Random random;
  for (int i = 0; i < 50; ++i) {
    const auto period = static_cast<std::uint32_t>(10 * random.Integer(1, 4));
    due[Set(period)] = now + std::chrono::milliseconds(period);
    Pass(std::chrono::microseconds(100));
  }
  Pass(60ms);
  EXPECT_EQ(queue.DispatchTimers(), 50);
  ASSERT_EQ(Calls().size(), 50U);
  for (std::size_t i = 1; i < Calls().size(); ++i) EXPECT_LE(due[Calls()[i - 1]], due[Calls()[i]]) << i;
}

TEST_F(TimerQueueTest, lets_what_it_calls_kill_its_own_timer) {
  const std::uint64_t timer = Set(10);
  Actions()[timer] = [&] { EXPECT_TRUE(queue.KillTimer(timer)); };
  Pass(15ms);
  EXPECT_EQ(queue.DispatchTimers(), 1);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), -1);
}

TEST_F(TimerQueueTest, does_not_run_a_due_timer_that_an_earlier_one_killed) {
  const std::uint64_t first = Set(10);
  const std::uint64_t second = Set(15);
  Actions()[first] = [&] { queue.KillTimer(second); };
  Pass(20ms);
  EXPECT_EQ(queue.DispatchTimers(), 1);
  EXPECT_EQ(Calls(), std::vector<std::uint64_t>{first});
}

TEST_F(TimerQueueTest, runs_a_timer_that_was_set_during_a_dispatch_in_a_later_one) {
  const std::uint64_t timer = Set(10);
  Actions()[timer] = [&] {
    if (Calls().size() > 1) return;
    // Many, so that the storage of the queue moves under the running dispatch; and time for them to fall
    // due before it ends.
    for (int i = 0; i < 100; ++i) Set(0);
    Pass(15ms);
  };
  Pass(15ms);
  EXPECT_EQ(queue.DispatchTimers(), 1);
  EXPECT_EQ(queue.DispatchTimers(), 101);  // and the first one again
}

}  // namespace
