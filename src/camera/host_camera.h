#pragma once

#include "korvane/camera_operations.h"

namespace Korvane {

/// The host's camera of now. The hub's own copy is only as new as its last frame or begin.
inline CameraParameters QueryCamera(const CameraOperations& hub) {
  CameraParameters camera;
  hub.QueryCameraParameters(camera);
  return camera;
}

/// Hands a camera to the host, unless it holds a number that is not finite.
inline void ApplyIfFinite(CameraOperations& hub, const CameraParameters& camera) {
  if (camera.IsFinite()) hub.ApplyCameraParameters(camera);
}

}  // namespace Korvane
