#pragma once

#include "zov/zov_camera_operations.h"

/// A host of the facade with a camera in memory, which counts what is asked of it.
class FacadeHost : public zovCameraOperations {
 public:
  void apply_camera_parameters(const zovCameraParameters& camera) override {
    ++applied;
    view = camera;
  }
  void query_camera_parameters(zovCameraParameters& camera) const override {
    ++queried;
    camera = view;
  }
  void request_application_update() override { ++requested; }

  zovCameraParameters view;
  int applied = 0;
  mutable int queried = 0;
  int requested = 0;
};
