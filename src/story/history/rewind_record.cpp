#include "korvane/rewind_record.h"

#include <utility>

#include "camera/host_camera.h"

namespace Korvane {

// A call out may bring about the end of whatever holds the record: what has to be done here is done before
// it.

RewindRecord::RewindRecord(RewindRecord&& other) noexcept { *this = std::move(other); }

RewindRecord& RewindRecord::operator=(RewindRecord&& other) noexcept {
  RewindHistory* const open = other.history.Get();
  other.Forget();
  history.Set(open);
  return *this;
}

void RewindRecord::Begin(RewindHistory* value, const CameraParameters& camera) {
  history.Set(value);
  if (value != nullptr) value->BeginElementRecord(camera);
}

void RewindRecord::Sample(const CameraParameters& camera) {
  if (RewindHistory* const open = history.Get()) open->AddElementSubrecord(camera);
}

void RewindRecord::End(const CameraParameters& camera) {
  RewindHistory* const open = history.Get();
  Forget();
  if (open != nullptr) open->EndElementRecord(camera);
}

void RewindRecord::End(const CameraOperations* hub) {
  RewindRecord ending(std::move(*this));
  if (hub != nullptr && ending.IsOpen()) ending.End(QueryCamera(*hub));
}

}  // namespace Korvane
