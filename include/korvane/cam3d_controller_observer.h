#pragma once

#include "korvane/cam3d_controller_parameters.h"
#include "korvane/export.h"
#include "korvane/vector3.h"

namespace Korvane {

/// What a button of a six-axis device stands for; see Cam3DController::MapKey. Those for the host do nothing
/// by themselves.
enum Cam3DControllerKeyID : int {
  CAM3D_KEY_HOST_0 = 0,
  CAM3D_KEY_TOP = 1,  // to the six sides of the scene
  CAM3D_KEY_BOTTOM = 2,
  CAM3D_KEY_RIGHT = 3,
  CAM3D_KEY_LEFT = 4,
  CAM3D_KEY_BACK = 5,
  CAM3D_KEY_FRONT = 6,
  CAM3D_KEY_HOME = 7,
  CAM3D_KEY_ROLL_CLOCKWISE = 8,  // by a right angle, as the arrows beside the cube
  CAM3D_KEY_ROLL_COUNTER_CLOCKWISE = 9,
  CAM3D_KEY_HISTORY_FORWARD = 10,
  CAM3D_KEY_HISTORY_BACK = 11,
  CAM3D_KEY_HOST_12 = 12,
  CAM3D_KEY_HOST_13 = 13,
  CAM3D_KEY_HOST_14 = 14,
  CAM3D_KEY_FIT = 15,
  CAM3D_KEY_HOST_16 = 16,
  CAM3D_KEY_HOST_17 = 17,
  CAM3D_KEY_HOST_18 = 18,
  CAM3D_KEY_HOST_19 = 19,
  CAM3D_KEY_HOST_20 = 20,
  CAM3D_KEY_PAN_MODE = 21,  // to MODE_PAN and back
};
constexpr int CAM3D_KEY_COUNT = 22;

/// Is told what comes from a six-axis device. Borrowed by the controller, which it must leave with
/// Cam3DController::RemoveObserver before it goes.
///
/// While it is being told it may begin and end operations and shots, add and remove observers, itself
/// included, change settings, switch the controller off, take its collaborators away, and delete it; nobody
/// is told any more then. It must not destroy the hub within a call of the hub.
class ZOVTOOLS_API Cam3DControllerObserver {
 public:
  virtual ~Cam3DControllerObserver();
  Cam3DControllerObserver(const Cam3DControllerObserver&) = delete;
  Cam3DControllerObserver& operator=(const Cam3DControllerObserver&) = delete;

  /// An input, as the threshold and the multipliers have left it. Also of a device at rest, where both are
  /// zero.
  virtual void OnInput(Vector3 translation, Vector3 rotation) = 0;
  /// What the button stands for has been done.
  virtual void OnKeyDown(Cam3DControllerKeyID id) = 0;
  virtual void OnKeyUp(Cam3DControllerKeyID id) = 0;
  /// The mode that was asked for. One that is none has not been taken.
  virtual void OnNavigationModeChanged(Cam3DControllerParameters::NavigationMode mode) = 0;

 protected:
  Cam3DControllerObserver();
};

}  // namespace Korvane
