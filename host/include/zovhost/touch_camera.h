#pragma once

#include <optional>

#include "korvane/camera_parameters.h"
#include "korvane/look_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/rewind_record.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"
#include "zovhost/touch_gestures.h"

namespace Korvane {
class ApplicationParameters;
class CameraOperations;
class PivotBall;
class Renderer;
class RewindHistory;
}  // namespace Korvane

namespace zovhost {

/// The camera that shows `anchor`, a point seen at the pixel `motion.from`, at the pixel `motion.to`, as much
/// larger and as far turned as the fingers ask for: what lies at its depth follows them.
///
/// A view that is kept upright (`preserve_orbit_up_direction`) is not rolled: it orbits about the up axis
/// through the anchor, as a turntable seen from its side would. A turn of less than TURN_DEAD_ZONE does
/// nothing, and beyond that only the rest counts. A scale ends where nothing but the model's surface, or the
/// model as a speck, would show. Sizes and bounds are those of `parameters`. A camera that sees nothing comes
/// back as it is.
Korvane::CameraParameters MoveWithFingers(const Korvane::CameraParameters& camera,
                                          const Korvane::Vector3& anchor, const TouchMotion& motion,
                                          const Korvane::ApplicationParameters& parameters,
                                          const Korvane::Vector3& worldUp);
constexpr double TURN_DEAD_ZONE = 0.12;  // radians

/// Moves a camera by fingers: one orbits, two shift, enlarge and turn the picture at their middle, three and
/// more walk or look. Where the view stays parallel, three do what two do.
///
/// All of it, from the first finger to the last, is one entry of the history. When a finger comes or goes the
/// picture stays as it is. Hub, renderer, history and ball are borrowed.
class TouchCamera {
 public:
  enum class ThreeFingers : int { Walk, Look };

  TouchCamera(Korvane::CameraOperations& hub, Korvane::Renderer& renderer);
  ~TouchCamera();
  TouchCamera(const TouchCamera&) = delete;
  TouchCamera& operator=(const TouchCamera&) = delete;

  /// For the moves to come. The ball marks what an orbit turns about. Null: none.
  void SetRewindHistory(Korvane::RewindHistory* value) { history = value; }
  void SetPivotBall(Korvane::PivotBall* ball) { orbit.SetPivotBall(ball); }
  void SetThreeFingers(ThreeFingers use) { threeFingers = use; }
  /// Two fingers that enlarge the picture leave the pivot where it is, instead of taking it to what is
  /// between them.
  void SetKeepsPivot(bool wanted) { keepsPivot = wanted; }

  /// A finger has come down that may orbit: chooses the pivot, as the hub does, and marks it until the next
  /// Begin or Unmark. Nothing while the camera moves by itself.
  void Mark();
  void Unmark();

  /// With as many fingers as there are now, from where they are; what others did ends.
  void Begin(TouchGestures& fingers);
  /// The fingers have moved.
  void Follow(TouchGestures& fingers);
  /// Waits for the next Begin: fewer fingers are down, or none moves.
  void Pause();
  /// Closes the entry of the history.
  void End();
  bool IsMoving() const { return kind != Kind::None; }

 private:
  enum class Kind : int { None, Orbit, Picture, Walk, Look };

  Kind ChooseKind(int count);
  bool BeginWalk(const Korvane::Vector2& at);
  void BeginPicture(const Korvane::Vector2& at);
  void FollowPicture(TouchGestures& fingers);
  int FlipRow(double y) const;

  Korvane::CameraOperations& hub;
  Korvane::Renderer& renderer;
  Korvane::RewindHistory* history = nullptr;
  Korvane::OrbitTool orbit;
  Korvane::LookTool look;
  Korvane::RewindRecord record;
  ThreeFingers threeFingers = ThreeFingers::Walk;
  Kind kind = Kind::None;
  Korvane::CameraParameters base;  // of the picture, when its fingers began
  Korvane::CameraParameters last;  // as they have left it
  Korvane::Vector3 anchor;
  bool onModel = false;  // the anchor
  bool keepsPivot = false;
  bool marked = false;
};

}  // namespace zovhost
