#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "pictures/label_styles.h"
#include "scene/pointed_face.h"
#include "scene/scene_depths.h"
#include "widget_renderer/ball_painter.h"
#include "widget_renderer/gl_painter.h"
#include "widget_renderer/icon_store.h"
#include "widget_renderer/texture_store.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/gl_state_guard.h"
#include "zovhost/resource_pack.h"
#include "zovhost/scene.h"

namespace zovhost {

struct PixelRectangle {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

class GLRenderer::Impl {
 public:
  bool CreateObjects();
  void DestroyObjects();
  void ReloadTextures();

  bool BeginPass(const Korvane::Box2& box, const Korvane::CameraParameters& passCamera, RenderMode passMode);
  bool EndPass();
  bool IsOpen() const { return pass.has_value(); }
  bool IsOverlay() const { return pass && mode == RENDER_OVERLAY; }
  bool IsProjected() const { return pass && mode != RENDER_OVERLAY; }
  void DrawGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                    const MaterialParams& material);
  void DrawIcon(GLuint texture, const Korvane::Box2& bounds, bool flip, double opacity);
  void DrawBall(const Korvane::ResourceIcon3D& icon);
  void DrawBallShadow(const Korvane::ResourceIcon3D& icon);

  Korvane::DynamicIcon2D* MakeLabel(const TextStyle& style, const wchar_t* text,
                                    const wchar_t* second = nullptr);
  /// As after a change of the display or the language, with the pack of before.
  void RedrawLabels(const ResourcePack& before, double growth);

  std::shared_ptr<const ResourcePack> resources;
  int lastText = -1;  // that was asked for by its number
  RendererHost* host = nullptr;
  PixelRectangle viewport;
  double scale = 1.0;
  Korvane::CameraParameters camera;
  bool hasCamera = false;
  SceneDepths depths;
  SceneDraw sceneDraw;
  SceneRay sceneRay;
  const Scene* scene = nullptr;
  FaceShow faceShow;

  // Faces are being picked.
  bool picksFaces = false;
  bool showsFaces = false;
  PointedFace face;
  void PointAtFace(const Scene::Hit* hit);
  void ShowFace();

  bool created = false;
  GLPainter painter;
  BallPainter balls;
  TextureStore textures;
  IconStore icons;
  GLuint discTexture = 0;
  GLuint ghostTexture = 0;

 private:
  LabelPicture PaintLabel(const LabelText& label) const;
  int FindTextID(const std::string& text) const;
  void SetOverlayView();
  void SetProjectedView(const Projection& passProjection, const PixelRectangle& area);
  void SetScissor(const PixelRectangle& area) const;
  void ApplyState(const DrawState& state, bool twoSided);

  // The open pass.
  std::optional<GLStateGuard> pass;
  RenderMode mode = RENDER_OVERLAY;
  Projection projection;
  OutlineView view;
  std::array<float, 16> matrix{};
};

}  // namespace zovhost
