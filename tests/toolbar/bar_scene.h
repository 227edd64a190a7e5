#pragma once

#include <functional>
#include <string>

#include "korvane/navigation_bar.h"
#include "korvane/navigation_bar_observer.h"
#include "toolbar/navigation_bar_parts.h"
#include "toolbar/toolbar_scene.h"

/// Writes down what it is told, answers as the test says, and then does what the test wants.
class JournalBarObserver : public Korvane::NavigationBarObserver {
 public:
  JournalBarObserver(Korvane::NavigationBar* bar, Journal& theJournal, std::string observerName = "")
      : NavigationBarObserver(bar), name(std::move(observerName)), journal(theJournal) {}

  void OnItemClicked(int tag) override { Hear("clicked", {tag}); }
  bool OnItemContextMenu(int tag, int x, int y) override { return Hear("context menu", {tag, x, y}); }
  bool OnItemFlyoutPressed(int tag, int x, int y) override { return Hear("flyout", {tag, x, y}); }
  bool OnBarMenuPressed(int x, int y) override { return Hear("bar menu", {x, y}); }
  void OnItemsPopulated() override { Hear("populated", {}); }
  int OnMoreControlsPressed(int x, int y) override {
    Hear("more controls", {x, y});
    return chosen;
  }
  void OnMoreControlsVisibilityChanged(bool visible) override { Hear("more controls show", {int{visible}}); }
  void OnPopulateApplicationItems(Korvane::ToolbarItem::List& items) override {
    Hear("populate", {items.GetCount()});
    for (const int tag : added) items.Append(MakeItem(tag, 0, 28, 28));
  }
  void OnPositionChanged(bool dragged) override { Hear("position", {int{dragged}}); }

  std::string name;
  Journal& journal;
  std::vector<int> added;  // tags of the host's items
  bool answer = true;
  int chosen = 0;
  std::function<void(const std::string& what)> onHear;

 private:
  bool Hear(const std::string& what, std::initializer_list<int> numbers) {
    std::string line = name + what;
    for (const int number : numbers) line += " " + std::to_string(number);
    journal.Add(line);
    if (onHear) onHear(what);
    return answer;
  }
};

class OpenNavigationBar : public Korvane::NavigationBar {
 public:
  Korvane::NavigationBarParts& open = GetParts();
};

/// A bar at the right edge of a view of 800 x 600, without items of the host.
struct BarScene {
  BarScene() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(&bar, journal) {
    bar.SetKorvane(&hub);
    bar.SetRenderer(&renderer);
    bar.AddObserver(&observer);
  }

  void Start(int height = 600) {
    bar.SetLinkedToOrientor(false);
    bar.Create();
    bar.GetToolbar()->SetWantAnimation(false);
    bar.SetViewportSize(800, height);
    bar.Draw();
    Forget();
  }
  void Forget() {
    journal.lines.clear();
    renderer.ClearCalls();
    hub.requested = 0;
  }
  Korvane::ToolbarItem& Item(int tag) {
    Korvane::ToolbarItem::List& items = bar.GetToolbar()->GetItems();
    int index = -1;
    for (int i = 0; i < items.GetCount(); ++i) {
      if (items.GetAt(i).GetTag() == tag) index = i;
    }
    return items.GetAt(index);
  }
  std::string Tags() {
    std::string tags;
    Korvane::ToolbarItem::List& items = bar.GetToolbar()->GetItems();
    for (int i = 0; i < items.GetCount(); ++i) tags += std::to_string(items.GetAt(i).GetTag()) + " ";
    return tags;
  }
  void Press(const Korvane::Vector2& point) {
    bar.OnLeftMouseDown(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  void Release(const Korvane::Vector2& point) {
    bar.OnLeftMouseUp(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  bool RightPress(const Korvane::Vector2& point) {
    return bar.OnRightMouseDown(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  Korvane::Vector2 Middle(int tag) { return Item(tag).GetNonFlyoutIconBounds().center; }

  ManualPlatform platform;
  Journal journal;
  MemoryHub hub;
  RecordingRenderer renderer;
  OpenNavigationBar bar;
  JournalBarObserver observer;
};
