#pragma once

#include <cstdint>
#include <vector>

#include "korvane/platform.h"

namespace zovview {

/// The platform of a tour: time moves a sixtieth of a second with each frame and not otherwise, so that a
/// tour is the same on every machine however long its pictures take.
class TourClock : public Korvane::Platform {
 public:
  static constexpr int FRAMES_PER_SECOND = 60;

  /// In force from here to its destruction.
  TourClock();
  ~TourClock() override;

  /// One frame on; runs the timers that fall due, each once.
  void Advance();

  std::uint32_t GetTickCount() override;
  std::uint64_t SetTimer(std::uint32_t milliseconds, Korvane::TimerProc proc) override;
  bool KillTimer(std::uint64_t timerID) override;

 private:
  struct Alarm {
    std::uint64_t timerID;
    std::uint32_t period;
    std::uint32_t due;
    Korvane::TimerProc proc;
  };

  std::uint32_t frame = 0;
  std::uint64_t lastID = 0;
  std::vector<Alarm> alarms;
};

}  // namespace zovview
