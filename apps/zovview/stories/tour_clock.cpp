#include "stories/tour_clock.h"

#include <algorithm>

namespace zovview {

TourClock::TourClock() { Korvane::SetPlatform(this); }
TourClock::~TourClock() { Korvane::SetPlatform(nullptr); }

// Counted from 1, since a stopwatch takes a start at time 0 for "not started".
std::uint32_t TourClock::GetTickCount() { return 1 + frame * 1000 / FRAMES_PER_SECOND; }

// A timer may set and kill others, and itself, when it is called.
void TourClock::Advance() {
  ++frame;
  const std::uint32_t now = GetTickCount();
  std::vector<std::uint64_t> dueIDs;
  for (const Alarm& alarm : alarms) {
    if (alarm.due <= now) dueIDs.push_back(alarm.timerID);
  }
  for (const std::uint64_t timerID : dueIDs) {
    const auto found = std::find_if(alarms.begin(), alarms.end(),
                                    [timerID](const Alarm& alarm) { return alarm.timerID == timerID; });
    if (found == alarms.end()) continue;
    found->due = now + found->period;
    const Korvane::TimerProc proc = found->proc;
    proc(nullptr, 0, timerID, now);
  }
}

std::uint64_t TourClock::SetTimer(std::uint32_t milliseconds, Korvane::TimerProc proc) {
  if (proc == nullptr) return 0;
  const std::uint32_t period = std::max(milliseconds, Korvane::TimerQueue::MINIMUM_PERIOD);
  alarms.push_back({++lastID, period, GetTickCount() + period, proc});
  return lastID;
}

bool TourClock::KillTimer(std::uint64_t timerID) {
  return std::erase_if(alarms, [timerID](const Alarm& alarm) { return alarm.timerID == timerID; }) > 0;
}

}  // namespace zovview
