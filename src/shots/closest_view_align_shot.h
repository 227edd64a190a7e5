#pragma once

#include "camera/standard_views.h"
#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// A field that draws a camera, moved by the operations of the frame, to the nearest standard view. It never
/// ends by itself.
class ClosestViewAlignShot : public Shot {
 public:
  explicit ClosestViewAlignShot(const ClosestViewAlignShotParameters& shotParameters)
      : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  // 0 to 1; `softReach` in thresholds.
  double GetPull(double deviation, double softReach) const;
  void StraightenUp(const Vector3& cameraUp, const Vector3& view, CameraParameters& camera) const;

  ClosestViewAlignShotParameters parameters;
  StandardViews standardViews;
  Vector3 front;
  Vector3 up;
  Vector3 side;
};

}  // namespace Korvane
