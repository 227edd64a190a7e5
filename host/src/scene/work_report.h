#pragma once

#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>

#include "zovhost/scene.h"

namespace zovhost {

/// Thrown through a piece of work that nobody wants any more.
class WorkCancelled : public std::exception {
 public:
  const char* what() const noexcept override { return "it was broken off"; }
};

/// How far a piece of work is: told by the thread that does it, heard by another, which may break it off.
class WorkReport {
 public:
  /// A part of the whole, from one fraction to another. `what` must be a literal.
  void BeginStep(double from, double to, const char* what);
  /// Of the step, from 0 to 1. Throws WorkCancelled.
  void Tell(double fraction);
  /// For each of `count` rounds of a loop; looks up once in some thousand rounds.
  void Count(std::size_t done, std::size_t count) {
    if ((done & (ROUNDS - 1)) == 0) Tell(static_cast<double>(done) / static_cast<double>(count));
  }
  /// The same without a throw: false once it is cancelled. From any thread.
  bool Note(double fraction);

  double GetFraction() const { return fraction; }
  const char* GetStep() const { return step; }
  void Cancel() { cancelled = true; }
  bool IsCancelled() const { return cancelled; }

 private:
  static constexpr std::size_t ROUNDS = std::size_t{1} << 14;

  std::atomic<double> fraction = 0.0;
  std::atomic<const char*> step = "";
  std::atomic<bool> cancelled = false;
  double stepFrom = 0.0;
  double stepTo = 1.0;
};

/// Does the work on a thread of its own, and tells `progress` twenty times a second on this one until it is
/// done; then the thread is gone. False when `progress` or the work has broken it off. What the work throws
/// besides is thrown here. Without `progress` this thread does it.
bool RunReported(const Progress& progress, const std::function<void(WorkReport&)>& work);

/// Calls `progress` when its last call is a while ago, for loops that know of no thread: twenty times a
/// second, or more rarely where a call takes long, since it may draw a frame and the work is to have half of
/// the time.
class PacedProgress {
 public:
  explicit PacedProgress(const Progress& target);
  /// False when the work is to end.
  bool Tell(double fraction, const char* what);

 private:
  const Progress& progress;
  long long next = 0;  // milliseconds of the steady clock
};

}  // namespace zovhost
