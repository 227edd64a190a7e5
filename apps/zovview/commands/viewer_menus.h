#pragma once

#include <optional>

#include "commands/view_bars.h"
#include "commands/view_commands.h"
#include "korvane/resource_ids.h"
#include "zovhost/menu_keys.h"

namespace zovview {

/// The menus that open at the pointer. To be drawn within a frame of the Gui.
class ViewerMenus {
 public:
  enum class Kind : int {
    View,
    Cube,
    Coordinates,
    TourBuilding,
    ViewObject,
    FullNavigation,
    TwoD,
    Shot,
    Bar,
    Discs,      // of the button of the discs
    MoreOfBar,  // what there is no room for
    MoreOfTools,
    Device,  // of the button of the six-axis device
  };
  /// In points from the top left of the window, at a corner of the menu: fractions of its size.
  struct Corner {
    double x;
    double y;
    double pivotX;
    double pivotY;
  };

  /// The one that the library asks for by its number; none for a number that the viewer has no menu for.
  static std::optional<Kind> FindKind(Korvane::MenuID id);
  static Kind FindKind(ViewBars::Menu menu);

  /// In the next frame; where the pointer then is, unless at a place.
  void Open(Kind menu, std::optional<Corner> at = std::nullopt);
  void Close() { closing = true; }
  bool IsOpen() const { return isOpen; }
  Kind GetKind() const { return kind; }
  /// The command that was chosen; null for none.
  const ViewCommand* Draw(const ViewTarget& target);
  /// Hears what keys have marked in it.
  zovhost::MenuKeys& GetKeys() { return keys; }

 private:
  zovhost::MenuKeys keys;
  Kind kind = Kind::View;
  std::optional<Corner> place;
  bool opening = false;
  bool closing = false;
  bool isOpen = false;
};

}  // namespace zovview
