#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>
#include <vector>

#include "korvane/platform.h"

namespace Korvane {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

nanoseconds ReadSteadyClock() { return std::chrono::steady_clock::now().time_since_epoch(); }

}  // namespace

class TimerQueue::Impl {
 public:
  struct Entry {
    std::uint64_t timerID;
    milliseconds period;
    nanoseconds due;
    TimerProc proc;
  };

  explicit Impl(Clock first) : clock(OrSteady(std::move(first))), start(clock()) {}

  /// The entry longest due. What has run, or was set, since `now` is due later than it.
  Entry* NextDue(nanoseconds now) {
    Entry* next = nullptr;
    for (Entry& entry : entries) {
      if (entry.due > now) continue;
      if (next == nullptr || entry.due < next->due) next = &entry;
    }
    return next;
  }

  std::vector<Entry> entries;
  std::uint64_t lastID = 0;

  /// The time that has passed for the queue, whatever clock it went by.
  nanoseconds Now() const { return passed + (clock() - start); }

  void SetClock(Clock next) {
    passed = Now();
    clock = OrSteady(std::move(next));
    start = clock();
  }

 private:
  static Clock OrSteady(Clock clock) { return clock ? std::move(clock) : Clock(&ReadSteadyClock); }

  Clock clock;
  nanoseconds start;      // on the present clock
  nanoseconds passed{0};  // until the present clock was set
};

TimerQueue::TimerQueue(Clock clock) : impl(std::make_unique<Impl>(std::move(clock))) {}
TimerQueue::~TimerQueue() = default;

void TimerQueue::SetClock(Clock clock) { impl->SetClock(std::move(clock)); }

// Counted from 1, since a stopwatch takes a start at time 0 for "not started".
std::uint32_t TimerQueue::GetTickCount() {
  const auto elapsed = std::chrono::duration_cast<milliseconds>(impl->Now());
  return static_cast<std::uint32_t>(elapsed.count() + 1);
}

std::uint64_t TimerQueue::SetTimer(std::uint32_t wanted, TimerProc proc) {
  if (proc == nullptr) return 0;
  const milliseconds period(std::max(wanted, MINIMUM_PERIOD));
  impl->entries.push_back({++impl->lastID, period, impl->Now() + period, proc});
  return impl->lastID;
}

bool TimerQueue::KillTimer(std::uint64_t timerID) {
  return std::erase_if(impl->entries, [&](const Impl::Entry& entry) { return entry.timerID == timerID; }) > 0;
}

int TimerQueue::DispatchTimers() {
  const nanoseconds now = impl->Now();
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
  nanoseconds due = nanoseconds::max();
  for (const Impl::Entry& entry : impl->entries) due = std::min(due, entry.due);
  const auto wait = std::chrono::ceil<milliseconds>(due - impl->Now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max()));
}

}  // namespace Korvane
