// Who gets an event. Each list stands here anew: for everyone in it, that one takes the event and nobody
// after it is asked; and nobody takes it, and all are asked.
#include <functional>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

constexpr int X = 300;
constexpr int Y = 200;

class RoutingTest : public ViewManagerTest {
 protected:
  using Event = std::function<bool()>;

  RoutingTest() {
    Start();
    manager.navigation.orbitTool = std::make_unique<FakeToolOf<OrbitTool>>("orbit", journal);
    manager.navigation.panTool = std::make_unique<FakeToolOf<PanTool>>("pan", journal);
    manager.navigation.zoomTool = std::make_unique<FakeToolOf<MouseWheelZoomTool>>("zoom", journal);
  }
  ~RoutingTest() override { RecordProperty("cases", cases); }

  // The names of those who were asked, without repeats of the same one.
  Lines Asked() {
    Lines names;
    for (const std::string& line : journal.Take()) names.push_back(line.substr(0, line.find('.')));
    return names;
  }

  // `order` is who is asked for `event`; past them `otherwise` is the answer.
  void ExpectOrder(const std::string& when, const Event& prepare, const Event& event, const Lines& order,
                   bool otherwise = false) {
    for (std::size_t taker = 0; taker <= order.size(); ++taker) {
      ++cases;
      prepare();
      const bool taken = taker < order.size();
      journal.takers = taken ? std::set<std::string>{order[taker]} : std::set<std::string>{};
      journal.lines.clear();
      const bool result = event();
      Lines expected(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(taken ? taker + 1 : taker));
      EXPECT_EQ(Asked(), expected) << when << ", taker " << taker;
      EXPECT_EQ(result, taken || otherwise) << when << ", taker " << taker;
      journal.takers.clear();
      Release();
    }
  }

  // No button is held, wherever the events came from.
  void Release() {
    manager.mouse.leftDown = manager.mouse.middleDown = manager.mouse.rightDown = false;
    manager.mouse.leftClickOpen = manager.mouse.middleClickOpen = manager.mouse.rightClickOpen = false;
    manager.orientorDrag.seen = false;
    manager.OnMouseMove(X - 1, Y - 1);
    journal.lines.clear();
  }

  static bool Nothing() { return false; }
  Event LeftDown() {
    return [this] { return manager.OnLeftMouseDown(X, Y); };
  }
  Event LeftUp() {
    return [this] { return manager.OnLeftMouseUp(X, Y); };
  }
  Event RightDown() {
    return [this] { return manager.OnRightMouseDown(X, Y); };
  }
  Event RightUp() {
    return [this] { return manager.OnRightMouseUp(X, Y); };
  }
  Event Move() {
    return [this] { return manager.OnMouseMove(X, Y); };
  }
  // A press that nobody took.
  Event Pressed() {
    return [this] { return manager.OnLeftMouseDown(X, Y); };
  }
  void ShowRibbon() {
    manager.SetRibbonSize(X + 1, 600 - Y);  // its lower right pixel is the one of the events
    manager.SetRibbonVisible(true);
  }

  int cases = 0;
};

const Lines ALL_FOR_MOVES = {"orbit",  "pan",  "zoom", "bar",  "first",
                             "second", "cube", "disc", "tool", "panel"};
const Lines ALL_FOR_LEFT = {"bar", "first", "second", "cube", "disc", "panel", "tool"};
const Lines CLEAN_FOR_LEFT = {"first", "second", "panel", "tool"};
const Lines ALL_FOR_RIGHT_DOWN = {"bar", "first", "second", "panel"};
const Lines ALL_FOR_RIGHT_UP = {"bar", "first", "second", "cube", "disc", "panel"};

TEST_F(RoutingTest, moves_go_to_all_until_one_takes_them) {
  ExpectOrder("plain", Nothing, Move(), ALL_FOR_MOVES);
  manager.SetCleanScreen(true);
  ExpectOrder("clean screen", Nothing, Move(), ALL_FOR_MOVES);
  manager.SetCleanScreen(false);
  ShowRibbon();
  ExpectOrder("on the ribbon", Nothing, Move(), ALL_FOR_MOVES);
  ExpectOrder(
      "left held", [this] { return manager.mouse.leftDown = true; }, Move(), ALL_FOR_MOVES);
  EXPECT_EQ(cases, 44);
}

TEST_F(RoutingTest, left_presses_go_down_the_list) {
  ExpectOrder("plain", Nothing, LeftDown(), ALL_FOR_LEFT);
  manager.SetCleanScreen(true);
  ExpectOrder("clean screen", Nothing, LeftDown(), CLEAN_FOR_LEFT);
  manager.SetCleanScreen(false);
  first.mouseInRegion = true;  // so the tool is not wanted
  ExpectOrder("tool not wanted", Nothing, LeftDown(), {"bar", "first", "second", "cube", "disc", "panel"});
  first.mouseInRegion = false;
  ShowRibbon();
  ExpectOrder("on the ribbon", Nothing, LeftDown(), {"bar", "first", "second"}, true);
  manager.SetCleanScreen(true);
  ExpectOrder("on the hidden ribbon", Nothing, LeftDown(), {"first", "second", "panel"});
  EXPECT_EQ(cases, 28);
}

TEST_F(RoutingTest, left_releases_go_down_the_list_after_an_offered_press) {
  ExpectOrder("plain", Pressed(), LeftUp(), ALL_FOR_LEFT);
  first.mouseInRegion = true;  // a tool that was pressed gets its release, wanted or not
  ExpectOrder("tool not wanted", Pressed(), LeftUp(), ALL_FOR_LEFT);
  first.mouseInRegion = false;
  ShowRibbon();
  ExpectOrder("on the ribbon", Pressed(), LeftUp(), ALL_FOR_LEFT);
  manager.SetCleanScreen(true);
  ExpectOrder("clean screen", Pressed(), LeftUp(), CLEAN_FOR_LEFT);
  ExpectOrder("no press", Nothing, LeftUp(), {});
  EXPECT_EQ(cases, 30);
}

TEST_F(RoutingTest, right_presses_go_down_the_list) {
  ExpectOrder("plain", Nothing, RightDown(), ALL_FOR_RIGHT_DOWN);
  manager.SetCleanScreen(true);
  ExpectOrder("clean screen", Nothing, RightDown(), {"first", "second", "panel"});
  manager.SetCleanScreen(false);
  const Lines before = {"bar", "first", "second"};
  cube.activePart = 3;
  ExpectOrder("a face of the cube", Nothing, RightDown(), before, true);
  cube.activePart = 26;
  ExpectOrder("a letter of the compass", Nothing, RightDown(), before, true);
  cube.activePart = 40;
  ExpectOrder("the ring of the compass", Nothing, RightDown(), before, true);
  cube.activePart = -1;
  cube.activeOverlayPart = 2;
  ExpectOrder("the home button", Nothing, RightDown(), before, true);
  cube.activeOverlayPart = -1;
  ExpectOrder(
      "a drag of the cube", [this] { return manager.orientorDrag.seen = true; }, RightDown(), before, true);
  disc.Open(DiscType::FullNavigation);
  ExpectOrder("a disc", Nothing, RightDown(), before, true);
  disc.menu.SetEnabled(false);
  ExpectOrder("a disc that does not react", Nothing, RightDown(), ALL_FOR_RIGHT_DOWN);
  panel.SetPlaying(true);
  ExpectOrder("a playback", Nothing, RightDown(), {}, true);
  EXPECT_EQ(cases, 5 + 4 + 6 * 4 + 5 + 1);
}

TEST_F(RoutingTest, right_releases_go_down_the_list_and_open_menus) {
  ExpectOrder("plain", Nothing, RightUp(), ALL_FOR_RIGHT_UP);
  ExpectOrder("after a press", RightDown(), RightUp(), ALL_FOR_RIGHT_UP);
  manager.SetCleanScreen(true);
  ExpectOrder("clean screen", Nothing, RightUp(), {"first", "second", "panel"});
  panel.SetPlaying(true);
  ExpectOrder("a playback", Nothing, RightUp(), {}, true);
  EXPECT_EQ(cases, 7 + 7 + 4 + 1);
}

TEST_F(RoutingTest, keys_go_to_the_disc_the_panel_and_the_tool) {
  const Lines all = {"disc", "panel", "tool"};
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_DISC, KEY_ESCAPE, KEY_SPACE}) {
    const std::string name = "key " + std::to_string(key);
    ExpectOrder(
        name + " down", Nothing, [&] { return manager.OnKeyDown(key); }, all);
    ExpectOrder(
        name + " up", Nothing, [&] { return manager.OnKeyUp(key); }, all);
    const Event held = [this] { return manager.mouse.leftDown = true; };
    const bool space = key == KEY_SPACE;
    ExpectOrder(
        name + " down, left held", held, [&] { return manager.OnKeyDown(key); },
        space ? Lines{"disc", "tool"} : all);
    ExpectOrder(
        name + " up, left held", held, [&] { return manager.OnKeyUp(key); }, all);
  }
  EXPECT_EQ(cases, 5 * 16 - 1);
}

TEST_F(RoutingTest, keys_go_to_a_tool_that_is_not_wanted_too) {
  first.mouseInRegion = true;
  manager.SetCleanScreen(true);
  ExpectOrder("down", Nothing, [this] { return manager.OnKeyDown(KEY_UP); }, {"disc", "panel", "tool"});
  ExpectOrder("up", Nothing, [this] { return manager.OnKeyUp(KEY_UP); }, {"disc", "panel", "tool"});
}

TEST_F(RoutingTest, the_wheel_goes_to_the_active_tool_without_a_disc) {
  ExpectOrder("wheel", Nothing, [this] { return manager.OnMouseWheel(X, Y, 120); }, {"tool"});
}

TEST_F(RoutingTest, a_second_button_goes_nowhere) {
  using Press = bool (ViewManager::*)(int, int);
  const Press downs[] = {&ViewManager::OnLeftMouseDown, &ViewManager::OnMiddleMouseDown,
                         &ViewManager::OnRightMouseDown};
  const Press ups[] = {&ViewManager::OnLeftMouseUp, &ViewManager::OnMiddleMouseUp,
                       &ViewManager::OnRightMouseUp};
  const bool* const physical[] = {&manager.mouse.leftDown, &manager.mouse.middleDown,
                                  &manager.mouse.rightDown};
  journal.takers = {"bar"};
  for (const int held : {0, 1, 2}) {
    for (const int other : {0, 1, 2}) {
      if (other == held) continue;
      (manager.*downs[held])(X, Y);
      journal.lines.clear();
      controller.switches.clear();
      EXPECT_FALSE((manager.*downs[other])(X, Y)) << held << other;
      EXPECT_EQ(Asked(), Lines{}) << held << other;
      EXPECT_EQ(controller.switches, "") << held << other;
      EXPECT_TRUE(*physical[other]) << held << other;
      (manager.*ups[other])(X, Y);
      // A drag of the middle button, and a click of it, leave a six-axis device as it is.
      const bool ofMiddle = held == 1 || other == 1;
      EXPECT_TRUE(!ofMiddle || controller.switches.empty()) << held << other << controller.switches;
      (manager.*ups[held])(X, Y);
      EXPECT_FALSE(*physical[other]) << held << other;
      EXPECT_FALSE(*physical[held]) << held << other;
    }
  }
}

TEST_F(RoutingTest, a_left_press_while_the_right_button_is_held_leaves_its_release_without_anyone) {
  manager.OnRightMouseDown(X, Y);
  journal.lines.clear();
  EXPECT_FALSE(manager.OnLeftMouseDown(X, Y));
  EXPECT_TRUE(manager.IsLeftMouseDown());
  EXPECT_FALSE(manager.mouse.leftClickOpen);
  journal.takers = {"bar", "tool"};
  EXPECT_FALSE(manager.OnLeftMouseUp(X, Y));
  EXPECT_EQ(Asked(), Lines{});
  EXPECT_FALSE(manager.IsLeftMouseDown());
  EXPECT_TRUE(manager.IsRightMouseDown());
}

TEST_F(RoutingTest, the_move_of_a_press_reaches_nobody) {
  manager.OnLeftMouseDown(X, Y);
  journal.lines.clear();
  journal.takers = {"bar"};
  EXPECT_FALSE(manager.OnMouseMove(X, Y));
  EXPECT_EQ(Asked(), Lines{});
  EXPECT_TRUE(manager.OnMouseMove(X + 1, Y));
  EXPECT_TRUE(manager.OnMouseMove(X, Y));  // back at the press, but from elsewhere
  manager.OnLeftMouseUp(X, Y);
  EXPECT_TRUE(manager.OnMouseMove(X, Y));
}

TEST_F(RoutingTest, hands_positions_over_as_they_are_and_to_the_cube_from_the_top_as_well) {
  manager.OnMouseMove(X, Y);
  EXPECT_EQ(journal.lines[3], "bar.OnMouseMove(300, 200)");
  EXPECT_EQ(cube.mouseX, 300);
  EXPECT_EQ(cube.mouseY, 399);  // 600 - 200 - 1
}

TEST_F(RoutingTest, asks_toolbars_that_come_and_go_while_they_are_asked) {
  class Leaving : public FakeToolbar {
   public:
    Leaving(ViewManager& owner, Toolbar& next, WidgetJournal& theJournal)
        : FakeToolbar("leaving", theJournal), manager(owner), other(next) {}
    bool OnMouseMove(int x, int y) override {
      manager.RemoveToolbar(this);
      manager.RemoveToolbar(&other);
      return FakeToolbar::OnMouseMove(x, y);
    }
    ViewManager& manager;
    Toolbar& other;
  } leaving(manager, first, journal);
  manager.RemoveToolbar(&first);
  manager.RemoveToolbar(&second);
  for (Toolbar* const each : std::initializer_list<Toolbar*>{&leaving, &first, &second}) {
    manager.AddToolbar(each);
  }
  manager.OnMouseMove(X, Y);
  EXPECT_EQ(Asked(),
            (Lines{"orbit", "pan", "zoom", "bar", "leaving", "second", "cube", "disc", "tool", "panel"}));
}

// ---- what an event leaves behind ----

TEST_F(RoutingTest, switches_the_controller_off_while_somebody_has_the_mouse) {
  struct Row {
    const char* taker;
    const char* switches;  // off at the press, on again when nobody takes it; then on at the release
  };
  for (const Row& row : {Row{"", "011"}, Row{"bar", "01"}, Row{"tool", "01"}}) {
    journal.takers = {row.taker};
    controller.switches.clear();
    manager.OnLeftMouseDown(X, Y);
    manager.OnLeftMouseUp(X, Y);
    EXPECT_EQ(controller.switches, row.switches) << "left, " << row.taker;
  }
  for (const Row& row : {Row{"", "011"}, Row{"bar", "01"}}) {
    journal.takers = {row.taker};
    controller.switches.clear();
    manager.OnRightMouseDown(X, Y);
    manager.OnRightMouseUp(X, Y);
    EXPECT_EQ(controller.switches, row.switches) << "right, " << row.taker;
  }
  journal.takers = {};
  controller.switches.clear();
  manager.OnMiddleMouseDown(X, Y);  // without an open disc it moves nothing
  manager.OnMiddleMouseUp(X, Y);
  EXPECT_EQ(controller.switches, "011");
}

TEST_F(RoutingTest, leaves_the_controller_off_during_a_playback_and_a_drag_of_the_cube) {
  manager.OnReelshowStartPlayback();
  controller.switches.clear();
  manager.OnLeftMouseDown(X, Y);
  manager.OnLeftMouseUp(X, Y);
  manager.OnRightMouseUp(X, Y);
  EXPECT_EQ(controller.switches, "0000");
  manager.OnReelshowStopPlayback();
  cube.dragging = true;
  controller.switches.clear();
  manager.OnLeftMouseDown(X, Y);
  manager.OnLeftMouseUp(X, Y);
  EXPECT_EQ(controller.switches, "000");
}

TEST_F(RoutingTest, says_whether_the_cursor_is_to_be_wrapped) {
  disc.Open(DiscType::FullNavigation);
  disc.menu.activeRegion.wrap = true;
  tool->operating = true;
  struct Row {
    const char* taker;
    bool wraps;
  };
  for (const Row& row : {Row{"", false}, Row{"bar", false}, Row{"first", false}, Row{"cube", true},
                         Row{"disc", true}, Row{"panel", false}}) {
    manager.wantCursorWrapping = true;
    journal.takers = {row.taker};
    manager.OnLeftMouseDown(X, Y);
    EXPECT_EQ(manager.wantCursorWrapping, row.wraps) << row.taker;
    manager.OnLeftMouseUp(X, Y);
    EXPECT_FALSE(manager.wantCursorWrapping) << row.taker;
  }
  disc.menu.activeRegion.wrap = false;
  journal.takers = {"disc"};
  manager.OnLeftMouseDown(X, Y);
  EXPECT_FALSE(manager.wantCursorWrapping);
  manager.OnLeftMouseUp(X, Y);
  disc.Open(DiscType::None);
  journal.takers = {"tool"};
  manager.OnLeftMouseDown(X, Y);
  EXPECT_TRUE(manager.wantCursorWrapping);
  manager.OnLeftMouseUp(X, Y);
  tool->operating = false;
  manager.OnLeftMouseDown(X, Y);
  EXPECT_FALSE(manager.wantCursorWrapping);
}

TEST_F(RoutingTest, wraps_the_cursor_for_a_key_that_was_taken) {
  disc.Open(DiscType::FullNavigation);
  tool->operating = true;
  for (const auto event : {&ViewManager::OnKeyDown, &ViewManager::OnKeyUp}) {
    journal.takers = {"disc"};
    EXPECT_TRUE((manager.*event)(KEY_UP));
    EXPECT_TRUE(manager.wantCursorWrapping);
    journal.takers = {"panel"};
    EXPECT_TRUE((manager.*event)(KEY_UP));
    EXPECT_FALSE(manager.wantCursorWrapping);  // the disc did not take it
    journal.takers = {"tool"};
    EXPECT_TRUE((manager.*event)(KEY_UP));
    EXPECT_TRUE(manager.wantCursorWrapping);
    journal.takers = {};
    EXPECT_FALSE((manager.*event)(KEY_UP));
    EXPECT_FALSE(manager.wantCursorWrapping);
  }
}

TEST_F(RoutingTest, keeps_the_modifier_keys) {
  manager.OnKeyDown(KEY_SHIFT);
  EXPECT_TRUE(manager.mouse.shiftDown);
  EXPECT_FALSE(manager.mouse.controlDown);
  manager.OnKeyDown(KEY_CONTROL);
  EXPECT_TRUE(manager.mouse.controlDown);
  manager.OnKeyUp(KEY_SHIFT);
  EXPECT_FALSE(manager.mouse.shiftDown);
  EXPECT_TRUE(manager.mouse.controlDown);
  manager.OnKeyUp(KEY_CONTROL);
  EXPECT_FALSE(manager.mouse.controlDown);
}

TEST_F(RoutingTest, notes_where_the_mouse_is_and_where_it_was_pressed) {
  EXPECT_EQ(OpenViewManager().mouse.x, -1);
  EXPECT_EQ(OpenViewManager().mouse.y, -1);
  manager.OnLeftMouseDown(1, 2);
  manager.OnMouseMove(3, 4);
  EXPECT_EQ(manager.mouse.leftDownX, 1);
  EXPECT_EQ(manager.mouse.leftDownY, 2);
  EXPECT_EQ(manager.mouse.x, 3);
  EXPECT_EQ(manager.mouse.y, 4);
  using ButtonEvent = bool (ViewManager::*)(int, int);
  const ButtonEvent events[] = {&ViewManager::OnLeftMouseUp,   &ViewManager::OnRightMouseDown,
                                &ViewManager::OnRightMouseUp,  &ViewManager::OnMiddleMouseDown,
                                &ViewManager::OnMiddleMouseUp, &ViewManager::OnLeftMouseDown};
  int at = 10;
  for (const ButtonEvent event : events) {
    (manager.*event)(at, at + 100);
    EXPECT_EQ(manager.mouse.x, at);
    EXPECT_EQ(manager.mouse.y, at + 100);
    ++at;
  }
  manager.OnMouseWheel(55, 66, -240);
  EXPECT_EQ(manager.mouse.x, 55);
  EXPECT_EQ(manager.mouse.y, 66);
  EXPECT_EQ(manager.mouse.wheelDelta, -240);
}

TEST_F(RoutingTest, writes_down_a_drag_and_asks_for_a_frame_when_that_changes) {
  struct Row {
    const char* name;
    std::function<void(bool)> drag;
  };
  auto& pan = static_cast<FakeToolOf<PanTool>&>(*manager.navigation.panTool);
  const Row rows[] = {
      {"tool of the disc", [&](bool on) { pan.mouseDown = pan.mouseDragged = on; }},
      {"cube", [this](bool on) { cube.dragging = on; }},
      {"disc", [this](bool on) { disc.dragBegun = on; }},
      {"active tool", [this](bool on) { tool->mouseDown = tool->mouseDragged = on; }},
      {"panel, a sequence", [this](bool on) { panel.SetDraggingSequence(on); }},
      {"panel, a shot", [this](bool on) { panel.SetDraggingShot(on); }},
  };
  for (const Row& row : rows) {
    row.drag(true);
    hub.requested = 0;
    manager.OnMouseMove(X, Y);
    EXPECT_TRUE(MouseDrag()) << row.name;
    EXPECT_EQ(hub.requested, 1) << row.name;
    manager.OnMouseMove(X + 1, Y);
    EXPECT_EQ(hub.requested, 1) << row.name;
    row.drag(false);
    manager.OnMouseMove(X + 2, Y);
    EXPECT_FALSE(MouseDrag()) << row.name;
    EXPECT_EQ(hub.requested, 2) << row.name;
    manager.orientorDrag.seen = false;
  }
}

TEST_F(RoutingTest, counts_the_drag_of_whoever_took_the_move) {
  tool->mouseDown = tool->mouseDragged = true;
  journal.takers = {"tool"};
  manager.OnMouseMove(X, Y);
  EXPECT_TRUE(MouseDrag());
  journal.takers = {"bar"};  // the tool is not reached any more
  manager.OnMouseMove(X + 1, Y);
  EXPECT_FALSE(MouseDrag());
}

TEST_F(RoutingTest, ends_the_noted_drag_with_the_left_button) {
  MouseDrag() = true;
  manager.OnLeftMouseDown(X, Y);
  hub.requested = 0;
  manager.OnLeftMouseUp(X, Y);
  EXPECT_FALSE(MouseDrag());
  EXPECT_EQ(hub.requested, 1);
  manager.OnLeftMouseUp(X, Y);
  EXPECT_EQ(hub.requested, 1);
}

TEST_F(RoutingTest, asks_for_a_frame_when_the_mouse_enters_and_leaves_the_ribbon) {
  ShowRibbon();
  manager.OnMouseMove(700, 100);
  hub.requested = 0;
  manager.OnMouseMove(10, 590);
  EXPECT_EQ(hub.requested, 1);
  manager.OnMouseMove(11, 590);
  EXPECT_EQ(hub.requested, 1);
  manager.OnMouseMove(700, 100);
  EXPECT_EQ(hub.requested, 2);
}

TEST_F(RoutingTest, tells_the_bar_where_the_cube_is_before_a_left_release) {
  manager.OnLeftMouseDown(X, Y);
  cube.GetParameters().screen_location = OrientorParameters::LOCATION_BOTTOM_LEFT;
  manager.OnLeftMouseUp(X, Y);
  EXPECT_EQ(bar.strip->orientorLocation, OrientorParameters::LOCATION_BOTTOM_LEFT);
  EXPECT_EQ(bar.strip->orientorBounds.center, Vector2(60, 60));  // a cube of 120 pixels
  EXPECT_EQ(bar.strip->orientorBounds.halfExtent, Vector2(60, 60));
}

// ---- a drag of the cube ----

TEST_F(RoutingTest, marks_the_pivot_while_the_cube_is_dragged) {
  hub.view.pivot = Vector3(0, 0, 0);
  cube.dragging = true;
  cube.mouseInRegion = true;
  manager.OnLeftMouseDown(X, Y);
  journal.takers = {"cube"};  // also when the cube takes the move
  EXPECT_TRUE(manager.OnMouseMove(X + 1, Y));
  EXPECT_TRUE(manager.orientorDrag.seen);
  EXPECT_FALSE(manager.orientorDrag.leftRegion);
  EXPECT_TRUE(manager.GetPivotBall()->IsVisible());
  EXPECT_EQ(manager.GetPivotBall()->GetPosition(), Vector3(0, 0, 0));
  EXPECT_NEAR(manager.GetPivotBall()->GetSize(), 0.5, 1e-12);  // 20 units of view / 40
  cube.dragging = false;
  manager.OnLeftMouseUp(X + 1, Y);
  EXPECT_FALSE(manager.orientorDrag.seen);
  EXPECT_FALSE(manager.GetPivotBall()->IsVisible());
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 0);
}

TEST_F(RoutingTest, puts_the_cursor_back_after_a_drag_of_the_cube_that_left_its_region_and_only_then) {
  cube.dragging = true;
  cube.mouseInRegion = false;
  manager.OnLeftMouseDown(X, Y);
  manager.OnMouseMove(X + 1, Y);
  EXPECT_FALSE(manager.orientorDrag.leftRegion);  // the first notice does not count
  manager.OnMouseMove(X + 50, Y);
  EXPECT_TRUE(manager.orientorDrag.leftRegion);
  cube.mouseInRegion = true;
  manager.OnMouseMove(X + 2, Y);
  EXPECT_TRUE(manager.orientorDrag.leftRegion);  // stays so
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 0);
  cube.dragging = false;
  Forget();
  manager.OnLeftMouseUp(X + 50, Y);
  EXPECT_EQ(renderer.GetCalls(), (Lines{"SetCursorPosition(300, 200)", "SetCursorIcon(26)"}));
  const Lines lines = journal.Take();
  ASSERT_GE(lines.size(), 2U);
  EXPECT_EQ(lines[lines.size() - 2], "disc.OnMouseMove(300, 200)");
  EXPECT_EQ(lines[lines.size() - 1], "cube.OnMouseMove(300, 200)");
  EXPECT_EQ(cube.mouseX, 300);
  EXPECT_EQ(cube.mouseY, 399);
}

TEST_F(RoutingTest, begins_each_drag_of_the_cube_anew) {
  cube.dragging = true;
  for (const bool leaves : {true, false}) {
    cube.mouseInRegion = !leaves;
    manager.GetPivotBall()->SetLabel(static_cast<StringID>(40));
    renderer.ApplyTextureUsage();
    Forget();
    manager.OnLeftMouseDown(X, Y);
    manager.OnMouseMove(X + 1, Y);
    EXPECT_EQ(renderer.CountCalls("CreatePivotLabel"), 1);  // the pivot's again
    manager.OnMouseMove(X + 2, Y);
    manager.OnLeftMouseUp(X + 2, Y);
    EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), leaves ? 1 : 0);
  }
}

TEST_F(RoutingTest, keeps_an_offered_right_press_until_its_release) {
  EXPECT_FALSE(manager.OnRightMouseDown(X, Y));
  EXPECT_TRUE(manager.mouse.rightClickOpen);
  manager.OnRightMouseUp(X, Y);
  EXPECT_FALSE(manager.mouse.rightClickOpen);
  manager.OnLeftMouseDown(X, Y);
  manager.OnRightMouseDown(X, Y);
  EXPECT_FALSE(manager.mouse.rightClickOpen);
}

TEST_F(RoutingTest, brings_the_disc_up_to_date_after_a_drag_of_the_cube) {
  disc.Open(DiscType::FullNavigation);
  for (const bool inRegion : {true, false}) {
    manager.orientorDrag.seen = true;
    cube.mouseInRegion = inRegion;
    disc.visible = inRegion;
    manager.OnLeftMouseUp(X, Y);
    EXPECT_EQ(disc.GetEnabled(), !inRegion);
    EXPECT_TRUE(disc.visible);
  }
  manager.orientorDrag.seen = true;
  cube.dragging = true;
  manager.OnLeftMouseUp(X, Y);
  EXPECT_FALSE(disc.visible);
}

TEST_F(RoutingTest, finishes_a_drag_of_a_cube_that_was_taken_away) {
  cube.dragging = true;
  manager.OnLeftMouseDown(X, Y);
  manager.OnMouseMove(X + 1, Y);
  manager.OnMouseMove(X + 100, Y);
  manager.SetOrientor(nullptr);
  manager.OnLeftMouseUp(X + 100, Y);
  EXPECT_FALSE(manager.orientorDrag.seen);
  EXPECT_FALSE(manager.GetPivotBall()->IsVisible());
}

// ---- nobody there ----

TEST(ViewManagerAlone, takes_every_event_without_any_collaborator) {
  OpenViewManager manager;
  EXPECT_FALSE(manager.OnMouseMove(1, 2));
  EXPECT_FALSE(manager.OnLeftMouseDown(1, 2));
  EXPECT_FALSE(manager.OnMouseMove(5, 6));
  EXPECT_FALSE(manager.OnLeftMouseUp(5, 6));
  EXPECT_FALSE(manager.OnMiddleMouseDown(1, 2));
  EXPECT_FALSE(manager.OnMiddleMouseUp(1, 2));
  EXPECT_FALSE(manager.OnRightMouseDown(1, 2));
  EXPECT_FALSE(manager.OnRightMouseUp(1, 2));
  EXPECT_FALSE(manager.OnMouseWheel(1, 2, 120));
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_SPACE}) {
    EXPECT_FALSE(manager.OnKeyDown(key));
    EXPECT_FALSE(manager.OnKeyUp(key));
  }
  manager.SetViewportSize(800, 600);
  manager.OnDraw();
  EXPECT_FALSE(manager.OnSetCursor());
  EXPECT_TRUE(manager.GetTooltip().empty());
  EXPECT_EQ(manager.GetRewindHistory(), nullptr);
  EXPECT_EQ(manager.GetPivotBall(), nullptr);
  EXPECT_EQ(manager.GetOrientorBounds().halfExtent, Vector2(0, 0));
  manager.OnReelshowStartPlayback();
  manager.OnReelshowStopPlayback();
  EXPECT_FALSE(manager.Create());
  EXPECT_TRUE(manager.Destroy());
  manager.orientorDrag.seen = true;
  manager.orientorDrag.leftRegion = true;
  EXPECT_FALSE(manager.OnLeftMouseUp(1, 2));
}

TEST(ViewManagerAlone, gives_events_to_the_active_tool_and_makes_no_record_without_widgets) {
  ManualPlatform platform;
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  RecordingRenderer renderer;
  WidgetJournal journal;
  OpenViewManager manager;
  manager.SetKorvane(&hub);
  manager.SetRenderer(&renderer);
  auto* const tool = new FakeTool("tool", journal);
  EXPECT_TRUE(manager.AddTool(1, tool));
  EXPECT_TRUE(manager.Create());
  manager.SetViewportSize(800, 600);
  EXPECT_TRUE(manager.SetActiveTool(1));
  EXPECT_EQ(tool->GetRewindHistory(), nullptr);
  journal.lines.clear();
  journal.takers = {"tool"};
  EXPECT_TRUE(manager.OnLeftMouseDown(1, 2));
  EXPECT_TRUE(manager.OnMouseMove(3, 4));
  EXPECT_TRUE(manager.OnLeftMouseUp(3, 4));
  EXPECT_TRUE(manager.OnMouseWheel(3, 4, 120));
  EXPECT_TRUE(manager.OnKeyDown(KEY_UP));
  EXPECT_TRUE(manager.OnKeyUp(KEY_UP));
  manager.OnDraw();
  EXPECT_EQ(journal.lines,
            (Lines{"tool.OnMouseDown(1, 2)", "tool.OnMouseMove(3, 4)", "tool.OnMouseUp(3, 4)",
                   "tool.OnMouseWheel(3, 4)120", "tool.OnKeyDown(3)", "tool.OnKeyUp(3)", "tool.OnDraw"}));
  EXPECT_TRUE(manager.FitAllToView());
  EXPECT_FALSE(manager.OnMiddleMouseDown(1, 2));
  EXPECT_TRUE(manager.Destroy());
}

// A press that removes the tool that it was given to.
TEST(ViewManagerAlone, survives_a_tool_that_goes_while_it_is_pressed) {
  class Leaving : public Tool {
   public:
    explicit Leaving(OpenViewManager& owner) : manager(owner) {}
    bool OnMouseDown(int /*x*/, int /*y*/) override { return Leave(); }
    bool OnMouseMove(int /*x*/, int /*y*/) override { return Leave(); }
    bool OnKeyDown(KeyID /*key*/) override { return Leave(); }
    void OnDraw() override { Leave(); }

   private:
    bool Leave() {
      manager.RemoveAllTools();
      return true;
    }
    OpenViewManager& manager;
  };
  OpenViewManager manager;
  RecordingRenderer renderer;
  manager.SetRenderer(&renderer);
  const std::function<void()> events[] = {
      [&] { manager.OnLeftMouseDown(1, 2); },
      [&] { manager.OnMouseMove(3, 4); },
      [&] { manager.OnKeyDown(KEY_UP); },
      [&] { manager.OnDraw(); },
  };
  for (const auto& event : events) {
    manager.AddTool(1, new Leaving(manager));
    manager.SetActiveTool(1);
    event();
    EXPECT_EQ(manager.GetActiveTool(), 0);
  }
}

}  // namespace
