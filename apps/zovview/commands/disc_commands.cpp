#include "commands/disc_commands.h"

#include <cmath>

#include "korvane/rewind_history.h"
#include "korvane/shot_parameters.h"
#include "stories/view_story.h"

namespace zovview {

using Korvane::DiscType;
using Korvane::HelmDiscParameters;
using Korvane::RewindHistory;

namespace {

constexpr double STEP_SECONDS = 0.5;
constexpr double SAME_SPEED = 1e-9;  // speeds are sums of tenths

// The current element is where the view came to rest last: a move that is still under way is one of its own,
// and ends first.
void Step(const ViewTarget& target, bool (RewindHistory::*shift)()) {
  target.hub.EndShot();
  RewindHistory& history = *target.disc.GetHistory();
  Korvane::TransitionShotParameters transition;
  if (!(history.*shift)() || !history.GetTransitionCamera(transition.targetCamera)) return;
  transition.easeEnd = 1.0;
  transition.duration = STEP_SECONDS;
  target.hub.BeginShot(transition);
}

}  // namespace

void OpenDisc(const ViewTarget& target, DiscType type) { target.disc.SetActiveDisc(type); }
void CloseDisc(const ViewTarget& target) { target.disc.SetActiveDisc(DiscType::None); }

void Dismiss(const ViewTarget& target) {
  if (target.story != nullptr && target.story->Cancel()) return;
  if (target.disc.GetActiveDisc() != DiscType::None) return CloseDisc(target);
  ClearSelection(target);
}

void ShowDiscHelp(const ViewTarget& target) {
  if (target.showHelp) target.showHelp();
}

// ---- settings ----

double GetScale(const ViewTarget& target) { return target.scale != nullptr ? *target.scale : 1.0; }

void SetDiscSize(const ViewTarget& target, bool large, int size) {
  const auto pixels = static_cast<int>(std::lround(size * GetScale(target)));
  if (large) {
    target.disc.SetLargeDiscSize(pixels);
  } else {
    target.disc.SetMiniDiscSize(pixels);
  }
  target.hub.RequestApplicationUpdate();
}

int GetDiscSize(const ViewTarget& target, bool large) {
  const HelmDiscParameters& parameters = target.disc.GetParameters();
  const int pixels = large ? parameters.largeDiscSize : parameters.miniDiscSize;
  return static_cast<int>(std::lround(pixels / GetScale(target)));
}

void SetDiscOpacity(const ViewTarget& target, bool large, double opacity) {
  if (large) {
    target.disc.SetLargeDiscOpacity(static_cast<float>(opacity));
  } else {
    target.disc.SetMiniDiscOpacity(static_cast<float>(opacity));
  }
  target.hub.RequestApplicationUpdate();
}

double GetDiscOpacity(const ViewTarget& target, bool large) {
  const HelmDiscParameters& parameters = target.disc.GetParameters();
  return large ? parameters.largeDiscOpacity : parameters.miniDiscOpacity;
}

void WalkSlower(const ViewTarget& target) { target.disc.DecrementWalkSpeed(); }
void WalkFaster(const ViewTarget& target) { target.disc.IncrementWalkSpeed(); }

void SetWalkSpeed(const ViewTarget& target, double speed) {
  target.disc.GetParameters().walkSpeedFactor = speed;
  target.disc.UpdateSettings();
}

bool IsWalkSpeed(const ViewTarget& target, double speed) {
  return std::abs(target.disc.GetParameters().walkSpeedFactor - speed) < SAME_SPEED;
}

// ---- the views that were before ----

void StepBack(const ViewTarget& target) { Step(target, &RewindHistory::ShiftBackOneElement); }
void StepForward(const ViewTarget& target) { Step(target, &RewindHistory::ShiftForwardOneElement); }

}  // namespace zovview
