#pragma once

#include "korvane/operation.h"

namespace Korvane {

/// Moves along the view direction by the cursor's motion of each frame.
class DollyOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

 protected:
  /// Of the cursor's two motions the greater, as a fraction of the viewport; or the six-axis input.
  double GetDollyAmount() const;
};

}  // namespace Korvane
