// Lists and pages without a mouse: the views that are kept, the languages, the help, and the settings of
// six-axis devices.
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "commands/view_commands.h"
#include "korvane/cam3d_controller.h"
#include "korvane/orientor.h"
#include "viewer_fixture.h"
#include "zovhost/languages.h"
#include "zovhost/phrases.h"

namespace apps_test {
namespace {

using zovhost::FocusRole;
using zovhost::FocusThing;
using Names = std::vector<std::string>;

class ViewerListsKeysTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    UnfoldPanel();
    ComeToRest();
    viewer->GetPanelFocus().SetObserver([this](const FocusThing* thing) { Hear(thing); });
    viewer->GetView(0).GetFocus().SetObserver([this](const FocusThing* thing) { Hear(thing); });
  }
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();
    zovhost::SpeakLanguage(zovhost::GetLanguages().front());
  }

  void Hear(const FocusThing* thing) { present = thing != nullptr ? *thing : FocusThing(); }
  void Key(SDL_Keycode key, SDL_Keymod held = KMOD_NONE) { PressAndRest(key, held); }
  void TabTo(const std::string& group) {
    for (int i = 0; i < 12 && present.group != group; ++i) Key(SDLK_TAB);
    ASSERT_EQ(present.group, group);
  }
  void StepTo(SDL_Keycode arrow, const std::string& name) {
    for (int i = 0; i < 60 && present.name != name; ++i) Key(arrow);
    ASSERT_EQ(present.name, name);
  }
  // Each from another side, on the first of them.
  void KeepViews(int count) {
    for (int i = 0; i < count; ++i) {
      Key(i % 2 == 0 ? SDLK_1 : SDLK_5);
      Key(SDLK_v);
    }
    ASSERT_EQ(GetNames().size(), static_cast<std::size_t>(count));
    TabTo("Panel");
    StepTo(SDLK_DOWN, "Named views");
    Key(SDLK_DOWN);
  }
  void OpenByMouse(const char* command) {
    Move(WIDTH / 2, HEIGHT / 2);
    viewer->GetView(0).Run(*zovview::FindViewCommand(command));
    ComeToRest();
  }
  Names GetNames() const {
    Names names;
    for (const zovhost::NamedView& view : viewer->GetNamedViews().GetViews().Get())
      names.push_back(view.name);
    return names;
  }
  Korvane::Vector3 GetDirection() const {
    const Korvane::CameraParameters& camera = GetHub().GetView();
    return (camera.centre - camera.eye).Normalized();
  }
  // Of the view after that button of the cube.
  Korvane::Vector3 GetDirectionAt(const std::string& button) {
    Key(SDLK_ESCAPE);
    Key(SDLK_HOME);
    TabTo("Cube");
    Key(SDLK_TAB);
    WalkTo([&] { return present.name == button; });
    EXPECT_EQ(present.name, button);
    Key(SDLK_RETURN);
    return GetDirection();
  }
  // By arrows, to all that they lead to, until it is there.
  template <class Stop>
  void WalkTo(const Stop& stop) {
    constexpr SDL_Keycode WAYS[] = {SDLK_DOWN, SDLK_LEFT, SDLK_UP, SDLK_RIGHT};
    unsigned random = 12345;
    for (int i = 0; i < 400 && !stop(); ++i) {
      random = random * 1664525U + 1013904223U;
      Press(WAYS[random >> 30U]);
    }
    ComeToRest();
  }
  Names FindNamesAround() {
    std::set<int> known;
    Names names;
    WalkTo([&] {
      if (known.insert(present.id).second) names.push_back(present.name);
      return names.size() >= 12U;
    });
    return names;
  }
  double GetHeightOfFocus() const { return viewer->GetPanelFocus().Get()->bounds.center.y; }

  FocusThing present;
};

// ---- views that are kept ----

TEST_F(ViewerListsKeysTest, a_view_that_is_kept_is_flown_to) {
  KeepViews(2);
  StepTo(SDLK_UP, "View 1");
  EXPECT_EQ(present.role, FocusRole::Button);
  const Korvane::Vector3 wanted = viewer->GetNamedViews().GetViews().Get()[0].camera.eye;
  ASSERT_GT((GetHub().GetView().eye - wanted).Length(), 0.1);
  Key(SDLK_RETURN);
  EXPECT_LT((GetHub().GetView().eye - wanted).Length(), 1e-6);
  EXPECT_EQ(present.name, "View 1") << "stays under the focus";
}

TEST_F(ViewerListsKeysTest, arrows_go_through_all_rows_of_a_list_that_scrolls_and_on) {
  constexpr int COUNT = 9;
  KeepViews(COUNT);
  StepTo(SDLK_UP, "View 1");
  for (int i = 2; i <= COUNT; ++i) {
    Key(SDLK_DOWN);
    EXPECT_EQ(present.name, "View " + std::to_string(i));
    EXPECT_TRUE(viewer->GetNamedViewsPanel().IsRowInSight(present.id));
  }
  Key(SDLK_DOWN);
  EXPECT_EQ(present.name.substr(0, 4), "Keep") << "what follows on the list";
  for (int i = COUNT; i >= 1; --i) {
    Key(SDLK_UP);
    EXPECT_EQ(present.name, "View " + std::to_string(i));
  }
  Key(SDLK_UP);
  EXPECT_EQ(present.name, "Named views");
}

TEST_F(ViewerListsKeysTest, rows_are_ordered) {
  KeepViews(3);
  StepTo(SDLK_UP, "View 1");
  StepTo(SDLK_RIGHT, "Further down");
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 1", "View 3"}));
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 3", "View 1"}));
  EXPECT_EQ(present.name, "Further down") << "of the view, not of the place";
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 3", "View 1"})) << "there is nothing below";
  StepTo(SDLK_LEFT, "Further up");
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 1", "View 3"}));
  Key(SDLK_DOWN);
  EXPECT_EQ(present.name, "View 3");
}

TEST_F(ViewerListsKeysTest, a_view_is_deleted_when_that_is_asked_and_answered) {
  KeepViews(3);
  StepTo(SDLK_DOWN, "View 2");
  StepTo(SDLK_RIGHT, "Delete");
  Key(SDLK_RETURN);
  EXPECT_EQ(present.name, "Cancel") << "a second press deletes nothing";
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames().size(), 3U);
  EXPECT_EQ(present.name, "Delete");
  Key(SDLK_RETURN);
  StepTo(SDLK_LEFT, "Delete");
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames(), (Names{"View 1", "View 3"}));
  EXPECT_EQ(present.name, "View 3") << "the one in its place";
}

TEST_F(ViewerListsKeysTest, a_view_is_named) {
  KeepViews(2);
  StepTo(SDLK_UP, "View 1");
  StepTo(SDLK_RIGHT, "Rename");
  Key(SDLK_RETURN);
  ASSERT_TRUE(viewer->GetNamedViewsPanel().IsRenaming());
  Type("Porch");
  Key(SDLK_RETURN);
  EXPECT_EQ(GetNames(), (Names{"Porch", "View 2"}));
  StepTo(SDLK_LEFT, "Porch");
  Key(SDLK_DOWN);
  EXPECT_EQ(present.name, "View 2") << "the keys are the list's again";
}

TEST_F(ViewerListsKeysTest, a_view_that_is_kept_beside_a_folded_panel_is_told_by_a_line) {
  Key(SDLK_v);
  EXPECT_EQ(viewer->GetMessage(), "") << "the list shows it";
  viewer->GetPreferences().Edit(
      [](zovview::Choices& choices) { choices.panel = zovview::Choices::PANEL_FOLDED; });
  ComeToRest();
  Key(SDLK_v);
  EXPECT_EQ(viewer->GetMessage(), "Kept as View 2");
}

// ---- languages and help ----

TEST_F(ViewerListsKeysTest, a_language_is_chosen_from_its_list) {
  TabTo("Panel");
  StepTo(SDLK_DOWN, "Language");
  EXPECT_EQ(present.role, FocusRole::MenuButton);
  Key(SDLK_RETURN);
  for (int i = 0; i < 3; ++i) Key(SDLK_DOWN);
  Key(SDLK_RETURN);
  EXPECT_EQ(viewer->GetPreferences().Get().language, "de");
  EXPECT_EQ(present.group, "Tafel");
  Key(SDLK_RETURN);
  Key(SDLK_UP);
  Key(SDLK_ESCAPE);
  EXPECT_EQ(viewer->GetPreferences().Get().language, "de") << "nothing was chosen";
  Key(SDLK_DOWN);
  EXPECT_NE(present.name, "Sprache") << "the keys are the panel's again";
}

TEST_F(ViewerListsKeysTest, the_help_is_read_to_its_end_and_back) {
  TabTo("Panel");
  StepTo(SDLK_DOWN, "Help");
  Key(SDLK_RETURN);
  ASSERT_TRUE(viewer->GetPanel().IsHelpOpen());
  const double start = GetHeightOfFocus();
  Key(SDLK_DOWN);
  EXPECT_GT(GetHeightOfFocus(), start);
  double before = start;
  for (int i = 0; i < 60 && GetHeightOfFocus() > before; ++i) {
    before = GetHeightOfFocus();
    Key(SDLK_PAGEDOWN);
  }
  EXPECT_GT(before, start + HEIGHT) << "more than a screen";
  EXPECT_EQ(present.name, "Help");
  Key(SDLK_PAGEUP);
  EXPECT_LT(GetHeightOfFocus(), before);
  for (int i = 0; i < 200 && present.name == "Help"; ++i) Key(SDLK_UP);
  EXPECT_EQ(present.name, "Mouse and keys") << "past its beginning";
}

// ---- the page of devices ----

TEST_F(ViewerListsKeysTest, the_page_of_devices_has_the_keys_and_escape_closes_it) {
  Korvane::Cam3DController& device = *viewer->GetView(0).GetTarget().device;
  ASSERT_EQ(device.GetNavigationMode(), Korvane::Cam3DController::NavigationMode::MODE_OBJECT);
  Key(SDLK_e);
  ASSERT_TRUE(viewer->GetDevices().IsPageVisible());
  Key(SDLK_RETURN);
  Key(SDLK_DOWN);
  Key(SDLK_RETURN);
  EXPECT_EQ(device.GetNavigationMode(), Korvane::Cam3DController::NavigationMode::MODE_WALK);
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
  TabTo("Cube");  // the keys are the view's again
  Key(SDLK_ESCAPE);
  Key(SDLK_e);
  Key(SDLK_e);
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
  TabTo("Cube");
}

TEST_F(ViewerListsKeysTest, a_page_that_the_mouse_opens_is_entered_by_tab_and_left_by_it) {
  Korvane::Cam3DController& device = *viewer->GetView(0).GetTarget().device;
  OpenByMouse("device-page");
  ASSERT_TRUE(viewer->GetDevices().IsPageVisible());
  EXPECT_FALSE(viewer->GetDevices().GetPage().GetKeys().AreHere());
  Key(SDLK_TAB);
  EXPECT_TRUE(viewer->GetDevices().GetPage().GetKeys().AreHere());
  Key(SDLK_RETURN);
  Key(SDLK_DOWN);
  Key(SDLK_RETURN);
  EXPECT_EQ(device.GetNavigationMode(), Korvane::Cam3DController::NavigationMode::MODE_WALK);
  Key(SDLK_TAB);
  EXPECT_EQ(present.group, "Cube") << "and on to the view";
  EXPECT_FALSE(viewer->GetDevices().GetPage().GetKeys().AreHere());
  for (int i = 0; i < 8 && present.group != "Panel"; ++i) Key(SDLK_TAB);
  EXPECT_EQ(present.group, "Panel");
  Key(SDLK_TAB);
  EXPECT_TRUE(viewer->GetDevices().GetPage().GetKeys().AreHere()) << "comes after the panel";
  Key(SDLK_TAB, KMOD_LSHIFT);
  EXPECT_EQ(present.group, "Panel");
  Key(SDLK_TAB);
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
}

TEST_F(ViewerListsKeysTest, tab_comes_after_the_keys_that_were_pressed_before_it_in_one_frame) {
  const Korvane::Cam3DController& device = *viewer->GetView(0).GetTarget().device;
  Key(SDLK_e);
  Key(SDLK_RETURN);
  for (const SDL_Keycode key : {SDLK_DOWN, SDLK_RETURN, SDLK_TAB, SDLK_TAB}) {
    PushKey(SDL_KEYDOWN, key);
    PushKey(SDL_KEYUP, key);
  }
  ComeToRest();
  EXPECT_EQ(device.GetNavigationMode(), Korvane::Cam3DController::NavigationMode::MODE_WALK);
  EXPECT_FALSE(viewer->GetDevices().GetPage().GetKeys().AreHere());
  EXPECT_EQ(present.group, "Cube") << "its buttons, after its parts";
  EXPECT_EQ(present.id, Korvane::Orientor::OVERLAY_HOME);
}

TEST_F(ViewerListsKeysTest, keys_behind_one_that_closes_the_page_are_those_of_the_view) {
  Key(SDLK_e);
  ASSERT_TRUE(viewer->GetDevices().GetPage().GetKeys().AreHere());
  for (const SDL_Keycode key : {SDLK_ESCAPE, SDLK_TAB, SDLK_h}) {
    PushKey(SDL_KEYDOWN, key);
    PushKey(SDL_KEYUP, key);
  }
  ComeToRest();
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
  EXPECT_EQ(present.group, "Cube");
}

TEST_F(ViewerListsKeysTest, escape_closes_a_page_that_has_no_keys_after_all_that_it_ends_otherwise) {
  OpenByMouse("device-page");
  viewer->GetView(0).Run(*zovview::FindViewCommand("disc-full-navigation"));
  ComeToRest();
  Key(SDLK_ESCAPE);
  EXPECT_EQ(viewer->GetView(0).GetDisc().GetActiveDisc(), Korvane::DiscType::None);
  EXPECT_TRUE(viewer->GetDevices().IsPageVisible());
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
}

TEST_F(ViewerListsKeysTest, escape_twice_in_one_frame_closes_a_page_once) {
  OpenByMouse("device-page");
  for (int i = 0; i < 2; ++i) Press(SDLK_ESCAPE);
  ComeToRest();
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
}

TEST_F(ViewerListsKeysTest, the_editor_of_shots_is_entered_by_tab_and_closed_by_escape) {
  OpenByMouse("add-shot");
  zovhost::ShotEditorPanel& editor = viewer->GetView(0).GetStory().GetEditor();
  ASSERT_TRUE(editor.GetEdges().has_value());
  Key(SDLK_TAB);
  EXPECT_TRUE(editor.GetKeys().AreHere());
  Key(SDLK_TAB);
  EXPECT_EQ(present.group, "Cube");
  EXPECT_FALSE(editor.GetKeys().AreHere());
  Key(SDLK_TAB, KMOD_LSHIFT);
  EXPECT_TRUE(editor.GetKeys().AreHere()) << "before the view";
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(editor.GetEdges().has_value());
  OpenByMouse("add-shot");
  ASSERT_TRUE(editor.GetEdges().has_value());
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(editor.GetEdges().has_value()) << "without keys of its own";
}

TEST_F(ViewerListsKeysTest, the_menu_of_a_disc_opens_by_the_key_of_menus_on_its_wedges) {
  using Kind = zovview::ViewerMenus::Kind;
  struct Row {
    const char* disc;
    Kind menu;
  };
  for (const Row& row :
       {Row{"disc-full-navigation", Kind::FullNavigation}, Row{"disc-view-object", Kind::ViewObject},
        Row{"disc-tour-building", Kind::TourBuilding}, Row{"disc-2d", Kind::TwoD}}) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(row.disc));
    ComeToRest();
    TabTo("Disc");
    Key(SDLK_F10, KMOD_LSHIFT);
    ASSERT_TRUE(viewer->IsMenuOpen()) << row.disc;
    EXPECT_EQ(viewer->GetOpenMenu(), row.menu) << row.disc;
    Key(SDLK_ESCAPE);
    EXPECT_FALSE(viewer->IsMenuOpen());
    Key(SDLK_ESCAPE);
  }
}

class WideViewerListsKeysTest : public ViewerListsKeysTest {
 protected:
  zovhost::Window::Options GetOptions() const override {
    zovhost::Window::Options options = ViewerTest::GetOptions();
    options.width = GetWidth();
    options.height = 800;
    return options;
  }
  virtual int GetWidth() const { return 1440; }
};

class NarrowerViewerListsKeysTest : public WideViewerListsKeysTest {
 protected:
  int GetWidth() const override { return 1280; }
};

TEST_F(WideViewerListsKeysTest, the_page_of_devices_and_the_editor_of_shots_stand_beside_each_other) {
  const auto expectApart = [this](bool pageAtRight) {
    const std::optional<zovhost::PageEdges> page = viewer->GetDevices().GetPage().GetEdges();
    const std::optional<zovhost::PageEdges> editor = viewer->GetView(0).GetStory().GetEditor().GetEdges();
    ASSERT_TRUE(page.has_value() && editor.has_value());
    EXPECT_GT(pageAtRight ? page->left - editor->left : editor->left - page->left, 250.0F);
  };
  Key(SDLK_n);
  Key(SDLK_e);
  expectApart(false);
  Key(SDLK_ESCAPE);
  viewer->GetView(0).GetStory().GetBoard().CloseShotEditor();
  ComeToRest();
  Key(SDLK_e);
  Key(SDLK_n);
  expectApart(true);
}

TEST_F(NarrowerViewerListsKeysTest, they_stand_below_each_other_where_the_panel_leaves_no_room_beside) {
  ASSERT_TRUE(viewer->GetPanel().IsUnfolded());
  Key(SDLK_n);
  Key(SDLK_e);
  const std::optional<zovhost::PageEdges> page = viewer->GetDevices().GetPage().GetEdges();
  const std::optional<zovhost::PageEdges> editor = viewer->GetView(0).GetStory().GetEditor().GetEdges();
  ASSERT_TRUE(page.has_value() && editor.has_value());
  EXPECT_GT(page->left, viewer->GetPanel().GetReach());
  EXPECT_GT(page->foot, editor->foot + 200.0F);
  EXPECT_LE(page->foot, 800.0F);
}

// ---- the buttons of the cube ----

TEST_F(ViewerListsKeysTest, the_buttons_of_the_cube_show_while_one_of_them_has_the_focus) {
  const Korvane::OrientorParameters& look = viewer->GetView(0).GetCube().GetParameters();
  TabTo("Cube");
  EXPECT_FALSE(look.overlay_always_on);
  Key(SDLK_TAB);
  ASSERT_EQ(present.id, Korvane::Orientor::OVERLAY_HOME);
  EXPECT_TRUE(look.overlay_always_on);
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(look.overlay_always_on);
}

TEST_F(ViewerListsKeysTest, the_letters_of_the_compass_are_pressed_by_enter) {
  GetHub().SetReducedMotion(true);
  viewer->GetView(0).Run(*zovview::FindViewCommand("toggle-compass"));
  ComeToRest();
  const Korvane::Vector3 north = GetDirectionAt("Compass, N");
  const Korvane::Vector3 east = GetDirectionAt("Compass, E");
  const Korvane::Vector3 south = GetDirectionAt("Compass, S");
  const Korvane::Vector3 west = GetDirectionAt("Compass, W");
  EXPECT_LT((north + south).Length(), 1e-5);
  EXPECT_LT((east + west).Length(), 1e-5);
  EXPECT_NEAR(north.Dot(east), 0.0, 1e-5);
  EXPECT_NEAR(north.Dot(GetHub().GetWorldUpDirection()), 0.0, 1e-5);
}

TEST_F(ViewerListsKeysTest, the_arrows_between_the_faces_of_the_cube_are_pressed_by_enter) {
  GetHub().SetReducedMotion(true);
  Key(SDLK_1);
  const Korvane::Vector3 front = GetDirection();
  Key(SDLK_4);
  const Korvane::Vector3 right = GetDirection();
  Key(SDLK_1);
  TabTo("Cube");
  Key(SDLK_TAB);
  WalkTo([this] { return present.name == "Arrow, RIGHT"; });
  const Korvane::Orientor& cube = viewer->GetView(0).GetCube();
  EXPECT_TRUE(cube.IsMouseInRegion()) << "so that it shows";
  EXPECT_LT((GetDirection() - front).Length(), 1e-6);
  Key(SDLK_RETURN);
  EXPECT_LT((GetDirection() - right).Length(), 1e-6);
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(cube.IsMouseInRegion());
}

TEST_F(ViewerListsKeysTest, a_mouse_that_moves_has_the_pointer_although_an_arrow_of_the_cube_has_the_focus) {
  Korvane::Orientor& cube = viewer->GetView(0).GetCube();
  Key(SDLK_1);
  int x = 0;
  int y = 0;
  ASSERT_TRUE(cube.GetPartPosition(Korvane::OrientorObserver::PART_FRONT, x, y));
  TabTo("Cube");
  Key(SDLK_TAB);
  WalkTo([this] { return present.name == "Arrow, RIGHT"; });
  Move(x, y);
  EXPECT_EQ(present.name, "Arrow, RIGHT");
  Key(SDLK_ESCAPE);
  EXPECT_TRUE(cube.IsMouseInRegion()) << "it is still there";
  Key(SDLK_TAB);
  Key(SDLK_TAB);
  WalkTo([this] { return present.name == "Arrow, RIGHT"; });
  Move(WIDTH / 2, HEIGHT / 2);
  EXPECT_FALSE(cube.IsMouseInRegion());
  Key(SDLK_LEFT);
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(cube.IsMouseInRegion());
}

TEST_F(ViewerListsKeysTest, letters_and_arrows_of_the_cube_are_named_in_each_language) {
  viewer->GetView(0).Run(*zovview::FindViewCommand("toggle-compass"));
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(std::string("language-") + std::string(language.tag)));
    ComeToRest();
    Key(SDLK_ESCAPE);
    Key(SDLK_1);
    TabTo(zovhost::GetPhrases().SayPlain("Cube"));
    Key(SDLK_TAB);
    const Names names = FindNamesAround();
    EXPECT_GE(names.size(), 11U) << language.tag << ": home, menu, two rolls, four letters, four arrows";
    for (const std::string& name : names) EXPECT_NE(name, "") << language.tag;
  }
}

TEST_F(ViewerListsKeysTest, the_list_of_coordinates_opens_by_enter) {
  viewer->GetView(0).Run(*zovview::FindViewCommand("toggle-coordinates"));
  ComeToRest();
  TabTo("Cube");
  Key(SDLK_TAB);
  for (int i = 0; i < 8 && present.id != Korvane::Orientor::OVERLAY_UCS_MENU; ++i) Key(SDLK_DOWN);
  ASSERT_EQ(present.id, Korvane::Orientor::OVERLAY_UCS_MENU);
  Key(SDLK_RETURN);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), zovview::ViewerMenus::Kind::Coordinates);
}

}  // namespace
}  // namespace apps_test
