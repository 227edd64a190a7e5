#include "camera/look_operation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "camera/stepper.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double DEGREE = oracle::PI / 180.0;

class OpenLook : public LookOperation {
 public:
  using LookOperation::GetDeltaXY;
  using LookOperation::IsKeepSceneUpright;
  using LookOperation::LevelCameraUpToSceneUp;
};

// Looking along -z from (0, 0, 10), right is +x, the world up +y. A drag across the view turns by 2 radians.
class Look : public ::testing::Test, public Stepper<OpenLook> {
 protected:
  Look() : Stepper(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {}

  void BeFree() { p.preserve_orbit_up_direction = false; }
  // Pixels that pitch the view down by that many degrees, turn it to the right likewise.
  void StepByDegrees(double right, double down) {
    p.viewport_width = p.viewport_height = 1000000;
    x += static_cast<int>(std::lround(right * DEGREE / 2.0 * 1e6));
    y += static_cast<int>(std::lround(down * DEGREE / 2.0 * 1e6));
    Step(x, y);
  }
  Vector3 View() const { return (camera.centre - camera.eye) / 10.0; }
  // Of the view to the right, seen from above.
  double Heading() const { return std::atan2(View().x, -View().z); }

  Vector3 Level(const Vector3& centre, const Vector3& up) {
    CameraParameters levelled = LookAt({}, centre, up);
    operation.LevelCameraUpToSceneUp(levelled);
    EXPECT_EQ(levelled.centre, centre);
    EXPECT_EQ(levelled.eye, Vector3());
    return levelled.up;
  }

  int x = 0;
  int y = 0;
};

// The look written a second time, on Eigen.
class ReferenceLook {
 public:
  ReferenceLook(const CameraParameters& start, const MemoryHub& hub)
      : p(hub.GetApplicationParameters()), w(oracle::From(hub.GetWorldUpDirection())), working(start) {
    upright = p.preserve_orbit_up_direction && p.align_orbit_up_direction;
    if (upright) Level();
  }

  void Frame(double dx, double dy, oracle::Camera& camera) {
    const double m = p.look_multiplier;
    if (p.look_invert_vertical_axis) dy = -dy;
    const oracle::Vec f = working.centre - working.eye;
    const oracle::Vec r = oracle::Unit(f.cross(working.up));
    const oracle::Vec f1 = oracle::Turn(r, m * dy, f);
    const oracle::Vec u1 = oracle::Unit(oracle::Turn(r, m * dy, working.up));
    double h = m * dx;
    const double limit = std::cos((p.look_invert_tolerance + 90.0) * DEGREE);
    if (u1.dot(w) < limit && upright) h = -h;
    const oracle::Vec axis = upright ? oracle::Unit(w) : u1;
    camera.centre = camera.eye + oracle::Turn(axis, h, f1);
    camera.up = oracle::Turn(axis, h, u1);
    working = camera;
  }

 private:
  void Level() {
    const oracle::Vec up = oracle::Unit(w);
    const oracle::Vec f = oracle::Unit(working.centre - working.eye);
    working.up = oracle::Unit(working.up);
    const double a = working.up.dot(up);
    const double b = f.dot(up);
    if (std::abs(a) < 0x1p-23 && std::abs(b) < 0x1p-23) {
      working.up = up;
    } else if (1.0 - std::abs(a) > 0x1p-23 && 1.0 - std::abs(b) > 0x1p-23) {
      working.up = (up - f * b) * (a < 0.0 ? -1.0 : 1.0);
    }
  }

  const ApplicationParameters& p;
  oracle::Vec w;
  oracle::Camera working;
  bool upright;
};

}  // namespace

TEST(LookTable, adds_no_virtual_operation) {
  EXPECT_EQ(VirtualSlot(&LookOperation::GetInitialCamera), -1);
  EXPECT_EQ(VirtualSlot(&OpenLook::GetDeltaXY), -1);
  EXPECT_EQ(VirtualSlot(&OpenLook::IsKeepSceneUpright), -1);
  EXPECT_EQ(VirtualSlot(&OpenLook::LevelCameraUpToSceneUp), -1);
}

// ---- turning ----

TEST_F(Look, a_full_width_drag_turns_the_view_to_the_right_by_the_multiplier) {
  Begin();
  Step(1000, 0);
  ExpectNear(View(), {std::sin(2.0), 0, -std::cos(2.0)});
  ExpectNear(camera.up, {0, 1, 0});
}

TEST_F(Look, a_drag_down_looks_down) {
  Begin();
  Step(0, 100);  // a fifth of the height
  ExpectNear(View(), {0, -std::sin(0.4), -std::cos(0.4)});
  ExpectNear(camera.up, {0, std::cos(0.4), -std::sin(0.4)});
}

TEST_F(Look, with_an_inverted_vertical_axis_a_drag_down_looks_up_and_turns_as_before) {
  p.look_invert_vertical_axis = true;
  Begin();
  Step(0, 100);
  ExpectNear(View(), {0, std::sin(0.4), -std::cos(0.4)});
  Step(100, 100);
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
}

TEST_F(Look, the_multiplier_scales_both_angles) {
  p.look_multiplier = 0.5;
  Begin();
  Step(200, 0);
  EXPECT_NEAR(Heading(), 0.1, 1e-13);
  Step(200, 200);
  EXPECT_NEAR(View().y, -std::sin(0.2), 1e-13);
}

TEST_F(Look, only_the_centre_and_up_change) {
  camera = WithAsymmetricFrustum(camera, 10, 20, 30, 40);
  camera.pivot = {7, 8, 9};
  Begin();
  Step(123, 45);
  ExpectOnlyMoved({&CameraParameters::centre, &CameraParameters::up});
}

TEST_F(Look, takes_no_account_of_time) {
  Begin();
  Step(100, 0, 0.0);
  Step(200, 0, 1e9);
  EXPECT_NEAR(Heading(), 0.4, 1e-13);
}

TEST_F(Look, the_motion_is_that_since_the_frame_before) {
  Begin(300, 200);
  Step(300, 200);
  EXPECT_EQ(View(), Vector3(0, 0, -1));
  Step(400, 200);
  Step(400, 200);
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
}

TEST_F(Look, a_frame_in_the_hub_folds_the_moves_since_the_last_one) {
  hub.BeginOperation(OPERATION_LOOK, 0, 0);
  hub.UpdateOperationParams(900, 400, OPERATION_LOOK);
  EXPECT_TRUE(hub.Drag(OPERATION_LOOK, 100, 0));
  camera = hub.view;
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
  hub.PerformOperations();
  camera = hub.view;
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
}

TEST_F(Look, goes_on_from_the_direction_it_made_and_from_the_eye_it_is_given) {
  Begin();
  Step(100, 0);
  camera.eye = {5, 6, 7};
  camera.centre = {50, 60, 70};
  camera.up = {1, 0, 0};
  Step(200, 0);
  EXPECT_EQ(camera.eye, Vector3(5, 6, 7));
  ExpectNear(View(), {std::sin(0.4), 0, -std::cos(0.4)});
  ExpectNear(camera.up, {0, 1, 0});
}

// ---- upright or free ----

TEST_F(Look, keeps_the_scene_upright_with_both_switches_only) {
  Begin();
  for (const bool preserve : {false, true}) {
    for (const bool align : {false, true}) {
      p.preserve_orbit_up_direction = preserve;
      p.align_orbit_up_direction = align;
      EXPECT_EQ(operation.IsKeepSceneUpright(), preserve && align);
    }
  }
}

TEST_F(Look, upright_turns_about_the_world_up_and_free_about_its_own) {
  // Pitched up by 60 degrees, then turned by 90.
  for (const bool upright : {true, false}) {
    p.align_orbit_up_direction = upright;
    camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    Begin();
    x = y = 0;
    StepByDegrees(90.0, -60.0);
    if (upright) {
      ExpectNear(View(), {0.5, std::sqrt(0.75), 0}, 1e-5);
      ExpectNear(camera.up, {-std::sqrt(0.75), 0.5, 0}, 1e-5);
    } else {
      ExpectNear(View(), {1, 0, 0}, 1e-5);
      ExpectNear(camera.up, {0, 0.5, std::sqrt(0.75)}, 1e-5);  // leans to the left
    }
  }
}

TEST_F(Look, the_world_up_of_the_yaw_needs_no_unit_length) {
  p.scene_up_direction = {0, 7, 0};
  Begin();
  Step(100, 0);
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
}

TEST_F(Look, asks_the_hub_for_the_world_up) {
  p.scene_is_world = false;
  p.world_up_direction = {0, 0, 1};
  camera = LookAt({0, 0, 10}, {10, 0, 10}, {0, 0.3, 1});
  Begin();
  ExpectNear(operation.GetInitialCamera().up, {0, 0, 1});
  Step(250, 0);
  ExpectNear(View(), {std::cos(0.5), -std::sin(0.5), 0});
}

TEST_F(Look, turns_the_other_way_once_it_has_tipped_over_by_more_than_the_tolerance) {
  // Pitched back beyond the zenith by 99.9 degrees it turns to the right, by 100.1 to the left. Looking
  // backwards, the heading of the view lies half a turn on.
  const auto turnAfter = [&](double pitch, double tolerance) {
    p.look_invert_tolerance = tolerance;
    camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    Begin();
    x = y = 0;
    StepByDegrees(0.0, -pitch);
    const double before = Heading();
    StepByDegrees(20.0, 0.0);
    return std::remainder(Heading() - before, 2.0 * oracle::PI) / DEGREE;
  };
  EXPECT_NEAR(turnAfter(99.9, 10.0), 20.0, 1e-3);
  EXPECT_NEAR(turnAfter(100.1, 10.0), -20.0, 1e-3);
  EXPECT_NEAR(turnAfter(90.1, 0.0), -20.0, 1e-3);
  EXPECT_NEAR(turnAfter(130.0, 45.0), 20.0, 1e-3);
  EXPECT_NEAR(turnAfter(-99.9, 10.0), 20.0, 1e-3);
  EXPECT_NEAR(turnAfter(-100.1, 10.0), -20.0, 1e-3);
}

TEST_F(Look, whether_it_has_tipped_over_is_asked_after_the_pitch_of_the_frame) {
  Begin();
  StepByDegrees(20.0, -110.0);
  // Backwards is a heading of 180 degrees; reversed, 20 degrees less.
  EXPECT_NEAR(Heading() / DEGREE, 160.0, 1e-3);
}

TEST_F(Look, free_never_turns_the_other_way) {
  BeFree();
  Begin();
  StepByDegrees(0.0, -150.0);
  StepByDegrees(20.0, 0.0);
  // To the right of the camera, which is +x still.
  EXPECT_NEAR(View().x, std::sin(20.0 * DEGREE), 1e-5);
}

// ---- levelling ----

TEST_F(Look, levels_the_initial_camera_upright_and_leaves_it_alone_when_free) {
  camera.up = {3, 4, 0};
  Begin();
  ExpectNear(operation.GetInitialCamera().up, {0, 1, 0});
  BeFree();
  Begin();
  EXPECT_EQ(operation.GetInitialCamera().up, Vector3(3, 4, 0));
  EXPECT_TRUE(SameBits(operation.GetInitialCamera(), camera));
}

TEST_F(Look, the_initial_camera_stays_during_the_drag) {
  Begin();
  EXPECT_TRUE(SameBits(operation.GetInitialCamera(), start));
  Step(100, 50);
  EXPECT_TRUE(SameBits(operation.GetInitialCamera(), start));
}

TEST_F(Look, levelling_puts_up_into_the_plane_of_the_view_and_the_world_up) {
  Begin();
  ExpectNear(Level({3, 0, 4}, {0.3, 2, 0.1}), {0, 1, 0});
  // f = (0.6, 0.8, 0): W - 0.8 f = (-0.48, 0.36, 0), of length 0.6 and left so.
  ExpectNear(Level({3, 4, 0}, {0, 1, 5}), {-0.48, 0.36, 0});
  ExpectNear(Level({3, 4, 0}, {0, -1, 5}), {0.48, -0.36, 0});  // upside down it stays
}

TEST_F(Look, levelling_a_camera_at_a_right_angle_to_the_world_up) {
  Begin();
  // The view level and the up level: leaning by 90 degrees.
  EXPECT_EQ(Level({0, 0, -5}, {1, 0, 0}), Vector3(0, 1, 0));
  EXPECT_EQ(Level({0, 0, -5}, {-1, 0, 0}), Vector3(0, 1, 0));
  // The up alone level.
  ExpectNear(Level({3, 4, 0}, {0, 0, 2}), {-0.48, 0.36, 0});
}

TEST_F(Look, levelling_leaves_a_parallel_up_or_view_with_a_normalised_up) {
  Begin();
  EXPECT_EQ(Level({0, 0, -5}, {0, 3, 0}), Vector3(0, 1, 0));
  EXPECT_EQ(Level({0, 0, -5}, {0, -3, 0}), Vector3(0, -1, 0));
  ExpectNear(Level({0, 5, 0}, {3, 4, 0}), {0.6, 0.8, 0});
  ExpectNear(Level({0, -5, 0}, {0, 0, 9}), {0, 0, 1});
}

TEST_F(Look, levelling_a_camera_without_up_takes_the_world_up_for_a_level_view) {
  Begin();
  EXPECT_EQ(Level({0, 0, -5}, {}), Vector3(0, 1, 0));
  EXPECT_EQ(Level({}, {}), Vector3(0, 1, 0));
}

TEST_F(Look, levelling_tells_a_right_angle_by_the_tolerance) {
  Begin();
  // Leaning by a little more than 90 degrees: within the tolerance the camera is put upright, beyond it
  // counts as upside down.
  ExpectNear(Level({0, 0, -5}, {1, -0.99 * 0x1p-23, 0}), {0, 1, 0});
  ExpectNear(Level({0, 0, -5}, {1, -1.01 * 0x1p-23, 0}), {0, -1, 0});
  // The same with a view off the level by a little.
  ExpectNear(Level({0, 0.99 * 0x1p-23, -1}, {-1, -0.5 * 0x1p-23, 0}), {0, 1, 0}, 1e-6);
  ExpectNear(Level({0, 1.01 * 0x1p-23, -1}, {-1, -0.5 * 0x1p-23, 0}), {0, -1, 0}, 1e-6);
}

TEST_F(Look, levelling_tells_parallel_by_the_tolerance) {
  Begin();
  // 1 - cos t exceeds 2^-23 from t = sqrt(2^-22) = 4.8828e-4 upward.
  const auto isLevelledWithUpOff = [&](double t) {
    return Level({0, 0, -5}, {std::sin(t), std::cos(t), 0}).x == 0.0;
  };
  EXPECT_FALSE(isLevelledWithUpOff(4.88e-4));
  EXPECT_TRUE(isLevelledWithUpOff(4.89e-4));
  const auto isLevelledWithViewOff = [&](double t) {
    return Level({std::sin(t), std::cos(t), 0}, {0, 1, 1}).z == 0.0;
  };
  EXPECT_FALSE(isLevelledWithViewOff(4.88e-4));
  EXPECT_TRUE(isLevelledWithViewOff(4.89e-4));
}

TEST_F(Look, levelling_normalises_the_world_up) {
  p.scene_up_direction = {0, 0, 20};
  Begin();
  ExpectNear(Level({0, 3, 4}, {1, 0, 1}), {0, -0.48, 0.36});
  EXPECT_EQ(Level({5, 0, 0}, {0, 1, 0}), Vector3(0, 0, 1));
}

// ---- the six-axis controller ----

TEST_F(Look, a_controller_turns_by_the_change_of_its_rotation_y_and_pitches_by_that_of_x) {
  operation.Set3DControllerOperation(true);
  Begin();
  operation.UpdateCursor(700, 300);  // takes no part
  StepController({9, 9, 9}, {0.1, 0.2, 0.9});
  ReferenceLook reference(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), hub);
  oracle::Camera expected(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  reference.Frame(0.2, 0.1, expected);
  AssertSame(camera, expected, 1e-13);
  double dx = 0.0;
  double dy = 0.0;
  operation.Update3DControllerInput({}, {0.25, -0.5, 0});
  operation.GetDeltaXY(dx, dy);
  EXPECT_NEAR(dx, -0.5, 1e-15);  // the difference of two sums
  EXPECT_NEAR(dy, 0.25, 1e-15);
}

// ---- bad input ----

TEST_F(Look, does_nothing_without_a_hub) {
  operation.InitOperation(0, 0, nullptr);
  const CameraParameters before = camera;
  Step(100, 100);
  EXPECT_TRUE(SameBits(camera, before));
}

TEST_F(Look, a_viewport_without_size_does_not_turn) {
  p.viewport_width = p.viewport_height = 0;
  Begin();
  Step(100, 100);
  EXPECT_EQ(View(), Vector3(0, 0, -1));
}

TEST_F(Look, cursors_at_both_ends_of_int_keep_the_eye_and_the_distance) {
  Begin(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  Step(std::numeric_limits<int>::max(), std::numeric_limits<int>::min());
  EXPECT_EQ(camera.eye, Vector3(0, 0, 10));
  EXPECT_NEAR((camera.centre - camera.eye).Length(), 10.0, 1e-12);
}

TEST_F(Look, a_tolerance_that_is_no_number_never_tips_over) {
  p.look_invert_tolerance = NOT_A_NUMBER;
  Begin();
  Step(100, 0);
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
}

TEST_F(Look, a_bad_multiplier_for_one_frame_leaves_the_next_one_good) {
  Begin();
  p.look_multiplier = NOT_A_NUMBER;
  Step(100, 0);
  p.look_multiplier = 2.0;
  camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  Step(200, 0);
  EXPECT_NEAR(Heading(), 0.2, 1e-13);
}

TEST_F(Look, a_camera_without_view_or_up_stays_finite) {
  for (const Vector3& centre : {Vector3(0, 0, 10), Vector3(0, 5, 10), Vector3(0, 0, 0)}) {
    for (const Vector3& up : {Vector3(), Vector3(0, 1, 0), Vector3(0, 0, 1)}) {
      for (const Vector3& worldUp : {Vector3(), Vector3(0, 1, 0)}) {
        p.scene_up_direction = worldUp;
        camera = LookAt({0, 0, 10}, centre, up);
        Begin();
        Step(100, 70);
        EXPECT_TRUE(camera.IsFinite());
      }
    }
  }
}

// ---- properties ----

TEST(LookProperty, follows_the_reference_through_whole_drags) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenLook> look(RandomCamera(random));
    ApplicationParameters& p = look.p;
    RandomDirections(random, p);
    p.preserve_orbit_up_direction = random.Integer(0, 3) > 0;
    p.align_orbit_up_direction = random.Integer(0, 3) > 0;
    p.look_invert_vertical_axis = random.Coin();
    p.look_multiplier = random.Uniform(-4.0, 4.0);
    p.look_invert_tolerance = random.Uniform(-20.0, 60.0);
    const bool controller = random.Integer(0, 3) == 0;
    look.operation.Set3DControllerOperation(controller);
    look.Begin(100, 100);

    ReferenceLook reference(look.camera, look.hub);
    oracle::Camera expected(look.camera);
    int x = 100;
    int y = 100;
    for (int frame = 0; frame < 5; ++frame) {
      if (controller) {
        const Vector3 rotation = random.Point(0.5);
        look.StepController(random.Point(1.0), rotation);
        reference.Frame(rotation.y, rotation.x, expected);
      } else {
        const int toX = random.Integer(-500, 1500);
        const int toY = random.Integer(-250, 750);
        look.Step(toX, toY);
        reference.Frame((toX - x) / 1000.0, (toY - y) / 500.0, expected);
        x = toX;
        y = toY;
      }
      // Directions of a few roundings each, times 100 units.
      ASSERT_NO_FATAL_FAILURE(AssertSame(look.camera, expected, 1e-10)) << i;
    }
  }
}

TEST(LookProperty, in_the_upright_mode_the_camera_never_rolls) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenLook> look(RandomCamera(random));
    RandomDirections(random, look.p);
    look.Begin();
    for (int frame = 0; frame < 5; ++frame) {
      look.Step(random.Integer(-1000, 1000), random.Integer(-500, 500));
      const oracle::Camera camera(look.camera);
      const oracle::Vec worldUp = oracle::From(look.hub.GetWorldUpDirection()).normalized();
      const oracle::Vec right = (camera.centre - camera.eye).cross(camera.up).normalized();
      // The start may lie 10^-3 radians off the vertical, which divides a rounding of 1e-16.
      ASSERT_LT(std::abs(right.dot(worldUp)), 1e-11) << i;
    }
  }
}

TEST(LookProperty, the_eye_and_the_viewing_distance_stay) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenLook> look(RandomCamera(random));
    RandomDirections(random, look.p);
    look.p.preserve_orbit_up_direction = random.Coin();
    const CameraParameters start = look.camera;
    const double distance = (start.centre - start.eye).Length();
    look.Begin();
    for (int frame = 0; frame < 5; ++frame) {
      look.Step(random.Integer(-1000, 1000), random.Integer(-500, 500));
    }
    ASSERT_EQ(look.camera.eye, start.eye) << i;
    ASSERT_EQ(look.camera.pivot, start.pivot) << i;
    // Five sums of eye and view, each rounded to 1.4e-14 at 100 units.
    ASSERT_NEAR((look.camera.centre - look.camera.eye).Length(), distance, 1e-12) << i;
    ASSERT_NEAR(look.camera.up.Length(), 1.0, 1e-14) << i;
  }
}

// The yaw has one axis for all frames and the pitch axis turns with it, so that both only add up.
TEST(LookProperty, any_closed_way_of_the_cursor_leads_back_in_the_upright_mode) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    // Within 40 degrees of level, pitched by at most 38 more: nothing tips over.
    CameraParameters start = RandomCamera(random);
    start.centre = start.eye + Vector3(std::cos(i), random.Uniform(-0.8, 0.8), std::sin(i)) * 10.0;
    start.up = {0, 1, 0};
    Stepper<OpenLook> look(start);
    look.Begin();
    for (int frame = 0; frame < 5; ++frame) look.Step(random.Integer(-2000, 2000), random.Integer(-160, 160));
    look.Step(0, 0);
    oracle::Camera expected(start);
    expected.up = oracle::From(look.operation.GetInitialCamera().up).normalized();
    ASSERT_NO_FATAL_FAILURE(AssertSame(look.camera, expected, 1e-11)) << i;
  }
}

TEST(LookProperty, there_and_back_on_one_axis_leads_back_in_the_free_mode) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    Stepper<OpenLook> look(RandomCamera(random));
    look.p.preserve_orbit_up_direction = false;
    // A yaw turns about the camera's up, which keeps its angle to the view only if it is a right one.
    const oracle::Camera start(look.camera);
    look.Begin();
    if (random.Coin()) {
      look.Step(random.Integer(-1000, 1000), 0);
    } else {
      look.Step(0, random.Integer(-500, 500));
    }
    look.Step(0, 0);
    oracle::Camera expected = start;
    expected.up.normalize();
    ASSERT_NO_FATAL_FAILURE(AssertSame(look.camera, expected, 1e-11)) << i;
  }
}
