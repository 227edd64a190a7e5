// The viewer in a window, offscreen: models come and go by dropped files.
#include "viewer.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "program.h"

namespace {

using apps_test::TemporaryFolder;

constexpr const char* TRIANGLE = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
constexpr const char* SQUARE = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n";

class ViewerTest : public testing::Test {
 protected:
  void SetUp() override {
    zovhost::Window::Options options;
    options.width = 320;
    options.height = 200;
    options.offscreen = true;
    std::string error;
    window = zovhost::Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    viewer = std::make_unique<zovview::Viewer>(*window);
    viewer->Open({folder.Write("triangle.obj", TRIANGLE)});
    WaitForModel();
  }

  // Until nothing loads any more and the window has come to rest, for a minute at most.
  void WaitForModel() {
    for (int i = 0; i < 6000; ++i) {
      const bool open = window->Step(10);
      if (!open || (!viewer->IsLoading() && !window->IsFrameRequested())) return;
    }
    FAIL() << "the viewer does not come to rest";
  }

  void Drop(const std::filesystem::path& file) {
    SDL_Event event = {};
    event.type = SDL_DROPFILE;
    event.drop.file = SDL_strdup(file.c_str());
    SDL_PushEvent(&event);
    do window->Step(0);
    while (SDL_HasEvent(SDL_DROPFILE) == SDL_TRUE);
    WaitForModel();
  }

  void Press(SDL_Keycode key) {
    SDL_Event event = {};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    SDL_PushEvent(&event);
    window->Step(0);
  }

  std::string GetTitle() const { return SDL_GetWindowTitle(window->GetNativeWindow()); }

  TemporaryFolder folder;
  std::unique_ptr<zovhost::Window> window;
  std::unique_ptr<zovview::Viewer> viewer;
};

TEST_F(ViewerTest, names_the_model_in_the_title) {
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  ASSERT_NE(viewer->GetScene(), nullptr);
  EXPECT_EQ(viewer->GetScene()->GetTriangleCount(), 1U);
}

TEST_F(ViewerTest, a_dropped_file_replaces_the_model_and_the_view) {
  const Korvane::Vector3 before = viewer->GetHub().GetView().eye;
  Drop(folder.Write("square.obj", SQUARE));
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
  EXPECT_EQ(viewer->GetScene()->GetTriangleCount(), 2U);
  EXPECT_EQ(viewer->GetMessage(), "");
  Drop(folder.Write("triangle.obj", TRIANGLE));
  EXPECT_EQ(viewer->GetHub().GetView().eye, before);
}

TEST_F(ViewerTest, a_dropped_file_that_is_no_model_is_told_and_the_model_stays) {
  const zovhost::Scene* const scene = viewer->GetScene();
  testing::internal::CaptureStderr();
  Drop(folder.Write("broken.glb", "not a model"));
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_EQ(apps_test::CountLines(told), 1) << told;
  EXPECT_NE(told.find("broken.glb"), std::string::npos) << told;
  EXPECT_NE(viewer->GetMessage().find("broken.glb"), std::string::npos);
  EXPECT_EQ(viewer->GetScene(), scene);
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  EXPECT_TRUE(window->Step(0));
}

TEST_F(ViewerTest, a_first_model_that_is_none_ends_the_program_with_code_2) {
  viewer.reset();
  viewer = std::make_unique<zovview::Viewer>(*window);
  testing::internal::CaptureStderr();
  EXPECT_EQ(viewer->Run({folder.Write("broken.glb", "not a model")}), 2);
  EXPECT_EQ(apps_test::CountLines(testing::internal::GetCapturedStderr()), 1);
}

TEST_F(ViewerTest, of_several_files_dropped_during_a_load_the_last_is_shown) {
  viewer->Open({folder.Write("square.obj", SQUARE)});
  viewer->Open({folder.Write("broken.glb", "not a model")});
  viewer->Open({folder.Write("last.obj", TRIANGLE)});
  EXPECT_TRUE(viewer->IsLoading());
  WaitForModel();
  EXPECT_EQ(GetTitle(), "last.obj - zovview");
  EXPECT_EQ(viewer->GetMessage(), "");
}

// A model that takes long enough for events to be served meanwhile.
std::string MakeGrid(int side) {
  std::string text;
  for (int i = 0; i < side * side; ++i) {
    text += "v " + std::to_string(i % side) + " " + std::to_string(i / side) + " 0\n";
  }
  for (int i = 1; i + side < side * side; ++i) {
    text += "f " + std::to_string(i) + " " + std::to_string(i + 1) + " " + std::to_string(i + side) + "\n";
  }
  return text;
}

TEST_F(ViewerTest, a_file_dropped_during_a_load_follows_it) {
  viewer->Open({folder.Write("grid.obj", MakeGrid(200))});
  Drop(folder.Write("square.obj", SQUARE));
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerTest, closing_the_window_during_a_load_ends_the_program) {
  viewer->Open({folder.Write("grid.obj", MakeGrid(200))});
  SDL_Event event = {};
  event.type = SDL_QUIT;
  SDL_PushEvent(&event);
  window->Run();
  EXPECT_EQ(viewer->GetExitCode(), 0);
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
}

TEST_F(ViewerTest, keys_change_the_settings) {
  const Korvane::ApplicationParameters& parameters = viewer->GetHub().GetApplicationParameters();
  Press(SDLK_s);
  EXPECT_TRUE(parameters.do_snap_orbit);
  Press(SDLK_u);
  EXPECT_FALSE(parameters.preserve_orbit_up_direction);
  Press(SDLK_p);
  EXPECT_TRUE(viewer->GetHub().GetView().IsOrthographic());
  Press(SDLK_HOME);
  EXPECT_FALSE(viewer->GetHub().GetView().IsOrthographic());
}

TEST_F(ViewerTest, comes_to_rest_after_the_wheel) {
  SDL_Event event = {};
  event.type = SDL_MOUSEWHEEL;
  event.wheel.preciseY = 2.0F;
  event.wheel.mouseX = 300;
  event.wheel.mouseY = 190;
  const Korvane::Vector3 before = viewer->GetHub().GetView().eye;
  SDL_PushEvent(&event);
  window->Step(0);
  WaitForModel();
  EXPECT_NE(viewer->GetHub().GetView().eye, before);
}

}  // namespace
