#include "toolbar/navigation_bar_toolbar_observer.h"

#include "korvane/navigation_bar.h"

namespace Korvane {

void NavigationBarToolbarObserver::OnItemClicked(const ToolbarItem& item) {
  navigationBar->OnItemClicked(item);
}
bool NavigationBarToolbarObserver::OnItemMouseDown(const ToolbarItem& item) {
  return navigationBar->OnItemPressed(item);
}
bool NavigationBarToolbarObserver::OnItemFlyoutOpened(ToolbarItem& item) {
  return navigationBar->OnItemFlyoutPressed(item);
}
bool NavigationBarToolbarObserver::OnItemContextMenu(const ToolbarItem& item) {
  return navigationBar->OnItemContextMenu(item);
}
void NavigationBarToolbarObserver::OnItemVisibilityChanged(const ToolbarItem& item) {
  navigationBar->OnItemVisibilityChanged(item);
}
void NavigationBarToolbarObserver::OnPositionChanged() { navigationBar->OnPositionChanged(false); }
void NavigationBarToolbarObserver::OnToolbarDragged() { navigationBar->OnPositionChanged(true); }

}  // namespace Korvane
