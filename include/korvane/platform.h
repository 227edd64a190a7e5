#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "korvane/export.h"

namespace Korvane {

/// What a timer calls. `window` is null and `message` 0 except where a window system passes its own.
using TimerProc = void (*)(void* window, unsigned message, std::uint64_t timerID, std::uint32_t time);

/// The clock and the alarm of the host's window thread. Everything that changes in time goes through it.
class ZOVTOOLS_API Platform {
 public:
  virtual ~Platform();

  /// Milliseconds since some fixed moment; wraps after 2^32 of them.
  virtual std::uint32_t GetTickCount() = 0;
  /// Calls `proc` on the window thread every `milliseconds` until killed. A period below what the platform
  /// can do is raised to its minimum. The result names the timer; 0 means that it was refused.
  virtual std::uint64_t SetTimer(std::uint32_t milliseconds, TimerProc proc) = 0;
  /// False when there is no such timer.
  virtual bool KillTimer(std::uint64_t timerID) = 0;

 protected:
  Platform() = default;
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
};

/// Installs a platform for the whole process; null puts the default back. Borrowed: it must outlive its
/// use. Install it before any timer runs, since a timer is stopped on the platform then in force.
ZOVTOOLS_API void SetPlatform(Platform* platform);

/// The platform in force. The default is the window system's own on Windows, and a TimerQueue elsewhere,
/// which the host reaches with `dynamic_cast<TimerQueue*>(&GetPlatform())` and pumps.
ZOVTOOLS_API Platform& GetPlatform();

/// The portable platform: a steady clock and a queue of timers that the host pumps from its event loop.
/// All calls belong on one thread.
class ZOVTOOLS_API TimerQueue : public Platform {
 public:
  /// Periods below this many milliseconds are raised to it.
  static constexpr std::uint32_t MINIMUM_PERIOD = 10;

  /// The time since some moment. It must not run back.
  using Clock = std::function<std::chrono::nanoseconds()>;

  /// Null: time passes as on the wall.
  explicit TimerQueue(Clock clock = nullptr);
  ~TimerQueue() override;

  /// From now on time passes as `clock` says. What has passed, and what is left to each timer, stays.
  void SetClock(Clock clock);

  std::uint32_t GetTickCount() override;
  /// Null `proc` is refused.
  std::uint64_t SetTimer(std::uint32_t milliseconds, TimerProc proc) override;
  bool KillTimer(std::uint64_t timerID) override;

  /// Runs each timer that is due, once, on the calling thread, in the order of their due times; a timer
  /// late by several periods runs once. Timers may be set and killed by what is called; one set during a
  /// call runs in a later one. Returns how many ran.
  int DispatchTimers();
  /// What the host's event wait may sleep: 0 when something is due, -1 when no timer is set.
  int MillisecondsToNextTimer() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace Korvane
