#pragma once

#include "korvane/export.h"
#include "korvane/lifeline.h"

namespace Korvane {

class CameraOperations;
struct CameraParameters;

/// Where the view of now stands within a relative shot: its first frame, its midpoint, its last frame.
enum TargetCamPos : int { TARGET_CAM_START = 0, TARGET_CAM_MIDDLE = 1, TARGET_CAM_END = 2 };

/// What a frame does differently while a shot of this role is active.
enum class ShotRole {
  Plain,
  Rotating,            ///< A view that follows the axes stays in perspective, as in an orbit.
  Aligning,            ///< Such a view turns orthographic a little early, so that the blend has time to run.
  ChangingProjection,  ///< The shot blends the projection itself.
};

/// An animated camera move: it answers to the clock as an operation answers to the cursor. Made, owned and
/// destroyed by the hub; one that is ended while it is being called lives until that call is over.
class ZOVTOOLS_API Shot {
 public:
  virtual ~Shot();

  /// Called once, after the host's camera has been queried. A null hub changes nothing.
  virtual void InitShot(const CameraOperations* hub);
  /// Writes the camera for the present moment, then lets `dt` seconds pass. The call that finds the time
  /// run out writes the end of the move and returns false; until then the result is true. A shot whose record
  /// makes no sense returns false and writes nothing.
  virtual bool PerformShot(double dt, CameraParameters& camera) = 0;
  /// Seconds, with the dt of the last step.
  virtual double GetElapsedTime() const;
  /// The eased progress of the last step, 0 to 1.
  virtual double GetUnitTime() const;

  ShotRole GetRole() const { return role; }

 protected:
  explicit Shot(ShotRole roleInFrame = ShotRole::Plain);
  Shot(const Shot&) = delete;
  Shot& operator=(const Shot&) = delete;

  /// Opens a step: sets the unit time, eased over the part of the duration up to `easeEnd`, 1 once the time
  /// has run out, and says whether the shot goes on.
  bool BeginStep(double duration, double easeEnd = 1.0);
  /// The same without easing.
  bool BeginLinearStep(double duration);
  /// Closes a step: `dt` passes. Returns `goesOn`.
  bool EndStep(double dt, bool goesOn);

  double elapsedTime = 0.0;
  double unitTime = 0.0;

 private:
  const ShotRole role;
};

/// Is told when the active shot ends: by time, by EndShot, or by the begin of another. Borrowed by the hub,
/// for that one shot; one that dies before is forgotten.
class ZOVTOOLS_API ShotObserver {
 public:
  virtual ~ShotObserver();
  /// The shot still exists; `camera` is the hub's. It may begin and end operations and shots, begin the next
  /// move and watch it, add and remove observers, change settings, and destroy itself. It must not destroy
  /// the hub; PerformOperations does nothing in there.
  virtual void OnEndShot(Shot* shot, const CameraParameters& camera) = 0;

  Lifeline& GetLifeline() { return lifeline; }

 private:
  Lifeline lifeline;
};

}  // namespace Korvane
