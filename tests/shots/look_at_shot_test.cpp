#include "shots/look_at_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

LookAtShotParameters Record(const Vector3& point, const Vector3& direction, double distance) {
  return LookAtShotParameters{0, 2.0, point, direction, distance};
}

// Azimuth and elevation run evenly, the azimuth the shorter way round; the up goes along. For views that do
// not run along the world up.
CameraParameters Expected(const CameraParameters& start, const Vec& worldUp,
                          const LookAtShotParameters& record, double t) {
  const Vec from = oracle::Forward(start);
  const Vec to = -From(record.direction).normalized();
  const auto flat = [&](const Vec& v) { return Vec(v - worldUp * worldUp.dot(v)); };
  const auto elevation = [&](const Vec& v) { return std::atan2(worldUp.dot(v), flat(v).norm()); };

  const double azimuth = oracle::SignedAngle(flat(from), flat(to), worldUp);
  const double climb = elevation(to) - elevation(from);
  const Eigen::Matrix3d turn = oracle::RightHanded(worldUp, t * azimuth);
  const Vec right = (turn * from).cross(worldUp).normalized();
  const Eigen::Matrix3d tilt = oracle::RightHanded(right, t * climb);

  const Vec goal = From(record.point) + From(record.direction).normalized() * record.distance;
  CameraParameters camera = start;
  camera.eye = To(From(start.eye) + t * (goal - From(start.eye)));
  camera.centre = t == 1.0 ? record.point : To(From(camera.eye) + tilt * turn * from);
  camera.up = To(tilt * turn * From(start.up).normalized());
  const auto tangent = [](double degrees) { return std::tan(degrees * oracle::PI / 180.0); };
  const double width = (tangent(start.left_fov) + tangent(start.right_fov)) * record.distance;
  const double height = (tangent(start.top_fov) + tangent(start.bottom_fov)) * record.distance;
  camera.ortho_width = oracle::Mix(t, start.ortho_width, width);
  camera.ortho_height = oracle::Mix(t, start.ortho_height, height);
  return camera;
}

void ExpectPose(const Step& step, const Vec& eye, const Vec& forward, const Vec& up) {
  EXPECT_TRUE(IsNear(step.camera.eye, eye, 1e-14));
  EXPECT_TRUE(IsNear(To(oracle::Forward(step.camera)), forward, 1e-14));
  EXPECT_TRUE(IsNear(step.camera.up, up, 1e-14));
}

}  // namespace

TEST(LookAtShot, with_a_target_equal_to_the_present_view_ends_in_one_step) {
  MemoryHub hub(LookAt({0, 3, 4}, {0, 0, 0}, {0, 1, 0}));
  hub.BeginShot(Record({0, 0, 0}, {0, 3, 4}, 5));
  const Step step = StepShot(hub, 0.016);
  EXPECT_FALSE(step.goesOn);
  EXPECT_TRUE(IsNear(step.camera.eye, Vec(0, 3, 4), 1e-14));
  EXPECT_EQ(step.camera.centre, Vector3(0, 0, 0));
}

TEST(LookAtShot, with_another_place_yaw_or_pitch_it_goes_on) {
  const LookAtShotParameters records[] = {Record({0, 0, 1e-3}, {0, 0, 1}, 10),      // another place
                                          Record({1e-3, 0, 0}, {-1e-4, 0, 1}, 10),  // another yaw
                                          Record({0, 1e-3, 0}, {0, -1e-4, 1}, 10)};
  for (const LookAtShotParameters& record : records) {
    MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    hub.BeginShot(record);
    EXPECT_TRUE(StepShot(hub, 0.016).goesOn);
  }
}

TEST(LookAtShot, writes_only_eye_centre_up_and_the_orthographic_size) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  hub.BeginShot(Record({1, 2, 3}, {1, 1, 1}, 5));
  // The host's camera changes under way: all other fields follow it.
  Random random;
  hub.view = WithMarks(RandomCamera(random, Frustum::Asymmetric));
  StepShot(hub, 1.0);
  const Step step = StepShot(hub, 0.0);
  CameraParameters expected = hub.view;
  expected.eye = step.camera.eye;
  expected.centre = step.camera.centre;
  expected.up = step.camera.up;
  expected.ortho_width = step.camera.ortho_width;
  expected.ortho_height = step.camera.ortho_height;
  EXPECT_TRUE(SameBits(step.camera, expected));
}

TEST(LookAtShot, ends_in_front_of_the_point_and_its_centre_is_the_point) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const Step step = StepAt(hub, Record({1, 2, 3}, {5, 0, 0}, 4), 1.0);
  EXPECT_FALSE(step.goesOn);
  ExpectPose(step, Vec(5, 2, 3), Vec(-1, 0, 0), Vec(0, 1, 0));
  EXPECT_EQ(step.camera.centre, Vector3(1, 2, 3));
}

TEST(LookAtShot, on_the_way_the_centre_is_one_unit_ahead) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (const double fraction : {0.0, 0.3, 0.9}) {
    EXPECT_NEAR(oracle::View(StepAt(hub, Record({1, 2, 3}, {1, 0, 0}, 4), fraction).camera).norm(), 1.0,
                1e-14);
  }
}

TEST(LookAtShot, the_orthographic_size_ends_as_the_size_of_the_view_at_the_points_distance) {
  MemoryHub hub(WithAsymmetricFrustum(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 45, 30, 20, 50));
  const Step step = StepAt(hub, Record({1, 2, 3}, {1, 0, 0}, 4), 1.0);
  const auto tangent = [](double degrees) { return std::tan(degrees * oracle::PI / 180.0); };
  EXPECT_NEAR(step.camera.ortho_width, 4 * (tangent(45) + tangent(30)), 1e-13);
  EXPECT_NEAR(step.camera.ortho_height, 4 * (tangent(20) + tangent(50)), 1e-13);
  // So a change of projection keeps the scale of the picture at the depth of the point.
  CameraParameters orthographic = step.camera;
  orthographic.projection_type = CameraParameters::ProjectionType::Orthographic;
  const Vec beside =
      From(step.camera.centre) + oracle::Right(step.camera) + 0.5 * oracle::Upright(step.camera);
  const auto extent = [&](const CameraParameters& camera) {
    return Eigen::Vector2d(oracle::Project(camera, beside) -
                           oracle::Project(camera, From(step.camera.centre)));
  };
  EXPECT_NEAR((extent(step.camera) - extent(orthographic)).norm(), 0.0, 1e-14);
}

// ---- along the up axis ----

TEST(LookAtShot, from_a_view_straight_down_it_rises_towards_what_is_to_be_seen) {
  // Looking down with -z up on the screen; the target view runs along +x.
  MemoryHub hub(LookAt({0, 10, 0}, {0, 0, 0}, {0, 0, -1}));
  const LookAtShotParameters record = Record({0, 0, 0}, {-1, 0, 0}, 10);
  ExpectPose(StepAt(hub, record, 0.0), Vec(0, 10, 0), Vec(0, -1, 0), Vec(0, 0, -1));
  // Half way: the up, which tells where the view will rise, has turned by 45 degrees from -z to +x, and the
  // view has risen by 45 degrees towards it.
  const double h = std::sqrt(0.5);
  ExpectPose(StepAt(hub, record, 0.5), Vec(-5, 5, 0), Vec(h * h, -h, -h * h), Vec(h * h, h, -h * h));
  ExpectPose(StepAt(hub, record, 1.0), Vec(-10, 0, 0), Vec(1, 0, 0), Vec(0, 1, 0));
}

TEST(LookAtShot, from_a_view_straight_up_it_sinks_towards_what_is_to_be_seen) {
  // Looking up with +z up on the screen, so the head leans back from -z.
  MemoryHub hub(LookAt({0, -10, 0}, {0, 0, 0}, {0, 0, 1}));
  const LookAtShotParameters record = Record({0, 0, 0}, {-1, 0, 0}, 10);
  const double h = std::sqrt(0.5);
  ExpectPose(StepAt(hub, record, 0.5), Vec(-5, -5, 0), Vec(h * h, h, -h * h), Vec(-h * h, h, h * h));
  ExpectPose(StepAt(hub, record, 1.0), Vec(-10, 0, 0), Vec(1, 0, 0), Vec(0, 1, 0));
}

TEST(LookAtShot, from_a_view_along_the_up_an_inclined_target_is_met_upright) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const double side = random.Coin() ? 1.0 : -1.0;
    const double angle = random.Uniform(-oracle::PI, oracle::PI);
    MemoryHub hub(LookAt({0, side * 10, 0}, {0, 0, 0}, {std::sin(angle), 0, std::cos(angle)}));
    Vector3 direction = random.Direction();
    while (std::abs(direction.y) > 0.99) direction = random.Direction();
    const Step end = StepAt(hub, Record({1, 2, 3}, direction, 4), 1.0);
    ASSERT_TRUE(IsNear(To(oracle::Forward(end.camera)), -From(direction), 1e-12)) << i;
    ASSERT_NEAR(oracle::Right(end.camera).y(), 0.0, 1e-7) << i;  // not rolled
    ASSERT_GT(end.camera.up.y, 0.0) << i;
    // The angle of the last turned view agrees with the centre, so nothing jumps at the end.
    hub.BeginShot(Record({1, 2, 3}, direction, 4));
    StepShot(hub, 2.0 * (1.0 - 1e-9));
    ASSERT_TRUE(IsNear(To(oracle::Forward(StepShot(hub, 0.0).camera)), -From(direction), 1e-7)) << i;
  }
}

TEST(LookAtShot, to_a_view_straight_down_or_up_it_only_tilts) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const double h = std::sqrt(0.5);
  const LookAtShotParameters down = Record({0, 0, 0}, {0, 1, 0}, 10);
  ExpectPose(StepAt(hub, down, 0.5), Vec(0, 5, 5), Vec(0, -h, -h), Vec(0, h, -h));
  ExpectPose(StepAt(hub, down, 1.0), Vec(0, 10, 0), Vec(0, -1, 0), Vec(0, 0, -1));
  const LookAtShotParameters up = Record({0, 0, 0}, {0, -1, 0}, 10);
  ExpectPose(StepAt(hub, up, 0.5), Vec(0, -5, 5), Vec(0, h, -h), Vec(0, h, h));
  ExpectPose(StepAt(hub, up, 1.0), Vec(0, -10, 0), Vec(0, 1, 0), Vec(0, 0, 1));
}

TEST(LookAtShot, between_two_views_along_the_up_the_view_holds_until_it_arrives) {
  // Neither view leaves an axis to tilt about: the eye flies, and the last step looks at the point.
  for (const double side : {1.0, -1.0}) {
    MemoryHub hub(LookAt({0, 10, 0}, {0, 0, 0}, {0, 0, -1}));
    const LookAtShotParameters record = Record({3, 0, 0}, {0, side, 0}, 5);
    for (const double fraction : {0.0, 0.5, 0.99}) {
      const Step step = StepAt(hub, record, fraction);
      EXPECT_NEAR((oracle::Forward(step.camera) - Vec(0, -1, 0)).norm(), 0.0, 1e-14);
      EXPECT_TRUE(IsNear(step.camera.up, Vec(0, 0, -1), 1e-14));
    }
    const Step end = StepAt(hub, record, 1.0);
    EXPECT_FALSE(end.goesOn);
    EXPECT_TRUE(IsNear(end.camera.eye, Vec(3, side * 5, 0), 1e-14));
    EXPECT_EQ(end.camera.centre, Vector3(3, 0, 0));
    EXPECT_TRUE(IsNear(end.camera.up, Vec(0, 0, -1), 1e-14));
  }
}

TEST(LookAtShot, a_view_within_the_tolerance_of_the_up_counts_as_along_it) {
  // A view that leans by an angle towards +x. Straight down, the start's up decides; leaning, the lean does.
  const auto halfWay = [](double lean, const Vector3& direction) {
    MemoryHub hub(LookAt({0, 0, 0}, {std::sin(lean), -std::cos(lean), 0}, {0, 0, -1}));
    return oracle::Forward(StepAt(hub, Record({0, 0, 0}, direction, 5), 0.5).camera);
  };
  const double h = std::sqrt(0.5);
  // To a level view along -z, from 1e-7 and from 3e-7 radians off: the latter has to turn from +x.
  EXPECT_NEAR((halfWay(1e-7, {0, 0, 1}) - Vec(0, -h, -h)).norm(), 0.0, 1e-6);
  EXPECT_NEAR((halfWay(3e-7, {0, 0, 1}) - Vec(0.5, -h, -0.5)).norm(), 0.0, 1e-6);
  // To a view as little off straight up or down, from a level one along -z: turning towards +x, or not at
  // all.
  const auto tiltTo = [](double lean, double side) {
    MemoryHub hub(LookAt({0, 0, 0}, {0, 0, -1}, {0, 1, 0}));
    const Vector3 direction(-std::sin(lean), -side * std::cos(lean), 0);
    return oracle::Forward(StepAt(hub, Record({0, 0, 0}, direction, 5), 0.5).camera);
  };
  for (const double side : {1.0, -1.0}) {
    EXPECT_NEAR((tiltTo(1e-7, side) - Vec(0, side * h, -h)).norm(), 0.0, 1e-6);
    EXPECT_NEAR((tiltTo(3e-7, side) - Vec(0.5, side * h, -0.5)).norm(), 0.0, 1e-6);
  }
}

// ---- degenerate cameras and all others ----

TEST(LookAtShot, a_camera_with_its_eye_on_its_centre_looks_along_the_target_direction) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 10}, {0, 1, 0}));
  const Step step = StepAt(hub, Record({1, 2, 3}, {2, 0, 0}, 4), 0.5);
  EXPECT_TRUE(IsNear(To(oracle::Forward(step.camera)), Vec(-1, 0, 0), 1e-14));
  EXPECT_TRUE(step.camera.IsFinite());
}

TEST(LookAtShot, an_upright_camera_does_not_roll_on_the_way) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const Vector3 eye = random.Point(100);
    MemoryHub hub(LookAt(eye, eye + random.Direction() * 10, {0, 1, 0}));
    hub.view.up = To(oracle::Upright(hub.view));
    const LookAtShotParameters record = Record(random.Point(50), random.Direction(), 20);
    for (const double fraction : {0.25, 0.5, 0.75, 1.0}) {
      const CameraParameters camera = StepAt(hub, record, fraction).camera;
      ASSERT_NEAR(oracle::Right(camera).y(), 0.0, 1e-9) << i;
      ASSERT_GE(camera.up.y, -1e-9) << i;
    }
  }
}

TEST(LookAtShot, the_world_up_rules_the_turn) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  hub.GetApplicationParameters().scene_is_world = false;
  hub.GetApplicationParameters().world_up_direction = {2, 0, 0};
  const LookAtShotParameters record = Record({0, 0, 0}, {0, 1, 0.5}, 10);
  EXPECT_TRUE(IsNear(StepAt(hub, record, 0.5).camera, Expected(hub.view, Vec(1, 0, 0), record, 0.5), 1e-12));
}

TEST(LookAtShot, random_cameras_run_evenly_in_azimuth_and_elevation) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters start = WithMarks(RandomCamera(random));
    const Vector3 worldUp = random.Direction();
    const LookAtShotParameters record =
        Record(random.Point(100), random.Direction() * random.Magnitude(0.1, 10), random.Magnitude(0.1, 100));
    MemoryHub hub(start);
    hub.GetApplicationParameters().scene_up_direction = worldUp * random.Magnitude(0.1, 10);
    const double fraction = random.Uniform(0.0, 1.2);
    const double t = fraction < 1.0 ? oracle::Ease(fraction) : 1.0;
    const Step step = StepAt(hub, record, fraction);
    ASSERT_EQ(step.goesOn, fraction < 1.0);
    // An azimuth comes out of a vector shortened by the steepness of the view: 1e-7 for the steepest.
    ASSERT_TRUE(IsNear(step.camera, Expected(start, From(worldUp), record, t), 1e-7)) << i;
  }
}
