#include "memory_watch.h"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// The memory that is its own, as far as it is resident; zero for a process that has ended. A page that a
// child has not changed since its parent was forked counts twice.
double MeasureProcess(const std::string& number) {
  std::ifstream file("/proc/" + number + "/statm");
  double whole = 0.0;
  double resident = 0.0;
  double shared = 0.0;
  if (!(file >> whole >> resident >> shared)) return 0.0;
  return (resident - shared) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

double MeasureFamily() {
  double sum = MeasureProcess("self");
  std::error_code failure;
  for (std::filesystem::directory_iterator task("/proc/self/task", failure), end; !failure && task != end;
       task.increment(failure)) {
    std::ifstream children(task->path() / "children");
    for (std::string child; children >> child;) sum += MeasureProcess(child);
  }
  return sum;
}

}  // namespace

MemoryWatch::MemoryWatch() : thread([this] { Watch(); }) {}

void MemoryWatch::Stop() {
  stopped = true;
  if (thread.joinable()) thread.join();
}

void MemoryWatch::Watch() {
  constexpr std::chrono::milliseconds PERIOD(100);
  while (!stopped) {
    peak = std::max(peak.load(), MeasureFamily());
    std::this_thread::sleep_for(PERIOD);
  }
}
