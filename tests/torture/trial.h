#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "torture/faulty_clock.h"
#include "torture/whole_view.h"

namespace torture {

/// A user's session in which something goes wrong, and what must hold afterwards: the view is at rest, its
/// settings are the host's, a session without faults gives the cameras that it always gives, and nothing is
/// left when the view is gone.
class Trial {
 public:
  struct Fault {
    std::function<void(FaultyClock&, FailingRenderer&)> begin = [](FaultyClock&, FailingRenderer&) {};
    /// Of allocations; 0 for none. Those of the view's own making count as well.
    std::uint64_t firstAllocation = 0;
    std::uint64_t failingAllocations = 0;
    bool timersStay =
        false;  // the library keeps a note of each timer that is told of and that it does not know
    bool losesIcons = false;  // icons that the renderer did not destroy are its own affair
  };

  /// What does not hold; empty when all does.
  static std::string Run(const Fault& fault);

  /// Of a session without faults.
  struct Counts {
    std::array<long, OPERATION_COUNT> calls{};
    long advances = 0;
    long timersSet = 0;
    std::uint64_t allocations = 0;
    std::vector<Korvane::CameraParameters> film;
  };
  static const Counts& GetCounts();

 private:
  static bool Play(const Fault& fault, FaultyClock& clock, std::unique_ptr<WholeView>& view,
                   std::vector<double>& settings);
};

/// Of the numbers from 1 to `last` about `some`, spread evenly; all of them when `all` is wanted, and the one
/// that is wanted by its number. `share`: I/M, the part I (from 0) of the M into which a run is split; every
/// number is in one of them. Empty: all parts.
std::vector<long> ChooseNumbers(long last, long some, const std::string& wanted, const std::string& share);

/// Calls `run(n)` for the numbers that the environment's ZOV_TORTURE and ZOV_TORTURE_SHARE choose. The
/// numbers with a fault, each with what it is.
std::string ForEachNumber(long last, long some, const std::function<std::string(long)>& run);

}  // namespace torture
