#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/quaternion.h"
#include "korvane/vector3.h"

namespace Korvane {

inline Vector3 ViewDirection(const CameraParameters& camera) {
  return (camera.centre - camera.eye).Normalized();
}

inline double ViewingDistance(const CameraParameters& camera) {
  return (camera.centre - camera.eye).Length();
}

/// The camera's own right-handed frame, each direction of unit length, or zero where it is degenerate.
struct CameraFrame {
  Vector3 forward;
  Vector3 up;  // exactly perpendicular to forward
  Vector3 right;

  explicit CameraFrame(const CameraParameters& camera)
      : forward(ViewDirection(camera)), right(forward.Cross(camera.up).Normalized()) {
    up = right.Cross(forward).Normalized();
  }
};

/// The part of `v` perpendicular to the unit vector `normal`.
inline Vector3 ProjectOnPlane(const Vector3& v, const Vector3& normal) { return v - normal * v.Dot(normal); }

/// `angle` in radians, in the sense of Quaternion::Rotate.
inline Vector3 RotateAbout(const Vector3& axis, double angle, const Vector3& v) {
  return Quaternion::AxisAngle(axis, angle).Rotate(v);
}

}  // namespace Korvane
