#include "zov/zov_renderer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <set>

#include "facade/facade_renderer.h"
#include "korvane/camera_parameters.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/renderer.h"
#include "support/allocation_counter.h"
#include "support/random.h"
#include "support/virtual_slot.h"
#include "zov/zov_icon_utils.h"

namespace {

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::DynamicIcon2D;
using Korvane::Renderer;
using Korvane::Vector2;
using Korvane::Vector3;

// The protected operations, for the tests.
class OpenRenderer : public FacadeRenderer {
 public:
  static std::vector<int> ProtectedSlots() {
    return {VirtualSlot(&OpenRenderer::load_texture), VirtualSlot(&OpenRenderer::release_texture),
            VirtualSlot(&OpenRenderer::set_cursor_icon)};
  }
};

// The destructor, number 35, takes two places of the table, so what follows it is one further on.
TEST(ZovRenderer, has_its_operations_in_the_order_that_hosts_know) {
  using R = zovRenderer;
  const std::vector<int> slots = {
      VirtualSlot(&R::create),
      VirtualSlot(&R::destroy),
      VirtualSlot(&R::apply_texture_usage),
      VirtualSlot(&R::begin_render),
      VirtualSlot(&R::end_render),
      VirtualSlot(&R::render_geometry),
      VirtualSlot(&R::begin_selection),
      VirtualSlot(&R::end_selection),
      VirtualSlot(&R::render_selection_geometry),
      VirtualSlot(&R::get_selection),
      VirtualSlot(static_cast<bool (R::*)(const std::shared_ptr<zovResourceIcon3D>&)>(&R::render)),
      VirtualSlot(static_cast<bool (R::*)(const std::shared_ptr<zovDynamicIcon2D>&)>(&R::render)),
      VirtualSlot(static_cast<bool (R::*)(const std::shared_ptr<zovResourceIcon2D>&)>(&R::render)),
      VirtualSlot(&R::load_string_resource),
      VirtualSlot(&R::create_image_data),
      VirtualSlot(&R::create_scene_screenshot),
      VirtualSlot(&R::create_text_label),
      VirtualSlot(&R::create_tooltip),
      VirtualSlot(&R::create_tooltip_hud),
      VirtualSlot(&R::create_message_hud),
      VirtualSlot(&R::create_pivot_label),
      VirtualSlot(&R::create_miniwheel_label),
      VirtualSlot(&R::create_ucs_menu_label),
      VirtualSlot(&R::destroy_icon),
      VirtualSlot(&R::query_ray_scene_intersection),
      VirtualSlot(&R::query_mouse_ray_scene_intersection),
      VirtualSlot(&R::query_screen_rect_ray_scene_intersection),
      VirtualSlot(&R::begin_mouseover_component),
      VirtualSlot(&R::get_mouseover_component),
      VirtualSlot(&R::end_mouseover_component),
      VirtualSlot(&R::set_cursor_id),
      VirtualSlot(&R::set_cursor_position),
      VirtualSlot(&R::open_menu),
      VirtualSlot(&R::open_ucs_menu),
      VirtualSlot(&R::project_to_screen),
  };
  ASSERT_EQ(slots.size(), 35U);
  for (int slot = 0; slot < 35; ++slot) EXPECT_EQ(slots[static_cast<std::size_t>(slot)], slot);
  EXPECT_EQ(OpenRenderer::ProtectedSlots(), (std::vector<int>{37, 38, 39}));
}

// ---- two directions ----

struct Way {
  const char* name;
  std::function<void(FacadeRenderer&)> outside;
  std::function<void(Renderer&)> inside;
};

const float QUAD[12] = {0, 0, 0, 0, 9, 0, 9, 9, 0, 9, 0, 0};
const Box2 VIEWPORT(Vector2(50.0, 40.0), Vector2(50.0, 40.0));
const qmBox2 OUTSIDE_VIEWPORT(qmPoint2(0.0, 0.0), qmPoint2(100.0, 80.0));

std::vector<Way> AllWays() {
  using F = FacadeRenderer;
  using R = Renderer;
  static Korvane::ResourceIcon3D icon3D(Korvane::MODEL_PIVOT_BALL);
  static DynamicIcon2D dynamic(5);
  static Korvane::ResourceIcon2D resource(Korvane::TEXTURE_CUBE_HOME);
  return {
      {"create", [](F& f) { EXPECT_TRUE(f.create()); }, [](R& r) { r.Create(); }},
      {"destroy", [](F& f) { f.destroy(); }, [](R& r) { r.Destroy(); }},
      {"apply_texture_usage", [](F& f) { f.apply_texture_usage(); }, [](R& r) { r.ApplyTextureUsage(); }},
      {"begin_render",
       [](F& f) {
         EXPECT_TRUE(f.begin_render(OUTSIDE_VIEWPORT, zovCameraParameters(), zovRenderMode::Overlay));
       },
       [](R& r) { EXPECT_TRUE(r.BeginRender(VIEWPORT, CameraParameters(), Renderer::RENDER_OVERLAY)); }},
      {"end_render", [](F& f) { f.end_render(); }, [](R& r) { r.EndRender(); }},
      {"render_geometry",
       [](F& f) {
         f.render_geometry(4, {QUAD, 12}, {}, zovMaterialParameters());
       },
       [](R& r) { r.RenderGeometry(4, QUAD, nullptr, nullptr); }},
      {"begin_selection",
       [](F& f) {
         EXPECT_TRUE(
             f.begin_selection(qmPoint2(), OUTSIDE_VIEWPORT, zovCameraParameters(), zovRenderMode::Overlay));
       },
       [](R& r) {
         EXPECT_TRUE(r.BeginSelection(Vector2(), VIEWPORT, CameraParameters(), Renderer::RENDER_OVERLAY));
       }},
      {"end_selection", [](F& f) { f.end_selection(); }, [](R& r) { r.EndSelection(); }},
      {"render_selection_geometry",
       [](F& f) {
         f.render_selection_geometry(4, {QUAD, 12}, 3);
       },
       [](R& r) { r.RenderSelectionGeometry(4, QUAD, 3); }},
      {"get_selection", [](F& f) { f.get_selection(); }, [](R& r) { (void)r.GetSelection(); }},
      {"render 3D", [](F& f) { f.render(std::make_shared<zovResourceIcon3D>(zovModelID::PivotBall)); },
       [](R& r) { r.Render(&icon3D); }},
      {"render dynamic", [](F& f) { f.render(std::make_shared<zovDynamicIcon2D>(5)); },
       [](R& r) { r.Render(&dynamic); }},
      {"render resource", [](F& f) { f.render(std::make_shared<zovResourceIcon2D>(zovTextureID::CubeHome)); },
       [](R& r) { r.Render(&resource); }},
      {"load_string_resource", [](F& f) { f.load_string_resource(zovStringID::CubeHome); },
       [](R& r) { r.LoadStringResource(68); }},
      {"create_image_data", [](F& f) { (void)f.create_image_data(zovTextureID::CubeHome); },
       [](R& r) { EXPECT_EQ(r.CreateImageData(Korvane::TEXTURE_CUBE_HOME), nullptr); }},
      {"create_scene_screenshot", [](F& f) { (void)f.create_scene_screenshot(4, 3, zovCameraParameters()); },
       [](R& r) { EXPECT_NE(r.CreateSceneScreenshot(4, 3, CameraParameters()), nullptr); }},
      {"create_text_label", [](F& f) { (void)f.create_text_label(qmString(), 1.0F, 2, 3); },
       [](R& r) { EXPECT_NE(r.CreateTextLabel(L"", 1.0F, 2, 3), nullptr); }},
      {"create_tooltip", [](F& f) { (void)f.create_tooltip(qmString()); },
       [](R& r) { EXPECT_NE(r.CreateTooltip(L""), nullptr); }},
      {"create_tooltip_hud", [](F& f) { (void)f.create_tooltip_hud(qmString()); },
       [](R& r) { EXPECT_NE(r.CreateTooltipHUD(L""), nullptr); }},
      {"create_message_hud", [](F& f) { (void)f.create_message_hud(qmString()); },
       [](R& r) { EXPECT_NE(r.CreateMessageHUD(L""), nullptr); }},
      {"create_pivot_label", [](F& f) { (void)f.create_pivot_label(qmString()); },
       [](R& r) { EXPECT_NE(r.CreatePivotLabel(L""), nullptr); }},
      {"create_miniwheel_label", [](F& f) { (void)f.create_miniwheel_label(qmString()); },
       [](R& r) { EXPECT_NE(r.CreateMiniWheelLabel(L""), nullptr); }},
      {"create_ucs_menu_label", [](F& f) { (void)f.create_ucs_menu_label(qmString(), qmString(), false, 1); },
       [](R& r) { EXPECT_NE(r.CreateUCSMenuLabel(L"", L"", false, 1), nullptr); }},
      {"destroy_icon", [](F& f) { f.destroy_icon(std::make_shared<zovDynamicIcon2D>(5)); },
       [](R& r) {
         DynamicIcon2D* icon = r.CreateTooltip(L"");
         r.DestroyIcon(icon);
       }},
      {"query_ray_scene_intersection",
       [](F& f) {
         qmPoint3 hit;
         EXPECT_FALSE(f.query_ray_scene_intersection(qmPoint3(), qmUnitVec3(), hit));
       },
       [](R& r) {
         Vector3 hit;
         EXPECT_FALSE(r.QueryRaySceneIntersection(Vector3(), Vector3(), hit));
       }},
      {"query_mouse_ray_scene_intersection",
       [](F& f) {
         qmPoint3 hit;
         EXPECT_FALSE(f.query_mouse_ray_scene_intersection(1, 2, qmPoint3(), qmUnitVec3(), hit));
       },
       [](R& r) {
         Vector3 hit;
         EXPECT_FALSE(r.QueryMouseRaySceneIntersection(1, 2, Vector3(), Vector3(), hit));
       }},
      {"query_screen_rect_ray_scene_intersection",
       [](F& f) {
         qmPoint3 hit;
         EXPECT_FALSE(f.query_screen_rect_ray_scene_intersection(1, 2, 3, 4, hit));
       },
       [](R& r) {
         Vector3 hit;
         EXPECT_FALSE(r.QueryScreenRectRaySceneIntersection(1, 2, 3, 4, hit));
       }},
      {"begin_mouseover_component", [](F& f) { EXPECT_FALSE(f.begin_mouseover_component(true)); },
       [](R& r) { EXPECT_FALSE(r.BeginMouseoverComponent(true)); }},
      {"get_mouseover_component",
       [](F& f) {
         qmPoint3 point;
         qmUnitVec3 normal;
         EXPECT_FALSE(f.get_mouseover_component(qmPoint2(), point, normal));
       },
       [](R& r) {
         Vector3 point;
         Vector3 normal;
         EXPECT_FALSE(r.GetMouseoverComponent(Vector2(), point, normal));
       }},
      {"end_mouseover_component", [](F& f) { f.end_mouseover_component(); },
       [](R& r) { r.EndMouseoverComponent(); }},
      {"set_cursor_id", [](F& f) { f.set_cursor_id(zovCursorID::Pan); },
       [](R& r) { r.SetCursorID(Korvane::CURSOR_PAN); }},
      {"set_cursor_position", [](F& f) { f.set_cursor_position(1, 2); },
       [](R& r) { r.SetCursorPosition(1, 2); }},
      {"open_menu", [](F& f) { f.open_menu(zovMenuID::Orientor); },
       [](R& r) { r.OpenMenu(Korvane::MENU_ORIENTOR); }},
      {"open_ucs_menu", [](F& f) { f.open_ucs_menu(1, 2); }, [](R& r) { r.OpenUCSMenu(1, 2); }},
      {"project_to_screen",
       [](F& f) {
         qmPoint2 pixel;
         EXPECT_FALSE(f.project_to_screen(qmPoint3(), pixel));
       },
       [](R& r) {
         Vector2 pixel;
         EXPECT_FALSE(r.ProjectToScreen(Vector3(), pixel));
       }},
      {"load_texture", [](F& f) { EXPECT_TRUE(f.load_texture(zovTextureID::CubeHome)); },
       [](R& r) {
         r.IncrementTextureUsage(Korvane::TEXTURE_CUBE_HOME);
         r.ApplyTextureUsage();
       }},
      {"release_texture", [](F& f) { f.release_texture(zovTextureID::CubeHome); },
       [](R& r) {
         r.IncrementTextureUsage(Korvane::TEXTURE_CUBE_HOME);
         r.ApplyTextureUsage();
         r.DecrementTextureUsage(Korvane::TEXTURE_CUBE_HOME);
         r.ApplyTextureUsage();
       }},
      {"set_cursor_icon", [](F& f) { f.set_cursor_icon(zovCursorID::Pan); },
       [](R& r) { r.SetCursorID(Korvane::CURSOR_PAN); }},
  };
}

TEST(ZovRenderer, brings_each_operation_from_either_side_to_the_override_once) {
  const std::vector<Way> ways = AllWays();
  std::set<std::string> names;
  for (const Way& way : ways) names.insert(way.name);
  EXPECT_EQ(names.size(), 38U);  // all of the 39 but the destructor
  for (const Way& way : ways) {
    FacadeRenderer outside;
    way.outside(outside);
    EXPECT_EQ(outside.CountOf(way.name), 1) << way.name << " from outside";
    FacadeRenderer inside;
    way.inside(inside.korvane());
    EXPECT_EQ(inside.CountOf(way.name), 1) << way.name << " from within";
  }
}

// ---- what each call converts ----

CameraParameters ACamera() {
  CameraParameters camera;
  camera.eye = Vector3(0.0, 0.0, 5.0);
  camera.up = Vector3(0.0, 2.0, 0.0);
  camera.left_fov = camera.right_fov = camera.top_fov = camera.bottom_fov = 30.0;
  return camera;
}

TEST(ZovRenderer, opens_a_pass_with_corners_and_a_camera) {
  FacadeRenderer renderer;
  EXPECT_TRUE(renderer.korvane().BeginRender(VIEWPORT, ACamera(), Renderer::RENDER_SCENE));
  EXPECT_EQ(renderer.lastBox, OUTSIDE_VIEWPORT);
  EXPECT_EQ(renderer.lastCamera.eye(), qmPoint3(0.0, 0.0, 5.0));
  EXPECT_EQ(renderer.lastCamera.left_fov(), qmAngle(30.0, qmAngleDegrees));
  EXPECT_EQ(renderer.lastMode, zovRenderMode::Scene);
}

// A length of 0.00001 is not above it.
TEST(ZovRenderer, picks_in_a_box_only_when_it_has_a_size) {
  FacadeRenderer renderer;
  const auto boxOf = [&](const Vector2& half) {
    EXPECT_TRUE(renderer.korvane().BeginSelection(Vector2(3.0, 4.0), Box2(Vector2(50.0, 40.0), half),
                                                  ACamera(), Renderer::RENDER_OVERLAY));
    return renderer.lastBox;
  };
  const qmBox2 none(qmPoint2(0.0, 0.0), qmPoint2(0.0, 0.0));
  EXPECT_EQ(boxOf(Vector2(50.0, 40.0)), OUTSIDE_VIEWPORT);
  EXPECT_EQ(renderer.lastPoint, qmPoint2(3.0, 4.0));
  EXPECT_EQ(boxOf(Vector2(0.0, 0.0)), none);
  EXPECT_EQ(boxOf(Vector2(0.00001, 0.0)), none);
  EXPECT_EQ(boxOf(Vector2(0.0, 0.000011)),
            qmBox2(qmPoint2(50.0, 40.0 - 0.000011), qmPoint2(50.0, 40.000011)));
  EXPECT_EQ(boxOf(Vector2(-3.0, 4.0)), qmBox2(qmPoint2(53.0, 36.0), qmPoint2(47.0, 44.0)));
  EXPECT_EQ(boxOf(Vector2(std::numeric_limits<double>::quiet_NaN(), 1.0)), none);
}

TEST(ZovRenderer, hands_copies_of_the_vertices_to_be_walked_along) {
  FacadeRenderer renderer;
  Renderer::MaterialParams material;
  material.colour[0] = 0.25F;
  material.texture = Korvane::TEXTURE_CUBE_HOME;
  material.drawMode = 77;
  material.lineWidth = 2.0F;
  float vertices[6] = {1, 2, 3, 4, 5, 6};
  float texCoords[4] = {0, 1, 1, 0};
  EXPECT_TRUE(renderer.korvane().RenderGeometry(2, vertices, texCoords, &material));
  EXPECT_EQ(renderer.lastVertexCount, 2U);
  EXPECT_EQ(renderer.lastVertices, (std::vector<float>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(renderer.lastTexCoords, (std::vector<float>{0, 1, 1, 0}));
  float colour[4] = {};
  renderer.lastMaterial.colour(colour);
  EXPECT_EQ(colour[0], 0.25F);
  EXPECT_EQ(colour[3], 1.0F);
  EXPECT_EQ(renderer.lastMaterial.texture_id(), zovTextureID::CubeHome);
  EXPECT_EQ(static_cast<int>(renderer.lastMaterial.draw_mode()), 77);
  EXPECT_EQ(renderer.lastMaterial.line_width(), 2.0F);

  EXPECT_TRUE(renderer.korvane().RenderGeometry(1, vertices, nullptr, nullptr));
  EXPECT_EQ(renderer.lastVertices, (std::vector<float>{1, 2, 3}));
  EXPECT_TRUE(renderer.lastTexCoords.empty());
  EXPECT_EQ(renderer.lastMaterial.texture_id(), zovTextureID::NoTexture);
  EXPECT_TRUE(renderer.korvane().RenderGeometry(0, nullptr, nullptr, nullptr));
  EXPECT_TRUE(renderer.lastVertices.empty());
}

// A host that is asked to draw makes the library draw.
TEST(ZovRenderer, keeps_the_vertices_of_a_call_within_which_others_are_drawn) {
  class Nested : public FacadeRenderer {
   public:
    bool render_geometry(unsigned count, qiIterator<float> vertices, qiIterator<float> tex_coords,
                         const zovMaterialParameters& material) override {
      if (count == 2) korvane().RenderGeometry(4, QUAD, QUAD, nullptr);
      return FacadeRenderer::render_geometry(count, vertices, tex_coords, material);
    }
  };
  Nested renderer;
  const float line[6] = {1, 2, 3, 4, 5, 6};
  renderer.korvane().RenderGeometry(2, line, nullptr, nullptr);
  EXPECT_EQ(renderer.CountOf("render_geometry"), 2);
  EXPECT_EQ(renderer.lastVertices, (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

TEST(ZovRenderer, brings_texts_and_what_they_hold_across) {
  class Speaking : public FacadeRenderer {
   public:
    qmString load_string_resource(zovStringID) override {
      return {std::wstring_view(L"\u00E9\0\U0001F600", 3 + (sizeof(wchar_t) == 2 ? 1 : 0)), qmStringWcs};
    }
  };
  Speaking renderer;
  std::wstring expected = L"\u00E9";
  expected += L'\0';
  expected += L"\U0001F600";
  EXPECT_EQ(renderer.korvane().LoadStringResource(1), expected);
}

TEST(ZovRenderer, asks_the_scene_with_points_and_unit_vectors) {
  FacadeRenderer renderer;
  Renderer& within = renderer.korvane();
  Vector3 hit(7.0, 7.0, 7.0);
  EXPECT_FALSE(within.QueryRaySceneIntersection(Vector3(1.0, 2.0, 3.0), Vector3(0.0, 0.0, -4.0), hit));
  EXPECT_EQ(hit, Vector3(7.0, 7.0, 7.0));  // what the host wrote beside its false
  renderer.hasScene = true;
  EXPECT_TRUE(within.QueryRaySceneIntersection(Vector3(1.0, 2.0, 3.0), Vector3(0.0, 0.0, -4.0), hit));
  EXPECT_EQ(hit, Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(renderer.lastOrigin, qmPoint3(1.0, 2.0, 3.0));
  EXPECT_EQ(renderer.lastDirection, qmUnitVec3(qmVector3(0.0, 0.0, -1.0)));
  EXPECT_TRUE(within.QueryRaySceneIntersection(Vector3(), Vector3(), hit));
  EXPECT_EQ(renderer.lastDirection, qmUnitVec3());
}

TEST(ZovRenderer, asks_for_a_pixel_a_rectangle_and_a_component) {
  FacadeRenderer renderer;
  Renderer& within = renderer.korvane();
  Vector3 hit;
  Vector3 normal;
  Vector2 pixel(9.0, 9.0);
  EXPECT_FALSE(within.QueryMouseRaySceneIntersection(1, 2, Vector3(), Vector3(0.0, 1.0, 0.0), hit));
  EXPECT_FALSE(within.QueryScreenRectRaySceneIntersection(1, 2, 3, 4, hit));
  EXPECT_FALSE(within.BeginMouseoverComponent(false));
  EXPECT_FALSE(within.GetMouseoverComponent(Vector2(5.0, 6.0), hit, normal));
  EXPECT_FALSE(within.EndMouseoverComponent());
  EXPECT_FALSE(within.ProjectToScreen(Vector3(1.0, 2.0, 3.0), pixel));
  EXPECT_EQ(hit, Vector3());
  EXPECT_EQ(pixel, Vector2(9.0, 9.0));

  renderer.hasScene = true;
  EXPECT_TRUE(within.QueryMouseRaySceneIntersection(1, 2, Vector3(), Vector3(0.0, 1.0, 0.0), hit));
  EXPECT_EQ(hit, Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(renderer.CountOf("query_ray_scene_intersection"), 2);  // where the library takes it
  renderer.sceneHit = qmPoint3(4.0, 5.0, 6.0);
  EXPECT_TRUE(within.QueryScreenRectRaySceneIntersection(1, 2, 3, 4, hit));
  EXPECT_EQ(hit, Vector3(4.0, 5.0, 6.0));
  EXPECT_EQ(renderer.lastNumbers, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_TRUE(within.BeginMouseoverComponent(true));
  renderer.sceneHit = qmPoint3(7.0, 8.0, 9.0);
  EXPECT_TRUE(within.GetMouseoverComponent(Vector2(5.0, 6.0), hit, normal));
  EXPECT_EQ(renderer.lastPoint, qmPoint2(5.0, 6.0));
  EXPECT_EQ(hit, Vector3(7.0, 8.0, 9.0));
  EXPECT_EQ(normal, Vector3(0.0, 1.0, 0.0));
  EXPECT_TRUE(within.EndMouseoverComponent());
  EXPECT_TRUE(within.ProjectToScreen(Vector3(1.0, 2.0, 3.0), pixel));
  EXPECT_EQ(pixel, Vector2(1.0, 2.0));
}

// The picks of the library come to the same through the facade, in the plane and in space.
TEST(ZovRenderer, picks_what_the_library_picks) {
  FacadeRenderer facade;
  FacadeRenderer reference;  // whose facade is passed by
  Renderer& within = facade.korvane();
  Renderer& plain = reference.korvane();
  Random random;
  for (int round = 0; round < 300; ++round) {
    const auto mode = random.Coin() ? Renderer::RENDER_OVERLAY : Renderer::RENDER_PERSPECTIVE;
    const Vector2 point(random.Uniform(0.0, 100.0), random.Uniform(0.0, 80.0));
    ASSERT_TRUE(within.BeginSelection(point, VIEWPORT, ACamera(), mode));
    ASSERT_TRUE(plain.Renderer::BeginSelection(point, VIEWPORT, ACamera(), mode));
    for (int id = 0; id < 6; ++id) {
      const double size = mode == Renderer::RENDER_OVERLAY ? 40.0 : 2.0;
      const Vector3 at =
          random.Point(size) + (mode == Renderer::RENDER_OVERLAY ? Vector3(50.0, 40.0, 60.0) : Vector3());
      const auto x = static_cast<float>(at.x);
      const auto y = static_cast<float>(at.y);
      const auto z = static_cast<float>(at.z);
      const auto half = static_cast<float>(size / 2.0);
      const float quad[12] = {x - half, y - half, z, x - half, y + half, z,
                              x + half, y + half, z, x + half, y - half, z};
      ASSERT_TRUE(within.RenderSelectionGeometry(4, quad, id));
      ASSERT_TRUE(plain.Renderer::RenderSelectionGeometry(4, quad, id));
    }
    ASSERT_FALSE(within.EndSelection());
    ASSERT_EQ(within.GetSelection(), plain.Renderer::GetSelection());
    ASSERT_EQ(facade.get_selection(), within.GetSelection());
  }
  EXPECT_FALSE(
      facade.begin_selection(qmPoint2(), OUTSIDE_VIEWPORT, zovCameraParameters(), zovRenderMode::Scene));
  EXPECT_EQ(facade.get_selection(), -1);
}

// More vertices are named than there are numbers.
TEST(ZovRenderer, looks_at_no_vertex_beyond_the_numbers) {
  FacadeRenderer renderer;
  EXPECT_TRUE(renderer.begin_selection(qmPoint2(3.0, 3.0), OUTSIDE_VIEWPORT, zovCameraParameters(),
                                       zovRenderMode::Overlay));
  EXPECT_TRUE(renderer.render_selection_geometry(4000, {QUAD, 11}, 1));
  EXPECT_EQ(renderer.get_selection(), -1);
  EXPECT_TRUE(renderer.render_selection_geometry(4000, {QUAD, 12}, 2));
  EXPECT_EQ(renderer.get_selection(), 2);
  EXPECT_TRUE(renderer.render_selection_geometry(4, {}, 3));
  EXPECT_EQ(renderer.get_selection(), 2);
}

// ---- counting, texts, pointer ----

TEST(ZovRenderer, counts_textures_and_loads_them_late) {
  FacadeRenderer renderer;
  renderer.increment_texture_usage(zovTextureID::CubeHome);
  renderer.want_texture(zovTextureID::CubeHome, true);
  renderer.increment_texture_usage(zovTextureID::NoTexture);
  EXPECT_TRUE(renderer.loaded.empty());
  renderer.apply_texture_usage();
  EXPECT_EQ(renderer.loaded, std::vector<int>{7});
  renderer.decrement_texture_usage(zovTextureID::CubeHome);
  renderer.apply_texture_usage();
  EXPECT_TRUE(renderer.released.empty());
  renderer.want_texture(zovTextureID::CubeHome, false);
  renderer.apply_texture_usage();
  EXPECT_EQ(renderer.released, std::vector<int>{7});
}

TEST(ZovRenderer, queues_the_changes_of_the_pointer) {
  FacadeRenderer renderer;
  EXPECT_EQ(renderer.get_cursor_id(), zovCursorID::Arrow);
  renderer.queue_set_cursor_id(true);
  EXPECT_FALSE(renderer.set_cursor_id(zovCursorID::Pan));
  EXPECT_FALSE(renderer.set_cursor_id(zovCursorID::Zoom));
  EXPECT_EQ(renderer.CountOf("set_cursor_icon"), 0);
  renderer.queue_set_cursor_id(false);
  EXPECT_EQ(renderer.CountOf("set_cursor_icon"), 1);
  EXPECT_EQ(renderer.lastCursor, zovCursorID::Zoom);
  EXPECT_EQ(renderer.get_cursor_id(), zovCursorID::Zoom);
}

// One number of each range, and some of none.
TEST(ZovRenderer, makes_the_icon_of_a_text_by_its_range) {
  const struct {
    int id;
    const char* made;
  } rows[] = {
      {0, "create_tooltip"},
      {27, "create_tooltip"},
      {28, "create_message_hud"},
      {38, "create_message_hud"},
      {39, "create_pivot_label"},
      {42, "create_pivot_label"},
      {43, nullptr},
      {46, nullptr},
      {47, "create_tooltip_hud"},
      {57, "create_tooltip_hud"},
      {58, "create_miniwheel_label"},
      {66, "create_miniwheel_label"},
      {67, nullptr},
      {98, nullptr},
      {99, "create_message_hud"},
      {100, "create_message_hud"},
      {101, nullptr},
      {102, nullptr},
  };
  for (const auto& row : rows) {
    FacadeRenderer renderer;
    const auto icon = renderer.get_string_texture(static_cast<zovStringID>(row.id));
    EXPECT_EQ(icon != nullptr, row.made != nullptr) << row.id;
    if (row.made != nullptr) {
      EXPECT_EQ(renderer.CountOf(row.made), 1) << row.id;
      EXPECT_EQ(std::static_pointer_cast<OwnIcon>(icon)->text,
                qmString(L"text " + std::to_wstring(row.id), qmStringWcs));
    }
  }
}

TEST(ZovRenderer, shares_the_icon_of_a_text_until_nobody_wants_it) {
  const int before = OwnIcon::alive;
  FacadeRenderer renderer;
  auto icon = renderer.get_string_texture(zovStringID::Pivot);
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(renderer.want_string_texture(zovStringID::Pivot, true), icon);
  EXPECT_EQ(renderer.release_string_texture(zovStringID::Pivot), nullptr);
  EXPECT_EQ(renderer.want_string_texture(zovStringID::Pivot, false), nullptr);
  EXPECT_EQ(renderer.get_string_texture(zovStringID::Pivot), icon);  // taken again in time
  EXPECT_EQ(renderer.CountOf("create_pivot_label"), 1);
  renderer.release_string_texture(zovStringID::Pivot);
  renderer.apply_texture_usage();
  EXPECT_EQ(renderer.CountOf("destroy_icon"), 1);
  EXPECT_EQ(OwnIcon::alive, before + 1);
  icon = nullptr;
  EXPECT_EQ(OwnIcon::alive, before);
}

TEST(ZovRenderer, makes_icons_of_numbers_that_are_the_callers_alone) {
  const int before = OwnIcon::alive;
  {
    FacadeRenderer renderer;
    std::shared_ptr<zovDynamicIcon2D> icons[] = {
        renderer.create_message_hud_by_id(zovStringID::LookKeys),
        renderer.create_miniwheel_label_by_id(zovStringID::LookKeys),
        renderer.create_pivot_label_by_id(zovStringID::LookKeys),
        renderer.create_tooltip_by_id(zovStringID::LookKeys),
        renderer.create_tooltip_hud_by_id(zovStringID::LookKeys),
    };
    for (const char* name : {"create_message_hud", "create_miniwheel_label", "create_pivot_label",
                             "create_tooltip", "create_tooltip_hud"}) {
      EXPECT_EQ(renderer.CountOf(name), 1) << name;
    }
    for (auto& icon : icons) {
      ASSERT_NE(icon, nullptr);
      EXPECT_EQ(icon.use_count(), 1);
    }
    EXPECT_EQ(OwnIcon::alive, before + 5);
    for (auto& icon : icons) icon = nullptr;
    EXPECT_EQ(OwnIcon::alive, before);
    renderer.answersNull = true;
    EXPECT_EQ(renderer.create_tooltip_by_id(zovStringID::LookKeys), nullptr);
    EXPECT_EQ(renderer.get_string_texture(zovStringID::LookKeys), nullptr);
  }
}

// ---- who holds an icon ----

TEST(ZovRenderer, holds_an_icon_until_the_library_destroys_it) {
  const int before = OwnIcon::alive;
  FacadeRenderer renderer;
  DynamicIcon2D* icon = renderer.korvane().CreateTooltip(L"hello");
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(OwnIcon::alive, before + 1);
  icon->SetPosition(Vector2(3.0, 4.0));
  renderer.keeping = true;
  EXPECT_TRUE(renderer.korvane().Render(icon));
  EXPECT_EQ(renderer.lastDynamic->position(), qmPoint2(3.0, 4.0));
  EXPECT_EQ(std::static_pointer_cast<OwnIcon>(renderer.lastDynamic)->text, qmString(L"hello", qmStringWcs));
  renderer.lastDynamic = nullptr;
  EXPECT_TRUE(renderer.korvane().DestroyIcon(icon));
  EXPECT_EQ(icon, nullptr);
  EXPECT_EQ(renderer.CountOf("destroy_icon"), 1);
  EXPECT_EQ(OwnIcon::alive, before);
}

TEST(ZovRenderer, leaves_an_icon_to_a_host_that_keeps_it) {
  const int before = OwnIcon::alive;
  {
    FacadeRenderer renderer;
    renderer.keepsOwn = true;
    DynamicIcon2D* icon = renderer.korvane().CreateTooltip(L"hello");
    renderer.korvane().DestroyIcon(icon);
    EXPECT_EQ(OwnIcon::alive, before + 1);
    EXPECT_EQ(renderer.own[0]->width(), 20.0);
  }
  EXPECT_EQ(OwnIcon::alive, before);
}

TEST(ZovRenderer, keeps_an_icon_that_the_host_has_let_go_of) {
  const int before = OwnIcon::alive;
  FacadeRenderer renderer;
  renderer.keepsOwn = true;
  DynamicIcon2D* icon = renderer.korvane().CreateMessageHUD(L"hello");
  renderer.own.clear();
  EXPECT_EQ(icon->GetWidth(), 20.0);
  EXPECT_EQ(OwnIcon::alive, before + 1);
  renderer.korvane().DestroyIcon(icon);
  EXPECT_EQ(OwnIcon::alive, before);
}

TEST(ZovRenderer, passes_a_null_on) {
  FacadeRenderer renderer;
  renderer.answersNull = true;
  Renderer& within = renderer.korvane();
  EXPECT_EQ(within.CreateTooltip(L"hello"), nullptr);
  EXPECT_EQ(within.CreateSceneScreenshot(4, 3, ACamera()), nullptr);
  EXPECT_EQ(within.CreateImageData(Korvane::TEXTURE_CUBE_HOME), nullptr);
  DynamicIcon2D* none = nullptr;
  EXPECT_FALSE(within.DestroyIcon(none));
  EXPECT_EQ(renderer.CountOf("destroy_icon"), 0);
  EXPECT_FALSE(within.Render(none));
  EXPECT_FALSE(within.Render(static_cast<Korvane::ResourceIcon2D*>(nullptr)));
  EXPECT_FALSE(within.Render(static_cast<Korvane::ResourceIcon3D*>(nullptr)));
}

TEST(ZovRenderer, destroys_no_icon_that_is_not_the_hosts) {
  FacadeRenderer renderer;
  DynamicIcon2D stranger(3);
  DynamicIcon2D* icon = &stranger;
  EXPECT_FALSE(renderer.korvane().DestroyIcon(icon));
  EXPECT_EQ(icon, &stranger);
  EXPECT_EQ(renderer.CountOf("destroy_icon"), 0);
}

// A host that makes one icon for every text.
TEST(ZovRenderer, holds_an_icon_as_often_as_it_was_answered) {
  const int before = OwnIcon::alive;
  FacadeRenderer renderer;
  renderer.answersAlways = std::make_shared<OwnIcon>(77, qmString());
  DynamicIcon2D* first = renderer.korvane().CreateTooltip(L"a");
  DynamicIcon2D* second = renderer.korvane().CreateTooltip(L"b");
  EXPECT_EQ(first, second);
  renderer.answersAlways = nullptr;
  EXPECT_TRUE(renderer.korvane().DestroyIcon(first));
  EXPECT_EQ(OwnIcon::alive, before + 1);
  EXPECT_EQ(second->GetID(), 77);
  EXPECT_TRUE(renderer.korvane().DestroyIcon(second));
  EXPECT_EQ(OwnIcon::alive, before);
  EXPECT_EQ(renderer.destroyed, (std::vector<int>{77, 77}));
}

// One icon by pointers of which only one owns it, in either order.
TEST(ZovRenderer, holds_an_icon_by_each_pointer_that_was_answered) {
  const int before = OwnIcon::alive;
  for (const bool ownerFirst : {true, false}) {
    FacadeRenderer renderer;
    auto owner = std::make_shared<OwnIcon>(77, qmString());
    const std::shared_ptr<zovDynamicIcon2D> other(std::shared_ptr<void>(), owner.get());
    renderer.answersAlways = ownerFirst ? owner : other;
    DynamicIcon2D* first = renderer.korvane().CreateTooltip(L"a");
    renderer.answersAlways = ownerFirst ? other : owner;
    DynamicIcon2D* second = renderer.korvane().CreateTooltip(L"b");
    renderer.answersAlways = nullptr;
    owner = nullptr;
    ASSERT_EQ(OwnIcon::alive, before + 1);
    EXPECT_EQ(first->GetID(), 77);
    EXPECT_TRUE(renderer.korvane().DestroyIcon(first));
    ASSERT_EQ(OwnIcon::alive, before + 1);
    EXPECT_EQ(second->GetID(), 77);
    EXPECT_TRUE(renderer.korvane().DestroyIcon(second));
    EXPECT_EQ(OwnIcon::alive, before);
    EXPECT_EQ(renderer.destroyed, (std::vector<int>{77, 77}));
  }
}

// A second object of the host's stands for the icon within the first, or another's pointer owns it.
TEST(ZovRenderer, holds_an_icon_that_is_answered_in_two_ways_until_the_last_is_given_back) {
  const int before = OwnIcon::alive;
  struct Holder {
    OwnIcon icon = OwnIcon(77, qmString());
  };
  const auto inHolder = [] {
    const auto holder = std::make_shared<Holder>();
    return std::shared_ptr<zovDynamicIcon2D>(holder, &holder->icon);
  };
  const auto byItself = [] { return std::make_shared<OwnIcon>(77, qmString()); };
  const auto borrow = [](const std::shared_ptr<zovDynamicIcon2D>& owner) {
    return std::make_shared<zovDynamicIcon2D>(*zovIconUtils::unwrap_icon(owner));
  };
  const auto shareAlone = [](const std::shared_ptr<zovDynamicIcon2D>& owner) {
    return std::shared_ptr<zovDynamicIcon2D>(std::shared_ptr<void>(), owner.get());
  };
  using Shared = std::shared_ptr<zovDynamicIcon2D>;
  for (const std::function<Shared()>& make : {std::function<Shared()>(inHolder), {byItself}}) {
    for (const std::function<Shared(const Shared&)>& another :
         {std::function<Shared(const Shared&)>(borrow), {shareAlone}}) {
      for (const bool ownerFirst : {true, false}) {
        FacadeRenderer renderer;
        Shared owner = make();
        Shared second = another(owner);
        renderer.answersAlways = ownerFirst ? owner : second;
        DynamicIcon2D* a = renderer.korvane().CreateTooltip(L"a");
        renderer.answersAlways = ownerFirst ? second : owner;
        DynamicIcon2D* b = renderer.korvane().CreateTooltip(L"b");
        EXPECT_EQ(a, b);
        renderer.answersAlways = owner = second = nullptr;
        ASSERT_EQ(OwnIcon::alive, before + 1);
        EXPECT_TRUE(renderer.korvane().DestroyIcon(a));
        ASSERT_EQ(OwnIcon::alive, before + 1);
        EXPECT_EQ(b->GetID(), 77);
        EXPECT_TRUE(renderer.korvane().DestroyIcon(b));
        EXPECT_EQ(OwnIcon::alive, before);
      }
    }
  }
}

// What the caller gets is what was answered to it.
TEST(ZovRenderer, gives_the_caller_of_a_number_the_pointer_that_was_answered_to_it) {
  FacadeRenderer renderer;
  auto owner = std::make_shared<OwnIcon>(77, qmString());
  renderer.answersAlways = {std::shared_ptr<void>(), owner.get()};
  DynamicIcon2D* held = renderer.korvane().CreateTooltip(L"a");
  renderer.answersAlways = owner;
  const std::shared_ptr<zovDynamicIcon2D> mine = renderer.create_tooltip_by_id(zovStringID::Pivot);
  renderer.answersAlways = owner = nullptr;
  ASSERT_EQ(mine.use_count(), 2);  // with what the renderer keeps for the first
  EXPECT_TRUE(renderer.korvane().DestroyIcon(held));
  EXPECT_EQ(mine.use_count(), 1);
  EXPECT_EQ(mine->id(), 77);
}

// The same, for texts that are shared by their numbers.
TEST(ZovRenderer, holds_an_icon_as_often_as_a_text_of_it_is_wanted) {
  const int before = OwnIcon::alive;
  FacadeRenderer renderer;
  renderer.answersAlways = std::make_shared<OwnIcon>(77, qmString());
  const DynamicIcon2D* const within = zovIconUtils::unwrap_icon(renderer.answersAlways);
  EXPECT_EQ(renderer.get_string_texture(zovStringID::Pivot), renderer.answersAlways);
  EXPECT_EQ(renderer.get_string_texture(zovStringID::LookKeys), renderer.answersAlways);
  renderer.answersAlways = nullptr;
  renderer.release_string_texture(zovStringID::Pivot);
  renderer.apply_texture_usage();
  EXPECT_EQ(renderer.destroyed, std::vector<int>{77});
  EXPECT_EQ(OwnIcon::alive, before + 1);
  EXPECT_EQ(zovIconUtils::unwrap_icon(renderer.get_string_texture(zovStringID::LookKeys)), within);
  renderer.release_string_texture(zovStringID::LookKeys);
  renderer.release_string_texture(zovStringID::LookKeys);
  renderer.apply_texture_usage();
  EXPECT_EQ(renderer.destroyed, (std::vector<int>{77, 77}));
  EXPECT_EQ(OwnIcon::alive, before);
}

TEST(ZovRenderer, lets_go_at_its_end_of_what_was_not_destroyed) {
  const int before = OwnIcon::alive;
  {
    FacadeRenderer renderer;
    EXPECT_NE(renderer.korvane().CreateTooltip(L"a"), nullptr);
    EXPECT_NE(renderer.get_string_texture(zovStringID::Pivot), nullptr);
    EXPECT_EQ(OwnIcon::alive, before + 2);
  }
  EXPECT_EQ(OwnIcon::alive, before);
}

// A host lets its last pointer go, and clears the icons that it made, while it is told to destroy one.
TEST(ZovRenderer, is_not_confused_by_a_host_that_clears_up_while_an_icon_goes) {
  class Clearing : public FacadeRenderer {
   public:
    bool destroy_icon(const Icon& icon) override {
      own.clear();
      EXPECT_EQ(icon->width(), 20.0);
      korvane().DestroyIcon(other);
      return FacadeRenderer::destroy_icon(icon);
    }
    DynamicIcon2D* other = nullptr;
  };
  const int before = OwnIcon::alive;
  Clearing renderer;
  renderer.keepsOwn = true;
  DynamicIcon2D* icon = renderer.korvane().CreateTooltip(L"a");
  renderer.other = renderer.korvane().CreateTooltip(L"b");
  EXPECT_TRUE(renderer.korvane().DestroyIcon(icon));
  EXPECT_EQ(renderer.other, nullptr);
  EXPECT_EQ(OwnIcon::alive, before);
  EXPECT_EQ(renderer.destroyed, (std::vector<int>{2, 1}));
}

// What the library has made itself is lent for the call. A host that keeps it keeps a copy.
TEST(ZovRenderer, lets_a_host_keep_what_is_the_librarys_own) {
  FacadeRenderer renderer;
  renderer.keeping = true;
  {
    Korvane::ResourceIcon2D resource(Korvane::TEXTURE_CUBE_HOME);
    resource.SetPosition(Vector2(3.0, 4.0));
    Korvane::ResourceIcon3D model(Korvane::MODEL_PIVOT_SHADOW);
    model.SetSize(7.0);
    DynamicIcon2D dynamic(9);
    dynamic.SetFlip(true);
    EXPECT_TRUE(renderer.korvane().Render(&resource));
    EXPECT_TRUE(renderer.korvane().Render(&model));
    EXPECT_TRUE(renderer.korvane().Render(&dynamic));
    resource.SetPosition(Vector2(9.0, 9.0));
    model.SetSize(9.0);
    dynamic.SetFlip(false);
  }
  EXPECT_EQ(renderer.lastResource->texture_resource_id(), zovTextureID::CubeHome);
  EXPECT_EQ(renderer.lastResource->position(), qmPoint2(3.0, 4.0));
  EXPECT_EQ(renderer.lastIcon3D->model_resource_id(), zovModelID::PivotShadow);
  EXPECT_EQ(renderer.lastIcon3D->size(), 7.0);
  EXPECT_EQ(renderer.lastDynamic->id(), 9);
  EXPECT_TRUE(renderer.lastDynamic->flip());
}

// A host that is shown an icon may let the library destroy it in that very call. What it has kept then has
// the number of the icon, and nothing else of it.
TEST(ZovRenderer, lets_a_host_keep_what_goes_while_it_is_shown) {
  class Letting : public FacadeRenderer {
   public:
    bool render(const std::shared_ptr<zovResourceIcon3D>& icon) override {
      model = nullptr;
      return FacadeRenderer::render(icon);
    }
    bool render(const Icon& icon) override {
      dynamic = nullptr;
      return FacadeRenderer::render(icon);
    }
    bool render(const std::shared_ptr<zovResourceIcon2D>& icon) override {
      resource = nullptr;
      return FacadeRenderer::render(icon);
    }
    std::unique_ptr<Korvane::ResourceIcon3D> model =
        std::make_unique<Korvane::ResourceIcon3D>(Korvane::MODEL_PIVOT_SHADOW);
    std::unique_ptr<DynamicIcon2D> dynamic = std::make_unique<DynamicIcon2D>(9);
    std::unique_ptr<Korvane::ResourceIcon2D> resource =
        std::make_unique<Korvane::ResourceIcon2D>(Korvane::TEXTURE_CUBE_HOME);
  };
  Letting renderer;
  renderer.keeping = true;
  renderer.model->SetSize(7.0);
  renderer.dynamic->SetFlip(true);
  renderer.resource->SetPosition(Vector2(3.0, 4.0));
  EXPECT_TRUE(renderer.korvane().Render(renderer.model.get()));
  EXPECT_TRUE(renderer.korvane().Render(renderer.dynamic.get()));
  EXPECT_TRUE(renderer.korvane().Render(renderer.resource.get()));
  EXPECT_EQ(renderer.lastIcon3D->model_resource_id(), zovModelID::PivotShadow);
  EXPECT_EQ(renderer.lastIcon3D->size(), 0.0);
  EXPECT_EQ(renderer.lastDynamic->id(), 9);
  EXPECT_FALSE(renderer.lastDynamic->flip());
  EXPECT_EQ(renderer.lastResource->texture_resource_id(), zovTextureID::CubeHome);
  EXPECT_EQ(renderer.lastResource->position(), qmPoint2());
}

// What the host makes of a picture while it draws is seen by the library.
TEST(ZovRenderer, draws_the_librarys_own_icon_itself) {
  class Shrinking : public FacadeRenderer {
   public:
    bool render(const std::shared_ptr<zovResourceIcon2D>& icon) override {
      icon->set_size(1.0, 2.0);
      return true;
    }
    using FacadeRenderer::render;
  };
  Shrinking renderer;
  Korvane::ResourceIcon2D resource(Korvane::TEXTURE_CUBE_HOME);
  EXPECT_TRUE(renderer.korvane().Render(&resource));
  EXPECT_EQ(resource.GetHeight(), 2.0);
}

TEST(ZovRenderer, gives_a_copy_of_a_picture_that_the_library_deletes) {
  const unsigned char pixels[8] = {255, 0, 0, 255, 0, 255, 0, 255};
  FacadeRenderer renderer;
  renderer.image = std::make_shared<zovPixelIcon2D>(2, 1, pixels, zovPixelFormat::Rgba);
  renderer.image->set_bounds(qmBox2(qmPoint2(0.0, 0.0), qmPoint2(2.0, 1.0)));
  const std::unique_ptr<Korvane::PixelIcon2D> image(
      renderer.korvane().CreateImageData(Korvane::TEXTURE_CUBE_HOME));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->GetImageWidth(), 2);
  EXPECT_EQ(image->GetPixelFormat(), Korvane::PixelIcon2D::PIXEL_FORMAT_RGBA);
  EXPECT_EQ(image->GetBounds().halfExtent, Vector2(1.0, 0.5));
  EXPECT_NE(image->GetImagePixels(), renderer.image->image_pixels());
  EXPECT_EQ(image->GetImagePixels()[5], 255);
  EXPECT_EQ(renderer.image.use_count(), 1);
}

TEST(ZovRenderer, tells_each_text_and_number_of_a_label) {
  FacadeRenderer renderer;
  Renderer& within = renderer.korvane();
  EXPECT_NE(within.CreateTextLabel(L"label", 12.5F, 30, 40), nullptr);
  EXPECT_EQ(renderer.lastNumbers, (std::vector<int>{1250, 30, 40}));
  EXPECT_NE(within.CreateUCSMenuLabel(L"one", L"two", true, 50), nullptr);
  EXPECT_EQ(renderer.lastNumbers, (std::vector<int>{1, 50, 1}));
  EXPECT_NE(within.CreateUCSMenuLabel(L"one", nullptr, false, 60), nullptr);
  EXPECT_EQ(renderer.lastNumbers, (std::vector<int>{0, 60, 0}));
  EXPECT_NE(within.CreateSceneScreenshot(4, 3, ACamera()), nullptr);
  EXPECT_EQ(renderer.lastCamera.eye(), qmPoint3(0.0, 0.0, 5.0));
}

// A host that counts by name allocates, so it does not count here.
TEST(ZovRenderer, allocates_nothing_in_a_pass) {
  class Silent : public FacadeRenderer {
   public:
    bool render_geometry(unsigned count, qiIterator<float> vertices, qiIterator<float>,
                         const zovMaterialParameters&) override {
      while (vertices.has_next()) sum += vertices.next();
      return count > 0;
    }
    float sum = 0.0F;
  };
  Silent renderer;
  renderer.counting = false;
  Renderer& within = renderer.korvane();
  Renderer::MaterialParams material;
  DynamicIcon2D* const icon = within.CreateTooltip(L"hello");
  const auto pass = [&] {
    ASSERT_TRUE(within.BeginRender(VIEWPORT, ACamera(), Renderer::RENDER_OVERLAY));
    within.RenderGeometry(4, QUAD, QUAD, &material);
    within.Render(icon);
    within.EndRender();
    ASSERT_TRUE(within.BeginSelection(Vector2(3.0, 3.0), VIEWPORT, ACamera(), Renderer::RENDER_OVERLAY));
    within.RenderSelectionGeometry(4, QUAD, 1);
    within.EndSelection();
  };
  pass();
  const AllocationCounter counter;
  for (int i = 0; i < 10; ++i) pass();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(renderer.sum, 0.0F);
}

}  // namespace
