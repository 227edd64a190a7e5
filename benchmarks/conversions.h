#pragma once

#include "bare_operations.h"
#include "korvane/camera_parameters.h"

inline Eigen::Vector3d ToBare(const Korvane::Vector3& v) { return {v.x, v.y, v.z}; }

inline BareCamera ToBare(const Korvane::CameraParameters& camera) {
  return {ToBare(camera.eye),
          ToBare(camera.centre),
          ToBare(camera.up),
          ToBare(camera.pivot),
          {camera.left_fov, camera.right_fov, camera.top_fov, camera.bottom_fov},
          camera.ortho_width,
          camera.ortho_height,
          static_cast<int>(camera.projection_type),
          camera.perspective_with_ortho,
          camera.projection_transition,
          camera.page_scale,
          camera.page_origin_x,
          camera.page_origin_y};
}

/// Upright, off every axis, with a pivot beside the line of sight.
inline Korvane::CameraParameters GetBenchmarkCamera() {
  Korvane::CameraParameters camera;
  camera.eye = Korvane::Vector3(9.0, 7.0, 12.0);
  camera.centre = Korvane::Vector3(1.0, 0.5, -2.0);
  camera.up = Korvane::Vector3(0.0, 1.0, 0.0);
  camera.pivot = Korvane::Vector3(0.5, -0.5, 0.25);
  camera.left_fov = 32.0;
  camera.right_fov = 30.0;
  camera.top_fov = 24.0;
  camera.bottom_fov = 22.0;
  camera.ortho_width = 20.0;
  camera.ortho_height = 15.0;
  return camera;
}
