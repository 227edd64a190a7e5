#pragma once

#include "korvane/export.h"
#include "korvane/toolbar_item.h"

namespace Korvane {

class NavigationBar;

/// Is told what happens to the navigation bar, items named by their tags. Borrowed by the bar; see
/// NavigationBar::AddObserver.
///
/// Places are viewport pixels with the origin at the bottom left: the right end and the lower edge of the
/// item. Where there is a result, the first observer with one that is not false, or not 0, is the last that
/// is asked.
class ZOVTOOLS_API NavigationBarObserver {
 public:
  virtual ~NavigationBarObserver();
  NavigationBarObserver(const NavigationBarObserver&) = delete;
  NavigationBarObserver& operator=(const NavigationBarObserver&) = delete;

  /// Clicked, or chosen among the more controls.
  virtual void OnItemClicked(int tag) = 0;
  /// A right click; true when a menu was opened.
  virtual bool OnItemContextMenu(int tag, int x, int y) = 0;
  /// The arrow of the disc button; true when its items were offered.
  virtual bool OnItemFlyoutPressed(int tag, int x, int y) = 0;
  /// The button of the bar's own menu; true when it was opened.
  virtual bool OnBarMenuPressed(int x, int y) = 0;
  /// The bar has its items, the host's among them.
  virtual void OnItemsPopulated() = 0;
  /// The tag of the item that was chosen among those that do not fit; 0 for none.
  virtual int OnMoreControlsPressed(int x, int y) = 0;
  /// Items have begun, or ceased, to be left out.
  virtual void OnMoreControlsVisibilityChanged(bool visible) = 0;
  /// Adds the host's items, which come between the two separators.
  virtual void OnPopulateApplicationItems(ToolbarItem::List& items) = 0;
  virtual void OnPositionChanged(bool dragged) = 0;

 protected:
  /// Does not add itself to the bar.
  explicit NavigationBarObserver(NavigationBar* subject) : navigationBar(subject) {}

  NavigationBar* navigationBar;
};

}  // namespace Korvane
