#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Turns the head about the eye.
class SpinShot : public Shot {
 public:
  explicit SpinShot(const SpinShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  SpinShotParameters parameters;
  CameraParameters startCamera;
  Vector3 worldUp;
};

}  // namespace Korvane
