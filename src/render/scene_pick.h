#pragma once

#include "korvane/application_parameters.h"
#include "korvane/camera_parameters.h"
#include "korvane/renderer.h"

namespace Korvane {

/// Whether the scene is hit under a viewport pixel. `point` is the hit, or else the end of the pixel's ray,
/// at the depth of the camera's centre. No renderer, no hit.
inline bool PickPoint(Renderer* renderer, const ApplicationParameters& parameters,
                      const CameraParameters& camera, int x, int y, Vector3& point) {
  Vector3 origin;
  Vector3 direction;
  GetScreenRay(x, y, parameters.viewport_width, parameters.viewport_height, camera, origin, direction);
  point = origin + direction;
  if (renderer == nullptr) return false;
  return renderer->QueryMouseRaySceneIntersection(x, y, origin, direction, point);
}

}  // namespace Korvane
