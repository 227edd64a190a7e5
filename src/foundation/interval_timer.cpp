#include "korvane/interval_timer.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cmath>
#include <limits>
#include <thread>
#include <utility>

#include "foundation/interval_timer_impl.h"
#include "foundation/one_thread.h"
#include "foundation/out_of_memory.h"
#include "korvane/platform.h"

namespace Korvane {

IntervalTimer::IntervalTimer() : impl(new IntervalTimerImpl(this)) {}

IntervalTimer::~IntervalTimer() { delete impl; }

bool IntervalTimer::Start(double seconds, bool repeat) { return impl->Start(seconds, repeat); }
void IntervalTimer::Stop() { impl->Stop(); }
bool IntervalTimer::IsRunning() const { return impl->IsRunning(); }

#ifndef NDEBUG
void AssertOneThread() {
  static std::atomic<std::thread::id> thread;
  if (!IntervalTimerImpl::AnyRuns()) thread = std::this_thread::get_id();
  assert(thread == std::this_thread::get_id() && "timers and what is process-wide belong to one thread");
}
#endif

// Never destroyed: a timer that outlives the end of main still finds it.
std::map<std::uint64_t, IntervalTimerImpl*>& IntervalTimerImpl::Timers() {
  static auto* timers = new std::map<std::uint64_t, IntervalTimerImpl*>;
  return *timers;
}

bool IntervalTimerImpl::AnyRuns() {
  return std::any_of(Timers().begin(), Timers().end(),
                     [](const auto& each) { return each.second != nullptr; });
}

bool IntervalTimerImpl::Start(double seconds, bool repeatedly) {
  Stop();
  repeat = repeatedly;
  const double milliseconds = std::trunc(seconds * 1000.0);
  if (!std::isfinite(milliseconds) || seconds < 0.0) return false;
  const double longest = std::numeric_limits<std::uint32_t>::max();
  const auto period = static_cast<std::uint32_t>(std::min(milliseconds, longest));
  AssertOneThread();
  timerID = GetPlatform().SetTimer(period, &TimerProc);
  if (timerID == 0) return false;
  const bool noted = OrFail([this] {
    Timers()[timerID] = this;
    return true;
  });
  if (noted) return true;
  GetPlatform().KillTimer(std::exchange(timerID, 0));
  return false;
}

void IntervalTimerImpl::Stop() {
  if (timerID == 0) return;
  GetPlatform().KillTimer(timerID);
  Timers().erase(timerID);
  timerID = 0;
}

void IntervalTimerImpl::CallTimeout() {
  if (owner != nullptr) owner->Timeout();
}

// The timer may be destroyed in its own Timeout: nothing of it is touched after the call.
void IntervalTimerImpl::TimerProc(void* /*window*/, unsigned /*message*/, std::uint64_t timerID,
                                  std::uint32_t /*time*/) {
  IntervalTimerImpl* const timer = OrFail([timerID] { return Timers()[timerID]; });
  if (timer == nullptr) return;
  if (!timer->repeat) timer->Stop();
  timer->CallTimeout();
}

}  // namespace Korvane
