// The wedge that moves towards what is under the cursor.
#include "disc/forward_region_listener.h"

#include <cmath>

#include "disc/wedge_scene.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

// The scene is the point (0, 0, 2), and nothing stands behind the eye unless the test says so.
struct ForwardWedge : WedgeScene<ForwardRegionListener> {
  ForwardWedge() {
    Make();
    Settings().global_bound_radius = 3.0;
    Settings().global_bound_centre = {0, 0, 1};
    Settings().zoom_in_snap_size = 11;
    Settings().zoom_out_snap_size = 12;
    Settings().zoom_min_limit_motion = false;
    Settings().zoom_sense_reversed = true;
    Settings().zoom_back_distance = 77.0;
    Settings().orbit_multiplier = 4.0;
    // A ray that goes away from the eye meets the scene, the way back does not.
    renderer.scene = [this](const Vector3&, const Vector3& direction) -> std::optional<Vector3> {
      if (direction.z < 0) return Vector3(0, 0, 2);
      return behind;
    };
  }
  void ExpectSettingsRestored() {
    EXPECT_EQ(Settings().zoom_in_snap_size, 11);
    EXPECT_EQ(Settings().zoom_out_snap_size, 12);
    EXPECT_FALSE(Settings().zoom_min_limit_motion);
    EXPECT_TRUE(Settings().zoom_sense_reversed);
    EXPECT_EQ(Settings().zoom_back_distance, 77.0);
    EXPECT_EQ(Settings().orbit_multiplier, 4.0);
  }
  void Miss() { renderer.scene = nullptr; }

  std::optional<Vector3> behind;
};

// ---- the press ----

TEST_F(ForwardWedge, a_press_moves_the_pivot_to_the_scene_and_zooms) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(TakeAsked(), Lines({"apply", "begin 5 at 500, 467"}));
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10));
  EXPECT_TRUE(ball.IsVisible());
  EXPECT_EQ(ball.GetPosition(), Vector3(0, 0, 2));
  EXPECT_NEAR(ball.GetSize(), 16.0 * 0.025, 1e-12);  // a fortieth of the view, 2 x 8 wide there
}

TEST_F(ForwardWedge, a_press_lends_the_settings_of_a_zoom_that_rests_at_both_ends) {
  Press();
  EXPECT_EQ(Settings().zoom_in_snap_size, 200);
  EXPECT_EQ(Settings().zoom_out_snap_size, 200);
  EXPECT_TRUE(Settings().zoom_min_limit_motion);
  EXPECT_FALSE(Settings().zoom_sense_reversed);
  Release(500, 300);
  ExpectSettingsRestored();
}

TEST_F(ForwardWedge, a_press_leaves_orthographic_where_it_may) {
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  Settings().auto_switch_projection = true;
  Press();
  EXPECT_FALSE(hub.view.IsOrthographic());
}

TEST_F(ForwardWedge, the_bounds_of_the_scene_are_brought_up_to_date) {
  Settings().scene_bound_radius = 99.0;
  Press();
  EXPECT_EQ(Settings().scene_bound_radius, 3.0);
}

// The way back is looked along the opposite of the ray of the pixel (500, 300).
TEST_F(ForwardWedge, the_space_behind_is_looked_for_along_the_way_back) {
  Press();
  Vector3 origin;
  Vector3 ray;
  GetScreenRay(500, 300, WIDTH, HEIGHT, hub.view, origin, ray);
  EXPECT_EQ(renderer.rays, 2);
  EXPECT_EQ(renderer.lastOrigin, Vector3(0, 0, 2));
  EXPECT_LT((renderer.lastDirection + ray).Length(), 1e-12);
}

// Twice the radius, 6, by the tangent of 45 degrees, 1, from the centre of the scene, 9 before the eye.
TEST_F(ForwardWedge, with_nothing_behind_the_zoom_may_go_back_to_see_the_whole_scene) {
  Press();
  EXPECT_NEAR(Settings().zoom_back_distance, 6.0 - 9.0, 1e-12);
}

// The greater span is that of the narrower angle: 6 / tan 30 degrees.
TEST_F(ForwardWedge, the_narrower_angle_decides_how_far_back) {
  struct {
    double left, right, top, bottom;
    double narrow;
  } const rows[] = {{10, 45, 30, 20, 30}, {30, 20, 45, 10, 30}, {45, 10, 45, 10, 45}};
  for (const auto& row : rows) {
    hub.view = WithAsymmetricFrustum(hub.view, row.left, row.right, row.top, row.bottom);
    Press();
    EXPECT_NEAR(Settings().zoom_back_distance, 6.0 / std::tan(row.narrow * std::acos(-1.0) / 180.0) - 9.0,
                1e-9);
    Release(500, 300);
    hub.EndShot();
  }
}

TEST_F(ForwardWedge, something_behind_limits_the_way_back_to_it) {
  behind = Vector3(0, 0, 14);
  Press();
  EXPECT_NEAR(Settings().zoom_back_distance, 4.0, 1e-12);
}

// Orthographic, 6 in all; the centre goes along the view to the depth of the point, 8 before, and the eye
// keeps its distance of 10.
TEST_F(ForwardWedge, in_orthographic_the_camera_shifts_to_the_depth_of_the_point) {
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  Settings().auto_switch_projection = false;
  behind = Vector3(0, 0, 14);
  Press();
  EXPECT_EQ(hub.view.centre, Vector3(0, 0, 2));
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 12));
  EXPECT_NEAR(Settings().zoom_back_distance, 6.0 - 11.0, 1e-12);
}

// ---- the drag ----

TEST_F(ForwardWedge, a_drag_hands_on_the_cursor_and_leaves_one_record) {
  Press();
  Forget();
  Move(500, 340);
  EXPECT_EQ(TakeAsked(), Lines({"update 5 at 500, 427"}));
  Frame();
  EXPECT_LT(hub.view.eye.z, 10.0);
  Forget();
  Release(500, 340);
  EXPECT_EQ(TakeAsked(), Lines({"end 5"}));
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 2);
  ExpectSettingsRestored();
}

// ---- the click ----

TEST_F(ForwardWedge, a_click_that_hits_nothing_starts_nothing_and_restores_the_settings) {
  Miss();
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(Settings().zoom_in_snap_size, 200);
  Move(510, 310);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  EXPECT_EQ(hub.applied, 0);
  Release(510, 310);
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_EQ(hub.shotsBegun, 0);
  EXPECT_EQ(GetElementCount(), 0);
  ExpectSettingsRestored();
}

TEST_F(ForwardWedge, a_click_flies_a_third_of_the_way_with_the_menu_hidden_until_then) {
  Click();
  ExpectSettingsRestored();
  EXPECT_EQ(hub.zoomShot.direction, ZoomShotParameters::DIRECTION_IN);
  EXPECT_EQ(hub.zoomShot.anchor, TARGET_CAM_START);
  EXPECT_EQ(hub.zoomShot.duration, 0.5);
  EXPECT_EQ(hub.zoomShot.amount, 1.0 / 3.0);
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_TRUE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 1);
  for (int i = 0; i < 5; ++i) {
    Frame(80);
    EXPECT_FALSE(menu->GetVisible());
  }
  Frame(200);
  Frame();
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_NEAR(hub.view.eye.z, 10.0 - 8.0 / 3.0, 1e-9);
  EXPECT_EQ(GetElementCount(), 2);
  EXPECT_TRUE(Draw().empty());
}

TEST_F(ForwardWedge, a_flight_that_is_refused_brings_the_menu_back_at_the_next_frame) {
  hub.refusesShots = true;
  Click();
  EXPECT_FALSE(menu->GetVisible());
  Frame();
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(ForwardWedge, a_press_in_the_flight_takes_it_up_anew) {
  Click();
  Frame(100);
  Frame(100);
  Press();
  EXPECT_TRUE(IsOperating(OPERATION_ZOOM));
  Move(500, 320);
  Release(500, 320);
  EXPECT_TRUE(menu->GetVisible());
  hub.EndShot();
  Frame();
  EXPECT_EQ(hub.shotsBegun, 1);
}

TEST_F(ForwardWedge, a_menu_that_is_put_away_ends_the_flight) {
  Click();
  Frame(100);
  Frame(100);
  PutAway();
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 2);
}

// The end of a flight is seen in the next frame; a host may have begun a move of its own by then.
TEST_F(ForwardWedge, a_menu_that_is_put_away_leaves_a_move_of_the_host_alone) {
  CenterShotParameters ofHost;
  ofHost.point = Vector3(1, 0, 0);
  ofHost.duration = 1.0;
  Click();
  Frame(100);
  hub.BeginShot(ofHost);
  PutAway();
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 2) << "the flight's record is closed all the same";
  hub.EndShot();
}

TEST_F(ForwardWedge, a_menu_that_is_put_away_after_a_refused_flight_leaves_a_move_of_the_host_alone) {
  CenterShotParameters ofHost;
  ofHost.duration = 1.0;
  hub.BeginShot(ofHost);
  hub.refusesShots = true;
  Click();
  PutAway();
  EXPECT_TRUE(hub.IsShotActive());
  hub.EndShot();
}

// The menu is given another hub while the camera of the first one flies.
TEST_F(ForwardWedge, a_flight_ends_in_the_hub_in_which_it_was_begun) {
  ToolHub other(hub.view);
  CenterShotParameters ofHost;
  ofHost.duration = 1.0;
  other.BeginShot(ofHost);
  Click();
  menu->SetKorvane(&other);
  PutAway();
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_TRUE(other.IsShotActive());
  menu->SetKorvane(&hub);
}

TEST_F(ForwardWedge, a_menu_that_is_put_away_in_the_press_restores_the_settings) {
  Press();
  PutAway();
  ExpectSettingsRestored();
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(ForwardWedge, the_first_settings_come_back_after_a_release_that_went_missing) {
  Press();
  Press();
  Release(500, 300);
  ExpectSettingsRestored();
}

TEST_F(ForwardWedge, settings_are_given_back_to_the_hub_that_lent_them) {
  Press();
  ToolHub other(hub.view);
  menu->SetKorvane(&other);
  Release(500, 300);
  ExpectSettingsRestored();
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_FALSE(other.IsOperationActive(OPERATION_ALL));
  hub.EndShot();
  other.EndShot();
  PutAway();
}

// ---- the gauge ----

// Of the drag's progress t: a square of (1 - t) 70 + t 18, at least 10, 66 t above 50 below.
TEST_F(ForwardWedge, the_gauge_shows_the_way_of_a_drag) {
  Press();
  auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_TRUE(IsDrawn(drawn[0], 98, {500, 300 - 22}, 128, 256));
  EXPECT_EQ(drawn[0].opacity, 0.8);
  EXPECT_TRUE(IsDrawn(drawn[1], 99, {500, 300 - 50 - 22}, 70, 70));

  // A sensitivity of 2 a pixel, and one pixel up: half the way, (1 - 0.5) / (1 - 0.1) of it to the halt.
  Settings().zoom_sensitivity = 2.0;
  Settings().zoom_min_limit = 0.1;
  Move(500, 301);
  hub.PerformOperations();
  const double t = 0.5 / 0.9;
  drawn = Draw();
  ASSERT_EQ(drawn.size(), 2U);
  const double size = (1 - t) * 70 + t * 18;
  EXPECT_TRUE(IsDrawn(drawn[1], 99, {500, 300 - 50 + t * 66 - 22}, size, size));
}

TEST_F(ForwardWedge, the_gauge_and_the_way_that_rests_count_in_points) {
  Settings().pixels_per_point = 2.0F;
  Press();
  auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_TRUE(IsDrawn(drawn[0], 98, {500, 300 - 44}, 256, 512));
  EXPECT_TRUE(IsDrawn(drawn[1], 99, {500, 300 - 100 - 44}, 140, 140));
  EXPECT_EQ(Settings().zoom_in_snap_size, 400);
  EXPECT_EQ(Settings().zoom_out_snap_size, 400);
}

TEST_F(ForwardWedge, what_the_gauge_shows_never_gets_too_small) {
  Settings().zoom_min_limit_multiplier = 1.0;
  Press();
  Settings().zoom_sensitivity = 2.0;
  Settings().zoom_min_limit = 0.5;
  // The halt is a pixel on, then come the 200 that rest; what is beyond counts in widths of the view:
  // 1 + 1535 / 768 in this one.
  Move(500, 300 + 1 + 200 + 1535);
  hub.PerformOperations();
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_EQ(drawn[1].bounds.halfExtent, Vector2(5, 5));
}

TEST_F(ForwardWedge, a_flight_shows_half_of_the_gauge) {
  Click();
  Frame(0);
  Frame(250);
  Frame(0);
  const Shot* const shot = hub.GetActiveShot();
  ASSERT_NE(shot, nullptr);
  EXPECT_GT(shot->GetUnitTime(), 0.1);
  const double t = shot->GetUnitTime() / 2.0;
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 2U);
  const double size = (1 - t) * 70 + t * 18;
  EXPECT_TRUE(IsDrawn(drawn[1], 99, {500, 300 - 50 + t * 66 - 22}, size, size));
}

TEST_F(ForwardWedge, a_miss_shows_the_note_and_the_cursor_of_no_target) {
  Miss();
  Press();
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_TRUE(IsDrawn(drawn[0], -31, {512, 40}, 200, 40));
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_NO_TARGET);
  Release(500, 300);
  EXPECT_TRUE(Draw().empty());
}

TEST_F(ForwardWedge, its_pictures_and_its_note_are_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTextures(), std::vector<int>({35, 98, 99}));
  EXPECT_EQ(renderer.GetHeldTexts(), std::vector<int>({31}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTextures().empty());
  EXPECT_TRUE(renderer.GetHeldTexts().empty());
}

TEST_F(ForwardWedge, a_camera_that_is_no_number_is_not_applied) {
  hub.view.eye.x = std::numeric_limits<double>::quiet_NaN();
  Press();
  Move(510, 310);
  Draw();
  Release(510, 310);
  EXPECT_EQ(hub.applied, 0);
  ExpectSettingsRestored();
}

TEST_F(ForwardWedge, a_move_and_a_frame_allocate_nothing) {
  renderer.quiet = true;
  hub.recording = false;
  Press();
  Move(501, 301);
  Frame();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    Move(501 + i % 3, 301);
    Frame();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

}  // namespace
