#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "korvane/platform.h"

namespace {

using std::chrono::steady_clock;

// The timers of these tests go as on the wall, but by no more than this from one look at the clock to the
// next: a program that is kept from running for a second has not been pressed by a finger for a second.
constexpr std::chrono::nanoseconds LONGEST_STEP = std::chrono::milliseconds(20);

class PatientTime : public testing::Environment {
 public:
  void SetUp() override {
    auto* const timers = dynamic_cast<Korvane::TimerQueue*>(&Korvane::GetPlatform());
    ASSERT_NE(timers, nullptr);
    timers->SetClock([this] { return Read(); });
  }
  void TearDown() override {
    auto* const timers = dynamic_cast<Korvane::TimerQueue*>(&Korvane::GetPlatform());
    ASSERT_NE(timers, nullptr);
    timers->SetClock(nullptr);
  }

 private:
  std::chrono::nanoseconds Read() {
    const steady_clock::time_point now = steady_clock::now();
    passed += std::min<std::chrono::nanoseconds>(now - last, LONGEST_STEP);
    last = now;
    return passed;
  }

  steady_clock::time_point last = steady_clock::now();
  std::chrono::nanoseconds passed{0};
};

const testing::Environment* const PATIENT_TIME = testing::AddGlobalTestEnvironment(new PatientTime);

}  // namespace
