// Life, collaborators, opening and closing, drawing. The other sources of the class: _regions, _events,
// _settings and _welcome.
#include "korvane/helm_disc.h"

#include <utility>

#include "disc/helm_disc_parts.h"
#include "foundation/out_of_memory.h"
#include "foundation/truncate.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/icon2d.h"
#include "korvane/pixel_icon2d.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

constexpr float THUMBNAIL_SIZE = 64.0F;  // pixels
constexpr float THUMBNAIL_GAP = 4.0F;

std::unique_ptr<TrackMenu> MakeMenu() {
  auto menu = std::make_unique<TrackMenu>();
  menu->SetRendererShared(true);
  return menu;
}

void TellOfChoice(HelmDiscParts& disc, DiscType type) {
  disc.partners.observers.Notify([type](HelmDiscObserver& each) {
    if (type == DiscType::None) {
      each.OnClosed();
    } else {
      each.OnActivated(type);
    }
  });
}

}  // namespace

void HelmDiscParts::HideMenu(TrackMenu& menu) {
  const Lifeline::Watch alive(menu.GetLifeline());
  menu.CancelPress();
  menu.SetVisible(false);
  if (alive) menu.SetActive(false);
}

// ---- life ----

HelmDisc::HelmDisc() : parts(std::make_unique<HelmDiscParts>()) {
  for (std::unique_ptr<TrackMenu>& menu : parts->menus) menu = MakeMenu();
  parts->welcome.menu = MakeMenu();
  parts->history = std::make_unique<RewindHistory>();
  parts->history->SetThumbnailSize(THUMBNAIL_SIZE);
  parts->history->SetThumbnailGapSize(THUMBNAIL_GAP);
}

// What its wedges have begun ends while all that they work with is still there.
HelmDisc::~HelmDisc() {
  if (TrackMenu* const open = std::exchange(parts->active, nullptr)) {
    open->SetVisible(false);
    open->SetActive(false);
  }
  parts->lifeline.Cut();
}

bool HelmDisc::Create() {
  return OrFail([&] {
    const Lifeline::Watch alive(parts->lifeline);
    parts->created = true;
    parts->closeNote.Take(GetRenderer(), STRING_DISC_CLOSED);
    bool result = alive && CreatePivotBall();
    result = alive && CreateMenus() && result;
    result = alive && CreateWelcome() && result;
    if (!alive) return false;
    parts->timers.tooltip.SetHelmDisc(this);
    UpdateSettings();
    return result;
  });
}

bool HelmDisc::CreatePivotBall() {
  if (GetPivotBall() != nullptr) return true;
  PivotBall* const ball = InstantiatePivotBall();
  parts->ownBall.reset(ball);
  parts->partners.pivotBall.Set(ball);
  if (ball == nullptr) return true;
  ball->SetKorvane(GetKorvane());
  ball->SetRenderer(GetRenderer());
  return ball->Create();
}

PivotBall* HelmDisc::InstantiatePivotBall() { return std::make_unique<PivotBall>().release(); }

bool HelmDisc::CreateMenus() {
  const Lifeline::Watch alive(parts->lifeline);
  for (int kind = 0; kind < DISC_KIND_COUNT; ++kind) {
    const auto type = static_cast<DiscType>(kind);
    GetTrackMenu(type)->Create();
    if (!InitRegions(type) || !alive) return false;
  }
  return true;
}

bool HelmDisc::Destroy() {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  now.choice.Cut();
  now.created = false;
  now.timers.tooltip.Stop();
  now.keys.hotKeyHeld = false;
  if (TrackMenu* const open = std::exchange(now.active, nullptr)) HelmDiscParts::HideMenu(*open);
  if (alive) now.history->ClearHistory();
  if (alive) now.ForEachMenu([](TrackMenu& menu) { menu.Destroy(); });
  if (alive) DestroyPivotBall();
  if (!alive) return false;
  now.closeNote.GiveBack();
  if (Renderer* const renderer = GetRenderer()) renderer->ApplyTextureUsage();
  return true;
}

// One that was set is let go.
void HelmDisc::DestroyPivotBall() {
  parts->partners.pivotBall.Set(nullptr);
  const std::unique_ptr<PivotBall> ball = std::move(parts->ownBall);
  if (ball != nullptr) ball->Destroy();
}

// ---- collaborators ----

void HelmDisc::SetKorvane(CameraOperations* hub) {
  HelmDiscParts& now = *parts;
  now.partners.hub.Set(hub);
  now.timers.closeHUD.SetKorvane(hub);
  now.history->SetKorvane(hub);
  if (now.ownBall != nullptr) now.ownBall->SetKorvane(hub);
  now.ForEachMenu([hub](TrackMenu& menu) { menu.SetKorvane(hub); });
}

CameraOperations* HelmDisc::GetKorvane() const { return parts->partners.hub.Get(); }

// The counts of the former one come true now: nobody would see to it later. With each step the host may set
// another one, or end this one.
void HelmDisc::SetRenderer(Renderer* value) {
  HelmDiscParts& now = *parts;
  if (value != nullptr && value == GetRenderer()) return;
  const Lifeline::Watch alive(now.lifeline);
  const Borrowed<Renderer> former(GetRenderer());
  now.partners.renderer.Set(value);
  const Borrowed<Renderer> next(value);
  now.Rewire(value, [&] { return alive && GetRenderer() == value; });
  const bool lost = alive && value != nullptr && GetRenderer() == nullptr && next.Get() == nullptr;
  if (lost) SetRenderer(nullptr);  // to the menus, too, there is none
  if (!alive || !now.created) return;
  if (Renderer* const last = former.Get()) last->ApplyTextureUsage();
  if (!alive) return;
  if (Renderer* const present = GetRenderer()) present->ApplyTextureUsage();
}

Renderer* HelmDisc::GetRenderer() const { return parts->partners.renderer.Get(); }
RewindHistory* HelmDisc::GetHistory() const { return parts->history.get(); }
PivotBall* HelmDisc::GetPivotBall() const { return parts->partners.pivotBall.Get(); }

void HelmDisc::SetPivotBall(PivotBall* ball) {
  if (ball != nullptr && ball == parts->ownBall.get()) return;
  DestroyPivotBall();
  parts->partners.pivotBall.Set(ball);
}

bool HelmDisc::AddObserver(HelmDiscObserver* observer) { return parts->partners.observers.Add(observer); }
void HelmDisc::RemoveObserver(HelmDiscObserver* observer) { parts->partners.observers.Remove(observer); }
Lifeline& HelmDisc::GetLifeline() { return parts->lifeline; }

// ---- which disc is open ----

TrackMenu* HelmDisc::GetActiveTrackMenu() const { return parts->active; }
TrackMenu* HelmDisc::GetTrackMenu(DiscType type) const { return parts->GetMenu(type); }
TrackMenu* HelmDisc::GetWelcomeTrackMenu() const { return parts->welcome.menu.get(); }

DiscType HelmDisc::GetActiveDisc() const {
  return parts->active != nullptr ? parts->defaultType : DiscType::None;
}

DiscType HelmDisc::GetDefaultDiscType() const { return parts->defaultType; }

void HelmDisc::SetDefaultDiscType(DiscType type) {
  if (parts->active == nullptr && IsDiscKind(type)) parts->defaultType = type;
}

void HelmDisc::SetOpensAtPointer(bool opens) { parts->opensAtPointer = opens; }
void HelmDisc::SetMessagesAtOnce(bool atOnce) { parts->messagesAtOnce = atOnce; }
bool HelmDisc::AreMessagesAtOnce() const { return parts->messagesAtOnce; }

// Whoever is told of any of it may choose another disc, which then stays.
void HelmDisc::SetActiveDisc(DiscType type) {
  HelmDiscParts& now = *parts;
  now.choice.Cut();
  const Lifeline::Watch current(now.choice);
  const Lifeline::Watch alive(now.lifeline);
  TrackMenu* const former = now.active;
  TrackMenu& follower = *GetTrackMenu(now.defaultType);
  if (IsDiscKind(type)) OpenKind(type);
  if (type == DiscType::None) CloseKind();
  if (!alive) return;
  const bool changed = now.active != former;
  if (changed) ChangeMenu(former);
  if (current) ShowMenu(type);
  if (current) PlaceMenu(follower, former != nullptr);
  if (!current) return;
  if (Renderer* const renderer = GetRenderer()) renderer->ApplyTextureUsage();
  if (current) now.RequestUpdate();
  if (!current || !changed) return;
  TellOfChoice(now, type);
}

void HelmDisc::OpenKind(DiscType type) {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  now.active = GetTrackMenu(type);
  now.defaultType = type;
  now.timers.tooltip.Start(HelmDiscTooltipTimer::PERIOD, true);
  AgreeOnModifiers(*now.active);
  if (!alive || now.welcome.menu == nullptr) return;
  HelmDiscParts::HideMenu(*now.welcome.menu);
  if (alive && now.welcome.menu != nullptr) now.welcome.menu->SetEnabled(false);
  if (alive) now.partners.observers.Notify([](HelmDiscObserver& each) { each.OnWelcomeClosed(); });
}

void HelmDisc::AgreeOnModifiers(TrackMenu& menu) {
  const Lifeline::Watch alive(menu.GetLifeline());
  const bool modifiers[] = {parts->keys.modifierADown, parts->keys.modifierBDown};
  const auto agree = [&](KeyID key, bool isDown, bool down) {
    if (isDown == down) return;
    if (down) {
      menu.OnKeyDown(key);
    } else {
      menu.OnKeyUp(key);
    }
  };
  agree(KEY_SHIFT, menu.IsModifierADown(), modifiers[0]);
  if (alive) agree(KEY_CONTROL, menu.IsModifierBDown(), modifiers[1]);
}

void HelmDisc::CloseKind() {
  HelmDiscParts& now = *parts;
  now.active = nullptr;
  now.keys.hotKeyHeld = false;
  if (parameters.showMessages) now.timers.closeHUD.Start(HelmDiscCloseHUDTimer::DURATION, false);
  now.timers.tooltip.Stop();
}

void HelmDisc::ChangeMenu(TrackMenu* former) {
  const Lifeline::Watch alive(parts->lifeline);
  if (former != nullptr) HelmDiscParts::HideMenu(*former);
  if (!alive) return;
  Renderer* const renderer = GetRenderer();
  const TrackMenu* const menu = parts->active;
  if (renderer != nullptr && menu != nullptr && menu->GetEnabled())
    renderer->SetCursorID(menu->GetMenuCursorID());
}

void HelmDisc::ShowMenu(DiscType type) {
  if (parts->active == nullptr) return;
  const Lifeline::Watch current(parts->choice);
  parts->active->SetVisible(true);
  if (!current) return;
  const int size = IsLargeDisc(type) ? parameters.largeDiscSize : parameters.miniDiscSize;
  parts->active->SetSize(size, size);
}

// Only the menu that is open, or was last, follows the pointer.
void HelmDisc::PlaceMenu(TrackMenu& follower, bool wasOpen) {
  HelmDiscParts& now = *parts;
  if (!now.opensAtPointer || now.active == nullptr || now.active == &follower) return;
  TrackMenu& menu = *now.active;
  const Lifeline::Watch current(now.choice);
  const Vector2 half(menu.GetViewportWidth() / 2.0, menu.GetViewportHeight() / 2.0);
  const Vector2 mouse = follower.GetMouseCoords();
  const bool isInside = Box2(half, half).IsPointInside(mouse);
  const PixelIcon2D* const replaced = wasOpen ? follower.GetRegionMap() : nullptr;
  Vector2 place = isInside ? mouse : half;
  if (replaced != nullptr) place = replaced->GetPosition();
  menu.SetLocation(Truncate(place.x), Truncate(place.y));
  if (current && isInside) menu.OnMouseMove(Truncate(mouse.x), Truncate(mouse.y));
}

// ---- a frame ----

void HelmDisc::Draw() {
  const Lifeline::Watch alive(parts->lifeline);
  DrawPivotBall();
  if (alive) DrawOverlay();
}

void HelmDisc::DrawPivotBall() {
  PivotBall* const ball = GetPivotBall();
  if (parts->visible && parts->active != nullptr && ball != nullptr) ball->Draw();
}

void HelmDisc::DrawOverlay() {
  HelmDiscParts& now = *parts;
  if (!now.visible) return;
  const Lifeline::Watch alive(now.lifeline);
  if (now.active != nullptr) {
    now.active->Draw();
  } else {
    DrawCloseNote();
  }
  if (alive && now.welcome.IsVisible()) now.welcome.menu->Draw();
}

void HelmDisc::DrawCloseNote() {
  HelmDiscParts& now = *parts;
  const CameraOperations* const hub = GetKorvane();
  if (!now.timers.closeHUD.IsRunning() || !parameters.showMessages || hub == nullptr) return;
  if (now.closeNote.Get() == nullptr) return;
  const TrackMenu& first = *now.menus[0];
  const Vector2 half(first.GetViewportWidth() / 2.0, first.GetViewportHeight() / 2.0);
  const RenderPass pass(GetRenderer(), Box2(half, half), hub->GetCameraParameters(),
                        Renderer::RENDER_OVERLAY);
  DynamicIcon2D* const note = now.closeNote.Get();
  if (!pass || note == nullptr) return;
  note->SetPosition(Vector2(half.x, note->GetHeight()));
  pass->Render(note);
}

// ---- questions ----

bool HelmDisc::GetEnabled() const { return parts->active != nullptr && parts->active->GetEnabled(); }

void HelmDisc::SetEnabled(bool enabled) {
  const Lifeline::Watch alive(parts->lifeline);
  for (int kind = 0; alive && kind < DISC_KIND_COUNT; ++kind) {
    TrackMenu& menu = *GetTrackMenu(static_cast<DiscType>(kind));
    if (!menu.IsLeftButtonDown()) menu.SetEnabled(enabled);
  }
}

void HelmDisc::SetVisible(bool value) {
  if (parts->visible == value) return;
  parts->visible = value;
  parts->RequestUpdate();
}

void HelmDisc::SetViewportSize(int width, int height) {
  const Lifeline::Watch alive(parts->lifeline);
  parts->ForEachMenu([=](TrackMenu& menu) { menu.SetViewportSize(width, height); });
  if (alive) parts->history->SetViewportSize(width, height);
  if (alive) parts->history->SetScale(PixelsPerPoint(GetKorvane()));
}

bool HelmDisc::IsDragActive() const { return parts->press.dragBegun; }

bool HelmDisc::WantCursorWrapping() const {
  return parts->active != nullptr && parts->active->GetActiveRegion().wrap;
}

CursorID HelmDisc::GetCurrentCursor() const {
  return parts->active != nullptr ? parts->active->GetMenuCursorID() : CURSOR_ARROW;
}

}  // namespace Korvane
