// The welcome screen of a disc.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "disc/disc_scene.h"
#include "support/allocation_counter.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

constexpr int AREAS = 11;
constexpr int NOWHERE = AREAS;  // on the screen, where the map is transparent

// The eleven colours of a map, in their order.
const double COLOURS[AREAS][3] = {{1, 0, 0}, {0, 0, 0.5}, {0, 1, 1}, {0.5, 0, 0},   {0, 0.5, 0},  {1, 1, 0},
                                  {0, 1, 0}, {1, 0, 1},   {0, 0, 1}, {0.5, 0.5, 0}, {0.5, 0, 0.5}};

// Each has an area of 10 x 20 pixels on both maps, one beside the other from the left.
struct WelcomeScene : DiscScene {
  WelcomeScene() {
    disc.GetParameters().suppressWelcome = false;
    disc.GetParameters().alwaysShowWelcome = true;
    MapImage image(10 * (AREAS + 1), 20);
    for (int i = 0; i < AREAS; ++i)
      image.Fill(10 * i, 0, 10, 20, ToByte(COLOURS[i][0]), ToByte(COLOURS[i][1]), ToByte(COLOURS[i][2]));
    renderer.images[83] = renderer.images[88] = image;
  }

  void StartOn(bool advanced) {
    disc.GetParameters().welcomeStartsAdvanced = advanced;
    Start();
  }
  void MoveTo(int area) { disc.OnMouseMove(GetX(area), GetY()); }
  /// First onto the screen.
  void EnterTo(int area) {
    MoveTo(0);
    MoveTo(area);
  }
  bool Press(int area) { return disc.OnLeftMouseDown(GetX(area), GetY()); }
  bool Release(int area) { return disc.OnLeftMouseUp(GetX(area), GetY()); }
  int GetX(int area) const { return disc.open.welcome.x + 256 - 5 * (AREAS + 1) + 10 * area + 5; }
  int GetY() const { return disc.open.welcome.y + 256; }
  TrackMenu& Menu() { return *disc.GetWelcomeTrackMenu(); }

  /// The number of the one picture that a frame of the screen draws; -1 for none or several.
  int GetDrawn() {
    renderer.ClearCalls();
    disc.DrawOverlay();
    int drawn = -1;
    int count = 0;
    for (const std::string& call : renderer.TakeCalls()) {
      if (call.rfind("RenderResource(", 0) != 0) continue;
      drawn = std::stoi(call.substr(15));
      ++count;
    }
    return count == 1 ? drawn : -1;
  }
};

class WelcomeTest : public ::testing::Test, public WelcomeScene {};

/// Textures that a host holds, from what it was asked.
std::vector<int> HeldTextures(const std::vector<std::string>& calls) {
  std::map<int, int> held;
  for (const std::string& call : calls) {
    if (call.rfind("LoadTexture(", 0) == 0) ++held[std::stoi(call.substr(12))];
    if (call.rfind("ReleaseTexture(", 0) == 0) --held[std::stoi(call.substr(15))];
  }
  std::vector<int> numbers;
  for (const auto& [number, count] : held) {
    EXPECT_TRUE(count == 0 || count == 1) << number;
    if (count != 0) numbers.push_back(number);
  }
  return numbers;
}

using Numbers = std::vector<int>;

// ---- its size ----

TEST_F(WelcomeTest, counts_in_points) {
  StartOn(true);
  for (const float scale : {1.5F, 2.0F, 1.0F}) {
    hub.GetApplicationParameters().pixels_per_point = scale;
    disc.SetWelcomeMenuPosition(100, 50);
    const double half = 256.0 * static_cast<double>(scale);
    EXPECT_EQ(disc.open.welcome.shown->GetPosition(), Vector2(100 + half, 50 + half));
    EXPECT_EQ(disc.open.welcome.shown->GetWidth(), 2.0 * half);
    EXPECT_EQ(Menu().GetWidth(), static_cast<int>(120.0F * scale)) << "as large as its map";
    EXPECT_EQ(Menu().GetRegionMap()->GetPosition(), disc.open.welcome.GetMiddle());
  }
}

// Also the map of the page that did not show when the screen became smaller again.
TEST_F(WelcomeTest, both_pages_count_in_the_points_of_now) {
  StartOn(true);
  const auto turn = [&](bool advanced) {
    TrackMenu::Region choice;
    for (const WelcomeArea& area : GetWelcomeAreas()) {
      if (area.turn && area.turn->toAdvanced == advanced) choice.color = area.colour;
    }
    Menu().SetActiveRegion(choice);
    disc.open.welcome.over = true;
    disc.ClickWelcome();
    ASSERT_EQ(disc.open.welcome.advancedPage, advanced);
  };
  for (const float scale : {2.0F, 1.0F}) {
    hub.GetApplicationParameters().pixels_per_point = scale;
    disc.SetWelcomeMenuPosition(0, 0);
    for (const bool advanced : {false, true}) {
      turn(advanced);
      EXPECT_EQ(Menu().GetRegionMap()->GetWidth(), 120.0 * static_cast<double>(scale)) << advanced;
    }
    turn(false);
  }
}

// ---- tables ----

TEST(WelcomeMenuParts, have_their_numbers) {
  using P = WelcomeMenuPart;
  int number = 0;
  for (const P part :
       {P::AdvancedTitle, P::BasicTitle, P::SwitchToAdvanced, P::SwitchToBasic, P::AdvancedFourth,
        P::AdvancedThird, P::AdvancedSecond, P::AdvancedFirst, P::BasicSecond, P::BasicFirst})
    EXPECT_EQ(static_cast<int>(part), number++);
}

TEST(WelcomePictures, have_their_textures) {
  const int textures[] = {77, 78, 79, 80, 81, 82, 84, 85, 86, 87};
  const WelcomeScreen screen;
  ASSERT_EQ(screen.icons.size(), std::size(textures));
  for (std::size_t i = 0; i < screen.icons.size(); ++i)
    EXPECT_EQ(screen.icons[i].GetTextureResourceID(), textures[i]);
}

TEST_F(WelcomeTest, has_a_region_of_each_colour_and_a_black_one_where_there_is_none) {
  Start();
  for (int i = 0; i < AREAS; ++i) {
    const TrackMenu::Region* const region = Menu().GetRegion(i);
    ASSERT_NE(region, nullptr);
    EXPECT_EQ(region->color, Vector3(COLOURS[i])) << i;
    EXPECT_EQ(region->listener, nullptr);
    EXPECT_EQ(region->icon, nullptr);
    EXPECT_EQ(region->overlayIcon, nullptr);
    EXPECT_EQ(region->labelString, 102);
    EXPECT_EQ(region->tooltipString, 102);
    EXPECT_EQ(region->tooltipHUDString, 102);
    EXPECT_EQ(region->cursorID, 26);
    EXPECT_TRUE(region->enabled);
    EXPECT_TRUE(region->wrap);
    EXPECT_FALSE(region->sticky);
    EXPECT_EQ(region->zone, -1);
  }
  EXPECT_EQ(Menu().GetRegion(AREAS), nullptr);
  disc.OnMouseMove(799, 599);
  EXPECT_EQ(Menu().GetActiveRegion().color, Vector3(0, 0, 0));
}

// What shows with the cursor on each area, once it is on the screen; 0: the title, as it was.
struct HoverRow {
  int advanced;
  int basic;
};
const HoverRow HOVERS[AREAS + 1] = {{78, 85}, {78, 85}, {0, 0},   {0, 0},   {0, 0},   {79, 84},
                                    {80, 84}, {81, 84}, {82, 84}, {77, 86}, {77, 87}, {77, 84}};

TEST_F(WelcomeTest, shows_what_is_under_the_cursor) {
  for (const bool advanced : {true, false}) {
    StartOn(advanced);
    for (int area = 0; area <= NOWHERE; ++area) {
      EnterTo(area);
      const int title = advanced ? 78 : 85;
      const int plain = advanced ? 77 : 84;
      const int expected = advanced ? HOVERS[area].advanced : HOVERS[area].basic;
      EXPECT_EQ(GetDrawn(), expected == 0 ? title : expected) << area;
      EXPECT_EQ(disc.IsOverWelcome(), expected != plain) << area;
    }
  }
}

// A choice, a switch and the area between change nothing before.
TEST_F(WelcomeTest, is_entered_by_its_ground_or_its_title_only) {
  for (const bool advanced : {true, false}) {
    StartOn(advanced);
    const int plain = advanced ? 77 : 84;
    for (int area = 2; area <= NOWHERE; ++area) {
      MoveTo(area);
      EXPECT_FALSE(disc.IsOverWelcome()) << area;
      EXPECT_EQ(GetDrawn(), plain) << area;
      EXPECT_FALSE(Press(area)) << area;
      EXPECT_FALSE(Release(area)) << area;
    }
    EXPECT_EQ(journal.Take(), Lines());
    for (const int area : {0, 1}) {
      MoveTo(area);
      EXPECT_TRUE(disc.IsOverWelcome());
      MoveTo(NOWHERE);
      EXPECT_EQ(journal.Take(), (Lines{"OnWelcomeEntered", "OnWelcomeExited"}));
    }
  }
}

// What a click on each area is told as, and opens; the choices of the other page are no part of the screen.
struct ClickRow {
  int area;
  int part;
  DiscType disc;
};

class WelcomeClicks : public WelcomeTest {
 protected:
  void ExpectClicks(bool advanced, std::initializer_list<ClickRow> rows) {
    for (const ClickRow& row : rows) {
      StartOn(advanced);
      EnterTo(row.area);
      Forget();
      EXPECT_TRUE(Press(row.area));
      EXPECT_EQ(disc.GetActiveDisc(), row.disc) << row.area;
      const std::string part = "OnWelcomeClicked(" + std::to_string(row.part) + ")";
      const std::string opened = "OnActivated(" + std::to_string(static_cast<int>(row.disc)) + ")";
      EXPECT_EQ(journal.Take(), (Lines{part, "OnWelcomeClosed", opened})) << row.area;
      EXPECT_FALSE(Menu().GetVisible());
      EXPECT_TRUE(disc.OnKeyDown(static_cast<KeyID>(9)));  // captured until the release
      journal.Take();
      EXPECT_TRUE(Release(row.area));  // which goes no further
      EXPECT_EQ(journal.Take(), Lines());
      EXPECT_FALSE(disc.OnLeftMouseUp(0, 0));
      disc.SetActiveDisc(DiscType::None);
    }
  }
};

TEST_F(WelcomeClicks, on_the_advanced_page_open_their_discs) {
  ExpectClicks(true, {{0, 0, DiscType::FullNavigation},
                      {1, 0, DiscType::FullNavigation},
                      {8, 4, DiscType::FullNavigation},
                      {7, 5, DiscType::MiniFullNavigation},
                      {6, 6, DiscType::MiniTourBuilding},
                      {5, 7, DiscType::MiniViewObject}});
}

TEST_F(WelcomeClicks, on_the_basic_page_open_their_discs) {
  ExpectClicks(false, {{0, 1, DiscType::ViewObject},
                       {1, 1, DiscType::ViewObject},
                       {10, 8, DiscType::TourBuilding},
                       {9, 9, DiscType::ViewObject}});
}

// ---- the screen ----

TEST_F(WelcomeTest, stands_where_it_was_put_up_on_the_page_that_was_chosen) {
  for (const bool advanced : {true, false}) {
    StartOn(advanced);
    EXPECT_TRUE(Menu().GetVisible());
    EXPECT_TRUE(Menu().GetLocked());
    EXPECT_EQ(Menu().GetWidth(), 120);  // from the map
    EXPECT_EQ(Menu().GetHeight(), 20);
    EXPECT_EQ(Menu().GetRegionMap()->GetPosition(), Vector2(256, 256));
    EXPECT_EQ(GetDrawn(), advanced ? 77 : 84);
    const ResourceIcon2D& shown = *disc.open.welcome.shown;
    EXPECT_TRUE(shown.IsVisible());
    EXPECT_EQ(shown.GetWidth(), 512);
    EXPECT_EQ(shown.GetHeight(), 512);
    EXPECT_EQ(shown.GetPosition(), Vector2(256, 256));
    EXPECT_EQ(disc.open.welcome.advancedPage, advanced);
    EXPECT_FALSE(disc.IsOverWelcome());
  }
}

// An advanced page that only its own map has, and the other way round.
TEST_F(WelcomeTest, has_a_map_for_each_page) {
  renderer.images[83].Fill(0, 0, 120, 20, 0, 255, 0);    // the second choice
  renderer.images[88].Fill(0, 0, 120, 20, 128, 0, 128);  // of the basic page
  for (const bool advanced : {true, false}) {
    StartOn(advanced);
    disc.OnMouseMove(256, 256);
    EXPECT_EQ(Menu().GetActiveRegion().color, advanced ? Vector3(0, 1, 0) : Vector3(0.5, 0, 0.5));
  }
}

TEST_F(WelcomeTest, does_not_follow_the_cursor) {
  Start();
  disc.OnMouseMove(799, 599);
  disc.DrawOverlay();
  EXPECT_EQ(Menu().GetRegionMap()->GetPosition(), Vector2(256, 256));
}

TEST_F(WelcomeTest, moves_with_its_maps_to_the_place_that_it_is_given) {
  Start();
  disc.SetWelcomeMenuPosition(100, 40);
  EXPECT_EQ(Menu().GetRegionMap()->GetPosition(), Vector2(356, 296));
  EXPECT_EQ(disc.open.welcome.shown->GetPosition(), Vector2(356, 296));
  EnterTo(6);
  EXPECT_EQ(disc.open.welcome.shown->GetPosition(), Vector2(356, 296));  // the next picture, too
  EXPECT_EQ(GetDrawn(), 80);
  Menu().UseAlternateRegionMap(true);
  EXPECT_EQ(Menu().GetRegionMap()->GetPosition(), Vector2(356, 296));
  const int far = std::numeric_limits<int>::max();
  disc.SetWelcomeMenuPosition(far, -far);  // beyond any view
  disc.OnMouseMove(300, 300);
  EXPECT_FALSE(disc.IsOverWelcome());
}

TEST_F(WelcomeTest, is_seen_by_moving_over_it) {
  Start();
  HelmDiscParameters& parameters = disc.GetParameters();
  MoveTo(2);
  EXPECT_FALSE(parameters.welcomeSeen);
  MoveTo(1);
  EXPECT_TRUE(parameters.welcomeSeen);
  EXPECT_EQ(journal.Take(), Lines{"OnWelcomeEntered"});
  MoveTo(2);
  MoveTo(5);
  MoveTo(0);
  EXPECT_EQ(journal.Take(), Lines());
  MoveTo(9);
  EXPECT_EQ(journal.Take(), Lines{"OnWelcomeExited"});
}

TEST_F(WelcomeTest, is_not_seen_by_clicking) {
  Start();
  Menu().SetActiveRegion(*Menu().GetRegion(0));
  EXPECT_FALSE(Press(0));  // the cursor has not come over it
  EXPECT_FALSE(disc.GetParameters().welcomeSeen);
  disc.open.welcome.over = true;
  disc.open.welcome.toldOver = true;
  disc.ChangeWelcomeIcon(&disc.open.welcome.icons[1]);
  EXPECT_TRUE(Press(0));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  EXPECT_FALSE(disc.GetParameters().welcomeSeen);
}

TEST_F(WelcomeTest, compares_colours_exactly) {
  Start();
  TrackMenu::Region region = *Menu().GetRegion(0);
  region.color.x = std::nextafter(1.0, 0.0);
  Menu().SetActiveRegion(region);
  disc.UpdateWelcome();
  EXPECT_FALSE(disc.IsOverWelcome());
  region.color.x = 1.0;
  Menu().SetActiveRegion(region);
  disc.UpdateWelcome();
  EXPECT_TRUE(disc.IsOverWelcome());
}

// Beside a held button, the area that was pressed keeps the press.
TEST_F(WelcomeTest, is_left_beside_its_map_unless_the_button_is_down) {
  Start();
  EnterTo(2);
  EXPECT_TRUE(Press(2));  // the title shows
  EXPECT_FALSE(Menu().GetVisible());
  Release(2);
  disc.SetActiveDisc(DiscType::None);
  Start();
  EnterTo(4);
  EXPECT_TRUE(Press(4));
  disc.OnMouseMove(799, 599);
  EXPECT_TRUE(disc.IsOverWelcome());
  disc.OnLeftMouseUp(799, 599);
  disc.OnMouseMove(799, 599);
  EXPECT_FALSE(disc.IsOverWelcome());
  EXPECT_EQ(GetDrawn(), 84);
}

// ---- clicks ----

TEST_F(WelcomeTest, a_switch_turns_the_page_and_leaves_no_click_pending) {
  Start();
  EnterTo(6);
  MoveTo(4);
  journal.Take();
  EXPECT_TRUE(Press(4));
  EXPECT_EQ(journal.Take(), Lines{"OnWelcomeClicked(3)"});
  EXPECT_EQ(GetDrawn(), 85);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_TRUE(Menu().IsLeftButtonDown());
  EXPECT_FALSE(Release(4));
  EXPECT_FALSE(Menu().IsLeftButtonDown());  // the release came through
  MoveTo(9);
  EXPECT_EQ(GetDrawn(), 86);
  MoveTo(3);
  EXPECT_TRUE(Press(3));
  EXPECT_EQ(journal.Take(), Lines{"OnWelcomeClicked(2)"});
  EXPECT_EQ(GetDrawn(), 78);
  EXPECT_FALSE(Release(3));
  MoveTo(9);
  EXPECT_EQ(GetDrawn(), 77);  // no choice of this page
}

TEST_F(WelcomeTest, a_switch_to_the_page_that_is_up_shows_its_title) {
  Start();
  EnterTo(7);
  MoveTo(3);
  EXPECT_EQ(GetDrawn(), 81);
  EXPECT_TRUE(Press(3));
  EXPECT_EQ(GetDrawn(), 78);
}

TEST_F(WelcomeTest, a_click_on_the_ground_is_one_on_the_title) {
  for (const bool advanced : {true, false}) {
    StartOn(advanced);
    MoveTo(0);
    EXPECT_TRUE(Press(0));
    EXPECT_EQ(journal.lines[1], advanced ? "OnWelcomeClicked(0)" : "OnWelcomeClicked(1)");
    Release(0);
  }
}

TEST_F(WelcomeTest, a_click_is_on_what_shows_and_not_on_what_lies_there) {
  Start();
  EnterTo(6);
  MoveTo(2);  // which keeps the picture
  EXPECT_TRUE(Press(2));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::MiniTourBuilding);
}

TEST_F(WelcomeTest, a_click_on_another_picture_is_none) {
  Start();
  MoveTo(0);
  ResourceIcon2D other(static_cast<TextureID>(20));
  disc.ChangeWelcomeIcon(&other);
  EXPECT_EQ(GetDrawn(), 20);
  disc.ChangeWelcomeIcon(nullptr);
  EXPECT_EQ(GetDrawn(), 20);
  EXPECT_FALSE(Press(0));
  disc.ChangeWelcomeIcon(&disc.open.welcome.icons[0]);
  EXPECT_FALSE(Press(0));  // the plain page
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
}

TEST_F(WelcomeTest, a_release_that_was_lost_leaves_the_next_press_alone) {
  Start();
  MoveTo(0);
  Press(0);
  ASSERT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  disc.OnMouseMove(400, 300);
  disc.OnLeftMouseDown(400, 300);
  TrackMenu& open = *disc.GetActiveTrackMenu();
  EXPECT_TRUE(open.IsLeftButtonDown());
  disc.OnLeftMouseUp(400, 300);
  EXPECT_FALSE(open.IsLeftButtonDown());
}

// ---- its end, and without it ----

TEST_F(WelcomeTest, goes_when_a_disc_opens_and_comes_back_with_another_create) {
  Start();
  EnterTo(5);
  journal.Take();
  disc.OnKeyUp(KEY_DISC);
  EXPECT_EQ(journal.Take(), (Lines{"OnWelcomeClosed", "OnActivated(2)"}));
  EXPECT_FALSE(disc.IsOverWelcome());
  EXPECT_FALSE(Menu().GetEnabled());
  disc.SetActiveDisc(DiscType::None);
  EXPECT_FALSE(Menu().GetVisible());

  Start();
  EXPECT_TRUE(Menu().GetEnabled());
  EXPECT_TRUE(Menu().GetVisible());
  EXPECT_EQ(GetDrawn(), 77);
  EXPECT_EQ(Menu().GetRegion(AREAS), nullptr);  // filled once
  EnterTo(5);
  EXPECT_EQ(journal.Take(), Lines{"OnWelcomeEntered"});
  EXPECT_EQ(GetDrawn(), 79);
}

TEST_F(WelcomeTest, is_not_made_once_it_has_been_seen) {
  disc.GetParameters().welcomeSeen = true;
  disc.GetParameters().alwaysShowWelcome = false;
  Start();
  EXPECT_EQ(disc.GetWelcomeTrackMenu(), nullptr);
  EXPECT_FALSE(disc.InitWelcome());
  disc.UpdateWelcome();
  EXPECT_FALSE(disc.ClickWelcome());
  disc.ChangeWelcomeIcon(&disc.open.welcome.icons[0]);
  EXPECT_EQ(disc.open.welcome.shown, nullptr);
  disc.SetWelcomeMenuPosition(3, 4);
  EXPECT_EQ(disc.open.welcome.x, 3);
  EXPECT_FALSE(disc.IsOverWelcome());
  EXPECT_FALSE(Press(0));
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(journal.Take(), Lines{"OnActivated(3)"});
}

// It can be seen and be put away, but has nothing to click.
TEST_F(WelcomeTest, without_maps_only_shows) {
  for (const bool failing : {true, false}) {
    renderer.images[83] = renderer.images[88] = MapImage(1, 1);  // transparent
    renderer.onImage = [&] {
      if (failing && disc.open.menus[6]->GetRegion(12) != nullptr) renderer.FailAlways("CreateImageData");
    };
    disc.Create();
    renderer.onImage = nullptr;
    renderer.Succeed("CreateImageData");
    disc.SetViewportSize(800, 600);
    EXPECT_EQ(GetDrawn(), 77);
    MoveTo(0);
    disc.SetWelcomeMenuPosition(0, 0);
    EXPECT_FALSE(disc.IsOverWelcome());
    EXPECT_FALSE(Press(0));
    Release(0);
    disc.SetActiveDisc(DiscType::TwoD);
    EXPECT_FALSE(Menu().GetVisible());
    disc.SetActiveDisc(DiscType::None);
  }
}

// ---- textures ----

class WelcomeTextures : public WelcomeTest {
 protected:
  void Note() {
    for (std::string& call : renderer.TakeCalls()) calls.push_back(std::move(call));
  }
  Numbers GetHeld() {
    renderer.ApplyTextureUsage();
    Note();
    return HeldTextures(calls);
  }

  std::vector<std::string> calls;
};

TEST_F(WelcomeTextures, holds_the_picture_that_shows_and_no_other) {
  disc.Create();
  disc.SetViewportSize(800, 600);
  Note();
  EXPECT_EQ(HeldTextures(calls), Numbers{77});  // applied at once
  for (const auto& [area, texture] : std::vector<std::pair<int, int>>{{0, 78}, {5, 79}, {7, 81}, {10, 77}}) {
    MoveTo(area);
    Note();
    EXPECT_EQ(HeldTextures(calls), Numbers{texture});
  }
}

TEST_F(WelcomeTextures, gives_it_back_when_a_disc_opens_and_takes_it_again) {
  for (int round = 0; round < 3; ++round) {
    disc.Create();
    disc.SetViewportSize(800, 600);
    EXPECT_EQ(GetHeld(), Numbers{77});
    if (round == 1) EnterTo(6);
    disc.SetActiveDisc(DiscType::TwoD);
    disc.SetActiveDisc(DiscType::None);
    EXPECT_EQ(GetHeld(), Numbers());
  }
}

TEST_F(WelcomeTextures, are_balanced_when_it_is_created_again_while_it_shows) {
  disc.Create();
  disc.SetViewportSize(800, 600);
  EnterTo(6);
  disc.Create();
  EXPECT_EQ(GetHeld(), Numbers{77});
  disc.GetParameters().suppressWelcome = true;
  disc.Create();
  EXPECT_EQ(disc.GetWelcomeTrackMenu(), nullptr);
  EXPECT_EQ(GetHeld(), Numbers());
}

TEST_F(WelcomeTextures, are_balanced_when_the_disc_is_destroyed_while_it_shows) {
  disc.Create();
  disc.SetViewportSize(800, 600);
  EnterTo(6);
  disc.Destroy();
  EXPECT_EQ(GetHeld(), Numbers());
  EXPECT_FALSE(Menu().GetVisible());
  auto other = std::make_unique<HelmDisc>();
  other->SetRenderer(&renderer);
  other->Create();
  EXPECT_EQ(GetHeld(), Numbers{77});
  other.reset();
  EXPECT_EQ(GetHeld(), Numbers());
}

TEST_F(WelcomeTextures, go_with_it_to_another_renderer) {
  disc.Create();
  disc.SetViewportSize(800, 600);
  EnterTo(6);
  {
    MapRenderer next;
    disc.SetRenderer(&next);
    EXPECT_EQ(GetHeld(), Numbers());
    EXPECT_EQ(HeldTextures(next.GetCalls()), Numbers{80});
    MoveTo(7);
    EXPECT_EQ(HeldTextures(next.GetCalls()), Numbers{81});
    disc.SetRenderer(nullptr);
    EXPECT_EQ(HeldTextures(next.GetCalls()), Numbers());
    MoveTo(8);  // with nobody to load it
    disc.SetRenderer(&next);
    EXPECT_EQ(HeldTextures(next.GetCalls()), Numbers{82});
  }
  MoveTo(5);  // the renderer is gone
  disc.SetRenderer(&renderer);
  EXPECT_EQ(GetHeld(), Numbers{79});
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetActiveDisc(DiscType::None);
  EXPECT_EQ(GetHeld(), Numbers());
}

TEST_F(WelcomeTextures, a_picture_that_changes_while_the_screen_is_away_is_not_counted) {
  disc.Create();
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetActiveDisc(DiscType::None);
  disc.ChangeWelcomeIcon(&disc.open.welcome.icons[3]);
  EXPECT_EQ(GetHeld(), Numbers());
}

// ---- hosts that act ----

TEST_F(WelcomeTest, an_observer_of_a_click_chooses_another_disc_which_stays) {
  Start();
  MoveTo(0);
  observer.onHear = [&](const std::string& what) {
    if (what == "OnWelcomeClicked(0)") disc.SetActiveDisc(DiscType::TwoD);
  };
  EXPECT_TRUE(Press(0));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::TwoD);
  observer.onHear = nullptr;
  EXPECT_TRUE(Release(0));
  EXPECT_FALSE(disc.GetActiveTrackMenu()->IsLeftButtonDown());
}

TEST_F(WelcomeTest, an_observer_of_a_click_destroys_the_disc_which_stays_closed) {
  Start();
  MoveTo(0);
  observer.onHear = [&](const std::string& what) {
    if (what == "OnWelcomeClicked(0)") disc.Destroy();
  };
  EXPECT_TRUE(Press(0));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
}

// The screen is entered, a choice is picked, left, entered again, the page is turned, a disc is chosen.
void UseScreen(WelcomeScene& scene) {
  for (const int area : {0, 5, NOWHERE, 1, 4, 9}) {
    if (scene.disc.GetWelcomeTrackMenu() != nullptr) scene.MoveTo(area);
    scene.disc.DrawOverlay();
    if (area == 4) scene.Press(area);
    if (area == 4) scene.Release(area);
  }
  scene.Press(9);
  scene.Release(9);
  scene.disc.DrawOverlay();
}

// Each deed is done once from within each thing that an observer is told and each call of the host, and once
// from within each time that it comes.
TEST(WelcomeHosts, may_do_anything_meanwhile) {
  using Deed = void (*)(WelcomeScene&);
  const Deed deeds[] = {
      [](WelcomeScene& scene) { scene.disc.SetActiveDisc(DiscType::TwoD); },
      [](WelcomeScene& scene) { scene.disc.SetActiveDisc(DiscType::None); },
      [](WelcomeScene& scene) { scene.disc.Destroy(); },
      [](WelcomeScene& scene) { scene.disc.Create(); },
      [](WelcomeScene& scene) { scene.disc.SetRenderer(nullptr); },
      [](WelcomeScene& scene) { scene.disc.SetKorvane(nullptr); },
      [](WelcomeScene& scene) { scene.disc.SetViewportSize(0, 0); },
      [](WelcomeScene& scene) { scene.disc.SetWelcomeMenuPosition(9, 9); },
      [](WelcomeScene& scene) { scene.disc.RemoveObserver(&scene.observer); },
      [](WelcomeScene& scene) { scene.MoveTo(NOWHERE); },
      [](WelcomeScene& scene) { scene.Press(4); },
      [](WelcomeScene& scene) { scene.Press(1); },
      [](WelcomeScene& scene) {
        scene.disc.GetParameters().suppressWelcome = true;
        scene.disc.Create();  // the menu goes
      },
  };
  const std::string moments[] = {"OnWelcomeEntered",
                                 "OnWelcomeExited",
                                 "OnWelcomeClicked",
                                 "OnWelcomeClosed",
                                 "OnActivated",
                                 "image",
                                 "render"};
  for (const Deed deed : deeds) {
    for (const std::string& moment : moments) {
      SCOPED_TRACE(moment + " " + std::to_string(&deed - deeds));
      WelcomeScene scene;
      int left = 1;
      bool done = false;
      const auto act = [&](const std::string& what) {
        if (left == 0 || what.rfind(moment, 0) != 0) return;
        --left;
        deed(scene);
        done = true;
      };
      scene.observer.onHear = act;
      scene.renderer.onImage = [&] { act("image"); };
      scene.renderer.onRender = [&] { act("render"); };
      scene.disc.Create();
      scene.disc.SetViewportSize(800, 600);
      for (int round = 0; round < 3; ++round) UseScreen(scene);
      EXPECT_TRUE(done);
      left = 0;
      scene.disc.SetRenderer(&scene.renderer);
      scene.disc.Destroy();
      scene.renderer.ApplyTextureUsage();
      EXPECT_EQ(HeldTextures(scene.renderer.GetCalls()), Numbers());
      EXPECT_EQ(scene.renderer.GetLiveIconCount(), 0);
    }
  }
}

// The screen is left again, while the picture of its title is loaded.
TEST(WelcomeHosts, are_told_of_each_crossing_once) {
  WelcomeScene scene;
  scene.Start();
  int loads = 0;
  scene.renderer.onLoad = [&](TextureID id) {
    if (id == 78 && ++loads == 1) scene.MoveTo(NOWHERE);
  };
  scene.MoveTo(0);
  EXPECT_EQ(loads, 1);
  EXPECT_FALSE(scene.disc.IsOverWelcome());
  EXPECT_EQ(scene.journal.Take(), Lines());
  scene.MoveTo(0);
  EXPECT_EQ(scene.journal.Take(), Lines{"OnWelcomeEntered"});
}

// Remembers nothing.
class QuietRenderer : public CountingRenderer {
 public:
  explicit QuietRenderer(const MapImage& screen) : map(screen) {}
  bool LoadTexture(TextureID /*id*/) override { return ++loads > 0; }
  void ReleaseTexture(TextureID /*id*/) override {}
  PixelIcon2D* CreateImageData(TextureID /*id*/) override { return map.MakeIcon().release(); }

  MapImage map;
  int loads = 0;
};

TEST(WelcomeCosts, a_move_over_it_and_a_frame_allocate_nothing) {
  WelcomeScene scene;
  QuietRenderer renderer(scene.renderer.images[83]);
  scene.disc.RemoveObserver(&scene.observer);
  scene.disc.SetRenderer(&renderer);
  scene.Start();
  const auto sweep = [&] {
    for (int area = 0; area <= NOWHERE; ++area) {
      scene.EnterTo(area);
      scene.disc.DrawOverlay();
    }
  };
  sweep();
  renderer.loads = 0;
  const AllocationCounter counter;
  sweep();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(renderer.loads, 8);  // the pictures do change
  EXPECT_GT(renderer.icons, 2 * AREAS);
}

}  // namespace
