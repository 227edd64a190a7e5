#pragma once

#include <SDL_keycode.h>

#include <span>
#include <string_view>

#include "korvane/resource_ids.h"
#include "zovhost/window.h"

namespace zovhost {

/// What a drag does to the camera.
enum class NavigationMove : int { Orbit, Pan, Zoom, Look, Roll };

/// A drag by a button with keys held.
struct NavigationDrag {
  MouseButton button;
  unsigned modifiers;  ///< A sum of WindowEvent::Modifier.
  NavigationMove move;
};

/// A key that moves the camera while a look is dragged, and the arrow key of the library that it stands for.
struct MoveKey {
  SDL_Keycode key;
  Korvane::KeyID id;
};

/// What buttons and keys do in the hand of somebody who is used to it. The left button without a modifier is
/// no part of that: it is the active tool's.
struct NavigationStyle {
  enum class ZoomTarget : int { Pointer, Middle };

  std::string_view name;  ///< For files and commands: stays when the label changes.
  const char* label;      ///< For a person to read.
  std::span<const NavigationDrag> drags;
  ZoomTarget zoomTarget = ZoomTarget::Pointer;  ///< Of the wheel.
  bool wheelReversed = false;                   ///< A turn away from the user zooms out.
  std::span<const MoveKey> moveKeys = {};       ///< Besides the arrow keys.

  /// Of the rows whose modifiers are all held, the one that asks for most; null for none.
  const NavigationDrag* FindDrag(MouseButton button, unsigned modifiers) const;
  const MoveKey* FindMoveKey(SDL_Keycode key) const;  ///< Null for none.
};

/// At least one; the first is the library's own.
std::span<const NavigationStyle> GetNavigationStyles();
/// The first for a name that none has.
const NavigationStyle& FindNavigationStyle(std::string_view name);

}  // namespace zovhost
