#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Brings a point to the middle of the view; the eye slides in the plane of the view and keeps its depth.
class CenterShot : public Shot {
 public:
  explicit CenterShot(const CenterShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  CenterShotParameters parameters;
  CameraParameters startCamera;
  CameraParameters targetCamera;
};

}  // namespace Korvane
