#include "zovhost/six_axis_hand.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"
#include "korvane/platform.h"

namespace zovhost {

using Korvane::Lifeline;
using Korvane::Vector3;

namespace {

constexpr double FRAMES_A_SECOND = 60.0;  // at which the controller's speed is what its settings say
constexpr auto MOST_FRAME_MILLISECONDS = static_cast<std::uint32_t>(SixAxisHand::MOST_FRAME_SECONDS * 1000.0);

bool IsAtRest(const SixAxes& state) {
  return std::all_of(state.begin(), state.end(), [](double value) { return value == 0.0; });
}

// So that what the threshold leaves is scaled.
double ScaleBeyond(double threshold, double scale, double value) {
  const double beyond = std::abs(value) - threshold;
  return beyond > 0.0 ? std::copysign(threshold + beyond * scale, value) : 0.0;
}

}  // namespace

SixAxisHand::SixAxisHand(Korvane::Cam3DController* toController) { SetController(toController); }

SixAxisHand::~SixAxisHand() {
  onState.reset();
  onCommand.reset();
  End();
}

// ---- what is joined ----

void SixAxisHand::SetController(Korvane::Cam3DController* toController) {
  if (controller == toController) return;
  const Lifeline::Watch alive(lifeline);
  End();
  if (!alive) return;
  controller = toController;
  ++joined;
  for (int command = 0; controller != nullptr && command < Korvane::CAM3D_KEY_COUNT; ++command) {
    controller->MapKey(command, static_cast<Korvane::Cam3DControllerKeyID>(command));
  }
}

bool SixAxisHand::AddSource(SixAxisSource* source) {
  if (source == nullptr || Find(source) != nullptr) return false;
  auto row = std::make_unique<Source>();
  row->from.Set(source);
  row->settings = source->GetDefaults();
  sources.push_back(std::move(row));
  source->SetWake(wake);
  return true;
}

void SixAxisHand::RemoveSource(SixAxisSource* source) {
  Source* const found = Find(source);
  if (found == nullptr) return;
  source->SetWake(nullptr);
  found->from.Set(nullptr);
}

bool SixAxisHand::SetSettings(const SixAxisSource* source, const SixAxisSettings& settings) {
  Source* const found = Find(source);
  if (found == nullptr || !IsValid(settings)) return false;
  found->settings = settings;
  return true;
}

SixAxisSettings SixAxisHand::GetSettings(const SixAxisSource* source) const {
  const Source* const found = Find(source);
  return found != nullptr ? found->settings : SixAxisSettings::ForDevice();
}

SixAxisHand::Source* SixAxisHand::Find(const SixAxisSource* source) const {
  for (const auto& each : sources) {
    if (source != nullptr && each->from.Get() == source) return each.get();
  }
  return nullptr;
}

void SixAxisHand::SetStateHandler(StateHandler handler) {
  onState = handler ? std::make_shared<const StateHandler>(std::move(handler)) : nullptr;
}

void SixAxisHand::SetCommandHandler(CommandHandler handler) {
  onCommand = handler ? std::make_shared<const CommandHandler>(std::move(handler)) : nullptr;
}

void SixAxisHand::SetWake(std::function<void()> wakeHost) {
  wake = std::move(wakeHost);
  for (const auto& each : sources) {
    if (SixAxisSource* const source = each->from.Get()) source->SetWake(wake);
  }
}

// ---- a frame ----

bool SixAxisHand::Advance(bool focused) {
  if (std::exchange(advancing, true)) return false;
  const Lifeline::Watch alive(lifeline);
  PollSources();
  bool told = false;
  while (const auto command = TakeCommand(focused)) {
    TellCommand(*command);
    if (!alive) return true;
    told = true;
  }
  told = TellState(focused ? axes : SixAxes{}) || told;
  if (alive) advancing = false;
  return told;
}

void SixAxisHand::PollSources() {
  axes = {};
  for (const auto& each : sources) {
    SixAxisSource* const source = each->from.Get();
    if (source == nullptr) continue;
    source->Poll();
    const SixAxes ofSource = Apply(each->settings, source->GetAxes());
    for (std::size_t i = 0; i < axes.size(); ++i) axes[i] += ofSource[i];
  }
  for (double& value : axes) value = std::clamp(value, -MOST_DEFLECTION, MOST_DEFLECTION);
}

// A host may add and take away sources while it is told, so each begins at the first.
std::optional<SixAxisHand::Command> SixAxisHand::TakeCommand(bool focused) {
  for (const auto& each : sources) {
    if (!focused || each->from.Get() == nullptr) {
      if (const auto released = each->ReleaseNext()) return released;
    }
    if (const auto taken = each->TakeNext(focused)) return taken;
  }
  std::erase_if(sources, [](const auto& each) { return each->from.Get() == nullptr; });
  return std::nullopt;
}

std::optional<SixAxisHand::Command> SixAxisHand::Source::TakeNext(bool focused) {
  SixAxisSource* const source = from.Get();
  while (const auto button = source != nullptr ? source->TakeButton() : std::nullopt) {
    const auto number = static_cast<std::size_t>(button->number);
    if (!button->pressed && held[number]) return Release(number);
    const int command = settings.commands[number];
    if (!button->pressed || !focused || command == SixAxisSettings::NOTHING) continue;
    held[number] = true;
    commands[number] = command;
    return Command{command, true};
  }
  return std::nullopt;
}

std::optional<SixAxisHand::Command> SixAxisHand::Source::ReleaseNext() {
  for (std::size_t number = 0; number < held.size(); ++number) {
    if (held[number]) return Release(number);
  }
  return std::nullopt;
}

SixAxisHand::Command SixAxisHand::Source::Release(std::size_t number) {
  held[number] = false;
  return {commands[number], false};
}

// ---- the controller ----

void SixAxisHand::TellCommand(const Command& command) {
  const Lifeline::Watch alive(lifeline);
  if (controller == nullptr) return;
  const auto handler = onCommand;
  const unsigned before = joined;
  if (!command.pressed) unsaid.release = command.number;
  if (handler != nullptr) (*handler)(command.number, command.pressed);
  if (!alive || joined != before) return;
  unsaid.release.reset();
  command.pressed ? controller->On3DControllerKeyDown(command.number)
                  : controller->On3DControllerKeyUp(command.number);
}

bool SixAxisHand::TellState(const SixAxes& state) {
  const SixAxes told = ScaleToFrame(state);
  const bool wasMoving = std::exchange(moving, controller != nullptr && !IsAtRest(told));
  if (!moving) lastTick.reset();
  if (controller == nullptr || (!moving && !wasMoving)) return false;
  Vector3 translation(told[0], told[1], told[2]);
  Vector3 rotation(told[3], told[4], told[5]);
  const Lifeline::Watch alive(lifeline);
  const auto handler = onState;
  const unsigned before = joined;
  unsaid.rest = !moving;
  if (handler != nullptr) (*handler)(translation, rotation);
  if (!alive || joined != before) return true;
  unsaid.rest = false;
  controller->On3DControllerInput(translation, rotation);
  return true;
}

// What the controller's threshold leaves, by the frames of the usual rate since the last one of the motion.
SixAxes SixAxisHand::ScaleToFrame(const SixAxes& state) {
  if (controller == nullptr) return {};
  const double threshold = controller->GetInputThreshold();
  const double scale = TakeScale();
  SixAxes scaled;
  std::transform(state.begin(), state.end(), scaled.begin(),
                 [&](double value) { return ScaleBeyond(threshold, scale, value); });
  return scaled;
}

double SixAxisHand::TakeScale() {
  const std::uint32_t now = Korvane::GetPlatform().GetTickCount();
  const std::optional<std::uint32_t> before = std::exchange(lastTick, now);
  if (!before.has_value()) return 1.0;
  const std::uint32_t passed = std::clamp<std::uint32_t>(now - *before, 1, MOST_FRAME_MILLISECONDS);
  return passed / 1000.0 * FRAMES_A_SECOND;
}

// Of a controller that is told no more.
void SixAxisHand::End() {
  const Lifeline::Watch alive(lifeline);
  const bool within = std::exchange(advancing, true);
  EndUnsaid();
  for (std::size_t i = 0; alive && i < sources.size();) {
    if (const auto released = sources[i]->ReleaseNext()) {
      TellCommand(*released);
    } else {
      ++i;
    }
  }
  if (alive) TellState({});
  if (alive) advancing = within;
}

// An end of which the handlers have been told, and within that the controller is taken away.
void SixAxisHand::EndUnsaid() {
  const Lifeline::Watch alive(lifeline);
  const std::optional<int> release = std::exchange(unsaid.release, std::nullopt);
  if (release.has_value()) controller->On3DControllerKeyUp(*release);
  if (!alive || !std::exchange(unsaid.rest, false)) return;
  Vector3 translation;
  Vector3 rotation;
  controller->On3DControllerInput(translation, rotation);
}

}  // namespace zovhost
