// Hours at a program, in which nothing may pile up.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>

#include "torture/faulty_clock.h"
#include "torture/whole_view.h"

using namespace torture;

namespace {

constexpr unsigned PAUSE = 260'000;  // milliseconds; a session has fourteen, which makes it an hour long
constexpr std::uint32_t HOUR = 3'600'000;

int GetHours() { return std::getenv("ZOV_TORTURE") != nullptr ? 1000 : 40; }

std::ptrdiff_t CountOpenFiles() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return std::distance(begin(files), end(files));
}

/// What may not grow.
struct Stock {
  Stock(const AllocationCounter& counter, const WholeView& view, const FaultyClock& clock)
      : allocations(counter.GetLive()),
        bytes(counter.GetLiveBytes()),
        icons(view.renderer.GetLiveIcons()),
        textures(view.renderer.GetHeldTextures()),
        timers(clock.GetTimerCount()),
        files(CountOpenFiles()) {}
  bool operator==(const Stock& other) const = default;

  std::int64_t allocations;
  std::int64_t bytes;
  int icons;
  int textures;
  int timers;
  std::ptrdiff_t files;
};

TEST(LongRun, leaves_memory_and_handles_as_they_were_after_the_first_hours) {
  constexpr int FIRST_HOURS = 3;  // in which what is kept for the next time grows to its size
  FaultyClock clock;
  const AllocationCounter counter;
  WholeView view(clock);
  ASSERT_TRUE(view.Create());
  view.pause = PAUSE;
  const auto workAnHour = [&] {
    view.PlayAll();
    view.LetGo();
  };
  for (int hour = 0; hour < FIRST_HOURS; ++hour) workAnHour();
  const Stock first(counter, view, clock);
  const std::uint32_t begin = clock.GetTickCount();
  for (int hour = FIRST_HOURS; hour < GetHours(); ++hour) {
    workAnHour();
    const Stock now(counter, view, clock);
    ASSERT_TRUE(now == first) << "hour " << hour << ": " << now.allocations - first.allocations
                              << " allocations, " << now.bytes - first.bytes << " bytes, "
                              << now.icons - first.icons << " icons, " << now.textures - first.textures
                              << " textures, " << now.timers - first.timers << " timers";
  }
  EXPECT_GE(clock.GetTickCount() - begin, static_cast<std::uint32_t>(GetHours() - FIRST_HOURS) * HOUR);
}

}  // namespace
