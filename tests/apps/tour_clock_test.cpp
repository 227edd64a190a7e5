#include "stories/tour_clock.h"

#include <gtest/gtest.h>

#include "korvane/interval_timer.h"

namespace {

class Alarm : public Korvane::IntervalTimer {
 public:
  void Timeout() override {
    ++count;
    if (count == stopAt) Stop();
  }
  int count = 0;
  int stopAt = -1;
};

TEST(tour_clock, sixty_frames_are_a_second) {
  zovview::TourClock clock;
  const std::uint32_t start = clock.GetTickCount();
  for (int i = 0; i < 60; ++i) clock.Advance();
  EXPECT_EQ(clock.GetTickCount() - start, 1000U);
}

TEST(tour_clock, is_the_platform_while_it_lives) {
  Korvane::Platform* const usual = &Korvane::GetPlatform();
  {
    zovview::TourClock clock;
    EXPECT_EQ(&Korvane::GetPlatform(), &clock);
  }
  EXPECT_EQ(&Korvane::GetPlatform(), usual);
}

TEST(tour_clock, runs_timers_in_its_own_time) {
  zovview::TourClock clock;
  Alarm once;
  Alarm often;
  ASSERT_TRUE(once.Start(0.1, false));
  ASSERT_TRUE(often.Start(0.1, true));
  for (int i = 0; i < 5; ++i) clock.Advance();
  EXPECT_EQ(once.count, 0);
  for (int i = 0; i < 31; ++i) clock.Advance();
  EXPECT_EQ(once.count, 1);
  EXPECT_GE(often.count, 5);
}

TEST(tour_clock, a_timer_may_stop_itself) {
  zovview::TourClock clock;
  Alarm alarm;
  alarm.stopAt = 2;
  ASSERT_TRUE(alarm.Start(0.05, true));
  for (int i = 0; i < 60; ++i) clock.Advance();
  EXPECT_EQ(alarm.count, 2);
}

}  // namespace
