#include <algorithm>
#include <chrono>
#include <limits>
#include <vector>

#include "korvane/platform.h"

namespace Korvane {

using Clock = std::chrono::steady_clock;

class TimerQueue::Impl {
 public:
  struct Entry {
    std::uint64_t timerID;
    std::chrono::milliseconds period;
    Clock::time_point due;
    TimerProc proc;
  };

  /// The entry longest due. What has run, or was set, since `now` is due later than it.
  Entry* NextDue(Clock::time_point now) {
    Entry* next = nullptr;
    for (Entry& entry : entries) {
      if (entry.due > now) continue;
      if (next == nullptr || entry.due < next->due) next = &entry;
    }
    return next;
  }

  std::vector<Entry> entries;
  std::uint64_t lastID = 0;
  Clock::time_point start = Clock::now();
};

TimerQueue::TimerQueue() : impl(std::make_unique<Impl>()) {}
TimerQueue::~TimerQueue() = default;

// Counted from 1, since a stopwatch takes a start at time 0 for "not started".
std::uint32_t TimerQueue::GetTickCount() {
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - impl->start);
  return static_cast<std::uint32_t>(elapsed.count() + 1);
}

std::uint64_t TimerQueue::SetTimer(std::uint32_t milliseconds, TimerProc proc) {
  if (proc == nullptr) return 0;
  const std::chrono::milliseconds period(std::max(milliseconds, MINIMUM_PERIOD));
  impl->entries.push_back({++impl->lastID, period, Clock::now() + period, proc});
  return impl->lastID;
}

bool TimerQueue::KillTimer(std::uint64_t timerID) {
  return std::erase_if(impl->entries, [&](const Impl::Entry& entry) { return entry.timerID == timerID; }) > 0;
}

int TimerQueue::DispatchTimers() {
  const Clock::time_point now = Clock::now();
  int count = 0;
  while (Impl::Entry* entry = impl->NextDue(now)) {
    entry->due = now + entry->period;
    const std::uint64_t timerID = entry->timerID;
    const TimerProc proc = entry->proc;
    proc(nullptr, 0, timerID, GetTickCount());
    ++count;
  }
  return count;
}

int TimerQueue::MillisecondsToNextTimer() const {
  if (impl->entries.empty()) return -1;
  Clock::time_point due = Clock::time_point::max();
  for (const Impl::Entry& entry : impl->entries) due = std::min(due, entry.due);
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max()));
}

}  // namespace Korvane
