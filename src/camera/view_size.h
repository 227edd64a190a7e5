#pragma once

#include <cmath>

#include "korvane/camera_parameters.h"
#include "korvane/vector2.h"

namespace Korvane {

/// Tangents of the four half angles.
struct FrustumTangents {
  double left;
  double right;
  double top;
  double bottom;

  explicit FrustumTangents(const CameraParameters& camera)
      : left(std::tan(camera.left_fov * Math::DEG_TO_RAD)),
        right(std::tan(camera.right_fov * Math::DEG_TO_RAD)),
        top(std::tan(camera.top_fov * Math::DEG_TO_RAD)),
        bottom(std::tan(camera.bottom_fov * Math::DEG_TO_RAD)) {}
};

/// The full size of the view, world units, at a depth along its axis. Negative behind the eye; the same at
/// every depth in orthographic.
inline Vector2 ViewSizeAtDepth(const CameraParameters& camera, double depth) {
  if (camera.IsOrthographic()) return {camera.ortho_width, camera.ortho_height};
  const FrustumTangents tangents(camera);
  return {(tangents.right + tangents.left) * depth, (tangents.bottom + tangents.top) * depth};
}

}  // namespace Korvane
