#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "support/random.h"
#include "zovhost/scene.h"

namespace {

using Korvane::Vector3;
using zovhost::Scene;
using zovhost::SceneData;
using Triangle = std::array<Vector3, 3>;

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

// A mesh of one part for each group of triangles, its vertices relative to `origin`.
SceneData MakeData(const std::vector<std::vector<Triangle>>& groups, const Vector3& origin = {}) {
  SceneData data;
  data.materials.emplace_back();
  for (const auto& group : groups) {
    zovhost::SceneMesh mesh;
    for (const Triangle& triangle : group)
      for (const Vector3& corner : triangle) {
        mesh.indices.push_back(static_cast<std::uint32_t>(mesh.positions.size() / 3));
        for (int axis = 0; axis < 3; ++axis) mesh.positions.push_back(static_cast<float>(corner[axis]));
      }
    zovhost::ScenePart part;
    part.mesh = static_cast<int>(data.meshes.size());
    origin.ToArray(part.transform.data() + 12);
    data.meshes.push_back(std::move(mesh));
    data.parts.push_back(std::move(part));
  }
  return data;
}

std::unique_ptr<Scene> Make(SceneData data) {
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

// A square of side 2 around the origin in the plane z = 0, front up.
std::vector<Triangle> MakeSquare() {
  const Vector3 a(-1, -1, 0), b(1, -1, 0), c(1, 1, 0), d(-1, 1, 0);
  return {{a, b, c}, {a, c, d}};
}

// Möller and Trumbore, "Fast, minimum storage ray/triangle intersection", 1997, both faces.
std::optional<double> IntersectTriangle(const Triangle& t, const Vector3& origin, const Vector3& direction) {
  const Vector3 e1 = t[1] - t[0], e2 = t[2] - t[0];
  const Vector3 p = direction.Cross(e2);
  const double determinant = e1.Dot(p);
  if (determinant == 0.0) return std::nullopt;
  const Vector3 s = origin - t[0];
  const double u = s.Dot(p) / determinant;
  const Vector3 q = s.Cross(e1);
  const double v = direction.Dot(q) / determinant;
  const double distance = e2.Dot(q) / determinant;
  if (u < 0.0 || v < 0.0 || u + v > 1.0 || distance < 0.0) return std::nullopt;
  return distance;
}

// Rounded as the mesh rounds them, so that both sides see the same triangles. Volatile, because GCC 12 loses
// the rounding of neighbouring values where it turns them into one vector operation.
double RoundToFloat(double value) {
  const volatile float rounded = static_cast<float>(value);
  return double{rounded};
}

Vector3 RoundToFloat(const Vector3& v) { return {RoundToFloat(v.x), RoundToFloat(v.y), RoundToFloat(v.z)}; }

struct Nearest {
  double distance = INFINITE;
  int part = -1;
};

Nearest FindByForce(const std::vector<std::vector<Triangle>>& groups, const Vector3& origin,
                    const Vector3& direction) {
  Nearest nearest;
  for (std::size_t part = 0; part < groups.size(); ++part)
    for (const Triangle& triangle : groups[part]) {
      const auto distance = IntersectTriangle(triangle, origin, direction);
      if (distance && *distance < nearest.distance) nearest = {*distance, static_cast<int>(part)};
    }
  return nearest;
}

// Rays within a float's width of an edge may fall on either side of it; everything else must agree. The
// distance is computed in double precision from the same floats, so it agrees to the rounding of doubles,
// magnified a hundred thousand times for triangles that the ray grazes.
void CompareWithForce(double size, const Vector3& origin, std::uint64_t stream) {
  Random random(stream);
  std::vector<std::vector<Triangle>> groups(5);
  for (auto& group : groups)
    for (int i = 0; i < 40; ++i) {
      const Vector3 centre = random.Point(size);
      Triangle triangle;
      for (Vector3& corner : triangle) corner = RoundToFloat(centre + random.Point(0.4 * size));
      group.push_back(triangle);
    }
  const auto scene = Make(MakeData(groups, origin));
  ASSERT_NE(scene, nullptr);
  constexpr int rays = 4000;
  int hits = 0, disagreements = 0;
  for (int i = 0; i < rays; ++i) {
    const Vector3 start = random.Point(3.0 * size);
    const Vector3 direction = (random.Point(size) - start).Normalized();
    const double length = random.Magnitude(1e-3, 1e3);
    Scene::Hit hit;
    const bool found = scene->Intersect(origin + start, direction * length, hit);
    const Nearest expected = FindByForce(groups, start, direction);
    const bool agrees =
        found == (expected.part >= 0) &&
        (!found || (hit.part == expected.part && std::abs(hit.distance - expected.distance) < 1e-5 * size));
    hits += found;
    disagreements += !agrees;
    if (!found || !agrees) continue;
    EXPECT_NEAR(hit.distance, expected.distance, 1e-10 * size + 1e-14 * origin.Length());
    EXPECT_NEAR((hit.point - (origin + start + direction * expected.distance)).Length(), 0.0,
                1e-10 * size + 1e-14 * origin.Length());
    EXPECT_NEAR(hit.normal.Length(), 1.0, 1e-9);
    EXPECT_LE(hit.normal.Dot(direction), 1e-9);
  }
  EXPECT_GT(hits, rays / 4);
  EXPECT_LT(hits, rays);
  EXPECT_LE(disagreements, rays / 1000);
}

TEST(SceneIntersect, agrees_with_trying_every_triangle) { CompareWithForce(10.0, {}, 1); }

TEST(SceneIntersect, agrees_with_trying_every_triangle_of_a_pin) { CompareWithForce(1e-5, {}, 2); }

TEST(SceneIntersect, agrees_with_trying_every_triangle_of_a_country) { CompareWithForce(1e6, {}, 3); }

// Half a billionth of the way around the earth apart: a float could not even tell the triangles apart.
TEST(SceneIntersect, agrees_with_trying_every_triangle_far_from_the_origin) {
  CompareWithForce(10.0, {5.0e6, -3.0e6, 4.0e6}, 4);
}

TEST(SceneIntersect, hits_both_faces_and_turns_the_normal_to_the_eye) {
  const auto scene = Make(MakeData({MakeSquare()}));
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({0.25, 0.5, 3.0}, {0.0, 0.0, -1.0}, hit));
  EXPECT_EQ(hit.normal, Vector3(0.0, 0.0, 1.0));
  EXPECT_NEAR(hit.distance, 3.0, 1e-12);
  ASSERT_TRUE(scene->Intersect({0.25, 0.5, -2.0}, {0.0, 0.0, 5.0}, hit));
  EXPECT_EQ(hit.normal, Vector3(0.0, 0.0, -1.0));
  EXPECT_NEAR(hit.distance, 2.0, 1e-12);
  EXPECT_NEAR((hit.point - Vector3(0.25, 0.5, 0.0)).Length(), 0.0, 1e-12);
}

TEST(SceneIntersect, finds_nothing_behind_the_eye_or_beside_the_ray) {
  const auto scene = Make(MakeData({MakeSquare()}));
  Scene::Hit hit;
  hit.part = 77;
  EXPECT_FALSE(scene->Intersect({0.0, 0.0, 3.0}, {0.0, 0.0, 1.0}, hit));
  EXPECT_FALSE(scene->Intersect({1.1, 0.0, 3.0}, {0.0, 0.0, -1.0}, hit));
  EXPECT_FALSE(scene->Intersect({90.0, 0.0, 3.0}, {0.0, 0.0, -1.0}, hit));
  EXPECT_EQ(hit.part, 77) << "a miss leaves the hit alone";
}

TEST(SceneIntersect, does_not_slip_through_between_triangles) {
  const auto scene = Make(MakeData({MakeSquare()}));
  Random random(5);
  Scene::Hit hit;
  for (int i = 0; i < 10000; ++i) {
    const double along = random.Uniform(-0.999, 0.999);  // a point of the shared edge
    const Vector3 start = random.Direction() * 5.0;
    if (std::abs(start.z) < 0.01) continue;
    EXPECT_TRUE(scene->Intersect(start, Vector3(along, along, 0.0) - start, hit));
  }
}

TEST(SceneIntersect, is_exact_from_very_far_away) {
  const auto scene = Make(MakeData({MakeSquare()}));
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({0.25, 0.5, 1e9}, {0.0, 0.0, -1.0}, hit));
  EXPECT_NEAR(hit.distance, 1e9, 1e-6);
  EXPECT_NEAR((hit.point - Vector3(0.25, 0.5, 0.0)).Length(), 0.0, 1e-6);
}

TEST(SceneIntersect, refuses_degenerate_rays) {
  const auto scene = Make(MakeData({MakeSquare()}));
  Scene::Hit hit;
  EXPECT_FALSE(scene->Intersect({0.0, 0.0, 3.0}, {0.0, 0.0, 0.0}, hit));
  for (const double bad : {NOT_A_NUMBER, INFINITE, -INFINITE})
    for (int axis = 0; axis < 3; ++axis) {
      Vector3 origin(0.0, 0.0, 3.0), direction(0.0, 0.0, -1.0);
      direction[axis] = bad;
      EXPECT_FALSE(scene->Intersect(origin, direction, hit));
      origin[axis] = bad;
      EXPECT_FALSE(scene->Intersect(origin, {0.0, 0.0, -1.0}, hit));
    }
}

TEST(SceneIntersect, accepts_directions_of_any_length) {
  const auto scene = Make(MakeData({MakeSquare()}));
  Scene::Hit hit;
  for (const double length : {5e-324, 1e-300, 1e-20, 1e20, 1e300}) {
    EXPECT_TRUE(scene->Intersect({0.0, 0.25, 3.0}, {0.0, 0.0, -length}, hit)) << length;
    EXPECT_NEAR(hit.distance, 3.0, 1e-12);
  }
}

TEST(SceneIntersect, follows_placements_that_turn_mirror_and_flatten) {
  SceneData data = MakeData({MakeSquare()});
  // Columns: x to -y, y to 0 (flattened to a line), z to x; then moved. Then one that keeps an area.
  data.parts[0].transform = {0, -2, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 5, 5, 5, 1};
  zovhost::ScenePart second;
  second.transform = {0, 0, -2, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 10, 0, 1};  // into the plane y = 10
  data.parts.push_back(second);
  const auto scene = Make(std::move(data));
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({2.9, 0.0, 1.9}, {0.0, 1.0, 0.0}, hit));
  EXPECT_EQ(hit.part, 1);
  EXPECT_NEAR(hit.distance, 10.0, 1e-12);
  EXPECT_EQ(hit.normal, Vector3(0.0, -1.0, 0.0));
  EXPECT_FALSE(scene->Intersect({3.1, 0.0, 1.9}, {0.0, 1.0, 0.0}, hit));
}

TEST(SceneIntersect, tells_the_part_when_parts_lie_behind_each_other) {
  SceneData data = MakeData({MakeSquare()});
  data.parts.resize(3);
  for (std::size_t i = 0; i < 3; ++i) data.parts[i].transform[14] = 2.0 - static_cast<double>(i);
  const auto scene = Make(std::move(data));
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({0.1, 0.2, 9.0}, {0.0, 0.0, -1.0}, hit));
  EXPECT_EQ(hit.part, 0);
  ASSERT_TRUE(scene->Intersect({0.1, 0.2, 1.5}, {0.0, 0.0, -1.0}, hit));
  EXPECT_EQ(hit.part, 1);
  ASSERT_TRUE(scene->Intersect({0.1, 0.2, -9.0}, {0.0, 0.0, 1.0}, hit));
  EXPECT_EQ(hit.part, 2);
}

}  // namespace
