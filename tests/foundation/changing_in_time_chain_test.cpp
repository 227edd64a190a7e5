#include "korvane/changing_in_time.h"

#include <gtest/gtest.h>

#include "support/manual_platform.h"

namespace {

using Korvane::ChangingInTimeValue;
using Korvane::ChangingInTimeValueChain;
using Korvane::INTERPOLATION_LINEAR;

// The clock reads seconds of about 1 to 100 and subtracts them: 1.4e-14 a step, times spans up to 100 and a
// few dozen steps.
constexpr double TOLERANCE = 1e-10;

ChangingInTimeValue Linear(double initial, double final, double seconds) {
  return {initial, final, seconds, INTERPOLATION_LINEAR};
}

class ChangingInTimeChainTest : public ::testing::Test {
 protected:
  ManualPlatform platform;
};

ChangingInTimeValueChain TwoSeconds() {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 10.0, 1.0));
  chain.Add(Linear(100.0, 200.0, 1.0));
  return chain;
}

TEST_F(ChangingInTimeChainTest, get_value_of_an_empty_chain_is_zero) {
  ChangingInTimeValueChain chain;
  EXPECT_EQ(chain.GetValue(), 0.0);
  EXPECT_EQ(static_cast<double>(chain), 0.0);
  EXPECT_EQ(chain.GetCount(), 0);
  EXPECT_FALSE(chain.IsChangingInTime());
}

TEST_F(ChangingInTimeChainTest, start_and_stop_of_an_empty_chain_do_nothing) {
  ChangingInTimeValueChain chain;
  chain.Start();
  chain.Stop();
  EXPECT_EQ(chain.GetValue(), 0.0);
  // The start was not kept: what is added later is at rest.
  chain.Add(Linear(1.0, 2.0, 1.0));
  EXPECT_EQ(chain.GetValue(), 2.0);
  EXPECT_FALSE(chain.IsChangingInTime());
}

TEST_F(ChangingInTimeChainTest, a_value_whose_time_is_over_at_once_is_followed_by_the_next) {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 10.0, -1.0));
  chain.Add(Linear(100.0, 200.0, 1.0));
  chain.Start();
  EXPECT_EQ(chain.GetValue(), 10.0);
  EXPECT_TRUE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 100.0);
  EXPECT_TRUE(chain.IsChangingInTime());
}

// A chain that is read before its start begins with what follows on the first.
TEST_F(ChangingInTimeChainTest, so_is_one_in_the_middle_of_a_chain_that_nobody_has_started) {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 10.0, 1.0));
  chain.Add(Linear(20.0, 30.0, -1.0));
  chain.Add(Linear(100.0, 200.0, 1.0));
  EXPECT_EQ(chain.GetValue(), 30.0);
  EXPECT_TRUE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 100.0);
}

TEST_F(ChangingInTimeChainTest, set_value_of_5_on_an_empty_chain_makes_one_value_that_reads_5) {
  ChangingInTimeValueChain chain;
  chain.SetValue(5.0);
  EXPECT_EQ(chain.GetCount(), 1);
  EXPECT_EQ(chain.GetValue(), 5.0);
  const ChangingInTimeValueChain made(5.0);
  EXPECT_EQ(made.GetCount(), 1);
  EXPECT_EQ(made.GetValue(), 5.0);
}

TEST_F(ChangingInTimeChainTest, set_value_on_a_chain_stops_it_and_ends_every_value_there) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(300);
  chain.SetValue(7.0);
  EXPECT_EQ(chain.GetCount(), 2);
  EXPECT_FALSE(chain.IsChangingInTime());
  // The chain still moves on to its second value, from that one's initial value, at the next read.
  EXPECT_EQ(chain.GetValue(), 100.0);
  platform.Advance(1001);
  EXPECT_EQ(chain.GetValue(), 7.0);
}

TEST_F(ChangingInTimeChainTest, assigning_a_number_to_a_chain_is_set_value) {
  ChangingInTimeValueChain chain;
  chain = 4.0;
  EXPECT_EQ(chain.GetCount(), 1);
  EXPECT_EQ(chain.GetValue(), 4.0);
}

TEST_F(ChangingInTimeChainTest, a_chain_started_reads_the_first_start_however_late_that_read_comes) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  platform.Advance(60000);
  EXPECT_EQ(chain.GetValue(), 0.0);
  platform.Advance(500);
  EXPECT_NEAR(chain.GetValue(), 5.0, TOLERANCE);
}

TEST_F(ChangingInTimeChainTest, a_chain_passes_to_its_second_value_without_a_gap) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(1001);
  EXPECT_EQ(chain.GetValue(), 10.0);  // the read that finds the first value's time up
  EXPECT_TRUE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 100.0);  // the next read starts the second
  EXPECT_TRUE(chain.IsChangingInTime());
  platform.Advance(500);
  EXPECT_NEAR(chain.GetValue(), 150.0, TOLERANCE);
  platform.Advance(501);
  EXPECT_EQ(chain.GetValue(), 200.0);
  EXPECT_FALSE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 200.0);
}

TEST_F(ChangingInTimeChainTest, a_pending_chain_is_changing_before_its_first_read) {
  ChangingInTimeValueChain chain = TwoSeconds();
  EXPECT_FALSE(chain.IsChangingInTime());
  chain.Start();
  EXPECT_TRUE(chain.IsChangingInTime());
}

TEST_F(ChangingInTimeChainTest, a_stopped_chain_of_several_values_walks_on_from_element_1_at_its_first_read) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Add(Linear(7.0, 8.0, 1.0));
  EXPECT_FALSE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 100.0);
  EXPECT_TRUE(chain.IsChangingInTime());
  platform.Advance(1001);
  EXPECT_EQ(chain.GetValue(), 200.0);
  EXPECT_EQ(chain.GetValue(), 7.0);
}

TEST_F(ChangingInTimeChainTest, stop_of_a_running_chain_returns_to_element_0_and_the_next_read_walks_on) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Add(Linear(7.0, 8.0, 1.0));
  chain.Start();
  chain.GetValue();
  platform.Advance(1001);
  chain.GetValue();
  chain.GetValue();
  chain.Stop();
  EXPECT_FALSE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 100.0);
}

TEST_F(ChangingInTimeChainTest, stop_leaves_a_pending_start_so_the_next_read_starts_the_chain) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.Stop();
  EXPECT_FALSE(chain.IsChangingInTime());
  EXPECT_EQ(chain.GetValue(), 0.0);
  platform.Advance(500);
  EXPECT_NEAR(chain.GetValue(), 5.0, TOLERANCE);
}

TEST_F(ChangingInTimeChainTest, a_chain_of_one_value_rests_at_its_end) {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 10.0, 1.0));
  EXPECT_EQ(chain.GetValue(), 10.0);
  EXPECT_FALSE(chain.IsChangingInTime());
  chain.Start();
  EXPECT_EQ(chain.GetValue(), 0.0);
  platform.Advance(2000);
  EXPECT_EQ(chain.GetValue(), 10.0);
  EXPECT_FALSE(chain.IsChangingInTime());
}

TEST_F(ChangingInTimeChainTest, start_of_a_running_chain_begins_anew_at_its_first_value) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(1001);
  chain.GetValue();
  chain.GetValue();
  chain.Start();
  EXPECT_EQ(chain.GetValue(), 0.0);
}

TEST_F(ChangingInTimeChainTest, add_stops_the_chain_and_appends_a_copy) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(500);
  ChangingInTimeValue third = Linear(7.0, 8.0, 1.0);
  chain.Add(third);
  third.SetValue(-1.0);
  EXPECT_EQ(chain.GetCount(), 3);
  EXPECT_FALSE(chain.IsChangingInTime());
  chain.GetValue();  // 100, the second value begins
  platform.Advance(1001);
  chain.GetValue();
  chain.GetValue();  // 7, the third begins
  platform.Advance(1001);
  EXPECT_EQ(chain.GetValue(), 8.0);
}

TEST_F(ChangingInTimeChainTest, clear_drops_all_values) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(1001);
  chain.GetValue();
  chain.GetValue();  // at the second value
  chain.Clear();
  EXPECT_EQ(chain.GetCount(), 0);
  EXPECT_EQ(chain.GetValue(), 0.0);
  EXPECT_FALSE(chain.IsChangingInTime());
  // The index has returned to the first.
  chain.Add(Linear(1.0, 2.0, 1.0));
  EXPECT_EQ(chain.GetValue(), 2.0);
}

TEST_F(ChangingInTimeChainTest, assigning_a_chain_takes_over_its_flags_its_index_and_its_values) {
  ChangingInTimeValueChain source = TwoSeconds();
  source.Start();
  source.GetValue();
  platform.Advance(1001);
  source.GetValue();
  source.GetValue();  // running, at the second value
  ChangingInTimeValueChain target(3.0);
  target = source;
  source.Stop();
  EXPECT_EQ(target.GetCount(), 2);
  EXPECT_TRUE(target.IsChangingInTime());
  platform.Advance(250);
  EXPECT_NEAR(target.GetValue(), 125.0, TOLERANCE);

  ChangingInTimeValueChain pending = TwoSeconds();
  pending.Start();
  target = pending;
  platform.Advance(5000);
  EXPECT_EQ(target.GetValue(), 0.0);
}

TEST_F(ChangingInTimeChainTest, assigning_a_chain_to_itself_changes_nothing) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(250);
  const ChangingInTimeValueChain& same = chain;
  chain = same;
  EXPECT_EQ(chain.GetCount(), 2);
  EXPECT_NEAR(chain.GetValue(), 2.5, TOLERANCE);
}

TEST_F(ChangingInTimeChainTest, a_copy_of_a_running_chain_goes_on_by_itself) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(250);
  ChangingInTimeValueChain copy(chain);
  chain.SetValue(-5.0);
  EXPECT_NEAR(copy.GetValue(), 2.5, TOLERANCE);
  EXPECT_TRUE(copy.IsChangingInTime());
}

TEST_F(ChangingInTimeChainTest, arithmetic_on_a_chain_moves_every_value) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain += 2.0;
  chain *= 10.0;
  chain -= 40.0;
  chain /= 2.0;
  // 0 -> -10, 10 -> 40; 100 -> 490, 200 -> 990.
  chain.Start();
  EXPECT_EQ(chain.GetValue(), -10.0);
  platform.Advance(1001);
  EXPECT_EQ(chain.GetValue(), 40.0);
  EXPECT_EQ(chain.GetValue(), 490.0);
  platform.Advance(1001);
  EXPECT_EQ(chain.GetValue(), 990.0);
}

TEST_F(ChangingInTimeChainTest, two_operand_arithmetic_on_a_chain_works_on_a_copy) {
  ChangingInTimeValueChain chain = TwoSeconds();
  chain.Start();
  chain.GetValue();
  platform.Advance(500);
  EXPECT_NEAR((chain * 2.0).GetValue(), 10.0, TOLERANCE);
  EXPECT_NEAR((chain / 2.0).GetValue(), 2.5, TOLERANCE);
  EXPECT_NEAR((chain + 2.0).GetValue(), 7.0, TOLERANCE);
  EXPECT_NEAR((chain - 2.0).GetValue(), 3.0, TOLERANCE);
  EXPECT_NEAR(chain.GetValue(), 5.0, TOLERANCE);
}

TEST_F(ChangingInTimeChainTest, comparing_a_chain_reads_it_and_so_advances_it) {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 10.0, 1.0));
  chain.Start();
  EXPECT_TRUE(chain <= 0.0);
  EXPECT_TRUE(chain >= 0.0);
  EXPECT_FALSE(chain < 0.0);
  EXPECT_FALSE(chain > 0.0);
  platform.Advance(2000);
  EXPECT_TRUE(chain > 9.0);
  EXPECT_FALSE(chain.IsChangingInTime());
  EXPECT_TRUE(chain < 11.0);
}

TEST_F(ChangingInTimeChainTest, a_chain_whose_next_step_takes_no_time_is_still_on_its_way) {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 1.0, 1.0));
  chain.Add(Linear(5.0, 5.0, 0.0));
  chain.Add(Linear(7.0, 8.0, 1.0));
  EXPECT_EQ(chain.GetValue(), 5.0);  // not started, it goes on where it is read
  EXPECT_TRUE(chain.IsChangingInTime());
  chain.Stop();
  EXPECT_FALSE(chain.IsChangingInTime());
}

}  // namespace
