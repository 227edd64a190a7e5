// A host that overrides no more of a renderer than it must.
#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/renderer.h"
#include "zov/zov_renderer.h"

namespace {

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::Renderer;
using Korvane::Vector2;
using Korvane::Vector3;

using Names = std::vector<std::string>;
using Answers = std::vector<double>;

// Notes what a default may ask it.
class MinimalRenderer : public zovRenderer {
 public:
  using Icon = std::shared_ptr<zovDynamicIcon2D>;

  bool create() override { return true; }
  bool destroy() override { return true; }
  bool begin_render(const qmBox2&, const zovCameraParameters&, zovRenderMode) override { return true; }
  bool end_render() override { return true; }
  bool render_geometry(unsigned, qiIterator<float>, qiIterator<float>,
                       const zovMaterialParameters&) override {
    return true;
  }
  bool render(const std::shared_ptr<zovResourceIcon3D>&) override { return true; }
  bool render(const Icon&) override { return true; }
  bool render(const std::shared_ptr<zovResourceIcon2D>&) override { return true; }
  qmString load_string_resource(zovStringID) override { return {}; }
  std::shared_ptr<zovPixelIcon2D> create_image_data(zovTextureID) override { return nullptr; }
  Icon create_scene_screenshot(int, int, const zovCameraParameters&) override { return nullptr; }
  Icon create_text_label(const qmString&, float, int, int) override { return nullptr; }
  Icon create_tooltip(const qmString&) override { return nullptr; }
  Icon create_tooltip_hud(const qmString&) override { return nullptr; }
  Icon create_message_hud(const qmString&) override { return nullptr; }
  Icon create_pivot_label(const qmString&) override { return nullptr; }
  Icon create_miniwheel_label(const qmString&) override { return nullptr; }
  Icon create_ucs_menu_label(const qmString&, const qmString&, bool, int) override { return nullptr; }
  bool destroy_icon(const Icon&) override { return true; }
  bool query_ray_scene_intersection(const qmPoint3& origin, const qmUnitVec3& direction,
                                    qmPoint3& hit) override {
    asked.push_back("ray from " + std::to_string(static_cast<int>(origin.x())) + " along y " +
                    std::to_string(static_cast<int>(direction.y())));
    hit = qmPoint3(4.0, 5.0, 6.0);
    return true;
  }
  bool set_cursor_position(int, int) override { return true; }
  bool open_menu(zovMenuID) override { return true; }
  bool open_ucs_menu(int, int) override { return true; }

  Names asked;

 protected:
  bool load_texture(zovTextureID id) override { return Ask("load", static_cast<int>(id)); }
  void release_texture(zovTextureID id) override { Ask("release", static_cast<int>(id)); }
  bool set_cursor_icon(zovCursorID id) override { return Ask("cursor", static_cast<int>(id)); }

 private:
  bool Ask(const char* what, int number) {
    asked.push_back(what + (" " + std::to_string(number)));
    return true;
  }
};

const float QUAD[12] = {0, 0, 0, 0, 9, 0, 9, 9, 0, 9, 0, 0};
const Box2 VIEWPORT(Vector2(50.0, 40.0), Vector2(50.0, 40.0));
const qmBox2 OUTSIDE_VIEWPORT(qmPoint2(0.0, 0.0), qmPoint2(100.0, 80.0));

// What an operation answers and writes, and what it asks the host meanwhile.
struct Way {
  const char* name;
  std::function<Answers(MinimalRenderer&)> outside;
  std::function<Answers(Renderer&)> inside;
  Answers answers;
  Names asked;
};

const Way TWELVE[] = {
    {"apply_texture_usage",
     [](MinimalRenderer& m) {
       m.increment_texture_usage(zovTextureID::CubeHome);
       m.apply_texture_usage();
       m.decrement_texture_usage(zovTextureID::CubeHome);
       m.apply_texture_usage();
       return Answers();
     },
     [](Renderer& r) {
       r.IncrementTextureUsage(Korvane::TEXTURE_CUBE_HOME);
       r.ApplyTextureUsage();
       r.DecrementTextureUsage(Korvane::TEXTURE_CUBE_HOME);
       r.ApplyTextureUsage();
       return Answers();
     },
     {},
     {"load 7", "release 7"}},
    {"begin_selection",
     [](MinimalRenderer& m) {
       const auto begin = [&](zovRenderMode mode) {
         return m.begin_selection(qmPoint2(3.0, 3.0), OUTSIDE_VIEWPORT, zovCameraParameters(), mode);
       };
       return Answers{begin(zovRenderMode::Overlay) ? 1.0 : 0.0, begin(zovRenderMode::Scene) ? 1.0 : 0.0};
     },
     [](Renderer& r) {
       const auto begin = [&](Renderer::RenderMode mode) {
         return r.BeginSelection(Vector2(3.0, 3.0), VIEWPORT, CameraParameters(), mode);
       };
       return Answers{begin(Renderer::RENDER_OVERLAY) ? 1.0 : 0.0, begin(Renderer::RENDER_SCENE) ? 1.0 : 0.0};
     },
     {1.0, 0.0},
     {}},
    {"end_selection",
     [](MinimalRenderer& m) { return Answers{m.end_selection() ? 1.0 : 0.0}; },
     [](Renderer& r) { return Answers{r.EndSelection() ? 1.0 : 0.0}; },
     {0.0},
     {}},
    {"render_selection_geometry",
     [](MinimalRenderer& m) {
       return Answers{m.render_selection_geometry(4, {QUAD, 12}, 3) ? 1.0 : 0.0};
     },
     [](Renderer& r) { return Answers{r.RenderSelectionGeometry(4, QUAD, 3) ? 1.0 : 0.0}; },
     {1.0},
     {}},
    {"get_selection",
     [](MinimalRenderer& m) {
       Answers answers{static_cast<double>(m.get_selection())};
       for (const double x : {3.0, 30.0}) {
         EXPECT_TRUE(m.begin_selection(qmPoint2(x, 3.0), OUTSIDE_VIEWPORT, zovCameraParameters(),
                                       zovRenderMode::Overlay));
         EXPECT_TRUE(m.render_selection_geometry(4, {QUAD, 12}, 3));
         answers.push_back(m.get_selection());
       }
       return answers;
     },
     [](Renderer& r) {
       Answers answers{static_cast<double>(r.GetSelection())};
       for (const double x : {3.0, 30.0}) {
         EXPECT_TRUE(
             r.BeginSelection(Vector2(x, 3.0), VIEWPORT, CameraParameters(), Renderer::RENDER_OVERLAY));
         EXPECT_TRUE(r.RenderSelectionGeometry(4, QUAD, 3));
         answers.push_back(r.GetSelection());
       }
       return answers;
     },
     {-1.0, 3.0, -1.0},
     {}},
    {"query_mouse_ray_scene_intersection",
     [](MinimalRenderer& m) {
       qmPoint3 hit;
       const bool isHit = m.query_mouse_ray_scene_intersection(1, 2, qmPoint3(7.0, 0.0, 0.0),
                                                               qmUnitVec3(qmVector3(0.0, 1.0, 0.0)), hit);
       return Answers{isHit ? 1.0 : 0.0, hit.x(), hit.y(), hit.z()};
     },
     [](Renderer& r) {
       Vector3 hit;
       const bool isHit =
           r.QueryMouseRaySceneIntersection(1, 2, Vector3(7.0, 0.0, 0.0), Vector3(0.0, 1.0, 0.0), hit);
       return Answers{isHit ? 1.0 : 0.0, hit.x, hit.y, hit.z};
     },
     {1.0, 4.0, 5.0, 6.0},
     {"ray from 7 along y 1"}},
    {"query_screen_rect_ray_scene_intersection",
     [](MinimalRenderer& m) {
       qmPoint3 hit(1.0, 2.0, 3.0);
       const bool isHit = m.query_screen_rect_ray_scene_intersection(1, 2, 3, 4, hit);
       return Answers{isHit ? 1.0 : 0.0, hit.x(), hit.y(), hit.z()};
     },
     [](Renderer& r) {
       Vector3 hit(1.0, 2.0, 3.0);
       const bool isHit = r.QueryScreenRectRaySceneIntersection(1, 2, 3, 4, hit);
       return Answers{isHit ? 1.0 : 0.0, hit.x, hit.y, hit.z};
     },
     {0.0, 1.0, 2.0, 3.0},
     {}},
    {"begin_mouseover_component",
     [](MinimalRenderer& m) { return Answers{m.begin_mouseover_component(true) ? 1.0 : 0.0}; },
     [](Renderer& r) { return Answers{r.BeginMouseoverComponent(true) ? 1.0 : 0.0}; },
     {0.0},
     {}},
    {"get_mouseover_component",
     [](MinimalRenderer& m) {
       qmPoint3 point(1.0, 2.0, 3.0);
       qmUnitVec3 normal(qmVector3(0.0, 0.0, 9.0));
       const bool isThere = m.get_mouseover_component(qmPoint2(5.0, 6.0), point, normal);
       return Answers{isThere ? 1.0 : 0.0, point.x(),  point.y(), point.z(),
                      normal.x(),          normal.y(), normal.z()};
     },
     [](Renderer& r) {
       Vector3 point(1.0, 2.0, 3.0);
       Vector3 normal(0.0, 0.0, 1.0);
       const bool isThere = r.GetMouseoverComponent(Vector2(5.0, 6.0), point, normal);
       return Answers{isThere ? 1.0 : 0.0, point.x, point.y, point.z, normal.x, normal.y, normal.z};
     },
     {0.0, 1.0, 2.0, 3.0, 0.0, 0.0, 1.0},
     {}},
    {"end_mouseover_component",
     [](MinimalRenderer& m) { return Answers{m.end_mouseover_component() ? 1.0 : 0.0}; },
     [](Renderer& r) { return Answers{r.EndMouseoverComponent() ? 1.0 : 0.0}; },
     {0.0},
     {}},
    {"set_cursor_id",
     [](MinimalRenderer& m) {
       const bool isSet = m.set_cursor_id(zovCursorID::Pan);
       return Answers{isSet ? 1.0 : 0.0, static_cast<double>(m.get_cursor_id())};
     },
     [](Renderer& r) {
       const bool isSet = r.SetCursorID(Korvane::CURSOR_PAN);
       return Answers{isSet ? 1.0 : 0.0, static_cast<double>(r.GetCursorID())};
     },
     {1.0, 3.0},
     {"cursor 3"}},
    {"project_to_screen",
     [](MinimalRenderer& m) {
       qmPoint2 pixel(8.0, 9.0);
       const bool isThere = m.project_to_screen(qmPoint3(1.0, 2.0, 3.0), pixel);
       return Answers{isThere ? 1.0 : 0.0, pixel.x(), pixel.y()};
     },
     [](Renderer& r) {
       Vector2 pixel(8.0, 9.0);
       const bool isThere = r.ProjectToScreen(Vector3(1.0, 2.0, 3.0), pixel);
       return Answers{isThere ? 1.0 : 0.0, pixel.x, pixel.y};
     },
     {0.0, 8.0, 9.0},
     {}},
};

TEST(ZovRendererDefaults, answer_from_either_side_as_the_library_does) {
  for (const Way& way : TWELVE) {
    MinimalRenderer outside;
    EXPECT_EQ(way.outside(outside), way.answers) << way.name << " from outside";
    EXPECT_EQ(outside.asked, way.asked) << way.name << " from outside";
    MinimalRenderer inside;
    EXPECT_EQ(way.inside(inside.korvane()), way.answers) << way.name << " from within";
    EXPECT_EQ(inside.asked, way.asked) << way.name << " from within";
  }
}

}  // namespace
