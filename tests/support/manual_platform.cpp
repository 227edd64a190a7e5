#include "support/manual_platform.h"

#include <algorithm>

ManualPlatform::ManualPlatform(std::uint32_t startTick) : now(startTick) { Korvane::SetPlatform(this); }

ManualPlatform::~ManualPlatform() { Korvane::SetPlatform(nullptr); }

std::uint32_t ManualPlatform::GetTickCount() {
  ++clockReads;
  return static_cast<std::uint32_t>(now);
}

std::uint64_t ManualPlatform::SetTimer(std::uint32_t milliseconds, Korvane::TimerProc proc) {
  lastRequestedPeriod = milliseconds;
  lastProc = proc;
  if (refusing || proc == nullptr) return 0;
  const std::uint32_t period = std::max(milliseconds, MINIMUM_PERIOD);
  timers.push_back({++lastID, period, now + period, proc});
  return lastID;
}

bool ManualPlatform::KillTimer(std::uint64_t timerID) {
  return std::erase_if(timers, [&](const Entry& entry) { return entry.timerID == timerID; }) > 0;
}

ManualPlatform::Entry* ManualPlatform::FindNextDue(std::uint64_t until) {
  Entry* next = nullptr;
  for (Entry& entry : timers) {
    if (entry.due <= until && (next == nullptr || entry.due < next->due)) next = &entry;
  }
  return next;
}

void ManualPlatform::Advance(std::uint32_t milliseconds) {
  const std::uint64_t until = now + milliseconds;
  while (Entry* const entry = FindNextDue(until)) {
    now = std::max(now, entry->due);
    entry->due += entry->period;
    // The entry may be gone when the call returns.
    const std::uint64_t timerID = entry->timerID;
    entry->proc(nullptr, 0, timerID, static_cast<std::uint32_t>(now));
  }
  now = std::max(now, until);
}
