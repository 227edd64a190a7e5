#include "camera/pan_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "korvane/camera_operations.h"

namespace Korvane {

void PanOperation::GetDeltaXY(double& dx, double& dy) const {
  if (Is3DControllerOperation()) {
    const Vector3 change = translationInput - previousTranslationInput;
    dx = change.x * 0.5;
    dy = change.y * -0.5;
    return;
  }
  GetCursorMotion(previousCursor, currentCursor, dx, dy);
}

void PanOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  const ApplicationParameters& parameters = GetParameters();
  double dx = 0.0;
  double dy = 0.0;
  GetDeltaXY(dx, dy);
  AdjustForAspectRatio(hub->GetCameraParameters(), parameters.viewport_width, parameters.viewport_height, dx,
                       dy);

  const Vector3 forward = ViewDirection(camera);
  const Vector3 toTheLeft = camera.up.Cross(forward);
  const Vector3 left = toTheLeft.Normalized();
  const Vector3 trueUp = forward.Cross(toTheLeft).Normalized();

  // A pivot behind the eye gives a negative size; the scene still moves with the cursor.
  const double depth = (camera.pivot - camera.eye).Dot(forward);
  const Vector2 size = ViewSizeAtDepth(camera, tangents, depth);
  const Vector3 shift =
      (left * std::abs(size.x) * dx + trueUp * std::abs(size.y) * dy) * parameters.pan_multiplier;
  camera.centre += shift;
  camera.eye += shift;
}

}  // namespace Korvane
