#pragma once

#include "korvane/platform.h"

namespace Korvane {

/// The window system's own timers and tick count. The thread that sets a timer must dispatch messages.
class WindowsPlatform : public Platform {
 public:
  std::uint32_t GetTickCount() override;
  std::uint64_t SetTimer(std::uint32_t milliseconds, TimerProc proc) override;
  bool KillTimer(std::uint64_t timerID) override;
};

}  // namespace Korvane
