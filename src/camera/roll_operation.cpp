#include "camera/roll_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "korvane/camera_operations.h"

namespace Korvane {

void RollOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  rollAmount = 0.0;
  if (hub != nullptr) initialCamera = hub->GetCameraParameters();
}

double RollOperation::GetUnitAmount() const {
  return Math::LinearClamp(rollAmount, -2.0 * Math::PI, 2.0 * Math::PI);
}

double RollOperation::GetRollAmount() const {
  const double multiplier = GetParameters().orbit_multiplier;
  if (Is3DControllerOperation()) return multiplier * rotationInput.z;
  double wx = 0.0;
  double wy = 0.0;
  GetCursorMotion(initialCursor, currentCursor, wx, wy);
  return wx * multiplier;
}

void RollOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  const double amount = GetRollAmount();
  if (!std::isfinite(amount)) return;
  rollAmount = amount;
  const CameraParameters base = IsCombined() ? camera : initialCamera;
  const Quaternion roll = Quaternion::AxisAngle(ViewDirection(base), rollAmount);
  camera.up = roll.Rotate(base.up);

  // A controller that walks or flies only leans.
  const bool leansOnly = Is3DControllerOperation() &&
                         GetParameters().cam3d_controller_mode != Cam3DControllerParameters::MODE_OBJECT;
  if (leansOnly) return;
  camera.centre = base.pivot + roll.Rotate(base.centre - base.pivot);
  camera.eye = base.pivot + roll.Rotate(base.eye - base.pivot);
}

}  // namespace Korvane
