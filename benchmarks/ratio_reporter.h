#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "benchmark_case.h"

/// Gathers all runs and prints one table: each case of the library beside the bare arithmetic of the same
/// answers and, where there is one, the simplest arithmetic of such a move.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  /// What runs are named: the case, then one of these.
  static constexpr const char* LIBRARY_SUFFIX = "/library";
  static constexpr const char* BARE_SUFFIX = "/bare";
  static constexpr const char* SIMPLEST_SUFFIX = "/simplest";

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void PrintTable(const std::vector<BenchmarkCase*>& cases) const;

 private:
  struct Result {
    double nanoseconds;  // the fastest repetition, which other programs disturbed least
    double allocations;
  };
  void PrintRow(const BenchmarkCase& benchmarkCase, const std::string& name) const;
  const Result* Find(const std::string& name) const;

  std::map<std::string, Result> results;
};
