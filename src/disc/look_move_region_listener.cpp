#include "disc/look_move_region_listener.h"

#include "korvane/helm_disc.h"
#include "korvane/track_menu.h"

namespace Korvane {

LookMoveRegionListener::LookMoveRegionListener(TrackMenu* menu, HelmDisc* helmDisc, bool lookAt)
    : ShiftToolRegionListener(menu, helmDisc, lookAt, &HelmDiscParameters::lookAtOnShift),
      texts({STRING_LOOK_KEYS, STRING_LOOK, STRING_LOOK_AT}) {}

void LookMoveRegionListener::OnTrackMenuActivate(bool active) {
  ShiftToolRegionListener::OnTrackMenuActivate(active);
  if (!active) tool->SetViewportHUD(nullptr);
  texts.Take(active ? GetRenderer() : nullptr);
}

// ---- the press ----

void LookMoveRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  if (IsAnimating()) return;
  Press(*this)
      .HideMenu()
      .Then([&] {
        FreezeRegion(true);
        ChooseByShift();
      })
      .Then([&] {
        ChangeRegion();
        if (!usesShiftTool) PrepareLook();
        GetToolOfMode().OnMouseDown(x, y);
      });
}

void LookMoveRegionListener::ChangeRegion() {
  const bool looks = !usesShiftTool;
  TrackMenu::Region& region = GetTrackMenu()->GetActiveRegion();
  region.SetWrap(looks);
  region.SetCursorID(looks ? CURSOR_LOOK : CURSOR_LOOK_AT);
  SetRegionNote(looks ? STRING_LOOK : STRING_LOOK_AT, texts.Get(looks ? TEXT_LOOK : TEXT_LOOK_AT));
}

void LookMoveRegionListener::PrepareLook() {
  tool->SetInvertVerticalAxis(IsSet(&HelmDiscParameters::invertLookVertical));
  tool->SetAlignUpDirection(IsSet(&HelmDiscParameters::keepSceneUpright));
  RefreshSpeed();
  tool->SetViewportHUD(ShowsMessages() ? texts.Get(TEXT_KEYS) : nullptr);
}

void LookMoveRegionListener::RefreshSpeed() {
  HelmDisc* const owner = GetDisc();
  if (owner != nullptr) tool->SetSpeedFactor(owner->GetParameters().walkSpeedFactor);
}

// ---- the drag ----

Tool& LookMoveRegionListener::GetToolOfMode() {
  if (!usesShiftTool) RefreshSpeed();
  return ShiftToolRegionListener::GetToolOfMode();
}

void LookMoveRegionListener::OnKeyDown(KeyID key) { GetToolOfMode().OnKeyDown(key); }
void LookMoveRegionListener::OnKeyUp(KeyID key) { GetToolOfMode().OnKeyUp(key); }

void LookMoveRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  Press(*this).Then([&] { GetToolOfMode().OnMouseUp(x, y); }).ShowMenu();
}

}  // namespace Korvane
