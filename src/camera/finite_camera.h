#pragma once

#include "korvane/camera_parameters.h"

namespace Korvane {

// Zero times a number is zero only when the number is finite: one comparison for all of them, and short
// chains. Within reach of the compiler, since each frame asks several times.

inline double Vanish(const Vector3& v) { return v.x * 0.0 + v.y * 0.0 + v.z * 0.0; }

inline double VanishPlace(const CameraParameters& camera) {
  return Vanish(camera.eye) + Vanish(camera.centre) + (Vanish(camera.up) + Vanish(camera.pivot));
}

inline bool IsCameraFinite(const CameraParameters& c) {
  const double angles = c.left_fov * 0.0 + c.right_fov * 0.0 + (c.top_fov * 0.0 + c.bottom_fov * 0.0);
  const double sizes = c.ortho_width * 0.0 + c.ortho_height * 0.0 +
                       (c.page_scale * 0.0 + c.page_origin_x * 0.0) +
                       (c.page_origin_y * 0.0 + c.projection_transition * 0.0);
  return VanishPlace(c) + angles + sizes == 0.0;
}

/// Too short an up cannot be normalised: such a camera shows no picture.
inline bool HasUp(const CameraParameters& camera) {
  return camera.up.LengthSquared() > Math::EPSILON_VALUE * Math::EPSILON_VALUE;
}

/// What a move made of a good camera must be good, too; otherwise the camera stays where it was.
inline void KeepView(const CameraParameters& before, CameraParameters& after) {
  const bool broken = !IsCameraFinite(after) && IsCameraFinite(before);
  const bool upVanished = !HasUp(after) && HasUp(before);
  if (broken || upVanished) after = before;
}

}  // namespace Korvane
