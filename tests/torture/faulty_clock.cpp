#include "torture/faulty_clock.h"

#include <algorithm>

#include "support/allocation_counter.h"

namespace torture {

namespace {

constexpr std::uint32_t JUMP = 3'600'000;       // milliseconds
constexpr std::uint32_t MINIMUM_PERIOD = 10;    // as a window system has it
constexpr std::uint64_t DELAY = 700;            // of an alarm that is late
constexpr long STANDSTILL = 40;                 // advances
constexpr std::uint32_t BEFORE_THE_WRAP = ~0U;  // the next millisecond is 0

}  // namespace

void FaultyClock::Let(Clock what, long atAdvance) {
  clock = what;
  wrongAdvance = atAdvance;
  advances = 0;
  if (what == Clock::Sound) shown = START;
}

void FaultyClock::Let(Alarm what, long nth) {
  alarm = what;
  refusedTimer = nth;
  timersSet = 0;
}

void FaultyClock::Show(std::uint32_t milliseconds) {
  ++advances;
  if (clock == Clock::StandsStill && advances >= wrongAdvance && advances < wrongAdvance + STANDSTILL) return;
  shown += milliseconds;
  if (advances != wrongAdvance) return;
  if (clock == Clock::JumpsForward) shown += JUMP;
  if (clock == Clock::JumpsBack) shown -= JUMP;
  if (clock == Clock::Wraps) shown = BEFORE_THE_WRAP;
}

void FaultyClock::Advance(std::uint32_t milliseconds) {
  passed += milliseconds;
  Show(milliseconds);
  CallDueTimers();
}

// A call sets and kills timers, itself included; one that repeats itself comes once more even then.
void FaultyClock::CallDueTimers() {
  const std::uint64_t delay = alarm == Alarm::Late ? DELAY : 0;
  const auto isDue = [&](const Timer& timer) { return timer.due + delay <= passed; };
  for (auto due = std::find_if(timers.begin(), timers.end(), isDue); due != timers.end();
       due = std::find_if(timers.begin(), timers.end(), isDue)) {
    const Timer timer = *due;
    due->due = passed + due->period;
    timer.proc(nullptr, 0, timer.id, shown);
    if (alarm == Alarm::Twice) timer.proc(nullptr, 0, timer.id, shown);
  }
}

std::uint64_t FaultyClock::SetTimer(std::uint32_t milliseconds, Korvane::TimerProc proc) {
  const HostCode host;
  ++timersSet;
  if (alarm == Alarm::Refuses && timersSet == refusedTimer) return 0;
  if (alarm == Alarm::RefusesForGood && timersSet >= refusedTimer) return 0;
  const std::uint32_t period = std::max(milliseconds, MINIMUM_PERIOD);
  timers.push_back({++lastID, period, passed + period, proc});
  return lastID;
}

bool FaultyClock::KillTimer(std::uint64_t timerID) {
  const HostCode host;
  return std::erase_if(timers, [&](const Timer& timer) { return timer.id == timerID; }) > 0;
}

}  // namespace torture
