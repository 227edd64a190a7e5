#pragma once

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Flies to a place in front of a point and looks at it. The turn is told as a yaw about the world up and a
/// pitch, so that the camera does not roll on the way.
class LookAtShot : public Shot {
 public:
  explicit LookAtShot(const LookAtShotParameters& shotParameters) : parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  void MeasureTurn(const Vector3& forward, const Vector3& targetView);
  void TurnView(double t, const Vector3& view, CameraParameters& camera) const;
  void TurnUp(double t, const Vector3& view, CameraParameters& camera) const;

  LookAtShotParameters parameters;
  CameraParameters startCamera;
  Vector3 worldUp;
  Vector3 eyeOffset;
  double yaw = 0.0;     // radians
  double pitch = 0.0;   // radians
  bool upPath = false;  // the start looks along the world up, and its own up stands in for the view
  double targetOrthoWidth = 0.0;
  double targetOrthoHeight = 0.0;
};

}  // namespace Korvane
