// The wedge that zooms, by a drag, a click or a rectangle.
#include "disc/zoom_region_listener.h"

#include "disc/wedge_scene.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

constexpr auto TEXT = [](int number) { return static_cast<StringID>(number); };

struct ZoomWedge : WedgeScene<ZoomRegionListener> {
  ZoomWedge() { MakeZoom(false, true); }
  void MakeZoom(bool constrain, bool allowRectangle) {
    if (menu != nullptr) menu->Destroy();
    Make(TEXT(42), TEXT(29), TEXT(30), constrain, allowRectangle);
  }
  void HoldShift() { menu->OnKeyDown(KEY_SHIFT); }
  void LetGoOfShift() { menu->OnKeyUp(KEY_SHIFT); }
  /// The rectangle is drawn: four lines in white and black.
  bool DrawsRectangle() {
    renderer.ClearCalls();
    wedge->OnDraw();
    return renderer.CountCalls("RenderGeometry") > 0;
  }
};

// ---- the press ----

TEST_F(ZoomWedge, a_press_hides_the_menu_freezes_its_region_and_zooms) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(TakeAsked(), Lines({"apply", "begin 5 at 500, 467"}));
  EXPECT_TRUE(ball.IsVisible());
  Move(500, 320);
  EXPECT_EQ(TakeAsked(), Lines({"update 5 at 500, 447"}));
}

TEST_F(ZoomWedge, the_active_region_gets_the_words_of_the_mode) {
  struct {
    bool shift;
    bool allowRectangle;
    bool rectZoomOnShift;
    bool rectangle;
  } const rows[] = {
      {false, false, false, false}, {false, false, true, false}, {false, true, false, false},
      {false, true, true, false},   {true, false, false, false}, {true, false, true, false},
      {true, true, false, false},   {true, true, true, true},
  };
  for (const auto& row : rows) {
    MakeZoom(false, row.allowRectangle);
    Parameters().rectZoomOnShift = row.rectZoomOnShift;
    if (row.shift) HoldShift();
    Region().wrap = row.rectangle;
    Press();
    EXPECT_EQ(Region().wrap, !row.rectangle);
    EXPECT_EQ(Region().tooltipString, row.rectangle ? 56 : 55);
    EXPECT_EQ(renderer.FindText(Region().tooltipHUD), row.rectangle ? 56 : 55);
    EXPECT_EQ(IsOperating(OPERATION_ZOOM), !row.rectangle);
    EXPECT_EQ(DrawsRectangle(), row.rectangle);
    Release(500, 300);
  }
}

TEST_F(ZoomWedge, what_a_press_has_written_is_gone_at_the_next_choice_of_the_region) {
  HoldShift();
  Press();
  EXPECT_FALSE(Region().wrap);
  Move(560, 340);
  Release(560, 340);
  RunFor(1200);
  Move(500, 300);
  EXPECT_TRUE(Region().wrap);
  EXPECT_EQ(Region().tooltipString, STRING_NONE);
}

TEST_F(ZoomWedge, the_pivot_ball_has_the_text_of_the_wedge) {
  ball.Create();
  Press();
  EXPECT_EQ(renderer.lastPivotLabel, 42);
}

TEST_F(ZoomWedge, control_or_a_basic_disc_zooms_about_the_pivot_of_the_camera) {
  struct {
    bool control;
    DiscType type;
    bool keeps;
  } const rows[] = {{false, DiscType::FullNavigation, false}, {true, DiscType::FullNavigation, true},
                    {false, DiscType::ViewObject, true},      {false, DiscType::TourBuilding, true},
                    {false, DiscType::TwoD, false},           {false, DiscType::MiniViewObject, false}};
  for (const auto& row : rows) {
    disc->type = row.type;
    hub.view.pivot = {0, 1, 0};
    if (row.control) menu->OnKeyDown(KEY_CONTROL);
    Press();
    EXPECT_EQ(hub.view.pivot, row.keeps ? Vector3(0, 1, 0) : Vector3(0, 0, 2));
    if (row.control) menu->OnKeyUp(KEY_CONTROL);
    Move(510, 300);
    Release(510, 300);
  }
}

TEST_F(ZoomWedge, the_tools_know_the_keys_as_the_press_finds_them) {
  Parameters().clickZoom = true;
  Parameters().rectZoomOnShift = false;
  HoldShift();
  Click();
  EXPECT_EQ(hub.zoomShot.direction, ZoomShotParameters::DIRECTION_OUT);
  RunFor(600);
  LetGoOfShift();
  Click();
  EXPECT_EQ(hub.zoomShot.direction, ZoomShotParameters::DIRECTION_IN);
}

// ---- shift after the press ----

TEST_F(ZoomWedge, shift_before_a_drag_redoes_the_press_as_a_rectangle) {
  Parameters().clickZoom = true;
  Press();
  HoldShift();
  Forget();
  Move(560, 350);
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_TRUE(DrawsRectangle());
  EXPECT_EQ(Region().tooltipString, 56);
  Move(600, 380);
  Release(600, 380);
  EXPECT_EQ(hub.shotsBegun, 1);
  EXPECT_EQ(hub.rectShot.duration, 0.75);
  EXPECT_EQ(renderer.lastRectangle, std::vector<int>({500, 300, 600, 380}));
}

TEST_F(ZoomWedge, shift_after_a_drag_has_begun_changes_nothing) {
  Press();
  Move(501, 300);
  HoldShift();
  Move(560, 350);
  EXPECT_TRUE(IsOperating(OPERATION_ZOOM));
  EXPECT_FALSE(DrawsRectangle());
}

// ---- the release ----

TEST_F(ZoomWedge, a_drag_shows_the_menu_at_its_release) {
  Press();
  Move(500, 320);
  Frame();
  Forget();
  Release(500, 320);
  EXPECT_EQ(TakeAsked(), Lines({"end 5"}));
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 2);
}

TEST_F(ZoomWedge, a_click_zooms_by_the_settings_or_on_a_basic_disc) {
  struct {
    bool clickZoom;
    DiscType type;
    bool zooms;
  } const rows[] = {{false, DiscType::FullNavigation, false}, {true, DiscType::FullNavigation, true},
                    {false, DiscType::ViewObject, true},      {false, DiscType::TourBuilding, true},
                    {false, DiscType::TwoD, false},           {true, DiscType::TwoD, true}};
  for (const auto& row : rows) {
    hub.shotsBegun = 0;
    disc->type = row.type;
    Parameters().clickZoom = row.clickZoom;
    Click();
    EXPECT_EQ(hub.shotsBegun, row.zooms ? 1 : 0);
    RunFor(600);
  }
}

TEST_F(ZoomWedge, a_click_with_shift_zooms_once_and_draws_no_rectangle) {
  Parameters().clickZoom = true;
  HoldShift();
  Press();
  EXPECT_TRUE(DrawsRectangle());
  Release(500, 300);
  EXPECT_EQ(hub.shotsBegun, 1);
  EXPECT_EQ(hub.zoomShot.direction, ZoomShotParameters::DIRECTION_OUT);
  EXPECT_EQ(Region().tooltipString, 55);
  EXPECT_EQ(renderer.FindText(Region().tooltipHUD), 55);
  EXPECT_FALSE(DrawsRectangle());
  RunFor(600);
  EXPECT_EQ(hub.shotsBegun, 1);
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(ZoomWedge, shift_let_go_before_the_release_of_a_click_zooms_nothing) {
  Parameters().clickZoom = true;
  HoldShift();
  Press();
  LetGoOfShift();
  Release(500, 300);
  EXPECT_EQ(hub.shotsBegun, 0);
}

TEST_F(ZoomWedge, escape_gives_the_rectangle_up) {
  HoldShift();
  Press();
  Move(560, 350);
  menu->OnKeyDown(KEY_ESCAPE);
  EXPECT_FALSE(DrawsRectangle());
  Release(560, 350);
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_TRUE(menu->GetVisible());
}

// ---- the animations ----

TEST_F(ZoomWedge, an_animated_click_swallows_presses_until_it_is_over) {
  Parameters().clickZoom = true;
  Click();
  EXPECT_EQ(GetElementCount(), 1);
  Frame();
  Press();
  EXPECT_TRUE(wedge->IsMouseDown());
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_TRUE(menu->GetVisible());
  Move(520, 320);
  Release(520, 320);
  EXPECT_EQ(hub.shotsBegun, 1);
  RunFor(600);
  EXPECT_EQ(GetElementCount(), 2);
  Press();
  EXPECT_TRUE(IsOperating(OPERATION_ZOOM));
}

TEST_F(ZoomWedge, an_animated_rectangle_swallows_presses_until_it_is_over) {
  HoldShift();
  Press();
  Move(560, 350);
  Release(560, 350);
  EXPECT_EQ(hub.shotsBegun, 1);
  LetGoOfShift();
  Frame();
  Press();
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  Release(560, 350);
  EXPECT_EQ(hub.shotsBegun, 1);
  RunFor(900);
  Press();
  EXPECT_TRUE(IsOperating(OPERATION_ZOOM));
}

TEST_F(ZoomWedge, the_region_is_frozen_until_the_animation_is_over) {
  Parameters().clickZoom = true;
  Click();
  menu->GetRegion(0)->zone = 9;
  Move(500, 300);
  EXPECT_EQ(Region().zone, -1);
  RunFor(600);
  Move(500, 300);
  EXPECT_EQ(Region().zone, 9);
}

TEST_F(ZoomWedge, a_menu_hidden_in_the_animation_comes_back_after_it) {
  Parameters().clickZoom = true;
  Click();
  menu->SetVisible(false);
  Frame(100);
  EXPECT_FALSE(menu->GetVisible());
  RunFor(600);
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(ZoomWedge, a_menu_that_is_put_away_ends_the_animation) {
  Parameters().clickZoom = true;
  Click();
  Frame(100);
  Frame(100);
  PutAway();
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 2);
}

TEST_F(ZoomWedge, a_press_with_shift_ends_a_zoom_whose_release_went_missing_and_one_without_a_rectangle) {
  Press();
  ASSERT_TRUE(IsOperating(OPERATION_ZOOM));
  HoldShift();
  Press();
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  Move(600, 380);
  ASSERT_TRUE(DrawsRectangle());
  LetGoOfShift();
  Press();
  EXPECT_FALSE(DrawsRectangle());
  EXPECT_TRUE(IsOperating(OPERATION_ZOOM));
  PutAway();
  EXPECT_EQ(GetOpenRecords(), 0);
}

TEST_F(ZoomWedge, a_menu_that_is_put_away_in_a_press_makes_no_click_of_it) {
  Parameters().clickZoom = true;
  Press();
  PutAway();
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(ZoomWedge, a_menu_that_is_put_away_in_a_rectangle_flies_nowhere_and_closes_its_record) {
  const Vector3 pivot = hub.view.pivot;
  HoldShift();
  Press();
  Move(600, 380);
  ASSERT_TRUE(DrawsRectangle());
  PutAway();
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_EQ(hub.view.pivot, pivot);
  EXPECT_FALSE(DrawsRectangle());
  EXPECT_EQ(GetOpenRecords(), 0);
}

TEST_F(ZoomWedge, a_menu_that_is_put_away_while_the_rectangle_ends_zooms_no_more) {
  Parameters().clickZoom = true;
  HoldShift();
  Press();
  PutAway();
  EXPECT_EQ(hub.shotsBegun, 0);
  Release(500, 300);
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
}

// ---- the ends of a constrained zoom ----

TEST_F(ZoomWedge, a_constrained_zoom_shows_its_ends_during_the_drag) {
  MakeZoom(true, false);
  Settings().zoom_sensitivity = 2.0;
  Settings().zoom_min_limit = 0.5;
  Settings().zoom_out_snap_size = 0;
  Settings().scene_bound_radius = 50.0;
  Press();
  Move(500, 310);
  hub.PerformOperations();
  auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_TRUE(IsDrawn(drawn[0], -29, {512, 40}, 200, 40));
  Move(500, 290);
  hub.PerformOperations();
  drawn = Draw();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_TRUE(IsDrawn(drawn[0], -30, {512, 40}, 200, 40));
  Move(500, 300);
  hub.PerformOperations();
  EXPECT_TRUE(Draw().empty());
}

TEST_F(ZoomWedge, its_five_texts_are_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({29, 30, 37, 55, 56}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
}

TEST_F(ZoomWedge, a_move_and_a_frame_allocate_nothing) {
  for (const bool shift : {false, true}) {
    renderer.quiet = false;
    if (shift) HoldShift();
    Press();
    renderer.quiet = true;
    hub.recording = false;
    Move(501, 301);
    Frame();
    const AllocationCounter counter;
    for (int i = 0; i < 100; ++i) {
      Move(501 + i % 3, 301 + i % 5);
      Frame();
    }
    EXPECT_EQ(counter.GetAllocations(), 0U);
    Release(500, 300);
    RunFor(900);
  }
}

}  // namespace
