#include "korvane/aspect_ratio_adjuster.h"

#include <gtest/gtest.h>

#include "korvane/camera_parameters.h"

namespace {

using Korvane::AdjustForAspectRatio;
using Korvane::AspectRatioAdjuster;
using Korvane::CameraParameters;
using Korvane::SetAspectRatioAdjuster;

// Keeps what it was told and stretches the horizontal extent to the window.
class StretchingAdjuster : public AspectRatioAdjuster {
 public:
  StretchingAdjuster() { SetAspectRatioAdjuster(this); }
  ~StretchingAdjuster() override { SetAspectRatioAdjuster(nullptr); }

  void Adjust(const CameraParameters& camera, int width, int height, double& horizontalExtent,
              double& verticalExtent) override {
    seen = &camera;
    horizontalExtent *= static_cast<double>(width) / height;
    verticalExtent += 1.0;
  }

  const CameraParameters* seen = nullptr;
};

TEST(AdjustForAspectRatio, without_an_adjuster_leaves_both_extents) {
  double horizontal = 3.0;
  double vertical = 5.0;
  AdjustForAspectRatio(CameraParameters(), 200, 100, horizontal, vertical);
  EXPECT_EQ(horizontal, 3.0);
  EXPECT_EQ(vertical, 5.0);
}

TEST(AdjustForAspectRatio, passes_everything_on_to_the_adjuster) {
  StretchingAdjuster adjuster;
  const CameraParameters camera;
  double horizontal = 3.0;
  double vertical = 5.0;
  AdjustForAspectRatio(camera, 200, 100, horizontal, vertical);
  EXPECT_EQ(adjuster.seen, &camera);
  EXPECT_EQ(horizontal, 6.0);
  EXPECT_EQ(vertical, 6.0);
}

TEST(SetAspectRatioAdjuster, holds_one_adjuster_and_null_removes_it) {
  StretchingAdjuster first;
  StretchingAdjuster second;
  double horizontal = 1.0;
  double vertical = 1.0;
  AdjustForAspectRatio(CameraParameters(), 1, 1, horizontal, vertical);
  EXPECT_EQ(first.seen, nullptr);
  EXPECT_NE(second.seen, nullptr);
  SetAspectRatioAdjuster(nullptr);
  AdjustForAspectRatio(CameraParameters(), 1, 1, horizontal, vertical);
  EXPECT_EQ(vertical, 2.0);
}

}  // namespace
