#pragma once

#include <cmath>

#include "korvane/camera_operations.h"

namespace Korvane {

/// Pixels of the display for each that a widget counts its own sizes in.
inline double PixelsPerPoint(const ApplicationParameters& parameters) {
  const double scale = parameters.pixels_per_point;
  return std::isfinite(scale) && scale > 0.0 ? scale : 1.0;
}

/// Null: 1.
inline double PixelsPerPoint(const CameraOperations* hub) {
  return hub != nullptr ? PixelsPerPoint(hub->GetApplicationParameters()) : 1.0;
}

}  // namespace Korvane
