#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "host/scene_files.h"
#include "zovhost/picture.h"

namespace {

using Korvane::Vector3;

class LoadScene : public testing::Test {
 protected:
  TemporaryFolder folder;
};

// How far the model reaches along its own up direction, and the lowest point on it.
void ExpectUprightSlab(const zovhost::Scene& scene) {
  const Vector3 up = scene.GetUpDirection();
  EXPECT_NEAR(scene.GetMin().Dot(up), 0.0, 1e-6);
  EXPECT_NEAR(scene.GetMax().Dot(up), 1.0, 1e-6);
  Vector3 sides = scene.GetMax() - scene.GetMin();
  EXPECT_NEAR(sides.x * sides.y * sides.z, 8.0, 1e-5);
  EXPECT_EQ(scene.GetTriangleCount(), 12u);
}

TEST_F(LoadScene, finds_the_up_axis_of_every_format) {
  struct Row {
    const char* name;
    std::string bytes;
    Vector3 up;
  };
  const Vector3 y(0.0, 1.0, 0.0), z(0.0, 0.0, 1.0);
  const Row rows[] = {
      {"slab.obj", MakeObjSlab(), y},  {"slab.stl", MakeStlSlab(), z},
      {"slab.ply", MakePlySlab(), y},  {"y_up.dae", MakeDaeSlab(1), y},
      {"z_up.dae", MakeDaeSlab(2), y},  // turned by the importer
      {"y_up.fbx", MakeFbxSlab(1), y}, {"z_up.fbx", MakeFbxSlab(2), z},
      {"slab.ifc", MakeIfcSlab(), z},  {"slab.gltf", MakeGltfSlab(R"([{"mesh":0}])"), y},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const auto scene = LoadWhole(folder.Write(row.name, row.bytes));
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(scene->GetUpDirection(), row.up);
    ExpectUprightSlab(*scene);
  }
}

TEST_F(LoadScene, keeps_the_coordinates_of_an_ifc_file) {
  const auto scene = LoadWhole(folder.Write("slab.ifc", MakeIfcSlab()));
  ASSERT_NE(scene, nullptr);
  EXPECT_NEAR((scene->GetMin() - Vector3(0.0, 0.0, 0.0)).Length(), 0.0, 1e-6);
  EXPECT_NEAR((scene->GetMax() - Vector3(4.0, 2.0, 1.0)).Length(), 0.0, 1e-6);
}

TEST_F(LoadScene, reports_progress_that_never_falls_and_ends_at_one) {
  std::vector<double> fractions;
  std::string error;
  const zovhost::Progress progress = [&](double fraction, const char* what) {
    EXPECT_STRNE(what, "");
    fractions.push_back(fraction);
    return true;
  };
  ASSERT_NE(zovhost::LoadScene(folder.Write("slab.obj", MakeObjSlab()), progress, error), nullptr) << error;
  EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
  EXPECT_GE(fractions.size(), 3u);
  EXPECT_EQ(fractions.front(), 0.0);
  EXPECT_EQ(fractions.back(), 1.0);
}

TEST_F(LoadScene, flattens_the_tree_of_nodes_into_named_parts) {
  const auto scene = LoadWhole(
      folder.Write("tree.gltf", MakeGltfSlab(R"([{"name":"house","translation":[10,0,0],"children":[1,2]},
                       {"name":"left wing","mesh":0,"translation":[0,5,0]},
                       {"name":"right wing","mesh":0,"scale":[2,2,2]}])")));
  ASSERT_NE(scene, nullptr);
  ASSERT_EQ(scene->GetParts().size(), 2u);
  EXPECT_EQ(scene->GetMeshes().size(), 1u);
  EXPECT_EQ(scene->GetTriangleCount(), 24u);
  EXPECT_EQ(scene->GetParts()[0].name, "left wing");
  EXPECT_EQ(scene->GetParts()[1].name, "right wing");
  EXPECT_EQ(scene->GetParts()[0].bounds.GetCenter(), Vector3(12.0, 5.5, 1.0));
  EXPECT_EQ(scene->GetParts()[1].bounds.GetExtent(), Vector3(4.0, 1.0, 2.0));
  EXPECT_EQ(scene->GetMin(), Vector3(10.0, 0.0, 0.0));
  EXPECT_EQ(scene->GetMax(), Vector3(18.0, 6.0, 4.0));
}

// 0.2140411 of the light is 0.5 in sRGB, by IEC 61966-2-1.
TEST_F(LoadScene, reads_colours_of_gltf_as_light_and_shows_them_in_srgb) {
  const auto scene = LoadWhole(folder.Write(
      "glass.gltf",
      MakeGltfSlab(R"([{"mesh":0}])",
                   R"({"name":"glass","alphaMode":"BLEND","doubleSided":false,"pbrMetallicRoughness":
                                     {"baseColorFactor":[0.2140411,0,1,0.25]}})")));
  ASSERT_NE(scene, nullptr);
  const zovhost::SceneMaterial& material =
      scene->GetMaterials()[static_cast<std::size_t>(scene->GetMeshes()[0].material)];
  EXPECT_EQ(material.name, "glass");
  EXPECT_NEAR(material.colour[0], 0.5f, 1e-5f);
  EXPECT_FLOAT_EQ(material.colour[1], 0.0f);
  EXPECT_FLOAT_EQ(material.colour[2], 1.0f);
  EXPECT_FLOAT_EQ(material.colour[3], 0.25f);
  EXPECT_FALSE(material.twoSided);
}

TEST_F(LoadScene, reads_colour_and_opacity_of_obj_as_they_stand) {
  folder.Write("slab.mtl", "newmtl pane\nKd 0.5 0.25 0.75\nd 0.5\n");
  const auto scene = LoadWhole(folder.Write("slab.obj", MakeObjSlab("mtllib slab.mtl\nusemtl pane\n")));
  ASSERT_NE(scene, nullptr);
  const zovhost::SceneMaterial& material =
      scene->GetMaterials()[static_cast<std::size_t>(scene->GetMeshes()[0].material)];
  EXPECT_EQ(material.colour, (std::array<float, 4>{0.5f, 0.25f, 0.75f, 0.5f}));
  EXPECT_TRUE(material.twoSided);
}

zovhost::Image MakeTwoPixels() { return {2, 1, {255, 0, 0, 255, 0, 128, 0, 64}}; }

std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

constexpr const char* TEXTURED = R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})";

TEST_F(LoadScene, reads_textures_beside_the_model_whatever_the_case_of_their_names) {
  std::string error;
  ASSERT_TRUE(zovhost::WritePng(folder.path / "Wood.PNG", MakeTwoPixels(), error)) << error;
  const auto scene = LoadWhole(
      folder.Write("slab.gltf", MakeGltfSlab(R"([{"mesh":0}])", TEXTURED,
                                             R"(,"images":[{"uri":"wood.png"}],"textures":[{"source":0}])")));
  ASSERT_NE(scene, nullptr);
  ASSERT_EQ(scene->GetImages().size(), 1u);
  EXPECT_EQ(scene->GetImages()[0].rgba, MakeTwoPixels().rgba);
  EXPECT_TRUE(scene->GetWarnings().empty());
  // glTF counts v from the top too.
  ASSERT_GE(scene->GetMeshes()[0].texCoords.size(), 2u);
  EXPECT_FLOAT_EQ(scene->GetMeshes()[0].texCoords[0], 0.25f);
  EXPECT_FLOAT_EQ(scene->GetMeshes()[0].texCoords[1], 0.125f);
}

TEST_F(LoadScene, reads_textures_inside_the_model) {
  std::string error;
  ASSERT_TRUE(zovhost::WritePng(folder.path / "wood.png", MakeTwoPixels(), error)) << error;
  const std::string uri = "data:image/png;base64," + EncodeBase64(ReadBytes(folder.path / "wood.png"));
  const auto scene = LoadWhole(folder.Write(
      "slab.gltf", MakeGltfSlab(R"([{"mesh":0}])", TEXTURED,
                                R"(,"images":[{"uri":")" + uri + R"("}],"textures":[{"source":0}])")));
  ASSERT_NE(scene, nullptr);
  ASSERT_EQ(scene->GetImages().size(), 1u);
  EXPECT_EQ(scene->GetImages()[0].rgba, MakeTwoPixels().rgba);
}

TEST_F(LoadScene, loads_without_textures_that_are_missing_or_broken_and_says_so) {
  folder.Write("empty.png", "");
  folder.Write("garbage.png", "\x89PNG\r\n\x1a\nnot really");
  for (const char* name : {"missing.png", "empty.png", "garbage.png"}) {
    SCOPED_TRACE(name);
    const auto scene =
        LoadWhole(folder.Write("slab.gltf", MakeGltfSlab(R"([{"mesh":0}])", TEXTURED,
                                                         R"(,"images":[{"uri":")" + std::string(name) +
                                                             R"("}],"textures":[{"source":0}])")));
    ASSERT_NE(scene, nullptr);
    EXPECT_TRUE(scene->GetImages().empty());
    ASSERT_EQ(scene->GetWarnings().size(), 1u);
    EXPECT_NE(scene->GetWarnings()[0].find(name), std::string::npos) << scene->GetWarnings()[0];
  }
}

TEST_F(LoadScene, drops_vertices_that_are_not_finite_with_their_triangles) {
  for (const char* bad : {"nan", "inf", "-inf", "1e30", "1e999"}) {
    SCOPED_TRACE(bad);
    const std::string text = MakeObjSlab("", std::string("v 0 ") + bad + " 0\nf 1 2 9\n");
    const auto scene = LoadWhole(folder.Write("slab.obj", text));
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(scene->GetMax(), Vector3(4.0, 1.0, 2.0));
    EXPECT_EQ(scene->GetTriangleCount(), 12u);
  }
}

TEST_F(LoadScene, ignores_lines_points_and_collapsed_triangles) {
  const auto scene = LoadWhole(folder.Write(
      "slab.obj", MakeObjSlab("", "v 50 50 50\nv 60 60 60\nl 1 9 10\np 9\nf 9 9 10\nf 9 10 10\n")));
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(scene->GetTriangleCount(), 12u);
  EXPECT_EQ(scene->GetMax(), Vector3(4.0, 1.0, 2.0));
}

// Floats a million metres out are an eighth of a metre apart at worst; what the mesh keeps is relative to its
// own middle, and the placement carries the rest in double precision.
TEST_F(LoadScene, keeps_far_away_models_near_the_origin_of_their_mesh) {
  std::string text = "v 1000000 0 2000000\nv 1000004 0 2000000\nv 1000000 3 2000001\nf 1 2 3\n";
  const auto scene = LoadWhole(folder.Write("far.obj", text));
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(scene->GetMin(), Vector3(1000000.0, 0.0, 2000000.0));
  EXPECT_EQ(scene->GetMax(), Vector3(1000004.0, 3.0, 2000001.0));
  for (const float coordinate : scene->GetMeshes()[0].positions) EXPECT_LE(std::abs(coordinate), 2.0f);
  zovhost::Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({1000001.0, 1.0, 2000100.0}, {0.0, 0.0, -1.0}, hit));
  EXPECT_NEAR(hit.point.z, 2000000.0 + 1.0 / 3.0, 1e-6);
}

TEST_F(LoadScene, tells_each_kind_of_failure_in_one_line) {
  EXPECT_NE(GetLoadError(folder.path / "missing.obj").find("no such file"), std::string::npos);
  EXPECT_NE(GetLoadError(folder.path).find("directory"), std::string::npos);
  EXPECT_NE(GetLoadError("/dev/null").find("not a regular file"), std::string::npos);
  EXPECT_NE(GetLoadError(folder.Write("empty.obj", "")).find("empty"), std::string::npos);
  EXPECT_NE(GetLoadError(folder.Write("notes.md", "Just words.\n")).find("format"), std::string::npos);
  EXPECT_NE(
      GetLoadError(folder.Write("points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\np 1 2 3\n")).find("triangles"),
      std::string::npos);
  EXPECT_NE(GetLoadError(folder.Write("lines.obj", "v 0 0 0\nv 1 0 0\nl 1 2\n")).find("triangles"),
            std::string::npos);
  EXPECT_NE(GetLoadError(folder.Write("spot.obj", "v 1 1 1\nv 1 1 1\nv 1 1 1\nf 1 2 3\n")).find("triangles"),
            std::string::npos);
  EXPECT_NE(
      GetLoadError(folder.Write("nan.obj", "v nan 1 1\nv 1 nan 1\nv 1 1 nan\nf 1 2 3\n")).find("triangles"),
      std::string::npos);
  EXPECT_NE(GetLoadError(folder.path / "empty.obj" / "below").find(": "), std::string::npos);
  EXPECT_NE(GetLoadError(folder.path / std::string(5000, 'x')).find(": "), std::string::npos);
}

TEST_F(LoadScene, tells_that_a_file_may_not_be_read) {
  const std::filesystem::path path = folder.Write("secret.obj", MakeObjSlab());
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const uid_t user = geteuid();
  if (user == 0) {
    ASSERT_EQ(seteuid(65534), 0);  // permissions do not stop the superuser
  }
  EXPECT_NE(GetLoadError(path).find("cannot be opened"), std::string::npos);
  ASSERT_EQ(seteuid(user), 0);
}

TEST_F(LoadScene, keeps_line_breaks_of_file_names_out_of_the_error) {
  std::string error;
  EXPECT_EQ(zovhost::LoadScene(folder.path / "two\nlines.obj", {}, error), nullptr);
  EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST_F(LoadScene, survives_garbage_under_every_extension) {
  std::string garbage;
  std::uint32_t state = 12345;
  for (int i = 0; i < 20000; ++i)
    garbage += static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
  for (const char* extension :
       {"obj", "stl", "ply", "dae", "fbx", "ifc", "gltf", "glb", "3mf", "blend", "3ds", "x"})
    GetLoadError(folder.Write(std::string("garbage.") + extension, garbage));
}

}  // namespace
