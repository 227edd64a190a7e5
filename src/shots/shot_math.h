#pragma once

#include "camera/camera_frame.h"
#include "camera/lens.h"
#include "korvane/camera_parameters.h"
#include "korvane/quaternion.h"
#include "korvane/shot.h"

namespace Korvane {

/// The rotation of a camera: the rows view direction, up, right.
inline Quaternion CameraRotation(const CameraParameters& camera) {
  const CameraFrame frame(camera);
  const Vector3 rows[3] = {frame.forward, frame.up, frame.right};
  Quaternion rotation(rows);
  rotation.Normalize();
  return rotation;
}

inline Vector3 Interpolate(double t, const Vector3& a, const Vector3& b) { return (1.0 - t) * a + t * b; }

/// Writes half angles, orthographic size and page values on the line between two cameras.
void InterpolateLens(double t, const CameraParameters& from, const CameraParameters& to,
                     CameraParameters& camera);

/// a / b for a change of scale; 1 where there is no scale to change.
inline double ScaleOf(double a, double b) { return b != 0.0 ? a / b : 1.0; }

/// The part of a relative motion that lies before the view of now: 0, a half or 1. False for a value
/// outside the enumeration.
bool GetAnchorValue(TargetCamPos anchor, double& value);

}  // namespace Korvane
