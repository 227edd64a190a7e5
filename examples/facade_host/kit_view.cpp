// The kit's renderer as a renderer of the facade. A host with graphics of its own writes the same operations,
// and draws in them.
#include "kit_view.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "korvane/pixel_icon2d.h"
#include "zov/zov_geom_utils.h"
#include "zov/zov_icon_utils.h"
#include "zov/zov_string_converter.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/image.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/resource_pack.h"
#include "zovhost/window.h"

namespace {

using Utils = zovGeomUtils;
using Icon = std::shared_ptr<zovDynamicIcon2D>;

const wchar_t* Wide(const qmString& text) { return zovStringConverter::to_KORVANE_CHAR_T(text); }

// The kit's, with the operations open that only the base class calls.
class OpenRenderer : public zovhost::GLRenderer {
 public:
  using GLRenderer::LoadTexture;
  using GLRenderer::ReleaseTexture;
  using GLRenderer::SetCursorIcon;
};

class KitRenderer : public zovRenderer {
 public:
  explicit KitRenderer(OpenRenderer& renderer) : kit(renderer) {}

  bool create() override { return kit.Create(); }
  bool destroy() override { return kit.Destroy(); }

  bool begin_render(const qmBox2& viewport, const zovCameraParameters& camera, zovRenderMode mode) override {
    return kit.BeginRender(Utils::qmbox_to_kvbox(viewport), camera.korvane(),
                           static_cast<Korvane::Renderer::RenderMode>(mode));
  }
  bool end_render() override { return kit.EndRender(); }
  bool render_geometry(unsigned vertex_count, qiIterator<float> vertices, qiIterator<float> tex_coords,
                       const zovMaterialParameters& material) override {
    return kit.RenderGeometry(vertex_count, vertices.data(), tex_coords.data(), &material.korvane());
  }
  bool render(const std::shared_ptr<zovResourceIcon3D>& icon) override {
    return kit.Render(zovIconUtils::unwrap_icon(icon));
  }
  bool render(const Icon& icon) override { return kit.Render(zovIconUtils::unwrap_icon(icon)); }
  bool render(const std::shared_ptr<zovResourceIcon2D>& icon) override {
    return kit.Render(zovIconUtils::unwrap_icon(icon));
  }

  qmString load_string_resource(zovStringID id) override {
    return zovStringConverter::to_qmString(kit.LoadStringResource(static_cast<int>(id)));
  }
  std::shared_ptr<zovPixelIcon2D> create_image_data(zovTextureID id) override {
    image.reset(kit.CreateImageData(static_cast<Korvane::TextureID>(id)));
    return zovIconUtils::wrap_icon(image.get());
  }
  Icon create_scene_screenshot(int width, int height, const zovCameraParameters& camera) override {
    return zovIconUtils::wrap_icon(kit.CreateSceneScreenshot(width, height, camera.korvane()));
  }
  Icon create_text_label(const qmString& text, float size, int width, int height) override {
    return zovIconUtils::wrap_icon(kit.CreateTextLabel(Wide(text), size, width, height));
  }
  Icon create_tooltip(const qmString& text) override {
    return zovIconUtils::wrap_icon(kit.CreateTooltip(Wide(text)));
  }
  Icon create_tooltip_hud(const qmString& text) override {
    return zovIconUtils::wrap_icon(kit.CreateTooltipHUD(Wide(text)));
  }
  Icon create_message_hud(const qmString& text) override {
    return zovIconUtils::wrap_icon(kit.CreateMessageHUD(Wide(text)));
  }
  Icon create_pivot_label(const qmString& text) override {
    return zovIconUtils::wrap_icon(kit.CreatePivotLabel(Wide(text)));
  }
  Icon create_miniwheel_label(const qmString& text) override {
    return zovIconUtils::wrap_icon(kit.CreateMiniWheelLabel(Wide(text)));
  }
  Icon create_ucs_menu_label(const qmString& active_name, const qmString& default_name, bool highlighted,
                             int width) override {
    return zovIconUtils::wrap_icon(
        kit.CreateUCSMenuLabel(Wide(active_name), Wide(default_name), highlighted, width));
  }
  bool destroy_icon(const Icon& icon) override {
    Korvane::DynamicIcon2D* made = zovIconUtils::unwrap_icon(icon);
    return kit.DestroyIcon(made);
  }

  // There is no scene here to be asked.
  bool query_ray_scene_intersection(const qmPoint3&, const qmUnitVec3&, qmPoint3&) override { return false; }
  bool set_cursor_position(int x, int y) override { return kit.SetCursorPosition(x, y); }
  bool open_menu(zovMenuID id) override { return kit.OpenMenu(static_cast<Korvane::MenuID>(id)); }
  bool open_ucs_menu(int x, int y) override { return kit.OpenUCSMenu(x, y); }

 protected:
  bool load_texture(zovTextureID id) override { return kit.LoadTexture(static_cast<Korvane::TextureID>(id)); }
  void release_texture(zovTextureID id) override { kit.ReleaseTexture(static_cast<Korvane::TextureID>(id)); }
  bool set_cursor_icon(zovCursorID id) override {
    return kit.SetCursorIcon(static_cast<Korvane::CursorID>(id));
  }

 private:
  OpenRenderer& kit;
  std::unique_ptr<Korvane::PixelIcon2D> image;  // the last one, while the library copies it
};

class Window final : public KitView, private zovhost::RendererHost {
 public:
  explicit Window(std::unique_ptr<zovhost::Window> opened) : window(std::move(opened)) {
    kit.SetHost(this);
    window->SetEventHandler([this](const zovhost::WindowEvent& event) { OnEvent(event); });
    window->SetFrameHandler([this] { DrawFrame(); });
    if (window->IsOffscreen()) target.Create(GetWidth(), GetHeight());
    TakeSize();
  }
  ~Window() override {
    target.Destroy();
    kit.Destroy();
  }

  std::shared_ptr<zovRenderer> GetRenderer() const override { return renderer; }
  int GetWidth() const override { return window->GetWidth(); }
  int GetHeight() const override { return window->GetHeight(); }
  void RequestFrame() override { window->RequestFrame(); }
  void Run() override { window->Run(); }
  bool Step() override { return window->Step(10) && window->IsFrameRequested(); }

  bool ShowsAnything() const override {
    zovhost::Image shown;
    if (!target.Read(shown)) return false;
    return std::any_of(shown.rgba.begin(), shown.rgba.end(),
                       [&](unsigned char value) { return value != 255 && value != BACKGROUND; });
  }

 private:
  static constexpr unsigned char BACKGROUND = 51;  // 0.2 of 255

  void OnEvent(const zovhost::WindowEvent& event) {
    using Type = zovhost::WindowEvent::Type;
    const bool left = event.button == zovhost::MouseButton::Left;
    if (event.type == Type::Resized) TakeSize();
    if (event.type == Type::MouseMove && onMove) onMove(event.x, event.y);
    if (event.type == Type::MouseDown && left && onPress) onPress(event.x, event.y);
    if (event.type == Type::MouseUp && left && onRelease) onRelease(event.x, event.y);
  }

  void TakeSize() {
    kit.SetViewport(0, 0, GetWidth(), GetHeight());
    kit.SetDisplayScale(window->GetScale());
    if (onResize) onResize();
  }

  void DrawFrame() {
    if (window->IsOffscreen()) target.Bind();
    glClearColor(0.2F, 0.2F, 0.2F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (onDraw) onDraw();
  }

  bool ApplyCursor(Korvane::CursorID id) override {
    zovhost::CursorPicture cursor;
    if (kit.GetResources().RenderCursor(id, window->GetScale(), cursor)) {
      window->DefineCursor(id, cursor.image, cursor.hotX, cursor.hotY);
    }
    window->SetCursor(id);
    return true;
  }

  std::unique_ptr<zovhost::Window> window;
  zovhost::OffscreenTarget target;
  OpenRenderer kit;
  std::shared_ptr<KitRenderer> renderer = std::make_shared<KitRenderer>(kit);
};

}  // namespace

std::unique_ptr<KitView> KitView::Open(bool offscreen) {
  std::string error;
  auto window = zovhost::Window::Create(
      {.title = "facade_host", .width = 800, .height = 600, .offscreen = offscreen}, error);
  if (window == nullptr) return std::fprintf(stderr, "%s\n", error.c_str()), nullptr;
  return std::make_unique<Window>(std::move(window));
}
