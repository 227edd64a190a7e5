#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Circles the centre of the view, not the pivot.
class OrbitShot : public Shot {
 public:
  explicit OrbitShot(const OrbitShotParameters& shotParameters)
      : Shot(ShotRole::Rotating), parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  OrbitShotParameters parameters;
  CameraParameters startCamera;
  Vector3 worldUp;
};

}  // namespace Korvane
