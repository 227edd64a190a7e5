#pragma once

#include <cstddef>
#include <functional>
#include <utility>

#include "korvane/box2.h"
#include "zovhost/keyboard_focus.h"
#include "zovhost/pointer_wrap.h"

namespace zovhost {

/// The group of the cube's buttons, after its parts.
inline constexpr std::size_t CUBE_BUTTONS_GROUP = 1;

inline Korvane::Box2 MakeBox(PixelPosition at, double half) {
  return Korvane::Box2(Korvane::Vector2(at.x + 0.5, at.y + 0.5), Korvane::Vector2(half, half));
}

inline PixelPosition GetMiddle(const Korvane::Box2& box) {
  return {static_cast<int>(box.center.x), static_cast<int>(box.center.y)};
}

/// What the key of menus does on a thing.
inline std::function<bool(const WindowEvent&)> OnMenuKey(std::function<void()> open) {
  return [open = std::move(open)](const WindowEvent& event) {
    if (!IsMenuKey(event)) return false;
    open();
    return true;
  };
}

}  // namespace zovhost
