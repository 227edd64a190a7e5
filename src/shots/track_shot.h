#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// A relative move along one axis of the camera.
class TrackShot : public Shot {
 public:
  explicit TrackShot(const TrackShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  bool GetDirection(Vector3& direction) const;

  TrackShotParameters parameters;
  CameraParameters startCamera;
};

}  // namespace Korvane
