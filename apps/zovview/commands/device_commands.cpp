#include "commands/device_commands.h"

namespace zovview {

using Korvane::Cam3DController;

namespace {

using Getter = bool (Cam3DController::*)() const;
using Setter = void (Cam3DController::*)(bool);

bool Get(const ViewTarget& target, Getter get) { return target.device != nullptr && (target.device->*get)(); }

void Toggle(const ViewTarget& target, Getter get, Setter set) {
  if (target.device == nullptr) return;
  (target.device->*set)(!(target.device->*get)());
  target.hub.RequestApplicationUpdate();
}

}  // namespace

void SetDeviceMode(const ViewTarget& target, Cam3DController::NavigationMode mode) {
  if (target.device == nullptr) return;
  target.device->SetNavigationMode(mode);
  target.hub.RequestApplicationUpdate();
}

bool IsDeviceMode(const ViewTarget& target, Cam3DController::NavigationMode mode) {
  return target.device != nullptr && target.device->GetNavigationMode() == mode;
}

void ToggleDeviceUpright(const ViewTarget& target) {
  Toggle(target, &Cam3DController::GetKeepSceneUpright, &Cam3DController::SetKeepSceneUpright);
}
bool IsDeviceUpright(const ViewTarget& target) { return Get(target, &Cam3DController::GetKeepSceneUpright); }

void ToggleDeviceRotation(const ViewTarget& target) {
  Toggle(target, &Cam3DController::GetEnableRotation, &Cam3DController::SetEnableRotation);
}
bool DoesDeviceTurn(const ViewTarget& target) { return Get(target, &Cam3DController::GetEnableRotation); }

void ToggleDeviceTranslation(const ViewTarget& target) {
  Toggle(target, &Cam3DController::GetEnableTranslation, &Cam3DController::SetEnableTranslation);
}
bool DoesDeviceMove(const ViewTarget& target) { return Get(target, &Cam3DController::GetEnableTranslation); }

void ToggleDevicePage(const ViewTarget& target) {
  if (target.toggleDevicePage) target.toggleDevicePage();
}

}  // namespace zovview
