// The face under a pointer: a small one at once, a large one when a thread has found it.
#include "../../host/src/scene/pointed_face.h"
#include "../../host/src/scene/background_work.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/processor_time.h"

namespace {

using zovhost::PointedFace;
using zovhost::Scene;
using zovhost::SceneFace;

constexpr std::uint32_t SIDE = 300;

// A plate of very many triangles, which goes on for x below 0 as a field of waves.
std::unique_ptr<Scene> MakePlate() {
  zovhost::SceneData data;
  data.materials.emplace_back();
  data.parts.emplace_back();
  zovhost::SceneMesh& mesh = data.meshes.emplace_back();
  for (std::uint32_t y = 0; y <= SIDE; ++y) {
    for (std::uint32_t x = 0; x <= SIDE; ++x) {
      const double place = static_cast<double>(x) - 10.0;
      const double height = place < 0.0 ? std::sin(place * 0.7) + std::cos(y * 0.9) - 1.0 : 0.0;
      for (const double each : {place, static_cast<double>(y), height})
        mesh.positions.push_back(static_cast<float>(each));
    }
  }
  for (std::uint32_t y = 0; y < SIDE; ++y) {
    for (std::uint32_t x = 0; x < SIDE; ++x) {
      const std::uint32_t a = y * (SIDE + 1) + x;
      const std::uint32_t c = a + SIDE + 1;
      for (const std::uint32_t corner : {a, a + 1, c + 1, a, c + 1, c}) mesh.indices.push_back(corner);
    }
  }
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

class PointedFaceTest : public testing::TestWithParam<bool> {
 protected:
  // With the index of sides, or without: it takes its time.
  void SetUp() override {
    if (!GetParam()) return;
    scene->PrepareFaces();
    for (int i = 0; i < 60'000 && !scene->AreFacesReady(); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_TRUE(scene->AreFacesReady());
  }
  Scene::Hit HitAt(double x, double y) const {
    Scene::Hit hit;
    EXPECT_TRUE(scene->Intersect({x, y, 100}, {0, 0, -1}, hit));
    return hit;
  }
  bool PointAt(double x, double y) {
    const Scene::Hit hit = HitAt(x, y);
    return pointed.Point(*scene, &hit);
  }
  // For a minute at most: true where one has been found then.
  bool WaitForFace() {
    for (int i = 0; i < 60'000 && pointed.IsSearching(); ++i) {
      if (pointed.Update()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
  }

  std::unique_ptr<Scene> scene = MakePlate();
  PointedFace pointed;
};

TEST_P(PointedFaceTest, of_many_triangles_is_there_when_it_has_been_found) {
  EXPECT_FALSE(PointAt(100.2, 100.1));
  EXPECT_EQ(pointed.Get(), nullptr);
  EXPECT_TRUE(pointed.IsSearching());
  ASSERT_TRUE(WaitForFace());
  SceneFace whole;
  ASSERT_TRUE(scene->FindFace(HitAt(100.2, 100.1), whole));
  EXPECT_EQ(pointed.Get()->triangles, whole.triangles);
  EXPECT_EQ(pointed.Get()->corners, whole.corners);
  EXPECT_GT(whole.triangles.size(), 2U * (SIDE - 10) * SIDE - 1);
  EXPECT_FALSE(PointAt(200.2, 100.1)) << "on the same";
  EXPECT_FALSE(pointed.IsSearching());
}

TEST_P(PointedFaceTest, is_pointed_at_in_a_moment_however_large_it_is) {
  constexpr double MOMENT = 0.02;  // seconds of the processor
  const Scene::Hit hit = HitAt(100.2, 100.1);
  for (int i = 0; i < 3; ++i) {
    const ProcessorTime used;
    pointed.Point(*scene, &hit);
    EXPECT_LT(used.Get(), MOMENT);
    EXPECT_TRUE(pointed.IsSearching());
    pointed.Point(*scene, nullptr);
  }
}

TEST_P(PointedFaceTest, is_found_while_the_pointer_moves_on_it) {
  PointAt(100.2, 100.1);
  EXPECT_FALSE(PointAt(120.2, 100.1));
  EXPECT_FALSE(PointAt(140.2, 100.1));
  ASSERT_TRUE(WaitForFace());
  EXPECT_FALSE(PointAt(140.2, 100.1));
}

TEST_P(PointedFaceTest, that_the_pointer_has_left_meanwhile_is_not_shown) {
  PointAt(100.2, 100.1);
  PointAt(-5.3, 40.2);
  ASSERT_TRUE(pointed.Get() != nullptr || WaitForFace());
  SceneFace there;
  ASSERT_TRUE(scene->FindFace(HitAt(-5.3, 40.2), there));
  EXPECT_LT(there.triangles.size(), 10U);
  EXPECT_EQ(pointed.Get()->triangles, there.triangles);
}

TEST_P(PointedFaceTest, is_looked_for_anew_after_a_pause) {
  {
    const zovhost::BackgroundWork::Pause pause;
    PointAt(100.2, 100.1);
    PointAt(120.2, 100.1);
    EXPECT_FALSE(pointed.Update());
    EXPECT_TRUE(pointed.IsSearching());
  }
  EXPECT_TRUE(WaitForFace());
}

TEST_P(PointedFaceTest, of_nothing_is_none_whatever_was_looked_for) {
  PointAt(100.2, 100.1);
  EXPECT_FALSE(pointed.Point(*scene, nullptr)) << "there was none";
  EXPECT_FALSE(pointed.IsSearching());
  PointAt(100.2, 100.1);
  ASSERT_TRUE(WaitForFace());
  EXPECT_TRUE(pointed.Point(*scene, nullptr));
  EXPECT_EQ(pointed.Get(), nullptr);
  Scene::Hit beyond;
  beyond.part = 7;
  pointed.Point(*scene, &beyond);
  EXPECT_FALSE(WaitForFace());
  EXPECT_FALSE(pointed.IsSearching());
}

INSTANTIATE_TEST_SUITE_P(Sides, PointedFaceTest, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& each) {
                           return each.param ? "indexed" : "looked_at";
                         });

TEST(PointedFaceInIndexTest, of_few_triangles_is_there_at_once) {
  const auto scene = MakePlate();
  scene->PrepareFaces();
  for (int i = 0; i < 60'000 && !scene->AreFacesReady(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({-5.3, 40.2, 100}, {0, 0, -1}, hit));
  Scene::Hit large;
  ASSERT_TRUE(scene->Intersect({100.2, 100.1, 100}, {0, 0, -1}, large));
  PointedFace pointed;
  for (const bool searching : {false, true}) {
    if (searching) pointed.Point(*scene, &large);
    EXPECT_EQ(pointed.IsSearching(), searching);
    EXPECT_TRUE(pointed.Point(*scene, &hit));
    EXPECT_FALSE(pointed.IsSearching());
    EXPECT_NE(pointed.Get(), nullptr);
  }
}

}  // namespace
