#include "zovhost/six_axis_source.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace zovhost {

namespace {

double Bound(double value) {
  return std::isfinite(value) ? std::clamp(value, -MOST_DEFLECTION, MOST_DEFLECTION) : 0.0;
}

}  // namespace

SixAxisSource::SixAxisSource() = default;
SixAxisSource::~SixAxisSource() = default;

void SixAxisSource::SetAxes(const SixAxes& state) {
  std::transform(state.begin(), state.end(), axes.begin(), Bound);
}

void SixAxisSource::SetButtons(const Buttons& nowHeld, const Buttons& pressedSince) {
  held = nowHeld;
  pressed |= pressedSince;
}

void SixAxisSource::Rest() {
  axes = {};
  held.reset();
}

std::optional<SixAxisButton> SixAxisSource::TakeButton() {
  for (std::size_t i = 0; i < held.size(); ++i) {
    // One that is down, and has been pressed since, has been released in between.
    const bool isPress = !taken[i] && (held[i] || pressed[i]);
    const bool isRelease = taken[i] && (!held[i] || pressed[i]);
    if (!isPress && !isRelease) continue;
    taken[i] = isPress;
    if (isPress) pressed[i] = false;
    return SixAxisButton{static_cast<int>(i), isPress};
  }
  return std::nullopt;
}

// ---- fed by the host ----

FedSource::FedSource(const SixAxisSettings& defaultSettings) : defaults(defaultSettings) {}

void FedSource::Feed(const SixAxes& fed) {
  state = fed;
  present = true;
  Come();
}

bool FedSource::FeedButton(int number, bool isPressed) {
  if (number < 0 || number >= SixAxisSettings::BUTTON_COUNT) return false;
  const auto button = static_cast<std::size_t>(number);
  down[button] = isPressed;
  if (isPressed) pressedSince[button] = true;
  present = true;
  Come();
  return true;
}

void FedSource::RemoveDevice() {
  state = {};
  down.reset();
  present = false;
  Come();
}

void FedSource::Poll() {
  woken = false;
  SetAxes(state);
  SetButtons(down, std::exchange(pressedSince, {}));
}

void FedSource::SetWake(std::function<void()> wake) { onCome = std::move(wake); }

void FedSource::Come() {
  if (!std::exchange(woken, true) && onCome) onCome();
}

}  // namespace zovhost
