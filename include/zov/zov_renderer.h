#pragma once

#include <memory>

#include "korvane/export.h"
#include "zov/qi_iterator.h"
#include "zov/qmcore.h"
#include "zov/qmtext.h"
#include "zov/zov_camera_parameters.h"
#include "zov/zov_enums.h"
#include "zov/zov_icons.h"
#include "zov/zov_material_parameters.h"

namespace Korvane {
class Renderer;
}
class zovRendererP;

/// The one road from the library to a host's graphics, texts, pointers, menus and scene: a host derives from
/// it and implements the pure operations.
///
/// A call from outside and one from within the library both come to the host's override, once, and what an
/// override leaves to this class is the library's own way. The class itself shares four things among all
/// widgets: textures counted by use and loaded late, texts turned into icons once, picking by ray over quads,
/// and a queue that folds the cursor changes of a frame into one.
///
/// Pixels have their origin at the bottom left, y upward; points of the scene are world units. A false or a
/// null says that something did not work, and every caller is prepared for it. Inside any operation a host
/// may do all but end this object, or the widget that calls, and draw a frame. All calls belong on the host's
/// window thread.
class ZOVTOOLS_API zovRenderer {
 public:
  zovRenderer(const zovRenderer&) = delete;
  zovRenderer& operator=(const zovRenderer&) = delete;

  /// The host calls create before it creates any widget, and destroy after the last is gone.
  [[nodiscard]] virtual bool create() = 0;
  virtual bool destroy() = 0;

  /// Makes the counts come true: frees textures and texts that nobody uses, loads textures that are wanted
  /// and not there. A texture that failed to load is tried again at each call.
  virtual void apply_texture_usage();

  /// Opens a draw pass in a part of the window. False: the caller skips the pass and does not call
  /// end_render.
  [[nodiscard]] virtual bool begin_render(const qmBox2& viewport, const zovCameraParameters& camera,
                                          zovRenderMode mode) = 0;
  virtual bool end_render() = 0;
  /// Quads, 4 vertices each, or, with exactly 2 vertices, one line of the material's width: 3 numbers a
  /// vertex, 2 numbers a texture coordinate, or none without texture. The numbers stay only as long as the
  /// call.
  virtual bool render_geometry(unsigned vertex_count, qiIterator<float> vertices,
                               qiIterator<float> tex_coords, const zovMaterialParameters& material) = 0;

  /// Opens a pick at a pixel. Overlay: straight into the screen. Perspective: from the eye, through the half
  /// angles. False for any other mode, and nothing is then hit. A viewport of no size comes as the box from
  /// (0, 0) to (0, 0).
  [[nodiscard]] virtual bool begin_selection(const qmPoint2& point, const qmBox2& viewport,
                                             const zovCameraParameters& camera, zovRenderMode mode);
  /// Nothing to close in a pick of the library's own; false.
  virtual bool end_selection();
  /// Offers quads under a number; the nearest hit of the pick wins, the earlier one on equal distance.
  /// Vertices past the last whole quad are ignored. Always true.
  virtual bool render_selection_geometry(unsigned vertex_count, qiIterator<float> vertices, int id);
  /// The number of the nearest hit, -1 for none.
  virtual int get_selection() const;

  // An icon of the host's own making comes as the object that the host made. Any other is there for the call;
  // a host that keeps it keeps a copy.
  virtual bool render(const std::shared_ptr<zovResourceIcon3D>& icon) = 0;
  virtual bool render(const std::shared_ptr<zovDynamicIcon2D>& icon) = 0;
  virtual bool render(const std::shared_ptr<zovResourceIcon2D>& icon) = 0;

  /// The text of a number in the user's language; empty when there is none.
  virtual qmString load_string_resource(zovStringID id) = 0;
  /// The pixels of a picture, for hit maps, which the library copies; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<zovPixelIcon2D> create_image_data(zovTextureID id) = 0;
  /// A picture of the scene from a camera, pixels. This and all that follow: an icon that the library holds
  /// until it calls destroy_icon, null when it cannot be made. The same object may be answered several times.
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_scene_screenshot(
      int width, int height, const zovCameraParameters& camera) = 0;
  /// `size` in points; fitted into a box of so many points.
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_text_label(const qmString& text, float size,
                                                                            int width, int height) = 0;
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_tooltip(const qmString& text) = 0;
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_tooltip_hud(const qmString& text) = 0;
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_message_hud(const qmString& text) = 0;
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_pivot_label(const qmString& text) = 0;
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_miniwheel_label(const qmString& text) = 0;
  /// The names of the coordinate system below the cube, the second may be empty; `width`: the room in pixels.
  [[nodiscard]] virtual std::shared_ptr<zovDynamicIcon2D> create_ucs_menu_label(const qmString& active_name,
                                                                                const qmString& default_name,
                                                                                bool highlighted,
                                                                                int width) = 0;
  /// The library has no more use for an icon that one of the above has answered; it lets go of it when this
  /// returns, whatever the result.
  virtual bool destroy_icon(const std::shared_ptr<zovDynamicIcon2D>& icon) = 0;

  /// The first point of the scene along a ray. False, and `hit` is not looked at, when there is none.
  [[nodiscard]] virtual bool query_ray_scene_intersection(const qmPoint3& origin, const qmUnitVec3& direction,
                                                          qmPoint3& hit) = 0;
  /// The same for the ray of a pixel, which a host may use instead; goes to the ray.
  [[nodiscard]] virtual bool query_mouse_ray_scene_intersection(int x, int y, const qmPoint3& origin,
                                                                const qmUnitVec3& direction, qmPoint3& hit);
  /// A point of the scene seen in a rectangle of the screen; false unless the host can tell.
  [[nodiscard]] virtual bool query_screen_rect_ray_scene_intersection(int left, int bottom, int right,
                                                                      int top, qmPoint3& hit);
  /// The part of the model under the pointer; false unless the host can tell.
  [[nodiscard]] virtual bool begin_mouseover_component(bool highlight_faces);
  [[nodiscard]] virtual bool get_mouseover_component(const qmPoint2& pixel, qmPoint3& point,
                                                     qmUnitVec3& normal);
  virtual bool end_mouseover_component();

  /// Changes the pointer at once, or queues the change while the queue is open, and is then false.
  virtual bool set_cursor_id(zovCursorID id);
  /// Moves the pointer to a viewport pixel.
  virtual bool set_cursor_position(int x, int y) = 0;
  virtual bool open_menu(zovMenuID id) = 0;
  /// The host's list of coordinate systems, at a viewport pixel, y DOWNWARD from the top.
  virtual bool open_ucs_menu(int x, int y) = 0;
  /// World to viewport pixels; false unless the host can tell.
  [[nodiscard]] virtual bool project_to_screen(const qmPoint3& point, qmPoint2& pixel);

  /// Lets go of all icons that the library still holds. Whatever holds this object in a shared pointer keeps
  /// it.
  virtual ~zovRenderer();

 protected:
  /// Makes a picture available; false when it cannot be had.
  [[nodiscard]] virtual bool load_texture(zovTextureID id) = 0;
  virtual void release_texture(zovTextureID id) = 0;
  /// Changes the pointer's shape at once; NoCursor asks for no change.
  virtual bool set_cursor_icon(zovCursorID id) = 0;

  zovRenderer();

 public:
  zovCursorID get_cursor_id() const;
  /// Opens (true) or closes the queue. Closing applies the last cursor asked for when it differs from the
  /// current one; a queue in which none was asked for sends NoCursor once.
  void queue_set_cursor_id(bool open);

  // Counting; nothing is loaded or freed before apply_texture_usage. NoTexture is ignored, and a count never
  // goes below 0.
  void increment_texture_usage(zovTextureID id);
  void decrement_texture_usage(zovTextureID id);
  /// Increments when wanted, else decrements.
  void want_texture(zovTextureID id, bool wanted);

  /// The icon of a text, made at first use by the range of its number - tooltips, messages, labels - and
  /// shared from then on. Null for NoString, for texts that have no icon, and when the host made none.
  [[nodiscard]] std::shared_ptr<zovDynamicIcon2D> get_string_texture(zovStringID id);
  /// Always null, so that a caller can clear its pointer. The icon stays until apply_texture_usage.
  std::shared_ptr<zovDynamicIcon2D> release_string_texture(zovStringID id);
  /// Gets when wanted, else releases.
  std::shared_ptr<zovDynamicIcon2D> want_string_texture(zovStringID id, bool wanted);

  // Past the sharing: a text is loaded and made an icon of, which is the caller's alone.
  [[nodiscard]] std::shared_ptr<zovDynamicIcon2D> create_message_hud_by_id(zovStringID id);
  [[nodiscard]] std::shared_ptr<zovDynamicIcon2D> create_miniwheel_label_by_id(zovStringID id);
  [[nodiscard]] std::shared_ptr<zovDynamicIcon2D> create_pivot_label_by_id(zovStringID id);
  [[nodiscard]] std::shared_ptr<zovDynamicIcon2D> create_tooltip_by_id(zovStringID id);
  [[nodiscard]] std::shared_ptr<zovDynamicIcon2D> create_tooltip_hud_by_id(zovStringID id);

  /// The object within, for a host that works with both layers: view managers and widgets of the library take
  /// it. It lives as long as this one.
  Korvane::Renderer& korvane();

 private:
  friend class zovOrientor;
  friend class zovRendererP;
  std::unique_ptr<zovRendererP> inner;
};
