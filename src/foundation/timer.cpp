#include "korvane/timer.h"

#include "korvane/platform.h"

namespace Korvane {

void Timer::Reset() { totalTime = lastInterval = startTime = endTime = 0.0; }

void Timer::Start() { startTime = GetTime(); }

void Timer::End() {
  endTime = IsStarted() ? GetTime() : 0.0;
  lastInterval = endTime - startTime;
  totalTime += lastInterval;
}

void Timer::Lap() {
  const double now = GetTime();
  endTime = IsStarted() ? now : 0.0;
  lastInterval = endTime - startTime;
  totalTime += lastInterval;
  startTime = now;
}

double Timer::GetTime() { return GetPlatform().GetTickCount() / 1000.0; }

}  // namespace Korvane
