#pragma once

#include <functional>
#include <string>
#include <vector>

#include "korvane/camera_operations.h"

/// A hub over a camera in memory, which stands for the host's view. It counts the calls of the host's side
/// and, while `recording`, writes them into `log` in the order in which they come; whoever else takes part
/// in a test writes into the same log.
class MemoryHub : public Korvane::CameraOperations {
 public:
  explicit MemoryHub(const Korvane::CameraParameters& start = Korvane::CameraParameters()) : view(start) {}

  void ApplyCameraParameters(const Korvane::CameraParameters& values) override;
  void QueryCameraParameters(Korvane::CameraParameters& out) const override;
  void RequestApplicationUpdate() override;
  void RecalculateSelectionBounds() override;
  void RecalculateGlobalBounds() override;

  using CameraOperations::BeginShot;

  void Record(const std::string& entry) const {
    if (recording) log.push_back(entry);
  }
  /// The log until now, which starts anew.
  std::vector<std::string> TakeLog();

  /// What a frame does between two mouse events: the cursor moves, then the frame runs.
  bool Drag(Korvane::OperationType type, int x, int y);

  Korvane::CameraParameters view;  // the host's
  bool recording = false;
  mutable std::vector<std::string> log;
  int applied = 0;
  mutable int queried = 0;
  int requested = 0;
  int recalculatedSelection = 0;
  int recalculatedGlobal = 0;
  /// Run inside the host calls of these names, after the call has been recorded.
  std::function<void()> onApply;
  std::function<void()> onRecalculateSelection;
  std::function<void()> onRecalculateGlobal;
  std::function<void(Korvane::Shot*)> onBeginShotHook;
  std::function<void(Korvane::Shot*)> onEndShotHook;

 protected:
  void OnBeginShot(Korvane::Shot* shot) override;
  void OnEndShot(Korvane::Shot* shot) override;
};
