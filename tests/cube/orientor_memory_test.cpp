// A cube for which there is no memory when it is created.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "cube/cube_scene.h"
#include "support/allocation_counter.h"

namespace {

using namespace Korvane;

class TextureRenderer : public CountingRenderer {
 public:
  bool LoadTexture(TextureID id) override {
    const HostCode ours;
    loaded.insert(id);
    return true;
  }
  void ReleaseTexture(TextureID id) override { loaded.erase(id); }
  std::wstring LoadStringResource(int id) override {
    const HostCode ours;
    return CountingRenderer::LoadStringResource(id);
  }

  std::set<TextureID> loaded;
};

/// A cube, and somebody else who holds one of its textures.
struct Stage {
  Stage() {
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    renderer.IncrementTextureUsage(TEXTURE_CUBE_FACES);
    renderer.ApplyTextureUsage();
  }
  /// False where it finds no memory at its allocation of this number.
  bool CreateWithout(std::uint64_t allocation) {
    const AllocationFault fault(allocation, 1);
    return cube.Create();
  }

  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  TextureRenderer renderer;
  OpenOrientor cube;
};

TEST(OrientorMemory, a_cube_that_could_not_be_created_takes_no_texture_from_others) {
  std::uint64_t failed = 0;
  for (bool created = false; !created;) {
    Stage stage;
    created = stage.CreateWithout(++failed);
    EXPECT_TRUE(stage.cube.Destroy());
    EXPECT_EQ(stage.renderer.loaded, std::set<TextureID>{TEXTURE_CUBE_FACES}) << failed;
    EXPECT_TRUE(stage.cube.Create());
    EXPECT_EQ(stage.renderer.loaded.size(), 16U) << failed;
    EXPECT_TRUE(stage.cube.Destroy());
    EXPECT_EQ(stage.renderer.loaded, std::set<TextureID>{TEXTURE_CUBE_FACES}) << failed;
  }
  EXPECT_GT(failed, 16U);
}

TEST(OrientorMemory, what_a_cube_holds_it_gives_back_also_where_another_create_has_failed) {
  for (const bool failsFirst : {true, false}) {
    Stage stage;
    if (failsFirst) {
      EXPECT_FALSE(stage.CreateWithout(1));
    }
    EXPECT_TRUE(stage.cube.Create());
    TextureRenderer other;
    if (!failsFirst) {
      stage.cube.SetRenderer(&other);
      EXPECT_FALSE(stage.CreateWithout(1));
      stage.cube.SetRenderer(&stage.renderer);
    }
    EXPECT_TRUE(stage.cube.Destroy());
    EXPECT_EQ(stage.renderer.loaded, std::set<TextureID>{TEXTURE_CUBE_FACES});
  }
}

}  // namespace
