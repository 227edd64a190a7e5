// The wedges that walk, that look and move, and that bring a point to the middle.
#include "disc/center_region_listener.h"
#include "disc/look_move_region_listener.h"
#include "disc/walk_region_listener.h"
#include "disc/wedge_scene.h"

using namespace Korvane;

namespace {

struct WalkWedge : WedgeScene<WalkRegionListener> {
  WalkWedge() { Make(); }
  /// The text at the bottom of the view; 0 for none.
  int GetMessage() {
    for (const auto& each : Draw()) {
      if (each.id < 0) return -each.id;
    }
    return 0;
  }
  double GetOpacityOf(int text) const { return renderer.GetText(text)->GetOpacity(); }
};
struct LookMoveWedge : WedgeScene<LookMoveRegionListener> {
  LookMoveWedge() { Make(true); }
};
struct CenterWedge : WedgeScene<CenterRegionListener> {
  CenterWedge() { Make(static_cast<StringID>(42)); }
};

// ---- walk ----

TEST_F(WalkWedge, a_press_walks_from_the_start_with_one_record) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_TRUE(IsOperating(OPERATION_FLY));
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 1);
  Move(512, 400);
  RunFor(200);
  Release(512, 400);
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(IsOperating(OPERATION_FLY));
  EXPECT_EQ(GetElementCount(), 2);
}

TEST_F(WalkWedge, a_long_walk_leaves_an_element_each_interval) {
  Parameters().walkRewindInterval = 1.0;
  Press();
  Move(512, 600);
  RunFor(3200);
  const int count = GetElementCount();
  EXPECT_GE(count, 3);
  EXPECT_LE(count, 5);
}

TEST_F(WalkWedge, shift_puts_the_pointer_back_at_the_next_press) {
  menu->OnKeyDown(KEY_SHIFT);
  Press();
  const auto& calls = renderer.GetCalls();
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 2);
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "SetCursorPosition(500, 300)"), 1);
  Release(500, 300);
  Forget();
  Press();
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 1);
}

// The move that enters a wedge goes to the one that it leaves.
TEST_F(WalkWedge, shift_remembers_where_the_mouse_is_though_the_wedge_has_not_heard_of_it) {
  menu->SetLocation(512, 310);
  menu->GetActiveRegion().listener = nullptr;  // as outside of the wedge
  menu->OnMouseMove(512, 310);
  ASSERT_EQ(menu->GetActiveRegion().listener, wedge);
  menu->OnKeyDown(KEY_SHIFT);
  Press(512, 310);
  const auto& calls = renderer.GetCalls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "SetCursorPosition(512, 310)"), 1);
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "SetCursorPosition(0, 0)"), 0);
}

TEST_F(WalkWedge, the_run_key_raises_the_speed_and_puts_it_back) {
  menu->OnKeyDown(KEY_RUN);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);  // not outside a walk
  Press();
  menu->OnKeyDown(KEY_RUN);
  EXPECT_NEAR(Parameters().walkSpeedFactor, 1.3, 1e-12);  // ceil(12.4) tenths
  menu->OnKeyDown(KEY_RUN);
  EXPECT_NEAR(Parameters().walkSpeedFactor, 1.7, 1e-12);  // ceil(16.15)
  EXPECT_NEAR(Settings().GetFlyMoveMultiplier(), 1.7, 1e-12);
  menu->OnKeyUp(KEY_RUN);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
  EXPECT_NEAR(Settings().GetFlyMoveMultiplier(), 1.7, 1e-12);
  platform.Advance(250);
  EXPECT_NEAR(Settings().GetFlyMoveMultiplier(), 1.35, 1e-9);
  platform.Advance(251);
  EXPECT_EQ(Settings().GetFlyMoveMultiplier(), 1.0);
}

TEST_F(WalkWedge, a_button_let_go_before_the_run_key_restores_the_speed) {
  Press();
  menu->OnKeyDown(KEY_RUN);
  Release(500, 300);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
  menu->OnKeyUp(KEY_RUN);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
  PutAway();
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
}

TEST_F(WalkWedge, a_menu_that_is_put_away_restores_the_speed) {
  Press();
  menu->OnKeyDown(KEY_RUN);
  PutAway();
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
  EXPECT_FALSE(IsOperating(OPERATION_FLY));
}

TEST_F(WalkWedge, a_run_key_that_was_down_before_the_walk_changes_no_speed) {
  Press();
  menu->OnKeyUp(KEY_RUN);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
}

TEST_F(WalkWedge, the_keys_of_speed_take_steps_when_they_are_let_go) {
  menu->OnKeyUp(KEY_FASTER);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
  Press();
  menu->OnKeyDown(KEY_FASTER);
  menu->OnKeyDown(KEY_SLOWER);
  EXPECT_EQ(Parameters().walkSpeedFactor, 1.0);
  menu->OnKeyUp(KEY_FASTER);
  EXPECT_NEAR(Parameters().walkSpeedFactor, 1.3, 1e-12);
  menu->OnKeyUp(KEY_SLOWER);
  EXPECT_NEAR(Parameters().walkSpeedFactor, 1.0, 1e-12);  // floor(10.5) tenths
}

// Standing, the message of the walk fades in over 0.8 seconds. Setting out, it fades out, and then that of
// the keys fades in, once.
TEST_F(WalkWedge, the_messages_fade_by_the_two_flags) {
  Press();
  EXPECT_EQ(GetMessage(), 34);
  EXPECT_EQ(GetOpacityOf(34), 0.0);
  platform.Advance(400);
  EXPECT_NEAR(GetOpacityOf(34), 0.5, 1e-9);
  platform.Advance(401);
  EXPECT_EQ(GetOpacityOf(34), 1.0);
  EXPECT_EQ(GetMessage(), 34);

  Move(512, 600);
  EXPECT_EQ(GetMessage(), 34);
  EXPECT_EQ(GetOpacityOf(34), 1.0);
  platform.Advance(400);
  EXPECT_NEAR(GetOpacityOf(34), 0.5, 1e-9);
  EXPECT_EQ(GetMessage(), 34);
  platform.Advance(401);
  GetMessage();  // the fade ends where it is drawn
  EXPECT_EQ(GetMessage(), 38);
  platform.Advance(400);
  EXPECT_NEAR(GetOpacityOf(38), 0.5, 1e-9);
  platform.Advance(401);

  Move(512, 154);  // back at the start
  EXPECT_EQ(GetMessage(), 38);
  Release(512, 154);
  Press();
  EXPECT_EQ(GetMessage(), 34);  // a new walk begins with the first
}

TEST_F(WalkWedge, the_messages_come_at_once_where_that_is_wanted) {
  disc->SetMessagesAtOnce(true);
  Press();
  EXPECT_EQ(GetMessage(), 34);
  EXPECT_EQ(GetOpacityOf(34), 1.0);
  Move(512, 600);
  EXPECT_EQ(GetMessage(), 38) << "and go";
  EXPECT_EQ(GetOpacityOf(38), 1.0);
  Release(512, 154);
  Press();
  EXPECT_EQ(GetMessage(), 34);
  EXPECT_EQ(GetOpacityOf(34), 1.0);
}

TEST_F(WalkWedge, without_messages_none_shows_on_an_advanced_disc) {
  Parameters().showMessages = false;
  Press();
  EXPECT_EQ(GetMessage(), 0);
  disc->type = DiscType::TourBuilding;
  EXPECT_EQ(GetMessage(), 34);
}

TEST_F(WalkWedge, a_walk_that_the_projection_refuses_shows_the_warning) {
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  Settings().auto_switch_projection = false;
  Press();
  EXPECT_EQ(GetMessage(), 36);
}

TEST_F(WalkWedge, its_pictures_and_messages_are_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTextures(), std::vector<int>({35, 93, 94}));
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({34, 36, 38}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTextures().empty());
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
}

// ---- look and move ----

TEST_F(LookMoveWedge, the_active_region_gets_the_words_of_the_mode) {
  struct {
    bool shift;
    bool allowLookAt;
    bool lookAtOnShift;
    bool looksAt;
  } const rows[] = {
      {false, false, false, false}, {false, false, true, false}, {false, true, false, false},
      {false, true, true, false},   {true, false, false, false}, {true, false, true, false},
      {true, true, false, false},   {true, true, true, true},
  };
  for (const auto& row : rows) {
    menu->Destroy();
    Make(row.allowLookAt);
    Parameters().lookAtOnShift = row.lookAtOnShift;
    if (row.shift) menu->OnKeyDown(KEY_SHIFT);
    Press();
    EXPECT_FALSE(menu->GetVisible());
    EXPECT_EQ(Region().wrap, !row.looksAt);
    EXPECT_EQ(Region().tooltipString, row.looksAt ? 57 : 49);
    EXPECT_EQ(renderer.FindText(Region().tooltipHUD), row.looksAt ? 57 : 49);
    EXPECT_EQ(Region().cursorID, row.looksAt ? 5 : 4);
    EXPECT_EQ(IsOperating(OPERATION_LOOK), !row.looksAt);
    EXPECT_EQ(renderer.mouseoverBegun - renderer.mouseoverEnded, row.looksAt ? 1 : 0);
    Release(500, 300);
    EXPECT_TRUE(menu->GetVisible());
  }
}

TEST_F(LookMoveWedge, a_look_takes_the_settings_of_the_disc) {
  for (const bool on : {false, true}) {
    Parameters().invertLookVertical = on;
    Parameters().keepSceneUpright = on;
    Press();
    EXPECT_EQ(Settings().look_invert_vertical_axis, on);
    EXPECT_EQ(Settings().align_orbit_up_direction, on);
    Release(500, 300);
  }
}

TEST_F(LookMoveWedge, its_message_shows_with_the_messages_or_on_a_basic_disc) {
  struct {
    bool showMessages;
    DiscType type;
    bool shows;
  } const rows[] = {{false, DiscType::FullNavigation, false},
                    {true, DiscType::FullNavigation, true},
                    {false, DiscType::ViewObject, true},
                    {false, DiscType::TourBuilding, true}};
  for (const auto& row : rows) {
    Parameters().showMessages = row.showMessages;
    disc->type = row.type;
    Press();
    const auto drawn = Draw();
    EXPECT_EQ(drawn.size(), row.shows ? 1U : 0U);
    if (row.shows) {
      EXPECT_TRUE(IsDrawn(drawn[0], -28, {512, 40}, 200, 40));
    }
    Release(500, 300);
  }
}

TEST_F(LookMoveWedge, the_keys_move_by_the_walk_speed_of_now) {
  Press();
  Parameters().walkSpeedFactor = 2.5;
  Forget();
  menu->OnKeyDown(KEY_UP);
  EXPECT_EQ(TakeAsked(), Lines({"update 8 at 0, 2500"}));
  Parameters().walkSpeedFactor = 0.5;
  menu->OnKeyUp(KEY_UP);
  menu->OnKeyDown(KEY_LEFT);
  EXPECT_EQ(TakeAsked(), Lines({"update 8 at 0, 0", "update 8 at -500, 0"}));
}

TEST_F(LookMoveWedge, a_look_at_flies_and_swallows_presses_until_it_is_over) {
  renderer.component = ToolRenderer::Component{{0, 0, 2}, {0, 0, 1}};
  menu->OnKeyDown(KEY_SHIFT);
  Press();
  EXPECT_EQ(TakeAsked(), Lines({}));
  Release(500, 300);
  EXPECT_EQ(hub.shotsBegun, 1);
  EXPECT_TRUE(ball.IsVisible());
  menu->OnKeyUp(KEY_SHIFT);
  Frame();
  Press();
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  Release(500, 300);
  EXPECT_EQ(hub.shotsBegun, 1);
  RunFor(900);
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_TRUE(menu->GetVisible());
  Press();
  EXPECT_TRUE(IsOperating(OPERATION_LOOK));
}

TEST_F(LookMoveWedge, its_three_texts_are_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({28, 49, 57}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
}

// ---- centre ----

TEST_F(CenterWedge, a_release_over_the_scene_flies_there_with_the_region_frozen) {
  ball.Create();
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(renderer.lastPivotLabel, 42);
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
  Release(500, 300);
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_EQ(hub.shotsBegun, 1);
  EXPECT_EQ(hub.centerShot.point, Vector3(0, 0, 2));
  menu->GetRegion(0)->zone = 9;
  Move(501, 300);
  EXPECT_EQ(Region().zone, -1);
  RunFor(600);
  Move(502, 300);
  EXPECT_EQ(Region().zone, 9);
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(CenterWedge, a_release_off_the_scene_puts_the_pivot_back_and_frees_the_region) {
  renderer.scene = nullptr;
  Press();
  Release(500, 300);
  EXPECT_EQ(hub.view.pivot, Vector3(1, 2, -3));
  EXPECT_EQ(hub.shotsBegun, 0);
  menu->GetRegion(0)->zone = 9;
  Move(501, 300);
  EXPECT_EQ(Region().zone, 9);
}

TEST_F(CenterWedge, off_the_scene_the_note_shows_with_the_messages_or_on_a_basic_disc) {
  renderer.scene = nullptr;
  struct {
    bool showMessages;
    DiscType type;
    bool shows;
  } const rows[] = {{false, DiscType::FullNavigation, false},
                    {true, DiscType::FullNavigation, true},
                    {false, DiscType::ViewObject, true}};
  for (const auto& row : rows) {
    Parameters().showMessages = row.showMessages;
    disc->type = row.type;
    Press();
    const auto drawn = Draw();
    EXPECT_EQ(drawn.size(), row.shows ? 1U : 0U);
    if (row.shows) {
      EXPECT_TRUE(IsDrawn(drawn[0], -31, {512, 40}, 200, 40));
    }
    EXPECT_EQ(renderer.GetCursorID(), CURSOR_NO_TARGET);
    Release(500, 300);
  }
}

TEST_F(CenterWedge, its_note_is_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({31}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
}

// ---- put away in a press ----

TEST_F(CenterWedge, a_menu_that_is_put_away_in_a_press_flies_nowhere_and_puts_the_pivot_back) {
  const Vector3 pivot = hub.view.pivot;
  Press();
  ASSERT_NE(hub.view.pivot, pivot);
  PutAway();
  EXPECT_EQ(hub.view.pivot, pivot);
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(LookMoveWedge, a_menu_that_is_put_away_while_a_face_is_chosen_flies_nowhere) {
  Parameters().lookAtOnShift = true;
  menu->OnKeyDown(KEY_SHIFT);
  Press();
  ASSERT_EQ(renderer.mouseoverBegun - renderer.mouseoverEnded, 1);
  PutAway();
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_EQ(renderer.mouseoverBegun, renderer.mouseoverEnded);
}

TEST_F(WalkWedge, a_walk_that_was_put_away_leaves_the_next_one_its_messages) {
  Press();
  GetMessage();
  platform.Advance(801);
  Move(512, 600);
  GetMessage();
  platform.Advance(801);
  GetMessage();
  PutAway();
  menu->SetVisible(true);
  menu->OnMouseMove(500, 300);
  Press();
  EXPECT_EQ(GetMessage(), 34);
}

}  // namespace
