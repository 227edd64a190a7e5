// The wedges that lift and roll the camera, and their gauges; and the one that picks the pivot.
#include "disc/height_region_listener.h"
#include "disc/pivot_pick_region_listener.h"
#include "disc/roll_region_listener.h"
#include "disc/wedge_scene.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

struct HeightWedge : WedgeScene<HeightRegionListener> {
  HeightWedge() {
    Make();
    Settings().global_bound_radius = 8.0;
  }
};
struct RollWedge : WedgeScene<RollRegionListener> {
  RollWedge() { Make(); }
};
struct PickWedge : WedgeScene<PivotPickRegionListener> {
  PickWedge() { Make(); }
};

// ---- height ----

TEST_F(HeightWedge, a_drag_is_the_height_operation_with_one_record) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(TakeAsked(), Lines({"begin 7 at 500, 467"}));
  Move(500, 340);
  EXPECT_EQ(TakeAsked(), Lines({"update 7 at 500, 427"}));
  Frame();
  EXPECT_GT(hub.view.eye.y, 0.0);
  Forget();
  Release(500, 340);
  EXPECT_EQ(TakeAsked(), Lines({"end 7"}));
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_EQ(GetElementCount(), 2);
}

// The scene reaches from -8 to 8. An eye at 0 is in the middle, 0 of the range from there; at 4 it is a
// quarter above, 86 / 4 = 21.5 pixels.
TEST_F(HeightWedge, the_gauge_shows_the_height_of_the_start_and_of_now) {
  Press();
  auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_TRUE(IsDrawn(drawn[0], 95, {500, 300}, 128, 128));
  EXPECT_TRUE(IsDrawn(drawn[1], 96, {500, 300}, 32, 32));
  EXPECT_TRUE(IsDrawn(drawn[2], 97, {500, 300}, 32, 32));
  Release(500, 300);

  hub.view.eye.y = hub.view.centre.y = 4;
  Press();
  drawn = Draw();
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_TRUE(IsDrawn(drawn[1], 96, {500, 321.5}, 32, 32));
  hub.view.eye.y = -8;
  hub.view.centre.y = -8;
  const_cast<CameraParameters&>(hub.GetCameraParameters()).eye.y = -8;  // as a frame does
  drawn = Draw();
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_TRUE(IsDrawn(drawn[1], 96, {500, 321.5}, 32, 32));
  EXPECT_TRUE(IsDrawn(drawn[2], 97, {500, 300 - 43}, 32, 32));
}

TEST_F(HeightWedge, the_gauge_counts_in_points) {
  Settings().pixels_per_point = 1.5F;
  hub.view.eye.y = hub.view.centre.y = 4;
  Press();
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_TRUE(IsDrawn(drawn[0], 95, {500, 300}, 192, 192));
  EXPECT_TRUE(IsDrawn(drawn[1], 96, {500, 332.25}, 48, 48));
}

TEST_F(HeightWedge, a_wrapped_press_shows_its_gauge_in_the_view) {
  struct {
    int x;
    int y;
    Vector2 place;
  } const rows[] = {{1024 + 30, 768 + 20, {30, 20}}, {-24, -68, {1000, 700}}, {0, 0, {1024, 768}}};
  for (const auto& row : rows) {
    Press(row.x, row.y);
    const auto drawn = Draw();
    ASSERT_FALSE(drawn.empty());
    EXPECT_TRUE(IsDrawn(drawn[0], 95, row.place, 128, 128));
    Release(row.x, row.y);
  }
}

TEST_F(HeightWedge, without_its_operation_only_the_gauge_shows) {
  Press();
  hub.EndOperation(OPERATION_HEIGHT);
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_EQ(drawn[0].id, 95);
  Release(500, 300);
  EXPECT_TRUE(Draw().empty());
}

TEST_F(HeightWedge, its_pictures_are_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTextures(), std::vector<int>({35, 95, 96, 97}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTextures().empty());
}

TEST_F(HeightWedge, a_menu_that_is_put_away_ends_it_once) {
  Press();
  Move(500, 340);
  Frame();
  PutAway();
  EXPECT_FALSE(IsOperating(OPERATION_HEIGHT));
  EXPECT_EQ(GetElementCount(), 2);
  Release(500, 340);
  EXPECT_EQ(GetElementCount(), 2);
}

TEST_F(HeightWedge, a_press_whose_release_went_missing_ends_before_the_next) {
  Press();
  Move(500, 340);
  Frame();
  Forget();
  Press(400, 200);
  EXPECT_EQ(TakeAsked(), Lines({"end 7", "begin 7 at 400, 567"}));
}

TEST_F(HeightWedge, a_hub_that_dies_takes_its_operation_along) {
  auto other = std::make_unique<ToolHub>(hub.view);
  menu->SetKorvane(other.get());
  Press();
  EXPECT_TRUE(other->IsOperationActive(OPERATION_HEIGHT));
  other.reset();
  Move(500, 320);
  EXPECT_TRUE(Draw().empty());
  Release(500, 320);
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(HeightWedge, a_move_and_a_frame_allocate_nothing) {
  renderer.quiet = true;
  hub.recording = false;
  Press();
  Frame();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    Move(500, 301 + i);
    Frame();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

// ---- roll ----

TEST_F(RollWedge, a_drag_is_the_roll_operation_around_the_marked_pivot) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_TRUE(ball.IsVisible());
  EXPECT_EQ(TakeAsked(), Lines({"begin 9 at 500, 467"}));
  Move(600, 300);
  EXPECT_EQ(TakeAsked(), Lines({"update 9 at 600, 467"}));
  Frame();
  Forget();
  Release(600, 300);
  EXPECT_EQ(TakeAsked(), Lines({"end 9"}));
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(GetElementCount(), 2);
}

// The pivot (1, 2, -3) lies 13 before the eye at (0, 0, 10), where half the view of 45 degrees is 13 wide and
// high: 1 / 13 and 2 / 13 of half a view off the middle.
TEST_F(RollWedge, the_ring_counts_in_points) {
  Settings().pixels_per_point = 3.0F;
  Press();
  const auto drawn = Draw();
  ASSERT_FALSE(drawn.empty());
  EXPECT_EQ(drawn[0].bounds.halfExtent, Vector2(192, 192));
}

TEST_F(RollWedge, the_ring_stands_around_the_pivot) {
  Press();
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_TRUE(IsDrawn(drawn[0], 101, {512.0 + 512.0 / 13.0, 384.0 + 384.0 * 2.0 / 13.0}, 128, 128));
}

// Half of 20 x 16.
TEST_F(RollWedge, in_orthographic_the_ring_stands_by_the_size_of_the_view) {
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  hub.view.ortho_width = 20;
  hub.view.ortho_height = 16;
  Press();
  const auto drawn = Draw();
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_TRUE(IsDrawn(drawn[0], 101, {512.0 + 512.0 / 10.0, 384.0 + 384.0 * 2.0 / 8.0}, 128, 128));
}

TEST_F(RollWedge, an_adjuster_of_the_aspect_ratio_moves_the_ring) {
  struct Halving : AspectRatioAdjuster {
    void Adjust(const CameraParameters& /*camera*/, int width, int height, double& across,
                double& up) override {
      EXPECT_EQ(width, 1024);
      EXPECT_EQ(height, 768);
      across /= 2.0;
      up /= 4.0;
    }
  } adjuster;
  SetAspectRatioAdjuster(&adjuster);
  Press();
  const auto drawn = Draw();
  SetAspectRatioAdjuster(nullptr);
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_TRUE(IsDrawn(drawn[0], 101, {512.0 + 512.0 * 2.0 / 13.0, 384.0 + 384.0 * 8.0 / 13.0}, 128, 128));
}

// From 45.5 to 39.5 pixels above the middle of the ring, 1.5 to either side.
TEST_F(RollWedge, the_tick_stands_where_up_was) {
  hub.view.pivot = {0, 0, 0};
  Press();
  Draw();
  ASSERT_EQ(renderer.GetGeometry().size(), 1U);
  const auto& tick = renderer.GetGeometry()[0];
  EXPECT_EQ(tick.material.texture, TEXTURE_NONE);
  const float black[] = {0.0F, 0.0F, 0.0F, 0.75F};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(tick.material.colour[i], black[i]);
  EXPECT_TRUE(tick.texCoords.empty());
  const Vector2 corners[] = {{513.5, 429.5}, {510.5, 429.5}, {510.5, 423.5}, {513.5, 423.5}};
  ASSERT_EQ(tick.vertices.size(), 12U);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(tick.vertices[3 * i], corners[i].x, 1e-4);
    EXPECT_NEAR(tick.vertices[3 * i + 1], corners[i].y, 1e-4);
    EXPECT_EQ(tick.vertices[3 * i + 2], 0.0F);
  }
}

// A camera that leans to its right by a quarter sees the old up on its left.
TEST_F(RollWedge, the_tick_turns_with_the_scene) {
  hub.view.pivot = {0, 0, 0};
  Press();
  const_cast<CameraParameters&>(hub.GetCameraParameters()).up = {1, 0, 0};  // as a frame does
  Draw();
  ASSERT_EQ(renderer.GetGeometry().size(), 1U);
  const auto& vertices = renderer.GetGeometry()[0].vertices;
  EXPECT_NEAR(vertices[0], 512.0 - 45.5, 1e-4);
  EXPECT_NEAR(vertices[1], 384.0 + 1.5, 1e-4);
  EXPECT_NEAR(vertices[6], 512.0 - 39.5, 1e-4);
  EXPECT_NEAR(vertices[7], 384.0 - 1.5, 1e-4);
}

TEST_F(RollWedge, without_its_operation_only_the_ring_shows) {
  Press();
  hub.EndOperation(OPERATION_ROLL);
  EXPECT_EQ(Draw().size(), 1U);
  EXPECT_TRUE(renderer.GetGeometry().empty());
}

TEST_F(RollWedge, a_pivot_in_the_eye_has_no_ring) {
  hub.view.pivot = hub.view.eye;
  Press();
  EXPECT_TRUE(Draw().empty());
}

TEST_F(RollWedge, its_picture_is_held_while_the_menu_is_active) {
  EXPECT_EQ(renderer.GetHeldTextures(), std::vector<int>({35, 101}));
  PutAway();
  EXPECT_TRUE(renderer.GetHeldTextures().empty());
}

TEST_F(RollWedge, a_menu_that_is_put_away_hides_the_ball) {
  Press();
  PutAway();
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_FALSE(IsOperating(OPERATION_ROLL));
}

TEST_F(RollWedge, a_menu_that_is_put_away_without_a_press_leaves_the_ball_of_others) {
  ball.SetVisible(true);
  PutAway();
  EXPECT_TRUE(ball.IsVisible());
}

// ---- the pivot pick ----

TEST_F(PickWedge, the_pivot_goes_to_what_is_under_the_cursor) {
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
  EXPECT_TRUE(ball.IsVisible());
  renderer.scene = [](const Vector3&, const Vector3&) { return std::optional<Vector3>({1, 1, 1}); };
  Move(510, 310);
  EXPECT_EQ(hub.view.pivot, Vector3(1, 1, 1));
  Release(510, 310);
  EXPECT_EQ(hub.view.pivot, Vector3(1, 1, 1));
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(PickWedge, each_step_sizes_the_ball_applies_and_asks_for_a_frame) {
  Press();
  hub.TakeLog();
  Move(510, 310);
  EXPECT_EQ(hub.TakeLog(), Lines({"query", "apply", "request"}));
  // A fortieth of the view, 2 x 8 wide at the ball.
  Move(511, 310);
  ball.SetPosition({0, 0, 2});
  Move(512, 310);
  EXPECT_NEAR(ball.GetSize(), 16.0 * 0.025, 1e-12);
}

TEST_F(PickWedge, a_pick_that_ends_outside_the_viewport_puts_the_old_pivot_back) {
  struct {
    int x;
    int y;
    bool outside;
  } const rows[] = {{-1, 300, true}, {1025, 300, true},  {500, -1, true}, {500, 769, true},
                    {0, 300, false}, {1024, 300, false}, {500, 0, false}, {500, 768, false}};
  for (const auto& row : rows) {
    hub.view.pivot = {1, 2, -3};
    Press();
    Move(row.x, row.y);
    EXPECT_EQ(ball.IsVisible(), !row.outside) << row.x << ", " << row.y;
    Release(row.x, row.y);
    EXPECT_EQ(hub.view.pivot, row.outside ? Vector3(1, 2, -3) : Vector3(0, 0, 2)) << row.x << ", " << row.y;
  }
}

TEST_F(PickWedge, a_pick_that_ends_off_the_scene_puts_the_old_pivot_back) {
  Press();
  renderer.scene = nullptr;
  Move(510, 310);
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
  EXPECT_FALSE(ball.IsVisible());
  Release(510, 310);
  EXPECT_EQ(hub.view.pivot, Vector3(1, 2, -3));
}

TEST_F(PickWedge, over_nothing_the_cursor_says_so_while_the_button_is_down) {
  Press();
  Forget();
  Draw();
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 0);
  renderer.scene = nullptr;
  Move(510, 310);
  Draw();
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_NO_TARGET);
  Release(510, 310);
  renderer.SetCursorID(CURSOR_ARROW);
  Draw();
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ARROW);
}

TEST_F(PickWedge, a_menu_that_is_put_away_ends_the_pick_as_a_release) {
  Press();
  renderer.scene = nullptr;
  Move(510, 310);
  PutAway();
  EXPECT_EQ(hub.view.pivot, Vector3(1, 2, -3));
  hub.view.pivot = {5, 5, 5};
  PutAway();
  menu->SetActive(true);
  PutAway();
  EXPECT_EQ(hub.view.pivot, Vector3(5, 5, 5));
}

TEST_F(PickWedge, another_hub_does_not_get_the_pivot_of_the_first) {
  Press();
  renderer.scene = nullptr;
  Move(510, 310);
  ToolHub other(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  menu->SetKorvane(&other);
  Release(510, 310);
  EXPECT_EQ(other.view.pivot, Vector3(0, 0, 0));
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
}

TEST_F(PickWedge, a_camera_that_is_no_number_is_not_applied) {
  hub.view.eye.x = std::numeric_limits<double>::quiet_NaN();
  Press();
  Release(500, 300);
  EXPECT_EQ(hub.applied, 0);
}

}  // namespace
