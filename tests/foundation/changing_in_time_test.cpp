#include "korvane/changing_in_time.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/allocation_counter.h"
#include "support/manual_platform.h"
#include "support/random.h"

namespace {

using Korvane::ChangingInTimeValue;
using Korvane::ChangingInTimeValueChain;
using Korvane::INTERPOLATION_EASED;
using Korvane::INTERPOLATION_LINEAR;
using Korvane::InterpolationMethod;

// The clock reads seconds of about 1 to 100 and subtracts them: 1.4e-14 a step, times spans up to 100 and a
// few dozen steps.
constexpr double TOLERANCE = 1e-10;

ChangingInTimeValue Linear(double initial, double final, double seconds) {
  return {initial, final, seconds, INTERPOLATION_LINEAR};
}

class ChangingInTimeValueTest : public ::testing::Test {
 protected:
  ManualPlatform platform;
};

// ---- the value at rest ----

TEST_F(ChangingInTimeValueTest, interpolation_methods_have_their_numbers) {
  EXPECT_EQ(int{INTERPOLATION_LINEAR}, 0);
  EXPECT_EQ(int{INTERPOLATION_EASED}, 1);
}

TEST_F(ChangingInTimeValueTest, a_value_from_nothing_rests_at_zero) {
  const ChangingInTimeValue value;
  EXPECT_EQ(value.GetValue(), 0.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_value_from_nothing_is_linear_and_takes_no_time) {
  ChangingInTimeValue value;
  value += 8.0;  // both ends
  value.Start();
  EXPECT_EQ(value.GetValue(), 8.0);
  platform.Advance(1);
  EXPECT_EQ(value.GetValue(), 8.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_value_from_a_number_rests_there) {
  const ChangingInTimeValue value(7.5);
  EXPECT_EQ(value.GetValue(), 7.5);
  EXPECT_EQ(static_cast<double>(value), 7.5);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_value_made_with_both_ends_does_not_start) {
  const ChangingInTimeValue value = Linear(1.0, 9.0, 1.0);
  EXPECT_FALSE(value.IsChangingInTime());
  platform.Advance(500);
  EXPECT_EQ(value.GetValue(), 9.0);
}

TEST_F(ChangingInTimeValueTest, a_value_at_rest_does_not_read_the_clock) {
  const ChangingInTimeValue value(7.5);
  value.GetValue();
  EXPECT_EQ(platform.GetClockReads(), 0);
}

TEST_F(ChangingInTimeValueTest, set_value_leaves_the_initial_value) {
  ChangingInTimeValue value = Linear(2.0, 9.0, 1.0);
  value.SetValue(4.0);
  EXPECT_EQ(value.GetValue(), 4.0);
  value.Start();
  EXPECT_EQ(value.GetValue(), 2.0);
  platform.Advance(500);
  EXPECT_NEAR(value.GetValue(), 3.0, TOLERANCE);
}

TEST_F(ChangingInTimeValueTest, set_value_stops_a_running_value) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(500);
  value.SetValue(3.0);
  EXPECT_FALSE(value.IsChangingInTime());
  EXPECT_EQ(value.GetValue(), 3.0);
}

TEST_F(ChangingInTimeValueTest, assigning_a_number_is_set_value) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  value = 3.0;
  EXPECT_FALSE(value.IsChangingInTime());
  EXPECT_EQ(value.GetValue(), 3.0);
}

TEST_F(ChangingInTimeValueTest, set_value_with_both_ends_stops_and_does_not_start) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  value.SetValue(100.0, 200.0, 2.0, INTERPOLATION_LINEAR);
  EXPECT_FALSE(value.IsChangingInTime());
  EXPECT_EQ(value.GetValue(), 200.0);
  value.Start();
  platform.Advance(500);
  EXPECT_NEAR(value.GetValue(), 125.0, TOLERANCE);
}

// ---- the running value ----

TEST_F(ChangingInTimeValueTest, a_linear_value_moves_evenly) {
  ChangingInTimeValue value;
  value.Start(10.0, 30.0, 2.0, INTERPOLATION_LINEAR);
  EXPECT_TRUE(value.IsChangingInTime());
  EXPECT_EQ(value.GetValue(), 10.0);
  platform.Advance(500);
  EXPECT_NEAR(value.GetValue(), 15.0, TOLERANCE);
  platform.Advance(1000);
  EXPECT_NEAR(value.GetValue(), 25.0, TOLERANCE);
}

TEST_F(ChangingInTimeValueTest,
       an_eased_value_from_0_to_10_over_1_s_reads_5_at_half_a_second_and_10_after_1_s) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_EASED);
  platform.Advance(500);
  EXPECT_NEAR(value.GetValue(), 5.0, TOLERANCE);
  EXPECT_TRUE(value.IsChangingInTime());
  platform.Advance(501);
  EXPECT_EQ(value.GetValue(), 10.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, an_eased_value_follows_half_a_sine_wave) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_EASED);
  platform.Advance(250);
  // (sin(-PI / 4) + 1) / 2 of the way.
  EXPECT_NEAR(value.GetValue(), 5.0 * (1.0 - std::sqrt(0.5)), TOLERANCE);
}

TEST_F(ChangingInTimeValueTest, a_value_with_an_unknown_method_is_linear) {
  ChangingInTimeValue value;
  for (const int method : {2, -1, 12345}) {
    value.Start(0.0, 10.0, 1.0, static_cast<InterpolationMethod>(method));
    platform.Advance(250);
    EXPECT_NEAR(value.GetValue(), 2.5, TOLERANCE) << method;
  }
}

TEST_F(ChangingInTimeValueTest, a_value_is_still_changing_at_exactly_its_time_and_at_rest_after_it) {
  ChangingInTimeValue value;
  // 1.0 s to 1.25 s and 0.25 are exact in binary.
  value.Start(0.0, 10.0, 0.25, INTERPOLATION_LINEAR);
  platform.Advance(250);
  EXPECT_EQ(value.GetValue(), 10.0);
  EXPECT_TRUE(value.IsChangingInTime());
  platform.Advance(1);
  EXPECT_EQ(value.GetValue(), 10.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_value_may_be_read_as_rarely_as_one_likes) {
  ChangingInTimeValue often = Linear(0.0, 10.0, 1.0);
  ChangingInTimeValue rarely = often;
  often.Start();
  rarely.Start();
  for (int i = 0; i < 70; ++i) {
    platform.Advance(10);
    often.GetValue();
  }
  EXPECT_NEAR(often.GetValue(), 7.0, TOLERANCE);
  EXPECT_NEAR(rarely.GetValue(), 7.0, TOLERANCE);
}

TEST_F(ChangingInTimeValueTest, is_changing_in_time_does_not_advance) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(5000);
  const int reads = platform.GetClockReads();
  EXPECT_TRUE(value.IsChangingInTime());
  EXPECT_EQ(platform.GetClockReads(), reads);
  value.GetValue();
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, two_reads_in_the_same_clock_tick_return_the_same_value) {
  for (const InterpolationMethod method : {INTERPOLATION_LINEAR, INTERPOLATION_EASED}) {
    ChangingInTimeValue value;
    value.Start(0.0, 10.0, 1.0, method);
    platform.Advance(300);
    const double first = value.GetValue();
    EXPECT_EQ(value.GetValue(), first);
    EXPECT_EQ(value.GetValue(), first);
    platform.Advance(300);
    EXPECT_GT(value.GetValue(), first);
  }
}

TEST_F(ChangingInTimeValueTest, stop_on_a_running_value_makes_the_next_read_return_the_final_value) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(200);
  value.GetValue();
  value.Stop();
  EXPECT_FALSE(value.IsChangingInTime());
  EXPECT_EQ(value.GetValue(), 10.0);
}

TEST_F(ChangingInTimeValueTest, start_on_a_running_value_begins_anew) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(600);
  value.GetValue();
  value.Start();
  EXPECT_EQ(value.GetValue(), 0.0);
  platform.Advance(600);
  EXPECT_NEAR(value.GetValue(), 6.0, TOLERANCE);
}

TEST_F(ChangingInTimeValueTest,
       a_value_of_no_time_yields_the_initial_value_in_its_tick_and_the_final_one_after_it) {
  ChangingInTimeValue value;
  value.Start(3.0, 8.0, 0.0, INTERPOLATION_LINEAR);
  EXPECT_EQ(value.GetValue(), 3.0);
  EXPECT_TRUE(value.IsChangingInTime());
  platform.Advance(1);
  EXPECT_EQ(value.GetValue(), 8.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_value_of_negative_time_is_at_its_end_at_once) {
  ChangingInTimeValue value;
  value.Start(3.0, 8.0, -1.0, INTERPOLATION_EASED);
  EXPECT_EQ(value.GetValue(), 8.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_value_whose_time_is_no_number_is_at_its_end_at_once) {
  ChangingInTimeValue value;
  value.Start(3.0, 8.0, std::nan(""), INTERPOLATION_LINEAR);
  EXPECT_EQ(value.GetValue(), 8.0);
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, a_read_of_a_running_value_looks_at_the_clock_once) {
  ChangingInTimeValue value;
  value.Start(3.0, 8.0, 1.0, INTERPOLATION_LINEAR);
  for (int i = 0; i < 3; ++i) {
    platform.Advance(400);
    const int reads = platform.GetClockReads();
    value.GetValue();
    EXPECT_EQ(platform.GetClockReads(), reads + 1);
  }
  EXPECT_FALSE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, each_read_of_a_chain_looks_at_the_clock_at_most_once) {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 1.0, 0.1));
  chain.Add(Linear(1.0, 2.0, 0.1));
  chain.Start();
  for (int i = 0; i < 20; ++i) {
    platform.Advance(30);
    const int reads = platform.GetClockReads();
    chain.GetValue();
    EXPECT_LE(platform.GetClockReads(), reads + 1) << i;
  }
}

TEST_F(ChangingInTimeValueTest, a_copy_of_a_running_value_goes_on_by_itself) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(300);
  value.GetValue();
  ChangingInTimeValue copy(value);
  value.Stop();
  EXPECT_TRUE(copy.IsChangingInTime());
  platform.Advance(300);
  EXPECT_NEAR(copy.GetValue(), 6.0, TOLERANCE);
  EXPECT_EQ(value.GetValue(), 10.0);
}

TEST_F(ChangingInTimeValueTest, a_value_across_the_wrap_of_the_clock_holds_its_initial_value) {
  ManualPlatform late(0xFFFFFFFF - 99);
  {
    ChangingInTimeValue value;
    value.Start(3.0, 8.0, 1.0, INTERPOLATION_EASED);
    late.Advance(500);
    // The interval comes out as minus 49 days, and no progress lies below 0.
    EXPECT_EQ(value.GetValue(), 3.0);
    EXPECT_TRUE(value.IsChangingInTime());
    value.Stop();
    EXPECT_EQ(value.GetValue(), 8.0);
  }
}

TEST_F(ChangingInTimeValueTest, a_value_moves_one_way_and_stays_between_its_ends_however_it_is_read) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    const double initial = random.Uniform(-100.0, 100.0);
    const double final = random.Uniform(-100.0, 100.0);
    const InterpolationMethod method = random.Coin() ? INTERPOLATION_LINEAR : INTERPOLATION_EASED;
    ChangingInTimeValue value;
    value.Start(initial, final, random.Magnitude(0.01, 3.0), method);
    const double sense = final < initial ? -1.0 : 1.0;
    double previous = initial;
    while (value.IsChangingInTime()) {
      platform.Advance(static_cast<std::uint32_t>(random.Integer(0, 100)));
      const double now = value.GetValue();
      // At the very end the curve may pass the final value by the rounding of one sum.
      ASSERT_GE((now - previous) * sense, -1e-12) << i;
      ASSERT_LE((now - final) * sense, 1e-12) << i;
      previous = now;
    }
    ASSERT_EQ(value.GetValue(), final) << i;
  }
}

// ---- arithmetic on a value ----

TEST_F(ChangingInTimeValueTest, multiplying_a_running_value_from_0_to_10_by_2_makes_it_run_to_20_in_step) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(250);
  EXPECT_NEAR(value.GetValue(), 2.5, TOLERANCE);
  value *= 2.0;
  EXPECT_NEAR(value.GetValue(), 5.0, TOLERANCE);
  platform.Advance(500);
  EXPECT_NEAR(value.GetValue(), 15.0, TOLERANCE);
  platform.Advance(251);
  EXPECT_EQ(value.GetValue(), 20.0);
}

TEST_F(ChangingInTimeValueTest, arithmetic_moves_both_ends_of_a_value) {
  ChangingInTimeValue value;
  value.Start(8.0, 16.0, 1.0, INTERPOLATION_LINEAR);
  value += 4.0;
  EXPECT_EQ(value.GetValue(), 12.0);
  value -= 2.0;
  EXPECT_EQ(value.GetValue(), 10.0);
  value /= 2.0;
  EXPECT_EQ(value.GetValue(), 5.0);
  value *= 3.0;
  EXPECT_EQ(value.GetValue(), 15.0);
  EXPECT_TRUE(value.IsChangingInTime());
  value.Stop();
  // (16 + 4 - 2) / 2 * 3
  EXPECT_EQ(value.GetValue(), 27.0);
}

TEST_F(ChangingInTimeValueTest, two_operand_arithmetic_works_on_a_copy) {
  ChangingInTimeValue value;
  value.Start(8.0, 16.0, 1.0, INTERPOLATION_LINEAR);
  ChangingInTimeValue results[] = {value * 2.0, value / 2.0, value + 2.0, value - 2.0};
  const double initial[] = {16.0, 4.0, 10.0, 6.0};
  const double final[] = {32.0, 8.0, 18.0, 14.0};
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(results[i].IsChangingInTime()) << i;
    EXPECT_EQ(results[i].GetValue(), initial[i]) << i;
    results[i].Stop();
    EXPECT_EQ(results[i].GetValue(), final[i]) << i;
  }
  EXPECT_EQ(value.GetValue(), 8.0);
  EXPECT_TRUE(value.IsChangingInTime());
}

TEST_F(ChangingInTimeValueTest, arithmetic_and_comparison_take_any_built_in_number) {
  const ChangingInTimeValue value(6.0);
  const ChangingInTimeValueChain chain(6.0);
  EXPECT_EQ((value * 2).GetValue(), 12.0);
  EXPECT_EQ((chain / 2).GetValue(), 3.0);
  EXPECT_EQ((value + 2.0F).GetValue(), 8.0);
  EXPECT_EQ((chain - 2U).GetValue(), 4.0);
  EXPECT_TRUE(value < 7);
  EXPECT_TRUE(chain <= 6);
  EXPECT_TRUE(value >= 6.0F);
  EXPECT_FALSE(chain > 6L);
}

TEST_F(ChangingInTimeValueTest, comparing_a_value_reads_it_and_so_advances_it) {
  ChangingInTimeValue value;
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_LINEAR);
  platform.Advance(250);
  EXPECT_TRUE(value < 2.6);
  EXPECT_FALSE(value < 2.4);
  EXPECT_TRUE(value > 2.4);
  EXPECT_FALSE(value > 2.6);
  EXPECT_TRUE(value <= 2.6);
  EXPECT_TRUE(value >= 2.4);
  platform.Advance(2000);
  EXPECT_TRUE(value <= 10.0);
  EXPECT_FALSE(value.IsChangingInTime());
  EXPECT_FALSE(value < 10.0);
  EXPECT_FALSE(value > 10.0);
  EXPECT_TRUE(value >= 10.0);
}

TEST_F(ChangingInTimeValueTest, a_read_allocates_nothing) {
  ChangingInTimeValue value;
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 1.0, 0.1));
  chain.Add(Linear(1.0, 2.0, 0.1));
  value.Start(0.0, 10.0, 1.0, INTERPOLATION_EASED);
  chain.Start();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    platform.AdvanceWithoutTimers(10);
    value.GetValue();
    chain.GetValue();
    chain.IsChangingInTime();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  // The counter is awake: this one is seen.
  chain.Add(ChangingInTimeValue(1.0));
  EXPECT_GT(counter.GetAllocations(), 0U);
}

}  // namespace
