#pragma once

#include "korvane/camera_parameters.h"

namespace Korvane {

/// The numbers of a camera record that say how it looks, and not from where.
constexpr double CameraParameters::*LENS_FIELDS[] = {
    &CameraParameters::left_fov,   &CameraParameters::right_fov,     &CameraParameters::top_fov,
    &CameraParameters::bottom_fov, &CameraParameters::ortho_width,   &CameraParameters::ortho_height,
    &CameraParameters::page_scale, &CameraParameters::page_origin_x, &CameraParameters::page_origin_y,
};

/// The orthographic size of another camera, scaled.
inline void ScaleOrthographicSize(const CameraParameters& from, double scale, CameraParameters& camera) {
  camera.ortho_width = from.ortho_width * scale;
  camera.ortho_height = from.ortho_height * scale;
}

}  // namespace Korvane
