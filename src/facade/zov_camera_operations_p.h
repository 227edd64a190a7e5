#pragma once

#include "facade/zov_counted_owner.h"
#include "korvane/camera_operations.h"
#include "zov/zov_application_parameters.h"
#include "zov/zov_camera_operations.h"

/// The hub within a zovCameraOperations: what the library calls goes to the owner, and so to a host's
/// override.
class zovCameraOperationsP : public Korvane::CameraOperations {
 public:
  explicit zovCameraOperationsP(zovCameraOperations& outside);

  void ApplyCameraParameters(const Korvane::CameraParameters& camera) override;
  void QueryCameraParameters(Korvane::CameraParameters& camera) const override;
  void RequestApplicationUpdate() override;
  bool PerformOperations() override;
  bool IsShotActive() const override;
  void RecalculateSelectionBounds() override;
  void RecalculateGlobalBounds() override;

  /// The owner is being asked something, and must stay.
  bool IsCallingOut() const { return owner.IsCalled(); }

  zovApplicationParameters settings;

 private:
  zovCountedOwner<zovCameraOperations> owner;
};
