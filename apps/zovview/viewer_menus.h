#pragma once

#include <optional>

#include "korvane/resource_ids.h"
#include "view_commands.h"

namespace zovview {

/// The menus that open at the pointer. To be drawn within a frame of the Gui.
class ViewerMenus {
 public:
  enum class Kind : int { View, Cube, Coordinates, TourBuilding, ViewObject, FullNavigation, TwoD };

  /// The one that the library asks for by its number; none for a number that the viewer has no menu for.
  static std::optional<Kind> FindKind(Korvane::MenuID id);

  /// In the next frame, where the pointer then is.
  void Open(Kind menu);
  void Close() { closing = true; }
  bool IsOpen() const { return isOpen; }
  Kind GetKind() const { return kind; }
  /// The command that was chosen; null for none.
  const ViewCommand* Draw(const ViewTarget& target);

 private:
  Kind kind = Kind::View;
  bool opening = false;
  bool closing = false;
  bool isOpen = false;
};

}  // namespace zovview
