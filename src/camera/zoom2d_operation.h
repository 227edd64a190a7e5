#pragma once

#include "korvane/operation.h"

namespace Korvane {

/// Scales the orthographic size of a flat view by the cursor's way along the axis that the drag first took.
class Zoom2DOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

 private:
  enum Axis : int { AXIS_OPEN = 0, AXIS_HORIZONTAL = 1, AXIS_VERTICAL = 2 };

  void DecideAxis();
  int CoordinateOnAxis() const;

  double initialWidth = 0.0;
  double initialHeight = 0.0;
  Axis axis = AXIS_OPEN;
  int anchor = 0;
};

}  // namespace Korvane
