#include "camera/height_operation.h"

#include <cmath>

#include "camera/scene_bounds.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

constexpr double AMOUNT_SCALE = 0.01;

}  // namespace

void HeightOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  totalMove = 0.0;
  atTop = atBottom = false;
  if (hub == nullptr) return;
  initialCamera = hub->GetCameraParameters();
  RecalculateSceneBoundsOf(*hub);

  const ApplicationParameters& parameters = GetParameters();
  const Vector3 up = GetUpDirection();
  const double middle = parameters.scene_bound_centre.Dot(up);
  const double height = initialCamera.eye.Dot(up);
  lowestHeight = Math::Min(middle - parameters.scene_bound_radius, height);
  highestHeight = Math::Max(middle + parameters.scene_bound_radius, height);
}

double HeightOperation::GetUnitHeight() {
  if (hub == nullptr) return 0.0;
  const double height = hub->GetCameraParameters().eye.Dot(GetUpDirection());
  return Math::LinearClamp(height, lowestHeight, highestHeight);
}

void HeightOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  const double offset = static_cast<double>(currentCursor.y) - previousCursor.y;
  const double amount = GetMoveAmountFromCursorOffset(offset);
  if (std::isfinite(amount)) totalMove += CheckBoundaryConditions(amount, offset);
  SetCamera(camera);
}

double HeightOperation::GetMoveAmountFromCursorOffset(double offset) const {
  const double squared = std::copysign(std::trunc(offset * offset), offset);
  double unused = 0.0;
  double fraction = 0.0;
  ConvertCoordsToWindow(0.0, squared, unused, fraction);
  return fraction * (highestHeight - lowestHeight) * AMOUNT_SCALE * GetParameters().height_multiplier;
}

// At an end of the range further motion is lost; the first motion back releases the camera.
double HeightOperation::CheckBoundaryConditions(double amount, double offset) {
  if (atTop && offset >= 1.0) {
    atTop = false;
    return amount;
  }
  if (atBottom && offset < 0.0) {
    atBottom = false;
    return amount;
  }
  const Vector3 up = GetUpDirection();
  const double presentHeight = (initialCamera.eye - up * totalMove).Dot(up);
  const double testHeight = (initialCamera.eye - up * (totalMove + amount)).Dot(up);
  const bool below = testHeight < lowestHeight && presentHeight < lowestHeight;
  const bool above = testHeight > highestHeight && presentHeight > highestHeight;
  atBottom = atBottom || below;
  atTop = atTop || above;
  return below || above ? 0.0 : amount;
}

void HeightOperation::SetCamera(CameraParameters& camera) {
  const Vector3 up = GetUpDirection();
  camera.eye = initialCamera.eye - up * totalMove;
  const double height = camera.eye.Dot(up);
  if (height < lowestHeight) camera.eye += up * (lowestHeight - height);
  if (height > highestHeight) camera.eye += up * (highestHeight - height);
  camera.centre = camera.eye + (initialCamera.centre - initialCamera.eye);
}

}  // namespace Korvane
