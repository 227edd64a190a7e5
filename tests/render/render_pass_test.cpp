#include "render/render_pass.h"

#include <gtest/gtest.h>

#include "support/journal.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

using namespace Korvane;

namespace {

struct RenderPassTest : ::testing::Test {
  RenderPassTest() {
    hub.GetApplicationParameters().viewport_width = 640;
    hub.GetApplicationParameters().viewport_height = 480;
  }

  MemoryHub hub;
  RecordingRenderer renderer;
};

}  // namespace

TEST_F(RenderPassTest, is_closed_at_its_end) {
  {
    const FullViewPass pass(&renderer, hub);
    EXPECT_TRUE(pass);
    DynamicIcon2D note(7);
    pass->Render(&note);
  }
  // The middle of the view and half its size, twice; overlay.
  EXPECT_EQ(renderer.TakeCalls(),
            Lines({"BeginRender(320, 240, 320, 240, 0)", "RenderDynamic(7)", "EndRender()"}));
}

TEST_F(RenderPassTest, one_that_is_refused_is_not_closed) {
  renderer.FailAlways("BeginRender");
  {
    const FullViewPass pass(&renderer, hub, Renderer::RENDER_SCENE);
    EXPECT_FALSE(pass);
  }
  EXPECT_EQ(renderer.TakeCalls(), Lines({"BeginRender(320, 240, 320, 240, 2)"}));
}

TEST_F(RenderPassTest, without_a_renderer_there_is_none) {
  const FullViewPass pass(nullptr, hub);
  EXPECT_FALSE(pass);
}

TEST_F(RenderPassTest, takes_any_box_and_mode) {
  { const RenderPass pass(&renderer, Box2({10, 20}, {3, 4}), hub.view, Renderer::RENDER_PERSPECTIVE); }
  EXPECT_EQ(renderer.TakeCalls(), Lines({"BeginRender(10, 20, 3, 4, 1)", "EndRender()"}));
}
