#pragma once

#include <SDL_keycode.h>

#include <string>
#include <vector>

namespace zovhost {
struct NavigationStyle;
}

namespace zovview {

struct ViewCommand;

struct HelpKey {
  SDL_Keycode key;
  unsigned modifiers;  ///< A sum of WindowEvent::Modifier.
};

/// What a key, or the mouse, does.
struct HelpLine {
  std::string keys;  ///< For a person to read, as `action` is.
  std::string action;
  std::vector<HelpKey> bound = {};  ///< The keys that `keys` tells of; empty for the mouse.
};

/// All keys of a command, those of other commands that do the same as well; none: `keys` is empty.
HelpLine MakeHelpLine(const ViewCommand& command);
/// All that mouse and keys do in this style: what the mouse does first, then the commands in the order of
/// their table, each with all its keys, then the keys of the library and of the window.
std::vector<HelpLine> MakeHelp(const zovhost::NavigationStyle& style);

}  // namespace zovview
