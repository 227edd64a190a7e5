#pragma once

#include "korvane/export.h"

namespace Korvane {

/// A stopwatch over the platform's millisecond clock. All values in seconds.
class ZOVTOOLS_API Timer {
 public:
  Timer() { Reset(); }

  /// Back to the state after construction: not started.
  void Reset();
  void Start();
  /// Measures the interval since Start and adds it to the total; 0 on a timer that was not started. The
  /// start stays, so a second End counts the whole span again; for increments call Start after each End.
  void End();
  /// End and Start at one moment, with one look at the clock: the interval since the last Lap or Start.
  void Lap();

  bool IsStarted() const { return startTime != 0.0; }
  /// The time of the last Start; 0 on a timer that was not started.
  double GetStartTime() const { return startTime; }
  double GetTotalTime() const { return totalTime; }
  void SetTotalTime(double seconds) { totalTime = seconds; }
  double GetLastInterval() const { return lastInterval; }

  /// The platform's tick count in seconds. Wraps after 2^32 ms, which nothing guards.
  static double GetTime();

 private:
  double totalTime;
  double lastInterval;
  double startTime;  // 0: not started
  double endTime;
};

}  // namespace Korvane
