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

const RatioReporter::Result* RatioReporter::Find(const std::string& name) const {
  const auto found = results.find(name);
  return found != results.end() ? &found->second : nullptr;
}

void RatioReporter::PrintRow(const BenchmarkCase& benchmarkCase, const std::string& name) const {
  const Result* const library = Find(name + LIBRARY_SUFFIX);
  const Result* const bare = Find(name + BARE_SUFFIX);
  const Result* const simplest = Find(name + SIMPLEST_SUFFIX);
  if (library == nullptr || bare == nullptr) return;
  const double ratio = library->nanoseconds / bare->nanoseconds;
  std::printf("%-34s %12.1f %12.1f %8.2f", name.c_str(), library->nanoseconds, bare->nanoseconds, ratio);
  if (simplest != nullptr) {
    std::printf(" %12.1f %8.2f", simplest->nanoseconds, library->nanoseconds / simplest->nanoseconds);
  } else {
    std::printf(" %12s %8s", "", "");
  }
  const double aim = benchmarkCase.GetAimInNanoseconds();
  const double aimAbove = benchmarkCase.GetAimAboveBare();
  const bool fastEnough = aim > 0.0        ? library->nanoseconds <= aim
                          : aimAbove > 0.0 ? library->nanoseconds - bare->nanoseconds <= aimAbove
                                           : ratio <= RATIO_AIM;
  std::printf(" %8.2f%s\n", library->allocations,
              fastEnough && library->allocations == 0.0 ? "" : "  past the aim");
}

void RatioReporter::PrintTable(const std::vector<BenchmarkCase*>& cases) const {
  std::printf("\n%-34s %12s %12s %8s %12s %8s %8s\n", "case", "library, ns", "Eigen, ns", "ratio",
              "simplest, ns", "ratio", "allocs");
  for (const BenchmarkCase* const each : cases) PrintRow(*each, each->GetName());
  std::printf(
      "The aim: no allocation, at most %.0f times the bare arithmetic, and for orbit, pan and a frame\n"
      "of a move at most twice the simplest; a frame in which nothing moves in at most 40 ns, a mouse\n"
      "move far from the cube in at most 150 ns, a mouse move with a disc and a slide of the film strip\n"
      "in at most 3000 ns, a draw of a disc in at most 1000 ns, a mouse move over a toolbar in at most\n"
      "300 ns and far from it in at most 100 ns, a layout of a toolbar in at most 1500 ns and a draw of\n"
      "it in at most 1000 ns, a mouse move over a panel of 100 slides in at most 1500 ns and a draw of it\n"
      "in at most 8000 ns. What goes through the facade: at most 100 ns above the same without it;\n"
      "what is drawn, beside the same copies of the vertices, which the facade makes for its host.\n",
      RATIO_AIM);
}
