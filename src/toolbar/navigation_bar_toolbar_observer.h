#pragma once

#include "korvane/toolbar_observer.h"

namespace Korvane {

class NavigationBar;

/// Turns what happens to the items of the bar's toolbar into events of the bar. It may be deleted by any of
/// them.
class NavigationBarToolbarObserver final : public ToolbarObserver {
 public:
  NavigationBarToolbarObserver(Toolbar* subject, NavigationBar* owner)
      : ToolbarObserver(subject), navigationBar(owner) {}

  void OnItemClicked(const ToolbarItem& item) override;
  bool OnItemMouseDown(const ToolbarItem& item) override;
  void OnItemMouseEnter(const ToolbarItem& /*item*/) override {}
  void OnItemMouseExit(const ToolbarItem& /*item*/) override {}
  bool OnItemFlyoutOpened(ToolbarItem& item) override;
  bool OnItemContextMenu(const ToolbarItem& item) override;
  void OnItemVisibilityChanged(const ToolbarItem& item) override;
  void OnPositionChanged() override;
  void OnToolbarDragged() override;

 private:
  NavigationBar* const navigationBar;
};

}  // namespace Korvane
