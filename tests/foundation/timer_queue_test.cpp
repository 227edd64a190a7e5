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

class TimerQueueTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Actions().clear();
    Calls().clear();
  }

  std::uint64_t Set(std::uint32_t milliseconds) { return queue.SetTimer(milliseconds, &Proc); }

  // Longer than asked on a busy machine, never shorter.
  static void Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }

  TimerQueue queue;
};

TEST_F(TimerQueueTest, counts_milliseconds_from_one) {
  const std::uint32_t first = queue.GetTickCount();
  EXPECT_GE(first, 1U);
  Sleep(20);
  EXPECT_GE(queue.GetTickCount(), first + 20);
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

TEST_F(TimerQueueTest, runs_nothing_before_its_time) {
  Set(60000);
  EXPECT_EQ(queue.DispatchTimers(), 0);
  EXPECT_TRUE(Calls().empty());
}

TEST_F(TimerQueueTest, tells_what_an_event_wait_may_sleep) {
  EXPECT_EQ(queue.MillisecondsToNextTimer(), -1);
  Set(60000);
  const std::uint64_t sooner = Set(30000);
  EXPECT_GT(queue.MillisecondsToNextTimer(), 0);
  EXPECT_LE(queue.MillisecondsToNextTimer(), 30000);
  queue.KillTimer(sooner);
  EXPECT_GT(queue.MillisecondsToNextTimer(), 30000);
}

TEST_F(TimerQueueTest, says_zero_while_something_is_due) {
  Set(TimerQueue::MINIMUM_PERIOD);
  Sleep(20);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), 0);
}

TEST_F(TimerQueueTest, has_a_timer_due_after_the_sleep_it_asked_for) {
  Set(15);
  Sleep(queue.MillisecondsToNextTimer());
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, holds_the_longest_period_without_overflow) {
  Set(0xFFFFFFFF);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), std::numeric_limits<int>::max());
  EXPECT_EQ(queue.DispatchTimers(), 0);
}

TEST_F(TimerQueueTest, raises_a_short_period_to_its_minimum) {
  Set(0);
  const int wait = queue.MillisecondsToNextTimer();
  EXPECT_GE(wait, 0);
  EXPECT_LE(wait, static_cast<int>(TimerQueue::MINIMUM_PERIOD));
  Sleep(static_cast<int>(TimerQueue::MINIMUM_PERIOD) + 5);
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, repeats_until_killed) {
  const std::uint64_t timer = Set(10);
  for (int i = 0; i < 3; ++i) {
    Sleep(12);
    EXPECT_EQ(queue.DispatchTimers(), 1);
  }
  queue.KillTimer(timer);
  Sleep(12);
  EXPECT_EQ(queue.DispatchTimers(), 0);
}

TEST_F(TimerQueueTest, runs_a_timer_late_by_several_periods_once) {
  Set(10);
  Sleep(45);
  EXPECT_EQ(queue.DispatchTimers(), 1);
}

TEST_F(TimerQueueTest, runs_what_is_due_in_the_order_of_the_due_times) {
  // A timer falls due its period after some moment within the call that set it; on a busy machine such a
  // call may take long, so only bounds are known.
  using Clock = std::chrono::steady_clock;
  struct Bounds {
    Clock::time_point earliest;
    Clock::time_point latest;
  };
  std::map<std::uint64_t, Bounds> due;
  Random random;
  for (int i = 0; i < 50; ++i) {
    const auto period = static_cast<std::uint32_t>(10 * random.Integer(1, 4));
    const Clock::time_point before = Clock::now();
    const std::uint64_t timer = Set(period);
    due[timer] = {before + std::chrono::milliseconds(period),
                  Clock::now() + std::chrono::milliseconds(period)};
  }
  Sleep(60);
  EXPECT_EQ(queue.DispatchTimers(), 50);
  ASSERT_EQ(Calls().size(), 50U);
  for (std::size_t i = 0; i + 1 < Calls().size(); ++i) {
    for (std::size_t j = i + 1; j < Calls().size(); ++j) {
      EXPECT_TRUE(due[Calls()[i]].earliest <= due[Calls()[j]].latest) << i << " ran before " << j;
    }
  }
}

TEST_F(TimerQueueTest, lets_what_it_calls_kill_its_own_timer) {
  const std::uint64_t timer = Set(10);
  Actions()[timer] = [&] { EXPECT_TRUE(queue.KillTimer(timer)); };
  Sleep(15);
  EXPECT_EQ(queue.DispatchTimers(), 1);
  EXPECT_EQ(queue.MillisecondsToNextTimer(), -1);
}

TEST_F(TimerQueueTest, does_not_run_a_due_timer_that_an_earlier_one_killed) {
  const std::uint64_t first = Set(10);
  const std::uint64_t second = Set(15);
  Actions()[first] = [&] { queue.KillTimer(second); };
  Sleep(20);
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
    Sleep(15);
  };
  Sleep(15);
  EXPECT_EQ(queue.DispatchTimers(), 1);
  EXPECT_GE(queue.DispatchTimers(), 100);
}

}  // namespace
