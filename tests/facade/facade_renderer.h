#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zov/zov_renderer.h"

/// An icon of a host's own class; how many there are shows what is destroyed, and how often.
class OwnIcon : public zovDynamicIcon2D {
 public:
  OwnIcon(int id, qmString shown) : zovDynamicIcon2D(id), text(std::move(shown)) { ++alive; }
  ~OwnIcon() override { --alive; }

  qmString text;
  inline static int alive = 0;
};

/// A host's renderer that draws nothing, overrides everything, and counts the calls by name. What has a body
/// is left to the library.
class FacadeRenderer : public zovRenderer {
 public:
  using Icon = std::shared_ptr<zovDynamicIcon2D>;

  bool create() override { return Count("create"); }
  bool destroy() override { return Count("destroy"); }
  void apply_texture_usage() override {
    Count("apply_texture_usage");
    zovRenderer::apply_texture_usage();
  }
  bool begin_render(const qmBox2& viewport, const zovCameraParameters& camera, zovRenderMode mode) override {
    lastBox = viewport;
    lastCamera = camera;
    lastMode = mode;
    return Count("begin_render");
  }
  bool end_render() override { return Count("end_render"); }
  bool render_geometry(unsigned vertex_count, qiIterator<float> vertices, qiIterator<float> tex_coords,
                       const zovMaterialParameters& material) override {
    lastVertexCount = vertex_count;
    lastMaterial = material;
    lastVertices.assign(vertices.begin(), vertices.end());
    lastTexCoords.assign(tex_coords.begin(), tex_coords.end());
    return Count("render_geometry");
  }
  bool begin_selection(const qmPoint2& point, const qmBox2& viewport, const zovCameraParameters& camera,
                       zovRenderMode mode) override {
    lastPoint = point;
    lastBox = viewport;
    lastCamera = camera;
    lastMode = mode;
    Count("begin_selection");
    return zovRenderer::begin_selection(point, viewport, camera, mode);
  }
  bool end_selection() override { return Count("end_selection"), zovRenderer::end_selection(); }
  bool render_selection_geometry(unsigned vertex_count, qiIterator<float> vertices, int id) override {
    Count("render_selection_geometry");
    return zovRenderer::render_selection_geometry(vertex_count, vertices, id);
  }
  int get_selection() const override { return Count("get_selection"), zovRenderer::get_selection(); }
  bool render(const std::shared_ptr<zovResourceIcon3D>& icon) override {
    lastIcon3D = keeping ? icon : nullptr;
    return Count("render 3D");
  }
  bool render(const Icon& icon) override {
    lastDynamic = keeping ? icon : nullptr;
    lastAddress = icon.get();
    return Count("render dynamic");
  }
  bool render(const std::shared_ptr<zovResourceIcon2D>& icon) override {
    lastResource = keeping ? icon : nullptr;
    return Count("render resource");
  }
  qmString load_string_resource(zovStringID id) override {
    Count("load_string_resource");
    return {L"text " + std::to_wstring(static_cast<int>(id)), qmStringWcs};
  }
  std::shared_ptr<zovPixelIcon2D> create_image_data(zovTextureID) override {
    Count("create_image_data");
    return makeImage ? makeImage() : image;
  }
  Icon create_scene_screenshot(int width, int height, const zovCameraParameters& camera) override {
    lastCamera = camera;
    return Make("create_scene_screenshot", {std::to_wstring(width * height), qmStringWcs});
  }
  Icon create_text_label(const qmString& text, float size, int width, int height) override {
    lastNumbers = {static_cast<int>(size * 100.0F), width, height};
    return Make("create_text_label", text);
  }
  Icon create_tooltip(const qmString& text) override { return Make("create_tooltip", text); }
  Icon create_tooltip_hud(const qmString& text) override { return Make("create_tooltip_hud", text); }
  Icon create_message_hud(const qmString& text) override { return Make("create_message_hud", text); }
  Icon create_pivot_label(const qmString& text) override { return Make("create_pivot_label", text); }
  Icon create_miniwheel_label(const qmString& text) override { return Make("create_miniwheel_label", text); }
  Icon create_ucs_menu_label(const qmString& active_name, const qmString& default_name, bool highlighted,
                             int width) override {
    lastNumbers = {highlighted ? 1 : 0, width, default_name.empty() ? 0 : 1};
    return Make("create_ucs_menu_label", active_name);
  }
  bool destroy_icon(const Icon& icon) override {
    destroyed.push_back(icon->id());
    return Count("destroy_icon");
  }
  bool query_ray_scene_intersection(const qmPoint3& origin, const qmUnitVec3& direction,
                                    qmPoint3& hit) override {
    Count("query_ray_scene_intersection");
    lastOrigin = origin;
    lastDirection = direction;
    hit = sceneHit;
    return hasScene;
  }
  bool query_mouse_ray_scene_intersection(int x, int y, const qmPoint3& origin, const qmUnitVec3& direction,
                                          qmPoint3& hit) override {
    Count("query_mouse_ray_scene_intersection");
    return zovRenderer::query_mouse_ray_scene_intersection(x, y, origin, direction, hit);
  }
  bool query_screen_rect_ray_scene_intersection(int left, int bottom, int right, int top,
                                                qmPoint3& hit) override {
    Count("query_screen_rect_ray_scene_intersection");
    lastNumbers = {left, bottom, right, top};
    if (zovRenderer::query_screen_rect_ray_scene_intersection(left, bottom, right, top, hit)) return true;
    hit = sceneHit;
    return hasScene;
  }
  bool begin_mouseover_component(bool highlight_faces) override {
    Count("begin_mouseover_component");
    return zovRenderer::begin_mouseover_component(highlight_faces) || hasScene;
  }
  bool get_mouseover_component(const qmPoint2& pixel, qmPoint3& point, qmUnitVec3& normal) override {
    Count("get_mouseover_component");
    lastPoint = pixel;
    if (zovRenderer::get_mouseover_component(pixel, point, normal)) return true;
    point = sceneHit;
    normal = qmUnitVec3(qmVector3(0.0, 5.0, 0.0));
    return hasScene;
  }
  bool end_mouseover_component() override {
    Count("end_mouseover_component");
    return zovRenderer::end_mouseover_component() || hasScene;
  }
  bool set_cursor_id(zovCursorID id) override {
    return Count("set_cursor_id"), zovRenderer::set_cursor_id(id);
  }
  bool set_cursor_position(int x, int y) override {
    lastNumbers = {x, y};
    return Count("set_cursor_position");
  }
  bool open_menu(zovMenuID id) override {
    lastNumbers = {static_cast<int>(id)};
    return Count("open_menu");
  }
  bool open_ucs_menu(int x, int y) override {
    lastNumbers = {x, y};
    return Count("open_ucs_menu");
  }
  bool project_to_screen(const qmPoint3& point, qmPoint2& pixel) override {
    Count("project_to_screen");
    if (zovRenderer::project_to_screen(point, pixel)) return true;
    pixel = qmPoint2(point.x(), point.y());
    return hasScene;
  }
  bool load_texture(zovTextureID id) override {
    loaded.push_back(static_cast<int>(id));
    return Count("load_texture");
  }
  void release_texture(zovTextureID id) override {
    released.push_back(static_cast<int>(id));
    Count("release_texture");
  }
  bool set_cursor_icon(zovCursorID id) override {
    lastCursor = id;
    return Count("set_cursor_icon");
  }

  int CountOf(const std::string& name) const {
    const auto found = calls.find(name);
    return found != calls.end() ? found->second : 0;
  }

  mutable std::map<std::string, int> calls;
  qmBox2 lastBox = qmBox2(qmPoint2(), qmPoint2());
  zovCameraParameters lastCamera;
  zovRenderMode lastMode = zovRenderMode::Overlay;
  unsigned lastVertexCount = 0;
  std::vector<float> lastVertices;
  std::vector<float> lastTexCoords;
  zovMaterialParameters lastMaterial;
  qmPoint2 lastPoint;
  qmPoint3 lastOrigin;
  qmUnitVec3 lastDirection;
  zovCursorID lastCursor = zovCursorID::NoCursor;
  std::vector<int> lastNumbers;
  std::vector<int> loaded;
  std::vector<int> released;
  std::vector<int> destroyed;
  std::function<void(const std::string&)> whenCalled;

  bool keeping = false;  // what is drawn is kept
  std::shared_ptr<zovResourceIcon3D> lastIcon3D;
  Icon lastDynamic;
  std::shared_ptr<zovResourceIcon2D> lastResource;
  const zovDynamicIcon2D* lastAddress = nullptr;

  bool answersNull = false;  // to everything that makes an icon
  Icon answersAlways;        // the same object each time
  std::vector<Icon> own;     // what the host keeps of what it made, while it keeps
  bool keepsOwn = false;
  std::shared_ptr<zovPixelIcon2D> image;
  std::function<std::shared_ptr<zovPixelIcon2D>()> makeImage;
  bool hasScene = false;
  qmPoint3 sceneHit = qmPoint3(1.0, 2.0, 3.0);

 private:
  // Names are short of what is kept on the heap only where that is wanted; see the tests of allocations.
  bool Count(const char* name) const {
    if (whenCalled) whenCalled(name);
    if (counting) ++calls[name];
    return true;
  }
  Icon Make(const char* name, const qmString& text) {
    Count(name);
    if (answersNull) return nullptr;
    if (answersAlways != nullptr) return answersAlways;
    auto icon = std::make_shared<OwnIcon>(++made, text);
    icon->set_size(20.0, 10.0);
    if (keepsOwn) own.push_back(icon);
    return icon;
  }

  int made = 0;

 public:
  bool counting = true;
};
