#pragma once

#include <cmath>

namespace Korvane {

/// The constants and scalar helpers of the library. Not constructible.
///
/// Helpers take any double; a NaN argument yields what the comparisons below make of it and never traps.
class Math {
 public:
  Math() = delete;

  static constexpr double PI = 3.141592653589793;
  static constexpr double DEG_TO_RAD = 0.017453292519943295;
  static constexpr double RAD_TO_DEG = 57.29577951308232;
  /// 2^-23. The one general tolerance of the library.
  static constexpr double EPSILON_VALUE = 1.1920928955078125e-07;
  /// The largest finite double; stands for "no limit".
  static constexpr double MAX_VALUE = 1.7976931348623157e+308;

  static constexpr double Min(double a, double b) { return a < b ? a : b; }
  static constexpr double Max(double a, double b) { return a > b ? a : b; }

  /// `v` held between `lo` and `hi`. The low end is tested first: with `lo` above `hi`, every v at or below
  /// `lo` gives `lo`.
  static constexpr double Clamp(double v, double lo, double hi) {
    if (lo >= v) return lo;
    return v >= hi ? hi : v;
  }

  /// (1 - t) a + t b. The parameter comes first; `t` outside 0 to 1 extrapolates.
  static constexpr double LinearInterp(double t, double a, double b) { return (1.0 - t) * a + t * b; }

  /// How far `v` lies from `lo` (0) to `hi` (1), held to that range.
  static constexpr double LinearClamp(double v, double lo, double hi) {
    if (lo >= v) return 0.0;
    return v >= hi ? 1.0 : (v - lo) / (hi - lo);
  }

  /// As LinearClamp, on the library's ease: half a sine wave, flat at both ends, 0.5 in the middle.
  static double EaseClamp(double v, double lo, double hi) {
    if (lo >= v) return 0.0;
    if (v >= hi) return 1.0;
    return (std::sin(((v - lo) / (hi - lo) - 0.5) * PI) + 1.0) * 0.5;
  }

  /// A bell curve, exp(-(x - mean)^2 / (2 sigma^2)), whose peak is 1 at `mean`.
  static double GaussianSampleUnit(double x, double mean, double sigma) {
    return std::exp((x - mean) * (x - mean) / (sigma * -2.0 * sigma));
  }
};

}  // namespace Korvane
