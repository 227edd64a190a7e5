#include "foundation/truncate.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace Korvane;

TEST(Truncate, goes_toward_zero) {
  EXPECT_EQ(Truncate(2.9), 2);
  EXPECT_EQ(Truncate(-2.9), -2);
  EXPECT_EQ(Truncate(0.0), 0);
  EXPECT_EQ(Truncate(-0.5), 0);
}

TEST(Truncate, ends_at_the_range_of_an_int) {
  EXPECT_EQ(Truncate(2147483646.9), 2147483646);
  EXPECT_EQ(Truncate(2147483647.0), 2147483647);
  EXPECT_EQ(Truncate(2147483648.0), 2147483647);
  EXPECT_EQ(Truncate(1e300), 2147483647);
  EXPECT_EQ(Truncate(INFINITY), 2147483647);
  EXPECT_EQ(Truncate(-2147483648.9), -2147483647 - 1);
  EXPECT_EQ(Truncate(-1e300), -2147483647 - 1);
  EXPECT_EQ(Truncate(-INFINITY), -2147483647 - 1);
}

TEST(Truncate, makes_0_of_what_is_not_a_number) {
  const volatile double notANumber = NAN;  // keeps the compiler from answering by itself
  EXPECT_EQ(Truncate(notANumber), 0);
}

}  // namespace
