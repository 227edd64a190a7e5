#include "disc/single_icon.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "support/allocation_counter.h"
#include "support/recording_renderer.h"

using namespace Korvane;

namespace {

TEST(SingleIcon, for_which_there_is_no_memory_is_not_held_until_it_is_taken_again) {
  RecordingRenderer renderer;
  ResourceIcon2D picture(TEXTURE_CUBE_FACES);
  SingleIcon icon;
  icon.Set(&picture);
  icon.Use(true);
  {
    const AllocationFault failing(1, ~std::uint64_t{0});
    icon.Hold(&renderer);
  }
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 0);
  icon.Hold(&renderer);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 1);
  icon.Hold(nullptr);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 1);
}

}  // namespace
