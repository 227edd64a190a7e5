#include "cuboids.h"

#include <gtest/gtest.h>

#include <string>

namespace apps_test {

namespace {

// The unit cube from -1 to 1, bit i of a corner's number being its side on axis i.
zovhost::SceneMesh MakeCube() {
  zovhost::SceneMesh mesh;
  for (int corner = 0; corner < 8; ++corner) {
    for (int axis = 0; axis < 3; ++axis) mesh.positions.push_back((corner >> axis & 1) != 0 ? 1.0F : -1.0F);
  }
  mesh.indices = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                  2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
  return mesh;
}

}  // namespace

std::unique_ptr<zovhost::Scene> MakeCuboids(std::span<const Korvane::Box3> boxes) {
  zovhost::SceneData data;
  data.meshes.push_back(MakeCube());
  data.materials.emplace_back();
  data.upDirection = {0, 0, 1};
  for (const Korvane::Box3& box : boxes) {
    const Korvane::Vector3 half = box.GetExtent();
    const Korvane::Vector3 middle = box.GetCenter();
    zovhost::ScenePart part;
    part.transform = {half.x, 0, 0, 0, 0, half.y, 0, 0, 0, 0, half.z, 0, middle.x, middle.y, middle.z, 1};
    data.parts.push_back(part);
  }
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

}  // namespace apps_test
