#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/operation.h"

namespace Korvane {

/// Moves sideways and forward at a speed set by the cursor's offset from where the drag began.
class SlideOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

 private:
  CameraParameters initialCamera;
};

}  // namespace Korvane
