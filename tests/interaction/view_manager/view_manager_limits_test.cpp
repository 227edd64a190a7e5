// A view manager for which there is no memory, whose host derives from it, or lacks nearly everything.
#include <functional>
#include <memory>
#include <utility>

#include "interaction/view_manager/fakes.h"
#include "korvane/rect_zoom_tool.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

class LimitsTest : public ViewManagerTest {
 public:
  using ViewManagerTest::cube;
  using ViewManagerTest::disc;
  using ViewManagerTest::panel;

 protected:
  LimitsTest() { journal.recording = false; }
  ~LimitsTest() override {
    disc.record->onEnd = nullptr;
    manager.Destroy();
  }
};

}  // namespace

// ---- no memory ----

// What a setter had no memory for is made up for by Create.
TEST_F(LimitsTest, a_collaborator_that_could_not_be_watched_is_watched_from_create_on) {
  struct Row {
    const char* name;
    void (*set)(OpenViewManager& manager, LimitsTest& test, bool there);
    bool (*isWatched)(const OpenViewManager& manager);
  };
  const Row rows[] = {
      {"disc", [](OpenViewManager& m, LimitsTest& t, bool on) { m.SetHelmDisc(on ? &t.disc : nullptr); },
       [](const OpenViewManager& m) { return m.helmDiscObserver != nullptr; }},
      {"panel", [](OpenViewManager& m, LimitsTest& t, bool on) { m.SetStoryboard(on ? &t.panel : nullptr); },
       [](const OpenViewManager& m) { return m.storyboardObserver != nullptr; }},
      {"cube", [](OpenViewManager& m, LimitsTest& t, bool on) { m.SetOrientor(on ? &t.cube : nullptr); },
       [](const OpenViewManager& m) { return m.orientorObserver != nullptr; }},
  };
  for (const Row& row : rows) {
    for (const std::uint64_t failed : {1U, 2U}) {  // the observer, and its place with the one it observes
      SCOPED_TRACE(row.name);
      row.set(manager, *this, false);
      {
        const AllocationFault fault(failed, 1000);
        row.set(manager, *this, true);
      }
      EXPECT_FALSE(row.isWatched(manager));
      {
        const AllocationFault fault(1, 1000);
        EXPECT_FALSE(manager.Create());
      }
      row.set(manager, *this, false);
      row.set(manager, *this, true);
      EXPECT_TRUE(row.isWatched(manager));
      EXPECT_TRUE(manager.Create());
    }
  }
}

TEST_F(LimitsTest, a_disc_whose_tools_could_not_be_made_gets_them_from_create) {
  for (std::uint64_t failed = 1; failed < 12; ++failed) {
    manager.SetHelmDisc(nullptr);
    const AllocationFault fault(failed, 1000);
    manager.SetHelmDisc(&disc);
    if (fault.GetCounted() < failed) break;
    EXPECT_FALSE(manager.Create()) << failed;
    EXPECT_EQ(manager.navigation.orbitTool, nullptr) << failed;
  }
  EXPECT_TRUE(manager.Create());
  EXPECT_NE(manager.navigation.orbitTool, nullptr);
  EXPECT_NE(manager.navigation.zoomTool, nullptr);
}

// ---- little is there ----

TEST(LimitsOfViewManager, a_hub_and_a_renderer_are_enough) {
  const ManualPlatform platform;
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  RecordingRenderer renderer;
  OpenViewManager manager;
  EXPECT_FALSE(manager.MoveCamera([](CameraOperations&) { return true; }));
  manager.SetKorvane(&hub);
  manager.SetRenderer(&renderer);
  EXPECT_FALSE(manager.MoveCamera(nullptr));
  // Nobody watches a move yet.
  EXPECT_TRUE(manager.MoveCamera([](CameraOperations&) { return true; }));
  EXPECT_TRUE(manager.FitBoundsToView(Vector3(), 5.0));
  EXPECT_TRUE(manager.FitBoundBoxToView(Vector3(), Box3(Vector3(), Vector3(1.0, 1.0, 1.0))));
  EXPECT_TRUE(manager.FitSelectionToView());
  EXPECT_TRUE(manager.LevelCamera());
  hub.EndShot();
  EXPECT_TRUE(manager.Create());
  manager.SetViewportSize(800, 600);
  EXPECT_FALSE(manager.OnRightMouseDown(1, 1));
  EXPECT_FALSE(manager.OnMiddleMouseDown(1, 1));
  EXPECT_FALSE(manager.OnMouseWheel(1, 1, 120));
  manager.OnDraw();
  EXPECT_TRUE(manager.Destroy());
}

TEST_F(LimitsTest, a_disc_without_a_menu_has_none_to_open) {
  disc.SetEnabled(true);
  disc.Open(DiscType::None);
  manager.Create();
  manager.OnMouseMove(400, 300);
  EXPECT_FALSE(manager.OnRightMouseDown(400, 300));
  manager.OnRightMouseUp(400, 300);
  disc.Open(DiscType::FullNavigation);
  EXPECT_TRUE(manager.OnRightMouseDown(400, 300));
  manager.OnRightMouseUp(400, 300);
}

TEST_F(LimitsTest, the_wheel_turns_about_the_pivot_of_now_only_with_a_disc_that_is_enabled) {
  manager.Create();
  for (const bool enabled : {false, true}) {
    disc.Open(DiscType::ViewObject);
    disc.SetEnabled(enabled);
    hub.view.pivot = Vector3(0.5, 0.0, 0.0);
    manager.mouse.wheelDelta = 120;
    EXPECT_TRUE(manager.BeginZoomingWithMouse());
    EXPECT_EQ(hub.view.pivot == Vector3(0.5, 0.0, 0.0), enabled);
    EXPECT_TRUE(manager.EndZoomingWithMouse());
  }
}

// ---- hosts that derive from it ----

namespace {

/// Has no ball.
class BallLess : public OpenViewManager {
 protected:
  PivotBall* InstantiatePivotBall() override { return nullptr; }
};

/// Does what the test wants when it is asked whether the tool may be used.
class AskedManager : public OpenViewManager {
 public:
  std::function<void()> onAsk;

 protected:
  bool WantActiveToolEnabled() const override {
    if (onAsk) onAsk();
    return true;
  }
};

/// Leaves its view manager as it is given a hub.
class ShyTool : public Tool {
 public:
  explicit ShyTool(ViewManager& theManager) : manager(theManager) {}
  void SetKorvane(CameraOperations* hub) override {
    Tool::SetKorvane(hub);
    manager.RemoveTool(1);
  }

 private:
  ViewManager& manager;
};

}  // namespace

TEST_F(LimitsTest, a_cube_is_dragged_without_a_ball) {
  Orientor realCube;
  BallLess bare;
  bare.SetKorvane(&hub);
  bare.SetRenderer(&renderer);
  bare.SetOrientor(&realCube);
  realCube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
  bare.SetViewportSize(800, 600);
  ASSERT_TRUE(bare.Create());
  EXPECT_EQ(bare.GetPivotBall(), nullptr);
  bare.OnMouseMove(740, 540);
  bare.OnDraw();
  EXPECT_TRUE(bare.OnLeftMouseDown(740, 540));
  bare.OnMouseMove(700, 540);
  EXPECT_TRUE(bare.orientorDrag.seen);
  bare.OnLeftMouseUp(700, 540);
  EXPECT_TRUE(bare.FitAllToView());
  bare.Destroy();
  bare.SetOrientor(nullptr);
}

TEST_F(LimitsTest, a_tool_that_goes_as_its_use_is_asked_for_sets_no_cursor) {
  AskedManager asked;
  asked.SetKorvane(&hub);
  asked.SetRenderer(&renderer);
  asked.SetViewportSize(800, 600);
  ASSERT_TRUE(asked.Create());
  auto* const going = new FakeTool("tool", journal);
  going->cursorID = CURSOR_PAN;
  asked.AddTool(1, going);
  asked.SetActiveTool(1);
  renderer.ClearCalls();
  asked.onAsk = [&] {
    asked.SetActiveTool(0);
    delete asked.RemoveTool(1);
  };
  asked.OnDraw();
  EXPECT_NE(renderer.GetCursorID(), CURSOR_PAN);
  EXPECT_EQ(asked.GetActiveTool(), 0);
  asked.Destroy();
}

TEST_F(LimitsTest, a_tool_that_leaves_as_it_is_given_the_hub_is_given_no_more) {
  ShyTool shy(manager);
  manager.Create();
  EXPECT_TRUE(manager.AddTool(1, &shy));
  EXPECT_EQ(shy.GetKorvane(), &hub);
  EXPECT_EQ(shy.GetRenderer(), nullptr);
  EXPECT_EQ(manager.RemoveTool(1), nullptr);
}

// After Destroy no tool is active, while the number of the last one stands.
TEST_F(LimitsTest, whoever_chooses_none_as_the_disc_closes_keeps_the_choice) {
  Start();
  manager.AddTool(TOOL + 1, new FakeTool("other", journal));
  manager.Destroy();
  disc.Open(DiscType::FullNavigation);
  class Chooser : public HelmDiscObserver {
   public:
    Chooser(HelmDisc& theDisc, ViewManager& theManager) : HelmDiscObserver(&theDisc), manager(theManager) {}
    void OnActivated(DiscType /*type*/) override {}
    void OnClosed() override { manager.SetActiveTool(0); }
    void OnClicked(HelmDiscZone /*zone*/) override {}
    void OnDragBegin(HelmDiscZone /*zone*/) override {}
    void OnDragEnd() override {}
    void OnKeyDown(KeyID /*key*/) override {}
    void OnKeyUp(KeyID /*key*/) override {}
    void OnWelcomeClicked(WelcomeMenuPart /*part*/) override {}
    void OnWelcomeClosed() override {}
    void OnWelcomeEntered() override {}
    void OnWelcomeExited() override {}

   private:
    ViewManager& manager;
  } chooser(disc, manager);
  disc.AddObserver(&chooser);
  EXPECT_FALSE(manager.SetActiveTool(TOOL + 1));
  EXPECT_EQ(manager.GetActiveTool(), 0);
  disc.RemoveObserver(&chooser);
}

// Within the end of its record in the old hub another move begins there: it goes on unwatched.
TEST_F(LimitsTest, a_move_begun_as_the_hub_is_taken_is_let_go) {
  manager.Create();
  ASSERT_TRUE(manager.RestoreCenter(Vector3(1.0, 0.0, 0.0)));
  disc.record->onEnd = [this] {
    disc.record->onEnd = nullptr;
    manager.RestoreCenter(Vector3(2.0, 0.0, 0.0));
  };
  manager.SetKorvane(nullptr);
  EXPECT_TRUE(disc.record->Has(2, 1));
  manager.Destroy();
  EXPECT_TRUE(hub.IsShotActive());
  hub.EndShot();
}

namespace {

/// Does what the test wants as it makes the note beside the cursor.
class NoteRenderer : public RecordingRenderer {
 public:
  DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    if (onNote) onNote();
    return RecordingRenderer::CreateTooltipHUD(text);
  }
  std::function<void()> onNote;
};

}  // namespace

TEST_F(LimitsTest, a_disc_that_goes_as_the_note_of_its_navigation_is_made_takes_that_along) {
  NoteRenderer notes;
  manager.SetRenderer(&notes);
  manager.Create();
  disc.Open(DiscType::FullNavigation);
  disc.SetEnabled(true);
  notes.onNote = [&] {
    notes.onNote = nullptr;
    manager.SetHelmDisc(nullptr);
  };
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_FALSE(notes.onNote);
  EXPECT_FALSE(manager.IsPanningWithMouse());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  manager.OnMiddleMouseUp(400, 300);
  manager.Destroy();
  manager.SetRenderer(nullptr);
}

// ---- what goes while it is told ----

namespace {

/// Does what the test wants as it is asked for a frame.
class AskedHub : public MemoryHub {
 public:
  using MemoryHub::MemoryHub;
  void RequestApplicationUpdate() override {
    if (onRequest) onRequest();
  }
  std::function<void()> onRequest;
};

/// Gives way to another as it is chosen.
class ModestTool : public Tool {
 public:
  ModestTool(ViewManager& theManager, int other) : manager(theManager), another(other) {}
  void Activate() override { manager.SetActiveTool(another); }

 private:
  ViewManager& manager;
  int another;
};

struct AskedScene : ::testing::Test {
  AskedScene() {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
  }
  ~AskedScene() override {
    hub.onRequest = nullptr;
    manager.Destroy();
  }

  ManualPlatform platform;
  AskedHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  RecordingRenderer renderer;
  OpenViewManager manager;
};

}  // namespace

TEST_F(LimitsTest, the_item_of_a_tool_that_gives_way_as_it_is_chosen_is_not_selected) {
  manager.AddTool(1, new ModestTool(manager, 2));
  manager.AddTool(2, new FakeTool("second", journal));
  manager.Create();
  journal.recording = true;
  manager.SetActiveTool(1);
  EXPECT_EQ(manager.GetActiveTool(), 2);
  EXPECT_EQ(journal.Count("bar.SetItemSelected(1, true)"), 0);
  EXPECT_EQ(journal.Count("bar.SetItemSelected(2, true)"), 1);
  journal.recording = false;
}

TEST_F(AskedScene, a_toolbar_that_is_deleted_as_it_learns_the_size_of_the_view_is_not_laid_out) {
  auto strip = std::make_unique<Toolbar>();
  strip->SetPosition(Toolbar::POSITION_TOP_RIGHT);
  strip->SetVisible(true);
  manager.AddToolbar(strip.get());
  ASSERT_TRUE(manager.Create());
  hub.onRequest = [&] {
    if (strip == nullptr) return;
    manager.RemoveToolbar(strip.get());
    strip.reset();
  };
  manager.SetViewportSize(700, 500);
  EXPECT_EQ(strip, nullptr);
}

TEST_F(AskedScene, a_tool_that_is_put_away_or_deleted_as_it_is_cancelled_is_told_no_more) {
  for (const bool deletes : {false, true}) {
    manager.AddTool(1, new RectZoomTool);
    ASSERT_TRUE(manager.Create());
    manager.SetViewportSize(800, 600);
    ASSERT_TRUE(manager.SetActiveTool(1));
    manager.OnMouseMove(400, 300);
    ASSERT_TRUE(manager.OnLeftMouseDown(400, 300));
    manager.OnMouseMove(450, 350);
    bool acted = false;
    hub.onRequest = [&] {
      if (acted || manager.activeTool == nullptr || manager.activeTool->IsOperating()) return;
      acted = true;
      manager.SetActiveTool(0);
      if (deletes) delete manager.RemoveTool(1);
    };
    manager.CancelGesture();
    EXPECT_TRUE(acted);
    EXPECT_EQ(manager.GetActiveTool(), 0);
    EXPECT_FALSE(hub.IsShotActive());
    hub.onRequest = nullptr;
    delete manager.RemoveTool(1);
  }
}
