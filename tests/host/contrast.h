#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace zovtest {

using Colour = std::array<double, 3>;  // red, green, blue, 0 to 1

inline double GetLinear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

inline double GetLuminance(const Colour& colour) {
  return 0.2126 * GetLinear(colour[0]) + 0.7152 * GetLinear(colour[1]) + 0.0722 * GetLinear(colour[2]);
}

/// 1 to 21.
inline double GetContrast(const Colour& a, const Colour& b) {
  const double light = std::max(GetLuminance(a), GetLuminance(b));
  const double dark = std::min(GetLuminance(a), GetLuminance(b));
  return (light + 0.05) / (dark + 0.05);
}

/// A pixel of four bytes over what is below it.
inline Colour LayOver(const std::uint8_t* pixel, const Colour& below) {
  const double alpha = pixel[3] / 255.0;
  Colour result = {};
  for (std::size_t i = 0; i < 3; ++i) result[i] = pixel[i] / 255.0 * alpha + below[i] * (1.0 - alpha);
  return result;
}

/// The same over a grey.
inline Colour LayOver(const std::uint8_t* pixel, double below) {
  return LayOver(pixel, Colour{below, below, below});
}

}  // namespace zovtest
