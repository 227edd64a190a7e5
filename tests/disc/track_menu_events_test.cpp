// What a menu makes of the mouse and the keys, and what it draws.
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <memory>
#include <vector>

#include "disc/menu_scene.h"
#include "disc/region_map.h"
#include "support/allocation_counter.h"
#include "support/counting_renderer.h"
#include "support/random.h"

using namespace Korvane;

namespace {

class TrackMenuEventsTest : public ::testing::Test, public MenuScene {
 protected:
  // The scene's map is 80 pixels of colour around (400, 300), its pixels those of the screen.
  static constexpr int LEFT_EDGE = 360;

  void Frames(int seconds) {
    for (int i = 0; i < seconds * 10; ++i) {
      platform.Advance(100);
      menu.Draw();
    }
  }
};

// ---- the nearest point of the map ----

// A disc of colour of radius 40 around the middle of an image of 100 x 100, at (0, 0).
std::unique_ptr<PixelIcon2D> MakeRoundMap() {
  MapImage image(100, 100);
  for (int row = 0; row < 100; ++row) {
    for (int column = 0; column < 100; ++column) {
      if (std::hypot(column - 49.5, row - 49.5) <= 40.0) image.Fill(column, row, 1, 1, 255, 255, 255);
    }
  }
  return image.MakeIcon();
}

TEST(ClosestPoint, is_the_point_itself_on_the_map) {
  MapImage image(10, 10);
  image.Fill(0, 0, 10, 10, 1, 2, 3, 1);  // opacity 1 of 255 counts in full
  const auto map = image.MakeIcon();
  double x = 0.0;
  double y = 0.0;
  TrackMenu::GetClosestPoint(map.get(), 1.25, -2.5, x, y);
  EXPECT_EQ(x, 1.25);
  EXPECT_EQ(y, -2.5);
}

TEST(ClosestPoint, without_a_map_stays_unwritten) {
  double x = 7.0;
  double y = 8.0;
  TrackMenu::GetClosestPoint(nullptr, 1, 2, x, y);
  EXPECT_EQ(x, 7.0);
  EXPECT_EQ(y, 8.0);
}

// 25 halvings of less than 300 pixels end within 1e-5 pixels of the rim, or half a pixel inside of it.
TEST(ClosestPoint, of_a_point_outside_lies_on_the_rim_towards_it) {
  Random random;
  const auto map = MakeRoundMap();
  for (int i = 0; i < 1000; ++i) {
    const double angle = random.Uniform(0.0, 2.0 * Math::PI);
    const double reach = random.Uniform(45.0, 300.0);
    const Vector2 point(reach * std::cos(angle), reach * std::sin(angle));
    const Vector2 closest = FindClosestPoint(*map, point);
    // A place lies up to 1.5 pixels beside and 0.5 above the middle of its pixel, since the column is rounded
    // up; and the shift moves by sqrt(1/2) at most.
    EXPECT_NEAR(closest.Length(), 40.0, std::hypot(1.5, 0.5) + std::sqrt(0.5));
    const double cross = closest.x * point.y - closest.y * point.x;
    EXPECT_LE(std::abs(cross) / point.Length(), std::sqrt(0.5) + 1e-4);
    EXPECT_GT(closest.Dot(point), 0.0);
  }
}

// 16 pixels of colour, from 92 to 108, centre 100; the column of a place is that of its upper edge. The last
// midpoint lies off the map when the rounds end off it: then the answer is half a pixel nearer to the centre.
TEST(ClosestPoint, is_shifted_inward_where_the_last_midpoint_is_off_the_map) {
  MapImage image(16, 16);
  image.Fill(0, 0, 16, 16, 255, 255, 255);
  const auto map = image.MakeIcon();
  map->SetPosition(Vector2(100, 100));
  // By the same rounds, step by step, beside the code.
  for (const double start : {150.0, 131.7, 120.0, 60.0, 30.3}) {
    double inner = 100.0;
    double outer = start;
    double middle = 100.0;
    const auto has = [](double x) { return std::ceil(x - 92.0) >= 0.0 && std::ceil(x - 92.0) < 16.0; };
    for (int round = 0; round < 25; ++round) {
      middle = (inner + outer) / 2.0;
      (has(middle) ? inner : outer) = middle;
    }
    const double x = has(middle) ? middle : middle + (start > 100.0 ? -0.5 : 0.5);
    // The row stays at the centre's all the way, so its shift is downward, never upward.
    const double y = has(middle) ? 100.0 : 99.5;
    EXPECT_EQ(FindClosestPoint(*map, Vector2(start, 100.0)), Vector2(x, y)) << start;
  }
}

TEST(ClosestPoint, of_an_empty_map_ends_at_its_centre) {
  const MapImage image(10, 10);
  const auto map = image.MakeIcon();
  EXPECT_LT(FindClosestPoint(*map, Vector2(200, 100)).Length(), 1.0);
  map->SetSize(0, 0);
  EXPECT_TRUE(FindClosestPoint(*map, Vector2(200, 100)).IsFinite());
}

// ---- following the cursor ----

TEST_F(TrackMenuEventsTest, stays_while_the_cursor_wanders_over_it) {
  Open();
  for (int x = LEFT_EDGE + 1; x < 440; x += 7) {
    menu.OnMouseMove(x, 310);
    EXPECT_EQ(menu.GetPlace(), Vector2(400, 300)) << x;
  }
}

TEST_F(TrackMenuEventsTest, is_pushed_along_by_its_rim) {
  Open();
  menu.OnMouseMove(500, 300);
  EXPECT_NEAR(menu.GetPlace().x, 500 - 39, 1.0);
  EXPECT_NEAR(menu.GetPlace().y, 300, 0.5);
  EXPECT_EQ(GetActive(), "green");
  EXPECT_EQ(hub.requested, 1);
  for (const char* const name : {"none", "red", "green", "blue"})
    EXPECT_EQ(listeners[name]->GetTrackMenu(), &menu);
  EXPECT_EQ(menu.GetRegion(0)->icon->GetPosition(), menu.GetPlace());
}

TEST_F(TrackMenuEventsTest, needs_a_map_a_viewport_and_a_mouse_to_follow) {
  Open();
  menu.SetIgnoreMouseMovement(true);
  EXPECT_FALSE(menu.UpdatePosition());
  menu.SetIgnoreMouseMovement(false);
  for (const Vector2& size : {Vector2(0, 600), Vector2(800, 0), Vector2(-1, -1)}) {
    menu.SetViewportSize(static_cast<int>(size.x), static_cast<int>(size.y));
    menu.OnMouseMove(600, 300);
    EXPECT_EQ(menu.GetPlace(), Vector2(400, 300));
  }
  menu.SetViewportSize(800, 600);
  menu.OnMouseMove(600, 300);
  EXPECT_NE(menu.GetPlace(), Vector2(400, 300));
}

TEST_F(TrackMenuEventsTest, a_locked_menu_finds_its_region_and_draws_but_never_moves) {
  Open();
  menu.SetLocked(true);
  menu.OnMouseMove(380, 330);
  EXPECT_EQ(GetActive(), "red");
  menu.OnMouseMove(700, 500);
  EXPECT_EQ(menu.GetPlace(), Vector2(400, 300));
  menu.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderResource"), 1);
}

// The wrapped mouse plus the offset of the press; a coordinate of exactly 0 stands at the far edge.
TEST_F(TrackMenuEventsTest, a_hidden_menu_stands_at_the_wrapped_cursor) {
  struct Row {
    int mouse;
    double wrappedX;  // in 800
    double wrappedY;  // in 600
  };
  const Row rows[] = {{0, 800, 600},   {1, 1, 1},        {599, 599, 599}, {600, 600, 0},
                      {799, 799, 199}, {800, 0, 200},    {801, 1, 201},   {-1, 799, 599},
                      {-799, 1, 401},  {-800, 800, 400}, {-801, 799, 399}};
  Open();
  menu.OnLeftMouseDown(410, 290);  // the menu stands at (400, 300), the mouse stood there too
  EXPECT_EQ(menu.open.mouse.dragOffsetX, 0);
  menu.OnLeftMouseUp(410, 290);
  menu.OnLeftMouseDown(400, 300);
  EXPECT_EQ(menu.open.mouse.dragOffsetX, -10);
  EXPECT_EQ(menu.open.mouse.dragOffsetY, 10);
  menu.SetVisible(false);
  for (const Row& row : rows) {
    menu.OnMouseMove(row.mouse, row.mouse);
    EXPECT_EQ(menu.GetPlace(), Vector2(row.wrappedX - 10, row.wrappedY + 10)) << row.mouse;
  }
}

TEST_F(TrackMenuEventsTest, cuts_the_offset_of_the_press_to_whole_pixels) {
  Open();
  menu.GetActiveRegion().icon->SetPosition(Vector2(398.9, 301.9));
  menu.OnLeftMouseDown(10, 10);
  EXPECT_EQ(menu.open.mouse.dragOffsetX, -2);
  EXPECT_EQ(menu.open.mouse.dragOffsetY, 1);
  menu.GetActiveRegion().icon = nullptr;
  menu.OnLeftMouseDown(10, 10);
  EXPECT_EQ(menu.open.mouse.dragOffsetX, 0);
  EXPECT_EQ(menu.open.mouse.dragOffsetY, 0);
}

// ---- which region is active ----

TEST_F(TrackMenuEventsTest, finds_the_region_by_the_colour_under_the_mouse) {
  Open();
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(GetActive(), "red");
  menu.OnMouseMove(430, 330);
  EXPECT_EQ(GetActive(), "green");
  menu.OnMouseMove(400, 300);
  EXPECT_EQ(GetActive(), "blue");
}

TEST_F(TrackMenuEventsTest, a_transparent_pixel_of_any_colour_is_no_region_and_one_of_opacity_1_counts) {
  MapImage image(100, 100);
  image.Fill(0, 0, 100, 100, 0, 0, 255);
  image.Fill(0, 0, 50, 100, 255, 0, 0, 0);
  image.Fill(50, 0, 25, 100, 0, 255, 0, 1);
  renderer.images[MAP] = image;
  Open();
  menu.SetLocked(true);
  menu.OnMouseMove(440, 300);
  EXPECT_EQ(GetActive(), "blue");
  menu.OnMouseMove(375, 300);
  EXPECT_EQ(GetActive(), "blue");  // nothing there: the region stays
  menu.OnMouseMove(410, 300);
  EXPECT_EQ(GetActive(), "green");
}

TEST_F(TrackMenuEventsTest, keeps_the_region_off_the_map) {
  Open();
  menu.SetLocked(true);
  for (const bool pressed : {true, false}) {
    if (pressed) menu.OnLeftMouseDown(400, 300);
    if (!pressed) menu.OnLeftMouseUp(400, 300);
    menu.OnMouseMove(700, 500);
    EXPECT_EQ(GetActive(), "blue");
  }
  menu.SetUseSingleIconForDraw(true);
  menu.OnLeftMouseDown(400, 300);
  menu.OnMouseMove(700, 500);
  EXPECT_EQ(GetActive(), "blue");
  menu.OnLeftMouseUp(700, 500);
  menu.OnMouseMove(700, 500);
  EXPECT_EQ(GetActive(), "none");  // a picture drawn as one is left at once
}

TEST_F(TrackMenuEventsTest, of_two_enabled_regions_of_one_colour_the_later_wins) {
  Open();
  menu.AddRegion(MakeRegion("second blue", Vector3(0, 0, 1), 94));
  menu.OnMouseMove(400, 300);
  EXPECT_EQ(GetActive(), "second blue");
  menu.GetRegion(3)->enabled = false;
  EXPECT_EQ(GetActive(), "second blue");  // no event of its own
  menu.OnKeyDown(KEY_SHIFT);
  EXPECT_EQ(GetActive(), "blue");
  menu.GetRegion(3)->enabled = true;
  menu.OnKeyUp(KEY_SHIFT);
  EXPECT_EQ(GetActive(), "second blue");
}

TEST_F(TrackMenuEventsTest, a_region_that_is_not_enabled_is_never_chosen) {
  Open();
  menu.GetRegion(0)->enabled = false;
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(GetActive(), "blue");  // stays, as no other matches
}

TEST_F(TrackMenuEventsTest, the_disabled_region_wins_over_every_region_of_its_colour) {
  Open();
  menu.SetDisabledRegion(MakeRegion("last", Vector3(1, 0, 0), 95));
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(GetActive(), "last");
}

TEST(RegionColour, matches_within_0_14_and_not_at_it) {
  const Vector3 zero(0, 0, 0);
  EXPECT_FALSE(IsSameRegionColour(Vector3(0.14, 0, 0), zero));
  EXPECT_TRUE(IsSameRegionColour(Vector3(std::nextafter(0.14, 0.0), 0, 0), zero));
  EXPECT_FALSE(IsSameRegionColour(Vector3(0, 0.14, 0), zero));
  EXPECT_FALSE(IsSameRegionColour(Vector3(0.1, 0.1, 0), zero));  // 0.1414
  EXPECT_TRUE(IsSameRegionColour(Vector3(0.08, 0.08, 0.08), zero));
  EXPECT_FALSE(IsSameRegionColour(Vector3(std::nan(""), 0, 0), zero));
}

// Red is left over a corner: with sticky it is kept as long as one of the eight points 3 pixels around the
// mouse shows it. The columns of red end at 400, those of green begin there.
TEST_F(TrackMenuEventsTest, a_sticky_region_is_left_only_3_pixels_beyond_its_edge) {
  for (const bool sticky : {true, false}) {
    Open();
    menu.GetRegion(0)->sticky = sticky;
    menu.OnMouseMove(390, 330);
    EXPECT_EQ(GetActive(), "red");
    int first = 390;
    while (GetActive() == "red" && first < 420) menu.OnMouseMove(++first, 330);
    // The column of x is 50 + (x - 400), rounded up: red up to column 49.
    EXPECT_EQ(first, sticky ? 403 : 400);
    menu.Destroy();
  }
}

TEST_F(TrackMenuEventsTest, sticky_on_any_region_but_the_first_has_no_effect) {
  Open();
  menu.GetRegion(1)->sticky = menu.GetRegion(2)->sticky = true;
  menu.OnMouseMove(399, 330);
  EXPECT_EQ(GetActive(), "red");
  menu.OnMouseMove(400, 330);
  EXPECT_EQ(GetActive(), "green");
}

// Each of the eight points alone keeps the region: a map that has its colour there only.
TEST(RegionColour, is_looked_for_at_eight_points_3_pixels_away) {
  const Vector2 points[] = {{3, 3}, {3, 0}, {3, -3}, {0, 3}, {0, -3}, {-3, 3}, {-3, 0}, {-3, -3}};
  for (int x = -4; x <= 4; ++x) {
    for (int y = -4; y <= 4; ++y) {
      MapImage image(20, 20);
      // The column of x is x + 10, the row of y is 9 below the middle: floor(20 (1 - (y + 10) / 20)).
      image.Fill(10 + x, 10 - y, 1, 1, 255, 0, 0);
      const auto map = image.MakeIcon();
      bool expected = false;
      for (const Vector2& point : points) expected = expected || point == Vector2(x, y);
      EXPECT_EQ(IsColourAround(*map, Vector2(0, 0), Vector3(1, 0, 0)), expected) << x << ", " << y;
      EXPECT_FALSE(IsColourAround(*map, Vector2(0, 0), Vector3(0, 1, 0)));
    }
  }
}

TEST_F(TrackMenuEventsTest, can_hold_the_active_region) {
  Open();
  menu.SetSuspendUpdateActiveRegion(true);
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(GetActive(), "blue");
  menu.SetSuspendUpdateActiveRegion(false);
  menu.SetIgnoreMouseMovement(true);
  Forget();
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(GetActive(), "blue");
  EXPECT_EQ(journal.Take(), Lines());
  EXPECT_FALSE(menu.UpdateActiveRegion());
  menu.SetIgnoreMouseMovement(false);
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(GetActive(), "red");
}

// ---- a press that slides ----

TEST_F(TrackMenuEventsTest, a_press_that_slides_is_handed_from_listener_to_listener) {
  Open();
  menu.OnLeftMouseDown(400, 300);
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(journal.Take(), (Lines{"blue.OnLeftMouseDown(400, 300)", "blue.OnMouseMove(370, 330)",
                                   "blue.OnLeftMouseUp(370, 330)", "red.OnLeftMouseDown(370, 330)",
                                   "red.OnMouseMove(370, 330)"}));
  EXPECT_TRUE(listeners["red"]->IsMouseDown());
  menu.OnLeftMouseUp(371, 330);
  EXPECT_EQ(journal.Take(), Lines{"red.OnLeftMouseUp(371, 330)"});
}

TEST_F(TrackMenuEventsTest, a_press_that_slides_into_a_region_without_listener_ends) {
  Open();
  Region bare;
  bare.color = Vector3(1, 0, 0);
  menu.AddRegion(bare);
  menu.OnLeftMouseDown(400, 300);
  Forget();
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(journal.Take(), (Lines{"blue.OnMouseMove(370, 330)", "blue.OnLeftMouseUp(370, 330)"}));
  menu.OnMouseMove(400, 300);
  EXPECT_EQ(journal.Take(), Lines());  // and none begins
}

// A menu that is put away in a press hears of no release.
TEST_F(TrackMenuEventsTest, a_press_is_forgotten_by_every_listener_when_the_menu_is_put_away) {
  Open();
  menu.OnLeftMouseDown(400, 300);
  ASSERT_TRUE(listeners["blue"]->IsMouseDown());
  menu.CancelPress();
  menu.SetVisible(false);
  menu.SetActive(false);
  EXPECT_FALSE(listeners["blue"]->IsMouseDown());
  menu.SetVisible(true);
  Forget();
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(journal.Take(), Lines{"blue.OnMouseMove(370, 330)"});  // no press is handed on
}

TEST_F(TrackMenuEventsTest, a_press_stays_with_a_welcome_listener) {
  Open();
  listeners["blue"]->isWelcome = true;
  menu.OnLeftMouseDown(400, 300);
  Forget();
  menu.OnMouseMove(370, 330);
  EXPECT_EQ(journal.Take(), Lines{"blue.OnMouseMove(370, 330)"});
  EXPECT_EQ(GetActive(), "red");
  EXPECT_TRUE(listeners["blue"]->IsMouseDown());
  EXPECT_FALSE(listeners["red"]->IsMouseDown());
}

TEST_F(TrackMenuEventsTest, passes_each_event_to_the_active_listener) {
  Open();
  menu.OnLeftMouseDown(401, 300);
  EXPECT_TRUE(menu.IsLeftButtonDown());
  menu.OnMouseMove(402, 300);
  menu.OnLeftMouseUp(403, 301);
  EXPECT_FALSE(menu.IsLeftButtonDown());
  EXPECT_EQ(menu.GetMouseCoords(), Vector2(403, 301));
  menu.OnKeyDown(KEY_CONTROL);
  menu.OnKeyUp(KEY_RUN);
  menu.Draw();
  EXPECT_EQ(journal.Take(),
            (Lines{"blue.OnLeftMouseDown(401, 300)", "blue.OnMouseMove(402, 300)",
                   "blue.OnLeftMouseUp(403, 301)", "blue.OnKeyDown(1)", "blue.OnKeyUp(11)", "blue.OnDraw"}));
}

TEST_F(TrackMenuEventsTest, knows_its_two_modifiers) {
  Open();
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_DISC}) {
    menu.OnKeyDown(key);
    EXPECT_EQ(menu.IsModifierADown(), key == KEY_SHIFT);
    EXPECT_EQ(menu.IsModifierBDown(), key == KEY_CONTROL);
    menu.OnKeyUp(key);
    EXPECT_FALSE(menu.IsModifierADown() || menu.IsModifierBDown());
  }
}

// ---- the tooltip ----

class TooltipTest : public TrackMenuEventsTest {
 protected:
  void OpenWithTooltips() {
    Prepare();
    menu.SetDisabledRegion(MakeRegion("none", Vector3(0, 0, 0), 90));
    Add("red", Vector3(1, 0, 0), 91, 1);
    Add("green", Vector3(0, 1, 0), 92, 2);
    Add("blue", Vector3(0, 0, 1), 93, STRING_NONE);
    menu.SetVisible(true);
    menu.OnMouseMove(370, 330);
    menu.OnMouseMove(371, 330);
    Forget();
  }
  void Add(const std::string& name, const Vector3& colour, int texture, int text) {
    Region region = MakeRegion(name, colour, texture);
    region.tooltipString = static_cast<StringID>(text);
    menu.AddRegion(region);
  }
  bool Shows() { return menu.GetActiveRegion().tooltip->IsVisible(); }
};

TEST_F(TooltipTest, shows_from_2_to_6_seconds_of_rest) {
  OpenWithTooltips();
  menu.Draw();
  const int steps[][2] = {{1999, 0}, {1, 1}, {3999, 1}, {1, 1}, {1, 0}, {10000, 0}};
  for (const auto& [milliseconds, shows] : steps) {
    platform.Advance(static_cast<unsigned>(milliseconds));
    const bool before = Shows();
    EXPECT_EQ(menu.UpdateTooltip(), before != (shows == 1));
    EXPECT_EQ(Shows(), shows == 1);
  }
}

TEST_F(TooltipTest, goes_on_counting_while_the_cursor_wanders_over_the_menu) {
  OpenWithTooltips();
  for (int i = 0; i < 21; ++i) {
    platform.Advance(100);
    menu.OnMouseMove(365 + i, 330);
  }
  EXPECT_TRUE(Shows());
}

TEST_F(TooltipTest, begins_anew_when_the_menu_is_pushed_along) {
  OpenWithTooltips();
  Frames(3);
  EXPECT_TRUE(Shows());
  menu.OnMouseMove(200, 330);
  EXPECT_FALSE(Shows());
  Frames(1);
  EXPECT_FALSE(Shows());
  Frames(2);
  EXPECT_TRUE(Shows());
}

TEST_F(TooltipTest, of_the_next_region_shows_at_once_while_one_is_showing) {
  OpenWithTooltips();
  Frames(3);
  menu.OnMouseMove(430, 330);
  EXPECT_EQ(GetActive(), "green");
  EXPECT_TRUE(Shows());
  EXPECT_EQ(menu.open.rest.GetTotalTime(), 2.0);
  menu.OnMouseMove(400, 300);  // has none
  EXPECT_EQ(menu.open.rest.GetTotalTime(), 0.0);
  menu.OnMouseMove(370, 330);
  EXPECT_FALSE(Shows());
}

TEST_F(TooltipTest, of_the_next_region_waits_when_none_is_showing) {
  OpenWithTooltips();
  Frames(1);
  menu.OnMouseMove(430, 330);
  EXPECT_FALSE(Shows());
  EXPECT_EQ(menu.open.rest.GetTotalTime(), 0.0);
  Frames(9);  // past its time
  menu.OnMouseMove(370, 330);
  EXPECT_FALSE(Shows());
}

TEST_F(TooltipTest, asks_for_a_frame_when_it_comes_and_when_it_goes) {
  OpenWithTooltips();
  menu.Draw();
  menu.Draw();
  hub.requested = 0;
  platform.Advance(2500);
  menu.Draw();
  EXPECT_EQ(hub.requested, 1);
  menu.Draw();
  EXPECT_EQ(hub.requested, 1);
  platform.Advance(4000);
  menu.Draw();
  EXPECT_EQ(hub.requested, 2);
}

// Below the middle by half of the menu, up by 16 and by half of the text: 300 - 50 + 16 + 7.
TEST_F(TooltipTest, stands_below_the_menu) {
  OpenWithTooltips();
  menu.SetOpacity(0.25F);
  menu.GetRegion(0)->tooltip->SetSize(40, 15);
  Frames(3);
  ASSERT_FALSE(renderer.drawnTexts.empty());
  EXPECT_EQ(renderer.drawnTexts.back(), Vector2(400, 273));
  EXPECT_EQ(menu.GetActiveRegion().tooltip->GetOpacity(), 0.25);
}

TEST_F(TooltipTest, is_drawn_only_where_the_switch_says_so) {
  OpenWithTooltips();
  bool first = false;
  bool third = true;
  menu.SetShowParams(&first, nullptr, &third);
  Frames(3);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  first = true;
  menu.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 1);
}

// ---- drawing ----

TEST_F(TrackMenuEventsTest, draws_the_active_region_from_below_upward) {
  Prepare();
  Region region = MakeRegion("blue", Vector3(0, 0, 1), 93);
  region.overlayIcon = new ResourceIcon2D(static_cast<TextureID>(16));
  region.labelString = static_cast<StringID>(60);
  menu.AddRegion(region);
  menu.SetVisible(true);
  menu.OnMouseMove(400, 300);
  Forget();
  menu.Draw();
  EXPECT_EQ(renderer.TakeCalls(),
            (Lines{"BeginRender(400, 300, 400, 300, 0)", "RenderResource(93)", "RenderResource(16)",
                   "RenderDynamic(1)", "EndRender()", "SetCursorIcon(26)"}));
}

TEST_F(TrackMenuEventsTest, draws_the_single_picture_alone) {
  Open();
  ResourceIcon2D single(static_cast<TextureID>(77));
  menu.SetUseSingleIconForDraw(true);
  menu.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderResource"), 0);
  menu.SetSingleIconForDraw(&single);
  menu.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderResource"), 1);
  const auto& calls = renderer.GetCalls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "RenderResource(77)"), 1);
  menu.SetSingleIconForDraw(nullptr);
}

TEST_F(TrackMenuEventsTest, asks_for_the_cursor_of_the_menu_or_of_the_region) {
  Open();
  menu.SetMenuCursorID(CURSOR_ORBIT_CUBE);
  menu.GetRegion(2)->cursorID = CURSOR_ZOOM;
  menu.Draw();
  EXPECT_EQ(renderer.GetCalls().back(), "SetCursorIcon(0)");
  menu.OnLeftMouseDown(400, 300);
  menu.SetVisible(false);
  menu.Draw();
  EXPECT_EQ(renderer.GetCalls().back(), "SetCursorIcon(2)");
  Forget();
  menu.SetEnabled(false);
  menu.Draw();
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 0);
  menu.SetEnabled(true);
  Forget();
  renderer.onMenu = [this] { menu.Draw(); };
  menu.OpenMenu();
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 0);
}

TEST_F(TrackMenuEventsTest, sets_its_cursor_and_tells_its_listener_also_without_a_pass) {
  Open();
  renderer.FailAlways("BeginRender");
  menu.Draw();
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"BeginRender(400, 300, 400, 300, 0)", "SetCursorIcon(26)"}));
  EXPECT_EQ(journal.Take(), Lines{"blue.OnDraw"});
}

// x and y of the note; the note stands 64 pixels lower. Unlike the menu itself a coordinate equal to the size
// stays, and so does 0.
TEST_F(TrackMenuEventsTest, the_note_of_a_drag_follows_the_wrapped_cursor) {
  struct Row {
    int x;
    int y;
    double noteX;
    double noteY;
  };
  const Row wrapped[] = {{10, 100, 10, 36},  {0, 0, 0, -64},         {800, 600, 800, 536}, {801, 601, 1, -63},
                         {-1, -1, 799, 535}, {-800, -600, 800, 536}, {1600, 1200, 0, -64}};
  Prepare();
  Region region = MakeRegion("blue", Vector3(0, 0, 1), 93);
  region.tooltipHUDString = static_cast<StringID>(50);
  menu.AddRegion(region);
  menu.SetVisible(true);
  menu.OnMouseMove(400, 300);
  menu.OnLeftMouseDown(400, 300);
  menu.SetVisible(false);
  for (const Row& row : wrapped) {
    menu.OnMouseMove(row.x, row.y);
    menu.Draw();
    EXPECT_EQ(renderer.drawnTexts.back(), Vector2(row.noteX, row.noteY)) << row.x;
  }
  menu.OnMouseMove(-5, 700);
  menu.SetSuspendUpdateActiveRegion(true);
  menu.GetActiveRegion().SetWrap(false);
  menu.Draw();
  EXPECT_EQ(renderer.drawnTexts.back(), Vector2(-5, 636));
  const bool off = false;
  menu.SetShowParams(nullptr, nullptr, &off);
  Forget();
  menu.Draw();
  EXPECT_TRUE(renderer.drawnTexts.empty());
}

TEST_F(TrackMenuEventsTest, draws_nothing_in_a_viewport_without_size) {
  Open();
  menu.SetViewportSize(0, 600);
  Forget();
  menu.Draw();
  EXPECT_EQ(renderer.GetCalls(), Lines());
  EXPECT_EQ(journal.Take(), Lines());
}

// ---- hosts that act within a call ----

TEST_F(TrackMenuEventsTest, a_listener_may_destroy_the_menu_or_end_it_in_any_call) {
  using Doing = void (*)(OpenTrackMenu&);
  const Doing events[] = {
      [](OpenTrackMenu& each) { each.OnLeftMouseDown(400, 300); },
      [](OpenTrackMenu& each) { each.OnMouseMove(401, 300); },
      [](OpenTrackMenu& each) { each.OnMouseMove(370, 330); },  // slides
      [](OpenTrackMenu& each) { each.OnLeftMouseUp(400, 300); },
      [](OpenTrackMenu& each) { each.OnKeyDown(KEY_SHIFT); },
      [](OpenTrackMenu& each) { each.OnKeyUp(KEY_SHIFT); },
      [](OpenTrackMenu& each) { each.Draw(); },
      [](OpenTrackMenu& each) {
        each.SetVisible(false);
        each.SetActive(false);
      },
  };
  for (const Doing event : events) {
    for (int which = 0; which < 40; ++which) {
      for (const bool ends : {true, false}) {
        auto passing = std::make_unique<OpenTrackMenu>();
        passing->SetRendererShared(true);
        passing->SetKorvane(&hub);
        passing->SetRenderer(&renderer);
        passing->SetRegionMap(static_cast<TextureID>(MAP));
        passing->SetViewportSize(800, 600);
        passing->SetSize(100, 100);
        passing->SetLocation(400, 300);
        int calls = 0;
        int gone = 0;
        for (const char* const name : {"red", "blue"}) {
          Region region = MakeRegion(name, name[0] == 'r' ? Vector3(1, 0, 0) : Vector3(0, 0, 1), 91);
          region.tooltipString = static_cast<StringID>(5);
          JournalListener* const listener = listeners[name];
          listener->onEnd = [&] { ++gone; };
          listener->onHear = [&](const std::string&) {
            if (++calls != which) return;
            if (ends) passing.reset();
            if (!ends) passing->Destroy();
            EXPECT_EQ(gone, 1);  // the one that is not being called; this one stays until it is over
          };
          passing->AddRegion(region);
        }
        passing->SetVisible(true);
        if (passing != nullptr) passing->OnMouseMove(400, 300);
        if (passing != nullptr) passing->OnLeftMouseDown(400, 300);
        if (passing != nullptr) event(*passing);
        const bool happened = calls >= which && which > 0;
        EXPECT_EQ(gone, happened ? 2 : 0) << which;
        passing.reset();
        EXPECT_EQ(gone, 2);
        if (which > 0 && !happened) which = 40;
      }
    }
  }
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

TEST_F(TrackMenuEventsTest, the_host_may_act_while_it_draws_and_makes_texts_and_pictures) {
  const std::vector<std::function<void()>> acts = {
      [this] { menu.SetVisible(false); },
      [this] {
        menu.SetVisible(false);
        menu.SetActive(false);
      },
      [this] { menu.SetKorvane(nullptr); },
      [this] { menu.SetRenderer(nullptr); },
      [this] { menu.Destroy(); },
      [this] { menu.AddRegion({}); },
      [this] { menu.SetRegionMap(static_cast<TextureID>(OTHER_MAP)); },
      [this] { menu.OnMouseMove(370, 330); },
      [this] { menu.OnLeftMouseDown(370, 330); },
  };
  for (std::size_t act = 0; act < acts.size(); ++act) {
    for (int place = 0; place < 4; ++place) {
      menu.SetKorvane(&hub);
      menu.SetRenderer(&renderer);
      Prepare();
      for (const char* const name : {"red", "blue"}) {
        Region region = MakeRegion(name, name[0] == 'r' ? Vector3(1, 0, 0) : Vector3(0, 0, 1), 91);
        region.tooltipString = static_cast<StringID>(5);
        region.labelString = static_cast<StringID>(60);
        menu.AddRegion(region);
      }
      bool done = false;
      const auto once = [&] {
        if (!std::exchange(done, true)) acts[act]();
      };
      if (place == 0) renderer.onRender = once;
      if (place == 1) renderer.onTooltip = once;
      if (place == 2) renderer.onImage = once;
      if (place == 3) renderer.onMenu = once;
      menu.SetVisible(true);
      menu.OnMouseMove(400, 300);
      menu.Draw();
      menu.SetRegionMap(static_cast<TextureID>(MAP));
      menu.OpenMenu();
      EXPECT_TRUE(done) << act << " " << place;
      renderer.onRender = renderer.onTooltip = renderer.onImage = renderer.onMenu = nullptr;
      menu.OnLeftMouseUp(0, 0);
      menu.Destroy();
      EXPECT_EQ(renderer.CountCalls("BeginRender"), renderer.CountCalls("EndRender"));
      renderer.ApplyTextureUsage();
      EXPECT_EQ(renderer.GetLiveIconCount(), 0) << act << " " << place;
    }
  }
}

TEST_F(TrackMenuEventsTest, bears_any_number) {
  constexpr int LOW = std::numeric_limits<int>::min();
  constexpr int HIGH = std::numeric_limits<int>::max();
  const int numbers[] = {LOW, LOW + 1, -1, 0, 1, 300, 4096, HIGH - 1, HIGH};
  for (const bool visible : {true, false}) {
    for (const int x : numbers) {
      for (const int y : numbers) {
        Open();
        menu.SetVisible(visible);
        menu.OnMouseMove(x, y);
        menu.OnLeftMouseDown(y, x);
        menu.Draw();
        menu.OnLeftMouseUp(x, x);
        menu.SetViewportSize(x, y);
        menu.SetLocation(x, y);
        menu.Draw();
        menu.OnMouseMove(y, x);
        EXPECT_TRUE(menu.GetPlace().IsFinite());
        menu.Destroy();
      }
    }
  }
  const int sizes[] = {LOW, -1, 0, 1, 4096};
  for (const int width : sizes) {
    for (const int height : sizes) {
      Open();
      menu.SetSize(width, height);
      menu.SetOpacity(std::numeric_limits<float>::quiet_NaN());
      menu.OnMouseMove(700, 20);
      menu.Draw();
      EXPECT_TRUE(menu.GetPlace().IsFinite());
      menu.OnKeyDown(static_cast<KeyID>(width));
      menu.Destroy();
    }
  }
}

TEST_F(TrackMenuEventsTest, a_map_of_one_pixel_or_of_none_harms_nothing) {
  for (const int alpha : {0, 255}) {
    MapImage image(1, 1);
    image.Fill(0, 0, 1, 1, 255, 0, 0, alpha);
    renderer.images[MAP] = image;
    Open();
    menu.OnMouseMove(700, 100);
    menu.Draw();
    EXPECT_TRUE(menu.GetPlace().IsFinite());
    EXPECT_EQ(GetActive(), "blue");  // rounded up, no place within the box has the only column
    menu.Destroy();
  }
}

// ---- costs ----

TEST(TrackMenuCosts, a_move_and_a_frame_allocate_nothing) {
  ManualPlatform platform;
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  CountingRenderer renderer;
  OpenTrackMenu menu;
  menu.SetRendererShared(true);
  menu.SetKorvane(&hub);
  menu.SetRenderer(&renderer);
  menu.SetRegionMap(static_cast<TextureID>(17));
  menu.SetViewportSize(800, 600);
  for (int i = 0; i < 12; ++i) {
    TrackMenu::Region region;
    region.color = Vector3(i % 2, 1, 1);
    region.sticky = i == 0;
    region.listener = new NullRegionListener(&menu);
    region.icon = new ResourceIcon2D(static_cast<TextureID>(20 + i));
    region.tooltipString = static_cast<StringID>(i);
    menu.AddRegion(region);
  }
  menu.SetVisible(true);
  menu.OnMouseMove(400, 300);
  menu.Draw();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    menu.OnMouseMove(400 + 3 * i, 300 + i);
    menu.Draw();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(renderer.begun, 100);
}

}  // namespace
