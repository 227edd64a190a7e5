#pragma once

#include "commands/view_commands.h"
#include "korvane/helm_disc.h"

namespace zovview {

// What the navigation discs and their menus offer, and the way back through the views.

void OpenDisc(const ViewTarget& target, Korvane::DiscType type);
void CloseDisc(const ViewTarget& target);
/// Ends what plays or records; or puts the open disc away; or selects nothing.
void Dismiss(const ViewTarget& target);
/// Tells what discs are for.
void ShowDiscHelp(const ViewTarget& target);
template <Korvane::DiscType TYPE>
void OpenDiscOf(const ViewTarget& target) {
  OpenDisc(target, TYPE);
}
template <Korvane::DiscType TYPE>
bool IsDiscOpen(const ViewTarget& target) {
  return target.disc.GetActiveDisc() == TYPE;
}

// ---- settings, of the large and of the mini discs ----

// In points.
void SetDiscSize(const ViewTarget& target, bool large, int size);
int GetDiscSize(const ViewTarget& target, bool large);
void SetDiscOpacity(const ViewTarget& target, bool large, double opacity);
double GetDiscOpacity(const ViewTarget& target, bool large);

// By the constants of HelmDiscParameters.
template <bool LARGE, const int* SIZE>
void UseDiscSize(const ViewTarget& target) {
  SetDiscSize(target, LARGE, *SIZE);
}
template <bool LARGE, const int* SIZE>
bool IsDiscSize(const ViewTarget& target) {
  return GetDiscSize(target, LARGE) == *SIZE;
}
template <bool LARGE, const double* OPACITY>
void UseDiscOpacity(const ViewTarget& target) {
  SetDiscOpacity(target, LARGE, *OPACITY);
}
template <bool LARGE, const double* OPACITY>
bool IsDiscOpacity(const ViewTarget& target) {
  return GetDiscOpacity(target, LARGE) == *OPACITY;
}

void WalkSlower(const ViewTarget& target);
void WalkFaster(const ViewTarget& target);
void SetWalkSpeed(const ViewTarget& target, double speed);
bool IsWalkSpeed(const ViewTarget& target, double speed);
template <int PERCENT>
void UseWalkSpeed(const ViewTarget& target) {
  SetWalkSpeed(target, PERCENT / 100.0);
}
template <int PERCENT>
bool IsWalkSpeedOf(const ViewTarget& target) {
  return IsWalkSpeed(target, PERCENT / 100.0);
}

using DiscSwitch = bool Korvane::HelmDiscParameters::*;
template <DiscSwitch SWITCH>
void ToggleDiscSwitch(const ViewTarget& target) {
  bool& setting = target.disc.GetParameters().*SWITCH;
  setting = !setting;
  target.hub.RequestApplicationUpdate();
}
template <DiscSwitch SWITCH>
bool HasDiscSwitch(const ViewTarget& target) {
  return target.disc.GetParameters().*SWITCH;
}

// ---- the views that were before ----

/// One entry of the rewind history back, or forward again; nothing at its end. The camera travels.
void StepBack(const ViewTarget& target);
void StepForward(const ViewTarget& target);

}  // namespace zovview
