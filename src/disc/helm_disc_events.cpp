// The mouse and the keys.
#include <utility>

#include "disc/helm_disc_parts.h"
#include "korvane/helm_disc_observer.h"

namespace Korvane {

// ---- the life of a click on a region ----

bool HelmDisc::OnLeftMouseDown(int x, int y) {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  now.press.leftPressed = true;
  now.press.zone = -1;
  now.welcome.clickPending = false;  // of a click whose release has been lost
  if (PressWelcome(x, y)) return true;
  if (!alive || !GetEnabled()) return false;
  return PressMenu(x, y);
}

// The press is noted before the region hears of it, since that may close the disc.
bool HelmDisc::PressMenu(int x, int y) {
  HelmDiscParts& now = *parts;
  TrackMenu& menu = *now.active;
  now.press.zone = menu.GetActiveRegion().zone;
  now.press.modifierA = menu.IsModifierADown();
  now.press.modifierB = menu.IsModifierBDown();
  now.press.captured = true;
  now.keys.hotKeyHeld = true;
  menu.OnLeftMouseDown(x, y);
  return true;
}

// The menu of a closed disc follows the cursor, so that it opens in the right place.
bool HelmDisc::OnMouseMove(int x, int y) {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  HelmDiscParts::Press& press = now.press;
  if (press.leftPressed && !press.dragBegun && press.zone >= 0) {
    press.dragBegun = true;
    const auto zone = static_cast<HelmDiscZone>(press.zone);
    now.partners.observers.Notify([zone](HelmDiscObserver& each) { each.OnDragBegin(zone); });
  }
  GetTrackMenu(now.defaultType)->OnMouseMove(x, y);  // the open one, or that which was last
  if (alive && now.welcome.IsVisible()) now.welcome.menu->OnMouseMove(x, y);
  if (alive && now.welcome.IsVisible()) UpdateWelcome();
  return alive && GetEnabled() && now.press.dragBegun;
}

bool HelmDisc::OnLeftMouseUp(int x, int y) {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  const bool captured = std::exchange(now.press.captured, false);
  TellRelease();
  if (std::exchange(now.welcome.clickPending, false)) return captured;
  if (now.active != nullptr) ReleaseMenu(x, y);
  if (!alive) return captured;
  now.press.modifierA = now.press.modifierB = false;
  CameraOperations* const hub = GetKorvane();
  if (now.active != nullptr && hub != nullptr) hub->ConstrainPivotToViewport();
  if (alive && now.welcome.IsVisible()) now.welcome.menu->OnLeftMouseUp(x, y);
  return captured;
}

void HelmDisc::TellRelease() {
  HelmDiscParts& now = *parts;
  const bool pressed = std::exchange(now.press.leftPressed, false);
  const bool dragged = now.press.dragBegun;
  const int zone = now.press.zone;
  if (pressed && zone >= 0 && !now.welcome.clickPending) {
    now.partners.observers.Notify([=](HelmDiscObserver& each) {
      if (dragged) {
        each.OnDragEnd();
      } else {
        each.OnClicked(static_cast<HelmDiscZone>(zone));
      }
    });
  }
  now.press.dragBegun = false;
}

// A modifier that was let go during the press takes effect now.
void HelmDisc::ReleaseMenu(int x, int y) {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  TrackMenu& menu = *now.active;
  const bool shiftGoes = now.press.modifierA && !menu.IsModifierADown();
  const bool controlGoes = now.press.modifierB && !menu.IsModifierBDown();
  menu.OnLeftMouseUp(x, y);
  if (alive && shiftGoes) OnKeyUp(KEY_SHIFT);
  if (alive && controlGoes) OnKeyUp(KEY_CONTROL);
}

bool HelmDisc::OpenMenu() { return parts->visible && parts->active != nullptr && parts->active->OpenMenu(); }

// ---- keys ----

bool HelmDisc::OnKeyDown(KeyID key) {
  if (key == KEY_DISC) return true;
  NoteModifier(key, true);
  return PassKey(key, true);
}

bool HelmDisc::OnKeyUp(KeyID key) {
  if (key == KEY_DISC) return ReleaseHotKey();
  NoteModifier(key, false);
  return PassKey(key, false);
}

void HelmDisc::NoteModifier(KeyID key, bool down) {
  if (key == KEY_SHIFT) parts->keys.modifierADown = down;
  if (key == KEY_CONTROL) parts->keys.modifierBDown = down;
  FlipRegions(key, down);
}

// What a release puts back, it puts back whether or not the key had changed it.
void HelmDisc::FlipRegions(KeyID key, bool down) {
  for (const DiscKeyFlip& flip : GetDiscKeyFlips()) {
    if (flip.key != key || (down && flip.turnsScene && parameters.keepSceneUpright)) continue;
    TrackMenu& menu = *GetTrackMenu(flip.disc);
    if (TrackMenu::Region* const off = menu.GetRegion(flip.off)) off->enabled = !down;
    if (TrackMenu::Region* const on = menu.GetRegion(flip.on)) on->enabled = down;
  }
}

// A disc that a press keeps open is kept until the next key after the button.
bool HelmDisc::PassKey(KeyID key, bool down) {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  const auto tell = [=](auto& each) {
    if (down) {
      each.OnKeyDown(key);
    } else {
      each.OnKeyUp(key);
    }
  };
  if (now.visible && now.active != nullptr) now.partners.observers.Notify(tell);
  TrackMenu* const menu = now.active;
  if (menu != nullptr) tell(*menu);
  if (!alive) return false;
  if (down) LetHotKeyClose();
  return now.press.captured;
}

void HelmDisc::LetHotKeyClose() {
  const TrackMenu* const menu = parts->active;
  if (menu == nullptr || !menu->IsLeftButtonDown()) parts->keys.hotKeyHeld = false;
}

bool HelmDisc::ReleaseHotKey() {
  HelmDiscParts& now = *parts;
  if (now.keys.hotKeyHeld) return true;
  const Lifeline::Watch alive(now.lifeline);
  if (now.active == nullptr) {
    SetActiveDisc(now.defaultType);
    if (alive) now.timers.hotKey.Start(HelmDiscHotKeyTimer::DURATION, false);
  } else if (!now.active->IsLeftButtonDown()) {
    SetActiveDisc(DiscType::None);
    if (alive) now.timers.hotKey.Stop();
  }
  return true;
}

}  // namespace Korvane
