#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Turns the head by a pan and a tilt.
class LookShot : public Shot {
 public:
  explicit LookShot(const LookShotParameters& shotParameters)
      : Shot(ShotRole::Rotating), parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  bool ReversesHorizontalSense(const Vector3& view) const;

  LookShotParameters parameters;
  CameraParameters startCamera;
  Vector3 worldFront;
  Vector3 worldUp;
  Vector3 worldSide;
};

}  // namespace Korvane
