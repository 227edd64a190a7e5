#include <functional>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

class LifeTest : public ViewManagerTest {
 protected:
  // The lines that end in one of the words.
  Lines Only(const std::set<std::string>& operations) {
    Lines result;
    for (const std::string& line : journal.Take()) {
      if (operations.count(line.substr(line.find('.') + 1)) != 0) result.push_back(line);
    }
    return result;
  }
};

// ---- create ----

TEST_F(LifeTest, creates_the_widgets_and_then_the_toolbars) {
  EXPECT_TRUE(manager.Create());
  EXPECT_EQ(renderer.GetCalls().front(), "Create()");
  EXPECT_EQ(Only({"Create"}), (Lines{"disc.Create", "cube.Create", "panel.Create", "bar.Create",
                                     "controller.Create", "first.Create", "second.Create"}));
}

TEST_F(LifeTest, hands_everything_on_before_it_creates) {
  manager.Create();
  EXPECT_EQ(
      Only({"SetKorvane", "SetRenderer", "SetRewindHistory", "SetPivotBall", "Create"}),
      (Lines{"disc.SetKorvane", "disc.SetRenderer", "disc.Create", "cube.SetKorvane", "cube.SetRenderer",
             "cube.SetRewindHistory", "cube.Create", "panel.SetKorvane", "panel.SetRenderer",
             "panel.SetRewindHistory", "panel.Create", "bar.Create", "controller.SetPivotBall",
             "controller.SetRenderer", "controller.Create", "first.Create", "second.Create"}));
  PivotBall* const ball = manager.GetPivotBall();
  ASSERT_NE(ball, nullptr);
  EXPECT_EQ(ball->GetKorvane(), &hub);
  EXPECT_EQ(disc.GetPivotBall(), ball);
  EXPECT_EQ(controller.GetPivotBall(), ball);
  EXPECT_EQ(controller.GetRewindHistory(), disc.record);
  EXPECT_EQ(controller.GetKorvane(), &hub);
  EXPECT_EQ(cube.GetRewindHistory(), disc.record);
  EXPECT_EQ(panel.GetHistory(), disc.record);
  EXPECT_EQ(bar.GetKorvane(), &hub);
  EXPECT_EQ(bar.GetRenderer(), &renderer);
  for (const FakeToolbar* toolbar : {&first, &second}) {
    EXPECT_EQ(toolbar->GetKorvane(), &hub);
    EXPECT_EQ(toolbar->GetRenderer(), &renderer);
  }
  for (const Tool* each : {static_cast<Tool*>(manager.navigation.orbitTool.get()),
                           static_cast<Tool*>(manager.navigation.panTool.get()),
                           static_cast<Tool*>(manager.navigation.zoomTool.get())}) {
    EXPECT_EQ(each->GetKorvane(), &hub);
    EXPECT_EQ(each->GetRenderer(), &renderer);
    EXPECT_EQ(each->GetRewindHistory(), disc.record);
  }
  EXPECT_EQ(manager.navigation.orbitTool->GetPivotBall(), ball);
  EXPECT_EQ(manager.navigation.zoomTool->GetPivotBall(), ball);
  EXPECT_EQ(manager.navigation.panTool->GetPivotBall(), nullptr);  // a pan turns about nothing
}

TEST_F(LifeTest, suppresses_the_welcome_screen_where_there_is_a_bar) {
  manager.Create();
  EXPECT_TRUE(disc.GetParameters().suppressWelcome);
  disc.GetParameters().suppressWelcome = false;
  manager.SetNavigationBar(nullptr);
  manager.Create();
  EXPECT_FALSE(disc.GetParameters().suppressWelcome);
}

TEST_F(LifeTest, creates_nothing_without_a_hub_or_a_renderer_or_when_that_fails) {
  manager.SetKorvane(nullptr);
  EXPECT_FALSE(manager.Create());
  manager.SetKorvane(&hub);
  manager.SetRenderer(nullptr);
  EXPECT_FALSE(manager.Create());
  manager.SetRenderer(&renderer);
  renderer.FailOnce("Create");
  EXPECT_FALSE(manager.Create());
  EXPECT_TRUE(Only({"Create"}).empty());
  EXPECT_EQ(manager.GetPivotBall(), nullptr);
  EXPECT_TRUE(manager.Create());
}

// Each create is made to fail in turn. `created` is who is created all the same.
TEST_F(LifeTest, goes_on_after_a_failure_but_not_past_its_own_stage) {
  const Lines widgets = {"disc.Create", "cube.Create", "panel.Create", "bar.Create", "controller.Create"};
  Lines all = widgets;
  all.insert(all.end(), {"first.Create", "second.Create"});
  struct Row {
    Fake* fails;
    const Lines& created;
    bool watches;  // the shot observer is made
    bool wired;    // a tool gets what it needs
  };
  const Row rows[] = {{&disc, widgets, false, false},       {&cube, widgets, false, false},
                      {&panel, widgets, false, false},      {&bar, widgets, false, false},
                      {&controller, widgets, false, false}, {&first, all, true, false},
                      {&second, all, true, false}};
  for (const Row& row : rows) {
    OpenViewManager fresh;
    auto* const waiting = new FakeTool("tool", journal);
    fresh.AddTool(1, waiting);
    fresh.SetKorvane(&hub);
    fresh.SetRenderer(&renderer);
    fresh.SetHelmDisc(&disc);
    fresh.SetOrientor(&cube);
    fresh.SetStoryboard(&panel);
    fresh.SetNavigationBar(&bar);
    fresh.SetCam3DController(&controller);
    fresh.AddToolbar(&first);
    fresh.AddToolbar(&second);
    row.fails->createFails = true;
    journal.lines.clear();
    EXPECT_FALSE(fresh.Create()) << row.fails->name;
    EXPECT_EQ(Only({"Create"}), row.created) << row.fails->name;
    EXPECT_EQ(fresh.rewindShotObserver != nullptr, row.watches) << row.fails->name;
    EXPECT_EQ(waiting->GetKorvane() != nullptr, row.wired) << row.fails->name;
    // The disc's tools work only with the disc.
    EXPECT_EQ(fresh.navigation.orbitTool->GetKorvane() == nullptr, row.fails == &disc) << row.fails->name;
    row.fails->createFails = false;
    fresh.SetCam3DController(nullptr);
  }
}

TEST_F(LifeTest, reports_a_pivot_ball_that_cannot_be_created) {
  class Failing : public PivotBall {
   public:
    bool Create() override { return false; }
  };
  class Making : public OpenViewManager {
   public:
    PivotBall* InstantiatePivotBall() override { return none ? nullptr : new Failing; }
    bool none = false;
  } making;
  making.SetKorvane(&hub);
  making.SetRenderer(&renderer);
  making.SetOrientor(&cube);
  journal.lines.clear();
  EXPECT_FALSE(making.Create());
  EXPECT_EQ(Only({"Create"}), (Lines{"cube.Create"}));
  making.none = true;
  EXPECT_TRUE(making.Create());
  EXPECT_EQ(making.GetPivotBall(), nullptr);
  making.SetOrientor(nullptr);
}

TEST_F(LifeTest, wires_tools_that_were_there_before_it_was_created) {
  auto* const early = new FakeTool("early", journal);
  manager.AddTool(1, early);
  EXPECT_EQ(early->GetPivotBall(), nullptr);
  manager.Create();
  auto* const late = new FakeTool("late", journal);
  manager.AddTool(2, late);
  for (const Tool* each : {early, late}) {
    EXPECT_EQ(each->GetKorvane(), &hub);
    EXPECT_EQ(each->GetRenderer(), &renderer);
    EXPECT_EQ(each->GetRewindHistory(), disc.record);
    EXPECT_EQ(each->GetPivotBall(), manager.GetPivotBall());
  }
}

TEST_F(LifeTest, may_be_created_again) {
  manager.Create();
  manager.AddTool(1, new FakeTool("tool", journal));
  EXPECT_TRUE(manager.Create());
  PivotBall* const ball = manager.GetPivotBall();
  EXPECT_EQ(disc.GetPivotBall(), ball);
  EXPECT_EQ(controller.GetPivotBall(), ball);
  EXPECT_EQ(manager.tools.at(1)->GetPivotBall(), ball);
}

// ---- destroy ----

TEST_F(LifeTest, destroys_the_toolbars_the_ball_and_the_widgets) {
  Start();
  EXPECT_TRUE(manager.Destroy());
  EXPECT_EQ(journal.lines,
            (Lines{"first.Destroy", "second.Destroy", "tool.Deactivate", "controller.SetPivotBall",
                   "bar.Destroy", "panel.Destroy", "cube.Destroy", "disc.Destroy", "controller.Destroy"}));
  EXPECT_EQ(manager.GetPivotBall(), nullptr);
  EXPECT_EQ(manager.rewindShotObserver, nullptr);
  EXPECT_EQ(manager.activeTool, nullptr);
  EXPECT_EQ(manager.GetActiveTool(), TOOL);  // kept
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

TEST_F(LifeTest, collects_every_failure_of_destroy) {
  for (Fake* const fails :
       std::initializer_list<Fake*>{&first, &second, &bar, &panel, &cube, &disc, &controller}) {
    manager.Create();
    journal.lines.clear();
    fails->destroyFails = true;
    EXPECT_FALSE(manager.Destroy()) << fails->name;
    EXPECT_EQ(Only({"Destroy"}).size(), 7U) << fails->name;
    fails->destroyFails = false;
  }
  manager.Create();
  manager.GetPivotBall()->SetRenderer(nullptr);  // so that it cannot give its label back
  EXPECT_FALSE(manager.Destroy());
  EXPECT_TRUE(manager.Destroy());
}

TEST_F(LifeTest, leaves_nobody_a_ball_that_is_gone) {
  Start();
  manager.Destroy();
  EXPECT_EQ(disc.GetPivotBall(), nullptr);
  EXPECT_EQ(controller.GetPivotBall(), nullptr);
  EXPECT_EQ(tool->GetPivotBall(), nullptr);
  EXPECT_EQ(manager.navigation.orbitTool->GetPivotBall(), nullptr);
  EXPECT_EQ(manager.navigation.zoomTool->GetPivotBall(), nullptr);
  manager.OnLeftMouseDown(1, 2);
  manager.OnDraw();
}

TEST_F(LifeTest, takes_the_ball_away_from_the_disc_before_it_destroys_it) {
  class Watching : public PivotBall {
   public:
    explicit Watching(FakeDisc& theDisc) : disc(theDisc) {}
    ~Watching() override { disc.journal.Ask("ball", "~"); }
    bool Destroy() override {
      disc.journal.Ask("ball", disc.GetPivotBall() == nullptr ? "Destroy" : "Destroy while the disc has it");
      return true;
    }
    FakeDisc& disc;
  };
  class Making : public OpenViewManager {
   public:
    explicit Making(FakeDisc& theDisc) : disc(theDisc) {}
    PivotBall* InstantiatePivotBall() override { return new Watching(disc); }
    FakeDisc& disc;
  } making(disc);
  making.SetKorvane(&hub);
  making.SetRenderer(&renderer);
  making.SetHelmDisc(&disc);
  making.Create();
  EXPECT_EQ(disc.GetPivotBall(), making.GetPivotBall());
  Forget();
  EXPECT_TRUE(making.Destroy());
  EXPECT_EQ(journal.lines, (Lines{"ball.Destroy", "ball.~", "disc.Destroy"}));
}

TEST_F(LifeTest, leaves_a_disc_its_own_ball) {
  manager.Create();
  PivotBall own;
  disc.SetPivotBall(&own);
  manager.Destroy();
  EXPECT_EQ(disc.GetPivotBall(), &own);
}

TEST_F(LifeTest, ends_the_record_of_the_shot_that_it_watches_when_it_is_destroyed) {
  Start();
  EXPECT_TRUE(manager.RestoreCenter(Vector3(1, 0, 0)));
  EXPECT_TRUE(hub.IsShotActive());
  manager.Destroy();
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_TRUE(disc.record->Has(1, 1));
  hub.EndShot();
  EXPECT_TRUE(disc.record->Has(1, 1));
}

TEST_F(LifeTest, leaves_a_shot_of_somebody_else_alone) {
  Start();
  TransitionShotParameters shot;
  shot.targetCamera = LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0});
  shot.duration = 1.0;
  hub.BeginShot(shot);
  manager.Destroy();
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(LifeTest, goes_in_the_middle_of_anything) {
  for (int gesture = 0; gesture < 4; ++gesture) {
    OpenViewManager passing;
    passing.SetKorvane(&hub);
    passing.SetRenderer(&renderer);
    passing.SetHelmDisc(&disc);
    disc.Open(DiscType::FullNavigation);
    passing.SetViewportSize(800, 600);
    passing.Create();
    if (gesture == 0) passing.OnKeyDown(KEY_SHIFT);
    if (gesture <= 1) passing.OnMiddleMouseDown(400, 300);
    if (gesture == 2) passing.OnMouseWheel(400, 300, 120);
    if (gesture == 3) passing.FitAllToView();
    EXPECT_EQ(disc.record->begun, disc.record->ended + 1) << gesture;
    const bool destroyed = gesture % 2 == 0;
    if (!destroyed) continue;
    passing.Destroy();
    EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL)) << gesture;
    EXPECT_EQ(disc.record->begun, disc.record->ended) << gesture;
  }
  EXPECT_EQ(disc.record->begun, disc.record->ended);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  hub.EndShot();  // of the fit, which went on
  EXPECT_EQ(disc.record->begun, disc.record->ended);
  hub.PerformOperations();
}

TEST_F(LifeTest, takes_its_observers_off_when_it_goes) {
  {
    OpenViewManager passing;
    passing.SetHelmDisc(&disc);
    passing.SetStoryboard(&panel);
    passing.SetOrientor(&cube);
    EXPECT_TRUE(disc.observers.Contains(passing.helmDiscObserver.get()));
    EXPECT_TRUE(panel.observers.Contains(passing.storyboardObserver.get()));
    EXPECT_TRUE(cube.observers.Contains(passing.orientorObserver.get()));
  }
  disc.SetActiveDisc(DiscType::TwoD);  // tells those who are left
  cube.GetParameters().screen_location = OrientorParameters::LOCATION_BOTTOM_LEFT;
  cube.SetViewportSize(10, 10);
}

// ---- collaborators that change ----

TEST_F(LifeTest, moves_its_observer_from_one_widget_to_the_next) {
  FakeDisc otherDisc(journal);
  FakeStoryboard otherPanel(journal);
  FakeOrientor otherCube(journal);
  const auto* const oldDiscObserver = manager.helmDiscObserver.get();
  const auto* const oldPanelObserver = manager.storyboardObserver.get();
  const auto* const oldCubeObserver = manager.orientorObserver.get();
  manager.SetHelmDisc(&otherDisc);
  manager.SetStoryboard(&otherPanel);
  manager.SetOrientor(&otherCube);
  EXPECT_FALSE(disc.observers.Contains(oldDiscObserver));
  EXPECT_FALSE(panel.observers.Contains(oldPanelObserver));
  EXPECT_FALSE(cube.observers.Contains(oldCubeObserver));
  EXPECT_TRUE(otherDisc.observers.Contains(manager.helmDiscObserver.get()));
  EXPECT_TRUE(otherPanel.observers.Contains(manager.storyboardObserver.get()));
  EXPECT_TRUE(otherCube.observers.Contains(manager.orientorObserver.get()));
  manager.SetHelmDisc(nullptr);
  manager.SetStoryboard(nullptr);
  manager.SetOrientor(nullptr);
  EXPECT_EQ(manager.helmDiscObserver, nullptr);
  EXPECT_EQ(manager.storyboardObserver, nullptr);
  EXPECT_EQ(manager.orientorObserver, nullptr);
}

TEST_F(LifeTest, has_the_tools_of_the_middle_button_and_a_history_while_a_disc_is_set) {
  EXPECT_EQ(manager.GetRewindHistory(), disc.record);
  const Tool* const orbit = manager.navigation.orbitTool.get();
  EXPECT_NE(orbit, nullptr);
  FakeDisc other(journal);
  manager.SetHelmDisc(&other);
  EXPECT_NE(manager.navigation.orbitTool, nullptr);
  EXPECT_NE(manager.navigation.panTool, nullptr);
  EXPECT_NE(manager.navigation.zoomTool, nullptr);
  manager.SetHelmDisc(nullptr);
  EXPECT_EQ(manager.navigation.orbitTool, nullptr);
  EXPECT_EQ(manager.navigation.panTool, nullptr);
  EXPECT_EQ(manager.navigation.zoomTool, nullptr);
  EXPECT_EQ(manager.GetRewindHistory(), nullptr);
  EXPECT_FALSE(manager.OnMouseMove(5, 5));
}

TEST_F(LifeTest, leaves_nobody_the_history_of_a_disc_that_is_gone) {
  auto passing = std::make_unique<FakeDisc>(journal);
  manager.SetHelmDisc(passing.get());
  Start();
  EXPECT_EQ(tool->GetRewindHistory(), passing->record);
  passing->Open(DiscType::FullNavigation);
  manager.OnMiddleMouseDown(400, 300);
  manager.FitAllToView();
  manager.SetHelmDisc(nullptr);
  EXPECT_EQ(passing->GetPivotBall(), nullptr);
  EXPECT_EQ(passing->record->GetOpenCount(), 0);
  passing.reset();
  EXPECT_EQ(tool->GetRewindHistory(), nullptr);
  EXPECT_EQ(cube.GetRewindHistory(), nullptr);
  EXPECT_EQ(panel.GetHistory(), nullptr);
  EXPECT_EQ(controller.GetRewindHistory(), nullptr);
  hub.EndShot();  // tells the observer, whose history is gone
  manager.OnMiddleMouseUp(400, 300);
}

TEST_F(LifeTest, closes_the_record_of_a_gesture_that_outlasts_its_history) {
  Start();
  manager.AddTool(1, new OrbitTool);
  manager.SetActiveTool(1);
  manager.OnLeftMouseDown(400, 300);
  EXPECT_TRUE(disc.record->Has(1, 0));
  manager.SetHelmDisc(&disc);  // the same
  EXPECT_TRUE(disc.record->Has(1, 0));
  manager.SetHelmDisc(nullptr);
  EXPECT_TRUE(disc.record->Has(1, 1));
  EXPECT_TRUE(SameBits(disc.record->endCamera, hub.view));
  manager.SetHelmDisc(&disc);
  manager.OnLeftMouseUp(400, 300);
  EXPECT_TRUE(disc.record->Has(1, 1));
}

TEST_F(LifeTest, a_zoom_by_the_wheel_of_the_active_tool_does_not_outlive_the_manager) {
  Start();
  manager.AddTool(1, new MouseWheelZoomTool);
  manager.SetActiveTool(1);
  manager.OnMouseWheel(400, 300, 120);
  ASSERT_TRUE(hub.IsOperationActive(OPERATION_ZOOM));
  manager.Destroy();
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  EXPECT_TRUE(disc.record->Has(1, 1));
}

TEST_F(LifeTest, closes_a_gesture_of_the_middle_button_with_its_disc) {
  Start();
  disc.Open(DiscType::FullNavigation);
  manager.OnMiddleMouseDown(400, 300);
  EXPECT_TRUE(manager.IsPanningWithMouse());
  manager.SetHelmDisc(nullptr);
  EXPECT_FALSE(manager.IsPanningWithMouse());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  EXPECT_EQ(disc.record->begun, 1);
  EXPECT_EQ(disc.record->ended, 1);
  EXPECT_TRUE(disc.visible);
  EXPECT_EQ(renderer.GetLiveIconCount(), 1);  // the ball's label
}

// The tool of the gesture may still show the ball's place at its end.
TEST_F(LifeTest, ends_a_gesture_before_it_takes_the_ball_away_when_it_goes) {
  auto passing = std::make_unique<OpenViewManager>();
  passing->SetKorvane(&hub);
  passing->SetRenderer(&renderer);
  passing->SetHelmDisc(&disc);
  disc.Open(DiscType::FullNavigation);
  passing->SetViewportSize(800, 600);
  passing->Create();
  passing->OnKeyDown(KEY_SHIFT);
  passing->OnMiddleMouseDown(400, 300);
  ASSERT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
  bool hasBall = false;
  disc.record->onEnd = [&] { hasBall = disc.GetPivotBall() != nullptr; };
  passing.reset();
  EXPECT_TRUE(hasBall);
  EXPECT_EQ(disc.GetPivotBall(), nullptr);
}

TEST_F(LifeTest, ends_the_record_of_the_shot_that_it_watches_when_the_hub_changes) {
  Start();
  manager.FitAllToView();
  MemoryHub other;
  manager.SetKorvane(&other);
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_TRUE(disc.record->Has(1, 1));
  hub.EndShot();
  EXPECT_TRUE(disc.record->Has(1, 1));
  manager.SetKorvane(&hub);
}

TEST_F(LifeTest, keeps_toolbars_in_the_order_of_adding) {
  EXPECT_FALSE(manager.AddToolbar(nullptr));
  EXPECT_FALSE(manager.RemoveToolbar(nullptr));
  EXPECT_TRUE(manager.AddToolbar(&first));  // to the end
  manager.Create();
  const Lines created = Only({"Create"});
  EXPECT_EQ(created.back(), "first.Create");
  EXPECT_EQ(std::count(created.begin(), created.end(), "first.Create"), 1);
  EXPECT_TRUE(manager.RemoveToolbar(&first));
  EXPECT_TRUE(manager.RemoveToolbar(&first));
  manager.Destroy();
  EXPECT_EQ(Only({"Destroy"}).front(), "second.Destroy");
}

// ---- observers ----

TEST_F(LifeTest, lays_out_anew_when_the_cube_changes_its_corner) {
  Start();
  cube.GetParameters().screen_location = OrientorParameters::LOCATION_BOTTOM_LEFT;
  cube.SetViewportSize(800, 600);
  EXPECT_EQ(bar.strip->orientorLocation, OrientorParameters::LOCATION_BOTTOM_LEFT);
  Forget();
  manager.orientorObserver->OnClicked(OrientorObserver::PART_TOP);
  manager.orientorObserver->OnDragBegin(OrientorObserver::PART_TOP);
  manager.orientorObserver->OnDragEnd();
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(LifeTest, lets_a_disc_and_a_tool_exclude_each_other) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(manager.GetActiveTool(), 0);
  EXPECT_EQ(manager.activeTool, nullptr);
  EXPECT_EQ(journal.lines.back(), "bar.SetViewportSize(800, 600)");  // laid out
  EXPECT_TRUE(manager.SetActiveTool(TOOL));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_EQ(manager.GetActiveTool(), TOOL);
}

TEST_F(LifeTest, hears_of_the_disc_only_when_it_opens_and_closes) {
  Start();
  HelmDiscObserver& observer = *manager.helmDiscObserver;
  observer.OnClicked(HelmDiscZone::Pan);
  observer.OnDragBegin(HelmDiscZone::Pan);
  observer.OnDragEnd();
  observer.OnKeyDown(KEY_UP);
  observer.OnKeyUp(KEY_UP);
  observer.OnWelcomeClicked(WelcomeMenuPart::BasicTitle);
  observer.OnWelcomeClosed();
  observer.OnWelcomeEntered();
  observer.OnWelcomeExited();
  EXPECT_TRUE(journal.lines.empty());
  observer.OnClosed();
  EXPECT_FALSE(journal.lines.empty());
  EXPECT_EQ(manager.GetActiveTool(), TOOL);
}

TEST_F(LifeTest, hears_of_the_storyboard) {
  Start();
  StoryboardObserver& observer = *manager.storyboardObserver;
  for (const auto& opens : std::vector<std::function<void()>>{
           [&] { observer.OnOpened(Storyboard::MODE_EDITING); }, [&] { observer.OnClosed(); }}) {
    Forget();
    opens();
    EXPECT_FALSE(journal.lines.empty());
  }
  Forget();
  observer.OnModeChanged(Storyboard::MODE_PRESENTING);
  observer.OnPartClicked(StoryboardObserver::PART_PAUSE);
  observer.OnShotCreated();
  observer.OnTargetShot(nullptr);
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_FALSE(manager.reelshowPlaying);
  const std::function<void()> starts[] = {
      [&] { observer.OnPlaybackStory(nullptr); },      [&] { observer.OnPlaybackSequence(nullptr); },
      [&] { observer.OnPlaybackSingleShot(nullptr); }, [&] { observer.OnPreviewShot(nullptr, true); },
      [&] { observer.OnPlaybackResumed(); },
  };
  for (const auto& start : starts) {
    start();
    EXPECT_TRUE(manager.reelshowPlaying);
    EXPECT_TRUE(cube.GetParameters().disabled);
    EXPECT_TRUE(bar.strip->disabled);
    observer.OnPlaybackStopped();
    EXPECT_FALSE(manager.reelshowPlaying);
    EXPECT_FALSE(cube.GetParameters().disabled);
    EXPECT_FALSE(bar.strip->disabled);
  }
}

TEST_F(LifeTest, plays_back_without_a_toolbar_in_the_bar) {
  bar.LoseToolbar();
  manager.OnReelshowStartPlayback();
  EXPECT_TRUE(manager.reelshowPlaying);
}

// ---- tools ----

TEST_F(LifeTest, refuses_tools_that_it_cannot_take) {
  Start();
  auto spare = std::make_unique<FakeTool>("spare", journal);
  EXPECT_FALSE(manager.AddTool(0, spare.get()));
  EXPECT_FALSE(manager.AddTool(TOOL, spare.get()));
  EXPECT_FALSE(manager.AddTool(1, nullptr));
  EXPECT_EQ(spare->GetKorvane(), nullptr);
  EXPECT_FALSE(manager.AddTool(1, tool));  // is here already
  EXPECT_EQ(manager.tools.size(), 1U);
}

TEST_F(LifeTest, gives_a_tool_back) {
  Start();
  auto* const spare = new FakeTool("spare", journal);
  manager.AddTool(-5, spare);
  EXPECT_EQ(manager.RemoveTool(1), nullptr);
  EXPECT_EQ(manager.RemoveTool(0), nullptr);
  EXPECT_EQ(manager.RemoveTool(TOOL), nullptr);  // is active
  const std::unique_ptr<Tool> back(manager.RemoveTool(-5));
  EXPECT_EQ(back.get(), spare);
  EXPECT_EQ(back->GetPivotBall(), nullptr);
  EXPECT_EQ(manager.RemoveTool(-5), nullptr);
  EXPECT_FALSE(manager.SetActiveTool(-5));
}

TEST_F(LifeTest, changes_the_active_tool) {
  Start();
  manager.AddTool(8, new FakeTool("other", journal));
  Forget();
  EXPECT_TRUE(manager.SetActiveTool(8));
  EXPECT_EQ(journal.lines, (Lines{"tool.Deactivate", "bar.SetItemSelected(7, false)", "other.Activate",
                                  "bar.SetItemSelected(8, true)"}));
  EXPECT_EQ(hub.requested, 1);
  EXPECT_EQ(manager.GetActiveTool(), 8);
  Forget();
  EXPECT_TRUE(manager.SetActiveTool(0));
  EXPECT_EQ(journal.lines, (Lines{"other.Deactivate", "bar.SetItemSelected(8, false)"}));
  EXPECT_EQ(hub.requested, 1);
  EXPECT_EQ(manager.activeTool, nullptr);
}

TEST_F(LifeTest, keeps_the_active_tool_where_the_request_makes_no_change) {
  Start();
  EXPECT_TRUE(manager.SetActiveTool(TOOL));
  EXPECT_FALSE(manager.SetActiveTool(99));
  tool->operating = true;
  EXPECT_FALSE(manager.SetActiveTool(0));
  EXPECT_FALSE(manager.SetActiveTool(99));
  EXPECT_TRUE(manager.SetActiveTool(TOOL));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_EQ(hub.requested, 0);
  EXPECT_EQ(manager.GetActiveTool(), TOOL);
  EXPECT_EQ(manager.activeTool, tool);
}

TEST_F(LifeTest, closes_an_open_disc_only_where_no_tool_is_active) {
  Start();
  manager.AddTool(8, new FakeTool("other", journal));
  disc.Open(DiscType::TwoD);
  manager.SetActiveTool(8);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::TwoD);
  manager.SetActiveTool(0);
  Forget();
  manager.SetActiveTool(TOOL);
  EXPECT_EQ(journal.lines.front(), "disc.SetActiveDisc(8)");
}

TEST_F(LifeTest, removes_all_tools) {
  Start();
  manager.AddTool(1, new FakeTool("one", journal));
  Forget();
  manager.RemoveAllTools();
  EXPECT_EQ(journal.lines.front(), "tool.Deactivate");
  EXPECT_EQ((std::set<std::string>{journal.lines.begin() + 1, journal.lines.end()}),
            (std::set<std::string>{"one.~", "tool.~"}));
  EXPECT_EQ(manager.GetActiveTool(), 0);
  EXPECT_EQ(manager.activeTool, nullptr);
  manager.RemoveAllTools();
}

// ---- the widgets that are still to come ----

TEST(Collaborators, are_hidden_and_take_nothing) {
  HelmDisc disc;
  Storyboard panel;
  Toolbar toolbar;
  NavigationBar bar;
  Cam3DController controller;
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_FALSE(disc.GetEnabled());
  EXPECT_FALSE(disc.IsOverWelcome());
  EXPECT_FALSE(disc.WantCursorWrapping());
  EXPECT_EQ(disc.GetCurrentCursor(), CURSOR_ARROW);
  EXPECT_NE(disc.GetHistory(), nullptr);
  EXPECT_FALSE(panel.IsVisible());
  EXPECT_FALSE(panel.IsPlayingBack());
  EXPECT_FALSE(panel.IsRecordingWalk());
  EXPECT_FALSE(panel.DraggingStoryBoardItem());
  EXPECT_TRUE(panel.GetTooltip().empty());
  EXPECT_FALSE(toolbar.IsVisible());
  EXPECT_EQ(toolbar.GetPosition(), Toolbar::POSITION_RIGHT);
  EXPECT_EQ(bar.GetToolbar(), nullptr);
  EXPECT_FALSE(bar.IsMouseInRegion());
  EXPECT_FALSE(bar.IsMouseDownOnItem());
  EXPECT_TRUE(bar.GetTooltip().empty());
  EXPECT_TRUE(controller.GetEnabled());
  EXPECT_FALSE(controller.Create());
  for (HelmDisc* const each : {&disc}) {
    EXPECT_FALSE(each->OnMouseMove(1, 2) || each->OnLeftMouseDown(1, 2) || each->OnLeftMouseUp(1, 2) ||
                 each->OnKeyDown(KEY_UP) || each->OnKeyUp(KEY_UP) || each->OpenMenu());
  }
  EXPECT_FALSE(panel.OnMouseMove(1, 2) || panel.OnLeftMouseDown(1, 2) || panel.OnLeftMouseUp(1, 2) ||
               panel.OnRightMouseDown(1, 2) || panel.OnKeyDown(KEY_UP) || panel.OnKeyUp(KEY_UP) ||
               panel.OpenMenu());
  EXPECT_FALSE(toolbar.OnMouseMove(1, 2) || toolbar.OnLeftMouseDown(1, 2) || toolbar.OnLeftMouseUp(1, 2) ||
               toolbar.OnRightMouseDown(1, 2) || toolbar.OnRightMouseUp(1, 2));
  EXPECT_FALSE(bar.OnMouseMove(1, 2) || bar.OnLeftMouseDown(1, 2) || bar.OnLeftMouseUp(1, 2) ||
               bar.OnRightMouseDown(1, 2) || bar.OnRightMouseUp(1, 2) || bar.SetItemSelected(1, true));
}

TEST(Collaborators, refuse_null_observers) {
  HelmDisc disc;
  Storyboard panel;
  EXPECT_FALSE(disc.AddObserver(nullptr));
  EXPECT_FALSE(panel.AddObserver(nullptr));
}

TEST(Collaborators, work_together_as_they_are) {
  ManualPlatform platform;
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  RecordingRenderer renderer;
  HelmDisc disc;
  Storyboard panel;
  Toolbar toolbar;
  NavigationBar bar;
  Cam3DController controller;
  Orientor cube;
  {
    ViewManager manager;
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetStoryboard(&panel);
    manager.SetNavigationBar(&bar);
    manager.SetCam3DController(&controller);
    manager.SetOrientor(&cube);
    manager.AddToolbar(&toolbar);
    manager.AddTool(1, new OrbitTool);
    EXPECT_TRUE(manager.Create());
    manager.SetViewportSize(800, 600);
    EXPECT_TRUE(manager.SetActiveTool(1));
    EXPECT_TRUE(manager.OnLeftMouseDown(400, 300));
    EXPECT_TRUE(manager.OnMouseMove(450, 320));
    hub.PerformOperations();
    manager.OnDraw();
    EXPECT_TRUE(manager.OnLeftMouseUp(450, 320));
    EXPECT_GT((hub.view.eye - Vector3(0, 0, 10)).Length(), 0.1);
    EXPECT_NEAR((hub.view.eye - hub.view.centre).Length(), 10.0, 1e-9);
    EXPECT_TRUE(manager.Destroy());
  }
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

}  // namespace
