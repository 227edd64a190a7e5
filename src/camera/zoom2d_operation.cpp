#include "camera/zoom2d_operation.h"

#include <cmath>

#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

// 1.005 in single precision, widened.
constexpr double FACTOR_OF_ONE_PIXEL = 1.0049999952316284;
constexpr double PIXELS_TO_DECIDE = 11.0;

}  // namespace

void Zoom2DOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  axis = AXIS_OPEN;
  if (hub == nullptr) return;
  initialWidth = hub->GetCameraParameters().ortho_width;
  initialHeight = hub->GetCameraParameters().ortho_height;
}

void Zoom2DOperation::DecideAxis() {
  const double horizontal = std::abs(static_cast<double>(currentCursor.x) - initialCursor.x);
  const double vertical = std::abs(static_cast<double>(currentCursor.y) - initialCursor.y);
  if (horizontal + vertical < PIXELS_TO_DECIDE) return;
  axis = horizontal > vertical ? AXIS_HORIZONTAL : AXIS_VERTICAL;
  anchor = CoordinateOnAxis();
}

int Zoom2DOperation::CoordinateOnAxis() const {
  return axis == AXIS_HORIZONTAL ? currentCursor.x : currentCursor.y;
}

void Zoom2DOperation::PerformOperation(double /*dt*/, CameraParameters& camera) {
  if (hub == nullptr) return;
  if (axis == AXIS_OPEN) DecideAxis();
  if (axis == AXIS_OPEN) return;
  const double way = static_cast<double>(CoordinateOnAxis()) - anchor;
  const double factor = std::pow(FACTOR_OF_ONE_PIXEL, way);
  camera.ortho_width = factor * initialWidth;
  camera.ortho_height = factor * initialHeight;
}

}  // namespace Korvane
