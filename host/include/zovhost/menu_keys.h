#pragma once

#include <string>
#include <vector>

#include "zovhost/keyboard_focus.h"

namespace zovhost {

/// The items of the menus of imgui.h that a host draws, for whoever uses them by keys. While a menu is open
/// the Gui has the keys: arrows go through it and its lists, Enter and the space bar choose, Escape closes
/// one level. Besides, a letter goes to the next item that begins with it; and an observer hears which item
/// is marked, and what it is.
///
///     if (ImGui::BeginPopup("menu")) {
///       if (ImGui::MenuItem("Open")) ...;
///       keys.NoteItem("Open");
///       if (keys.BeginMenu("File")) { ...; ImGui::EndMenu(); }
///       ImGui::EndPopup();
///     }
///     keys.EndFrame();
///
/// All of it within a frame of the Gui.
class MenuKeys {
 public:
  /// Told of each change of what is marked, and of its state, with places in points from the bottom left of
  /// the window; null: nothing is.
  void SetObserver(KeyboardFocus::Observer value);

  /// The item that was drawn last. `on`: it is ticked.
  void NoteItem(const std::string& name, bool on = false);
  /// A list within a menu: as ImGui::BeginMenu with the phrase in the language of the panels.
  bool BeginMenu(const char* phrase);
  /// Once a frame, after the menus, or where there are none.
  void EndFrame();

 private:
  struct Item {
    unsigned id;         // of imgui.h
    const void* window;  // that it is in
    FocusThing thing;
  };

  void Note(unsigned id, const void* window, const FocusThing& thing);
  void FindLetter();
  void Tell();

  KeyboardFocus::Observer observer;
  std::vector<Item> items;  // of this frame
  unsigned wanted = 0;      // to be marked; 0: none
  FocusThing told;
  bool isTold = false;
};

}  // namespace zovhost
