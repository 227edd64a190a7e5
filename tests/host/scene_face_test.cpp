#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <thread>
#include <vector>

#include "support/processor_time.h"
#include "zovhost/scene.h"

namespace {

using Korvane::Vector3;
using zovhost::Scene;
using zovhost::SceneData;
using zovhost::SceneFace;
using zovhost::SceneMesh;

// A square from (x, y) to (x + 1, y + 1) at height z, with vertices of its own.
void AddSquare(SceneMesh& mesh, float x, float y, float z) {
  const auto first = static_cast<std::uint32_t>(mesh.positions.size() / 3);
  mesh.positions.insert(mesh.positions.end(), {x, y, z, x + 1, y, z, x + 1, y + 1, z, x, y + 1, z});
  for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U}) mesh.indices.push_back(first + corner);
}

std::unique_ptr<Scene> Make(SceneMesh mesh, const std::array<double, 16>& placement = {
                                                1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}) {
  SceneData data;
  data.materials.emplace_back();
  data.meshes.push_back(std::move(mesh));
  data.parts.emplace_back();
  data.parts[0].transform = placement;
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

SceneFace FaceBelow(const Scene& scene, double x, double y) {
  Scene::Hit hit;
  SceneFace face;
  EXPECT_TRUE(scene.Intersect({x, y, 100}, {0, 0, -1}, hit));
  EXPECT_TRUE(scene.FindFace(hit, face));
  return face;
}

TEST(SceneFace, holds_the_triangles_of_its_plane_that_are_joined_by_sides) {
  SceneMesh mesh;
  AddSquare(mesh, 0, 0, 0);  // 0 and 1
  AddSquare(mesh, 5, 0, 0);  // 2 and 3: in the plane, but apart
  AddSquare(mesh, 1, 0, 0);  // 4 and 5: beside the first
  AddSquare(mesh, 2, 1, 0);  // 6 and 7: touches it at a corner only
  AddSquare(mesh, 0, 1, 1);  // 8 and 9: on another height
  const auto scene = Make(mesh);
  EXPECT_EQ(FaceBelow(*scene, 0.5, 0.2).triangles, (std::vector<std::uint32_t>{0, 1, 4, 5}));
  EXPECT_EQ(FaceBelow(*scene, 1.2, 0.7).triangles, (std::vector<std::uint32_t>{0, 1, 4, 5}));
  EXPECT_EQ(FaceBelow(*scene, 5.5, 0.2).triangles, (std::vector<std::uint32_t>{2, 3}));
  EXPECT_EQ(FaceBelow(*scene, 2.5, 1.2).triangles, (std::vector<std::uint32_t>{6, 7}));
  EXPECT_EQ(FaceBelow(*scene, 0.5, 1.5).triangles, (std::vector<std::uint32_t>{8, 9}));
}

TEST(SceneFace, has_the_corners_of_its_triangles_in_the_space_of_the_mesh) {
  SceneMesh mesh;
  AddSquare(mesh, 0, 0, 0);
  const auto scene = Make(mesh, {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1e6, 0, 0, 1});
  const SceneFace face = FaceBelow(*scene, 1e6 + 0.5, 0.5);
  EXPECT_EQ(face.part, 0);
  EXPECT_EQ(face.corners, (std::vector<float>{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0, 1, 1, 0, 0, 1, 0}));
}

TEST(SceneFace, ends_where_a_surface_bends) {
  // A tube of 64 flat strips around the x axis, of radius 1.
  constexpr int strips = 64;
  SceneMesh mesh;
  for (int i = 0; i <= strips; ++i) {
    const double angle = 2.0 * Korvane::Math::PI * i / strips;
    const auto y = static_cast<float>(std::cos(angle));
    const auto z = static_cast<float>(std::sin(angle));
    mesh.positions.insert(mesh.positions.end(), {0, y, z, 5, y, z});
  }
  for (std::uint32_t i = 0; i < strips; ++i) {
    for (const std::uint32_t corner : {0U, 1U, 3U, 0U, 3U, 2U}) mesh.indices.push_back(2 * i + corner);
  }
  const auto scene = Make(mesh);
  EXPECT_EQ(FaceBelow(*scene, 2.0, 0.03).triangles.size(), 2u);
}

TEST(SceneFace, of_a_hit_on_nothing_is_empty) {
  SceneMesh mesh;
  AddSquare(mesh, 0, 0, 0);
  const auto scene = Make(mesh);
  for (const int part : {-1, 1, 1 << 30}) {
    SceneFace face = FaceBelow(*scene, 0.5, 0.2);
    Scene::Hit hit;
    hit.part = part;
    EXPECT_FALSE(scene->FindFace(hit, face));
    EXPECT_EQ(face.part, -1);
    EXPECT_TRUE(face.triangles.empty() && face.corners.empty());
  }
  Scene::Hit beyond;
  beyond.part = 0;
  beyond.triangle = 2;
  SceneFace face;
  EXPECT_FALSE(scene->FindFace(beyond, face));
}

TEST(SceneFace, stays_as_it_is_while_the_pointer_stays_on_it) {
  SceneMesh mesh;
  AddSquare(mesh, 0, 0, 0);
  AddSquare(mesh, 1, 0, 0);
  const auto scene = Make(mesh);
  SceneFace face = FaceBelow(*scene, 0.5, 0.2);
  const float* before = face.corners.data();
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({1.5, 0.2, 100}, {0, 0, -1}, hit));
  ASSERT_TRUE(scene->FindFace(hit, face));
  EXPECT_EQ(face.corners.data(), before);
}

TEST(SceneFace, is_known_from_behind_whatever_the_placement_mirrors) {
  for (const double mirror : {1.0, -1.0}) {
    SceneMesh mesh;
    AddSquare(mesh, 0, 0, 0);  // its front is up, towards +z
    const auto scene = Make(mesh, {mirror, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    Scene::Hit hit;
    ASSERT_TRUE(scene->Intersect({0.5 * mirror, 0.2, 9}, {0, 0, -1}, hit));
    EXPECT_FALSE(hit.fromBehind);
    EXPECT_EQ(hit.normal, Vector3(0, 0, 1));
    ASSERT_TRUE(scene->Intersect({0.5 * mirror, 0.2, -9}, {0, 0, 1}, hit));
    EXPECT_TRUE(hit.fromBehind);
    EXPECT_EQ(hit.normal, Vector3(0, 0, -1));
  }
}

// Far more than a mouse move may take would be a fault of the search. A busy machine takes longer by the
// clock, and no more of the processor.
TEST(SceneFace, is_found_among_many_triangles_with_little_work) {
  constexpr int side = 200;
  SceneMesh mesh;
  for (int y = 0; y <= side; ++y) {
    for (int x = 0; x <= side; ++x) {
      const double height = std::sin(x * 0.7) + std::cos(y * 0.9);
      mesh.positions.insert(mesh.positions.end(),
                            {static_cast<float>(x), static_cast<float>(y), static_cast<float>(height)});
    }
  }
  for (std::uint32_t y = 0; y < side; ++y) {
    for (std::uint32_t x = 0; x < side; ++x) {
      const std::uint32_t a = y * (side + 1) + x;
      const std::uint32_t c = a + side + 1;
      for (const std::uint32_t corner : {a, a + 1, c + 1, a, c + 1, c}) mesh.indices.push_back(corner);
    }
  }
  const auto scene = Make(std::move(mesh));
  constexpr int faces = 10;
  const ProcessorTime used;
  for (int i = 0; i < faces; ++i) EXPECT_GE(FaceBelow(*scene, 20.3 + 16 * i, 100.2).triangles.size(), 1u);
  const double seconds = used.Get() / faces;
  RecordProperty("microseconds_each", static_cast<int>(seconds * 1e6));
  EXPECT_LT(seconds, 0.5);
}

// As of a file in which every part was exported twice and more.
TEST(SceneFace, of_triangles_that_all_lie_on_each_other_is_found_with_little_work) {
  constexpr std::uint32_t count = 60'000;
  SceneMesh mesh;
  mesh.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0};
  for (std::uint32_t i = 0; i < count; ++i) mesh.indices.insert(mesh.indices.end(), {0, 1, 2});
  mesh.indices.insert(mesh.indices.end(), {1, 3, 2});
  const auto scene = Make(std::move(mesh));
  scene->PrepareFaces();
  const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!scene->AreFacesReady() && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  ASSERT_TRUE(scene->AreFacesReady());
  const ProcessorTime used;
  EXPECT_EQ(FaceBelow(*scene, 0.8, 0.8).triangles.size(), count + 1);
  EXPECT_LT(used.Get(), 0.5);
}

}  // namespace
