#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

#include "../host/large_meshes.h"
#include "korvane/interval_timer.h"
#include "support/processor_time.h"
#include "viewer_fixture.h"
#include "zovhost/gl_scene_view.h"

namespace {

using Clock = std::chrono::steady_clock;

class ViewerLoadingTest : public apps_test::ViewerTest {
 protected:
  class Later : public Korvane::IntervalTimer {
   public:
    Later(double seconds, std::function<void()> toDo) : action(std::move(toDo)) { Start(seconds, false); }
    void Timeout() override { action(); }

   private:
    const std::function<void()> action;
  };

  // A patch of the model, beside the mark of the pivot.
  static constexpr int PATCH = 120;
  static constexpr int LEFT = 240;
  static constexpr int BOTTOM = 200;
  static constexpr int FEW = PATCH * PATCH / 50;
  static constexpr int MANY = PATCH * PATCH / 10;
  using Pixels = std::vector<std::array<std::uint8_t, 4>>;

  static Pixels ReadPatch() {
    Pixels pixels(static_cast<std::size_t>(PATCH) * PATCH);
    glReadPixels(LEFT, BOTTOM, PATCH, PATCH, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
  }
  // Pixels of the patch in the window that are not as the whole model has them.
  int CountCoarse() {
    DrawFrames(1);
    const Pixels shown = ReadPatch();
    zovhost::GLSceneView whole;
    EXPECT_TRUE(whole.SetScene(viewer->GetScene()));
    whole.GetOptions().ground = viewer->GetSceneView().GetOptions().ground;
    whole.Draw(GetHub().GetView(), 0, 0, apps_test::WIDTH, apps_test::HEIGHT, window->GetScale());
    const Pixels expected = ReadPatch();
    int count = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      int difference = 0;
      for (std::size_t channel = 0; channel < 3; ++channel) {
        difference = std::max(difference, std::abs(shown[i][channel] - expected[i][channel]));
      }
      if (difference > 4) ++count;
    }
    return count;
  }
  // For a minute at most.
  void AwaitRest() {
    const Clock::time_point begin = Clock::now();
    while (viewer->GetSceneView().GetOptions().moving && Clock::now() - begin < std::chrono::minutes(1)) {
      window->Step(10);
    }
    ComeToRest();
  }

  // A model that takes a while.
  std::filesystem::path WriteHills() { return folder.Write("hills.stl", zovtest::MakeHillsStl(400)); }
};

TEST_F(ViewerLoadingTest, escape_breaks_a_load_off_and_the_present_model_stays) {
  const zovhost::Scene* const scene = viewer->GetScene();
  viewer->Open({WriteHills()});
  const ProcessorTime used;
  Press(SDLK_ESCAPE);
  ComeToRest();
  EXPECT_LT(used.Get(), 5.0);
  EXPECT_EQ(viewer->GetMessage(), "hills.stl: loading was cancelled");
  EXPECT_EQ(viewer->GetScene(), scene);
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  viewer->Open({WriteHills()});  // and once more, to the end
  ComeToRest();
  EXPECT_EQ(GetTitle(), "hills.stl - zovview");
  EXPECT_EQ(viewer->GetMessage(), "");
}

TEST_F(ViewerLoadingTest, escape_while_the_first_model_loads_ends_the_program) {
  viewer.reset();
  viewer = std::make_unique<zovview::Viewer>(*window);
  viewer->Open({WriteHills()});
  Press(SDLK_ESCAPE);
  window->Run();
  EXPECT_FALSE(window->IsOpen());
  EXPECT_EQ(viewer->GetExitCode(), 0);
}

// The present model takes its time for each frame that the load draws.
TEST_F(ViewerLoadingTest, escape_breaks_a_load_off_within_a_second_where_frames_cost) {
  viewer->Open({WriteHills()});
  ComeToRest();
  ASSERT_TRUE(viewer->GetSceneView().DropsDetail()) << "a large one";
  for (int round = 0; round < 3; ++round) {
    viewer->Open({folder.Write("more.stl", zovtest::MakeHillsStl(600))});
    bool pressed = false;
    ProcessorTime sincePressed;
    const Later later(0.05 + 0.15 * round, [&] {  // in one stage of it or another
      SDL_Event event = {};
      event.type = SDL_KEYDOWN;
      event.key.keysym.sym = SDLK_ESCAPE;
      SDL_PushEvent(&event);
      pressed = true;
      sincePressed.Restart();
    });
    while (viewer->IsLoading()) window->Step(10);
    ASSERT_TRUE(pressed) << "it was faster than the key";
    EXPECT_LT(sincePressed.Get(), 1.0);
    EXPECT_EQ(viewer->GetMessage(), "more.stl: loading was cancelled");
    EXPECT_EQ(GetTitle(), "hills.stl - zovview");
    ComeToRest();
  }
}

TEST_F(ViewerLoadingTest, a_large_model_is_drawn_coarsely_while_it_moves_and_whole_at_rest) {
  viewer->Open({folder.Write("rough.stl", zovtest::MakeRoughStl(400))});
  ComeToRest();
  ASSERT_TRUE(viewer->GetSceneView().DropsDetail()) << "a large one";
  AwaitRest();
  EXPECT_LT(CountCoarse(), FEW);
  PushMotion(400, 300);
  PushButton(SDL_MOUSEBUTTONDOWN, 400, 300, 1);
  PushMotion(430, 300);
  DrawFrames(3);
  EXPECT_GT(CountCoarse(), MANY) << "while it is held";
  PushButton(SDL_MOUSEBUTTONUP, 430, 300, 1);
  DrawFrames(1);
  AwaitRest();
  EXPECT_LT(CountCoarse(), FEW) << "whole again";
}

}  // namespace
