// Fit to view, what is in view, and the small corrections of the camera.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "camera/oracle.h"
#include "camera/orbit_operation.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "korvane/camera_operations.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

using ProjectionType = CameraParameters::ProjectionType;
using BoundGeometryType = ApplicationParameters::BoundGeometryType;
constexpr double TOLERANCE = 0x1p-23;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

double Tangent(double degrees) { return std::tan(degrees * oracle::PI / 180.0); }

void ExpectNear(const Vector3& actual, const Vec& expected, double tolerance = 1e-12) {
  EXPECT_NEAR((From(actual) - expected).norm(), 0.0, tolerance * std::fmax(1.0, expected.norm()))
      << From(actual).transpose() << " instead of " << expected.transpose();
}

// Where a point lies in the frame of a view: right, up, ahead.
Vec ToView(const CameraParameters& camera, const Vec& point) {
  const Vec forward = (From(camera.centre) - From(camera.eye)).normalized();
  const Vec right = forward.cross(From(camera.up)).normalized();
  const Vec offset = point - From(camera.eye);
  return {offset.dot(right), offset.dot(right.cross(forward)), offset.dot(forward)};
}

// By how much a point lies inside each side of the frustum - left, right, top, bottom - at its depth.
std::array<double, 4> RoomInside(const CameraParameters& camera, const Vec& point) {
  const Vec p = ToView(camera, point);
  return {p.x() + Tangent(camera.left_fov) * p.z(), Tangent(camera.right_fov) * p.z() - p.x(),
          Tangent(camera.top_fov) * p.z() - p.y(), p.y() + Tangent(camera.bottom_fov) * p.z()};
}

// The same at right angles to each side, which is what a ball has beside it.
std::array<double, 4> RoomBeside(const CameraParameters& camera, const Vec& point) {
  std::array<double, 4> room = RoomInside(camera, point);
  const double angles[] = {camera.left_fov, camera.right_fov, camera.top_fov, camera.bottom_fov};
  for (std::size_t side = 0; side < 4; ++side) room[side] *= std::cos(angles[side] * oracle::PI / 180.0);
  return room;
}

// Of the pairs left and right, top and bottom, one touches on both sides. The eye that the other pair asks
// for slid back along the middle of its wedge, which takes both of its sides away by the same distance.
void ExpectOnePairTouchesAndTheOtherLeavesEvenRoom(const std::array<double, 4>& room, double slack) {
  for (const double each : room) ASSERT_GT(each, -slack);
  const bool horizontal = room[0] < slack && room[1] < slack;
  const bool vertical = room[2] < slack && room[3] < slack;
  ASSERT_TRUE(horizontal || vertical) << room[0] << " " << room[1] << " " << room[2] << " " << room[3];
  ASSERT_NEAR(room[0], room[1], slack);
  ASSERT_NEAR(room[2], room[3], slack);
}

Box3 RandomBox(Random& random) {
  Box3 box(random.Point(50),
           Vector3(random.Magnitude(0.1, 30), random.Magnitude(0.1, 30), random.Magnitude(0.1, 30)));
  if (random.Coin()) return box;
  const Axes axes = RandomAxes(random);
  box.SetAxis(0, axes.front);
  box.SetAxis(1, axes.up);
  box.SetAxis(2, To(From(axes.front).cross(From(axes.up))));
  return box;
}

Box3 MovedTo(Box3 box, const Vector3& centre) {
  box.SetCenter(centre);
  return box;
}

// A pair of half angles with an opening between them; either may lie beyond the axis.
void SetRandomAngles(Random& random, double& low, double& high) {
  const double opening = random.Uniform(10, 100);
  double skew = random.Uniform(-60, 60);
  low = opening / 2 - skew;
  while (std::abs(low) < 0.5 || std::abs(opening - low) < 0.5 || std::abs(low) > 85 ||
         std::abs(opening - low) > 85) {
    skew = random.Uniform(-60, 60);
    low = opening / 2 - skew;
  }
  high = opening - low;
}

CameraParameters RandomAsymmetricCamera(Random& random) {
  CameraParameters camera = RandomCamera(random, Frustum::Asymmetric);
  camera.ortho_width = random.Magnitude(0.1, 100);
  camera.ortho_height = camera.ortho_width * random.Uniform(0.3, 3);
  SetRandomAngles(random, camera.left_fov, camera.right_fov);
  SetRandomAngles(random, camera.bottom_fov, camera.top_fov);
  return camera;
}

Vec Unit(const Vector3& v) { return From(v).normalized(); }

// A hub for what depends on nothing but its parameters.
class Fit : public ::testing::Test {
 protected:
  Fit() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), p(hub.GetApplicationParameters()) {}

  MemoryHub hub;
  ApplicationParameters& p;
};

using FitBox = Fit;
using FitSphere = Fit;
using FitMove = Fit;
using OutsideView = Fit;
using ConstrainPivot = Fit;
using AlignUp = Fit;
using LeaveOrthographic = Fit;
using Directions = Fit;

// Stretches the horizontal extent, as a host does that shows its frustum in a wide window.
class Stretcher : public AspectRatioAdjuster {
 public:
  Stretcher() { SetAspectRatioAdjuster(this); }
  ~Stretcher() override { SetAspectRatioAdjuster(nullptr); }
  void Adjust(const CameraParameters&, int width, int height, double& horizontal, double& vertical) override {
    ++calls;
    horizontal *= static_cast<double>(width) / height;
    vertical *= 0.5;
  }
  int calls = 0;
};

}  // namespace

// ---- fitting a box ----

TEST_F(FitBox, all_corners_lie_inside_one_pair_of_sides_touches_and_the_other_leaves_even_room) {
  Random random;
  int beyondAxis = 0;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomAsymmetricCamera(random);
    const Box3 box = RandomBox(random);
    const Vector3 centre = random.Point(100);
    const Vector3 direction = random.Direction() * random.Magnitude(0.1, 10);
    ASSERT_TRUE(hub.FitBoundingBoxToView(centre, box, direction, random.Direction(), camera));
    if (std::min({camera.left_fov, camera.right_fov, camera.top_fov, camera.bottom_fov}) < 0) ++beyondAxis;

    std::array<double, 4> room;
    room.fill(std::numeric_limits<double>::infinity());
    const Box3 placed = MovedTo(box, centre);
    double size = (From(centre) - From(camera.eye)).norm();
    for (int corner = 0; corner < 8; ++corner) {
      const Vec point = From(placed.GetCorner(corner));
      // The axis of the view as the fit was asked for it: the centre may fall behind a far-off eye.
      CameraParameters axis = camera;
      axis.centre = To(From(camera.eye) + Unit(direction));
      ASSERT_GT(ToView(axis, point).z(), 0.0) << i;
      const std::array<double, 4> each = RoomBeside(axis, point);
      for (std::size_t side = 0; side < 4; ++side) room[side] = std::min(room[side], each[side]);
      size = std::fmax(size, (point - From(camera.eye)).norm());
    }
    ASSERT_NO_FATAL_FAILURE(ExpectOnePairTouchesAndTheOtherLeavesEvenRoom(room, 1e-9 * size)) << i;
  }
  EXPECT_GT(beyondAxis, 1000);
}

TEST_F(FitBox, keeps_the_direction_and_stores_up_target_and_pivot) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random);
    camera.perspective_with_ortho = random.Coin();
    const CameraParameters before = camera;
    const Vector3 centre = random.Point(100);
    const Vec direction = From(random.Direction());
    const Vec up = From(random.Direction()) * random.Magnitude(0.1, 10);
    ASSERT_TRUE(hub.FitBoundingBoxToView(centre, RandomBox(random), To(direction), To(up), camera));
    const Vec view = From(camera.centre) - From(camera.eye);
    ASSERT_NEAR(view.cross(direction).norm(), 0.0, 1e-9 * std::fmax(1.0, view.norm()));
    ASSERT_GT(view.dot(direction), 0.0);
    // The point of the axis nearest to the centre of the box.
    ASSERT_NEAR((From(centre) - From(camera.centre)).dot(direction), 0.0, 1e-10 * (1 + From(centre).norm()));
    ASSERT_NEAR((From(camera.up) - (up - direction * direction.dot(up)).normalized()).norm(), 0.0, 1e-9);
    ASSERT_EQ(camera.pivot, centre);
    CameraParameters rest = camera;
    rest.eye = before.eye;
    rest.centre = before.centre;
    rest.up = before.up;
    rest.pivot = before.pivot;
    rest.ortho_width = before.ortho_width;
    rest.ortho_height = before.ortho_height;
    ASSERT_TRUE(SameBits(rest, before));
  }
}

TEST_F(FitBox, the_side_that_needs_more_room_rules) {
  // A slab 8 wide and 2 high, 6 deep towards the eye, in 45 degrees: 4 + 3 from its centre.
  CameraParameters camera = LookAt({5, 5, 50}, {0, 0, 0}, {0, 1, 0});
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3({9, 9, 9}, {4, 1, 3}), {0, 0, -1}, {0, 1, 0}, camera));
  ExpectNear(camera.eye, Vec(1, 2, 10));
  ExpectNear(camera.centre, Vec(1, 2, 3));
  // 8 high.
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3({9, 9, 9}, {1, 4, 2}), {0, 0, -1}, {0, 1, 0}, camera));
  ExpectNear(camera.eye, Vec(1, 2, 9));
}

TEST_F(FitBox, a_symmetric_field_of_view_puts_the_eye_straight_before_the_centre) {
  // For a box that stands along the view; a leaning one shows one side more than the other.
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random, Frustum::Symmetric);
    const Vector3 centre = random.Point(100);
    const Box3 box({0, 0, 0},
                   {random.Magnitude(0.1, 30), random.Magnitude(0.1, 30), random.Magnitude(0.1, 30)});
    ASSERT_TRUE(hub.FitBoundingBoxToView(centre, box, {0, 0, -1}, {0, 1, 0}, camera));
    ASSERT_NEAR(camera.eye.x, centre.x, 1e-9);
    ASSERT_NEAR(camera.eye.y, centre.y, 1e-9);
  }
}

TEST_F(FitBox, the_orthographic_size_keeps_its_aspect_and_the_box_touches_it) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random, Frustum::Orthographic);
    const double aspect = camera.ortho_width / camera.ortho_height;
    const Box3 box = RandomBox(random);
    const Vector3 centre = random.Point(100);
    ASSERT_TRUE(hub.FitBoundingBoxToView(centre, box, random.Direction(), random.Direction(), camera));
    ASSERT_NEAR(camera.ortho_width / camera.ortho_height, aspect, 1e-12 * aspect);
    Eigen::Vector2d low(1e9, 1e9);
    Eigen::Vector2d high(-1e9, -1e9);
    const Box3 placed = MovedTo(box, centre);
    for (int corner = 0; corner < 8; ++corner) {
      const Eigen::Vector2d place = oracle::Project(camera, From(placed.GetCorner(corner)));
      low = low.cwiseMin(place);
      high = high.cwiseMax(place);
    }
    // Centred, and the wider way filled from edge to edge.
    ASSERT_NEAR((low + high - Eigen::Vector2d(1, 1)).norm(), 0.0, 1e-9);
    ASSERT_NEAR((high - low).maxCoeff(), 1.0, 1e-9);
  }
}

TEST_F(FitBox, a_box_without_height_is_fitted_by_its_width_however_narrow) {
  CameraParameters camera = WithOrthographic(hub.view, 4.0, 2.0);
  ASSERT_TRUE(
      hub.FitBoundingBoxToView({0, 0, 0}, Box3({0, 0, 0}, {0.2, 0, 0.1}), {0, 0, -1}, {0, 1, 0}, camera));
  EXPECT_NEAR(camera.ortho_width, 0.4, 1e-12);
  EXPECT_NEAR(camera.ortho_height, 0.2, 1e-12);
}

TEST_F(FitBox, an_orthographic_view_stands_as_far_off_as_the_perspective_one) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters perspective = RandomAsymmetricCamera(random);
    CameraParameters orthographic = perspective;
    orthographic.projection_type = ProjectionType::Orthographic;
    const Box3 box = RandomBox(random);
    const Vector3 direction = random.Direction();
    const Vector3 up = random.Direction();
    ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, box, direction, up, perspective));
    ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, box, direction, up, orthographic));
    const Vec between = From(perspective.eye) - From(orthographic.eye);
    ASSERT_NEAR(between.dot(From(direction)), 0.0, 1e-9 * From(orthographic.eye).norm());
    ASSERT_EQ(perspective.ortho_width, orthographic.ortho_width);
  }
}

TEST_F(FitBox, a_change_of_projection_afterwards_keeps_the_scale_of_the_picture_at_the_targets_depth) {
  // A picture on the wall: all of it at the depth of the target, its aspect that of the frustum.
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random, Frustum::Symmetric);
    camera.ortho_width = random.Magnitude(0.1, 100);
    camera.ortho_height = camera.ortho_width * Tangent(camera.top_fov) / Tangent(camera.left_fov);
    if (random.Coin()) camera.projection_type = ProjectionType::Orthographic;
    const Box3 wall({0, 0, 0}, {random.Magnitude(0.1, 30), random.Magnitude(0.1, 30), 0.0});
    const Vector3 centre = random.Point(50);
    ASSERT_TRUE(hub.FitBoundingBoxToView(centre, wall, {0, 0, -1}, {0, 1, 0}, camera));
    CameraParameters other = camera;
    other.projection_type =
        camera.IsOrthographic() ? ProjectionType::Perspective : ProjectionType::Orthographic;
    const Box3 placed = MovedTo(wall, centre);
    for (int corner = 0; corner < 8; ++corner) {
      const Vec point = From(placed.GetCorner(corner));
      ASSERT_NEAR((oracle::Project(camera, point) - oracle::Project(other, point)).norm(), 0.0, 1e-9);
    }
  }
}

TEST_F(FitBox, the_way_it_shows_the_box_goes_by_wish_axis_and_projection) {
  // Seen from the side of a skew frustum the perspective eye stands aside; the orthographic one does not.
  const auto standsAside = [&](ProjectionType type, bool wish, double degreesOffAxis) {
    CameraParameters camera = WithAsymmetricFrustum(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 45, 20, 30, 30);
    camera.projection_type = type;
    camera.perspective_with_ortho = wish;
    const double s = degreesOffAxis * oracle::PI / 180.0;
    const Vec direction(std::sin(s), 0, -std::cos(s));
    Box3 box({0, 0, 0}, {1, 1, 1});
    box.SetAxis(0, To(Vec(std::cos(s), 0, std::sin(s))));
    box.SetAxis(2, To(direction));
    EXPECT_TRUE(hub.FitBoundingBoxToView({0, 0, 0}, box, To(direction), {0, 1, 0}, camera));
    return From(camera.eye).cross(direction).norm() > 0.1;
  };
  // 1 - cos reaches 0.01, the reach of the axes, at 8.1096 degrees.
  EXPECT_TRUE(standsAside(ProjectionType::Perspective, false, 0.0));
  EXPECT_FALSE(standsAside(ProjectionType::Orthographic, false, 0.0));
  EXPECT_FALSE(standsAside(ProjectionType::Orthographic, false, 30.0));
  for (const auto type : {ProjectionType::Perspective, ProjectionType::Orthographic}) {
    EXPECT_FALSE(standsAside(type, true, 8.10));
    EXPECT_TRUE(standsAside(type, true, 8.12));
    EXPECT_FALSE(standsAside(type, true, 90.0));
  }
}

TEST_F(FitBox, a_direction_parallel_to_the_up_takes_the_first_of_a_list_that_is_perpendicular_to_it) {
  struct Row {
    Vec direction;
    Vec up;
  };
  const Row rows[] = {
      {{1, 0, 0}, {0, 1, 0}},  {{0, 1, 0}, {1, 0, 0}},  {{1, 1, 0}, {0, 0, 1}},  {{1, 1, -1}, {0, 1, 1}},
      {{1, 2, -1}, {1, 0, 1}}, {{1, -1, 3}, {1, 1, 0}}, {{1, 2, -3}, {1, 1, 1}},
  };
  for (const Row& row : rows) {
    for (const double sign : {1.0, -1.0}) {
      CameraParameters camera = hub.view;
      const Vec direction = row.direction.normalized();
      ASSERT_TRUE(
          hub.FitBoundingBoxToView({1, 2, 3}, Box3(), To(direction), To(direction * sign * 5), camera));
      ExpectNear(camera.up, row.up.normalized(), 1e-9);
    }
  }
}

TEST_F(FitBox, with_no_up_left_at_all_the_result_is_still_finite) {
  CameraParameters camera = hub.view;
  const Vector3 direction(1, 2, 3);
  EXPECT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), direction, direction, camera));
  EXPECT_EQ(camera.up, Vector3());
  EXPECT_TRUE(camera.IsFinite());
}

TEST_F(FitBox, an_up_that_is_perpendicular_already_is_only_normalised) {
  CameraParameters camera = hub.view;
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), {0, 0, -1}, {3, 4, 0}, camera));
  ExpectNear(camera.up, Vec(0.6, 0.8, 0), 1e-15);
  // Within the tolerance of perpendicular, 1.19e-7, it keeps what leans; beyond, it is laid flat.
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), {0, 0, -1}, {0, 1, 1.1e-7}, camera));
  EXPECT_NEAR(camera.up.z, 1.1e-7, 1e-15);
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), {0, 0, -1}, {0, 1, 1.3e-7}, camera));
  EXPECT_EQ(camera.up.z, 0.0);
}

TEST_F(FitBox, an_up_counts_as_parallel_when_less_than_the_tolerance_of_it_is_left_across_the_view) {
  CameraParameters camera = hub.view;
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), {0, 0, -1}, {1.1e-7, 0, 1}, camera));
  ExpectNear(camera.up, Vec(0, 1, 0), 1e-15);
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3(), {0, 0, -1}, {1.3e-7, 0, 1}, camera));
  ExpectNear(camera.up, Vec(1, 0, 0), 1e-8);
}

TEST_F(FitBox, the_box_is_placed_at_the_centre_that_is_given) {
  CameraParameters first = hub.view;
  CameraParameters second = hub.view;
  ASSERT_TRUE(hub.FitBoundingBoxToView({1, 2, 3}, Box3({0, 0, 0}, {1, 1, 1}), {0, 0, -1}, {0, 1, 0}, first));
  ASSERT_TRUE(
      hub.FitBoundingBoxToView({1, 2, 3}, Box3({77, 7, 7}, {1, 1, 1}), {0, 0, -1}, {0, 1, 0}, second));
  EXPECT_TRUE(SameBits(first, second));
}

TEST_F(FitBox, a_bad_box_place_or_camera_leaves_the_camera_as_it_is_or_finite) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = random.Coin() ? ExtremeCamera(random) : RandomCamera(random);
    const CameraParameters before = camera;
    Box3 box = RandomBox(random);
    Vector3 centre = random.Point(50);
    Vector3 direction = random.Direction();
    Vector3 up = random.Direction();
    switch (random.Integer(0, 7)) {
      case 0:
        box = Box3(Vector3(NOT_A_NUMBER), Vector3(NOT_A_NUMBER));
        break;
      case 1:
        box = Box3(Vector3(), Vector3());
        break;
      case 2:
        centre = Vector3(NOT_A_NUMBER);
        break;
      case 3:
        direction = random.Coin() ? Vector3() : Vector3(NOT_A_NUMBER);
        break;
      case 4:
        up = random.Coin() ? Vector3() : Vector3(NOT_A_NUMBER);
        break;
      case 5:
        up = direction;
        break;
      case 6:
        box.SetExtent(Vector3(random.Magnitude(1e-300, 1e300)));
        break;
      default:
        break;
    }
    if (!hub.FitBoundingBoxToView(centre, box, direction, up, camera)) {
      ASSERT_TRUE(SameBits(camera, before)) << i;
    }
    ASSERT_TRUE(camera.IsFinite()) << i;
  }
}

TEST_F(FitBox, a_box_of_no_numbers_gives_false_and_changes_nothing) {
  CameraParameters camera = hub.view;
  const Box3 bad{Vector3(NOT_A_NUMBER), Vector3(NOT_A_NUMBER)};
  EXPECT_FALSE(hub.FitBoundingBoxToView({1, 2, 3}, bad, {0, 0, -1}, {0, 1, 0}, camera));
  EXPECT_FALSE(hub.FitBoundingBoxToView(Vector3(NOT_A_NUMBER), Box3(), {0, 0, -1}, {0, 1, 0}, camera));
  EXPECT_TRUE(SameBits(camera, hub.view));
}

// ---- fitting a sphere ----

TEST_F(FitSphere, lies_inside_touches_both_sides_of_one_pair_and_leaves_even_room_beside_the_other) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomAsymmetricCamera(random);
    const Vector3 centre = random.Point(100);
    const double radius = random.Magnitude(0.01, 100);
    const Vec direction = From(random.Direction());
    Vec up = From(random.Direction());
    if (std::abs(up.dot(direction)) > 0.99) up = direction.unitOrthogonal();
    ASSERT_TRUE(hub.FitBoundingSphereToView(centre, radius, To(direction), To(up), camera));

    CameraParameters axis = camera;  // the up is not written, so the frame is that of the arguments
    axis.centre = To(From(camera.eye) + direction);
    axis.up = To(up);
    ASSERT_GT(ToView(axis, From(centre)).z(), 0.0);
    std::array<double, 4> room = RoomBeside(axis, From(centre));
    for (double& each : room) each -= radius;
    const double slack = 1e-9 * (From(centre) - From(camera.eye)).norm();
    ASSERT_NO_FATAL_FAILURE(ExpectOnePairTouchesAndTheOtherLeavesEvenRoom(room, slack)) << i;
  }
}

TEST_F(FitSphere, keeps_the_direction_and_the_up_and_puts_the_target_at_the_spheres_distance) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = RandomCamera(random);
    camera.perspective_with_ortho = random.Coin();
    const CameraParameters before = camera;
    const Vector3 centre = random.Point(100);
    const Vec direction = From(random.Direction());
    ASSERT_TRUE(hub.FitBoundingSphereToView(centre, random.Magnitude(0.01, 100), To(direction * 3),
                                            random.Direction(), camera));
    const Vec view = From(camera.centre) - From(camera.eye);
    ASSERT_NEAR((view.normalized() - direction).norm(), 0.0, 1e-9);
    ASSERT_NEAR(view.norm(), (From(centre) - From(camera.eye)).norm(), 1e-9 * view.norm());
    ASSERT_EQ(camera.pivot, camera.centre);
    ASSERT_EQ(camera.up, before.up);
  }
}

TEST_F(FitSphere, whether_the_up_is_perpendicular_goes_by_the_direction_as_it_is_given) {
  // The up leans by 1 in 1000. Against a direction of length 1e-5 that is within the tolerance, and the eye
  // is measured along the leaning up; against a longer one the up is laid flat first.
  const Vector3 up(0, 1, 1e-3);
  for (const double length : {1e-5, 1.0}) {
    CameraParameters camera = hub.view;
    ASSERT_TRUE(hub.FitBoundingSphereToView({0, 5, 0}, 1.0, {0, 0, -length}, up, camera));
    // From (0, 0, 10) the centre lies 10 ahead and, along the leaning up, (5 - 10/1000) / sqrt(1 + 1e-6) up;
    // that goes back on along the same up.
    const double raise = 5.0 - 10.0 * 1e-3;
    const Vec back = Vec(0, 0, std::sqrt(2.0));
    const Vec leaning = Vec(0, 1, 1e-3) * (raise / (1.0 + 1e-6));
    ExpectNear(camera.eye, back + (length < 1e-3 ? leaning : Vec(0, 5, 0)), 1e-12);
  }
}

TEST_F(FitSphere, the_narrower_field_of_view_rules) {
  // 2 / sin 30 degrees = 4.
  for (const bool tall : {false, true}) {
    CameraParameters camera = WithSymmetricFrustum(hub.view, tall ? 30 : 50, tall ? 50 : 30);
    ASSERT_TRUE(hub.FitBoundingSphereToView({1, 2, 3}, 2.0, {0, 0, -1}, {0, 1, 0}, camera));
    ExpectNear(camera.eye, Vec(1, 2, 7));
    ExpectNear(camera.centre, Vec(1, 2, 3));
  }
}

TEST_F(FitSphere, the_orthographic_size_keeps_its_aspect_and_its_smaller_side_is_the_diameter) {
  const double sizes[][2] = {{8, 6}, {6, 8}, {3, 3}};
  for (const auto& size : sizes) {
    CameraParameters camera = WithOrthographic(hub.view, size[0], size[1]);
    ASSERT_TRUE(hub.FitBoundingSphereToView({1, 2, 3}, 2.0, {0, 0, -1}, {0, 1, 0}, camera));
    EXPECT_NEAR(std::min(camera.ortho_width, camera.ortho_height), 4.0, 1e-14);
    EXPECT_NEAR(camera.ortho_width / camera.ortho_height, size[0] / size[1], 1e-14);
  }
}

TEST_F(FitSphere, random_orthographic_sizes_keep_their_aspect_and_show_the_sphere_from_edge_to_edge) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera =
        WithAsymmetricFrustum(RandomCamera(random, Frustum::Orthographic), random.Uniform(2, 70),
                              random.Uniform(2, 70), random.Uniform(2, 70), random.Uniform(2, 70));
    const double aspect = camera.ortho_width / camera.ortho_height;
    const Vector3 centre = random.Point(100);
    const double radius = random.Magnitude(0.01, 100);
    ASSERT_TRUE(hub.FitBoundingSphereToView(centre, radius, random.Direction(), random.Direction(), camera));
    ASSERT_NEAR(camera.ortho_width / camera.ortho_height, aspect, 1e-12 * aspect);
    ASSERT_NEAR(std::min(camera.ortho_width, camera.ortho_height), 2 * radius, 1e-12 * radius);
    ASSERT_NEAR((oracle::Project(camera, From(centre)) - Eigen::Vector2d(0.5, 0.5)).norm(), 0.0, 1e-9);
  }
}

TEST_F(FitSphere, an_orthographic_view_looks_at_the_centre_from_the_distance_of_the_narrower_field_of_view) {
  // The mean half angles: 40 and 30 degrees.
  CameraParameters camera = WithAsymmetricFrustum(WithOrthographic(hub.view, 8, 6), 50, 30, 20, 40);
  ASSERT_TRUE(hub.FitBoundingSphereToView({1, 2, 3}, 2.0, {0, 0, -1}, {0, 1, 0}, camera));
  ExpectNear(camera.eye, Vec(1, 2, 7));
  ExpectNear(camera.centre, Vec(1, 2, 3));
  ExpectNear(camera.pivot, Vec(1, 2, 3));
  camera = WithAsymmetricFrustum(WithOrthographic(hub.view, 8, 6), 20, 40, 50, 30);
  ASSERT_TRUE(hub.FitBoundingSphereToView({1, 2, 3}, 2.0, {0, 0, -1}, {0, 1, 0}, camera));
  ExpectNear(camera.eye, Vec(1, 2, 7));
}

TEST_F(FitSphere, with_the_wish_a_view_within_a_hundredth_of_an_axis_yields_the_orthographic_result) {
  const auto looksAtTheCentre = [&](ProjectionType type, bool wish, double degrees) {
    CameraParameters camera = WithAsymmetricFrustum(hub.view, 45, 20, 30, 30);
    camera.projection_type = type;
    camera.perspective_with_ortho = wish;
    const double s = degrees * oracle::PI / 180.0;
    EXPECT_TRUE(
        hub.FitBoundingSphereToView({1, 2, 3}, 2.0, {std::sin(s), 0, -std::cos(s)}, {0, 1, 0}, camera));
    return (From(camera.centre) - Vec(1, 2, 3)).norm() < 1e-9;
  };
  for (const auto type : {ProjectionType::Perspective, ProjectionType::Orthographic}) {
    EXPECT_TRUE(looksAtTheCentre(type, true, 8.10));
    EXPECT_FALSE(looksAtTheCentre(type, true, 8.12));
  }
  EXPECT_FALSE(looksAtTheCentre(ProjectionType::Perspective, false, 0.0));
  EXPECT_TRUE(looksAtTheCentre(ProjectionType::Orthographic, false, 30.0));
}

TEST_F(FitSphere, an_axis_of_the_scene_counts_with_its_length_and_its_limit_belongs_to_it) {
  p.scene_front_direction = {0, 0, 0};
  const auto looksAtTheCentre = [&](double length) {
    p.scene_up_direction = {0, length, 0};
    CameraParameters camera = WithAsymmetricFrustum(hub.view, 45, 20, 30, 30);
    camera.perspective_with_ortho = true;
    EXPECT_TRUE(hub.FitBoundingSphereToView({1, 2, 3}, 2.0, {0, -1, 0}, {0, 0, 1}, camera));
    return (From(camera.centre) - Vec(1, 2, 3)).norm() < 1e-9;
  };
  EXPECT_TRUE(looksAtTheCentre(1.0 - 0.01));
  EXPECT_FALSE(looksAtTheCentre(std::nextafter(1.0 - 0.01, 0.0)));
}

TEST_F(FitSphere, a_radius_that_is_not_above_0_gives_false_and_changes_nothing) {
  for (const double radius : {0.0, -0.0, -1.0, NOT_A_NUMBER}) {
    CameraParameters camera = hub.view;
    EXPECT_FALSE(hub.FitBoundingSphereToView({1, 2, 3}, radius, {0, 0, -1}, {0, 1, 0}, camera)) << radius;
    EXPECT_TRUE(SameBits(camera, hub.view)) << radius;
  }
}

TEST_F(FitSphere, a_radius_that_is_not_above_0_gives_false_beside_margins_too) {
  FitMargins margins;
  margins.left = 0.25;
  ASSERT_TRUE(hub.SetFitMargins(margins));
  for (const double radius : {0.0, -1.0, NOT_A_NUMBER}) {
    CameraParameters camera = hub.view;
    EXPECT_FALSE(hub.FitBoundingSphereToView({7, 8, 9}, radius, {0, 0, -1}, {0, 1, 0}, camera)) << radius;
    EXPECT_EQ(camera.eye, hub.view.eye) << radius;
  }
}

TEST_F(FitSphere, a_bad_sphere_or_camera_leaves_the_camera_as_it_is_or_finite) {
  Random random;
  static constexpr double RADII[] = {1.0,          1e300, 5e-324,
                                     NOT_A_NUMBER, 1e-8,  std::numeric_limits<double>::infinity()};
  for (int i = 0; i < 10000; ++i) {
    CameraParameters camera = random.Coin() ? ExtremeCamera(random) : RandomCamera(random);
    const CameraParameters before = camera;
    const Vector3 centre = random.Integer(0, 5) == 0 ? Vector3(NOT_A_NUMBER) : random.Point(50);
    const Vector3 direction = random.Integer(0, 5) == 0 ? Vector3() : random.Direction();
    const Vector3 up = random.Integer(0, 5) == 0 ? direction : random.Direction();
    if (!hub.FitBoundingSphereToView(centre, random.OneOf(RADII), direction, up, camera)) {
      ASSERT_TRUE(SameBits(camera, before)) << i;
    }
    ASSERT_TRUE(camera.IsFinite()) << i;
  }
}

// ---- the moves ----

namespace {

// Lets the fit's shot run and gives the cameras at its half and at its end.
std::array<CameraParameters, 2> Play(MemoryHub& hub) {
  std::array<CameraParameters, 2> cameras = {hub.view, hub.view};
  Shot& shot = *hub.GetActiveShot();
  EXPECT_TRUE(shot.PerformShot(0.25, cameras[0]));
  EXPECT_TRUE(shot.PerformShot(0.25, cameras[0]));
  EXPECT_NEAR(shot.GetUnitTime(), 0.5, 1e-15);
  EXPECT_FALSE(shot.PerformShot(0.0, cameras[1]));  // half a second long
  return cameras;
}

void ExpectPose(const CameraParameters& actual, const CameraParameters& expected) {
  ExpectNear(actual.eye, From(expected.eye));
  ExpectNear(actual.centre, From(expected.centre));
  ExpectNear(actual.pivot, From(expected.pivot));
  EXPECT_NEAR(actual.ortho_width, expected.ortho_width, 1e-12);
  EXPECT_NEAR(actual.ortho_height, expected.ortho_height, 1e-12);
}

}  // namespace

TEST_F(FitMove, to_a_box_keeps_the_direction_of_the_view_and_takes_half_a_second) {
  hub.view = LookAt({3, 4, 12}, {0, 0, 0}, {0, 5, 0});
  CameraParameters target = hub.view;
  const Box3 box({0, 0, 0}, {1, 2, 3});
  ASSERT_TRUE(hub.FitBoundingBoxToView({7, 8, 9}, box, {-3, -4, -12}, {0, 1, 0}, target));
  EXPECT_TRUE(hub.TransitionCameraToFitBoundingBox({7, 8, 9}, box));
  const auto cameras = Play(hub);
  ExpectPose(cameras[1], target);
  ExpectNear(cameras[0].centre, (From(hub.view.centre) + From(target.centre)) / 2);
  for (const CameraParameters& camera : cameras) {
    ExpectNear(To((From(camera.centre) - From(camera.eye)).normalized()), Vec(-3, -4, -12) / 13);
  }
}

TEST_F(FitMove, to_a_sphere_keeps_the_direction_of_the_view_and_takes_half_a_second) {
  hub.view = LookAt({3, 4, 12}, {0, 0, 0}, {0, 5, 0});
  CameraParameters target = hub.view;
  ASSERT_TRUE(hub.FitBoundingSphereToView({7, 8, 9}, 2.0, {-3, -4, -12}, {0, 1, 0}, target));
  EXPECT_TRUE(hub.TransitionCameraToFitBoundingSphere({7, 8, 9}, 2.0));
  const auto cameras = Play(hub);
  ExpectPose(cameras[1], target);
  ExpectNear(To((From(cameras[0].centre) - From(cameras[0].eye)).normalized()), Vec(-3, -4, -12) / 13);
}

TEST_F(FitMove, random_fits_keep_the_direction_all_the_way) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    hub.view = RandomCamera(random);
    const Vec direction = (From(hub.view.centre) - From(hub.view.eye)).normalized();
    if (random.Coin()) {
      ASSERT_TRUE(hub.TransitionCameraToFitBoundingBox(random.Point(50), RandomBox(random)));
    } else {
      ASSERT_TRUE(hub.TransitionCameraToFitBoundingSphere(random.Point(50), random.Magnitude(0.01, 50)));
    }
    CameraParameters camera = hub.view;
    hub.GetActiveShot()->PerformShot(random.Uniform(0.0, 0.6), camera);
    hub.GetActiveShot()->PerformShot(0.0, camera);
    ASSERT_NEAR(((From(camera.centre) - From(camera.eye)).normalized() - direction).norm(), 0.0, 1e-7) << i;
  }
}

TEST_F(FitMove, to_a_sphere_without_a_radius_still_begins_and_leads_nowhere) {
  for (const double radius : {0.0, -1.0, NOT_A_NUMBER}) {
    EXPECT_TRUE(hub.TransitionCameraToFitBoundingSphere({7, 8, 9}, radius));
    ASSERT_TRUE(hub.IsShotActive());
    ExpectPose(Play(hub)[1], hub.view);
  }
}

TEST_F(FitMove, to_all_takes_the_recalculated_model_by_its_better_geometry) {
  hub.onRecalculateGlobal = [this] {
    p.global_bound_centre = {5, 0, 0};
    p.global_bound_radius = 2.0;
    p.global_bound_box = Box3({0, 0, 0}, {1, 1, 1});
  };
  p.global_bound_geometry = BoundGeometryType::Sphere;
  EXPECT_TRUE(hub.FitAllToView());
  EXPECT_GT(hub.recalculatedGlobal, 0);
  ExpectNear(Play(hub)[1].eye, Vec(5, 0, 2 * std::sqrt(2.0)));
  p.global_bound_geometry = BoundGeometryType::Box;
  EXPECT_TRUE(hub.FitAllToView());
  ExpectNear(Play(hub)[1].eye, Vec(5, 0, 2));
}

TEST_F(FitMove, to_the_selection_takes_the_scene_which_follows_it_unless_it_is_locked) {
  p.tool_selection_sensitivity = false;
  hub.SetGeometrySelection(3.0, {0, 4, 0});
  EXPECT_TRUE(hub.FitSelectionToView());
  ExpectNear(Play(hub)[1].eye, Vec(0, 4, 3 * std::sqrt(2.0)));
  p.lock_to_selection = true;
  hub.SetGeometrySelection(1.0, {0, 0, 0});
  EXPECT_TRUE(hub.FitSelectionToView());
  ExpectNear(Play(hub)[1].eye, Vec(0, 4, 3 * std::sqrt(2.0)));
  p.lock_to_selection = false;
  p.global_bound_geometry = BoundGeometryType::Box;
  hub.SetBoundingBoxSelection(Box3({0, 0, 0}, {1, 1, 2}), {6, 0, 0});
  EXPECT_TRUE(hub.FitSelectionToView());
  ExpectNear(Play(hub)[1].eye, Vec(6, 0, 3));
}

TEST_F(FitMove, reads_the_hosts_camera_of_now) {
  hub.view = LookAt({10, 0, 0}, {0, 0, 0}, {0, 1, 0});
  EXPECT_TRUE(hub.FitAllToView());
  ExpectNear(Play(hub)[1].eye, Vec(std::sqrt(2.0), 0, 0));
}

// ---- what is in view ----

namespace {

// The room of the model's sphere inside the view: how far it reaches into the side that it reaches into
// least. Below 0 it lies outside. Both sides of a pair open by their greater half angle.
double LeastReach(const CameraParameters& camera, const Vec& centre, double radius, double stretchX = 1.0,
                  double stretchY = 1.0) {
  const Vec v = ToView(camera, centre);
  const double tx = stretchX * std::fmax(Tangent(camera.left_fov), Tangent(camera.right_fov));
  const double ty = stretchY * std::fmax(Tangent(camera.top_fov), Tangent(camera.bottom_fov));
  double inside[3] = {v.z(), (tx * v.z() - std::abs(v.x())) / std::hypot(1.0, tx),
                      (ty * v.z() - std::abs(v.y())) / std::hypot(1.0, ty)};
  if (camera.IsOrthographic()) {
    inside[1] = camera.ortho_width / 2 - std::abs(v.x());
    inside[2] = camera.ortho_height / 2 - std::abs(v.y());
  }
  return std::min({inside[0], inside[1], inside[2]}) + radius;
}

}  // namespace

TEST_F(OutsideView, is_true_only_when_the_whole_model_lies_beyond_a_side_or_behind) {
  Random random;
  int outside = 0;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters camera = RandomCamera(random);
    p.global_bound_centre = random.Point(150);
    p.global_bound_radius = random.Magnitude(0.1, 100);
    const double reach = LeastReach(camera, From(p.global_bound_centre), p.global_bound_radius);
    if (std::abs(reach) < 1e-9) continue;
    ASSERT_EQ(hub.IsSceneOutsideView(camera), reach < 0.0) << i << " by " << reach;
    outside += reach < 0.0 ? 1 : 0;
  }
  EXPECT_GT(outside, 1000);
  EXPECT_LT(outside, 9000);
}

TEST_F(OutsideView, each_side_counts) {
  p.global_bound_radius = 1.0;
  const CameraParameters perspective = hub.view;  // 45 degrees all round: sides lean by 1 in 1
  const CameraParameters orthographic = WithOrthographic(hub.view, 8, 6);
  const double leaning = 10 + std::sqrt(2.0);
  struct Row {
    Vec side;
    double perspectiveReach;
    double orthographicReach;
  };
  const Row rows[] = {
      {{1, 0, 0}, leaning, 5}, {{-1, 0, 0}, leaning, 5}, {{0, 1, 0}, leaning, 4}, {{0, -1, 0}, leaning, 4}};
  for (const Row& row : rows) {
    for (const double off : {-1e-6, 1e-6}) {
      p.global_bound_centre = To(row.side * (row.perspectiveReach + off));
      EXPECT_EQ(hub.IsSceneOutsideView(perspective), off > 0) << row.side.transpose();
      p.global_bound_centre = To(row.side * (row.orthographicReach + off));
      EXPECT_EQ(hub.IsSceneOutsideView(orthographic), off > 0) << row.side.transpose();
    }
  }
  // A sphere that touches a side from outside does not count as outside.
  p.global_bound_centre = {5, 0, 0};
  EXPECT_FALSE(hub.IsSceneOutsideView(orthographic));
  p.global_bound_centre = {0, 0, 11};
  EXPECT_FALSE(hub.IsSceneOutsideView(orthographic));
  p.global_bound_centre = {0, 0, 11 - 1e-6};
  EXPECT_FALSE(hub.IsSceneOutsideView(orthographic));
  p.global_bound_centre = {0, 0, 11 + 1e-6};
  EXPECT_TRUE(hub.IsSceneOutsideView(orthographic));
  EXPECT_TRUE(hub.IsSceneOutsideView(perspective));
}

TEST_F(OutsideView, is_false_whenever_the_camera_stands_inside_the_sphere) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters camera = RandomCamera(random);
    p.global_bound_radius = random.Magnitude(0.1, 100);
    p.global_bound_centre =
        camera.eye + random.Direction() * (p.global_bound_radius * random.Uniform(0.0, 0.999));
    ASSERT_FALSE(hub.IsSceneOutsideView(camera)) << i;
  }
}

TEST_F(OutsideView, recalculates_the_model_first) {
  hub.onRecalculateGlobal = [this] { p.global_bound_centre = {0, 0, 50}; };
  EXPECT_TRUE(hub.IsSceneOutsideView(hub.view));
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

TEST_F(OutsideView, the_hosts_adjuster_stretches_the_perspective_view_and_not_the_orthographic_one) {
  Stretcher stretcher;
  p.viewport_width = 1200;
  p.viewport_height = 600;
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const CameraParameters camera = RandomCamera(random);
    p.global_bound_centre = random.Point(150);
    p.global_bound_radius = random.Magnitude(0.1, 100);
    stretcher.calls = 0;
    const bool outside = hub.IsSceneOutsideView(camera);
    ASSERT_EQ(stretcher.calls, camera.IsOrthographic() ? 0 : 1);
    const double reach = LeastReach(camera, From(p.global_bound_centre), p.global_bound_radius, 2.0, 0.5);
    if (std::abs(reach) > 1e-9) {
      ASSERT_EQ(outside, reach < 0.0) << i;
    }
  }
}

// ---- the pivot in the view ----

TEST_F(ConstrainPivot, in_view_it_stays_and_nothing_happens) {
  hub.view = WithPivot(hub.view, {9.9, -9.9, 0});
  EXPECT_FALSE(hub.ConstrainPivotToViewport());
  EXPECT_EQ(hub.applied, 0);
  EXPECT_EQ(hub.recalculatedSelection, 0);
}

TEST_F(ConstrainPivot, out_of_view_it_falls_onto_the_axis_at_its_depth) {
  for (const Vec& pivot : {Vec(10.1, 0, 0), Vec(-10.1, 0, 0), Vec(0, 10.1, 0), Vec(0, -10.1, 0)}) {
    hub.view = WithPivot(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), To(pivot));
    EXPECT_TRUE(hub.ConstrainPivotToViewport());
    ExpectNear(hub.view.pivot, Vec(0, 0, 0));
    ExpectNear(hub.view.eye, Vec(0, 0, 10));
  }
}

TEST_F(ConstrainPivot, behind_the_eye_it_falls_as_far_ahead_of_it) {
  hub.view = WithPivot(hub.view, {1, 2, 14});
  EXPECT_TRUE(hub.ConstrainPivotToViewport());
  ExpectNear(hub.view.pivot, Vec(0, 0, 6));
}

TEST_F(ConstrainPivot, exactly_at_the_eye_it_counts_as_out_of_view) {
  hub.view = WithPivot(hub.view, hub.view.eye);
  EXPECT_TRUE(hub.ConstrainPivotToViewport());
  EXPECT_EQ(hub.view.pivot, hub.view.eye);
}

TEST_F(ConstrainPivot, the_greater_half_angle_of_each_pair_is_the_limit_on_both_sides) {
  const auto leaves = [&](double left, double right, double top, double bottom, const Vector3& pivot) {
    hub.view = WithAsymmetricFrustum(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), left, right, top, bottom);
    hub.view.pivot = pivot;
    return hub.ConstrainPivotToViewport();
  };
  for (const double x : {9.9, -9.9}) {
    EXPECT_FALSE(leaves(45, 10, 10, 10, {x, 0, 0}));
    EXPECT_FALSE(leaves(10, 45, 10, 10, {x, 0, 0}));
    EXPECT_TRUE(leaves(10, 10, 45, 45, {x, 0, 0}));
    EXPECT_FALSE(leaves(10, 10, 45, 10, {0, x, 0}));
    EXPECT_FALSE(leaves(10, 10, 10, 45, {0, x, 0}));
    EXPECT_TRUE(leaves(45, 45, 10, 10, {0, x, 0}));
  }
}

TEST_F(ConstrainPivot, in_orthographic_the_full_sizes_are_the_limits) {
  const auto leaves = [&](const Vector3& pivot) {
    hub.view = WithPivot(WithOrthographic(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), 8, 6), pivot);
    return hub.ConstrainPivotToViewport();
  };
  EXPECT_FALSE(leaves({7.9, -5.9, 0}));
  EXPECT_FALSE(leaves({8, 0, 0}));  // on the limit it is in view
  EXPECT_FALSE(leaves({0, -6, 0}));
  EXPECT_TRUE(leaves({-8.1, 0, 0}));
  EXPECT_TRUE(leaves({0, 6.1, 0}));
}

TEST_F(ConstrainPivot, the_hosts_adjuster_stretches_the_limits_of_both_projections) {
  const Stretcher stretcher;
  p.viewport_width = 1200;
  p.viewport_height = 600;
  for (const bool orthographic : {false, true}) {
    const auto leaves = [&](const Vector3& pivot) {
      hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
      if (orthographic) hub.view = WithOrthographic(hub.view, 10, 10);
      hub.view.pivot = pivot;
      return hub.ConstrainPivotToViewport();
    };
    EXPECT_FALSE(leaves({19.9, 0, 0}));
    EXPECT_TRUE(leaves({20.1, 0, 0}));
    EXPECT_FALSE(leaves({0, 4.9, 0}));
    EXPECT_TRUE(leaves({0, 5.1, 0}));
  }
}

TEST_F(ConstrainPivot, the_target_is_brought_to_the_distance_of_the_scene) {
  p.global_bound_centre = {3, 0, 6};
  // Between the eye and the new pivot: as far from the eye as the scene.
  hub.view = WithPivot(hub.view, {20, 0, 0});
  EXPECT_TRUE(hub.ConstrainPivotToViewport());
  ExpectNear(hub.view.centre, Vec(0, 0, 5));
  // Beyond the pivot: as far behind the pivot as the scene lies from it.
  p.global_bound_centre = {3, 0, -4};
  hub.view = WithPivot(hub.view, {20, 0, 0});
  EXPECT_TRUE(hub.ConstrainPivotToViewport());
  ExpectNear(hub.view.centre, Vec(0, 0, -5));
}

TEST_F(ConstrainPivot, recalculates_the_scene_applies_once_and_takes_the_camera_over) {
  hub.onRecalculateGlobal = [this] { p.global_bound_centre = {3, 0, 6}; };
  hub.view = WithPivot(hub.view, {20, 0, 0});
  EXPECT_TRUE(hub.ConstrainPivotToViewport());
  EXPECT_GT(hub.recalculatedSelection, 0);
  ExpectNear(hub.view.centre, Vec(0, 0, 5));
  EXPECT_EQ(hub.applied, 1);
  EXPECT_TRUE(SameBits(hub.GetCameraParameters(), hub.view));
}

TEST_F(ConstrainPivot, random_pivots_end_in_view_or_were_there) {
  Random random;
  int moved = 0;
  for (int i = 0; i < 10000; ++i) {
    hub.view = RandomCamera(random);
    const CameraParameters before = hub.view;
    p.global_bound_centre = random.Point(50);
    const Vec v = ToView(before, From(before.pivot));
    const double lx = before.IsOrthographic()
                          ? before.ortho_width
                          : std::fmax(Tangent(before.left_fov), Tangent(before.right_fov)) * v.z();
    const double ly = before.IsOrthographic()
                          ? before.ortho_height
                          : std::fmax(Tangent(before.top_fov), Tangent(before.bottom_fov)) * v.z();
    const bool inView = std::abs(v.x()) <= lx && std::abs(v.y()) <= ly && v.z() > 0.0;
    ASSERT_EQ(hub.ConstrainPivotToViewport(), !inView) << i;
    if (inView) {
      ASSERT_TRUE(SameBits(hub.view, before));
      continue;
    }
    ++moved;
    const Vec forward = (From(before.centre) - From(before.eye)).normalized();
    const Vec pivot = From(before.eye) + forward * std::abs(v.z());
    ASSERT_NEAR((From(hub.view.pivot) - pivot).norm(), 0.0, 1e-10) << i;
    const Vec scene = From(p.global_bound_centre);
    const double a = (scene - From(before.eye)).dot(forward);
    const double b = (scene - pivot).dot(forward);
    const Vec centre = a * b < 0.0 ? Vec(From(before.eye) + forward * (scene - From(before.eye)).norm())
                                   : Vec(pivot + forward * (scene - pivot).norm());
    ASSERT_NEAR((From(hub.view.centre) - centre).norm(), 0.0, 1e-9) << i;
    ASSERT_EQ(hub.view.eye, before.eye);
    ASSERT_EQ(hub.view.up, before.up);
  }
  EXPECT_GT(moved, 1000);
}

// ---- straightening, leaving orthographic ----

TEST_F(AlignUp, with_nothing_to_straighten_is_false_and_begins_nothing) {
  EXPECT_FALSE(hub.AlignToSceneUpDirection(1.0));
  hub.view = LookAt({0, 10, 0}, {0, 0, 0}, {1, 0, 1});  // straight down
  EXPECT_FALSE(hub.AlignToSceneUpDirection(1.0));
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(AlignUp, leads_to_the_straight_camera_in_the_given_time) {
  hub.view = LookAt({10, 10, 0}, {0, 0, 0}, {0.2, 1, 0.5});
  const CameraParameters before = hub.view;
  EXPECT_TRUE(hub.AlignToSceneUpDirection(2.0));
  CameraParameters camera = hub.view;
  Shot& shot = *hub.GetActiveShot();
  shot.PerformShot(1.0, camera);
  EXPECT_TRUE(shot.PerformShot(1.0, camera));
  EXPECT_NEAR(shot.GetUnitTime(), 0.5, 1e-15);
  EXPECT_FALSE(shot.PerformShot(0.0, camera));
  ExpectNear(camera.eye, From(before.eye));
  ExpectNear(camera.centre, From(before.centre));
  ExpectNear(camera.up, Vec(-1, 1, 0).normalized());
}

TEST_F(AlignUp, goes_by_the_up_of_the_scene_whatever_counts_as_the_world) {
  p.scene_is_world = false;
  p.world_up_direction = {1, 0, 0};
  hub.view = LookAt({10, 10, 0}, {0, 0, 0}, {0.2, 1, 0.5});
  EXPECT_TRUE(hub.AlignToSceneUpDirection(0.0));
  CameraParameters camera = hub.view;
  EXPECT_FALSE(hub.GetActiveShot()->PerformShot(0.0, camera));
  ExpectNear(camera.up, Vec(-1, 1, 0).normalized());
}

TEST_F(LeaveOrthographic, follows_its_table) {
  for (const bool orthographic : {false, true}) {
    for (const bool wish : {false, true}) {
      for (const bool allowed : {false, true}) {
        for (const bool transitions : {false, true}) {
          MemoryHub own(hub.view);
          own.view.projection_type =
              orthographic ? ProjectionType::Orthographic : ProjectionType::Perspective;
          own.view.perspective_with_ortho = wish;
          own.GetApplicationParameters().auto_switch_projection = allowed;
          own.GetApplicationParameters().use_projection_transitions = transitions;
          const auto trace = ::testing::Message() << orthographic << wish << allowed << transitions;

          const bool already = !orthographic && !wish;
          EXPECT_EQ(own.AutoSwitchToPerspectiveProjection(), already || allowed) << trace;
          const bool switched = !already && allowed;
          EXPECT_EQ(own.applied, switched ? 1 : 0) << trace;
          if (!switched) continue;
          CameraParameters expected = hub.view;
          expected.projection_transition = transitions ? 1.0 - TOLERANCE : -1.0;
          EXPECT_TRUE(SameBits(own.view, expected)) << trace;
        }
      }
    }
  }
}

TEST_F(LeaveOrthographic, a_projection_outside_the_enumeration_without_the_wish_is_left_alone) {
  hub.view.projection_type = static_cast<ProjectionType>(7);
  EXPECT_FALSE(hub.AutoSwitchToPerspectiveProjection());
  EXPECT_EQ(hub.applied, 0);
}

TEST_F(LeaveOrthographic, with_transitions_the_frame_blends_on_from_there) {
  ManualPlatform platform;
  p.use_projection_transitions = true;
  hub.view = WithOrthographic(hub.view, 8, 6);
  hub.view.projection_transition = 1.0;
  ASSERT_TRUE(hub.TransitionCameraToFitBoundingSphere({0, 0, 0}, 1.0));
  hub.EndShot();
  ASSERT_TRUE(hub.AutoSwitchToPerspectiveProjection());
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_type, ProjectionType::Perspective);
  EXPECT_EQ(hub.view.projection_transition, 0.0);  // at rest, at once
}

// ---- world and scene ----

TEST_F(Directions, the_hub_and_the_snap_table_of_the_orbit_read_the_pair_the_opposite_way_round) {
  class OpenOrbit : public OrbitOperation {
   public:
    using OrbitOperation::GetWorldUpAndFront;
  };
  p.scene_up_direction = {0, 0, 1};
  p.scene_front_direction = {0, 1, 0};
  p.world_up_direction = {1, 0, 0};
  p.world_front_direction = {0, 0, 1};
  for (const bool sceneIsWorld : {true, false}) {
    p.scene_is_world = sceneIsWorld;
    OpenOrbit orbit;
    orbit.InitOperation(0, 0, &hub);
    Vector3 front;
    Vector3 up;
    orbit.GetWorldUpAndFront(front, up);
    EXPECT_EQ(hub.GetWorldUpDirection(), sceneIsWorld ? p.scene_up_direction : p.world_up_direction);
    EXPECT_EQ(hub.GetWorldFrontDirection(), sceneIsWorld ? p.scene_front_direction : p.world_front_direction);
    EXPECT_EQ(up, sceneIsWorld ? p.world_up_direction : p.scene_up_direction);
    EXPECT_EQ(front, sceneIsWorld ? p.world_front_direction : p.scene_front_direction);
  }
}

// ---- bad cameras of the host ----

TEST(FitRobustness, whatever_the_host_and_the_scene_hold_the_host_is_given_finite_numbers) {
  Random random;
  ManualPlatform platform;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(random.Coin() ? BrokenCamera(random) : ExtremeCamera(random));
    ApplicationParameters& p = hub.GetApplicationParameters();
    p.global_bound_geometry = random.Coin() ? BoundGeometryType::Box : BoundGeometryType::Sphere;
    if (random.Coin()) p.global_bound_radius = random.Coin() ? NOT_A_NUMBER : 0.0;
    if (random.Coin()) p.global_bound_box = Box3(Vector3(), Vector3(random.Coin() ? NOT_A_NUMBER : 0.0));
    if (random.Coin()) p.global_bound_centre = Vector3(random.Coin() ? NOT_A_NUMBER : 1e300);
    bool finite = true;
    hub.onApply = [&] { finite = finite && hub.view.IsFinite(); };
    // Whatever each of them answers.
    (void)hub.FitAllToView();
    hub.PerformOperations();
    platform.Advance(1000);
    hub.PerformOperations();
    (void)hub.FitSelectionToView();
    hub.PerformOperations();
    hub.ConstrainPivotToViewport();
    (void)hub.AlignToSceneUpDirection(random.Coin() ? NOT_A_NUMBER : 0.1);
    hub.PerformOperations();
    (void)hub.AutoSwitchToPerspectiveProjection();
    hub.IsSceneOutsideView(hub.view);
    ASSERT_TRUE(finite) << i;
  }
}
