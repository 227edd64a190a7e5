#pragma once

#include <limits>

#include "korvane/application_parameters.h"
#include "zov/qmcore.h"
#include "zov/zov_camera_parameters.h"
#include "zov/zov_changing_in_time.h"
#include "zov/zov_enums.h"
#include "zov/zov_geom_utils.h"

/// The settings of a view: directions and bounds of the scene, the speed of every operation, the size of the
/// viewport and the home camera. A window on the settings that zovCameraOperations holds, valid as long as
/// that; the host reads and writes them as it likes, at any time between two frames.
///
/// Lengths are world units; each setting says where it differs. Angles carry their unit; all other numbers
/// are stored as given. A direction is set, and read, at unit length, or as zero where there is none. A box
/// stands along the axes of the world, also one that within is turned.
class zovApplicationParameters {
 public:
  /// Of settings of the library's own; borrowed. For a host that works with both layers.
  explicit zovApplicationParameters(Korvane::ApplicationParameters& settings)
      : record(&settings), home(&settings.home_camera) {
    fly_move.number = &settings.flyMoveMultiplier;
  }
  zovApplicationParameters(const zovApplicationParameters&) = delete;
  zovApplicationParameters& operator=(const zovApplicationParameters&) = delete;
  ~zovApplicationParameters() = default;

  /// Scales how fast a walk turns.
  double fly_turn_multiplier() const { return record->fly_turn_multiplier; }
  void set_fly_turn_multiplier(double value) { record->fly_turn_multiplier = value; }
  /// Pixels around the start of a walk in which nothing moves.
  int fly_dead_zone_radius() const { return record->fly_dead_zone_radius; }
  void set_fly_dead_zone_radius(int value) { record->fly_dead_zone_radius = value; }
  /// Fraction of the viewport over which a walk gains speed.
  double fly_ramp_up_radius() const { return record->fly_ramp_up_radius; }
  void set_fly_ramp_up_radius(double value) { record->fly_ramp_up_radius = value; }
  /// Walk on the plane of the scene; also makes the world up the up of every operation.
  bool fly_planar_motion() const { return record->fly_planar_motion; }
  void set_fly_planar_motion(bool value) { record->fly_planar_motion = value; }
  /// World units that a key lifts a standing walker by, each frame.
  double fly_up_down_sensitivity() const { return record->fly_up_down_sensitivity; }
  void set_fly_up_down_sensitivity(double value) { record->fly_up_down_sensitivity = value; }
  /// What a six-axis controller does.
  zovNavigationMode cam3d_controller_mode() const {
    return static_cast<zovNavigationMode>(record->cam3d_controller_mode);
  }
  void set_cam3d_controller_mode(zovNavigationMode value) {
    record->cam3d_controller_mode = static_cast<Korvane::Cam3DControllerParameters::NavigationMode>(value);
  }
  /// Degrees past the vertical before a look turns its sense round.
  qmAngle look_invert_tolerance() const { return {record->look_invert_tolerance, qmAngleDegrees}; }
  void set_look_invert_tolerance(const qmAngle& value) {
    record->look_invert_tolerance = value.angle(qmAngleDegrees);
  }
  /// 1: the scene at the depth of the pivot follows the cursor exactly.
  double pan_multiplier() const { return record->pan_multiplier; }
  void set_pan_multiplier(double value) { record->pan_multiplier = value; }
  /// Radians for a drag across the whole view.
  double look_multiplier() const { return record->look_multiplier; }
  void set_look_multiplier(double value) { record->look_multiplier = value; }
  /// Radians for a drag across the whole view.
  double orbit_multiplier() const { return record->orbit_multiplier; }
  void set_orbit_multiplier(double value) { record->orbit_multiplier = value; }
  /// Scene scales for a drag across the whole view.
  double dolly_multiplier() const { return record->dolly_multiplier; }
  void set_dolly_multiplier(double value) { record->dolly_multiplier = value; }
  /// Scales how fast the camera rises.
  double height_multiplier() const { return record->height_multiplier; }
  void set_height_multiplier(double value) { record->height_multiplier = value; }
  /// World units a second for an offset of a whole view.
  double slide_multiplier() const { return record->slide_multiplier; }
  void set_slide_multiplier(double value) { record->slide_multiplier = value; }
  /// The factor of one pixel; above 1.
  double zoom_sensitivity() const { return record->zoom_sensitivity; }
  void set_zoom_sensitivity(double value) { record->zoom_sensitivity = value; }
  /// The fraction of the first distance to the pivot at which a zoom in halts.
  double zoom_min_limit() const { return record->zoom_min_limit; }
  void set_zoom_min_limit(double value) { record->zoom_min_limit = value; }
  /// A zoom may be pushed on past that halt.
  bool zoom_min_limit_motion() const { return record->zoom_min_limit_motion; }
  void set_zoom_min_limit_motion(bool value) { record->zoom_min_limit_motion = value; }
  /// Scales the motion past the halt.
  double zoom_min_limit_multiplier() const { return record->zoom_min_limit_multiplier; }
  void set_zoom_min_limit_multiplier(double value) { record->zoom_min_limit_multiplier = value; }
  /// How far one drag may zoom out, world units. Math::MAX_VALUE: no limit.
  double zoom_back_distance() const { return record->zoom_back_distance; }
  void set_zoom_back_distance(double value) { record->zoom_back_distance = value; }
  /// Dead pixels before a zoom out moves.
  int zoom_out_snap_size() const { return record->zoom_out_snap_size; }
  void set_zoom_out_snap_size(int value) { record->zoom_out_snap_size = value; }
  /// Dead pixels at the halt before the camera moves on.
  int zoom_in_snap_size() const { return record->zoom_in_snap_size; }
  void set_zoom_in_snap_size(int value) { record->zoom_in_snap_size = value; }
  /// Dragging right and up zooms out.
  bool zoom_sense_reversed() const { return record->zoom_sense_reversed; }
  void set_zoom_sense_reversed(bool value) { record->zoom_sense_reversed = value; }
  /// A look up follows a drag down.
  bool look_invert_vertical_axis() const { return record->look_invert_vertical_axis; }
  void set_look_invert_vertical_axis(bool value) { record->look_invert_vertical_axis = value; }
  /// A look-at keeps clear of what stands between.
  bool use_look_at_obstruction_detection() const { return record->use_look_at_obstruction_detection; }
  void set_use_look_at_obstruction_detection(bool value) {
    record->use_look_at_obstruction_detection = value;
  }
  /// Pixels of the display to a point: what the library gives a size in pixels by itself is so many times as
  /// large. 1 at first; anything not finite or not above 0 counts as 1. Kept in single precision: what goes
  /// beyond that is not finite.
  double pixels_per_point() const { return static_cast<double>(record->pixels_per_point); }
  void set_pixels_per_point(double value) {
    constexpr auto LARGEST = static_cast<double>(std::numeric_limits<float>::max());
    const bool fits = value >= -LARGEST && value <= LARGEST;
    record->pixels_per_point = fits ? static_cast<float>(value) : std::numeric_limits<float>::infinity();
  }
  /// The directions of the model. Front is the x axis.
  qmUnitVec3 scene_up_direction() const { return zovGeomUtils::kvvec_to_qmuvc(record->scene_up_direction); }
  void set_scene_up_direction(const qmUnitVec3& value) {
    record->scene_up_direction = zovGeomUtils::qmuvc_to_kvvec(value);
  }
  qmUnitVec3 scene_front_direction() const {
    return zovGeomUtils::kvvec_to_qmuvc(record->scene_front_direction);
  }
  void set_scene_front_direction(const qmUnitVec3& value) {
    record->scene_front_direction = zovGeomUtils::qmuvc_to_kvvec(value);
  }
  /// World units that count as one step of a walk or dolly.
  double scene_scale() const { return record->scene_scale; }
  void set_scene_scale(double value) { record->scene_scale = value; }
  /// What counts as the scene now, derived from one of the three groups below.
  double scene_bound_radius() const { return record->scene_bound_radius; }
  void set_scene_bound_radius(double value) { record->scene_bound_radius = value; }
  qmBox3 scene_bound_box() const { return zovGeomUtils::kvbox_to_qmbox(record->scene_bound_box); }
  void set_scene_bound_box(const qmBox3& value) {
    record->scene_bound_box = zovGeomUtils::qmbox_to_kvbox(value);
  }
  qmPoint3 scene_bound_centre() const { return zovGeomUtils::kvvec_to_qmpnt(record->scene_bound_centre); }
  void set_scene_bound_centre(const qmPoint3& value) {
    record->scene_bound_centre = zovGeomUtils::qmpnt_to_kvvec(value);
  }
  /// Whether the sphere or the box describes the model better, for fitting.
  zovBoundGeometryType global_bound_geometry() const {
    return static_cast<zovBoundGeometryType>(record->global_bound_geometry);
  }
  void set_global_bound_geometry(zovBoundGeometryType value) {
    record->global_bound_geometry = static_cast<Korvane::ApplicationParameters::BoundGeometryType>(value);
  }
  /// The whole model.
  double global_bound_radius() const { return record->global_bound_radius; }
  void set_global_bound_radius(double value) { record->global_bound_radius = value; }
  qmPoint3 global_bound_centre() const { return zovGeomUtils::kvvec_to_qmpnt(record->global_bound_centre); }
  void set_global_bound_centre(const qmPoint3& value) {
    record->global_bound_centre = zovGeomUtils::qmpnt_to_kvvec(value);
  }
  qmBox3 global_bound_box() const { return zovGeomUtils::kvbox_to_qmbox(record->global_bound_box); }
  void set_global_bound_box(const qmBox3& value) {
    record->global_bound_box = zovGeomUtils::qmbox_to_kvbox(value);
  }
  /// The user coordinate system.
  double ucs_bound_radius() const { return record->ucs_bound_radius; }
  void set_ucs_bound_radius(double value) { record->ucs_bound_radius = value; }
  qmBox3 ucs_bound_box() const { return zovGeomUtils::kvbox_to_qmbox(record->ucs_bound_box); }
  void set_ucs_bound_box(const qmBox3& value) { record->ucs_bound_box = zovGeomUtils::qmbox_to_kvbox(value); }
  qmPoint3 ucs_bound_centre() const { return zovGeomUtils::kvvec_to_qmpnt(record->ucs_bound_centre); }
  void set_ucs_bound_centre(const qmPoint3& value) {
    record->ucs_bound_centre = zovGeomUtils::qmpnt_to_kvvec(value);
  }
  /// The selection.
  double selected_bound_radius() const { return record->selected_bound_radius; }
  void set_selected_bound_radius(double value) { record->selected_bound_radius = value; }
  qmBox3 selected_bound_box() const { return zovGeomUtils::kvbox_to_qmbox(record->selected_bound_box); }
  void set_selected_bound_box(const qmBox3& value) {
    record->selected_bound_box = zovGeomUtils::qmbox_to_kvbox(value);
  }
  qmPoint3 selected_bound_centre() const {
    return zovGeomUtils::kvvec_to_qmpnt(record->selected_bound_centre);
  }
  void set_selected_bound_centre(const qmPoint3& value) {
    record->selected_bound_centre = zovGeomUtils::qmpnt_to_kvvec(value);
  }
  /// The directions of the world.
  qmUnitVec3 world_up_direction() const { return zovGeomUtils::kvvec_to_qmuvc(record->world_up_direction); }
  void set_world_up_direction(const qmUnitVec3& value) {
    record->world_up_direction = zovGeomUtils::qmuvc_to_kvvec(value);
  }
  qmUnitVec3 world_front_direction() const {
    return zovGeomUtils::kvvec_to_qmuvc(record->world_front_direction);
  }
  void set_world_front_direction(const qmUnitVec3& value) {
    record->world_front_direction = zovGeomUtils::qmuvc_to_kvvec(value);
  }
  /// The scene has its own directions and the model is the scene; see GetWorldUpDirection of the hub.
  bool scene_is_world() const { return record->scene_is_world; }
  void set_scene_is_world(bool value) { record->scene_is_world = value; }
  /// Where "home" leads.
  const zovCameraParameters& home_camera() const { return home; }
  zovCameraParameters& home_camera() { return home; }
  void set_home_camera(const zovCameraParameters& value) { home = value; }
  /// Orbit as a turntable about the up axis; else freely.
  bool preserve_orbit_up_direction() const { return record->preserve_orbit_up_direction; }
  void set_preserve_orbit_up_direction(bool value) { record->preserve_orbit_up_direction = value; }
  /// Straighten the camera when a turntable orbit begins.
  bool align_orbit_up_direction() const { return record->align_orbit_up_direction; }
  void set_align_orbit_up_direction(bool value) { record->align_orbit_up_direction = value; }
  /// Orbit without turning (without tilting).
  bool constrain_orbit_horizontal() const { return record->constrain_orbit_horizontal; }
  void set_constrain_orbit_horizontal(bool value) { record->constrain_orbit_horizontal = value; }
  bool constrain_orbit_vertical() const { return record->constrain_orbit_vertical; }
  void set_constrain_orbit_vertical(bool value) { record->constrain_orbit_vertical = value; }
  /// Orbit about the custom axes instead of those of the world.
  bool do_custom_orbit() const { return record->do_custom_orbit; }
  void set_do_custom_orbit(bool value) { record->do_custom_orbit = value; }
  /// An orbit is drawn to the 26 standard views.
  bool do_snap_orbit() const { return record->do_snap_orbit; }
  void set_do_snap_orbit(bool value) { record->do_snap_orbit = value; }
  /// The axes of a custom orbit.
  qmUnitVec3 custom_orbit_up() const { return zovGeomUtils::kvvec_to_qmuvc(record->custom_orbit_up); }
  void set_custom_orbit_up(const qmUnitVec3& value) {
    record->custom_orbit_up = zovGeomUtils::qmuvc_to_kvvec(value);
  }
  qmUnitVec3 custom_orbit_front() const { return zovGeomUtils::kvvec_to_qmuvc(record->custom_orbit_front); }
  void set_custom_orbit_front(const qmUnitVec3& value) {
    record->custom_orbit_front = zovGeomUtils::qmuvc_to_kvvec(value);
  }
  /// Fraction of the viewport that a drag must cover to leave a snapped view.
  double snap_orbit_dead_zone() const { return record->snap_orbit_dead_zone; }
  void set_snap_orbit_dead_zone(double value) { record->snap_orbit_dead_zone = value; }
  /// Radians within which a standard view attracts.
  qmAngle snap_orbit_threshold_h() const { return {record->snap_orbit_threshold_h, qmAngleRadians}; }
  void set_snap_orbit_threshold_h(const qmAngle& value) {
    record->snap_orbit_threshold_h = value.angle(qmAngleRadians);
  }
  /// Speed-up towards the view (slow-down away from it) in the outer band.
  double snap_orbit_acceleration_ax() const { return record->snap_orbit_acceleration_ax; }
  void set_snap_orbit_acceleration_ax(double value) { record->snap_orbit_acceleration_ax = value; }
  /// The same in the inner band; also the slow-down past the dead zone of a view that is left.
  double snap_orbit_acceleration_bx() const { return record->snap_orbit_acceleration_bx; }
  void set_snap_orbit_acceleration_bx(double value) { record->snap_orbit_acceleration_bx = value; }
  /// How far into the threshold, from its outer edge, the inner band begins: a fraction of it.
  double snap_orbit_acceleration_point_x() const { return record->snap_orbit_acceleration_point_x; }
  void set_snap_orbit_acceleration_point_x(double value) { record->snap_orbit_acceleration_point_x = value; }
  /// The same four for the vertical rotation.
  qmAngle snap_orbit_threshold_v() const { return {record->snap_orbit_threshold_v, qmAngleRadians}; }
  void set_snap_orbit_threshold_v(const qmAngle& value) {
    record->snap_orbit_threshold_v = value.angle(qmAngleRadians);
  }
  double snap_orbit_acceleration_ay() const { return record->snap_orbit_acceleration_ay; }
  void set_snap_orbit_acceleration_ay(double value) { record->snap_orbit_acceleration_ay = value; }
  double snap_orbit_acceleration_by() const { return record->snap_orbit_acceleration_by; }
  void set_snap_orbit_acceleration_by(double value) { record->snap_orbit_acceleration_by = value; }
  double snap_orbit_acceleration_point_y() const { return record->snap_orbit_acceleration_point_y; }
  void set_snap_orbit_acceleration_point_y(double value) { record->snap_orbit_acceleration_point_y = value; }
  /// The scene bounds stay as they are.
  bool lock_to_selection() const { return record->lock_to_selection; }
  void set_lock_to_selection(bool value) { record->lock_to_selection = value; }
  /// A move that needs perspective may leave orthographic by itself.
  bool auto_switch_projection() const { return record->auto_switch_projection; }
  void set_auto_switch_projection(bool value) { record->auto_switch_projection = value; }
  /// A new selection, given as a sphere, moves the pivot to its centre.
  bool tool_selection_sensitivity() const { return record->tool_selection_sensitivity; }
  void set_tool_selection_sensitivity(bool value) { record->tool_selection_sensitivity = value; }
  /// A change of projection blends.
  bool use_projection_transitions() const { return record->use_projection_transitions; }
  void set_use_projection_transitions(bool value) { record->use_projection_transitions = value; }
  /// Pixels. Zero is legal: motion on that axis that counts in fractions of the view is then none.
  int viewport_width() const { return record->viewport_width; }
  void set_viewport_width(int value) { record->viewport_width = value; }
  int viewport_height() const { return record->viewport_height; }
  void set_viewport_height(int value) { record->viewport_height = value; }
  /// A drag, or a zoom by the wheel, is under way; written by the library.
  bool mouse_drag() const { return record->mouse_drag; }
  void set_mouse_drag(bool value) { record->mouse_drag = value; }

  /// The speed of a walk now, which may be changing in time.
  double fly_move_multiplier() const { return record->GetFlyMoveMultiplier(); }
  /// At once.
  void set_fly_move_multiplier(double value) { record->SetFlyMoveMultiplier(value); }
  /// Over `seconds` from one value to another, evenly. The result is the speed itself, for as long as these
  /// settings: what is done to it counts for the walk, and a copy of it goes on by itself.
  zovChangingInTimeValue& change_fly_move_multiplier_in_time(double initial, double final, double seconds) {
    record->ChangeFlyMoveMultiplierInTime(initial, final, seconds);
    return fly_move;
  }

  const Korvane::ApplicationParameters& korvane() const { return *record; }

 private:
  Korvane::ApplicationParameters* record;
  // Views of the record's.
  zovCameraParameters home;
  zovChangingInTimeValue fly_move;
};
