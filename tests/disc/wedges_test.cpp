// The wedges that lend the mouse to one tool without more, the small ones, and what all of them share.
#include "disc/close_region_listener.h"
#include "disc/look_region_listener.h"
#include "disc/menu_region_listener.h"
#include "disc/orbit_region_listener.h"
#include "disc/pan_region_listener.h"
#include "disc/wedge_scene.h"
#include "korvane/pixel_icon2d.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

// Acts where an operation begins.
struct BeginHost : OperationObserver {
  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override { onBegin(); }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {}
  void OnEndOperation(OperationType /*type*/) override {}
  std::function<void()> onBegin;
};

struct PanWedge : WedgeScene<PanRegionListener> {
  PanWedge() { Make(); }
};
struct LookWedge : WedgeScene<LookRegionListener> {
  LookWedge() { Make(); }
};
struct OrbitWedge : WedgeScene<OrbitRegionListener> {
  void MakeOrbit(bool forceUp = false) {
    Make(static_cast<StringID>(42), static_cast<StringID>(35), forceUp);
  }
};
struct MenuWedge : WedgeScene<MenuRegionListener> {
  MenuWedge() { Make(); }
};
struct CloseWedge : WedgeScene<CloseRegionListener> {
  CloseWedge() { Make(); }
};

// ---- pan ----

// 300 pixels from below are 768 - 300 - 1 from above.
TEST_F(PanWedge, a_press_hides_the_menu_and_pans) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(TakeAsked(), Lines({"apply", "begin 0 at 500, 467"}));
  Move(510, 320);
  EXPECT_EQ(TakeAsked(), Lines({"update 0 at 510, 447"}));
}

TEST_F(PanWedge, the_release_ends_the_pan_and_shows_the_menu) {
  Press();
  Move(510, 320);
  Frame();
  Forget();
  Release(510, 320);
  EXPECT_EQ(TakeAsked(), Lines({"end 0", "apply"}));
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(IsOperating(OPERATION_PAN));
  EXPECT_EQ(hub.view.pivot, Vector3(1, 2, -3));
  EXPECT_EQ(GetElementCount(), 2);  // the start and the end
}

TEST_F(PanWedge, a_frame_asks_for_the_cursor_of_the_tool) {
  Press();
  Forget();
  Draw();
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 1);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_PAN);
}

TEST_F(PanWedge, a_menu_that_is_put_away_ends_the_pan) {
  Press();
  Move(510, 320);
  Frame();
  PutAway();
  EXPECT_FALSE(IsOperating(OPERATION_PAN));
  EXPECT_EQ(GetElementCount(), 2);
  Move(600, 400);
  Release(600, 400);
  EXPECT_EQ(GetElementCount(), 2);
}

TEST_F(PanWedge, a_hub_that_is_taken_away_ends_the_pan_there) {
  Press();
  menu->SetKorvane(nullptr);
  Move(520, 300);
  EXPECT_FALSE(IsOperating(OPERATION_PAN));
  Release(520, 300);
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(PanWedge, a_renderer_that_is_taken_away_ends_the_pan) {
  Press();
  menu->SetRenderer(nullptr);
  EXPECT_FALSE(IsOperating(OPERATION_PAN));
}

TEST_F(PanWedge, a_host_that_puts_the_menu_away_as_it_hides_begins_nothing) {
  BeginHost host;
  host.onBegin = [&] { PutAway(); };
  hub.AddOperationObserver(&host);
  Press();
  EXPECT_FALSE(IsOperating(OPERATION_PAN));
  EXPECT_EQ(GetElementCount(), 0);
  Release(500, 300);
  hub.RemoveOperationObserver(&host);
  EXPECT_FALSE(wedge->IsMouseDown());
}

TEST_F(PanWedge, a_menu_that_is_deleted_in_the_press_leaves_no_operation) {
  BeginHost host;
  host.onBegin = [&] { menu.reset(); };
  hub.AddOperationObserver(&host);
  Press();
  hub.RemoveOperationObserver(&host);
  EXPECT_FALSE(IsOperating(OPERATION_PAN));
}

TEST_F(PanWedge, a_move_and_a_frame_allocate_nothing) {
  renderer.quiet = true;
  hub.recording = false;
  Press();
  Move(501, 301);
  Frame();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    Move(501 + i, 301);
    Frame();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

// ---- look ----

TEST_F(LookWedge, a_drag_turns_by_the_settings_of_the_disc) {
  for (const bool invert : {false, true}) {
    Parameters().invertLookVertical = invert;
    Settings().look_invert_vertical_axis = !invert;
    Press();
    EXPECT_FALSE(menu->GetVisible());
    EXPECT_TRUE(IsOperating(OPERATION_LOOK));
    EXPECT_EQ(Settings().look_invert_vertical_axis, invert);
    Release(500, 300);
    EXPECT_TRUE(menu->GetVisible());
    EXPECT_EQ(Settings().look_invert_vertical_axis, !invert);
  }
}

// ---- orbit ----

TEST_F(OrbitWedge, a_drag_orbits_around_the_marked_pivot_with_the_text_of_the_wedge) {
  MakeOrbit();
  ball.Create();
  Press();
  EXPECT_EQ(renderer.lastPivotLabel, 42);
  EXPECT_TRUE(ball.IsVisible());
  EXPECT_TRUE(IsOperating(OPERATION_ORBIT));
  Release(500, 300);
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_FALSE(IsOperating(OPERATION_ORBIT));
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(OrbitWedge, the_scene_is_kept_upright_by_the_wedge_or_by_the_settings) {
  struct {
    bool forceUp;
    bool keepUpright;
    bool showMessages;
    bool preserves;
    bool shows;
  } const rows[] = {
      {false, false, false, false, false}, {false, false, true, false, true},
      {false, true, false, true, false},   {false, true, true, true, false},
      {true, false, true, true, false},    {true, true, true, true, false},
  };
  for (const auto& row : rows) {
    MakeOrbit(row.forceUp);
    Parameters().keepSceneUpright = row.keepUpright;
    Parameters().showMessages = row.showMessages;
    Settings().preserve_orbit_up_direction = !row.preserves;
    Press();
    EXPECT_EQ(Settings().preserve_orbit_up_direction, row.preserves);
    const auto drawn = Draw();
    EXPECT_EQ(drawn.size(), row.shows ? 1U : 0U);
    if (row.shows) {
      EXPECT_TRUE(IsDrawn(drawn[0], -35, {512, 40}, 200, 40));
    }
    Release(500, 300);
    EXPECT_EQ(Settings().preserve_orbit_up_direction, !row.preserves);
    Press();
    menu->Destroy();
  }
}

TEST_F(OrbitWedge, its_message_is_held_while_the_menu_is_active) {
  MakeOrbit();
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({35}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
  menu->SetActive(true);
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({35}));
}

TEST_F(OrbitWedge, one_without_a_message_holds_none) {
  Make(STRING_PIVOT, STRING_NONE, true);
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
  Parameters().showMessages = true;
  Press();
  EXPECT_TRUE(Draw().empty());
}

// ---- menu and close ----

TEST_F(MenuWedge, the_menu_opens_at_the_release_and_stands_still_until_then) {
  menu->SetMenu(MENU_TWO_D);
  const Vector2 place = menu->GetRegionMap()->GetPosition();
  Press();
  EXPECT_TRUE(menu->GetVisible());
  Move(900, 700);
  EXPECT_EQ(menu->GetRegionMap()->GetPosition(), place);
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 0);
  Release(900, 700);
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 1);
  Move(900, 700);
  EXPECT_NE(menu->GetRegionMap()->GetPosition(), place);
}

TEST_F(CloseWedge, the_disc_closes_at_the_release) {
  const Vector2 place = menu->GetRegionMap()->GetPosition();
  Press();
  EXPECT_EQ(disc->choices, 0);
  Move(900, 700);
  EXPECT_EQ(menu->GetRegionMap()->GetPosition(), place);
  Release(900, 700);
  EXPECT_EQ(disc->choices, 1);
  EXPECT_EQ(disc->type, DiscType::None);
}

TEST_F(CloseWedge, a_menu_that_is_put_away_follows_the_mouse_again) {
  Press();
  PutAway();
  menu->SetVisible(false);
  Move(900, 700);
  EXPECT_EQ(menu->GetMouseCoords(), Vector2(900, 700));
  EXPECT_EQ(disc->choices, 0);
}

}  // namespace
