#include "zovhost/projection.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;

namespace {

// Beyond this a coordinate is taken for a mistake. Products of a few such numbers stay finite.
constexpr double largestCoordinate = 1e30;
constexpr double smallestLength = 1e-30;
constexpr double largestHalfAngle = 89.9;              // degrees
constexpr double defaultTangent = 0.4142135623730950;  // of 22.5 degrees

double Usable(double value) {
  if (!std::isfinite(value)) return 0.0;
  return std::clamp(value, -largestCoordinate, largestCoordinate);
}

Vector3 Usable(const Vector3& v) { return {Usable(v.x), Usable(v.y), Usable(v.z)}; }

// Of any length above smallestLength, where Vector3::Normalize gives up at its tolerance.
bool MakeUnit(Vector3& v) {
  const double largest = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
  if (!(largest > smallestLength)) return false;
  v /= largest;
  v /= v.Length();
  return true;
}

Vector3 AxisAwayFrom(const Vector3& unit) {
  const Vector3 size(std::abs(unit.x), std::abs(unit.y), std::abs(unit.z));
  if (size.y <= size.x && size.y <= size.z) return {0.0, 1.0, 0.0};
  return size.z <= size.x ? Vector3(0.0, 0.0, 1.0) : Vector3(1.0, 0.0, 0.0);
}

double TangentOf(double halfAngle) {
  return std::tan(std::clamp(halfAngle, -largestHalfAngle, largestHalfAngle) * Korvane::Math::DEG_TO_RAD);
}

// The two sides of one direction of the view, as tangents.
struct Opening {
  double low;
  double high;
};

Opening MakeOpening(double lowAngle, double highAngle) {
  const Opening usual = {defaultTangent, defaultTangent};
  if (!std::isfinite(lowAngle) || !std::isfinite(highAngle)) return usual;
  const Opening opening = {TangentOf(lowAngle), TangentOf(highAngle)};
  return opening.low + opening.high > 1e-9 ? opening : usual;
}

// Low and high end of the window at the depth of the centre.
void BlendWindow(const Opening& opening, double distance, double orthographicSize, double blend, double& low,
                 double& high) {
  const double sum = opening.low + opening.high;
  const double perspectiveSize = sum * distance;
  const bool usable = orthographicSize > smallestLength && orthographicSize < largestCoordinate;
  const double size = (1.0 - blend) * perspectiveSize + blend * (usable ? orthographicSize : perspectiveSize);
  low = -size * opening.low / sum;
  high = size * opening.high / sum;
}

}  // namespace

// ---- matrices ----

Matrix4 Multiply(const Matrix4& a, const Matrix4& b) {
  Matrix4 product{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 4; ++row) {
      double sum = 0.0;
      for (std::size_t k = 0; k < 4; ++k) sum += a[4 * k + row] * b[4 * column + k];
      product[4 * column + row] = sum;
    }
  }
  return product;
}

std::array<float, 16> ToFloat(const Matrix4& matrix) {
  constexpr double largest = std::numeric_limits<float>::max();
  std::array<float, 16> result{};
  for (std::size_t i = 0; i < 16; ++i)
    result[i] = static_cast<float>(std::clamp(matrix[i], -largest, largest));
  return result;
}

// ---- the camera ----

CameraFrame MakeCameraFrame(const CameraParameters& camera) {
  CameraFrame frame;
  frame.eye = Usable(camera.eye);
  frame.forward = Usable(camera.centre) - frame.eye;
  const double distance = frame.forward.Length();
  const bool hasDirection = MakeUnit(frame.forward);
  if (!hasDirection) frame.forward = {0.0, 0.0, -1.0};
  frame.distance = hasDirection ? std::max(distance, smallestLength) : 1.0;

  Vector3 up = Usable(camera.up);
  if (!MakeUnit(up)) up = AxisAwayFrom(frame.forward);
  frame.right = frame.forward.Cross(up);
  if (frame.right.Length() < 1e-9) frame.right = frame.forward.Cross(AxisAwayFrom(frame.forward));
  frame.right /= frame.right.Length();
  frame.up = frame.right.Cross(frame.forward);
  return frame;
}

double GetProjectionBlend(const CameraParameters& camera) {
  const double transition = camera.projection_transition;
  if (transition >= 0.0) return std::min(transition, 1.0);
  return camera.IsOrthographic() ? 1.0 : 0.0;
}

CameraParameters WidenToViewport(const CameraParameters& camera, double width, double height) {
  if (!(width > 0.0) || !(height > 0.0)) return camera;
  const Opening horizontal = MakeOpening(camera.left_fov, camera.right_fov);
  const Opening vertical = MakeOpening(camera.bottom_fov, camera.top_fov);
  const double wanted = width / height;
  const double present = (horizontal.low + horizontal.high) / (vertical.low + vertical.high);
  const double grow = std::max(wanted / present, 1.0);
  const double growUp = std::max(present / wanted, 1.0);
  const auto scaled = [](double tangent, double factor) {
    return std::atan(tangent * factor) * Korvane::Math::RAD_TO_DEG;
  };
  CameraParameters widened = camera;
  widened.left_fov = scaled(horizontal.low, grow);
  widened.right_fov = scaled(horizontal.high, grow);
  widened.bottom_fov = scaled(vertical.low, growUp);
  widened.top_fov = scaled(vertical.high, growUp);
  if (camera.ortho_width > 0.0 && camera.ortho_height > 0.0) {
    widened.ortho_width = std::max(camera.ortho_width, camera.ortho_height * wanted);
    widened.ortho_height = std::max(camera.ortho_height, camera.ortho_width / wanted);
  }
  return widened;
}

// ---- the projection ----

Projection::Projection(const CameraParameters& camera, const SceneSphere& sphere)
    : frame(MakeCameraFrame(camera)) {
  SetWindow(camera);
  SetDepthRange(camera, sphere);
  MakeMatrices();
}

Projection::Projection(const CameraParameters& camera, double nearDistance, double farDistance)
    : frame(MakeCameraFrame(camera)), nearDepth(nearDistance), farDepth(farDistance) {
  SetWindow(camera);
  MakeMatrices();
}

void Projection::SetWindow(const CameraParameters& camera) {
  const double blend = GetProjectionBlend(camera);
  slope = (1.0 - blend) / frame.distance;
  base = blend;
  BlendWindow(MakeOpening(camera.left_fov, camera.right_fov), frame.distance, camera.ortho_width, blend, left,
              right);
  BlendWindow(MakeOpening(camera.bottom_fov, camera.top_fov), frame.distance, camera.ortho_height, blend,
              bottom, top);
}

void Projection::SetDepthRange(const CameraParameters& camera, const SceneSphere& sphere) {
  const double radius =
      sphere.radius > smallestLength && sphere.radius < largestCoordinate ? sphere.radius : 1.0;
  const double middle = (Usable(sphere.centre) - frame.eye).Dot(frame.forward);
  double nearest = middle - radius * 1.01;
  double farthest = middle + radius * 1.01;

  // What marks the pivot is drawn in the scene too, even when the pivot stands outside of it.
  const double pivot = (Usable(camera.pivot) - frame.eye).Dot(frame.forward);
  if (std::abs(pivot) < 10.0 * (std::abs(middle) + radius)) {
    nearest = std::min(nearest, pivot - 0.1 * frame.distance);
    farthest = std::max(farthest, pivot + 0.1 * frame.distance);
  }

  if (slope > 0.0) {
    // Where the rays meet: the eye, or during a blend a point behind it. The near plane keeps a part of the
    // reach away from there, because depth is resolved in inverse proportion to that part; but it never
    // comes near the centre, where the user looks.
    const double meeting = -base / slope;
    farthest = std::max(farthest, meeting + frame.distance);
    const double reach = farthest - meeting;
    const double gap = std::max(std::min(2e-4 * reach, 0.1 * (frame.distance - meeting)), 1e-6 * reach);
    nearest = std::max(nearest, meeting + gap);
  }
  nearDepth = nearest;
  farDepth = std::max(farthest, nearest + std::max(1e-6 * std::abs(nearest), smallestLength));
}

// With z the depth along the view and w = slope z + base:
//   x' = 2 x / (right - left) - w (right + left) / (right - left), y' likewise,
//   z' = A z + B with z' = -w at the near and +w at the far plane.
// In view space z is the third coordinate negated.
void Projection::MakeMatrices() {
  const Vector3& r = frame.right;
  const Vector3& u = frame.up;
  const Vector3& f = frame.forward;
  const Vector3& e = frame.eye;
  view = {r.x, u.x, -f.x, 0.0, r.y, u.y, -f.y, 0.0, r.z, u.z, -f.z, 0.0, -r.Dot(e), -u.Dot(e), f.Dot(e), 1.0};

  const double width = right - left;
  const double height = top - bottom;
  const double shiftX = (right + left) / width;
  const double shiftY = (top + bottom) / height;
  const double depth = farDepth - nearDepth;
  const double a = (slope * (farDepth + nearDepth) + 2.0 * base) / depth;
  const double b = slope * farDepth + base - a * farDepth;
  projection = {2.0 / width,
                0.0,
                0.0,
                0.0,  // x
                0.0,
                2.0 / height,
                0.0,
                0.0,  // y
                slope * shiftX,
                slope * shiftY,
                -a,
                -slope,  // -depth
                -base * shiftX,
                -base * shiftY,
                b,
                base};
}

double Projection::GetPixelSize(double depth, double height) const {
  return height > 0.0 ? (slope * depth + base) * (top - bottom) / height : 0.0;
}

bool Projection::WorldToPixel(const Vector3& point, double width, double height, Vector2& pixel) const {
  if (!(width > 0.0) || !(height > 0.0) || !point.IsFinite()) return false;
  const Vector3 offset = point - frame.eye;
  const double w = slope * offset.Dot(frame.forward) + base;
  if (!(w > 1e-12)) return false;
  const double x = (offset.Dot(frame.right) / w - left) / (right - left);
  const double y = (offset.Dot(frame.up) / w - bottom) / (top - bottom);
  if (!std::isfinite(x) || !std::isfinite(y)) return false;
  pixel = Vector2(x * width, y * height);
  return true;
}

bool Projection::PixelToWorld(const Vector2& pixel, double depth, double width, double height,
                              Vector3& point) const {
  if (!(width > 0.0) || !(height > 0.0)) return false;
  const double w = slope * depth + base;
  const double x = w * (left + (right - left) * pixel.x / width);
  const double y = w * (bottom + (top - bottom) * pixel.y / height);
  const Vector3 result = frame.eye + frame.forward * depth + frame.right * x + frame.up * y;
  if (!result.IsFinite()) return false;
  point = result;
  return true;
}

bool Projection::PixelToRay(const Vector2& pixel, double width, double height, Vector3& origin,
                            Vector3& direction) const {
  Vector3 from;
  Vector3 to;
  if (!PixelToWorld(pixel, nearDepth, width, height, from)) return false;
  if (!PixelToWorld(pixel, nearDepth + frame.distance, width, height, to)) return false;
  Vector3 along = to - from;
  if (!MakeUnit(along)) return false;
  origin = from;
  direction = along;
  return true;
}

}  // namespace zovhost
