// What becomes of the renderers that a cube is given.
#include <gtest/gtest.h>

#include "cube/cube_scene.h"

namespace {

using namespace Korvane;

constexpr int TEXTURES = 16;

// What has been counted in a renderer can be counted down in it alone, and only Destroy does that.
TEST(OrientorRenderer, that_is_taken_away_goes_on_counting_its_textures) {
  RecordingRenderer first;
  RecordingRenderer second;
  {
    Orientor cube;
    cube.SetRenderer(&first);
    ASSERT_TRUE(cube.Create());
    first.ClearCalls();
    cube.SetRenderer(&second);
    ASSERT_TRUE(cube.Create());
    EXPECT_TRUE(cube.Destroy());
    EXPECT_EQ(second.CountCalls("ReleaseTexture"), TEXTURES);
    cube.SetRenderer(nullptr);
    EXPECT_FALSE(cube.Destroy());
  }
  EXPECT_TRUE(first.GetCalls().empty());
  first.ApplyTextureUsage();
  EXPECT_EQ(first.CountCalls("ReleaseTexture"), 0);
}

TEST(OrientorRenderer, that_is_set_once_more_gets_its_textures_back) {
  RecordingRenderer first;
  RecordingRenderer second;
  Orientor cube;
  cube.SetRenderer(&first);
  ASSERT_TRUE(cube.Create());
  cube.SetRenderer(&second);
  cube.SetRenderer(&first);
  EXPECT_TRUE(cube.Destroy());
  EXPECT_EQ(first.CountCalls("ReleaseTexture"), TEXTURES);
  EXPECT_EQ(second.GetCalls().size(), 0U);
}

}  // namespace
