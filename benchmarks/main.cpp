// Times what a host does in every frame. Each case is first checked against the bare arithmetic that it is
// compared with: a fast wrong answer is no result.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "benchmark_case.h"
#include "ratio_reporter.h"
#include "support/allocation_counter.h"

namespace {

constexpr int CHECKED_STEPS = 1000;
constexpr int REPETITIONS = 12;
constexpr double SECONDS_PER_REPETITION = 0.03;

bool Check(BenchmarkCase& benchmarkCase) {
  benchmarkCase.Restart();
  for (int step = 0; step < CHECKED_STEPS; ++step) {
    benchmarkCase.StepLibrary();
    benchmarkCase.StepBare();
    if (benchmarkCase.Agrees()) continue;
    std::fprintf(stderr, "%s: not the result that the bare arithmetic expects after step %d\n",
                 benchmarkCase.GetName().c_str(), step + 1);
    return false;
  }
  return true;
}

void Run(benchmark::State& state, BenchmarkCase& benchmarkCase, void (BenchmarkCase::*step)()) {
  benchmarkCase.Restart();
  const AllocationCounter counter;
  for ([[maybe_unused]] auto iteration : state) (benchmarkCase.*step)();
  state.counters["allocs"] =
      static_cast<double>(counter.GetAllocations()) / static_cast<double>(state.iterations());
}

void Register(BenchmarkCase& benchmarkCase, const char* suffix, void (BenchmarkCase::*step)()) {
  benchmark::RegisterBenchmark(
      (benchmarkCase.GetName() + suffix).c_str(),
      [&benchmarkCase, step](benchmark::State& state) { Run(state, benchmarkCase, step); })
      ->MinTime(SECONDS_PER_REPETITION)
      ->Repetitions(REPETITIONS);
}

}  // namespace

int main(int argc, char** argv) {
  // The repetitions of all cases take turns, so that a busy moment of the machine hits both sides alike.
  // What the caller says comes later and wins.
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  std::vector<char*> arguments(argv, argv + argc);
  arguments.insert(arguments.begin() + 1, interleave.data());
  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

  std::vector<BenchmarkCase*> cases;
  for (const auto& group : {GetFrameCases(), GetPickCases(), GetShotCases(), GetFitCases(), GetCubeCases(),
                            GetViewManagerCases()}) {
    cases.insert(cases.end(), group.begin(), group.end());
  }

  std::vector<std::string> names;
  for (BenchmarkCase* const each : cases) {
    if (!Check(*each)) return 1;
    Register(*each, RatioReporter::LIBRARY_SUFFIX, &BenchmarkCase::StepLibrary);
    Register(*each, RatioReporter::BARE_SUFFIX, &BenchmarkCase::StepBare);
    names.push_back(each->GetName());
  }

  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintTable(names);
  benchmark::Shutdown();
  return 0;
}
