#include "cube/cube_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "cube/cube_scene.h"
#include "support/random.h"

namespace {

using namespace Korvane;

constexpr CubeDimensions DEFAULT_CUBE = {0.06, 0.035, 0.0};

// Sizes of a cube that hosts may choose.
CubeDimensions RandomDimensions(Random& random, double gap) {
  return {random.Uniform(0.02, 0.2), random.Uniform(0.01, 0.1), gap};
}

void ExpectNear(const Vector3& actual, const Vector3& expected, double tolerance) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

// ---- tables ----

struct NamedDirection {
  int x, y, z;
  const char* name;
};
constexpr NamedDirection GEOMETRY_PARTS[26] = {
    {-1, 0, 0, "Back"},
    {1, 0, 0, "Front"},
    {0, -1, 0, "Bottom"},
    {0, 1, 0, "Top"},
    {0, 0, -1, "Right"},
    {0, 0, 1, "Left"},
    {-1, -1, 0, "Back Bottom"},
    {-1, 1, 0, "Back Top"},
    {1, -1, 0, "Front Bottom"},
    {1, 1, 0, "Front Top"},
    {0, -1, -1, "Right Bottom"},
    {0, -1, 1, "Left Bottom"},
    {0, 1, -1, "Right Top"},
    {0, 1, 1, "Left Top"},
    {-1, 0, -1, "Back Right"},
    {1, 0, -1, "Front Right"},
    {-1, 0, 1, "Back Left"},
    {1, 0, 1, "Front Left"},
    {-1, -1, -1, "Back Right Bottom"},
    {-1, -1, 1, "Back Left Bottom"},
    {-1, 1, -1, "Back Right Top"},
    {-1, 1, 1, "Back Left Top"},
    {1, -1, -1, "Front Right Bottom"},
    {1, -1, 1, "Front Left Bottom"},
    {1, 1, -1, "Front Right Top"},
    {1, 1, 1, "Front Left Top"},
};

TEST(CubeTables, hold_the_26_parts_and_their_names) {
  const OpenOrientor cube;
  for (int part = 0; part < 26; ++part) {
    SCOPED_TRACE(part);
    const NamedDirection& row = GEOMETRY_PARTS[part];
    EXPECT_EQ(GetPartDirection(part), Vector3(row.x, row.y, row.z));
    EXPECT_EQ(cube.GetGeometryPartDirection(part), Vector3(row.x, row.y, row.z));
    EXPECT_EQ(GetPartName(part), row.name);
    EXPECT_EQ(cube.GetGeometryPartIndex(Vector3(row.x, row.y, row.z)), part);
  }
}

TEST(CubeTables, hold_the_four_letters_in_the_plane_of_the_ground) {
  EXPECT_EQ(GetPartDirection(26), Vector3(1, 0, 0));
  EXPECT_EQ(GetPartDirection(27), Vector3(-1, 0, 0));
  EXPECT_EQ(GetPartDirection(28), Vector3(0, 0, 1));
  EXPECT_EQ(GetPartDirection(29), Vector3(0, 0, -1));
}

// Before they are normalised: x and z of 30 to 57.
constexpr int RING[28][2] = {
    {1, -3},  {1, -2},  {2, -3},  {1, -1},  {3, -2},  {2, -1},  {3, -1},   // from -z to +x
    {3, 1},   {2, 1},   {3, 2},   {1, 1},   {2, 3},   {1, 2},   {1, 3},    // to +z
    {-1, 3},  {-1, 2},  {-2, 3},  {-1, 1},  {-3, 2},  {-2, 1},  {-3, 1},   // to -x
    {-3, -1}, {-2, -1}, {-3, -2}, {-1, -1}, {-2, -3}, {-1, -2}, {-1, -3},  // and back
};

TEST(CubeTables, hold_the_28_unit_directions_of_the_ring) {
  for (int i = 0; i < 28; ++i) {
    SCOPED_TRACE(30 + i);
    const double length = std::sqrt(double(RING[i][0] * RING[i][0] + RING[i][1] * RING[i][1]));
    // One division of small numbers.
    ExpectNear(GetPartDirection(30 + i), Vector3(RING[i][0] / length, 0.0, RING[i][1] / length), 1e-15);
  }
}

TEST(CubeTables, hold_the_names_of_the_overlay) {
  OpenOrientor cube;
  const char* const names[6] = {"Rotate Counter-Clockwise", "Rotate Clockwise", "Home", "", "", ""};
  for (int part = 0; part < 6; ++part) {
    cube.activeOverlayPart = part;
    EXPECT_EQ(cube.GetActivePartName(), names[part]);
  }
}

TEST(CubeTables, number_the_overlay_parts) {
  EXPECT_EQ(Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE, 0);
  EXPECT_EQ(Orientor::OVERLAY_ROTATE_CLOCKWISE, 1);
  EXPECT_EQ(Orientor::OVERLAY_HOME, 2);
  EXPECT_EQ(Orientor::OVERLAY_LOCK, 3);
  EXPECT_EQ(Orientor::OVERLAY_CONTEXT_MENU, 4);
  EXPECT_EQ(Orientor::OVERLAY_UCS_MENU, 5);
}

TEST(CubeTables, number_the_parts_for_observers) {
  // Geometry parts by their names: "Front Left Top" is PART_FRONT_LEFT_TOP. A few of each kind.
  EXPECT_EQ(OrientorObserver::PART_BACK, 0);
  EXPECT_EQ(OrientorObserver::PART_LEFT, 5);
  EXPECT_EQ(OrientorObserver::PART_BACK_BOTTOM, 6);
  EXPECT_EQ(OrientorObserver::PART_LEFT_TOP, 13);
  EXPECT_EQ(OrientorObserver::PART_FRONT_LEFT, 17);
  EXPECT_EQ(OrientorObserver::PART_BACK_RIGHT_BOTTOM, 18);
  EXPECT_EQ(OrientorObserver::PART_FRONT_LEFT_TOP, 25);
  EXPECT_EQ(OrientorObserver::PART_BACK_ARROW, 26);
  EXPECT_EQ(OrientorObserver::PART_LEFT_ARROW, 31);
  EXPECT_EQ(OrientorObserver::PART_ROTATE_COUNTER_CLOCKWISE, 32);
  EXPECT_EQ(OrientorObserver::PART_CONTEXT_MENU, 36);
  EXPECT_EQ(OrientorObserver::PART_COMPASS_FRONT, 37);
  EXPECT_EQ(OrientorObserver::PART_COMPASS_RIGHT, 40);
  EXPECT_EQ(OrientorObserver::PART_COMPASS_RING, 41);
}

TEST(CubeTables, know_no_part_for_a_normalised_edge_or_corner) {
  const OpenOrientor cube;
  EXPECT_EQ(cube.GetGeometryPartIndex(Vector3(1, 1, 1).Normalize()), -1);
  EXPECT_EQ(cube.GetGeometryPartIndex(Vector3(1, 1, 0).Normalize()), -1);
  EXPECT_EQ(cube.GetGeometryPartIndex(Vector3(2, 0, 0)), -1);
  EXPECT_EQ(cube.GetGeometryPartIndex(Vector3()), -1);
}

TEST(CubeTables, give_no_geometry_direction_for_a_compass_part) {
  const OpenOrientor cube;
  EXPECT_NE(GetPartDirection(26), Vector3::Zero);
  EXPECT_EQ(cube.GetGeometryPartDirection(26), Vector3::Zero);
  EXPECT_EQ(cube.GetGeometryPartDirection(-1), Vector3::Zero);
  EXPECT_EQ(cube.GetGeometryPartDirection(57), Vector3::Zero);
  EXPECT_EQ(cube.GetGeometryPartDirection(2147483647), Vector3::Zero);
}

// ---- spaces ----

TEST(CubeSpace, counts_along_front_up_and_side) {
  // Front y and up z: the side is y x z = x.
  const Vector3 front(0, 2, 0);
  const Vector3 up(0, 1, 5);  // only its part across the front counts
  ExpectNear(ChangeBasis(front, up, Vector3(7, 11, 13)), Vector3(11, 13, 7), 1e-13);
  ExpectNear(ChangeInverseBasis(front, up, Vector3(11, 13, 7)), Vector3(7, 11, 13), 1e-13);
}

TEST(CubeSpace, has_a_component_of_zero_for_a_degenerate_direction) {
  EXPECT_EQ(ChangeBasis(Vector3(1, 0, 0), Vector3(2, 0, 0), Vector3(7, 11, 13)), Vector3(7, 0, 0));
  EXPECT_EQ(ChangeBasis(Vector3(1e-8, 0, 0), Vector3(0, 1, 0), Vector3(7, 11, 13)), Vector3());
  EXPECT_EQ(ChangeInverseBasis(Vector3(), Vector3(), Vector3(7, 11, 13)), Vector3());
}

TEST(CubeSpace, is_left_as_it_was_entered_for_any_frame) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    const Axes axes = RandomAxes(random);
    const Vector3 v = random.Point(10.0);
    ExpectNear(ChangeInverseBasis(axes.front, axes.up, ChangeBasis(axes.front, axes.up, v)), v, 1e-12);
  }
}

TEST(CubeSpace, of_an_orientor_follows_the_directions_of_the_scene) {
  CubeScene scene;
  scene.Scene().scene_front_direction = Vector3(0, -1, 0);
  scene.Scene().scene_up_direction = Vector3(0, 0, 1);
  // The side of front -y and up z is -y x z = -x.
  scene.cube.open.Look();
  const CubeSpace& space = scene.cube.open.space;
  EXPECT_EQ(space.FromScene(Vector3(1, 2, 3)), Vector3(-2, 3, -1));
}

TEST(CubeSpace, shows_what_is_laid_along_the_axes_of_the_world_as_the_scene_sees_it) {
  CubeScene scene;
  scene.Scene().world_front_direction = Vector3(0, 1, 0);
  scene.Scene().world_up_direction = Vector3(0, 0, 1);  // the side: y x z = x
  scene.Scene().scene_front_direction = Vector3(0, -1, 0);
  scene.Scene().scene_up_direction = Vector3(0, 0, 1);  // the side: -x
  // (1, 2, 3) along front, up, side of the world is the point (3, 1, 2); in the scene (-1, 2, -3).
  scene.cube.open.Look();
  const CubeSpace& space = scene.cube.open.space;
  EXPECT_EQ(space.FromWorldAxes(Vector3(1, 2, 3)), Vector3(-1, 2, -3));
  EXPECT_EQ(space.FromGround(Vector3(1, 2, 3)), Vector3(1, 2, 3));  // the scene is the world
  scene.Scene().scene_is_world = false;
  scene.cube.open.Look();
  EXPECT_EQ(space.FromGround(Vector3(1, 2, 3)), Vector3(-1, 2, -3));
}

TEST(CubeSpace, is_another_version_only_when_something_has_changed) {
  CubeScene scene;
  const CubeSpace& space = scene.cube.open.space;
  scene.cube.open.Look();
  auto isOther = [&, before = space.GetVersion()]() mutable {
    scene.cube.open.Look();
    return std::exchange(before, space.GetVersion()) != space.GetVersion();
  };
  EXPECT_FALSE(isOther());
  Vector3 CameraParameters::*const CAMERA[] = {&CameraParameters::eye, &CameraParameters::centre,
                                               &CameraParameters::up};
  for (Vector3 CameraParameters::*const field : CAMERA) {
    (scene.hub.view.*field).y += 0.25;
    EXPECT_TRUE(isOther());
    EXPECT_FALSE(isOther());
  }
  Vector3 ApplicationParameters::*const SCENE[] = {
      &ApplicationParameters::scene_front_direction, &ApplicationParameters::scene_up_direction,
      &ApplicationParameters::world_front_direction, &ApplicationParameters::world_up_direction};
  for (Vector3 ApplicationParameters::*const field : SCENE) {
    (scene.Scene().*field).z += 0.25;
    EXPECT_TRUE(isOther());
    EXPECT_FALSE(isOther());
  }
  scene.Scene().scene_is_world = !scene.Scene().scene_is_world;
  EXPECT_TRUE(isOther());
}

// ---- the box of a part ----

struct Bound {
  Vector3 min;
  Vector3 max;
};

Bound BoundOf(const CubeDimensions& cube, const Vector3& view, const Vector3& part, bool select) {
  Bound bound;
  GetPartBound(cube, view, part, select, bound.min, bound.max);
  return bound;
}

TEST(CubePartBound, of_a_face_is_a_panel) {
  const CubeDimensions cube = {0.06, 0.035, 0.01};
  const Bound top = BoundOf(cube, Vector3(), Vector3(0, 1, 0), false);
  ExpectNear(top.min, Vector3(-0.05, 0.06, -0.05), 1e-15);
  ExpectNear(top.max, Vector3(0.05, 0.095, 0.05), 1e-15);
}

TEST(CubePartBound, of_an_edge_is_a_rod_and_of_a_corner_a_block) {
  const CubeDimensions cube = {0.06, 0.035, 0.01};
  const Bound edge = BoundOf(cube, Vector3(), Vector3(-1, 0, 1), false);
  ExpectNear(edge.min, Vector3(-0.095, -0.05, 0.06), 1e-15);
  ExpectNear(edge.max, Vector3(-0.06, 0.05, 0.095), 1e-15);
  const Bound corner = BoundOf(cube, Vector3(), Vector3(1, -1, -1), false);
  ExpectNear(corner.min, Vector3(0.06, -0.095, -0.095), 1e-15);
  ExpectNear(corner.max, Vector3(0.095, -0.06, -0.06), 1e-15);
}

TEST(CubePartBound, of_a_face_meets_the_rim_exactly_with_no_gap) {
  for (int face = 0; face < 6; ++face) {
    for (int edge = 6; edge < 18; ++edge) {
      const Vector3 faceDirection = CUBE_PARTS[face].direction;
      const Vector3 edgeDirection = CUBE_PARTS[edge].direction;
      if (faceDirection.Dot(edgeDirection) != 1.0) continue;
      const Vector3 outward = edgeDirection - faceDirection;  // from the face to its edge
      const Bound panel = BoundOf(DEFAULT_CUBE, Vector3(), faceDirection, false);
      const Bound rod = BoundOf(DEFAULT_CUBE, Vector3(), edgeDirection, false);
      const double panelEnd =
          outward.Dot(Vector3(1.0)) > 0.0 ? panel.max.Dot(outward) : panel.min.Dot(outward);
      const double rodEnd = outward.Dot(Vector3(1.0)) > 0.0 ? rod.min.Dot(outward) : rod.max.Dot(outward);
      EXPECT_EQ(panelEnd, rodEnd) << face << ", " << edge;
    }
  }
}

// One axis of a part away from the eye, a neighbouring axis toward it: the first reaches back.
TEST(CubePartBound, reaches_back_on_the_outline_when_selecting) {
  const CubeDimensions cube = {0.06, 0.035, 0.0};
  const Vector3 view(0.6, -0.64, 0.48);  // px 0.6, py -0.64 for the part (1, 1, 0)
  const Bound edge = BoundOf(cube, view, Vector3(1, 1, 0), true);
  // 0.095 and |0.6| 0.035 3 = 0.063 more.
  ExpectNear(edge.max, Vector3(0.158, 0.095, 0.06), 1e-15);
  ExpectNear(edge.min, Vector3(0.06, 0.06, -0.06), 1e-15);
  const Bound drawn = BoundOf(cube, view, Vector3(1, 1, 0), false);
  ExpectNear(drawn.max, Vector3(0.095, 0.095, 0.06), 1e-15);
}

struct OutlineCase {
  Vector3 view;
  int axis;  // the one that reaches back
};

// Each of the six tests by itself, on an edge of its two axes.
TEST(CubePartBound, tests_all_six_pairs_of_neighbouring_axes) {
  const OutlineCase cases[] = {
      {Vector3(0.5, -0.25, 0), 0}, {Vector3(-0.25, 0.5, 0), 1}, {Vector3(0, 0.5, -0.25), 1},
      {Vector3(0, -0.25, 0.5), 2}, {Vector3(-0.25, 0, 0.5), 2}, {Vector3(0.5, 0, -0.25), 0},
  };
  for (const OutlineCase& each : cases) {
    const Vector3 part(each.view.x != 0.0, each.view.y != 0.0, each.view.z != 0.0);
    const Bound plain = BoundOf(DEFAULT_CUBE, each.view, part, false);
    const Bound grown = BoundOf(DEFAULT_CUBE, each.view, part, true);
    for (int axis = 0; axis < 3; ++axis) {
      // |p| = 0.5: half of three rims.
      const double growth = axis == each.axis ? 0.5 * 0.035 * 3.0 : 0.0;
      EXPECT_NEAR(grown.max[axis], plain.max[axis] + growth, 1e-15);
      EXPECT_EQ(grown.min[axis], plain.min[axis]);
    }
    // The opposite part, seen from the other side, grows toward low values.
    const Bound mirrored = BoundOf(DEFAULT_CUBE, -each.view, -part, true);
    ExpectNear(mirrored.min, -grown.max, 1e-15);
    ExpectNear(mirrored.max, -grown.min, 1e-15);
  }
}

TEST(CubePartBound, of_a_corner_with_two_axes_away_reaches_back_on_both) {
  const Vector3 view(0.6, 0.48, -0.64);
  const Bound plain = BoundOf(DEFAULT_CUBE, view, Vector3(1, 1, 1), false);
  const Bound grown = BoundOf(DEFAULT_CUBE, view, Vector3(1, 1, 1), true);
  ExpectNear(grown.max - plain.max, Vector3(0.6, 0.48, 0.0) * 0.035 * 3.0, 1e-15);
}

TEST(CubePartBound, of_a_corner_with_one_axis_away_reaches_back_once) {
  // Both neighbours of x look toward the eye: two of the tests give the same reach, which counts once.
  const Vector3 view(0.6, -0.48, -0.64);
  const Bound plain = BoundOf(DEFAULT_CUBE, view, Vector3(1, 1, 1), false);
  const Bound grown = BoundOf(DEFAULT_CUBE, view, Vector3(1, 1, 1), true);
  ExpectNear(grown.max - plain.max, Vector3(0.6, 0.0, 0.0) * 0.035 * 3.0, 1e-15);
}

TEST(CubePartBound, keeps_the_parts_that_face_the_eye_whole) {
  const Vector3 view(-0.6, -0.64, -0.48);
  for (const CubePart& part : CUBE_PARTS) {
    if (part.direction.x < 0 || part.direction.y < 0 || part.direction.z < 0) continue;
    const Bound plain = BoundOf(DEFAULT_CUBE, view, part.direction, false);
    const Bound grown = BoundOf(DEFAULT_CUBE, view, part.direction, true);
    EXPECT_EQ(plain.min, grown.min) << part.name;
    EXPECT_EQ(plain.max, grown.max) << part.name;
  }
}

// ---- the sides of a box ----

PartVertices SidesOf(const CubeDimensions& cube, const Vector3& part, bool plain = false) {
  const Bound bound = BoundOf(cube, Vector3(), part, false);
  PartVertices sides;
  GetPartVertexArray(cube, bound.min, bound.max, plain, sides);
  return sides;
}

struct Quad {
  Vector3 corners[4];
  Vector2 texCoords[4];

  Vector3 Normal() const { return (corners[1] - corners[0]).Cross(corners[2] - corners[0]); }
  Vector3 Centre() const { return (corners[0] + corners[1] + corners[2] + corners[3]) / 4.0; }
};

std::vector<Quad> QuadsOf(const PartVertices& sides) {
  EXPECT_EQ(sides.count % 4, 0U);
  std::vector<Quad> quads(sides.count / 4);
  for (unsigned i = 0; i < sides.count; ++i) {
    Quad& quad = quads[i / 4];
    quad.corners[i % 4] = Vector3(sides.vertices + std::size_t{3} * i);
    quad.texCoords[i % 4] = Vector2(sides.texCoords[2 * i], sides.texCoords[2 * i + 1]);
  }
  return quads;
}

// The axis across a flat quad.
int AxisOf(const Quad& quad) {
  const Vector3 normal = quad.Normal();
  return std::abs(normal.x) > std::abs(normal.y) && std::abs(normal.x) > std::abs(normal.z)
             ? 0
             : (std::abs(normal.y) > std::abs(normal.z) ? 1 : 2);
}

int FaceOf(const Quad& quad) {
  const int axis = AxisOf(quad);
  return 2 * axis + (quad.Centre()[axis] > 0.0 ? 1 : 0);
}

TEST(CubeSides, are_one_of_a_face_two_of_an_edge_and_three_of_a_corner) {
  for (int part = 0; part < 26; ++part) {
    const unsigned sides = part < 6 ? 1 : part < 18 ? 2 : 3;
    EXPECT_EQ(SidesOf(DEFAULT_CUBE, CUBE_PARTS[part].direction).count, 4 * sides) << part;
  }
}

TEST(CubeSides, of_a_box_round_the_whole_cube_are_all_six) {
  PartVertices sides;
  GetPartVertexArray(DEFAULT_CUBE, Vector3(-0.095), Vector3(0.095), true, sides);
  EXPECT_EQ(sides.count, 24U);
}

TEST(CubeSides, are_written_over_those_of_before) {
  PartVertices sides;
  const Vector3 corner(0.095);
  for (int i = 0; i < 2; ++i) GetPartVertexArray(DEFAULT_CUBE, corner * 0.9, corner, true, sides);
  EXPECT_EQ(sides.count, 12U);
}

TEST(CubeSides, within_the_cube_are_left_out) {
  PartVertices sides;
  GetPartVertexArray(DEFAULT_CUBE, Vector3(-0.0949), Vector3(0.0949), true, sides);
  EXPECT_EQ(sides.count, 0U);
}

TEST(CubeSides, face_outward_all_the_same_way) {
  Random random;
  for (int i = 0; i < 200; ++i) {
    const CubeDimensions cube = RandomDimensions(random, random.Uniform(0.0, 0.01));
    for (const CubePart& part : CUBE_PARTS) {
      for (const Quad& quad : QuadsOf(SidesOf(cube, part.direction))) {
        // Clockwise as seen from outside: the right-handed normal points inward.
        EXPECT_LT(quad.Normal()[AxisOf(quad)] * quad.Centre()[AxisOf(quad)], 0.0) << part.name;
      }
    }
  }
}

TEST(CubeSides, lie_on_the_surface_of_the_cube) {
  Random random;
  for (int i = 0; i < 200; ++i) {
    const CubeDimensions cube = RandomDimensions(random, random.Uniform(0.0, 0.01));
    for (const CubePart& part : CUBE_PARTS) {
      for (const Quad& quad : QuadsOf(SidesOf(cube, part.direction))) {
        const int axis = AxisOf(quad);
        for (const Vector3& corner : quad.corners) {
          EXPECT_NEAR(std::abs(corner[axis]), cube.face + cube.edge, 1e-7);  // narrowed to floats
        }
      }
    }
  }
}

// Which corners of the box, 0 low and 1 high on the next and the second next axis.
TEST(CubeSides, run_through_their_corners_in_a_fixed_order) {
  const int low[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  const int high[4][2] = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
  for (int face = 0; face < 6; ++face) {
    const std::vector<Quad> quads = QuadsOf(SidesOf(DEFAULT_CUBE, CUBE_PARTS[face].direction));
    ASSERT_EQ(quads.size(), 1U);
    const int axis = face / 2;
    for (int i = 0; i < 4; ++i) {
      const int* const ends = face % 2 == 0 ? low[i] : high[i];
      const Vector3& corner = quads[0].corners[i];
      EXPECT_EQ(corner[(axis + 1) % 3] > 0.0, ends[0] == 1) << face << ", " << i;
      EXPECT_EQ(corner[(axis + 2) % 3] > 0.0, ends[1] == 1) << face << ", " << i;
    }
  }
}

TEST(CubeSides, have_plain_texture_coordinates_by_vertex) {
  const Vector2 expected[4] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};
  for (const CubePart& part : CUBE_PARTS) {
    for (const Quad& quad : QuadsOf(SidesOf(DEFAULT_CUBE, part.direction, true))) {
      for (int i = 0; i < 4; ++i) EXPECT_EQ(quad.texCoords[i], expected[i]);
    }
  }
}

struct TextureRow {
  double ub, vb, su, sv;
};
constexpr TextureRow TEXTURE_ROWS[6] = {
    {0, 5, 1, -1},   // Back
    {1, 6, -1, -1},  // Front
    {1, 2, -1, -1},  // Bottom
    {0, 1, 1, -1},   // Top
    {1, 3, -1, -1},  // Right
    {0, 4, 1, -1},   // Left
};

TEST(CubeSides, cut_their_piece_out_of_the_row_of_their_face) {
  const CubeDimensions cube = {0.07, 0.03, 0.005};
  const double width = 0.21;
  for (const CubePart& part : CUBE_PARTS) {
    for (const Quad& quad : QuadsOf(SidesOf(cube, part.direction))) {
      const int face = FaceOf(quad);
      const TextureRow& row = TEXTURE_ROWS[face];
      const int axis = face / 2;
      const int second = (axis + 2) % 3;
      const int next = (axis + 1) % 3;
      for (int i = 0; i < 4; ++i) {
        const Vector3& corner = quad.corners[i];
        const double p = face < 2 ? corner[second] : corner[next];
        const double q = face < 2 ? corner[next] : corner[second];
        // Vertices and coordinates are floats of size 1.
        EXPECT_NEAR(quad.texCoords[i].x, row.su * (p / width + 0.5) + row.ub, 1e-6) << part.name;
        EXPECT_NEAR(quad.texCoords[i].y, (row.sv * (q / width + 0.5) + row.vb) / 6.0, 1e-6) << part.name;
      }
    }
  }
}

// The rows as a viewer reads them: from the top of the picture Top, Bottom, Right, Left, Back, Front.
TEST(CubeSides, take_the_rows_from_the_top_of_the_picture) {
  const int rowOfFace[6] = {4, 5, 1, 0, 2, 3};  // Back, Front, Bottom, Top, Right, Left
  for (const CubePart& part : CUBE_PARTS) {
    for (const Quad& quad : QuadsOf(SidesOf(DEFAULT_CUBE, part.direction))) {
      const double row = (quad.texCoords[0].y + quad.texCoords[2].y) / 2.0 * 6.0;
      EXPECT_EQ(static_cast<int>(row), rowOfFace[FaceOf(quad)]) << part.name;
    }
  }
}

// A viewer before a side face reads its picture from left to right and from top to bottom.
TEST(CubeSides, show_the_picture_of_a_side_face_upright_and_not_mirrored) {
  for (const int face : {0, 1, 4, 5}) {
    const Vector3 outward = CUBE_PARTS[face].direction;
    const Vector3 right = (-outward).Cross(Vector3(0, 1, 0));
    const Quad quad = QuadsOf(SidesOf(DEFAULT_CUBE, outward))[0];
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) {
        const Vector3 step = quad.corners[j] - quad.corners[i];
        const Vector2 textureStep = quad.texCoords[j] - quad.texCoords[i];
        if (step.Dot(right) > 0.01) {
          EXPECT_GT(textureStep.x, 0.1) << face;
        }
        if (step.y > 0.01) {
          EXPECT_LT(textureStep.y, -0.01) << face;
        }
      }
    }
  }
}

struct Area {
  double left, right, low, high;
  double Size() const { return (right - left) * (high - low); }
};

Area TextureAreaOf(const Quad& quad) {
  Area area = {quad.texCoords[0].x, quad.texCoords[0].x, quad.texCoords[0].y, quad.texCoords[0].y};
  for (const Vector2& t : quad.texCoords) {
    area.left = std::min(area.left, t.x);
    area.right = std::max(area.right, t.x);
    area.low = std::min(area.low, t.y);
    area.high = std::max(area.high, t.y);
  }
  return area;
}

// No two pieces overlap and their sizes add up to the row: together they are the whole picture.
TEST(CubeSides, of_all_26_parts_together_show_each_faces_picture_whole_with_no_gap) {
  Random random;
  const double tolerance = 1e-6;  // texture coordinates are floats of size 1
  for (int i = 0; i < 50; ++i) {
    const CubeDimensions cube = RandomDimensions(random, 0.0);
    std::vector<Area> pieces[6];
    for (const CubePart& part : CUBE_PARTS) {
      for (const Quad& quad : QuadsOf(SidesOf(cube, part.direction))) {
        pieces[FaceOf(quad)].push_back(TextureAreaOf(quad));
      }
    }
    const int rowOfFace[6] = {4, 5, 1, 0, 2, 3};
    for (int face = 0; face < 6; ++face) {
      SCOPED_TRACE(face);
      ASSERT_EQ(pieces[face].size(), 9U);
      double covered = 0.0;
      for (const Area& piece : pieces[face]) {
        covered += piece.Size();
        EXPECT_GE(piece.left, 0.0 - tolerance);
        EXPECT_LE(piece.right, 1.0 + tolerance);
        EXPECT_GE(piece.low, rowOfFace[face] / 6.0 - tolerance);
        EXPECT_LE(piece.high, (rowOfFace[face] + 1) / 6.0 + tolerance);
        for (const Area& other : pieces[face]) {
          if (&other == &piece) continue;
          const double width = std::min(piece.right, other.right) - std::max(piece.left, other.left);
          const double height = std::min(piece.high, other.high) - std::max(piece.low, other.low);
          EXPECT_FALSE(width > tolerance && height > tolerance);
        }
      }
      EXPECT_NEAR(covered, 1.0 / 6.0, 10 * tolerance);
    }
  }
}

TEST(CubeSides, stay_within_their_array_for_any_box) {
  Random random;
  const double numbers[] = {0.0, -0.0, 1e300, -1e300, 1e-300, NAN, INFINITY, -INFINITY, 0.095, -0.095};
  for (int i = 0; i < 2000; ++i) {
    const CubeDimensions cube = {random.OneOf(numbers), random.OneOf(numbers), random.OneOf(numbers)};
    const Vector3 low(random.OneOf(numbers), random.OneOf(numbers), random.OneOf(numbers));
    const Vector3 high(random.OneOf(numbers), random.OneOf(numbers), random.OneOf(numbers));
    PartVertices sides;
    GetPartVertexArray(cube, low, high, random.Coin(), sides);
    EXPECT_LE(sides.count, 24U);
    EXPECT_EQ(sides.count % 4, 0U);
  }
}

}  // namespace
