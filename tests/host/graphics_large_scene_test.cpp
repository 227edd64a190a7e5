#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "graphics_canvas.h"
#include "host/large_meshes.h"
#include "scene_view/coarse_mesh.h"
#include "scene_view/coarse_parts.h"
#include "scene_view/part_batches.h"
#include "scene_view/view_volume.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/scene.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::GLSceneView;
using zovhost::Image;
using zovhost::Scene;
using zovhost::SceneData;
using zovtest::Canvas;

// How many channels of how many pixels differ by more than the eye sees.
int CountDifferences(const Image& a, const Image& b, int tolerance) {
  int different = 0;
  for (std::size_t i = 0; i < a.rgba.size(); ++i) different += std::abs(a.rgba[i] - b.rgba[i]) > tolerance;
  return different;
}

std::unique_ptr<zovhost::Scene> Make(SceneData data) {
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

// Blocks of a city in a square from -4 to 4, in two colours, each second one mirrored; each a part, or all of
// a colour in one mesh.
SceneData MakeCity(int side, bool joined) {
  SceneData data;
  data.upDirection = {0, 0, 1};
  for (const float green : {0.2F, 0.7F}) {
    data.materials.emplace_back();
    data.materials.back().colour = {0.6F, green, 0.3F, 1.0F};
    data.materials.back().twoSided = false;
  }
  if (joined) data.meshes.resize(2);
  for (int i = 0; i < side * side; ++i) {
    const auto kind = static_cast<std::size_t>(i % 2);
    if (!joined) data.meshes.emplace_back();
    zovhost::SceneMesh& mesh = joined ? data.meshes[kind] : data.meshes.back();
    mesh.material = static_cast<int>(kind);
    const double step = 8.0 / side;
    const double x = -4.0 + step * (i % side);
    const double y = -4.0 + step * (i / side);
    const double mirror = i % 4 < 2 ? 1.0 : -1.0;
    const double height = 0.2 + 0.1 * (i % 7);
    const auto first = static_cast<std::uint32_t>(mesh.positions.size() / 3);
    for (int corner = 0; corner < 8; ++corner) {
      const double own[3] = {0.6 * step * (corner & 1), 0.6 * step * (corner >> 1 & 1),
                             height * (corner >> 2)};
      const double place[3] = {joined ? x + mirror * own[0] : own[0], joined ? y + own[1] : own[1], own[2]};
      for (const double axis : place) mesh.positions.push_back(static_cast<float>(axis));
    }
    for (const auto& face :
         {std::array{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}}) {
      const bool turned = joined && mirror < 0.0;
      for (const int k : turned ? std::array{0, 2, 1, 0, 3, 2} : std::array{0, 1, 2, 0, 2, 3}) {
        mesh.indices.push_back(first + static_cast<std::uint32_t>(face[static_cast<std::size_t>(k)]));
      }
    }
    if (joined) continue;
    data.parts.emplace_back();
    data.parts.back().mesh = i;
    data.parts.back().transform = {mirror, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, 0, 1};
  }
  if (!joined) return data;
  data.parts.resize(2);
  data.parts[1].mesh = 1;
  return data;
}

class LargeSceneView : public zovtest::RendererTest {
 protected:
  Image Draw(const CameraParameters& camera) {
    canvas.Clear();
    EXPECT_TRUE(view.Draw(camera, Canvas::width, Canvas::height));
    return canvas.Read();
  }
  // From the side, around the middle of the scene or beside it.
  static CameraParameters Around(const Vector3& centre, double angle, double distance) {
    CameraParameters camera = FrontCamera();
    camera.centre = camera.pivot = centre;
    camera.up = {0, 0, 1};
    camera.eye = centre + Vector3(std::cos(angle), std::sin(angle), 0.5) * distance;
    return camera;
  }

  GLSceneView view;
};

TEST_F(LargeSceneView, looks_alike_whether_its_parts_are_many_or_one) {
  GLSceneView other;
  const auto parts = Make(MakeCity(34, false));  // more than a thousand
  const auto whole = Make(MakeCity(34, true));
  ASSERT_TRUE(view.SetScene(parts.get()));
  ASSERT_TRUE(other.SetScene(whole.get()));
  view.GetOptions().drawEdges = other.GetOptions().drawEdges = false;
  for (int i = 0; i < 12; ++i) {
    const CameraParameters camera = Around({i % 3 - 1.0, i % 2 * 2.0, 0}, 0.55 * i, 1.0 + i);
    const Image joined = Draw(camera);
    canvas.Clear();
    ASSERT_TRUE(other.Draw(camera, Canvas::width, Canvas::height));
    EXPECT_LT(CountDifferences(joined, canvas.Read(), 12), 4 * 30) << "view " << i;
  }
}

TEST_F(LargeSceneView, marks_a_selected_part_of_many) {
  const auto scene = Make(MakeCity(34, false));
  ASSERT_TRUE(view.SetScene(scene.get()));
  const int part = 17 * 34 + 17;
  const CameraParameters camera =
      Around(scene->GetParts()[static_cast<std::size_t>(part)].bounds.GetCenter(), 0.4, 1);
  const Image plain = Draw(camera);
  view.GetOptions().selectedPart = part;
  const Image marked = Draw(camera);
  EXPECT_GT(CountDifferences(plain, marked, 20), 30);
  view.GetOptions().moving = true;
  view.GetOptions().selectedPart = -1;
  const Image moving = Draw(camera);
  view.GetOptions().selectedPart = part;
  EXPECT_GT(CountDifferences(moving, Draw(camera), 20), 30);
}

// A sphere of which a point falls into the viewport is never left out.
TEST_F(LargeSceneView, leaves_out_nothing_that_is_visible) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  int shown = 0;
  int hidden = 0;
  for (int i = 0; i < 20000; ++i) {
    const double offset = i % 2 == 0 ? 0.0 : 1e7;
    const Vector3 middle(offset, 0, 0);
    CameraParameters camera = Around(middle, 3.0 * unit(random), 10.0);
    camera.left_fov *= 0.5 + 0.4 * unit(random);
    camera.projection_transition = i % 3 * 0.5;
    const zovhost::Projection projection(camera, {middle, 20.0});
    const zovhost::ViewVolume volume(projection, Canvas::height);
    const Vector3 centre = middle + Vector3(unit(random), unit(random), unit(random)) * 20.0;
    const double radius = 0.01 + std::abs(unit(random));
    const Vector3 point = centre + Vector3(unit(random), unit(random), unit(random)).Normalized() * radius;
    Vector2 pixel;
    const bool visible = projection.WorldToPixel(point, Canvas::width, Canvas::height, pixel) &&
                         pixel.x >= 0.0 && pixel.y >= 0.0 && pixel.x <= Canvas::width &&
                         pixel.y <= Canvas::height;
    const bool shows = volume.Shows(centre, radius, 0.0);
    ASSERT_TRUE(shows || !visible) << i;
    visible ? ++shown : 0;
    shows ? 0 : ++hidden;
  }
  EXPECT_GT(shown, 1000);
  EXPECT_GT(hidden, 1000);
}

TEST_F(LargeSceneView, in_motion_has_about_the_same_picture_of_fewer_triangles) {
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(400)));
  ASSERT_TRUE(view.SetScene(hills.get()));
  EXPECT_TRUE(view.DropsDetail());
  view.GetOptions().drawGroundShadow = false;
  const CameraParameters camera = Around({0, 0, 0}, 0.7, 2.0);
  const Image rest = Draw(camera);
  view.GetOptions().moving = true;
  const Image moving = Draw(camera);
  EXPECT_NE(moving.rgba, rest.rgba);
  EXPECT_LT(CountDifferences(moving, rest, 40), static_cast<int>(rest.rgba.size() / 10));
  view.GetOptions().moving = false;
  EXPECT_EQ(Draw(camera).rgba, rest.rgba);
}

TEST_F(LargeSceneView, drawn_gradually_ends_in_the_picture_that_is_drawn_at_once) {
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(400)));
  ASSERT_TRUE(view.SetScene(hills.get()));
  const CameraParameters camera = Around({0, 0, 0}, 0.7, 2.0);
  const Image whole = Draw(camera);
  view.GetOptions().moving = true;
  const Image coarse = Draw(camera);
  view.GetOptions().moving = false;
  const auto drawSome = [&](const CameraParameters& from) {
    canvas.Clear();
    return view.DrawGradually(from, 0, 0, Canvas::width, Canvas::height, 1.0, 0.0);
  };
  for (int round = 0; round < 2; ++round) {
    int calls = 1;
    while (!drawSome(camera) && calls < 100) {
      EXPECT_EQ(canvas.Read().rgba, coarse.rgba);
      ++calls;
    }
    EXPECT_GT(calls, 3);
    EXPECT_LT(calls, 100);
    EXPECT_EQ(canvas.Read().rgba, whole.rgba);
    EXPECT_TRUE(drawSome(camera));  // kept
    EXPECT_EQ(canvas.Read().rgba, whole.rgba);
    EXPECT_FALSE(drawSome(Around({0, 0, 0}, 0.8, 2.0)));
  }
  ASSERT_TRUE(drawSome(camera) || view.SetScene(nullptr));
  EXPECT_TRUE(drawSome(camera));
  EXPECT_NE(canvas.Read().rgba, coarse.rgba);
}

// Whatever is asked of it anew shows in the end.
TEST_F(LargeSceneView, drawn_gradually_begins_anew_with_each_change) {
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(300)));
  ASSERT_TRUE(view.SetScene(hills.get()));
  const CameraParameters camera = Around({0, 0, 0}, 0.7, 2.0);
  const auto drawAll = [&](int x, double scale) {
    canvas.Clear();
    for (int i = 0; i < 100; ++i)
      if (view.DrawGradually(camera, x, 0, Canvas::width / 2, Canvas::height, scale, 0.0)) return;
    ADD_FAILURE() << "it never ends";
  };
  const auto compare = [&](const char* what, int x = 0, double scale = 1.0) {
    drawAll(x, scale);
    const Image gradual = canvas.Read();
    canvas.Clear();
    view.Draw(camera, x, 0, Canvas::width / 2, Canvas::height, scale);
    EXPECT_EQ(gradual.rgba, canvas.Read().rgba) << what;
  };
  compare("at first");
  compare("beside it", Canvas::width / 2);
  compare("larger lines", 0, 2.0);
  view.GetOptions().selectedPart = 0;
  compare("selected");
  view.GetOptions().ground = *zovhost::FindSceneGround("dark");
  compare("dark");
  view.GetOptions().drawEdges = false;
  compare("without edges");
  view.GetOptions().drawGroundShadow = false;
  compare("without a shadow");
  view.GetOptions().drawBackground = false;
  compare("without a background");
  zovhost::SceneFace face;
  Scene::Hit hit;
  ASSERT_TRUE(hills->Intersect({0.1, 0.1, 3}, {0, 0, -1}, hit));
  ASSERT_TRUE(hills->FindFace(hit, face));
  view.SetFaceHighlight(&face);
  compare("with a face");
}

TEST_F(LargeSceneView, a_small_scene_in_motion_is_drawn_as_at_rest) {
  const auto building = zovhost::MakeDemoBuilding();
  ASSERT_TRUE(view.SetScene(building.get()));
  EXPECT_FALSE(view.DropsDetail());
  const CameraParameters camera = Around(building->GetCentre(), 0.7, 2.0 * building->GetRadius());
  const Image rest = Draw(camera);
  view.GetOptions().moving = true;
  EXPECT_EQ(Draw(camera).rgba, rest.rgba);
}

TEST_F(LargeSceneView, a_coarse_mesh_has_no_more_triangles_than_wanted_and_stays_in_place) {
  const zovhost::SceneMesh hills = zovtest::MakeHills(300);
  zovhost::WorkReport report;
  for (const std::size_t wanted : {100U, 1000U, 20000U}) {
    const std::vector<std::uint32_t> coarse = zovhost::FindCoarseTriangles(hills, wanted, report);
    EXPECT_EQ(coarse.size() % 3, 0u);
    EXPECT_LE(coarse.size() / 3, wanted * 3 / 2);
    EXPECT_GE(coarse.size() / 3, wanted / 8);
    for (const std::uint32_t index : coarse) ASSERT_LT(index, hills.positions.size() / 3);
  }
}

TEST_F(LargeSceneView, parts_of_a_batch_thin_out_all_over_it) {
  zovhost::WorkReport report;
  const auto city = Make(MakeCity(34, false));
  const std::vector<bool> all(city->GetParts().size(), true);
  constexpr std::size_t wanted = 120;  // ten blocks
  std::size_t gathered = 0;
  for (const zovhost::PartBatch& batch : zovhost::GatherParts(*city, all, report)) {
    gathered += batch.members.size();
    const std::vector<std::uint32_t> chosen = zovhost::CoarseParts(*city, report).Choose(batch, wanted);
    EXPECT_EQ(chosen.size() / 3, std::min(wanted, batch.indexCount / 3));
    for (const std::uint32_t index : chosen) ASSERT_LT(index, batch.vertexCount);
  }
  EXPECT_EQ(gathered, city->GetParts().size());
}

TEST_F(LargeSceneView, a_scene_whose_upload_is_broken_off_leaves_the_present_one) {
  const auto building = zovhost::MakeDemoBuilding();
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(700)));
  ASSERT_TRUE(view.SetScene(building.get()));
  const CameraParameters camera = Around(building->GetCentre(), 0.7, 2.0 * building->GetRadius());
  const Image present = Draw(camera);
  for (const int calls : {0, 1, 3}) {
    int heard = 0;
    const auto progress = [&](double, const char*) {
      EXPECT_EQ(Draw(camera).rgba, present.rgba);  // as a window does meanwhile
      return heard++ < calls;
    };
    EXPECT_FALSE(view.SetScene(hills.get(), progress));
    EXPECT_EQ(heard, calls + 1);
    EXPECT_EQ(Draw(camera).rgba, present.rgba);
  }
  EXPECT_TRUE(view.SetScene(hills.get(), [](double, const char*) { return true; }));
  EXPECT_NE(Draw(camera).rgba, present.rgba);
}

// Setting memory aside for all vertices takes a while, before the first of them is there.
TEST_F(LargeSceneView, the_upload_is_told_of_before_anything_has_gone) {
  constexpr double PLANNED = 0.6;
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(700)));
  std::vector<double> uploads;
  const auto progress = [&](double fraction, const char* what) {
    if (std::string(what) == "Uploading") uploads.push_back(fraction);
    return true;
  };
  ASSERT_TRUE(view.SetScene(hills.get(), progress));
  ASSERT_FALSE(uploads.empty());
  EXPECT_EQ(uploads.front(), PLANNED);
}

TEST_F(LargeSceneView, a_scene_that_memory_is_too_short_for_leaves_the_present_one) {
  const auto building = zovhost::MakeDemoBuilding();
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(700)));
  ASSERT_TRUE(view.SetScene(building.get()));
  const CameraParameters camera = Around(building->GetCentre(), 0.7, 2.0 * building->GetRadius());
  const Image present = Draw(camera);
  EXPECT_FALSE(view.SetScene(hills.get(), [](double, const char*) -> bool { throw std::bad_alloc(); }));
  EXPECT_EQ(Draw(camera).rgba, present.rgba);
  EXPECT_FALSE(view.ShowPrepared()) << "nothing is left of it";
}

TEST_F(LargeSceneView, a_scene_that_was_prepared_shows_when_it_is_told_to) {
  const auto building = zovhost::MakeDemoBuilding();
  const auto hills = Make(zovtest::MakeSceneData(zovtest::MakeHills(20)));
  ASSERT_TRUE(view.SetScene(building.get()));
  const CameraParameters camera = Around(building->GetCentre(), 0.7, 2.0 * building->GetRadius());
  const Image present = Draw(camera);
  ASSERT_TRUE(view.Prepare(*hills));
  EXPECT_EQ(Draw(camera).rgba, present.rgba);
  view.DropPrepared();
  EXPECT_FALSE(view.ShowPrepared());
  ASSERT_TRUE(view.Prepare(*hills));
  EXPECT_TRUE(view.ShowPrepared());
  EXPECT_NE(Draw(camera).rgba, present.rgba);
  EXPECT_FALSE(view.ShowPrepared()) << "it shows already";
}

// A floor that reaches 10^5 times as far as the eye is from it, and tiles a little above: none may show
// through.
TEST_F(LargeSceneView, a_wide_plane_does_not_flicker_through_what_lies_on_it) {
  SceneData data;
  for (const auto& [half, height, green] : {std::tuple(1e5F, 0.0F, 0.1F), {2.0F, 0.05F, 0.9F}}) {
    zovhost::SceneMesh mesh;
    mesh.positions = {-half, -half, height, half, -half, height, half, half, height, -half, half, height};
    mesh.indices = {0, 1, 2, 0, 2, 3};
    mesh.material = static_cast<int>(data.materials.size());
    data.materials.emplace_back();
    data.materials.back().colour = {0.2F, green, 0.2F, 1.0F};
    data.parts.emplace_back();
    data.parts.back().mesh = static_cast<int>(data.meshes.size());
    data.meshes.push_back(mesh);
  }
  data.upDirection = {0, 0, 1};
  const auto scene = Make(std::move(data));
  ASSERT_TRUE(view.SetScene(scene.get()));
  for (int i = 0; i < 40; ++i) {
    const Image image = Draw(Around({0, 0, 0}, 0.1 * i, 1.0 + 0.01 * i));
    const zovtest::Pixel pixel = zovtest::PixelAt(image, Canvas::width / 2, Canvas::height / 2);
    EXPECT_GT(pixel[1], 2 * pixel[0]) << "view " << i;
  }
}

}  // namespace
