#pragma once

#include "korvane/export.h"

namespace Korvane {

class Toolbar;
class ToolbarItem;

/// Is told what happens to the items of a toolbar. Borrowed by the toolbar; see Toolbar::AddObserver.
///
/// The item that an operation is told of stays alive until it returns, whatever becomes of the list.
class ZOVTOOLS_API ToolbarObserver {
 public:
  virtual ~ToolbarObserver();
  ToolbarObserver(const ToolbarObserver&) = delete;
  ToolbarObserver& operator=(const ToolbarObserver&) = delete;

  /// Pressed and released on the item.
  virtual void OnItemClicked(const ToolbarItem& item) = 0;
  /// Whether it was of use. Every observer is told in any case, here and below.
  virtual bool OnItemMouseDown(const ToolbarItem& item) = 0;
  virtual void OnItemMouseEnter(const ToolbarItem& item) = 0;
  virtual void OnItemMouseExit(const ToolbarItem& item) = 0;
  /// The arrow of the item was pressed: the host opens what the flyout items say.
  virtual bool OnItemFlyoutOpened(ToolbarItem& item) = 0;
  /// The right button was pressed on the item.
  virtual bool OnItemContextMenu(const ToolbarItem& item) = 0;
  /// The layout has found room for the item, or none any more; see ToolbarItem::IsExcluded.
  virtual void OnItemVisibilityChanged(const ToolbarItem& item) = 0;
  /// The strip has another position, not by a drag.
  virtual void OnPositionChanged() = 0;
  /// The strip was dragged by its grip and let go; its position and edge offset are the new ones.
  virtual void OnToolbarDragged() = 0;

 protected:
  /// Does not add itself to the toolbar.
  explicit ToolbarObserver(Toolbar* subject) : toolbar(subject) {}

  Toolbar* toolbar;
};

}  // namespace Korvane
