#include "zovhost/key_table.h"

#include <array>

namespace zovhost {

namespace {

constexpr std::array<KeyBinding, 18> BINDINGS = {{
    {SDLK_LSHIFT, Korvane::KEY_SHIFT},
    {SDLK_RSHIFT, Korvane::KEY_SHIFT},
    {SDLK_LCTRL, Korvane::KEY_CONTROL},
    {SDLK_RCTRL, Korvane::KEY_CONTROL},
    {SDLK_d, Korvane::KEY_DISC},
    {SDLK_UP, Korvane::KEY_UP},
    {SDLK_DOWN, Korvane::KEY_DOWN},
    {SDLK_RIGHT, Korvane::KEY_RIGHT},
    {SDLK_LEFT, Korvane::KEY_LEFT},
    {SDLK_DELETE, Korvane::KEY_DELETE},
    {SDLK_ESCAPE, Korvane::KEY_ESCAPE},
    {SDLK_MINUS, Korvane::KEY_SLOWER},
    {SDLK_KP_MINUS, Korvane::KEY_SLOWER},
    {SDLK_EQUALS, Korvane::KEY_FASTER},
    {SDLK_PLUS, Korvane::KEY_FASTER},
    {SDLK_KP_PLUS, Korvane::KEY_FASTER},
    {SDLK_x, Korvane::KEY_RUN},
    {SDLK_SPACE, Korvane::KEY_SPACE},
}};

}  // namespace

std::span<const KeyBinding> GetKeyBindings() { return BINDINGS; }

}  // namespace zovhost
