#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Flies into a rectangle of the screen.
class ZoomRectShot : public Shot {
 public:
  explicit ZoomRectShot(const ZoomRectShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

  /// How much larger the depth of the pivot appears than at the start.
  virtual double getCurrentScale();

 private:
  Vector3 CentreOf(const CameraParameters& camera, const Vector3& forward) const;

  ZoomRectShotParameters parameters;
  CameraParameters startCamera;
  double currentScale = 1.0;
  Vector3 eyeOffset;
  bool active = true;
};

}  // namespace Korvane
