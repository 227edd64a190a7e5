#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "bare_operations.h"

/// A closed path of cursors: round an ellipse that stays within the limits of every move.
class CursorPath {
 public:
  static constexpr BareCursor START = {512, 384};

  CursorPath() {
    for (std::size_t i = 0; i < COUNT; ++i) {
      const double angle = 2.0 * PI * static_cast<double>(i + 1) / COUNT;
      points[i] = {START.x + static_cast<int>(110.0 * std::sin(angle)),
                   START.y + static_cast<int>(75.0 * (1.0 - std::cos(angle)))};
    }
  }
  void Restart() { next = 0; }
  BareCursor Next() { return points[next++ % COUNT]; }

 private:
  static constexpr double PI = 3.141592653589793;
  static constexpr std::size_t COUNT = 256;
  std::array<BareCursor, COUNT> points;
  std::size_t next = 0;
};
