#include "controller/cam3d_controller_operation.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "camera/dolly_operation.h"
#include "camera/look_operation.h"
#include "camera/pan_operation.h"
#include "controller/device_steps.h"
#include "controller/reference_motion.h"
#include "support/allocation_counter.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

using Controller = Cam3DControllerOperation;
using Mode = Cam3DControllerParameters;
using NavigationMode = Mode::NavigationMode;

constexpr NavigationMode MODES[] = {Mode::MODE_OBJECT, Mode::MODE_WALK, Mode::MODE_FLY, Mode::MODE_PAN};

Vector3 RandomInput(Random& random) {
  return {random.Uniform(-0.4, 0.4), random.Uniform(-0.4, 0.4), random.Uniform(-0.4, 0.4)};
}

}  // namespace

// ---- what it is made of ----

TEST(Cam3DControllerOperation, slots_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&Controller::InitOperation), 2);
  EXPECT_EQ(VirtualSlot(&Controller::PerformOperation), 3);
  EXPECT_EQ(VirtualSlot(&Controller::Update3DControllerInput), 4);
  EXPECT_EQ(VirtualSlot(&Controller::Set3DControllerOperation), 5);
  EXPECT_EQ(VirtualSlot(&Controller::GetUpDirection), 6);
  EXPECT_EQ(VirtualSlot(&Controller::DoOrbit), 7);
  EXPECT_EQ(VirtualSlot(&Controller::DoTrackAndDolly), 8);
}

TEST(Cam3DControllerOperation, consists_of_look_pan_and_dolly_that_listen_to_the_device) {
  const Controller operation;
  ASSERT_EQ(operation.GetOperationCount(), 3);
  EXPECT_NE(dynamic_cast<LookOperation*>(operation.GetOperation(0)), nullptr);
  EXPECT_NE(dynamic_cast<PanOperation*>(operation.GetOperation(1)), nullptr);
  EXPECT_NE(dynamic_cast<DollyOperation*>(operation.GetOperation(2)), nullptr);
  EXPECT_TRUE(operation.Is3DControllerOperation());
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(operation.GetOperation(i)->Is3DControllerOperation()) << i;
  EXPECT_TRUE(operation.GetOperation(0)->IsCombined());
  EXPECT_FALSE(operation.GetOperation(1)->IsCombined());
  EXPECT_FALSE(operation.GetOperation(2)->IsCombined());
}

TEST(Cam3DControllerOperation, without_one_of_its_members_nothing_happens) {
  for (int missing = 0; missing < 3; ++missing) {
    Steps steps(Mode::MODE_OBJECT);
    steps.Begin();
    steps.operation.RemoveOperation(missing);
    steps.StepController({0.1, 0.2, 0.3}, {0.1, 0.2, 0.3});
    EXPECT_TRUE(SameBits(steps.camera, START)) << missing;
  }
}

TEST(Cam3DControllerOperation, a_mode_that_is_none_does_not_move) {
  for (const int mode : {4, 7, -1}) {
    Steps steps(static_cast<NavigationMode>(mode));
    steps.Begin();
    for (int frame = 0; frame < 400; ++frame) steps.StepController({0.1, 0.2, 0.3}, {0.1, 0.2, 0.3});
    EXPECT_EQ(steps.camera.eye, START.eye) << mode;
    EXPECT_EQ(steps.camera.centre, START.centre) << mode;
  }
}

TEST(Cam3DControllerOperation, starts_from_the_camera_that_the_look_has_levelled) {
  CameraParameters tilted = LookAt({0, 5, 10}, {0, 0, 0}, {0.3, 1, 0});
  Steps steps(Mode::MODE_FLY, tilted);
  steps.Begin();
  steps.StepController({}, {});
  // In the plane of the view (0, -5, -10) and the world's y, perpendicular to the view: (0, 10, -5), of unit
  // length.
  const double length = std::sqrt(125.0);
  ExpectNear(steps.camera.up, {0, 10 / length, -5 / length});
  Steps leaning(Mode::MODE_FLY, tilted);
  leaning.p.align_orbit_up_direction = false;
  leaning.Begin();
  leaning.StepController({}, {});
  EXPECT_GT(leaning.camera.up.x, 0.2);
}

TEST(Cam3DControllerOperation, works_on_a_camera_of_its_own) {
  Steps steps(Mode::MODE_FLY);
  steps.Begin();
  steps.StepController({0, 0, 0.8}, {});
  const CameraParameters first = steps.camera;
  steps.camera = LookAt({5, 6, 7}, {1, 2, 3}, {0, 0, 1});  // a host that moves its camera is overruled
  steps.StepController({0, 0, 0.8}, {});
  ExpectNear(steps.camera.eye - first.eye, first.eye - START.eye);
  EXPECT_EQ(steps.camera.eye.x, 0.0);
}

// ---- no input ----

TEST(Cam3DControllerOperation, zero_input_leaves_eye_and_centre_though_up_is_squared) {
  CameraParameters leaning = LookAt({3, 4, 10}, {1, 0, 0}, {0, 1, 0.5});
  leaning.pivot = {1, 1, 1};
  for (const NavigationMode mode : MODES) {
    Steps steps(mode, leaning);
    steps.Begin();
    steps.StepController({}, {});
    ExpectNear(steps.camera.eye, leaning.eye);
    ExpectNear(steps.camera.centre, leaning.centre);
    const Vector3 view = leaning.centre - leaning.eye;
    EXPECT_NEAR(steps.camera.up.Dot(view), 0.0, 1e-12) << mode;
    EXPECT_NEAR(steps.camera.up.Length(), 1.0, 1e-12) << mode;
  }
}

// A move that touches nothing but the frame shows the up as it was squared: the squared length of the view
// times as long as its part perpendicular to the view.
TEST(Cam3DControllerOperation, the_squared_up_is_not_normalised) {
  Steps steps(static_cast<NavigationMode>(7));
  steps.camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 2, 1});
  steps.p.preserve_orbit_up_direction = false;
  steps.Begin();
  steps.StepController({}, {});
  // view (0, 0, -10), up (0, 2, 1): view x up = (20, 0, 0); (20, 0, 0) x view = (0, 200, 0).
  EXPECT_EQ(steps.camera.up, Vector3(0, 200, 0));
}

// The up is squared by a view whose length squared is below the tolerance, so nothing of it would be left.
TEST(Cam3DControllerOperation, a_view_that_is_hardly_long_turns_as_any_other) {
  for (const double length : {1e-2, 1e-3, 3e-4, 1e-4, 1e-6}) {
    for (const bool upright : {true, false}) {
      Steps steps(Mode::MODE_OBJECT, LookAt({0, 0, length}, {0, 0, 0}, {0, 1, 0}));
      steps.p.preserve_orbit_up_direction = upright;
      steps.Begin();
      for (int frame = 0; frame < 5; ++frame) steps.StepController({}, {0, 0.1 * (frame + 1), 0});
      // The inputs are steps: 0.1 and up to 0.5 make 1.5.
      ExpectNear(steps.camera.eye / length, {-std::sin(1.5), 0, std::cos(1.5)}, 1e-11);
      ExpectNear(steps.camera.up, {0, 1, 0});
    }
  }
}

// No up is left of one along the view: such a step counts as none.
TEST(Cam3DControllerOperation, no_step_leaves_a_camera_without_an_up) {
  Random random;
  for (int i = 0; i < 1000; ++i) {
    CameraParameters first = LookAt(random.Direction() * random.Magnitude(1e-6, 10.0), {0, 0, 0}, {0, 1, 0});
    if (i % 2 == 0) first.up = first.eye.Normalized();
    Steps steps(MODES[i % 4], first);
    steps.p.preserve_orbit_up_direction = steps.p.align_orbit_up_direction = random.Coin();
    steps.Begin();
    for (int frame = 0; frame < 5; ++frame) {
      steps.StepController(RandomInput(random), RandomInput(random));
      ASSERT_GT(steps.camera.up.Length(), Math::EPSILON_VALUE) << i;
      ASSERT_TRUE(steps.camera.IsFinite()) << i;
    }
  }
}

// ---- the model ----

// A turn by +a about the camera's up: Rotate turns against the right hand, so the eye at +z goes to -x.
TEST(Cam3DControllerOperation, turns_the_camera_about_its_pivot) {
  for (const bool upright : {true, false}) {
    Steps steps(Mode::MODE_OBJECT);
    steps.p.preserve_orbit_up_direction = upright;
    steps.Begin();
    steps.StepController({}, {0, 0.5, 0});
    ExpectNear(steps.camera.eye, {-10 * std::sin(0.5), 0, 10 * std::cos(0.5)});
    ExpectNear(steps.camera.centre, {0, 0, 0});
    ExpectNear(steps.camera.up, {0, 1, 0});
    steps.ExpectOnlyMoved({&CameraParameters::eye});
  }
}

TEST(Cam3DControllerOperation, lifts_the_camera_about_its_right) {
  for (const bool upright : {true, false}) {
    Steps steps(Mode::MODE_OBJECT);
    steps.p.preserve_orbit_up_direction = upright;
    steps.Begin();
    steps.StepController({}, {0.5, 0, 0});
    ExpectNear(steps.camera.eye, {0, 10 * std::sin(0.5), 10 * std::cos(0.5)});
    ExpectNear(steps.camera.up, {0, std::cos(0.5), -std::sin(0.5)});
  }
}

TEST(Cam3DControllerOperation, an_upright_model_is_not_rolled_by_any_input) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    Steps steps(Mode::MODE_OBJECT, LookAt(random.Direction() * 10.0, {0, 0, 0}, {0, 1, 0}));
    if (std::abs(steps.camera.eye.y) > 9.5) continue;
    steps.Begin();
    for (int frame = 0; frame < 20; ++frame) steps.StepController(RandomInput(random), RandomInput(random));
    // The right of a camera that is not rolled lies in the ground.
    const Vector3 right = (steps.camera.centre - steps.camera.eye).Cross(steps.camera.up).Normalized();
    ASSERT_NEAR(right.y, 0.0, 1e-11) << i;
  }
}

TEST(Cam3DControllerOperation, a_free_model_rolls_about_the_view) {
  Steps steps(Mode::MODE_OBJECT);
  steps.p.preserve_orbit_up_direction = false;
  steps.Begin();
  steps.StepController({}, {0, 0, 0.5});
  ExpectNear(steps.camera.eye, START.eye);
  // About the view (0, 0, -1) against the right hand, that is about +z with it: y goes to -x.
  ExpectNear(steps.camera.up, {-std::sin(0.5), std::cos(0.5), 0});
}

// Half of the input is a fraction of the view, which is 20 units wide and high at the pivot.
TEST(Cam3DControllerOperation, pans_by_half_the_input) {
  for (const NavigationMode mode : {Mode::MODE_OBJECT, Mode::MODE_PAN}) {
    Steps steps(mode);
    steps.Begin();
    steps.StepController({0.1, 0.2, 0}, {});
    ExpectNear(steps.camera.eye, {-1.0, -2.0, 10.0});
    steps.ExpectOnlyMoved({&CameraParameters::eye, &CameraParameters::centre});
  }
}

// -0.5 of the input, times the depth of the pivot over the distance, which is 1, times 4.
TEST(Cam3DControllerOperation, goes_to_and_fro_in_perspective) {
  Steps steps(Mode::MODE_OBJECT);
  steps.Begin();
  steps.StepController({0, 0, 0.5}, {});
  ExpectNear(steps.camera.eye, {0, 0, 11.0});
  EXPECT_EQ(steps.camera.ortho_width, START.ortho_width);
}

// (10 + 0.5 * 3 * 4) / 10.
TEST(Cam3DControllerOperation, scales_an_orthographic_view) {
  Steps steps(Mode::MODE_PAN, WithOrthographic(START, 30, 20));
  steps.p.scene_scale = 3.0;
  steps.Begin();
  steps.StepController({0, 0, 0.5}, {});
  EXPECT_DOUBLE_EQ(steps.camera.ortho_width, 48.0);
  EXPECT_DOUBLE_EQ(steps.camera.ortho_height, 32.0);
  ExpectNear(steps.camera.eye, START.eye);
}

// (10 + 4 input) / 10.
TEST(Cam3DControllerOperation, a_step_beyond_the_centre_mirrors_an_orthographic_view) {
  struct Row {
    double input;
    double scale;
  };
  for (const Row& row : {Row{-2.0, 0.2}, Row{-2.5, 0.0}, Row{-5.0, -1.0}, Row{-10.0, -3.0}}) {
    Steps steps(Mode::MODE_PAN, WithOrthographic(START, 30, 20));
    steps.Begin();
    steps.StepController({0, 0, row.input}, {});
    EXPECT_NEAR(steps.camera.ortho_width, 30.0 * row.scale, 1e-12) << row.input;
    EXPECT_NEAR(steps.camera.ortho_height, 20.0 * row.scale, 1e-12) << row.input;
  }
}

TEST(Cam3DControllerOperation, with_the_limit_an_orthographic_view_is_never_turned_inside_out) {
  struct Row {
    double input;
    double width;
  };
  for (const Row& row : {Row{-2.0, 6.0}, Row{-2.5, 30.0}, Row{-2.6, 30.0}, Row{-1e300, 30.0}}) {
    Steps steps(Mode::MODE_OBJECT, WithOrthographic(START, 30, 20));
    steps.operation.LimitOrthographicZoom(true);
    steps.Begin();
    steps.StepController({0, 0, row.input}, {0, 0.5, 0});
    EXPECT_NEAR(steps.camera.ortho_width, row.width, 1e-12) << row.input;
    EXPECT_NEAR(steps.camera.ortho_height, row.width / 1.5, 1e-12) << row.input;
    EXPECT_LT(steps.camera.eye.x, -4.0) << row.input;  // the turn is not left out
  }
}

// The distance of an orthographic camera that looks nowhere divides by zero; the hub lets none of it pass.
TEST(Cam3DControllerOperation, an_orthographic_view_without_distance_comes_to_no_harm) {
  CameraParameters nowhere = WithOrthographic(START, 30, 20);
  nowhere.centre = nowhere.eye;
  MemoryHub hub(nowhere);
  hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);
  hub.UpdateOperationParams({0.1, 0.1, 0.1}, {0.1, 0.1, 0.1}, OPERATION_CAM3D_CONTROLLER);
  for (int frame = 0; frame < 3; ++frame) hub.PerformOperations();
  EXPECT_TRUE(hub.GetCameraParameters().IsFinite());
  EXPECT_EQ(hub.view.ortho_width, 30.0);
  EXPECT_EQ(hub.applied, 0);
}

// ---- walking and flying ----

TEST(Cam3DControllerOperation, flies_along_its_own_axes) {
  Steps steps(Mode::MODE_FLY, LookAt({0, 10, 10}, {0, 0, 0}, {0, 1, 0}));
  steps.p.scene_scale = 2.0;
  steps.Begin();
  steps.StepController({0.2, 0.4, 0.8}, {});
  // 2.5 times the input along right x, up (0, 1, -1) / sqrt 2, forward (0, -1, -1) / sqrt 2.
  const double part = std::sqrt(0.5);
  ExpectNear(steps.camera.eye, {0.5, 10 + (1.0 - 2.0) * part, 10 - (1.0 + 2.0) * part});
  ExpectNear(steps.camera.centre - steps.camera.eye, {0, -10, -10});
}

TEST(Cam3DControllerOperation, walks_on_the_ground) {
  Steps steps(Mode::MODE_WALK, LookAt({0, 10, 10}, {0, 0, 0}, {0, 1, 0}));
  steps.Begin();
  steps.StepController({0.8, 0.4, 1.6}, {});
  ExpectNear(steps.camera.eye, {1.0, 10.5, 8.0});  // the view laid flat is -z
  ExpectNear(steps.camera.centre - steps.camera.eye, {0, -10, -10});
}

TEST(Cam3DControllerOperation, a_walk_straight_down_goes_along_the_up_of_the_camera) {
  Steps down(Mode::MODE_WALK, LookAt({0, 10, 0}, {0, 0, 0}, {1, 0, 0}));
  down.Begin();
  down.StepController({0, 0, 0.8}, {});
  ExpectNear(down.camera.eye, {1.0, 10.0, 0.0});
  Steps up(Mode::MODE_WALK, LookAt({0, -10, 0}, {0, 0, 0}, {1, 0, 0}));
  up.Begin();
  up.StepController({0, 0, 0.8}, {});
  ExpectNear(up.camera.eye, {-1.0, -10.0, 0.0});
}

// The view (0, -sin a, -cos a) with the up turned over: up . y = -cos a. Up to 10 degrees beyond the
// vertical, cos 100 degrees = -0.1736, the ways forward turn round; beyond that up is down.
TEST(Cam3DControllerOperation, a_walk_upside_down_goes_where_it_looks_up_to_the_tolerance) {
  const auto walk = [](double a, const Vector3& input) {
    const Vector3 view(0, -std::sin(a), -std::cos(a));
    const Vector3 up(0, -std::cos(a), std::sin(a));
    Steps steps(Mode::MODE_WALK, LookAt({0, 0, 0}, view * 10.0, up));
    steps.p.preserve_orbit_up_direction = false;
    steps.Begin();
    steps.StepController(input, {});
    return steps.camera.eye;
  };
  const double little = 81.0 * oracle::PI / 180.0;  // up . y = -0.156
  const double much = 79.0 * oracle::PI / 180.0;    // up . y = -0.191
  ExpectNear(walk(little, {0, 0, 0.8}), {0, 0, 1.0});
  ExpectNear(walk(little, {0, 0.8, 0}), {0, 1.0, 0});
  ExpectNear(walk(much, {0, 0, 0.8}), {0, 0, -1.0});
  ExpectNear(walk(much, {0, 0.8, 0}), {0, -1.0, 0});
}

// Twice the look multiplier's default 2: half the angle there, against the hand's sense as a look does.
TEST(Cam3DControllerOperation, turns_the_head_of_a_walker) {
  for (const NavigationMode mode : {Mode::MODE_WALK, Mode::MODE_FLY}) {
    Steps steps(mode);
    steps.Begin();
    steps.StepController({}, {0, 0.25, 0});
    ExpectNear(steps.camera.eye, START.eye);
    ExpectNear(steps.camera.centre, {10 * std::sin(0.5), 0, 10 - 10 * std::cos(0.5)});
  }
}

// ---- the pace ----

TEST(Cam3DControllerOperation, twice_the_bound_radius_away_goes_twice_as_far) {
  for (const NavigationMode mode : {Mode::MODE_WALK, Mode::MODE_FLY}) {
    const auto travel = [mode](double radius) {
      Steps steps(mode);
      steps.p.global_bound_centre = {0, 0, 2};
      steps.p.global_bound_radius = radius;  // the eye is 8 away from the centre
      steps.Begin();
      steps.StepController({0, 0, 0.8}, {});
      return 10.0 - steps.camera.eye.z;
    };
    EXPECT_NEAR(travel(8.0), 1.0, 1e-12);
    EXPECT_NEAR(travel(4.0), 2.0, 1e-12);
    EXPECT_NEAR(travel(9.0), 1.0, 1e-12);
    EXPECT_NEAR(travel(0.0), 1.0, 1e-12);  // no bounds
  }
}

// From the centre (1, 0, 0) of the box to the eye (0, 0, 10): (-1, 0, 10), of length sqrt 101. With the
// extents (2, 3, 5) the surface lies at min(2, 3 / 2^-23, 0.5) of it: twice as near.
TEST(Cam3DControllerOperation, the_pace_counts_to_the_surface_of_a_box) {
  const auto travel = [](const Vector3& centre, const Vector3& extent) {
    Steps steps(Mode::MODE_FLY);
    steps.p.global_bound_geometry = ApplicationParameters::BoundGeometryType::Box;
    steps.p.global_bound_box = Box3(centre, extent);
    steps.Begin();
    steps.StepController({0, 0, 0.8}, {});
    return 10.0 - steps.camera.eye.z;
  };
  EXPECT_NEAR(travel({1, 0, 0}, {2, 3, 5}), 2.0, 1e-12);
  EXPECT_NEAR(travel({1, 0, 0}, {0.25, 3, 5}), 4.0, 1e-12);
  EXPECT_NEAR(travel({1, 0, 0}, {2, 3, 20}), 1.0, 1e-12);
  EXPECT_NEAR(travel({0, 0, 10}, {2, 3, 5}), 1.0, 1e-12);  // the eye on the centre
  EXPECT_NEAR(travel({1, 0, 0}, {0, 0, 0}), 1.0, 1e-12);   // an empty box
}

// ---- inputs and frames ----

TEST(Cam3DControllerOperation, a_frame_without_a_new_input_takes_the_last_step_again) {
  Steps steps(Mode::MODE_FLY);
  steps.Begin();
  steps.StepController({0.8, 0, 0}, {});
  steps.Step(0, 0);
  steps.Step(0, 0);
  ExpectNear(steps.camera.eye, {3.0, 0, 10.0});
}

TEST(Cam3DControllerOperation, of_several_inputs_in_a_frame_the_last_one_counts) {
  Steps steps(Mode::MODE_FLY);
  steps.Begin();
  steps.operation.Update3DControllerInput({1.6, 0, 0}, {});
  steps.StepController({0.8, 0, 0}, {});
  ExpectNear(steps.camera.eye, {1.0, 0, 10.0});
}

TEST(Cam3DControllerOperation, a_new_begin_forgets_the_inputs) {
  Steps steps(Mode::MODE_OBJECT);
  steps.Begin();
  steps.StepController({}, {0.3, 0.3, 0});
  Controller& operation = steps.operation;
  operation.InitOperation(0, 0, &steps.hub);
  steps.Step(0, 0);
  ExpectNear(steps.camera.eye, START.eye);  // of the orbit, which is the operation's own
}

// ---- beside a reference ----

namespace {

// A step is at most a small multiple of the viewing distance, as a host sets its scale.
void RandomScene(Random& random, double distance, ApplicationParameters& p, NavigationMode mode) {
  RandomDirections(random, p);
  p.cam3d_controller_mode = mode;
  p.preserve_orbit_up_direction = random.Coin();
  p.align_orbit_up_direction = random.Integer(0, 3) == 0 ? random.Coin() : p.preserve_orbit_up_direction;
  p.scene_scale = distance * random.Magnitude(0.01, 0.5);
  p.dolly_multiplier = random.Uniform(0.5, 6.0);
  p.pan_multiplier = random.Uniform(0.5, 2.0);
  p.look_multiplier = random.Uniform(0.5, 3.0);
  p.look_invert_tolerance = random.Uniform(0.0, 30.0);
  p.look_invert_vertical_axis = random.Coin();
  using Geometry = ApplicationParameters::BoundGeometryType;
  p.global_bound_geometry = random.Coin() ? Geometry::Box : Geometry::Sphere;
  p.global_bound_radius = random.Integer(0, 9) == 0 ? 0.0 : random.Magnitude(1.0, 200.0);
  p.global_bound_centre = random.Point(20.0);
  p.global_bound_box =
      Box3(random.Point(20.0), Vector3(random.Magnitude(1.0, 100.0), random.Magnitude(1.0, 100.0),
                                       random.Integer(0, 9) == 0 ? 0.0 : 30.0));
}

}  // namespace

// 10000 streams through the hub, in each mode, projection and kind of bounds, upright and not: inputs without
// a frame and frames without an input among them. The roundings of ten frames grow with the numbers. Far out
// of a box, where each step is many times the last one, the view gets lost in the roundings of its place:
// there the stream ends.
TEST(Cam3DControllerOperation, moves_as_the_reference_does) {
  Random random;
  int compared = 0;
  for (int stream = 0; stream < 10000; ++stream) {
    const CameraParameters start = RandomCamera(random);
    MemoryHub hub(start);
    ApplicationParameters& p = hub.GetApplicationParameters();
    RandomScene(random, (start.centre - start.eye).Length(), p, MODES[stream % 4]);
    ASSERT_TRUE(hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0));
    ReferenceMotion reference(start, p);
    for (int frame = 0; frame < 10; ++frame) {
      for (int inputs = random.Integer(0, 2); inputs > 0; --inputs) {
        const Vector3 translation = random.Integer(0, 4) == 0 ? Vector3() : RandomInput(random);
        const Vector3 rotation = random.Integer(0, 4) == 0 ? Vector3() : RandomInput(random);
        hub.UpdateOperationParams(translation, rotation, OPERATION_CAM3D_CONTROLLER);
        reference.Input(oracle::From(translation), oracle::From(rotation));
      }
      hub.PerformOperations();
      reference.Frame();
      const CameraParameters& camera = hub.GetCameraParameters();
      const double size = 1.0 + camera.eye.Length() + camera.centre.Length() + camera.pivot.Length();
      SCOPED_TRACE(stream);
      const double distance = (camera.centre - camera.eye).Length();
      if (size > 1e6 * distance) break;
      ++compared;
      ASSERT_NO_FATAL_FAILURE(AssertSame(camera, reference.GetCamera(), 1e-10 * size * (frame + 1)));
      const double part = 1e-10 * (frame + 1) * size / distance;
      ASSERT_NEAR(camera.ortho_width, reference.GetWidth(), part * std::abs(reference.GetWidth()));
      ASSERT_NEAR(camera.ortho_height, reference.GetHeight(), part * std::abs(reference.GetHeight()));
    }
  }
  EXPECT_GT(compared, 97000);
}

// ---- hostile ----

TEST(Cam3DControllerOperation, hostile_inputs_and_cameras_never_reach_the_host) {
  Random random;
  constexpr double NUMBERS[] = {0.0,
                                1e300,
                                -1e300,
                                1e-300,
                                std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN(),
                                1e18,
                                -0.0,
                                3.0};
  const auto hostile = [&] {
    return Vector3(random.OneOf(NUMBERS), random.OneOf(NUMBERS), random.OneOf(NUMBERS));
  };
  for (int i = 0; i < 3000; ++i) {
    MemoryHub hub(i % 2 == 0 ? ExtremeCamera(random) : RandomCamera(random));
    hub.onApply = [&] { ASSERT_TRUE(hub.view.IsFinite()); };
    hub.GetApplicationParameters().cam3d_controller_mode = static_cast<NavigationMode>(random.Integer(-1, 5));
    hub.GetApplicationParameters().scene_scale = random.OneOf(NUMBERS);
    hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);
    for (int frame = 0; frame < 8; ++frame) {
      hub.UpdateOperationParams(hostile(), hostile(), OPERATION_CAM3D_CONTROLLER);
      hub.PerformOperations();
    }
    hub.EndOperation(OPERATION_CAM3D_CONTROLLER);
  }
}

TEST(Cam3DControllerOperation, a_frame_allocates_nothing) {
  for (const NavigationMode mode : MODES) {
    for (const CameraParameters& camera : {START, WithOrthographic(START, 30, 20)}) {
      MemoryHub hub(camera);
      hub.GetApplicationParameters().cam3d_controller_mode = mode;
      hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);
      hub.PerformOperations();
      const AllocationCounter counter;
      for (int frame = 0; frame < 100; ++frame) {
        hub.UpdateOperationParams({0.01, 0.02, 0.03}, {0.01, 0.02, 0.03}, OPERATION_CAM3D_CONTROLLER);
        hub.PerformOperations();
      }
      EXPECT_EQ(counter.GetAllocations(), 0U) << mode;
    }
  }
}
