#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/operation.h"

namespace Korvane {

/// Turns the camera about the axis through the pivot along the view.
class RollOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  const Vector3& GetInitialUp() const { return initialCamera.up; }
  /// For an indicator: two whole turns back are 0, none a half, two forward 1.
  double GetUnitAmount() const;

 protected:
  /// Radians.
  double GetRollAmount() const;

 private:
  CameraParameters initialCamera;
  double rollAmount = 0.0;
};

}  // namespace Korvane
