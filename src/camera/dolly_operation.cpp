#include "camera/dolly_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "camera/scene_bounds.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

// The least speed of a controller, as a part of the viewing distance: it must not stop at the pivot.
constexpr double SLOWEST = 0.2;

}  // namespace

void DollyOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  if (hub != nullptr) RecalculateSceneBoundsOf(*hub);
}

double DollyOperation::GetDollyAmount() const {
  if (Is3DControllerOperation()) return (translationInput.z - previousTranslationInput.z) * -0.5;
  double wx = 0.0;
  double wy = 0.0;
  GetCursorMotion(previousCursor, currentCursor, wx, wy);
  return std::abs(wx) > std::abs(wy) ? wx : wy;
}

void DollyOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  double amount = GetDollyAmount();
  const Vector3 forward = ViewDirection(camera);
  if (Is3DControllerOperation()) {
    const double distance = ViewingDistance(camera);
    const double pivotDepth = (camera.pivot - camera.eye).Dot(forward);
    amount *= Math::Max(std::abs(pivotDepth) / distance, SLOWEST);  // SLOWEST also for 0 / 0
  }
  const Vector3 step = forward * (GetParameters().scene_scale * amount * GetParameters().dolly_multiplier);
  camera.eye += step;
  camera.centre += step;
}

}  // namespace Korvane
