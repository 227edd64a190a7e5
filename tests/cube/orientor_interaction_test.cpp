#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include "cube/gesture_scene.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

constexpr int FRONT = 1;
constexpr int LETTER = 26;
constexpr int RING = 45;
constexpr int INT_LOW = std::numeric_limits<int>::min();
constexpr int INT_HIGH = std::numeric_limits<int>::max();

class OrientorInteractionTest : public ::testing::Test, protected GestureScene {
 protected:
  void BeginShot() {
    hub.BeginShot(TransitionShotParameters{LookAlong(Vector3(0.0, 0.0, -1.0)), 1.0, 1.0});
    journal.Take();
  }
  // From a press at (500, 300) ten pixels to the right.
  void DragPart(int part) {
    PressOnPart(part);
    cube.OnMouseMove(510, 300);
  }
};

// ---- the press ----

TEST_F(OrientorInteractionTest, a_press_needs_a_hub_a_visible_cube_that_reacts_and_no_shot) {
  cube.activePart = FRONT;
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(cube.OnLeftMouseDown(1, 2));
  cube.SetKorvane(&hub);
  cube.activePart = FRONT;
  Parameters().visible = false;
  EXPECT_FALSE(cube.OnLeftMouseDown(1, 2));
  Parameters().visible = true;
  cube.activePart = FRONT;
  Parameters().disabled = true;
  EXPECT_FALSE(cube.OnLeftMouseDown(1, 2));
  Parameters().disabled = false;
  BeginShot();
  EXPECT_FALSE(cube.OnLeftMouseDown(1, 2));
  EXPECT_FALSE(cube.mousePressed);
  EXPECT_FALSE(cube.mouseCaptured);
  EXPECT_EQ(cube.pressX, 0);
  hub.EndShot();
  EXPECT_TRUE(cube.OnLeftMouseDown(1, 2));
}

TEST_F(OrientorInteractionTest, a_press_notes_where_it_was_and_starts_the_drag_anew) {
  cube.activePart = FRONT;
  cube.activeOverlayPart = 2;
  cube.accumulatedDragX = 7;
  cube.accumulatedDragY = 8;
  EXPECT_TRUE(cube.OnLeftMouseDown(12, 34));
  EXPECT_EQ(cube.pressedOverlayPart, 2);
  EXPECT_EQ(cube.accumulatedDragX, 0);
  EXPECT_EQ(cube.accumulatedDragY, 0);
  EXPECT_FALSE(cube.dragging);
  EXPECT_TRUE(cube.mousePressed);
  EXPECT_TRUE(cube.mouseCaptured);
  EXPECT_EQ(cube.pressX, 12);
  EXPECT_EQ(cube.pressY, 34);
  EXPECT_EQ(cube.lastX, 12);
  EXPECT_EQ(cube.lastY, 34);
}

TEST_F(OrientorInteractionTest, a_press_beside_the_parts_is_noted_but_not_kept) {
  EXPECT_FALSE(cube.OnLeftMouseDown(12, 34));
  EXPECT_TRUE(cube.mousePressed);
  EXPECT_FALSE(cube.mouseCaptured);
  EXPECT_FALSE(cube.OnLeftMouseUp(12, 34));
  EXPECT_FALSE(cube.mousePressed);
}

TEST_F(OrientorInteractionTest, a_press_is_kept_on_cube_letter_ring_and_overlay) {
  for (const int part : {0, 25, 26, 29, 30, 57}) {
    cube.activePart = part;
    EXPECT_TRUE(cube.OnLeftMouseDown(0, 0)) << part;
    EXPECT_TRUE(cube.mouseCaptured) << part;
    cube.mouseCaptured = false;
  }
  cube.activePart = -1;
  for (int part = 0; part <= 5; ++part) {
    cube.activeOverlayPart = part;
    EXPECT_TRUE(cube.OnLeftMouseDown(0, 0)) << part;
  }
  Parameters().draw_overlay = false;
  EXPECT_FALSE(cube.OnLeftMouseDown(0, 0));
}

TEST_F(OrientorInteractionTest, a_press_on_the_cube_alone_leaves_the_sense_of_a_compass_drag_alone) {
  cube.reverseDragX = cube.reverseDragY = true;
  PressOnPart(25);
  EXPECT_TRUE(cube.reverseDragX);
  EXPECT_TRUE(cube.reverseDragY);
}

// ---- the release ----

TEST_F(OrientorInteractionTest, the_release_of_a_kept_press_is_kept_once) {
  PressOnPart(FRONT);
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_FALSE(cube.mouseCaptured);
  EXPECT_FALSE(cube.OnLeftMouseUp(500, 300));
}

TEST_F(OrientorInteractionTest, press_and_release_inside_the_dead_zone_on_a_face_start_a_shot) {
  PressOnPart(FRONT);
  EXPECT_FALSE(cube.OnMouseMove(504, 296));
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_TRUE(cube.OnLeftMouseUp(504, 296));
  EXPECT_EQ(journal.Take(),
            (Lines{"update 1 (504, 471)", "clicked 1", "begin view shot", "observe shot", "record begun"}));
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_FALSE(cube.mousePressed);
}

TEST_F(OrientorInteractionTest, a_move_of_five_pixels_begins_a_drag_and_starts_no_shot) {
  PressOnPart(FRONT);
  EXPECT_TRUE(cube.OnMouseMove(505, 300));
  EXPECT_TRUE(cube.IsDragActive());
  EXPECT_TRUE(cube.OnLeftMouseUp(505, 300));
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_TRUE(hub.viewShots.empty());
  EXPECT_EQ(journal.Count("clicked 1"), 0);
}

TEST_F(OrientorInteractionTest,
       a_move_of_five_pixels_on_either_axis_and_to_either_side_leaves_the_dead_zone) {
  const int steps[][2] = {{5, 0}, {-5, 0}, {0, 5}, {0, -5}, {5, 5}, {4, -5}};
  for (const auto& step : steps) {
    PressOnPart(FRONT);
    EXPECT_TRUE(cube.OnMouseMove(500 + step[0], 300 + step[1])) << step[0] << ", " << step[1];
    cube.OnLeftMouseUp(0, 0);
    PressOnPart(FRONT);
    EXPECT_FALSE(cube.OnMouseMove(500 + step[0] * 4 / 5, 300 + step[1] * 4 / 5));
    cube.activePart = -1;  // so that the release is no click
    cube.OnLeftMouseUp(0, 0);
  }
}

TEST_F(OrientorInteractionTest, the_dead_zone_is_what_the_parameters_say) {
  Parameters().drag_dead_zone = 0;
  PressOnPart(FRONT);
  EXPECT_FALSE(cube.OnMouseMove(500, 300));
  EXPECT_TRUE(cube.OnMouseMove(501, 300));
}

TEST_F(OrientorInteractionTest, with_drag_off_a_move_does_nothing_and_the_release_is_a_click) {
  Parameters().drag_enable = false;
  PressOnPart(FRONT);
  EXPECT_FALSE(cube.OnMouseMove(600, 400));
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_TRUE(cube.OnLeftMouseUp(600, 400));
  EXPECT_EQ(journal.Take(),
            (Lines{"update 1 (600, 367)", "clicked 1", "begin view shot", "observe shot", "record begun"}));
}

TEST_F(OrientorInteractionTest, a_press_during_a_shot_is_refused_and_its_release_changes_nothing) {
  BeginShot();
  EXPECT_FALSE(PressOnPart(FRONT));
  EXPECT_FALSE(cube.OnMouseMove(600, 400));
  EXPECT_FALSE(cube.OnLeftMouseUp(600, 400));
  EXPECT_EQ(journal.Take(), Lines{"update 1 (600, 367)"});
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(OrientorInteractionTest, a_release_with_a_shot_running_and_no_drag_clears_the_flags_without_a_click) {
  PressOnPart(FRONT);
  BeginShot();
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_FALSE(cube.mousePressed);
  EXPECT_FALSE(cube.dragging);
  EXPECT_FALSE(cube.mouseCaptured);
  EXPECT_TRUE(journal.Take().empty());
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(OrientorInteractionTest, a_release_without_a_press_is_no_click) {
  cube.activePart = FRONT;
  EXPECT_FALSE(cube.OnLeftMouseUp(500, 300));
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(OrientorInteractionTest, a_release_without_a_hub_or_hidden_clears_the_flags_and_tells_nobody) {
  PressOnPart(FRONT);
  cube.SetKorvane(nullptr);
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_FALSE(cube.mousePressed);
  cube.SetKorvane(&hub);
  PressOnPart(FRONT);
  Parameters().visible = false;
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_FALSE(cube.mousePressed);
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(OrientorInteractionTest, a_release_of_a_disabled_cube_still_ends_the_drag) {
  DragPart(FRONT);
  Parameters().disabled = true;
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  EXPECT_TRUE(cube.OnLeftMouseUp(600, 300));
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_EQ(history.ended, 1);
  EXPECT_DOUBLE_EQ(Scene().orbit_multiplier, 5.0);
}

TEST_F(OrientorInteractionTest, a_click_on_the_ring_tells_and_turns_nothing) {
  PressOnPart(RING);
  cube.OnLeftMouseUp(500, 300);
  EXPECT_EQ(journal.Take(), Lines{"clicked 41"});
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(OrientorInteractionTest, a_click_on_nothing_tells_nobody) {
  cube.OnLeftMouseDown(500, 300);
  cube.OnLeftMouseUp(500, 300);
  EXPECT_TRUE(journal.Take().empty());
}

// ---- the number for the observers ----

TEST_F(OrientorInteractionTest, observers_know_every_part_by_its_number) {
  struct Row {
    int active;
    int overlay;
    int number;
  };
  const Row rows[] = {
      {-1, -1, -1}, {0, -1, 0},   {5, -1, 5},   {6, -1, 6},   {25, -1, 25}, {26, -1, 37}, {27, -1, 38},
      {28, -1, 39}, {29, -1, 40}, {30, -1, 41}, {57, -1, 41}, {-1, 0, 32},  {-1, 1, 33},  {-1, 2, 34},
      {-1, 3, 35},  {-1, 4, 36},  {-1, 5, -1},  {3, 2, 3},    {27, 2, 38},  {40, 2, 41},
  };
  for (const Row& row : rows) {
    cube.activePart = row.active;
    cube.activeOverlayPart = row.overlay;
    EXPECT_EQ(cube.GetOrientorPartForObserver(), row.number) << row.active << ", " << row.overlay;
  }
}

TEST_F(OrientorInteractionTest, a_face_whose_arrow_is_laid_is_known_as_the_arrow) {
  for (int face = 0; face < 6; ++face) {
    cube.activePart = face;
    cube.arrowFaces = 1U << face;
    EXPECT_EQ(cube.GetOrientorPartForObserver(), 26 + face);
    cube.arrowFaces = 0x3FU & ~(1U << face);
    EXPECT_EQ(cube.GetOrientorPartForObserver(), face);
  }
}

TEST_F(OrientorInteractionTest, without_the_overlay_its_parts_have_no_number) {
  cube.activeOverlayPart = 2;
  Parameters().draw_overlay = false;
  EXPECT_EQ(cube.GetOrientorPartForObserver(), OrientorObserver::PART_NONE);
}

// ---- the drag of the cube ----

TEST_F(OrientorInteractionTest, a_drag_of_the_cube_goes_through_its_steps_in_order) {
  DragPart(FRONT);
  EXPECT_EQ(journal.Take(),
            (Lines{"update 1 (510, 467)", "constrain pivot", "drag began 1", "end operation 12", "end shot",
                   "begin operation 1 (510, 467)", "record begun"}));
  EXPECT_TRUE(cube.OnMouseMove(520, 310));
  EXPECT_EQ(journal.Take(), Lines{"update 1 (520, 457)"});
  EXPECT_TRUE(cube.OnLeftMouseUp(530, 320));
  EXPECT_EQ(journal.Take(), (Lines{"drag ended", "end operation 1", "end shot", "record ended"}));
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
}

TEST_F(OrientorInteractionTest, a_drag_of_the_cube_orbits_about_the_axes_of_the_scene) {
  Scene().scene_up_direction = Vector3(0.0, 0.0, 1.0);
  Scene().scene_front_direction = Vector3(0.0, 1.0, 0.0);
  DragPart(FRONT);
  EXPECT_TRUE(Scene().do_custom_orbit);
  EXPECT_TRUE(Scene().do_snap_orbit);
  EXPECT_EQ(Scene().custom_orbit_up, Vector3(0.0, 0.0, 1.0));
  EXPECT_EQ(Scene().custom_orbit_front, Vector3(0.0, 1.0, 0.0));
  EXPECT_DOUBLE_EQ(Scene().orbit_multiplier, 10.0);
}

TEST_F(OrientorInteractionTest, a_drag_of_the_cube_keeps_the_scene_upright_by_the_parameters) {
  for (const bool upright : {false, true}) {
    Scene().preserve_orbit_up_direction = !upright;
    Scene().align_orbit_up_direction = !upright;
    Parameters().preserve_scene_up = upright;
    DragPart(FRONT);
    EXPECT_EQ(Scene().preserve_orbit_up_direction, upright);
    EXPECT_EQ(Scene().align_orbit_up_direction, upright);
    cube.OnLeftMouseUp(0, 0);
    EXPECT_EQ(Scene().preserve_orbit_up_direction, !upright);
    EXPECT_EQ(Scene().align_orbit_up_direction, !upright);
  }
}

TEST_F(OrientorInteractionTest, a_drag_of_the_cube_snaps_by_the_parameters) {
  for (const bool snap : {false, true}) {
    Parameters().drag_snap = snap;
    DragPart(FRONT);
    EXPECT_EQ(Scene().do_snap_orbit, snap);
    cube.OnLeftMouseUp(0, 0);
    EXPECT_FALSE(Scene().do_snap_orbit);
  }
}

TEST_F(OrientorInteractionTest, the_settings_come_back_when_the_drag_ends) {
  Scene().orbit_multiplier = 3.5;
  Scene().preserve_orbit_up_direction = false;
  Scene().align_orbit_up_direction = false;
  Scene().do_custom_orbit = true;
  Scene().do_snap_orbit = true;
  DragPart(FRONT);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_EQ(Scene().orbit_multiplier, 3.5);
  EXPECT_FALSE(Scene().preserve_orbit_up_direction);
  EXPECT_FALSE(Scene().align_orbit_up_direction);
  EXPECT_FALSE(Scene().do_custom_orbit);  // these two do not come back: they are off after any drag
  EXPECT_FALSE(Scene().do_snap_orbit);
}

// The multiplier is kept in a float meanwhile, so 0.1 comes back as the float nearest to it.
TEST_F(OrientorInteractionTest, at_the_end_of_a_drag_the_multiplier_is_the_old_one_narrowed_to_a_float) {
  Scene().orbit_multiplier = 0.1;
  DragPart(FRONT);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_EQ(Scene().orbit_multiplier, static_cast<double>(0.1F));
  EXPECT_NE(Scene().orbit_multiplier, 0.1);
}

TEST_F(OrientorInteractionTest, a_change_that_an_observer_makes_as_the_drag_begins_is_what_comes_back) {
  observer.onDragBegin = [&] { Scene().orbit_multiplier = 2.0; };
  DragPart(FRONT);
  EXPECT_DOUBLE_EQ(Scene().orbit_multiplier, 10.0);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_DOUBLE_EQ(Scene().orbit_multiplier, 2.0);
}

TEST_F(OrientorInteractionTest, a_drag_ends_what_else_moves_the_camera) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  PressOnPart(FRONT);
  BeginShot();
  cube.OnMouseMove(510, 300);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
}

TEST_F(OrientorInteractionTest, a_shot_begun_during_a_drag_ends_with_it) {
  DragPart(FRONT);
  BeginShot();
  cube.OnLeftMouseUp(0, 0);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(history.GetOpenCount(), 0);
}

// A camera leaning over by 30 degrees is straightened by the orbit, and the host's view follows before the
// first frame.
TEST_F(OrientorInteractionTest, a_leaning_camera_is_straightened_as_the_drag_begins) {
  CameraParameters leaning = LookAlong(Vector3(-1.0, -0.5, 0.0));
  leaning.up = Vector3(0.0, std::cos(Math::PI / 6.0), std::sin(Math::PI / 6.0));
  SetCamera(leaning);
  DragPart(FRONT);
  EXPECT_EQ(journal.Count("apply"), 1);
  EXPECT_NEAR(hub.view.up.z, 0.0, 1e-12);  // up lies in the plane of the view and the y axis
  EXPECT_GT(hub.view.up.y, 0.0);
  EXPECT_EQ(history.begun, 1);
  EXPECT_TRUE(SameBits(history.beginCamera, hub.GetCameraParameters()));
}

TEST_F(OrientorInteractionTest, an_upright_camera_is_not_applied_anew) {
  DragPart(FRONT);
  EXPECT_EQ(journal.Count("apply"), 0);
}

TEST_F(OrientorInteractionTest, the_record_closes_on_the_camera_that_the_drag_left) {
  DragPart(FRONT);
  hub.PerformOperations();
  cube.OnMouseMove(700, 300);
  hub.PerformOperations();
  cube.OnLeftMouseUp(700, 300);
  EXPECT_FALSE(CameraCheckEqual(&history.beginCamera, &history.endCamera));
  EXPECT_TRUE(CameraCheckEqual(&history.endCamera, &hub.view));
}

TEST_F(OrientorInteractionTest, a_drag_goes_on_outside_the_region_and_back) {
  DragPart(FRONT);
  EXPECT_TRUE(MoveMouse(-400, -900));
  EXPECT_TRUE(MoveMouse(5000, 5000));
  EXPECT_TRUE(MoveMouse(500, 300));  // back inside the dead zone: a drag stays one
  EXPECT_EQ(cube.activePart, FRONT);
  EXPECT_TRUE(cube.OnLeftMouseUp(500, 300));
  EXPECT_EQ(journal.Count("drag began 1"), 1);
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_EQ(journal.Count("clicked 1"), 0);
  EXPECT_EQ(history.begun, 1);
  EXPECT_EQ(history.ended, 1);
}

TEST_F(OrientorInteractionTest, a_drag_that_begins_beside_the_parts_is_none) {
  cube.OnLeftMouseDown(500, 300);
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  cube.activeOverlayPart = 2;
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  EXPECT_FALSE(cube.IsDragActive());
}

TEST_F(OrientorInteractionTest, a_move_without_a_press_begins_no_drag) {
  cube.activePart = FRONT;
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  EXPECT_EQ(journal.Take(), Lines{"update 1 (600, 467)"});
}

TEST_F(OrientorInteractionTest, a_move_needs_a_hub_and_a_visible_cube_that_reacts) {
  PressOnPart(FRONT);
  Parameters().visible = false;
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  Parameters().visible = true;
  Parameters().disabled = true;
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  Parameters().disabled = false;
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(cube.OnMouseMove(600, 300));
  EXPECT_TRUE(journal.Take().empty());
  EXPECT_FALSE(cube.IsDragActive());
}

TEST_F(OrientorInteractionTest, a_drag_needs_no_history) {
  cube.SetRewindHistory(nullptr);
  DragPart(FRONT);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_EQ(history.begun, 0);
  EXPECT_EQ(history.ended, 0);
}

// ---- the drag of the compass: the steps; its sense has tests of its own ----

TEST_F(OrientorInteractionTest, a_drag_of_the_compass_begins_at_the_height_of_the_press) {
  Scene().do_snap_orbit = false;
  Scene().preserve_orbit_up_direction = false;
  Parameters().preserve_scene_up = false;  // counts for the cube alone
  for (const int part : {LETTER, RING}) {
    PressOnPart(part);
    cube.OnMouseMove(510, 290);
    // 768 - 300 - 1 = 467, whatever the mouse's height.
    EXPECT_EQ(journal.Take(), (Lines{"update 1 (510, 477)", "constrain pivot",
                                     part == RING ? "drag began 41" : "drag began 37", "end operation 12",
                                     "end shot", "begin operation 1 (510, 467)", "record begun"}));
    EXPECT_TRUE(Scene().preserve_orbit_up_direction);
    EXPECT_FALSE(Scene().align_orbit_up_direction);
    EXPECT_FALSE(Scene().do_snap_orbit);
    EXPECT_FALSE(Scene().do_custom_orbit);
    cube.OnLeftMouseUp(0, 0);
    EXPECT_EQ(journal.Take(), (Lines{"drag ended", "end operation 1", "end shot", "record ended"}));
  }
}

// Steps (10, 6), (-3, 4), (100, 0): sums 10, 7, 107 across and 6, 10, 10 up. Half of what both give, toward
// zero, and the 500 of the press.
TEST_F(OrientorInteractionTest, both_axes_of_the_mouse_feed_one_turn) {
  struct Row {
    bool reverseX;
    bool reverseY;
    int x[3];
  };
  const Row rows[] = {
      {false, false, {500 + 2, 500 - 1, 500 + 48}},  // (10 - 6) / 2, (7 - 10) / 2, (107 - 10) / 2
      {false, true, {500 + 8, 500 + 8, 500 + 58}},   // (10 + 6) / 2, (7 + 10) / 2, (107 + 10) / 2
      {true, false, {500 - 8, 500 - 8, 500 - 58}},
      {true, true, {500 - 2, 500 + 1, 500 - 48}},
  };
  for (const Row& row : rows) {
    PressOnPart(RING);
    cube.reverseDragX = row.reverseX;
    cube.reverseDragY = row.reverseY;
    cube.dragging = true;
    journal.Take();
    cube.OnMouseMove(510, 306);
    cube.OnMouseMove(507, 310);
    cube.OnMouseMove(607, 310);
    EXPECT_EQ(journal.Take(), (Lines{"update 1 (" + std::to_string(row.x[0]) + ", 467)",
                                     "update 1 (" + std::to_string(row.x[1]) + ", 467)",
                                     "update 1 (" + std::to_string(row.x[2]) + ", 467)"}));
    cube.dragging = false;
  }
}

TEST_F(OrientorInteractionTest, a_drag_of_the_compass_turns_about_the_axes_of_the_world) {
  Scene().scene_is_world = false;
  Scene().world_up_direction = Vector3(0.0, 0.0, 1.0);
  Scene().world_front_direction = Vector3(0.0, 1.0, 0.0);
  DragPart(RING);
  cube.OnMouseMove(520, 300);
  EXPECT_TRUE(Scene().do_custom_orbit);
  EXPECT_EQ(Scene().custom_orbit_up, Vector3(0.0, 0.0, 1.0));
  EXPECT_EQ(Scene().custom_orbit_front, Vector3(0.0, 1.0, 0.0));
  cube.OnLeftMouseUp(0, 0);
  EXPECT_FALSE(Scene().do_custom_orbit);
}

// ---- robustness ----

TEST_F(OrientorInteractionTest, a_drag_to_the_ends_of_the_numbers_stays_within_them) {
  for (const int part : {FRONT, LETTER, RING}) {
    cube.activePart = part;
    cube.OnLeftMouseDown(INT_LOW, INT_HIGH);
    EXPECT_TRUE(cube.OnMouseMove(INT_HIGH, INT_LOW));
    for (int i = 0; i < 4; ++i) {
      cube.OnMouseMove(INT_LOW, INT_HIGH);
      cube.OnMouseMove(INT_HIGH, INT_LOW);
      hub.PerformOperations();
    }
    EXPECT_TRUE(cube.OnLeftMouseUp(INT_LOW, INT_LOW));
    EXPECT_TRUE(hub.view.IsFinite());
  }
}

TEST_F(OrientorInteractionTest, a_viewport_without_size_does_no_harm) {
  Scene().viewport_width = Scene().viewport_height = 0;
  cube.SetViewportSize(0, 0);
  for (const int part : {FRONT, LETTER, RING}) {
    DragPart(part);
    cube.OnMouseMove(600, 400);
    hub.PerformOperations();
    cube.OnLeftMouseUp(0, 0);
    EXPECT_TRUE(hub.view.IsFinite());
  }
  EXPECT_EQ(history.begun, 3);
  EXPECT_EQ(history.ended, 3);
}

TEST_F(OrientorInteractionTest, a_camera_that_is_no_number_is_never_applied) {
  Random random;
  for (int i = 0; i < 200; ++i) {
    const CameraParameters broken = BrokenCamera(random);
    SetCamera(broken);
    for (const int part : {FRONT, LETTER, RING}) {
      DragPart(part);
      cube.OnMouseMove(600, 400);
      hub.PerformOperations();
      cube.OnLeftMouseUp(0, 0);
      ASSERT_TRUE(hub.view.IsFinite() || SameBits(hub.view, broken));  // an orbit may heal it
    }
  }
  EXPECT_EQ(history.GetOpenCount(), 0);
}

TEST_F(OrientorInteractionTest, a_lost_release_does_not_lose_the_settings) {
  Scene().orbit_multiplier = 3.0;
  DragPart(FRONT);
  DragPart(FRONT);  // the release of the first never came
  EXPECT_EQ(history.begun, 2);
  EXPECT_EQ(history.ended, 1);
  EXPECT_EQ(journal.Count("drag ended"), 1);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.GetOpenCount(), 0);
}

// ---- a gesture that is cut short ----

// The ways in which a cube learns that the host has hidden it.
using Glance = std::function<void(TouchedOrientor&)>;
const std::vector<Glance>& LooksAtAHiddenCube() {
  static const std::vector<Glance> looks = {
      [](TouchedOrientor& cube) { cube.OnMouseMove(600, 300); },
      [](TouchedOrientor& cube) { cube.OnLeftMouseDown(600, 300); },
      [](TouchedOrientor& cube) { cube.OnLeftMouseUp(600, 300); },
      [](TouchedOrientor& cube) { cube.SetViewportMousePosition(600, 300); },
      [](TouchedOrientor& cube) { cube.Draw(); },
      [](TouchedOrientor& cube) { cube.CancelGesture(); },
  };
  return looks;
}

TEST_F(OrientorInteractionTest, a_drag_of_a_cube_hidden_meanwhile_ends_with_the_next_event_or_frame) {
  for (const int part : {FRONT, LETTER, RING}) {
    for (const Glance& look : LooksAtAHiddenCube()) {
      Scene().orbit_multiplier = 3.0;
      Scene().do_snap_orbit = Scene().do_custom_orbit = false;
      history.begun = history.ended = 0;
      DragPart(part);
      cube.OnMouseMove(530, 300);
      journal.Take();
      Parameters().visible = false;
      look(cube);
      EXPECT_FALSE(cube.IsDragActive());
      EXPECT_EQ(journal.Count("drag ended"), 1);
      EXPECT_EQ(Scene().orbit_multiplier, 3.0);
      EXPECT_FALSE(Scene().do_snap_orbit || Scene().do_custom_orbit);
      EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
      EXPECT_EQ(history.begun, 1);
      EXPECT_EQ(history.ended, 1);
      EXPECT_LE(RunFrames(), 2);  // nothing asks for frames any more
      for (const Glance& again : LooksAtAHiddenCube()) again(cube);
      EXPECT_EQ(journal.Count("drag ended"), 1);
      EXPECT_EQ(history.ended, 1);
      Parameters().visible = true;
    }
  }
}

TEST_F(OrientorInteractionTest, a_hidden_cube_forgets_what_the_mouse_was_on) {
  for (const Glance& look : LooksAtAHiddenCube()) {
    cube.activePart = cube.highlightedPart = FRONT;
    cube.activeOverlayPart = cube.rawOverlayPart = Orientor::OVERLAY_HOME;
    cube.mouseInRegion = true;
    Parameters().visible = false;
    look(cube);
    EXPECT_EQ(cube.GetActiveGeometryPart(), -1);
    EXPECT_FALSE(cube.IsMouseOnPart() || cube.IsMouseOnCompassPart());
    EXPECT_FALSE(cube.IsMouseOnViewableOverlayPart() || cube.IsMouseInRegion());
    EXPECT_TRUE(cube.GetActivePartName().empty());
    Parameters().visible = true;
  }
}

TEST_F(OrientorInteractionTest, a_cancelled_press_is_no_click_and_its_release_is_not_kept) {
  for (const int part : {FRONT, LETTER, RING}) {
    EXPECT_TRUE(PressOnPart(part));
    cube.CancelGesture();
    EXPECT_FALSE(cube.OnMouseMove(600, 300));
    EXPECT_FALSE(cube.OnLeftMouseUp(600, 300));
  }
  EXPECT_TRUE(PressOnOverlay(Orientor::OVERLAY_HOME));
  cube.CancelGesture();
  EXPECT_FALSE(cube.OnLeftMouseUp(500, 300));
  EXPECT_EQ(journal.Count("clicked 1"), 0);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
}

// A drag's end asks for a frame of its own.
TEST_F(OrientorInteractionTest, a_cancelled_gesture_asks_for_a_frame_where_it_showed) {
  const std::vector<std::function<void()>> shows = {
      [this] { cube.activePart = RING; },
      [this] { cube.highlightedPart = FRONT; },
      [this] { cube.activeOverlayPart = Orientor::OVERLAY_HOME; },
      [this] { cube.mouseInRegion = true; },
  };
  for (const auto& show : shows) {
    show();
    const int before = hub.requested;
    cube.CancelGesture();
    EXPECT_EQ(hub.requested, before + 1);
    cube.CancelGesture();  // shows no longer
    EXPECT_EQ(hub.requested, before + 1);
    show();
    Parameters().visible = false;
    cube.CancelGesture();
    EXPECT_EQ(hub.requested, before + 1);
    Parameters().visible = true;
  }
}

TEST_F(OrientorInteractionTest, a_cancelled_gesture_leaves_a_move_of_the_cube_alone) {
  cube.InjectClick(FRONT);
  ASSERT_TRUE(hub.IsShotActive());
  cube.CancelGesture();
  EXPECT_TRUE(hub.IsShotActive());
  RunFrames();
  EXPECT_EQ(history.begun, 1);
  EXPECT_EQ(history.ended, 1);
}

TEST_F(OrientorInteractionTest, a_press_whose_release_was_lost_keeps_no_later_release) {
  EXPECT_TRUE(PressOnOverlay(Orientor::OVERLAY_HOME));
  cube.activeOverlayPart = -1;  // the mouse has gone to the scene
  EXPECT_FALSE(cube.OnLeftMouseDown(100, 100));
  EXPECT_FALSE(cube.OnLeftMouseUp(110, 100));
  EXPECT_TRUE(PressOnOverlay(Orientor::OVERLAY_HOME));
  Parameters().disabled = true;
  EXPECT_FALSE(cube.OnLeftMouseDown(100, 100));
  EXPECT_FALSE(cube.OnLeftMouseUp(110, 100));
}

TEST_F(OrientorInteractionTest, another_hub_ends_the_drag_in_the_old_one_and_keeps_its_own_settings) {
  SpyHub other(journal);
  other.GetApplicationParameters().orbit_multiplier = 7.0;
  other.GetApplicationParameters().do_snap_orbit = true;
  for (SpyHub* const next : {&other, static_cast<SpyHub*>(nullptr)}) {
    Scene().orbit_multiplier = 3.0;
    journal.Take();
    cube.SetKorvane(&hub);
    DragPart(FRONT);
    cube.SetKorvane(next);
    EXPECT_FALSE(cube.IsDragActive());
    EXPECT_EQ(Scene().orbit_multiplier, 3.0);
    EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
    EXPECT_EQ(history.GetOpenCount(), 0);
    EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
    EXPECT_EQ(journal.Count("drag ended"), 1);
    EXPECT_EQ(other.GetApplicationParameters().orbit_multiplier, 7.0);
    EXPECT_TRUE(other.GetApplicationParameters().do_snap_orbit);
  }
}

// Every step of a drag that calls out, and everything that ends one.
TEST_F(OrientorInteractionTest, a_drag_ended_within_any_step_of_its_begin_leaves_nothing_behind) {
  const std::vector<std::function<void()>> ends = {
      [this] { cube.CancelGesture(); },
      [this] { cube.SetKorvane(nullptr); },
      [this] { cube.OnLeftMouseUp(0, 0); },
      [this] { cube.Destroy(); },
      [this] { cube.OnLeftMouseDown(0, 0); },
      [this] {
        Parameters().visible = false;
        cube.Draw();
      },
  };
  for (const auto& end : ends) {
    for (std::function<void()>* const step :
         {&hub.onConstrainPivot, &observer.onDragBegin, &hub.onEndOperation, &hub.onRecalculateSelection}) {
      Parameters().visible = true;
      cube.SetKorvane(&hub);
      Scene().orbit_multiplier = 3.0;
      journal.Take();
      bool spent = false;
      *step = [&] {
        if (!std::exchange(spent, true)) end();
      };
      DragPart(FRONT);
      *step = nullptr;
      cube.CancelGesture();  // a press made anew
      EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
      EXPECT_FALSE(cube.IsDragActive());
      EXPECT_EQ(Scene().orbit_multiplier, 3.0);
      EXPECT_EQ(history.GetOpenCount(), 0);
      EXPECT_EQ(history.begun, history.ended);
      EXPECT_EQ(journal.Count("drag began 1"), journal.Count("drag ended"));
      cube.OnLeftMouseUp(0, 0);
      EXPECT_EQ(journal.Count("drag began 1"), journal.Count("drag ended"));
    }
  }
}

TEST_F(OrientorInteractionTest, a_drag_ended_while_its_begin_is_told_begins_for_nobody_after) {
  NotingOrientorObserver second(cube, journal, "second ");
  cube.AddObserver(&second);
  observer.onDragBegin = [this] { cube.CancelGesture(); };
  DragPart(FRONT);
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_EQ(journal.Count("second drag ended"), 1);
  EXPECT_EQ(journal.Count("second drag began 1"), 0);
}

TEST_F(OrientorInteractionTest, a_move_in_a_drag_allocates_nothing) {
  // The journal of the spying hub allocates; a plain hub does not.
  MemoryHub plain(LookAlong(Vector3(-3.0, -2.0, -1.0)));
  cube.SetKorvane(&plain);
  for (const int part : {FRONT, LETTER, RING}) {
    DragPart(part);
    ASSERT_TRUE(cube.IsDragActive());
    const AllocationCounter counter;
    for (int i = 0; i < 20; ++i) {
      cube.OnMouseMove(520 + i, 300 - i);
      cube.SetViewportMousePosition(520 + i, 300 - i);
    }
    EXPECT_EQ(counter.GetAllocations(), 0U);
    cube.OnLeftMouseUp(0, 0);
  }
}

// ---- observers that act while they are told ----

TEST_F(OrientorInteractionTest, observers_may_remove_themselves_and_others_while_they_are_told) {
  NotingOrientorObserver second(cube, journal, "second ");
  NotingOrientorObserver third(cube, journal, "third ");
  cube.AddObserver(&second);
  cube.AddObserver(&third);
  second.onDragBegin = [&] {
    cube.RemoveObserver(&second);
    cube.RemoveObserver(&third);
  };
  DragPart(FRONT);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_EQ(journal.Count("drag began 1"), 1);
  EXPECT_EQ(journal.Count("second drag began 1"), 1);
  EXPECT_EQ(journal.Count("third drag began 1"), 0);
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_EQ(journal.Count("second drag ended"), 0);
  observer.onClicked = [&] { cube.RemoveObserver(&observer); };
  PressOnPart(FRONT);
  cube.OnLeftMouseUp(500, 300);
  EXPECT_EQ(journal.Count("clicked 1"), 1);
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(OrientorInteractionTest, every_observer_hears_of_a_gesture_once) {
  NotingOrientorObserver second(cube, journal, "second ");
  cube.AddObserver(&second);
  cube.AddObserver(&second);
  DragPart(FRONT);
  cube.OnLeftMouseUp(0, 0);
  PressOnPart(RING);
  cube.OnLeftMouseUp(0, 0);
  for (const char* line : {"drag began 1", "drag ended", "clicked 41", "second drag began 1",
                           "second drag ended", "second clicked 41"}) {
    EXPECT_EQ(journal.Count(line), 1) << line;
  }
}

TEST_F(OrientorInteractionTest, an_observer_may_take_the_hub_away_as_a_drag_begins) {
  observer.onDragBegin = [&] { cube.SetKorvane(nullptr); };
  Scene().orbit_multiplier = 3.0;
  DragPart(FRONT);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.begun, 0);
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  cube.SetKorvane(&hub);
  EXPECT_FALSE(cube.IsDragActive());
}

TEST_F(OrientorInteractionTest, an_observer_may_take_the_hub_away_as_a_drag_ends) {
  DragPart(FRONT);
  observer.onDragEnd = [&] { cube.SetKorvane(nullptr); };
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_FALSE(cube.IsDragActive());
}

TEST_F(OrientorInteractionTest, an_observer_may_take_hub_renderer_and_history_away_at_a_click) {
  for (const int part : {FRONT, LETTER, RING}) {
    cube.SetKorvane(&hub);
    observer.onClicked = [&] {
      cube.SetKorvane(nullptr);
      cube.SetRenderer(nullptr);
      cube.SetRewindHistory(nullptr);
    };
    PressOnPart(part);
    EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
    EXPECT_FALSE(hub.IsShotActive());
  }
}

TEST_F(OrientorInteractionTest, the_host_may_take_the_hub_away_within_any_step_of_a_drag) {
  hub.onConstrainPivot = [&] { cube.SetKorvane(nullptr); };
  DragPart(FRONT);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
  cube.OnLeftMouseUp(0, 0);
  cube.SetKorvane(&hub);
  hub.onConstrainPivot = nullptr;
  hub.onRecalculateSelection = [&] { cube.SetKorvane(nullptr); };  // as the orbit begins
  DragPart(FRONT);
  EXPECT_EQ(history.begun, 0);
  cube.OnLeftMouseUp(0, 0);
}

TEST_F(OrientorInteractionTest, observers_may_begin_and_end_shots_while_they_are_told) {
  observer.onDragBegin = [&] { BeginShot(); };
  DragPart(FRONT);
  EXPECT_FALSE(hub.IsShotActive());
  observer.onDragEnd = [&] { BeginShot(); };
  cube.OnLeftMouseUp(0, 0);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(history.GetOpenCount(), 0);
  observer.onClicked = [&] { BeginShot(); };
  PressOnPart(FRONT);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_EQ(hub.viewShots.size(), 1U);
}

// A host that gives the mouse back in its callback sends a release of its own.
TEST_F(OrientorInteractionTest, a_release_within_the_telling_of_a_release_is_no_second_one) {
  observer.onDragEnd = [&] { cube.OnLeftMouseUp(0, 0); };
  DragPart(FRONT);
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_EQ(history.ended, 1);
  observer.onClicked = [&] { cube.OnLeftMouseUp(0, 0); };
  PressOnPart(FRONT);
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_EQ(journal.Count("clicked 1"), 1);
  EXPECT_EQ(hub.viewShots.size(), 1U);
}

TEST_F(OrientorInteractionTest, a_press_within_the_telling_of_the_end_begins_anew) {
  Scene().orbit_multiplier = 3.0;
  DragPart(FRONT);
  observer.onDragEnd = [&] { PressOnPart(FRONT); };
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.GetOpenCount(), 0);
  observer.onDragEnd = nullptr;
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_TRUE(cube.OnMouseMove(520, 300));
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_EQ(journal.Count("drag ended"), 2);
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.ended, 2);
}

TEST_F(OrientorInteractionTest, a_drag_within_the_telling_of_the_end_goes_on) {
  Scene().orbit_multiplier = 3.0;
  DragPart(FRONT);
  observer.onDragEnd = [&] { DragPart(FRONT); };
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  observer.onDragEnd = nullptr;
  EXPECT_TRUE(cube.IsDragActive());
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_EQ(journal.Count("drag ended"), 2);
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.GetOpenCount(), 0);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
}

TEST_F(OrientorInteractionTest, a_release_within_the_telling_of_the_begin_leaves_nothing_behind) {
  Scene().orbit_multiplier = 3.0;
  observer.onDragBegin = [&] { cube.OnLeftMouseUp(0, 0); };
  DragPart(FRONT);
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.GetOpenCount(), 0);
}

TEST_F(OrientorInteractionTest, a_whole_drag_within_the_telling_of_a_click_leaves_nothing_behind) {
  Scene().orbit_multiplier = 3.0;
  observer.onClicked = [&] {
    observer.onClicked = nullptr;
    DragPart(LETTER);
    EXPECT_TRUE(cube.IsDragActive());
    cube.OnLeftMouseUp(0, 0);
  };
  PressOnPart(RING);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_FALSE(cube.mousePressed);
}

TEST_F(OrientorInteractionTest, a_drag_begun_within_the_telling_of_a_click_goes_on) {
  Scene().orbit_multiplier = 3.0;
  observer.onClicked = [&] { DragPart(RING); };
  PressOnPart(RING);
  cube.OnLeftMouseUp(0, 0);
  EXPECT_TRUE(cube.IsDragActive());
  EXPECT_TRUE(cube.OnLeftMouseUp(0, 0));
  EXPECT_EQ(Scene().orbit_multiplier, 3.0);
  EXPECT_EQ(history.GetOpenCount(), 0);
}

// ---- two cubes ----

using Step = void (*)(GestureScene&);

const std::vector<Step>& Gestures() {
  static const std::vector<Step> steps = {
      [](GestureScene& s) { s.PressOnPart(RING); },
      [](GestureScene& s) { s.MoveMouse(510, 290); },
      [](GestureScene& s) { s.MoveMouse(540, 270); },
      [](GestureScene& s) { s.hub.PerformOperations(); },
      [](GestureScene& s) { s.cube.OnLeftMouseUp(540, 270); },
      [](GestureScene& s) { s.PressOnPart(FRONT); },
      [](GestureScene& s) { s.MoveMouse(520, 310); },
      [](GestureScene& s) { s.MoveMouse(560, 330); },
      [](GestureScene& s) { s.hub.PerformOperations(); },
      [](GestureScene& s) { s.cube.OnLeftMouseUp(560, 330); },
      [](GestureScene& s) { s.cube.InjectClick(24); },
      [](GestureScene& s) { s.hub.PerformOperations(); },
  };
  return steps;
}

TEST(OrientorPairTest, two_cubes_share_nothing) {
  GestureScene alone;
  alone.Look(Vector3(-1.0, -2.0, -3.0));
  for (const auto& step : Gestures()) step(alone);

  GestureScene first;
  GestureScene second;
  first.Look(Vector3(-1.0, -2.0, -3.0));
  second.Look(Vector3(2.0, 1.0, -1.0));
  const std::size_t count = Gestures().size();
  for (std::size_t i = 0; i < count; ++i) {
    Gestures()[i](first);
    Gestures()[(i + 5) % count](second);
  }
  EXPECT_EQ(first.journal.lines, alone.journal.lines);
  EXPECT_TRUE(SameBits(first.hub.view, alone.hub.view));
  EXPECT_TRUE(SameBits(first.hub.GetCameraParameters(), alone.hub.GetCameraParameters()));
  EXPECT_EQ(first.cube.pressX, alone.cube.pressX);
}

}  // namespace
