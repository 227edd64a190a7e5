#pragma once

#include <functional>

#include "korvane/navigation_bar_observer.h"
#include "korvane/toolbar.h"

namespace zovhost {

/// A place for a menu that belongs to a button of a strip, in pixels of the viewport from the bottom left:
/// beside the strip, on the side where there is room. The menu touches the place with that of its corners.
struct BarMenuPlace {
  int x = 0;
  int y = 0;
  bool atRight = false;  ///< With one of its right corners, and so it reaches to the left.
  bool atBottom = false;
};

/// Beside a strip with these bounds, in a viewport of that size, for a button that tells `x` and `y` of
/// itself: its right end and its lower edge.
BarMenuPlace FindBarMenuPlace(const Korvane::Toolbar& strip, int viewportWidth, int viewportHeight, int x,
                              int y);

/// What a host hears of a navigation bar whose menus stay open while the program goes on, as most do: the
/// library would have the tag that was chosen as soon as a menu is asked for, and takes the release of the
/// press that opened a flyout for a click on the button. Here a menu is only asked for, what comes of it is
/// the host's, and such a release clicks nothing.
///
/// Each action may do what a NavigationBarObserver may; an empty one is left out. Borrowed by the bar.
class NavigationBarHost : public Korvane::NavigationBarObserver {
 public:
  enum class Menu : int {
    Bar,           ///< Of the bar itself.
    Flyout,        ///< What the disc button offers.
    MoreControls,  ///< What there is no room for: Toolbar::IsItemExcluded tells.
    Item,          ///< Of an item, by its tag.
  };
  struct Actions {
    std::function<void(int tag)> click;
    /// At a place as FindBarMenuPlace takes it. False when there is no such menu.
    std::function<bool(Menu menu, int tag, int x, int y)> openMenu;
    /// Adds the host's items.
    std::function<void(Korvane::ToolbarItem::List& items)> populate;
    /// The bar has all its items.
    std::function<void()> populated;
    std::function<void(bool dragged)> move;
  };

  NavigationBarHost(Korvane::NavigationBar* bar, Actions actions);

  /// To be told of each press of the left button, before the view manager is.
  void OnPress() { flyoutPressed = 0; }

  void OnItemClicked(int tag) override;
  bool OnItemContextMenu(int tag, int x, int y) override;
  bool OnItemFlyoutPressed(int tag, int x, int y) override;
  bool OnBarMenuPressed(int x, int y) override;
  void OnItemsPopulated() override;
  int OnMoreControlsPressed(int x, int y) override;
  void OnMoreControlsVisibilityChanged(bool visible) override;
  void OnPopulateApplicationItems(Korvane::ToolbarItem::List& items) override;
  void OnPositionChanged(bool dragged) override;

  /// Items are left out for want of room.
  bool HasMoreControls() const { return hasMore; }

 private:
  bool OpenMenu(Menu menu, int tag, int x, int y) const;

  const Actions actions;
  int flyoutPressed = 0;  // the tag of the button, until its release
  bool hasMore = false;
};

}  // namespace zovhost
