#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "commands/bar_places.h"
#include "korvane/navigation_bar.h"
#include "korvane/toolbar.h"
#include "korvane/toolbar_observer.h"
#include "zovhost/navigation_bar_host.h"

namespace zovview {

struct ViewCommand;
struct ViewTarget;
class ViewerViewManager;

/// The bars of a view: the navigation bar, with home, fit and projection among its items, and a toolbar of
/// the tools. Each item is a command.
class ViewBars {
 public:
  /// The menus that a bar asks for.
  enum class Menu : int { Bar, Discs, MoreOfBar, MoreOfTools, Device };
  using OpenMenu = std::function<void(Menu menu, const zovhost::BarMenuPlace& place)>;

  ViewBars(ViewerViewManager& manager, const ViewTarget& target);
  ~ViewBars();
  ViewBars(const ViewBars&) = delete;
  ViewBars& operator=(const ViewBars&) = delete;

  void SetOpenMenu(OpenMenu open) { openMenu = std::move(open); }
  /// What runs the commands of the items; null: they run at once.
  void SetRun(std::function<void(const ViewCommand&)> runCommand) { run = std::move(runCommand); }
  /// Pixels for one point of the display.
  void SetScale(double value);
  /// In the present language, which the renderer has the texts of.
  void RenewWords(Korvane::Renderer& renderer);

  /// When the view manager has been created. False without the pictures.
  bool Create(Korvane::Renderer& renderer);
  /// A press of the left button is about to come.
  void OnPress() { host.OnPress(); }
  /// A pixel of the viewport is on a bar that shows.
  bool IsOver(int x, int y) const;
  /// Brings the items up to date with what they stand for; before each drawing.
  void Update();
  /// Those of the items that have no room on the bar, in its order.
  std::vector<const ViewCommand*> GetMoreCommands(Menu menu) const;

  /// As they were wished for: a view without room for that has a bar elsewhere meanwhile.
  BarPlaces GetPlaces() const;
  void SetPlaces(const BarPlaces& places);
  /// The bars come, go and move at once. Off at first.
  void SetReducedMotion(bool reduced);
  /// Stands it in the middle of an edge.
  void MoveBar(Korvane::Toolbar::Position edge);
  bool IsBarAt(Korvane::Toolbar::Position edge) const;
  void SetToolsVisible(bool visible);
  /// The button that tells what a six-axis device moves; it does not show at first.
  void ShowDevice(bool shown);
  bool IsDeviceShown() const { return deviceShown; }
  bool AreToolsVisible() const { return wished.tools.visible; }
  Korvane::NavigationBar& GetBar() { return bar; }
  Korvane::Toolbar& GetTools() { return tools; }

 private:
  // What the toolbar of the tools tells.
  class ToolsHost : public Korvane::ToolbarObserver {
   public:
    ToolsHost(Korvane::Toolbar* subject, ViewBars& whose) : ToolbarObserver(subject), owner(whose) {}
    void OnItemClicked(const Korvane::ToolbarItem& item) override { owner.Click(item.GetTag()); }
    bool OnItemMouseDown(const Korvane::ToolbarItem& item) override;
    void OnItemMouseEnter(const Korvane::ToolbarItem& item) override { Redraw(item); }
    void OnItemMouseExit(const Korvane::ToolbarItem& item) override { Redraw(item); }
    bool OnItemFlyoutOpened(Korvane::ToolbarItem& item) override;
    bool OnItemContextMenu(const Korvane::ToolbarItem& item) override;
    void OnItemVisibilityChanged(const Korvane::ToolbarItem& item) override { Redraw(item); }
    void OnPositionChanged() override;
    void OnToolbarDragged() override;

   private:
    void Redraw(const Korvane::ToolbarItem& item);

    ViewBars& owner;
  };

  void Click(int tag);
  bool Open(Menu menu, Korvane::Toolbar& strip, int x, int y) const;
  static Menu FindMenu(zovhost::NavigationBarHost::Menu menu, int tag);
  int FindDeviceTag();
  void ShowDeviceMode();
  static void AddHostItems(Korvane::ToolbarItem::List& items);
  void AddTools();
  static void AppendTools(Korvane::ToolbarItem::List& items);
  void NoteDrag(Korvane::Toolbar& strip);
  void Stand(Korvane::Toolbar& strip, Korvane::Toolbar::Position edge, double offset);
  void MakeRoom(const Korvane::Toolbar& moved, Korvane::Toolbar& other);
  BarPlace& FindPlace(const Korvane::Toolbar& strip) {
    return &strip == &tools ? wished.tools : wished.navigation;
  }

  ViewerViewManager& manager;
  const ViewTarget& target;
  OpenMenu openMenu;
  std::function<void(const ViewCommand&)> run;
  Korvane::NavigationBar bar;
  Korvane::Toolbar tools;
  zovhost::NavigationBarHost host;
  ToolsHost toolsHost;
  double scale = 1.0;
  bool deviceShown = false;
  BarPlaces wished;
  bool reducedMotion = false;
};

/// The command of an item by its tag; null for an item that has none.
const ViewCommand* FindBarCommand(int tag);

}  // namespace zovview
