// A fit as it is drawn: the model touches the frame, is not cut and sits in the middle.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "scene_stage.h"
#include "travelling_hub.h"

namespace {

using Korvane::Box3;

// Of the pixels that show the model, both ends included; rows from the top.
struct PixelBox {
  int left = 1'000'000;
  int top = 1'000'000;
  int right = -1;
  int bottom = -1;
};

struct Case {
  const char* name;
  void (*run)(const zovview::ViewTarget& target);
  bool orthographic;
  int width;
  int height;
};

class FitPictureTest : public apps_test::TravellingHub, public testing::WithParamInterface<Case> {
 protected:
  void SetUp() override {
    Show(std::array{Box3({2, 3, 1}, {3, 2, 1})}, GetParam().width, GetParam().height);
    ASSERT_NO_FATAL_FAILURE(stage.Create(*scene, GetParam().width, GetParam().height));
    auto& options = stage.GetView().GetOptions();
    options.drawGroundShadow = false;
    options.ground.top.fill(1.0F);
    options.ground.bottom.fill(1.0F);
  }

  void Fit() {
    if (GetParam().orthographic) zovview::ToggleProjection(target);
    Arrive();
    GetParam().run(target);
    Arrive();
  }

  zovhost::Image Draw() {
    EXPECT_TRUE(stage.GetTarget().Bind());
    EXPECT_TRUE(stage.GetView().Draw(hub.GetView(), GetParam().width, GetParam().height));
    return stage.Read();
  }

  apps_test::SceneStage stage;
};

// The background is white up to its dither, the model a light grey with dark edges.
PixelBox FindModel(const zovhost::Image& picture) {
  PixelBox box;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const std::size_t pixel = 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                                     static_cast<std::size_t>(x));
      if (picture.rgba[pixel] > 235) continue;
      box.left = std::min(box.left, x);
      box.right = std::max(box.right, x);
      box.top = std::min(box.top, y);
      box.bottom = std::max(box.bottom, y);
    }
  }
  return box;
}

TEST_P(FitPictureTest, the_model_touches_two_sides_and_keeps_off_the_others_by_the_same) {
  Fit();
  const zovhost::Image picture = Draw();
  const PixelBox box = FindModel(picture);
  const int besideLeft = box.left;
  const int besideRight = picture.width - 1 - box.right;
  const int above = box.top;
  const int below = picture.height - 1 - box.bottom;
  const bool wide = std::max(besideLeft, besideRight) <= 1;  // corners end in part of a pixel
  const bool tall = std::max(above, below) <= 1;
  EXPECT_TRUE(wide || tall) << besideLeft << " " << besideRight << " " << above << " " << below;
  // One axis ends at both sides; in perspective the nearer end of the other one stands further out.
  if (GetParam().orthographic) {
    EXPECT_LE(std::abs(besideLeft - besideRight), 2);
    EXPECT_LE(std::abs(above - below), 2);
  }
}

// A little further back the model stands free on all sides: it was not cut before.
TEST_P(FitPictureTest, the_model_is_not_cut) {
  Fit();
  Korvane::CameraParameters camera = hub.GetView();
  camera.eye = camera.centre + (camera.eye - camera.centre) * 1.02;
  camera.ortho_width *= 1.02;
  camera.ortho_height *= 1.02;
  hub.SetView(camera);
  const zovhost::Image picture = Draw();
  const PixelBox box = FindModel(picture);
  EXPECT_GE(box.left, 1);
  EXPECT_GE(box.top, 1);
  EXPECT_LE(box.right, picture.width - 2);
  EXPECT_LE(box.bottom, picture.height - 2);
}

INSTANTIATE_TEST_SUITE_P(each, FitPictureTest,
                         testing::Values(Case{"fit_all", zovview::FitAll, false, 400, 250},
                                         Case{"fit_all_orthographic", zovview::FitAll, true, 400, 250},
                                         Case{"fit_all_in_a_tall_window", zovview::FitAll, false, 200, 400},
                                         Case{"corner", zovview::ShowIsometric, false, 400, 250},
                                         Case{"corner_orthographic", zovview::ShowIsometric, true, 200, 400},
                                         Case{"top", zovview::ShowTop, false, 400, 250},
                                         Case{"top_orthographic", zovview::ShowTop, true, 400, 250},
                                         Case{"front", zovview::ShowFront, false, 400, 250}),
                         [](const testing::TestParamInfo<Case>& one) { return std::string(one.param.name); });

}  // namespace
