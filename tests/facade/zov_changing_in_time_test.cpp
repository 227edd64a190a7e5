#include "zov/zov_changing_in_time.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/manual_platform.h"

namespace {

constexpr auto LINEAR = zovInterpolationMethod::Linear;
constexpr auto EASED = zovInterpolationMethod::Eased;
// Ticks are thousandths of a second, read as doubles near 1.
constexpr double TOLERANCE = 1e-9;

TEST(ZovChangingInTimeValue, rests_at_what_it_was_given) {
  EXPECT_EQ(zovChangingInTimeValue().value(), 0.0);
  zovChangingInTimeValue value(2.5);
  EXPECT_EQ(value.value(), 2.5);
  value = 4.0;
  EXPECT_EQ(static_cast<double>(value), 4.0);
  value.set_value(5.0);
  EXPECT_EQ(value.value(), 5.0);
  EXPECT_FALSE(value.is_changing_in_time());
}

TEST(ZovChangingInTimeValue, assigned_to_itself_runs_on) {
  ManualPlatform platform;
  zovChangingInTimeValue value(0.0, 10.0, 1.0, LINEAR);
  value.start();
  platform.Advance(500);
  const zovChangingInTimeValue& same = value;
  value = same;
  EXPECT_TRUE(value.is_changing_in_time());
  EXPECT_NEAR(value.value(), 5.0, 1e-3);
  value = zovChangingInTimeValue(3.0);
  EXPECT_EQ(value.value(), 3.0);
}

TEST(ZovChangingInTimeValue, made_of_four_numbers_starts_when_told) {
  ManualPlatform platform;
  zovChangingInTimeValue value(0.0, 10.0, 1.0, EASED);
  EXPECT_FALSE(value.is_changing_in_time());
  EXPECT_EQ(value.value(), 10.0);
  value.start();
  EXPECT_TRUE(value.is_changing_in_time());
  platform.Advance(500);
  EXPECT_NEAR(value.value(), 5.0, TOLERANCE);
}

// A quarter of the way: the line is at 2.5, the sine ease at 10 (sin(-pi / 4) + 1) / 2 = 1.4644660940672627.
TEST(ZovChangingInTimeValue, goes_by_the_curve_of_its_method) {
  ManualPlatform platform;
  zovChangingInTimeValue line;
  zovChangingInTimeValue ease;
  line.start(0.0, 10.0, 1.0, LINEAR);
  ease.start(0.0, 10.0, 1.0, EASED);
  platform.Advance(250);
  EXPECT_NEAR(line.value(), 2.5, TOLERANCE);
  EXPECT_NEAR(ease.value(), 1.4644660940672627, TOLERANCE);
}

TEST(ZovChangingInTimeValue, stopped_jumps_to_its_end) {
  ManualPlatform platform;
  zovChangingInTimeValue value;
  value.start(0.0, 10.0, 1.0, LINEAR);
  platform.Advance(100);
  value.stop();
  EXPECT_EQ(value.value(), 10.0);
  EXPECT_FALSE(value.is_changing_in_time());
}

TEST(ZovChangingInTimeValue, set_to_four_numbers_stops_and_starts_when_told) {
  ManualPlatform platform;
  zovChangingInTimeValue value;
  value.start(0.0, 1.0, 1.0, LINEAR);
  value.set_value(0.0, 10.0, 2.0, EASED);
  EXPECT_FALSE(value.is_changing_in_time());
  EXPECT_EQ(value.value(), 10.0);
  value.start();
  platform.Advance(500);  // a quarter, as above
  EXPECT_NEAR(value.value(), 1.4644660940672627, TOLERANCE);
}

TEST(ZovChangingInTimeValue, takes_over_another_that_runs) {
  ManualPlatform platform;
  zovChangingInTimeValue running;
  running.start(0.0, 10.0, 1.0, LINEAR);
  zovChangingInTimeValue value(7.0);
  value = running;
  platform.Advance(500);
  EXPECT_NEAR(value.value(), 5.0, TOLERANCE);
  value.stop();
  EXPECT_TRUE(running.is_changing_in_time());
}

TEST(ZovChangingInTimeValue, copied_runs_on_by_itself) {
  ManualPlatform platform;
  zovChangingInTimeValue value;
  value.start(0.0, 10.0, 1.0, LINEAR);
  const zovChangingInTimeValue copy = value;
  value.stop();
  platform.Advance(500);
  EXPECT_NEAR(copy.value(), 5.0, TOLERANCE);
}

template <class Value>
class ZovChangesInTime : public ::testing::Test {};
using Kinds = ::testing::Types<zovChangingInTimeValue, zovChangingInTimeValueChain>;
TYPED_TEST_SUITE(ZovChangesInTime, Kinds);

TYPED_TEST(ZovChangesInTime, computes_with_numbers) {
  const TypeParam value(6.0);
  EXPECT_EQ((value * 2).value(), 12.0);
  EXPECT_EQ((value / 4.0).value(), 1.5);
  EXPECT_EQ((value + 1.0F).value(), 7.0);
  EXPECT_EQ((value - 2.0).value(), 4.0);
  EXPECT_EQ(value.value(), 6.0);
  TypeParam changed(6.0);
  EXPECT_EQ((changed *= 2.0).value(), 12.0);
  EXPECT_EQ((changed += 3.0).value(), 15.0);
  EXPECT_EQ((changed -= 5.0).value(), 10.0);
  EXPECT_EQ((changed /= 4.0).value(), 2.5);
  changed = 1.0;
  EXPECT_EQ(static_cast<double>(changed), 1.0);
}

TYPED_TEST(ZovChangesInTime, compares_with_numbers) {
  const TypeParam value(6.0);
  EXPECT_TRUE(value < 7);
  EXPECT_FALSE(value < 6.0);
  EXPECT_TRUE(value <= 6.0);
  EXPECT_FALSE(value <= 5.0);
  EXPECT_TRUE(value > 5.0);
  EXPECT_FALSE(value > 6.0);
  EXPECT_TRUE(value >= 6.0);
  EXPECT_FALSE(value >= 7.0);
}

TEST(ZovChangingInTimeValue, multiplied_while_it_runs_keeps_its_progress) {
  ManualPlatform platform;
  zovChangingInTimeValue value;
  value.start(0.0, 10.0, 1.0, LINEAR);
  platform.Advance(250);
  EXPECT_NEAR(value.value(), 2.5, TOLERANCE);
  value *= 2.0;
  platform.Advance(250);
  EXPECT_NEAR(value.value(), 10.0, TOLERANCE);
}

TEST(ZovChangingInTimeValueChain, without_numbers_is_zero_and_takes_one) {
  zovChangingInTimeValueChain chain;
  EXPECT_EQ(chain.value(), 0.0);
  EXPECT_EQ(chain.count(), 0);
  chain.set_value(5.0);
  EXPECT_EQ(chain.count(), 1);
  EXPECT_EQ(chain.value(), 5.0);
  chain.clear();
  EXPECT_EQ(chain.count(), 0);
}

TEST(ZovChangingInTimeValueChain, runs_its_numbers_one_after_another) {
  ManualPlatform platform;
  zovChangingInTimeValueChain chain;
  chain.add(zovChangingInTimeValue(0.0, 10.0, 1.0, LINEAR));
  chain.add(zovChangingInTimeValue(10.0, 30.0, 1.0, LINEAR));
  EXPECT_EQ(chain.count(), 2);
  chain.start();
  platform.Advance(5000);  // the clock starts at the first read
  EXPECT_EQ(chain.value(), 0.0);
  platform.Advance(500);
  EXPECT_NEAR(chain.value(), 5.0, TOLERANCE);
  platform.Advance(501);
  EXPECT_NEAR(chain.value(), 10.0, TOLERANCE);
  EXPECT_TRUE(chain.is_changing_in_time());
  platform.Advance(1);
  chain.value();
  platform.Advance(500);
  EXPECT_GT(chain.value(), 19.9);
  chain.stop();
  EXPECT_FALSE(chain.is_changing_in_time());
}

}  // namespace
