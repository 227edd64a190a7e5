#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "korvane/box2.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/ray.h"
#include "korvane/resource_ids.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

class DynamicIcon2D;
class PixelIcon2D;
class ResourceIcon2D;
class ResourceIcon3D;
struct CameraParameters;

/// The one road from the library to the host's graphics, texts, cursors, menus and scene.
///
/// A host derives from it and implements the pure operations with any graphics API. The class itself
/// shares four things among all widgets: textures counted by use and loaded late, texts turned into icons
/// once, picking by ray over quads, and a queue that folds the cursor changes of a frame into one.
///
/// Pixels have their origin at the bottom left, y upward. A viewport is a Box2: centre and half extents in
/// pixels. All calls belong on the host's window thread.
///
/// Inside any operation a host may begin and end operations and shots, show and hide widgets, exchange or
/// take away what a widget or a tool was given, and send events. A pass that is open meanwhile is closed, in
/// the renderer that opened it. What may not happen is the end of the renderer, or of the widget that calls,
/// and a frame of the hub.
class ZOVTOOLS_API Renderer {
 public:
  enum RenderMode : int {
    RENDER_OVERLAY = 0,      // orthographic, in viewport pixels
    RENDER_PERSPECTIVE = 1,  // by the four half angles of the camera
    RENDER_SCENE = 2,        // by the projection of the scene itself
  };

  /// How a host is to draw the vertices; the library passes the number through.
  enum DrawMode : int {
    DRAW_QUADS = 0,        // plain, textured or coloured
    DRAW_CUBE_LABELS = 2,  // blended over the faces of the cube
    DRAW_SOLID = 3,        // the edges of the cube and of its selected part; the outline of a rectangle
    DRAW_CUBE_SHADOW = 4,
    DRAW_THROUGH = 5,        // shows through what stands in front
    DRAW_OVERLAY_ICONS = 6,  // flat
  };

  struct MaterialParams {
    float colour[4] = {1.0F, 1.0F, 1.0F, 1.0F};  ///< Red, green, blue, opacity, each 0 to 1.
    TextureID texture = TEXTURE_NONE;
    int drawMode = DRAW_QUADS;
    float lineWidth = 1.0F;
  };

  /// Frees the maps. Icons still in the string cache are not destroyed: the host's own teardown does that.
  virtual ~Renderer();

  /// The host calls Create before it creates any widget, and Destroy after the last is gone.
  virtual bool Create() = 0;
  virtual bool Destroy() = 0;

  /// Makes the counts come true: frees textures of count 0, destroys texts of count 0, loads textures that
  /// are wanted and not there. A widget calls it after it has changed its counts. A texture that failed to
  /// load is tried again at each call.
  virtual void ApplyTextureUsage();

 protected:
  /// Makes a texture available; false when it cannot be had.
  [[nodiscard]] virtual bool LoadTexture(TextureID id) = 0;
  virtual void ReleaseTexture(TextureID id) = 0;

 public:
  /// Opens a draw pass. False: the caller skips the pass and does not call EndRender.
  [[nodiscard]] virtual bool BeginRender(const Box2& viewport, const CameraParameters& camera,
                                         RenderMode mode) = 0;
  virtual bool EndRender() = 0;
  /// Quads, 4 vertices each, or, with exactly 2 vertices, one line of the material's width in pixels:
  /// 3 floats a vertex, 2 floats a texture coordinate (null without texture).
  virtual bool RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                              const MaterialParams* material) = 0;

  /// Opens a pick at a pixel. Overlay: straight into the screen. Perspective: from the eye, through the
  /// half angles. False for any other mode, and nothing is then hit.
  [[nodiscard]] virtual bool BeginSelection(const Vector2& point, const Box2& viewport,
                                            const CameraParameters& camera, RenderMode mode);
  /// Nothing to close in a software pick; false.
  virtual bool EndSelection();
  /// Offers quads under a number; the nearest hit of the pass wins, the earlier one on equal distance.
  /// Vertices past the last whole quad are ignored, as is a null pointer. Always true.
  virtual bool RenderSelectionGeometry(unsigned vertexCount, const float* vertices, int id);
  /// The number of the nearest hit, -1 for none.
  virtual int GetSelection() const;

  virtual bool Render(ResourceIcon3D* icon) = 0;
  virtual bool Render(DynamicIcon2D* icon) = 0;
  virtual bool Render(ResourceIcon2D* icon) = 0;

  /// The localised text of a StringID; empty when there is none.
  virtual std::wstring LoadStringResource(int id) = 0;
  /// The pixels of a texture, for hit maps. The caller owns the result; null when there is none.
  [[nodiscard]] virtual PixelIcon2D* CreateImageData(TextureID id) = 0;
  /// A picture of the scene from a camera. As with all the Create... below the caller owns the result and
  /// gives it back with DestroyIcon; null when it cannot be made.
  [[nodiscard]] virtual DynamicIcon2D* CreateSceneScreenshot(int width, int height,
                                                             const CameraParameters& camera) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width,
                                                       int height) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreateTooltip(const wchar_t* text) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreateMessageHUD(const wchar_t* text) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreatePivotLabel(const wchar_t* text) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* text) = 0;
  [[nodiscard]] virtual DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* activeName,
                                                          const wchar_t* defaultName, bool highlighted,
                                                          int width) = 0;
  /// Destroys the icon and clears the pointer.
  virtual bool DestroyIcon(DynamicIcon2D*& icon) = 0;

  /// The first point of the scene along a ray. False, with `hit` untouched, when there is none.
  [[nodiscard]] virtual bool QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction,
                                                       Vector3& hit) = 0;
  /// The same for the ray of a pixel, which a host may use instead; forwards to the ray.
  [[nodiscard]] virtual bool QueryMouseRaySceneIntersection(int x, int y, const Vector3& origin,
                                                            const Vector3& direction, Vector3& hit);
  /// A point of the scene seen in a screen rectangle; false unless the host can tell.
  [[nodiscard]] virtual bool QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top,
                                                                 Vector3& hit);
  /// The part of the model under the pointer; false unless the host can tell.
  [[nodiscard]] virtual bool BeginMouseoverComponent(bool highlightFaces);
  [[nodiscard]] virtual bool GetMouseoverComponent(Vector2 pixel, Vector3& point, Vector3& normal);
  virtual bool EndMouseoverComponent();

  /// Changes the cursor at once, or queues the change while the queue is open, and is then false.
  virtual bool SetCursorID(CursorID id);
  /// Moves the mouse pointer to a viewport pixel.
  virtual bool SetCursorPosition(int x, int y) = 0;
  virtual bool OpenMenu(MenuID id) = 0;
  /// The host's list of coordinate systems.
  virtual bool OpenUCSMenu(int x, int y) = 0;
  /// World to viewport pixels; false unless the host can tell.
  [[nodiscard]] virtual bool ProjectToScreen(Vector3 point, Vector2& pixel);

 protected:
  /// Changes the pointer's shape at once. CURSOR_NONE asks for no change.
  virtual bool SetCursorIcon(CursorID id) = 0;

  Renderer();
  Renderer(const Renderer&) = delete;
  Renderer& operator=(const Renderer&) = delete;

 public:
  // Counting; nothing is loaded or freed before ApplyTextureUsage. TEXTURE_NONE is ignored, and a count
  // never goes below 0.
  void IncrementTextureUsage(TextureID id);
  void DecrementTextureUsage(TextureID id);
  /// Increments when wanted, else decrements.
  void WantTexture(TextureID id, bool wanted);

  /// The icon of a text, made at first use by the range of its number and shared from then on. Owned by
  /// the renderer. Null for STRING_NONE, for texts that have no icon, and when the host made none.
  DynamicIcon2D* GetStringTexture(StringID id);
  /// Always null, so that a caller can clear its pointer. The icon stays until ApplyTextureUsage.
  DynamicIcon2D* ReleaseStringTexture(StringID id);
  /// Gets when wanted, else releases.
  DynamicIcon2D* WantStringTexture(StringID id, bool wanted);

  // Past the cache: the caller owns the result.
  [[nodiscard]] DynamicIcon2D* CreateTooltipByID(int id);
  [[nodiscard]] DynamicIcon2D* CreateTooltipHUDByID(int id);
  [[nodiscard]] DynamicIcon2D* CreateMessageHUDByID(int id);
  [[nodiscard]] DynamicIcon2D* CreatePivotLabelByID(int id);
  [[nodiscard]] DynamicIcon2D* CreateMiniWheelLabelByID(int id);

  Lifeline& GetLifeline() { return lifeline; }

  CursorID GetCursorID() const { return currentCursor; }
  /// Opens (true) or closes the queue. Closing applies the last cursor asked for when it differs from the
  /// current one; a queue in which none was asked for sends CURSOR_NONE once.
  void QueueSetCursorID(bool open);
  /// Closes the queue and forgets what was asked for.
  void DropCursorQueue();
  /// Where several views share a renderer: the pointer is in the one that lives this life. The frames of the
  /// others change no cursor until the mouse comes to them. As at first, and when that view is gone, every
  /// view's frame may. A view manager says it with each event of the mouse.
  void SetPointerView(Lifeline& view) {
    if (pointerView == &view && pointerStays) return;
    pointerView = &view;
    pointerStays.Attach(view);
  }
  bool MayHavePointer(const Lifeline& view) const { return !pointerStays || pointerView == &view; }

 private:
  using CreateIcon = DynamicIcon2D* (Renderer::*)(const wchar_t*);
  static CreateIcon FindStringIconCreator(int id);

  void ReleaseUnusedTextures();
  void DestroyUnusedStrings();
  void LoadWantedTextures();

  // The view along the ray of a pick, which is of unit length or zero. It tells cheaply of most quads that
  // the ray goes past them.
  class RaySight {
   public:
    RaySight() = default;
    explicit RaySight(const Ray& ray);

    // Of so many quads. True only where the ray meets none of their triangles, be it by rounding.
    bool GoesPast(unsigned quadCount, const float* quads) const;

   private:
    struct Side {
      int axis = 0;
      float slope = 0.0F;  // of the ray, along this axis
      float start = 0.0F;  // of the ray, as it shows from along it
    };

    int depthAxis = 0;  // the one nearest to the ray
    float depthSlope = 0.0F;
    Side sides[2];
    float reach = 0.0F;  // of the start, along any axis
  };

  void Aim(const Ray& ray);
  void TestQuad(const float* quad, int id);

  double selectionDistance = Math::MAX_VALUE;
  int selection = -1;
  Ray selectionRay;
  RaySight selectionSight;
  CursorID currentCursor = CURSOR_ARROW;
  bool cursorQueueOpen = false;
  CursorID queuedCursor = CURSOR_NONE;
  const Lifeline* pointerView = nullptr;  // only compared
  Lifeline::Watch pointerStays;
  std::map<TextureID, std::uint64_t> textureUsage;
  std::map<TextureID, bool> textureLoaded;
  std::map<StringID, DynamicIcon2D*> stringTextures;
  std::map<StringID, std::uint64_t> stringUsage;
  Lifeline lifeline;
};

}  // namespace Korvane
