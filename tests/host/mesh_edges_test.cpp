#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "graphics_canvas.h"
#include "host/large_meshes.h"
#include "scene/work_report.h"
#include "scene_view/crease_edges.h"
#include "support/processor_time.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/scene.h"

namespace {

using zovhost::FindEdges;
using zovhost::SceneMesh;
using zovtest::Canvas;
using zovtest::PixelAt;

constexpr int CUBOID_TRIANGLES = 12;

// Of side 2, around a place on the x axis, its triangles' fronts outside.
void AddCuboid(SceneMesh& mesh, float x) {
  const auto first = static_cast<std::uint32_t>(mesh.positions.size() / 3);
  for (int corner = 0; corner < 8; ++corner) {
    const auto side = [corner](int axis) { return (corner >> axis & 1) != 0 ? 1.0F : -1.0F; };
    mesh.positions.insert(mesh.positions.end(), {x + side(0), side(1), side(2)});
  }
  for (const auto& face :
       {std::array{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}}) {
    for (const std::size_t k : std::array<std::size_t, 6>{0, 1, 2, 0, 2, 3})
      mesh.indices.push_back(first + static_cast<std::uint32_t>(face[k]));
  }
}

void Turn(SceneMesh& mesh, std::size_t triangle) {
  std::swap(mesh.indices[3 * triangle], mesh.indices[3 * triangle + 1]);
}

SceneMesh MakeCuboid() {
  SceneMesh mesh;
  AddCuboid(mesh, 0.0F);
  return mesh;
}

TEST(MeshEdges, a_cuboid_is_solid_and_has_twelve_creases) {
  const zovhost::MeshEdges edges = FindEdges(MakeCuboid());
  EXPECT_TRUE(edges.solid);
  EXPECT_EQ(edges.creases.size(), 12U);
}

TEST(MeshEdges, of_two_cuboids_that_share_an_edge_each_is_solid) {
  SceneMesh mesh = MakeCuboid();
  AddCuboid(mesh, 2.0F);
  for (std::size_t corner = 8; corner < 16; ++corner) mesh.positions[3 * corner + 1] += 2.0F;
  EXPECT_TRUE(FindEdges(mesh).solid);
}

TEST(MeshEdges, what_has_a_hole_is_no_solid) {
  SceneMesh mesh = MakeCuboid();
  mesh.indices.resize(mesh.indices.size() - 3);
  EXPECT_FALSE(FindEdges(mesh).solid);
}

TEST(MeshEdges, a_triangle_that_is_turned_around_makes_it_none) {
  SceneMesh mesh = MakeCuboid();
  Turn(mesh, 5);
  EXPECT_FALSE(FindEdges(mesh).solid);
}

TEST(MeshEdges, a_piece_that_is_turned_inside_out_makes_it_none) {
  SceneMesh mesh = MakeCuboid();
  AddCuboid(mesh, 5.0F);
  EXPECT_TRUE(FindEdges(mesh).solid);
  for (std::size_t i = CUBOID_TRIANGLES; i < std::size_t{2} * CUBOID_TRIANGLES; ++i) Turn(mesh, i);
  EXPECT_FALSE(FindEdges(mesh).solid);
}

TEST(MeshEdges, a_mesh_without_triangles_is_none) { EXPECT_FALSE(FindEdges({}).solid); }

// Sorting alone takes several times as long.
TEST(MeshEdges, the_search_of_a_large_mesh_ends_at_once_when_it_is_broken_off) {
  constexpr double SECONDS = 0.1;
  const SceneMesh hills = zovtest::MakeHills(700);
  zovhost::WorkReport report;
  report.Cancel();
  const ProcessorTime time;
  EXPECT_THROW(FindEdges(hills, &report), zovhost::WorkCancelled);
  EXPECT_LT(time.Get(), SECONDS);
}

class SolidsTest : public zovtest::RendererTest {
 protected:
  zovtest::Pixel DrawMiddle(SceneMesh mesh, double eye) {
    zovhost::SceneData data;
    data.meshes.push_back(std::move(mesh));
    data.materials.emplace_back();
    data.materials.back().colour = {0.8F, 0.1F, 0.1F, 1.0F};
    data.parts.emplace_back();
    std::string error;
    const auto scene = zovhost::MakeScene(std::move(data), error);
    EXPECT_NE(scene, nullptr) << error;
    zovhost::GLSceneView view;
    EXPECT_TRUE(view.SetScene(scene.get()));
    Korvane::CameraParameters camera = FrontCamera();
    camera.eye.z = eye;
    canvas.Clear();
    EXPECT_TRUE(view.Draw(camera, Canvas::width, Canvas::height));
    return PixelAt(canvas.Read(), Canvas::width / 2 + 3, Canvas::height / 2);
  }
};

TEST_F(SolidsTest, a_solid_shows_its_front_as_an_open_mesh_does) {
  SceneMesh open = MakeCuboid();
  open.indices.erase(open.indices.begin(), open.indices.begin() + 3);  // behind, where nobody looks
  EXPECT_EQ(DrawMiddle(MakeCuboid(), 6.0), DrawMiddle(open, 6.0));
}

TEST_F(SolidsTest, from_within_a_solid_its_walls_are_seen) {
  const zovtest::Pixel wall = DrawMiddle(MakeCuboid(), 0.5);
  EXPECT_GT(wall[0], 2 * wall[2]);
}

}  // namespace
