#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

namespace Korvane {

class IntervalTimer;

/// The platform's side of an IntervalTimer. One process-wide map leads from the platform's identifier to
/// the object, since a timer message carries nothing else.
class IntervalTimerImpl {
 public:
  explicit IntervalTimerImpl(IntervalTimer* ownerTimer) : owner(ownerTimer) {}
  ~IntervalTimerImpl() { Stop(); }
  IntervalTimerImpl(const IntervalTimerImpl&) = delete;
  IntervalTimerImpl& operator=(const IntervalTimerImpl&) = delete;

  bool Start(double seconds, bool repeatedly);
  void Stop();
  bool IsRunning() const { return timerID != 0; }

  static void TimerProc(void* window, unsigned message, std::uint64_t timerID, std::uint32_t time);
  /// How many entries the map holds, unknown identifiers that were looked up included.
  static std::size_t GetMapSize() { return Timers().size(); }
  static bool AnyRuns();

 private:
  static std::map<std::uint64_t, IntervalTimerImpl*>& Timers();
  void CallTimeout();

  IntervalTimer* owner;  // not owned
  bool repeat = false;
  std::uint64_t timerID = 0;  // 0: not running
};

}  // namespace Korvane
