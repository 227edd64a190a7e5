#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/fit_margins.h"

namespace zovview {

/// The part of a view that no panel covers, as a small picture shows it.
struct FreeView {
  double proportions = 1.0;          // of the whole view, width through height
  Korvane::FitMargins margins = {};  // of its fits: at the sides they differ by what the panel covers

  /// The camera of a picture of that part, all of it, its middle in the middle. `camera` shows the whole
  /// view, or more to two sides of it, as it was made for a picture of other proportions.
  Korvane::CameraParameters Frame(const Korvane::CameraParameters& camera, double pictureProportions) const;
};

}  // namespace zovview
