#include "views/free_view.h"

#include <algorithm>
#include <cmath>

#include "korvane/math.h"

namespace zovview {

using Korvane::CameraParameters;
using Korvane::Math;

namespace {

double TangentOf(double angle) { return std::tan(angle * Math::DEG_TO_RAD); }
double AngleOf(double tangent) { return std::atan(tangent) * Math::RAD_TO_DEG; }

}  // namespace

// In tangents, that is in sizes at a distance of 1.
CameraParameters FreeView::Frame(const CameraParameters& camera, double pictureProportions) const {
  const double wide = TangentOf(camera.GetHorizontalFOV());
  const double tall = TangentOf(camera.GetVerticalFOV());
  if (!(wide > 0.0) || !(tall > 0.0) || !(proportions > 0.0) || !(pictureProportions > 0.0)) return camera;
  const double halfWidth = std::min(wide, tall * proportions);
  const double halfHeight = std::min(tall, wide / proportions);
  const double across = margins.IsUsable() ? halfWidth * (margins.left - margins.right) : 0.0;
  const double up = margins.IsUsable() ? halfHeight * (margins.bottom - margins.top) : 0.0;
  const double freeWidth = halfWidth - std::abs(across);
  const double freeHeight = halfHeight - std::abs(up);
  const double width = std::max(freeWidth, freeHeight * pictureProportions);
  const double height = width / pictureProportions;
  CameraParameters framed = camera;
  framed.left_fov = AngleOf(width - across);
  framed.right_fov = AngleOf(width + across);
  framed.bottom_fov = AngleOf(height - up);
  framed.top_fov = AngleOf(height + up);
  framed.ortho_width = camera.ortho_width * width / wide;
  framed.ortho_height = camera.ortho_height * height / tall;
  return framed;
}

}  // namespace zovview
