#pragma once

#include <functional>
#include <memory>
#include <string>

#include "korvane/camera_parameters.h"
#include "korvane/renderer.h"
#include "zovhost/projection.h"

namespace zovhost {

class ResourcePack;
class Scene;
struct SceneFace;

/// What the renderer asks of the window around it. Each answers false when it cannot.
class RendererHost {
 public:
  virtual ~RendererHost();
  /// The pointer's shape; never CURSOR_NONE.
  virtual bool ApplyCursor(Korvane::CursorID id);
  /// To a viewport pixel, origin at the bottom left.
  virtual bool WarpPointer(int x, int y);
  virtual bool OpenMenu(Korvane::MenuID id);
  virtual bool OpenUCSMenu(int x, int y);
};

/// The library's renderer over OpenGL 3.3 core, confined to what OpenGL ES 3.0 has too.
///
/// Draws into whatever framebuffer is bound, and puts back all state at the end of each pass. Between
/// passes it calls OpenGL only to upload and free pictures. All calls need the context of Create.
///
/// An opacity above 1 lays a picture over itself: at 2 what was half transparent is so by a quarter.
///
/// Pixels are those of the framebuffer, counted from the bottom left of the viewport given with
/// SetViewport.
class GLRenderer : public Korvane::Renderer {
 public:
  /// Draws the scene for a camera into the bound framebuffer, `width` by `height` pixels at its origin.
  using SceneDraw = std::function<void(const Korvane::CameraParameters& camera, int width, int height)>;
  /// The first point of the scene along a ray.
  using SceneRay = std::function<bool(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                      Korvane::Vector3& hit)>;
  /// Shows a face of the scene as the one under the pointer; null: none any more. The face stands only
  /// during the call.
  using FaceShow = std::function<void(const SceneFace* face)>;

  /// Null takes the kit's own pack.
  explicit GLRenderer(std::shared_ptr<const ResourcePack> resources = nullptr);
  ~GLRenderer() override;

  // What the host tells. None of it needs to be there.

  /// Borrowed; null for none.
  void SetHost(RendererHost* host);
  /// Where the viewport lies in the framebuffer, in pixels; the default is nowhere, and nothing is drawn.
  void SetViewport(int x, int y, int width, int height);
  /// Pixels for one point of the display, 1 (the default) to 4. Texts and pictures are drawn for it, those
  /// that are there already anew.
  void SetDisplayScale(double scale);
  /// The camera of the view, to be told before each frame's drawing: ProjectToScreen and the queries of
  /// screen rectangles use it.
  void SetCamera(const Korvane::CameraParameters& camera);
  /// The depths of the scene for a host that draws it itself: Projection of the camera and this sphere. So
  /// things drawn in the scene hide behind it.
  void SetSceneSphere(const SceneSphere& sphere);
  void SetSceneDraw(SceneDraw draw);
  void SetSceneRay(SceneRay ray);
  /// Is called while faces are picked with highlighting, when the pointer comes to another face. One of many
  /// triangles is looked for by a thread of its own, and shown with the first camera after that.
  void SetFaceShow(FaceShow show);
  /// A face is looked for: draw frames on, so that it is shown.
  bool IsFindingFace() const;
  /// Depths, rays and faces of a scene, which is borrowed until another is set; null forgets them. The depths
  /// are those of a GLSceneView that shows the scene.
  void SetScene(const Scene* scene);

  /// How often a placeholder has been drawn, for a picture that nobody had asked for or that the pack does
  /// not have: 0 as long as all is well.
  int GetPlaceholderCount() const;
  /// The number of the last picture that was missing so; -1: none.
  int GetLastPlaceholder() const;
  /// How often a picture has been drawn for the graphics card. One that was shown a moment before is not
  /// drawn again.
  int GetDrawnPictureCount() const;

  const ResourcePack& GetResources() const;
  /// Another pack, as after a change of language; null takes the kit's own. What is loaded is drawn anew, and
  /// so are the labels that widgets hold, in the words of the new pack. Texts that a widget has read for
  /// itself, as the cube its tooltips, come with its next Create.
  void SetResources(std::shared_ptr<const ResourcePack> resources);

  // Korvane::Renderer. Create needs a current context of OpenGL 3.3 or OpenGL ES 3.0 and is false without.
  bool Create() override;
  bool Destroy() override;
  bool BeginRender(const Korvane::Box2& viewport, const Korvane::CameraParameters& camera,
                   RenderMode mode) override;
  bool EndRender() override;
  bool RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                      const MaterialParams* material) override;
  bool Render(Korvane::ResourceIcon3D* icon) override;
  bool Render(Korvane::DynamicIcon2D* icon) override;
  bool Render(Korvane::ResourceIcon2D* icon) override;
  std::wstring LoadStringResource(int id) override;
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override;
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int width, int height,
                                                const Korvane::CameraParameters& camera) override;
  /// `width` by `height` points is the box that the text is fitted into, ending in an ellipsis when it is
  /// too long; 0 leaves that direction free. `size` in points.
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override;
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override;
  /// The caption of a small disc. In bounds of its own size it is drawn there; in any others, which are twice
  /// as wide and high as the disc, it keeps its size and stands above the disc.
  Korvane::DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* text) override;
  /// `defaultName` is set smaller below `activeName`, if there is one; `width`: the room in pixels, of which
  /// the label takes what its text needs, at most 0.85.
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* activeName, const wchar_t* defaultName,
                                             bool highlighted, int width) override;
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override;
  bool QueryRaySceneIntersection(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                 Korvane::Vector3& hit) override;
  /// Of the points seen through a grid of pixels of the rectangle the one seen closest to its middle.
  bool QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top,
                                           Korvane::Vector3& hit) override;
  /// Begins to pick faces; false without a scene.
  bool BeginMouseoverComponent(bool highlightFaces) override;
  /// `point` on the face under a pixel of the viewport, and the `normal` of the side that is its front by
  /// the winding of the model, so it may point away from the viewer. False, with both untouched, over no
  /// face, without a camera, or when no picking has begun.
  bool GetMouseoverComponent(Korvane::Vector2 pixel, Korvane::Vector3& point,
                             Korvane::Vector3& normal) override;
  bool EndMouseoverComponent() override;
  bool SetCursorPosition(int x, int y) override;
  bool OpenMenu(Korvane::MenuID id) override;
  bool OpenUCSMenu(int x, int y) override;
  bool ProjectToScreen(Korvane::Vector3 point, Korvane::Vector2& pixel) override;

 protected:
  bool LoadTexture(Korvane::TextureID id) override;
  void ReleaseTexture(Korvane::TextureID id) override;
  bool SetCursorIcon(Korvane::CursorID id) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
