#pragma once

#include "korvane/camera_operations.h"

namespace Korvane {

/// Brings the scene bounds of a hub up to date. Moves are given their hub as const, since they may not
/// begin or end anything on it; its bounds are derived data, and a move that reads them refreshes them.
inline void RecalculateSceneBoundsOf(const CameraOperations& hub) {
  const_cast<CameraOperations&>(hub).RecalculateSceneBounds();
}

inline bool IsFinite(const Box3& box) { return box.GetCenter().IsFinite() && box.GetExtent().IsFinite(); }

}  // namespace Korvane
