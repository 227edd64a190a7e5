#pragma once

namespace Korvane {

/// What a fit leaves free beside what it fits: fractions of the width of the view at the left and the right,
/// of its height at the bottom and the top.
struct FitMargins {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;

  /// Each is a number from 0, and something is left between them.
  bool IsUsable() const {
    const bool counted = left >= 0.0 && right >= 0.0 && bottom >= 0.0 && top >= 0.0;
    return counted && left + right < 1.0 && bottom + top < 1.0;
  }
  bool IsNone() const { return left == 0.0 && right == 0.0 && bottom == 0.0 && top == 0.0; }
};

}  // namespace Korvane
