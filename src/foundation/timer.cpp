#include "korvane/timer.h"

#include "korvane/platform.h"

namespace Korvane {

void Timer::Reset() { totalTime = lastInterval = startTime = endTime = 0.0; }

void Timer::Start() { startTime = GetTime(); }

void Timer::End() {
  endTime = startTime == 0.0 ? 0.0 : GetTime();
  lastInterval = endTime - startTime;
  totalTime += lastInterval;
}

void Timer::Lap() {
  const double now = GetTime();
  endTime = startTime == 0.0 ? 0.0 : now;
  lastInterval = endTime - startTime;
  totalTime += lastInterval;
  startTime = now;
}

double Timer::GetTime() { return GetPlatform().GetTickCount() / 1000.0; }

}  // namespace Korvane
