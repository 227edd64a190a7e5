#include <gtest/gtest.h>

#include <set>

#include "zovhost/scene.h"

namespace {

using Korvane::Vector3;

class DemoBuilding : public testing::Test {
 protected:
  const std::unique_ptr<zovhost::Scene> scene = zovhost::MakeDemoBuilding();

  std::string GetPartAt(const Vector3& origin, const Vector3& direction) const {
    zovhost::Scene::Hit hit;
    if (!scene->Intersect(origin, direction, hit)) return "";
    return scene->GetParts()[static_cast<std::size_t>(hit.part)].name;
  }
};

TEST_F(DemoBuilding, stands_upright_in_metres) {
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(scene->GetUpDirection(), Vector3(0.0, 0.0, 1.0));
  EXPECT_NEAR(scene->GetMax().z, 9.82, 0.01);  // the top of the chimney
  EXPECT_NEAR(scene->GetMin().z, -0.25, 1e-6);
  EXPECT_GT(scene->GetTriangleCount(), 1000u);
}

TEST_F(DemoBuilding, names_each_part_and_paints_it_in_many_materials) {
  std::set<std::string> names;
  std::set<int> materials;
  for (const zovhost::ScenePart& part : scene->GetParts()) {
    EXPECT_TRUE(names.insert(part.name).second) << part.name << " appears twice";
    materials.insert(scene->GetMeshes()[static_cast<std::size_t>(part.mesh)].material);
  }
  EXPECT_FALSE(names.contains(""));
  EXPECT_EQ(materials.size(), scene->GetMaterials().size());
}

TEST_F(DemoBuilding, shows_its_parts_where_a_visitor_expects_them) {
  EXPECT_EQ(GetPartAt({-1.9, -9.0, 1.2}, {0.0, 1.0, 0.0}), "Front door");
  EXPECT_EQ(GetPartAt({-0.3, -9.0, 2.0}, {0.0, 1.0, 0.0}), "Front wall, ground floor");
  EXPECT_EQ(GetPartAt({-0.3, -9.0, 4.0}, {0.0, 1.0, 0.0}), "Front wall, upper floor");
  EXPECT_EQ(GetPartAt({1.0, -9.0, 5.0}, {0.0, 1.0, 0.0}), "Front wall, upper floor window 3 glass");
  EXPECT_EQ(GetPartAt({0.0, -2.0, 20.0}, {0.0, 0.0, -1.0}), "Roof, front");
  EXPECT_EQ(GetPartAt({0.0, 2.0, 20.0}, {0.0, 0.0, -1.0}), "Roof, garden side");
  EXPECT_EQ(GetPartAt({9.0, -8.0, 20.0}, {0.0, 0.0, -1.0}), "Lawn");
  EXPECT_EQ(GetPartAt({-1.5, 5.6, 20.0}, {0.0, 0.0, -1.0}), "Terrace");
  EXPECT_EQ(GetPartAt({-3.0, 3.1, 3.0}, {0.0, 0.0, -1.0}), "Stairs");
}

}  // namespace
