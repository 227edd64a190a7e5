#include "ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr double RATIO_AIM = 3.0;

}  // namespace

bool RatioReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    const auto allocations = run.counters.find("allocs");
    const Result result = {run.GetAdjustedCPUTime(),
                           allocations != run.counters.end() ? allocations->second.value : 0.0};
    const auto [known, isNew] = results.emplace(run.run_name.function_name, result);
    if (isNew) continue;
    known->second.nanoseconds = std::min(known->second.nanoseconds, result.nanoseconds);
    known->second.allocations = std::max(known->second.allocations, result.allocations);
  }
}

void RatioReporter::PrintTable(const std::vector<std::string>& cases) const {
  std::printf("\n%-24s %12s %12s %8s %8s\n", "case", "library, ns", "Eigen, ns", "ratio", "allocs");
  for (const std::string& name : cases) {
    const auto library = results.find(name + LIBRARY_SUFFIX);
    const auto bare = results.find(name + BARE_SUFFIX);
    if (library == results.end() || bare == results.end()) continue;
    const double ratio = library->second.nanoseconds / bare->second.nanoseconds;
    const bool withinAim = ratio <= RATIO_AIM && library->second.allocations == 0.0;
    std::printf("%-24s %12.1f %12.1f %8.2f %8.2f%s\n", name.c_str(), library->second.nanoseconds,
                bare->second.nanoseconds, ratio, library->second.allocations,
                withinAim ? "" : "  past the aim");
  }
  std::printf("The aim: no allocation, and at most %.0f times the bare arithmetic.\n", RATIO_AIM);
}
