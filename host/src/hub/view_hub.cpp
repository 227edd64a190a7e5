#include "zovhost/view_hub.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "korvane/math.h"
#include "korvane/shot.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Math;

namespace {

// Of proportions: what a move leaves of them.
constexpr double SAME_SHAPE = 1e-6;

// Of what the camera sees, in world units: of the narrower side where it is orthographic, in perspective the
// distance at which it looks.
double GetViewSize(const CameraParameters& camera) {
  return camera.IsOrthographic() ? std::min(camera.ortho_width, camera.ortho_height)
                                 : (camera.centre - camera.eye).Length();
}

double GetLargestMove(const CameraParameters& a, const CameraParameters& b) {
  const double points =
      std::max({(a.eye - b.eye).Length(), (a.centre - b.centre).Length(), (a.pivot - b.pivot).Length()});
  return std::max(
      {points, std::abs(a.ortho_width - b.ortho_width), std::abs(a.ortho_height - b.ortho_height)});
}

bool AreProportional(double a, double b, double wantedRatio) {
  return std::abs(a - b * wantedRatio) <= SAME_SHAPE * std::abs(a);
}

bool HasShape(const CameraParameters& camera, double width, double height) {
  return AreProportional(std::tan(camera.GetHorizontalFOV() * Math::DEG_TO_RAD),
                         std::tan(camera.GetVerticalFOV() * Math::DEG_TO_RAD), width / height) &&
         AreProportional(camera.ortho_width, camera.ortho_height, width / height);
}

}  // namespace

ViewHub::ViewHub(std::function<void()> request) : requestFrame(std::move(request)) {}

// A camera that was kept while the view had another shape has the shape of that.
void ViewHub::ApplyCameraParameters(const Korvane::CameraParameters& values) {
  view = values;
  if (hasShape && !HasShape(view, GetViewportWidth(), GetViewportHeight())) {
    ShapeToViewport(view, GetViewportWidth(), GetViewportHeight());
  }
  if (reducedMotion && view.projection_transition >= 0.0)
    view.projection_transition = view.IsOrthographic() ? 1.0 : 0.0;
}

void ViewHub::QueryCameraParameters(Korvane::CameraParameters& values) const { values = view; }

void ViewHub::RequestApplicationUpdate() { requestFrame(); }

// The library leaves out a step of a move that shows the same. The last one is the goal.
bool ViewHub::IsArriving(const CameraParameters* camera) const {
  const Korvane::Shot* const shot = GetActiveShot();
  return camera == &GetCameraParameters() && shot != nullptr && shot->GetUnitTime() >= 1.0;
}

bool ViewHub::CheckCamerasEqual(const CameraParameters* a, const CameraParameters* b) const {
  if (!CameraOperations::CheckCamerasEqual(a, b) || IsArriving(a)) return false;
  return !(GetLargestMove(*a, *b) > SAME_VIEW * std::min(GetViewSize(*a), GetViewSize(*b)));
}

// ---- moves that lead somewhere ----

// Without a duration the first step is the last.
template <class Parameters>
bool ViewHub::BeginMove(const Parameters& parameters) {
  Parameters move = parameters;
  if (reducedMotion) move.duration = 0.0;
  const bool begun = CameraOperations::BeginShot(move);
  travel = GetShotNumber();
  return begun;
}

bool ViewHub::BeginShot(const Korvane::LookAtShotParameters& parameters) { return BeginMove(parameters); }
bool ViewHub::BeginShot(const Korvane::ZoomRectShotParameters& parameters) { return BeginMove(parameters); }
bool ViewHub::BeginShot(const Korvane::ProjectionTransitionShotParameters& parameters) {
  const bool begun = BeginMove(parameters);
  travel = 0;
  return begun;
}
bool ViewHub::BeginShot(const Korvane::CenterShotParameters& parameters) { return BeginMove(parameters); }
bool ViewHub::BeginShot(const Korvane::TransitionShotParameters& parameters) { return BeginMove(parameters); }
bool ViewHub::BeginShot(const Korvane::ViewAlignShotParameters& parameters) { return BeginMove(parameters); }

bool ViewHub::WantsReducedMotion() {
  const char* const wish = std::getenv("ZOV_REDUCED_MOTION");  // NOLINT(concurrency-mt-unsafe)
  return wish != nullptr && *wish != '\0' && std::string_view(wish) != "0";
}

// ---- the view ----

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
  Korvane::ApplicationParameters& parameters = GetApplicationParameters();
  parameters.viewport_width = std::max(1, width);
  parameters.viewport_height = std::max(1, height);
  hasShape = true;
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
