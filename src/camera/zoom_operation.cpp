#include "camera/zoom_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "camera/lens.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

constexpr double SMALLEST_AXIS_OFFSET = 1e-5;

// -1 at the limit; 0 where a limit of 0, or one that is no number, gives no scale.
double BackAmount(double movedBack, double limit) {
  if (movedBack > limit) return limit > 0.0 ? -1.0 : 0.0;
  const double amount = -movedBack / limit;
  return std::isfinite(amount) ? amount : 0.0;
}

}  // namespace

double ZoomOperation::GetUnitAmount() const { return unitAmount; }

void ZoomOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  unitAmount = 0.0;
  axisOffset = 0.0;
  if (hub == nullptr) return;
  initialCamera = hub->GetCameraParameters();
  forward = ViewDirection(initialCamera);
  toPivot = (initialCamera.pivot - initialCamera.eye).Normalized();
  initialDistance = ViewingDistance(initialCamera);
  const double pivotDepth = (initialCamera.pivot - initialCamera.eye).Dot(forward);
  axisOffset = initialDistance - pivotDepth;
  if (std::abs(axisOffset) < SMALLEST_AXIS_OFFSET) axisOffset = 0.0;
}

// Left and down count as positive: away from the pivot.
double ZoomOperation::GetCursorOffset() const {
  const double toTheLeft = static_cast<double>(initialCursor.x) - currentCursor.x;
  const double downward = static_cast<double>(currentCursor.y) - initialCursor.y;
  const double offset = toTheLeft + downward;
  return GetParameters().zoom_sense_reversed ? -offset : offset;
}

Vector3 ZoomOperation::EyeAt(double ratio) const {
  return initialCamera.pivot - (initialCamera.pivot - initialCamera.eye) * ratio;
}

void ZoomOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  const double offset = GetCursorOffset();
  const double ratio = std::pow(GetParameters().zoom_sensitivity, offset);
  if (!(ratio < Math::MAX_VALUE)) return;

  const Vector3 eye = camera.eye;
  const Vector3 centre = camera.centre;
  if (!MoveCamera(offset, ratio, camera)) return;

  const double distance = ViewingDistance(camera);
  if (!(distance > Math::EPSILON_VALUE && distance < Math::MAX_VALUE)) {
    camera.eye = eye;
    camera.centre = centre;
  }
  ScaleWithDistance(camera);
}

// False when the camera is not to change at all.
bool ZoomOperation::MoveCamera(double offset, double ratio, CameraParameters& camera) {
  if (offset > 0.0) return MoveBack(offset, ratio, camera);
  const double limit = GetParameters().zoom_min_limit;
  const bool pastLimit = ratio < limit;
  if (camera.IsOrthographic() && (pastLimit || limit > ViewingDistance(camera))) {
    unitAmount = 1.0;
    return false;
  }
  if (pastLimit) return PushPastLimit(offset, camera);
  MoveIn(ratio, camera);
  return true;
}

bool ZoomOperation::MoveBack(double offset, double ratio, CameraParameters& camera) {
  const ApplicationParameters& parameters = GetParameters();
  if (offset < parameters.zoom_out_snap_size) {
    unitAmount = 0.0;
    return false;
  }
  // `ratio` counts the dead pixels, too.
  const int snapSize = parameters.zoom_out_snap_size;
  if (snapSize != 0) ratio = std::pow(parameters.zoom_sensitivity, offset - snapSize);
  camera.eye = EyeAt(ratio);

  const double movedBack = (camera.eye - initialCamera.eye).Dot(-toPivot);
  const double limit = parameters.zoom_back_distance;
  if (movedBack > limit) camera.eye = initialCamera.eye - toPivot * limit;
  unitAmount = BackAmount(movedBack, limit);

  PlaceCentre(ratio, camera);
  return true;
}

// At the depth of the pivot; in orthographic the centre keeps its own place beyond it, in scale.
void ZoomOperation::PlaceCentre(double ratio, CameraParameters& camera) const {
  const double beyond = camera.IsOrthographic() ? ratio * axisOffset : 0.0;
  camera.centre = camera.eye + forward * ((initialCamera.pivot - camera.eye).Dot(forward) + beyond);
}

void ZoomOperation::MoveIn(double ratio, CameraParameters& camera) {
  camera.eye = EyeAt(ratio);
  PlaceCentre(ratio, camera);
  unitAmount = 1.0 - Math::LinearClamp(ratio, GetParameters().zoom_min_limit, 1.0);
}

// Past the halt the camera moves on at a linear rate, through the pivot if need be, once the cursor has
// pushed through the dead stretch.
bool ZoomOperation::PushPastLimit(double offset, CameraParameters& camera) {
  const ApplicationParameters& parameters = GetParameters();
  const double limit = parameters.zoom_min_limit;
  const double pixelsToLimit = std::abs(std::log(limit) / std::log(parameters.zoom_sensitivity));
  const double excess = std::abs(offset) - pixelsToLimit;
  if (!parameters.zoom_min_limit_motion || !(excess > parameters.zoom_in_snap_size)) {
    unitAmount = 1.0;
    return false;
  }
  double pushed = 0.0;
  double unused = 0.0;
  ConvertCoordsToWindow(std::trunc(excess - parameters.zoom_in_snap_size), 0.0, pushed, unused);

  const Vector3 wayToPivot = initialCamera.pivot - initialCamera.eye;
  const double beyond = -pushed * parameters.zoom_min_limit_multiplier;
  camera.eye = initialCamera.pivot - wayToPivot * limit - wayToPivot * beyond;
  camera.centre = camera.eye + forward * limit;
  unitAmount = pushed + 1.0;
  return true;
}

// The size follows the distance, so that a change of projection keeps the scale of the picture.
void ZoomOperation::ScaleWithDistance(CameraParameters& camera) const {
  if (!(initialDistance > 0.0)) return;
  ScaleOrthographicSize(initialCamera, ViewingDistance(camera) / initialDistance, camera);
}

}  // namespace Korvane
