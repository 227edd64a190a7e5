#include "zovhost/wheel_counter.h"

#include <cmath>

namespace zovhost {

namespace {

constexpr double COUNTS_PER_NOTCH = 120.0;
constexpr double MOST_NOTCHES = 1000.0;  // at once

}  // namespace

std::optional<int> WheelCounter::Turn(double notches) {
  if (!(std::abs(notches) <= MOST_NOTCHES)) return std::nullopt;
  const double counts = notches * COUNTS_PER_NOTCH + rest;
  const double whole = std::trunc(counts);
  rest = counts - whole;
  return static_cast<int>(whole);
}

}  // namespace zovhost
