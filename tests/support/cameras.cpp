#include "support/cameras.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

using namespace Korvane;

namespace {

constexpr Vector3 CameraParameters::*VECTORS[] = {&CameraParameters::eye, &CameraParameters::centre,
                                                  &CameraParameters::up, &CameraParameters::pivot};
constexpr double CameraParameters::*NUMBERS[] = {
    &CameraParameters::left_fov,      &CameraParameters::right_fov,
    &CameraParameters::top_fov,       &CameraParameters::bottom_fov,
    &CameraParameters::ortho_width,   &CameraParameters::ortho_height,
    &CameraParameters::page_scale,    &CameraParameters::page_origin_x,
    &CameraParameters::page_origin_y, &CameraParameters::projection_transition,
};

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

double ExtremeNumber(Random& random) {
  static constexpr double SPECIAL[] = {
      0.0,   -0.0,   1.0,    -1.0,   Math::EPSILON_VALUE, 1e-300,          1e150,
      1e300, -1e300, 1e-155, 5e-324, Math::MAX_VALUE,     -Math::MAX_VALUE};
  if (random.Integer(0, 2) == 0) return random.OneOf(SPECIAL);
  const double magnitude = random.Magnitude(1e-12, 1e12);
  return random.Coin() ? magnitude : -magnitude;
}

Vector3 ExtremePoint(Random& random) {
  const double x = ExtremeNumber(random);
  const double y = ExtremeNumber(random);
  return {x, y, ExtremeNumber(random)};
}

}  // namespace

CameraParameters LookAt(const Vector3& eye, const Vector3& centre, const Vector3& up) {
  CameraParameters camera;
  camera.eye = eye;
  camera.centre = centre;
  camera.up = up;
  camera.pivot = centre;
  camera.ortho_width = camera.ortho_height = 2.0 * (centre - eye).Length();
  return WithSymmetricFrustum(camera, 45.0, 45.0);
}

CameraParameters WithSymmetricFrustum(CameraParameters camera, double horizontal, double vertical) {
  return WithAsymmetricFrustum(camera, horizontal, horizontal, vertical, vertical);
}

CameraParameters WithAsymmetricFrustum(CameraParameters camera, double left, double right, double top,
                                       double bottom) {
  camera.left_fov = left;
  camera.right_fov = right;
  camera.top_fov = top;
  camera.bottom_fov = bottom;
  return camera;
}

CameraParameters WithOrthographic(CameraParameters camera, double width, double height) {
  camera.projection_type = CameraParameters::ProjectionType::Orthographic;
  camera.ortho_width = width;
  camera.ortho_height = height;
  return camera;
}

CameraParameters WithPivot(CameraParameters camera, const Vector3& pivot) {
  camera.pivot = pivot;
  return camera;
}

CameraParameters RandomCamera(Random& random, Frustum frustum) {
  const Vector3 eye = random.Point(100.0);
  const Vector3 view = random.Direction();
  const double farthestCosine = std::cos(10.0 * Math::DEG_TO_RAD);
  Vector3 up = random.Direction();
  while (std::abs(up.Dot(view)) > farthestCosine) up = random.Direction();

  CameraParameters camera =
      LookAt(eye, eye + view * random.Magnitude(0.5, 100.0), up * random.Magnitude(0.1, 10.0));
  camera.pivot = eye + random.Direction() * random.Magnitude(0.5, 100.0);

  if (frustum == Frustum::Orthographic) {
    const double width = random.Magnitude(0.1, 1000.0);
    return WithOrthographic(camera, width, width * random.Uniform(0.3, 3.0));
  }
  const double left = random.Uniform(2.0, 70.0);
  const double top = random.Uniform(2.0, 70.0);
  if (frustum == Frustum::Symmetric) return WithSymmetricFrustum(camera, left, top);
  const double right = random.Uniform(2.0, 70.0);
  return WithAsymmetricFrustum(camera, left, right, top, random.Uniform(2.0, 70.0));
}

CameraParameters RandomCamera(Random& random) {
  static constexpr Frustum FRUSTA[] = {Frustum::Symmetric, Frustum::Asymmetric, Frustum::Orthographic};
  return RandomCamera(random, random.OneOf(FRUSTA));
}

Axes RandomAxes(Random& random) {
  const Vector3 up = random.Direction();
  Vector3 other = random.Direction();
  while (std::abs(other.Dot(up)) > 0.9) other = random.Direction();
  return {up, (other - up * other.Dot(up)).Normalized()};
}

CameraParameters ExtremeCamera(Random& random) {
  CameraParameters camera = RandomCamera(random);
  for (const auto field : VECTORS) {
    if (random.Coin()) camera.*field = ExtremePoint(random);
  }
  for (const auto field : NUMBERS) {
    if (random.Integer(0, 3) == 0) camera.*field = ExtremeNumber(random);
  }
  switch (random.Integer(0, 7)) {
    case 0:
      camera.centre = camera.eye;
      break;
    case 1:
      camera.pivot = camera.eye;
      break;
    case 2:
      camera.up = camera.centre - camera.eye;
      break;
    case 3:
      camera.up = Vector3();
      break;
    default:
      break;
  }
  camera.perspective_with_ortho = random.Coin();
  // The difference of two ends of the range is infinite.
  return camera.IsFinite() ? camera : RandomCamera(random);
}

CameraParameters BrokenCamera(Random& random) {
  static constexpr double BROKEN[] = {std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity()};
  CameraParameters camera = random.Coin() ? ExtremeCamera(random) : RandomCamera(random);
  const double broken = random.OneOf(BROKEN);
  if (random.Coin()) {
    camera.*random.OneOf(NUMBERS) = broken;
  } else {
    (camera.*random.OneOf(VECTORS))[random.Integer(0, 2)] = broken;
  }
  return camera;
}

bool SameBits(const CameraParameters& a, const CameraParameters& b) {
  for (const auto field : VECTORS) {
    for (int i = 0; i < 3; ++i) {
      if (!SameBits((a.*field)[i], (b.*field)[i])) return false;
    }
  }
  for (const auto field : NUMBERS) {
    if (!SameBits(a.*field, b.*field)) return false;
  }
  return a.projection_type == b.projection_type && a.perspective_with_ortho == b.perspective_with_ortho;
}
