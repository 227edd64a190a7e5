#pragma once

#include <cstdint>
#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/shot.h"
#include "korvane/vector3.h"

namespace Korvane {

// One record for each kind of shot; the hub's BeginShot takes it and copies it whole. Durations are in
// seconds: a duration that is not above 0 makes the first step the last. Lengths are in world units, angles
// in degrees. A record that holds a number that is not finite is refused. Fill every field: a record starts
// out zero.

/// To another camera, the target point on a line, the distance on a line, the rotation on the sphere.
struct TransitionShotParameters {
  CameraParameters targetCamera;
  double easeEnd = 0.0;  ///< 1: ease over the whole duration; below 1: arrive early and wait.
  double duration = 0.0;
};

/// To a standard view of the scene.
struct ViewAlignShotParameters {
  enum CameraDirection : int {
    CAMERA_FRONT = 0,
    CAMERA_BACK = 1,
    CAMERA_TOP = 2,
    CAMERA_BOTTOM = 3,
    CAMERA_SIDE = 4,
    CAMERA_OPPOSITE_SIDE = 5,
  };
  static constexpr int DIRECTION_COUNT = 6;

  /// By CameraDirection: which axes add up to the direction from the target to the eye.
  bool directionFlags[DIRECTION_COUNT] = {};
  double duration = 0.0;
  double rollAngle = 0.0;    ///< About the target's view direction, applied negated.
  double panAngle = 0.0;     ///< About the target's up.
  bool fit = false;          ///< Fit the scene into the target view.
  bool keepSceneUp = false;  ///< Do not look for the axis of the scene nearest to the camera's up.
  Vector3 customDirection = Vector3::Zero;  ///< Components along front, up and side.
  Vector3 customUp = Vector3::Zero;
  Vector3 customFront = Vector3::Zero;
  bool useCustom = false;  ///< The three vectors above instead of the flags.
};

/// A field, without end, that draws a camera moved by something else to the nearest standard view.
struct ClosestViewAlignShotParameters {
  bool alignUp = false;    ///< Keep the camera's up straight with respect to the axis.
  bool soft = false;       ///< Pull gradually; else snap in one step when near.
  double threshold = 0.0;  ///< The reach of the pull, on the scale of 1 - cosine.
};

/// Brings a point to the middle of the view.
struct CenterShotParameters {
  Vector3 point;
  double easeEnd = 0.0;
  double duration = 0.0;
};

/// Flies to a place in front of a point and looks at it.
struct LookAtShotParameters {
  std::uint32_t reserved = 0;  ///< Read by nothing; kept for hosts that store the record.
  double duration = 0.0;
  Vector3 point;
  Vector3 direction;  ///< From the point to where the camera is to stand.
  double distance = 0.0;
};

/// Flies into a rectangle of the screen, told as an offset of the eye.
struct ZoomRectShotParameters {
  std::uint64_t reserved = 0;  ///< Read by nothing; kept for hosts that store the record.
  double duration = 0.0;
  double sidewaysOffset = 0.0;  ///< To the right.
  double upwardOffset = 0.0;
  double forwardOffset = 0.0;
};

struct PanZoomShotParameters {
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double sidewaysDistance = 0.0;  ///< To the right.
  double upwardDistance = 0.0;
  double zoomDistance = 0.0;  ///< Forward.
};

/// Along the line to the pivot.
struct ZoomShotParameters {
  static constexpr std::int32_t DIRECTION_IN = 0;
  static constexpr std::int32_t DIRECTION_OUT = 1;

  std::int32_t direction = DIRECTION_IN;
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double amount = 0.0;  ///< A fraction of the distance to the pivot.
};

/// Blends to another projection. The host must check that `use_projection_transitions` is set: without it
/// the shot has no cameras and writes a default record.
struct ProjectionTransitionShotParameters {
  static constexpr std::int32_t PROJECTION_PERSPECTIVE = 0;
  static constexpr std::int32_t PROJECTION_ORTHOGRAPHIC = 1;

  double easeEnd = 0.0;
  double duration = 0.0;
  std::int32_t targetProjection = PROJECTION_PERSPECTIVE;  ///< As CameraParameters::projection_type.
};

/// Plays back a recorded path, linearly.
struct KeyframeShotParameters {
  std::vector<CameraParameters> keyframes;  ///< At least one.
  std::vector<double> times;                ///< Unit times, one for each keyframe; none: evenly spread.
  double duration = 0.0;
};

struct TrackShotParameters {
  static constexpr std::int32_t DIRECTION_RIGHT = 0;
  static constexpr std::int32_t DIRECTION_LEFT = 1;
  static constexpr std::int32_t DIRECTION_FORWARD = 2;
  static constexpr std::int32_t DIRECTION_BACKWARD = 3;

  std::int32_t direction = DIRECTION_RIGHT;
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double distance = 0.0;
  bool keepTarget = false;  ///< Keep looking at the same point.
};

/// Turns the head.
struct SpinShotParameters {
  static constexpr std::int32_t AXIS_WORLD_UP = 0;
  static constexpr std::int32_t AXIS_CAMERA_HORIZONTAL = 1;

  std::int32_t axis = AXIS_WORLD_UP;
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double angle = 0.0;
};

/// Circles the centre.
struct OrbitShotParameters {
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double horizontalAngle = 0.0;
  double verticalAngle = 0.0;
};

struct LookShotParameters {
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double horizontalAngle = 0.0;
  double verticalAngle = 0.0;
};

/// A quarter of an ellipse up or down, and a line sideways.
struct CraneShotParameters {
  static constexpr std::int32_t DIRECTION_DOWN = 0;
  static constexpr std::int32_t DIRECTION_UP = 1;

  std::int32_t direction = DIRECTION_DOWN;
  TargetCamPos anchor = TARGET_CAM_START;
  double duration = 0.0;
  double height = 0.0;
  double sidewaysDistance = 0.0;
  double forwardRatio = 0.0;  ///< The way forward, as a multiple of the height.
  bool keepTarget = false;    ///< Keep looking at the same point.
};

}  // namespace Korvane
