// The viewer in a window, offscreen: models come and go by dropped files.
#include "viewer.h"

#include <SDL.h>
#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "program.h"

namespace {

using apps_test::TemporaryFolder;

constexpr const char* TRIANGLE = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
constexpr const char* SQUARE = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n";

constexpr const char* TWO_SQUARES =
    "o lower\nv 0 0 0\nv 2 0 0\nv 2 2 0\nv 0 2 0\nf 1 2 3 4\n"
    "o upper\nv 0 3 0\nv 2 3 0\nv 2 5 0\nv 0 5 0\nf 5 6 7 8\n";

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;

class ViewerTest : public testing::Test {
 protected:
  void SetUp() override {
    zovhost::Window::Options options;
    options.width = WIDTH;
    options.height = HEIGHT;
    options.offscreen = true;
    std::string error;
    window = zovhost::Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    viewer = std::make_unique<zovview::Viewer>(*window);
    viewer->Open({folder.Write("triangle.obj", TRIANGLE)});
    ComeToRest();
  }

  // Until nothing loads or moves any more, for a minute at most.
  void ComeToRest() {
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
    ComeToRest();
  }

  void Press(SDL_Keycode key) {
    SDL_Event event = {};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    SDL_PushEvent(&event);
    window->Step(0);
  }

  void PushButton(Uint32 type, int pixelX, int pixelY, Uint8 clicks) {
    SDL_Event event = {};
    event.type = type;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.clicks = clicks;
    event.button.x = pixelX;
    event.button.y = HEIGHT - 1 - pixelY;  // events count from the top
    SDL_PushEvent(&event);
  }
  void Click(const Korvane::Vector2& pixel, Uint8 clicks = 1) {
    PushButton(SDL_MOUSEBUTTONDOWN, static_cast<int>(pixel.x), static_cast<int>(pixel.y), clicks);
    PushButton(SDL_MOUSEBUTTONUP, static_cast<int>(pixel.x), static_cast<int>(pixel.y), clicks);
    ComeToRest();
  }

  Korvane::Vector2 Project(const Korvane::Vector3& point) const {
    Korvane::Vector2 pixel;
    EXPECT_TRUE(GetHub().GetProjection().WorldToPixel(point, WIDTH, HEIGHT, pixel));
    return pixel;
  }

  zovview::ViewerHub& GetHub() const { return viewer->GetView(0).GetHub(); }
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
  const Korvane::Vector3 before = GetHub().GetView().eye;
  Drop(folder.Write("square.obj", SQUARE));
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
  EXPECT_EQ(viewer->GetScene()->GetTriangleCount(), 2U);
  EXPECT_EQ(viewer->GetMessage(), "");
  Drop(folder.Write("triangle.obj", TRIANGLE));
  EXPECT_EQ(GetHub().GetView().eye, before);
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
  ComeToRest();
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
  const Korvane::ApplicationParameters& parameters = GetHub().GetApplicationParameters();
  Press(SDLK_s);
  EXPECT_TRUE(parameters.do_snap_orbit);
  Press(SDLK_u);
  EXPECT_FALSE(parameters.preserve_orbit_up_direction);
  Press(SDLK_p);
  ComeToRest();
  EXPECT_TRUE(GetHub().GetView().IsOrthographic());
  Press(SDLK_HOME);
  ComeToRest();
  EXPECT_FALSE(GetHub().GetView().IsOrthographic());
}

TEST_F(ViewerTest, comes_to_rest_after_the_wheel) {
  SDL_Event event = {};
  event.type = SDL_MOUSEWHEEL;
  event.wheel.preciseY = 2.0F;
  event.wheel.mouseX = WIDTH - 20;
  event.wheel.mouseY = HEIGHT - 10;
  const Korvane::Vector3 before = GetHub().GetView().eye;
  SDL_PushEvent(&event);
  window->Step(0);
  ComeToRest();
  EXPECT_NE(GetHub().GetView().eye, before);
}

class SelectionByClickTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Drop(folder.Write("squares.obj", TWO_SQUARES));
    ASSERT_EQ(viewer->GetScene()->GetParts().size(), 2U);
  }

  Korvane::Vector2 MiddleOf(std::size_t part) const {
    return Project(viewer->GetScene()->GetParts()[part].bounds.GetCenter());
  }
  int GetSelected() const { return viewer->GetView(0).GetSelection().GetPart(); }
};

TEST_F(SelectionByClickTest, a_click_selects_the_part_under_it_and_moves_nothing) {
  const Korvane::Vector3 before = GetHub().GetView().eye;
  for (const int part : {0, 1}) {
    Click(MiddleOf(static_cast<std::size_t>(part)));
    EXPECT_EQ(GetSelected(), part);
  }
  EXPECT_EQ(GetHub().GetView().eye, before);
}

TEST_F(SelectionByClickTest, a_click_into_the_void_clears) {
  Click(MiddleOf(0));
  ASSERT_EQ(GetSelected(), 0);
  Click({WIDTH - 10.0, 10.0});
  EXPECT_EQ(GetSelected(), -1);
}

TEST_F(SelectionByClickTest, escape_clears) {
  Click(MiddleOf(0));
  ASSERT_EQ(GetSelected(), 0);
  Press(SDLK_ESCAPE);
  EXPECT_EQ(GetSelected(), -1);
}

TEST_F(SelectionByClickTest, a_drag_selects_nothing) {
  const Korvane::Vector2 from = MiddleOf(0);
  PushButton(SDL_MOUSEBUTTONDOWN, static_cast<int>(from.x), static_cast<int>(from.y), 1);
  PushButton(SDL_MOUSEBUTTONUP, static_cast<int>(from.x) + 10, static_cast<int>(from.y), 1);
  ComeToRest();
  EXPECT_EQ(GetSelected(), -1);
}

TEST_F(SelectionByClickTest, another_model_has_nothing_selected) {
  Click(MiddleOf(1));
  ASSERT_EQ(GetSelected(), 1);
  Drop(folder.Write("square.obj", SQUARE));
  EXPECT_EQ(GetSelected(), -1);
}

TEST_F(SelectionByClickTest, the_selection_is_marked) {
  const auto readMiddle = [this](std::size_t part) {
    const Korvane::Vector2 middle = MiddleOf(part);
    std::array<unsigned char, 4> pixel{};
    GetHub().RequestApplicationUpdate();
    ComeToRest();
    glReadPixels(static_cast<int>(middle.x), static_cast<int>(middle.y), 1, 1, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixel.data());
    return pixel[2] - pixel[0];  // the blue over the red
  };
  const int plain = readMiddle(1);
  Click(MiddleOf(1));
  EXPECT_GT(readMiddle(1), plain + 40);
  EXPECT_LT(readMiddle(0), plain + 10);
}

TEST_F(SelectionByClickTest, a_double_click_brings_the_point_to_the_middle) {
  const Korvane::Vector3 point = viewer->GetScene()->GetParts()[1].bounds.GetCenter();
  const Korvane::Vector2 pixel = Project(point);
  Click(pixel);
  Click(pixel, 2);
  // The middle of the pixel that was clicked is half a pixel away at most.
  EXPECT_NEAR(Project(point).x, WIDTH / 2.0, 1.0);
  EXPECT_NEAR(Project(point).y, HEIGHT / 2.0, 1.0);
}

}  // namespace
