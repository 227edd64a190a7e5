#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "host/large_meshes.h"
#include "scene/ray_index.h"
#include "scene/triangle_clusters.h"
#include "scene/work_report.h"
#include "support/random.h"

namespace {

using Korvane::Vector3;
using zovhost::RayIndex;
using zovhost::Scene;
using zovhost::SceneData;

// Each triangle by itself, in a random order.
SceneData Shuffle(SceneData data) {
  std::vector<std::uint32_t>& indices = data.meshes[0].indices;
  std::vector<std::size_t> order(indices.size() / 3);
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::shuffle(order.begin(), order.end(), std::mt19937(5));
  std::vector<std::uint32_t> shuffled;
  for (const std::size_t i : order) {
    shuffled.insert(shuffled.end(), {indices[3 * i], indices[3 * i + 1], indices[3 * i + 2]});
  }
  indices.swap(shuffled);
  return data;
}

SceneData MakeTwo(double far) {
  SceneData data = zovtest::MakeSceneData(zovtest::MakeHills(60));
  data.parts[0].transform = {0.6, 0.2, 0, 0, -0.2, 0.6, 0, 0, 0, 0, -1, 0, far, far, 0, 1};
  data.parts.push_back(data.parts[0]);
  data.parts[1].transform = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0.3, 1, 0, far + 0.4, far, 0.3, 1};
  return data;
}

void CompareIndices(const SceneData& data, const Vector3& centre) {
  zovhost::WorkReport report;
  const double radius = 2.0;
  const auto single = RayIndex::Create(data, centre, radius, report);
  const auto clustered = RayIndex::Create(data, centre, radius, report, 0);
  ASSERT_NE(single, nullptr);
  ASSERT_NE(clustered, nullptr);
  Random random(3);
  int hits = 0;
  int others = 0;
  constexpr int RAYS = 4000;
  for (int i = 0; i < RAYS; ++i) {
    const Vector3 start = centre + random.Point(4.0);
    const Vector3 direction = centre + random.Point(1.5) - start;
    Scene::Hit expected;
    Scene::Hit hit;
    const bool found = single->Intersect(start, direction, expected);
    const bool same = found == clustered->Intersect(start, direction, hit) && hit.part == expected.part &&
                      hit.triangle == expected.triangle;
    hits += found;
    others += !same;
    if (!found || !same) continue;
    ASSERT_EQ(hit.point, expected.point);
    ASSERT_EQ(hit.normal, expected.normal);
    ASSERT_EQ(hit.distance, expected.distance);
    ASSERT_EQ(hit.fromBehind, expected.fromBehind);
  }
  EXPECT_GT(hits, RAYS / 10);
  EXPECT_LE(others, RAYS / 1000);  // a ray through a side may take either of its triangles
}

TEST(TriangleClusters, answer_rays_as_single_triangles_do) { CompareIndices(MakeTwo(0.0), {}); }

TEST(TriangleClusters, answer_rays_as_single_triangles_do_far_from_the_origin) {
  CompareIndices(MakeTwo(1e7), {1e7, 1e7, 0});
}

TEST(TriangleClusters, answer_rays_whatever_the_order_of_the_triangles) {
  CompareIndices(Shuffle(MakeTwo(0.0)), {});
}

// Whole numbers, so that rays meet sides and corners exactly.
TEST(TriangleClusters, leave_no_gap_between_triangles) {
  SceneData data = zovtest::MakeSceneData(zovtest::MakeHills(40));
  for (std::size_t i = 0; i < data.meshes[0].positions.size(); i += 3) data.meshes[0].positions[i + 2] = 0.0F;
  zovhost::WorkReport report;
  const auto index = RayIndex::Create(data, {}, 2.0, report, 0);
  ASSERT_NE(index, nullptr);
  for (int x = -39; x < 40; ++x) {
    for (int y = -39; y < 40; ++y) {
      Scene::Hit hit;
      ASSERT_TRUE(index->Intersect({x / 40.0, y / 40.0, 1.0}, {0, 0, -1}, hit)) << x << ", " << y;
    }
  }
}

// Scattered over the whole, clusters would all be as large as the whole, and each ray would try each of them.
TEST(TriangleClusters, are_small_whatever_the_order_of_the_triangles) {
  zovhost::WorkReport report;
  const SceneData data = Shuffle(zovtest::MakeSceneData(zovtest::MakeHills(100)));
  const zovhost::TriangleClusters clusters(data, data.parts[0], {}, 1.0, report);
  double sum = 0.0;
  for (std::size_t i = 0; i < clusters.GetCount(); ++i) {
    const auto& [low, high] = clusters.GetBox(i);
    sum += std::hypot(high[0] - low[0], high[1] - low[1]);
  }
  EXPECT_LT(sum / static_cast<double>(clusters.GetCount()), 0.35);
}

TEST(TriangleClusters, are_broken_off_when_nobody_wants_them) {
  zovhost::WorkReport report;
  report.Cancel();
  const SceneData data = zovtest::MakeSceneData(zovtest::MakeHills(20));
  EXPECT_THROW(RayIndex::Create(data, {}, 1.0, report, 0), zovhost::WorkCancelled);
}

}  // namespace
