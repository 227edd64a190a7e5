// Pictures of a model one after the other: those of a camera that rests are copied, and nobody can tell.
#include "tour/scene_keeper.h"

#include <gtest/gtest.h>

#include <memory>

#include "scene_stage.h"
#include "zovhost/start_camera.h"

namespace {

using Korvane::CameraParameters;

constexpr int WIDTH = 160;
constexpr int HEIGHT = 100;

class SceneKeeperTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(stage.Create(*scene, WIDTH, HEIGHT));
    keeper = std::make_unique<zovview::SceneKeeper>(stage.GetView());
    camera = zovhost::MakeStartCamera(*scene, WIDTH, HEIGHT);
  }

  zovhost::Image Draw(int height = HEIGHT) {
    EXPECT_TRUE(keeper->Draw(camera, height, stage.GetTarget()));
    return stage.Read();
  }

  const std::unique_ptr<zovhost::Scene> scene = zovhost::MakeDemoBuilding();
  apps_test::SceneStage stage;
  std::unique_ptr<zovview::SceneKeeper> keeper;
  CameraParameters camera;
};

TEST_F(SceneKeeperTest, a_camera_that_rests_is_drawn_twice_and_then_copied) {
  const zovhost::Image first = Draw();
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Draw().rgba, first.rgba) << i;
  EXPECT_EQ(keeper->GetDrawnCount(), 2);
  EXPECT_EQ(keeper->GetCopiedCount(), 4);
}

TEST_F(SceneKeeperTest, a_camera_that_moves_is_drawn_and_what_was_kept_forgotten) {
  const zovhost::Image first = Draw();
  Draw();
  camera.eye.x += 1.0;
  EXPECT_NE(Draw().rgba, first.rgba);
  EXPECT_EQ(keeper->GetCopiedCount(), 1);
  camera.eye.x -= 1.0;
  EXPECT_EQ(Draw().rgba, first.rgba);
  EXPECT_EQ(keeper->GetCopiedCount(), 1);
}

TEST_F(SceneKeeperTest, a_selected_part_and_another_height_are_other_pictures) {
  const zovhost::Image first = Draw();
  stage.GetView().GetOptions().selectedPart = 0;
  const zovhost::Image selected = Draw();
  EXPECT_NE(selected.rgba, first.rgba);
  EXPECT_EQ(Draw().rgba, selected.rgba);
  EXPECT_NE(Draw(HEIGHT / 2).rgba, selected.rgba);
  EXPECT_EQ(keeper->GetCopiedCount(), 1);
}

TEST_F(SceneKeeperTest, what_covers_a_picture_is_not_in_the_next) {
  const zovhost::Image first = Draw();
  Draw();
  zovhost::OffscreenTarget other;
  ASSERT_TRUE(other.Create(WIDTH, HEIGHT));
  ASSERT_TRUE(other.Bind());
  ASSERT_TRUE(other.CopyTo(stage.GetTarget()));  // whatever it holds
  EXPECT_EQ(Draw().rgba, first.rgba);
}

TEST_F(SceneKeeperTest, targets_that_differ_are_not_copied) {
  zovhost::OffscreenTarget larger;
  zovhost::OffscreenTarget coarse;
  const zovhost::OffscreenTarget none;
  ASSERT_TRUE(larger.Create(WIDTH + 1, HEIGHT));
  ASSERT_TRUE(coarse.Create(WIDTH, HEIGHT, 0));
  EXPECT_FALSE(stage.GetTarget().CopyTo(larger));
  EXPECT_FALSE(stage.GetTarget().CopyTo(coarse));
  EXPECT_FALSE(stage.GetTarget().CopyTo(none));
  EXPECT_FALSE(none.CopyTo(stage.GetTarget()));
}

}  // namespace
