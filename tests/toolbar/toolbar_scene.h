#pragma once

#include <functional>
#include <string>

#include "korvane/toolbar.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"
#include "toolbar/toolbar_parts.h"

/// Writes down what it is told, and then does what the test wants.
class JournalToolbarObserver : public Korvane::ToolbarObserver {
 public:
  JournalToolbarObserver(Korvane::Toolbar* strip, Journal& theJournal, std::string observerName = "")
      : ToolbarObserver(strip), name(std::move(observerName)), journal(theJournal) {}

  using Item = Korvane::ToolbarItem;
  void OnItemClicked(const Item& item) override { Hear("clicked", &item); }
  bool OnItemMouseDown(const Item& item) override { return Hear("pressed", &item); }
  void OnItemMouseEnter(const Item& item) override { Hear("entered", &item); }
  void OnItemMouseExit(const Item& item) override { Hear("left", &item); }
  bool OnItemFlyoutOpened(Item& item) override { return Hear("flyout", &item); }
  bool OnItemContextMenu(const Item& item) override { return Hear("menu", &item); }
  void OnItemVisibilityChanged(const Item& item) override {
    Hear(item.IsExcluded() ? "excluded" : "included", &item);
  }
  void OnPositionChanged() override { Hear("position", nullptr); }
  void OnToolbarDragged() override { Hear("dragged", nullptr); }

  std::string name;
  Journal& journal;
  std::function<void(const std::string& what)> onHear;
  bool answer = true;

 private:
  bool Hear(const std::string& what, const Item* item) {
    const std::string line =
        name + what + (item != nullptr ? " " + std::to_string(item->GetTag()) : std::string());
    journal.Add(line);
    if (onHear) onHear(line);
    return answer;
  }
};

class OpenToolbar : public Korvane::Toolbar {
 public:
  Korvane::ToolbarParts& open = GetParts();
};

inline Korvane::ToolbarItem MakeItem(int tag, int type, int width, int height, int flyoutSize = 0) {
  Korvane::ToolbarItem item;
  item.SetTag(tag);
  item.SetType(static_cast<Korvane::ToolbarItem::Type>(type));
  item.SetSize(width, height);
  item.SetFlyoutIconSize(flyoutSize);
  item.SetIcon(static_cast<Korvane::TextureID>(100 + tag), 24, 24);
  item.SetTooltip(L"tip " + std::to_wstring(tag));
  return item;
}

/// A strip at the right edge of a view of 800 x 600: grip 1, button 2, flyout button 3 with the items 31 to
/// 33, separator 4, plain item 5, more controls 6. It is 36 wide and 12 + 28 + 38 + 4 + 28 + 5 + 8 = 123
/// high, from (764, 238.5) to (800, 361.5).
struct ToolbarScene {
  ToolbarScene() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(&toolbar, journal) {
    toolbar.SetKorvane(&hub);
    toolbar.SetRenderer(&renderer);
    toolbar.AddObserver(&observer);
  }

  void Fill() {
    Korvane::ToolbarItem flyout = MakeItem(3, 1, 28, 28, 10);
    for (const int tag : {31, 32, 33}) flyout.GetFlyoutItems().Append(MakeItem(tag, 0, 28, 28));
    Korvane::ToolbarItem::List& items = toolbar.GetItems();
    items.Append(MakeItem(1, 5, 24, 12));
    items.Append(MakeItem(2, 0, 28, 28));
    items.Append(flyout);
    items.Append(MakeItem(4, 7, 4, 4));
    items.Append(MakeItem(5, 2, 28, 28));
    items.Append(MakeItem(6, 6, 12, 12));
  }
  void Start(int width = 800, int height = 600) {
    Fill();
    toolbar.Create();
    toolbar.SetVisible(true);
    toolbar.SetViewportSize(width, height);
    toolbar.Draw();
    Forget();
  }
  void Forget() {
    journal.lines.clear();
    renderer.ClearCalls();
    hub.requested = 0;
  }
  /// Frames until nothing moves any more.
  void Settle() {
    for (int i = 0; i < 60; ++i) {
      platform.Advance(20);
      toolbar.Draw();
    }
  }
  Korvane::ToolbarItem& Item(int tag) {
    Korvane::ToolbarItem::List& items = toolbar.GetItems();
    int index = -1;
    for (int i = 0; i < items.GetCount(); ++i) {
      if (items.GetAt(i).GetTag() == tag) index = i;
    }
    return items.GetAt(index);
  }
  Korvane::Box2 Bounds() const { return toolbar.GetToolbarBounds(); }
  void Move(const Korvane::Vector2& point) {
    toolbar.OnMouseMove(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  bool Press(const Korvane::Vector2& point) {
    return toolbar.OnLeftMouseDown(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  bool Release(const Korvane::Vector2& point) {
    return toolbar.OnLeftMouseUp(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  Korvane::Vector2 Middle(int tag) { return Item(tag).GetNonFlyoutIconBounds().center; }
  Korvane::Vector2 Arrow(int tag) { return Item(tag).GetFlyoutIconBounds().center; }

  ManualPlatform platform;
  Journal journal;
  MemoryHub hub;
  RecordingRenderer renderer;
  OpenToolbar toolbar;
  JournalToolbarObserver observer;
};
