// The scale that the settings manager of an X desktop tells, and what is no such thing.
#include "src/window/x_settings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <vector>

#include "support/random.h"
#include "support/x_settings_bytes.h"

namespace {

using zovhost::ParseXSettings;
using Bytes = std::vector<unsigned char>;

constexpr std::int32_t ONE = 96 * 1024;
constexpr std::int32_t MOST = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t LEAST = std::numeric_limits<std::int32_t>::min();

double ScaleOfDots(std::int32_t dots) {
  return ParseXSettings(XSettingsBytes().AddNumber("Xft/DPI", dots).Get());
}
double ScaleOfFactor(std::int32_t factor) {
  return ParseXSettings(XSettingsBytes().AddNumber("Gdk/WindowScalingFactor", factor).Get());
}
// What a desktop has, with more before and behind.
Bytes MakeWhole(bool bigEnd = false) {
  return XSettingsBytes(bigEnd)
      .AddText("Net/ThemeName", "Plain")
      .AddColour("Net/Colour")
      .AddNumber("Xft/Antialias", 1)
      .AddNumber("Gdk/WindowScalingFactor", 1)
      .AddNumber("Xft/DPI", ONE * 3 / 2)
      .AddText("Gtk/FontName", "")
      .Get();
}

TEST(XSettings, tell_the_dots_of_an_inch_or_a_factor) {
  EXPECT_EQ(ScaleOfDots(ONE), 1.0);
  EXPECT_EQ(ScaleOfDots(ONE * 5 / 4), 1.25);
  EXPECT_EQ(ScaleOfFactor(3), 3.0);
}

TEST(XSettings, of_both_the_larger_counts) {
  for (const std::int32_t factor : {1, 2}) {
    const Bytes bytes =
        XSettingsBytes().AddNumber("Xft/DPI", ONE * 3 / 2).AddNumber("Gdk/WindowScalingFactor", factor).Get();
    EXPECT_EQ(ParseXSettings(bytes), factor == 1 ? 1.5 : 2.0);
  }
}

TEST(XSettings, are_found_among_others_in_both_orders_of_bytes) {
  EXPECT_EQ(ParseXSettings(MakeWhole(false)), 1.5);
  EXPECT_EQ(ParseXSettings(MakeWhole(true)), 1.5);
}

TEST(XSettings, without_a_number_that_means_something_tell_nothing) {
  EXPECT_EQ(ParseXSettings(XSettingsBytes().Get()), 0.0);
  EXPECT_EQ(ParseXSettings(XSettingsBytes().AddText("Xft/DPI", "98304").Get()), 0.0);
  EXPECT_EQ(ParseXSettings(XSettingsBytes().AddNumber("Xft/DPIs", ONE).Get()), 0.0);
  for (const std::int32_t dots : {0, -1, -ONE, LEAST, MOST}) EXPECT_EQ(ScaleOfDots(dots), 0.0) << dots;
  for (const std::int32_t factor : {0, -1, 101, LEAST, MOST}) EXPECT_EQ(ScaleOfFactor(factor), 0.0) << factor;
}

// ---- broken ones ----

TEST(XSettings, that_end_too_early_tell_nothing) {
  const Bytes whole = MakeWhole();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(ParseXSettings(part), 0.0) << length;
  }
}

TEST(XSettings, of_a_kind_that_nobody_knows_tell_nothing) {
  Bytes bytes = MakeWhole();
  bytes[12] = 9;  // the kind of the first
  EXPECT_EQ(ParseXSettings(bytes), 0.0);
}

TEST(XSettings, that_say_they_are_more_than_they_are_end_at_once) {
  Bytes bytes = MakeWhole();
  for (std::size_t i = 8; i < 12; ++i) bytes[i] = 0xFF;  // how many
  EXPECT_EQ(ParseXSettings(bytes), 0.0);
}

// Each in memory of its own, beyond which nothing may be read.
TEST(XSettings, with_any_bytes_tell_something_usable_or_nothing) {
  const Bytes whole = MakeWhole();
  Random random;
  for (int round = 0; round < 20'000; ++round) {
    Bytes bytes = whole;
    for (int change = 0; change < 1 + round % 4; ++change) {
      const auto place = static_cast<std::size_t>(random.Integer(0, static_cast<int>(bytes.size()) - 1));
      bytes[place] = static_cast<unsigned char>(random.Integer(0, 255));
    }
    bytes.resize(static_cast<std::size_t>(random.Integer(0, static_cast<int>(bytes.size()))));
    bytes.shrink_to_fit();
    const double scale = ParseXSettings(bytes);
    EXPECT_GE(scale, 0.0);
    EXPECT_LE(scale, 100.0);
  }
}

}  // namespace
