#pragma once

#include "camera/host_camera.h"
#include "korvane/rewind_history.h"

namespace Korvane {

// The bracket that a gesture puts around its camera move. Without a history or a hub nothing is recorded.
// The ends hold the host's camera of that moment.

inline void BeginRecord(RewindHistory* history, const CameraParameters& camera) {
  if (history != nullptr) history->BeginElementRecord(camera);
}

inline void BeginRecord(RewindHistory* history, const CameraOperations* hub) {
  if (hub != nullptr) BeginRecord(history, QueryCamera(*hub));
}

inline void EndRecord(RewindHistory* history, const CameraOperations* hub) {
  if (history != nullptr && hub != nullptr) history->EndElementRecord(QueryCamera(*hub));
}

/// Once a frame.
inline void SampleRecord(RewindHistory* history, const CameraOperations* hub) {
  if (history != nullptr && hub != nullptr) history->AddElementSubrecord(hub->GetCameraParameters());
}

}  // namespace Korvane
