#pragma once

#include "korvane/export.h"

namespace Korvane {

class IntervalTimerImpl;

/// An alarm, once or repeatedly, that calls `Timeout` on the window thread. Start, stop and destroy it on
/// that thread only; all three are fine from within its own `Timeout`. Not copyable.
class ZOVTOOLS_API IntervalTimer {
 public:
  IntervalTimer();
  /// Stops the timer.
  virtual ~IntervalTimer();
  IntervalTimer(const IntervalTimer&) = delete;
  IntervalTimer& operator=(const IntervalTimer&) = delete;

  /// (Re)starts with a period in seconds, cut to whole milliseconds. False, and stopped, for a period that
  /// is negative or not finite and when the platform refuses.
  bool Start(double seconds, bool repeat);
  void Stop();
  bool IsRunning() const;

 protected:
  /// A one-shot timer is already stopped here and may start itself again.
  virtual void Timeout() = 0;

 private:
  friend class IntervalTimerImpl;
  IntervalTimerImpl* impl;
};

}  // namespace Korvane
