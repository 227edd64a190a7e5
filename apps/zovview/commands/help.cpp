#include "commands/help.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "commands/view_commands.h"
#include "zovhost/key_table.h"
#include "zovhost/navigation_style.h"

namespace zovview {

using zovhost::NavigationStyle;
using zovhost::WindowEvent;

namespace {

struct FixedLine {
  const char* keys;
  const char* action;
};
constexpr auto MOUSE_LINES = std::to_array<FixedLine>({
    {"Click", "select a part"},
    {"Double click", "bring to the middle"},
    {"Middle twice", "fit all"},
    {"Right click", "menu"},
    {"Side buttons", "view before, view after"},
    {"On a disc", "press a wedge, and drag"},
    {"Drop a file", "open it"},
    {"Fingers", "one orbits, two pan and zoom, three walk"},
});

// In the order of the moves.
constexpr std::array<const char*, 5> MOVES = {"orbit", "pan", "zoom", "look", "roll where not kept upright"};
// As it turns, and turned round; to the pointer and to the middle.
constexpr const char* WHEEL_ACTIONS[2][2] = {
    {"zoom to the pointer", "zoom to the middle"},
    {"zoom to the pointer, out when turned away", "zoom to the middle, out when turned away"}};
// Alone, and after modifiers.
struct ButtonName {
  const char* alone;
  const char* modified;
};
constexpr std::array<ButtonName, 3> BUTTONS = {
    {{"Left drag", "left drag"}, {"Middle drag", "middle drag"}, {"Right drag", "right drag"}}};
struct Modifier {
  unsigned bit;
  const char* name;
};
constexpr std::array<Modifier, 3> MODIFIERS = {
    {{WindowEvent::CONTROL, "Ctrl+"}, {WindowEvent::ALT, "Alt+"}, {WindowEvent::SHIFT, "Shift+"}}};

// Keys that are the library's, but Esc, which a command has as well.
struct LibraryKey {
  std::vector<Korvane::KeyID> ids;
  const char* keys;
  const char* action;
};
const std::array<LibraryKey, 7>& GetLibraryKeys() {
  using namespace Korvane;  // NOLINT(google-build-using-namespace): the names of its keys
  static const std::array<LibraryKey, 7> KEYS = {{
      {{KEY_DISC}, "D", "the disc of last time, or away with it"},
      {{KEY_SHIFT, KEY_CONTROL}, "Shift, Ctrl", "other wedges of a disc; the wheel to the pivot"},
      {{KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT}, "Arrow keys", "move while looking, climb while walking"},
      {{KEY_RUN}, "X", "run while walking"},
      {{KEY_SLOWER, KEY_FASTER}, "- +", "slower, faster while walking by a disc"},
      {{KEY_SPACE}, "Space", "play and pause the story"},
      {{KEY_DELETE}, "Delete", "the slide under the pointer"},
  }};
  return KEYS;
}

struct WindowKey {
  const char* keys;
  const char* action;
  std::vector<HelpKey> bound;
};
const std::array<WindowKey, 5>& GetWindowKeys() {
  static const std::array<WindowKey, 5> KEYS = {
      {{"Tab", "to the cube, disc, bars, panel; arrows, Enter", {{SDLK_TAB, 0}}},
       {"Ctrl+Tab", "another of several views", {{SDLK_TAB, WindowEvent::CONTROL}}},
       {"F1, ?", "this help", {{SDLK_F1, 0}, {SDLK_QUESTION, 0}}},
       {"Shift+F1", "this panel", {{SDLK_F1, WindowEvent::SHIFT}}},
       {"F11", "full screen", {{SDLK_F11, 0}}}}};
  return KEYS;
}

std::string NameDrag(const zovhost::NavigationDrag& drag) {
  std::string name;
  for (const Modifier& modifier : MODIFIERS) {
    if ((drag.modifiers & modifier.bit) != 0) name += modifier.name;
  }
  const ButtonName& button = BUTTONS[static_cast<std::size_t>(drag.button)];
  return name.empty() ? button.alone : name + button.modified;
}

std::string NameKeys(std::span<const zovhost::MoveKey> keys) {
  std::string name;
  for (const zovhost::MoveKey& key : keys) {
    if (!name.empty()) name += ' ';
    name += static_cast<char>(key.key - SDLK_a + 'A');
  }
  return name;
}

void AddMouse(const NavigationStyle& style, std::vector<HelpLine>& lines) {
  lines.push_back({"Left drag", "the tool that is lit"});
  for (const zovhost::NavigationDrag& drag : style.drags) {
    lines.push_back({NameDrag(drag), MOVES[static_cast<std::size_t>(drag.move)]});
  }
  const bool toPointer = style.zoomTarget == NavigationStyle::ZoomTarget::Pointer;
  lines.push_back({"Wheel", WHEEL_ACTIONS[style.wheelReversed ? 1 : 0][toPointer ? 0 : 1]});
  if (!style.moveKeys.empty()) lines.push_back({NameKeys(style.moveKeys), "move while looking by a drag"});
  for (const FixedLine& line : MOUSE_LINES) lines.push_back({line.keys, line.action});
}

void AddKey(HelpLine& line, const char* name, const HelpKey& key) {
  if (!line.keys.empty()) line.keys += ", ";
  line.keys += name;
  line.bound.push_back(key);
}

void AddCommands(std::vector<HelpLine>& lines) {
  std::vector<void (*)(const ViewTarget&)> told;
  for (const ViewCommand& command : GetViewCommands()) {
    if (std::find(told.begin(), told.end(), command.run) != told.end()) continue;
    HelpLine line = MakeHelpLine(command);
    if (line.bound.empty()) continue;
    told.push_back(command.run);
    lines.push_back(std::move(line));
  }
}

void AddLibraryKeys(std::vector<HelpLine>& lines) {
  for (const LibraryKey& each : GetLibraryKeys()) {
    HelpLine line = {each.keys, each.action};
    for (const zovhost::KeyBinding& binding : zovhost::GetKeyBindings()) {
      const bool meant = std::find(each.ids.begin(), each.ids.end(), binding.id) != each.ids.end();
      if (meant) line.bound.push_back({binding.key, 0});
    }
    lines.push_back(std::move(line));
  }
}

}  // namespace

// Two commands that do the same are one.
HelpLine MakeHelpLine(const ViewCommand& command) {
  HelpLine line = {"", command.label};
  for (const ViewCommand& each : GetViewCommands()) {
    if (each.run == command.run && each.key != SDLK_UNKNOWN)
      AddKey(line, each.keyName, {each.key, each.modifiers});
  }
  for (const OtherKey& other : GetOtherKeys()) {
    if (other.command == command.name) AddKey(line, other.keyName, {other.key, other.modifiers});
  }
  return line;
}

std::vector<HelpLine> MakeHelp(const NavigationStyle& style) {
  std::vector<HelpLine> lines;
  AddMouse(style, lines);
  AddCommands(lines);
  AddLibraryKeys(lines);
  for (const WindowKey& key : GetWindowKeys()) lines.push_back({key.keys, key.action, key.bound});
  return lines;
}

}  // namespace zovview
