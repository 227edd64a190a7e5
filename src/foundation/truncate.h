#pragma once

#include <limits>

namespace Korvane {

/// Toward zero, as a conversion does, but defined for every value: beyond the range of an int the nearest
/// int, 0 for NaN.
inline int Truncate(double value) {
  constexpr int LOW = std::numeric_limits<int>::min();
  constexpr int HIGH = std::numeric_limits<int>::max();
  if (value >= HIGH) return HIGH;
  if (value <= LOW) return LOW;
  return value == value ? static_cast<int>(value) : 0;
}

}  // namespace Korvane
