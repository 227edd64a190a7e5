// A user at the cube: the mouse goes to pixels, frames run on a clock, and the host's camera tells where that
// has led.
#include <gtest/gtest.h>

#include <cmath>

#include "cube/gesture_scene.h"
#include "korvane/quaternion.h"

using namespace Korvane;

namespace {

struct Pixel {
  int x = 0;
  int y = 0;  // upward
  bool found = false;
};

class OrientorJourneyTest : public ::testing::Test, protected GestureScene {
 protected:
  OrientorJourneyTest() {
    Parameters().draw_compass = true;
    Parameters().size = OrientorParameters::SIZE_LARGE;
    cube.SetViewportSize(WIDTH, HEIGHT);
    Scene().scene_bound_radius = Scene().global_bound_radius = 3.0;
    Scene().home_camera = LookAt(Vector3(5, 2, 7), Vector3(1, 2, 0), Vector3(0, 1, 0));
  }

  // The first pixel of the cube's corner, in steps of `step`, where the mouse is on what is wanted. The
  // arrows show once the mouse is in the region, so it goes there first.
  template <class Wanted>
  Pixel Find(Wanted wanted, int step = 3) {
    MoveMouse(WIDTH - 60, HEIGHT - 60);
    for (int y = HEIGHT - 2; y > HEIGHT - 280; y -= step) {
      for (int x = WIDTH - 2; x > WIDTH - 280; x -= step) {
        MoveMouse(x, y);
        if (wanted()) return {x, y, true};
      }
    }
    return {};
  }
  Pixel FindPart(int number, int step = 3) {
    return Find([this, number] { return cube.GetOrientorPartForObserver() == number; }, step);
  }
  void Click(const Pixel& at) {
    MoveMouse(at.x, at.y);
    EXPECT_TRUE(cube.OnLeftMouseDown(at.x, at.y));
    EXPECT_TRUE(cube.OnLeftMouseUp(at.x, at.y));
    EXPECT_GT(RunFrames(), 10);  // half a second of 20 milliseconds
  }
  Vector3 ViewDirection() const { return (hub.view.centre - hub.view.eye).Normalized(); }
  void ExpectView(const Vector3& direction, const std::string& what) {
    EXPECT_NEAR((ViewDirection() - direction.Normalized()).Length(), 0.0, 1e-6) << what;
  }
  // Told, recorded and over, once each.
  void ExpectOneClick(int number) {
    EXPECT_EQ(journal.Count("clicked " + std::to_string(number)), 1);
    EXPECT_EQ(history.begun, 1);
    EXPECT_EQ(history.ended, 1);
    EXPECT_FALSE(hub.IsShotActive());
    history.begun = history.ended = 0;
    journal.Take();
  }
};

TEST_F(OrientorJourneyTest, a_click_on_each_part_ends_looking_onto_it) {
  for (int part = 0; part < 26; ++part) {
    const Vector3 direction = cube.GetGeometryPartDirection(part);
    Look(-direction.Normalized() + Vector3(0.21, 0.13, 0.17));
    const Pixel pixel = FindPart(part);
    ASSERT_TRUE(pixel.found) << part;
    Click(pixel);
    ExpectView(-direction, "part " + std::to_string(part));
    EXPECT_EQ(cube.GetClosestGeometryPart(), part);
    ExpectOneClick(part);
  }
}

// In a view straight onto the front the four arrows lead to its neighbours, a click each.
TEST_F(OrientorJourneyTest, a_click_on_each_arrow_ends_looking_onto_its_face) {
  Parameters().draw_compass = false;
  cube.SetViewportSize(WIDTH, HEIGHT);
  for (const int face : {2, 3, 4, 5}) {
    Look(Vector3(-1.0, 0.0, 0.0));
    const Pixel pixel = FindPart(26 + face);
    ASSERT_TRUE(pixel.found) << face;
    Click(pixel);
    ExpectView(-cube.GetGeometryPartDirection(face), "face " + std::to_string(face));
    ExpectOneClick(26 + face);
  }
}

TEST_F(OrientorJourneyTest, a_click_on_the_home_button_ends_at_the_home_camera) {
  const Pixel pixel = FindPart(34);
  ASSERT_TRUE(pixel.found);
  Click(pixel);
  EXPECT_TRUE(CameraCheckEqual(&hub.view, &hub.GetHomeCamera()));
  ExpectOneClick(34);
}

// The view onto a letter: the camera stands where the letter is drawn, a quarter turn and the angle of the
// compass on from its direction, against the right-hand rule about the up axis.
TEST_F(OrientorJourneyTest, a_click_on_each_letter_ends_looking_from_where_it_is_drawn) {
  for (const float angle : {0.0F, 30.0F}) {
    Parameters().compass_angle = angle;
    for (int letter = 0; letter < 4; ++letter) {
      const double turn = (angle + 90.0) * Math::DEG_TO_RAD;
      const Vector3& d = GetPartDirection(26 + letter);
      const Vector3 drawn(d.x * std::cos(turn) - d.z * std::sin(turn), 0.0,
                          d.x * std::sin(turn) + d.z * std::cos(turn));
      Look(-drawn - Vector3(0.0, 0.8, 0.0));
      const Pixel pixel = FindPart(37 + letter);
      ASSERT_TRUE(pixel.found) << letter;
      Click(pixel);
      ExpectView(-drawn, "letter " + std::to_string(letter) + " at " + std::to_string(angle));
      ExpectOneClick(37 + letter);
    }
  }
}

// Seen straight from the front with the y axis up, the camera rolls: the arrow that turns the view clockwise
// by a quarter leaves the direction alone and brings the up axis to a side.
TEST_F(OrientorJourneyTest, a_click_on_a_rotate_arrow_turns_the_view_by_a_quarter) {
  Vector3 ups[2];
  for (int arrow = 0; arrow < 2; ++arrow) {
    Look(Vector3(-1.0, 0.0, 0.0));
    const Pixel pixel = FindPart(32 + arrow, 1);
    ASSERT_TRUE(pixel.found) << arrow;
    Click(pixel);
    ExpectView(Vector3(-1.0, 0.0, 0.0), "rolled");
    ups[arrow] = hub.view.up.Normalized();
    EXPECT_NEAR(std::abs(ups[arrow].z), 1.0, 1e-6);
    ExpectOneClick(32 + arrow);
  }
  EXPECT_NEAR((ups[0] + ups[1]).Length(), 0.0, 1e-6);
}

TEST_F(OrientorJourneyTest, a_click_on_the_ring_tells_and_turns_nothing) {
  const Pixel pixel = FindPart(41);
  ASSERT_TRUE(pixel.found);
  const CameraParameters before = hub.view;
  MoveMouse(pixel.x, pixel.y);
  EXPECT_TRUE(cube.OnLeftMouseDown(pixel.x, pixel.y));
  EXPECT_TRUE(cube.OnLeftMouseUp(pixel.x, pixel.y));
  EXPECT_EQ(RunFrames(), 1);
  EXPECT_TRUE(SameBits(hub.view, before));
  EXPECT_EQ(journal.Count("clicked 41"), 1);
  EXPECT_EQ(history.begun, 0);
}

// Pixel by pixel towards the front view, which draws the camera in and holds it.
TEST_F(OrientorJourneyTest, a_drag_with_snapping_lands_on_a_view_and_holds) {
  Look(Vector3(-1.0, 0.0, -0.25));
  const Pixel pixel = FindPart(1);
  ASSERT_TRUE(pixel.found);
  for (const int sense : {1, -1}) {
    Look(Vector3(-1.0, 0.0, sense * -0.25));
    MoveMouse(pixel.x, pixel.y);
    ASSERT_TRUE(cube.OnLeftMouseDown(pixel.x, pixel.y));
    int held = 0;
    for (int i = 0; i < 80; ++i) {
      MoveMouse(pixel.x - sense * i, pixel.y);
      hub.PerformOperations();
      platform.Advance(20);
      held += cube.ViewOnPrincipalAxis() ? 1 : 0;
    }
    EXPECT_GT(held, 3) << sense;
    cube.OnLeftMouseUp(pixel.x - sense * 80, pixel.y);
    EXPECT_EQ(RunFrames(), 1);
  }
}

TEST_F(OrientorJourneyTest, without_snapping_the_same_drag_holds_nowhere) {
  Parameters().drag_snap = false;
  Look(Vector3(-1.0, 0.0, -0.25));
  const Pixel pixel = FindPart(1);
  ASSERT_TRUE(pixel.found);
  const Vector3 before = ViewDirection();
  ASSERT_TRUE(cube.OnLeftMouseDown(pixel.x, pixel.y));
  int held = 0;
  for (int i = 0; i < 80; ++i) {
    MoveMouse(pixel.x - i, pixel.y);
    hub.PerformOperations();
    held += cube.ViewOnPrincipalAxis() ? 1 : 0;
  }
  EXPECT_EQ(held, 0);
  // 79 pixels of 1024 at 10 radians across the view are 0.77; the dead zone takes less than 10 of them.
  EXPECT_GT(std::acos(before.Dot(ViewDirection())), 0.67) << "the drag has turned the view past the front";
}

// With the multiplier of the cube, 10 radians across the view: 128 pixels of 1024 turn by 1.25. The orbit
// begins where the mouse has left the dead zone, here at 10 pixels.
TEST_F(OrientorJourneyTest, a_drag_turns_the_camera_by_the_multiplier_of_the_cube) {
  Parameters().drag_snap = false;
  Look(Vector3(-1.0, 0.0, -0.25));
  const Pixel pixel = FindPart(1);
  ASSERT_TRUE(pixel.found);
  const Vector3 before = ViewDirection();
  ASSERT_TRUE(cube.OnLeftMouseDown(pixel.x, pixel.y));
  MoveMouse(pixel.x - 10, pixel.y);
  hub.PerformOperations();
  MoveMouse(pixel.x - 138, pixel.y);
  hub.PerformOperations();
  EXPECT_NEAR(std::acos(before.Dot(ViewDirection())), 1.25, 1e-9);
  cube.OnLeftMouseUp(pixel.x - 138, pixel.y);
  EXPECT_EQ(RunFrames(), 1);
  EXPECT_EQ(history.begun, 1);
  EXPECT_EQ(history.ended, 1);
}

TEST_F(OrientorJourneyTest, during_a_move_the_mouse_lights_up_nothing_new_and_presses_are_refused) {
  Look(Vector3(-1.0, -0.3, -0.2));
  const Pixel front = FindPart(1);
  const Pixel top = FindPart(3);
  const Pixel home = FindPart(34);
  ASSERT_TRUE(front.found && top.found && home.found);
  MoveMouse(front.x, front.y);
  cube.OnLeftMouseDown(front.x, front.y);
  cube.OnLeftMouseUp(front.x, front.y);
  ASSERT_TRUE(hub.IsShotActive());
  MoveMouse(top.x, top.y);
  EXPECT_EQ(cube.highlightedPart, 1);
  EXPECT_EQ(cube.activePart, 3);
  EXPECT_FALSE(cube.OnLeftMouseDown(top.x, top.y));
  MoveMouse(home.x, home.y);
  EXPECT_EQ(cube.GetActiveOverlayPart(), -1);
  EXPECT_TRUE(cube.IsMouseOnViewableOverlayPart());
  RunFrames();
  ExpectView(Vector3(-1.0, 0.0, 0.0), "front");
  EXPECT_EQ(history.begun, 1);
  EXPECT_EQ(history.ended, 1);
}

TEST_F(OrientorJourneyTest, an_overlay_button_left_before_the_release_is_not_pressed) {
  const Pixel home = FindPart(34);
  ASSERT_TRUE(home.found);
  MoveMouse(home.x, home.y);
  EXPECT_TRUE(cube.OnLeftMouseDown(home.x, home.y));
  MoveMouse(10, 10);
  EXPECT_TRUE(cube.OnLeftMouseUp(10, 10));
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(journal.Count("clicked 34"), 0);
}

}  // namespace
