#include <algorithm>
#include <cmath>

#include "zovhost/bcf_viewpoint.h"
#include "zovhost/named_views.h"

namespace zovhost {

using Camera = BcfViewpoint::Camera;
using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector3;

namespace {

// Of the narrower side, where an orthogonal viewpoint tells none: a perspective of it leans little.
constexpr double USUAL_HALF_ANGLE = 17.5;  // degrees
constexpr double SAME_SIDES = 1e-9;        // of the tangents
constexpr double NEAR_UNIT = 1e-6;

// The axes of a viewpoint, in the space of the model.
struct Compass {
  Vector3 east;
  Vector3 north;
  Vector3 up;

  Vector3 ToModel(const Vector3& point) const { return east * point.x + north * point.y + up * point.z; }
  Vector3 FromModel(const Vector3& point) const { return {point.Dot(east), point.Dot(north), point.Dot(up)}; }
};

Compass MakeCompass(const ModelAxes& axes) { return {axes.up.Cross(axes.front), -axes.front, axes.up}; }

bool AreGood(const ModelAxes& axes) {
  return std::abs(axes.up.Length() - 1.0) < NEAR_UNIT && std::abs(axes.front.Length() - 1.0) < NEAR_UNIT &&
         std::abs(axes.up.Dot(axes.front)) < NEAR_UNIT;
}

double TangentOf(double degrees) { return std::tan(degrees * Math::DEG_TO_RAD); }
double HalfAngleOf(double tangent) { return std::atan(tangent) * Math::RAD_TO_DEG; }

// Half the size of the view at a distance of 1.
struct Lens {
  double tangentX;
  double tangentY;
};

Lens FindLens(const BcfViewpoint& viewpoint, double aspect) {
  if (viewpoint.camera == Camera::Perspective) {
    const double tangentY = TangentOf(viewpoint.fieldOfView * 0.5);
    return {tangentY * aspect, tangentY};
  }
  const double narrow = TangentOf(USUAL_HALF_ANGLE);
  return {narrow * std::max(1.0, aspect), narrow * std::max(1.0, 1.0 / aspect)};
}

bool AreSame(double oneSide, double other) {
  const double a = TangentOf(oneSide);
  const double b = TangentOf(other);
  return std::abs(a - b) <= SAME_SIDES * std::max(std::abs(a), std::abs(b));
}

}  // namespace

bool CameraFromBcf(const BcfViewpoint& viewpoint, const ModelAxes& axes, double distance,
                   CameraParameters& camera) {
  if (viewpoint.camera == Camera::None || !AreGood(axes) || !(distance > 0.0) || !std::isfinite(distance)) {
    return false;
  }
  const Compass compass = MakeCompass(axes);
  const double aspect = viewpoint.aspectRatio > 0.0 ? viewpoint.aspectRatio : 1.0;
  const Lens lens = FindLens(viewpoint, aspect);
  const bool isPerspective = viewpoint.camera == Camera::Perspective;
  const double height = isPerspective ? 2.0 * lens.tangentY * distance : viewpoint.viewToWorldScale;
  const Vector3 forward = compass.ToModel(viewpoint.cameraDirection.Normalized()).Normalize();
  const Vector3 tilted = compass.ToModel(viewpoint.cameraUpVector.Normalized());

  CameraParameters read;
  read.eye = compass.ToModel(viewpoint.cameraViewPoint);
  read.centre = read.pivot = read.eye + forward * distance;
  read.up = (tilted - forward * tilted.Dot(forward)).Normalize();
  read.SetHorizontalFOV(HalfAngleOf(lens.tangentX));
  read.SetVerticalFOV(HalfAngleOf(lens.tangentY));
  read.ortho_width = height * aspect;
  read.ortho_height = height;
  read.projection_type = isPerspective ? CameraParameters::ProjectionType::Perspective
                                       : CameraParameters::ProjectionType::Orthographic;
  read.projection_transition = isPerspective ? 0.0 : 1.0;
  if (!CanShowView(read)) return false;
  camera = read;
  return true;
}

bool CameraToBcf(const CameraParameters& camera, const ModelAxes& axes, BcfViewpoint& viewpoint,
                 std::string& error) {
  const auto refuse = [&error](const char* wrong) {
    error = wrong;
    return false;
  };
  if (!CanShowView(camera) || !AreGood(axes)) return refuse("the camera shows nothing");
  const bool isPerspective = !camera.IsOrthographic();
  if (isPerspective &&
      (!AreSame(camera.left_fov, camera.right_fov) || !AreSame(camera.top_fov, camera.bottom_fov))) {
    return refuse("the view is not the same to both sides of its axis, which a viewpoint cannot say");
  }
  const Compass compass = MakeCompass(axes);
  viewpoint.camera = isPerspective ? Camera::Perspective : Camera::Orthogonal;
  viewpoint.cameraViewPoint = compass.FromModel(camera.eye);
  viewpoint.cameraDirection = compass.FromModel((camera.centre - camera.eye).Normalize());
  viewpoint.cameraUpVector = compass.FromModel(camera.up.Normalized());
  viewpoint.fieldOfView = isPerspective ? camera.top_fov + camera.bottom_fov : 0.0;
  viewpoint.viewToWorldScale = isPerspective ? 0.0 : camera.ortho_height;
  viewpoint.aspectRatio = isPerspective ? TangentOf(camera.right_fov) / TangentOf(camera.top_fov)
                                        : camera.ortho_width / camera.ortho_height;
  return true;
}

}  // namespace zovhost
