#include "settings/device_settings.h"

#include <algorithm>
#include <cmath>

#include "commands/device_commands.h"
#include "commands/view_bars.h"

namespace zovview {

using Korvane::Cam3DController;

namespace {

template <auto GET>
double Get(const ViewTarget& target) {
  return static_cast<double>((target.device->*GET)());
}
template <auto SET>
void SetNumber(const ViewTarget& target, double value) {
  (target.device->*SET)(value);
}
template <auto SET>
void SetSwitch(const ViewTarget& target, double value) {
  (target.device->*SET)(value != 0.0);
}
void SetMode(const ViewTarget& target, double value) {
  SetDeviceMode(target, static_cast<Cam3DController::NavigationMode>(value));
}
double GetShown(const ViewTarget& target) {
  return target.bars != nullptr && target.bars->IsDeviceShown() ? 1.0 : 0.0;
}
void SetShown(const ViewTarget& target, double value) {
  if (target.bars != nullptr) target.bars->ShowDevice(value != 0.0);
}

constexpr double LEAST_SPEED = 1e-5;
constexpr double MOST_SPEED = 0.1;
constexpr double MOST_THRESHOLD = 500.0;
constexpr double LAST_MODE = Cam3DController::NavigationMode::MODE_PAN;

constexpr DeviceSetting SETTINGS[] = {
    {"shown", 0.0, 1.0, true, false, GetShown, SetShown},
    {"mode", 0.0, LAST_MODE, true, true, Get<&Cam3DController::GetNavigationMode>, SetMode},
    {"speed", LEAST_SPEED, MOST_SPEED, false, true, Get<&Cam3DController::GetSensitivity>,
     SetNumber<&Cam3DController::SetSensitivity>},
    {"threshold", 0.0, MOST_THRESHOLD, false, true, Get<&Cam3DController::GetInputThreshold>,
     SetNumber<&Cam3DController::SetInputThreshold>},
    {"rotation", 0.0, 1.0, true, true, Get<&Cam3DController::GetEnableRotation>,
     SetSwitch<&Cam3DController::SetEnableRotation>},
    {"translation", 0.0, 1.0, true, true, Get<&Cam3DController::GetEnableTranslation>,
     SetSwitch<&Cam3DController::SetEnableTranslation>},
    {"upright", 0.0, 1.0, true, true, Get<&Cam3DController::GetKeepSceneUpright>,
     SetSwitch<&Cam3DController::SetKeepSceneUpright>},
};

}  // namespace

bool DeviceSetting::Takes(double value) const {
  return value >= least && value <= most && (!whole || value == std::floor(value));
}

std::span<const DeviceSetting> GetDeviceSettings() { return SETTINGS; }

const DeviceSetting* FindDeviceSetting(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(SETTINGS), std::end(SETTINGS),
                   [name](const DeviceSetting& setting) { return setting.name == name; });
  return found != std::end(SETTINGS) ? found : nullptr;
}

}  // namespace zovview
