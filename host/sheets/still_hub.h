#pragma once

#include "korvane/camera_operations.h"

namespace zovsheets {

/// A hub whose camera stands still.
class StillHub : public Korvane::CameraOperations {
 public:
  void ApplyCameraParameters(const Korvane::CameraParameters& values) override { camera = values; }
  void QueryCameraParameters(Korvane::CameraParameters& values) const override { values = camera; }
  void RequestApplicationUpdate() override {}

  void SetViewportSize(int width, int height) {
    GetApplicationParameters().viewport_width = width;
    GetApplicationParameters().viewport_height = height;
  }

  Korvane::CameraParameters camera;
};

}  // namespace zovsheets
