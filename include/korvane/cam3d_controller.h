#pragma once

#include <memory>

#include "korvane/cam3d_controller_parameters.h"
#include "korvane/export.h"
#include "korvane/shot_parameters.h"
#include "korvane/vector3.h"

namespace Korvane {

class Cam3DControllerObserver;
class CameraOperations;
class DynamicIcon2D;
class PivotBall;
class Renderer;
class RewindHistory;
enum Cam3DControllerKeyID : int;
struct Cam3DControllerParts;

/// Moves the camera by a six-axis input device.
///
/// The host reads the device, and tells of each state of its six axes and of each press and release of its
/// buttons. While the device is deflected the hub runs one OPERATION_CAM3D_CONTROLLER, which is one record of
/// the rewind history: the host goes on calling PerformOperations, and each frame moves by the last input.
/// Tell of every state once, also of the one in which the device comes to rest, which ends the motion; as
/// many times a second as there are frames.
///
/// Where another ends the operation - a host, or a widget that is used - the view is theirs: the device
/// begins nothing until it has come to rest, or has been switched off or to another mode.
///
/// The view manager switches the controller off while the mouse is in use. Walking and flying need a
/// perspective view: another one either becomes that or is warned of, by `auto_switch_projection`.
///
/// Hub, renderer, history, ball and observers are borrowed; null takes one away, and one that is destroyed is
/// forgotten; what needs it is then skipped and answers false. An input that holds a number that is used and
/// not finite is refused. Wherever the controller calls out - the hub and whom that tells, the renderer, the
/// history, the ball, its observers, its own virtual operations - a host may end what goes on, switch the
/// controller off, give it other collaborators or none, and delete it; within an operation of the renderer it
/// may not be deleted. Several controllers may share a hub: the one that begins takes the motion over. All
/// calls belong on the host's window thread.
class ZOVTOOLS_API Cam3DController {
 public:
  using NavigationMode = Cam3DControllerParameters::NavigationMode;
  using CameraDirection = ViewAlignShotParameters::CameraDirection;

  Cam3DController();
  /// Ends a motion. The move of a command goes on, and its record ends.
  virtual ~Cam3DController();
  Cam3DController(const Cam3DController&) = delete;
  Cam3DController& operator=(const Cam3DController&) = delete;

  /// Shown while the model turns. The ball that a motion has shown is hidden when another takes its place.
  virtual void SetPivotBall(PivotBall* ball);
  virtual PivotBall* GetPivotBall() const;
  /// Call Destroy before another renderer takes over: the texts of this one are given back to it.
  virtual void SetRenderer(Renderer* value);
  virtual Renderer* GetRenderer() const;
  /// Takes the texts of the warnings. False without a renderer.
  virtual bool Create();
  /// Gives them back; a warning that shows is gone. False without a renderer.
  virtual bool Destroy();
  /// A pass over the view, with the note if there is one. Nothing without a hub or a renderer.
  virtual void Draw();
  /// From the input that begins a motion to the end of it: the device at rest, switched off, or with another
  /// mode. Also where the operation has been ended otherwise meanwhile, and the device moves nothing.
  virtual bool IsOperating() const;
  /// Off, nothing that comes from the device is used; a motion ends. On at first.
  virtual void SetEnabled(bool value);
  virtual bool GetEnabled() const;
  /// Ends a motion and tells the observers, also of a mode that is none, which is not taken.
  virtual void SetNavigationMode(NavigationMode mode);
  /// To MODE_PAN, and from there to the mode of before.
  virtual void Toggle2DNavigationMode();
  /// The numbers of the device, by axis: see Cam3DControllerParameters. They become what the threshold and
  /// the multipliers leave of them. The input that begins a motion only begins it. False when switched off,
  /// and, with nothing changed, for a number that is not finite and would be used.
  virtual bool On3DControllerInput(Vector3& translation, Vector3& rotation);
  /// A button of the device. Ends a motion and does what the button stands for. False when switched off,
  /// without a hub, and for a button that stands for nothing.
  virtual bool On3DControllerKeyDown(int button);
  virtual bool On3DControllerKeyUp(int button);

 protected:
  // Animated moves, each one record of the history. False without a hub, and when the hub begins none.

  /// To the side of the scene; false for a number that is none.
  virtual bool AlignToView(CameraDirection direction);
  virtual bool FitToView();
  virtual bool GoToHomeView();
  /// About the view, by an angle in degrees: positive turns as the counter-clockwise arrow of the cube.
  virtual bool RotateView(double degrees);
  /// To the next view of the history or the one before, which is no record itself. False at the end.
  virtual bool StepHistory(bool forward);

 public:
  /// Another hub, or none, ends a motion, and the record of a command, in the hub that was there. A device
  /// that is deflected then has to come to rest first.
  void SetKorvane(CameraOperations* hub);
  /// Records that are open end in the history in which they were opened.
  void SetRewindHistory(RewindHistory* history);
  /// False for null only. One that is already held keeps its place.
  bool AddObserver(Cam3DControllerObserver* observer);
  void RemoveObserver(Cam3DControllerObserver* observer);
  /// What a button stands for, by the device's number. False for an id that is none.
  bool MapKey(int button, Cam3DControllerKeyID id);
  /// At the bottom of the view, until it is replaced: by null, by a warning, by the end of a warning.
  /// Borrowed.
  void SetHUDMessage(DynamicIcon2D* icon);

  // ---- settings; see Cam3DControllerParameters ----

  NavigationMode GetNavigationMode() const;
  double GetSensitivity() const;
  void SetSensitivity(double value);
  double GetInputThreshold() const;
  void SetInputThreshold(double value);
  int GetPivotBallThreshold() const;
  void SetPivotBallThreshold(int inputs);
  bool GetEnableRotation() const;
  void SetEnableRotation(bool enable);
  bool GetEnableTranslation() const;
  void SetEnableTranslation(bool enable);
  bool GetKeepSceneUpright() const;
  void SetKeepSceneUpright(bool keep);
  void GetTranslationMultipliers(NavigationMode mode, double* multipliers) const;
  void SetTranslationMultipliers(NavigationMode mode, const double* multipliers);
  void GetRotationMultipliers(NavigationMode mode, double* multipliers) const;
  void SetRotationMultipliers(NavigationMode mode, const double* multipliers);
  /// Of an orthographic view the device scales the size by (d + step) / d, where d is the distance from the
  /// eye to the centre. A step of d or more towards the centre leaves no size, or a negative one: a mirrored
  /// view. With the limit on, such a step is left out; off at first.
  void SetLimitOrthographicZoom(bool limit);
  bool GetLimitOrthographicZoom() const;
  /// `tool_selection_sensitivity` of the hub. False without one.
  bool GetSelectionSensitivity() const;
  void SetSelectionSensitivity(bool sensitive);

 protected:
  /// False without a hub and while a shot runs.
  bool Begin3DControllerOperation();
  /// An input, scaled. False when the device does not operate, and without a hub.
  bool Perform3DControllerOperation(const Vector3& translation, const Vector3& rotation);
  /// Once; false when the device does not operate, and without a hub.
  bool End3DControllerOperation();
  /// Whether the present mode works in the present projection; every one without a hub.
  bool IsValidMode() const;
  bool ShouldKeepSceneUpright() const;
  /// Of each axis what the threshold and the multipliers leave.
  void AdjustInput(Vector3& translation, Vector3& rotation) const;
  static double AdjustInputParameter(double sensitivity, double threshold, double value);
  /// The side of the scene from which the view looks exactly along an axis of the world; -1 for none.
  int GetAlignDir() const;

  /// For the tests of the library, which see what it is.
  Cam3DControllerParts& GetParts() { return *parts; }

 private:
  struct Keys;

  bool Move(const Vector3& translation, const Vector3& rotation);
  bool MakeModeValid();
  template <class Begin>
  bool Record(const Begin& begin);

  std::shared_ptr<Cam3DControllerParts> parts;
};

}  // namespace Korvane
