#pragma once

#include "korvane/quaternion.h"
#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// To a standard view of the scene. What takes care is the up of the end view, since a view from above has
/// none of its own: it is chosen among the axes of the scene so that the picture rolls as little as it can.
class ViewAlignShot : public Shot {
 public:
  explicit ViewAlignShot(const ViewAlignShotParameters& shotParameters)
      : Shot(ShotRole::Aligning), parameters(shotParameters) {}

  void InitShot(const CameraOperations* hub) override;
  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  // The directions of the scene, and the way from target to eye, as they are being chosen.
  struct Axes {
    Vector3 front;
    Vector3 up;
    Vector3 side;
  };

  Vector3 GetDirection(const Axes& axes) const;
  void TurnUpTowardsCamera(Axes& axes) const;
  Vector3 ChooseUp(const Axes& axes, const Vector3& direction) const;
  Vector3 ChooseUpAlongAxis(const Axes& axes, double cosine) const;
  bool KeepsPresentUp(const Axes& axes, const Vector3& direction) const;
  void FitTarget(const CameraOperations& hub, const Vector3& direction);
  void MoveTargetAboutCentre(const Vector3& direction);
  void SetRotations();
  void TurnAboutPivot(const Quaternion& rotation, const Vector3& forward, double distance,
                      CameraParameters& camera) const;

  ViewAlignShotParameters parameters;
  CameraParameters startCamera;
  CameraParameters targetCamera;
  Quaternion startRotation = Quaternion::IDENTITY;
  Quaternion targetRotation = Quaternion::IDENTITY;
  double startDistance = 0.0;
  double targetDistance = 0.0;
};

}  // namespace Korvane
