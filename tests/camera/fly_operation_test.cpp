#include "camera/fly_operation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "camera/stepper.h"
#include "support/manual_platform.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr int LOWEST = std::numeric_limits<int>::min();
constexpr int HIGHEST = std::numeric_limits<int>::max();

// A walk that begins at (512, 256) of 1024 by 512 pixels. The dead zone reaches 32 pixels far: 1/32 of the
// width, 1/16 of the height. The ramp of a quarter ends 256 pixels further across, 128 down: all of these
// are exact in binary. At its end the walk moves 1 unit, or turns 1 radian, a second.
//
// Looking along -z from (0, 0, 10), right is +x. World up is y, the front x, the side z.
class Fly : public ::testing::Test, public Stepper<FlyOperation> {
 protected:
  static constexpr int FULL_RIGHT = 512 + 32 + 256;
  static constexpr int FULL_LEFT = 512 - 32 - 256;
  static constexpr int FULL_FORWARD = 256 - 32 - 128;
  static constexpr int FULL_BACK = 256 + 32 + 128;

  Fly() : Stepper(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {
    p.viewport_width = 1024;
    p.viewport_height = 512;
    p.fly_dead_zone_radius = 32;
  }
  ~Fly() override { operation.SetMoveAccelerated(false); }

  void Begin() { Stepper::Begin(512, 256); }
  void StandAt(const Vector3& view, const Vector3& up) {
    camera = LookAt({0, 0, 10}, Vector3(0, 0, 10) + view * 10.0, up);
    camera.pivot = {1, 2, 3};
    Begin();
  }
  // The way of a second at full speed forward, from a camera of that view and up.
  Vector3 WayForward(const Vector3& view, const Vector3& up) {
    StandAt(view, up);
    Step(512, FULL_FORWARD, 1.0);
    return camera.eye - Vector3(0, 0, 10);
  }
  // The angle, in the engine's sense about the world up, of a tenth of a second at full speed to the right.
  double TurnToTheRight(const Vector3& view, const Vector3& up) {
    StandAt(view, up);
    Step(FULL_RIGHT, 256, 0.1);
    // Of what is level in the frame: the view, or else the up.
    const bool vertical = std::abs(view.y) > 0.99;
    const oracle::Vec before = oracle::From(vertical ? up : view);
    const oracle::Vec after = oracle::From(vertical ? camera.up : camera.centre - camera.eye);
    const auto flat = [](oracle::Vec v) {
      v.y() = 0.0;
      return v;
    };
    return -oracle::SignedAngle(flat(before), flat(after), oracle::Vec(0, 1, 0));
  }
  Vector3 View() const { return (camera.centre - camera.eye) / 10.0; }
  double Heading() const { return std::atan2(View().x, -View().z); }
};

// The walk written a second time, on Eigen.
class ReferenceFly {
 public:
  ReferenceFly(int x, int y, const MemoryHub& hub)
      : p(hub.GetApplicationParameters()),
        worldUp(oracle::From(hub.GetWorldUpDirection())),
        front(oracle::From(hub.GetWorldFrontDirection())),
        initialX(x),
        initialY(y) {}

  void Frame(int x, int y, double dt, int keys, oracle::Camera& camera) {
    SetBias(x, y, IsInDeadZone(x, y));
    const double wx = (x - biasX - initialX) / static_cast<double>(p.viewport_width);
    const double wy = (y - biasY - initialY) / static_cast<double>(p.viewport_height);
    const double zx = p.fly_dead_zone_radius / static_cast<double>(p.viewport_width);
    const double zy = p.fly_dead_zone_radius / static_cast<double>(p.viewport_height);
    const double turn = Curve(std::max(0.0, (std::abs(wx) - zx) / p.fly_ramp_up_radius)) * dt;
    double go = Curve(std::max(0.0, (std::abs(wy) - zy) / p.fly_ramp_up_radius)) * dt;
    if (wy > 0.0) go = -go;

    const bool planar = p.fly_planar_motion;
    const double l = (camera.centre - camera.eye).norm();
    oracle::Vec f = oracle::Unit(camera.centre - camera.eye);
    const oracle::Vec s = front.cross(worldUp);
    oracle::Vec h = oracle::Unit(s * s.dot(f) + front * front.dot(f));
    if (h == oracle::Vec(0, 0, 0)) h = camera.up;
    double move = p.GetFlyMoveMultiplier() * p.scene_scale * go;
    oracle::Vec way = planar ? h : f;
    const double k = 0.7960837985490559;
    const double d = worldUp.dot(camera.up);
    const double e = worldUp.dot(f);
    const double small = 0x1p-23;
    if (planar && ((d < -small && e < -k) || (d > small && e > k))) way = -way;
    double angle = turn * p.fly_turn_multiplier;
    if (wx <= 0.0) angle = -angle;
    if (planar && d < -small) angle = -angle;
    if (planar && std::abs(d) < small && e > small) angle = -angle;
    const oracle::Vec axis = planar ? worldUp : camera.up;

    f = oracle::Unit(oracle::Turn(axis, angle, f));
    camera.up = oracle::Unit(oracle::Turn(axis, angle, camera.up));
    camera.eye += way * move;
    camera.centre = camera.eye + f * l;
    if (move == 0.0) move = p.fly_up_down_sensitivity;
    const oracle::Vec lift = oracle::Unit(planar ? worldUp : camera.up) * std::abs(move) * keys;
    camera.eye += lift;
    camera.centre += lift;
  }

  bool IsInDeadZone(int x, int y) const {
    const int radius = p.fly_dead_zone_radius;
    return std::abs(Wrapped(x, p.viewport_width) - initialX) < radius &&
           std::abs(Wrapped(y, p.viewport_height) - initialY) < radius;
  }

  int biasX = 0;
  int biasY = 0;

 private:
  static int Wrapped(int c, int size) { return c % size < 1 ? c % size + size : c % size; }
  static double Curve(double b) {
    if (b <= 0.0) return 0.0;
    return b < 1.0 ? (std::sin((b - 0.5) * oracle::PI) + 1.0) / 2.0 : b;
  }

  void SetBias(int x, int y, bool inZone) {
    if (!inDeadZone && inZone) {
      int reducedX = x;
      int reducedY = y;
      int wrapX = 0;
      int wrapY = 0;
      GetXYAndWrapCounts(reducedX, reducedY, wrapX, wrapY);
      const int margin = 2 * p.fly_dead_zone_radius;
      int outsideX = reducedX < initialX ? x - margin : x + margin;
      int outsideY = reducedY < initialY ? y - margin : y + margin;
      GetXYAndWrapCounts(outsideX, outsideY, wrapX, wrapY);
      biasX = p.viewport_width * wrapX;
      biasY = p.viewport_height * wrapY;
    }
    inDeadZone = inZone;
  }
  void GetXYAndWrapCounts(int& x, int& y, int& wrapX, int& wrapY) const {
    wrapX = (x - initialX) / p.viewport_width;
    x = (x - initialX) % p.viewport_width + initialX;
    wrapY = (y - initialY) / p.viewport_height;
    y = (y - initialY) % p.viewport_height + initialY;
  }

  const ApplicationParameters& p;
  oracle::Vec worldUp;
  oracle::Vec front;
  int initialX;
  int initialY;
  bool inDeadZone = true;
};

}  // namespace

// ---- the class ----

TEST(FlyTable, its_virtual_operations_follow_those_of_every_operation) {
  EXPECT_EQ(VirtualSlot(&FlyOperation::GetUpDirection), 6);
  EXPECT_EQ(VirtualSlot(&FlyOperation::IsMovingForward), 7);
  EXPECT_EQ(VirtualSlot(&FlyOperation::IsMovingBack), 8);
  EXPECT_EQ(VirtualSlot(&FlyOperation::IsMovingRight), 9);
  EXPECT_EQ(VirtualSlot(&FlyOperation::IsMovingLeft), 10);
  EXPECT_EQ(VirtualSlot(&FlyOperation::IsMoveAccelerated), 11);
  EXPECT_EQ(VirtualSlot(&FlyOperation::SetMoveAccelerated), 12);
  EXPECT_EQ(VirtualSlot(&FlyOperation::GetWalkCursorID), -1);
  EXPECT_EQ(VirtualSlot(&FlyOperation::IsInDeadZone), -1);
}

TEST_F(Fly, acceleration_is_one_switch_for_all_walks) {
  FlyOperation other;
  EXPECT_FALSE(other.IsMoveAccelerated());
  operation.SetMoveAccelerated(true);
  EXPECT_TRUE(other.IsMoveAccelerated());
  other.SetMoveAccelerated(false);
  EXPECT_FALSE(operation.IsMoveAccelerated());
}

TEST_F(Fly, acceleration_does_not_change_the_motion) {
  const Vector3 way = WayForward({0, 0, -1}, {0, 1, 0});
  operation.SetMoveAccelerated(true);
  EXPECT_EQ(WayForward({0, 0, -1}, {0, 1, 0}), way);
}

TEST_F(Fly, begins_with_the_bounds_of_the_scene_brought_up_to_date) {
  Begin();
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

// ---- cursors ----

TEST_F(Fly, shows_the_state_of_the_motion_by_its_cursor) {
  constexpr int X[] = {512 - 33, 512, 512 + 33};
  constexpr int Y[] = {256 - 33, 256, 256 + 33};
  // Rows: forward, neither, back; columns: left, neither, right.
  constexpr int WALK[3][3] = {{11, 7, 12}, {9, 6, 10}, {13, 8, 14}};
  constexpr int RUN[3][3] = {{19, 15, 20}, {17, 6, 18}, {21, 16, 22}};
  Begin();
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      operation.UpdateCursor(X[column], Y[row]);
      operation.SetMoveAccelerated(false);
      EXPECT_EQ(operation.GetWalkCursorID(), WALK[row][column]) << row << " " << column;
      operation.SetMoveAccelerated(true);
      EXPECT_EQ(operation.GetWalkCursorID(), RUN[row][column]) << row << " " << column;
    }
  }
}

TEST_F(Fly, at_rest_on_the_edge_of_the_dead_zone_it_shows_the_cursor_of_standing) {
  Begin();
  for (const bool accelerated : {false, true}) {
    operation.SetMoveAccelerated(accelerated);
    for (const int x : {512 - 32, 512 + 32}) {
      operation.UpdateCursor(x, 256 + 32);
      EXPECT_FALSE(operation.IsInDeadZone());
      EXPECT_EQ(operation.GetWalkCursorID(), 6);
    }
  }
}

TEST_F(Fly, near_the_start_on_one_axis_only_the_other_shows) {
  Begin();
  operation.UpdateCursor(512 + 31, 256 - 200);
  EXPECT_EQ(operation.GetWalkCursorID(), 7);
  operation.UpdateCursor(512 + 200, 256 - 31);
  EXPECT_EQ(operation.GetWalkCursorID(), 10);
}

TEST_F(Fly, wrapped_back_into_the_dead_zone_it_shows_the_cursor_of_standing) {
  Begin();
  operation.UpdateCursor(512 + 1024, 256);
  EXPECT_TRUE(operation.IsMovingRight());
  EXPECT_EQ(operation.GetWalkCursorID(), 6);
}

TEST_F(Fly, asks_its_virtual_operations_for_the_cursor) {
  class Own : public FlyOperation {
   public:
    bool IsMovingLeft() const override { return true; }
    bool IsMoveAccelerated() const override { return true; }
  };
  Own own;
  Begin();
  own.InitOperation(512, 256, &hub);
  own.UpdateCursor(512, 400);
  EXPECT_EQ(own.GetWalkCursorID(), 21);
}

TEST_F(Fly, moves_in_a_direction_once_the_cursor_is_beyond_the_dead_radius) {
  Begin();
  const struct {
    int x;
    int y;
    bool forward;
    bool back;
    bool left;
    bool right;
  } rows[] = {
      {512, 256, false, false, false, false},       {512, 256 - 32, false, false, false, false},
      {512, 256 - 33, true, false, false, false},   {512, 256 + 32, false, false, false, false},
      {512, 256 + 33, false, true, false, false},   {512 - 32, 256, false, false, false, false},
      {512 - 33, 256, false, false, true, false},   {512 + 32, 256, false, false, false, false},
      {512 + 33, 256, false, false, false, true},   {LOWEST, LOWEST, true, false, true, false},
      {HIGHEST, HIGHEST, false, true, false, true},
  };
  for (const auto& row : rows) {
    operation.UpdateCursor(row.x, row.y);
    EXPECT_EQ(operation.IsMovingForward(), row.forward) << row.x << " " << row.y;
    EXPECT_EQ(operation.IsMovingBack(), row.back) << row.x << " " << row.y;
    EXPECT_EQ(operation.IsMovingLeft(), row.left) << row.x << " " << row.y;
    EXPECT_EQ(operation.IsMovingRight(), row.right) << row.x << " " << row.y;
  }
}

// ---- the dead zone and wrapped cursors ----

TEST_F(Fly, the_dead_zone_reaches_less_than_its_radius_on_both_axes) {
  Begin();
  const struct {
    int dx;
    int dy;
    bool inside;
  } rows[] = {{0, 0, true},    {31, 31, true},   {-31, -31, true}, {32, 0, false},
              {-32, 0, false}, {0, 32, false},   {0, -32, false},  {31, -32, false},
              {200, 0, false}, {0, -200, false}, {31, -31, true}};
  for (const auto& row : rows) {
    for (const int wraps : {-3, -1, 0, 1, 5}) {
      operation.UpdateCursor(512 + row.dx + wraps * 1024, 256 + row.dy - wraps * 512);
      EXPECT_EQ(operation.IsInDeadZone(), row.inside) << row.dx << " " << row.dy << " " << wraps;
    }
  }
}

TEST_F(Fly, in_the_dead_zone_a_remainder_below_1_counts_one_viewport_further) {
  const auto isInside = [&](int startX, int x) {
    operation.InitOperation(startX, 256, &hub);
    operation.UpdateCursor(x, 256);
    return operation.IsInDeadZone();
  };
  EXPECT_FALSE(isInside(0, 0));  // 0 counts as 1024
  EXPECT_TRUE(isInside(0, 1));
  EXPECT_FALSE(isInside(0, -1));
  EXPECT_TRUE(isInside(1023, 0));
  EXPECT_TRUE(isInside(1023, -1));
  EXPECT_TRUE(isInside(1024, 1024));
  EXPECT_FALSE(isInside(1024, 1025));
}

TEST_F(Fly, inside_the_dead_zone_does_not_move_or_turn_yet_the_keys_move_it_each_frame) {
  Begin();
  Step(512 + 31, 256 - 31, 1.0);
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
  EXPECT_EQ(camera.centre, Vector3(0, 0, 0));
  operation.UpdateKey(KEY_UP, true);
  Step(512 + 31, 256 - 31, 1.0);
  Step(512 + 31, 256 - 31, 0.0);  // by the frame, not by the time
  ExpectNear(camera.eye, {0, 0.02, 10});
  ExpectNear(camera.centre, {0, 0.02, 0});
  operation.UpdateKey(KEY_DOWN, true);
  Step(512, 256, 1.0);
  ExpectNear(camera.eye, {0, 0.02, 10});  // both make none
  operation.UpdateKey(KEY_UP, false);
  p.fly_up_down_sensitivity = 0.5;
  Step(512, 256, 1.0);
  ExpectNear(camera.eye, {0, -0.48, 10});
}

TEST_F(Fly, with_a_cursor_that_wraps_the_speed_runs_on_and_is_renewed_in_the_dead_zone_only) {
  Begin();
  // Outside the dead zone of the other axis: past the edge of the viewport and past the start, two
  // viewports to the right, the turn grows and grows.
  for (const int x : {900, 1024, 1400, 512 + 1024, 2000, 512 + 2048}) {
    const double before = Heading();
    Step(x, 256 + 32, 0.01);
    const double b = ((x - 512) / 1024.0 - 1 / 32.0) * 4.0;
    EXPECT_NEAR(std::remainder(Heading() - before, 2 * oracle::PI), 0.01 * b, 1e-12) << x;
  }
  // In the dead zone the two viewports are forgotten.
  Step(512 + 2048, 256, 0.01);
  double before = Heading();
  Step(512 + 2048, 256, 0.01);
  EXPECT_NEAR(Heading(), before, 1e-14);
  Step(FULL_RIGHT + 2048, 256, 0.01);
  EXPECT_NEAR(Heading() - before, 0.01, 1e-13);
  EXPECT_TRUE(operation.IsMovingRight());
  before = Heading();
  // One viewport to the left again is an offset of one to the left.
  Step(512 + 1024, 256 + 32, 0.01);
  EXPECT_NEAR(Heading() - before, -0.01 * (1 - 1 / 32.0) * 4.0, 1e-13);
}

TEST_F(Fly, wraps_are_forgotten_on_either_side_of_the_start) {
  const auto speedAfter = [&](int x, int y) {
    StandAt({0, 0, -1}, {0, 1, 0});
    Step(900, 400, 0.0);  // out of the dead zone
    Step(x, y, 1.0);
    return std::abs(Heading()) + (camera.eye - Vector3(0, 0, 10)).Length();
  };
  for (const int off : {-31, -1, 0, 1, 31}) {
    EXPECT_EQ(speedAfter(512 + 1024 + off, 256), 0.0) << off;
    EXPECT_EQ(speedAfter(512, 256 + 512 + off), 0.0) << off;
    EXPECT_EQ(speedAfter(512 + 3072 + off, 256 + 1024 + off), 0.0) << off;
    if (off == 0) continue;
    EXPECT_EQ(speedAfter(512 - 1024 + off, 256), 0.0) << off;
    EXPECT_EQ(speedAfter(512, 256 - 512 + off), 0.0) << off;
    EXPECT_EQ(speedAfter(512 - 3072 + off, 256 - 1024 + off), 0.0) << off;
  }
}

TEST_F(Fly, exactly_whole_viewports_to_the_left_count_one_less) {
  // What stands exactly on the start is taken for the right side of it.
  Begin();
  Step(900, 400, 0.0);
  Step(512 - 1024, 256, 0.01);
  EXPECT_NEAR(Heading(), -0.01 * (1 - 1 / 32.0) * 4.0, 1e-13);
}

TEST_F(Fly, a_cursor_that_jumps_from_the_start_into_the_wrapped_dead_zone_keeps_its_offset) {
  Begin();
  Step(512 + 1024, 256, 0.01);
  EXPECT_NEAR(Heading(), 0.01 * (1 - 1 / 32.0) * 4.0, 1e-13);
}

TEST_F(Fly, a_new_walk_has_forgotten_the_wraps_and_where_it_was) {
  Begin();
  Step(900, 400, 0.0);
  Step(512 + 1024, 256, 0.0);  // a bias of one viewport
  Step(900, 400, 0.0);         // and out of the zone
  StandAt({0, 0, -1}, {0, 1, 0});
  Step(FULL_RIGHT, 256, 0.01);
  EXPECT_NEAR(Heading(), 0.01, 1e-13);
  Step(900, 400, 0.0);
  StandAt({0, 0, -1}, {0, 1, 0});
  Step(512 + 1024, 256, 0.01);  // as at the start it is taken to be in the zone
  EXPECT_NEAR(Heading(), 0.01 * (1 - 1 / 32.0) * 4.0, 1e-13);
}

// ---- speed ----

TEST_F(Fly, at_the_ramps_end_the_curve_gives_1_on_both_sides) {
  for (const double beside : {-1e-9, 0.0, 1e-9}) {
    p.fly_ramp_up_radius = 0.25 * (1.0 + beside);
    ExpectNear(WayForward({0, 0, -1}, {0, 1, 0}), {0, 0, -1}, 2e-9);
  }
  p.fly_ramp_up_radius = 0.25;
  EXPECT_EQ(WayForward({0, 0, -1}, {0, 1, 0}).z, -1.0);
}

TEST_F(Fly, the_speed_eases_in_across_the_ramp_and_then_grows_linearly) {
  const double quarter = (1.0 - std::sqrt(0.5)) / 2.0;
  const struct {
    double b;
    double speed;
  } rows[] = {{0, 0}, {0.25, quarter}, {0.5, 0.5}, {0.75, 1 - quarter}, {1, 1}, {1.25, 1.25}, {2, 2}, {5, 5}};
  for (const auto& row : rows) {
    StandAt({0, 0, -1}, {0, 1, 0});
    const int pixels = static_cast<int>(std::lround(row.b * 128));
    Step(512, 256 - 32 - pixels, 1.0);
    EXPECT_NEAR(camera.eye.z, 10 - row.speed, 1e-14) << row.b;
    Step(512, 256 + 32 + pixels, 1.0);
    EXPECT_NEAR(camera.eye.z, 10, 1e-14) << row.b;
    Step(512 + 32 + 2 * pixels, 256, 0.125);
    EXPECT_NEAR(Heading(), 0.125 * row.speed, 1e-14) << row.b;
    Step(512 - 32 - 2 * pixels, 256, 0.125);
    EXPECT_NEAR(Heading(), 0.0, 1e-14) << row.b;
  }
}

TEST_F(Fly, the_distance_is_speed_times_time_and_scaled_by_multiplier_and_scene) {
  Begin();
  Step(512, FULL_FORWARD, 0.25);
  EXPECT_NEAR(camera.eye.z, 9.75, 1e-14);
  p.SetFlyMoveMultiplier(3.0);
  p.scene_scale = 0.5;
  Step(512, FULL_FORWARD, 0.25);
  EXPECT_NEAR(camera.eye.z, 9.375, 1e-14);
  EXPECT_NEAR(camera.centre.z, -0.625, 1e-14);
}

TEST_F(Fly, the_turn_is_scaled_by_its_own_multiplier) {
  p.fly_turn_multiplier = 0.5;
  p.scene_scale = 100.0;
  Begin();
  Step(FULL_RIGHT, 256, 0.25);
  EXPECT_NEAR(Heading(), 0.125, 1e-14);
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
}

TEST_F(Fly, the_move_multiplier_may_be_changing_in_time) {
  ManualPlatform platform;
  p.ChangeFlyMoveMultiplierInTime(0.0, 4.0, 2.0);
  Begin();
  p.GetFlyMoveMultiplier();  // the first look starts its clock
  platform.Advance(500);
  Step(512, FULL_FORWARD, 1.0);
  EXPECT_NEAR(camera.eye.z, 9.0, 1e-12);
}

TEST_F(Fly, the_hub_gives_it_the_time_of_the_frame) {
  ManualPlatform platform;
  hub.BeginOperation(OPERATION_FLY, 512, 256);
  hub.Drag(OPERATION_FLY, 512, FULL_FORWARD);  // the first frame lasts no time
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10));
  platform.Advance(250);
  EXPECT_TRUE(hub.PerformOperations());  // the cursor stands, the walk goes on
  EXPECT_NEAR(hub.view.eye.z, 9.75, 1e-14);
  platform.Advance(500);
  hub.PerformOperations();
  EXPECT_NEAR(hub.view.eye.z, 9.25, 1e-14);
}

// ---- directions ----

TEST_F(Fly, walks_on_the_plane_of_the_front_and_the_side) {
  const double c = std::cos(0.7);
  const double s = std::sin(0.7);
  ExpectNear(WayForward({0, -s, -c}, {0, c, -s}), {0, 0, -1});
  ExpectNear(WayForward({s, s, 0}, {0, 1, 0}), {1, 0, 0});
}

TEST_F(Fly, straight_up_or_down_goes_where_the_top_of_the_picture_points) {
  ExpectNear(WayForward({0, -1, 0}, {0, 0, -1}), {0, 0, -1});
  ExpectNear(WayForward({0, 1, 0}, {0, 0, 1}), {0, 0, 1});
  // As the host stored it, length and all.
  ExpectNear(WayForward({0, -1, 0}, {3, 0, 0}), {3, 0, 0});
}

TEST_F(Fly, steeply_up_or_upside_down_and_steeply_down_it_walks_the_other_way) {
  const double steep = 0.65;  // radians off the vertical
  for (const double off : {steep - 1e-6, steep + 1e-6, 1.5}) {
    const bool isSteep = off < steep;
    const double c = std::cos(off);
    const double s = std::sin(off);
    // The level part of the view is -z.
    ExpectNear(WayForward({0, c, -s}, {0, s, c}), {0, 0, isSteep ? 1.0 : -1.0});
    ExpectNear(WayForward({0, -c, -s}, {0, s, -c}), {0, 0, -1});
    ExpectNear(WayForward({0, -c, -s}, {0, -s, c}), {0, 0, isSteep ? 1.0 : -1.0});
    ExpectNear(WayForward({0, c, -s}, {0, -s, -c}), {0, 0, -1});
    // Neither upright nor upside down.
    ExpectNear(WayForward({0, c, -s}, {1, 0, 0}), {0, 0, -1});
    ExpectNear(WayForward({0, -c, -s}, {1, 0, 0}), {0, 0, -1});
    // By less than the tolerance.
    ExpectNear(WayForward({0, c, -s}, {1, 0.9 * 0x1p-23, 0}), {0, 0, -1});
    ExpectNear(WayForward({0, -c, -s}, {1, -0.9 * 0x1p-23, 0}), {0, 0, -1});
    ExpectNear(WayForward({0, c, -s}, {1, 1.1 * 0x1p-23, 0}), {0, 0, isSteep ? 1.0 : -1.0});
    ExpectNear(WayForward({0, -c, -s}, {1, -1.1 * 0x1p-23, 0}), {0, 0, isSteep ? 1.0 : -1.0});
  }
}

TEST_F(Fly, without_planar_motion_flies_along_the_view_and_turns_about_its_own_up) {
  p.fly_planar_motion = false;
  const double c = std::cos(0.2);
  const double s = std::sin(0.2);
  ExpectNear(WayForward({0, c, -s}, {0, s, c}), {0, c, -s});
  ExpectNear(WayForward({0, -c, -s}, {0, -s, c}), {0, -c, -s});
  // A turn about the own up keeps it.
  StandAt({0, 0.6, -0.8}, {0, 0.8, 0.6});
  Step(FULL_RIGHT, 256, 0.5);
  ExpectNear(camera.up, {0, 0.8, 0.6});
  ExpectNear(View(), {std::sin(0.5), 0.6 * std::cos(0.5), -0.8 * std::cos(0.5)});
  // Also upside down.
  StandAt({0, 0, -1}, {0, -1, 0});
  Step(FULL_RIGHT, 256, 0.5);
  ExpectNear(View(), {-std::sin(0.5), 0, -std::cos(0.5)});
}

TEST_F(Fly, turns_about_the_world_up_with_planar_motion) {
  StandAt({0, 0.6, -0.8}, {0, 0.8, 0.6});
  Step(FULL_RIGHT, 256, 0.5);
  ExpectNear(View(), {0.8 * std::sin(0.5), 0.6, -0.8 * std::cos(0.5)});
  ExpectNear(camera.up, {-0.6 * std::sin(0.5), 0.8, 0.6 * std::cos(0.5)});
}

TEST_F(Fly, turns_the_other_way_upside_down_and_straight_up) {
  const struct {
    Vector3 view;
    Vector3 up;
    double angle;
  } rows[] = {
      {{0, 0, -1}, {0, 1, 0}, 0.1},
      {{0, 0, -1}, {0, -1, 0}, -0.1},
      {{0, 0.6, -0.8}, {0, 0.8, 0.6}, 0.1},
      {{0, 0.6, -0.8}, {0, -0.8, -0.6}, -0.1},
      {{0, 1, 0}, {0, 0, 1}, -0.1},
      {{0, -1, 0}, {0, 0, -1}, 0.1},
      {{0, 0.6, -0.8}, {1, 0, 0}, -0.1},
      {{0, -0.6, -0.8}, {1, 0, 0}, 0.1},
      {{0, 0, -1}, {1, 0, 0}, 0.1},  // leaning, and level
      {{0, 0.9 * 0x1p-23, -1}, {1, 0, 0}, 0.1},
      {{0, 1.1 * 0x1p-23, -1}, {1, 0, 0}, -0.1},
      {{0, 0.6, -0.8}, {1, 0.9 * 0x1p-23, 0}, -0.1},
      {{0, 0.6, -0.8}, {1, 1.1 * 0x1p-23, 0}, 0.1},
      {{0, -0.6, -0.8}, {1, -0.9 * 0x1p-23, 0}, 0.1},
      {{0, -0.6, -0.8}, {1, -1.1 * 0x1p-23, 0}, -0.1},
  };
  for (const auto& row : rows) {
    EXPECT_NEAR(TurnToTheRight(row.view, row.up), row.angle, 1e-12)
        << row.view.y << " " << row.up.x << " " << row.up.y;
  }
}

TEST_F(Fly, a_turn_axis_of_another_length_scales_the_tangent_of_half_the_angle) {
  // Twice the length, half an angle of 0.25.
  p.scene_up_direction = {0, 2, 0};
  Begin();
  Step(FULL_RIGHT, 256, 0.5);
  EXPECT_NEAR(Heading(), 2.0 * std::atan(2.0 * std::tan(0.25)), 1e-13);
}

TEST_F(Fly, asks_the_hub_for_up_and_front) {
  p.scene_is_world = false;
  p.world_up_direction = {0, 0, 1};
  p.world_front_direction = {0, 1, 0};
  ExpectNear(WayForward({0.6, 0, -0.8}, {0.8, 0, 0.6}), {1, 0, 0});
  // A front slanted into the up has a plane of its own: front and side = front x up.
  p.world_front_direction = {0, 0.6, 0.8};
  ExpectNear(WayForward({0, 1, 0}, {0, 0, 1}), {0, 0.6, 0.8});
}

TEST_F(Fly, leaves_up_normalised) {
  StandAt({0, 0, -1}, {0, 5, 0});
  Step(FULL_RIGHT, 256, 0.5);
  ExpectNear(camera.up, {0, 1, 0});
}

TEST_F(Fly, changes_nothing_but_the_eye_the_centre_and_up) {
  camera = WithAsymmetricFrustum(camera, 10, 20, 30, 40);
  camera.up = {0.1, 1, 0};
  Begin();
  operation.UpdateKey(KEY_UP, true);
  Step(900, 400, 1.0);
  ExpectOnlyMoved({&CameraParameters::eye, &CameraParameters::centre, &CameraParameters::up});
}

TEST_F(Fly, goes_on_from_the_camera_it_is_given) {
  Begin();
  Step(512, FULL_FORWARD, 1.0);
  camera = LookAt({5, 0, 0}, {0, 0, 0}, {0, 1, 0});
  Step(512, FULL_FORWARD, 1.0);
  ExpectNear(camera.eye, {4, 0, 0});
}

// ---- keys ----

TEST_F(Fly, on_the_move_the_keys_lift_by_the_way_of_the_frame) {
  Begin();
  operation.UpdateKey(KEY_UP, true);
  Step(512, FULL_FORWARD, 0.25);
  ExpectNear(camera.eye, {0, 0.25, 9.75});
  ExpectNear(camera.centre, {0, 0.25, -0.25});
  Step(512, FULL_BACK, 0.5);  // backwards up is up still
  ExpectNear(camera.eye, {0, 0.75, 10.25});
  operation.UpdateKey(KEY_UP, false);
  operation.UpdateKey(KEY_DOWN, true);
  Step(512, FULL_BACK, 0.5);
  ExpectNear(camera.eye, {0, 0.25, 10.75});
  operation.UpdateKey(KEY_UP, true);
  Step(512, FULL_FORWARD, 0.5);
  ExpectNear(camera.eye, {0, 0.25, 10.25});
}

TEST_F(Fly, turning_alone_is_no_motion_to_the_keys) {
  Begin();
  operation.UpdateKey(KEY_UP, true);
  Step(FULL_RIGHT, 256, 0.5);
  EXPECT_NEAR(camera.eye.y, 0.01, 1e-15);
}

TEST_F(Fly, the_keys_lift_along_the_normalised_up) {
  p.scene_up_direction = {0, 3, 0};
  StandAt({0, 0, -1}, {0.6, 0.8, 0});
  operation.UpdateKey(KEY_UP, true);
  Step(512, 256, 0.0);
  ExpectNear(camera.eye, {0, 0.01, 10});
  p.fly_planar_motion = false;
  StandAt({0, 0, -1}, {6, 8, 0});
  Step(512, 256, 0.0);
  ExpectNear(camera.eye, {0.006, 0.008, 10});
}

// ---- bad input ----

TEST_F(Fly, does_nothing_without_a_hub) {
  operation.InitOperation(0, 0, nullptr);
  const CameraParameters before = camera;
  operation.UpdateKey(KEY_UP, true);
  Step(500, 500, 1.0);
  EXPECT_TRUE(SameBits(camera, before));
  EXPECT_TRUE(operation.IsInDeadZone());
  EXPECT_EQ(operation.GetWalkCursorID(), 6);
  EXPECT_TRUE(operation.IsMovingRight());  // nobody says how far the dead zone reaches
  EXPECT_FALSE(operation.IsMovingLeft());
}

TEST_F(Fly, a_viewport_without_size_neither_moves_nor_turns) {
  for (const int size : {0, -1, LOWEST}) {
    p.viewport_width = p.viewport_height = size;
    Begin();
    Step(900, 400, 1.0);
    Step(512, 256, 1.0);
    EXPECT_EQ(camera.eye, Vector3(0, 0, 10)) << size;
    EXPECT_EQ(camera.centre, Vector3(0, 0, 0)) << size;
  }
}

TEST_F(Fly, cursors_at_both_ends_of_int_move_by_their_whole_offset) {
  // 2^32 - 1 pixels across 1024 and beyond the dead zone, in quarters.
  Stepper::Begin(LOWEST, LOWEST);
  Step(LOWEST, HIGHEST, 1.0);
  EXPECT_NEAR(camera.eye.z, 10 + (4294967295.0 / 512 - 1 / 16.0) * 4, 1e-6);
  EXPECT_EQ(camera.eye.x, 0.0);
  EXPECT_TRUE(operation.IsMovingBack());
}

TEST_F(Fly, settings_that_are_no_numbers_leave_the_hubs_camera_finite) {
  using P = ApplicationParameters;
  ManualPlatform platform;
  for (double P::*const field :
       {&P::fly_turn_multiplier, &P::fly_ramp_up_radius, &P::scene_scale, &P::fly_up_down_sensitivity}) {
    for (const double bad : {NOT_A_NUMBER, std::numeric_limits<double>::infinity(), 0.0, -1.0}) {
      const double good = p.*field;
      hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
      p.*field = bad;
      hub.BeginOperation(OPERATION_FLY, 512, 256);
      hub.UpdateOperationParams(KEY_UP, true, OPERATION_FLY);
      for (const int x : {900, 512}) {
        platform.Advance(16);
        hub.Drag(OPERATION_FLY, x, x);
        EXPECT_TRUE(hub.view.IsFinite());
      }
      hub.EndOperation(OPERATION_FLY);
      p.*field = good;
    }
  }
}

TEST_F(Fly, a_camera_without_view_or_up_stays_finite) {
  for (const Vector3& view : {Vector3(), Vector3(0, 1, 0), Vector3(0, 0, -1)}) {
    for (const Vector3& up : {Vector3(), Vector3(0, 1, 0), Vector3(0, 0, 1)}) {
      for (const Vector3& worldUp : {Vector3(), Vector3(1, 0, 0), Vector3(0, 1, 0)}) {
        p.scene_up_direction = worldUp;
        StandAt(view, up);
        Step(900, 400, 1.0);
        EXPECT_TRUE(camera.IsFinite());
      }
    }
  }
}

// ---- properties ----

namespace {

// Any camera, or one as walkers have it: upright, upside down, straight up or down, leaning.
CameraParameters RandomWalker(Random& random, const Vector3& worldUp) {
  CameraParameters camera = RandomCamera(random);
  const Vector3 view = (camera.centre - camera.eye).Normalized();
  const Vector3 level = view.Cross(worldUp).Normalized();
  switch (random.Integer(0, 5)) {
    case 0:
      camera.up = worldUp;
      break;
    case 1:
      camera.up = -worldUp;
      break;
    case 2:
      camera.up = level;
      break;
    case 3:
      camera.centre = camera.eye + worldUp * (random.Coin() ? 5.0 : -5.0);
      camera.up = level;
      break;
    default:
      break;
  }
  return camera;
}

}  // namespace

TEST(FlyProperty, follows_the_reference_through_whole_walks) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<FlyOperation> fly{CameraParameters()};
    ApplicationParameters& p = fly.p;
    RandomDirections(random, p);
    fly.camera = RandomWalker(random, fly.hub.GetWorldUpDirection());
    p.fly_planar_motion = random.Coin();
    p.fly_dead_zone_radius = random.Integer(0, 60);
    p.fly_ramp_up_radius = random.Uniform(0.05, 0.5);
    p.fly_turn_multiplier = random.Uniform(-2.0, 2.0);
    p.fly_up_down_sensitivity = random.Uniform(-0.1, 0.1);
    p.SetFlyMoveMultiplier(random.Uniform(-3.0, 3.0));
    p.scene_scale = random.Magnitude(0.1, 3.0);
    p.viewport_width = random.Integer(200, 2000);
    p.viewport_height = random.Integer(200, 2000);
    const int startX = random.Integer(0, p.viewport_width);
    const int startY = random.Integer(0, p.viewport_height);
    fly.Begin(startX, startY);
    ReferenceFly reference(startX, startY, fly.hub);
    oracle::Camera expected(fly.camera);
    for (int frame = 0; frame < 6; ++frame) {
      // Half of the frames near the start or what wraps onto it.
      const bool near = random.Coin();
      const int spread = near ? p.fly_dead_zone_radius + 5 : 1500;
      const int wraps = near ? random.Integer(-2, 2) : 0;
      const int x = startX + wraps * p.viewport_width + random.Integer(-spread, spread);
      const int y =
          startY + random.Integer(-1, 1) * wraps * p.viewport_height + random.Integer(-spread, spread);
      const double dt = random.Integer(0, 5) == 0 ? 0.0 : random.Uniform(0.0, 0.1);
      const bool up = random.Integer(0, 3) == 0;
      const bool down = random.Integer(0, 3) == 0;
      fly.operation.UpdateKey(KEY_UP, up);
      fly.operation.UpdateKey(KEY_DOWN, down);
      fly.Step(x, y, dt);
      reference.Frame(x, y, dt, (up ? 1 : 0) - (down ? 1 : 0), expected);
      ASSERT_EQ(fly.operation.IsInDeadZone(), reference.IsInDeadZone(x, y)) << i;
      // Whether a walker who leans by exactly 90 degrees, or looks straight up, still does so is decided
      // within 2^-23; the rest is a few roundings of up to 1000 units.
      ASSERT_NO_FATAL_FAILURE(AssertSame(fly.camera, expected, 1e-9)) << i << " " << frame;
      const int radius = p.fly_dead_zone_radius;
      ASSERT_EQ(fly.operation.IsMovingForward(), y - reference.biasY < startY - radius) << i;
      ASSERT_EQ(fly.operation.IsMovingBack(), y - reference.biasY > startY + radius) << i;
      ASSERT_EQ(fly.operation.IsMovingLeft(), x - reference.biasX < startX - radius) << i;
      ASSERT_EQ(fly.operation.IsMovingRight(), x - reference.biasX > startX + radius) << i;
    }
  }
}

TEST(FlyProperty, never_touches_the_pivot_and_keeps_the_viewing_distance) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<FlyOperation> fly(RandomCamera(random));
    RandomDirections(random, fly.p);
    fly.p.fly_planar_motion = random.Coin();
    const oracle::Camera start(fly.camera);
    fly.Begin(500, 250);
    for (int frame = 0; frame < 4; ++frame) {
      fly.operation.UpdateKey(KEY_UP, random.Coin());
      fly.operation.UpdateKey(KEY_DOWN, random.Coin());
      fly.Step(random.Integer(-500, 1500), random.Integer(-500, 1000), random.Uniform(0.0, 0.1));
    }
    const oracle::Camera camera(fly.camera);
    ASSERT_EQ(camera.pivot, start.pivot) << i;
    ASSERT_NEAR((camera.centre - camera.eye).norm(), (start.centre - start.eye).norm(), 1e-11) << i;
    ASSERT_NEAR(camera.up.norm(), 1.0, 1e-14) << i;
  }
}

TEST(FlyProperty, with_planar_motion_and_no_key_the_eye_stays_on_its_plane) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<FlyOperation> fly(RandomCamera(random));
    RandomDirections(random, fly.p);
    const oracle::Camera start(fly.camera);
    fly.Begin(500, 250);
    for (int frame = 0; frame < 4; ++frame) {
      fly.Step(random.Integer(-500, 1500), random.Integer(-500, 1000), random.Uniform(0.0, 0.1));
    }
    const oracle::Vec up = oracle::From(fly.hub.GetWorldUpDirection()).normalized();
    // The front is at a right angle to the up here, and so the plane is.
    ASSERT_NEAR((oracle::From(fly.camera.eye) - start.eye).dot(up), 0.0, 1e-11) << i;
  }
}
