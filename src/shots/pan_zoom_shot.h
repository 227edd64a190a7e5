#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// A relative move sideways, upward and forward.
class PanZoomShot : public Shot {
 public:
  explicit PanZoomShot(const PanZoomShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  PanZoomShotParameters parameters;
  CameraParameters startCamera;
};

}  // namespace Korvane
