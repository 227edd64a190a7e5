// What may happen on more than one thread, for the thread sanitizer, and what is caught where it may not.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "camera/fly_operation.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "korvane/interval_timer.h"
#include "korvane/rewind_history.h"
#include "korvane/toolbar.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

/// A clock that any thread may read.
class SharedClock : public Platform {
 public:
  SharedClock() { SetPlatform(this); }
  ~SharedClock() override { SetPlatform(nullptr); }
  std::uint32_t GetTickCount() override { return 1000; }
  std::uint64_t SetTimer(std::uint32_t /*milliseconds*/, TimerProc /*proc*/) override { return 0; }
  bool KillTimer(std::uint64_t /*timerID*/) override { return false; }
};

/// The hub of a view that has no widgets: operations and animated moves.
class Navigation : public MemoryHub {
 public:
  Navigation() : MemoryHub(LookAt({3, 4, 10}, {0, 0, 0}, {0, 1, 0})) {}

  void ApplyCameraParameters(const CameraParameters& camera) override {
    MemoryHub::ApplyCameraParameters(camera);
    cameras.push_back(camera);
  }
  void Work() {
    for (int round = 0; round < 40; ++round) {
      for (const OperationType type : {OPERATION_ORBIT, OPERATION_PAN, OPERATION_ZOOM, OPERATION_LOOK}) {
        BeginOperation(type, 100, 100);
        for (int step = 1; step <= 5; ++step) Drag(type, 100 + 7 * step, 100 - 3 * step);
        EndOperation(type);
      }
      SpinShotParameters spin;
      spin.angle = 0.5;
      spin.duration = 0.1;
      MemoryHub::BeginShot(spin);
      for (int step = 0; step < 4; ++step) AdvanceActiveShot(0.03);
      EndShot();
      (void)FitAllToView();
      EndShot();
    }
  }

  std::vector<CameraParameters> cameras;
};

bool AreSame(const std::vector<CameraParameters>& one, const std::vector<CameraParameters>& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), SameBits);
}

TEST(Threads, two_hubs_work_on_two_threads_as_on_one) {
  const SharedClock platform;
  Navigation alone;
  alone.Work();
  EXPECT_GT(alone.cameras.size(), 500U);
  Navigation here;
  Navigation there;
  std::thread other([&there] { there.Work(); });
  here.Work();
  other.join();
  EXPECT_TRUE(AreSame(here.cameras, alone.cameras));
  EXPECT_TRUE(AreSame(there.cameras, alone.cameras));
}

/// As they are at first.
class FadingBars : public Toolbar {
 public:
  static void SetStep() { SetFadeStepValue(sm_fadeStepValue); }
  static void SetDistance() { SetFadeDistanceFactor(sm_fadeDistanceFactor); }
};

class Alarm : public IntervalTimer {
 protected:
  void Timeout() override {}
};

// What belongs to the thread of the timers.
struct Misuse {
  const char* name;
  void (*commit)();
};

class ThreadsDeathTest : public testing::TestWithParam<Misuse> {};

TEST_P(ThreadsDeathTest, is_caught_on_a_second_thread_while_timers_run) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto misuse = [] {
    const ManualPlatform platform;
    Alarm first;
    first.Start(1.0, false);
    std::thread(GetParam().commit).join();
  };
#ifdef NDEBUG
  misuse();
#else
  EXPECT_DEATH(misuse(), "belong to one thread");
#endif
}

TEST_P(ThreadsDeathTest, may_be_done_on_any_thread_while_no_timer_runs) {
  const ManualPlatform platform;
  std::thread(GetParam().commit).join();
  GetParam().commit();
  SetPlatform(nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Misuses, ThreadsDeathTest,
    testing::Values(Misuse{"a_timer", [] { Alarm().Start(1.0, false); }},
                    Misuse{"the_platform", [] { SetPlatform(nullptr); }},
                    Misuse{"the_adjuster", [] { SetAspectRatioAdjuster(nullptr); }},
                    Misuse{"an_accelerated_walk", [] { FlyOperation().SetMoveAccelerated(false); }},
                    Misuse{"the_interpolation_of_the_film_strip",
                           [] { RewindHistory::SetAngularInterpolation(true); }},
                    Misuse{"the_fading_of_bars", [] { FadingBars::SetStep(); }},
                    Misuse{"the_distance_at_which_bars_fade", [] { FadingBars::SetDistance(); }}),
    [](const auto& misuse) { return std::string(misuse.param.name); });

}  // namespace
