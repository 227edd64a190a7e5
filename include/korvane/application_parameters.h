#pragma once

#include "korvane/box3.h"
#include "korvane/cam3d_controller_parameters.h"
#include "korvane/camera_parameters.h"
#include "korvane/changing_in_time.h"
#include "korvane/export.h"
#include "korvane/vector3.h"

class zovApplicationParameters;

namespace Korvane {

/// The settings of a view: directions and bounds of the scene, the speed of every operation, the size of
/// the viewport and the home camera. The hub owns one; the host writes its fields as it likes, at any time
/// between two frames. Lengths are world units; each field says where it differs.
class ZOVTOOLS_API ApplicationParameters {
 public:
  enum class BoundGeometryType : int { Sphere = 0, Box = 1 };

  static const double defaultFlyTurnMultiplier;
  static const int defaultFlyDeadZoneRadius;
  static const double defaultFlyRampUpRadius;
  static const bool defaultFlyPlanarMotion;
  static const double defaultFlyUpDownSensitivity;
  static const Cam3DControllerParameters::NavigationMode defaultCam3DControllerMode;
  static const double defaultLookInvertTolerance;
  static const double defaultPanMultiplier;
  static const double defaultLookMultiplier;
  static const double defaultOrbitMultiplier;
  static const double defaultDollyMultiplier;
  static const double defaultHeightMultiplier;
  static const double defaultSlideMultiplier;
  static const double defaultZoomSensitivity;
  static const double defaultZoomMinLimit;
  static const bool defaultZoomMinLimitMotion;
  static const double defaultZoomMinLimitMultiplier;
  static const double defaultZoomBackDistance;
  static const int defaultZoomOutSnapSize;
  static const int defaultZoomInSnapSize;
  static const bool defaultZoomSenseReversed;
  static const bool defaultLookInvertVerticalAxis;
  static const bool defaultUseLookAtObstructionDetection;
  static const BoundGeometryType defaultGlobalBoundGeometry;
  static const bool defaultPreserveOrbitUpDirection;
  static const bool defaultAlignOrbitUpDirection;
  static const bool defaultConstrainOrbitHorizontal;
  static const bool defaultConstrainOrbitVertical;
  static const bool defaultDoCustomOrbit;
  static const bool defaultDoSnapOrbit;
  static const double defaultSnapOrbitDeadZone;
  static const double defaultSnapOrbitThresholdH;
  static const double defaultSnapOrbitAccelerationAX;
  static const double defaultSnapOrbitAccelerationBX;
  static const double defaultSnapOrbitAccelerationPointX;
  static const double defaultSnapOrbitThresholdV;
  static const double defaultSnapOrbitAccelerationAY;
  static const double defaultSnapOrbitAccelerationBY;
  static const double defaultSnapOrbitAccelerationPointY;
  static const bool defaultLockToSelection;
  static const bool defaultAutoSwitchProjection;
  static const bool defaultToolSelectionSensitivity;
  static const bool defaultUseProjectionTransitions;
  static const double defaultFlyMoveMultiplier;

  ApplicationParameters();
  ApplicationParameters(const ApplicationParameters&) = default;
  ApplicationParameters& operator=(const ApplicationParameters&) = default;
  virtual ~ApplicationParameters();

  /// Scales how fast a walk turns.
  double fly_turn_multiplier = defaultFlyTurnMultiplier;
  /// Pixels around the start of a walk in which nothing moves.
  int fly_dead_zone_radius = defaultFlyDeadZoneRadius;
  /// Fraction of the viewport over which a walk gains speed.
  double fly_ramp_up_radius = defaultFlyRampUpRadius;
  /// Walk on the plane of the scene; also makes the world up the up of every operation.
  bool fly_planar_motion = defaultFlyPlanarMotion;
  /// World units that a key lifts a standing walker by, each frame.
  double fly_up_down_sensitivity = defaultFlyUpDownSensitivity;
  /// What a six-axis controller does.
  Cam3DControllerParameters::NavigationMode cam3d_controller_mode = defaultCam3DControllerMode;
  /// Degrees past the vertical before a look turns its sense round.
  double look_invert_tolerance = defaultLookInvertTolerance;
  /// 1: the scene at the depth of the pivot follows the cursor exactly.
  double pan_multiplier = defaultPanMultiplier;
  /// Radians for a drag across the whole view.
  double look_multiplier = defaultLookMultiplier;
  /// Radians for a drag across the whole view.
  double orbit_multiplier = defaultOrbitMultiplier;
  /// Scene scales for a drag across the whole view.
  double dolly_multiplier = defaultDollyMultiplier;
  /// Scales how fast the camera rises.
  double height_multiplier = defaultHeightMultiplier;
  /// World units a second for an offset of a whole view.
  double slide_multiplier = defaultSlideMultiplier;
  /// The factor of one pixel; above 1.
  double zoom_sensitivity = defaultZoomSensitivity;
  /// The fraction of the first distance to the pivot at which a zoom in halts.
  double zoom_min_limit = defaultZoomMinLimit;
  /// A zoom may be pushed on past that halt.
  bool zoom_min_limit_motion = defaultZoomMinLimitMotion;
  /// Scales the motion past the halt.
  double zoom_min_limit_multiplier = defaultZoomMinLimitMultiplier;
  /// How far one drag may zoom out, world units. Math::MAX_VALUE: no limit.
  double zoom_back_distance = defaultZoomBackDistance;
  /// Dead pixels before a zoom out moves.
  int zoom_out_snap_size = defaultZoomOutSnapSize;
  /// Dead pixels at the halt before the camera moves on.
  int zoom_in_snap_size = defaultZoomInSnapSize;
  /// Dragging right and up zooms out.
  bool zoom_sense_reversed = defaultZoomSenseReversed;
  /// A look up follows a drag down.
  bool look_invert_vertical_axis = defaultLookInvertVerticalAxis;
  /// A look-at keeps clear of what stands between.
  bool use_look_at_obstruction_detection = defaultUseLookAtObstructionDetection;
  /// Pixels of the display to a point. The storyboard, the film strip, gauges, the welcome screen and how far
  /// a note stands from the pointer are so many times as large. 1 at first; anything not finite or not above
  /// 0 counts as 1. All else stays in pixels: what the host gives a size itself, as discs, and what has one
  /// of its own: cube and labels of the cube, items of the navigation bar, crosshair of a rectangle, texts of
  /// slides.
  float pixels_per_point = 1.0F;
  /// The directions of the model. Front is the x axis.
  Vector3 scene_up_direction = Vector3(0, 1, 0);
  Vector3 scene_front_direction = Vector3(1, 0, 0);
  /// World units that count as one step of a walk or dolly.
  double scene_scale = 1.0;
  /// What counts as the scene now, derived from one of the three groups below.
  double scene_bound_radius = 1.0;
  Box3 scene_bound_box;
  Vector3 scene_bound_centre;
  /// Whether the sphere or the box describes the model better, for fitting.
  BoundGeometryType global_bound_geometry = defaultGlobalBoundGeometry;
  /// The whole model.
  double global_bound_radius = 1.0;
  Vector3 global_bound_centre;
  Box3 global_bound_box;
  /// The user coordinate system.
  double ucs_bound_radius = 0;
  Box3 ucs_bound_box;
  Vector3 ucs_bound_centre;
  /// The selection.
  double selected_bound_radius = 0;
  Box3 selected_bound_box;
  Vector3 selected_bound_centre;
  /// The directions of the world.
  Vector3 world_up_direction = Vector3(0, 1, 0);
  Vector3 world_front_direction = Vector3(1, 0, 0);
  /// The scene has its own directions and the model is the scene; see GetWorldUpDirection of the hub.
  bool scene_is_world = true;
  /// Where "home" leads.
  CameraParameters home_camera;
  /// Orbit as a turntable about the up axis; else freely.
  bool preserve_orbit_up_direction = defaultPreserveOrbitUpDirection;
  /// Straighten the camera when a turntable orbit begins.
  bool align_orbit_up_direction = defaultAlignOrbitUpDirection;
  /// Orbit without turning (without tilting).
  bool constrain_orbit_horizontal = defaultConstrainOrbitHorizontal;
  bool constrain_orbit_vertical = defaultConstrainOrbitVertical;
  /// Orbit about the custom axes instead of those of the world.
  bool do_custom_orbit = defaultDoCustomOrbit;
  /// An orbit is drawn to the 26 standard views.
  bool do_snap_orbit = defaultDoSnapOrbit;
  /// The axes of a custom orbit.
  Vector3 custom_orbit_up = Vector3(0, 1, 0);
  Vector3 custom_orbit_front = Vector3(1, 0, 0);
  /// Fraction of the viewport that a drag must cover to leave a snapped view.
  double snap_orbit_dead_zone = defaultSnapOrbitDeadZone;
  /// Radians within which a standard view attracts.
  double snap_orbit_threshold_h = defaultSnapOrbitThresholdH;
  /// Speed-up towards the view (slow-down away from it) in the outer band.
  double snap_orbit_acceleration_ax = defaultSnapOrbitAccelerationAX;
  /// The same in the inner band; also the slow-down past the dead zone of a view that is left.
  double snap_orbit_acceleration_bx = defaultSnapOrbitAccelerationBX;
  /// How far into the threshold, from its outer edge, the inner band begins: a fraction of it.
  double snap_orbit_acceleration_point_x = defaultSnapOrbitAccelerationPointX;
  /// The same four for the vertical rotation.
  double snap_orbit_threshold_v = defaultSnapOrbitThresholdV;
  double snap_orbit_acceleration_ay = defaultSnapOrbitAccelerationAY;
  double snap_orbit_acceleration_by = defaultSnapOrbitAccelerationBY;
  double snap_orbit_acceleration_point_y = defaultSnapOrbitAccelerationPointY;
  /// The scene bounds stay as they are.
  bool lock_to_selection = defaultLockToSelection;
  /// A move that needs perspective may leave orthographic by itself.
  bool auto_switch_projection = defaultAutoSwitchProjection;
  /// A new selection, given as a sphere, moves the pivot to its centre.
  bool tool_selection_sensitivity = defaultToolSelectionSensitivity;
  /// A change of projection blends.
  bool use_projection_transitions = defaultUseProjectionTransitions;
  /// Pixels. Zero is legal: motion on that axis that counts in fractions of the view is then none.
  int viewport_width = 1024;
  int viewport_height = 768;
  /// A drag, or a zoom by the wheel, is under way; written by the library.
  bool mouse_drag = false;

  /// The speed of a walk, which may be changing in time: now, at once, or over `seconds` from one value to
  /// another.
  double GetFlyMoveMultiplier() const { return flyMoveMultiplier.GetValue(); }
  void SetFlyMoveMultiplier(double value) { flyMoveMultiplier.SetValue(value); }
  void ChangeFlyMoveMultiplierInTime(double initial, double final, double seconds) {
    flyMoveMultiplier.Start(initial, final, seconds, INTERPOLATION_LINEAR);
  }

 private:
  friend class ::zovApplicationParameters;  // hands the speed out as a value that changes in time

  ChangingInTimeValue flyMoveMultiplier;
};

}  // namespace Korvane
