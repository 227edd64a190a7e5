#pragma once

namespace Korvane {

/// Red, green, blue and opacity, each 0 to 1.
struct ColorRGBA {
  double r = 0.0;
  double g = 0.0;
  double b = 0.0;
  double a = 0.0;

  constexpr ColorRGBA() = default;
  constexpr ColorRGBA(double red, double green, double blue, double alpha)
      : r(red), g(green), b(blue), a(alpha) {}
};

}  // namespace Korvane
