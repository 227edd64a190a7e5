#include "korvane/platform.h"

#include "foundation/one_thread.h"

#if defined(_WIN32)
#  include "foundation/windows_platform.h"
#endif

namespace Korvane {

namespace {

Platform* thePlatform = nullptr;

// Never destroyed: timers of static duration are stopped after main.
Platform& DefaultPlatform() {
#if defined(_WIN32)
  static auto* platform = new WindowsPlatform;
#else
  static auto* platform = new TimerQueue;
#endif
  return *platform;
}

}  // namespace

Platform::~Platform() = default;

void SetPlatform(Platform* platform) {
  AssertOneThread();
  thePlatform = platform;
}

Platform& GetPlatform() { return thePlatform != nullptr ? *thePlatform : DefaultPlatform(); }

}  // namespace Korvane
