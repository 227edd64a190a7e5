#pragma once

#include <map>

#include "controller/controller_note.h"
#include "controller/device_motion.h"
#include "foundation/staying.h"
#include "korvane/cam3d_controller.h"
#include "korvane/shot_watch.h"

namespace Korvane {

struct Cam3DControllerParts;

/// Closes the record of a command when its camera move is over.
class Cam3DControllerRewindShotObserver : public ShotWatch<Cam3DControllerParts> {
 public:
  using ShotWatch::ShotWatch;
};

/// What a controller is made of, by what changes together.
struct Cam3DControllerParts {
  using NavigationMode = Cam3DControllerParameters::NavigationMode;

  Cam3DControllerParts()
      : motion(partners, parameters),
        note(partners.hub),
        rewindShotObserver(this, &Cam3DControllerParts::EndCommand) {}

  /// The move of a command is over.
  void EndCommand(const CameraParameters& camera) { commandRecord.End(camera); }
  /// The move goes on by itself; its record ends here.
  void LeaveCommand(const CameraOperations* hub);
  /// Ends the record of a move that is over though nobody has said so: another had taken its watch over.
  void SettleCommand();
  /// Whether a command that has set out in this hub, with this record, is still the controller's.
  bool IsOwnCommand(const CameraOperations& hub, const RewindRecord& record) const;

  DeviceMotion::Partners partners;
  Cam3DControllerParameters parameters;
  bool enabled = true;
  NavigationMode lastMode = Cam3DControllerParameters::MODE_OBJECT;  // to come back to from MODE_PAN
  std::map<int, Cam3DControllerKeyID> keyMap;                        // by the button of the device
  DeviceMotion motion;
  ControllerNote note;
  RewindRecord commandRecord;
  Cam3DControllerRewindShotObserver rewindShotObserver;
  Lifeline lifeline;
};

}  // namespace Korvane
