#include "korvane/operation.h"

#include "korvane/camera_operations.h"

namespace Korvane {

Operation::Operation() = default;
Operation::~Operation() = default;
OperationObserver::OperationObserver() = default;
OperationObserver::~OperationObserver() = default;

void Operation::InitOperation(int x, int y, const CameraOperations* operations) {
  currentCursor = initialCursor = previousCursor = {x, y};
  hub = operations;
}

// The inputs are running sums: one bad number would poison them for good.
void Operation::Update3DControllerInput(Vector3 translation, Vector3 rotation) {
  if (!translation.IsFinite() || !rotation.IsFinite()) return;
  previousTranslationInput = translationInput;
  previousRotationInput = rotationInput;
  translationInput += translation;
  rotationInput += rotation;
}

void Operation::Set3DControllerOperation(bool isController) { controllerOperation = isController; }

Vector3 Operation::GetUpDirection() {
  if (hub == nullptr) return {0.0, 1.0, 0.0};
  const Vector3 up =
      GetParameters().fly_planar_motion ? hub->GetWorldUpDirection() : hub->GetCameraParameters().up;
  return up.Normalized();
}

void Operation::UpdateCursor(int x, int y) { currentCursor = {x, y}; }

void Operation::UpdateKey(KeyID key, bool pressed) {
  if (key == KEY_UP) upKey = pressed;
  if (key == KEY_DOWN) downKey = pressed;
}

void Operation::UpdatePreviousCursor() { previousCursor = currentCursor; }

void Operation::ConvertCoordsToWindow(double dx, double dy, double& wx, double& wy) const {
  wx = wy = 0.0;
  if (hub == nullptr) return;
  const ApplicationParameters& parameters = GetParameters();
  if (parameters.viewport_width > 0) wx = dx / parameters.viewport_width;
  if (parameters.viewport_height > 0) wy = dy / parameters.viewport_height;
}

// In double: the difference of two ints may not fit an int.
void Operation::GetCursorMotion(const Cursor& from, const Cursor& to, double& wx, double& wy) const {
  const double dx = static_cast<double>(to.x) - from.x;
  const double dy = static_cast<double>(to.y) - from.y;
  ConvertCoordsToWindow(dx, dy, wx, wy);
}

void Operation::GetRotationMotion(double& dx, double& dy) const {
  if (!Is3DControllerOperation()) {
    GetCursorMotion(previousCursor, currentCursor, dx, dy);
    return;
  }
  const Vector3 change = rotationInput - previousRotationInput;
  dx = change.y;
  dy = change.x;
}

const ApplicationParameters& Operation::GetParameters() const { return hub->GetApplicationParameters(); }

}  // namespace Korvane
