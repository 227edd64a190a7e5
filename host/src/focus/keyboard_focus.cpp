#include "zovhost/keyboard_focus.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace zovhost {

using Korvane::Vector2;
using Type = WindowEvent::Type;

namespace {

constexpr double ASIDE = 2.0;  // what lies beside the way counts as so much further

struct ArrowKey {
  SDL_Keycode key;
  FocusStep step;
};
constexpr std::array<ArrowKey, 4> ARROWS = {
    {{SDLK_RIGHT, {1, 0}}, {SDLK_LEFT, {-1, 0}}, {SDLK_UP, {0, 1}}, {SDLK_DOWN, {0, -1}}}};

bool IsPressKey(SDL_Keycode key) { return key == SDLK_RETURN || key == SDLK_KP_ENTER || key == SDLK_SPACE; }

const FocusThing* FindById(const std::vector<FocusThing>& things, int id) {
  const auto found =
      std::find_if(things.begin(), things.end(), [id](const FocusThing& thing) { return thing.id == id; });
  return found != things.end() ? &*found : nullptr;
}

bool IsSameToTell(const FocusThing& a, const FocusThing& b) {
  return a.id == b.id && a.group == b.group && a.name == b.name && a.role == b.role && a.on == b.on &&
         a.enabled == b.enabled;
}

}  // namespace

bool IsMenuKey(const WindowEvent& event) {
  const bool shifted = (event.modifiers & WindowEvent::SHIFT) != 0;
  return event.key == SDLK_APPLICATION || (event.key == SDLK_F10 && shifted);
}

const FocusThing* FindOnSide(const std::vector<FocusThing>& things, const FocusThing& from, FocusStep step) {
  const FocusThing* nearest = nullptr;
  double least = std::numeric_limits<double>::infinity();
  for (const FocusThing& thing : things) {
    const Vector2 way = thing.bounds.center - from.bounds.center;
    const double along = way.x * step.right + way.y * step.up;
    const double aside = std::abs(way.x * step.up) + std::abs(way.y * step.right);
    const double distance = along + ASIDE * aside;
    if (thing.id == from.id || !(along > 0.5) || aside > 3.0 * along || !(distance < least)) continue;
    least = distance;
    nearest = &thing;
  }
  return nearest;
}

KeyboardFocus::KeyboardFocus() = default;
KeyboardFocus::~KeyboardFocus() = default;

void KeyboardFocus::AddGroup(List list, Steer steer) {
  groups.push_back({std::move(list), std::move(steer)});
}

void KeyboardFocus::SetObserver(Observer value) { observer = std::move(value); }

std::vector<FocusThing> KeyboardFocus::ListEnabled(std::size_t group) const {
  std::vector<FocusThing> things = groups[group].list();
  std::erase_if(things, [](const FocusThing& thing) { return !thing.enabled; });
  return things;
}

// ---- events ----

bool KeyboardFocus::OnEvent(const WindowEvent& event) {
  switch (event.type) {
    case Type::KeyDown:
      return OnKeyDown(event);
    case Type::KeyUp:
      return OnKeyUp(event);
    case Type::MouseDown:
    case Type::FingerDown:
    case Type::FocusLost:
      Leave();
      return false;
    default:
      return false;
  }
}

bool KeyboardFocus::OnKeyDown(const WindowEvent& event) {
  constexpr unsigned OTHERS = WindowEvent::CONTROL | WindowEvent::ALT;
  if ((event.modifiers & OTHERS) != 0) return OnOtherKey(event);
  const bool back = (event.modifiers & WindowEvent::SHIFT) != 0;
  if (event.key == SDLK_TAB) {
    if (!IsActive()) return Enter(back);
    Press(false);
    return GoToGroup(currentGroup, back);
  }
  if (!IsActive()) return false;
  if (event.key == SDLK_ESCAPE) {
    Leave();
    return true;
  }
  if (IsPressKey(event.key)) {
    if (!event.repeated) Press(true);
    return true;
  }
  for (const ArrowKey& arrow : ARROWS) {
    if (arrow.key != event.key) continue;
    Step(arrow.step);
    return true;
  }
  return OnOtherKey(event);
}

// What it does may change the groups, and the focus.
bool KeyboardFocus::OnOtherKey(const WindowEvent& event) {
  const FocusThing* const thing = Get();
  if (thing == nullptr || !thing->key) return false;
  const auto key = thing->key;
  return key(event);
}

bool KeyboardFocus::OnKeyUp(const WindowEvent& event) {
  if (!pressed || !IsPressKey(event.key)) return false;
  Press(false);
  return true;
}

// ---- moves ----

bool KeyboardFocus::Enter(bool fromEnd) { return GoToGroup(groups.size(), fromEnd); }

// From no group, whose number is their count, to the first or the last.
bool KeyboardFocus::GoToGroup(std::size_t from, bool back) {
  const auto count = static_cast<std::ptrdiff_t>(groups.size());
  const auto start = static_cast<std::ptrdiff_t>(from);
  const std::ptrdiff_t outside = back ? count : -1;
  const std::ptrdiff_t way = back ? -1 : 1;
  for (std::ptrdiff_t i = (start == count ? outside : start) + way; i >= 0 && i < count; i += way) {
    const std::vector<FocusThing> things = ListEnabled(static_cast<std::size_t>(i));
    if (things.empty()) continue;
    Take(static_cast<std::size_t>(i), things.front());
    return true;
  }
  Leave();
  return false;
}

bool KeyboardFocus::GoTo(int id) {
  if (!IsActive()) return false;
  const std::vector<FocusThing> things = ListEnabled(currentGroup);
  const FocusThing* const thing = FindById(things, id);
  if (thing != nullptr) Take(currentGroup, *thing);
  return thing != nullptr;
}

void KeyboardFocus::Step(FocusStep step) {
  if (Get() == nullptr) return;
  if (pressed) {
    if (current->drag) current->drag(step.right, step.up);
    return;
  }
  const Group& group = groups[currentGroup];
  const std::vector<FocusThing> things = ListEnabled(currentGroup);
  const FocusThing* next = nullptr;
  if (group.steer) {
    const std::optional<int> id = group.steer(current->id, step);
    if (id.has_value()) next = FindById(things, *id);
  } else {
    next = FindOnSide(things, *current, step);
  }
  if (next != nullptr) Take(currentGroup, *next);
}

void KeyboardFocus::Take(std::size_t group, const FocusThing& thing) {
  currentGroup = group;
  current = thing;
  Tell(&thing);
}

void KeyboardFocus::Leave() {
  Press(false);
  if (!IsActive()) return;
  current.reset();
  Tell(nullptr);
}

// What is pressed may change the groups, and the focus.
void KeyboardFocus::Press(bool down) {
  if (down == pressed || !current.has_value()) return;
  pressed = down;
  const auto press = current->press;
  if (press) press(down);
}

// A thing that is gone gives way to the first that is there.
const FocusThing* KeyboardFocus::Get() {
  if (!IsActive()) return nullptr;
  const std::vector<FocusThing> things = ListEnabled(currentGroup);
  const FocusThing* const found = FindById(things, current->id);
  if (found == nullptr && things.empty()) {
    Leave();
    return nullptr;
  }
  const FocusThing now = found != nullptr ? *found : things.front();
  const bool changed = !IsSameToTell(now, *current);
  current = now;
  if (changed) Tell(&now);
  return IsActive() ? &*current : nullptr;
}

void KeyboardFocus::Tell(const FocusThing* thing) {
  if (!observer) return;
  const Observer told = observer;
  told(thing);
}

}  // namespace zovhost
