#include "camera/free_view.h"

#include <cmath>

#include "camera/view_size.h"

namespace Korvane {

namespace {

double HalfAngle(double tangent) { return std::atan(tangent) * Math::RAD_TO_DEG; }

}  // namespace

// A margin that reaches past the axis makes a half angle negative.
FreeView::FreeView(const CameraParameters& view, const FitMargins& beside)
    : whole(view), free(view), margins(beside) {
  const FrustumTangents tangents(view);
  const double width = tangents.left + tangents.right;
  const double height = tangents.bottom + tangents.top;
  free.left_fov = HalfAngle(tangents.left - width * margins.left);
  free.right_fov = HalfAngle(tangents.right - width * margins.right);
  free.bottom_fov = HalfAngle(tangents.bottom - height * margins.bottom);
  free.top_fov = HalfAngle(tangents.top - height * margins.top);
  free.ortho_width *= 1.0 - margins.left - margins.right;
  free.ortho_height *= 1.0 - margins.bottom - margins.top;
}

CameraParameters FreeView::Widen(const CameraParameters& fitted, const Vector3& centre) const {
  CameraParameters widened = fitted;
  widened.left_fov = whole.left_fov;
  widened.right_fov = whole.right_fov;
  widened.bottom_fov = whole.bottom_fov;
  widened.top_fov = whole.top_fov;
  widened.ortho_width /= 1.0 - margins.left - margins.right;
  widened.ortho_height /= 1.0 - margins.bottom - margins.top;
  widened.pivot = centre;
  return widened;
}

void FreeView::StepAside(const Vector3& direction, CameraParameters& widened) const {
  const Vector3 right = direction.Cross(widened.up).Normalized();
  const Vector3 up = right.Cross(direction).Normalized();
  const Vector3 toMiddle = right * (widened.ortho_width * (margins.left - margins.right) / 2.0) +
                           up * (widened.ortho_height * (margins.bottom - margins.top) / 2.0);
  widened.eye = widened.eye - toMiddle;
  widened.centre = widened.centre - toMiddle;
}

}  // namespace Korvane
