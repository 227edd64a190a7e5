#include "zovhost/navigation_style.h"

#include <algorithm>
#include <array>
#include <bit>

namespace zovhost {

namespace {

using enum MouseButton;
using enum NavigationMove;
using ZoomTarget = NavigationStyle::ZoomTarget;

constexpr unsigned ALT = WindowEvent::ALT;
constexpr unsigned CONTROL = WindowEvent::CONTROL;
constexpr unsigned SHIFT = WindowEvent::SHIFT;

constexpr NavigationDrag OWN[] = {{Middle, 0, Pan}, {Middle, SHIFT, Orbit}};
constexpr NavigationDrag MIDDLE_ORBITS[] = {
    {Middle, 0, Orbit}, {Middle, SHIFT, Pan}, {Middle, CONTROL, Zoom}, {Middle, ALT, Look}};
constexpr NavigationDrag MIDDLE_TURNS[] = {
    {Middle, 0, Orbit}, {Middle, CONTROL, Pan}, {Middle, SHIFT, Zoom}, {Middle, ALT, Roll}};
constexpr NavigationDrag CONTROL_ORBITS[] = {
    {Middle, 0, Pan}, {Middle, CONTROL, Orbit}, {Middle, SHIFT, Zoom}};
constexpr NavigationDrag RIGHT_ORBITS[] = {
    {Right, 0, Orbit}, {Right, SHIFT, Pan}, {Right, CONTROL, Zoom}, {Middle, 0, Pan}};
constexpr NavigationDrag ALT_DRAGS[] = {{Left, ALT, Orbit}, {Middle, ALT, Pan}, {Right, ALT, Zoom}};
constexpr NavigationDrag RIGHT_LOOKS[] = {{Right, 0, Look}, {Middle, 0, Pan}, {Left, ALT, Orbit}};

constexpr MoveKey MOVE_LETTERS[] = {{SDLK_w, Korvane::KEY_UP},
                                    {SDLK_a, Korvane::KEY_LEFT},
                                    {SDLK_s, Korvane::KEY_DOWN},
                                    {SDLK_d, Korvane::KEY_RIGHT}};

const auto STYLES = std::to_array<NavigationStyle>({
    {"own", "Middle pans, Shift orbits", OWN},
    {"middle-orbits", "Middle orbits, Shift pans", MIDDLE_ORBITS, ZoomTarget::Middle},
    {"middle-turns", "Middle orbits, Ctrl pans", MIDDLE_TURNS, ZoomTarget::Pointer, true},
    {"control-orbits", "Middle pans, Ctrl orbits", CONTROL_ORBITS},
    {"right-orbits", "Right orbits, middle pans", RIGHT_ORBITS},
    {"alt-drags", "Alt and left, middle, right", ALT_DRAGS, ZoomTarget::Middle},
    {"right-looks", "Right looks, W A S D move", RIGHT_LOOKS, ZoomTarget::Pointer, false, MOVE_LETTERS},
});

}  // namespace

const NavigationDrag* NavigationStyle::FindDrag(MouseButton button, unsigned modifiers) const {
  const NavigationDrag* found = nullptr;
  for (const NavigationDrag& drag : drags) {
    if (drag.button != button || (drag.modifiers & ~modifiers) != 0) continue;
    if (found == nullptr || std::popcount(drag.modifiers) > std::popcount(found->modifiers)) found = &drag;
  }
  return found;
}

const MoveKey* NavigationStyle::FindMoveKey(SDL_Keycode key) const {
  const auto found =
      std::find_if(moveKeys.begin(), moveKeys.end(), [key](const MoveKey& each) { return each.key == key; });
  return found != moveKeys.end() ? &*found : nullptr;
}

std::span<const NavigationStyle> GetNavigationStyles() { return STYLES; }

const NavigationStyle& FindNavigationStyle(std::string_view name) {
  const auto* const found = std::find_if(STYLES.begin(), STYLES.end(),
                                         [name](const NavigationStyle& style) { return style.name == name; });
  return found != STYLES.end() ? *found : STYLES.front();
}

}  // namespace zovhost
