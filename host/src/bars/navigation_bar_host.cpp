#include "zovhost/navigation_bar_host.h"

#include <cmath>
#include <utility>

namespace zovhost {

using Korvane::Box2;
using Korvane::Vector2;

namespace {

constexpr int gap = 4;  // pixels, between a strip and a menu

}  // namespace

// A menu hangs down from the height of its button where the button is in the upper half, and otherwise
// stands.
BarMenuPlace FindBarMenuPlace(const Korvane::Toolbar& strip, int viewportWidth, int viewportHeight, int x,
                              int y) {
  const Box2 bounds = strip.GetToolbarBounds();
  const Vector2 low = bounds.Min();
  const Vector2 high = bounds.Max();
  const bool upright = bounds.halfExtent.y >= bounds.halfExtent.x;
  BarMenuPlace place{x, y, x > viewportWidth / 2, y < viewportHeight / 2};
  if (upright) {
    place.x = static_cast<int>(std::lround(place.atRight ? low.x : high.x)) + (place.atRight ? -gap : gap);
  } else {
    place.y = static_cast<int>(std::lround(place.atBottom ? high.y : low.y)) + (place.atBottom ? gap : -gap);
  }
  return place;
}

NavigationBarHost::NavigationBarHost(Korvane::NavigationBar* bar, Actions hostActions)
    : NavigationBarObserver(bar), actions(std::move(hostActions)) {}

bool NavigationBarHost::OpenMenu(Menu menu, int tag, int x, int y) const {
  return actions.openMenu && actions.openMenu(menu, tag, x, y);
}

void NavigationBarHost::OnItemClicked(int tag) {
  if (tag == std::exchange(flyoutPressed, 0)) return;
  if (actions.click) actions.click(tag);
}

bool NavigationBarHost::OnItemContextMenu(int tag, int x, int y) { return OpenMenu(Menu::Item, tag, x, y); }

bool NavigationBarHost::OnItemFlyoutPressed(int tag, int x, int y) {
  flyoutPressed = tag;
  return OpenMenu(Menu::Flyout, tag, x, y);
}

bool NavigationBarHost::OnBarMenuPressed(int x, int y) { return OpenMenu(Menu::Bar, 0, x, y); }

void NavigationBarHost::OnItemsPopulated() {
  if (actions.populated) actions.populated();
}

// What is chosen comes later, by the menu.
int NavigationBarHost::OnMoreControlsPressed(int x, int y) {
  OpenMenu(Menu::MoreControls, 0, x, y);
  return 0;
}

void NavigationBarHost::OnMoreControlsVisibilityChanged(bool visible) { hasMore = visible; }

void NavigationBarHost::OnPopulateApplicationItems(Korvane::ToolbarItem::List& items) {
  if (actions.populate) actions.populate(items);
}

void NavigationBarHost::OnPositionChanged(bool dragged) {
  if (actions.move) actions.move(dragged);
}

}  // namespace zovhost
