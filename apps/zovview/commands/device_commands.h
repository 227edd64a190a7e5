#pragma once

#include "commands/view_commands.h"
#include "korvane/cam3d_controller.h"

namespace zovview {

// What a six-axis device does; none of this does anything in a view without a controller.

void SetDeviceMode(const ViewTarget& target, Korvane::Cam3DController::NavigationMode mode);
bool IsDeviceMode(const ViewTarget& target, Korvane::Cam3DController::NavigationMode mode);
template <Korvane::Cam3DController::NavigationMode MODE>
void UseDeviceMode(const ViewTarget& target) {
  SetDeviceMode(target, MODE);
}
template <Korvane::Cam3DController::NavigationMode MODE>
bool IsDeviceModeOf(const ViewTarget& target) {
  return IsDeviceMode(target, MODE);
}

void ToggleDeviceUpright(const ViewTarget& target);
bool IsDeviceUpright(const ViewTarget& target);
void ToggleDeviceRotation(const ViewTarget& target);
bool DoesDeviceTurn(const ViewTarget& target);
void ToggleDeviceTranslation(const ViewTarget& target);
bool DoesDeviceMove(const ViewTarget& target);
/// The page of its settings.
void ToggleDevicePage(const ViewTarget& target);

}  // namespace zovview
