#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/icon2d.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/scene.h"

namespace {

using Korvane::CameraParameters;
using Korvane::CursorID;
using Korvane::DynamicIcon2D;
using Korvane::Renderer;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::GLSceneView;
using zovhost::Image;
using zovtest::Canvas;
using zovtest::Pixel;
using zovtest::PixelAt;

// A square in the plane at height `z`, as a part of its own.
void AddSquare(zovhost::SceneData& data, double half, double z, std::array<float, 4> colour) {
  zovhost::SceneMesh mesh;
  const auto h = static_cast<float>(half);
  mesh.positions = {-h, -h, 0, h, -h, 0, h, h, 0, -h, h, 0};
  for (int i = 0; i < 4; ++i) mesh.normals.insert(mesh.normals.end(), {0, 0, 1});
  mesh.indices = {0, 1, 2, 0, 2, 3};
  mesh.material = static_cast<int>(data.materials.size());
  zovhost::SceneMaterial material;
  material.colour = colour;
  zovhost::ScenePart part;
  part.mesh = static_cast<int>(data.meshes.size());
  part.transform[14] = z;
  data.meshes.push_back(mesh);
  data.materials.push_back(material);
  data.parts.push_back(part);
}

std::unique_ptr<zovhost::Scene> MakeSquares(double offset = 0.0) {
  zovhost::SceneData data;
  AddSquare(data, 2.0, 0.0, {0.8F, 0.1F, 0.1F, 1.0F});
  AddSquare(data, 1.0, 2.0, {0.1F, 0.8F, 0.1F, 1.0F});
  AddSquare(data, 1.0, -2.0, {0.1F, 0.1F, 0.8F, 1.0F});
  for (zovhost::ScenePart& part : data.parts) part.transform[12] = offset;
  std::string error;
  auto scene = zovhost::MakeScene(std::move(data), error);
  EXPECT_NE(scene, nullptr) << error;
  return scene;
}

class SceneViewTest : public zovtest::RendererTest {
 protected:
  SceneViewTest() {
    view.GetOptions().drawEdges = false;
    view.GetOptions().drawGroundShadow = false;
  }

  Image Draw(const CameraParameters& camera) {
    canvas.Clear();
    EXPECT_TRUE(view.Draw(camera, Canvas::width, Canvas::height));
    return canvas.Read();
  }

  static bool IsMostly(const Pixel& pixel, std::size_t channel) {
    const int others = std::max(pixel[(channel + 1) % 3], pixel[(channel + 2) % 3]);
    return pixel[channel] > 1.5 * others;
  }

  std::unique_ptr<zovhost::Scene> scene = MakeSquares();
  GLSceneView view;
};

TEST_F(SceneViewTest, the_nearer_part_hides_the_further_one) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  CameraParameters camera = FrontCamera();
  EXPECT_TRUE(IsMostly(PixelAt(Draw(camera), 32, 24), 1));
  EXPECT_TRUE(IsMostly(PixelAt(Draw(camera), 32 + 4, 24), 0));
  camera.eye.z = -10.0;
  EXPECT_TRUE(IsMostly(PixelAt(Draw(camera), 32, 24), 2));
}

TEST(SceneGrounds, have_names_of_their_own_and_begin_with_the_usual_one) {
  const auto grounds = zovhost::GetSceneGrounds();
  ASSERT_EQ(grounds.size(), 4u);
  EXPECT_EQ(grounds.front().name, zovhost::GLSceneView::Options().ground.name);
  std::set<std::string_view> names;
  for (const auto& ground : grounds) {
    names.insert(ground.name);
    EXPECT_EQ(zovhost::FindSceneGround(ground.name), &ground);
  }
  EXPECT_EQ(names, (std::set<std::string_view>{"gradient", "light", "dark", "white"}));
  EXPECT_EQ(zovhost::FindSceneGround("mauve"), nullptr);
  EXPECT_EQ(zovhost::FindSceneGround(""), nullptr);
}

TEST_F(SceneViewTest, a_white_ground_is_white_in_each_pixel) {
  ASSERT_TRUE(view.SetScene(nullptr));
  view.GetOptions().ground = *zovhost::FindSceneGround("white");
  const Image image = Draw(FrontCamera());
  EXPECT_EQ(std::count(image.rgba.begin(), image.rgba.end(), 255), static_cast<long>(image.rgba.size()));
}

TEST_F(SceneViewTest, a_ground_has_its_own_lines) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  view.GetOptions().drawEdges = true;
  const Image usual = Draw(FrontCamera());
  view.GetOptions().ground.edge = {1.0F, 0.0F, 0.0F, 1.0F};
  EXPECT_NE(usual.rgba, Draw(FrontCamera()).rgba);
}

TEST_F(SceneViewTest, an_empty_view_shows_the_background_alone) {
  ASSERT_TRUE(view.SetScene(nullptr));
  auto& options = view.GetOptions();
  options.ground.top = {0.0F, 0.0F, 1.0F};
  options.ground.bottom = {1.0F, 0.0F, 0.0F};
  const Image image = Draw(FrontCamera());
  ExpectColour(PixelAt(image, 5, 0), 255, 0, 0, 4);
  ExpectColour(PixelAt(image, 60, 47), 0, 0, 255, 4);
}

TEST_F(SceneViewTest, all_projections_show_the_size_of_the_centre_alike) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  const auto widthOfRed = [&](double transition) {
    CameraParameters camera = FrontCamera();
    camera.projection_transition = transition;
    const Image image = Draw(camera);
    int count = 0;
    for (int x = 0; x < Canvas::width; ++x) count += IsMostly(PixelAt(image, x, 20), 0);
    return count;
  };
  // At the centre 20 units fill the 48 rows, so a side of 4 is 9.6 pixels about the middle, 27.2 to 36.8, in
  // which the centres of 10 columns lie.
  for (const double transition : {0.0, 0.3, 0.7, 1.0}) EXPECT_EQ(widthOfRed(transition), 10);
}

TEST_F(SceneViewTest, surfaces_are_lit_and_keep_their_hue_on_both_faces) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  for (const double z : {10.0, -10.0}) {
    CameraParameters camera = FrontCamera();
    camera.eye.z = z;
    const Pixel pixel = PixelAt(Draw(camera), 32 + 4, 24);
    EXPECT_GT(pixel[0], 100);
    EXPECT_LT(pixel[1], 90);
  }
}

TEST_F(SceneViewTest, a_transparent_part_lets_through_what_stands_behind_it) {
  zovhost::SceneData data;
  AddSquare(data, 2.0, 2.0, {0.1F, 0.1F, 0.9F, 0.3F});
  AddSquare(data, 2.0, 0.0, {0.9F, 0.1F, 0.1F, 1.0F});
  std::string error;
  const auto glass = zovhost::MakeScene(std::move(data), error);
  ASSERT_TRUE(view.SetScene(glass.get()));
  const Pixel through = PixelAt(Draw(FrontCamera()), 32, 24);
  EXPECT_GT(through[0], 80);
  EXPECT_GT(through[2], 40);
}

TEST_F(SceneViewTest, the_selected_part_stands_out) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  const Image plain = Draw(FrontCamera());
  view.GetOptions().selectedPart = 1;  // the nearest square
  const Image selected = Draw(FrontCamera());
  EXPECT_GT(PixelAt(selected, 32, 24)[2], PixelAt(plain, 32, 24)[2] + 40);
  EXPECT_EQ(PixelAt(selected, 32 + 4, 24), PixelAt(plain, 32 + 4, 24));
  for (const int part : {-5, 3, 1 << 30}) {
    view.GetOptions().selectedPart = part;
    EXPECT_EQ(Draw(FrontCamera()).rgba, plain.rgba);
  }
}

TEST_F(SceneViewTest, edges_darken_the_border_of_a_part) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  CameraParameters camera = FrontCamera();
  camera.eye.z = 6.0;
  const auto darkness = [&] {
    const Image image = Draw(camera);
    long sum = 0;
    for (const std::uint8_t value : image.rgba) sum += 255 - value;
    return sum;
  };
  const long without = darkness();
  view.GetOptions().drawEdges = true;
  EXPECT_GT(darkness(), without + 2000);
}

TEST_F(SceneViewTest, a_shadow_lies_on_the_ground_and_is_not_seen_from_below) {
  const auto building = zovhost::MakeDemoBuilding();
  ASSERT_TRUE(view.SetScene(building.get()));
  const auto brightness = [&](double height) {
    CameraParameters camera = FrontCamera();
    camera.centre = building->GetCentre();
    camera.up = {0.0, 0.0, 1.0};
    camera.eye = camera.centre + Vector3(0.0, -3.0, height) * building->GetRadius();
    const Image image = Draw(camera);
    long sum = 0;
    for (const std::uint8_t value : image.rgba) sum += value;
    return sum;
  };
  const long above = brightness(1.0);
  const long below = brightness(-1.0);
  view.GetOptions().drawGroundShadow = true;
  const long usual = brightness(1.0);
  EXPECT_LT(usual, above);
  EXPECT_EQ(brightness(-1.0), below);
  view.GetOptions().ground.shadow = 0.9F;
  EXPECT_LT(brightness(1.0), usual);
}

TEST_F(SceneViewTest, a_model_far_from_the_origin_looks_the_same) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  const Image here = Draw(FrontCamera());
  const double offset = 1e7;
  const auto far = MakeSquares(offset);
  ASSERT_TRUE(view.SetScene(far.get()));
  CameraParameters camera = FrontCamera();
  for (Vector3* point : {&camera.eye, &camera.centre, &camera.pivot}) point->x += offset;
  const Image there = Draw(camera);
  int different = 0;
  for (std::size_t i = 0; i < here.rgba.size(); ++i) different += std::abs(here.rgba[i] - there.rgba[i]) > 2;
  EXPECT_EQ(different, 0);
}

TEST_F(SceneViewTest, draws_only_within_its_viewport) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  canvas.Clear();
  EXPECT_TRUE(view.Draw(FrontCamera(), 10, 12, 20, 16, 1.0));
  const Image image = canvas.Read();
  int lit = 0;
  for (std::size_t i = 0; i < image.rgba.size(); i += 4) lit += image.rgba[i] != 0;
  EXPECT_EQ(lit, 20 * 16);
  EXPECT_NE(PixelAt(image, 10, 12)[0], 0);
}

TEST_F(SceneViewTest, refuses_a_viewport_without_size_and_bears_any_camera) {
  EXPECT_FALSE(view.Draw(FrontCamera(), 10, 10));  // before SetScene
  ASSERT_TRUE(view.SetScene(scene.get()));
  EXPECT_FALSE(view.Draw(FrontCamera(), 0, 10));
  EXPECT_FALSE(view.Draw(FrontCamera(), 10, -1));
  CameraParameters camera;
  Draw(camera);
  camera.eye = {std::nan(""), 1e300, 0};
  camera.left_fov = std::nan("");
  Draw(camera);
}

// ---- the renderer's view of the scene ----

TEST_F(SceneViewTest, a_screenshot_stands_upright_and_shows_the_scene) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  renderer.SetSceneDraw([this](const CameraParameters& camera, int width, int height) {
    EXPECT_TRUE(view.Draw(camera, width, height));
  });
  CameraParameters camera = FrontCamera();
  camera.centre = camera.centre + Vector3(0, -4, 0);  // the scene is in the upper half
  camera.eye = camera.eye + Vector3(0, -4, 0);
  DynamicIcon2D* icon = renderer.CreateSceneScreenshot(40, 40, camera);
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(icon->GetWidth(), 40.0);
  icon->SetPosition({20, 20});
  canvas.Clear();
  ASSERT_TRUE(renderer.BeginRender(WholeViewport(), camera, Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(renderer.Render(icon));
  renderer.EndRender();
  const Image image = canvas.Read();
  EXPECT_TRUE(IsMostly(PixelAt(image, 20, 26), 1) || IsMostly(PixelAt(image, 20, 26), 0));
  EXPECT_FALSE(IsMostly(PixelAt(image, 20, 13), 0));
  EXPECT_NE(PixelAt(image, 39, 39)[0], 0);
  EXPECT_EQ(PixelAt(image, 41, 10)[0], 0);
}

TEST_F(SceneViewTest, a_screenshot_can_be_taken_within_a_pass) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  renderer.SetSceneDraw(
      [this](const CameraParameters& camera, int width, int height) { view.Draw(camera, width, height); });
  ASSERT_TRUE(renderer.BeginRender(WholeViewport(), FrontCamera(), Renderer::RENDER_OVERLAY));
  EXPECT_NE(renderer.CreateSceneScreenshot(16, 16, FrontCamera()), nullptr);
  EXPECT_TRUE(DrawQuad(Quad(0, 0, 10, 10), Coloured(1, 0, 0)));
  renderer.EndRender();
  ExpectColour(PixelAt(canvas.Read(), 5, 5), 255, 0, 0);
}

TEST_F(SceneViewTest, no_screenshot_without_size_or_scene) {
  EXPECT_EQ(renderer.CreateSceneScreenshot(16, 16, FrontCamera()), nullptr);
  int draws = 0;
  renderer.SetSceneDraw([&draws](const CameraParameters&, int, int) { ++draws; });
  const std::pair<int, int> sizes[] = {{0, 16}, {16, 0}, {-3, 16}, {1 << 20, 16}, {16, 1 << 30}};
  for (const auto& [width, height] : sizes) {
    EXPECT_EQ(renderer.CreateSceneScreenshot(width, height, FrontCamera()), nullptr);
  }
  EXPECT_EQ(draws, 0);
}

TEST_F(SceneViewTest, a_point_on_the_screen_is_where_the_picture_shows_it) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  Vector2 pixel;
  EXPECT_FALSE(renderer.ProjectToScreen({1, 1, 2}, pixel));  // no camera yet
  renderer.SetScene(scene.get());
  renderer.SetCamera(FrontCamera());
  ASSERT_TRUE(renderer.ProjectToScreen({1, 1, 2}, pixel));  // a corner of the green square
  EXPECT_NEAR(pixel.x, 35.0, 1e-9);
  EXPECT_NEAR(pixel.y, 27.0, 1e-9);
  const Image image = Draw(FrontCamera());
  EXPECT_TRUE(IsMostly(PixelAt(image, 34, 26), 1));
  EXPECT_FALSE(IsMostly(PixelAt(image, 35, 27), 1));
  EXPECT_FALSE(renderer.ProjectToScreen({0, 0, 20}, pixel));  // behind the eye
}

TEST_F(SceneViewTest, rays_find_the_scene_and_leave_the_point_alone_when_they_miss) {
  Vector3 hit(7, 8, 9);
  EXPECT_FALSE(renderer.QueryRaySceneIntersection({0, 0, 10}, {0, 0, -1}, hit));  // no scene yet
  renderer.SetScene(scene.get());
  ASSERT_TRUE(renderer.QueryRaySceneIntersection({0, 0, 10}, {0, 0, -3}, hit));
  EXPECT_NEAR(hit.z, 2.0, 1e-6);
  hit = {7, 8, 9};
  EXPECT_FALSE(renderer.QueryRaySceneIntersection({50, 0, 10}, {0, 0, -1}, hit));
  EXPECT_FALSE(renderer.QueryRaySceneIntersection({std::nan(""), 0, 10}, {0, 0, -1}, hit));
  EXPECT_EQ(hit, Vector3(7, 8, 9));
  renderer.SetScene(nullptr);
  EXPECT_FALSE(renderer.QueryRaySceneIntersection({0, 0, 10}, {0, 0, -1}, hit));
}

TEST_F(SceneViewTest, a_rectangle_gives_the_point_nearest_to_its_middle) {
  renderer.SetScene(scene.get());
  Vector3 hit(7, 8, 9);
  EXPECT_FALSE(renderer.QueryScreenRectRaySceneIntersection(0, 0, 64, 48, hit));  // no camera yet
  renderer.SetCamera(FrontCamera());
  ASSERT_TRUE(renderer.QueryScreenRectRaySceneIntersection(22, 14, 42, 34, hit));
  EXPECT_LT((hit - Vector3(0, 0, 2)).Length(), 1e-6);
  // The middle is beside the scene, the left part is on it.
  ASSERT_TRUE(renderer.QueryScreenRectRaySceneIntersection(34, 22, 48, 26, hit));
  EXPECT_NEAR(hit.y, 0.0, 1e-6);
  EXPECT_GT(hit.x, 1.0);
  EXPECT_LT(hit.x, 2.0);
  // Corners in the other order, and a single pixel.
  ASSERT_TRUE(renderer.QueryScreenRectRaySceneIntersection(42, 34, 22, 14, hit));
  ASSERT_TRUE(renderer.QueryScreenRectRaySceneIntersection(32, 24, 32, 24, hit));
  hit = {7, 8, 9};
  EXPECT_FALSE(renderer.QueryScreenRectRaySceneIntersection(0, 0, 5, 5, hit));
  EXPECT_EQ(hit, Vector3(7, 8, 9));
}

// ---- the face under the pointer ----

TEST_F(SceneViewTest, the_face_under_the_pointer_has_a_point_and_a_normal) {
  renderer.SetScene(scene.get());
  Vector3 point(7, 8, 9);
  Vector3 normal(4, 5, 6);
  EXPECT_FALSE(renderer.GetMouseoverComponent({32, 24}, point, normal));  // not begun
  ASSERT_TRUE(renderer.BeginMouseoverComponent(false));
  EXPECT_FALSE(renderer.GetMouseoverComponent({32, 24}, point, normal));  // no camera yet
  renderer.SetCamera(FrontCamera());
  EXPECT_FALSE(renderer.GetMouseoverComponent({1, 1}, point, normal));  // beside the scene
  EXPECT_FALSE(renderer.GetMouseoverComponent({std::nan(""), 24}, point, normal));
  EXPECT_EQ(point, Vector3(7, 8, 9));
  EXPECT_EQ(normal, Vector3(4, 5, 6));
  ASSERT_TRUE(renderer.GetMouseoverComponent({32, 24}, point, normal));
  EXPECT_LT((point - Vector3(0, 0, 2)).Length(), 1e-6);
  EXPECT_LT((normal - Vector3(0, 0, 1)).Length(), 1e-6);
  EXPECT_TRUE(renderer.EndMouseoverComponent());
  EXPECT_FALSE(renderer.EndMouseoverComponent());
  EXPECT_FALSE(renderer.GetMouseoverComponent({32, 24}, point, normal));
}

TEST_F(SceneViewTest, the_normal_of_a_face_seen_from_behind_points_away) {
  renderer.SetScene(scene.get());
  CameraParameters camera = FrontCamera();
  camera.eye.z = -10.0;
  renderer.SetCamera(camera);
  ASSERT_TRUE(renderer.BeginMouseoverComponent(false));
  Vector3 point;
  Vector3 normal;
  ASSERT_TRUE(renderer.GetMouseoverComponent({32, 24}, point, normal));
  EXPECT_LT((point - Vector3(0, 0, -2)).Length(), 1e-6);
  EXPECT_LT((normal - Vector3(0, 0, 1)).Length(), 1e-6);
}

TEST_F(SceneViewTest, without_a_scene_no_face_is_picked) {
  EXPECT_FALSE(renderer.BeginMouseoverComponent(true));
  renderer.SetScene(scene.get());
  EXPECT_TRUE(renderer.BeginMouseoverComponent(true));
  renderer.SetScene(nullptr);  // ends it
  EXPECT_FALSE(renderer.EndMouseoverComponent());
}

TEST_F(SceneViewTest, the_face_under_the_pointer_is_shown_while_it_is_picked) {
  std::vector<int> shown;  // part numbers, -1 for none
  renderer.SetFaceShow([&](const zovhost::SceneFace* face) { shown.push_back(face ? face->part : -1); });
  renderer.SetScene(scene.get());
  renderer.SetCamera(FrontCamera());
  Vector3 point;
  Vector3 normal;
  ASSERT_TRUE(renderer.BeginMouseoverComponent(true));
  renderer.GetMouseoverComponent({32, 24}, point, normal);      // the nearest square
  renderer.GetMouseoverComponent({32 + 4, 24}, point, normal);  // the large one behind it
  renderer.GetMouseoverComponent({1, 1}, point, normal);
  renderer.GetMouseoverComponent({2, 1}, point, normal);  // still none: told once
  renderer.GetMouseoverComponent({32, 24}, point, normal);
  renderer.EndMouseoverComponent();
  EXPECT_EQ(shown, (std::vector<int>{1, 0, -1, 1, -1}));
  shown.clear();
  ASSERT_TRUE(renderer.BeginMouseoverComponent(false));
  renderer.GetMouseoverComponent({32, 24}, point, normal);
  renderer.EndMouseoverComponent();
  EXPECT_TRUE(shown.empty());
}

// A plate of squares, so many that a thread looks for its face.
std::unique_ptr<zovhost::Scene> MakePlate() {
  constexpr int SIDE = 40;
  zovhost::SceneData data;
  data.materials.emplace_back();
  data.parts.emplace_back();
  zovhost::SceneMesh& mesh = data.meshes.emplace_back();
  for (int i = 0; i < SIDE * SIDE; ++i) {
    const auto x = static_cast<float>(i % SIDE) - SIDE / 2.0F;
    const auto y = static_cast<float>(i / SIDE) - SIDE / 2.0F;
    const auto first = static_cast<std::uint32_t>(mesh.positions.size() / 3);
    mesh.positions.insert(mesh.positions.end(), {x, y, 0, x + 1, y, 0, x + 1, y + 1, 0, x, y + 1, 0});
    for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U}) mesh.indices.push_back(first + corner);
  }
  std::string error;
  return zovhost::MakeScene(std::move(data), error);
}

TEST_F(SceneViewTest, a_large_face_under_the_pointer_is_shown_when_it_has_been_found) {
  const auto plate = MakePlate();
  ASSERT_NE(plate, nullptr);
  std::vector<std::size_t> shown;  // how many triangles
  renderer.SetFaceShow(
      [&](const zovhost::SceneFace* face) { shown.push_back(face != nullptr ? face->triangles.size() : 0); });
  renderer.SetScene(plate.get());
  renderer.SetCamera(FrontCamera());
  Vector3 point;
  Vector3 normal;
  ASSERT_TRUE(renderer.BeginMouseoverComponent(true));
  ASSERT_TRUE(renderer.GetMouseoverComponent({32, 24}, point, normal));
  EXPECT_TRUE(shown.empty());
  EXPECT_TRUE(renderer.IsFindingFace());
  for (int i = 0; i < 60'000 && renderer.IsFindingFace(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    renderer.SetCamera(FrontCamera());
  }
  EXPECT_EQ(shown, (std::vector<std::size_t>{3200}));
  renderer.EndMouseoverComponent();
  EXPECT_EQ(shown, (std::vector<std::size_t>{3200, 0}));
  ASSERT_TRUE(renderer.BeginMouseoverComponent(true));
  ASSERT_TRUE(renderer.GetMouseoverComponent({32, 24}, point, normal));
  EXPECT_TRUE(renderer.IsFindingFace());
  renderer.SetScene(nullptr);
  EXPECT_FALSE(renderer.IsFindingFace());
  EXPECT_EQ(shown.size(), 2U);
}

TEST_F(SceneViewTest, a_highlighted_face_is_tinted_and_hides_behind_what_is_nearer) {
  ASSERT_TRUE(view.SetScene(scene.get()));
  const Image plain = Draw(FrontCamera());
  zovhost::Scene::Hit hit;
  zovhost::SceneFace face;
  // The large square, at a point that the small one before it does not cover.
  ASSERT_TRUE(scene->Intersect({1.5, 0, 10}, {0, 0, -1}, hit));
  ASSERT_TRUE(scene->FindFace(hit, face));
  view.SetFaceHighlight(&face);
  const Image tinted = Draw(FrontCamera());
  EXPECT_GT(PixelAt(tinted, 32 + 4, 24)[2], PixelAt(plain, 32 + 4, 24)[2] + 60);
  EXPECT_GT(PixelAt(tinted, 32 - 4, 24)[2], PixelAt(plain, 32 - 4, 24)[2] + 60);  // its other triangle
  EXPECT_EQ(PixelAt(tinted, 32, 24), PixelAt(plain, 32, 24));
  view.GetOptions().drawFaceHighlight = false;
  EXPECT_EQ(Draw(FrontCamera()).rgba, plain.rgba);
  view.GetOptions().drawFaceHighlight = true;
  EXPECT_EQ(Draw(FrontCamera()).rgba, tinted.rgba) << "it was only left out";
  view.SetFaceHighlight(nullptr);
  EXPECT_EQ(Draw(FrontCamera()).rgba, plain.rgba);
  view.SetFaceHighlight(&face);
  ASSERT_TRUE(view.SetScene(scene.get()));  // another scene, as far as the view knows
  EXPECT_EQ(Draw(FrontCamera()).rgba, plain.rgba);
  face.part = 99;
  view.SetFaceHighlight(&face);
  EXPECT_EQ(Draw(FrontCamera()).rgba, plain.rgba);
}

// ---- pointer and menus ----

struct RecordingHost : zovhost::RendererHost {
  std::vector<int> calls;
  bool ApplyCursor(CursorID id) override { return calls.push_back(id), true; }
  bool WarpPointer(int x, int y) override { return calls.push_back(1000 * x + y), true; }
  bool OpenMenu(Korvane::MenuID id) override { return calls.push_back(-id), true; }
  bool OpenUCSMenu(int x, int y) override { return calls.push_back(x - y), true; }
};

TEST_F(SceneViewTest, pointer_and_menus_reach_the_host) {
  EXPECT_FALSE(renderer.SetCursorID(Korvane::CURSOR_PAN));  // no host yet
  EXPECT_FALSE(renderer.SetCursorPosition(3, 4));
  EXPECT_FALSE(renderer.OpenMenu(Korvane::MENU_ORIENTOR));
  EXPECT_FALSE(renderer.OpenUCSMenu(1, 2));
  RecordingHost host;
  renderer.SetHost(&host);
  EXPECT_TRUE(renderer.SetCursorID(Korvane::CURSOR_PAN));
  EXPECT_TRUE(renderer.SetCursorPosition(3, 4));
  EXPECT_TRUE(renderer.OpenMenu(Korvane::MENU_ORIENTOR));
  EXPECT_TRUE(renderer.OpenUCSMenu(9, 2));
  EXPECT_EQ(host.calls, (std::vector<int>{3, 3004, -4, 7}));
}

TEST_F(SceneViewTest, a_frame_that_asks_for_no_cursor_keeps_the_one_there_is) {
  RecordingHost host;
  renderer.SetHost(&host);
  renderer.SetCursorID(Korvane::CURSOR_PAN);
  renderer.QueueSetCursorID(true);
  renderer.QueueSetCursorID(false);
  EXPECT_EQ(host.calls, (std::vector<int>{3}));
  EXPECT_FALSE(renderer.SetCursorID(static_cast<CursorID>(400)));
  EXPECT_FALSE(renderer.SetCursorID(static_cast<CursorID>(-1)));
  EXPECT_EQ(host.calls, (std::vector<int>{3}));
}

}  // namespace
