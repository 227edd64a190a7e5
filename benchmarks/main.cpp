// Times what a host does in every frame. Each case is first checked against the bare arithmetic that it is
// compared with, and the simplest arithmetic against itself: a fast wrong answer is no result.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "benchmark_case.h"
#include "korvane/platform.h"
#include "ratio_reporter.h"
#include "simplest_moves.h"
#include "support/allocation_counter.h"

namespace {

constexpr int CHECKED_STEPS = 1000;
constexpr int REPETITIONS = 12;
constexpr double SECONDS_PER_REPETITION = 0.03;

// A case runs on the machine's own clock, unless its restart installs another.
void Restart(BenchmarkCase& benchmarkCase) {
  Korvane::SetPlatform(nullptr);
  benchmarkCase.Restart();
}

bool Report(const BenchmarkCase& benchmarkCase, const char* what, int step) {
  std::fprintf(stderr, "%s: %s after step %d\n", benchmarkCase.GetName().c_str(), what, step + 1);
  return false;
}

bool Check(BenchmarkCase& benchmarkCase) {
  Restart(benchmarkCase);
  for (int step = 0; step < CHECKED_STEPS; ++step) {
    benchmarkCase.StepLibrary();
    benchmarkCase.StepBare();
    if (!benchmarkCase.Agrees()) {
      return Report(benchmarkCase, "not the result that the bare arithmetic expects", step);
    }
  }
  SimplestMove* const simplest = benchmarkCase.GetSimplest();
  if (simplest == nullptr) return true;
  simplest->Restart();
  for (int step = 0; step < CHECKED_STEPS; ++step) {
    simplest->Step();
    if (!simplest->IsSensible()) return Report(benchmarkCase, "the simplest arithmetic went wrong", step);
  }
  return true;
}

template <class Stepped>
void Run(benchmark::State& state, Stepped& stepped, void (Stepped::*step)()) {
  const AllocationCounter counter;
  for ([[maybe_unused]] auto iteration : state) (stepped.*step)();
  state.counters["allocs"] =
      static_cast<double>(counter.GetAllocations()) / static_cast<double>(state.iterations());
}

template <class Timed>
void Register(const BenchmarkCase& benchmarkCase, const char* suffix, Timed timed) {
  benchmark::RegisterBenchmark((benchmarkCase.GetName() + suffix).c_str(), timed)
      ->MinTime(SECONDS_PER_REPETITION)
      ->Repetitions(REPETITIONS);
}

void RegisterSide(BenchmarkCase& benchmarkCase, const char* suffix, void (BenchmarkCase::*step)()) {
  Register(benchmarkCase, suffix, [&benchmarkCase, step](benchmark::State& state) {
    Restart(benchmarkCase);
    Run(state, benchmarkCase, step);
  });
}

void RegisterSides(BenchmarkCase& benchmarkCase) {
  RegisterSide(benchmarkCase, RatioReporter::LIBRARY_SUFFIX, &BenchmarkCase::StepLibrary);
  RegisterSide(benchmarkCase, RatioReporter::BARE_SUFFIX, &BenchmarkCase::StepBare);
  SimplestMove* const simplest = benchmarkCase.GetSimplest();
  if (simplest == nullptr) return;
  Register(benchmarkCase, RatioReporter::SIMPLEST_SUFFIX, [simplest](benchmark::State& state) {
    simplest->Restart();
    Run(state, *simplest, &SimplestMove::Step);
  });
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
  for (const auto& group :
       {GetFrameCases(), GetPickCases(), GetShotCases(), GetFitCases(), GetCubeCases(), GetViewManagerCases(),
        GetToolbarCases(), GetDiscCases(), GetStoryCases(), GetFacadeCases(), GetControllerCases()}) {
    cases.insert(cases.end(), group.begin(), group.end());
  }

  for (BenchmarkCase* const each : cases) {
    if (!Check(*each)) return 1;
    RegisterSides(*each);
  }

  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintTable(cases);
  benchmark::Shutdown();
  return 0;
}
