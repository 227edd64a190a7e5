#include "shots/closest_view_align_shot.h"

#include <cmath>

#include "korvane/camera_operations.h"
#include "shots/shot_math.h"

namespace Korvane {

namespace {

// Without softness the view snaps within this part of the threshold.
constexpr double HARD_REACH = 0.2;
// The bell curve counts as full from this height on.
constexpr double FULL_PULL = 0.75;
// The up is drawn from further away than the view.
constexpr double VIEW_REACH = 1.0;
constexpr double UP_REACH = 4.0;

// exp(-2 a^2): the bell of width one half around no deviation.
double SoftWeight(double a) {
  return Math::LinearClamp(Math::GaussianSampleUnit(1.0 - std::abs(a), 1.0, 0.5), 0.0, FULL_PULL);
}

}  // namespace

void ClosestViewAlignShot::InitShot(const CameraOperations* hub) {
  if (hub == nullptr) return;
  const ApplicationParameters& scene = hub->GetApplicationParameters();
  const bool custom = scene.do_custom_orbit;
  front = (custom ? scene.custom_orbit_front : hub->GetWorldFrontDirection()).Normalized();
  up = (custom ? scene.custom_orbit_up : hub->GetWorldUpDirection()).Normalized();
  side = front.Cross(up).Normalize();
  up = side.Cross(front).Normalize();
  standardViews.Fill(front, up, side);
}

double ClosestViewAlignShot::GetPull(double deviation, double softReach) const {
  if (parameters.soft) return SoftWeight(deviation / (softReach * parameters.threshold));
  return deviation < HARD_REACH * parameters.threshold ? 1.0 : 0.0;
}

bool ClosestViewAlignShot::PerformShot(double dt, CameraParameters& camera) {
  const Vector3 forward = ViewDirection(camera);
  const Vector3 view = -standardViews.GetClosestAlignDir(forward, false).Normalized();
  const Vector3 cameraUp = camera.up.Normalize();
  const Vector3 closestUp = -standardViews.GetClosestAlignDir(cameraUp, true).Normalized();

  const double viewWeight = GetPull(std::abs(1.0 - forward.Dot(view)), VIEW_REACH);
  const double upWeight = GetPull(std::abs(1.0 - cameraUp.Dot(closestUp)), UP_REACH);

  // Where the axis of the view passes the pivot, seen from the camera as it is.
  const Vector3 left = cameraUp.Cross(forward).Normalize();
  const Vector3 downward = left.Cross(forward).Normalize();
  const Vector3 offset = camera.centre - camera.pivot;
  const double sideways = offset.Dot(left);
  const double vertical = offset.Dot(downward);

  const Vector3 bentUp = Interpolate(upWeight, cameraUp, closestUp);
  const Vector3 alignedLeft = bentUp.Cross(view).Normalize();
  const Vector3 alignedDownward = alignedLeft.Cross(view).Normalize();

  // The eye that sees the pivot at the same place of the view, from the standard direction.
  const double pivotDepth = forward.Dot(camera.pivot - camera.eye);
  const Vector3 alignedEye =
      camera.pivot + alignedLeft * sideways + alignedDownward * vertical - view * pivotDepth;

  camera.eye = Interpolate(viewWeight, camera.eye, alignedEye);
  camera.centre = camera.eye + Interpolate(viewWeight, forward, view) * pivotDepth;
  camera.up = bentUp;
  if (parameters.alignUp) StraightenUp(cameraUp, view, camera);
  return EndStep(dt, true);
}

void ClosestViewAlignShot::StraightenUp(const Vector3& cameraUp, const Vector3& view,
                                        CameraParameters& camera) const {
  const double upright = cameraUp.Dot(up);
  if (!(view.Cross(up).Length() > Math::EPSILON_VALUE) || !(std::abs(upright) > Math::EPSILON_VALUE)) return;
  const Vector3 axis = upright > 0.0 ? up : -up;
  const Vector3 forward = ViewDirection(camera);
  camera.up = forward.Cross(axis).Cross(forward).Normalize();
}

}  // namespace Korvane
