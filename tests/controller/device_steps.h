#pragma once

#include "camera/stepper.h"
#include "controller/cam3d_controller_operation.h"

inline const Korvane::CameraParameters START = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});

/// The motion of a device that a test steps by hand, within bounds so wide that they set no pace.
class Steps : public Stepper<Korvane::Cam3DControllerOperation> {
 public:
  explicit Steps(Korvane::Cam3DControllerParameters::NavigationMode mode,
                 const Korvane::CameraParameters& first = START)
      : Stepper(first) {
    p.cam3d_controller_mode = mode;
    p.global_bound_radius = 1000.0;
  }
};
