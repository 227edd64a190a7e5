// How lines on a scene look: not where they are hidden, whole where they are not.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "graphics_canvas.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/scene.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector3;
using zovhost::Image;
using zovhost::SceneData;

struct Size {
  int width;
  int height;
  double scale;
};

// A cuboid between two corners, turned by `angle` about the y axis.
void AddCuboid(SceneData& data, const Vector3& low, const Vector3& high, double angle = 0.0) {
  zovhost::SceneMesh mesh;
  for (int corner = 0; corner < 8; ++corner) {
    for (int axis = 0; axis < 3; ++axis)
      mesh.positions.push_back(static_cast<float>((corner >> axis & 1) != 0 ? high[axis] : low[axis]));
  }
  for (const auto& face :
       {std::array{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}}) {
    for (const std::size_t k : std::array<std::size_t, 6>{0, 1, 2, 0, 2, 3})
      mesh.indices.push_back(static_cast<std::uint32_t>(face[k]));
  }
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  data.parts.emplace_back();
  data.parts.back().mesh = static_cast<int>(data.meshes.size());
  data.parts.back().transform = {cosine, 0, -sine, 0, 0, 1, 0, 0, sine, 0, cosine, 0, 0, 0, 0, 1};
  data.meshes.push_back(std::move(mesh));
}

SceneData BeginScene() {
  SceneData data;
  data.materials.emplace_back();
  data.materials.back().colour = {0.8F, 0.6F, 0.4F, 1.0F};
  data.upDirection = {0, 0, 1};
  return data;
}

// A roof that is as thick as a plank, and just below it, where nobody sees them from above, rafters.
SceneData MakeRoof(bool withRafters) {
  constexpr double SLOPE = 0.5;  // radians
  SceneData data = BeginScene();
  AddCuboid(data, {-5, -8, 0}, {5, 8, 0.05}, SLOPE);
  for (int i = 0; withRafters && i < 20; ++i)
    AddCuboid(data, {-4.5, -7.5 + 0.75 * i, -0.2}, {4.5, -7.35 + 0.75 * i, -0.001}, SLOPE);
  return data;
}

std::unique_ptr<zovhost::Scene> Make(SceneData data) {
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

class SceneEdgesLook : public zovtest::RendererTest {
 protected:
  static Image Draw(SceneData data, const CameraParameters& camera, const Size& size, bool edges = true) {
    const auto scene = Make(std::move(data));
    zovhost::OffscreenTarget target;
    EXPECT_TRUE(target.Create(size.width, size.height, 4) && target.Bind());
    zovhost::GLSceneView view;
    EXPECT_TRUE(view.SetScene(scene.get()));
    view.GetOptions().drawGroundShadow = false;
    view.GetOptions().drawEdges = edges;
    EXPECT_TRUE(view.Draw(camera, 0, 0, size.width, size.height, size.scale));
    Image image;
    EXPECT_TRUE(target.Read(image));
    return image;
  }
  static CameraParameters From(const Vector3& eye, const Size& size) {
    constexpr double TANGENT = 0.35;
    CameraParameters camera = FrontCamera();
    camera.eye = eye;
    camera.centre = camera.pivot = {0, 0, 0};
    camera.up = {0, 0, 1};
    camera.SetVerticalFOV(std::atan(TANGENT) * Korvane::Math::RAD_TO_DEG);
    camera.SetHorizontalFOV(std::atan(TANGENT * size.width / size.height) * Korvane::Math::RAD_TO_DEG);
    return camera;
  }
  static int Brightness(const Image& image, int x, int y) {
    const auto place = 4 * static_cast<std::size_t>(y * image.width + x);
    return image.rgba[place] + image.rgba[place + 1] + image.rgba[place + 2];
  }
  static int CountDarker(const Image& image, const Image& than, int leftmost, int rightmost, int y) {
    constexpr int VISIBLY = 30;
    int count = 0;
    for (int x = leftmost; x < rightmost; ++x)
      count += Brightness(image, x, y) < Brightness(than, x, y) - VISIBLY ? 1 : 0;
    return count;
  }
};

TEST_F(SceneEdgesLook, rafters_do_not_shine_through_the_roof_however_small_it_is) {
  for (const Size& size : {Size{88, 55, 1.0}, {176, 110, 2.0}, {500, 320, 1.0}, {1000, 640, 2.0}}) {
    for (const Vector3& eye : {Vector3(18, -14, 14), {25, -3, 6}, {9, -24, 20}, {2, 2, 40}}) {
      const CameraParameters camera = From(eye, size);
      const Image plain = Draw(MakeRoof(false), camera, size);
      const Image image = Draw(MakeRoof(true), camera, size);
      int darker = 0;
      for (int y = 0; y < size.height; ++y) darker += CountDarker(image, plain, 0, size.width, y);
      EXPECT_EQ(darker, 0) << size.width << " pixels, from " << eye.x;
    }
  }
}

// From within a room a line runs in both walls that meet in it, as wide as it is outside.
TEST_F(SceneEdgesLook, a_fold_has_its_whole_line_from_either_side) {
  constexpr Size SIZE = {200, 200, 2.0};
  constexpr int ROWS = 40;
  SceneData data = BeginScene();
  AddCuboid(data, {-4, -4, -4}, {4, 4, 4});
  for (const double eye : {2.5, 20.0}) {  // in the room, and before it
    const CameraParameters camera = From(Vector3(eye, 0.8 * eye, 0.1), SIZE);
    const Image lines = Draw(data, camera, SIZE);
    const Image none = Draw(data, camera, SIZE, false);
    int rows = 0;
    for (int y = (SIZE.height - ROWS) / 2; y < (SIZE.height + ROWS) / 2; ++y) {
      const int dark = CountDarker(lines, none, SIZE.width / 4, 3 * SIZE.width / 4, y);
      rows += dark >= 2 && dark <= 4 ? 1 : 0;
    }
    EXPECT_EQ(rows, ROWS) << eye;
  }
}

// Of a solid the lines behind are left out, which nobody sees either way.
TEST_F(SceneEdgesLook, a_solid_has_the_lines_of_the_same_mesh_with_a_hole_behind) {
  constexpr Size SIZE = {200, 200, 1.0};
  for (const double mirror : {1.0, -1.0}) {
    SceneData solid = BeginScene();
    AddCuboid(solid, {-3, -2, -2}, {3, 2, 2});
    solid.parts[0].transform[0] = mirror;
    SceneData open = solid;
    open.meshes[0].indices.erase(open.meshes[0].indices.begin(), open.meshes[0].indices.begin() + 3);
    const CameraParameters camera = From({8, 6, 9}, SIZE);
    const Image whole = Draw(solid, camera, SIZE);
    const Image plain = Draw(solid, camera, SIZE, false);
    const Image holed = Draw(open, camera, SIZE);
    int lines = 0;
    int missing = 0;
    for (int y = 0; y < SIZE.height; ++y) {
      lines += CountDarker(whole, plain, 0, SIZE.width, y);
      missing += CountDarker(holed, whole, 0, SIZE.width, y);
    }
    EXPECT_LT(missing, 10) << "but for the ends of those behind, at corners; " << mirror;
    EXPECT_GT(lines, 300);
  }
}

// It has no pixels of its own then.
TEST_F(SceneEdgesLook, a_sheet_shows_as_a_line_from_its_edge) {
  constexpr Size SIZE = {200, 200, 1.0};
  SceneData data = BeginScene();
  AddCuboid(data, {-4, -4, 0}, {4, 4, 1});
  data.meshes[0].indices.resize(6);  // its lowest face
  for (const double height : {0.0, 1e-4}) {
    CameraParameters camera = From({0, -20, height}, SIZE);
    const Image lines = Draw(data, camera, SIZE);
    const Image none = Draw(data, camera, SIZE, false);
    int dark = 0;
    for (int y = 90; y < 110; ++y) dark += CountDarker(lines, none, 0, SIZE.width, y);
    EXPECT_GT(dark, 90) << height;
    EXPECT_LT(dark, 360) << height;
  }
}

// Slats that are narrower than a few pixels would be black all over.
TEST_F(SceneEdgesLook, lines_fade_where_they_are_denser_than_pixels) {
  SceneData data = BeginScene();
  for (int i = -40; i < 40; ++i) AddCuboid(data, {-6, 0.2 * i, 0}, {6, 0.2 * i + 0.1, 0.1});
  const auto brightness = [&](const Size& size, bool edges) {
    const Image image = Draw(data, From({1, 1, 40}, size), size, edges);
    double sum = 0.0;
    for (int y = 2 * size.height / 5; y < 3 * size.height / 5; ++y) {
      for (int x = 2 * size.width / 5; x < 3 * size.width / 5; ++x) sum += Brightness(image, x, y);
    }
    return sum;
  };
  constexpr Size SMALL = {100, 100, 1.0};
  constexpr Size LARGE = {1600, 1600, 1.0};
  EXPECT_GT(brightness(SMALL, true), 0.95 * brightness(SMALL, false));
  EXPECT_LT(brightness(LARGE, true), 0.95 * brightness(LARGE, false)) << "where there is room for them";
}

}  // namespace
