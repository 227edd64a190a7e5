#pragma once

#include "korvane/camera_operations.h"

/// The host's view is a camera in memory.
class BenchmarkHub : public Korvane::CameraOperations {
 public:
  void ApplyCameraParameters(const Korvane::CameraParameters& moved) override { view = moved; }
  void QueryCameraParameters(Korvane::CameraParameters& out) const override { out = view; }
  void RequestApplicationUpdate() override { ++requests; }

  Korvane::CameraParameters view;
  long requests = 0;
};
