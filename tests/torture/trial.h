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

/// Calls `run(n)` for numbers from 1 to `last`: for about `some` of them, spread evenly, for all of them with
/// ZOV_TORTURE=all, and for the one that it names. The numbers with a fault, each with what it is.
std::string ForEachNumber(long last, long some, const std::function<std::string(long)>& run);

}  // namespace torture
