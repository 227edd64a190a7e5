// Devices, focus, settings and a host that does anything within what it is told, at random.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/random.h"
#include "zovhost/six_axis_hand.h"

namespace {

using Korvane::Cam3DController;
using Korvane::Vector3;
using zovhost::FedSource;
using zovhost::SixAxes;
using zovhost::SixAxisHand;
using zovhost::SixAxisSettings;

constexpr int EVENTS = 200000;
constexpr std::size_t SOURCES = 4;

/// What was told to one controller: presses less releases by command, and the last state.
struct Told {
  std::array<int, Korvane::CAM3D_KEY_COUNT> down{};
  bool atRest = true;
};

class Observer : public Korvane::Cam3DControllerObserver {
 public:
  explicit Observer(std::function<void()> whatToDo) : act(std::move(whatToDo)) {}
  void OnInput(Vector3, Vector3) override { act(); }
  void OnKeyDown(Korvane::Cam3DControllerKeyID) override { act(); }
  void OnKeyUp(Korvane::Cam3DControllerKeyID) override { act(); }
  void OnNavigationModeChanged(Korvane::Cam3DControllerParameters::NavigationMode) override { act(); }

 private:
  std::function<void()> act;
};

class Storm {
 public:
  explicit Storm(Random& numbers) : random(numbers) {
    for (auto& controller : controllers) {
      controller = std::make_unique<Cam3DController>();
      controller->SetKorvane(&hub);
      controller->AddObserver(&observer);
    }
    MakeHand();
  }
  ~Storm() {
    depth = MOST_DEPTH;
    hand.reset();
    for (const auto& controller : controllers) controller->RemoveObserver(&observer);
  }
  Storm(const Storm&) = delete;
  Storm& operator=(const Storm&) = delete;

  void Step() {
    Act(random.Integer(0, 9));
    if (random.Integer(0, 2) != 0) return;
    platform.AdvanceWithoutTimers(static_cast<std::uint32_t>(random.Integer(0, 40)));
    focused = random.Integer(0, 19) != 0 ? focused : !focused;
    hand->Advance(focused);
    hub.PerformOperations();
    ASSERT_TRUE(hub.view.IsFinite());
    ASSERT_FALSE(!focused && hand->IsMoving());
  }
  /// Nothing is held and nothing moves.
  void ExpectRest() {
    depth = MOST_DEPTH;
    hand->Advance(false);
    for (const int count : told.down) EXPECT_EQ(count, 0);
    EXPECT_TRUE(told.atRest);
    for (const auto& controller : controllers) EXPECT_FALSE(controller->IsOperating());
  }
  int acted = 0;  // within a call
  int presses = 0;

 private:
  static constexpr int MOST_DEPTH = 3;

  void MakeHand() {
    hand = std::make_unique<SixAxisHand>(controllers[0].get());
    hand->SetStateHandler([this](const Vector3& translation, const Vector3& rotation) {
      told.atRest = translation == Vector3() && rotation == Vector3();
      ActWithin();
    });
    hand->SetCommandHandler([this](int command, bool pressed) {
      told.down.at(static_cast<std::size_t>(command)) += pressed ? 1 : -1;
      presses += pressed ? 1 : 0;
      ActWithin();
    });
  }
  void ActWithin() {
    if (depth >= MOST_DEPTH || random.Integer(0, 7) != 0) return;
    ++depth;
    ++acted;
    Act(random.Integer(0, 9));
    --depth;
  }
  void Act(int action) {
    auto& source = sources[static_cast<std::size_t>(random.Integer(0, SOURCES - 1))];
    switch (action) {
      case 0:
        if (source != nullptr && random.Coin()) return source->RemoveDevice();
        source.reset();
        return;
      case 1:
        if (source == nullptr) source = std::make_unique<FedSource>();
        hand->AddSource(source.get());
        return;
      case 2:
        return hand->RemoveSource(source.get());
      case 3:
        hand->SetSettings(source.get(), MakeSettings());
        return;
      case 4:
        return hand->SetController(random.Integer(0, 3) != 0 ? controllers[Pick(2)].get() : nullptr);
      case 5:
        hand->Advance(random.Coin());
        return;
      case 6:
      case 7:
        if (source != nullptr) source->FeedButton(random.Integer(-1, 64), random.Coin());
        return;
      default:
        if (source != nullptr) source->Feed(MakeState());
    }
  }
  std::size_t Pick(int count) { return static_cast<std::size_t>(random.Integer(0, count - 1)); }
  SixAxes MakeState() {
    SixAxes state{};
    for (double& value : state) value = random.Integer(0, 3) == 0 ? random.Uniform(-400.0, 400.0) : 0.0;
    if (random.Integer(0, 99) == 0) state[Pick(6)] = std::numeric_limits<double>::quiet_NaN();
    if (random.Integer(0, 3) == 0) state = {};
    return state;
  }
  SixAxisSettings MakeSettings() {
    SixAxisSettings settings =
        random.Coin() ? SixAxisSettings::ForDevice() : SixAxisSettings::ForGameController();
    settings.axes[Pick(6)].to = random.Integer(-2, 6);  // some of which are none
    for (int& command : settings.commands) command = random.Integer(-1, Korvane::CAM3D_KEY_COUNT - 1);
    return settings;
  }

  Random& random;
  ManualPlatform platform;
  Observer observer{[this] { ActWithin(); }};
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  std::array<std::unique_ptr<Cam3DController>, 2> controllers;
  std::array<std::unique_ptr<FedSource>, SOURCES> sources;
  std::unique_ptr<SixAxisHand> hand;
  Told told;
  bool focused = true;
  int depth = 0;
};

}  // namespace

TEST(SixAxisHandStorm, every_press_is_released_and_every_motion_ends) {
  Random random(63);
  int acted = 0;
  int presses = 0;
  for (int round = 0; round < 20; ++round) {
    Storm storm(random);
    for (int i = 0; i < EVENTS / 20 && !testing::Test::HasFatalFailure(); ++i) storm.Step();
    storm.ExpectRest();
    acted += storm.acted;
    presses += storm.presses;
  }
  EXPECT_GT(acted, 1000);
  EXPECT_GT(presses, 1000);
}
