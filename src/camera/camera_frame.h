#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/vector3.h"

namespace Korvane {

inline Vector3 ViewDirection(const CameraParameters& camera) {
  return (camera.centre - camera.eye).Normalized();
}

/// The part of `v` perpendicular to the unit vector `normal`.
inline Vector3 ProjectOnPlane(const Vector3& v, const Vector3& normal) { return v - normal * v.Dot(normal); }

}  // namespace Korvane
