#include "camera/height_operation.h"

#include <cmath>

#include "camera/scene_bounds.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

constexpr double AMOUNT_SCALE = 0.01;
// How far inside the range a camera that leaves an end is tested, as a fraction of the range.
constexpr double RELEASE_FRACTION = 1.0 / 1000.0;

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
  totalMove += CheckBoundaryConditions(GetMoveAmountFromCursorOffset(offset), offset);
  SetCamera(camera);
}

double HeightOperation::GetMoveAmountFromCursorOffset(double offset) const {
  const double squared = std::copysign(std::trunc(offset * offset), offset);
  double unused = 0.0;
  double fraction = 0.0;
  ConvertCoordsToWindow(0.0, squared, unused, fraction);
  return fraction * (highestHeight - lowestHeight) * AMOUNT_SCALE * GetParameters().height_multiplier;
}

double HeightOperation::CheckBoundaryConditions(double amount, double offset) {
  const Vector3 up = GetUpDirection();
  const double presentHeight = (initialCamera.eye - up * totalMove).Dot(up);
  const double release = (highestHeight - lowestHeight) * RELEASE_FRACTION;
  double testHeight = (initialCamera.eye - up * (totalMove + amount)).Dot(up);
  if (atTop && offset >= 1.0) {
    atTop = false;
    testHeight = highestHeight - release;
  } else if (atBottom && offset < 0.0) {
    atBottom = false;
    testHeight = lowestHeight + release;
  }

  if (testHeight < lowestHeight && presentHeight < lowestHeight) {
    atBottom = true;
    return 0.0;
  }
  if (testHeight > highestHeight && presentHeight > highestHeight) {
    atTop = true;
    return 0.0;
  }
  return amount;
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
