#pragma once

#include "korvane/export.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class ResourceIcon2D;

/// A menu without a fixed place: a picture that rides under the cursor, divided into regions.
///
/// The menu itself is still to come: for now this class only stands for it, so that a disc can hold one and
/// be asked for it. It has no picture, follows no cursor and draws nothing.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward.
class ZOVTOOLS_API TrackMenu {
 public:
  /// A part of the menu. The icon is shown while the region is under the cursor.
  struct Region {
    ResourceIcon2D* icon = nullptr;
    bool wrap = true;  ///< The host is to wrap the cursor at the edges of the viewport.
  };

  TrackMenu();
  virtual ~TrackMenu();
  TrackMenu(const TrackMenu&) = delete;
  TrackMenu& operator=(const TrackMenu&) = delete;

  virtual void OnMouseMove(int x, int y);
  /// The region under the cursor; without icon when there is none.
  virtual Region& GetActiveRegion();

  bool GetEnabled() const { return enabled; }
  void SetEnabled(bool value) { enabled = value; }
  bool GetVisible() const { return visible; }
  bool IsLeftButtonDown() const { return leftButtonDown; }
  /// The cursor while the menu shows.
  CursorID GetMenuCursorID() const { return menuCursorID; }

 protected:
  Region activeRegion;
  bool enabled = true;
  bool leftButtonDown = false;
  bool visible = false;
  CursorID menuCursorID = CURSOR_ARROW;
};

}  // namespace Korvane
