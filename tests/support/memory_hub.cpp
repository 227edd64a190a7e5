#include "support/memory_hub.h"

#include <utility>

using namespace Korvane;

void MemoryHub::ApplyCameraParameters(const CameraParameters& values) {
  ++applied;
  Record("apply");
  view = values;
  if (onApply) onApply();
}

void MemoryHub::QueryCameraParameters(CameraParameters& out) const {
  ++queried;
  Record("query");
  out = view;
}

void MemoryHub::RequestApplicationUpdate() {
  ++requested;
  Record("request");
}

void MemoryHub::RecalculateSelectionBounds() {
  ++recalculatedSelection;
  Record("recalculate selection");
  if (onRecalculateSelection) onRecalculateSelection();
}

void MemoryHub::RecalculateGlobalBounds() {
  ++recalculatedGlobal;
  Record("recalculate global");
  if (onRecalculateGlobal) onRecalculateGlobal();
}

void MemoryHub::OnBeginShot(Shot* shot) {
  Record("begin shot hook");
  if (onBeginShotHook) onBeginShotHook(shot);
}

void MemoryHub::OnEndShot(Shot* shot) {
  Record("end shot hook");
  if (onEndShotHook) onEndShotHook(shot);
}

std::vector<std::string> MemoryHub::TakeLog() { return std::exchange(log, {}); }

bool MemoryHub::Drag(OperationType type, int x, int y) {
  UpdateOperationParams(x, y, type);
  return PerformOperations();
}
