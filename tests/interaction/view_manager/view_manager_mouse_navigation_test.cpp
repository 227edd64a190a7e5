#include <functional>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

enum Mode { IDLE, ORBITING, PANNING, ZOOMING };

// With the disc's own tools, which move the camera of the hub.
class MouseNavigationTest : public ViewManagerTest {
 protected:
  MouseNavigationTest() {
    Start();
    disc.Open(DiscType::FullNavigation);
    disc.menu.icon.SetPosition(Vector2(410, 305));
    disc.menu.menuCursorID = CURSOR_ORBIT_CUBE;
  }

  Mode Now() const {
    if (manager.IsOrbitingWithMouse()) return ORBITING;
    if (manager.IsPanningWithMouse()) return PANNING;
    return manager.IsZoomingWithMouse() ? ZOOMING : IDLE;
  }
  // One flag, one operation of the hub and one open record, or none of the three.
  void ExpectMode(Mode mode) {
    EXPECT_EQ(Now(), mode);
    EXPECT_EQ(int{manager.IsOrbitingWithMouse()} + int{manager.IsPanningWithMouse()} +
                  int{manager.IsZoomingWithMouse()},
              mode == IDLE ? 0 : 1);
    EXPECT_EQ(hub.IsOperationActive(OPERATION_ORBIT), mode == ORBITING);
    EXPECT_EQ(hub.IsOperationActive(OPERATION_PAN), mode == PANNING);
    EXPECT_EQ(hub.IsOperationActive(OPERATION_ZOOM), mode == ZOOMING);
    EXPECT_EQ(disc.record->begun - disc.record->ended, mode == IDLE ? 0 : 1);
  }
  void Frame(std::uint32_t milliseconds = 10) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    manager.OnDraw();
  }
};

// ---- the middle button ----

TEST_F(MouseNavigationTest, keeps_the_controller_off_until_the_release) {
  controller.switches.clear();
  EXPECT_TRUE(manager.OnMiddleMouseDown(400, 300));
  EXPECT_EQ(controller.switches, "0");
  manager.OnMiddleMouseUp(400, 300);
  EXPECT_EQ(controller.switches, "01");
}

TEST_F(MouseNavigationTest, pans_with_the_middle_button) {
  EXPECT_TRUE(manager.OnMiddleMouseDown(400, 300));
  ExpectMode(PANNING);
  EXPECT_TRUE(manager.wantCursorWrapping);
  EXPECT_TRUE(manager.mouse.middleClickOpen);
  EXPECT_FALSE(disc.visible);
  EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 1);
  // 300 pixels are 10 units: 30 to the right carry the camera 1 unit to the left.
  EXPECT_TRUE(manager.OnMouseMove(430, 300));
  EXPECT_TRUE(MouseDrag());
  Frame();
  EXPECT_LT(hub.view.eye.x, -0.5);
  EXPECT_TRUE(manager.OnMiddleMouseUp(430, 300));
  ExpectMode(IDLE);
  EXPECT_FALSE(MouseDrag());
  EXPECT_FALSE(manager.wantCursorWrapping);
  EXPECT_FALSE(manager.mouse.middleClickOpen);
  EXPECT_TRUE(disc.visible);
  EXPECT_EQ(renderer.CountCalls("DestroyIcon"), 1);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ORBIT_CUBE);  // the disc's
}

TEST_F(MouseNavigationTest, orbits_with_shift_and_the_middle_button) {
  manager.OnKeyDown(KEY_SHIFT);
  EXPECT_TRUE(manager.OnMiddleMouseDown(400, 300));
  ExpectMode(ORBITING);
  EXPECT_TRUE(manager.GetPivotBall()->IsVisible());
  const double distance = (hub.view.eye - hub.view.pivot).Length();
  manager.OnMouseMove(460, 310);
  Frame();
  EXPECT_NE(hub.view.eye, Vector3(0, 0, 10));
  EXPECT_NEAR((hub.view.eye - hub.view.pivot).Length(), distance, 1e-9);
  EXPECT_TRUE(manager.OnMiddleMouseUp(460, 310));
  ExpectMode(IDLE);
  EXPECT_FALSE(manager.GetPivotBall()->IsVisible());
}

TEST_F(MouseNavigationTest, shows_the_note_of_what_goes_on) {
  struct Row {
    bool shift;
    std::string text;
  };
  for (const Row& row : {Row{false, "51"}, Row{true, "50"}}) {
    manager.mouse.shiftDown = row.shift;
    renderer.ClearCalls();
    manager.OnMiddleMouseDown(400, 300);
    EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 1);
    const Lines& calls = renderer.GetCalls();
    EXPECT_NE(std::find(calls.begin(), calls.end(), "CreateTooltipHUD(text " + row.text + ")"), calls.end());
    renderer.ClearCalls();
    manager.OnDraw();
    EXPECT_EQ(renderer.CountCalls("RenderDynamic"), row.shift ? 2 : 1);  // with the label of the ball
    manager.OnMiddleMouseUp(400, 300);
    renderer.ClearCalls();
    manager.OnDraw();
    EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  }
}

TEST_F(MouseNavigationTest, labels_the_ball_as_the_pivot) {
  for (const bool wheel : {false, true}) {
    manager.GetPivotBall()->SetLabel(static_cast<StringID>(40));
    renderer.ApplyTextureUsage();
    renderer.ClearCalls();
    manager.mouse.shiftDown = true;
    if (wheel) {
      manager.OnMouseWheel(400, 300, 120);
    } else {
      manager.OnMiddleMouseDown(400, 300);
    }
    const Lines& calls = renderer.GetCalls();
    EXPECT_NE(std::find(calls.begin(), calls.end(), "CreatePivotLabel(text 41)"), calls.end());
    manager.OnMiddleMouseUp(400, 300);
  }
}

TEST_F(MouseNavigationTest, swaps_pan_and_orbit_with_shift_in_the_middle_of_a_drag) {
  manager.OnMiddleMouseDown(400, 300);
  manager.OnMouseMove(410, 300);
  manager.OnKeyDown(KEY_SHIFT);
  ExpectMode(ORBITING);
  EXPECT_EQ(disc.record->begun, 2);
  EXPECT_EQ(manager.navigation.orbitTool->GetMouseDownX(), 410);  // from where the cursor is
  manager.OnKeyDown(KEY_SHIFT);                                   // repeats
  ExpectMode(ORBITING);
  EXPECT_EQ(disc.record->begun, 2);
  manager.OnMouseMove(420, 310);
  manager.OnKeyUp(KEY_SHIFT);
  ExpectMode(PANNING);
  EXPECT_EQ(disc.record->begun, 3);
  EXPECT_EQ(disc.record->ended, 2);
  EXPECT_EQ(manager.navigation.panTool->GetMouseDownX(), 420);
  EXPECT_EQ(manager.navigation.panTool->GetMouseDownY(), 310);
  EXPECT_FALSE(disc.visible);
  manager.OnMiddleMouseUp(420, 310);
  ExpectMode(IDLE);
  EXPECT_TRUE(disc.visible);
  EXPECT_EQ(disc.record->ended, 3);
}

TEST_F(MouseNavigationTest, does_nothing_with_shift_alone) {
  manager.OnKeyDown(KEY_SHIFT);
  manager.OnKeyUp(KEY_SHIFT);
  ExpectMode(IDLE);
  EXPECT_EQ(disc.record->begun, 0);
}

TEST_F(MouseNavigationTest, needs_an_open_disc) {
  for (const DiscType type : {DiscType::None, DiscType::TourBuilding}) {
    disc.Open(type);
    EXPECT_FALSE(manager.OnMiddleMouseDown(400, 300));
    EXPECT_TRUE(manager.mouse.middleClickOpen);
    EXPECT_FALSE(manager.wantCursorWrapping);
    ExpectMode(IDLE);
    EXPECT_FALSE(manager.OnMiddleMouseUp(400, 300));
    EXPECT_FALSE(manager.OnMouseWheel(400, 300, 120));
    ExpectMode(IDLE);
  }
}

TEST_F(MouseNavigationTest, leaves_the_disc_alone_when_the_tool_cannot_begin) {
  manager.navigation.panTool->SetKorvane(nullptr);
  EXPECT_FALSE(manager.OnMiddleMouseDown(400, 300));
  EXPECT_TRUE(disc.visible);
  ExpectMode(IDLE);
  EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 0);
  manager.OnMiddleMouseUp(400, 300);
  manager.navigation.orbitTool->SetKorvane(nullptr);
  manager.mouse.shiftDown = true;
  EXPECT_FALSE(manager.OnMiddleMouseDown(400, 300));
  EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 0);
}

// The disc stands 10 right and 5 above the cursor, and so it does again where the cursor is then.
TEST_F(MouseNavigationTest, brings_the_disc_back_to_the_cursor) {
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_EQ(manager.navigation.discOffsetX, 10);
  EXPECT_EQ(manager.navigation.discOffsetY, 5);
  manager.OnMouseMove(500, 100);
  manager.OnMiddleMouseUp(500, 100);
  EXPECT_EQ(disc.menu.moves, 1);
  EXPECT_EQ(disc.menu.movedX, 510);
  EXPECT_EQ(disc.menu.movedY, 105);
}

TEST_F(MouseNavigationTest, cuts_the_place_of_the_disc_to_whole_pixels) {
  disc.menu.icon.SetPosition(Vector2(398.5, 301.9));
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_EQ(manager.navigation.discOffsetX, -1);
  EXPECT_EQ(manager.navigation.discOffsetY, 1);
}

TEST_F(MouseNavigationTest, keeps_the_place_of_the_disc_where_it_has_no_picture) {
  manager.navigation.discOffsetX = 77;
  disc.menu.activeRegion.icon = nullptr;
  manager.SaveHelmDiscPosition();
  EXPECT_EQ(manager.navigation.discOffsetX, 77);
  disc.activeTrackMenu = nullptr;
  manager.SaveHelmDiscPosition();
  manager.RestoreHelmDiscPosition();
  manager.SetHelmDisc(nullptr);
  manager.SaveHelmDiscPosition();
  manager.RestoreHelmDiscPosition();
  EXPECT_EQ(manager.navigation.discOffsetX, 77);
}

// ---- what the single operations answer ----

TEST_F(MouseNavigationTest, begins_nothing_twice_and_nothing_beside_another) {
  const std::function<bool()> begins[] = {[this] { return manager.BeginOrbitingWithMouse(); },
                                          [this] { return manager.BeginPanningWithMouse(); },
                                          [this] { return manager.BeginZoomingWithMouse(); }};
  const std::function<bool()> ends[] = {[this] { return manager.EndOrbitingWithMouse(); },
                                        [this] { return manager.EndPanningWithMouse(); },
                                        [this] { return manager.EndZoomingWithMouse(); }};
  const Mode modes[] = {ORBITING, PANNING, ZOOMING};
  manager.OnMouseWheel(400, 300, 0);  // sets the delta; and a first zoom, which ends here
  manager.EndZoomingWithMouse();
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(ends[i]());
    EXPECT_TRUE(begins[i]());
    ExpectMode(modes[i]);
    const int begun = disc.record->begun;
    for (int other = 0; other < 3; ++other) {
      EXPECT_EQ(begins[other](), other == i) << i << other;
      EXPECT_EQ(other != i && ends[other](), false) << i << other;
      EXPECT_EQ(disc.record->begun, begun) << i << other;
      ExpectMode(modes[i]);
    }
    EXPECT_TRUE(ends[i]());
    ExpectMode(IDLE);
  }
}

// ---- the wheel ----

TEST_F(MouseNavigationTest, zooms_by_the_wheel_until_it_rests) {
  EXPECT_TRUE(manager.OnMouseWheel(400, 300, 120));
  ExpectMode(ZOOMING);
  EXPECT_FALSE(disc.visible);
  EXPECT_TRUE(MouseDrag());
  EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 1);
  const double distance = (hub.view.eye - hub.view.centre).Length();
  Frame();
  EXPECT_LT((hub.view.eye - Vector3(0, 0, 0)).Length(), distance);
  for (int i = 0; i < 3; ++i) {
    Frame(400);
    ExpectMode(ZOOMING);
    EXPECT_TRUE(manager.OnMouseWheel(400, 300, 120));  // goes on
  }
  EXPECT_EQ(disc.record->begun, 1);
  Frame(400);
  Frame(99);
  ExpectMode(ZOOMING);
  Frame(1);  // half a second after the last notch
  ExpectMode(IDLE);
  EXPECT_TRUE(disc.visible);
  EXPECT_FALSE(MouseDrag());
  EXPECT_EQ(disc.record->ended, 1);
  EXPECT_EQ(disc.menu.moves, 1);
}

TEST_F(MouseNavigationTest, asks_for_a_frame_when_the_wheel_begins_a_drag) {
  manager.navigation.zoomTool = std::make_unique<FakeToolOf<MouseWheelZoomTool>>("zoom", journal);
  journal.takers = {"zoom"};
  disc.visible = false;  // so that hiding it asks for none
  hub.requested = 0;
  EXPECT_TRUE(manager.OnMouseWheel(400, 300, 120));
  EXPECT_TRUE(MouseDrag());
  EXPECT_EQ(hub.requested, 1);
}

TEST_F(MouseNavigationTest, sends_a_move_after_the_wheel_has_come_to_rest) {
  manager.OnMouseWheel(400, 300, 120);
  platform.Advance(600);
  journal.lines.clear();
  manager.OnDraw();
  EXPECT_NE(std::find(journal.lines.begin(), journal.lines.end(), "disc.OnMouseMove(400, 300)"),
            journal.lines.end());
}

TEST_F(MouseNavigationTest, zooms_about_the_pivot_of_the_camera_with_control_or_the_object_disc) {
  struct Row {
    bool control;
    DiscType disc;
    bool moves;  // the pivot, to what is under the cursor
  };
  const Row rows[] = {{false, DiscType::FullNavigation, true},
                      {true, DiscType::FullNavigation, false},
                      {false, DiscType::ViewObject, false},
                      {true, DiscType::ViewObject, false}};
  for (const Row& row : rows) {
    hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    renderer.SetSceneHit(Vector3(2, 1, 3));
    disc.Open(row.disc);
    manager.mouse.controlDown = row.control;
    EXPECT_TRUE(manager.OnMouseWheel(500, 300, 120));
    EXPECT_EQ(hub.view.pivot == Vector3(2, 1, 3), row.moves) << row.control << static_cast<int>(row.disc);
    manager.EndMiddleMouseNavigation();
  }
}

TEST_F(MouseNavigationTest, gives_the_wheel_to_the_active_tool_when_it_cannot_zoom) {
  struct Row {
    const char* name;
    std::function<void()> set;
    std::function<void()> reset;
  };
  const Row rows[] = {
      {"left held", [this] { manager.mouse.leftDown = true; }, [this] { manager.mouse.leftDown = false; }},
      {"right held", [this] { manager.mouse.rightDown = true; }, [this] { manager.mouse.rightDown = false; }},
      {"a drag", [this] { MouseDrag() = true; }, [this] { MouseDrag() = false; }},
      {"clean screen", [this] { manager.SetCleanScreen(true); }, [this] { manager.SetCleanScreen(false); }},
      {"no disc", [this] { disc.Open(DiscType::None); }, [this] { disc.Open(DiscType::TwoD); }},
      {"orbiting", [this] { manager.BeginOrbitingWithMouse(); }, [this] { manager.EndOrbitingWithMouse(); }},
      {"panning", [this] { manager.BeginPanningWithMouse(); }, [this] { manager.EndPanningWithMouse(); }},
  };
  journal.takers = {"tool"};
  for (const Row& row : rows) {
    row.set();
    journal.lines.clear();
    EXPECT_TRUE(manager.OnMouseWheel(400, 300, 120)) << row.name;
    EXPECT_EQ(journal.lines, (Lines{"tool.OnMouseWheel(400, 300)120"})) << row.name;
    EXPECT_FALSE(manager.IsZoomingWithMouse()) << row.name;
    row.reset();
  }
  journal.lines.clear();
  EXPECT_TRUE(manager.OnMouseWheel(400, 300, 120));
  EXPECT_TRUE(manager.IsZoomingWithMouse());
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(MouseNavigationTest, gives_the_wheel_to_the_tool_when_a_clean_screen_comes_over_a_zoom) {
  manager.OnMouseWheel(400, 300, 120);
  manager.SetCleanScreen(true);
  journal.lines.clear();
  manager.OnMouseWheel(400, 300, 120);
  EXPECT_EQ(journal.lines, (Lines{"tool.OnMouseWheel(400, 300)120"}));
}

TEST_F(MouseNavigationTest, takes_over_from_the_wheel_with_the_middle_button) {
  manager.OnMouseWheel(400, 300, 120);
  EXPECT_TRUE(manager.OnMiddleMouseDown(400, 300));
  ExpectMode(PANNING);
  EXPECT_EQ(disc.record->begun, 2);
  EXPECT_EQ(disc.record->ended, 1);
  EXPECT_FALSE(disc.visible);
  manager.OnMiddleMouseUp(400, 300);
  ExpectMode(IDLE);
  manager.OnMouseWheel(400, 300, 120);
  manager.OnMiddleMouseUp(400, 300);  // ends any of the three
  ExpectMode(IDLE);
}

TEST_F(MouseNavigationTest, pans_and_orbits_nothing_twice_at_once) {
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_FALSE(manager.BeginMiddleMouseNavigation());
  ExpectMode(PANNING);
  manager.OnMiddleMouseUp(400, 300);
  EXPECT_FALSE(manager.EndMiddleMouseNavigation());
}

TEST_F(MouseNavigationTest, goes_on_without_a_renderer_and_a_ball) {
  manager.OnMiddleMouseDown(400, 300);
  manager.SetRenderer(nullptr);
  manager.pivotBall.reset();
  manager.navigation.orbitTool->SetPivotBall(nullptr);
  manager.navigation.zoomTool->SetPivotBall(nullptr);
  manager.OnKeyDown(KEY_SHIFT);
  ExpectMode(ORBITING);
  manager.OnMiddleMouseUp(400, 300);
  manager.OnMouseWheel(400, 300, 120);
  manager.EndMiddleMouseNavigation();
  ExpectMode(IDLE);
  manager.SetRenderer(&renderer);
  disc.SetPivotBall(nullptr);
  controller.SetPivotBall(nullptr);
}

// Every step of random presses, releases, wheel notches, keys and frames leaves one mode or none.
TEST_F(MouseNavigationTest, is_in_one_mode_whatever_happens) {
  Random random;
  journal.recording = false;
  for (int i = 0; i < 20000; ++i) {
    const int x = random.Integer(-100, 900);
    const int y = random.Integer(-100, 700);
    switch (random.Integer(0, 8)) {
      case 0:
        manager.OnMiddleMouseDown(x, y);
        break;
      case 1:
        manager.OnMiddleMouseUp(x, y);
        break;
      case 2:
        manager.OnKeyDown(KEY_SHIFT);
        break;
      case 3:
        manager.OnKeyUp(KEY_SHIFT);
        break;
      case 4:
        manager.OnMouseWheel(x, y, random.Integer(-3, 3) * 120);
        break;
      case 5:
        disc.Open(random.Coin() ? DiscType::ViewObject : DiscType::None);
        break;
      case 6:
        manager.OnMouseMove(x, y);
        break;
      default:
        Frame(static_cast<std::uint32_t>(random.Integer(0, 300)));
        break;
    }
    ASSERT_LE(int{manager.IsOrbitingWithMouse()} + int{manager.IsPanningWithMouse()} +
                  int{manager.IsZoomingWithMouse()},
              1);
    ASSERT_EQ(disc.record->begun - disc.record->ended, Now() == IDLE ? 0 : 1);
    renderer.ClearCalls();
  }
}

}  // namespace
