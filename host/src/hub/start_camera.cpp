#include "zovhost/start_camera.h"

#include <algorithm>
#include <cmath>

#include "korvane/box3.h"
#include "zovhost/scene.h"
#include "zovhost/view_hub.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector3;

namespace {

// Of the narrower side of the view. Narrow enough for the walls of a building not to lean.
constexpr double HALF_ANGLE = 17.5 * Math::DEG_TO_RAD;
constexpr double AZIMUTH = 35.0 * Math::DEG_TO_RAD;  // from the front to the right
constexpr double ELEVATION = 25.0 * Math::DEG_TO_RAD;
constexpr double FILLED = 0.92;  // of the view; the rest is the margin
constexpr int RIM_POINTS = 48;
constexpr double STEP = 0.1;  // of a walk and of the keys of look and move, in radii of the model

// The model turned about its up axis sweeps this cylinder around its centre.
struct Swept {
  double radius;
  double halfHeight;
};

Swept Sweep(const Scene& scene, const Vector3& up) {
  const Vector3 half = (scene.GetMax() - scene.GetMin()) * 0.5;
  Swept swept = {0.0, 0.0};
  for (int corner = 0; corner < 4; ++corner) {  // the other four mirror these
    const Vector3 offset((corner & 1) != 0 ? -half.x : half.x, (corner & 2) != 0 ? -half.y : half.y, half.z);
    const double height = offset.Dot(up);
    swept.halfHeight = std::max(swept.halfHeight, std::abs(height));
    swept.radius = std::max(swept.radius, (offset - up * height).Length());
  }
  return swept;
}

// The least distance of the eye from the centre at which all that is swept is in view. A point p, counted
// from the centre, is at the depth D + p.forward, and seen while |p.side| is at most the tangent of the half
// angle times that.
double FindDistance(const Swept& swept, const Vector3& forward, const Vector3& right, const Vector3& up,
                    double tangentX, double tangentY) {
  const Vector3 viewUp = right.Cross(forward);
  const Vector3 away = up.Cross(right);
  double distance = 0.0;
  for (int i = 0; i < RIM_POINTS; ++i) {
    const double angle = 2.0 * Math::PI * i / RIM_POINTS;
    const Vector3 rim = (right * std::cos(angle) + away * std::sin(angle)) * swept.radius;
    for (const double side : {-1.0, 1.0}) {
      const Vector3 point = rim + up * (side * swept.halfHeight);
      const double wide = std::abs(point.Dot(right)) / tangentX;
      const double tall = std::abs(point.Dot(viewUp)) / tangentY;
      distance = std::max(distance, std::max(wide, tall) - point.Dot(forward));
    }
  }
  return distance;
}

}  // namespace

Vector3 ChooseFront(const Vector3& up) {
  const bool standsOnZ = std::abs(up.z) >= std::abs(up.x) && std::abs(up.z) >= std::abs(up.y);
  const Vector3 usual = standsOnZ ? Vector3(0, -1, 0) : Vector3(0, 0, 1);
  return (usual - up * usual.Dot(up)).Normalize();
}

CameraParameters MakeStartCamera(const Scene& scene, double width, double height) {
  const Vector3 up = scene.GetUpDirection();
  const Vector3 front = ChooseFront(up);
  const Vector3 side = up.Cross(front);  // to the right of someone who looks at the front
  const Vector3 level = front * std::cos(AZIMUTH) + side * std::sin(AZIMUTH);
  const Vector3 toEye = level * std::cos(ELEVATION) + up * std::sin(ELEVATION);
  const Vector3 forward = -toEye;
  const Vector3 right = forward.Cross(up).Normalize();
  const Vector3 viewUp = right.Cross(forward);

  CameraParameters camera;
  camera.SetHorizontalFOV(HALF_ANGLE * Math::RAD_TO_DEG);
  camera.SetVerticalFOV(HALF_ANGLE * Math::RAD_TO_DEG);
  ShapeToViewport(camera, width, height);
  const double tangentX = std::tan(camera.GetHorizontalFOV() * Math::DEG_TO_RAD);
  const double tangentY = std::tan(camera.GetVerticalFOV() * Math::DEG_TO_RAD);
  const double distance =
      FindDistance(Sweep(scene, up), forward, right, up, tangentX * FILLED, tangentY * FILLED);

  camera.centre = camera.pivot = scene.GetCentre();
  camera.eye = camera.centre + toEye * distance;
  camera.up = viewUp;
  camera.projection_transition = 0.0;  // a blend starts from a true perspective
  camera.ortho_width = 2.0 * tangentX * distance;
  camera.ortho_height = 2.0 * tangentY * distance;
  return camera;
}

void SetUpDirection(ViewHub& hub, const Vector3& up) {
  Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  parameters.scene_up_direction = parameters.world_up_direction = parameters.custom_orbit_up = up;
  const Vector3 front = ChooseFront(up);
  parameters.scene_front_direction = parameters.world_front_direction = parameters.custom_orbit_front = front;
}

void EnterScene(ViewHub& hub, const Scene& scene) {
  hub.EndOperation(Korvane::OPERATION_ALL);
  hub.EndShot();

  Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  SetUpDirection(hub, scene.GetUpDirection());
  parameters.use_projection_transitions = true;

  const Vector3 centre = scene.GetCentre();
  parameters.global_bound_geometry = Korvane::ApplicationParameters::BoundGeometryType::Box;
  parameters.global_bound_radius = scene.GetRadius();
  parameters.global_bound_centre = centre;
  parameters.global_bound_box = scene.GetBoundingBox();
  parameters.scene_scale = parameters.slide_multiplier = scene.GetRadius() * STEP;
  hub.ResetGeometrySelection();
  hub.SetSceneBoundingSphere(scene.GetRadius(), centre);
  hub.SetSceneBoundingBox(scene.GetBoundingBox(), centre);

  parameters.home_camera = MakeStartCamera(scene, hub.GetViewportWidth(), hub.GetViewportHeight());
  hub.SetView(parameters.home_camera);
}

}  // namespace zovhost
