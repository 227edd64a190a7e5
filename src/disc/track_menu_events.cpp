// The mouse and the keys, and what the menu makes of them: where it stands, which region is active.
#include <cmath>

#include "camera/pixels.h"
#include "disc/region_map.h"
#include "disc/track_menu_parts.h"
#include "foundation/truncate.h"

namespace Korvane {

namespace {

// The time of rest, in seconds, in which a tooltip shows.
constexpr double TOOLTIP_FIRST = 2.0;
constexpr double TOOLTIP_LAST = 6.0;

bool IsTooltipTime(double seconds) { return seconds >= TOOLTIP_FIRST && seconds <= TOOLTIP_LAST; }

int OffsetTo(double place, int mouse) {
  return Truncate(static_cast<double>(Truncate(place)) - static_cast<double>(mouse));
}

}  // namespace

// ---- events ----

void TrackMenu::OnMouseMove(int x, int y) {
  if (parts->state.ignoreMouseMovement) return;
  parts->mouse.x = x;
  parts->mouse.y = y;
  if (parts->Tell(parts->active.listener, [=](RegionListener& each) { each.OnMouseMove(x, y); })) Update();
}

void TrackMenu::OnLeftMouseDown(int x, int y) {
  TrackMenuParts::Mouse& mouse = parts->mouse;
  const ResourceIcon2D* const icon = parts->active.icon;
  mouse.dragOffsetX = icon != nullptr ? OffsetTo(icon->GetPosition().x, mouse.x) : 0;
  mouse.dragOffsetY = icon != nullptr ? OffsetTo(icon->GetPosition().y, mouse.y) : 0;
  mouse.x = x;
  mouse.y = y;
  mouse.leftButtonDown = true;
  if (!parts->state.active) parts->state.pressedPutAway = true;
  parts->Tell(parts->active.listener, [=](RegionListener& each) { each.OnLeftMouseDown(x, y); });
}

void TrackMenu::OnLeftMouseUp(int x, int y) {
  TrackMenuParts::Mouse& mouse = parts->mouse;
  mouse.x = x;
  mouse.y = y;
  mouse.leftButtonDown = false;
  parts->Tell(parts->active.listener, [=](RegionListener& each) { each.OnLeftMouseUp(x, y); });
}

void TrackMenu::OnKeyDown(KeyID key) {
  if (key == KEY_SHIFT) parts->mouse.modifierADown = true;
  if (key == KEY_CONTROL) parts->mouse.modifierBDown = true;
  const auto tell = [key](RegionListener& each) { each.OnKeyDown(key); };
  if (parts->Tell(parts->active.listener, tell)) UpdateActiveRegion();
}

void TrackMenu::OnKeyUp(KeyID key) {
  if (key == KEY_SHIFT) parts->mouse.modifierADown = false;
  if (key == KEY_CONTROL) parts->mouse.modifierBDown = false;
  const auto tell = [key](RegionListener& each) { each.OnKeyUp(key); };
  if (parts->Tell(parts->active.listener, tell)) UpdateActiveRegion();
}

bool TrackMenu::OpenMenu() {
  Renderer* const renderer = GetRenderer();
  if (renderer == nullptr || !parts->state.enabled) return false;
  const Lifeline::Watch alive(parts->lifeline);
  parts->state.openingMenu = true;
  renderer->OpenMenu(parts->look.menu);
  if (alive) parts->state.openingMenu = false;
  return true;
}

// ---- a frame ----

void TrackMenu::Draw() {
  if (!parts->rest.IsStarted()) parts->rest.Start();
  if (GetKorvane() == nullptr || GetRenderer() == nullptr) return;
  const Lifeline::Watch alive(parts->lifeline);
  Update();
  if (alive) DrawTrackMenu();
}

void TrackMenu::Update() {
  const Lifeline::Watch alive(parts->lifeline);
  const bool moved = UpdatePosition();
  const bool chosen = UpdateActiveRegion();
  if (!alive) return;
  const bool told = UpdateTimer();
  if (moved || chosen || told) RequestUpdateIfVisible();
}

// ---- where the menu stands ----

bool TrackMenu::UpdatePosition() {
  PixelIcon2D* const map = parts->maps.present;
  if (map == nullptr || parts->state.ignoreMouseMovement || !parts->HasViewport()) return false;
  const Vector2 before = map->GetPosition();
  if (!parts->state.locked && parts->state.visible) {
    const Vector2 mouse = parts->mouse.GetPosition();
    const Vector2 closest = FindClosestPoint(*map, mouse);
    map->Move(mouse - closest);
    if (closest != mouse) parts->rest.Reset();
  } else if (!parts->state.locked) {
    map->SetPosition(parts->GetDragPosition());
    parts->rest.Reset();
  }
  parts->PlaceIcons();
  return map->GetPosition() != before;
}

// So the menu shows again where the wrapped cursor is.
Vector2 TrackMenuParts::GetDragPosition() const {
  return Vector2(static_cast<double>(WrapAround(mouse.x, viewportWidth)) + mouse.dragOffsetX,
                 static_cast<double>(WrapAround(mouse.y, viewportHeight)) + mouse.dragOffsetY);
}

// ---- which region is active ----

bool TrackMenu::UpdateActiveRegion() {
  TrackMenuParts& now = *parts;
  if (now.maps.present == nullptr || now.state.ignoreMouseMovement || now.state.suspendUpdateActiveRegion)
    return false;
  const Region before = now.active;
  Vector3 colour;
  if (!now.FindColour(colour)) {
    if (now.single.IsUsed()) now.active = now.disabled.region;
    return false;
  }
  if (!now.state.enabled) {
    now.active = now.disabled.region;
    return now.active.icon != before.icon;
  }
  now.Choose(colour);
  const Lifeline::Watch alive(now.lifeline);
  if (now.active.listener != before.listener) TellOfChoice(before);
  return alive && now.active.icon != before.icon;
}

// Beside the map, the active region keeps a press. A sticky one keeps the cursor also a little beyond its
// edge, so that thin wedges and soft seams do not flicker.
bool TrackMenuParts::FindColour(Vector3& colour) const {
  const PixelIcon2D& map = *maps.present;
  if (!map.GetColor(mouse.GetPosition(), colour)) {
    if (!mouse.leftButtonDown) return false;
    colour = active.color;
  }
  const bool sticky = !regions.empty() && regions.front()->region.sticky;
  if (sticky && IsColourAround(map, mouse.GetPosition(), active.color)) colour = active.color;
  return true;
}

void TrackMenuParts::Choose(const Vector3& colour) {
  for (const auto& each : regions) {
    if (each->region.enabled && IsSameRegionColour(each->region.color, colour)) active = each->region;
  }
  if (IsSameRegionColour(disabled.region.color, colour)) active = disabled.region;
}

// A press that slides is handed from listener to listener; each of them may change the choice, which is then
// told already, or put the menu away, which ends the press.
void TrackMenu::TellOfChoice(const Region& before) {
  const Lifeline::Watch alive(parts->lifeline);
  const Lifeline::Watch held(parts->activation);
  RegionListener* const next = parts->active.listener;
  const auto tell = [&](RegionListener* listener, void (RegionListener::*event)(int, int)) {
    if (!held || parts->active.listener != next) return;
    const TrackMenuParts::Mouse& mouse = parts->mouse;
    parts->Tell(listener, [&](RegionListener& each) { (each.*event)(mouse.x, mouse.y); });
  };
  RegionListener* const last = before.listener;
  bool isHandedOn = last != nullptr && last->IsMouseDown() && !parts->state.beingPutAway;
  parts->Tell(isHandedOn ? last : nullptr,
              [&](RegionListener& each) { isHandedOn = !each.IsWelcomeListener(); });
  if (isHandedOn) {
    tell(last, &RegionListener::OnLeftMouseUp);
    tell(next, &RegionListener::OnLeftMouseDown);
    tell(next, &RegionListener::OnMouseMove);
  }
  if (!alive) return;
  Timer& rest = parts->rest;
  rest.End();
  const bool wasTooltipTime = IsTooltipTime(rest.GetTotalTime());
  rest.Reset();
  if (parts->active.tooltip != nullptr && wasTooltipTime) rest.SetTotalTime(TOOLTIP_FIRST);
}

// ---- the tooltip ----

bool TrackMenu::UpdateTimer() {
  DynamicIcon2D* const tooltip = parts->active.tooltip;
  if (tooltip == nullptr || GetRenderer() == nullptr) return false;
  parts->rest.Lap();
  const bool shows = IsTooltipTime(parts->rest.GetTotalTime());
  const bool changed = shows != tooltip->IsVisible();
  tooltip->SetVisible(shows);
  return changed;
}

}  // namespace Korvane
