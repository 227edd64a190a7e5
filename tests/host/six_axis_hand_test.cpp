// What comes from six-axis sources, as the library's controller is told of it.
#include "zovhost/six_axis_hand.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"
#include "support/allocation_counter.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

namespace {

using Korvane::Cam3DController;
using Korvane::Cam3DControllerKeyID;
using Korvane::Vector3;
using zovhost::FedSource;
using zovhost::SixAxes;
using zovhost::SixAxisHand;
using zovhost::SixAxisSettings;
using Lines = std::vector<std::string>;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr SixAxes PUSHED = {105.0, 0, 0, 0, 0, 0};
constexpr SixAxes AT_REST = {};

class Observer : public Korvane::Cam3DControllerObserver {
 public:
  void OnInput(Vector3 translation, Vector3 rotation) override {
    ++inputs;
    lastTranslation = translation;
    lastRotation = rotation;
    total += translation;
    if (react) react();
  }
  void OnKeyDown(Cam3DControllerKeyID id) override {
    lines.push_back("down " + std::to_string(id));
    if (react) react();
  }
  void OnKeyUp(Cam3DControllerKeyID id) override {
    lines.push_back("up " + std::to_string(id));
    if (react) react();
  }
  void OnNavigationModeChanged(Korvane::Cam3DControllerParameters::NavigationMode) override {}

  Lines TakeLines() { return std::exchange(lines, {}); }

  int inputs = 0;
  Vector3 lastTranslation;
  Vector3 lastRotation;
  Vector3 total;
  Lines lines;
  std::function<void()> react;
};

class SixAxisHandTest : public testing::Test {
 protected:
  SixAxisHandTest() {
    controller->SetKorvane(&hub);
    controller->AddObserver(&observer);
    hand->AddSource(&source);
  }
  ~SixAxisHandTest() override {
    hand.reset();
    controller->RemoveObserver(&observer);
  }

  bool Frame(std::uint32_t milliseconds = 16, bool focused = true) {
    platform.Advance(milliseconds);
    const bool told = hand->Advance(focused);
    hub.PerformOperations();
    return told;
  }

  ManualPlatform platform;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  Observer observer;
  std::unique_ptr<Cam3DController> controller = std::make_unique<Cam3DController>();
  FedSource source;
  std::unique_ptr<SixAxisHand> hand = std::make_unique<SixAxisHand>(controller.get());
};

}  // namespace

// ---- axes ----

TEST_F(SixAxisHandTest, an_idle_device_is_told_of_not_at_all) {
  for (int i = 0; i < 100; ++i) EXPECT_FALSE(Frame());
  EXPECT_EQ(observer.inputs, 0);
  EXPECT_FALSE(hand->IsMoving());
}

TEST_F(SixAxisHandTest, a_deflected_device_is_told_of_once_a_frame) {
  source.Feed(PUSHED);
  for (int i = 1; i <= 10; ++i) {
    EXPECT_TRUE(Frame());
    EXPECT_EQ(observer.inputs, i);
    EXPECT_TRUE(hand->IsMoving());
    EXPECT_TRUE(controller->IsOperating());
  }
}

TEST_F(SixAxisHandTest, its_coming_to_rest_is_told_once) {
  source.Feed(PUSHED);
  Frame();
  source.Feed(AT_REST);
  EXPECT_TRUE(Frame());
  EXPECT_EQ(observer.inputs, 2);
  EXPECT_EQ(observer.lastTranslation, Vector3());
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_FALSE(hand->IsMoving());
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(Frame());
  EXPECT_EQ(observer.inputs, 2);
}

TEST_F(SixAxisHandTest, within_the_threshold_of_the_controller_it_is_at_rest) {
  source.Feed({5.0, -5.0, 5.0, -5.0, 5.0, -5.0});
  EXPECT_FALSE(Frame());
  EXPECT_FALSE(hand->IsMoving());
  source.Feed({6.0, 0, 0, 0, 0, 0});
  EXPECT_TRUE(Frame());
}

TEST_F(SixAxisHandTest, the_first_three_axes_are_the_translation) {
  source.Feed({105.0, 205.0, 305.0, 405.0, 505.0, 605.0});
  Frame();
  // What is beyond 5, times 0.0009, times the multipliers of the mode.
  EXPECT_NEAR(observer.lastTranslation.x, 100 * 0.0009 * 0.6, 1e-12);
  EXPECT_NEAR(observer.lastTranslation.y, 200 * 0.0009 * 0.5, 1e-12);
  EXPECT_NEAR(observer.lastTranslation.z, 300 * 0.0009 * 0.8, 1e-12);
  EXPECT_NEAR(observer.lastRotation.x, 400 * 0.0009, 1e-12);
  EXPECT_NEAR(observer.lastRotation.y, 500 * 0.0009, 1e-12);
  EXPECT_NEAR(observer.lastRotation.z, 600 * 0.0009, 1e-12);
}

TEST_F(SixAxisHandTest, what_two_sources_say_is_added) {
  FedSource other;
  EXPECT_TRUE(hand->AddSource(&other));
  source.Feed({100.0, 0, 0, 0, 0, 0});
  other.Feed({50.0, -30.0, 0, 0, 0, 0});
  Frame();
  EXPECT_EQ(hand->GetAxes(), (SixAxes{150.0, -30.0, 0, 0, 0, 0}));
  source.Feed({2000.0, 0, 0, 0, 0, 0});
  other.Feed({2000.0, 0, 0, 0, 0, 0});
  Frame();
  EXPECT_EQ(hand->GetAxes()[0], zovhost::MOST_DEFLECTION);
}

TEST_F(SixAxisHandTest, each_source_has_its_own_settings) {
  FedSource other(SixAxisSettings::ForGameController());
  hand->AddSource(&other);
  EXPECT_EQ(hand->GetSettings(&other), SixAxisSettings::ForGameController());
  SixAxisSettings settings = hand->GetSettings(&source);
  settings.axes[0] = {2, true, 2.0};
  EXPECT_TRUE(hand->SetSettings(&source, settings));
  EXPECT_EQ(hand->GetSettings(&source), settings);
  source.Feed({10.0, 0, 0, 0, 0, 0});
  other.Feed({350.0, 0, 0, 0, 0, 0});
  Frame();
  EXPECT_EQ(hand->GetAxes(), (SixAxes{300.0, 0, -20.0, 0, 0, 0}));
}

TEST_F(SixAxisHandTest, settings_that_are_not_valid_are_not_taken) {
  SixAxisSettings settings = SixAxisSettings::ForDevice();
  settings.deadZone = NOT_A_NUMBER;
  EXPECT_FALSE(hand->SetSettings(&source, settings));
  EXPECT_EQ(hand->GetSettings(&source), SixAxisSettings::ForDevice());
  EXPECT_FALSE(hand->SetSettings(nullptr, SixAxisSettings::ForDevice()));
  const FedSource stranger;
  EXPECT_FALSE(hand->SetSettings(&stranger, SixAxisSettings::ForDevice()));
}

TEST_F(SixAxisHandTest, numbers_that_are_none_count_as_rest) {
  source.Feed({NOT_A_NUMBER, std::numeric_limits<double>::infinity(), 1e300, 0, 0, 0});
  EXPECT_TRUE(Frame());
  EXPECT_EQ(hand->GetAxes(), (SixAxes{0, 0, zovhost::MOST_DEFLECTION, 0, 0, 0}));
  EXPECT_TRUE(observer.lastTranslation.IsFinite());
}

// ---- the rate of frames ----

TEST_F(SixAxisHandTest, the_camera_is_as_fast_at_any_rate) {
  // In milliseconds, whose sums are just half a second each: 30, 60 and 144 frames a second.
  const std::vector<std::vector<std::uint32_t>> rates = {
      {33, 33, 34}, {16, 17, 17}, {7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 9}, {1}, {100}};
  for (const auto& periods : rates) {
    source.Feed(PUSHED);
    Frame();  // which only begins it
    observer.total = {};
    std::uint32_t passed = 0;
    for (std::size_t i = 0; passed < 500; ++i) {
      const std::uint32_t period = periods[i % periods.size()];
      Frame(period);
      passed += period;
    }
    EXPECT_EQ(passed, 500U);
    // 30 inputs of 100 beyond the threshold at 60 frames a second.
    EXPECT_NEAR(observer.total.x, 30 * 100 * 0.0009 * 0.6, 1e-9) << periods[0];
    source.Feed(AT_REST);
    Frame();
  }
}

TEST_F(SixAxisHandTest, a_frame_that_comes_late_makes_no_leap) {
  source.Feed(PUSHED);
  Frame();
  Frame(60000);
  EXPECT_NEAR(observer.lastTranslation.x, 6 * 100 * 0.0009 * 0.6, 1e-12);  // a tenth of a second
}

TEST_F(SixAxisHandTest, two_frames_at_one_moment_do_not_end_the_motion) {
  source.Feed(PUSHED);
  Frame();
  Frame(0);
  EXPECT_TRUE(controller->IsOperating());
  EXPECT_GT(observer.lastTranslation.x, 0.0);
}

TEST_F(SixAxisHandTest, the_time_at_rest_does_not_count) {
  source.Feed(PUSHED);
  Frame();
  source.Feed(AT_REST);
  Frame();
  source.Feed(PUSHED);
  Frame(5000);
  EXPECT_NEAR(observer.lastTranslation.x, 100 * 0.0009 * 0.6, 1e-12);
}

TEST_F(SixAxisHandTest, the_sensitivity_of_the_controller_is_its_users) {
  controller->SetSensitivity(0.002);
  controller->SetInputThreshold(55.0);
  source.Feed(PUSHED);
  Frame();
  Frame(50);  // three frames
  EXPECT_NEAR(observer.lastTranslation.x, 3 * 50 * 0.002 * 0.6, 1e-12);
  EXPECT_EQ(controller->GetSensitivity(), 0.002);
}

// ---- buttons ----

TEST_F(SixAxisHandTest, a_button_presses_and_releases_its_command) {
  source.FeedButton(0, true);
  EXPECT_TRUE(Frame());
  EXPECT_EQ(observer.TakeLines(), Lines{"down 15"});
  EXPECT_FALSE(Frame());
  source.FeedButton(0, false);
  EXPECT_TRUE(Frame());
  EXPECT_EQ(observer.TakeLines(), Lines{"up 15"});
}

TEST_F(SixAxisHandTest, a_button_that_was_pressed_between_two_frames_is_not_lost) {
  source.FeedButton(1, true);
  source.FeedButton(1, false);
  Frame();
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 21", "up 21"}));
}

TEST_F(SixAxisHandTest, a_button_that_was_let_go_and_pressed_again_between_two_frames_presses_again) {
  source.FeedButton(1, true);
  Frame();
  source.FeedButton(1, false);
  source.FeedButton(1, true);
  Frame();
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 21", "up 21", "down 21"}));
  EXPECT_FALSE(Frame());
}

TEST_F(SixAxisHandTest, each_button_has_the_command_of_the_settings) {
  SixAxisSettings settings;
  for (int button = 0; button < 64; ++button) {
    settings.commands[static_cast<std::size_t>(button)] =
        button < 22 ? 21 - button : SixAxisSettings::NOTHING;
  }
  hand->SetSettings(&source, settings);
  for (int button = 0; button < 64; ++button) {
    source.FeedButton(button, true);
    Frame();
    source.FeedButton(button, false);
    Frame();
    const std::string id = std::to_string(21 - button);
    EXPECT_EQ(observer.TakeLines(), button < 22 ? (Lines{"down " + id, "up " + id}) : Lines{}) << button;
  }
}

TEST_F(SixAxisHandTest, a_button_that_is_mapped_anew_while_it_is_held_releases_what_it_pressed) {
  source.FeedButton(0, true);
  Frame();
  SixAxisSettings settings = hand->GetSettings(&source);
  settings.commands[0] = 7;
  hand->SetSettings(&source, settings);
  source.FeedButton(0, false);
  Frame();
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 15", "up 15"}));
}

TEST_F(SixAxisHandTest, a_button_is_told_before_the_axes) {
  Lines told;
  hand->SetStateHandler([&](const Vector3& translation, const Vector3&) {
    told.push_back("state " + std::to_string(std::lround(translation.x)));
  });
  hand->SetCommandHandler([&](int command, bool pressed) {
    told.push_back((pressed ? "press " : "release ") + std::to_string(command));
  });
  source.Feed(PUSHED);
  source.FeedButton(0, true);
  Frame();
  source.Feed(AT_REST);
  source.FeedButton(0, false);
  Frame();
  EXPECT_EQ(told, (Lines{"press 15", "state 105", "release 15", "state 0"}));
}

TEST_F(SixAxisHandTest, a_number_that_is_no_button_is_refused) {
  EXPECT_FALSE(source.FeedButton(-1, true));
  EXPECT_FALSE(source.FeedButton(64, true));
  EXPECT_FALSE(Frame());
}

// ---- the focus ----

TEST_F(SixAxisHandTest, without_the_focus_nothing_is_told) {
  source.Feed(PUSHED);
  source.FeedButton(0, true);
  EXPECT_FALSE(Frame(16, false));
  EXPECT_FALSE(hand->IsMoving());
  EXPECT_EQ(observer.inputs, 0);
  EXPECT_EQ(hand->GetAxes(), PUSHED);  // for a page of settings
}

TEST_F(SixAxisHandTest, losing_the_focus_ends_the_motion_and_releases_the_buttons) {
  source.Feed(PUSHED);
  source.FeedButton(0, true);
  Frame();
  EXPECT_TRUE(Frame(16, false));
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 15", "up 15"}));
  EXPECT_EQ(observer.lastTranslation, Vector3());
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_FALSE(Frame(16, false));
}

TEST_F(SixAxisHandTest, what_is_still_deflected_moves_again_with_the_focus_and_a_held_button_does_not_press) {
  source.Feed(PUSHED);
  source.FeedButton(1, true);
  Frame();
  Frame(16, false);
  observer.TakeLines();
  Frame();
  EXPECT_TRUE(controller->IsOperating());
  source.FeedButton(1, false);
  Frame();
  EXPECT_EQ(observer.TakeLines(), Lines{});
}

TEST_F(SixAxisHandTest, a_button_that_was_pressed_elsewhere_is_not_pressed_here) {
  source.FeedButton(0, true);
  Frame(16, false);
  Frame();
  source.FeedButton(0, false);
  Frame();
  EXPECT_EQ(observer.TakeLines(), Lines{});
}

// ---- devices and sources that go ----

TEST_F(SixAxisHandTest, a_device_that_vanishes_in_mid_motion_comes_to_rest) {
  source.Feed(PUSHED);
  source.FeedButton(0, true);
  Frame();
  source.RemoveDevice();
  EXPECT_TRUE(Frame());
  EXPECT_EQ(observer.lastTranslation, Vector3());
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 15", "up 15"}));
  EXPECT_FALSE(source.HasDevice());
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(SixAxisHandTest, a_source_that_is_taken_away_lets_go) {
  source.Feed(PUSHED);
  source.FeedButton(0, true);
  Frame();
  hand->RemoveSource(&source);
  EXPECT_TRUE(Frame());
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 15", "up 15"}));
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_FALSE(Frame());
}

TEST_F(SixAxisHandTest, a_source_that_goes_is_forgotten) {
  auto other = std::make_unique<FedSource>();
  hand->AddSource(other.get());
  other->Feed(PUSHED);
  other->FeedButton(1, true);
  Frame();
  other.reset();
  EXPECT_TRUE(Frame());
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 21", "up 21"}));
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(SixAxisHandTest, a_source_is_there_once) {
  EXPECT_FALSE(hand->AddSource(&source));
  EXPECT_FALSE(hand->AddSource(nullptr));
  hand->RemoveSource(nullptr);
  hand->RemoveSource(&source);
  hand->RemoveSource(&source);
  EXPECT_TRUE(hand->AddSource(&source));
  source.Feed(PUSHED);
  EXPECT_TRUE(Frame());
}

TEST_F(SixAxisHandTest, a_controller_that_is_taken_away_is_told_of_the_end) {
  source.Feed(PUSHED);
  source.FeedButton(0, true);
  Frame();
  hand->SetController(nullptr);
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 15", "up 15"}));
  EXPECT_FALSE(hand->IsMoving());
  EXPECT_FALSE(Frame());
  Cam3DController other;
  other.AddObserver(&observer);
  hand->SetController(&other);
  EXPECT_TRUE(Frame());
  EXPECT_GT(observer.lastTranslation.x, 0.0);
  hand->SetController(nullptr);
  other.RemoveObserver(&observer);
}

TEST_F(SixAxisHandTest, a_hand_that_goes_ends_the_motion) {
  source.Feed(PUSHED);
  Frame();
  hand.reset();
  EXPECT_FALSE(controller->IsOperating());
}

// ---- what a host does while it is told ----

TEST_F(SixAxisHandTest, whoever_is_told_may_delete_the_hand) {
  const std::vector<std::function<void()>> places = {
      [this] { hand->SetStateHandler([this](const Vector3&, const Vector3&) { hand.reset(); }); },
      [this] { hand->SetCommandHandler([this](int, bool) { hand.reset(); }); },
      [this] { observer.react = [this] { hand.reset(); }; },
  };
  for (const auto& place : places) {
    hand = std::make_unique<SixAxisHand>(controller.get());
    hand->AddSource(&source);
    place();
    source.Feed(PUSHED);
    source.FeedButton(0, false);
    source.FeedButton(0, true);
    platform.Advance(16);
    EXPECT_TRUE(hand->Advance(true));
    EXPECT_EQ(hand, nullptr);
    observer.react = nullptr;
    EXPECT_FALSE(controller->IsOperating());
  }
}

TEST_F(SixAxisHandTest, whoever_is_told_may_take_the_controller_away_and_delete_it) {
  for (const bool asState : {true, false}) {
    auto other = std::make_unique<Cam3DController>();
    hand->SetController(other.get());
    const auto remove = [&] {
      hand->SetController(nullptr);
      other.reset();
    };
    if (asState) {
      hand->SetStateHandler([&](const Vector3&, const Vector3&) { remove(); });
    } else {
      hand->SetCommandHandler([&](int, bool) { remove(); });
    }
    source.Feed(PUSHED);
    source.FeedButton(1, true);
    Frame();
    EXPECT_EQ(other, nullptr);
    EXPECT_FALSE(hand->IsMoving());
    hand->SetStateHandler(nullptr);
    hand->SetCommandHandler(nullptr);
    source.FeedButton(1, false);
    Frame();
  }
}

TEST_F(SixAxisHandTest, another_controller_is_not_told_of_what_began_with_the_former) {
  Cam3DController other;
  Observer heard;
  other.AddObserver(&heard);
  hand->SetStateHandler([&](const Vector3&, const Vector3&) { hand->SetController(&other); });
  hand->SetCommandHandler([&](int, bool) { hand->SetController(&other); });
  source.FeedButton(1, true);
  source.Feed(PUSHED);
  Frame();
  EXPECT_EQ(heard.TakeLines(), Lines{});
  EXPECT_FALSE(controller->IsOperating());
  source.Feed(AT_REST);
  source.FeedButton(1, false);
  Frame();
  EXPECT_EQ(heard.TakeLines(), Lines{});
  EXPECT_FALSE(other.IsOperating());
  hand->SetController(nullptr);
  other.RemoveObserver(&heard);
}

TEST_F(SixAxisHandTest, a_controller_that_is_taken_away_within_its_end_is_told_of_it_all_the_same) {
  source.FeedButton(1, true);
  source.Feed(PUSHED);
  Frame();
  observer.TakeLines();
  hand->SetStateHandler([&](const Vector3&, const Vector3&) { hand->SetController(nullptr); });
  hand->SetCommandHandler([&](int, bool) { hand->SetController(nullptr); });
  source.FeedButton(1, false);
  Frame();
  EXPECT_EQ(observer.TakeLines(), Lines{"up 21"});
  EXPECT_FALSE(controller->IsOperating());
  hand->SetCommandHandler(nullptr);
  hand->SetStateHandler(nullptr);
  hand->SetController(controller.get());
  Frame();
  EXPECT_TRUE(controller->IsOperating());
  hand->SetStateHandler([&](const Vector3&, const Vector3&) { hand->SetController(nullptr); });
  source.Feed(AT_REST);
  Frame();
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(SixAxisHandTest, whoever_is_told_may_change_sources_and_handlers_and_ask_for_a_frame) {
  std::vector<std::unique_ptr<FedSource>> more;
  hand->SetCommandHandler([&](int, bool) {
    for (int i = 0; i < 20; ++i) {
      more.push_back(std::make_unique<FedSource>());
      hand->AddSource(more.back().get());
    }
    hand->RemoveSource(&source);
    hand->SetCommandHandler(nullptr);
    EXPECT_FALSE(hand->Advance(true));
  });
  source.FeedButton(0, true);
  Frame();
  EXPECT_EQ(observer.TakeLines(), (Lines{"down 15", "up 15"}));
  more.front()->Feed(PUSHED);
  EXPECT_TRUE(Frame());
}

// ---- waking ----

TEST_F(SixAxisHandTest, a_host_is_woken_once_until_the_next_frame) {
  int woken = 0;
  hand->SetWake([&] { ++woken; });
  FedSource later;
  hand->AddSource(&later);
  later.Feed(PUSHED);
  later.Feed(AT_REST);
  later.FeedButton(0, true);
  EXPECT_EQ(woken, 1);
  source.Feed(PUSHED);
  EXPECT_EQ(woken, 2);
  Frame();
  later.RemoveDevice();
  EXPECT_EQ(woken, 3);
  hand->RemoveSource(&later);
  Frame();
  later.Poll();
  later.Feed(PUSHED);
  EXPECT_EQ(woken, 3);
}

// ---- cost ----

TEST_F(SixAxisHandTest, a_frame_allocates_nothing) {
  FedSource other(SixAxisSettings::ForGameController());
  hand->AddSource(&other);
  int told = 0;
  hand->SetStateHandler([&](const Vector3&, const Vector3&) { ++told; });
  source.Feed(PUSHED);
  other.Feed({0, 300.0, 0, 0, 0, 0});
  Frame();
  Frame();
  const AllocationCounter counter;
  for (int i = 0; i < 1000; ++i) {
    source.Feed({100.0 + i % 7, 0, 0, 10.0, 0, 0});
    platform.AdvanceWithoutTimers(16);
    hand->Advance(true);
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_EQ(told, 1002);
}
