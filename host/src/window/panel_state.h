#pragma once

#include "window/panel_font.h"
#include "window/screen_order.h"
#include "window/tab_stops.h"

struct ImGuiWindow;

namespace zovhost {

/// What the Gui keeps for the texts of its panels, which find it by the user data of the library that draws
/// them.
struct PanelState {
  PanelFont font;
  ScreenOrder order;
  TabStops stops;
  bool mirrored = false;
  bool hasKeys = false;                  // a panel that no text is typed in
  bool byKeys = false;                   // what the user did last
  const ImGuiWindow* escaped = nullptr;  // the panel that Escape has taken the keys from; null: none
  bool typedFromRight = false;           // the text that is typed in stands at the right
  char32_t letter = U'\0';               // a key for the menu that is open; none
};

}  // namespace zovhost
