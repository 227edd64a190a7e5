#include "simplest_moves.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <utility>

using Eigen::AngleAxisd;
using Eigen::Quaterniond;
using Eigen::Vector3d;

namespace {

constexpr double PI = 3.141592653589793;
constexpr int HEIGHT = 768;
constexpr double RADIANS_A_PIXEL = 5.0 / 1024.0;
constexpr double FACTOR_A_PIXEL = 1.015;
// Tangents of the half angles.
constexpr double ACROSS = 0.6;
constexpr double UPWARD = 0.42;
// Half sizes of the box that is fitted, round TARGET.
const Vector3d HALF(4.0, 1.5, 2.5);
const Vector3d TARGET(1.0, -2.0, 0.5);
// A few hundred sums and products of lengths around 20.
constexpr double TOLERANCE = 1e-9;

bool IsNear(double a, double b) { return std::abs(a - b) < TOLERANCE; }

Vector3d GetCorner(int index) {
  return {(index & 1) != 0 ? HALF.x() : -HALF.x(), (index & 2) != 0 ? HALF.y() : -HALF.y(),
          (index & 4) != 0 ? HALF.z() : -HALF.z()};
}

}  // namespace

// ---- drags ----

void SimplestDrag::Restart() {
  view = SimplestView();
  cursor = CursorPath::START;
  path.Restart();
}

void SimplestDrag::Step() {
  const BareCursor moved = path.Next();
  Drag(moved.x - cursor.x, moved.y - cursor.y);
  cursor = moved;
  benchmark::DoNotOptimize(std::as_const(view));
}

void SimplestOrbit::Drag(int dx, int dy) {
  previousEye = view.eye;
  const Vector3d offset = view.eye - view.target;
  const Vector3d right = view.up.cross(offset).normalized();
  const Quaterniond turn = Quaterniond(AngleAxisd(-dx * RADIANS_A_PIXEL, view.up)) *
                           Quaterniond(AngleAxisd(-dy * RADIANS_A_PIXEL, right));
  view.eye = view.target + turn * offset;
  view.up = (turn * view.up).normalized();
}

bool SimplestOrbit::IsSensible() const {
  const SimplestView start;
  return IsNear((view.eye - view.target).norm(), (start.eye - start.target).norm()) &&
         IsNear(view.up.norm(), 1.0) && (view.eye - previousEye).norm() > RADIANS_A_PIXEL;
}

void SimplestPan::Drag(int dx, int dy) {
  const Vector3d offset = view.eye - view.target;
  const double unitsAPixel = 2.0 * offset.norm() * UPWARD / HEIGHT;
  const Vector3d right = view.up.cross(offset).normalized();
  const Vector3d up = offset.cross(right).normalized();
  const Vector3d shift = right * (-dx * unitsAPixel) + up * (dy * unitsAPixel);
  view.eye += shift;
  view.target += shift;
}

bool SimplestPan::IsSensible() const {
  const SimplestView start;
  const Vector3d offset = start.eye - start.target;
  const double unitsAPixel = 2.0 * offset.norm() * UPWARD / HEIGHT;
  const double way = std::hypot(cursor.x - CursorPath::START.x, cursor.y - CursorPath::START.y);
  return (view.eye - view.target - offset).norm() < TOLERANCE &&
         IsNear((view.eye - start.eye).norm(), way * unitsAPixel);
}

void SimplestZoom::Drag(int dx, int dy) {
  const double ratio = std::pow(FACTOR_A_PIXEL, dy - dx);
  view.eye = view.target + (view.eye - view.target) * ratio;
}

bool SimplestZoom::IsSensible() const {
  const SimplestView start;
  const int offset = (CursorPath::START.x - cursor.x) + (cursor.y - CursorPath::START.y);
  const Vector3d expected = start.target + (start.eye - start.target) * std::pow(FACTOR_A_PIXEL, offset);
  return (view.eye - expected).norm() < TOLERANCE;
}

// ---- moves and fits ----

void SimplestTransition::Step() {
  const double linear = static_cast<double>(frame++ % FRAME_COUNT) / FRAME_COUNT;
  t = (std::sin((linear - 0.5) * PI) + 1.0) * 0.5;
  const Quaterniond rotation = from.slerp(t, to);
  view.target = fromTarget + t * (toTarget - fromTarget);
  view.eye = view.target + (fromDistance + t * (toDistance - fromDistance)) * (rotation * Vector3d::UnitZ());
  view.up = rotation * Vector3d::UnitY();
  benchmark::DoNotOptimize(std::as_const(view));
}

// The way on the sphere is as long as the two parts that the view divides it into, which stand as t to 1 - t.
bool SimplestTransition::IsSensible() const {
  const Vector3d offset = view.eye - view.target;
  const Vector3d target = (1.0 - t) * fromTarget + t * toTarget;
  Eigen::Matrix3d axes;
  axes << view.up.cross(offset).normalized(), view.up, offset.normalized();
  const Quaterniond rotation(axes);
  const double way = from.angularDistance(to);
  return (view.target - target).norm() < TOLERANCE &&
         IsNear(offset.norm(), (1.0 - t) * fromDistance + t * toDistance) &&
         IsNear(from.angularDistance(rotation), t * way) &&
         IsNear(rotation.angularDistance(to), (1.0 - t) * way);
}

// In a spiral from pole to pole, none of them along an axis.
SimplestFit::SimplestFit() {
  for (std::size_t i = 0; i < directions.size(); ++i) {
    const double height = 0.98 - 1.96 * static_cast<double>(i) / static_cast<double>(directions.size() - 1);
    const double angle = 2.4 * static_cast<double>(i);
    const double radius = std::sqrt(1.0 - height * height);
    directions[i] = -Vector3d(radius * std::cos(angle), height, radius * std::sin(angle));
  }
}

void SimplestFit::Step() {
  const Vector3d& backward = directions[next++ % directions.size()];
  const Vector3d right = SimplestView().up.cross(backward).normalized();
  const Vector3d up = backward.cross(right);
  double distance = 0.0;
  for (int i = 0; i < 8; ++i) {
    const Vector3d corner = GetCorner(i);
    const double aside = std::max(std::abs(corner.dot(right)) / ACROSS, std::abs(corner.dot(up)) / UPWARD);
    distance = std::max(distance, corner.dot(backward) + aside);
  }
  view.target = TARGET;
  view.eye = TARGET + distance * backward;
  view.up = up;
  benchmark::DoNotOptimize(std::as_const(view));
}

// The corner furthest out touches a side.
bool SimplestFit::IsSensible() const {
  const Vector3d forward = (view.target - view.eye).normalized();
  const Vector3d right = forward.cross(view.up).normalized();
  double furthest = 0.0;
  for (int i = 0; i < 8; ++i) {
    const Vector3d offset = TARGET + GetCorner(i) - view.eye;
    const double depth = offset.dot(forward);
    furthest = std::max({furthest, std::abs(offset.dot(right)) / depth / ACROSS,
                         std::abs(offset.dot(view.up)) / depth / UPWARD});
  }
  return IsNear(furthest, 1.0);
}
