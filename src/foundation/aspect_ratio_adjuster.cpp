#include "korvane/aspect_ratio_adjuster.h"

#include "foundation/one_thread.h"

namespace Korvane {

namespace {
AspectRatioAdjuster* theAdjuster = nullptr;
}

AspectRatioAdjuster::~AspectRatioAdjuster() = default;

void SetAspectRatioAdjuster(AspectRatioAdjuster* adjuster) {
  AssertOneThread();
  theAdjuster = adjuster;
}

void AdjustForAspectRatio(const CameraParameters& camera, int width, int height, double& horizontalExtent,
                          double& verticalExtent) {
  if (theAdjuster != nullptr) theAdjuster->Adjust(camera, width, height, horizontalExtent, verticalExtent);
}

}  // namespace Korvane
