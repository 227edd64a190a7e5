// Life, collaborators, regions and looks. The other sources of the class: _events and _drawing.
#include "korvane/track_menu.h"

#include <algorithm>
#include <utility>

#include "disc/region_belongings.h"
#include "disc/region_map.h"
#include "disc/track_menu_parts.h"
#include "foundation/out_of_memory.h"

namespace Korvane {

namespace {

using Region = TrackMenu::Region;

constexpr double LABEL_RESOLUTION = 2.0;  // the texts of regions are made at twice the size of the menu

void SetSizeOf(Icon2D* icon, double width, double height) {
  if (icon != nullptr) icon->SetSize(width, height);
}

void SetOpacityOf(Icon2D* icon, double opacity) {
  if (icon != nullptr) icon->SetOpacity(opacity);
}

// No release comes to a menu that has been put away. Only the note of the press goes; nothing is told.
void ForgetPress(RegionListener& listener, const TrackMenuParts::Mouse& mouse) {
  listener.RegionListener::OnLeftMouseUp(mouse.x, mouse.y);
}

}  // namespace

// ---- a region ----

void Region::Destroy() {
  delete std::exchange(listener, nullptr);
  delete std::exchange(icon, nullptr);
  delete std::exchange(overlayIcon, nullptr);
  label = tooltip = tooltipHUD = nullptr;
}

// ---- life ----

TrackMenu::TrackMenu() : parts(std::make_unique<TrackMenuParts>()) {}

TrackMenu::~TrackMenu() {
  parts->lifeline.Cut();
  DropRegions();
}

bool TrackMenu::Create() { return true; }

bool TrackMenu::Destroy() {
  const Lifeline::Watch alive(parts->lifeline);
  SetVisible(false);
  if (alive) SetActive(false);
  if (alive) DropRegions();
  return true;
}

// What their destructors call finds the menu without regions.
void TrackMenu::DropRegions() {
  parts->activation.Cut();
  parts->state.beingPutAway = false;
  parts->single.Hold(nullptr);
  RegionBelongings belongings = std::exchange(parts->room, {});
  std::vector<std::unique_ptr<TrackMenuParts::HeldRegion>> leaving = std::exchange(parts->regions, {});
  for (const auto& each : leaving) belongings.Collect(each->region);
  TrackMenuParts::HeldRegion& disabled = parts->disabled;
  belongings.Collect(disabled.region);
  disabled.loans.GiveBack(disabled.region);
  disabled.region.listener = nullptr;
  disabled.region.icon = disabled.region.overlayIcon = nullptr;
  parts->active = Region();
  leaving.clear();
  belongings.Delete(parts->calls);
}

// ---- collaborators ----

void TrackMenu::SetKorvane(CameraOperations* hub) { parts->partners.hub.Set(hub); }
CameraOperations* TrackMenu::GetKorvane() const { return parts->partners.hub.Get(); }

void TrackMenu::SetRenderer(Renderer* value) {
  TrackMenuParts::Partners& partners = parts->partners;
  if (value != nullptr && value == partners.renderer.Get()) return;
  parts->rendererChange.Cut();
  const Lifeline::Watch current(parts->rendererChange);
  const Borrowed<Renderer> next(value);
  if (parts->state.active) Hold(false);
  if (!current) return;  // another one has been set meanwhile
  Renderer* const former = partners.renderer.Get();
  partners.renderer.Set(next.Get());
  if (!partners.rendererIsShared && former != next.Get()) delete former;
  if (current && parts->state.active) Hold(true);
}

Renderer* TrackMenu::GetRenderer() const { return parts->partners.renderer.Get(); }
void TrackMenu::SetRendererShared(bool shared) { parts->partners.rendererIsShared = shared; }

void TrackMenu::RequestUpdateIfVisible() {
  CameraOperations* const hub = GetKorvane();
  if (parts->state.visible && hub != nullptr) hub->RequestApplicationUpdate();
}

// ---- regions ----

bool TrackMenu::AddRegion(Region region) {
  if (parts->maps.present == nullptr || !OrFail([&] { return parts->Hold(region); })) return false;
  parts->SizeToImage(region);
  if (region.icon != nullptr) parts->active = region;
  RequestUpdateIfVisible();
  return true;
}

bool TrackMenu::SetDisabledRegion(Region region) {
  if (parts->maps.present == nullptr || !OrFail([&] { return parts->ReplaceDisabled(region); })) return false;
  RequestUpdateIfVisible();
  return true;
}

// One more than there are, for the disabled one.
bool TrackMenuParts::Hold(const Region& region) {
  room.Reserve(regions.size() + 2);
  regions.push_back(std::make_unique<HeldRegion>());
  regions.back()->region = region;
  return true;
}

// What the former one owned goes with it, and may take the map away as it goes.
bool TrackMenuParts::ReplaceDisabled(Region& region) {
  RegionBelongings belongings;
  belongings.Reserve(1);
  room.Reserve(regions.size() + 1);
  SizeToImage(region);
  belongings.Collect(disabled.region);
  disabled.loans.GiveBack(disabled.region);
  disabled.region = region;
  belongings.Leave(region);
  for (const auto& each : regions) belongings.Leave(each->region);
  if (belongings.IsSharedBy(active)) active = Region();
  belongings.Delete(calls);
  return true;
}

Region* TrackMenu::GetRegion(int index) {
  const bool isThere = index >= 0 && static_cast<std::size_t>(index) < parts->regions.size();
  return isThere ? &parts->regions[static_cast<std::size_t>(index)]->region : nullptr;
}

void TrackMenu::SetActiveRegion(Region region) { parts->active = region; }
Region& TrackMenu::GetActiveRegion() { return parts->active; }

// ---- region maps ----

bool TrackMenu::SetRegionMap(TextureID id) {
  if (!LoadMap(parts->maps.primary, id)) return false;
  parts->maps.present = parts->maps.primary.get();
  RequestUpdateIfVisible();
  return true;
}

bool TrackMenu::SetAlternateRegionMap(TextureID id) {
  if (!LoadMap(parts->maps.alternate, id)) return false;
  RequestUpdateIfVisible();
  return true;
}

// A map that is replaced while it is in use stays in use, as far as there is a new one.
bool TrackMenu::LoadMap(std::unique_ptr<PixelIcon2D>& slot, TextureID id) {
  Renderer* const renderer = GetRenderer();
  if (renderer == nullptr) return false;
  TrackMenuParts::Maps& maps = parts->maps;
  const bool inUse = maps.present != nullptr && maps.present == slot.get();
  if (inUse) maps.present = nullptr;
  slot.reset();
  const Lifeline::Watch alive(parts->lifeline);
  std::unique_ptr<PixelIcon2D> image(renderer->CreateImageData(id));
  if (!alive || image == nullptr) return false;
  if (maps.present == slot.get()) maps.present = nullptr;
  slot = std::move(image);
  if (inUse) maps.present = slot.get();
  TrackMenuParts::Look& look = parts->look;
  if (!look.sizeIsFixed) {
    look.width = slot->GetImageWidth();
    look.height = slot->GetImageHeight();
  }
  slot->SetSize(look.width, look.height);
  return true;
}

void TrackMenu::UseAlternateRegionMap(bool alternate) {
  TrackMenuParts::Maps& maps = parts->maps;
  maps.present = (alternate ? maps.alternate : maps.primary).get();
}

PixelIcon2D* TrackMenu::GetRegionMap() { return parts->maps.present; }

void TrackMenu::GetClosestPoint(const PixelIcon2D* map, double x, double y, double& closestX,
                                double& closestY) {
  if (map == nullptr) return;
  const Vector2 closest = FindClosestPoint(*map, Vector2(x, y));
  closestX = closest.x;
  closestY = closest.y;
}

// ---- resources ----

void TrackMenu::SetActive(bool active) {
  TrackMenuParts::State& state = parts->state;
  const bool next = active || state.visible;
  const bool endsPress = !next && std::exchange(state.pressedPutAway, false);
  if (next == state.active && !endsPress) return;
  state.active = next;
  Hold(next);
}

// A listener and the host, who makes the texts, may change the state meanwhile: then all of it has been done
// anew.
void TrackMenu::Hold(bool state) {
  parts->activation.Cut();
  const Lifeline::Watch current(parts->activation);
  parts->state.beingPutAway = !state;
  const auto hold = [&](TrackMenuParts::HeldRegion& each) {
    parts->Tell(each.region.listener,
                [state](RegionListener& listener) { listener.OnTrackMenuActivate(state); });
    if (!current) return;
    if (!state && each.region.listener != nullptr) ForgetPress(*each.region.listener, parts->mouse);
    if (state) {
      each.loans.Take(GetRenderer(), each.region);
    } else {
      each.loans.GiveBack(each.region);
    }
  };
  for (std::size_t i = 0; current && i < parts->regions.size(); ++i) hold(*parts->regions[i]);
  if (current) hold(parts->disabled);
  if (!current) return;
  parts->state.beingPutAway = false;
  parts->single.Hold(state ? GetRenderer() : nullptr);
  if (!state) parts->ForgetPictures();
}

// They no longer hold resources.
void TrackMenuParts::ForgetPictures() {
  active.icon = active.overlayIcon = nullptr;
  active.label = active.tooltip = active.tooltipHUD = nullptr;
}

// ---- looks ----

template <class Place>
void TrackMenuParts::ForEachIcon(const Place& place) {
  const auto placeAll = [&](const HeldRegion& each) {
    place(each.region.icon, each);
    place(each.region.overlayIcon, each);
    if (partners.renderer.Get() != nullptr) place(each.region.label, each);
  };
  for (const auto& each : regions) placeAll(*each);
  placeAll(disabled);
}

void TrackMenuParts::PlaceIcons() {
  if (maps.present == nullptr) return;
  const Vector2 position = maps.present->GetPosition();
  ForEachIcon([&](Icon2D* icon, const HeldRegion& /*each*/) {
    if (icon != nullptr) icon->SetPosition(position);
  });
}

void TrackMenuParts::SizeToImage(Region& region) {
  const double width = maps.present->GetImageWidth();
  const double height = maps.present->GetImageHeight();
  for (Icon2D* const icon : {static_cast<Icon2D*>(region.icon), static_cast<Icon2D*>(region.overlayIcon),
                             static_cast<Icon2D*>(region.label)})
    SetSizeOf(icon, width, height);
}

void TrackMenu::SetSize(int width, int height) {
  TrackMenuParts::Look& look = parts->look;
  look.width = std::max(width, 0);
  look.height = std::max(height, 0);
  look.sizeIsFixed = true;
  SetSizeOf(parts->maps.present, look.width, look.height);
  parts->ForEachIcon([&](Icon2D* icon, const TrackMenuParts::HeldRegion& each) {
    const bool isFine = icon == each.region.label && &each != &parts->disabled;
    const double scale = isFine ? LABEL_RESOLUTION : 1.0;
    SetSizeOf(icon, look.width * scale, look.height * scale);
  });
  RequestUpdateIfVisible();
}

void TrackMenu::SetLocation(int x, int y) {
  const TrackMenuParts::Maps& maps = parts->maps;
  for (PixelIcon2D* const map : {maps.primary.get(), maps.alternate.get()}) {
    if (map != nullptr) map->SetPosition(Vector2(x, y));
  }
  parts->PlaceIcons();
  RequestUpdateIfVisible();
}

// Values above 1 are legal; what lies over the pictures is not multiplied up with them.
void TrackMenu::SetOpacity(float value) {
  parts->look.opacity = value;
  const double full = value;
  parts->ForEachIcon([&](Icon2D* icon, const TrackMenuParts::HeldRegion& each) {
    const bool isDisabled = &each == &parts->disabled;
    const double over = isDisabled ? std::min(full * 0.5, 0.7) : std::min(full, 1.0);
    SetOpacityOf(icon, icon == each.region.icon ? full : over);
  });
  RequestUpdateIfVisible();
}

void TrackMenu::SetViewportSize(int width, int height) {
  parts->viewportWidth = std::max(width, 0);
  parts->viewportHeight = std::max(height, 0);
  RequestUpdateIfVisible();
}

void TrackMenu::SetMenu(MenuID id) { parts->look.menu = id; }
void TrackMenu::SetMenuCursorID(CursorID id) { parts->look.menuCursorID = id; }
void TrackMenu::SetSizeIsFixed(bool fixed) { parts->look.sizeIsFixed = fixed; }
void TrackMenu::SetUseSingleIconForDraw(bool use) { parts->single.Use(use); }

void TrackMenu::SetSingleIconForDraw(ResourceIcon2D* icon) {
  parts->single.Set(icon);
  if (CameraOperations* const hub = GetKorvane()) hub->RequestApplicationUpdate();
}

void TrackMenu::ExchangeSingleIconForDraw(ResourceIcon2D* icon) { parts->single.Exchange(icon); }

void TrackMenu::SetShowParams(const bool* showTooltip, const bool* showSecond, const bool* showTooltipHUD) {
  parts->switches = {showTooltip, showSecond, showTooltipHUD};
}

// ---- state ----

void TrackMenu::SetVisible(bool visible) {
  TrackMenuParts::State& state = parts->state;
  if (visible && parts->mouse.leftButtonDown) return;
  if (visible == state.visible) return;
  state.visible = visible;
  const Lifeline::Watch alive(parts->lifeline);
  if (visible && !state.active) SetActive(true);
  if (!alive) return;
  if (CameraOperations* const hub = GetKorvane()) hub->RequestApplicationUpdate();
  if (!alive || !visible || !state.visible || !state.enabled) return;
  if (Renderer* const renderer = GetRenderer()) renderer->SetCursorID(parts->look.menuCursorID);
}

void TrackMenu::SetEnabled(bool enabled) {
  if (enabled == parts->state.enabled) return;
  parts->state.enabled = enabled;
  if (UpdateActiveRegion()) RequestUpdateIfVisible();
}

bool TrackMenu::GetEnabled() const { return parts->state.enabled; }
bool TrackMenu::GetVisible() const { return parts->state.visible; }
bool TrackMenu::GetActive() const { return parts->state.active; }
bool TrackMenu::GetLocked() const { return parts->state.locked; }
void TrackMenu::SetLocked(bool locked) { parts->state.locked = locked; }
void TrackMenu::SetIgnoreMouseMovement(bool ignore) { parts->state.ignoreMouseMovement = ignore; }
void TrackMenu::SetSuspendUpdateActiveRegion(bool suspend) {
  parts->state.suspendUpdateActiveRegion = suspend;
}
CursorID TrackMenu::GetMenuCursorID() const { return parts->look.menuCursorID; }
Vector2 TrackMenu::GetMouseCoords() const { return parts->mouse.GetPosition(); }
void TrackMenu::CancelPress() { parts->mouse.leftButtonDown = false; }
bool TrackMenu::IsLeftButtonDown() const { return parts->mouse.leftButtonDown; }
bool TrackMenu::IsModifierADown() const { return parts->mouse.modifierADown; }
bool TrackMenu::IsModifierBDown() const { return parts->mouse.modifierBDown; }
int TrackMenu::GetViewportWidth() const { return parts->viewportWidth; }
int TrackMenu::GetViewportHeight() const { return parts->viewportHeight; }
int TrackMenu::GetWidth() const { return parts->look.width; }
int TrackMenu::GetHeight() const { return parts->look.height; }
float TrackMenu::GetOpacity() const { return parts->look.opacity; }
Lifeline& TrackMenu::GetLifeline() { return parts->lifeline; }

}  // namespace Korvane
