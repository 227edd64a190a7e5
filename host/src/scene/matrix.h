#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "korvane/vector3.h"

namespace zovhost {

/// 4 x 4, column major: element (row, column) stands at 4 * column + row. Points are columns.
using Matrix = std::array<double, 16>;

inline Matrix Multiply(const Matrix& a, const Matrix& b) {
  Matrix product{};
  for (std::size_t column = 0; column < 4; ++column)
    for (std::size_t row = 0; row < 4; ++row)
      for (std::size_t k = 0; k < 4; ++k) product[4 * column + row] += a[4 * k + row] * b[4 * column + k];
  return product;
}

/// The upper three rows; the last row of a placement is 0 0 0 1.
inline Korvane::Vector3 TransformPoint(const Matrix& m, const Korvane::Vector3& p) {
  return {m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12], m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
          m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
}

inline Korvane::Vector3 GetVertex(const std::vector<float>& positions, std::size_t index) {
  return Korvane::Vector3(positions.data() + 3 * index);
}

}  // namespace zovhost
