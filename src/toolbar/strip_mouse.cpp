#include "toolbar/strip_mouse.h"

namespace Korvane {

namespace {

using Item = ToolbarItem;

StripMouse::Effect GetEffectOfPress(const Item& item, const Vector2& point, const Vector2& press,
                                    bool hasArrow) {
  if (!item.GetBounds().IsPointInside(press)) return {Item::STATE_DISABLED, false};
  if (!item.GetBounds().IsPointInside(point)) return {Item::STATE_MOUSE_OVER, true};
  const bool onArrow = hasArrow && item.GetFlyoutIconBounds().IsPointInside(press);
  return {onArrow ? Item::STATE_PRESSED_FLYOUT : Item::STATE_PRESSED, true};
}

// An arrow that was pressed stays lit while the mouse is on its item.
StripMouse::Effect GetEffectOfMove(const Item& item, const Vector2& point, bool hasArrow) {
  if (!item.GetBounds().IsPointInside(point)) return {Item::STATE_DISABLED, false};
  const bool lit = hasArrow && (item.GetFlyoutIconBounds().IsPointInside(point) ||
                                item.GetState() == Item::STATE_PRESSED_FLYOUT);
  return {lit ? Item::STATE_MOUSE_OVER_FLYOUT : Item::STATE_MOUSE_OVER, true};
}

}  // namespace

bool IsPressedState(Item::State state) {
  return state == Item::STATE_PRESSED || state == Item::STATE_PRESSED_FLYOUT;
}

StripMouse::Effect StripMouse::GetEffectOn(const Item& item, bool visible) const {
  if (!item.IsEnabled() || item.GetType() == Item::TYPE_SEPARATOR) return {Item::STATE_DISABLED, false};
  const Item::State base = item.IsSelected() ? Item::STATE_SELECTED : Item::STATE_NORMAL;
  if (!visible) return {base, false};
  const bool hasArrow = item.GetType() == Item::TYPE_FLYOUT_BUTTON;
  const Effect effect = pressed ? GetEffectOfPress(item, GetPoint(), GetPress(), hasArrow)
                                : GetEffectOfMove(item, GetPoint(), hasArrow);
  return effect.over ? effect : Effect{base, false};
}

void StripMouse::MoveTo(int mouseX, int mouseY) {
  x = mouseX;
  y = mouseY;
}

void StripMouse::PressAt(int mouseX, int mouseY) {
  MoveTo(mouseX, mouseY);
  pressX = mouseX;
  pressY = mouseY;
  pressed = true;
  ForgetDown();
}

void StripMouse::ForgetPlace() {
  inBounds = inRegion = false;
  ForgetOver();
  tooltip.clear();
}

void StripMouse::ForgetOver() {
  overItem = false;
  overIndex = -1;
}

void StripMouse::ForgetDown() {
  downOnItem = false;
  downIndex = -1;
}

void StripMouse::TakeState(int index, Item::State before, Item::State now) {
  if (IsPressedState(now)) {
    if (!downOnItem) downIndex = index;
    downOnItem = true;
  } else if (IsPressedState(before) && !pressed) {
    ForgetDown();
  }
}

}  // namespace Korvane
