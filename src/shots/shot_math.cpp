#include "shots/shot_math.h"

namespace Korvane {

void InterpolateLens(double t, const CameraParameters& from, const CameraParameters& to,
                     CameraParameters& camera) {
  static constexpr double CameraParameters::*FIELDS[] = {
      &CameraParameters::left_fov,   &CameraParameters::right_fov,     &CameraParameters::top_fov,
      &CameraParameters::bottom_fov, &CameraParameters::ortho_width,   &CameraParameters::ortho_height,
      &CameraParameters::page_scale, &CameraParameters::page_origin_x, &CameraParameters::page_origin_y,
  };
  for (const auto field : FIELDS) camera.*field = Math::LinearInterp(t, from.*field, to.*field);
}

bool GetAnchorValue(TargetCamPos anchor, double& value) {
  static constexpr double VALUES[] = {0.0, 0.5, 1.0};
  if (anchor < TARGET_CAM_START || anchor > TARGET_CAM_END) return false;
  value = VALUES[anchor];
  return true;
}

}  // namespace Korvane
