#pragma once

#include "korvane/camera_operations.h"
#include "support/acting_host.h"

/// Lets a host act in each call in which the hub tells of an operation.
class ActingOperations : public Korvane::OperationObserver {
 public:
  explicit ActingOperations(ActingHost& theHost) : host(theHost) {}
  void OnBeginOperation(Korvane::OperationType /*type*/,
                        const Korvane::CameraParameters& /*camera*/) override {
    host.Call();
  }
  void OnPerformOperation(Korvane::OperationType /*type*/, double /*dt*/,
                          const Korvane::CameraParameters& /*camera*/) override {
    host.Call();
  }
  void OnEndOperation(Korvane::OperationType /*type*/) override { host.Call(); }

 private:
  ActingHost& host;
};
