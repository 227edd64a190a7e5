// What a host makes of a device's axes and buttons.
#include "zovhost/six_axis_settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

#include "korvane/cam3d_controller_observer.h"
#include "support/random.h"

namespace {

using zovhost::Apply;
using zovhost::SixAxes;
using zovhost::SixAxisSettings;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr int COMMANDS = Korvane::CAM3D_KEY_COUNT;

SixAxisSettings WithoutAxes() {
  SixAxisSettings settings;
  for (auto& axis : settings.axes) axis.to = SixAxisSettings::NOWHERE;
  return settings;
}

}  // namespace

// ---- axes ----

TEST(SixAxisSettings, at_first_each_axis_is_its_own) {
  const SixAxes state = {1.0, -2.0, 3.0, -4.0, 5.0, -6.0};
  EXPECT_EQ(Apply(SixAxisSettings(), state), state);
}

TEST(SixAxisSettings, any_axis_goes_to_any_other) {
  for (int from = 0; from < 6; ++from) {
    for (int to = 0; to < 6; ++to) {
      SixAxisSettings settings = WithoutAxes();
      settings.axes[static_cast<std::size_t>(from)].to = to;
      SixAxes expected{};
      expected[static_cast<std::size_t>(to)] = 10.0 + from;
      EXPECT_EQ(Apply(settings, {10.0, 11.0, 12.0, 13.0, 14.0, 15.0}), expected) << from << " to " << to;
    }
  }
}

TEST(SixAxisSettings, several_axes_that_go_to_one_are_added) {
  SixAxisSettings settings = WithoutAxes();
  settings.axes[0] = {1, false, 2.0};
  settings.axes[4] = {1, true, 1.0};
  EXPECT_EQ(Apply(settings, {100.0, 7.0, 7.0, 7.0, 30.0, 7.0}), (SixAxes{0, 170.0, 0, 0, 0, 0}));
}

TEST(SixAxisSettings, an_axis_is_inverted_and_scaled) {
  SixAxisSettings settings;
  settings.axes[2].inverted = true;
  settings.axes[2].scale = 0.5;
  settings.axes[3].scale = 0.0;
  EXPECT_EQ(Apply(settings, {8, 8, 8, 8, 8, 8}), (SixAxes{8, 8, -4, 0, 8, 8}));
}

TEST(SixAxisSettings, a_locked_axis_stays_at_rest_whatever_leads_to_it) {
  SixAxisSettings settings;
  settings.axes[0].to = 5;
  settings.locked[5] = true;
  EXPECT_EQ(Apply(settings, {9, 8, 7, 6, 5, 4}), (SixAxes{0, 8, 7, 6, 5, 0}));
}

TEST(SixAxisSettings, beyond_the_dead_zone_an_axis_counts_from_it) {
  SixAxisSettings settings;
  settings.deadZone = 50.0;
  EXPECT_EQ(Apply(settings, {50.0, -50.0, 51.0, -51.0, 350.0, 0.0}), (SixAxes{0, 0, 1.0, -1.0, 300.0, 0}));
}

TEST(SixAxisSettings, no_state_of_a_device_goes_beyond_the_most_deflection) {
  Random random(61);
  for (int round = 0; round < 2000; ++round) {
    SixAxisSettings settings;
    SixAxes state;
    for (std::size_t i = 0; i < 6; ++i) {
      settings.axes[i] = {random.Integer(-1, 5), random.Coin(),
                          random.Uniform(0.0, SixAxisSettings::MOST_SCALE)};
      state[i] = random.Uniform(-2000.0, 2000.0);
    }
    settings.deadZone = random.Uniform(0.0, SixAxisSettings::MOST_DEAD_ZONE);
    ASSERT_TRUE(IsValid(settings));
    for (const double value : Apply(settings, state)) ASSERT_LE(std::abs(value), 2000.0);
  }
}

TEST(SixAxisSettings, a_number_that_is_not_finite_moves_nothing) {
  SixAxisSettings settings;
  settings.axes[1].scale = 0.0;
  EXPECT_EQ(Apply(settings, {NOT_A_NUMBER, INFINITE, -INFINITE, 4.0, 0.0, 0.0}), (SixAxes{0, 0, 0, 4, 0, 0}));
}

// ---- defaults ----

TEST(SixAxisSettings, a_device_fits_the_view_and_changes_the_mode) {
  const SixAxisSettings settings = SixAxisSettings::ForDevice();
  EXPECT_TRUE(IsValid(settings));
  EXPECT_EQ(settings.commands[0], 15);
  EXPECT_EQ(settings.commands[1], 21);
  for (std::size_t button = 2; button < 64; ++button) EXPECT_EQ(settings.commands[button], -1) << button;
  EXPECT_EQ(settings.deadZone, 0.0);
  EXPECT_EQ(Apply(settings, {1, 2, 3, 4, 5, 6}), (SixAxes{1, 2, 3, 4, 5, 6}));
}

TEST(SixAxisSettings, sticks_and_triggers_of_a_game_controller_are_six_axes) {
  // By the axes of the source: left stick right and down, right stick right and down, both triggers. A push
  // ahead is into the screen; a turn to the right is one by the left hand about up; looking up is one by the
  // right hand about right; the left trigger lowers.
  const SixAxes expected[6] = {
      {350, 0, 0, 0, 0, 0},  {0, 0, -350, 0, 0, 0}, {0, 0, 0, 0, -350, 0},
      {0, 0, 0, -350, 0, 0}, {0, -350, 0, 0, 0, 0}, {0, 350, 0, 0, 0, 0},
  };
  const SixAxisSettings settings = SixAxisSettings::ForGameController();
  EXPECT_TRUE(IsValid(settings));
  for (std::size_t axis = 0; axis < 6; ++axis) {
    SixAxes state{};
    state[axis] = 400.0;  // of which the dead zone takes 50
    EXPECT_EQ(Apply(settings, state), expected[axis]) << axis;
  }
}

TEST(SixAxisSettings, buttons_of_a_game_controller_are_commands) {
  constexpr int TABLE[64] = {15, 7, 21, 6, 11, -1, 10, -1, -1, 9, 8, 1, 2, 4, 3};
  const SixAxisSettings settings = SixAxisSettings::ForGameController();
  for (std::size_t button = 0; button < 64; ++button) {
    EXPECT_EQ(settings.commands[button], button < 15 ? TABLE[button] : -1) << button;
  }
}

// ---- what is not valid ----

TEST(SixAxisSettings, numbers_out_of_their_range_are_not_valid) {
  const auto isValidWith = [](const auto& change) {
    SixAxisSettings settings = SixAxisSettings::ForDevice();
    change(settings);
    return IsValid(settings);
  };
  EXPECT_TRUE(isValidWith([](SixAxisSettings&) {}));
  for (const double wrong : {-0.1, 10.1, NOT_A_NUMBER, INFINITE, -INFINITE}) {
    EXPECT_FALSE(isValidWith([&](SixAxisSettings& now) { now.axes[5].scale = wrong; })) << wrong;
  }
  for (const double wrong : {-0.1, 500.1, NOT_A_NUMBER, INFINITE}) {
    EXPECT_FALSE(isValidWith([&](SixAxisSettings& now) { now.deadZone = wrong; })) << wrong;
  }
  for (const int wrong : {-2, 6, 1000000}) {
    EXPECT_FALSE(isValidWith([&](SixAxisSettings& now) { now.axes[0].to = wrong; })) << wrong;
  }
  for (const int wrong : {-2, COMMANDS, 1000000}) {
    EXPECT_FALSE(isValidWith([&](SixAxisSettings& now) { now.commands[63] = wrong; })) << wrong;
  }
}

TEST(SixAxisSettings, what_was_read_from_a_file_is_made_valid) {
  SixAxisSettings read = SixAxisSettings::ForDevice();
  read.deadZone = NOT_A_NUMBER;
  read.axes[0] = {77, true, -4.0};
  read.axes[1] = {3, false, INFINITE};
  read.axes[2] = {-1, true, 99.0};
  read.commands[0] = 22;
  read.commands[5] = 7;
  const SixAxisSettings defaults = SixAxisSettings::ForGameController();
  const SixAxisSettings valid = MakeValid(read, defaults);
  EXPECT_TRUE(IsValid(valid));
  EXPECT_EQ(valid.deadZone, 50.0);
  EXPECT_EQ(valid.axes[0], (SixAxisSettings::Axis{0, true, 0.0}));
  EXPECT_EQ(valid.axes[1], (SixAxisSettings::Axis{3, false, 1.0}));
  EXPECT_EQ(valid.axes[2], (SixAxisSettings::Axis{-1, true, 10.0}));
  EXPECT_EQ(valid.commands[0], 15);
  EXPECT_EQ(valid.commands[5], 7);
  read = valid;
  EXPECT_EQ(MakeValid(read, defaults), valid);
  read.deadZone = 501.0;
  EXPECT_EQ(MakeValid(read, defaults).deadZone, 500.0);
}
