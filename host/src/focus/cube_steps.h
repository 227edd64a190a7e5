#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/vector3.h"
#include "zovhost/keyboard_focus.h"

namespace zovhost {

/// The scene's own directions in the world: x is its front, y its top, z its left.
struct CubeAxes {
  Korvane::Vector3 front;
  Korvane::Vector3 top;
  Korvane::Vector3 left;
};

/// Where an arrow leads from one of the 26 directions of a cube, components -1, 0 and 1: around it along its
/// latitude, or along its meridian over the poles, so that repeated steps come everywhere, also over the side
/// that is turned away. A view from above or below goes by the rings around the pole that it looks at.
Korvane::Vector3 StepOnCube(const Korvane::Vector3& direction, FocusStep step, const CubeAxes& axes,
                            const Korvane::CameraParameters& camera);

}  // namespace zovhost
