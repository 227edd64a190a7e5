#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/shot.h"

namespace Korvane {

class CameraOperations;

/// One shot of a story: an animated camera move, told by the camera from which it starts. Plain data, the
/// host's to keep between runs; it knows nothing of slides or of time.
///
/// Distances are in the units of the scene, angles in degrees, times in seconds. A number that is not finite,
/// or a camera that is none, is ignored by its setter.
class ZOVTOOLS_API ShotSpecification {
 public:
  enum ShotType : int {
    SHOT_TRACK_LEFT = 0,
    SHOT_TRACK_RIGHT = 1,
    SHOT_ZOOM_IN = 2,
    SHOT_ZOOM_OUT = 3,
    SHOT_CRANE_UP = 4,
    SHOT_CRANE_DOWN = 5,
    SHOT_LOOK = 6,
    SHOT_ORBIT = 7,
    SHOT_PAN_ZOOM = 8,
    SHOT_STILL = 9,
    SHOT_RECORDED_WALK = 10,
  };
  static constexpr int SHOT_TYPE_COUNT = 11;

  /// How the shot before passes into this one. Any other number is a cut.
  enum TransitionType : int {
    TRANSITION_FADE_THROUGH_BLACK = 0,
    TRANSITION_FADE_THROUGH_WHITE = 1,
    TRANSITION_CUT = 2,
  };

  struct RecordedElement {
    CameraParameters camera;
    double time = 0.0;  ///< Seconds since the begin of the walk.
  };

  /// A still of 3 seconds, seen by `start`.
  explicit ShotSpecification(const CameraParameters& start);

  /// Where the shot starts.
  const CameraParameters& GetCameraParameters() const { return camera; }
  void SetCameraParameters(const CameraParameters& value);
  /// Where within the move the start camera stands.
  TargetCamPos GetCameraPosition() const { return cameraPosition; }
  void SetCameraPosition(TargetCamPos value) { cameraPosition = value; }
  double GetDuration() const { return duration; }
  void SetDuration(double value);
  /// Forward. A zoom goes as far in or out; a crane goes as far forward while it rises or sinks; a pan and
  /// zoom goes this part of the way to the centre.
  double GetInOutDistance() const { return inOutDistance; }
  void SetInOutDistance(double value);
  /// Of a look or an orbit: to the left, to which the view turns or the camera goes; negative to the right.
  double GetLeftRightAngle() const { return leftRightAngle; }
  void SetLeftRightAngle(double value);
  /// To the right.
  double GetLeftRightDistance() const { return leftRightDistance; }
  void SetLeftRightDistance(double value);
  /// A track or a crane keeps looking at the same point.
  bool GetLookAtCenterOfInterest() const { return lookAtCenterOfInterest; }
  void SetLookAtCenterOfInterest(bool value) { lookAtCenterOfInterest = value; }
  const std::wstring& GetName() const { return name; }
  void SetName(const std::wstring& value) { name = value; }
  /// A number that is no type is kept; such a shot does not begin.
  ShotType GetShotType() const { return shotType; }
  void SetShotType(ShotType value) { shotType = value; }
  TransitionType GetTransitionType() const { return transitionType; }
  void SetTransitionType(TransitionType value) { transitionType = value; }
  /// 1 second at first.
  double GetTransitionDuration() const { return transitionDuration; }
  void SetTransitionDuration(double value);
  /// Upward.
  double GetUpDownDistance() const { return upDownDistance; }
  void SetUpDownDistance(double value);
  /// Upward.
  double GetUpDownAngle() const { return upDownAngle; }
  void SetUpDownAngle(double value);

  // ---- a recorded walk, in the order of its times ----

  void AddRecordedElement(const CameraParameters& seen, double time);
  void AddRecordedElement(const RecordedElement& element);
  /// The storage stays, for the next walk.
  void ClearRecordedElements() { recordedElements.clear(); }
  /// Throws std::out_of_range past the end.
  const RecordedElement& GetRecordedElement(std::uint64_t index) const;
  std::uint64_t GetRecordedElementCount() const { return recordedElements.size(); }

  /// Asks the hub for the move. The camera of the view is left as it is: whoever plays the shot applies the
  /// start camera first. A zoom goes along the line to the centre: it makes the centre the pivot of its start
  /// camera. False for null, for a number that is no type, and where the hub begins none.
  bool BeginShot(CameraOperations* hub);

  /// For those that look at the shot and may outlive it.
  Lifeline& GetLifeline() { return lifeline; }

 private:
  struct Starters;
  friend struct Starters;

  double GetViewDistance() const;  // from the eye to the centre

  CameraParameters camera;
  TargetCamPos cameraPosition = TARGET_CAM_START;
  double duration = 3.0;
  double inOutDistance = 0.0;
  double leftRightAngle = 0.0;
  double leftRightDistance = 0.0;
  bool lookAtCenterOfInterest = false;
  std::wstring name;
  ShotType shotType = SHOT_STILL;
  TransitionType transitionType = TRANSITION_FADE_THROUGH_BLACK;
  double transitionDuration = 1.0;
  double upDownDistance = 0.0;
  double upDownAngle = 0.0;
  std::vector<RecordedElement> recordedElements;
  Lifeline lifeline;
};

}  // namespace Korvane
