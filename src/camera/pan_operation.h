#pragma once

#include "camera/view_size.h"
#include "korvane/operation.h"

namespace Korvane {

/// Moves the camera parallel to its view plane, so that what lies at the depth of the pivot follows the
/// cursor exactly.
class PanOperation : public Operation {
 public:
  void PerformOperation(double dt, CameraParameters& camera) override;

 protected:
  /// The motion since the last frame: fractions of the viewport, or of the six-axis input.
  void GetDeltaXY(double& dx, double& dy) const;

 private:
  KeptTangents tangents;
};

}  // namespace Korvane
