#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/pivot_ball.h"

namespace Korvane {

/// Puts the ball on the camera's pivot, at its proper size.
inline void PlacePivotBall(PivotBall* ball, const CameraParameters& camera, bool visible) {
  if (ball == nullptr) return;
  ball->SetPosition(camera.pivot);
  ball->SetVisible(visible);
  ball->UpdateSize(camera);
}

}  // namespace Korvane
