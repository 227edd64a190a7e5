#pragma once

#include <array>
#include <cstdint>

#include "korvane/application_parameters.h"
#include "korvane/camera_parameters.h"
#include "korvane/export.h"
#include "korvane/fit_margins.h"
#include "korvane/lifeline.h"
#include "korvane/observer_list.h"
#include "korvane/operation.h"
#include "korvane/running.h"
#include "korvane/shot.h"
#include "korvane/shot_parameters.h"
#include "korvane/timer.h"

namespace Korvane {

/// The hub: the one camera and the settings of a view, the interactive operations in progress, at most one
/// of each kind, and the one active shot. It advances all of them once a frame.
///
/// A host derives from it and supplies the three pure operations. Frames are pulled: whatever moves asks
/// the host for a frame through `RequestApplicationUpdate`, the host answers with `PerformOperations` once
/// for each frame, before it draws, and that asks for the next frame as long as anything goes on.
///
/// Wherever the hub calls out - the three pure operations, the hooks, operation and shot observers - the host
/// may begin and end operations and shots, add and remove observers, and change settings. An operation or a
/// shot that goes while it is being called is gone from the hub at once, and lives until the call is over.
/// A frame within such a call does nothing and is false. What may not happen there, and is asserted wherever
/// the hub can see it: the end of the hub.
///
/// The hub excludes nothing: any number of kinds and a shot may run together, operations first, lowest
/// kind first, then the shot; the last writer of a field wins. Whoever starts a move ends what runs first.
/// All calls belong on the host's window thread.
class ZOVTOOLS_API CameraOperations {
 public:
  /// Operations and a shot that still run are dropped without a word; end them first.
  virtual ~CameraOperations();

  // ---- the host's side ----

  /// The host takes these values into its view. They are finite: a camera that holds a number that is not,
  /// after the moves of the frame, is not applied.
  virtual void ApplyCameraParameters(const CameraParameters& camera) = 0;
  /// The host fills in the values of its view now.
  virtual void QueryCameraParameters(CameraParameters& camera) const = 0;
  /// The host schedules a redraw.
  virtual void RequestApplicationUpdate() = 0;

  // ---- bounds: what counts as the scene ----
  // A centre is always separate from the box. A radius that is not above 0, or an empty box, stands for
  // the global one; a number that is not finite changes nothing.

  virtual void SetSceneBoundingSphere(double radius, Vector3 centre);
  virtual void SetSceneBoundingBox(Box3 box, Vector3 centre);
  virtual void ResetSceneBoundingSphere();
  virtual void ResetSceneBoundingBox();
  virtual void SetUCSBoundingSphere(double radius, Vector3 centre);
  virtual void SetUCSBoundingBox(Box3 box, Vector3 centre);
  virtual void ResetUCSBoundingSphere();
  virtual void ResetUCSBoundingBox();
  virtual bool IsGeometrySelected();
  /// With `tool_selection_sensitivity` also moves the pivot of the host's camera to the selection, at once.
  virtual void SetGeometrySelection(double radius, Vector3 centre);
  /// Clears the sphere of the selection or its box, by `global_bound_geometry`.
  virtual void ResetGeometrySelection();
  /// Leaves the pivot alone.
  void SetBoundingBoxSelection(Box3 box, Vector3 centre);

  // ---- world directions ----

  /// `scene_up_direction` (front) with `scene_is_world`, else `world_up_direction` (front). As stored, not
  /// normalised.
  virtual Vector3 GetWorldUpDirection() const;
  virtual Vector3 GetWorldFrontDirection() const;

  // ---- operations ----

  /// The frame. True when an operation or a shot goes on or the projection is blending, and another frame
  /// has been asked for. False, and nothing done, within what the hub has called.
  virtual bool PerformOperations();
  /// False for a kind out of range or one that the library does not make, and when a hook of the host ended
  /// or replaced the operation before it began. End an operation before you begin its kind again: the old one
  /// is dropped and its observers do not hear of it. `x` and `y` are viewport pixels, origin at the TOP left.
  virtual bool BeginOperation(OperationType type, int x, int y);
  /// False for a kind out of range; true otherwise, also when nothing was active.
  virtual bool EndOperation(OperationType type);
  /// The three forms hand input to an operation; none moves the camera. False for a kind out of range;
  /// true otherwise, also when nothing is active. OPERATION_ALL stands for all kinds.
  virtual bool UpdateOperationParams(Vector3 translation, Vector3 rotation, OperationType type);
  virtual bool UpdateOperationParams(KeyID key, bool pressed, OperationType type);
  virtual bool UpdateOperationParams(int x, int y, OperationType type);

  // ---- shots ----
  // Each form makes the shot of its record, ends a running shot, and begins. A shot that an observer or a
  // hook begins meanwhile gives way, too, and is told so; what would be begun at that second end is refused,
  // since it could go on for ever. False when refused, for a record that holds a number that is not finite,
  // for keyframes that are none or do not match their times, and when the shot could not be made.

  virtual bool BeginShot(const LookAtShotParameters& parameters);
  virtual bool BeginShot(const ZoomRectShotParameters& parameters);
  virtual bool BeginShot(const ProjectionTransitionShotParameters& parameters);
  virtual bool BeginShot(const PanZoomShotParameters& parameters);
  virtual bool BeginShot(const CenterShotParameters& parameters);
  virtual bool BeginShot(const KeyframeShotParameters& parameters);
  virtual bool BeginShot(const TransitionShotParameters& parameters);
  virtual bool BeginShot(const ClosestViewAlignShotParameters& parameters);
  virtual bool BeginShot(const ViewAlignShotParameters& parameters);
  virtual bool BeginShot(const LookShotParameters& parameters);
  virtual bool BeginShot(const SpinShotParameters& parameters);
  virtual bool BeginShot(const CraneShotParameters& parameters);
  virtual bool BeginShot(const OrbitShotParameters& parameters);
  virtual bool BeginShot(const ZoomShotParameters& parameters);
  virtual bool BeginShot(const TrackShotParameters& parameters);

  /// Ends the active shot, if any, and tells its observer, then the hook. Both may begin another, which
  /// stays. Always true.
  virtual bool EndShot();
  /// Steps the active shot by `dt` seconds, apart from the frame clock. False without a shot. A shot that
  /// goes while the host is asked for its camera is not stepped any more. Never ends the shot, and the camera
  /// of a last step, for which the shot answers false, is not applied.
  virtual bool AdvanceActiveShot(double dt);
  /// With OPERATION_ALL: whether any is active.
  virtual bool IsOperationActive(OperationType type) const;
  virtual bool IsShotActive() const;
  /// Null when not active or out of range.
  virtual Operation* GetActiveOperation(OperationType type) const;
  virtual Shot* GetActiveShot() const;
  /// For the active shot only, so call it after BeginShot. False without a shot, and for null. Borrowed; an
  /// observer that dies before the shot ends is forgotten.
  virtual bool SetActiveShotObserver(ShotObserver* observer);

  // ---- parameters, cameras, observers ----

  virtual ApplicationParameters& GetApplicationParameters();
  virtual const ApplicationParameters& GetApplicationParameters() const;
  /// The hub's working copy, refreshed from the host at each frame, at each begin, by AdvanceActiveShot and
  /// by SetGeometrySelection. It may hold what was not applied.
  virtual const CameraParameters& GetCameraParameters() const;
  virtual CameraParameters& GetHomeCamera();
  /// As CameraCheckEqual.
  [[nodiscard]] virtual bool CheckCamerasEqual(const CameraParameters* a, const CameraParameters* b) const;
  /// Null is ignored; an observer added twice is told twice.
  virtual void AddOperationObserver(OperationObserver* observer);
  /// Removes every entry of this observer.
  virtual void RemoveOperationObserver(OperationObserver* observer);

  // ---- view fitting ----

  /// Brings a pivot that has left the view back onto its axis, at its depth. False when it is in view; an
  /// orthographic view counts at twice its size.
  virtual bool ConstrainPivotToViewport();
  /// Straightens the camera in an animated move. False when there is nothing to straighten, and for a
  /// duration that is not finite.
  [[nodiscard]] virtual bool AlignToSceneUpDirection(double duration);
  /// Leaves orthographic, where `auto_switch_projection` allows it. True when the view is perspective now.
  [[nodiscard]] virtual bool AutoSwitchToPerspectiveProjection();
  /// The global bounding sphere lies wholly outside the view.
  virtual bool IsSceneOutsideView(const CameraParameters& camera);
  /// Animated moves, half a second long, that keep the direction of the view.
  [[nodiscard]] virtual bool FitAllToView();
  [[nodiscard]] virtual bool TransitionCameraToFitBoundingBox(const Vector3& centre, Box3 box);
  [[nodiscard]] virtual bool TransitionCameraToFitBoundingSphere(const Vector3& centre, double radius);
  /// Fits the scene bounds, which follow the selection.
  [[nodiscard]] virtual bool FitSelectionToView();

  // ---- bounds recalculation ----

  /// The scene becomes the selection, else the model (`scene_is_world`), else the coordinate system;
  /// nothing changes with `lock_to_selection`.
  virtual void RecalculateSceneBounds();
  /// Hooks: a host that computes bounds late does it here.
  virtual void RecalculateSelectionBounds();
  virtual void RecalculateGlobalBounds();

  /// Computes, in `camera`, the camera that looks along `direction` and that the box (sphere) just touches
  /// on its narrower sides, but for the margins. All four half angles are honoured exactly, negative ones
  /// included. `centre` is where the box stands. False, with nothing changed, for a radius not above 0 and
  /// wherever the result would not be finite.
  [[nodiscard]] bool FitBoundingBoxToView(const Vector3& centre, Box3 box, Vector3 direction,
                                          const Vector3& up, CameraParameters& camera) const;
  [[nodiscard]] bool FitBoundingSphereToView(const Vector3& centre, double radius, Vector3 direction,
                                             const Vector3& up, CameraParameters& camera) const;
  /// Of every fit from now on: of the two above, and of the moves and shots that use them. None at first.
  /// With margins the pivot of a fit is the middle of what was fitted, for the sphere too. False, with
  /// nothing changed, for margins that are not usable.
  bool SetFitMargins(const FitMargins& margins);
  const FitMargins& GetFitMargins() const { return fitMargins; }

  /// For those that borrow the hub and may outlive it.
  Lifeline& GetLifeline() { return lifeline; }
  /// Tells shots apart, also those of one address. 0: none runs.
  std::uint64_t GetShotNumber() const { return activeShot ? shotNumber : 0; }

 protected:
  CameraOperations();
  CameraOperations(const CameraOperations&) = delete;
  CameraOperations& operator=(const CameraOperations&) = delete;

  /// Hooks: a shot has begun; a shot is ending, still the active one, after its observer has been told.
  virtual void OnBeginShot(Shot* shot);
  virtual void OnEndShot(Shot* shot);

  /// Takes ownership. Ends a running shot first. False for null.
  bool BeginShot(Shot* shot);

 private:
  template <class Each, class One>
  bool Dispatch(OperationType type, Each each, One one);
  template <class Call>
  void ForEachOperationType(Call call);

  // A stretch within which the host is called.
  class CallingOut {
   public:
    explicit CallingOut(int& callsOut) : depth(callsOut) { ++depth; }
    CallingOut(const CallingOut&) = delete;
    CallingOut& operator=(const CallingOut&) = delete;
    ~CallingOut() { --depth; }

   private:
    int& depth;
  };

  Running<Operation>& SlotOf(OperationType type);
  bool ApplyIfFinite(const CameraParameters& view);
  double RadiusOrGlobal(double radius);
  Box3 BoxOrGlobal(const Box3& box);

  // What a frame remembers of its earlier steps.
  struct FrameActivity {
    bool active = false;
    bool rotating = false;
    bool aligning = false;            // a ViewAlignShot runs
    bool changingProjection = false;  // a ProjectionTransitionShot runs
    std::uint64_t doneShot = 0;       // the number of the shot whose last step this was
  };
  bool IsAtRest() const;
  void MeasureFrame();
  FrameActivity PerformActiveOperations();
  void PerformActiveOperation(OperationType type);
  void PerformActiveShot(FrameActivity& activity);
  void EndIntruder();
  bool EndActiveShot();
  void ChooseProjection(const FrameActivity& activity);
  bool BlendProjection(const FrameActivity& activity);
  bool FitsBox() const;
  bool FitBox(const Vector3& centre, Box3 box, Vector3 direction, const Vector3& up,
              CameraParameters& view) const;
  bool FitSphere(const Vector3& centre, double radius, Vector3 direction, const Vector3& up,
                 CameraParameters& view) const;
  template <class Fit>
  bool FitBesideMargins(const Vector3& centre, const Vector3& direction, CameraParameters& view,
                        Fit fit) const;
  bool ShowsOrthographic(const CameraParameters& view, const Vector3& direction) const;
  bool TransitionTo(const CameraParameters& target, double duration);
  bool IsInOrthoRange(const Vector3& direction, double tolerance) const;

  CameraParameters currentCamera;
  ApplicationParameters applicationParameters;
  std::array<Running<Operation>, OPERATION_KIND_COUNT> activeOperations;
  Running<Shot> activeShot;
  std::uint64_t shotNumber = 0;      // counts the shots that have begun, so it names the active one
  const Shot* hookedShot = nullptr;  // the one whose end the hook is being told
  bool endingIntruder = false;
  Borrowed<ShotObserver> activeShotObserver;
  Timer frameTimer;
  double frameDelta = 0.0;
  ObserverList<OperationObserver> operationObservers;
  bool geometrySelected = false;
  double orthoTolerance = 0.01;
  FitMargins fitMargins;
  int callsOut = 0;
  Lifeline lifeline;
};

}  // namespace Korvane
