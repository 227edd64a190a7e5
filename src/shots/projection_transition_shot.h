#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Blends between perspective and orthographic. While it runs the blend of the frame stands still.
class ProjectionTransitionShot : public Shot {
 public:
  explicit ProjectionTransitionShot(const ProjectionTransitionShotParameters& shotParameters)
      : Shot(ShotRole::ChangingProjection), parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  ProjectionTransitionShotParameters parameters;
  CameraParameters startCamera;
  CameraParameters targetCamera;
};

}  // namespace Korvane
