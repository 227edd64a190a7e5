// A host with a bar, a toolbar and a cube behind one view manager, as a program has them.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "korvane/navigation_bar.h"
#include "korvane/navigation_bar_observer.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/toolbar.h"
#include "korvane/view_manager.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

namespace {

constexpr int HOME = 100;
constexpr auto HOME_PICTURE = static_cast<Korvane::TextureID>(99);

struct Host {
  Host() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {}

  ManualPlatform platform;
  MemoryHub hub;
  RecordingRenderer renderer;
  Korvane::Orientor cube;
  Korvane::NavigationBar bar;
  Korvane::Toolbar strip;
  Korvane::ViewManager manager;
};

class BarObserver : public Korvane::NavigationBarObserver {
 public:
  explicit BarObserver(Host& theHost) : NavigationBarObserver(&theHost.bar), host(theHost) {}

  void OnPopulateApplicationItems(Korvane::ToolbarItem::List& items) override {
    Korvane::ToolbarItem home;
    home.SetTag(HOME);  // any number that is not the bar's own
    home.SetSize(Korvane::NavigationBar::APPLICATION_ITEM_WIDTH,
                 Korvane::NavigationBar::APPLICATION_ITEM_HEIGHT);
    home.SetIcon(HOME_PICTURE, 32, 32);
    home.SetTooltip(L"Home");
    items.Append(home);
  }
  void OnItemClicked(int tag) override {
    if (tag == Korvane::NavigationBar::TAG_ORIENTOR) ShowCube();
    if (tag == HOME) GoHome();
  }
  bool OnItemContextMenu(int /*tag*/, int /*x*/, int /*y*/) override { return ++menus > 0; }
  bool OnItemFlyoutPressed(int /*tag*/, int /*x*/, int /*y*/) override { return ++menus > 0; }
  bool OnBarMenuPressed(int /*x*/, int /*y*/) override { return ++menus > 0; }
  void OnItemsPopulated() override { ++populated; }
  int OnMoreControlsPressed(int /*x*/, int /*y*/) override { return HOME; }
  void OnMoreControlsVisibilityChanged(bool visible) override { moreControls = visible; }
  void OnPositionChanged(bool dragged) override { drags += dragged ? 1 : 0; }

  int homes = 0;
  int menus = 0;
  int populated = 0;
  int drags = 0;
  bool moreControls = false;

 private:
  void ShowCube() { host.manager.SetOrientorVisible(true); }
  void GoHome() { ++homes; }

  Host& host;
};

class ViewWithBarTest : public Host, public ::testing::Test {
 protected:
  static constexpr int PAN = 7;

  ViewWithBarTest() : barObserver(*this) {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetOrientor(&cube);
    cube.GetParameters().size = Korvane::OrientorParameters::SIZE_NORMAL;
    bar.AddObserver(&barObserver);
    bar.SetLinkedToOrientor(false);  // on the right edge; linked, it hangs at the cube
    manager.SetNavigationBar(&bar);  // before Create
    strip.GetItems().Append(MakeButton(PAN));
    strip.SetPosition(Korvane::Toolbar::POSITION_LEFT);
    manager.AddToolbar(&strip);
    manager.AddTool(PAN, new Korvane::PanTool);
    manager.Create();
    manager.SetViewportSize(800, 600);
    Settle();
  }
  ~ViewWithBarTest() override { manager.Destroy(); }

  static Korvane::ToolbarItem MakeButton(int tag) {
    Korvane::ToolbarItem button;
    button.SetTag(tag);
    button.SetSize(28, 28);
    button.SetTooltip(L"pan");
    return button;
  }
  void Settle() {
    for (int i = 0; i < 40; ++i) {
      platform.Advance(20);
      hub.PerformOperations();
      manager.OnDraw();
    }
  }
  Korvane::Box2 BarBox() const { return bar.GetToolbar()->GetToolbarBounds(); }
  Korvane::Box2 ItemBox(int tag) {
    Korvane::ToolbarItem::List& items = bar.GetToolbar()->GetItems();
    Korvane::Box2 box;
    for (int i = 0; i < items.GetCount(); ++i) {
      if (items.GetAt(i).GetTag() == tag) box = items.GetAt(i).GetBounds();
    }
    return box;
  }
  bool Press(const Korvane::Vector2& p) {
    manager.OnMouseMove(static_cast<int>(p.x), static_cast<int>(p.y));
    return manager.OnLeftMouseDown(static_cast<int>(p.x), static_cast<int>(p.y));
  }
  void Release(const Korvane::Vector2& p) {
    manager.OnMouseMove(static_cast<int>(p.x), static_cast<int>(p.y));
    manager.OnLeftMouseUp(static_cast<int>(p.x), static_cast<int>(p.y));
  }
  void Click(int tag) {
    const Korvane::Vector2 middle = ItemBox(tag).center;
    EXPECT_TRUE(Press(middle)) << tag;
    Release(middle);
  }

  BarObserver barObserver;
};

TEST_F(ViewWithBarTest, an_item_of_the_host_does_what_the_host_wants) {
  EXPECT_EQ(barObserver.populated, 1);
  Click(HOME);
  EXPECT_EQ(barObserver.homes, 1);
}

// The button that stands in for the cube is there only while the cube is not.
TEST_F(ViewWithBarTest, the_button_brings_the_cube_back) {
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(Korvane::NavigationBar::TAG_ORIENTOR));
  manager.SetOrientorVisible(false);
  Settle();
  EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(Korvane::NavigationBar::TAG_ORIENTOR));
  Click(Korvane::NavigationBar::TAG_ORIENTOR);
  Settle();
  EXPECT_TRUE(manager.IsOrientorVisible());
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(Korvane::NavigationBar::TAG_ORIENTOR));
}

// The region of the cube in the top right corner is 120 pixels; 10 more are kept clear.
TEST_F(ViewWithBarTest, the_bar_hangs_below_the_cube_once_it_is_linked) {
  EXPECT_TRUE(manager.SetNavigationBarLinkedToOrientor(true));
  EXPECT_TRUE(manager.IsNavigationBarLinkedToOrientor());
  Settle();
  EXPECT_EQ(bar.GetToolbar()->GetPosition(), Korvane::Toolbar::POSITION_TOP_RIGHT);
  int width = 0;
  int height = 0;
  manager.GetOrientorSize(width, height);
  EXPECT_EQ(BarBox().Max(), Korvane::Vector2(800, 600 - height));
  const Korvane::Box2 linked = BarBox();
  EXPECT_TRUE(manager.SetNavigationBarLinkedToOrientor(false));
  EXPECT_EQ(bar.GetLocation(), Korvane::NavigationBar::LOCATION_RIGHT);
  Settle();
  EXPECT_NEAR(BarBox().center.x, linked.center.x, 1e-9);
}

TEST_F(ViewWithBarTest, the_grip_takes_the_bar_to_every_edge) {
  struct Row {
    Korvane::Vector2 target;
    Korvane::NavigationBar::Location location;
  };
  for (const Row& row : {Row{{30, 300}, Korvane::NavigationBar::LOCATION_LEFT},
                         Row{{400, 20}, Korvane::NavigationBar::LOCATION_BOTTOM},
                         Row{{350, 580}, Korvane::NavigationBar::LOCATION_TOP},
                         Row{{780, 250}, Korvane::NavigationBar::LOCATION_RIGHT}}) {
    const int before = barObserver.drags;
    const Korvane::Vector2 grip = ItemBox(Korvane::NavigationBar::TAG_GRIP).center;
    EXPECT_TRUE(Press(grip));
    Release(grip + row.target - BarBox().center);
    EXPECT_EQ(bar.GetLocation(), row.location);
    EXPECT_EQ(barObserver.drags, before + 1);
    Settle();
    const Korvane::Box2 box = BarBox();
    EXPECT_GE(box.Min().x, 0.0);
    EXPECT_GE(box.Min().y, 0.0);
    EXPECT_LE(box.Max().x, 800.0);
    EXPECT_LE(box.Max().y, 600.0);
    Click(HOME);
  }
  EXPECT_EQ(barObserver.homes, 4);
}

TEST_F(ViewWithBarTest, a_low_window_offers_more_controls) {
  manager.SetViewportSize(800, 240);
  Settle();
  EXPECT_TRUE(barObserver.moreControls);
  EXPECT_TRUE(bar.IsItemExcluded(HOME));
  Click(Korvane::NavigationBar::TAG_MORE_CONTROLS);
  EXPECT_EQ(barObserver.homes, 1);
  manager.SetViewportSize(800, 600);
  Settle();
  EXPECT_FALSE(barObserver.moreControls);
}

TEST_F(ViewWithBarTest, the_active_tool_is_selected_on_the_bar) {
  bar.GetToolbar()->GetItems().Append(MakeButton(PAN));
  bar.GetToolbar()->ApplyItemChanges();
  manager.SetActiveTool(PAN);
  EXPECT_TRUE(bar.IsItemSelected(PAN));
  manager.SetActiveTool(0);
  EXPECT_FALSE(bar.IsItemSelected(PAN));
}

TEST_F(ViewWithBarTest, a_toolbar_of_the_host_shows_when_the_host_says_so) {
  manager.OnMouseMove(18, 300);
  EXPECT_FALSE(manager.OnLeftMouseDown(18, 300));
  manager.OnLeftMouseUp(18, 300);
  strip.SetVisible(true);
  Settle();
  EXPECT_TRUE(Press({18, 300}));
  Release({18, 300});
  EXPECT_EQ(manager.GetTooltip(), L"pan");
}

TEST_F(ViewWithBarTest, plays_stand_still_under_a_disabled_bar) {
  manager.OnReelshowStartPlayback();
  const Korvane::Vector2 home = ItemBox(HOME).center;
  manager.OnMouseMove(static_cast<int>(home.x), static_cast<int>(home.y));
  manager.OnLeftMouseDown(static_cast<int>(home.x), static_cast<int>(home.y));
  manager.OnLeftMouseUp(static_cast<int>(home.x), static_cast<int>(home.y));
  EXPECT_EQ(barObserver.homes, 0);
  manager.OnReelshowStopPlayback();
  Click(HOME);
  EXPECT_EQ(barObserver.homes, 1);
}

/// Does what the test wants in the n-th request for a frame.
class ActingHub : public MemoryHub {
 public:
  explicit ActingHub(const Korvane::CameraParameters& camera) : MemoryHub(camera) {}

  void RequestApplicationUpdate() override {
    if (left > 0 && --left == 0) act();
  }

  int left = 0;
  std::function<void()> act;
};

// Each change of a bar asks for a frame.
TEST(ViewWithBarHosts, may_take_anything_away_in_each_request_of_a_layout) {
  for (int action = 0; action < 5; ++action) {
    for (int request = 1; request <= 12; ++request) {
      const ManualPlatform platform;
      ActingHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
      RecordingRenderer renderer;
      auto cube = std::make_unique<Korvane::Orientor>();
      auto bar = std::make_unique<Korvane::NavigationBar>();
      auto strip = std::make_unique<Korvane::Toolbar>();
      Korvane::ViewManager manager;
      manager.SetKorvane(&hub);
      manager.SetRenderer(&renderer);
      manager.SetOrientor(cube.get());
      manager.SetNavigationBar(bar.get());
      manager.AddToolbar(strip.get());
      manager.Create();
      manager.SetViewportSize(800, 600);
      manager.OnDraw();
      const std::function<void()> actions[] = {
          [&] {
            manager.SetOrientor(nullptr);
            cube.reset();
          },
          [&] {
            manager.SetNavigationBar(nullptr);
            bar.reset();
          },
          [&] { bar->Destroy(); },
          [&] {
            manager.RemoveToolbar(strip.get());
            strip.reset();
          },
          [&] { manager.SetKorvane(nullptr); },
      };
      hub.act = actions[action];
      hub.left = request;
      manager.SetNavigationBarLinkedToOrientor(false);
      manager.SetRibbonVisible(true);
      manager.SetRibbonSize(300, 40);
      manager.SetNavigationBarLinkedToOrientor(true);
      manager.SetViewportSize(640, 480);
      manager.OnDraw();
      EXPECT_EQ(hub.left, 0) << action << " " << request;
      manager.Destroy();
    }
  }
}

}  // namespace
