#include "zovhost/view_hub.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "korvane/math.h"

namespace zovhost {

using Korvane::Math;

ViewHub::ViewHub(std::function<void()> request) : requestFrame(std::move(request)) {}

void ViewHub::ApplyCameraParameters(const Korvane::CameraParameters& values) { view = values; }

void ViewHub::QueryCameraParameters(Korvane::CameraParameters& values) const { values = view; }

void ViewHub::RequestApplicationUpdate() { requestFrame(); }

void ViewHub::SetView(const Korvane::CameraParameters& values) {
  view = values;
  requestFrame();
}

Projection ViewHub::GetProjection() const {
  const Korvane::ApplicationParameters& parameters = GetApplicationParameters();
  return Projection(view, {parameters.global_bound_centre, parameters.global_bound_radius});
}

bool ViewHub::GetPixelRay(int x, int y, Korvane::Vector3& origin, Korvane::Vector3& direction) const {
  const Korvane::Vector2 middle(x + 0.5, y + 0.5);
  return GetProjection().PixelToRay(middle, GetViewportWidth(), GetViewportHeight(), origin, direction);
}

void ViewHub::SetViewportSize(int width, int height) {
  EndShot();
  Korvane::ApplicationParameters& parameters = GetApplicationParameters();
  parameters.viewport_width = std::max(1, width);
  parameters.viewport_height = std::max(1, height);
  ShapeToViewport(view, parameters.viewport_width, parameters.viewport_height);
  ShapeToViewport(parameters.home_camera, parameters.viewport_width, parameters.viewport_height);
  requestFrame();
}

void ShapeToViewport(Korvane::CameraParameters& camera, double width, double height) {
  const double wide = std::max(1.0, width / height);
  const double tall = std::max(1.0, height / width);

  const double angle = std::min(camera.GetHorizontalFOV(), camera.GetVerticalFOV());
  const double tangent = std::tan(angle * Math::DEG_TO_RAD);
  camera.SetHorizontalFOV(std::atan(tangent * wide) * Math::RAD_TO_DEG);
  camera.SetVerticalFOV(std::atan(tangent * tall) * Math::RAD_TO_DEG);

  const double size = std::min(camera.ortho_width, camera.ortho_height);
  camera.ortho_width = size * wide;
  camera.ortho_height = size * tall;
}

}  // namespace zovhost
