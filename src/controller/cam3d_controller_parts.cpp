#include "controller/cam3d_controller_parts.h"

namespace Korvane {

void Cam3DControllerParts::LeaveCommand(const CameraOperations* hub) {
  rewindShotObserver.Drop();
  commandRecord.End(hub);
}

void Cam3DControllerParts::SettleCommand() {
  if (IsShotOver(partners.hub.Get())) LeaveCommand(partners.hub.Get());
}

bool Cam3DControllerParts::IsOwnCommand(const CameraOperations& hub, const RewindRecord& record) const {
  const RewindHistory* const history = partners.history.Get();
  return partners.hub.Get() == &hub && (record.IsOpen() ? record.IsOpenIn(history) : history == nullptr);
}

}  // namespace Korvane
