// A strip that runs out of memory while its pictures change.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>

#include "support/allocation_counter.h"
#include "support/counting_renderer.h"
#include "toolbar/toolbar_scene.h"

using namespace Korvane;

namespace {

// Of which textures are loaded.
class TextureRenderer : public CountingRenderer {
 public:
  bool LoadTexture(TextureID id) override {
    const HostCode ours;
    ++loaded[id];
    return true;
  }
  void ReleaseTexture(TextureID id) override {
    const HostCode ours;
    if (--loaded[id] == 0) loaded.erase(id);
  }

  std::map<TextureID, int> loaded;
};

constexpr auto ARROW = static_cast<TextureID>(90);
constexpr auto OTHER = static_cast<TextureID>(91);

struct Stage {
  Stage() {
    toolbar.SetKorvane(&hub);
    toolbar.SetRenderer(&renderer);
    for (const int tag : {1, 2}) toolbar.GetItems().Append(MakeItem(tag, 0, 28, 28));
    toolbar.SetFlyoutIcon(ARROW, 8, 8);
    toolbar.SetCornerIcons(ARROW, ARROW, ARROW, ARROW, 8, 8);
  }
  void Open() {
    toolbar.Create();
    toolbar.SetVisible(true);
    toolbar.SetViewportSize(800, 600);
    toolbar.Draw();
  }

  ManualPlatform platform;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  TextureRenderer renderer;
  TextureRenderer other;
  OpenToolbar toolbar;
};

using Loaded = std::map<TextureID, int>;
Loaded Items(std::initializer_list<TextureID> more = {}) {
  Loaded all{{static_cast<TextureID>(101), 1}, {static_cast<TextureID>(102), 1}};
  for (const TextureID id : more) all[id] = 1;
  return all;
}

// Calls `run(stage, n)` with each allocation of `change` failing, and once with none.
void ForEachAllocation(const std::function<void(Stage& stage)>& change,
                       const std::function<void(Stage& stage, bool threw)>& check) {
  std::uint64_t failed = 0;
  for (bool met = true; met;) {
    Stage stage;
    stage.Open();
    bool threw = false;
    {
      const AllocationFault fault(++failed, 1);
      try {
        change(stage);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      met = fault.GetCounted() >= failed;
    }
    SCOPED_TRACE(failed);
    check(stage, threw);
  }
  EXPECT_GT(failed, 1U);
}

TEST(ToolbarMemory, another_renderer_gets_the_pictures_with_the_next_frame_at_the_latest) {
  ForEachAllocation([](Stage& stage) { stage.toolbar.SetRenderer(&stage.other); },
                    [](Stage& stage, bool threw) {
                      EXPECT_FALSE(threw);
                      EXPECT_EQ(stage.renderer.loaded, Loaded());
                      stage.toolbar.Draw();
                      EXPECT_EQ(stage.other.loaded, Items({ARROW}));
                      stage.toolbar.Destroy();
                      EXPECT_EQ(stage.other.loaded, Loaded());
                    });
}

TEST(ToolbarMemory, to_give_the_pictures_back_takes_none) {
  Stage stage;
  stage.Open();
  {
    const AllocationFault fault(1, ~std::uint64_t{0});
    stage.toolbar.SetRenderer(nullptr);
  }
  EXPECT_EQ(stage.renderer.loaded, Loaded());
}

TEST(ToolbarMemory, a_picture_is_set_as_a_whole_or_not) {
  ForEachAllocation([](Stage& stage) { stage.toolbar.SetFlyoutIcon(OTHER, 9, 9); },
                    [](Stage& stage, bool threw) {
                      stage.toolbar.Draw();
                      EXPECT_EQ(stage.renderer.loaded, threw ? Items({ARROW}) : Items({ARROW, OTHER}));
                      const ResourceIcon2D& arrow = stage.toolbar.open.look.flyoutArrow;
                      EXPECT_EQ(arrow.GetTextureResourceID(), threw ? ARROW : OTHER);
                      EXPECT_EQ(arrow.GetWidth(), threw ? 8.0 : 9.0);
                    });
}

TEST(ToolbarMemory, four_pictures_are_set_together_or_not) {
  ForEachAllocation([](Stage& stage) { stage.toolbar.SetCornerIcons(OTHER, OTHER, OTHER, OTHER, 9, 9); },
                    [](Stage& stage, bool threw) {
                      stage.toolbar.Draw();
                      EXPECT_EQ(stage.renderer.loaded, threw ? Items({ARROW}) : Items({ARROW, OTHER}));
                      for (const ResourceIcon2D& corner : stage.toolbar.open.look.corners)
                        EXPECT_EQ(corner.GetTextureResourceID(), threw ? ARROW : OTHER);
                    });
}

TEST(ToolbarMemory, new_items_get_their_pictures_with_the_next_frame_at_the_latest) {
  ForEachAllocation(
      [](Stage& stage) {
        const auto grow = [&] {
          const HostCode ours;
          stage.toolbar.GetItems().Append(MakeItem(3, 0, 28, 28));
        };
        grow();
        stage.toolbar.ApplyItemChanges();
      },
      [](Stage& stage, bool threw) {
        EXPECT_FALSE(threw);
        stage.toolbar.Draw();
        EXPECT_EQ(stage.renderer.loaded, Items({ARROW, static_cast<TextureID>(103)}));
      });
}

TEST(ToolbarMemory, one_that_could_not_be_created_is_created_anew) {
  std::uint64_t failed = 0;
  for (bool created = false; !created;) {
    Stage stage;
    {
      const AllocationFault fault(++failed, 1);
      created = stage.toolbar.Create();
    }
    EXPECT_EQ(stage.renderer.loaded, created ? Items({ARROW}) : Loaded());
    EXPECT_TRUE(stage.toolbar.Create());
    EXPECT_EQ(stage.renderer.loaded, Items({ARROW}));
  }
  EXPECT_GT(failed, 1U);
}

TEST(IconMemory, a_record_is_copied_as_a_whole_or_not) {
  ToolbarItem item = MakeItem(1, 0, 28, 28);
  ResourceIcon2D icon(OTHER);
  icon.SetVisible(false);
  icon.SetSize(9, 9);
  ChangingInTimeValueChain fade(0.0);
  for (int i = 0; i < 4; ++i) fade.Add(ChangingInTimeValue(0.0, 0.5, 1.0, INTERPOLATION_LINEAR));
  icon.SetChangingInTimeOpacity(fade);
  {
    const AllocationFault fault(1, 1);
    EXPECT_THROW(item.SetIcon(icon), std::bad_alloc);
  }
  EXPECT_EQ(item.GetIcon().GetTextureResourceID(), static_cast<TextureID>(101));
  EXPECT_TRUE(item.GetIcon().IsVisible());
  EXPECT_EQ(item.GetIcon().GetWidth(), 24.0);
  EXPECT_EQ(item.GetIcon().GetOpacity(), 1.0);
}

}  // namespace
