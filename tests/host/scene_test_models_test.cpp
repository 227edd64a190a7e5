#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>

#include "host/scene_files.h"

namespace {

using Korvane::Vector3;

struct Counts {
  int loaded = 0;
  int refused = 0;
};

std::vector<std::filesystem::path> FindFiles(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  std::error_code missing;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, missing))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

void ExpectSound(const zovhost::Scene& scene) {
  EXPECT_TRUE(scene.GetMin().IsFinite() && scene.GetMax().IsFinite());
  EXPECT_GT(scene.GetRadius(), 0.0);
  EXPECT_GT(scene.GetTriangleCount(), 0u);
  EXPECT_NEAR(scene.GetUpDirection().Length(), 1.0, 1e-12);
  for (const zovhost::ScenePart& part : scene.GetParts()) EXPECT_FALSE(part.name.empty());
  for (const zovhost::SceneMesh& mesh : scene.GetMeshes()) {
    EXPECT_EQ(mesh.normals.size(), mesh.positions.size());
    for (std::size_t i = 0; i < mesh.normals.size(); i += 3)
      ASSERT_NEAR(Vector3(mesh.normals.data() + i).Length(), 1.0, 1e-5);
  }
  // Whatever a ray meets lies within the scene.
  const zovhost::ScenePart& part = scene.GetParts().front();
  const Vector3 target = part.bounds.GetCenter();
  const Vector3 away = Vector3(0.3, 0.5, 0.7).Normalized() * (3.0 * scene.GetRadius());
  zovhost::Scene::Hit hit;
  if (scene.Intersect(target + away, -away, hit)) {
    EXPECT_LE((hit.point - scene.GetCentre()).Length(), scene.GetRadius() * (1.0 + 1e-6));
  }
}

// Not one of these files may bring the program down; a third of the folder is no model at all.
TEST(TestModels, load_whole_or_fail_with_one_line) {
  std::map<std::string, Counts> table;
  for (const std::filesystem::path& path : FindFiles(testModels)) {
    SCOPED_TRACE(path.string());
    std::string error;
    const auto scene = zovhost::LoadScene(path, {}, error);
    const std::string folder = std::filesystem::relative(path, testModels).begin()->string();
    Counts& counts = table[folder];
    ++(scene != nullptr ? counts.loaded : counts.refused);
    if (scene != nullptr) {
      ExpectSound(*scene);
    } else {
      EXPECT_EQ(error.find(path.string() + ": "), 0u) << error;
      EXPECT_EQ(error.find('\n'), std::string::npos) << error;
      // Elsewhere a crash would be ours: the importer itself reads or refuses all of these.
      if (folder != "invalid") {
        EXPECT_EQ(error.find("crashed"), std::string::npos) << error;
      }
    }
  }
  Counts sum;
  for (const auto& [folder, counts] : table) {
    std::printf("%-12s %4d loaded %4d refused\n", folder.c_str(), counts.loaded, counts.refused);
    sum.loaded += counts.loaded;
    sum.refused += counts.refused;
  }
  std::printf("%-12s %4d loaded %4d refused\n", "all", sum.loaded, sum.refused);
  if (!table.empty()) {
    EXPECT_GT(sum.loaded, 250);
  }
}

// The house stands on a block of ground 18 by 16 metres, its ridge 6.3 metres above the ground floor.
TEST(TestModels, show_the_ifc_house_upright_and_whole) {
  const std::filesystem::path path = testModels / "IFC" / "AC14-FZK-Haus.ifc";
  if (!std::filesystem::exists(path)) return;
  const auto scene = LoadWhole(path);
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(scene->GetUpDirection(), Vector3(0.0, 0.0, 1.0));
  EXPECT_NEAR((scene->GetMin() - Vector3(-3.0, -3.0, -1.0)).Length(), 0.0, 1e-3);
  EXPECT_NEAR((scene->GetMax() - Vector3(15.0, 13.0, 6.3177)).Length(), 0.0, 1e-3);
  EXPECT_GT(scene->GetParts().size(), 100u);
  EXPECT_GT(scene->GetMaterials().size(), 5u);
  // Dropped onto the house, a plumb line meets the roof, highest along the ridge; outside, the ground.
  const auto getHeight = [&scene](double x, double y) {
    zovhost::Scene::Hit hit;
    return scene->Intersect({x, y, 100.0}, {0.0, 0.0, -1.0}, hit) ? hit.point.z : -100.0;
  };
  EXPECT_NEAR(getHeight(6.0, 5.0), 6.3, 0.1);
  EXPECT_GT(getHeight(6.0, 5.0), getHeight(6.0, 2.0));
  EXPECT_GT(getHeight(6.0, 2.0), getHeight(6.0, 0.0));
  EXPECT_NEAR(getHeight(6.0, 2.0), getHeight(6.0, 8.0), 0.05);
  EXPECT_NEAR(getHeight(-2.0, 5.0), 0.0, 0.01);
  // Walls on all four sides, a metre and a half above the floor.
  const Vector3 centre(6.0, 5.0, 1.5);
  for (const Vector3& side : {Vector3(1, 0, 0), Vector3(-1, 0, 0), Vector3(0, 1, 0), Vector3(0, -1, 0)}) {
    zovhost::Scene::Hit hit;
    EXPECT_TRUE(scene->Intersect(centre + side * 50.0, -side, hit));
    EXPECT_GT((hit.point - centre).Dot(side), 4.0);
  }
}

}  // namespace
