#pragma once

#include <cstddef>
#include <vector>

#include "korvane/vector3.h"
#include "zovhost/projection.h"

namespace zovhost {

using Matrix = Matrix4;

/// The upper three rows; the last row of a placement is 0 0 0 1.
inline Korvane::Vector3 TransformPoint(const Matrix& m, const Korvane::Vector3& p) {
  return {m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12], m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
          m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
}

/// Whether a placement turns the winding of triangles around.
inline bool IsMirrored(const Matrix& m) {
  const Korvane::Vector3 x(m[0], m[1], m[2]);
  const Korvane::Vector3 y(m[4], m[5], m[6]);
  const Korvane::Vector3 z(m[8], m[9], m[10]);
  return x.Cross(y).Dot(z) < 0.0;
}

inline Korvane::Vector3 GetVertex(const std::vector<float>& positions, std::size_t index) {
  return Korvane::Vector3(positions.data() + 3 * index);
}

}  // namespace zovhost
