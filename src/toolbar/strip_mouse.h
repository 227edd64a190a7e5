#pragma once

#include <string>

#include "korvane/toolbar_item.h"
#include "korvane/vector2.h"

namespace Korvane {

/// The mouse as a strip knows it. Viewport pixels.
struct StripMouse {
  /// What an item makes of it.
  struct Effect {
    ToolbarItem::State state;
    bool over;  // it may be the item under the mouse
  };
  /// Of an item that is neither hidden nor left out. `visible`: the strip is.
  Effect GetEffectOn(const ToolbarItem& item, bool visible) const;

  Vector2 GetPoint() const { return {static_cast<double>(x), static_cast<double>(y)}; }
  Vector2 GetPress() const { return {static_cast<double>(pressX), static_cast<double>(pressY)}; }
  void MoveTo(int mouseX, int mouseY);
  void PressAt(int mouseX, int mouseY);
  /// On the strip, near it, on an item.
  void ForgetPlace();
  void ForgetOver();
  void ForgetDown();
  /// What an item enters or leaves with a new state.
  void TakeState(int index, ToolbarItem::State before, ToolbarItem::State now);

  int x = 0;
  int y = 0;
  int pressX = 0;
  int pressY = 0;
  bool inBounds = false;
  bool inRegion = false;
  bool pressed = false;
  bool downOnItem = false;
  int downIndex = -1;
  bool overItem = false;
  int overIndex = -1;
  std::wstring tooltip;  // of the item under the mouse
};

bool IsPressedState(ToolbarItem::State state);

}  // namespace Korvane
