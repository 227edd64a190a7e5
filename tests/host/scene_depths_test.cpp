#include "scene/scene_depths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "graphics_canvas.h"
#include "support/allocation_counter.h"
#include "support/random.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/scene.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::Image;
using zovhost::Projection;
using zovhost::SceneDepths;
using zovhost::SceneSphere;

constexpr int WIDTH = 640;
constexpr int HEIGHT = 480;
constexpr std::array<float, 4> WHITE = {1.0F, 1.0F, 1.0F, 1.0F};

// A flat square around a place, of a colour of its own.
void AddSquare(zovhost::SceneData& data, const Vector3& place, float half,
               const std::array<float, 4>& colour) {
  zovhost::SceneMesh mesh;
  mesh.positions = {-half, -half, 0, half, -half, 0, half, half, 0, -half, half, 0};
  mesh.indices = {0, 1, 2, 0, 2, 3};
  mesh.material = static_cast<int>(data.materials.size());
  data.materials.emplace_back();
  data.materials.back().colour = colour;
  data.parts.emplace_back();
  data.parts.back().mesh = static_cast<int>(data.meshes.size());
  place.ToArray(data.parts.back().transform.data() + 12);
  data.meshes.push_back(mesh);
}

std::unique_ptr<zovhost::Scene> Make(zovhost::SceneData data) {
  data.upDirection = {0, 0, 1};
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

CameraParameters LookAt(const Vector3& eye, const Vector3& centre) {
  constexpr double TANGENT = 0.4;
  CameraParameters camera;
  camera.eye = eye;
  camera.centre = camera.pivot = centre;
  camera.up = std::abs((centre - eye).Normalized().z) > 0.99 ? Vector3(0, 1, 0) : Vector3(0, 0, 1);
  camera.SetHorizontalFOV(std::atan(TANGENT * WIDTH / HEIGHT) * Korvane::Math::RAD_TO_DEG);
  camera.SetVerticalFOV(std::atan(TANGENT) * Korvane::Math::RAD_TO_DEG);
  return camera;
}

class SceneDepthsTest : public zovtest::RendererTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(target.Create(WIDTH, HEIGHT, 4));
    view.GetOptions().drawEdges = view.GetOptions().drawGroundShadow = false;
  }
  Image Draw(const CameraParameters& camera) {
    EXPECT_TRUE(target.Bind());
    EXPECT_TRUE(view.Draw(camera, WIDTH, HEIGHT));
    Image image;
    EXPECT_TRUE(target.Read(image));
    return image;
  }

  // Of the pixels that see a square at this height, well within it, how many there are and how many are not
  // as green as it is.
  struct Count {
    int seen = 0;
    int faults = 0;
  };
  static Count CountFaults(const Image& image, const CameraParameters& camera, double half, double height) {
    constexpr double BORDER = 3.0;  // pixels
    const Projection projection(camera, 1.0, 2.0);
    Count count;
    for (int i = 0; i < WIDTH * HEIGHT; ++i) {
      const int row = i / WIDTH;
      const Vector2 pixel(i % WIDTH + 0.5, HEIGHT - 0.5 - row);
      Vector3 origin;
      Vector3 direction;
      if (!projection.PixelToRay(pixel, WIDTH, HEIGHT, origin, direction)) continue;
      const double along = (height - origin.z) / direction.z;
      if (!(along > 0.0)) continue;
      const Vector3 place = origin + direction * along;
      const double depth = (place - camera.eye).Dot(projection.GetFrame().forward);
      const double slant = 1.0 / std::abs(direction.z);
      const double inset = half - BORDER * slant * projection.GetPixelSize(depth, HEIGHT);
      if (std::max(std::abs(place.x), std::abs(place.y)) > inset) continue;
      const std::uint8_t* const colour = image.rgba.data() + 4 * static_cast<std::size_t>(i);
      ++count.seen;
      count.faults += colour[1] > 2 * colour[0] ? 0 : 1;
    }
    return count;
  }

  zovhost::OffscreenTarget target;
  zovhost::GLSceneView view;
};

// Each step of a camera that moves would show another pattern of the lower one.
TEST_F(SceneDepthsTest, a_plane_does_not_show_through_what_lies_on_it_by_a_hundred_thousandth_of_its_width) {
  constexpr double GAP = 0.01;
  constexpr float TILE = 150.0F;
  zovhost::SceneData data;
  AddSquare(data, {0, 0, 0}, 500.0F, {0.8F, 0.1F, 0.1F, 1.0F});
  AddSquare(data, {0, 0, GAP}, TILE, {0.1F, 0.8F, 0.1F, 1.0F});
  const auto scene = Make(std::move(data));
  ASSERT_TRUE(view.SetScene(scene.get()));
  int seen = 0;
  for (const double height : {2.0, 20.0, 100.0, 300.0, 900.0}) {
    for (const double across : {0.0, 60.0, 250.0}) {
      for (int step = 0; step < 2; ++step) {
        const Vector3 eye(across, -across - 0.37 * step, height + 0.11 * step);
        const CameraParameters camera = LookAt(eye, {0, 0, 0});
        const Count count = CountFaults(Draw(camera), camera, TILE, GAP);
        EXPECT_EQ(count.faults, 0) << "from " << height << " above, " << across << " beside, step " << step;
        seen += count.seen;
      }
    }
  }
  EXPECT_GT(seen, 1'000'000);
}

TEST_F(SceneDepthsTest, surfaces_of_two_colours_that_fall_together_show_one_of_them) {
  zovhost::SceneData data;
  AddSquare(data, {0, 0, 0}, 6.0F, {0.8F, 0.1F, 0.1F, 1.0F});
  AddSquare(data, {0.1, 0.3, 0}, 4.0F, {0.1F, 0.8F, 0.1F, 1.0F});
  AddSquare(data, {0, 0, 3}, 8.0F, {0.8F, 0.8F, 0.8F, 1.0F});
  const auto scene = Make(std::move(data));
  ASSERT_TRUE(view.SetScene(scene.get()));
  for (int step = 0; step < 5; ++step) {
    const CameraParameters camera = LookAt({0.3 * step, -5.0, 1.6}, {0.1, 0.3, 0});
    const Count count = CountFaults(Draw(camera), camera, 3.5, 0.0);
    EXPECT_TRUE(count.faults == 0 || count.faults == count.seen)
        << count.faults << " of " << count.seen << ", step " << step;
    EXPECT_GT(count.seen, 1000);
  }
}

// ---- the near plane ----

TEST_F(SceneDepthsTest, nothing_that_is_seen_is_cut_off_in_front) {
  Random random;
  zovhost::SceneData data;
  for (int i = 0; i < 40; ++i)
    AddSquare(data, random.Point(50.0), static_cast<float>(random.Uniform(0.1, 20.0)), WHITE);
  const auto scene = Make(std::move(data));
  const SceneDepths depths(*scene);
  int fitted = 0;
  for (int i = 0; i < 3000; ++i) {
    const Vector3 eye = random.Point(90.0);
    CameraParameters camera = LookAt(eye, eye + random.Point(40.0));
    if (i % 3 == 1) camera.projection_transition = random.Uniform(0.0, 0.9);
    camera.left_fov *= random.Uniform(0.2, 1.2);
    const Projection projection = depths.MakeProjection(camera);
    const Projection usual(camera, depths.GetSphere());
    ASSERT_GE(projection.GetNear(), usual.GetNear());
    fitted += projection.GetNear() > usual.GetNear() ? 1 : 0;
    for (const zovhost::ScenePart& part : scene->GetParts()) {
      const Vector3 half = part.bounds.GetExtent();
      const Vector3 offset(half.x * random.Uniform(-1.0, 1.0), half.y * random.Uniform(-1.0, 1.0), 0.0);
      const Vector3 point = part.bounds.GetCenter() + offset;
      const double depth = (point - projection.GetFrame().eye).Dot(projection.GetFrame().forward);
      Vector2 pixel;
      if (!projection.WorldToPixel(point, WIDTH, HEIGHT, pixel) || depth < usual.GetNear()) continue;
      const bool visible = pixel.x >= 0.0 && pixel.y >= 0.0 && pixel.x <= WIDTH && pixel.y <= HEIGHT;
      ASSERT_TRUE(!visible || depth >= projection.GetNear()) << i;
    }
  }
  EXPECT_GT(fitted, 500);
}

TEST_F(SceneDepthsTest, of_very_many_parts_the_near_plane_follows_those_that_are_seen) {
  constexpr int SIDE = 40;
  zovhost::SceneData data;
  for (int x = 0; x < SIDE; ++x) {
    for (int y = 0; y < SIDE; ++y)
      AddSquare(data, {static_cast<double>(x), static_cast<double>(y), 0}, 0.4F, WHITE);
  }
  const auto scene = Make(std::move(data));
  EXPECT_GT(SceneDepths(*scene).MakeProjection(LookAt({20, 15, 10}, {20, 15, 0})).GetNear(), 4.0);
}

TEST_F(SceneDepthsTest, depths_of_a_frame_ask_for_no_memory) {
  zovhost::SceneData data;
  for (int i = -20; i <= 20; ++i) AddSquare(data, {i * 3.0, i * 1.0, i * 2.0}, 9.0F, WHITE);
  const auto scene = Make(std::move(data));
  const SceneDepths depths(*scene);
  const AllocationCounter counter;
  double nearest = 0.0;
  for (int i = 0; i < 50; ++i)
    nearest += depths.MakeProjection(LookAt({90, i * 4.0, 40}, {0, 0, 0})).GetNear();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(nearest, 50.0) << "there was something to cut";
}

TEST_F(SceneDepthsTest, what_marks_the_pivot_is_not_cut_off) {
  zovhost::SceneData data;
  AddSquare(data, {0, 0, 0}, 10.0F, WHITE);
  const auto scene = Make(std::move(data));
  const SceneDepths depths(*scene);
  CameraParameters camera = LookAt({0, 0, 100}, {0, 0, 0});
  EXPECT_GT(depths.MakeProjection(camera).GetNear(), 40.0);
  camera.pivot = {0, 0, 90};
  EXPECT_LT(depths.MakeProjection(camera).GetNear(), 9.0);
}

TEST_F(SceneDepthsTest, a_sphere_alone_gives_the_usual_depths) {
  const SceneSphere sphere = {{1, 2, 3}, 50.0};
  const CameraParameters camera = LookAt({0, 0, 100}, {0, 0, 0});
  EXPECT_EQ(SceneDepths(sphere).MakeProjection(camera).GetViewProjection(),
            Projection(camera, sphere).GetViewProjection());
}

}  // namespace
