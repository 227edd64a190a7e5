#pragma once

namespace Korvane {

/// Timers, and the settings that are process-wide, belong to one thread: a build with asserts stops where
/// another one sets them while timers run.
#ifdef NDEBUG
inline void AssertOneThread() {}
#else
void AssertOneThread();
#endif

}  // namespace Korvane
