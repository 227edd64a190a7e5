// What a host may do within the calls of the view manager, its widgets and tools: nothing is left open, and
// nobody is left with what is gone.
#include <functional>
#include <iterator>
#include <utility>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

/// Does what the test wants when it is told.
class Acting : public OperationObserver {
 public:
  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override { Run(onBegin); }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {
    Run(onPerform);
  }
  void OnEndOperation(OperationType /*type*/) override { Run(onEnd); }

  std::function<void()> onBegin;
  std::function<void()> onPerform;
  std::function<void()> onEnd;

 private:
  // Once, as a host does that puts something away.
  static void Run(std::function<void()>& act) {
    if (act) std::exchange(act, nullptr)();
  }
};

class HostsTest : public ViewManagerTest {
 protected:
  static constexpr int ORBIT = 1;
  static constexpr int CHOSEN = 2;
  static constexpr int LEAVING = 3;

  /// Does what the test wants when it is put away.
  class LeavingTool : public Tool {
   public:
    explicit LeavingTool(std::function<void()> toDo) : onLeave(std::move(toDo)) {}
    void Deactivate() override { onLeave(); }

   private:
    std::function<void()> onLeave;
  };

  HostsTest() {
    hub.AddOperationObserver(&acting);
    manager.SetOrientor(&realCube);
    realCube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
    manager.SetViewportSize(800, 600);
    manager.Create();
    manager.AddTool(ORBIT, new OrbitTool);
    manager.SetActiveTool(ORBIT);
  }
  ~HostsTest() override {
    hub.onBeginShotHook = hub.onEndShotHook = nullptr;
    disc.record->onBegin = disc.record->onEnd = nullptr;
    manager.Destroy();
    manager.SetOrientor(nullptr);
    hub.RemoveOperationObserver(&acting);
  }

  void StartAnew(DiscType type) {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetOrientor(&realCube);
    manager.Create();
    disc.Open(type);
    manager.SetActiveTool(0);
    manager.SetActiveTool(ORBIT);
    disc.Open(type);
    disc.record->begun = disc.record->ended = 0;
  }

  // The active one from now on.
  void AddLeavingTool(std::function<void()> onLeave) {
    manager.AddTool(LEAVING, new LeavingTool(std::move(onLeave)));
    EXPECT_TRUE(manager.SetActiveTool(LEAVING));
  }
  void Frame() {
    platform.Advance(16);
    hub.PerformOperations();
    manager.OnDraw();
  }
  void Drag(int fromX, int fromY, int toX, int toY) {
    manager.OnMouseMove(fromX, fromY);
    manager.OnDraw();
    manager.OnLeftMouseDown(fromX, fromY);
    manager.OnMouseMove(toX, toY);
    Frame();
  }
  // From the middle of the cube, 60 pixels off the corner.
  void DragCube() { Drag(740, 540, 700, 540); }
  void DragTool() { Drag(400, 300, 450, 300); }

  void ExpectAtRest() {
    EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
    EXPECT_EQ(disc.record->GetOpenCount(), 0);
    EXPECT_FALSE(MouseDrag());
    EXPECT_FALSE(manager.orientorDrag.seen);
    EXPECT_FALSE(manager.wantCursorWrapping);
  }
  void ExpectToolTakesPress() {
    manager.OnMouseMove(400, 300);
    manager.OnDraw();
    EXPECT_TRUE(manager.OnLeftMouseDown(400, 300));
    EXPECT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
    manager.OnLeftMouseUp(400, 300);
    ExpectAtRest();
  }

  Acting acting;
  Orientor realCube;
};

// ---- a gesture is cancelled ----

TEST_F(HostsTest, a_cancelled_drag_of_a_tool_is_over_once) {
  DragTool();
  EXPECT_TRUE(disc.record->Has(1, 0));
  manager.CancelGesture();
  ExpectAtRest();
  manager.CancelGesture();
  EXPECT_FALSE(manager.OnLeftMouseUp(450, 300));
  EXPECT_TRUE(disc.record->Has(1, 1));
  ExpectToolTakesPress();
}

TEST_F(HostsTest, a_cancelled_drag_of_the_cube_is_over_once_and_leaves_the_pointer_where_it_is) {
  const double multiplier = hub.GetApplicationParameters().orbit_multiplier;
  DragCube();
  manager.OnMouseMove(300, 300);  // out of the region
  Frame();
  EXPECT_TRUE(manager.orientorDrag.leftRegion);
  EXPECT_TRUE(disc.record->Has(1, 0));
  renderer.ClearCalls();
  manager.CancelGesture();
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 0);
  EXPECT_EQ(hub.GetApplicationParameters().orbit_multiplier, multiplier);
  EXPECT_FALSE(manager.GetPivotBall()->IsVisible());
  ExpectAtRest();
  EXPECT_FALSE(manager.OnLeftMouseUp(300, 300));
  EXPECT_TRUE(disc.record->Has(1, 1));
  ExpectToolTakesPress();
}

TEST_F(HostsTest, a_cancelled_press_on_the_cube_clicks_nothing) {
  manager.OnMouseMove(740, 540);
  manager.OnDraw();
  EXPECT_TRUE(manager.OnLeftMouseDown(740, 540));
  manager.CancelGesture();
  EXPECT_FALSE(manager.OnLeftMouseUp(740, 540));
  EXPECT_FALSE(hub.IsShotActive());
  ExpectAtRest();
}

TEST_F(HostsTest, a_cancelled_navigation_brings_the_disc_back) {
  disc.Open(DiscType::FullNavigation);
  manager.OnMiddleMouseDown(400, 300);
  manager.OnMouseMove(410, 300);
  Frame();
  EXPECT_TRUE(manager.IsPanningWithMouse());
  manager.CancelGesture();
  EXPECT_FALSE(manager.IsPanningWithMouse());
  EXPECT_TRUE(disc.visible);
  ExpectAtRest();
  EXPECT_FALSE(manager.OnMiddleMouseUp(410, 300));
  EXPECT_TRUE(disc.record->Has(1, 1));
}

// Whoever has taken the press is let go of at a place outside the viewport, where no item is.
TEST_F(HostsTest, a_cancelled_press_is_released_outside) {
  for (const char* const taker : {"bar", "disc", "first", "second", "panel"}) {
    journal.takers = {taker};
    manager.OnLeftMouseDown(300, 200);
    Forget();
    manager.CancelGesture();
    const std::string release = std::string(taker) + ".OnLeftMouseUp(-1, -1)";
    EXPECT_EQ(journal.Count(release), 1) << taker;
    EXPECT_EQ(controller.switches, "1") << taker;
    Forget();
    EXPECT_FALSE(manager.OnLeftMouseUp(300, 200)) << taker;
    EXPECT_EQ(journal.Count(release), 0) << taker;
  }
}

TEST_F(HostsTest, a_tool_that_is_cancelled_is_told_of_the_key_and_of_its_release) {
  Start();
  tool->operating = true;
  manager.CancelGesture();
  const std::string key = "(" + std::to_string(KEY_ESCAPE) + ")";
  EXPECT_EQ(journal.Count("tool.OnKeyDown" + key), 1);
  EXPECT_EQ(journal.Count("tool.OnKeyUp" + key), 1);
}

TEST_F(HostsTest, a_cancelled_right_press_is_no_longer_held) {
  manager.OnRightMouseDown(300, 200);
  manager.CancelGesture();
  EXPECT_FALSE(manager.IsRightMouseDown());
  EXPECT_FALSE(manager.mouse.rightClickOpen);
}

TEST_F(HostsTest, a_move_whose_hub_goes_as_its_record_begins_does_not_happen) {
  disc.record->onBegin = [this] { manager.SetKorvane(nullptr); };
  EXPECT_FALSE(manager.RestoreCenter(Vector3(1, 0, 0)));
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(disc.record->GetOpenCount(), 0);
}

TEST_F(HostsTest, a_move_that_runs_by_itself_is_not_cancelled) {
  manager.RestoreCenter(Vector3(1, 0, 0));
  manager.CancelGesture();
  EXPECT_TRUE(hub.IsShotActive());
}

// ---- what hides the cube ----

TEST_F(HostsTest, a_cube_that_hides_forgets_the_mouse) {
  const std::function<void()> hides[] = {[this] { manager.SetOrientorVisible(false); },
                                         [this] { realCube.GetParameters().visible = false; },
                                         [this] { manager.SetCleanScreen(true); }};
  for (const auto& hide : hides) {
    manager.SetCleanScreen(false);
    realCube.GetParameters().visible = true;
    DragCube();
    EXPECT_TRUE(realCube.IsDragActive());
    hide();
    manager.OnLeftMouseUp(690, 540);
    ExpectAtRest();
    ExpectToolTakesPress();
  }
  manager.SetCleanScreen(false);
  manager.SetOrientorVisible(true);
  manager.OnMouseMove(740, 540);
  manager.OnDraw();
  manager.SetOrientorVisible(false);
  ExpectToolTakesPress();
}

TEST_F(HostsTest, a_clean_screen_lets_go_of_what_it_hides_and_of_nothing_else) {
  for (const char* const taker : {"bar", "disc", "first", "panel"}) {
    journal.takers = {taker};
    manager.OnLeftMouseDown(300, 200);
    Forget();
    manager.SetCleanScreen(true);
    const bool hidden = std::string(taker) == "bar" || std::string(taker) == "disc";
    EXPECT_EQ(journal.Count(std::string(taker) + ".OnLeftMouseUp(-1, -1)"), hidden ? 1 : 0) << taker;
    manager.OnLeftMouseUp(300, 200);
    manager.SetCleanScreen(false);
  }
  journal.takers.clear();
  DragTool();
  manager.SetCleanScreen(true);
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
  manager.OnLeftMouseUp(450, 300);
  ExpectAtRest();
}

// ---- what a host does in a callback ----

// The next move of a chain is begun while Destroy closes the record of the first: each has one of its own.
TEST_F(HostsTest, a_move_begun_while_destroy_closes_a_record_leaves_none_open) {
  int begun = 0;
  disc.record->onEnd = [&] {
    if (begun++ < 3) manager.RestoreCenter(Vector3(begun, 0, 0));
  };
  manager.RestoreCenter(Vector3());
  hub.PerformOperations();
  manager.Destroy();
  EXPECT_GE(begun, 1);
  EXPECT_EQ(disc.record->GetOpenCount(), 0);
  disc.record->onEnd = [] {};
  hub.EndShot();
  EXPECT_EQ(disc.record->GetOpenCount(), 0);
}

// A hook that begins another move of the view manager while one begins: each has its record.
TEST_F(HostsTest, a_move_begun_within_the_begin_of_another_has_a_record_of_its_own) {
  hub.onBeginShotHook = [&](Shot*) {
    hub.onBeginShotHook = nullptr;
    manager.RestoreCenter(Vector3(2, 0, 0));
  };
  manager.RestoreCenter(Vector3(1, 0, 0));
  EXPECT_TRUE(disc.record->Has(2, 1));
  hub.EndShot();
  EXPECT_TRUE(disc.record->Has(2, 2));
}

TEST_F(HostsTest, a_tool_put_away_when_its_operation_ends_is_put_away) {
  acting.onEnd = [this] {
    manager.SetActiveTool(0);
    delete manager.RemoveTool(ORBIT);
  };
  DragTool();
  manager.OnLeftMouseUp(450, 300);
  EXPECT_EQ(manager.GetActiveTool(), 0);
  EXPECT_TRUE(manager.tools.empty());
  ExpectAtRest();
}

TEST_F(HostsTest, a_destroy_amid_a_drag_bears_a_host_that_goes_back_to_no_tool) {
  acting.onEnd = [this] { manager.SetActiveTool(0); };
  DragTool();
  EXPECT_TRUE(manager.Destroy());
  EXPECT_EQ(manager.activeTool, nullptr);
  ExpectAtRest();
}

TEST_F(HostsTest, a_cube_taken_away_when_it_changes_its_corner_is_asked_no_more) {
  class Leaving : public OrientorObserver {
   public:
    Leaving(Orientor& cube, ViewManager& owner) : OrientorObserver(&cube), manager(owner) {}
    void OnClicked(OrientorPart /*part*/) override {}
    void OnDragBegin(OrientorPart /*part*/) override {}
    void OnDragEnd() override {}
    void OnPositionChange(OrientorParameters::Location /*location*/) override {
      manager.SetOrientor(nullptr);
    }
    ViewManager& manager;
  } leaving(realCube, manager);
  realCube.AddObserver(&leaving);
  realCube.GetParameters().screen_location = OrientorParameters::LOCATION_TOP_LEFT;
  EXPECT_FALSE(manager.OnMouseMove(400, 300));
  EXPECT_EQ(manager.GetOrientorBounds().halfExtent.x, 0.0);
  realCube.RemoveObserver(&leaving);
}

TEST_F(HostsTest, a_tool_chosen_while_another_is_put_away_stays_chosen) {
  manager.AddTool(CHOSEN, new PanTool);
  AddLeavingTool([this] { manager.SetActiveTool(CHOSEN); });
  EXPECT_FALSE(manager.SetActiveTool(ORBIT));
  EXPECT_EQ(manager.GetActiveTool(), CHOSEN);
}

TEST_F(HostsTest, of_two_tools_chosen_while_another_is_put_away_the_first_is_put_away_too) {
  manager.AddTool(CHOSEN, new FakeTool("first choice", journal));
  AddLeavingTool([this] {
    EXPECT_TRUE(manager.SetActiveTool(CHOSEN));
    EXPECT_TRUE(manager.SetActiveTool(0));
  });
  EXPECT_FALSE(manager.SetActiveTool(ORBIT));
  EXPECT_EQ(manager.GetActiveTool(), 0);
  EXPECT_EQ(journal.Count("first choice.Activate"), 1);
  EXPECT_EQ(journal.Count("first choice.Deactivate"), 1);
}

TEST_F(HostsTest, a_tool_removed_while_the_last_is_put_away_is_not_chosen) {
  manager.AddTool(CHOSEN, new PanTool);
  AddLeavingTool([this] { delete manager.RemoveTool(CHOSEN); });
  EXPECT_FALSE(manager.SetActiveTool(CHOSEN));
  EXPECT_EQ(manager.GetActiveTool(), 0);
  EXPECT_EQ(manager.activeTool, nullptr);
}

TEST_F(HostsTest, no_tool_is_chosen_while_the_tools_are_put_away) {
  const std::function<void()> ends[] = {[this] { manager.Destroy(); }, [this] { manager.RemoveAllTools(); }};
  for (const auto& end : ends) {
    manager.AddTool(CHOSEN, new FakeTool("choice", journal));
    AddLeavingTool([this] { EXPECT_FALSE(manager.SetActiveTool(CHOSEN)); });
    end();
    EXPECT_EQ(manager.activeTool, nullptr);
    EXPECT_EQ(journal.Count("choice.Activate"), 0);
    manager.RemoveAllTools();
    EXPECT_EQ(manager.GetActiveTool(), 0);
  }
}

TEST_F(HostsTest, a_tool_that_is_just_added_has_its_identifier) {
  class Adding : public PanTool {
   public:
    explicit Adding(OpenViewManager& owner) : manager(owner) {}
    void SetKorvane(CameraOperations* hub) override {
      PanTool::SetKorvane(hub);
      Tool* const other = new PanTool;
      EXPECT_FALSE(manager.AddTool(CHOSEN, other));
      delete other;
    }
    OpenViewManager& manager;
  };
  Tool* const added = new Adding(manager);
  EXPECT_TRUE(manager.AddTool(CHOSEN, added));
  EXPECT_EQ(manager.tools.at(CHOSEN).get(), added);
}

// ---- a navigation that is not alone ----

TEST_F(HostsTest, a_disc_taken_away_while_a_navigation_begins_leaves_nothing_open) {
  const std::function<void()> begins[] = {
      [this] { manager.OnMiddleMouseDown(400, 300); },
      [this] {
        manager.OnKeyDown(KEY_SHIFT);
        manager.OnMiddleMouseDown(400, 300);
        manager.OnKeyUp(KEY_SHIFT);
      },
      [this] { manager.OnMouseWheel(400, 300, 120); },
  };
  for (const auto& begin : begins) {
    StartAnew(DiscType::FullNavigation);
    acting.onBegin = [this] {
      EXPECT_TRUE(hub.IsOperationActive(OPERATION_ALL));
      manager.SetHelmDisc(nullptr);
    };
    begin();
    EXPECT_FALSE(acting.onBegin);
    EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
    manager.OnMiddleMouseUp(400, 300);
    ExpectAtRest();
  }
}

TEST_F(HostsTest, a_navigation_begun_while_another_begins_stays_alone) {
  disc.Open(DiscType::FullNavigation);
  acting.onBegin = [this] { EXPECT_TRUE(manager.OnMouseWheel(400, 300, 120)); };
  EXPECT_FALSE(manager.OnMiddleMouseDown(400, 300));
  EXPECT_TRUE(manager.IsZoomingWithMouse());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ZOOM));
  manager.OnMiddleMouseUp(400, 300);
  ExpectAtRest();
}

TEST_F(HostsTest, the_note_of_a_navigation_goes_back_to_the_renderer_that_lent_it) {
  disc.Open(DiscType::FullNavigation);
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 1);
  manager.SetRenderer(nullptr);
  manager.OnMiddleMouseUp(400, 300);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("DestroyIcon"), 1);
}

TEST_F(HostsTest, a_navigation_that_ends_while_its_note_is_made_has_none) {
  class Noting : public RecordingRenderer {
   public:
    DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
      if (onNote) std::exchange(onNote, nullptr)();
      return RecordingRenderer::CreateTooltipHUD(text);
    }
    std::function<void()> onNote;
  } noting;
  manager.SetRenderer(&noting);
  manager.Create();
  disc.Open(DiscType::FullNavigation);
  noting.onNote = [this] { manager.OnMiddleMouseUp(400, 300); };
  manager.OnMiddleMouseDown(400, 300);
  noting.ApplyTextureUsage();
  EXPECT_EQ(noting.CountCalls("CreateTooltipHUD"), 1);
  EXPECT_EQ(noting.CountCalls("DestroyIcon"), 1);
  manager.Destroy();
  manager.SetRenderer(&renderer);
  manager.Create();  // hands it on to all who still have the other
}

// ---- a gesture cancelled in its own press ----

TEST_F(HostsTest, a_gesture_cancelled_in_its_own_press_is_over) {
  acting.onBegin = [this] { manager.CancelGesture(); };
  manager.OnMouseMove(400, 300);
  manager.OnDraw();
  manager.OnLeftMouseDown(400, 300);
  EXPECT_FALSE(acting.onBegin);
  EXPECT_FALSE(manager.mouse.leftClickOpen);
  ExpectAtRest();

  disc.Open(DiscType::FullNavigation);
  acting.onBegin = [this] { manager.CancelGesture(); };
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_FALSE(acting.onBegin);
  EXPECT_FALSE(manager.mouse.middleClickOpen);
  EXPECT_FALSE(manager.IsPanningWithMouse());
  ExpectAtRest();
}

TEST_F(HostsTest, a_widget_that_cancels_the_press_that_it_takes_is_released_outside) {
  class Cancelling : public FakeToolbar {
   public:
    Cancelling(WidgetJournal& theJournal, OpenViewManager& owner)
        : FakeToolbar("cancelling", theJournal), manager(owner) {}
    bool OnLeftMouseDown(int /*x*/, int /*y*/) override { return Cancel(); }
    bool OnRightMouseDown(int /*x*/, int /*y*/) override { return Cancel(); }

   private:
    bool Cancel() {
      manager.CancelGesture();
      return true;
    }
    OpenViewManager& manager;
  } cancelling(journal, manager);
  manager.AddToolbar(&cancelling);
  Forget();
  EXPECT_TRUE(manager.OnLeftMouseDown(300, 200));
  EXPECT_EQ(journal.Count("cancelling.OnLeftMouseUp(-1, -1)"), 1);
  EXPECT_FALSE(manager.OnLeftMouseUp(300, 200));
  EXPECT_EQ(journal.Count("cancelling.OnLeftMouseUp(300, 200)"), 0);
  EXPECT_TRUE(manager.OnRightMouseDown(300, 200));
  EXPECT_FALSE(manager.mouse.rightClickOpen);
  manager.RemoveToolbar(&cancelling);
}

// ---- a frame ----

TEST_F(HostsTest, a_renderer_taken_away_within_a_frame_waits_for_no_cursor) {
  class Taking : public FakeToolbar {
   public:
    Taking(WidgetJournal& theJournal, OpenViewManager& owner)
        : FakeToolbar("taking", theJournal), manager(owner) {}
    void Draw() override { manager.SetRenderer(nullptr); }

   private:
    OpenViewManager& manager;
  } taking(journal, manager);
  manager.AddToolbar(&taking);
  manager.OnDraw();
  EXPECT_NE(renderer.GetCursorID(), CURSOR_CUBE_PART);
  renderer.SetCursorID(CURSOR_CUBE_PART);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_CUBE_PART);  // at once
  manager.RemoveToolbar(&taking);
  manager.SetRenderer(&renderer);
}

// Every place at which the hub, the renderer, the disc or the cube is taken away while something is told.
TEST_F(HostsTest, whatever_is_taken_away_while_it_is_told_is_missed_by_nobody) {
  using Slot = std::function<void()>*;
  std::function<void()> onBeginShot;
  std::function<void()> onEndShot;
  hub.onBeginShotHook = [&](Shot*) {
    if (onBeginShot) std::exchange(onBeginShot, nullptr)();
  };
  hub.onEndShotHook = [&](Shot*) {
    if (onEndShot) std::exchange(onEndShot, nullptr)();
  };
  const Slot slots[] = {&acting.onBegin, &acting.onPerform,     &acting.onEnd,      &onBeginShot,
                        &onEndShot,      &disc.record->onBegin, &disc.record->onEnd};
  const std::function<void()> takeAway[] = {
      [this] { manager.SetKorvane(nullptr); },  [this] { manager.SetRenderer(nullptr); },
      [this] { manager.SetHelmDisc(nullptr); }, [this] { manager.SetOrientor(nullptr); },
      [this] { manager.CancelGesture(); },      [this] { manager.SetActiveTool(0); }};
  const std::function<void()> gestures[] = {
      [this] {
        DragTool();
        manager.OnLeftMouseUp(450, 300);
      },
      [this] {
        DragCube();
        manager.OnLeftMouseUp(700, 540);
      },
      [this] {
        manager.OnMiddleMouseDown(400, 300);
        manager.OnMouseMove(410, 310);
        Frame();
        manager.OnMiddleMouseUp(410, 310);
      },
      [this] {
        manager.OnMouseWheel(400, 300, 120);
        for (int i = 0; i < 60; ++i) Frame();
      },
      [this] {
        manager.RestoreCenter(Vector3(1, 0, 0));
        Frame();
        hub.EndShot();
      },
      [this] {
        manager.LevelCamera();
        Frame();
        manager.FitAllToView();
        hub.EndShot();
      },
  };
  for (std::size_t slot = 0; slot < std::size(slots); ++slot) {
    for (std::size_t take = 0; take < std::size(takeAway); ++take) {
      for (std::size_t gesture = 0; gesture < std::size(gestures); ++gesture) {
        SCOPED_TRACE(std::to_string(slot) + " " + std::to_string(take) + " " + std::to_string(gesture));
        StartAnew(gesture == 2 || gesture == 3 ? DiscType::FullNavigation : DiscType::None);
        *slots[slot] = takeAway[take];
        gestures[gesture]();
        *slots[slot] = nullptr;
        manager.CancelGesture();
        hub.EndShot();
        manager.Destroy();
        EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
        EXPECT_FALSE(manager.wantCursorWrapping);
        EXPECT_EQ(disc.record->GetOpenCount(), 0);
      }
    }
  }
  hub.onBeginShotHook = hub.onEndShotHook = nullptr;
}

// A host that turns the wheel when the pan ends with the disc, and presses the middle button when that zoom
// ends in its turn.
TEST_F(HostsTest, a_navigation_begun_while_the_disc_goes_finds_no_tool) {
  disc.Open(DiscType::FullNavigation);
  bool zoomed = false;
  acting.onEnd = [&] {
    acting.onEnd = [&] { manager.OnMiddleMouseDown(400, 300); };
    manager.OnMouseMove(400, 301);  // so that no drag goes on any more
    zoomed = manager.OnMouseWheel(400, 300, 120);
  };
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_TRUE(manager.IsPanningWithMouse());
  manager.SetHelmDisc(nullptr);
  EXPECT_TRUE(zoomed);
  EXPECT_FALSE(acting.onEnd);  // the zoom has ended, too
  EXPECT_FALSE(manager.IsPanningWithMouse() || manager.IsZoomingWithMouse());
  manager.OnDraw();
  manager.OnMiddleMouseUp(400, 300);
  ExpectAtRest();
}

// Each asks in its frames for the cursor of its own tool.
TEST(TwoViews, of_two_on_one_renderer_the_one_with_the_pointer_says_its_shape) {
  RecordingRenderer renderer;
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  ViewManager orbits;
  ViewManager pans;
  for (ViewManager* const view : {&orbits, &pans}) {
    view->SetKorvane(&hub);
    view->SetRenderer(&renderer);
    view->Create();
    view->SetViewportSize(800, 600);
    view->AddTool(1, view == &orbits ? static_cast<Tool*>(new OrbitTool) : new PanTool);
    view->SetActiveTool(1);
  }
  const auto countChanges = [&] {
    renderer.ClearCalls();
    for (int frame = 0; frame < 100; ++frame) {
      orbits.OnDraw();
      pans.OnDraw();
    }
    return renderer.CountCalls("SetCursorIcon");
  };
  orbits.OnMouseMove(400, 300);
  EXPECT_EQ(countChanges(), 1);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ORBIT);
  pans.OnMouseMove(400, 300);
  EXPECT_EQ(countChanges(), 1);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_PAN);
  for (ViewManager* const view : {&orbits, &pans}) view->Destroy();
}

TEST_F(HostsTest, a_wheel_tool_does_not_outlive_destroy) {
  manager.AddTool(2, new MouseWheelZoomTool);
  manager.SetActiveTool(2);
  manager.OnMouseWheel(400, 300, 120);
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ZOOM));
  manager.Destroy();
  ExpectAtRest();
}

#ifndef NDEBUG
TEST(ViewManagerDeathTest, its_end_within_a_call_of_a_widget_is_asserted) {
  struct Deleting : Tool {
    bool OnMouseDown(int /*x*/, int /*y*/) override {
      (*view)->Destroy();
      return true;
    }
    std::unique_ptr<ViewManager>* view = nullptr;
  };
  auto view = std::make_unique<ViewManager>();
  auto* const tool = new Deleting;
  tool->view = &view;
  view->AddTool(1, tool);
  view->SetActiveTool(1);
  EXPECT_DEATH(view->OnLeftMouseDown(1, 1), "destroyed within");
}
#endif

}  // namespace
