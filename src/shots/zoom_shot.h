#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// A relative move along the line to the pivot.
class ZoomShot : public Shot {
 public:
  explicit ZoomShot(const ZoomShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  void LimitToPivot(double& amount, double& before) const;

  ZoomShotParameters parameters;
  CameraParameters startCamera;
};

}  // namespace Korvane
