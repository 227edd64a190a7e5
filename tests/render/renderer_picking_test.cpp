#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/renderer.h"
#include "support/cameras.h"
#include "support/random.h"
#include "support/recording_renderer.h"

namespace {

using namespace Korvane;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
const Box2 VIEWPORT(Vector2(400.0, 300.0), Vector2(400.0, 300.0));

using Quad = std::array<Vector3, 4>;

std::vector<float> Vertices(const std::vector<Quad>& quads) {
  std::vector<float> vertices;
  for (const Quad& quad : quads) {
    for (const Vector3& corner : quad) {
      for (int i = 0; i < 3; ++i) vertices.push_back(static_cast<float>(corner[i]));
    }
  }
  return vertices;
}

// An upright square about a pixel, at a depth of the overlay.
Quad OverlaySquare(double x, double y, double half, double z) {
  return {Vector3(x - half, y - half, z), Vector3(x + half, y - half, z), Vector3(x + half, y + half, z),
          Vector3(x - half, y + half, z)};
}

class PickingTest : public ::testing::Test {
 protected:
  bool BeginOverlay(double x, double y) {
    return renderer.BeginSelection(Vector2(x, y), VIEWPORT, CameraParameters(), Renderer::RENDER_OVERLAY);
  }

  void Offer(const std::vector<Quad>& quads, int id) {
    const std::vector<float> vertices = Vertices(quads);
    EXPECT_TRUE(
        renderer.RenderSelectionGeometry(static_cast<unsigned>(vertices.size() / 3), vertices.data(), id));
  }

  RecordingRenderer renderer;
};

// ---- the pass ----

TEST_F(PickingTest, nothing_is_selected_at_first) { EXPECT_EQ(renderer.GetSelection(), -1); }

TEST_F(PickingTest, a_pass_with_no_geometry_leaves_the_selection_at_minus_1) {
  EXPECT_TRUE(BeginOverlay(100.0, 100.0));
  EXPECT_EQ(renderer.GetSelection(), -1);
}

TEST_F(PickingTest, a_new_pass_forgets_the_last_one) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 0.0)}, 5);
  EXPECT_EQ(renderer.GetSelection(), 5);
  BeginOverlay(100.0, 100.0);
  EXPECT_EQ(renderer.GetSelection(), -1);
  // Farther than the hit of the last pass, which must not shade it.
  Offer({OverlaySquare(100.0, 100.0, 10.0, 50.0)}, 6);
  EXPECT_EQ(renderer.GetSelection(), 6);
}

TEST_F(PickingTest, the_end_of_a_pass_keeps_the_selection) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 0.0)}, 5);
  renderer.EndSelection();
  EXPECT_EQ(renderer.GetSelection(), 5);
}

TEST_F(PickingTest, a_pass_of_any_other_mode_fails_and_has_no_selection) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 0.0)}, 5);
  for (const int mode : {2, 3, -1, 1000}) {
    EXPECT_FALSE(renderer.BeginSelection(Vector2(100.0, 100.0), VIEWPORT, CameraParameters(),
                                         static_cast<Renderer::RenderMode>(mode)))
        << mode;
    EXPECT_EQ(renderer.GetSelection(), -1) << mode;
  }
}

TEST_F(PickingTest, nothing_is_hit_in_a_pass_that_failed) {
  BeginOverlay(100.0, 100.0);
  EXPECT_FALSE(
      renderer.BeginSelection(Vector2(100.0, 100.0), VIEWPORT, CameraParameters(), Renderer::RENDER_SCENE));
  Offer({OverlaySquare(100.0, 100.0, 10.0, 0.0)}, 5);
  EXPECT_EQ(renderer.GetSelection(), -1);
}

// ---- quads ----

TEST_F(PickingTest, the_nearest_hit_over_all_calls_wins_whatever_their_order) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 5.0)}, 1);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 2.0)}, 2);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 3.0)}, 3);
  EXPECT_EQ(renderer.GetSelection(), 2);
}

TEST_F(PickingTest, the_earlier_call_wins_on_equal_distance) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 2.0)}, 1);
  Offer({OverlaySquare(100.0, 100.0, 20.0, 2.0)}, 2);
  EXPECT_EQ(renderer.GetSelection(), 1);
}

TEST_F(PickingTest, all_quads_of_a_call_are_tested) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(500.0, 500.0, 10.0, 0.0), OverlaySquare(100.0, 100.0, 10.0, 0.0)}, 4);
  EXPECT_EQ(renderer.GetSelection(), 4);
}

TEST_F(PickingTest, both_triangles_of_a_quad_count) {
  for (const Vector2& point : {Vector2(105.0, 95.0), Vector2(95.0, 105.0)}) {
    BeginOverlay(point.x, point.y);
    Offer({OverlaySquare(100.0, 100.0, 10.0, 0.0)}, 4);
    EXPECT_EQ(renderer.GetSelection(), 4);
  }
}

TEST_F(PickingTest, both_faces_of_a_quad_count) {
  const Quad square = OverlaySquare(100.0, 100.0, 10.0, 0.0);
  BeginOverlay(100.0, 100.0);
  Offer({{square[3], square[2], square[1], square[0]}}, 4);
  EXPECT_EQ(renderer.GetSelection(), 4);
}

TEST_F(PickingTest, what_lies_behind_the_start_of_the_ray_is_missed) {
  BeginOverlay(100.0, 100.0);
  Offer({OverlaySquare(100.0, 100.0, 10.0, -1.5)}, 4);
  EXPECT_EQ(renderer.GetSelection(), -1);
  // The overlay's ray starts at a depth of -1.
  Offer({OverlaySquare(100.0, 100.0, 10.0, -0.5)}, 4);
  EXPECT_EQ(renderer.GetSelection(), 4);
}

TEST_F(PickingTest, fewer_than_4_vertices_are_ignored) {
  const std::vector<float> vertices = Vertices({OverlaySquare(100.0, 100.0, 10.0, 0.0)});
  for (unsigned count = 0; count < 4; ++count) {
    BeginOverlay(100.0, 100.0);
    EXPECT_TRUE(renderer.RenderSelectionGeometry(count, vertices.data(), 4));
    EXPECT_EQ(renderer.GetSelection(), -1) << count;
  }
}

TEST_F(PickingTest, of_7_vertices_one_quad_is_tested_and_the_three_left_over_are_ignored) {
  // Exactly 7 vertices in memory, the last three under the cursor.
  std::vector<float> vertices =
      Vertices({OverlaySquare(500.0, 500.0, 10.0, 0.0), OverlaySquare(100.0, 100.0, 10.0, 0.0)});
  vertices.resize(21);
  vertices.shrink_to_fit();
  BeginOverlay(105.0, 95.0);
  EXPECT_TRUE(renderer.RenderSelectionGeometry(7, vertices.data(), 4));
  EXPECT_EQ(renderer.GetSelection(), -1);
  BeginOverlay(500.0, 500.0);
  EXPECT_TRUE(renderer.RenderSelectionGeometry(7, vertices.data(), 4));
  EXPECT_EQ(renderer.GetSelection(), 4);
}

TEST_F(PickingTest, null_vertices_are_ignored) {
  BeginOverlay(100.0, 100.0);
  EXPECT_TRUE(renderer.RenderSelectionGeometry(8, nullptr, 4));
  EXPECT_EQ(renderer.GetSelection(), -1);
}

TEST_F(PickingTest, vertices_that_are_not_numbers_are_missed) {
  for (const double bad : {NAN_VALUE, INFINITE, -INFINITE}) {
    Quad square = OverlaySquare(100.0, 100.0, 10.0, 0.0);
    for (Vector3& corner : square) corner.z = bad;
    BeginOverlay(100.0, 100.0);
    Offer({square}, 4);
    EXPECT_EQ(renderer.GetSelection(), -1) << bad;
  }
}

TEST_F(PickingTest, the_distance_of_a_bent_quad_is_the_smaller_of_both_planes) {
  // The cursor is over triangle (a, b, c) at depth 5. The plane of the missed triangle (c, d, a) has the
  // slope (9 - 5) / 20 a pixel down to the right: at (105, 95) it lies at 5 - 10 * 0.2 = 3.
  Quad bent = OverlaySquare(100.0, 100.0, 10.0, 5.0);
  bent[3].z = 9.0;
  BeginOverlay(105.0, 95.0);
  Offer({bent}, 1);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 4.0)}, 2);
  EXPECT_EQ(renderer.GetSelection(), 1);
  Offer({OverlaySquare(100.0, 100.0, 10.0, 2.0)}, 3);
  EXPECT_EQ(renderer.GetSelection(), 3);
}

// ---- the ray of a perspective pass ----

// A cross of thin squares tells where the ray goes: hit only within `half` of `target`.
class PerspectivePickingTest : public PickingTest {
 protected:
  bool Begin(const Vector2& point, const CameraParameters& camera) {
    return renderer.BeginSelection(point, VIEWPORT, camera, Renderer::RENDER_PERSPECTIVE);
  }

  // Whether the ray of the pass goes through the square about `target` in the plane of the two unit axes.
  bool Hits(const Vector3& target, double half, const Vector3& right, const Vector3& up) {
    const Vector3 a = right * half;
    const Vector3 b = up * half;
    Offer({{target - a - b, target + a - b, target + a + b, target - a + b}}, 1);
    return renderer.GetSelection() == 1;
  }
};

TEST_F(PerspectivePickingTest, starts_at_the_eye_and_runs_along_the_view_in_the_middle) {
  const CameraParameters camera = LookAt(Vector3(0, 0, 10), Vector3(), Vector3(0, 1, 0));
  EXPECT_TRUE(Begin(Vector2(400.0, 300.0), camera));
  EXPECT_TRUE(Hits(Vector3(), 0.001, Vector3(1, 0, 0), Vector3(0, 1, 0)));
}

TEST_F(PerspectivePickingTest, takes_the_wider_half_angle_on_both_sides) {
  // Looking down -z from 10: at the right edge the ray meets z = 0 at 10 tan(40), whichever half angle it
  // is that has the 40 degrees, and so on for the other edges.
  const CameraParameters base = LookAt(Vector3(0, 0, 10), Vector3(), Vector3(0, 1, 0));
  const double x = 10.0 * std::tan(40.0 * Math::DEG_TO_RAD);
  const double y = 10.0 * std::tan(30.0 * Math::DEG_TO_RAD);
  const CameraParameters cameras[] = {WithAsymmetricFrustum(base, 40.0, 5.0, 30.0, 5.0),
                                      WithAsymmetricFrustum(base, 5.0, 40.0, 5.0, 30.0)};
  for (const CameraParameters& camera : cameras) {
    for (const double side : {-1.0, 1.0}) {
      Begin(Vector2(400.0 + 400.0 * side, 300.0), camera);
      EXPECT_TRUE(Hits(Vector3(side * x, 0, 0), 0.001, Vector3(1, 0, 0), Vector3(0, 1, 0)));
      Begin(Vector2(400.0, 300.0 + 300.0 * side), camera);
      EXPECT_TRUE(Hits(Vector3(0, side * y, 0), 0.001, Vector3(1, 0, 0), Vector3(0, 1, 0)));
    }
  }
}

TEST_F(PerspectivePickingTest, measures_from_the_centre_of_the_viewport) {
  const CameraParameters camera =
      WithSymmetricFrustum(LookAt(Vector3(0, 0, 10), Vector3(), Vector3(0, 1, 0)), 45.0, 45.0);
  const Box2 corner(Vector2(700.0, 500.0), Vector2(50.0, 50.0));
  // Half way to the right edge and half way to the bottom: 10 tan(45) / 2.
  ASSERT_TRUE(renderer.BeginSelection(Vector2(725.0, 475.0), corner, camera, Renderer::RENDER_PERSPECTIVE));
  EXPECT_TRUE(Hits(Vector3(5.0, -5.0, 0.0), 0.001, Vector3(1, 0, 0), Vector3(0, 1, 0)));
}

TEST_F(PerspectivePickingTest, needs_neither_a_perpendicular_nor_a_unit_up) {
  CameraParameters camera =
      WithSymmetricFrustum(LookAt(Vector3(0, 0, 10), Vector3(), Vector3(0, 1, 0)), 45.0, 45.0);
  camera.up = Vector3(0.0, 7.0, 5.0);
  Begin(Vector2(600.0, 450.0), camera);
  EXPECT_TRUE(Hits(Vector3(5.0, 5.0, 0.0), 0.001, Vector3(1, 0, 0), Vector3(0, 1, 0)));
}

TEST_F(PerspectivePickingTest, of_a_degenerate_camera_or_viewport_selects_nothing) {
  const CameraParameters good = LookAt(Vector3(0, 0, 10), Vector3(), Vector3(0, 1, 0));
  CameraParameters noView = good;
  noView.centre = noView.eye;
  CameraParameters broken = good;
  broken.eye.x = NAN_VALUE;
  CameraParameters endless = good;
  endless.centre.z = -INFINITE;
  for (const CameraParameters& camera : {noView, broken, endless}) {
    EXPECT_TRUE(Begin(Vector2(400.0, 300.0), camera));
    EXPECT_FALSE(Hits(Vector3(), 100.0, Vector3(1, 0, 0), Vector3(0, 1, 0)));
  }
  for (const Box2& viewport : {Box2(), Box2(Vector2(NAN_VALUE), Vector2(1.0))}) {
    EXPECT_TRUE(renderer.BeginSelection(Vector2(400.0, 300.0), viewport, good, Renderer::RENDER_PERSPECTIVE));
    EXPECT_FALSE(Hits(Vector3(), 100.0, Vector3(1, 0, 0), Vector3(0, 1, 0)));
  }
}

TEST_F(PerspectivePickingTest, of_a_view_along_the_up_runs_along_the_view_whatever_the_pixel) {
  // Right and up have no direction there, so they are the zero vector.
  const CameraParameters camera = LookAt(Vector3(0, 0, 10), Vector3(), Vector3(0, 0, 1));
  Begin(Vector2(700.0, 100.0), camera);
  EXPECT_TRUE(Hits(Vector3(), 0.001, Vector3(1, 0, 0), Vector3(0, 1, 0)));
}

TEST_F(PerspectivePickingTest, goes_through_the_point_whose_pixel_it_is_for_random_cameras) {
  Random random;
  for (int i = 0; i < 3000; ++i) {
    const Vector3 forward = random.Direction();
    const Vector3 right = forward.Cross(random.Direction()).Normalized();
    if (right == Vector3::Zero) continue;
    const Vector3 up = right.Cross(forward);
    const double distance = random.Magnitude(0.5, 50.0);
    const Vector3 eye = random.Point(20.0);
    const double horizontal = random.Uniform(5.0, 70.0);
    const double vertical = random.Uniform(5.0, 70.0);
    const CameraParameters camera =
        WithSymmetricFrustum(LookAt(eye, eye + forward * distance, up), horizontal, vertical);
    const double nx = random.Uniform(-1.0, 1.0);
    const double ny = random.Uniform(-1.0, 1.0);
    const double depth = random.Uniform(1.0, 30.0);
    const Vector3 target = eye + forward * depth +
                           right * (nx * depth * std::tan(horizontal * Math::DEG_TO_RAD)) +
                           up * (ny * depth * std::tan(vertical * Math::DEG_TO_RAD));
    ASSERT_TRUE(Begin(Vector2(400.0 + 400.0 * nx, 300.0 + 300.0 * ny), camera));
    // Vertices are floats: positions up to 200 are good to 1.2e-5.
    ASSERT_TRUE(Hits(target, 0.0005, right, up)) << i;
  }
}

// ---- against a plain search ----

// Where a ray meets a flat convex quad, by the plane and four half planes; infinite when it misses, NaN
// when it comes too close to an edge to tell.
double MeetQuad(const Vector3& origin, const Vector3& direction, const Quad& quad) {
  const Vector3 normal = (quad[1] - quad[0]).Cross(quad[3] - quad[0]).Normalized();
  const double slope = direction.Dot(normal);
  if (std::abs(slope) < 1e-3) return NAN_VALUE;
  const double t = (quad[0] - origin).Dot(normal) / slope;
  const Vector3 p = origin + direction * t;
  double inside = INFINITE;
  for (std::size_t i = 0; i < 4; ++i) {
    const Vector3 edge = (quad[(i + 1) % 4] - quad[i]).Normalized();
    inside = std::min(inside, edge.Cross(p - quad[i]).Dot(normal));
  }
  if (std::abs(inside) < 1e-3 || std::abs(t) < 1e-3) return NAN_VALUE;
  return t > 0.0 && inside > 0.0 ? t : INFINITE;
}

Quad Rounded(Quad quad) {
  for (Vector3& corner : quad) {
    for (int i = 0; i < 3; ++i) corner[i] = static_cast<double>(static_cast<float>(corner[i]));
  }
  return quad;
}

TEST_F(PerspectivePickingTest, selects_the_nearest_of_random_quads_as_a_plain_search_does) {
  Random random;
  int hits = 0;
  int compared = 0;
  for (int scene = 0; scene < 2000; ++scene) {
    const Vector3 eye = random.Point(5.0);
    const Vector3 forward = random.Direction();
    const CameraParameters camera = LookAt(eye, eye + forward * 10.0, random.Direction());
    ASSERT_TRUE(Begin(Vector2(400.0, 300.0), camera));

    double nearest = INFINITE;
    double second = INFINITE;
    int expected = -1;
    bool clear = true;
    for (int id = 0; id < 26; ++id) {
      const Vector3 right = random.Direction();
      const Vector3 up = right.Cross(random.Direction()).Normalized();
      const Vector3 middle = eye + forward * random.Uniform(-5.0, 20.0) + random.Point(3.0);
      const Vector3 a = right * random.Uniform(0.5, 3.0);
      const Vector3 b = up * random.Uniform(0.5, 3.0);
      const Quad quad = Rounded({middle - a - b, middle + a - b, middle + a + b, middle - a + b});
      Offer({quad}, id);
      const double t = MeetQuad(eye, forward, quad);
      clear = clear && !std::isnan(t);
      if (!(t < INFINITE)) continue;
      if (t < nearest) {
        second = nearest;
        nearest = t;
        expected = id;
      } else {
        second = std::min(second, t);
      }
    }
    // A scene in which an edge or a tie is within a thousandth proves nothing either way.
    if (!clear || second - nearest < 1e-3) continue;
    ++compared;
    hits += expected >= 0 ? 1 : 0;
    ASSERT_EQ(renderer.GetSelection(), expected) << scene;
  }
  EXPECT_GT(compared, 1000);
  EXPECT_GT(hits, 500);
}

}  // namespace
