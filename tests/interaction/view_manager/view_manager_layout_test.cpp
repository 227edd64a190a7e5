// The cube is 120 pixels wide in all of these, 168 x 171 with its compass.
#include <cmath>
#include <limits>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

using Location = OrientorParameters::Location;
constexpr Location TOP_RIGHT = OrientorParameters::LOCATION_TOP_RIGHT;
constexpr Location BOTTOM_RIGHT = OrientorParameters::LOCATION_BOTTOM_RIGHT;
constexpr Location TOP_LEFT = OrientorParameters::LOCATION_TOP_LEFT;
constexpr Location BOTTOM_LEFT = OrientorParameters::LOCATION_BOTTOM_LEFT;
constexpr Location LOCATIONS[] = {TOP_RIGHT, BOTTOM_RIGHT, TOP_LEFT, BOTTOM_LEFT};

class LayoutTest : public ViewManagerTest {
 protected:
  LayoutTest() { Start(); }

  OrientorParameters& Cube() { return cube.GetParameters(); }
  void ShowRibbon(int width, int height) {
    manager.SetRibbonSize(width, height);
    manager.SetRibbonVisible(true);
  }
  static void SetSize(FakeToolbar& toolbar, double width, double height) {
    toolbar.bounds.extentX.SetValue(width / 2.0);
    toolbar.bounds.extentY.SetValue(height / 2.0);
  }
  // A visible toolbar of 200 x 40 pixels in the top right corner.
  void ShowCornerToolbar(FakeToolbar& toolbar, double width = 200, double height = 40) {
    toolbar.visible = true;
    toolbar.position = Toolbar::POSITION_TOP_RIGHT;
    SetSize(toolbar, width, height);
  }
};

TEST_F(LayoutTest, tells_the_bar_what_else_shows) {
  disc.Open(DiscType::MiniViewObject);
  panel.visible = true;
  Cube().visible = false;
  Forget();
  manager.Refresh();
  EXPECT_EQ(journal.lines, (Lines{"bar.SetOrientorIsVisible(false)", "bar.SetActiveHelmDisc(4)",
                                  "bar.SetItemSelected(13, true)", "bar.SetViewportSize(800, 600)"}));
  manager.SetOrientor(nullptr);
  manager.SetStoryboard(nullptr);
  manager.SetHelmDisc(nullptr);
  Forget();
  manager.Refresh();
  EXPECT_EQ(journal.lines, (Lines{"bar.SetViewportSize(800, 600)"}));
}

TEST_F(LayoutTest, hands_the_size_of_the_viewport_on) {
  manager.SetViewportSize(1000, 500);
  EXPECT_EQ(hub.GetApplicationParameters().viewport_width, 1000);
  EXPECT_EQ(hub.GetApplicationParameters().viewport_height, 500);
  EXPECT_EQ(first.viewportWidth, 1000);
  EXPECT_EQ(second.viewportHeight, 500);
  EXPECT_EQ(cube.viewportWidth, 1000);
  EXPECT_EQ(cube.viewportHeight, 500);
  EXPECT_EQ(disc.menu.viewportWidth, 1000);
  EXPECT_EQ(disc.welcome->viewportHeight, 500);
  EXPECT_EQ(panel.viewportWidth, 1000);
  EXPECT_EQ(panel.viewportHeight, 500);
  Forget();
  manager.SetViewportSize(1000, 500);
  EXPECT_TRUE(journal.lines.empty());
  manager.SetViewportSize(1000, 501);
  EXPECT_FALSE(journal.lines.empty());
}

// What a step reads must have been laid out by a step before: everything is told within one Refresh.
TEST_F(LayoutTest, lays_out_in_the_order_in_which_things_depend_on_each_other) {
  class WatchingBar : public FakeBar {
   public:
    using FakeBar::FakeBar;
    bool SetItemSelected(int tag, bool selected) override {
      if (watch) log.push_back("items: toolbar " + std::to_string(toolbarOf->viewportWidth));
      return FakeBar::SetItemSelected(tag, selected);
    }
    void SetViewportSize(int width, int height) override {
      if (watch) {
        log.push_back("bar: toolbar " + std::to_string(toolbarOf->viewportWidth) + " cube " +
                      std::to_string(cubeOf->viewportWidth) + " drop " +
                      std::to_string(cubeOf->GetParameters().screen_offset_y) + " offset " +
                      std::to_string(static_cast<int>(strip->cornerOffset.y)) + " ribbon " +
                      std::to_string(strip->ribbonWidth) + " disc " +
                      std::to_string(discOf->menu.viewportWidth) + " panel " +
                      std::to_string(panelOf->viewportWidth));
      }
      FakeBar::SetViewportSize(width, height);
    }
    bool watch = false;
    Lines log;
    FakeToolbar* toolbarOf = nullptr;
    FakeOrientor* cubeOf = nullptr;
    FakeDisc* discOf = nullptr;
    FakeStoryboard* panelOf = nullptr;
  } watching(journal);
  watching.toolbarOf = &second;
  watching.cubeOf = &cube;
  watching.discOf = &disc;
  watching.panelOf = &panel;
  manager.SetNavigationBar(&watching);
  ShowCornerToolbar(second);
  manager.SetRibbonSize(100, 30);
  manager.SetRibbonVisible(true);
  watching.watch = true;
  manager.SetViewportSize(1000, 500);
  // The toolbars and the cube are new before the bar is; disc and panel come after it. The corner toolbar
  // of 40 pixels moves the cube down, and the bar hangs below that: 120 + 40.
  EXPECT_EQ(watching.log, (Lines{"items: toolbar 800",
                                 "bar: toolbar 1000 cube 1000 drop -40 offset 160 ribbon 100 disc 800 "
                                 "panel 800"}));
}

// ---- the cube ----

struct DropRow {
  Location location;
  bool ribbon;
  int ribbonWidth;
  bool corner;
  double cornerWidth;
  bool compass;
  int offset;
};

// In 800 pixels, the ribbon 30 high and the corner toolbar 40: a cube of 120 pixels (168 with a compass)
// stands free beside a ribbon of up to 680 (632), and so beside a toolbar for a cube on the left.
TEST_F(LayoutTest, moves_the_cube_out_of_the_way) {
  const DropRow rows[] = {
      {TOP_RIGHT, false, 700, false, 0, false, 0},    {TOP_RIGHT, false, 700, true, 200, false, -40},
      {TOP_RIGHT, true, 680, true, 200, false, -40},  {TOP_RIGHT, true, 681, true, 200, false, -30},
      {TOP_RIGHT, true, 681, false, 0, false, -30},   {TOP_RIGHT, true, 680, false, 0, false, 0},
      {TOP_RIGHT, true, 632, false, 0, true, 0},      {TOP_RIGHT, true, 633, false, 0, true, -30},
      {TOP_LEFT, false, 700, false, 0, false, 0},     {TOP_LEFT, true, 10, false, 0, false, -30},
      {TOP_LEFT, true, 10, true, 700, false, -30},    {TOP_LEFT, false, 10, true, 680, false, 0},
      {TOP_LEFT, false, 10, true, 681, false, -40},   {TOP_LEFT, false, 10, true, 633, true, -40},
      {BOTTOM_RIGHT, true, 700, true, 700, false, 0}, {BOTTOM_LEFT, true, 700, true, 700, false, 0},
  };
  for (const DropRow& row : rows) {
    Cube().screen_location = row.location;
    Cube().draw_compass = row.compass;
    manager.SetRibbonSize(row.ribbonWidth, 30);
    manager.SetRibbonVisible(row.ribbon);
    ShowCornerToolbar(second, row.cornerWidth, 40);
    second.visible = row.corner;
    Cube().screen_offset_y = 99;
    manager.Refresh();
    EXPECT_EQ(Cube().screen_offset_y, row.offset) << "row " << &row - rows;
  }
}

TEST_F(LayoutTest, takes_the_last_visible_toolbar_of_the_corner) {
  ShowCornerToolbar(first, 200, 70);
  ShowCornerToolbar(second, 200, 40);
  manager.Refresh();
  EXPECT_EQ(Cube().screen_offset_y, -40);
  second.position = Toolbar::POSITION_TOP_LEFT;
  manager.Refresh();
  EXPECT_EQ(Cube().screen_offset_y, -70);
  first.visible = false;
  manager.Refresh();
  EXPECT_EQ(Cube().screen_offset_y, 0);
}

TEST_F(LayoutTest, cuts_the_size_of_the_corner_toolbar_to_whole_pixels) {
  ShowCornerToolbar(second, 200, 40.9);
  manager.Refresh();
  EXPECT_EQ(Cube().screen_offset_y, -40);
}

// ---- the bar ----

struct LinkRow {
  Location location;
  int drop;
  bool ribbon;
  double barWidth;
  Toolbar::Position position;
  double offset;
  int limit;
};

// In 800 x 600 with a ribbon of 700 x 30, which leaves 100 pixels; room = 600 - 120 - 2 = 478.
TEST_F(LayoutTest, hangs_a_linked_bar_on_the_cube) {
  const LinkRow rows[] = {
      {TOP_RIGHT, -40, false, 50, Toolbar::POSITION_TOP_RIGHT, 160, 438},
      {TOP_RIGHT, -40, true, 150, Toolbar::POSITION_TOP_RIGHT, 160, 438},
      {BOTTOM_RIGHT, 7, false, 150, Toolbar::POSITION_BOTTOM_RIGHT, 127, 478},
      {BOTTOM_RIGHT, 7, true, 100, Toolbar::POSITION_BOTTOM_RIGHT, 127, 478},
      {BOTTOM_RIGHT, 7, true, 101, Toolbar::POSITION_BOTTOM_RIGHT, 127, 448},
      {TOP_LEFT, -40, false, 50, Toolbar::POSITION_TOP_LEFT, 160, 438},
      {TOP_LEFT, -40, true, 150, Toolbar::POSITION_TOP_LEFT, 160, 438},
      {BOTTOM_LEFT, 7, false, 150, Toolbar::POSITION_BOTTOM_LEFT, 127, 478},
      {BOTTOM_LEFT, 7, true, 50, Toolbar::POSITION_BOTTOM_LEFT, 127, 448},
  };
  for (const LinkRow& row : rows) {
    Cube().screen_location = row.location;
    ShowRibbon(700, 30);
    manager.SetRibbonVisible(row.ribbon);
    Cube().screen_offset_y = row.drop;
    SetSize(*bar.strip, row.barWidth, 300);
    bar.strip->position = Toolbar::POSITION_LEFT;
    bar.strip->cornerOffset = Vector2(9, 9);
    manager.LinkNavBarToOrientor();
    const auto index = &row - rows;
    EXPECT_EQ(bar.strip->position, row.position) << index;
    EXPECT_EQ(bar.strip->cornerOffset, Vector2(0.0, row.offset)) << index;
    EXPECT_EQ(bar.strip->sizeLimitWidth, 800) << index;
    EXPECT_EQ(bar.strip->sizeLimitHeight, row.limit) << index;
  }
}

TEST_F(LayoutTest, leaves_a_bar_at_the_bottom_no_less_than_no_room) {
  for (const Location location : {BOTTOM_RIGHT, BOTTOM_LEFT}) {
    Cube().screen_location = location;
    manager.SetViewportSize(800, 130);  // room 8, ribbon 30
    ShowRibbon(700, 30);
    SetSize(*bar.strip, 150, 300);
    manager.LinkNavBarToOrientor();
    EXPECT_EQ(bar.strip->sizeLimitHeight, 0);
  }
  Cube().screen_location = TOP_RIGHT;
  Cube().screen_offset_y = -30;
  manager.LinkNavBarToOrientor();
  EXPECT_EQ(bar.strip->sizeLimitHeight, -22);  // at the top the limit is as it comes
}

TEST_F(LayoutTest, links_nothing_without_a_cube_a_toolbar_or_the_link) {
  const auto expectUntouched = [this] {
    if (bar.strip != nullptr) bar.strip->position = Toolbar::POSITION_LEFT;
    manager.LinkNavBarToOrientor();
    EXPECT_EQ(bar.strip != nullptr ? bar.strip->position : Toolbar::POSITION_LEFT, Toolbar::POSITION_LEFT);
  };
  bar.location = NavigationBar::LOCATION_TOP;
  expectUntouched();
  bar.location = NavigationBar::LOCATION_LINKED;
  Cube().screen_location = static_cast<Location>(77);
  expectUntouched();
  Cube().screen_location = static_cast<Location>(-1);
  expectUntouched();
  Cube().screen_location = TOP_RIGHT;
  manager.SetOrientor(nullptr);
  expectUntouched();
  manager.SetOrientor(&cube);
  bar.LoseToolbar();
  expectUntouched();
  manager.SetNavigationBar(nullptr);
  manager.LinkNavBarToOrientor();
}

// A host may say that its bar is not linked, and still have it placed beside the cube.
TEST_F(LayoutTest, links_a_bar_by_its_own_location) {
  class Denying : public OpenViewManager {
   public:
    bool IsNavigationBarLinkedToOrientor() const override { return false; }
  } denying;
  bar.location = NavigationBar::LOCATION_LINKED;
  bar.strip->position = Toolbar::POSITION_LEFT;
  denying.SetNavigationBar(&bar);
  denying.SetOrientor(&cube);
  denying.LinkNavBarToOrientor();
  EXPECT_EQ(bar.strip->position, Toolbar::POSITION_TOP_RIGHT);
}

TEST_F(LayoutTest, limits_a_bar_on_an_edge_by_the_viewport) {
  bar.location = NavigationBar::LOCATION_LEFT;
  bar.strip->position = Toolbar::POSITION_LEFT;
  manager.Refresh();
  EXPECT_EQ(bar.strip->sizeLimitWidth, 800);
  EXPECT_EQ(bar.strip->sizeLimitHeight, 600);
  EXPECT_EQ(bar.strip->position, Toolbar::POSITION_LEFT);
  bar.location = NavigationBar::LOCATION_LINKED;
  manager.SetOrientor(nullptr);
  bar.strip->sizeLimitHeight = 1;
  manager.Refresh();
  EXPECT_EQ(bar.strip->sizeLimitHeight, 600);
  EXPECT_EQ(bar.strip->position, Toolbar::POSITION_LEFT);
  manager.SetOrientor(&cube);
  manager.Refresh();
  EXPECT_EQ(bar.strip->position, Toolbar::POSITION_TOP_RIGHT);
}

TEST_F(LayoutTest, tells_the_bar_about_the_ribbon_and_the_cube) {
  Cube().screen_location = BOTTOM_RIGHT;
  ShowRibbon(300, 30);
  EXPECT_EQ(bar.strip->ribbonWidth, 300);
  EXPECT_EQ(bar.strip->ribbonHeight, 30);
  EXPECT_EQ(bar.strip->orientorLocation, BOTTOM_RIGHT);
  EXPECT_EQ(bar.strip->orientorBounds.center, Vector2(740, 60));
  manager.SetRibbonVisible(false);
  EXPECT_EQ(bar.strip->ribbonWidth, 0);
  EXPECT_EQ(bar.strip->ribbonHeight, 0);
}

// ---- the room of the cube ----

TEST_F(LayoutTest, measures_the_room_of_the_cube) {
  int width = -1;
  int height = -1;
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(width, 120);
  EXPECT_EQ(height, 120);
  bar.location = NavigationBar::LOCATION_BOTTOM;
  bar.strip->position = Toolbar::POSITION_BOTTOM;
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(width, 120);
  EXPECT_EQ(height, 130);
  Cube().draw_compass = true;
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(width, 168);
  EXPECT_EQ(height, 181);
  bar.LoseToolbar();
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(height, 171);
  Cube().visible = false;
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(width, 0);
  EXPECT_EQ(height, 0);
  manager.SetOrientor(nullptr);
  width = 5;
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(width, 0);
}

struct BoundsRow {
  Location location;
  bool ribbon;
  int ribbonWidth;
  double x, y;
};

// A compass makes the cube 168 x 171, halves of 84 and, in whole pixels, 85; the ribbon is 30 high.
TEST_F(LayoutTest, places_the_room_of_the_cube) {
  const BoundsRow rows[] = {
      {TOP_RIGHT, false, 700, 716, 515},  {TOP_RIGHT, true, 632, 716, 515}, {TOP_RIGHT, true, 633, 716, 485},
      {BOTTOM_RIGHT, true, 700, 716, 85}, {TOP_LEFT, false, 700, 84, 515},  {TOP_LEFT, true, 1, 84, 485},
      {BOTTOM_LEFT, true, 700, 84, 85},
  };
  Cube().draw_compass = true;
  for (const BoundsRow& row : rows) {
    Cube().screen_location = row.location;
    ShowRibbon(row.ribbonWidth, 30);
    manager.SetRibbonVisible(row.ribbon);
    const Box2 box = manager.GetOrientorBounds();
    EXPECT_EQ(box.center, Vector2(row.x, row.y)) << "row " << &row - rows;
    EXPECT_EQ(box.halfExtent, Vector2(84, 85)) << "row " << &row - rows;
  }
}

TEST_F(LayoutTest, gives_a_cube_that_does_not_show_no_room_in_its_corner) {
  Cube().visible = false;
  EXPECT_EQ(manager.GetOrientorBounds().center, Vector2(800, 600));
  EXPECT_EQ(manager.GetOrientorBounds().halfExtent, Vector2(0, 0));
}

// ---- the welcome screen ----

struct WelcomeRow {
  Location location;
  bool panelOpen, ucs, compass;
  int y;
};

// 120 x 0.86 = 103.2, up to 104, + 50; 120 x 1.4 = 168, + 50; 120 x 1.5 = 180.
TEST_F(LayoutTest, puts_the_welcome_screen_above_what_is_in_its_corner) {
  const WelcomeRow rows[] = {
      {BOTTOM_LEFT, false, false, false, 120}, {BOTTOM_LEFT, false, false, true, 180},
      {BOTTOM_LEFT, false, true, false, 154},  {BOTTOM_LEFT, false, true, true, 218},
      {BOTTOM_LEFT, true, true, true, 300},    {TOP_LEFT, false, true, true, 0},
      {TOP_RIGHT, false, false, false, 0},     {BOTTOM_RIGHT, false, false, false, 0},
      {TOP_RIGHT, true, false, false, 300},
  };
  for (const WelcomeRow& row : rows) {
    Cube().screen_location = row.location;
    panel.visible = row.panelOpen;
    Cube().draw_ucs_menu = row.ucs;
    Cube().draw_compass = row.compass;
    disc.welcomeX = 5;
    manager.Refresh();
    EXPECT_EQ(disc.welcomeX, 0) << "row " << &row - rows;
    EXPECT_EQ(disc.welcomeY, row.y) << "row " << &row - rows;
  }
  manager.SetOrientor(nullptr);
  panel.visible = false;
  manager.Refresh();
  EXPECT_EQ(disc.welcomeY, 0);
}

// ---- the storyboard ----

struct PanelRow {
  Location location;
  bool cubeVisible, compass, barAtBottom, barVisible;
  int x, y, width;
};

// With a compass the cube takes 120 x 1.3 = 156 pixels here; the bar is 36.5 pixels high.
TEST_F(LayoutTest, gives_the_storyboard_the_room_beside_the_cube_and_above_the_bar) {
  const PanelRow rows[] = {
      {TOP_RIGHT, true, false, false, true, 0, 0, 800},
      {TOP_LEFT, true, true, false, true, 0, 0, 800},
      {BOTTOM_LEFT, true, false, false, true, 120, 0, 800},
      {BOTTOM_LEFT, true, true, false, true, 156, 0, 800},
      {BOTTOM_RIGHT, true, false, false, true, 0, 0, 680},
      {BOTTOM_RIGHT, true, true, false, true, 0, 0, 644},
      {BOTTOM_RIGHT, false, true, false, true, 0, 0, 800},
      {TOP_RIGHT, true, false, true, true, 0, 36, 800},
      {TOP_RIGHT, true, false, true, false, 0, 0, 800},
  };
  bar.location = NavigationBar::LOCATION_BOTTOM;
  SetSize(*bar.strip, 400, 36.5);
  for (const PanelRow& row : rows) {
    Cube().screen_location = row.location;
    Cube().visible = row.cubeVisible;
    Cube().draw_compass = row.compass;
    bar.strip->position = row.barAtBottom ? Toolbar::POSITION_BOTTOM : Toolbar::POSITION_LEFT;
    bar.visible = row.barVisible;
    manager.Refresh();
    const auto index = &row - rows;
    EXPECT_EQ(panel.GetLeft(), row.x) << index;
    EXPECT_EQ(panel.GetBottom(), row.y) << index;
    EXPECT_EQ(panel.viewportWidth, row.width) << index;
    EXPECT_EQ(panel.viewportHeight, 600) << index;
  }
}

TEST_F(LayoutTest, rounds_the_room_that_the_cube_takes_from_the_storyboard_up) {
  Cube().normal_screen_size = 121;  // 157.3 with a compass
  Cube().draw_compass = true;
  Cube().screen_location = BOTTOM_LEFT;
  manager.Refresh();
  EXPECT_EQ(panel.GetLeft(), 158);
  Cube().screen_location = BOTTOM_RIGHT;
  manager.Refresh();
  EXPECT_EQ(panel.viewportWidth, 642);
}

// ---- what shows ----

TEST_F(LayoutTest, shows_and_hides_the_cube) {
  EXPECT_TRUE(manager.IsOrientorVisible());
  EXPECT_FALSE(manager.SetOrientorVisible(true));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(manager.SetOrientorVisible(false));
  EXPECT_EQ(journal.lines.front(), "bar.SetOrientorIsVisible(false)");
  EXPECT_FALSE(manager.IsOrientorVisible());
  EXPECT_FALSE(Cube().visible);
  manager.SetOrientor(nullptr);
  EXPECT_FALSE(manager.SetOrientorVisible(true));
  EXPECT_FALSE(manager.IsOrientorVisible());
}

TEST_F(LayoutTest, shows_and_hides_the_bar) {
  EXPECT_TRUE(manager.IsNavigationBarVisible());
  EXPECT_FALSE(manager.SetNavigationBarVisible(true));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(manager.SetNavigationBarVisible(false));
  EXPECT_FALSE(journal.lines.empty());
  EXPECT_FALSE(bar.IsVisible());
  EXPECT_FALSE(manager.IsNavigationBarVisible());
  manager.SetNavigationBar(nullptr);
  EXPECT_FALSE(manager.SetNavigationBarVisible(true));
  EXPECT_FALSE(manager.IsNavigationBarVisible());
}

TEST_F(LayoutTest, links_and_unlinks_the_bar) {
  EXPECT_TRUE(manager.IsNavigationBarLinkedToOrientor());
  EXPECT_FALSE(manager.SetNavigationBarLinkedToOrientor(true));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(manager.SetNavigationBarLinkedToOrientor(false));
  EXPECT_EQ(journal.lines.front(), "bar.SetLinkedToOrientor(false)");
  EXPECT_GT(journal.lines.size(), 1U);
  EXPECT_FALSE(manager.IsNavigationBarLinkedToOrientor());
  EXPECT_TRUE(manager.SetNavigationBarLinkedToOrientor(true));
  EXPECT_TRUE(manager.IsNavigationBarLinkedToOrientor());
  manager.SetNavigationBar(nullptr);
  EXPECT_FALSE(manager.SetNavigationBarLinkedToOrientor(false));
  EXPECT_FALSE(manager.IsNavigationBarLinkedToOrientor());
}

TEST_F(LayoutTest, keeps_the_ribbon) {
  EXPECT_FALSE(manager.IsRibbonVisible());
  EXPECT_FALSE(manager.SetRibbonVisible(false));
  EXPECT_FALSE(manager.SetRibbonSize(0, 0));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(manager.SetRibbonVisible(true));
  EXPECT_FALSE(journal.lines.empty());
  Forget();
  EXPECT_TRUE(manager.SetRibbonSize(10, 20));
  EXPECT_FALSE(journal.lines.empty());
  EXPECT_EQ(manager.GetRibbonWidth(), 10);
  EXPECT_EQ(manager.GetRibbonHeight(), 20);
  EXPECT_FALSE(manager.SetRibbonSize(10, 20));
  EXPECT_TRUE(manager.SetRibbonSize(10, 21));
  EXPECT_TRUE(manager.IsRibbonVisible());
}

TEST_F(LayoutTest, refreshes_when_the_screen_is_cleaned) {
  manager.SetCleanScreen(false);
  EXPECT_TRUE(journal.lines.empty());
  manager.SetCleanScreen(true);
  EXPECT_FALSE(journal.lines.empty());
  Forget();
  manager.SetCleanScreen(true);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(LayoutTest, refreshes_through_the_virtual_operation) {
  class Counting : public OpenViewManager {
   public:
    void Refresh() override { ++refreshed; }
    void LinkNavBarToOrientor() override { ++linked; }
    using ViewManager::Refresh;
    int refreshed = 0;
    int linked = 0;
  } counting;
  counting.SetNavigationBar(&bar);
  counting.SetOrientor(&cube);
  counting.SetViewportSize(10, 10);
  counting.SetRibbonVisible(true);
  counting.SetCleanScreen(true);
  EXPECT_EQ(counting.refreshed, 3);
  counting.ViewManager::Refresh();
  EXPECT_EQ(counting.linked, 1);
}

TEST_F(LayoutTest, lays_out_any_sizes_without_harm) {
  Random random;
  static constexpr int SIZES[] = {
      0, 1, -1, 100, 65535, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
  static constexpr float FACTORS[] = {0.0F,
                                      1.4F,
                                      -3.0F,
                                      1e30F,
                                      std::numeric_limits<float>::infinity(),
                                      std::numeric_limits<float>::quiet_NaN()};
  static constexpr double EXTENTS[] = {0.0, 20.0, -5.0, 1e300, std::numeric_limits<double>::quiet_NaN()};
  for (int i = 0; i < 20000; ++i) {
    Cube().screen_location = static_cast<Location>(random.Integer(-1, 5));
    Cube().draw_compass = random.Coin();
    Cube().draw_ucs_menu = random.Coin();
    Cube().normal_screen_size = random.Integer(-10, 3000);
    Cube().overlay_ucs_offset_y = random.OneOf(FACTORS);
    Cube().view_scale_compass = random.OneOf(FACTORS);
    ShowCornerToolbar(second);
    SetSize(second, random.OneOf(EXTENTS), random.OneOf(EXTENTS));
    SetSize(*bar.strip, random.OneOf(EXTENTS), random.OneOf(EXTENTS));
    bar.strip->position = static_cast<Toolbar::Position>(random.Integer(0, 7));
    manager.SetRibbonVisible(random.Coin());
    const int ribbonWidth = random.OneOf(SIZES);
    manager.SetRibbonSize(ribbonWidth, random.OneOf(SIZES));
    const int width = random.OneOf(SIZES);
    manager.SetViewportSize(width, random.OneOf(SIZES));
    manager.OnMouseMove(random.OneOf(SIZES), random.OneOf(SIZES));
    ASSERT_TRUE(manager.GetOrientorBounds().center.IsFinite());
    journal.lines.clear();
  }
}

}  // namespace
