#pragma once

#include "korvane/export.h"

namespace Korvane {

struct CameraParameters;

/// Corrects the extents of a view for a host whose projection stretches the frustum to the window.
class ZOVTOOLS_API AspectRatioAdjuster {
 public:
  virtual ~AspectRatioAdjuster();
  /// `width` and `height` are the viewport's pixels; the extents are changed in place. Called in the middle
  /// of a frame: it must not begin or end anything on the hub.
  virtual void Adjust(const CameraParameters& camera, int width, int height, double& horizontalExtent,
                      double& verticalExtent) = 0;
};

/// One adjuster for the whole process; null removes it. Borrowed.
ZOVTOOLS_API void SetAspectRatioAdjuster(AspectRatioAdjuster* adjuster);

/// Passes on to the adjuster; without one both extents stay.
ZOVTOOLS_API void AdjustForAspectRatio(const CameraParameters& camera, int width, int height,
                                       double& horizontalExtent, double& verticalExtent);

}  // namespace Korvane
