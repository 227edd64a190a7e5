#include "camera/slide_operation.h"

#include "camera/camera_frame.h"
#include "korvane/camera_operations.h"

namespace Korvane {

void SlideOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  if (hub != nullptr) initialCamera = hub->GetCameraParameters();
}

void SlideOperation::PerformOperation(double dt, CameraParameters& camera) {
  if (hub == nullptr) return;
  double wx = 0.0;
  double wy = 0.0;
  GetCursorMotion(initialCursor, currentCursor, wx, wy);
  const Vector3 forward = ViewDirection(camera);
  const Vector3 left = camera.up.Cross(forward).Normalized();
  const Vector3 shift = (left * (-wx * dt) + forward * (wy * dt)) * GetParameters().slide_multiplier;
  camera.eye += shift;
  camera.centre += shift;
  camera.pivot += shift;
}

}  // namespace Korvane
