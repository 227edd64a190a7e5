#pragma once

#include "controller/cam3d_controller_operation.h"
#include "korvane/borrowed_settings.h"
#include "korvane/cam3d_controller_observer.h"
#include "korvane/camera_operations.h"
#include "korvane/lifeline.h"
#include "korvane/observer_set.h"
#include "korvane/operation.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/rewind_record.h"
#include "korvane/timer.h"

namespace Korvane {

/// Only a model may be turned over.
inline bool ShouldKeepSceneUpright(const Cam3DControllerParameters& parameters) {
  return parameters.GetNavigationMode() != Cam3DControllerParameters::MODE_OBJECT ||
         parameters.GetKeepSceneUpright();
}

/// The operation that runs in the hub while the device is deflected, with the settings that it borrows, the
/// record that it opens and the ball that it shows. It ends once, in the hub in which it began, whoever ends
/// it: also another who ends or replaces the operation. What was about to happen to it then no longer does.
///
/// Who ends it otherwise than by the device has the view to itself: the device, still deflected, begins
/// nothing until it has come to rest.
class DeviceMotion {
 public:
  /// With whom it works. The host may exchange these at any time.
  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<Renderer> renderer;
    Borrowed<RewindHistory> history;
    Borrowed<PivotBall> ball;
    ObserverSet<Cam3DControllerObserver> observers;
    // How often they have been set: what is set within such a call comes later than it.
    unsigned hubCalls = 0;
    unsigned historyCalls = 0;
  };

  DeviceMotion(Partners& motionPartners, const Cam3DControllerParameters& controllerParameters)
      : partners(motionPartners), parameters(controllerParameters), ends(*this) {}
  DeviceMotion(const DeviceMotion&) = delete;
  DeviceMotion& operator=(const DeviceMotion&) = delete;
  ~DeviceMotion();

  /// False without a hub and while a shot runs, which a device never interrupts.
  bool Begin();
  /// One input, scaled. False when the device does not operate, and without a hub.
  bool Perform(const Vector3& translation, const Vector3& rotation);
  /// The device is at rest, or counts as such. False when it did not operate, and without a hub.
  bool End();
  /// It ends otherwise.
  void BreakOff();
  /// From the moment in which its record is open until the device is at rest and the record closed.
  bool IsOperating() const { return operating; }
  /// Its operation runs.
  bool IsRunning() const { return state == State::Running; }
  /// The history is taken away: the record ends here, the motion goes on.
  void EndRecord() { record.End(hub.Get()); }
  /// Leaves out zooms that would turn an orthographic view inside out.
  void LimitOrthographicZoom(bool limit);
  bool IsOrthographicZoomLimited() const { return limitsOrthographicZoom; }

 private:
  enum class State { Idle, Opening, Running, Closing };
  enum class Device { AtRest, Deflected };  // at the end of the motion

  // Hears when another ends the operation. Its settings are given back before any observer hears of it, who
  // may let another borrow them.
  class EndWatch : public OperationObserver, public Cam3DControllerOperation::Owner {
   public:
    explicit EndWatch(DeviceMotion& owner) : motion(owner) {}
    void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override {}
    void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                            const CameraParameters& /*camera*/) override {}
    void OnEndOperation(OperationType type) override;
    void OnOperationGoes() override { motion.RestoreApplicationParameters(motion.hub.Get()); }

   private:
    DeviceMotion& motion;
  };

  using Settings = BorrowedSettings<&ApplicationParameters::cam3d_controller_mode,
                                    &ApplicationParameters::preserve_orbit_up_direction,
                                    &ApplicationParameters::align_orbit_up_direction>;

  bool CanBegin() const;
  bool IsOwnOperationActive() const;
  void SetApplicationParameters(CameraOperations& lender);
  void RestoreApplicationParameters(CameraOperations* lender) { settings.GiveBack(lender); }
  bool EndOther(CameraOperations& occupied);
  void Open(CameraOperations& begun);
  bool Lend(CameraOperations& begun);
  void Run(CameraOperations& begun);
  void Adopt(const CameraOperations& begun);
  void Step(const Vector3& translation, const Vector3& rotation);
  void Close(Device device);
  static void EndIfActive(CameraOperations& hub, const Borrowed<Cam3DControllerOperation>& ending);
  void CountRotation(const Vector3& rotation);
  void UpdateBall();
  void ShowBall();
  void HideBallInTime(PivotBall& ball);

  Partners& partners;
  const Cam3DControllerParameters& parameters;
  EndWatch ends;
  State state = State::Idle;
  bool operating = false;
  bool beginning = false;  // the hub is making the operation
  bool limitsOrthographicZoom = false;
  Borrowed<CameraOperations> hub;  // in which it is open
  Borrowed<Cam3DControllerOperation> operation;
  Settings settings;
  RewindRecord record;
  int movingFrames = 0;  // inputs in a row with a rotation
  Timer pivotTimer;      // since the rotation stopped
  Lifeline life;         // cut when the motion ends
  Lifeline existence;
};

}  // namespace Korvane
