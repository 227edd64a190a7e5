#pragma once

#include "korvane/quaternion.h"
#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// The common way from one camera to another: the target point moves on a line, the distance on a line, the
/// rotation on the sphere. That keeps the target steady, where a linear move of the eye would swing the
/// camera through the model.
class TransitionShot : public Shot {
 public:
  explicit TransitionShot(const TransitionShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  TransitionShotParameters parameters;
  CameraParameters startCamera;
  Quaternion startRotation = Quaternion::IDENTITY;
  Quaternion targetRotation = Quaternion::IDENTITY;
};

}  // namespace Korvane
