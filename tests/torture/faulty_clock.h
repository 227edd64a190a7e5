#pragma once

#include <cstdint>
#include <vector>

#include "korvane/platform.h"

namespace torture {

/// A clock that goes wrong when the test says so, and an alarm that is late, deaf or repeats itself. In
/// force, for the whole process, from its construction to its destruction.
class FaultyClock : public Korvane::Platform {
 public:
  static constexpr std::uint32_t START = 100'000;

  enum class Clock { Sound, JumpsForward, JumpsBack, StandsStill, Wraps };
  enum class Alarm { Sound, Refuses, RefusesForGood, Late, Twice };

  FaultyClock() { Korvane::SetPlatform(this); }
  ~FaultyClock() override { Korvane::SetPlatform(nullptr); }

  /// What happens at an advance of a number, counted from 1 and from now on. Sound: the clock shows START.
  void Let(Clock what, long atAdvance);
  /// From now on. Refuses: the timer that is the `nth` to be set. Sound: nothing is left of what was late.
  void Let(Alarm what, long nth = 0);
  long GetAdvances() const { return advances; }
  long GetTimersSet() const { return timersSet; }
  int GetTimerCount() const { return static_cast<int>(timers.size()); }

  void Advance(std::uint32_t milliseconds);

  std::uint32_t GetTickCount() override { return shown; }
  std::uint64_t SetTimer(std::uint32_t milliseconds, Korvane::TimerProc proc) override;
  bool KillTimer(std::uint64_t timerID) override;

 private:
  struct Timer {
    std::uint64_t id;
    std::uint32_t period;
    std::uint64_t due;
    Korvane::TimerProc proc;
  };

  void Show(std::uint32_t milliseconds);
  void CallDueTimers();

  std::uint32_t shown = START;
  std::uint64_t passed = 0;  // milliseconds, as it is in truth
  Clock clock = Clock::Sound;
  Alarm alarm = Alarm::Sound;
  long wrongAdvance = 0;
  long refusedTimer = 0;
  long advances = 0;
  long timersSet = 0;
  std::uint64_t lastID = 0;
  std::vector<Timer> timers;
};

}  // namespace torture
