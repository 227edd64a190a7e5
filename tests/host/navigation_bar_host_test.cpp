// The host's side of a navigation bar whose menus stay open.
#include "zovhost/navigation_bar_host.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "korvane/navigation_bar.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"
#include "zovhost/toolbar_dress.h"

namespace {

using Korvane::NavigationBar;
using Korvane::Toolbar;
using Korvane::ToolbarItem;
using zovhost::BarMenuPlace;
using zovhost::NavigationBarHost;
using Menu = NavigationBarHost::Menu;

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;
constexpr int OWN_ITEM = 201;

class NavigationBarHostTest : public testing::Test {
 protected:
  NavigationBarHostTest() {
    bar.SetKorvane(&hub);
    bar.SetRenderer(&renderer);
    bar.SetLinkedToOrientor(false);
    bar.SetViewportSize(WIDTH, HEIGHT);
    bar.AddObserver(&host);
    bar.Create();
    bar.Draw();
  }
  ~NavigationBarHostTest() override {
    bar.RemoveObserver(&host);
    bar.Destroy();
  }

  const ToolbarItem& Find(int tag) {
    const ToolbarItem::List& items = bar.GetToolbar()->GetItems();
    int index = 0;
    while (index + 1 < items.GetCount() && items.GetAt(index).GetTag() != tag) ++index;
    return items.GetAt(index);
  }
  void Click(const Korvane::Vector2& place) {
    const int x = static_cast<int>(place.x);
    const int y = static_cast<int>(place.y);
    host.OnPress();
    bar.OnMouseMove(x, y);
    bar.OnLeftMouseDown(x, y);
    bar.OnLeftMouseUp(x, y);
  }

  RecordingRenderer renderer;
  MemoryHub hub;
  NavigationBar bar;
  std::vector<int> clicked;
  std::vector<Menu> opened;
  int populated = 0;
  std::vector<bool> moves;
  NavigationBarHost host{&bar,
                         {[this](int tag) { clicked.push_back(tag); },
                          [this](Menu menu, int, int, int) {
                            opened.push_back(menu);
                            return true;
                          },
                          [](ToolbarItem::List& items) {
                            items.Append(zovhost::MakeToolbarButton(OWN_ITEM, Korvane::TEXTURE_NONE, L""));
                          },
                          [this] { ++populated; }, [this](bool dragged) { moves.push_back(dragged); }}};
};

TEST_F(NavigationBarHostTest, the_items_of_the_host_are_on_the_bar_and_clicked_by_their_tags) {
  EXPECT_EQ(populated, 1);
  Click(Find(OWN_ITEM).GetBounds().center);
  Click(Find(NavigationBar::TAG_STORYBOARD).GetBounds().center);
  EXPECT_EQ(clicked, (std::vector<int>{OWN_ITEM, NavigationBar::TAG_STORYBOARD}));
}

TEST_F(NavigationBarHostTest, the_release_of_a_press_that_opened_a_flyout_clicks_nothing) {
  const Korvane::Vector2 arrow = Find(NavigationBar::TAG_FULL_NAVIGATION).GetFlyoutIconBounds().center;
  Click(arrow);
  EXPECT_EQ(opened, std::vector<Menu>{Menu::Flyout});
  EXPECT_TRUE(clicked.empty());
}

TEST_F(NavigationBarHostTest, the_next_press_on_the_button_clicks_though_the_release_was_elsewhere) {
  const ToolbarItem& button = Find(NavigationBar::TAG_FULL_NAVIGATION);
  const Korvane::Vector2 arrow = button.GetFlyoutIconBounds().center;
  host.OnPress();
  bar.OnLeftMouseDown(static_cast<int>(arrow.x), static_cast<int>(arrow.y));
  bar.OnLeftMouseUp(1, 1);
  Click(button.GetNonFlyoutIconBounds().center);
  EXPECT_EQ(clicked, std::vector<int>{NavigationBar::TAG_FULL_NAVIGATION});
}

TEST_F(NavigationBarHostTest, the_buttons_of_menus_open_them) {
  Click(Find(NavigationBar::TAG_MENU).GetBounds().center);
  const Korvane::Vector2 own = Find(OWN_ITEM).GetBounds().center;
  bar.OnRightMouseDown(static_cast<int>(own.x), static_cast<int>(own.y));
  EXPECT_EQ(opened, (std::vector<Menu>{Menu::Bar, Menu::Item}));
}

TEST_F(NavigationBarHostTest, more_controls_are_offered_while_there_is_no_room) {
  EXPECT_FALSE(host.HasMoreControls());
  bar.SetViewportSize(WIDTH, 120);
  bar.GetToolbar()->Refresh();
  EXPECT_TRUE(host.HasMoreControls());
  Click(Find(NavigationBar::TAG_MORE_CONTROLS).GetBounds().center);
  EXPECT_EQ(opened, std::vector<Menu>{Menu::MoreControls});
  bar.SetViewportSize(WIDTH, HEIGHT);
  bar.GetToolbar()->Refresh();
  EXPECT_FALSE(host.HasMoreControls());
}

TEST_F(NavigationBarHostTest, moves_tell_whether_they_were_drags) {
  bar.GetToolbar()->SetPosition(Toolbar::POSITION_LEFT);
  EXPECT_EQ(moves, std::vector<bool>{false});
}

TEST(BareNavigationBarHostTest, without_actions_nothing_is_opened_and_nothing_breaks) {
  NavigationBar bar;
  NavigationBarHost host(&bar, {});
  ToolbarItem::List items;
  host.OnItemClicked(5);
  host.OnItemsPopulated();
  host.OnPopulateApplicationItems(items);
  host.OnPositionChanged(true);
  EXPECT_FALSE(host.OnItemContextMenu(5, 1, 1));
  EXPECT_FALSE(host.OnItemFlyoutPressed(5, 1, 1));
  EXPECT_FALSE(host.OnBarMenuPressed(1, 1));
  EXPECT_EQ(host.OnMoreControlsPressed(1, 1), 0);
  EXPECT_EQ(items.GetCount(), 0);
}

// ---- where a menu opens ----

struct PlaceRow {
  Toolbar::Position edge;
  bool atRight;
  bool atBottom;
};

// The strip is 32 pixels thick, its item of 28 lies 4 pixels within; the gap to a menu is 4 as well.
TEST(BarMenuPlaceTest, lies_beside_the_strip_towards_the_middle_of_the_view) {
  for (const PlaceRow& row : {PlaceRow{Toolbar::POSITION_LEFT, false, false},
                              {Toolbar::POSITION_RIGHT, true, false},
                              {Toolbar::POSITION_TOP, false, false},
                              {Toolbar::POSITION_BOTTOM, false, true}}) {
    RecordingRenderer renderer;
    MemoryHub hub;
    Toolbar strip;
    strip.SetKorvane(&hub);
    strip.SetRenderer(&renderer);
    strip.SetViewportSize(WIDTH, HEIGHT);
    strip.SetPosition(row.edge);
    for (int tag = 1; tag <= 4; ++tag) {
      strip.GetItems().Append(zovhost::MakeToolbarButton(tag, Korvane::TEXTURE_NONE, L""));
    }
    strip.Create();
    strip.SetVisible(true);
    strip.Draw();
    const Korvane::Box2 bounds = strip.GetToolbarBounds();
    const Korvane::Box2 item = strip.GetItems().GetAt(0).GetBounds();
    const BarMenuPlace place = zovhost::FindBarMenuPlace(strip, WIDTH, HEIGHT, static_cast<int>(item.Max().x),
                                                         static_cast<int>(item.Min().y));
    EXPECT_EQ(place.atRight, row.atRight) << row.edge;
    EXPECT_EQ(place.atBottom, row.atBottom) << row.edge;
    const bool upright = row.edge == Toolbar::POSITION_LEFT || row.edge == Toolbar::POSITION_RIGHT;
    const double across = upright ? place.x : place.y;
    const bool atHighSide = row.edge == Toolbar::POSITION_RIGHT || row.edge == Toolbar::POSITION_TOP;
    const Korvane::Vector2 side = atHighSide ? bounds.Min() : bounds.Max();
    EXPECT_EQ(across, (upright ? side.x : side.y) + (atHighSide ? -4.0 : 4.0)) << row.edge;
    strip.Destroy();
  }
}

}  // namespace
