// The timing that all shots share.
#include "korvane/shot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "korvane/camera_parameters.h"
#include "support/random.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

constexpr double PI = 3.14159265358979323846;

// Half a sine wave: (sin((x - 1/2) pi) + 1) / 2 is (1 - cos(pi x)) / 2, a squared sine.
double Ease(double x) {
  const double sine = std::sin(PI * x / 2.0);
  return sine * sine;
}

// A shot that does nothing but keep time.
class Stopwatch : public Shot {
 public:
  explicit Stopwatch(double durationValue, double easeEndValue = 1.0)
      : duration(durationValue), easeEnd(easeEndValue) {}

  bool PerformShot(double dt, CameraParameters& /*camera*/) override {
    return EndStep(dt, BeginStep(duration, easeEnd));
  }
  bool PerformLinearly(double dt) { return EndStep(dt, BeginLinearStep(duration)); }
  bool Step(double dt) { return PerformShot(dt, unused); }

 private:
  double duration;
  double easeEnd;
  CameraParameters unused;
};

}  // namespace

TEST(ShotTiming, virtual_operations_stand_in_slot_order) {
  EXPECT_EQ(VirtualSlot(&Shot::InitShot), 2);  // the destructor takes the first two places
  EXPECT_EQ(VirtualSlot(&Shot::PerformShot), 3);
  EXPECT_EQ(VirtualSlot(&Shot::GetElapsedTime), 4);
  EXPECT_EQ(VirtualSlot(&Shot::GetUnitTime), 5);
}

TEST(ShotTiming, anchors_have_their_numbers) {
  EXPECT_EQ(TARGET_CAM_START, 0);
  EXPECT_EQ(TARGET_CAM_MIDDLE, 1);
  EXPECT_EQ(TARGET_CAM_END, 2);
}

TEST(ShotTiming, starts_at_no_time_and_no_progress) {
  const Stopwatch shot(1.0);
  EXPECT_EQ(shot.GetElapsedTime(), 0.0);
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
}

TEST(ShotTiming, the_first_step_is_the_start_of_the_move_and_the_time_passes_after_it) {
  Stopwatch shot(1.0);
  EXPECT_TRUE(shot.Step(0.25));
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
  EXPECT_EQ(shot.GetElapsedTime(), 0.25);
}

TEST(ShotTiming, unit_time_is_the_eased_value_of_the_step_and_elapsed_time_already_includes_its_dt) {
  Stopwatch shot(2.0);
  shot.Step(0.5);
  shot.Step(0.75);
  EXPECT_NEAR(shot.GetUnitTime(), Ease(0.25), 1e-15);
  EXPECT_EQ(shot.GetElapsedTime(), 1.25);
  shot.Step(0.0);
  EXPECT_NEAR(shot.GetUnitTime(), Ease(0.625), 1e-15);
}

TEST(ShotTiming, a_shot_runs_for_its_duration_plus_one_frame) {
  Stopwatch shot(1.0);
  int frames = 0;
  while (shot.Step(0.125)) ++frames;
  EXPECT_EQ(frames, 8);  // at 0, 1/8 ... 7/8; the ninth finds the time run out
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
  EXPECT_EQ(shot.GetElapsedTime(), 9 * 0.125);
}

TEST(ShotTiming, the_end_is_reached_exactly_at_the_duration) {
  Stopwatch shot(1.0);
  shot.Step(std::nextafter(1.0, 0.0));
  EXPECT_TRUE(shot.Step(0.0));
  Stopwatch ended(1.0);
  ended.Step(1.0);
  EXPECT_FALSE(ended.Step(0.0));
}

TEST(ShotTiming, half_the_duration_is_half_the_way) {
  Stopwatch shot(3.0);
  shot.Step(1.5);
  shot.Step(0.0);
  EXPECT_EQ(shot.GetUnitTime(), 0.5);
}

TEST(ShotTiming, a_duration_of_0_makes_the_first_step_the_last) {
  Stopwatch shot(0.0);
  EXPECT_FALSE(shot.Step(0.016));
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
  EXPECT_EQ(shot.GetElapsedTime(), 0.016);
}

TEST(ShotTiming, a_duration_below_0_or_that_is_no_number_makes_the_first_step_the_last) {
  for (const double duration :
       {-1.0, -1e300, std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()}) {
    Stopwatch shot(duration);
    EXPECT_FALSE(shot.Step(0.0)) << duration;
    EXPECT_EQ(shot.GetUnitTime(), 1.0) << duration;
  }
}

TEST(ShotTiming, an_infinite_duration_stays_at_the_start) {
  Stopwatch shot(std::numeric_limits<double>::infinity());
  EXPECT_TRUE(shot.Step(1e300));
  EXPECT_TRUE(shot.Step(0.0));
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
}

TEST(ShotTiming, with_an_ease_end_of_one_half_it_arrives_at_half_the_duration_and_goes_on_until_its_end) {
  Stopwatch shot(2.0, 0.5);
  shot.Step(0.5);
  EXPECT_TRUE(shot.Step(0.5));
  EXPECT_NEAR(shot.GetUnitTime(), 0.5, 1e-15);  // a quarter of the duration, half of the eased part
  EXPECT_TRUE(shot.Step(0.5));
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
  EXPECT_TRUE(shot.Step(0.5));
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
  EXPECT_FALSE(shot.Step(0.5));
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
}

TEST(ShotTiming, an_ease_end_of_0_arrives_with_the_second_step) {
  Stopwatch shot(1.0, 0.0);
  EXPECT_TRUE(shot.Step(0.001));
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
  EXPECT_TRUE(shot.Step(0.001));
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
}

TEST(ShotTiming, a_linear_step_does_not_ease) {
  Stopwatch shot(4.0);
  EXPECT_TRUE(shot.PerformLinearly(1.0));
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
  EXPECT_TRUE(shot.PerformLinearly(2.0));
  EXPECT_EQ(shot.GetUnitTime(), 0.25);
  EXPECT_TRUE(shot.PerformLinearly(2.0));
  EXPECT_EQ(shot.GetUnitTime(), 0.75);
  EXPECT_FALSE(shot.PerformLinearly(0.0));
  EXPECT_EQ(shot.GetUnitTime(), 1.0);
}

TEST(ShotTiming, time_before_the_start_counts_as_the_start) {
  Stopwatch shot(1.0);
  shot.Step(-5.0);
  EXPECT_TRUE(shot.Step(0.0));
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
  EXPECT_TRUE(shot.PerformLinearly(0.0));
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
}

TEST(ShotTiming, a_step_that_is_not_finite_passes_no_time) {
  Stopwatch shot(1.0);
  for (const double dt : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(), 0.5}) {
    EXPECT_TRUE(shot.Step(dt));
  }
  EXPECT_EQ(shot.GetElapsedTime(), 0.5);
}

TEST(ShotTiming, random_durations_and_ease_ends_follow_the_sine) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const double duration = random.Magnitude(1e-3, 1e3);
    const double easeEnd = random.Uniform(0.01, 1.0);
    const double fraction = random.Uniform(0.0, 1.2);
    Stopwatch shot(duration, easeEnd);
    shot.Step(fraction * duration);
    const bool goesOn = shot.Step(0.0);
    ASSERT_EQ(goesOn, fraction * duration < duration);
    const double expected = fraction >= easeEnd ? 1.0 : Ease(fraction / easeEnd);
    ASSERT_NEAR(shot.GetUnitTime(), expected, 1e-13) << fraction << " of " << easeEnd;
  }
}

TEST(ShotTiming, the_base_takes_a_hub_or_none_and_changes_nothing) {
  Stopwatch shot(1.0);
  shot.InitShot(nullptr);
  EXPECT_EQ(shot.GetElapsedTime(), 0.0);
  EXPECT_EQ(shot.GetUnitTime(), 0.0);
}
