#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/operation.h"

namespace Korvane {

/// Turns the head: the eye stays, the cursor turns the view by its motion of each frame.
class LookOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  /// The camera at the start of the drag; levelled where the scene is kept upright.
  const CameraParameters& GetInitialCamera() const { return initialCamera; }

 protected:
  /// The motion since the last frame: fractions of the viewport, or of the six-axis input.
  void GetDeltaXY(double& dx, double& dy) const;
  bool IsKeepSceneUpright() const;
  /// Brings the camera's up into the plane of the view and the world up, also from a right angle.
  void LevelCameraUpToSceneUp(CameraParameters& camera) const;

 private:
  bool HasTippedOver(const Vector3& up) const;

  CameraParameters initialCamera;
  CameraParameters workingCamera;
};

}  // namespace Korvane
