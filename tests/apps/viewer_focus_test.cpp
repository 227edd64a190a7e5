// The viewer without a mouse: every part of the cube, every wedge of a disc, every item of the bars and every
// button of the panel is reached by keys and acts by them, and says what it is.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <epoxy/gl.h>

#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "korvane/track_menu.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"
#include "zovhost/accent.h"
#include "zovhost/host_texts.h"
#include "zovhost/languages.h"
#include "zovhost/phrases.h"
#include "zovhost/wide_text.h"

namespace {

using apps_test::SQUARE;
using Korvane::DiscType;
using Korvane::Orientor;
using Korvane::Vector3;
using zovhost::FocusRole;
using zovhost::FocusThing;
using Kind = zovview::ViewerMenus::Kind;

constexpr std::array<SDL_Keycode, 4> ARROWS = {SDLK_RIGHT, SDLK_LEFT, SDLK_UP, SDLK_DOWN};

class ViewerFocusTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Drop(folder.Write("square.obj", SQUARE));
    GetView().GetFocus().SetObserver([this](const FocusThing* thing) { Hear(thing); });
    viewer->GetPanelFocus().SetObserver([this](const FocusThing* thing) { Hear(thing); });
  }

  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();
    zovhost::SpeakLanguage(zovhost::GetLanguages().front());
  }

  void Speak(const std::string& language) {
    GetView().Run(*zovview::FindViewCommand("language-" + language));
    DrawFrames();
  }
  void Hear(const FocusThing* thing) { present = thing != nullptr ? *thing : FocusThing(); }
  void PushKey(Uint32 type, SDL_Keycode key) {
    ViewerTest::PushKey(type, key);
    window->Step(0);
  }
  // Down and up.
  void Key(SDL_Keycode key) {
    PushKey(SDL_KEYDOWN, key);
    PushKey(SDL_KEYUP, key);
  }
  void Enter() {
    Key(SDLK_RETURN);
    ComeToRest();
  }
  void DrawFrames() {
    for (int i = 0; i < 8; ++i) {
      window->RequestFrame();
      window->Step(100);
    }
  }
  void TabTo(const std::string& group) {
    for (int i = 0; i < 12 && present.group != group; ++i) Key(SDLK_TAB);
    ASSERT_EQ(present.group, group);
  }

  using Steps = std::map<std::pair<int, SDL_Keycode>, int>;

  // The keys by which these steps lead from one thing to the nearest that is wanted; none: there is no such.
  template <class Want>
  static std::optional<std::vector<SDL_Keycode>> FindWay(const Steps& steps, int from, const Want& want) {
    std::map<int, std::vector<SDL_Keycode>> ways = {{from, {}}};
    std::deque<int> ahead = {from};
    while (!ahead.empty()) {
      const int id = ahead.front();
      ahead.pop_front();
      if (want(id)) return ways[id];
      for (const SDL_Keycode key : ARROWS) {
        const auto step = steps.find({id, key});
        if (step == steps.end() || ways.contains(step->second)) continue;
        ways[step->second] = ways[id];
        ways[step->second].push_back(key);
        ahead.push_back(step->second);
      }
    }
    return std::nullopt;
  }
  // Tries every arrow on everything that arrows lead to.
  Steps Explore() {
    Steps steps;
    things.clear();
    const auto isNew = [&](int id) {
      return !steps.contains({id, ARROWS[0]}) || !steps.contains({id, ARROWS[1]}) ||
             !steps.contains({id, ARROWS[2]}) || !steps.contains({id, ARROWS[3]});
    };
    while (const auto way = FindWay(steps, present.id, isNew)) {
      for (const SDL_Keycode key : *way) Key(key);
      const int from = present.id;
      things[from] = present;
      for (const SDL_Keycode key : ARROWS) {
        if (steps.contains({from, key})) continue;
        Key(key);
        steps[{from, key}] = present.id;
        break;
      }
    }
    return steps;
  }
  void GoTo(const Steps& steps, int id) {
    const auto way = FindWay(steps, present.id, [id](int each) { return each == id; });
    ASSERT_TRUE(way.has_value()) << id;
    for (const SDL_Keycode key : *way) Key(key);
    ASSERT_EQ(present.id, id);
  }
  int FindThing(const std::string& name, FocusRole role = FocusRole::Button) const {
    for (const auto& [id, thing] : things) {
      if (thing.name == name && thing.role == role) return id;
    }
    ADD_FAILURE() << name;
    return -1;
  }
  std::string GetText(int id) const {
    return zovhost::WideToUtf8(GetView().GetRenderer().LoadStringResource(id));
  }

  zovview::Viewport& GetView() const { return viewer->GetView(0); }
  Vector3 GetDirection() const {
    const Korvane::CameraParameters& camera = GetHub().GetView();
    return (camera.centre - camera.eye).Normalized();
  }
  // Of a part of the cube, in the world.
  Vector3 ToWorld(const Vector3& part) const {
    const Vector3 front = GetHub().GetApplicationParameters().scene_front_direction.Normalized();
    const Vector3 top = GetHub().GetApplicationParameters().scene_up_direction.Normalized();
    return front * part.x + top * part.y + front.Cross(top) * part.z;
  }

  FocusThing present;
  std::map<int, FocusThing> things;  // that were found last
};

// ---- the cube ----

TEST_F(ViewerFocusTest, all_26_parts_of_the_cube_are_reached_by_arrows_and_tell_their_names) {
  TabTo("Cube");
  Explore();
  EXPECT_EQ(things.size(), 26U);
  std::set<std::string> names;
  for (const auto& [id, thing] : things) {
    names.insert(thing.name);
    EXPECT_EQ(thing.role, FocusRole::Button);
  }
  EXPECT_EQ(names.size(), 26U);
  for (const char* name : {"TOP", "BOTTOM", "FRONT", "BACK", "LEFT", "RIGHT", "TOP, FRONT",
                           "TOP, FRONT, RIGHT", "BOTTOM, BACK", "BOTTOM, BACK, LEFT", "FRONT, LEFT"}) {
    EXPECT_TRUE(names.contains(name)) << name;
  }
}

TEST_F(ViewerFocusTest, each_part_of_the_cube_is_pressed_by_enter) {
  GetHub().SetReducedMotion(true);  // it is not the moves that are tested
  TabTo("Cube");
  const Steps steps = Explore();
  Key(SDLK_ESCAPE);
  const Vector3 start = GetDirection();
  for (int part = 0; part < Orientor::GEOMETRY_PART_COUNT; ++part) {
    Key(SDLK_HOME);
    ComeToRest();
    ASSERT_LT((GetDirection() - start).Length(), 1e-6);
    TabTo("Cube");
    GoTo(steps, part);
    Enter();
    const Vector3 wanted = ToWorld(GetView().GetCube().GetGeometryPartDirection(part)).Normalized();
    EXPECT_LT((GetDirection() + wanted).Length(), 1e-5) << present.name;
    EXPECT_EQ(present.id, part) << "stays under the focus";
    EXPECT_TRUE(present.on) << "the view is along it";
    Key(SDLK_ESCAPE);
    EXPECT_EQ(present.group, "");
  }
}

TEST_F(ViewerFocusTest, the_buttons_of_the_cube_are_pressed_by_enter) {
  TabTo("Cube");
  Key(SDLK_TAB);
  Explore();
  EXPECT_EQ(things.count(Orientor::OVERLAY_ROTATE_CLOCKWISE), 0U) << "shows along a face alone";
  Key(SDLK_ESCAPE);
  Press(SDLK_1);  // the front
  ComeToRest();
  TabTo("Cube");
  Key(SDLK_TAB);
  const Steps steps = Explore();
  ASSERT_EQ(things.count(Orientor::OVERLAY_ROTATE_CLOCKWISE), 1U);
  const Vector3 up = GetHub().GetView().up.Normalized();
  GoTo(steps, Orientor::OVERLAY_ROTATE_CLOCKWISE);
  EXPECT_EQ(present.name, "Turn clockwise");
  Enter();
  EXPECT_NEAR(GetHub().GetView().up.Normalized().Dot(up), 0.0, 1e-6);
  GoTo(steps, Orientor::OVERLAY_HOME);
  EXPECT_EQ(present.name, GetText(68));
  Enter();
  EXPECT_LT((GetHub().GetView().eye - GetHub().GetHomeCamera().eye).Length(), 1e-3);
  GoTo(steps, Orientor::OVERLAY_CONTEXT_MENU);
  EXPECT_EQ(present.role, FocusRole::MenuButton);
  Enter();
  EXPECT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Cube);
}

// ---- a disc ----

TEST_F(ViewerFocusTest, each_wedge_of_a_disc_is_pressed_and_held_by_enter) {
  Press(SDLK_F1, KMOD_LSHIFT);
  const auto open = [this] {
    Key(SDLK_ESCAPE);
    if (GetView().GetDisc().GetActiveDisc() == DiscType::None) {
      GetView().Run(*zovview::FindViewCommand("disc-full-navigation"));
    }
    ComeToRest();
    TabTo("Disc");
  };
  Move(400, 300);
  open();
  Steps steps = Explore();
  const std::map<int, FocusThing> wedges = things;
  EXPECT_GE(wedges.size(), 10U);
  std::set<std::string> names;
  for (const auto& [id, wedge] : wedges) {
    Press(SDLK_ESCAPE);
    Move(400, 300);
    open();
    steps = Explore();
    GoTo(steps, id);
    names.insert(present.name);
    EXPECT_EQ(present.name, wedge.name);
    PushKey(SDL_KEYDOWN, SDLK_RETURN);
    DrawFrames();
    EXPECT_TRUE(GetView().GetManager().IsLeftMouseDown()) << present.name;
    Korvane::TrackMenu& menu = *GetView().GetDisc().GetActiveTrackMenu();
    EXPECT_EQ(menu.GetActiveRegion().color, menu.GetRegion(id)->color) << wedge.name;
    PushKey(SDL_KEYUP, SDLK_RETURN);
    ComeToRest();
    EXPECT_FALSE(GetView().GetManager().IsLeftMouseDown());
    Key(SDLK_ESCAPE);
    if (viewer->IsMenuOpen()) Press(SDLK_ESCAPE);
    ComeToRest();
  }
  EXPECT_EQ(names.size(), wedges.size());
  EXPECT_TRUE(names.contains(GetText(23))) << "an orbit";
}

TEST_F(ViewerFocusTest, a_wedge_that_is_held_is_dragged_by_arrows) {
  Press(SDLK_F1, KMOD_LSHIFT);
  Move(400, 300);
  GetView().Run(*zovview::FindViewCommand("disc-full-navigation"));
  ComeToRest();
  TabTo("Disc");
  const Steps steps = Explore();
  GoTo(steps, FindThing(GetText(23)));
  const Vector3 direction = GetDirection();
  PushKey(SDL_KEYDOWN, SDLK_RETURN);
  DrawFrames();
  for (int i = 0; i < 5; ++i) PushKey(SDL_KEYDOWN, SDLK_LEFT);
  DrawFrames();
  PushKey(SDL_KEYUP, SDLK_RETURN);
  ComeToRest();
  EXPECT_GT((GetDirection() - direction).Length(), 0.05);
  EXPECT_EQ(present.name, GetText(23));
}

// ---- the bars ----

TEST_F(ViewerFocusTest, each_item_of_the_navigation_bar_is_pressed_by_enter) {
  Press(SDLK_F1, KMOD_LSHIFT);
  ComeToRest();
  TabTo("Navigation bar");
  const Steps steps = Explore();
  using Bar = Korvane::NavigationBar;
  const auto item = [&](int id) {
    GoTo(steps, id);
    EXPECT_FALSE(present.name.empty()) << id;
    Enter();
  };
  for (const int id : {1, 2, 6, 13, 201, 202, 203, 100006}) EXPECT_EQ(things.count(id), 1U) << id;
  const Vector3 home = GetHub().GetHomeCamera().eye;
  Key(SDLK_ESCAPE);
  Drag(300, 400, 200);
  TabTo("Navigation bar");
  item(201);
  EXPECT_LT((GetHub().GetView().eye - home).Length(), 1e-3);
  item(202);
  EXPECT_GT((GetHub().GetView().eye - home).Length(), 1e-3) << "fits";
  item(203);
  EXPECT_TRUE(GetHub().GetView().IsOrthographic());
  DrawFrames();
  EXPECT_TRUE(present.on) << "and says so";
  item(13);
  EXPECT_TRUE(GetView().GetStory().IsShown());
  item(13);
  EXPECT_FALSE(GetView().GetStory().IsShown());
  item(100006);
  EXPECT_EQ(present.role, FocusRole::MenuButton);
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Discs);
  Press(SDLK_ESCAPE);
  ComeToRest();
  TabTo("Navigation bar");
  item(Bar::TAG_MENU);
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Bar);
  Press(SDLK_ESCAPE);
  ComeToRest();
  TabTo("Navigation bar");
  item(Bar::TAG_FULL_NAVIGATION);
  EXPECT_EQ(GetView().GetDisc().GetActiveDisc(), DiscType::FullNavigation);
  item(Bar::TAG_FULL_NAVIGATION);
  EXPECT_EQ(GetView().GetDisc().GetActiveDisc(), DiscType::None);
  item(Bar::TAG_CLOSE);
  EXPECT_FALSE(GetView().GetManager().IsNavigationBarVisible());
}

TEST_F(ViewerFocusTest, the_frame_of_what_stands_at_the_edge_of_the_view_is_within) {
  constexpr int FROM_EDGE = 8;
  Press(SDLK_F1, KMOD_LSHIFT);
  ComeToRest();
  TabTo("Navigation bar");
  GoTo(Explore(), Korvane::NavigationBar::TAG_CLOSE);
  const Korvane::Box2 place = present.bounds;
  ASSERT_GT(place.Max().x, apps_test::WIDTH - 5) << "where the frame would not be seen";
  std::array<std::array<unsigned char, 3>, FROM_EDGE> row = {};
  DrawFrames();
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(apps_test::WIDTH - FROM_EDGE, static_cast<int>(place.center.y), FROM_EDGE, 1, GL_RGB,
               GL_UNSIGNED_BYTE, row.data());
  EXPECT_EQ(row.back(), (std::array<unsigned char, 3>{255, 255, 255})) << "its outer line";
  std::array<unsigned char, 3> accent = {};
  for (std::size_t i = 0; i < accent.size(); ++i)
    accent[i] = static_cast<unsigned char>(std::lround(zovhost::ACCENT_COLOUR[i] * 255.0));
  EXPECT_GE(std::count(row.begin(), row.end(), accent), 2);
}

TEST_F(ViewerFocusTest, each_item_of_the_toolbar_is_pressed_by_enter) {
  Press(SDLK_F1, KMOD_LSHIFT);
  GetView().Run(*zovview::FindViewCommand("toggle-tools"));
  ComeToRest();
  TabTo("Toolbar");
  const Steps steps = Explore();
  int count = 0;
  for (const zovview::ViewTool& tool : zovview::GetViewTools()) {
    if (things.count(tool.id) == 0) continue;
    ++count;
    GoTo(steps, tool.id);
    Enter();
    EXPECT_EQ(GetView().GetManager().GetActiveTool(), tool.id) << present.name;
    EXPECT_TRUE(present.on) << present.name;
  }
  EXPECT_GE(count, 5);
}

// ---- in another language ----

TEST_F(ViewerFocusTest, says_what_it_is_on_in_the_language_that_is_chosen_meanwhile) {
  GetView().Run(*zovview::FindViewCommand("toggle-tools"));
  TabTo("Cube");
  EXPECT_EQ(present.name, "TOP, FRONT, RIGHT");
  const struct {
    const char* language;
    const char* cube;
    const char* comma;
    const char* bar;
    const char* toolbar;
    const char* panel;
  } rows[] = {
      {"de", "Würfel", ", ", "Navigationsleiste", "Werkzeugleiste", "Tafel"},
      {"ja", "キューブ", "、", "ナビゲーションバー", "ツールバー", "パネル"},
      {"ar", "المكعب", "، ", "شريط التنقل", "شريط الأدوات", "اللوحة"},
      {"en", "Cube", ", ", "Navigation bar", "Toolbar", "Panel"},
  };
  for (const auto& row : rows) {
    Speak(row.language);
    EXPECT_EQ(present.group, row.cube) << "told without a key";
    EXPECT_EQ(present.name, GetText(zovhost::HOST_TEXT_TOP) + row.comma + GetText(zovhost::HOST_TEXT_FRONT) +
                                row.comma + GetText(zovhost::HOST_TEXT_RIGHT));
    for (const char* const group : {row.bar, row.toolbar, row.panel, row.cube}) TabTo(group);
  }
}

TEST_F(ViewerFocusTest, every_wedge_of_every_disc_has_a_name_in_each_language) {
  for (const char* const disc :
       {"disc-view-object", "disc-tour-building", "disc-full-navigation", "disc-2d", "disc-mini-view-object",
        "disc-mini-tour-building", "disc-mini-full-navigation"}) {
    GetView().Run(*zovview::FindViewCommand(disc));
    for (const char* const language : {"ja", "ar", "en"}) {
      Speak(language);
      TabTo(zovhost::GetPhrases().SayPlain("Disc"));
      Explore();
      EXPECT_GE(things.size(), 4U) << disc;
      for (const auto& [id, thing] : things) EXPECT_NE(thing.name, "") << disc << ' ' << language;
    }
    Key(SDLK_ESCAPE);
  }
}

// ---- the panel ----

TEST_F(ViewerFocusTest, the_panel_follows_on_the_bars_and_its_buttons_are_pressed_by_enter) {
  UnfoldPanel();
  ComeToRest();
  TabTo("Navigation bar");
  Key(SDLK_TAB);
  EXPECT_EQ(present.group, "Panel");
  Steps steps = Explore();
  GoTo(steps, FindThing("Top"));
  Enter();
  EXPECT_LT((GetDirection() + GetHub().GetWorldUpDirection()).Length(), 1e-5);
  const auto story = FindThing("Story", FocusRole::Heading);
  GoTo(steps, story);
  EXPECT_FALSE(present.on);
  const std::size_t before = things.size();
  Enter();
  EXPECT_TRUE(present.on) << "it is open";
  steps = Explore();
  EXPECT_GT(things.size(), before);
  Key(SDLK_TAB);
  EXPECT_EQ(present.group, "Cube") << "and round again";
}

TEST_F(ViewerFocusTest, a_setting_of_the_panel_tells_whether_it_is_on) {
  UnfoldPanel();
  ComeToRest();
  TabTo("Panel");
  const Steps steps = Explore();
  const bool before = GetHub().GetApplicationParameters().do_snap_orbit;
  for (const auto& [id, thing] : std::map<int, FocusThing>(things)) {
    if (thing.role != FocusRole::ToggleButton || thing.name.find("nap") == std::string::npos) continue;
    GoTo(steps, id);
    EXPECT_EQ(present.on, before);
    Enter();
    EXPECT_NE(GetHub().GetApplicationParameters().do_snap_orbit, before);
    EXPECT_NE(present.on, before);
  }
  EXPECT_NE(GetHub().GetApplicationParameters().do_snap_orbit, before);
}

// ---- what ends it, and what stays the view's ----

TEST_F(ViewerFocusTest, a_press_of_the_mouse_and_escape_end_it) {
  TabTo("Cube");
  PushButton(SDL_MOUSEBUTTONDOWN, 500, 100, 1);
  PushButton(SDL_MOUSEBUTTONUP, 500, 100, 1);
  ComeToRest();
  EXPECT_FALSE(GetView().GetFocus().GetFocus().IsActive());
  TabTo("Panel");
  PushButton(SDL_MOUSEBUTTONDOWN, 500, 100, 1);
  PushButton(SDL_MOUSEBUTTONUP, 500, 100, 1);
  ComeToRest();
  EXPECT_FALSE(viewer->GetPanelFocus().IsActive());
  EXPECT_EQ(present.group, "");
}

}  // namespace
