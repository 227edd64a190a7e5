#include "korvane/color_rgba.h"

#include <gtest/gtest.h>

namespace {

using Korvane::ColorRGBA;

TEST(ColorRGBA, is_zero_from_nothing_and_takes_red_green_blue_alpha_in_this_order) {
  const ColorRGBA none;
  EXPECT_TRUE(none.r == 0.0 && none.g == 0.0 && none.b == 0.0 && none.a == 0.0);
  const ColorRGBA colour(0.1, 0.2, 0.3, 0.4);
  EXPECT_TRUE(colour.r == 0.1 && colour.g == 0.2 && colour.b == 0.3 && colour.a == 0.4);
}

}  // namespace
