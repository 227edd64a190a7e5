// What may happen on more than one thread, for the thread sanitizer, and what is caught where it may not.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <thread>
#include <vector>

#include "korvane/interval_timer.h"
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

class Alarm : public IntervalTimer {
 protected:
  void Timeout() override {}
};

TEST(ThreadsDeathTest, a_timer_of_a_second_thread_is_caught) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto misuse = [] {
    const ManualPlatform platform;
    Alarm first;
    first.Start(1.0, false);
    std::thread other([] {
      Alarm second;
      second.Start(1.0, false);
    });
    other.join();
  };
#ifdef NDEBUG
  misuse();
#else
  EXPECT_DEATH(misuse(), "timers belong to one thread");
#endif
}

}  // namespace
