#pragma once

#include "camera/camera_frame.h"
#include "camera/view_size.h"
#include "korvane/camera_parameters.h"
#include "korvane/vector2.h"

namespace Korvane {

/// Where a point shows in a perspective pass, in the scale of the pass: -1 to 1 across it.
class PassView {
 public:
  explicit PassView(const CameraParameters& camera) : eye(camera.eye), frame(camera) {
    const FrustumTangents tangents(camera);
    scale = Vector2(Math::Max(tangents.right, tangents.left), Math::Max(tangents.top, tangents.bottom));
  }

  /// False for a point that is not before the eye, and for a camera without a view.
  bool Project(const Vector3& point, Vector2& local) const {
    const Vector3 away = point - eye;
    const double depth = away.Dot(frame.forward);
    local = Vector2(away.Dot(frame.right) / (depth * scale.x), away.Dot(frame.up) / (depth * scale.y));
    return depth > MIN_DEPTH && scale.x > 0.0 && scale.y > 0.0 && std::isfinite(local.x) &&
           std::isfinite(local.y);
  }

  /// How fast, and which way, a point that moves by `velocity` goes there; the point as for Project.
  Vector2 ProjectVelocity(const Vector3& point, const Vector3& velocity) const {
    const Vector3 away = point - eye;
    const double depth = away.Dot(frame.forward);
    const double receding = velocity.Dot(frame.forward) / depth;
    const auto along = [&](const Vector3& axis) {
      return (velocity.Dot(axis) - away.Dot(axis) * receding) / depth;
    };
    return {along(frame.right) / scale.x, along(frame.up) / scale.y};
  }

 private:
  static constexpr double MIN_DEPTH = 1e-6;

  Vector3 eye;
  CameraFrame frame;
  Vector2 scale;
};

}  // namespace Korvane
