#include "recordings/scripted_device.h"

#include "korvane/cam3d_controller_observer.h"
#include "recordings/recording.h"

namespace zovview {

namespace {

zovhost::SixAxisSettings MakeSettings() {
  zovhost::SixAxisSettings settings;
  for (int command = 0; command < Korvane::CAM3D_KEY_COUNT; ++command) {
    settings.commands[static_cast<std::size_t>(command)] = command;
  }
  return settings;
}

}  // namespace

ScriptedDevice::ScriptedDevice() : source(MakeSettings()) { hand.AddSource(&source); }

void ScriptedDevice::Feed(const DeviceEvent& event, const ViewTarget& target) {
  using Kind = DeviceEvent::Kind;
  switch (event.kind) {
    case Kind::Axes:
      return Feed(event.axes);
    case Kind::Press:
    case Kind::Release:
      source.FeedButton(event.command, event.kind == Kind::Press);
      return;
    case Kind::Setting:
      return event.setting->set(target, event.value);
  }
}

bool ScriptedDevice::Advance() {
  hand.Advance(true);
  return hand.IsMoving();
}

}  // namespace zovview
