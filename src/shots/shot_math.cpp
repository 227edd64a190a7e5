#include "shots/shot_math.h"

namespace Korvane {

void InterpolateLens(double t, const CameraParameters& from, const CameraParameters& to,
                     CameraParameters& camera) {
  for (const auto field : LENS_FIELDS) camera.*field = Math::LinearInterp(t, from.*field, to.*field);
}

bool GetAnchorValue(TargetCamPos anchor, double& value) {
  static constexpr double VALUES[] = {0.0, 0.5, 1.0};
  if (anchor < TARGET_CAM_START || anchor > TARGET_CAM_END) return false;
  value = VALUES[anchor];
  return true;
}

}  // namespace Korvane
