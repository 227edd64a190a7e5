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
      : left(Tangent(camera.left_fov)),
        right(TangentBeside(camera.left_fov, left, camera.right_fov)),
        top(Tangent(camera.top_fov)),
        bottom(TangentBeside(camera.top_fov, top, camera.bottom_fov)) {}

 private:
  static double Tangent(double degrees) { return std::tan(degrees * Math::DEG_TO_RAD); }
  // Most frustums are as wide on one side as on the other. A zero has a sign, which the tangent keeps.
  static double TangentBeside(double other, double otherTangent, double degrees) {
    return degrees == other && degrees != 0.0 ? otherTangent : Tangent(degrees);
  }
};

/// The tangents of a camera that a move sees again and again: its half angles seldom change.
class KeptTangents {
 public:
  const FrustumTangents& Of(const CameraParameters& camera) {
    if (!AreOf(camera)) Keep(camera);
    return tangents;
  }

 private:
  bool AreOf(const CameraParameters& camera) const {
    return camera.left_fov == last.left_fov && camera.right_fov == last.right_fov &&
           camera.top_fov == last.top_fov && camera.bottom_fov == last.bottom_fov;
  }
  void Keep(const CameraParameters& camera) {
    last = camera;
    tangents = FrustumTangents(camera);
  }

  CameraParameters last;
  FrustumTangents tangents{last};
};

inline Vector2 OrthographicSize(const CameraParameters& camera) {
  return {camera.ortho_width, camera.ortho_height};
}

inline Vector2 FrustumSizeAtDepth(const FrustumTangents& tangents, double depth) {
  return {(tangents.right + tangents.left) * depth, (tangents.bottom + tangents.top) * depth};
}

/// The full size of the view, world units, at a depth along its axis. Negative behind the eye; the same at
/// every depth in orthographic.
inline Vector2 ViewSizeAtDepth(const CameraParameters& camera, double depth) {
  return camera.IsOrthographic() ? OrthographicSize(camera)
                                 : FrustumSizeAtDepth(FrustumTangents(camera), depth);
}
/// The same with what a move keeps.
inline Vector2 ViewSizeAtDepth(const CameraParameters& camera, KeptTangents& tangents, double depth) {
  return camera.IsOrthographic() ? OrthographicSize(camera) : FrustumSizeAtDepth(tangents.Of(camera), depth);
}

/// Half the view at a depth. A view off its axis counts by its wider side.
inline Vector2 HalfViewAtDepth(const CameraParameters& camera, const FrustumTangents& tangents,
                               double depth) {
  if (camera.IsOrthographic()) return OrthographicSize(camera) * 0.5;
  return {Math::Max(tangents.left, tangents.right) * depth, Math::Max(tangents.top, tangents.bottom) * depth};
}

}  // namespace Korvane
