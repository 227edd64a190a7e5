#include "disc/walk_region_listener.h"

#include "camera/find_operation.h"
#include "camera/fly_operation.h"
#include "foundation/out_of_memory.h"
#include "korvane/helm_disc.h"
#include "korvane/icon2d.h"
#include "korvane/track_menu.h"

namespace Korvane {

namespace {

constexpr double FADE_TIME = 0.8;        // seconds
constexpr double SPEED_EASE_TIME = 0.5;  // from a run back to a walk
constexpr double NO_SPEED = -1.0;

constexpr TextureID TEXTURES[] = {TEXTURE_WALK_START, TEXTURE_WALK_REFUSED};

bool IsFading(const DynamicIcon2D* note) {
  return note != nullptr && note->GetChangingInTimeOpacity().IsChangingInTime();
}

}  // namespace

WalkRegionListener::WalkRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : ToolRegionListener(menu, helmDisc),
      texts({STRING_WALK, STRING_WALK_REFUSED, STRING_WALK_UP_DOWN}),
      textures(TEXTURES) {}

void WalkRegionListener::OnTrackMenuActivate(bool active) {
  const bool pressed = IsMouseDown();
  ToolRegionListener::OnTrackMenuActivate(active);
  if (!active) {
    if (pressed) messages.Renew(IsSet(&HelmDiscParameters::showMessages));
    RestoreSpeed();
    tool->SetViewportHUD(nullptr);
  }
  textures.Want(active ? GetRenderer() : nullptr);
  texts.Take(active ? GetRenderer() : nullptr);
  tool->SetMessageHUD(texts.Get(TEXT_MESSAGE));
  tool->SetWarningHUD(texts.Get(TEXT_WARNING));
  tool->SetUpDownHUD(texts.Get(TEXT_UP_DOWN));
}

// ---- the press ----

void WalkRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this)
      .HideMenu()
      .Then([&] {
        const double interval = GetDisc()->GetParameters().walkRewindInterval;
        tool->SetRewindHistoryInterval(interval);
        tool->OnMouseDown(x, y);
      })
      .Then([&] { RestorePointer(); });
}

// The menu's place: the wedge itself does not hear of the move that enters it.
void WalkRegionListener::RememberPointer() {
  const TrackMenu* const menu = GetTrackMenu();
  if (menu == nullptr) return;
  const Vector2 mouse = menu->GetMouseCoords();
  restored = {true, static_cast<int>(mouse.x), static_cast<int>(mouse.y)};
}

void WalkRegionListener::RestorePointer() {
  if (!restored.pending) return;
  restored.pending = false;
  if (Renderer* const renderer = GetRenderer()) renderer->SetCursorPosition(restored.x, restored.y);
}

void WalkRegionListener::OnLeftMouseUp(int x, int y) {
  // NOLINTNEXTLINE(bugprone-parent-virtual-call): the tool gets its release as a step
  DiscRegionListener::OnLeftMouseUp(x, y);
  if (savedSpeedFactor >= 0.0) OnKeyUp(KEY_RUN);
  RestoreSpeed();  // also where the walk has ended before
  Press(*this).Then([&] { tool->OnMouseUp(x, y); }).ShowMenu();
  messages.Renew(IsSet(&HelmDiscParameters::showMessages));
}

// ---- keys ----

void WalkRegionListener::OnKeyDown(KeyID key) {
  tool->OnKeyDown(key);
  if (key == KEY_SHIFT) RememberPointer();
  if (key == KEY_RUN && tool->IsOperating()) RaiseSpeed();
}

void WalkRegionListener::OnKeyUp(KeyID key) {
  tool->OnKeyUp(key);
  HelmDisc* const owner = GetDisc();
  if (owner == nullptr || !tool->IsOperating()) return;
  if (key == KEY_SLOWER) owner->DecrementWalkSpeed();
  if (key == KEY_FASTER) owner->IncrementWalkSpeed();
  if (key == KEY_RUN) RestoreSpeed();
}

// A key that is held repeats.
void WalkRegionListener::RaiseSpeed() {
  HelmDisc& owner = *GetDisc();
  if (savedSpeedFactor < 0.0) savedSpeedFactor = owner.GetParameters().walkSpeedFactor;
  owner.IncrementWalkSpeed();
}

void WalkRegionListener::RestoreSpeed() {
  HelmDisc* const owner = GetDisc();
  if (owner == nullptr || savedSpeedFactor < 0.0) return;
  owner->GetParameters().walkSpeedFactor = std::exchange(savedSpeedFactor, NO_SPEED);
  CameraOperations* const hub = GetHub();
  if (hub == nullptr) return;
  ApplicationParameters& parameters = hub->GetApplicationParameters();
  const double present = parameters.GetFlyMoveMultiplier();
  parameters.ChangeFlyMoveMultiplierInTime(present, 1.0, SPEED_EASE_TIME);
}

// ---- a frame ----

void WalkRegionListener::Fade(DynamicIcon2D* note, double from, double to) const {
  OrFail([&] {
    if (note == nullptr) return;
    if (GetDisc()->AreMessagesAtOnce()) return note->SetOpacity(to);
    ChangingInTimeValueChain opacity;
    opacity.Add(ChangingInTimeValue(from, to, FADE_TIME, INTERPOLATION_LINEAR));
    opacity.Start();
    note->SetChangingInTimeOpacity(opacity);
  });
}

void WalkRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();  // NOLINT(bugprone-parent-virtual-call): the tool is drawn last
  ShowHUDs();
  tool->OnDraw();
}

void WalkRegionListener::ShowHUDs() {
  if (!ShowsMessages()) {
    tool->SetViewportHUD(nullptr);
    return;
  }
  const auto* const fly = FindOperation<FlyOperation>(tool->GetKorvane(), OPERATION_FLY);
  if (fly == nullptr) return;
  if (!fly->IsInDeadZone()) {
    ShowMoving();
  } else if (messages.showWalkHUD) {
    tool->SetViewportHUD(tool->GetMessageHUD());
    Fade(tool->GetMessageHUD(), 0.0, 1.0);
    messages = {false, true, true};
  }
}

// The one message goes before the other comes.
void WalkRegionListener::ShowMoving() {
  DynamicIcon2D* const message = tool->GetMessageHUD();
  if (messages.showMoveHUD && !messages.showWalkHUD) {
    Fade(message, 1.0, 0.0);
    messages.showMoveHUD = false;
    messages.fadePending = true;
  }
  if (!messages.fadePending || IsFading(message)) return;
  tool->SetViewportHUD(tool->GetUpDownHUD());
  Fade(tool->GetUpDownHUD(), 0.0, 1.0);
  messages = {false, false, false};
}

}  // namespace Korvane
