#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/pivot_ball.h"

namespace Korvane {

/// Puts the ball, where there is one, on the camera's pivot, at its proper size.
inline void FitPivotBall(PivotBall* ball, const CameraParameters& camera) {
  if (ball == nullptr) return;
  ball->SetPosition(camera.pivot);
  ball->UpdateSize(camera);
}

/// The same, and shows or hides it.
inline void PlacePivotBall(PivotBall* ball, const CameraParameters& camera, bool visible) {
  if (ball == nullptr) return;
  ball->SetPosition(camera.pivot);
  ball->SetVisible(visible);
  ball->UpdateSize(camera);
}

}  // namespace Korvane
