#include "bare_turn.h"

#include <benchmark/benchmark.h>

#include <utility>

using Eigen::Matrix3d;
using Eigen::Vector3d;

void BareTurn::Step() {
  const double t = static_cast<double>(next++ % COUNT) / COUNT;
  const Matrix3d rotation = from.slerp(t, to).toRotationMatrix();
  const Vector3d eye = target - rotation.col(0) * distance;

  const Vector3d forward = (target - eye).normalized();
  const Vector3d right = forward.cross(rotation.col(1)).normalized();
  const Vector3d up = right.cross(forward);
  view << right.x(), right.y(), right.z(), -right.dot(eye),        //
      up.x(), up.y(), up.z(), -up.dot(eye),                        //
      -forward.x(), -forward.y(), -forward.z(), forward.dot(eye),  //
      0.0, 0.0, 0.0, 1.0;
  benchmark::DoNotOptimize(std::as_const(view));
}

bool BareTurn::LooksAtTarget() const {
  const Eigen::Vector4d seen = view * target.homogeneous();
  return (seen - Eigen::Vector4d(0.0, 0.0, -distance, 1.0)).norm() < 1e-9;
}
