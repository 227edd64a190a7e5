#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "zovhost/scene.h"

namespace {

using Korvane::Vector3;
using zovhost::SceneData;

SceneData MakeTriangle() {
  SceneData data;
  data.materials.emplace_back();
  zovhost::SceneMesh mesh;
  mesh.positions = {0, 0, 0, 4, 0, 0, 0, 3, 0};
  mesh.indices = {0, 1, 2};
  data.meshes.push_back(mesh);
  data.parts.emplace_back();
  return data;
}

std::string GetFault(SceneData data) {
  std::string error;
  EXPECT_EQ(zovhost::MakeScene(std::move(data), error), nullptr);
  return error;
}

TEST(MakeScene, measures_its_box_and_radius) {
  SceneData data = MakeTriangle();
  data.parts[0].transform[12] = 10.0;
  std::string error;
  const auto scene = zovhost::MakeScene(std::move(data), error);
  ASSERT_NE(scene, nullptr) << error;
  EXPECT_EQ(scene->GetMin(), Vector3(10.0, 0.0, 0.0));
  EXPECT_EQ(scene->GetMax(), Vector3(14.0, 3.0, 0.0));
  EXPECT_EQ(scene->GetCentre(), Vector3(12.0, 1.5, 0.0));
  EXPECT_EQ(scene->GetRadius(), 2.5);
  EXPECT_EQ(scene->GetBoundingBox().GetCenter(), scene->GetCentre());
  EXPECT_EQ(scene->GetBoundingBox().GetExtent(), Vector3(2.0, 1.5, 0.0));
  EXPECT_EQ(scene->GetParts()[0].bounds.GetExtent(), Vector3(2.0, 1.5, 0.0));
  EXPECT_EQ(scene->GetTriangleCount(), 1u);
}

TEST(MakeScene, measures_only_what_shows) {
  SceneData data = MakeTriangle();
  data.meshes[0].positions.insert(data.meshes[0].positions.end(), {1000, 1000, 1000});
  data.meshes.emplace_back();  // empty
  data.parts.emplace_back();
  data.parts[1].mesh = 1;
  std::string error;
  const auto scene = zovhost::MakeScene(std::move(data), error);
  ASSERT_NE(scene, nullptr) << error;
  EXPECT_EQ(scene->GetMax(), Vector3(4.0, 3.0, 0.0));
  EXPECT_EQ(scene->GetParts().size(), 1u);
}

TEST(MakeScene, turns_its_up_direction_to_unit_length) {
  SceneData data = MakeTriangle();
  data.upDirection = {0.0, 0.0, 5.0};
  std::string error;
  EXPECT_EQ(zovhost::MakeScene(data, error)->GetUpDirection(), Vector3(0.0, 0.0, 1.0));
  data.upDirection = {0.0, 0.0, 0.0};
  EXPECT_EQ(zovhost::MakeScene(data, error)->GetUpDirection(), Vector3(0.0, 1.0, 0.0));
}

TEST(MakeScene, refuses_what_points_nowhere_or_is_not_finite) {
  using Break = void (*)(SceneData&);
  const std::pair<const char*, Break> breaks[] = {
      {"vertex", [](SceneData& d) { d.meshes[0].indices[1] = 3; }},
      {"material", [](SceneData& d) { d.meshes[0].material = 1; }},
      {"material", [](SceneData& d) { d.meshes[0].material = -1; }},
      {"mesh", [](SceneData& d) { d.parts[0].mesh = 1; }},
      {"mesh", [](SceneData& d) { d.parts[0].mesh = -1; }},
      {"image", [](SceneData& d) { d.materials[0].image = 0; }},
      {"image",
       [](SceneData& d) {
         d.images.push_back({2, 2, {1, 2, 3}});
       }},
      {"image",
       [](SceneData& d) {
         d.images.push_back({0, 0, {}});
       }},
      {"cut off", [](SceneData& d) { d.meshes[0].indices.pop_back(); }},
      {"cut off", [](SceneData& d) { d.meshes[0].positions.pop_back(); }},
      {"normals",
       [](SceneData& d) {
         d.meshes[0].normals = {0, 0, 1};
       }},
      {"texture",
       [](SceneData& d) {
         d.meshes[0].texCoords = {0, 0};
       }},
      {"colours",
       [](SceneData& d) {
         d.meshes[0].colours = {0, 0};
       }},
      {"finite", [](SceneData& d) { d.meshes[0].positions[4] = std::numeric_limits<float>::quiet_NaN(); }},
      {"finite", [](SceneData& d) { d.meshes[0].positions[4] = std::numeric_limits<float>::infinity(); }},
      {"finite", [](SceneData& d) { d.meshes[0].positions[4] = 3e38f; }},
      {"nowhere", [](SceneData& d) { d.parts[0].transform[12] = std::numeric_limits<double>::infinity(); }},
      {"nowhere", [](SceneData& d) { d.parts[0].transform[0] = std::numeric_limits<double>::quiet_NaN(); }},
      {"one point", [](SceneData& d) { d.parts[0].transform = {}; }},
      {"no triangles", [](SceneData& d) { d.meshes[0].indices.clear(); }},
      {"no triangles", [](SceneData& d) { d.parts.clear(); }},
      {"too many",
       [](SceneData& d) {
         for (int i = 0; i < 10; ++i) {  // 1024 triangles
           const auto half = d.meshes[0].indices;
           d.meshes[0].indices.insert(d.meshes[0].indices.end(), half.begin(), half.end());
         }
         d.parts.resize(70000);
       }},
  };
  for (const auto& [word, apply] : breaks) {
    SceneData data = MakeTriangle();
    apply(data);
    const std::string fault = GetFault(std::move(data));
    EXPECT_NE(fault.find(word), std::string::npos) << fault;
  }
}

Vector3 GetNormal(const zovhost::SceneMesh& mesh, std::uint32_t vertex) {
  return Vector3(mesh.normals.data() + 3 * std::size_t{vertex});
}

TEST(MakeScene, gives_flat_normals_to_the_faces_of_a_cube) {
  SceneData data = MakeTriangle();
  zovhost::SceneMesh& cube = data.meshes[0];
  cube.positions.clear();
  for (unsigned i = 0; i < 8; ++i)
    for (unsigned bit = 0; bit < 3; ++bit) cube.positions.push_back((i >> bit & 1u) != 0 ? 1.0f : -1.0f);
  cube.texCoords.assign(16, 0.5f);
  cube.indices = {0, 4, 6, 0, 6, 2, 1, 3, 7, 1, 7, 5, 0, 1, 5, 0, 5, 4,
                  2, 6, 7, 2, 7, 3, 0, 2, 3, 0, 3, 1, 4, 5, 7, 4, 7, 6};
  std::string error;
  const auto scene = zovhost::MakeScene(std::move(data), error);
  ASSERT_NE(scene, nullptr) << error;
  const zovhost::SceneMesh& mesh = scene->GetMeshes()[0];
  EXPECT_EQ(mesh.positions.size(), 24u * 3u) << "three normals at each corner, and no more";
  EXPECT_EQ(mesh.texCoords.size(), 24u * 2u);
  for (std::size_t first = 0; first < mesh.indices.size(); first += 3)
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint32_t vertex = mesh.indices[first + i];
      const Vector3 normal = GetNormal(mesh, vertex);
      const Vector3 position(mesh.positions.data() + 3 * std::size_t{vertex});
      EXPECT_NEAR(normal.Length(), 1.0, 1e-6);
      EXPECT_NEAR(normal.Dot(position), 1.0, 1e-6) << "along one axis, outwards";
    }
}

// A tube of 24 sides, 15 degrees apart, each with vertices of its own: smooth around, sharp at nothing.
TEST(MakeScene, gives_smooth_normals_across_vertices_that_only_share_a_place) {
  constexpr int sides = 24;
  SceneData data = MakeTriangle();
  zovhost::SceneMesh& tube = data.meshes[0];
  tube.positions.clear();
  tube.indices.clear();
  const auto add = [&tube](int side, float z) {
    const double angle = 2.0 * Korvane::Math::PI * (side % sides) / sides;
    tube.indices.push_back(static_cast<std::uint32_t>(tube.positions.size() / 3));
    tube.positions.insert(tube.positions.end(),
                          {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), z});
  };
  for (int i = 0; i < sides; ++i) {
    add(i, 0), add(i + 1, 0), add(i + 1, 1);
    add(i, 0), add(i + 1, 1), add(i, 1);
  }
  std::string error;
  const auto scene = zovhost::MakeScene(std::move(data), error);
  ASSERT_NE(scene, nullptr) << error;
  const zovhost::SceneMesh& mesh = scene->GetMeshes()[0];
  for (const std::uint32_t vertex : mesh.indices) {
    const float* p = mesh.positions.data() + 3 * std::size_t{vertex};
    EXPECT_NEAR((GetNormal(mesh, vertex) - Vector3(double{p[0]}, double{p[1]}, 0.0)).Length(), 0.0, 1e-6);
  }
}

// Comparing the triangles around one point with each other takes time by the square of their number.
TEST(MakeScene, takes_little_time_for_a_fan_of_very_many_triangles) {
  constexpr std::uint32_t blades = 200000;
  SceneData data = MakeTriangle();
  zovhost::SceneMesh& fan = data.meshes[0];
  fan.positions = {0, 0, 1};
  fan.indices.clear();
  for (std::uint32_t i = 0; i < blades; ++i) {
    const double angle = 2.0 * Korvane::Math::PI * i / blades;
    fan.positions.insert(fan.positions.end(),
                         {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), 0.0f});
    fan.indices.insert(fan.indices.end(), {0u, 1 + i, 1 + (i + 1) % blades});
  }
  std::string error;
  const auto scene = zovhost::MakeScene(std::move(data), error);
  ASSERT_NE(scene, nullptr) << error;
  for (const float component : scene->GetMeshes()[0].normals) ASSERT_TRUE(std::isfinite(component));
}

}  // namespace
