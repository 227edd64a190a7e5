#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/fit_margins.h"
#include "korvane/vector3.h"

namespace Korvane {

/// What the margins of a fit leave of a view: a view of the same eye, in general off its axis.
class FreeView {
 public:
  FreeView(const CameraParameters& view, const FitMargins& margins);

  const CameraParameters& GetCamera() const { return free; }
  /// A camera along `direction` that was fitted in the free view, as one of the whole view. Its pivot becomes
  /// the centre of what was fitted, which is not the middle of the view any more.
  CameraParameters Widen(const CameraParameters& fitted, const Vector3& centre) const;
  /// For an orthographic one, which has no angle for the free view to lie off its axis by: it steps aside.
  void StepAside(const Vector3& direction, CameraParameters& widened) const;

 private:
  CameraParameters whole;
  CameraParameters free;
  FitMargins margins;
};

}  // namespace Korvane
