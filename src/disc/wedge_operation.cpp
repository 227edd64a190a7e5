#include "disc/wedge_operation.h"

#include <utility>

#include "camera/host_camera.h"
#include "camera/pixels.h"
#include "disc/disc_region_listener.h"

namespace Korvane {

void WedgeOperation::Begin(CameraOperations& operated, int x, int y) {
  const Borrowed<CameraOperations> next(&operated);
  const Lifeline::Watch goesOn(ends);
  EndOpen();
  if (!goesOn || next.Get() == nullptr) return;
  hub.Set(&operated);
  operating = true;
  operated.BeginOperation(type, x, FlipRow(operated.GetApplicationParameters(), y));
}

void WedgeOperation::BeginRecord(const DiscRegionListener& wedge) {
  if (!operating || hub.Get() == nullptr) return;
  const CameraParameters camera = QueryCamera(*hub.Get());
  if (operating && !record.IsOpen()) record.Begin(wedge.GetHistory(), camera);
}

void WedgeOperation::Move(int x, int y) {
  CameraOperations* const operated = operating ? hub.Get() : nullptr;
  if (operated == nullptr) return;
  operated->UpdateOperationParams(x, FlipRow(operated->GetApplicationParameters(), y), type);
}

void WedgeOperation::Sample() {
  if (const CameraOperations* const operated = hub.Get()) record.Sample(operated->GetCameraParameters());
}

void WedgeOperation::EndOperation() {
  CameraOperations* const operated = hub.Get();
  if (std::exchange(operating, false) && operated != nullptr) operated->EndOperation(type);
}

void WedgeOperation::End() {
  ends.Cut();
  EndOpen();
}

// What is to end is taken out first: the host may begin the next one meanwhile.
void WedgeOperation::EndOpen() {
  const Borrowed<CameraOperations> ending(hub.Get());
  RewindRecord closing = std::move(record);
  const bool wasOperating = std::exchange(operating, false);
  hub.Set(nullptr);
  if (CameraOperations* const operated = wasOperating ? ending.Get() : nullptr) operated->EndOperation(type);
  closing.End(ending.Get());
}

}  // namespace Korvane
