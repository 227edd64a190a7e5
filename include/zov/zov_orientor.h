#pragma once

#include <list>
#include <memory>

#include "korvane/export.h"
#include "zov/qmcore.h"
#include "zov/qmtext.h"
#include "zov/zov_enums.h"
#include "zov/zov_orientor_parameters.h"

namespace Korvane {
class Orientor;
}
class zovCameraOperations;
class zovOrientorObserver;
class zovOrientorP;
class zovRenderer;

/// The orientation cube: a small cube in a corner of the viewport that shows which way the camera looks and
/// takes the user to other views. A click on a part flies the camera there, a drag orbits the scene.
///
/// Geometry parts are 0 to 5 faces, 6 to 17 edges, 18 to 25 corners, 26 to 29 the letters of the compass, 30
/// to 57 the directions of its ring; overlay parts are 0 and 1 the rotate arrows, 2 home, 3 lock, 4 the
/// context menu, 5 the menu of coordinate systems. Directions are in the cube's standard space, right-handed:
/// x is the front of the scene, y its top, z its left. Positions are viewport pixels with the origin at the
/// bottom left, y upward, except where told.
///
/// A host may override any of the virtual operations; a call from outside and one from within the library
/// both come to its override, once. Camera operations and renderer are shared: the cube keeps them until it
/// is given others, or none; what needs one that is missing is skipped and answers false, -1 or zero. What is
/// taken away while the library calls it stays until that is over: it goes at the end of the call of the cube
/// that is under way, or else of the next one, of which `const` questions are none. Call destroy before
/// another renderer takes over, and before the cube ends: else the renderer of before goes on counting the
/// textures of the cube as used, and stays as long as the cube has a label of its making. A partner that the
/// host shares without owning may end at any time but within a call of it, and is then forgotten. All calls
/// belong on the host's window thread.
class ZOVTOOLS_API zovOrientor {
 public:
  zovOrientor();
  zovOrientor(const zovOrientor&) = delete;
  zovOrientor& operator=(const zovOrientor&) = delete;

  /// Takes textures and texts. False without a renderer.
  [[nodiscard]] virtual bool create();
  /// Gives them back, and ends a press, a drag and a move that the cube has begun. False without a renderer.
  virtual bool destroy();
  /// The cube, its compass and its overlay, in passes of its own.
  virtual void draw();
  // The result says whether the cube keeps the event.
  virtual bool on_mouse_move(int x, int y);
  virtual bool on_left_mouse_down(int x, int y);
  virtual bool on_left_mouse_up(int x, int y);
  /// The host's context menu of the cube, when the mouse is on the cube. False when the cube
  /// did not ask for it; what the host answers does not count.
  [[nodiscard]] virtual bool open_menu();
  /// The host's list of coordinate systems, at the label that shows the active one.
  virtual void open_ucs_menu();
  virtual void go_to_home_view();
  virtual ~zovOrientor();

  // ---- partners ----

  /// Other camera operations, or none, end what the mouse does with the cube. These two may be called from
  /// anywhere, also from within what the library calls of those that they take away. A host that calls camera
  /// operations or a renderer itself, on either layer, holds a pointer to them meanwhile. Where there is no
  /// memory for the exchange they throw std::bad_alloc, and nothing has changed.
  void set_camera_operations(std::shared_ptr<zovCameraOperations> operations);
  void set_renderer(std::shared_ptr<zovRenderer> renderer);
  /// Shares the observer, also one that was made for another cube. False for null and where there is no
  /// memory for it; one that is already there keeps its place.
  [[nodiscard]] bool add_observer(const std::shared_ptr<zovOrientorObserver>& observer);
  void remove_observer(const std::shared_ptr<zovOrientorObserver>& observer);

  /// They live as long as the cube.
  zovOrientorParameters& get_parameters();
  const zovOrientorParameters& get_parameters() const;

  // ---- place ----

  /// Pixels. Asks the host for a frame when the cube is visible.
  void set_viewport_size(int width, int height);
  /// `y` counts DOWNWARD from the top of the viewport.
  void set_viewport_mouse_position(int x, int y);
  /// The size of the cube in pixels.
  int get_screen_size() const;
  /// The space that cube, compass and label take in the corner, pixels.
  void get_region_size(int& width, int& height) const;
  /// Whether anything of the cube or its overlay is at a viewport pixel.
  bool is_point_in_bounds(int x, int y);

  // ---- what the mouse is on ----

  /// -1 for none.
  int get_active_geometry_part() const;
  /// -1 for none, and without `draw_overlay`.
  int get_active_overlay_part() const;
  /// From the centre outward, components -1, 0 and 1, a letter's of unit length; zero for none.
  qmVector3 get_active_part_direction() const;
  /// The English name of what the mouse is on, for the host's own use; empty for none, and without memory.
  qmString get_active_part_name() const;
  /// The text for what the mouse is on; empty for none, and without memory.
  qmString get_tooltip() const;
  bool is_drag_active() const;
  /// The mouse is near the cube.
  bool is_mouse_in_region() const;
  /// The letters of the compass count, since a click on them turns the view.
  bool is_mouse_on_geometry_part() const;
  /// Letters and ring.
  bool is_mouse_on_compass_part() const;
  /// As shown: none while an animated move runs.
  bool is_mouse_on_overlay_part() const;
  /// As the mouse is now.
  bool is_mouse_on_viewable_overlay_part() const;
  bool is_mouse_on_context_menu_part() const;
  bool is_mouse_on_ucs_menu() const;
  /// Geometry or overlay.
  bool is_mouse_on_part() const;

  // ---- parts and the view ----

  /// The geometry part that the view looks onto most nearly, -1 before the first update.
  int get_closest_geometry_part() const;
  /// Its direction; zero when there is none.
  qmVector3 get_closest_view_direction() const;
  /// From the centre outward, components -1, 0 and 1; zero for anything but a part from 0 to 25.
  qmVector3 get_geometry_part_direction(int part) const;
  /// The part whose direction is exactly this one; -1 for none, as for an edge or corner at unit length.
  int get_geometry_part_index(const qmVector3& direction) const;
  /// The view runs exactly along the closest part that can be hit; along the closest face.
  bool view_on_part_axis() const;
  bool view_on_principal_axis() const;

  // ---- moves ----

  /// Straightens the camera in an animated move, with `preserve_scene_up`.
  void align_to_orbit_up_direction();
  /// Presses a part from outside. The arrows to the faces, the ring of the compass and a
  /// number that names none press nothing.
  void inject_click(zovOrientorPart part);
  /// True: toggles whether the bounds of the scene stay on the selection. False: turns that on.
  void lock_to_current_selection(bool toggle);

  /// The cube within, for a host that works with both layers: a view manager takes it.
  Korvane::Orientor& korvane();
  const Korvane::Orientor& korvane() const;

 private:
  friend class zovOrientorObserver;
  friend class zovOrientorObserverP;

  struct partners;
  class working;

  // An observer that ends without having been removed.
  void forget(const zovOrientorObserver* gone);
  std::list<std::shared_ptr<zovOrientorObserver>> take_out(const zovOrientorObserver* observer);
  void let_go_of_former();

  int calls = 0;  // of the cube, under way
  std::unique_ptr<partners> others;
  std::list<std::shared_ptr<zovOrientorObserver>> observers;
  std::unique_ptr<zovOrientorP> inner;  // goes before all that it borrows
  std::unique_ptr<zovOrientorParameters> parameters;
};
