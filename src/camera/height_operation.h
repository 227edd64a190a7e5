#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/operation.h"

namespace Korvane {

/// Lifts the camera within the height of the scene. A fast cursor moves more than in proportion.
class HeightOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  /// 0 at the lowest, 1 at the highest height.
  double GetUnitHeight();

 protected:
  double GetMoveAmountFromCursorOffset(double offset) const;
  /// What is left of an amount at the ends of the range.
  double CheckBoundaryConditions(double amount, double offset);
  void SetCamera(CameraParameters& camera);

 private:
  CameraParameters initialCamera;
  double lowestHeight = 0.0;
  double highestHeight = 0.0;
  double totalMove = 0.0;  // positive downward
  bool atTop = false;
  bool atBottom = false;
};

}  // namespace Korvane
