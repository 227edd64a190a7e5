#include "disc/disc_region_listener.h"

#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/pivot_ball.h"
#include "korvane/track_menu.h"

namespace Korvane {

DiscRegionListener::DiscRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : RegionListener(menu), disc(helmDisc) {}

void DiscRegionListener::OnLeftMouseDown(int x, int y) {
  pressLife.Cut();
  RegionListener::OnLeftMouseDown(x, y);
}

void DiscRegionListener::OnLeftMouseUp(int x, int y) {
  pressLife.Cut();
  RegionListener::OnLeftMouseUp(x, y);
}

void DiscRegionListener::OnTrackMenuActivate(bool active) {
  if (active) return;
  pressLife.Cut();
  RegionListener::OnLeftMouseUp(mouseX, mouseY);
  FreezeRegion(false);
  IgnoreMouse(false);
}

// ---- with whom it works; the disc goes with its menus ----

HelmDisc* DiscRegionListener::GetDisc() const { return GetTrackMenu() != nullptr ? disc : nullptr; }

CameraOperations* DiscRegionListener::GetHub() const {
  const TrackMenu* const menu = GetTrackMenu();
  return menu != nullptr ? menu->GetKorvane() : nullptr;
}

Renderer* DiscRegionListener::GetRenderer() const {
  const TrackMenu* const menu = GetTrackMenu();
  return menu != nullptr ? menu->GetRenderer() : nullptr;
}

RewindHistory* DiscRegionListener::GetHistory() const {
  const HelmDisc* const owner = GetDisc();
  return owner != nullptr ? owner->GetHistory() : nullptr;
}

PivotBall* DiscRegionListener::GetPivotBall() const {
  const HelmDisc* const owner = GetDisc();
  return owner != nullptr ? owner->GetPivotBall() : nullptr;
}

void DiscRegionListener::SetPivotBallVisible(bool visible) {
  if (PivotBall* const ball = GetPivotBall()) ball->SetVisible(visible);
}

void DiscRegionListener::LabelPivotBall(StringID text) {
  if (PivotBall* const ball = GetPivotBall()) ball->SetLabel(text);
}

// ---- its menu ----

void DiscRegionListener::HideMenu() {
  if (TrackMenu* const menu = GetTrackMenu()) menu->SetVisible(false);
}

void DiscRegionListener::ShowMenu() {
  if (TrackMenu* const menu = GetTrackMenu()) menu->SetVisible(true);
}

void DiscRegionListener::ComeBack() {
  if (IsMouseDown()) return;
  FreezeRegion(false);
  ShowMenu();
}

void DiscRegionListener::FreezeRegion(bool freeze) {
  if (TrackMenu* const menu = GetTrackMenu()) menu->SetSuspendUpdateActiveRegion(freeze);
}

void DiscRegionListener::IgnoreMouse(bool ignore) {
  if (TrackMenu* const menu = GetTrackMenu()) menu->SetIgnoreMouseMovement(ignore);
}

void DiscRegionListener::SetRegionNote(StringID tooltip, DynamicIcon2D* note) {
  TrackMenu::Region& region = GetTrackMenu()->GetActiveRegion();
  region.SetTooltipString(tooltip);
  region.SetTooltipHUD(note);
}

bool DiscRegionListener::IsKeyDown(bool (TrackMenu::*key)() const) const {
  const TrackMenu* const menu = GetTrackMenu();
  if (menu == nullptr) return false;
  return (menu->*key)();
}

bool DiscRegionListener::IsShiftDown() const { return IsKeyDown(&TrackMenu::IsModifierADown); }
bool DiscRegionListener::IsControlDown() const { return IsKeyDown(&TrackMenu::IsModifierBDown); }

// ---- the settings of its disc ----

bool DiscRegionListener::IsSet(bool HelmDiscParameters::*setting) const {
  HelmDisc* const owner = GetDisc();
  return owner != nullptr && owner->GetParameters().*setting;
}

bool DiscRegionListener::IsOnBasicDisc() const {
  const HelmDisc* const owner = GetDisc();
  return owner != nullptr && HelmDisc::IsBasicDisc(owner->GetActiveDisc());
}

bool DiscRegionListener::ShowsMessages() const {
  return IsSet(&HelmDiscParameters::showMessages) || IsOnBasicDisc();
}

}  // namespace Korvane
