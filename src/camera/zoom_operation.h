#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/operation.h"

namespace Korvane {

/// Moves the eye along its line to the pivot by a factor exponential in the cursor's offset, with a soft
/// stop near the pivot that can be pushed through. Always computed from the camera at the start of the
/// drag.
class ZoomOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  /// For an indicator: 0 at the start, towards 1 at the halt near the pivot, above 1 past it, towards -1
  /// at the limit of zooming out.
  virtual double GetUnitAmount() const;

 private:
  double GetCursorOffset() const;
  Vector3 EyeAt(double ratio) const;
  void PlaceCentre(double ratio, CameraParameters& camera) const;

  bool MoveCamera(double offset, double ratio, CameraParameters& camera);
  bool MoveBack(double offset, double ratio, CameraParameters& camera);
  void MoveIn(double ratio, CameraParameters& camera);
  bool PushPastLimit(double offset, CameraParameters& camera);
  void ScaleWithDistance(CameraParameters& camera) const;

  CameraParameters initialCamera;
  // Of the initial camera.
  Vector3 forward;
  Vector3 toPivot;  // of unit length
  double initialDistance = 0.0;
  double unitAmount = 0.0;
  double axisOffset = 0.0;  // along the view axis, from the depth of the pivot to the centre
};

}  // namespace Korvane
