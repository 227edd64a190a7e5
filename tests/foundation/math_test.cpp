#include "korvane/math.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Korvane::Math;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

TEST(MathConstants, have_their_values_to_the_last_bit) {
  EXPECT_EQ(Math::PI, 3.141592653589793);
  EXPECT_EQ(Math::DEG_TO_RAD, 0.017453292519943295);
  EXPECT_EQ(Math::RAD_TO_DEG, 57.29577951308232);
  EXPECT_EQ(Math::EPSILON_VALUE, 1.1920928955078125e-07);
  EXPECT_EQ(Math::EPSILON_VALUE, std::ldexp(1.0, -23));
  EXPECT_EQ(Math::MAX_VALUE, 1.7976931348623157e+308);
  EXPECT_EQ(Math::MAX_VALUE, std::numeric_limits<double>::max());
}

TEST(MathMin, is_the_first_only_when_it_is_less) {
  EXPECT_EQ(Math::Min(1.0, 2.0), 1.0);
  EXPECT_EQ(Math::Min(2.0, 1.0), 1.0);
  // Neither zero is less, so the second comes out; the sign shows which one it was.
  EXPECT_TRUE(std::signbit(Math::Min(0.0, -0.0)));
  EXPECT_FALSE(std::signbit(Math::Min(-0.0, 0.0)));
}

TEST(MathMax, is_the_first_only_when_it_is_greater) {
  EXPECT_EQ(Math::Max(1.0, 2.0), 2.0);
  EXPECT_EQ(Math::Max(2.0, 1.0), 2.0);
  EXPECT_TRUE(std::signbit(Math::Max(0.0, -0.0)));
  EXPECT_FALSE(std::signbit(Math::Max(-0.0, 0.0)));
}

TEST(MathMinAndMax, give_the_second_when_either_is_not_a_number) {
  EXPECT_EQ(Math::Min(NAN_VALUE, 3.0), 3.0);
  EXPECT_TRUE(std::isnan(Math::Min(3.0, NAN_VALUE)));
  EXPECT_EQ(Math::Max(NAN_VALUE, 3.0), 3.0);
  EXPECT_TRUE(std::isnan(Math::Max(3.0, NAN_VALUE)));
}

TEST(MathClamp, holds_a_value_between_the_ends) {
  EXPECT_EQ(Math::Clamp(0.5, 0.0, 1.0), 0.5);
  EXPECT_EQ(Math::Clamp(-0.5, 0.0, 1.0), 0.0);
  EXPECT_EQ(Math::Clamp(1.5, 0.0, 1.0), 1.0);
  EXPECT_EQ(Math::Clamp(1.0, 0.0, 1.0), 1.0);
  EXPECT_EQ(Math::Clamp(-INFINITE, 0.0, 1.0), 0.0);
  EXPECT_EQ(Math::Clamp(INFINITE, 0.0, 1.0), 1.0);
}

TEST(MathClamp, of_a_value_equal_to_the_low_end_returns_the_low_end) {
  EXPECT_EQ(Math::Clamp(2.0, 2.0, 5.0), 2.0);
  // -0.0 equals 0.0 but is another number: it is the end that comes out.
  EXPECT_FALSE(std::signbit(Math::Clamp(-0.0, 0.0, 1.0)));
}

TEST(MathClamp, with_the_low_end_above_the_high_end_returns_the_low_end_for_every_value_at_or_below_it) {
  for (const double v : {-10.0, 1.0, 2.0, 4.999, 5.0}) EXPECT_EQ(Math::Clamp(v, 5.0, 1.0), 5.0) << v;
  // Above the low end the second test decides.
  EXPECT_EQ(Math::Clamp(5.001, 5.0, 1.0), 1.0);
}

TEST(MathClamp, passes_a_value_that_is_not_a_number) {
  EXPECT_TRUE(std::isnan(Math::Clamp(NAN_VALUE, 0.0, 1.0)));
}

TEST(MathLinearInterp, takes_the_parameter_first) {
  EXPECT_EQ(Math::LinearInterp(0.0, 10.0, 20.0), 10.0);
  EXPECT_EQ(Math::LinearInterp(1.0, 10.0, 20.0), 20.0);
  EXPECT_EQ(Math::LinearInterp(0.25, 10.0, 20.0), 12.5);
}

TEST(MathLinearInterp, extrapolates_past_both_ends) {
  EXPECT_EQ(Math::LinearInterp(2.0, 10.0, 20.0), 30.0);
  EXPECT_EQ(Math::LinearInterp(-1.0, 10.0, 20.0), 0.0);
}

TEST(MathLinearClamp, tells_how_far_a_value_lies_between_the_ends) {
  EXPECT_EQ(Math::LinearClamp(2.5, 2.0, 4.0), 0.25);
  EXPECT_EQ(Math::LinearClamp(2.0, 2.0, 4.0), 0.0);
  EXPECT_EQ(Math::LinearClamp(1.0, 2.0, 4.0), 0.0);
  EXPECT_EQ(Math::LinearClamp(4.0, 2.0, 4.0), 1.0);
  EXPECT_EQ(Math::LinearClamp(9.0, 2.0, 4.0), 1.0);
}

TEST(MathLinearClamp, of_an_empty_range_is_a_step_and_never_divides_by_zero) {
  EXPECT_EQ(Math::LinearClamp(2.0, 2.0, 2.0), 0.0);
  EXPECT_EQ(Math::LinearClamp(2.5, 2.0, 2.0), 1.0);
  EXPECT_EQ(Math::LinearClamp(1.5, 2.0, 2.0), 0.0);
}

TEST(MathEaseClamp, is_zero_and_one_at_and_past_the_ends) {
  EXPECT_EQ(Math::EaseClamp(2.0, 2.0, 4.0), 0.0);
  EXPECT_EQ(Math::EaseClamp(-7.0, 2.0, 4.0), 0.0);
  EXPECT_EQ(Math::EaseClamp(4.0, 2.0, 4.0), 1.0);
  EXPECT_EQ(Math::EaseClamp(7.0, 2.0, 4.0), 1.0);
}

TEST(MathEaseClamp, at_the_midpoint_of_the_ends_gives_exactly_one_half) {
  EXPECT_EQ(Math::EaseClamp(3.0, 2.0, 4.0), 0.5);
  EXPECT_EQ(Math::EaseClamp(0.5, 0.0, 1.0), 0.5);
  EXPECT_EQ(Math::EaseClamp(0.0, -8.0, 8.0), 0.5);
}

TEST(MathEaseClamp, follows_half_a_sine_wave) {
  // A quarter of the way: (sin(-PI / 4) + 1) / 2 = (1 - sqrt(1 / 2)) / 2. Three operations and one sine on
  // numbers up to 1: a few units of 1.1e-16.
  const double tolerance = 1e-15;
  EXPECT_NEAR(Math::EaseClamp(0.25, 0.0, 1.0), (1.0 - std::sqrt(0.5)) / 2.0, tolerance);
  EXPECT_NEAR(Math::EaseClamp(0.75, 0.0, 1.0), (1.0 + std::sqrt(0.5)) / 2.0, tolerance);
  // A third: sin(-PI / 6) = -1/2.
  EXPECT_NEAR(Math::EaseClamp(4.0, 3.0, 6.0), 0.25, tolerance);
}

TEST(MathGaussianSampleUnit, peaks_at_one_at_the_mean) {
  EXPECT_EQ(Math::GaussianSampleUnit(3.0, 3.0, 0.5), 1.0);
}

TEST(MathGaussianSampleUnit, falls_to_the_root_of_e_one_deviation_off_on_either_side) {
  // exp(-sigma^2 / (2 sigma^2)) = exp(-1/2); one exponential, correct to an ulp or two.
  const double tolerance = 1e-15;
  EXPECT_NEAR(Math::GaussianSampleUnit(3.5, 3.0, 0.5), std::exp(-0.5), tolerance);
  EXPECT_NEAR(Math::GaussianSampleUnit(2.5, 3.0, 0.5), std::exp(-0.5), tolerance);
  // Two deviations: exp(-4 / 2). The sign of the deviation does not count.
  EXPECT_NEAR(Math::GaussianSampleUnit(4.0, 3.0, -0.5), std::exp(-2.0), tolerance);
}

TEST(MathGaussianSampleUnit, vanishes_far_off_without_overflow) {
  EXPECT_EQ(Math::GaussianSampleUnit(1e200, 0.0, 1.0), 0.0);
  EXPECT_EQ(Math::GaussianSampleUnit(INFINITE, 0.0, 1.0), 0.0);
}

}  // namespace
