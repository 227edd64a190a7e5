#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Along a quarter of an ellipse in the plane of view and up, and sideways on a line.
class CraneShot : public Shot {
 public:
  explicit CraneShot(const CraneShotParameters& shotParameters)
      : Shot(ShotRole::Rotating), parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  CraneShotParameters parameters;
  CameraParameters startCamera;
};

}  // namespace Korvane
