#include "zovhost/start_camera.h"

#include <algorithm>
#include <cmath>

#include "korvane/box3.h"
#include "zovhost/scene.h"
#include "zovhost/view_hub.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::FitMargins;
using Korvane::Math;
using Korvane::Vector3;

namespace {

// Of the narrower side of the view. Narrow enough for the walls of a building not to lean.
constexpr double HALF_ANGLE = 17.5 * Math::DEG_TO_RAD;
constexpr double AZIMUTH = 35.0 * Math::DEG_TO_RAD;  // from the front to the right
constexpr double ELEVATION = 25.0 * Math::DEG_TO_RAD;
constexpr double FREE = 0.04;  // of the view, at each side at least
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

// What is left of the view along one axis: its middle and its half, as parts of half the view.
struct Room {
  double middle;
  double half;
};

Room FindRoom(double low, double high) {
  const double from = 1.0 - 2.0 * std::max(low, FREE);
  const double to = 1.0 - 2.0 * std::max(high, FREE);
  return {(to - from) / 2.0, (from + to) / 2.0};
}

// How far the eye has to be for a point, counted from the centre, which shows in the middle of the room: the
// point p is at the depth D + p.forward, and seen while p.side + middle * D * tangent is at most what is left
// on its side of the view times the tangent and the depth.
double FindDistance(double side, double depth, const Room& room, double tangent) {
  const double edge = room.half + (side > 0.0 ? room.middle : -room.middle);
  return std::abs(side) / (tangent * room.half) - depth * (edge / room.half);
}

struct Lens {
  Vector3 right;
  Vector3 up;
  Vector3 forward;
  double tangentX;
  double tangentY;
};

// The least distance of the eye from the centre at which all that is swept is in view.
double FindDistance(const Swept& swept, const Vector3& up, const Lens& lens, const Room& wide,
                    const Room& tall) {
  const Vector3 away = up.Cross(lens.right);
  double distance = 0.0;
  for (int i = 0; i < RIM_POINTS; ++i) {
    const double angle = 2.0 * Math::PI * i / RIM_POINTS;
    const Vector3 rim = (lens.right * std::cos(angle) + away * std::sin(angle)) * swept.radius;
    for (const double side : {-1.0, 1.0}) {
      const Vector3 point = rim + up * (side * swept.halfHeight);
      const double depth = point.Dot(lens.forward);
      distance = std::max({distance, FindDistance(point.Dot(lens.right), depth, wide, lens.tangentX),
                           FindDistance(point.Dot(lens.up), depth, tall, lens.tangentY)});
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

CameraParameters MakeStartCamera(const Scene& scene, double width, double height, const FitMargins& wanted) {
  const FitMargins margins = wanted.IsUsable() ? wanted : FitMargins();
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
  const Room wide = FindRoom(margins.left, margins.right);
  const Room tall = FindRoom(margins.bottom, margins.top);
  const double distance =
      FindDistance(Sweep(scene, up), up, {right, viewUp, forward, tangentX, tangentY}, wide, tall);

  camera.centre = camera.pivot = scene.GetCentre();
  if (!margins.IsNone()) {
    const Vector3 aside = right * (wide.middle * tangentX) + viewUp * (tall.middle * tangentY);
    camera.centre -= aside * distance;
  }
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

  parameters.home_camera =
      MakeStartCamera(scene, hub.GetViewportWidth(), hub.GetViewportHeight(), hub.GetFitMargins());
  hub.SetView(parameters.home_camera);
}

}  // namespace zovhost
