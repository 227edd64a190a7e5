#include <functional>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

class DrawingTest : public ViewManagerTest {
 protected:
  DrawingTest() {
    Start();
    tool->cursorID = CURSOR_NONE;
  }

  int CursorAfterDraw() {
    manager.OnDraw();
    journal.lines.clear();
    return renderer.GetCursorID();
  }
};

TEST_F(DrawingTest, stacks_the_widgets_in_their_order) {
  manager.navigation.orbitTool = std::make_unique<FakeToolOf<OrbitTool>>("orbit", journal);
  manager.navigation.panTool = std::make_unique<FakeToolOf<PanTool>>("pan", journal);
  manager.navigation.zoomTool = std::make_unique<FakeToolOf<MouseWheelZoomTool>>("zoom", journal);
  manager.OnDraw();
  EXPECT_EQ(journal.lines, (Lines{"panel.Draw", "orbit.OnDraw", "pan.OnDraw", "zoom.OnDraw", "tool.OnDraw",
                                  "disc.DrawOverlay", "cube.Draw", "bar.Draw", "first.Draw", "second.Draw",
                                  "controller.Draw"}));
}

TEST_F(DrawingTest, draws_neither_disc_nor_cube_nor_bar_on_a_clean_screen) {
  manager.SetCleanScreen(true);
  Forget();
  manager.OnDraw();
  EXPECT_EQ(journal.lines,
            (Lines{"panel.Draw", "tool.OnDraw", "first.Draw", "second.Draw", "controller.Draw"}));
}

TEST_F(DrawingTest, draws_the_ball_first_and_in_the_scene) {
  manager.GetPivotBall()->SetVisible(true);
  manager.GetPivotBall()->UpdateSize(hub.view);
  renderer.ClearCalls();
  manager.OnDrawInScene();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 3);
  EXPECT_TRUE(journal.lines.empty());
  manager.OnDrawOverlay();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 3);
  renderer.ClearCalls();
  manager.OnDraw();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 3);
}

TEST_F(DrawingTest, draws_through_the_virtual_operations) {
  class Counting : public ViewManager {
   public:
    void OnDrawInScene() override { order += "scene "; }
    void OnDrawOverlay() override { order += "overlay"; }
    std::string order;
  } counting;
  counting.OnDraw();
  EXPECT_EQ(counting.order, "scene overlay");
}

TEST_F(DrawingTest, brings_the_disc_up_to_date_at_each_frame) {
  disc.Open(DiscType::FullNavigation);
  disc.visible = false;
  panel.mouseInRegion = true;
  manager.OnDraw();
  EXPECT_FALSE(disc.GetEnabled());
  EXPECT_TRUE(disc.visible);
  panel.mouseInRegion = false;
  panel.SetPlaying(true);
  manager.OnDraw();
  EXPECT_TRUE(disc.GetEnabled());
  EXPECT_FALSE(disc.visible);
  manager.SetCleanScreen(true);
  panel.SetPlaying(false);
  manager.OnDraw();
  EXPECT_FALSE(disc.visible);
}

TEST_F(DrawingTest, disables_the_cube_while_it_draws_where_it_is_not_wanted) {
  for (const bool stored : {false, true}) {
    for (const bool onPanel : {false, true}) {
      cube.GetParameters().disabled = stored;
      panel.mouseInRegion = onPanel;
      manager.OnDraw();
      EXPECT_EQ(cube.disabledWhileDrawn, stored || onPanel);
      EXPECT_EQ(cube.GetParameters().disabled, stored);
    }
  }
}

// ---- the cursor of a frame ----

TEST_F(DrawingTest, shows_the_cursor_of_an_idle_tool_that_is_wanted) {
  tool->cursorID = CURSOR_LOOK;
  EXPECT_EQ(CursorAfterDraw(), CURSOR_LOOK);
  tool->cursorID = CURSOR_WALK;
  tool->operating = true;  // it sets its own
  EXPECT_EQ(CursorAfterDraw(), CURSOR_NONE);
  tool->operating = false;
  EXPECT_EQ(CursorAfterDraw(), CURSOR_WALK);
  first.mouseInRegion = true;
  EXPECT_EQ(CursorAfterDraw(), CURSOR_NONE);
}

TEST_F(DrawingTest, shows_the_cursor_of_the_cube) {
  struct Row {
    int part, rawOverlay;
    CursorID cursor;
  };
  const Row rows[] = {{-1, -1, CURSOR_NONE},  {5, -1, CURSOR_CUBE_PART}, {25, -1, CURSOR_CUBE_PART},
                      {26, -1, CURSOR_ARROW}, {50, -1, CURSOR_ARROW},    {-1, 3, CURSOR_ARROW},
                      {5, 3, CURSOR_ARROW}};
  for (const Row& row : rows) {
    cube.activePart = row.part;
    cube.rawOverlayPart = row.rawOverlay;
    EXPECT_EQ(CursorAfterDraw(), row.cursor) << row.part << " " << row.rawOverlay;
  }
  cube.activePart = 26;
  manager.orientorDrag.seen = true;
  EXPECT_EQ(CursorAfterDraw(), CURSOR_ORBIT);
  manager.orientorDrag.leftRegion = true;
  EXPECT_EQ(CursorAfterDraw(), CURSOR_ORBIT_CUBE);
  manager.SetCleanScreen(true);
  EXPECT_EQ(CursorAfterDraw(), CURSOR_NONE);
}

TEST_F(DrawingTest, applies_the_last_cursor_of_a_frame_once_and_only_when_it_is_new) {
  tool->cursorID = CURSOR_LOOK;
  cube.activePart = 5;  // draws over the tool
  manager.OnDraw();
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 1);
  EXPECT_EQ(renderer.GetCalls().back(), "SetCursorIcon(24)");
  manager.OnDraw();
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 1);
}

TEST_F(DrawingTest, answers_the_set_cursor_message) {
  renderer.SetCursorID(CURSOR_PAN);
  renderer.ClearCalls();
  EXPECT_TRUE(manager.OnSetCursor());
  EXPECT_EQ(renderer.GetCalls(), (Lines{"SetCursorIcon(3)"}));
  renderer.FailOnce("SetCursorIcon");
  EXPECT_FALSE(manager.OnSetCursor());
  renderer.SetCursorID(CURSOR_NONE);
  renderer.ClearCalls();
  EXPECT_FALSE(manager.OnSetCursor());
  EXPECT_TRUE(renderer.GetCalls().empty());
  manager.SetRenderer(nullptr);
  EXPECT_FALSE(manager.OnSetCursor());
}

TEST_F(DrawingTest, takes_a_cursor_from_a_frame_to_the_set_cursor_message) {
  tool->cursorID = CURSOR_LOOK_AT;
  manager.OnDraw();
  renderer.ClearCalls();
  EXPECT_TRUE(manager.OnSetCursor());
  EXPECT_EQ(renderer.GetCalls(), (Lines{"SetCursorIcon(5)"}));
  tool->cursorID = CURSOR_NONE;
  manager.OnDraw();
  EXPECT_FALSE(manager.OnSetCursor());
}

TEST_F(DrawingTest, goes_on_when_the_cube_is_taken_away_while_it_draws) {
  class Leaving : public FakeOrientor {
   public:
    Leaving(ViewManager& owner, WidgetJournal& theJournal) : FakeOrientor(theJournal), manager(owner) {}
    void Draw() override { manager.SetOrientor(nullptr); }
    ViewManager& manager;
  } leaving(manager, journal);
  manager.SetOrientor(&leaving);
  manager.OnDraw();
  EXPECT_EQ(journal.lines.back(), "controller.Draw");
}

TEST_F(DrawingTest, draws_without_a_renderer) {
  tool->cursorID = CURSOR_LOOK;
  cube.activePart = 5;
  manager.SetRenderer(nullptr);
  manager.OnDraw();
  EXPECT_EQ(journal.lines.back(), "controller.Draw");
}

}  // namespace
