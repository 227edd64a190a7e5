// The sense of a drag of the compass.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "cube/gesture_scene.h"
#include "support/random.h"

using namespace Korvane;

namespace {

constexpr int LETTERS = 26;
constexpr int RING = 30;
constexpr int END = 58;
constexpr double TOLERANCE = 1.1920928955078125e-7;
constexpr double DEGREES = 57.29577951308232;

struct Sense {
  bool reverseX;
  bool reverseY;
};

// A second account of the rule, in its own words and on arrays, that shares nothing with the code.
namespace account {

using Triple = std::array<double, 3>;

double Dot(const Triple& a, const Triple& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Triple Cross(const Triple& a, const Triple& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Triple Unit(const Triple& a) {
  const double length = std::sqrt(Dot(a, a));
  if (!(length > TOLERANCE)) return {0.0, 0.0, 0.0};
  return {a[0] / length, a[1] / length, a[2] / length};
}
Triple From(const Vector3& v) { return {v.x, v.y, v.z}; }
bool NearOne(double value) { return 1.0 - std::fabs(value) < TOLERANCE; }
double ArcCosine(double value) { return std::acos(std::min(1.0, std::max(-1.0, value))) * DEGREES; }

Triple Rebase(const Triple& first, const Triple& second, const Triple& v) {
  const Triple f = Unit(first);
  const Triple s = Unit(Cross(first, second));
  const Triple u = Unit(Cross(s, f));
  return {Dot(v, f), Dot(v, u), Dot(v, s)};
}

Sense GetSense(const CameraParameters& camera, const Vector3& worldFront, const Vector3& worldUp,
               const Vector3& part, double compassAngle) {
  const Triple wf = Unit(From(worldFront));
  const Triple wu = Unit(From(worldUp));
  const Triple ws = Unit(Cross(wf, wu));
  const Triple view = Unit(From(camera.centre - camera.eye));
  const Triple c = Unit(From(camera.up));
  const Triple r = Unit(Cross(view, c));

  double h = 0.0;
  double t = 0.0;
  if (NearOne(Dot(view, wu))) {
    h = ArcCosine(Dot(c, wf));
    t = Dot(c, ws);
  } else if (NearOne(Dot(r, wu))) {
    Triple n = Rebase(ws, wu, c);
    n[1] = 0.0;
    n = Unit(n);
    h = ArcCosine(n[0]);
    t = n[2];
  } else {
    Triple n = Rebase(ws, wu, r);
    n[1] = 0.0;
    n = Unit(n);
    h = ArcCosine(-n[2]);
    t = n[0];
  }
  if (t < 0.0) h = 360.0 - h;

  const Triple p = Unit(From(part));
  double a = ArcCosine(-p[2]);
  if (p[0] < 0.0) a = 360.0 - a;
  a += compassAngle;
  if (a > 360.0) a -= 360.0;
  double d = a - h;
  while (d < 0.0) d += 360.0;

  Sense sense{d < 90.0 || d > 270.0, d > 0.0 && d < 180.0};
  if (!NearOne(Dot(view, wu)) && Dot(c, wu) < 0.0) sense = {!sense.reverseX, !sense.reverseY};
  if (Dot(view, wu) > 0.0) sense.reverseY = !sense.reverseY;
  return sense;
}

}  // namespace account

class OrientorCompassDragTest : public ::testing::Test, protected GestureScene {
 protected:
  OrientorCompassDragTest() { Parameters().draw_compass = true; }

  void ExpectTheSenseOfTheAccount(const char* what) {
    for (int part = LETTERS; part < END; ++part) {
      cube.activePart = part;
      const Sense expected =
          account::GetSense(hub.GetCameraParameters(), Scene().world_front_direction,
                            Scene().world_up_direction, GetPartDirection(part), Parameters().compass_angle);
      // From both sides, so that a flag that is left alone shows.
      for (const bool before : {false, true}) {
        cube.reverseDragX = cube.reverseDragY = before;
        cube.open.TakeCompassSense();
        EXPECT_EQ(cube.reverseDragX, expected.reverseX) << what << ", part " << part;
        EXPECT_EQ(cube.reverseDragY, expected.reverseY) << what << ", part " << part;
      }
    }
  }
};

CameraParameters LookWith(const Vector3& view, const Vector3& up) {
  return LookAt(view.Normalized() * -10.0, Vector3(), up);
}

// ---- against the second account ----

TEST_F(OrientorCompassDragTest, has_the_sense_of_the_rule_over_all_octants_upright_and_on_its_head) {
  for (const float angle : {0.0F, 30.0F, 350.0F}) {
    Parameters().compass_angle = angle;
    for (const double x : {-1.0, 1.0}) {
      for (const double y : {-0.7, 0.0, 0.7}) {
        for (const double z : {-0.6, 0.6}) {
          for (const double up : {-1.0, 1.0}) {
            SetCamera(LookWith(Vector3(x, y, z), Vector3(0.0, up, 0.0)));
            ExpectTheSenseOfTheAccount("octant");
          }
        }
      }
    }
  }
}

TEST_F(OrientorCompassDragTest, has_the_sense_of_the_rule_straight_up_and_down) {
  for (const float angle : {0.0F, 30.0F}) {
    Parameters().compass_angle = angle;
    for (const double view : {-1.0, 1.0}) {
      for (int turn = 0; turn < 16; ++turn) {
        const double heading = (turn + 0.3) * Math::PI / 8.0;
        for (const double climb : {-0.3, 0.0, 0.3}) {  // an up that is not quite perpendicular
          SetCamera(LookWith(Vector3(0.0, view, 0.0), Vector3(std::cos(heading), climb, std::sin(heading))));
          ExpectTheSenseOfTheAccount("vertical");
        }
      }
    }
  }
}

TEST_F(OrientorCompassDragTest, has_the_sense_of_the_rule_lying_on_its_side) {
  for (int turn = 0; turn < 16; ++turn) {
    const double heading = (turn + 0.3) * Math::PI / 8.0;
    const Vector3 view(std::cos(heading), 0.0, std::sin(heading));
    const Vector3 level = view.Cross(Vector3(0.0, 1.0, 0.0));
    SetCamera(LookWith(view, level));
    ExpectTheSenseOfTheAccount("on one side");
    SetCamera(LookWith(view, -level));
    ExpectTheSenseOfTheAccount("on the other side");
  }
}

TEST_F(OrientorCompassDragTest, has_the_sense_of_the_rule_for_any_camera_world_and_angle) {
  Random random;
  for (int i = 0; i < 300; ++i) {
    const Axes axes = RandomAxes(random);
    Scene().world_up_direction = axes.up * random.Uniform(0.5, 2.0);
    Scene().world_front_direction = axes.front * random.Uniform(0.5, 2.0);
    Parameters().compass_angle = static_cast<float>(random.Uniform(-720.0, 720.0));
    SetCamera(RandomCamera(random));
    ExpectTheSenseOfTheAccount("random");
  }
}

// A level view from the front has the heading 270; the letters, at 90, 270, 180 and 0, are then ahead of it
// by whole quarters. A quarter itself is not below 90, and neither 0 nor a half lies between them.
TEST_F(OrientorCompassDragTest, has_its_limits_at_whole_quarters) {
  SetCamera(LookWith(Vector3(-1.0, 0.0, 0.0), Vector3(0.0, 1.0, 0.0)));
  const Sense expected[4] = {
      {false, false},  // 180
      {true, false},   // 0
      {false, false},  // 270
      {false, true},   // 90
  };
  for (int letter = 0; letter < 4; ++letter) {
    cube.activePart = LETTERS + letter;
    cube.open.TakeCompassSense();
    EXPECT_EQ(cube.reverseDragX, expected[letter].reverseX) << letter;
    EXPECT_EQ(cube.reverseDragY, expected[letter].reverseY) << letter;
  }
}

TEST_F(OrientorCompassDragTest, is_worked_out_at_the_press) {
  SetCamera(LookWith(Vector3(-1.0, -0.5, 0.0), Vector3(0.0, 1.0, 0.0)));
  for (int part = LETTERS; part < END; ++part) {
    cube.activePart = part;
    cube.open.TakeCompassSense();
    const Sense expected{cube.reverseDragX, cube.reverseDragY};
    cube.reverseDragX = !cube.reverseDragX;
    cube.reverseDragY = !cube.reverseDragY;
    PressOnPart(part);
    EXPECT_EQ(cube.reverseDragX, expected.reverseX) << part;
    EXPECT_EQ(cube.reverseDragY, expected.reverseY) << part;
  }
}

TEST_F(OrientorCompassDragTest, is_left_alone_off_the_compass_and_without_a_hub) {
  cube.reverseDragX = cube.reverseDragY = true;
  for (const int part : {-1, 0, 25}) {
    cube.activePart = part;
    cube.open.TakeCompassSense();
  }
  cube.activePart = RING;
  cube.SetKorvane(nullptr);
  cube.open.TakeCompassSense();
  EXPECT_TRUE(cube.reverseDragX);
  EXPECT_TRUE(cube.reverseDragY);
}

TEST_F(OrientorCompassDragTest, comes_to_an_end_for_any_angle_and_camera) {
  Random random;
  const float angles[] = {-1e30F,
                          1e30F,
                          std::numeric_limits<float>::lowest(),
                          std::numeric_limits<float>::infinity(),
                          -std::numeric_limits<float>::infinity(),
                          std::numeric_limits<float>::quiet_NaN()};
  for (const float angle : angles) {
    Parameters().compass_angle = angle;
    for (int i = 0; i < 20; ++i) {
      SetCamera(BrokenCamera(random));
      PressOnPart(RING + i);
    }
  }
  SUCCEED();
}

// ---- what the user sees ----

// Where a direction of the ground stands on the screen, in pixels, y upward.
Vector2 Locate(GestureScene& scene, const Vector3& direction) {
  Vector3 view;
  Vector3 up;
  scene.cube.GetStandardView(view, up);
  Box2 box;
  CameraParameters camera;
  scene.cube.GetPass(box, camera);
  const Vector3 position = direction * 0.25 - Vector3(0.0, 0.11, 0.0) - camera.eye;
  const Vector3 right = view.Cross(up).Normalized();
  const double scale = box.halfExtent.x / (std::tan(camera.left_fov / DEGREES) * position.Dot(view));
  return {position.Dot(right) * scale, position.Dot(right.Cross(view)) * scale};
}

// Drags a part of the compass by the way given and shows which way `direction` went on the screen.
Vector2 DragOnScreen(GestureScene& scene, int part, const Vector3& direction, int dx, int dy) {
  const CameraParameters start = scene.hub.view;
  const Vector2 before = Locate(scene, direction);
  scene.Parameters().drag_multiplier = 0.5F;
  // The orbit begins where the mouse has left the dead zone; the far move outweighs that.
  scene.PressOnPart(part);
  scene.MoveMouse(500 + (dx > 0 ? 5 : dx < 0 ? -5 : 0), 300 + (dy > 0 ? 5 : dy < 0 ? -5 : 0));
  scene.hub.PerformOperations();
  scene.MoveMouse(500 + dx, 300 + dy);
  scene.hub.PerformOperations();
  const Vector2 after = Locate(scene, direction);
  scene.cube.OnLeftMouseUp(500 + dx, 300 + dy);
  scene.SetCamera(start);
  return after - before;
}

// A whole turn moves a part by up to 13 pixels. Beside the middle, where it turns round, perspective and the
// way itself blur the moment.
bool IsStill(double pixels) { return std::abs(pixels) < 4.0; }

// Whether what stands `offset` degrees on from each part goes with the mouse, as far as the turn moves it on
// the screen at all.
void ExpectToFollowTheMouse(GestureScene& scene, const CameraParameters& camera, double offset,
                            const char* what) {
  scene.SetCamera(camera);
  for (int part = LETTERS; part < END; ++part) {
    const double turn = (scene.Parameters().compass_angle + offset) / DEGREES;
    const Vector3& d = GetPartDirection(part);
    const Vector3 direction(d.x * std::cos(turn) - d.z * std::sin(turn), 0.0,
                            d.x * std::sin(turn) + d.z * std::cos(turn));
    const double right = DragOnScreen(scene, part, direction, 200, 0).x;
    const double left = DragOnScreen(scene, part, direction, -200, 0).x;
    const double up = DragOnScreen(scene, part, direction, 0, 200).y;
    const double down = DragOnScreen(scene, part, direction, 0, -200).y;
    EXPECT_TRUE(right > 0.0 || IsStill(right)) << what << ", " << part;
    EXPECT_TRUE(left < 0.0 || IsStill(left)) << what << ", " << part;
    EXPECT_TRUE(up > 0.0 || IsStill(up)) << what << ", " << part;
    EXPECT_TRUE(down < 0.0 || IsStill(down)) << what << ", " << part;
  }
}

class OrientorCompassFeelTest : public OrientorCompassDragTest {
 protected:
  OrientorCompassFeelTest() {
    Parameters().large_screen_size = 400;
    Parameters().size = OrientorParameters::SIZE_LARGE;
    cube.SetViewportSize(WIDTH, HEIGHT);
  }
};

// The parts are drawn a quarter turn on from their directions.
TEST_F(OrientorCompassFeelTest, seen_from_straight_above_or_below_the_part_follows_the_mouse) {
  for (const float angle : {0.0F, 30.0F}) {
    Parameters().compass_angle = angle;
    for (int turn = 0; turn < 8; ++turn) {
      const double heading = (turn + 0.3) * Math::PI / 4.0;
      const Vector3 top(std::cos(heading), 0.0, std::sin(heading));
      ExpectToFollowTheMouse(*this, LookWith(Vector3(0.0, -1.0, 0.0), top), 90.0, "above");
      ExpectToFollowTheMouse(*this, LookWith(Vector3(0.0, 1.0, 0.0), top), 90.0, "below");
    }
  }
}

// Aslant the sense goes by the direction itself, a quarter turn before the place where the part is drawn.
TEST_F(OrientorCompassFeelTest, seen_aslant_the_direction_of_the_part_follows_the_mouse) {
  for (const float angle : {0.0F, 30.0F}) {
    Parameters().compass_angle = angle;
    for (int turn = 0; turn < 8; ++turn) {
      const double heading = (turn + 0.3) * Math::PI / 4.0;
      const Vector3 level(std::cos(heading), 0.0, std::sin(heading));
      for (const double up : {-1.0, 1.0}) {
        const Vector3 top(0.0, up, 0.0);
        const char* const posture = up > 0.0 ? "upright" : "on its head";
        ExpectToFollowTheMouse(*this, LookWith(level - Vector3(0.0, 0.8, 0.0), top), 0.0, posture);
        ExpectToFollowTheMouse(*this, LookWith(level + Vector3(0.0, 0.8, 0.0), top), 0.0, posture);
      }
    }
  }
}

// Where the pressed part is drawn goes the way of the mouse along the ring, whatever the camera.
TEST_F(OrientorCompassFeelTest, with_the_switch_the_ring_follows_the_pointer_in_every_view) {
  EXPECT_FALSE(cube.CompassFollowsPointer());
  cube.SetCompassFollowsPointer(true);
  Random random;
  int drags = 0;
  for (int i = 0; i < 120; ++i) {
    const Vector3 view = random.Direction();
    const Vector3 top = random.Direction();
    if (std::abs(view.y) < 0.2 || view.Cross(top).Length() < 0.2) continue;  // the ring edge on, or no view
    SetCamera(LookWith(view, top));
    for (int part = RING; part < END; part += 3) {
      const Vector3& d = GetPartDirection(part);
      const Vector3 place(-d.z, 0.0, d.x);  // a quarter turn on
      const Vector2 before = Locate(*this, place);
      const Vector2 beside = Locate(*this, place + Vector3(place.z, 0.0, -place.x) * 0.01);
      const Vector2 step = beside - before;
      const double length = std::hypot(step.x, step.y);
      if (length < 0.3) continue;  // it comes toward the eye
      for (const double way : {100.0, -100.0}) {
        const Vector2 mouse = step * (way / length);
        const Vector2 went =
            DragOnScreen(*this, part, place, static_cast<int>(mouse.x), static_cast<int>(mouse.y));
        EXPECT_GT(went.x * mouse.x + went.y * mouse.y, 0.0) << i << ", " << part;
        ++drags;
      }
    }
  }
  EXPECT_GT(drags, 500);
}

}  // namespace
