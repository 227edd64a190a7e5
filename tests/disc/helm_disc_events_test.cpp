// The mouse and the keys on a disc.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "disc/disc_scene.h"
#include "support/random.h"

using namespace Korvane;

namespace {

const Vector3 PAN(0, 1, 0);  // colours of the full navigation disc
const Vector3 ORBIT(0, 0, 1);
const Vector3 WALK(0.5, 0, 0);
const Vector3 CENTER(0.5, 0.5, 0.5);

class HelmDiscEventsTest : public ::testing::Test, public DiscScene {
 protected:
  /// What the mouse is on gets a listener that the test sees, in every copy.
  JournalListener* Listen(int index) {
    TrackMenu& menu = *disc.GetActiveTrackMenu();
    auto* const listener = new JournalListener("wedge", journal, &menu);
    delete std::exchange(menu.GetRegion(index)->listener, listener);
    menu.GetActiveRegion().listener = listener;
    return listener;
  }
};

// ---- what makes the wedges of one kind different ----

struct ZoomRow {
  DiscType type;
  Vector3 colour;
  bool limited;
  bool rectangle;
};
constexpr ZoomRow ZOOM_ROWS[] = {{DiscType::ViewObject, {0, 1, 0}, true, false},
                                 {DiscType::FullNavigation, {1, 1, 0}, false, true},
                                 {DiscType::TwoD, {1, 0, 0}, false, true}};

TEST(HelmDiscWedges, each_that_zooms_is_limited_as_its_disc_wants) {
  for (const ZoomRow& row : ZOOM_ROWS) {
    DiscScene scene;
    scene.OpenOn(row.type, row.colour);
    ApplicationParameters& parameters = scene.hub.GetApplicationParameters();
    parameters.zoom_back_distance = 0.0;
    parameters.scene_bound_radius = 100.0;
    scene.disc.OnLeftMouseDown(400, 300);
    EXPECT_TRUE(scene.hub.IsOperationActive(OPERATION_ZOOM));
    EXPECT_EQ(parameters.zoom_back_distance > 0.0, row.limited) << static_cast<int>(row.type);
  }
}

TEST(HelmDiscWedges, each_that_zooms_draws_a_rectangle_with_shift_where_its_disc_has_one) {
  for (const ZoomRow& row : ZOOM_ROWS) {
    DiscScene scene;
    scene.disc.GetParameters().rectZoomOnShift = true;
    scene.OpenOn(row.type, row.colour);
    scene.disc.OnKeyDown(KEY_SHIFT);
    scene.disc.OnLeftMouseDown(400, 300);
    EXPECT_EQ(scene.hub.IsOperationActive(OPERATION_ZOOM), !row.rectangle) << static_cast<int>(row.type);
  }
}

TEST(HelmDiscWedges, each_gives_the_pivot_its_word) {
  struct {
    DiscType type;
    Vector3 colour;
    int label;
  } const rows[] = {{DiscType::ViewObject, {0, 0, 1}, 39},
                    {DiscType::ViewObject, {1, 0, 0}, 41},
                    {DiscType::ViewObject, {0, 1, 0}, 39},
                    {DiscType::FullNavigation, {0, 0, 1}, 41},
                    {DiscType::FullNavigation, {0.5, 0.5, 0.5}, 41},
                    {DiscType::FullNavigation, {1, 1, 0}, 41},
                    {DiscType::TwoD, {1, 0, 0}, 39}};
  for (const auto& row : rows) {
    DiscScene scene;
    scene.OpenOn(row.type, row.colour);
    scene.disc.OnLeftMouseDown(400, 300);
    scene.disc.GetPivotBall()->SetVisible(true);
    scene.disc.DrawPivotBall();
    EXPECT_EQ(scene.renderer.lastPivotLabel, L"text " + std::to_wstring(row.label));
  }
}

// ---- the life of a click ----

TEST_F(HelmDiscEventsTest, a_press_and_a_release_are_a_click) {
  OpenOn(DiscType::FullNavigation, PAN);
  EXPECT_TRUE(disc.OnLeftMouseDown(400, 300));
  EXPECT_TRUE(disc.GetActiveTrackMenu()->IsLeftButtonDown());
  EXPECT_EQ(journal.Take(), Lines());
  EXPECT_TRUE(disc.OnLeftMouseUp(400, 300));
  EXPECT_FALSE(disc.GetActiveTrackMenu()->IsLeftButtonDown());
  EXPECT_EQ(journal.Take(), Lines{"OnClicked(6)"});
  EXPECT_FALSE(disc.OnLeftMouseUp(400, 300));
  EXPECT_EQ(journal.Take(), Lines());
}

TEST_F(HelmDiscEventsTest, a_press_that_moves_is_a_drag_told_once_at_either_end) {
  OpenOn(DiscType::FullNavigation, PAN);
  EXPECT_FALSE(disc.OnMouseMove(401, 300));
  disc.OnLeftMouseDown(400, 300);
  EXPECT_TRUE(disc.OnMouseMove(401, 300));
  EXPECT_TRUE(disc.IsDragActive());
  EXPECT_TRUE(disc.OnMouseMove(402, 300));
  EXPECT_EQ(journal.Take(), Lines{"OnDragBegin(6)"});
  bool within = false;
  observer.onHear = [&](const std::string&) { within = disc.IsDragActive(); };
  EXPECT_TRUE(disc.OnLeftMouseUp(403, 300));
  EXPECT_TRUE(within);
  EXPECT_EQ(journal.Take(), Lines{"OnDragEnd"});
  EXPECT_FALSE(disc.IsDragActive());
  EXPECT_FALSE(disc.OnMouseMove(404, 300));
}

TEST_F(HelmDiscEventsTest, the_centre_is_zone_0_and_counts) {
  OpenOn(DiscType::FullNavigation, CENTER);
  disc.OnLeftMouseDown(400, 300);
  disc.OnMouseMove(401, 300);
  disc.OnLeftMouseUp(401, 300);
  EXPECT_EQ(journal.Take(), (Lines{"OnDragBegin(0)", "OnDragEnd"}));
}

// A disc that is put away under the button takes the press with it: no click comes of it.
TEST_F(HelmDiscEventsTest, a_disc_that_closes_in_a_press_makes_no_click_of_it) {
  const Vector3 menuWedge(0.5, 0, 0.5);
  const Vector3 closeWedge(0, 1, 1);
  OpenOn(DiscType::FullNavigation, menuWedge);
  disc.OnLeftMouseDown(400, 300);
  disc.SetActiveDisc(DiscType::None);
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 0);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);

  OpenOn(DiscType::FullNavigation, closeWedge);
  disc.OnLeftMouseDown(400, 300);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::TwoD);

  disc.SetActiveDisc(DiscType::FullNavigation);
  EXPECT_TRUE(disc.GetActiveTrackMenu()->GetVisible());  // the press is forgotten
}

TEST_F(HelmDiscEventsTest, a_drag_ends_with_the_disc_that_closes) {
  OpenOn(DiscType::FullNavigation, PAN);
  disc.OnLeftMouseDown(400, 300);
  disc.OnMouseMove(420, 310);
  ASSERT_TRUE(hub.IsOperationActive(OPERATION_PAN));
  disc.SetActiveDisc(DiscType::None);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
}

// Limits of a zoom are held in the order of the row; an object is turned upright, a building is not.
TEST_F(HelmDiscEventsTest, each_listener_gets_the_arguments_of_its_row) {
  OpenOn(DiscType::ViewObject, ORBIT);
  disc.SetActiveDisc(DiscType::None);
  renderer.ApplyTextureUsage();
  Forget();
  disc.SetActiveDisc(DiscType::ViewObject);
  const auto& calls = renderer.GetCalls();
  const auto maxIn = std::find(calls.begin(), calls.end(), "LoadStringResource(29)");
  const auto maxOut = std::find(calls.begin(), calls.end(), "LoadStringResource(30)");
  ASSERT_NE(maxIn, calls.end());
  ASSERT_NE(maxOut, calls.end());
  EXPECT_LT(maxIn - calls.begin(), maxOut - calls.begin());

  const Vector3 objectOrbit(1, 0, 0);
  for (const auto& [type, colour, upright] :
       {std::tuple(DiscType::ViewObject, objectOrbit, true), {DiscType::FullNavigation, ORBIT, false}}) {
    OpenOn(type, colour);
    hub.GetApplicationParameters().preserve_orbit_up_direction = !upright;
    disc.GetParameters().keepSceneUpright = false;
    disc.OnLeftMouseDown(400, 300);
    ASSERT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
    EXPECT_EQ(hub.GetApplicationParameters().preserve_orbit_up_direction, upright);
    disc.OnLeftMouseUp(400, 300);
  }
}

TEST_F(HelmDiscEventsTest, a_drag_is_told_also_where_the_region_has_no_listener) {
  OpenOn(DiscType::FullNavigation, PAN);
  delete std::exchange(disc.GetActiveTrackMenu()->GetRegion(8)->listener, nullptr);
  disc.GetActiveTrackMenu()->GetActiveRegion().listener = nullptr;
  EXPECT_TRUE(disc.OnLeftMouseDown(400, 300));
  EXPECT_TRUE(disc.OnMouseMove(401, 300));
  EXPECT_EQ(journal.Take(), Lines{"OnDragBegin(6)"});
}

TEST_F(HelmDiscEventsTest, a_region_without_zone_tells_nothing) {
  OpenOn(DiscType::FullNavigation, PAN);
  disc.GetActiveTrackMenu()->GetActiveRegion().zone = -1;
  EXPECT_TRUE(disc.OnLeftMouseDown(400, 300));
  EXPECT_FALSE(disc.OnMouseMove(401, 300));
  EXPECT_TRUE(disc.OnLeftMouseUp(401, 300));
  EXPECT_EQ(journal.Take(), Lines());
}

TEST_F(HelmDiscEventsTest, a_press_is_not_taken_without_an_enabled_disc) {
  Start();
  EXPECT_FALSE(disc.OnLeftMouseDown(400, 300));
  EXPECT_FALSE(disc.OnLeftMouseUp(400, 300));
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetEnabled(false);
  Forget();
  EXPECT_FALSE(disc.OnLeftMouseDown(400, 300));
  EXPECT_FALSE(disc.GetActiveTrackMenu()->IsLeftButtonDown());
  EXPECT_FALSE(disc.OnLeftMouseUp(400, 300));
  EXPECT_EQ(journal.Take(), Lines());
}

TEST_F(HelmDiscEventsTest, passes_the_events_to_the_region) {
  OpenOn(DiscType::FullNavigation, PAN);
  Listen(8);
  disc.OnLeftMouseDown(400, 300);
  disc.OnMouseMove(401, 300);
  disc.OnKeyDown(KEY_RUN);
  disc.OnKeyUp(KEY_RUN);
  disc.OnLeftMouseUp(402, 300);
  EXPECT_EQ(journal.Take(),
            (Lines{"wedge.OnLeftMouseDown(400, 300)", "OnDragBegin(6)", "wedge.OnMouseMove(401, 300)",
                   "OnKeyDown(11)", "wedge.OnKeyDown(11)", "OnKeyUp(11)", "wedge.OnKeyUp(11)", "OnDragEnd",
                   "wedge.OnLeftMouseUp(402, 300)"}));
}

TEST_F(HelmDiscEventsTest, a_closed_disc_follows_the_cursor_and_opens_there) {
  Start();
  disc.OnMouseMove(123, 45);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::FullNavigation)->GetMouseCoords(), Vector2(123, 45));
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetMouseCoords(), Vector2(0, 0));
  EXPECT_EQ(disc.GetTrackMenu(DiscType::FullNavigation)->GetRegionMap()->GetPosition(), Vector2(123, 45));
  disc.SetDefaultDiscType(DiscType::TwoD);
  disc.OnMouseMove(200, 100);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetMouseCoords(), Vector2(200, 100));
  EXPECT_EQ(disc.GetTrackMenu(DiscType::FullNavigation)->GetMouseCoords(), Vector2(123, 45));
}

TEST_F(HelmDiscEventsTest, brings_the_pivot_back_into_view_after_a_release) {
  OpenOn(DiscType::FullNavigation, Vector3(0, 0.5, 0));  // up and down, which leaves the pivot alone
  hub.view.pivot = Vector3(100, 0, 0);
  hub.PerformOperations();
  disc.OnLeftMouseDown(400, 300);
  EXPECT_EQ(hub.view.pivot, Vector3(100, 0, 0));
  disc.OnLeftMouseUp(400, 300);
  EXPECT_NEAR(hub.view.pivot.x, 0.0, 1e-9);
  disc.SetActiveDisc(DiscType::None);
  hub.view.pivot = Vector3(100, 0, 0);
  disc.OnLeftMouseUp(400, 300);
  EXPECT_EQ(hub.view.pivot, Vector3(100, 0, 0));
}

TEST_F(HelmDiscEventsTest, a_pending_click_of_the_welcome_screen_swallows_its_release) {
  OpenOn(DiscType::FullNavigation, PAN);
  Listen(8);
  disc.OnLeftMouseDown(400, 300);
  Forget();
  disc.open.welcome.clickPending = true;
  EXPECT_TRUE(disc.OnLeftMouseUp(400, 300));
  EXPECT_EQ(journal.Take(), Lines());
  EXPECT_FALSE(disc.open.welcome.clickPending);
}

TEST_F(HelmDiscEventsTest, passes_a_visible_welcome_screen_its_events) {
  disc.GetParameters().suppressWelcome = false;
  Start();
  TrackMenu& welcome = *disc.GetWelcomeTrackMenu();
  welcome.SetVisible(true);
  disc.OnMouseMove(11, 12);
  EXPECT_EQ(welcome.GetMouseCoords(), Vector2(11, 12));
  EXPECT_FALSE(disc.OnLeftMouseDown(13, 14));
  EXPECT_TRUE(welcome.IsLeftButtonDown());
  disc.OnLeftMouseUp(15, 16);
  EXPECT_FALSE(welcome.IsLeftButtonDown());
  welcome.SetVisible(false);
  disc.OnMouseMove(1, 2);
  EXPECT_EQ(welcome.GetMouseCoords(), Vector2(15, 16));
}

// ---- wrapping and cursors ----

TEST_F(HelmDiscEventsTest, asks_for_wrapping_where_the_region_does) {
  OpenOn(DiscType::FullNavigation, PAN);
  EXPECT_TRUE(disc.WantCursorWrapping());
  OpenOn(DiscType::FullNavigation, CENTER);
  EXPECT_FALSE(disc.WantCursorWrapping());
  disc.SetActiveDisc(DiscType::None);
  EXPECT_FALSE(disc.WantCursorWrapping());
}

// ---- modifiers ----

TEST_F(HelmDiscEventsTest, a_modifier_puts_another_region_in_the_place_of_one) {
  struct Row {
    DiscType type;
    Vector3 colour;
    KeyID key;
    int off;
    int on;
  };
  const Row rows[] = {{DiscType::FullNavigation, ORBIT, KEY_CONTROL, 3, 4},
                      {DiscType::FullNavigation, WALK, KEY_SHIFT, 10, 11},
                      {DiscType::FullNavigation, ORBIT, KEY_SHIFT, 3, 5},
                      {DiscType::MiniViewObject, ORBIT, KEY_SHIFT, 2, 4},
                      {DiscType::MiniTourBuilding, WALK, KEY_SHIFT, 1, 2}};
  disc.GetParameters().keepSceneUpright = false;
  for (const Row& row : rows) {
    OpenOn(row.type, row.colour);
    EXPECT_EQ(GetActiveIndex(), row.off);
    disc.OnKeyDown(row.key);
    EXPECT_EQ(GetActiveIndex(), row.on);
    disc.OnKeyUp(row.key);
    EXPECT_EQ(GetActiveIndex(), row.off);
  }
}

TEST_F(HelmDiscEventsTest, keys_are_told_only_while_an_open_disc_is_visible) {
  Start();
  EXPECT_FALSE(disc.OnKeyDown(KEY_SHIFT));
  EXPECT_FALSE(disc.OnKeyUp(KEY_SHIFT));
  EXPECT_EQ(journal.Take(), Lines());
  disc.SetActiveDisc(DiscType::TwoD);
  Forget();
  EXPECT_FALSE(disc.OnKeyDown(KEY_SHIFT));
  EXPECT_TRUE(disc.GetActiveTrackMenu()->IsModifierADown());
  EXPECT_FALSE(disc.OnKeyUp(KEY_UP));
  EXPECT_EQ(journal.Take(), (Lines{"OnKeyDown(0)", "OnKeyUp(3)"}));
  disc.SetVisible(false);
  disc.OnKeyDown(KEY_CONTROL);
  EXPECT_TRUE(disc.GetActiveTrackMenu()->IsModifierBDown());
  EXPECT_EQ(journal.Take(), Lines());
}

TEST_F(HelmDiscEventsTest, keys_are_used_up_while_a_press_lasts) {
  OpenOn(DiscType::FullNavigation, PAN);
  disc.OnLeftMouseDown(400, 300);
  EXPECT_TRUE(disc.OnKeyDown(KEY_UP));
  EXPECT_TRUE(disc.OnKeyUp(KEY_UP));
  disc.OnLeftMouseUp(400, 300);
  EXPECT_FALSE(disc.OnKeyDown(KEY_UP));
}

// Shift was down at the press and up at the release: the release is delivered now, once more.
TEST_F(HelmDiscEventsTest, a_modifier_released_in_mid_drag_is_delivered_at_the_release) {
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL}) {
    OpenOn(DiscType::FullNavigation, key == KEY_SHIFT ? WALK : ORBIT);
    disc.OnKeyDown(key);
    disc.OnLeftMouseDown(400, 300);
    disc.OnMouseMove(401, 300);
    disc.GetActiveTrackMenu()->OnKeyUp(key);  // the menu alone has heard of it
    Forget();
    disc.OnLeftMouseUp(401, 300);
    EXPECT_EQ(journal.Take(), (Lines{"OnDragEnd", key == KEY_SHIFT ? "OnKeyUp(0)" : "OnKeyUp(1)"}));
    EXPECT_EQ(GetActiveIndex(), key == KEY_SHIFT ? 10 : 3);
    disc.OnLeftMouseDown(401, 300);
    Forget();
    disc.OnLeftMouseUp(401, 300);
    EXPECT_EQ(journal.lines.size(), 1U);  // the click alone
    disc.SetActiveDisc(DiscType::None);
  }
}

TEST_F(HelmDiscEventsTest, a_modifier_that_stays_down_is_not_released) {
  OpenOn(DiscType::FullNavigation, WALK);
  disc.OnKeyDown(KEY_SHIFT);
  disc.OnLeftMouseDown(400, 300);
  Forget();
  disc.OnLeftMouseUp(400, 300);
  EXPECT_EQ(journal.Take(), Lines{"OnClicked(8)"});
  EXPECT_EQ(GetActiveIndex(), 11);
}

// ---- the hot key ----

TEST_F(HelmDiscEventsTest, the_hot_key_opens_and_closes_the_last_disc_when_it_is_let_go) {
  Start();
  EXPECT_TRUE(disc.OnKeyDown(KEY_DISC));
  EXPECT_EQ(journal.Take(), Lines());
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  EXPECT_TRUE(disc.open.timers.hotKey.IsRunning());
  platform.Advance(249);
  EXPECT_TRUE(disc.open.timers.hotKey.IsRunning());
  platform.Advance(1);
  EXPECT_FALSE(disc.open.timers.hotKey.IsRunning());
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  EXPECT_TRUE(disc.OnKeyDown(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  disc.SetActiveDisc(DiscType::MiniViewObject);
  disc.SetActiveDisc(DiscType::None);
  disc.OnKeyUp(KEY_DISC);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::MiniViewObject);
  disc.OnKeyUp(KEY_DISC);
  EXPECT_FALSE(disc.open.timers.hotKey.IsRunning());
  EXPECT_EQ(journal.Count("OnKeyUp(2)"), 0);
}

TEST_F(HelmDiscEventsTest, a_press_on_the_disc_keeps_it_open_until_the_next_key_after_the_button) {
  OpenOn(DiscType::FullNavigation, PAN);
  disc.OnKeyDown(KEY_DISC);
  disc.OnLeftMouseDown(400, 300);
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));  // within the press
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  disc.OnKeyDown(KEY_UP);  // the button is still down
  disc.OnLeftMouseUp(400, 300);
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  disc.OnKeyDown(KEY_DISC);  // is no such key
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  disc.OnKeyDown(KEY_UP);
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
}

// As another key would, and without a word to anyone.
TEST_F(HelmDiscEventsTest, the_hot_key_closes_a_disc_that_was_pressed_when_it_is_let) {
  OpenOn(DiscType::FullNavigation, PAN);
  disc.OnLeftMouseDown(400, 300);
  disc.LetHotKeyClose();  // within the press
  EXPECT_TRUE(disc.open.keys.hotKeyHeld);
  disc.OnLeftMouseUp(400, 300);
  Forget();
  disc.LetHotKeyClose();
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  disc.LetHotKeyClose();  // none is open
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
}

TEST_F(HelmDiscEventsTest, the_hot_key_closes_nothing_while_the_button_is_down) {
  OpenOn(DiscType::FullNavigation, PAN);
  disc.OnLeftMouseDown(400, 300);
  disc.open.keys.hotKeyHeld = false;
  EXPECT_TRUE(disc.OnKeyUp(KEY_DISC));
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
}

// ---- hosts that act within a call ----

TEST_F(HelmDiscEventsTest, a_listener_may_close_destroy_or_delete_the_disc_in_any_call) {
  using Act = void (*)(std::unique_ptr<OpenHelmDisc>&);
  const Act acts[] = {
      [](std::unique_ptr<OpenHelmDisc>& each) { each->SetActiveDisc(DiscType::None); },
      [](std::unique_ptr<OpenHelmDisc>& each) { each->SetActiveDisc(DiscType::MiniTourBuilding); },
      [](std::unique_ptr<OpenHelmDisc>& each) { each->Destroy(); },
      [](std::unique_ptr<OpenHelmDisc>& each) { each.reset(); },
      [](std::unique_ptr<OpenHelmDisc>& each) { each->SetRenderer(nullptr); },
      [](std::unique_ptr<OpenHelmDisc>& each) { each->SetKorvane(nullptr); },
      [](std::unique_ptr<OpenHelmDisc>& each) { each->Create(); },
  };
  for (const Act act : acts) {
    bool happened = true;
    for (int which = 1; happened; ++which) {
      auto passing = std::make_unique<OpenHelmDisc>();
      passing->SetKorvane(&hub);
      passing->SetRenderer(&renderer);
      passing->Create();
      passing->SetViewportSize(800, 600);
      int calls = 0;
      TrackMenu& menu = *passing->GetTrackMenu(DiscType::TwoD);
      for (int i = 0; menu.GetRegion(i) != nullptr; ++i) {
        auto* const listener = new JournalListener("wedge", journal, &menu);
        listener->onHear = [&](const std::string&) {
          if (++calls == which && passing != nullptr) act(passing);
        };
        delete std::exchange(menu.GetRegion(i)->listener, listener);
        menu.GetActiveRegion().listener = listener;
      }
      const std::vector<std::function<void()>> events = {
          [&] { passing->SetActiveDisc(DiscType::TwoD); },
          [&] { passing->OnMouseMove(400, 300); },
          [&] { passing->OnLeftMouseDown(400, 300); },
          [&] { passing->OnKeyDown(KEY_SHIFT); },
          [&] { passing->OnMouseMove(410, 300); },
          [&] { passing->Draw(); },
          [&] { passing->OnKeyUp(KEY_SHIFT); },
          [&] { passing->OnLeftMouseUp(410, 300); },
          [&] { passing->OnKeyUp(KEY_DISC); },
          [&] { passing->SetEnabled(false); },
          [&] { passing->SetActiveDisc(DiscType::None); },
      };
      for (const auto& event : events) {
        if (passing != nullptr) event();
      }
      happened = calls >= which;
      passing.reset();
      ASSERT_LT(which, 1000);
    }
  }
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), renderer.CountCalls("EndRender"));
}

TEST_F(HelmDiscEventsTest, an_observer_may_act_in_any_call) {
  const std::vector<std::function<void()>> acts = {
      [this] { disc.SetActiveDisc(DiscType::None); },
      [this] { disc.SetActiveDisc(DiscType::ViewObject); },
      [this] { disc.Destroy(); },
      [this] { disc.OnLeftMouseUp(400, 300); },
      [this] { disc.OnLeftMouseDown(400, 300); },
      [this] { disc.OnMouseMove(10, 10); },
      [this] { disc.RemoveObserver(&observer); },
      [this] { disc.SetRenderer(nullptr); },
      [this] { disc.SetKorvane(nullptr); },
      [this] { disc.OnKeyUp(KEY_DISC); },
  };
  for (std::size_t act = 0; act < acts.size(); ++act) {
    for (int which = 1; which < 12; ++which) {
      disc.SetKorvane(&hub);
      disc.SetRenderer(&renderer);
      disc.AddObserver(&observer);
      observer.onHear = nullptr;
      OpenOn(DiscType::FullNavigation, PAN);
      int calls = 0;
      observer.onHear = [&](const std::string&) {
        if (++calls == which) acts[act]();
      };
      disc.SetActiveDisc(DiscType::TwoD);
      disc.OnMouseMove(400, 300);
      disc.OnLeftMouseDown(400, 300);
      disc.OnMouseMove(401, 300);
      disc.OnKeyDown(KEY_SHIFT);
      disc.OnKeyUp(KEY_SHIFT);
      disc.OnLeftMouseUp(401, 300);
      disc.OnLeftMouseDown(400, 300);
      disc.OnLeftMouseUp(401, 300);
      disc.Draw();
      disc.SetActiveDisc(DiscType::None);
      EXPECT_GT(calls, 0);
      EXPECT_FALSE(disc.IsDragActive());
    }
  }
  observer.onHear = nullptr;
}

// ---- a storm ----

TEST_F(HelmDiscEventsTest, stands_a_storm_of_events) {
  Random random;
  Start();
  for (int i = 0; i < 30000; ++i) {
    const int x = random.Integer(-900, 1700);
    const int y = random.Integer(-700, 1300);
    const auto key = static_cast<KeyID>(random.Integer(0, 12));
    switch (random.Integer(0, 17)) {
      case 0:
        disc.SetActiveDisc(static_cast<DiscType>(random.Integer(-1, 9)));
        break;
      case 1:
        disc.OnLeftMouseDown(x, y);
        break;
      case 2:
        disc.OnLeftMouseUp(x, y);
        break;
      case 3:
        disc.OnKeyDown(key);
        break;
      case 4:
        disc.OnKeyUp(key);
        break;
      case 5:
        disc.SetEnabled(random.Coin());
        break;
      case 6:
        disc.SetVisible(random.Coin());
        break;
      case 7:
        disc.SetViewportSize(random.Integer(0, 1) * 800, random.Integer(0, 2) * 300);
        break;
      case 8:
        platform.Advance(static_cast<unsigned>(random.Integer(0, 2000)));
        break;
      case 9:
        disc.Draw();
        break;
      case 10:
        disc.OpenMenu();
        break;
      case 11:
        random.Coin() ? disc.IncrementWalkSpeed() : disc.DecrementWalkSpeed();
        break;
      case 12:
        disc.SetLargeDiscSize(random.Integer(0, 300));
        break;
      case 13:
        if (random.Integer(0, 20) == 0) disc.Destroy();
        break;
      case 14:
        if (random.Integer(0, 5) == 0) disc.Create();
        break;
      case 15:
        renderer.FailOnce(random.Coin()   ? "BeginRender"
                          : random.Coin() ? "CreateTooltip"
                                          : "CreateImageData");
        break;
      case 16:
        disc.SetRenderer(random.Integer(0, 9) == 0 ? nullptr : &renderer);
        break;
      default:
        disc.OnMouseMove(x, y);
        break;
    }
    TrackMenu* const menu = disc.GetActiveTrackMenu();
    if (menu != nullptr && menu->GetRegionMap() != nullptr) {
      ASSERT_TRUE(menu->GetRegionMap()->GetPosition().IsFinite());
    }
    if (i % 100 == 0) Forget();
  }
  EXPECT_GE(disc.GetParameters().walkSpeedFactor, 0.1);
  EXPECT_LE(disc.GetParameters().walkSpeedFactor, 50.0);
  disc.SetRenderer(&renderer);
  disc.Destroy();
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

}  // namespace
