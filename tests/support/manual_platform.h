#pragma once

#include <cstdint>
#include <vector>

#include "korvane/platform.h"

/// A clock and an alarm whose time moves only when the test says so. In force, for the whole process, from
/// its construction to its destruction.
class ManualPlatform : public Korvane::Platform {
 public:
  /// A timer's period is raised to this many milliseconds, as a window system does.
  static constexpr std::uint32_t MINIMUM_PERIOD = 10;

  /// `startTick` is the first tick count. Not 0: a stopwatch takes a start at 0 for "not started".
  explicit ManualPlatform(std::uint32_t startTick = 1000);
  /// Puts the default platform back.
  ~ManualPlatform() override;

  std::uint32_t GetTickCount() override;
  std::uint64_t SetTimer(std::uint32_t milliseconds, Korvane::TimerProc proc) override;
  bool KillTimer(std::uint64_t timerID) override;

  /// Lets time pass. Every timer that falls due runs at its own moment, in the order of these moments, as
  /// often as it falls due; timers due at the same moment run in the order in which they were set.
  void Advance(std::uint32_t milliseconds);
  /// Lets time pass as a blocked message loop does: the clock moves and no timer runs.
  void AdvanceWithoutTimers(std::uint32_t milliseconds) { now += milliseconds; }

  /// From now on SetTimer answers 0 (or accepts again).
  void RefuseTimers(bool refuse) { refusing = refuse; }

  int GetTimerCount() const { return static_cast<int>(timers.size()); }
  /// The period that was asked for when the timer was last set, before it was raised to the minimum.
  std::uint32_t GetLastRequestedPeriod() const { return lastRequestedPeriod; }
  std::uint64_t GetLastTimerID() const { return lastID; }
  Korvane::TimerProc GetLastProc() const { return lastProc; }
  /// How often the clock was read.
  int GetClockReads() const { return clockReads; }

 private:
  struct Entry {
    std::uint64_t timerID;
    std::uint32_t period;
    std::uint64_t due;
    Korvane::TimerProc proc;
  };

  Entry* FindNextDue(std::uint64_t until);

  std::uint64_t now;  // milliseconds; the tick count is its low half, so it wraps as the real one does
  std::vector<Entry> timers;
  std::uint64_t lastID = 0;
  std::uint32_t lastRequestedPeriod = 0;
  Korvane::TimerProc lastProc = nullptr;
  bool refusing = false;
  int clockReads = 0;
};
