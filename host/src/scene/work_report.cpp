#include "scene/work_report.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace zovhost {

namespace {

constexpr std::chrono::milliseconds PERIOD(50);
constexpr std::chrono::milliseconds LONGEST_PAUSE(200);

long long GetMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// A thread, what it threw, and whether it is done.
class Worker {
 public:
  Worker(WorkReport& told, const std::function<void(WorkReport&)>& work)
      : report(told), thread([this, &work] { Run(work); }) {}
  ~Worker() {
    report.Cancel();
    thread.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  bool WaitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex);
    return ended.wait_for(lock, time, [this] { return done; });
  }
  // Once it is done.
  const std::exception_ptr& GetFailure() const { return failure; }

 private:
  void Run(const std::function<void(WorkReport&)>& work) {
    try {
      work(report);
    } catch (...) {
      failure = std::current_exception();
    }
    const std::lock_guard lock(mutex);
    done = true;
    ended.notify_all();
  }

  WorkReport& report;
  std::mutex mutex;
  std::condition_variable ended;
  bool done = false;
  std::exception_ptr failure;
  std::thread thread;  // last: it uses the others
};

}  // namespace

void WorkReport::BeginStep(double from, double to, const char* what) {
  stepFrom = from;
  stepTo = to;
  step = what;
  Tell(0.0);
}

void WorkReport::Tell(double ofStep) {
  if (!Note(ofStep)) throw WorkCancelled();
}

bool WorkReport::Note(double ofStep) {
  fraction = stepFrom + (stepTo - stepFrom) * std::clamp(ofStep, 0.0, 1.0);
  return !cancelled;
}

bool RunReported(const Progress& progress, const std::function<void(WorkReport&)>& work) try {
  WorkReport report;
  if (!progress) {
    work(report);
    return true;
  }
  std::exception_ptr failure;
  bool wanted = true;
  {
    Worker worker(report, work);
    while (!worker.WaitFor(PERIOD)) {
      wanted = wanted && progress(report.GetFraction(), report.GetStep());
      if (!wanted) report.Cancel();
    }
    failure = worker.GetFailure();
  }
  if (failure != nullptr) std::rethrow_exception(failure);
  return wanted;
} catch (const WorkCancelled&) {
  return false;
}

PacedProgress::PacedProgress(const Progress& target) : progress(target) {}

bool PacedProgress::Tell(double fraction, const char* what) {
  const long long now = GetMilliseconds();
  if (!progress || now < next) return true;
  const bool wanted = progress(fraction, what);
  const long long end = GetMilliseconds();
  next = end + std::clamp<long long>(end - now, PERIOD.count(), LONGEST_PAUSE.count());
  return wanted;
}

}  // namespace zovhost
