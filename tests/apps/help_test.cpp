// The help names every key that does something, and none that does not.
#include "commands/help.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "commands/view_commands.h"
#include "zovhost/key_table.h"
#include "zovhost/navigation_style.h"
#include "zovhost/phrases.h"

namespace {

using zovhost::WindowEvent;
using zovview::HelpKey;
using zovview::HelpLine;

bool IsOfWindow(SDL_Keycode key) {
  return key == SDLK_F1 || key == SDLK_QUESTION || key == SDLK_F11 || key == SDLK_TAB;
}

bool IsOfLibrary(SDL_Keycode key) {
  const auto bindings = zovhost::GetKeyBindings();
  return std::any_of(bindings.begin(), bindings.end(),
                     [key](const zovhost::KeyBinding& each) { return each.key == key; });
}

bool DoesSomething(const HelpKey& key) {
  return IsOfWindow(key.key) || IsOfLibrary(key.key) ||
         zovview::FindViewCommand(key.key, key.modifiers) != nullptr;
}

// A command that does not ask for Shift comes with it as well, and keys of the library with anything.
bool IsListed(const std::vector<HelpLine>& lines, const HelpKey& key) {
  const auto means = [&key](const HelpKey& listed) {
    const bool any = IsOfLibrary(key.key) || IsOfWindow(key.key);
    const bool same =
        listed.modifiers == key.modifiers || listed.modifiers == (key.modifiers & ~WindowEvent::SHIFT);
    return listed.key == key.key && (any || same);
  };
  return std::any_of(lines.begin(), lines.end(), [&](const HelpLine& line) {
    return std::any_of(line.bound.begin(), line.bound.end(), means);
  });
}

std::vector<SDL_Keycode> GetAllKeys() {
  std::vector<SDL_Keycode> keys;
  for (SDL_Keycode key = 1; key < 256; ++key) keys.push_back(key);
  for (int code = 1; code < SDL_NUM_SCANCODES; ++code) keys.push_back(SDL_SCANCODE_TO_KEYCODE(code));
  return keys;
}

TEST(HelpTest, no_key_that_works_is_missing) {
  const std::vector<HelpLine> lines = zovview::MakeHelp(zovhost::GetNavigationStyles().front());
  constexpr unsigned ALL = WindowEvent::SHIFT | WindowEvent::CONTROL | WindowEvent::ALT;
  int working = 0;
  for (const SDL_Keycode key : GetAllKeys()) {
    for (unsigned modifiers = 0; modifiers <= ALL; ++modifiers) {
      const HelpKey pressed = {key, modifiers};
      if (!DoesSomething(pressed)) continue;
      ++working;
      EXPECT_TRUE(IsListed(lines, pressed)) << SDL_GetKeyName(key) << ' ' << modifiers;
    }
  }
  EXPECT_GT(working, 100);
}

TEST(HelpTest, each_line_of_each_style_is_a_phrase) {
  const zovhost::Phrases& english = zovhost::Phrases::Find(*zovhost::FindLanguage("en"));
  for (const zovhost::NavigationStyle& style : zovhost::GetNavigationStyles()) {
    for (const HelpLine& line : zovview::MakeHelp(style)) {
      EXPECT_TRUE(english.Has(line.action)) << style.name << ": " << line.action;
    }
  }
}

TEST(HelpTest, no_key_is_listed_that_does_nothing) {
  for (const HelpLine& line : zovview::MakeHelp(zovhost::GetNavigationStyles().front())) {
    EXPECT_FALSE(line.keys.empty() || line.action.empty());
    for (const HelpKey& key : line.bound) EXPECT_TRUE(DoesSomething(key)) << line.keys;
  }
}

TEST(HelpTest, a_line_for_each_command_with_all_its_keys) {
  const std::vector<HelpLine> lines = zovview::MakeHelp(zovhost::GetNavigationStyles().front());
  const auto find = [&](const std::string& action) {
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const HelpLine& line) { return line.action == action; });
    return found != lines.end() ? found->keys : std::string();
  };
  EXPECT_EQ(find("Home"), "Home, Pad 0");
  EXPECT_EQ(find("Redo"), "Ctrl+Y, Ctrl+Shift+Z");
  EXPECT_EQ(find("Back"), "2, Ctrl+Pad 1");
  std::set<std::string> actions;
  for (const HelpLine& line : lines) {
    EXPECT_TRUE(line.bound.empty() || actions.insert(line.keys).second) << line.keys;
  }
}

TEST(HelpTest, the_mouse_is_told_as_the_style_has_it) {
  for (const zovhost::NavigationStyle& style : zovhost::GetNavigationStyles()) {
    const std::vector<HelpLine> lines = zovview::MakeHelp(style);
    const auto count = std::count_if(lines.begin(), lines.end(), [](const HelpLine& line) {
      return line.keys.ends_with(" drag") && line.keys != "Left drag";
    });
    EXPECT_EQ(static_cast<std::size_t>(count), style.drags.size()) << style.name;
  }
  const std::vector<HelpLine> own = zovview::MakeHelp(zovhost::FindNavigationStyle("own"));
  EXPECT_EQ(own[1].keys + ": " + own[1].action, "Middle drag: pan");
  EXPECT_EQ(own[2].keys + ": " + own[2].action, "Shift+middle drag: orbit");
  EXPECT_EQ(own[3].keys + ": " + own[3].action, "Wheel: zoom to the pointer");
  const std::vector<HelpLine> alt = zovview::MakeHelp(zovhost::FindNavigationStyle("alt-drags"));
  EXPECT_EQ(alt[1].keys + ": " + alt[1].action, "Alt+left drag: orbit");
  EXPECT_EQ(alt[4].keys + ": " + alt[4].action, "Wheel: zoom to the middle");
}

}  // namespace
