#pragma once

#include <atomic>
#include <functional>
#include <thread>

namespace zovhost {

/// A piece of work on a thread of its own that gives way to forks, in which a process takes only one of its
/// threads along: it is broken off, and begins anew afterwards.
class BackgroundWork {
 public:
  /// Looks at `stopped` now and then, and returns whether it is finished.
  using Work = std::function<bool(const std::atomic<bool>& stopped)>;

  /// Begins at once. Where no thread can be had, it stays unfinished.
  explicit BackgroundWork(Work work);
  /// Breaks it off; the thread is gone afterwards.
  ~BackgroundWork();
  BackgroundWork(const BackgroundWork&) = delete;
  BackgroundWork& operator=(const BackgroundWork&) = delete;

  bool IsFinished() const { return finished; }
  /// Memory or threads were too short: it does not go on by itself.
  bool HasFailed() const { return failed; }

  /// While one lives, no work goes on and none begins.
  class Pause {
   public:
    Pause();
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
  };

 private:
  // Both with the list of all works locked.
  void Begin();
  void End();

  const Work work;
  std::atomic<bool> stopped = false;
  std::atomic<bool> finished = false;
  std::atomic<bool> failed = false;
  std::thread thread;
};

}  // namespace zovhost
