#pragma once

#include <memory>

#include "korvane/export.h"
#include "zov/qmcore.h"
#include "zov/zov_application_parameters.h"
#include "zov/zov_camera_parameters.h"

namespace Korvane {
class CameraOperations;
}
class zovCameraOperationsP;

/// What moves the camera of a view: a host derives from it and supplies the three pure operations.
///
/// Frames are pulled: whatever moves asks the host for a frame through request_application_update, the host
/// answers with perform_operations once for each frame, before it draws, and that asks for the next frame as
/// long as anything goes on.
///
/// A host may override any of the virtual operations; a call from outside and one from within the library
/// both come to its override, once, and what the override leaves to this class is the library's own way.
/// Inside any of them a host may do all but end this object and draw a frame, which then does nothing.
///
/// A false result says that something did not work, and that nothing has changed, except where an operation
/// says what its result answers; so it is for numbers that are not finite, too. All calls belong on the
/// host's window thread.
class ZOVTOOLS_API zovCameraOperations {
 public:
  zovCameraOperations(const zovCameraOperations&) = delete;
  zovCameraOperations& operator=(const zovCameraOperations&) = delete;

  // ---- the host's side ----

  /// The host takes these values into its view. They are finite.
  virtual void apply_camera_parameters(const zovCameraParameters& camera) = 0;
  /// The host fills in the values of its view now. What it leaves alone is as the library had it.
  virtual void query_camera_parameters(zovCameraParameters& camera) const = 0;
  /// The host schedules a redraw.
  virtual void request_application_update() = 0;

  // ---- what a host may override ----

  /// The frame. True when something goes on and another frame has been asked for.
  virtual bool perform_operations();
  /// An animated move is under way.
  virtual bool is_shot_active() const;
  /// For a host that computes bounds late: the library is about to look at those of the selection, or of the
  /// whole model. By itself it does nothing here.
  virtual void recalculate_selection_bounds();
  virtual void recalculate_global_bounds();
  /// What still runs is dropped without a word. Whatever holds this object in a shared pointer keeps it.
  virtual ~zovCameraOperations();

  // ---- settings and cameras ----

  /// They live as long as this object.
  zovApplicationParameters& get_application_parameters();
  const zovApplicationParameters& get_application_parameters() const;
  /// The camera that the library worked with last, a copy. It may hold what was not applied.
  zovCameraParameters get_camera_parameters() const;
  /// Where "home" leads; what is written to it counts.
  zovCameraParameters& get_home_camera();
  /// Whether two cameras count as the same view: positions to about 3.45e-4 units; perspective_with_ortho
  /// takes no part, since it is a wish and not a view.
  [[nodiscard]] bool check_cameras_equal(const zovCameraParameters& a, const zovCameraParameters& b) const;
  /// The directions of the scene while `scene_is_world` is set, else those of the world.
  qmUnitVec3 get_world_up_direction() const;
  qmUnitVec3 get_world_front_direction() const;

  // ---- bounds: what counts as the scene ----
  // A box stands where it is, and its centre with it. A radius that is not above 0, or an empty box, stands
  // for the whole model. Radii and centres are world units.

  void set_scene_bounding_sphere(double radius, const qmPoint3& centre);
  void set_scene_bounding_box(const qmBox3& box);
  void reset_scene_bounding_sphere();
  void reset_scene_bounding_box();
  void set_ucs_bounding_sphere(double radius, const qmPoint3& centre);
  void set_ucs_bounding_box(const qmBox3& box);
  void reset_ucs_bounding_sphere();
  void reset_ucs_bounding_box();
  bool is_geometry_selected() const;
  /// With `tool_selection_sensitivity` also moves the pivot of the host's camera to the selection, at once.
  void set_geometry_selection(double radius, const qmPoint3& centre);
  /// Leaves the pivot alone.
  void set_bounding_box_selection(const qmBox3& box);
  /// Clears the sphere of the selection or its box, by `global_bound_geometry`.
  void reset_geometry_selection();
  /// The scene becomes the selection, else the model (`scene_is_world`), else the coordinate system; nothing
  /// changes with `lock_to_selection`.
  void recalculate_scene_bounds();

  // ---- fitting and straightening ----

  /// Brings a pivot that has left the view back onto its axis, at its depth. False when it is in view.
  bool constrain_pivot_to_viewport();
  /// Straightens the camera in an animated move of so many seconds. False when there is nothing to
  /// straighten.
  [[nodiscard]] bool align_to_scene_up_direction(double duration);
  /// Leaves orthographic, where `auto_switch_projection` allows it. True when the view is perspective now.
  [[nodiscard]] bool auto_switch_to_perspective_projection();
  /// The sphere of the whole model lies wholly outside the view.
  bool is_scene_outside_view(const zovCameraParameters& camera);
  // Animated moves, half a second long, that keep the direction of the view.
  [[nodiscard]] bool fit_all_to_view();
  /// Fits the scene, which follows the selection.
  [[nodiscard]] bool fit_selection_to_view();
  [[nodiscard]] bool transition_camera_to_fit_bounding_box(const qmBox3& box);
  [[nodiscard]] bool transition_camera_to_fit_bounding_sphere(const qmPoint3& centre, double radius);

  /// Computes, in `camera`, the camera that looks along `direction` and that the box (sphere) just touches on
  /// its narrower sides; no margin. False, with nothing changed, for a radius not above 0 and wherever the
  /// result would not be finite.
  [[nodiscard]] bool fit_bounding_box_to_view(const qmBox3& box, qmUnitVec3 direction, qmUnitVec3 up,
                                              zovCameraParameters& camera) const;
  [[nodiscard]] bool fit_bounding_sphere_to_view(const qmPoint3& centre, double radius,
                                                 const qmUnitVec3& direction, const qmUnitVec3& up,
                                                 zovCameraParameters& camera) const;

  /// The object within, for a host that works with both layers: view managers, tools and widgets of the
  /// library take it. It lives as long as this one.
  Korvane::CameraOperations& korvane();
  const Korvane::CameraOperations& korvane() const;

 protected:
  zovCameraOperations();

 private:
  friend class zovOrientor;
  std::unique_ptr<zovCameraOperationsP> inner;
};
