// Sizes, opacities and the walk speed.
#include <algorithm>
#include <cmath>

#include "disc/helm_disc_parts.h"

namespace Korvane {

namespace {

constexpr int SMALLEST_WITH_ARROW = 128;  // pixels, of a mini disc

template <class Step>
void ForKinds(HelmDisc& disc, bool large, const Step& step) {
  const Lifeline::Watch alive(disc.GetLifeline());
  for (int kind = 0; alive && kind < DISC_KIND_COUNT; ++kind) {
    const auto type = static_cast<DiscType>(kind);
    if (HelmDisc::IsLargeDisc(type) == large) step(*disc.GetTrackMenu(type));
  }
}

}  // namespace

void HelmDisc::SetLargeDiscSize(int size) {
  parameters.largeDiscSize = size;
  ForKinds(*this, true, [size](TrackMenu& menu) { menu.SetSize(size, size); });
}

void HelmDisc::SetMiniDiscSize(int size) {
  parameters.miniDiscSize = size;
  const CursorID cursor = size < SMALLEST_WITH_ARROW ? CURSOR_ORBIT_CUBE : CURSOR_ARROW;
  ForKinds(*this, false, [=](TrackMenu& menu) {
    menu.SetMenuCursorID(cursor);
    menu.SetSize(size, size);
  });
}

void HelmDisc::SetLargeDiscOpacity(float opacity) {
  if (!std::isfinite(opacity)) return;
  parameters.largeDiscOpacity = opacity;
  ForKinds(*this, true, [opacity](TrackMenu& menu) { menu.SetOpacity(opacity); });
}

void HelmDisc::SetMiniDiscOpacity(float opacity) {
  if (!std::isfinite(opacity)) return;
  parameters.miniDiscOpacity = opacity;
  ForKinds(*this, false, [opacity](TrackMenu& menu) { menu.SetOpacity(opacity); });
}

void HelmDisc::UpdateSettings() {
  const Lifeline::Watch alive(GetLifeline());
  SetLargeDiscSize(parameters.largeDiscSize);
  if (alive) SetMiniDiscSize(parameters.miniDiscSize);
  if (alive) SetLargeDiscOpacity(static_cast<float>(parameters.largeDiscOpacity));
  if (alive) SetMiniDiscOpacity(static_cast<float>(parameters.miniDiscOpacity));
  if (alive) ApplyWalkSpeed();
}

// ---- the walk speed, which a step leaves on tenths ----

void HelmDisc::IncrementWalkSpeed() {
  constexpr double FIRST_LARGE = 0.6;
  const double speed = parameters.walkSpeedFactor;
  TakeWalkSpeed(speed < FIRST_LARGE ? std::floor((speed + 0.1) * 10.0) * 0.1
                                    : std::ceil(speed * 1.25 * 10.0 - 0.1) * 0.1);
}

void HelmDisc::DecrementWalkSpeed() {
  constexpr double FIRST_LARGE = 0.8;
  const double speed = parameters.walkSpeedFactor;
  TakeWalkSpeed(speed < FIRST_LARGE ? std::floor((speed - 0.1) * 10.0) * 0.1
                                    : std::floor(speed * 0.8 * 10.0 + 0.1) * 0.1);
}

void HelmDisc::TakeWalkSpeed(double speed) {
  if (std::isnan(speed)) return;
  parameters.walkSpeedFactor =
      std::clamp(speed, HelmDiscParameters::minimumSpeedFactor, HelmDiscParameters::maximumSpeedFactor);
  ApplyWalkSpeed();
}

void HelmDisc::ApplyWalkSpeed() {
  CameraOperations* const hub = GetKorvane();
  const double speed = parameters.walkSpeedFactor;
  if (hub != nullptr && std::isfinite(speed)) hub->GetApplicationParameters().SetFlyMoveMultiplier(speed);
}

}  // namespace Korvane
