// Every predicate: true with nothing in the way, and false for each single thing that is.
#include <functional>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

class PredicatesTest : public ViewManagerTest {
 protected:
  struct Obstacle {
    const char* reason;
    std::function<void()> set;
    std::function<void()> reset;
    bool expected = false;
  };

  PredicatesTest() { Start(); }

  void Expect(const std::function<bool()>& predicate, const std::vector<Obstacle>& rows) {
    EXPECT_TRUE(predicate()) << "nothing in the way";
    for (const Obstacle& row : rows) {
      row.set();
      EXPECT_EQ(predicate(), row.expected) << row.reason;
      row.reset();
      EXPECT_TRUE(predicate()) << "after " << row.reason;
    }
  }

  Obstacle Flag(const char* reason, bool& flag, bool expected = false) {
    return {reason, [&flag] { flag = true; }, [&flag] { flag = false; }, expected};
  }
  Obstacle Navigating(const char* reason, OpenViewManager::Navigation kind) {
    return {reason, [this, kind] { manager.navigation.present = kind; },
            [this] { manager.navigation.present = OpenViewManager::Navigation::None; }};
  }
  Obstacle Part(const char* reason, int part) {
    return {reason, [this, part] { cube.activePart = part; }, [this] { cube.activePart = -1; }};
  }
  Obstacle Ribbon() {
    return {"ribbon",
            [this] {
              manager.SetRibbonSize(100, 50);
              manager.SetRibbonVisible(true);
              manager.OnMouseMove(99, 550);
            },
            [this] { manager.SetRibbonVisible(false); }};
  }
  Obstacle Toolbars() { return Flag("second toolbar", second.mouseInRegion); }
  Obstacle Bar() { return Flag("bar", bar.strip->mouseInRegion); }
  Obstacle Panel() { return Flag("panel", panel.mouseInRegion); }
  Obstacle PlayingPanel(bool expected = false) {
    return {"playing panel", [this] { panel.SetPlaying(true); }, [this] { panel.SetPlaying(false); },
            expected};
  }
  Obstacle DraggingSequence() {
    return {"dragged sequence", [this] { panel.SetDraggingSequence(true); },
            [this] { panel.SetDraggingSequence(false); }};
  }
  Obstacle DraggingShot() {
    return {"dragged shot", [this] { panel.SetDraggingShot(true); },
            [this] { panel.SetDraggingShot(false); }};
  }
};

TEST_F(PredicatesTest, the_active_tool_yields_to_whatever_is_under_the_mouse) {
  Expect([this] { return manager.WantActiveToolEnabled(); },
         {Part("face", 0),
          Part("corner", 25),
          Part("letter", 26),
          Part("ring", 57),
          {"open disc", [this] { disc.Open(DiscType::TwoD); }, [this] { disc.Open(DiscType::None); }},
          {"welcome screen", [this] { disc.overWelcome = disc.welcome->visible = true; },
           [this] { disc.overWelcome = disc.welcome->visible = false; }},
          Panel(),
          Bar(),
          Ribbon(),
          Toolbars(),
          {"playback", [this] { manager.OnReelshowStartPlayback(); },
           [this] { manager.OnReelshowStopPlayback(); }},
          Flag("an overlay part of the cube does not count", cube.mouseInRegion, true)});
  manager.OnReelshowStartPlayback();
  manager.SetStoryboard(nullptr);
  EXPECT_TRUE(manager.WantActiveToolEnabled());  // a playback counts with a panel only
}

TEST_F(PredicatesTest, a_disc_that_does_not_react_leaves_the_tool_alone) {
  disc.Open(DiscType::TwoD);
  disc.menu.SetEnabled(false);
  EXPECT_TRUE(manager.WantActiveToolEnabled());
}

TEST_F(PredicatesTest, the_controller_rests_during_a_drag_of_the_cube_and_a_playback) {
  Expect([this] { return manager.WantCam3DControllerEnabled(); },
         {Flag("drag", cube.dragging),
          {"playback", [this] { manager.OnReelshowStartPlayback(); },
           [this] { manager.OnReelshowStopPlayback(); }},
          PlayingPanel(true)});
  manager.OnReelshowStartPlayback();
  manager.SetStoryboard(nullptr);
  EXPECT_TRUE(manager.WantCam3DControllerEnabled());
}

TEST_F(PredicatesTest, the_middle_button_needs_a_disc_that_is_up) {
  disc.Open(DiscType::FullNavigation);
  Expect([this] { return manager.WantMiddleMouseNavigation(); },
         {{"disabled disc", [this] { disc.menu.SetEnabled(false); }, [this] { disc.menu.SetEnabled(true); }},
          Flag("left button", manager.mouse.leftDown),
          Flag("right button", manager.mouse.rightDown),
          PlayingPanel(),
          {"no disc", [this] { manager.SetHelmDisc(nullptr); }, [this] { manager.SetHelmDisc(&disc); }}});
}

TEST_F(PredicatesTest, the_middle_button_works_with_every_disc_but_one) {
  struct Row {
    int disc;
    bool wanted;
  };
  const Row rows[] = {{0, true}, {1, false}, {2, true}, {3, true},
                      {4, true}, {5, true},  {6, true}, {8, false}};
  for (const Row& row : rows) {
    disc.activeDisc = static_cast<DiscType>(row.disc);
    disc.activeTrackMenu = &disc.menu;
    EXPECT_EQ(manager.WantMiddleMouseNavigation(), row.wanted) << row.disc;
  }
}

TEST_F(PredicatesTest, the_disc_reacts_where_nothing_else_is) {
  Expect([this] { return manager.WantHelmDiscEnabled(); },
         {Flag("cube", cube.mouseInRegion), Panel(), DraggingSequence(), DraggingShot(), Bar(), Ribbon(),
          Toolbars()});
  cube.mouseInRegion = true;
  cube.GetParameters().visible = false;
  EXPECT_TRUE(manager.WantHelmDiscEnabled());
}

TEST_F(PredicatesTest, the_disc_shows_unless_something_else_goes_on) {
  Expect([this] { return manager.WantHelmDiscVisible(); },
         {Flag("drag of the cube", cube.dragging),
          PlayingPanel(),
          {"walk", [this] { panel.SetRecordingWalk(true); }, [this] { panel.SetRecordingWalk(false); }},
          DraggingSequence(),
          DraggingShot(),
          Flag("pressed item", bar.strip->mouseDownOnItem),
          Navigating("orbiting", OpenViewManager::Navigation::Orbiting),
          Navigating("panning", OpenViewManager::Navigation::Panning),
          Navigating("zooming", OpenViewManager::Navigation::Zooming),
          Flag("mouse on the panel", panel.mouseInRegion, true)});
}

TEST_F(PredicatesTest, the_cube_reacts_off_the_panel_and_the_ribbon) {
  Expect([this] { return manager.WantOrientorEnabled(); },
         {Panel(), DraggingSequence(), DraggingShot(), Ribbon()});
  Ribbon().set();
  cube.dragging = true;
  EXPECT_TRUE(manager.WantOrientorEnabled());  // a drag that wanders over the ribbon goes on
  manager.SetOrientor(nullptr);
  EXPECT_FALSE(manager.WantOrientorEnabled());
}

TEST_F(PredicatesTest, the_ribbon_covers_the_top_left_corner) {
  manager.SetRibbonSize(100, 50);
  manager.SetRibbonVisible(true);
  struct Row {
    int x, y;
    bool inside;
  };
  for (const Row& row : {Row{99, 550, true}, Row{100, 550, false}, Row{99, 549, false}, Row{0, 599, true},
                         Row{-5, 700, true}}) {
    manager.OnMouseMove(row.x, row.y);
    EXPECT_EQ(manager.IsMouseInRibbonRegion(), row.inside) << row.x << " " << row.y;
  }
  manager.SetRibbonVisible(false);
  EXPECT_FALSE(manager.IsMouseInRibbonRegion());
}

TEST_F(PredicatesTest, the_hidden_ribbon_of_a_clean_screen_still_has_its_region) {
  Ribbon().set();
  manager.SetCleanScreen(true);
  EXPECT_FALSE(manager.IsRibbonVisible());
  EXPECT_TRUE(manager.IsMouseInRibbonRegion());
  manager.SetCleanScreen(false);
  EXPECT_TRUE(manager.IsRibbonVisible());
}

TEST_F(PredicatesTest, the_toolbars_count_one_by_one) {
  EXPECT_FALSE(manager.IsMouseInToolbarRegion());
  first.mouseInRegion = true;
  EXPECT_TRUE(manager.IsMouseInToolbarRegion());
  manager.RemoveToolbar(&first);
  EXPECT_FALSE(manager.IsMouseInToolbarRegion());
}

// ---- tooltips ----

TEST_F(PredicatesTest, the_tooltip_is_the_first_that_is_not_empty) {
  first.visible = second.visible = bar.visible = panel.visible = true;
  first.mouseInRegion = second.mouseInRegion = bar.strip->mouseInRegion = true;
  panel.mouseInRegion = cube.mouseInRegion = true;
  first.tooltip = L"first";
  second.tooltip = L"second";
  bar.strip->tooltip = L"bar";
  panel.tooltip = L"panel";
  cube.activeOverlayPart = 2;
  cube.homeTooltip = L"cube";

  struct Step {
    const wchar_t* shown;
    std::function<void()> remove;
  };
  const Step byText[] = {{L"first", [this] { first.tooltip.clear(); }},
                         {L"second", [this] { second.tooltip.clear(); }},
                         {L"bar", [this] { bar.strip->tooltip.clear(); }},
                         {L"panel", [this] { panel.tooltip.clear(); }},
                         {L"cube", [this] { cube.homeTooltip.clear(); }}};
  for (const Step& step : byText) {
    EXPECT_EQ(manager.GetTooltip(), step.shown);
    step.remove();
  }
  EXPECT_EQ(manager.GetTooltip(), L"");
}

TEST_F(PredicatesTest, the_tooltip_needs_the_mouse_and_what_shows) {
  cube.activeOverlayPart = 2;
  first.tooltip = bar.strip->tooltip = panel.tooltip = cube.homeTooltip = L"text";
  const auto expect = [this](bool& shows, bool& mouse) {
    for (const bool isVisible : {false, true}) {
      for (const bool hasMouse : {false, true}) {
        shows = isVisible;
        mouse = hasMouse;
        EXPECT_EQ(manager.GetTooltip().empty(), !(isVisible && hasMouse));
      }
    }
    shows = mouse = false;
  };
  bar.visible = false;
  expect(first.visible, first.mouseInRegion);
  expect(bar.visible, bar.strip->mouseInRegion);
  expect(panel.visible, panel.mouseInRegion);
  expect(cube.GetParameters().visible, cube.mouseInRegion);
}

}  // namespace
