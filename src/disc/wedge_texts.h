#pragma once

#include <array>
#include <cstddef>

#include "korvane/renderer_loans.h"

namespace Korvane {

/// The texts of a wedge, held while its menu is active.
template <std::size_t COUNT>
class WedgeTexts {
 public:
  explicit WedgeTexts(const std::array<StringID, COUNT>& strings) : ids(strings) {}

  /// Null gives back. The host, who makes the texts, may have them given back meanwhile.
  void Take(Renderer* renderer) {
    taking.Cut();
    const Lifeline::Watch goesOn(taking);
    for (std::size_t i = 0; goesOn && i < COUNT; ++i) {
      loans[i].Take(renderer, ids[i]);
    }
  }
  /// Null while it is not held.
  DynamicIcon2D* Get(std::size_t index) const { return loans[index].Get(); }

 private:
  std::array<StringID, COUNT> ids;
  std::array<StringLoan, COUNT> loans;
  Lifeline taking;
};

}  // namespace Korvane
