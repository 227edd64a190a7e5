#pragma once

#include <chrono>
#include <functional>
#include <semaphore>

#include "zovhost/six_axis_source.h"

/// Waits for what a source will say, without asking it again and again.
class WokenSource {
 public:
  explicit WokenSource(zovhost::SixAxisSource& theSource) : source(theSource) { source.SetWake(GetWake()); }
  ~WokenSource() { source.SetWake(nullptr); }
  WokenSource(const WokenSource&) = delete;
  WokenSource& operator=(const WokenSource&) = delete;

  std::function<void()> GetWake() {
    return [this] { wakes.release(); };
  }
  /// Runs `frame`, which polls, each time that the source wakes its host. False when `condition` has not come
  /// true within a generous time.
  bool WaitUntil(const std::function<bool()>& condition, const std::function<void()>& frame) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    for (frame(); !condition(); frame()) {
      if (!wakes.try_acquire_until(end)) return false;
    }
    return true;
  }
  bool WaitUntil(const std::function<bool()>& condition) {
    return WaitUntil(condition, [this] { source.Poll(); });
  }

 private:
  zovhost::SixAxisSource& source;
  std::counting_semaphore<> wakes{0};
};
