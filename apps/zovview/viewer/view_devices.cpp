#include "viewer/view_devices.h"

#include <algorithm>

#include "commands/view_bars.h"
#include "commands/view_commands.h"
#include "recordings/recorder.h"
#include "settings/device_settings.h"

namespace zovview {

namespace {

// In the settings of the user.
constexpr std::string_view DAEMON_NAME = "daemon";
constexpr std::string_view GAME_CONTROLLER_NAME = "gameController";

}  // namespace

ViewDevices::ViewDevices(zovhost::Window& onWindow) : window(onWindow), page(hand) {
  hand.SetWake([this] {
    woken = true;
    window.Wake();
  });
  hand.SetCommandHandler([this](int command, bool pressed) {
    using Kind = DeviceEvent::Kind;
    if (listening != nullptr) listening->Add(DeviceEvent{pressed ? Kind::Press : Kind::Release, {}, command});
  });
  AddSource(&daemon, "Six-axis device");
  AddSource(&gameController, "Game controller");
}

ViewDevices::~ViewDevices() {
  hand.SetWake({});
  hand.SetController(nullptr);
}

void ViewDevices::AddSource(zovhost::SixAxisSource* source, const char* name) {
  if (!hand.AddSource(source)) return;
  page.AddSource(source, name);
  sources.push_back(source);
}

bool ViewDevices::IsConnected() const {
  return std::any_of(sources.begin(), sources.end(),
                     [](const zovhost::SixAxisSource* source) { return source->HasDevice(); });
}

void ViewDevices::SetTarget(const ViewTarget& to) {
  target = &to;
  hand.SetController(to.device);
  if (!recordedSettings.empty()) return;
  for (const DeviceSetting& setting : GetDeviceSettings()) recordedSettings.push_back(setting.get(to));
}

void ViewDevices::Advance(Recorder* recorder) {
  if (target == nullptr) return;
  const bool focused = window.IsFocused();
  listening = recorder != nullptr && recorder->HasBegun() ? recorder : nullptr;
  hand.Advance(focused);
  for (const ViewTarget* const view : shownIn) {
    if (view->bars != nullptr) view->bars->ShowDevice(IsConnected());
  }
  if (listening != nullptr) Record(*listening, focused);
  listening = nullptr;
  if (hand.IsMoving()) window.RequestFrame();
}

// What is now another than what the recording has. A setting that an event of its own has changed comes once
// more, which changes nothing.
void ViewDevices::Record(Recorder& recorder, bool focused) {
  const zovhost::SixAxes axes = focused ? hand.GetAxes() : zovhost::SixAxes{};
  if (axes != recordedAxes) recorder.Add(DeviceEvent{DeviceEvent::Kind::Axes, axes});
  recordedAxes = axes;
  auto recorded = recordedSettings.begin();
  for (const DeviceSetting& setting : GetDeviceSettings()) {
    const double value = setting.get(*target);
    if (value != *recorded) recorder.Add(DeviceEvent{DeviceEvent::Kind::Setting, {}, 0, &setting, value});
    *recorded++ = value;
  }
}

// ---- from one start to the next ----

KeptDevices ViewDevices::GetKept(const ViewTarget& of) const {
  KeptDevices kept;
  for (const DeviceSetting& setting : GetDeviceSettings()) {
    if (setting.kept) kept.values.push_back({&setting, setting.get(of)});
  }
  kept.sources = {{DAEMON_NAME, hand.GetSettings(&daemon)},
                  {GAME_CONTROLLER_NAME, hand.GetSettings(&gameController)}};
  return kept;
}

void ViewDevices::Restore(const KeptDevices& kept, const ViewTarget& to) {
  for (const KeptDevices::Value& value : kept.values) value.setting->set(to, value.value);
  for (const KeptDevices::Source& source : kept.sources) {
    const bool ofDaemon = source.name == DAEMON_NAME;
    const zovhost::SixAxisSource* const of =
        ofDaemon ? static_cast<const zovhost::SixAxisSource*>(&daemon) : &gameController;
    hand.SetSettings(of, source.settings);
  }
}

// ---- the page ----

void ViewDevices::DrawPage(float right, float top) {
  if (target != nullptr && target->device != nullptr) page.Draw(*target->device, right, top);
}

}  // namespace zovview
