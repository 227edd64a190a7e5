#include "korvane/camera_parameters.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "camera/finite_camera.h"
#include "camera/lens.h"
#include "camera/view_size.h"

namespace Korvane {

namespace {

constexpr Vector3 CameraParameters::*VECTORS[] = {
    &CameraParameters::eye,
    &CameraParameters::centre,
    &CameraParameters::up,
    &CameraParameters::pivot,
};

bool IsNeitherParallelNorPerpendicular(double cosine) {
  const double magnitude = std::abs(cosine);
  return 1.0 - magnitude > Math::EPSILON_VALUE && magnitude > Math::EPSILON_VALUE;
}

}  // namespace

bool CameraParameters::IsFinite() const { return IsCameraFinite(*this); }

// No comparison with a NaN fires: it differs from nothing, but as a projection transition.
bool CameraCheckEqual(const CameraParameters* a, const CameraParameters* b) {
  if (a == nullptr || b == nullptr) return false;
  for (const auto field : VECTORS) {
    if ((a->*field - b->*field).LengthSquared() > Math::EPSILON_VALUE) return false;
  }
  for (const auto field : LENS_FIELDS) {
    if (std::abs(a->*field - b->*field) > Math::EPSILON_VALUE) return false;
  }
  return a->projection_type == b->projection_type && a->projection_transition == b->projection_transition;
}

bool AlignCameraToUpDirection(CameraParameters& camera, const Vector3& up) {
  const Vector3 wanted = up.Normalized();
  const Vector3 forward = ViewDirection(camera);
  const double a = wanted.Dot(camera.up.Normalized());
  const double b = wanted.Dot(forward);
  if (!IsNeitherParallelNorPerpendicular(a) || !IsNeitherParallelNorPerpendicular(b)) return false;

  const Vector3 straight = forward.Cross(wanted).Cross(forward);
  camera.up = a < 0.0 ? -straight : straight;
  return true;
}

bool GetScreenRay(double x, double y, double width, double height, const CameraParameters& camera,
                  Vector3& origin, Vector3& direction) {
  const Vector3 view = camera.centre - camera.eye;
  if (!(width > 0.0) || !(height > 0.0)) {
    origin = camera.eye;
    direction = view;
    return false;
  }
  const double length = view.Length();
  const Vector3 right = view.Cross(camera.up).Normalized();
  const Vector3 up = camera.up.Normalized();
  const FrustumTangents tangents(camera);

  const double sx = (tangents.left + tangents.right) * length * x / width - tangents.left * length;
  const double sy = (tangents.top + tangents.bottom) * length * y / height - tangents.bottom * length;
  const Vector3 offset = right * sx + up * sy;
  origin = camera.IsOrthographic() ? camera.eye + offset : camera.eye;
  direction = camera.IsOrthographic() ? view : view + offset;
  return true;
}

}  // namespace Korvane
