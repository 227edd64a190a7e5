// The mouse, the drag and the dock; what observers are told.
#include "toolbar/toolbar_parts.h"

namespace Korvane {

// ---- the mouse ----

bool Toolbar::OnMouseMove(int x, int y) {
  const Staying now(parts);
  now->mouse.MoveTo(x, y);
  if (now->life.disabled) return false;
  if (now->drag.active) {
    Drag();
    return true;
  }
  const int before = now->mouse.overIndex;
  now->Update();
  if (now && now->mouse.overIndex != before) TellOfPointer(before);
  return now->mouse.downOnItem;
}

void Toolbar::TellOfPointer(int before) {
  const Staying now(parts);
  if (now->mouse.overIndex == before) return;
  const std::shared_ptr<ToolbarItem> left = now->items.Share(before);
  const std::shared_ptr<ToolbarItem> entered = now->items.Share(now->mouse.overIndex);
  if (left != nullptr) OnItemMouseExit(*left);
  if (now && entered != nullptr) OnItemMouseEnter(*entered);
}

bool Toolbar::OnLeftMouseDown(int x, int y) {
  const Staying now(parts);
  if (now->life.disabled) return false;
  now->drag.active = false;
  now->mouse.PressAt(x, y);
  now->Update();
  if (!now || !now->mouse.downOnItem) return now->mouse.inBounds;
  PressDownItem();
  return true;
}

void Toolbar::PressDownItem() {
  const Staying now(parts);
  const std::shared_ptr<ToolbarItem> item = now->items.Share(now->mouse.downIndex);
  if (item == nullptr) return;
  if (item->GetType() == ToolbarItem::TYPE_GRIP) return BeginDrag();
  if (item->GetState() == ToolbarItem::STATE_PRESSED_FLYOUT) return OnItemFlyoutOpened(*item);
  if (item->GetState() == ToolbarItem::STATE_PRESSED) OnItemMouseDown(*item);
}

bool Toolbar::OnLeftMouseUp(int x, int y) {
  const Staying now(parts);
  const bool wasDown = now->mouse.downOnItem;
  now->mouse.MoveTo(x, y);
  now->mouse.pressed = false;
  if (now->life.disabled) return wasDown;
  const std::shared_ptr<ToolbarItem> clicked = now->drag.active ? nullptr : now->FindClicked();
  if (now->drag.active) Dock();
  if (now) now->Update();
  if (!now) return wasDown;
  now->mouse.ForgetDown();
  if (clicked != nullptr) OnItemClicked(*clicked);
  return wasDown;
}

bool Toolbar::OnRightMouseDown(int x, int y) {
  const Staying now(parts);
  if (now->life.disabled) return false;
  now->mouse.MoveTo(x, y);
  now->Update();
  const std::shared_ptr<ToolbarItem> item = now->items.Share(now->mouse.overIndex);
  if (!now || now->mouse.pressed || !now->mouse.overItem || item == nullptr) return false;
  OnItemContextMenu(*item);
  return true;
}

bool Toolbar::OnRightMouseUp(int /*x*/, int /*y*/) { return false; }

// ---- the drag ----

void Toolbar::BeginDrag() {
  const Staying now(parts);
  ConvertToEdgePosition();
  if (!now || !now->mouse.pressed || !now->life.created || now->life.disabled) return;
  now->drag.former = now->place;
  now->place = now->GetShownPlace();
  now->drag.active = true;
  now->drag.startOffset = now->place.edgeOffset;
  now->motion.wantPosition = false;
  now->SetCursor(CURSOR_PAN);
}

void Toolbar::Drag() {
  const Staying now(parts);
  now->place.edgeOffset = now->drag.startOffset + now->mouse.GetPoint() - now->mouse.GetPress();
  now->Constrain();
  Refresh();
  if (now) now->RequestUpdate();
}

// At its new edge the strip has its place before anybody hears of it, and then travels there.
void Toolbar::Dock() {
  const Staying now(parts);
  const Box2 from = now->motion.bounds;
  now->place = GetDock(now->room, now->place, from);
  now->motion.wantPosition = false;
  RecalculateLayout();
  if (!now || !now->drag.active) return;  // who was told has put an end to it
  now->Constrain();
  now->drag.active = false;
  OnToolbarDragged();
  if (!now || !now->life.created || now->drag.active) return;
  now->motion.JumpToCenter(from.center);
  now->motion.wantPosition = true;
  RecalculateLayout();
  if (now) now->SetCursor(CURSOR_ARROW);
  if (now) now->RequestUpdate();
}

// ---- what is asked about the mouse ----

bool Toolbar::IsMouseInBounds() const { return parts->mouse.inBounds; }
bool Toolbar::IsMouseInRegion() const { return parts->mouse.inRegion; }
bool Toolbar::IsMouseDownOnItem() const { return parts->mouse.downOnItem; }

bool Toolbar::IsPointInBounds(int x, int y) const {
  return parts->motion.bounds.IsPointInside({static_cast<double>(x), static_cast<double>(y)});
}

int Toolbar::GetCurrentTooltipItemTag() const {
  const StripMouse& mouse = parts->mouse;
  const std::shared_ptr<ToolbarItem> item = parts->items.Share(mouse.overIndex);
  return mouse.pressed || !mouse.overItem || item == nullptr ? 0 : item->GetTag();
}

const std::wstring& Toolbar::GetTooltip() const { return parts->mouse.tooltip; }

// ---- what observers are told ----

void Toolbar::OnItemClicked(const ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemClicked(item); });
}
void Toolbar::OnItemMouseDown(const ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemMouseDown(item); });
}
void Toolbar::OnItemMouseEnter(const ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemMouseEnter(item); });
}
void Toolbar::OnItemMouseExit(const ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemMouseExit(item); });
}
void Toolbar::OnItemFlyoutOpened(ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemFlyoutOpened(item); });
}
void Toolbar::OnItemContextMenu(const ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemContextMenu(item); });
}
void Toolbar::OnItemVisibilityChanged(const ToolbarItem& item) {
  Staying(parts).TellObservers([&](ToolbarObserver& each) { each.OnItemVisibilityChanged(item); });
}
void Toolbar::OnPositionChanged() {
  Staying(parts).TellObservers([](ToolbarObserver& each) { each.OnPositionChanged(); });
}
void Toolbar::OnToolbarDragged() {
  Staying(parts).TellObservers([](ToolbarObserver& each) { each.OnToolbarDragged(); });
}

}  // namespace Korvane
