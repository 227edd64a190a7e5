#include "disc/look_move_region_listener.h"

#include "korvane/helm_disc.h"
#include "korvane/track_menu.h"

namespace Korvane {

LookMoveRegionListener::LookMoveRegionListener(TrackMenu* menu, HelmDisc* helmDisc, bool lookAt)
    : DiscRegionListener(menu, helmDisc),
      allowLookAt(lookAt),
      texts({STRING_LOOK_KEYS, STRING_LOOK, STRING_LOOK_AT}),
      lookTool(*this),
      lookAtTool(*this) {}

void LookMoveRegionListener::OnTrackMenuActivate(bool active) {
  DiscRegionListener::OnTrackMenuActivate(active);
  if (!active) {
    lookTool.EndGesture();
    lookAtTool.EndGesture();
    lookTool->SetViewportHUD(nullptr);
  }
  texts.Take(active ? GetRenderer() : nullptr);
}

// ---- the press ----

void LookMoveRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  if (IsAnimating()) return;
  Press(*this).HideMenu().Then([&] {
    FreezeRegion(true);
    const bool looksAt = IsShiftDown() && allowLookAt && IsSet(&HelmDiscParameters::lookAtOnShift);
    mode = looksAt ? MODE_LOOK_AT : MODE_LOOK;
    ChangeRegion();
    if (mode == MODE_LOOK) PrepareLook();
    GetToolOfMode().OnMouseDown(x, y);
  });
}

void LookMoveRegionListener::ChangeRegion() {
  const bool looks = mode == MODE_LOOK;
  TrackMenu::Region& region = GetTrackMenu()->GetActiveRegion();
  region.SetWrap(looks);
  region.SetCursorID(looks ? CURSOR_LOOK : CURSOR_LOOK_AT);
  SetRegionNote(looks ? STRING_LOOK : STRING_LOOK_AT, texts.Get(looks ? TEXT_LOOK : TEXT_LOOK_AT));
}

void LookMoveRegionListener::PrepareLook() {
  lookTool->SetInvertVerticalAxis(IsSet(&HelmDiscParameters::invertLookVertical));
  lookTool->SetAlignUpDirection(IsSet(&HelmDiscParameters::keepSceneUpright));
  RefreshSpeed();
  lookTool->SetViewportHUD(ShowsMessages() ? texts.Get(TEXT_KEYS) : nullptr);
}

void LookMoveRegionListener::RefreshSpeed() {
  HelmDisc* const owner = GetDisc();
  if (owner != nullptr) lookTool->SetSpeedFactor(owner->GetParameters().walkSpeedFactor);
}

// ---- the drag ----

Tool& LookMoveRegionListener::GetToolOfMode() {
  if (mode == MODE_LOOK_AT) return *lookAtTool.operator->();
  RefreshSpeed();
  return *lookTool.operator->();
}

void LookMoveRegionListener::OnMouseMove(int x, int y) {
  DiscRegionListener::OnMouseMove(x, y);
  if (!IsAnimating()) GetToolOfMode().OnMouseMove(x, y);
}

void LookMoveRegionListener::OnKeyDown(KeyID key) { GetToolOfMode().OnKeyDown(key); }
void LookMoveRegionListener::OnKeyUp(KeyID key) { GetToolOfMode().OnKeyUp(key); }

void LookMoveRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  Press(*this).Then([&] { GetToolOfMode().OnMouseUp(x, y); }).ShowMenu();
}

// ---- a frame ----

void LookMoveRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  Press(*this).Then([&] { GetToolOfMode().OnDraw(); }).Then([&] {
    if (!lookTool.IsBusy() && !lookAtTool.IsBusy()) ComeBack();
  });
}

}  // namespace Korvane
