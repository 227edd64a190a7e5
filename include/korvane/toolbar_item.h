#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "korvane/box2.h"
#include "korvane/export.h"
#include "korvane/icon2d.h"
#include "korvane/resource_ids.h"

namespace Korvane {

/// One item of a toolbar: a button, a separator, or one of the strip's own handles. A value: a copy has
/// flyout items of its own. The bounds are the layout's, in viewport pixels with the origin at the bottom
/// left.
class ZOVTOOLS_API ToolbarItem {
 public:
  /// A number that is none of these is laid out as a button.
  enum Type : int {
    TYPE_BUTTON = 0,
    TYPE_FLYOUT_BUTTON = 1,  // with an arrow that opens its flyout items
    TYPE_PLAIN = 2,          // cannot be clicked
    TYPE_HEAD_CORNER = 3,    // the two small buttons of the strip; of this type and of each of the next three
    TYPE_TAIL_CORNER = 4,    // only the first item counts
    TYPE_GRIP = 5,
    TYPE_MORE_CONTROLS = 6,  // shows while items are left out for want of room
    TYPE_SEPARATOR = 7,
  };

  enum State : int {
    STATE_DISABLED = 0,
    STATE_NORMAL = 1,
    STATE_SELECTED = 2,
    STATE_MOUSE_OVER = 3,
    STATE_MOUSE_OVER_FLYOUT = 4,
    STATE_PRESSED = 5,
    STATE_PRESSED_FLYOUT = 6,
  };

  /// Items by value, in order. A reference to one holds until that one is removed or the list is assigned to.
  class ZOVTOOLS_API List {
   public:
    List();
    List(const List& other);
    List& operator=(const List& other);
    ~List();

    void Append(const ToolbarItem& item);
    /// Before the item at `index`; at the count, at the end. False, and nothing changed, beyond.
    bool InsertAt(int index, const ToolbarItem& item);
    /// For an index out of range an item that is in no list, new at each such call.
    ToolbarItem& GetAt(int index) {
      return Has(index) ? *items[static_cast<std::size_t>(index)] : MakeStray();
    }
    const ToolbarItem& GetAt(int index) const {
      return Has(index) ? *items[static_cast<std::size_t>(index)] : MakeStray();
    }
    int GetCount() const { return static_cast<int>(items.size()); }
    bool IsEmpty() const { return items.empty(); }
    /// False for an index out of range.
    bool RemoveAt(int index);
    void RemoveAll();

    /// Keeps an item alive beyond its removal; null for an index out of range.
    std::shared_ptr<ToolbarItem> Share(int index) const;

   private:
    bool Has(int index) const { return index >= 0 && index < GetCount(); }
    ToolbarItem& MakeStray() const;

    std::vector<std::shared_ptr<ToolbarItem>> items;
    mutable std::shared_ptr<ToolbarItem> stray;  // for an index out of range
  };

  ToolbarItem();
  ToolbarItem(const ToolbarItem&);
  ToolbarItem& operator=(const ToolbarItem&);
  ~ToolbarItem();

  /// Pixels; below 0 counts as 0. Those of a grip are for a vertical strip, and are swapped for a horizontal
  /// one.
  int GetWidth() const { return width; }
  int GetHeight() const { return height; }
  void SetSize(int widthValue, int heightValue);
  /// Of the arrow, along the strip, in addition to the item's own size.
  int GetFlyoutIconSize() const { return flyoutIconSize; }
  void SetFlyoutIconSize(int size) { flyoutIconSize = size; }

  ResourceIcon2D& GetIcon() { return icon; }
  const ResourceIcon2D& GetIcon() const { return icon; }
  void SetIcon(const ResourceIcon2D& value) { icon = value; }
  /// Pixels.
  void SetIcon(TextureID texture, int iconWidth, int iconHeight);

  bool IsEnabled() const { return enabled; }
  void SetEnabled(bool value) { enabled = value; }
  bool IsSelected() const { return selected; }
  void SetSelected(bool value) { selected = value; }
  /// The owner's wish.
  bool IsHidden() const { return hidden; }
  void SetHidden(bool value) { hidden = value; }
  /// There is no room for it; set anew by every layout.
  bool IsExcluded() const { return excluded; }
  void SetExcluded(bool value) { excluded = value; }
  Type GetType() const { return type; }
  void SetType(Type value) { type = value; }
  State GetState() const { return state; }
  void SetState(State value) { state = value; }
  /// The host's number for the item.
  int GetTag() const { return tag; }
  void SetTag(int value) { tag = value; }
  const std::wstring& GetTooltip() const { return tooltip; }
  void SetTooltip(const std::wstring& value) { tooltip = value; }
  /// Not owned and never read.
  void* GetData() const { return data; }
  void SetData(void* value) { data = value; }

  /// Empty for an item that does not show.
  const Box2& GetBounds() const { return bounds; }
  void SetBounds(const Box2& value) { bounds = value; }
  /// Of the arrow of a flyout button, empty for others; and of the rest of the item.
  const Box2& GetFlyoutIconBounds() const { return flyoutIconBounds; }
  void SetFlyoutIconBounds(const Box2& value) { flyoutIconBounds = value; }
  const Box2& GetNonFlyoutIconBounds() const { return nonFlyoutIconBounds; }
  void SetNonFlyoutIconBounds(const Box2& value) { nonFlyoutIconBounds = value; }

  List& GetFlyoutItems() { return flyoutItems; }
  const List& GetFlyoutItems() const { return flyoutItems; }
  bool HasFlyoutItems() const { return !flyoutItems.IsEmpty(); }

 private:
  int width = 0;
  int height = 0;
  int flyoutIconSize = 0;
  ResourceIcon2D icon{TEXTURE_NONE};
  bool enabled = true;
  bool selected = false;
  bool hidden = false;
  bool excluded = false;
  Type type = TYPE_BUTTON;
  State state = STATE_NORMAL;
  int tag = 0;
  std::wstring tooltip;
  void* data = nullptr;
  Box2 bounds;
  Box2 flyoutIconBounds;
  Box2 nonFlyoutIconBounds;
  List flyoutItems;
};

}  // namespace Korvane
