// The bars in the viewer: their items do what they show, their menus open, they go where they are dragged.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands/view_bars.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "korvane/toolbar.h"
#include "lone_view.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"

namespace {

using apps_test::HEIGHT;
using apps_test::SQUARE;
using apps_test::ViewerTest;
using apps_test::WIDTH;
using Korvane::Box2;
using Korvane::DiscType;
using Korvane::NavigationBar;
using Korvane::Toolbar;
using Korvane::ToolbarItem;
using Korvane::Vector2;
using zovview::ViewBars;
using Kind = zovview::ViewerMenus::Kind;

constexpr int HOME = 201;
constexpr int FIT = 202;
constexpr int PROJECTION = 203;

const ToolbarItem* FindItem(const Toolbar& strip, int tag) {
  for (int i = 0; i < strip.GetItems().GetCount(); ++i) {
    const ToolbarItem& item = strip.GetItems().GetAt(i);
    if (item.GetTag() == tag) return &item;
  }
  return nullptr;
}

bool Shows(const Toolbar& strip, int tag) {
  const ToolbarItem* const item = FindItem(strip, tag);
  return item != nullptr && !item->IsHidden() && !item->IsExcluded();
}

class ViewerBarsTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }

  zovview::Viewport& GetView() const { return viewer->GetView(0); }
  ViewBars& GetBars() const { return GetView().GetBars(); }
  Toolbar& GetStrip() const { return *GetBars().GetBar().GetToolbar(); }
  Toolbar& GetTools() const { return GetBars().GetTools(); }
  DiscType GetDisc() const { return GetView().GetDisc().GetActiveDisc(); }

  // Bars travel for a fifth of a second, which the clock of the system measures.
  void Click(const Vector2& place) {
    Move(static_cast<int>(place.x), static_cast<int>(place.y));
    ViewerTest::Click(place);
  }
  void ClickItem(const Toolbar& strip, int tag) {
    const ToolbarItem* const item = FindItem(strip, tag);
    ASSERT_NE(item, nullptr) << tag;
    Click(item->GetNonFlyoutIconBounds().center);
  }
  void ClickArrow() {
    Click(FindItem(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION)->GetFlyoutIconBounds().center);
  }
  void DragTo(const Vector2& to) {
    const Vector2 grip = FindItem(GetStrip(), NavigationBar::TAG_GRIP)->GetBounds().center;
    const auto x = static_cast<int>(grip.x);
    const auto y = static_cast<int>(grip.y);
    Move(x, y);
    PushButton(SDL_MOUSEBUTTONDOWN, x, y, 1);
    PushMotion(static_cast<int>((grip.x + to.x) / 2.0), static_cast<int>((grip.y + to.y) / 2.0));
    PushMotion(static_cast<int>(to.x), static_cast<int>(to.y));
    PushButton(SDL_MOUSEBUTTONUP, static_cast<int>(to.x), static_cast<int>(to.y), 1);
    ComeToRest();
  }
};

TEST_F(ViewerBarsTest, the_navigation_bar_stands_at_the_right_edge_and_has_the_items_of_the_viewer) {
  const Box2 bounds = GetStrip().GetToolbarBounds();
  EXPECT_TRUE(GetStrip().IsVisible());
  EXPECT_EQ(GetStrip().GetPosition(), Toolbar::POSITION_RIGHT);
  EXPECT_EQ(bounds.Max().x, WIDTH);
  for (const int tag : {1, 2, 3, 6, 13, 44, 45, HOME, FIT, PROJECTION})
    EXPECT_TRUE(Shows(GetStrip(), tag)) << tag;
  for (const int tag : {4, 5}) EXPECT_FALSE(Shows(GetStrip(), tag)) << tag;
  EXPECT_FALSE(GetTools().IsVisible());
}

TEST_F(ViewerBarsTest, home_leads_back_to_the_view_at_the_start) {
  const Korvane::Vector3 start = GetHub().GetView().eye;
  Drag(300, 400, 200);
  ASSERT_NE(GetHub().GetView().eye, start);
  ClickItem(GetStrip(), HOME);
  EXPECT_LT((GetHub().GetView().eye - start).Length(), 1e-3) << "as near as cameras are told apart";
}

TEST_F(ViewerBarsTest, fit_shows_the_whole_model) {
  Press(SDLK_5);
  ComeToRest();
  const Korvane::CameraParameters fitted = GetHub().GetView();
  SDL_Event wheel = {};
  wheel.type = SDL_MOUSEWHEEL;
  wheel.wheel.preciseY = -3.0F;
  wheel.wheel.mouseX = WIDTH / 2;
  wheel.wheel.mouseY = HEIGHT / 2;
  SDL_PushEvent(&wheel);
  window->Step(0);
  ComeToRest();
  ASSERT_GT((GetHub().GetView().eye - fitted.eye).Length(), 0.01);
  ClickItem(GetStrip(), FIT);
  EXPECT_LT((GetHub().GetView().eye - fitted.eye).Length(), 1e-6);
}

TEST_F(ViewerBarsTest, projection_changes_it_and_shows_which) {
  ClickItem(GetStrip(), PROJECTION);
  EXPECT_TRUE(GetHub().GetView().IsOrthographic());
  EXPECT_TRUE(FindItem(GetStrip(), PROJECTION)->IsSelected());
  ClickItem(GetStrip(), PROJECTION);
  EXPECT_FALSE(GetHub().GetView().IsOrthographic());
  EXPECT_FALSE(FindItem(GetStrip(), PROJECTION)->IsSelected());
}

TEST_F(ViewerBarsTest, the_button_of_the_disc_opens_it_and_closes_it) {
  ClickItem(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION);
  EXPECT_EQ(GetDisc(), DiscType::FullNavigation);
  EXPECT_TRUE(FindItem(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION)->IsSelected());
  ClickItem(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION);
  EXPECT_EQ(GetDisc(), DiscType::None);
  EXPECT_FALSE(FindItem(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION)->IsSelected());
}

// The menu hangs down beside the strip: its upper right corner 4 pixels from it, at the lower edge of the
// button.
TEST_F(ViewerBarsTest, a_disc_that_is_chosen_of_the_flyout_opens_and_becomes_the_button) {
  const Box2 button = FindItem(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION)->GetBounds();
  ClickArrow();
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Discs);
  EXPECT_EQ(GetDisc(), DiscType::None) << "the release clicked nothing";
  Click(Vector2(GetStrip().GetToolbarBounds().centerX.GetValue() - 60.0, button.Min().y - 18.0));
  EXPECT_FALSE(viewer->IsMenuOpen());
  EXPECT_EQ(GetDisc(), DiscType::ViewObject);
  EXPECT_TRUE(Shows(GetStrip(), NavigationBar::TAG_VIEW_OBJECT));
  EXPECT_FALSE(Shows(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION));
}

TEST_F(ViewerBarsTest, the_menu_of_the_bar_opens_by_its_button_and_by_a_right_click_on_an_item) {
  ClickItem(GetStrip(), NavigationBar::TAG_MENU);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Bar);
  Press(SDLK_ESCAPE);
  ComeToRest();
  ASSERT_FALSE(viewer->IsMenuOpen());
  const Vector2 home = FindItem(GetStrip(), HOME)->GetBounds().center;
  RightClick(static_cast<int>(home.x), static_cast<int>(home.y));
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Bar) << "and not that of the view";
}

TEST_F(ViewerBarsTest, the_close_button_hides_the_bar_and_a_key_brings_it_back) {
  ClickItem(GetStrip(), NavigationBar::TAG_CLOSE);
  EXPECT_FALSE(GetStrip().IsVisible());
  Press(SDLK_b);
  ComeToRest();
  EXPECT_TRUE(GetStrip().IsVisible());
}

TEST_F(ViewerBarsTest, a_button_stands_in_for_a_cube_that_does_not_show) {
  GetView().Run(*zovview::FindViewCommand("toggle-cube"));
  ComeToRest();
  EXPECT_FALSE(GetView().GetManager().IsOrientorVisible());
  ASSERT_TRUE(Shows(GetStrip(), NavigationBar::TAG_ORIENTOR));
  ClickItem(GetStrip(), NavigationBar::TAG_ORIENTOR);
  EXPECT_TRUE(GetView().GetManager().IsOrientorVisible());
  EXPECT_FALSE(Shows(GetStrip(), NavigationBar::TAG_ORIENTOR));
}

TEST_F(ViewerBarsTest, the_grip_drags_the_bar_to_each_edge_and_its_items_work_there) {
  struct Row {
    Vector2 to;
    Toolbar::Position edge;
  };
  for (const Row& row : {Row{{30.0, 300.0}, Toolbar::POSITION_LEFT},
                         {{400.0, 590.0}, Toolbar::POSITION_TOP},
                         {{400.0, 10.0}, Toolbar::POSITION_BOTTOM},
                         {{790.0, 250.0}, Toolbar::POSITION_RIGHT}}) {
    DragTo(row.to);
    ASSERT_EQ(GetStrip().GetPosition(), row.edge);
    const bool orthographic = GetHub().GetView().IsOrthographic();
    ClickItem(GetStrip(), PROJECTION);
    EXPECT_NE(GetHub().GetView().IsOrthographic(), orthographic) << row.edge;
  }
}

TEST_F(ViewerBarsTest, the_bar_links_under_the_cube_and_back_to_an_edge) {
  GetView().Run(*zovview::FindViewCommand("bar-linked"));
  ComeToRest();
  EXPECT_EQ(GetBars().GetBar().GetLocation(), NavigationBar::LOCATION_LINKED);
  EXPECT_FALSE(Shows(GetStrip(), NavigationBar::TAG_GRIP));
  const Box2 cube = GetView().GetManager().GetOrientorBounds();
  const Box2 strip = GetStrip().GetToolbarBounds();
  EXPECT_LE(strip.Max().y, cube.Min().y + 1.0);
  EXPECT_GE(strip.Min().x, cube.Min().x);
  ClickItem(GetStrip(), PROJECTION);
  EXPECT_TRUE(GetHub().GetView().IsOrthographic());
  GetView().Run(*zovview::FindViewCommand("bar-left"));
  ComeToRest();
  EXPECT_EQ(GetBars().GetBar().GetLocation(), NavigationBar::LOCATION_LEFT);
  EXPECT_TRUE(Shows(GetStrip(), NavigationBar::TAG_GRIP));
}

TEST_F(ViewerBarsTest, what_has_no_room_is_in_the_menu_of_more_controls) {
  GetView().SetPlace(0, 0, WIDTH, 150, 1.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  ASSERT_TRUE(Shows(GetStrip(), NavigationBar::TAG_MORE_CONTROLS));
  std::vector<std::string_view> names;
  for (const zovview::ViewCommand* command : GetBars().GetMoreCommands(ViewBars::Menu::MoreOfBar)) {
    names.push_back(command->name);
  }
  for (const int tag : {HOME, FIT, PROJECTION}) {
    const bool listed =
        std::find(names.begin(), names.end(), zovview::FindBarCommand(tag)->name) != names.end();
    EXPECT_NE(listed, Shows(GetStrip(), tag)) << tag;
  }
  EXPECT_FALSE(names.empty());
  ClickItem(GetStrip(), NavigationBar::TAG_MORE_CONTROLS);
  EXPECT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::MoreOfBar);
}

TEST_F(ViewerBarsTest, a_disc_button_without_room_leaves_its_discs_in_the_menu) {
  GetView().SetPlace(0, 0, WIDTH, 90, 1.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  ASSERT_FALSE(Shows(GetStrip(), NavigationBar::TAG_FULL_NAVIGATION));
  const std::vector<const zovview::ViewCommand*> more = GetBars().GetMoreCommands(ViewBars::Menu::MoreOfBar);
  int discs = 0;
  for (const zovview::ViewCommand* command : more)
    discs += command->place == zovview::ViewCommand::Place::Discs;
  EXPECT_EQ(discs, 7);
}

// ---- the toolbar of the tools ----

TEST_F(ViewerBarsTest, each_tool_is_chosen_by_its_button_which_is_lit) {
  Press(SDLK_k);
  ComeToRest();
  ASSERT_TRUE(GetTools().IsVisible());
  EXPECT_EQ(GetTools().GetPosition(), Toolbar::POSITION_BOTTOM);
  for (const zovview::ViewTool& tool : zovview::GetViewTools()) {
    ClickItem(GetTools(), tool.id);
    EXPECT_EQ(GetView().GetManager().GetActiveTool(), tool.id);
    for (const zovview::ViewTool& other : zovview::GetViewTools()) {
      EXPECT_EQ(FindItem(GetTools(), other.id)->IsSelected(), other.id == tool.id) << other.id;
    }
  }
}

TEST_F(ViewerBarsTest, tools_without_room_are_in_a_menu) {
  Press(SDLK_k);
  GetView().SetPlace(0, 0, 200, HEIGHT, 1.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  const std::size_t count = GetBars().GetMoreCommands(ViewBars::Menu::MoreOfTools).size();
  EXPECT_GT(count, 2u);
  EXPECT_LT(count, zovview::GetViewTools().size());
}

TEST_F(ViewerBarsTest, two_bars_never_stand_on_one_edge) {
  Press(SDLK_k);
  GetView().Run(*zovview::FindViewCommand("bar-bottom"));
  ComeToRest();
  EXPECT_EQ(GetStrip().GetPosition(), Toolbar::POSITION_BOTTOM);
  EXPECT_EQ(GetTools().GetPosition(), Toolbar::POSITION_TOP);
  DragTo({400.0, 590.0});
  EXPECT_EQ(GetStrip().GetPosition(), Toolbar::POSITION_TOP);
  EXPECT_EQ(GetTools().GetPosition(), Toolbar::POSITION_BOTTOM);
}

TEST_F(ViewerBarsTest, tools_that_come_to_the_edge_of_the_bar_go_to_the_other) {
  GetView().Run(*zovview::FindViewCommand("bar-bottom"));
  GetBars().SetToolsVisible(false);
  GetTools().SetPosition(Toolbar::POSITION_BOTTOM);
  Press(SDLK_k);
  ComeToRest();
  ASSERT_TRUE(GetTools().IsVisible());
  EXPECT_EQ(GetStrip().GetPosition(), Toolbar::POSITION_BOTTOM);
  EXPECT_EQ(GetTools().GetPosition(), Toolbar::POSITION_TOP);
}

TEST_F(ViewerBarsTest, tools_stay_in_a_view_that_shrinks) {
  Press(SDLK_k);
  GetTools().SetEdgeOffset({300.0, 0.0});
  GetView().SetPlace(0, 0, 500, HEIGHT, 1.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  const Box2 bounds = GetTools().GetToolbarBounds();
  EXPECT_GT(bounds.halfExtent.x, 0.0);
  EXPECT_GE(bounds.Min().x, 0.0);
  EXPECT_LE(bounds.Max().x, 500.0);
}

TEST_F(ViewerBarsTest, bars_grow_with_the_scale_of_the_display_and_back) {
  const double thickness = 2.0 * GetStrip().GetToolbarBounds().extentX.GetValue();
  GetView().SetPlace(0, 0, WIDTH, HEIGHT, 2.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  EXPECT_EQ(FindItem(GetStrip(), HOME)->GetWidth(), 56);
  EXPECT_EQ(FindItem(GetTools(), zovview::TOOL_PAN)->GetWidth(), 56);
  GetView().SetPlace(0, 0, WIDTH, HEIGHT, 1.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  EXPECT_EQ(FindItem(GetStrip(), HOME)->GetWidth(), 28);
  EXPECT_EQ(2.0 * GetStrip().GetToolbarBounds().extentX.GetValue(), thickness);
}

// ---- what is kept ----

class KeptBarsTest : public ViewerBarsTest {
 protected:
  void Start() {
    viewer.reset();
    settings.emplace(file);
    zovview::Viewer::Options options;
    options.settings = &*settings;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("square.obj", SQUARE)});
    Press(SDLK_F1, KMOD_LSHIFT);
    ComeToRest();
  }
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();  // before what it keeps its settings in
  }

  const std::filesystem::path file = folder.GetPath() / "settings.json";
  std::optional<zovview::SettingsFile> settings;
};

TEST_F(KeptBarsTest, places_are_there_the_next_time) {
  Start();
  DragTo({30.0, 200.0});
  ASSERT_EQ(GetStrip().GetPosition(), Toolbar::POSITION_LEFT);
  const double offset = GetStrip().GetEdgeOffset().y;
  EXPECT_NE(offset, 0.0);
  Press(SDLK_k);
  ComeToRest();
  Start();
  EXPECT_EQ(GetStrip().GetPosition(), Toolbar::POSITION_LEFT);
  EXPECT_EQ(GetStrip().GetEdgeOffset().y, offset);
  EXPECT_TRUE(GetTools().IsVisible());
}

TEST_F(KeptBarsTest, a_link_to_the_cube_and_a_bar_that_is_hidden_are_kept) {
  Start();
  GetView().Run(*zovview::FindViewCommand("bar-linked"));
  GetView().Run(*zovview::FindViewCommand("toggle-bar"));
  ComeToRest();
  Start();
  EXPECT_EQ(GetBars().GetBar().GetLocation(), NavigationBar::LOCATION_LINKED);
  EXPECT_FALSE(GetBars().GetBar().IsVisible());
}

TEST_F(KeptBarsTest, a_view_without_room_forgets_no_place) {
  Start();
  DragTo({30.0, 200.0});
  const zovview::BarPlaces before = GetBars().GetPlaces();
  GetView().SetPlace(0, 0, 120, 90, 1.0);
  GetHub().RequestApplicationUpdate();
  ComeToRest();
  EXPECT_EQ(GetBars().GetPlaces().navigation, before.navigation);
}

// ---- tooltips, by a clock of the test ----

class BarTooltipTest : public apps_test::LoneViewTest {
 protected:
  void SetUp() override {
    LoneViewTest::SetUp();
    Draw();
  }
  void Send(zovhost::WindowEvent::Type type, const Vector2& place) {
    hand.x = static_cast<int>(place.x);
    hand.y = static_cast<int>(place.y);
    LoneViewTest::Send(type);
  }
  Vector2 MiddleOf(int tag) {
    return FindItem(*view->GetBars().GetBar().GetToolbar(), tag)->GetNonFlyoutIconBounds().center;
  }

  using Type = zovhost::WindowEvent::Type;
};

TEST_F(BarTooltipTest, tells_what_an_item_does_after_half_a_second_and_goes_with_a_press) {
  Send(Type::MouseMove, MiddleOf(HOME));
  Wait(0.4);
  EXPECT_FALSE(view->GetTooltip().IsShown());
  Wait(0.2);
  EXPECT_TRUE(view->GetTooltip().IsShown());
  EXPECT_EQ(view->GetTooltip().GetText(), L"Home (Home)");
  Send(Type::MouseMove, MiddleOf(FIT));
  EXPECT_TRUE(view->GetTooltip().IsShown()) << "at once from one to the next";
  EXPECT_EQ(view->GetTooltip().GetText(), L"Fit all (A)");
  Send(Type::MouseDown, MiddleOf(FIT));
  EXPECT_FALSE(view->GetTooltip().IsShown());
  Send(Type::MouseUp, MiddleOf(FIT));
  Wait(1.0);
  EXPECT_FALSE(view->GetTooltip().IsShown()) << "the pointer is still on it";
}

TEST_F(BarTooltipTest, goes_when_the_pointer_leaves_the_window) {
  Send(Type::MouseMove, MiddleOf(NavigationBar::TAG_FULL_NAVIGATION));
  Wait(0.6);
  ASSERT_TRUE(view->GetTooltip().IsShown());
  EXPECT_EQ(view->GetTooltip().GetText(), L"Full navigation disc");
  Send(Type::MouseLeave, Vector2());
  EXPECT_FALSE(view->GetTooltip().IsShown());
}

}  // namespace
