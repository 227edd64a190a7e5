#pragma once

#include <SDL_keycode.h>

#include <span>

#include "korvane/resource_ids.h"

namespace zovhost {

/// A key of the window system and what it is to the library.
struct KeyBinding {
  SDL_Keycode key;
  Korvane::KeyID id;
};

std::span<const KeyBinding> GetKeyBindings();

}  // namespace zovhost
