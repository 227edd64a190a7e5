#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "cube/gesture_scene.h"

using namespace Korvane;

namespace {

class OrientorMenusTest : public ::testing::Test, protected GestureScene {
 protected:
  void ShowLabel() {
    Parameters().draw_ucs_menu = true;
    cube.SetActiveUCS(L"Plan", false);
    renderer.ClearCalls();
  }
  Lines LabelCalls() {
    Lines calls;
    for (const std::string& call : renderer.TakeCalls()) {
      if (call.find("UCSMenuLabel") != std::string::npos || call.find("DestroyIcon") == 0)
        calls.push_back(call);
    }
    return calls;
  }
};

// ---- the context menu ----

TEST_F(OrientorMenusTest, the_menu_opens_on_cube_compass_overlay_and_label) {
  struct Row {
    int part;
    int overlay;
    bool opens;
  };
  for (const Row& row : {Row{-1, -1, false},
                         {0, -1, true},
                         {26, -1, true},
                         {57, -1, true},
                         {-1, 0, true},
                         {-1, 4, true},
                         {-1, 5, true}}) {
    cube.activePart = row.part;
    cube.highlightedPart = row.part;
    cube.activeOverlayPart = row.overlay;
    renderer.ClearCalls();
    EXPECT_EQ(cube.OpenMenu(), row.opens);
    EXPECT_EQ(renderer.GetCalls(), row.opens ? Lines{"OpenMenu(4)"} : Lines{});
    EXPECT_EQ(cube.activePart, -1);
    EXPECT_EQ(cube.highlightedPart, -1);
    EXPECT_EQ(cube.activeOverlayPart, -1);
  }
}

TEST_F(OrientorMenusTest, the_menu_needs_hub_renderer_no_shot_and_a_cube_that_reacts) {
  cube.activePart = 1;
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(cube.OpenMenu());
  cube.SetKorvane(&hub);
  cube.activePart = 1;
  Parameters().disabled = true;
  EXPECT_FALSE(cube.OpenMenu());
  Parameters().disabled = false;
  cube.SetRenderer(nullptr);
  EXPECT_FALSE(cube.OpenMenu());
  cube.SetRenderer(&renderer);
  hub.BeginShot(TransitionShotParameters{LookAlong(Vector3(0, 0, -1)), 1.0, 1.0});
  EXPECT_FALSE(cube.OpenMenu());
  EXPECT_EQ(cube.activePart, 1);
  hub.EndShot();
  EXPECT_TRUE(cube.OpenMenu());
}

TEST_F(OrientorMenusTest, with_the_mouse_pressed_the_menu_opens_on_its_own_button_alone) {
  PressOnPart(1);
  EXPECT_FALSE(cube.OpenMenu());
  cube.activeOverlayPart = 2;
  EXPECT_FALSE(cube.OpenMenu());
  cube.activeOverlayPart = 4;
  EXPECT_TRUE(cube.OpenMenu());
}

TEST_F(OrientorMenusTest, a_click_on_the_context_button_opens_the_menu) {
  EXPECT_TRUE(PressOnOverlay(4));
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 1);
  EXPECT_EQ(journal.Take(), Lines{"clicked 36"});
}

TEST_F(OrientorMenusTest, while_a_menu_is_open_the_mouse_is_on_nothing) {
  cube.activePart = 1;
  bool open = false;
  int part = 0;
  renderer.inMenu = [&] {
    open = cube.menuOpen;
    cube.SetViewportMousePosition(960, 60);
    part = cube.activePart;
    EXPECT_FALSE(cube.OpenMenu());
  };
  EXPECT_TRUE(cube.OpenMenu());
  EXPECT_TRUE(open);
  EXPECT_EQ(part, -1);
  EXPECT_FALSE(cube.menuOpen);
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 1);
}

TEST_F(OrientorMenusTest, a_host_may_take_everything_away_while_a_menu_is_open) {
  ShowLabel();
  renderer.inMenu = [&] {
    cube.SetKorvane(nullptr);
    cube.SetRewindHistory(nullptr);
  };
  for (const int overlay : {4, 5}) {
    cube.SetKorvane(&hub);
    PressOnOverlay(overlay);
    EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
    EXPECT_FALSE(cube.menuOpen);
  }
}

// ---- the menu of coordinate systems ----

TEST_F(OrientorMenusTest, the_menu_of_coordinate_systems_opens_at_the_middle_of_the_label) {
  ShowLabel();
  cube.ucsLabel.Get()->SetPosition(Vector2(900.9, 600.4));
  cube.activePart = cube.highlightedPart = 3;
  cube.activeOverlayPart = 5;
  bool open = false;
  renderer.inMenu = [&] { open = cube.menuOpen; };
  cube.OpenUCSMenu();
  EXPECT_EQ(renderer.GetCalls(), Lines{"OpenUCSMenu(900, 167)"});  // 768 - 600.4 = 167.6
  EXPECT_TRUE(open);
  EXPECT_FALSE(cube.menuOpen);
  EXPECT_EQ(cube.activePart, -1);
  EXPECT_EQ(cube.highlightedPart, -1);
  EXPECT_EQ(cube.activeOverlayPart, -1);
}

TEST_F(OrientorMenusTest, the_menu_of_coordinate_systems_needs_all_that_it_works_with) {
  ShowLabel();
  const auto opens = [&] {
    cube.OpenUCSMenu();
    return renderer.CountCalls("OpenUCSMenu") > 0;
  };
  EXPECT_FALSE(opens());  // the mouse is elsewhere
  cube.activeOverlayPart = 5;
  Parameters().draw_overlay = false;
  EXPECT_FALSE(opens());
  Parameters().draw_overlay = true;
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(opens());
  cube.SetKorvane(&hub);
  cube.activeOverlayPart = 5;
  Parameters().disabled = true;
  EXPECT_FALSE(opens());
  Parameters().disabled = false;
  cube.SetRenderer(nullptr);
  EXPECT_FALSE(opens());
  cube.SetRenderer(&renderer);
  hub.BeginShot(TransitionShotParameters{LookAlong(Vector3(0, 0, -1)), 1.0, 1.0});
  EXPECT_FALSE(opens());
  hub.EndShot();
  DynamicIcon2D* const label = cube.ucsLabel.Get();
  cube.ucsLabel.Set(nullptr);
  EXPECT_FALSE(opens());
  cube.ucsLabel.Set(label);
  EXPECT_EQ(cube.activeOverlayPart, 5);
  EXPECT_TRUE(opens());
}

TEST_F(OrientorMenusTest, a_click_on_the_label_opens_its_menu_and_has_no_number) {
  ShowLabel();
  EXPECT_TRUE(PressOnOverlay(5));
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_EQ(renderer.CountCalls("OpenUCSMenu"), 1);
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(OrientorMenusTest, the_host_answers_the_menu_with_another_name) {
  ShowLabel();
  renderer.inMenu = [&] { cube.SetActiveUCS(L"Roof", true); };
  cube.activeOverlayPart = 5;
  cube.OpenUCSMenu();
  EXPECT_STREQ(cube.GetActiveUCS(), L"Roof");
  EXPECT_EQ(renderer.GetLiveIconCount(), 2);
  EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
}

// ---- the name and its label ----

TEST_F(OrientorMenusTest, another_name_makes_both_labels_anew) {
  ShowLabel();
  cube.SetActiveUCS(L"Roof", false);
  EXPECT_EQ(LabelCalls(), (Lines{"DestroyIcon(1)", "DestroyIcon(2)", "CreateUCSMenuLabel(Roof, , 0, 120)",
                                 "CreateUCSMenuLabel(Roof, , 1, 120)"}));
  EXPECT_STREQ(cube.GetActiveUCS(), L"Roof");
}

TEST_F(OrientorMenusTest, the_same_name_makes_labels_only_where_they_do_not_match_the_wish) {
  ShowLabel();
  cube.SetActiveUCS(L"Plan", true);
  EXPECT_TRUE(LabelCalls().empty());
  Parameters().draw_ucs_menu = false;
  cube.SetActiveUCS(L"Plan", true);
  EXPECT_EQ(LabelCalls(), (Lines{"DestroyIcon(1)", "DestroyIcon(2)"}));
  cube.SetActiveUCS(L"Plan", true);
  EXPECT_TRUE(LabelCalls().empty());
  Parameters().draw_ucs_menu = true;
  cube.SetActiveUCS(L"Plan", true);
  EXPECT_EQ(LabelCalls().size(), 2U);
}

TEST_F(OrientorMenusTest, a_scene_that_is_not_oriented_to_the_system_shows_the_default_name_too) {
  Parameters().draw_ucs_menu = true;
  Parameters().orient_to_ucs = false;
  cube.open.label.SetDefaultName(L"World");
  cube.SetActiveUCS(L"Roof", false);
  EXPECT_EQ(LabelCalls(),
            (Lines{"CreateUCSMenuLabel(Roof, World, 0, 120)", "CreateUCSMenuLabel(Roof, World, 1, 120)"}));
  cube.SetActiveUCS(L"World", false);
  EXPECT_EQ(LabelCalls().back(), "CreateUCSMenuLabel(World, , 1, 120)");
}

TEST_F(OrientorMenusTest, the_label_is_wider_with_the_compass) {
  Parameters().draw_ucs_menu = true;
  Parameters().draw_compass = true;
  Parameters().size = OrientorParameters::SIZE_LARGE;
  Parameters().large_screen_size = 173;
  cube.SetSize(OrientorParameters::SIZE_LARGE);
  EXPECT_EQ(LabelCalls().front(), "CreateUCSMenuLabel(, , 0, 242)");  // 173 x 1.4 = 242.2
}

TEST_F(OrientorMenusTest, a_new_label_asks_for_a_frame_when_told_to) {
  Parameters().draw_ucs_menu = true;
  const int requested = hub.requested;
  cube.SetActiveUCS(L"Roof", false);
  EXPECT_EQ(hub.requested, requested);
  cube.SetActiveUCS(L"Plan", true);
  EXPECT_EQ(hub.requested, requested + 1);
  cube.SetKorvane(nullptr);
  cube.SetActiveUCS(L"Roof", true);
  EXPECT_EQ(hub.requested, requested + 1);
}

TEST_F(OrientorMenusTest, a_name_needs_no_renderer_and_null_is_empty) {
  cube.SetRenderer(nullptr);
  cube.SetActiveUCS(L"Roof", true);
  EXPECT_STREQ(cube.GetActiveUCS(), L"Roof");
  cube.SetActiveUCS(nullptr, true);
  EXPECT_STREQ(cube.GetActiveUCS(), L"");
}

// The host takes the chance to give a name in the middle of it all.
TEST_F(OrientorMenusTest, another_name_given_while_the_labels_are_made_anew_is_the_one_that_stays) {
  for (std::function<void()>* const hook : {&renderer.afterMakingLabel, &renderer.beforeDestroyingIcon}) {
    ShowLabel();
    *hook = [&] { cube.SetActiveUCS(L"Cellar", false); };
    cube.SetActiveUCS(L"Roof", false);
    EXPECT_STREQ(cube.GetActiveUCS(), L"Cellar");
    EXPECT_EQ(renderer.GetLiveIconCount(), 2);
    EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
    EXPECT_NE(cube.ucsLabel.Get(), nullptr);
    EXPECT_NE(cube.highlightedUCSLabel.Get(), nullptr);
    cube.Destroy();
    EXPECT_EQ(renderer.GetLiveIconCount(), 0);
    EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
  }
}

TEST_F(OrientorMenusTest, a_label_that_is_no_longer_wanted_while_it_is_made_does_not_stay) {
  const std::vector<std::function<void()>> ends = {
      [this] { cube.SetRenderer(nullptr); },
      [this] { cube.Destroy(); },
  };
  for (const auto& end : ends) {
    for (std::function<void()>* const hook : {&renderer.afterMakingLabel, &renderer.beforeDestroyingIcon}) {
      cube.SetRenderer(&renderer);
      ShowLabel();
      *hook = end;
      cube.SetActiveUCS(L"Roof", false);
      EXPECT_EQ(cube.ucsLabel.Get(), nullptr);
      EXPECT_EQ(cube.highlightedUCSLabel.Get(), nullptr);
      EXPECT_EQ(renderer.GetLiveIconCount(), 0);
      EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
    }
  }
}

}  // namespace
