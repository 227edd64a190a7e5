// The pages that come at the right: the editor of a shot and that of devices stand beside the cube, however
// large it is.
#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "panel/cube_place.h"
#include "viewer_fixture.h"
#include "zovhost/panel_texts.h"

namespace {

using zovview::CubePlace;
using zovview::FindPageRight;

// ---- where they end ----

TEST(PagePlaceTest, is_left_of_the_cubes_in_the_right_half) {
  constexpr CubePlace WIDE = {900.0F, 10.0F, 1270.0F, 380.0F};
  constexpr CubePlace BELOW = {950.0F, 700.0F, 1270.0F, 990.0F};
  constexpr CubePlace OTHER_VIEW = {300.0F, 10.0F, 630.0F, 340.0F};
  const float usual = FindPageRight({}, 1280.0F);
  EXPECT_LT(usual, 1280.0F - 200.0F);
  EXPECT_GT(usual, 1280.0F - 250.0F);
  EXPECT_LT(FindPageRight(std::array{WIDE}, 1280.0F), WIDE.left);
  EXPECT_GT(FindPageRight(std::array{WIDE}, 1280.0F), WIDE.left - 50.0F);
  EXPECT_LT(FindPageRight(std::array{BELOW, WIDE}, 1280.0F), WIDE.left);
  EXPECT_EQ(FindPageRight(std::array{OTHER_VIEW}, 1280.0F), usual);
}

TEST(PagePlaceTest, is_in_the_window_even_where_there_is_no_room) {
  constexpr CubePlace CUBE = {210.0F, 0.0F, 400.0F, 190.0F};
  EXPECT_GT(FindPageRight(std::array{CUBE}, 400.0F), 300.0F);
  EXPECT_LE(FindPageRight(std::array{CUBE}, 400.0F), 400.0F);
  EXPECT_LE(FindPageRight({}, 100.0F), 100.0F);
}

// ---- in the window ----

class ViewerPagesTest : public apps_test::ViewerTest {
 protected:
  static constexpr int WIDTH = 1280;
  static constexpr int HEIGHT = 1000;

  zovhost::Window::Options GetOptions() const override {
    zovhost::Window::Options options = ViewerTest::GetOptions();
    options.width = WIDTH;
    options.height = HEIGHT;
    return options;
  }
  void Run(std::string_view command) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(command));
    ComeToRest();
  }
  // As it shows.
  static ImRect FindPage(std::string_view title) {
    for (const ImGuiWindow* const page : ImGui::GetCurrentContext()->Windows) {
      if (!page->WasActive || std::string_view(page->Name).find(title) == std::string_view::npos) continue;
      const auto [left, right] =
          std::minmax({zovhost::MirrorPlace(page->Rect().Min.x), zovhost::MirrorPlace(page->Rect().Max.x)});
      return {left, page->Rect().Min.y, right, page->Rect().Max.y};
    }
    return {};
  }
  void ExpectBesideCube(std::string_view title) {
    const ImRect page = FindPage(title);
    const auto cube = zovview::FindCubePlace(viewer->GetView(0), HEIGHT, 1.0);
    ASSERT_TRUE(cube.has_value());
    EXPECT_GT(page.GetWidth(), 100.0F);
    EXPECT_FALSE(page.Overlaps(ImRect(cube->left, cube->top, cube->right, cube->bottom)))
        << title << " ends at " << page.Max.x << ", the cube begins at " << cube->left;
  }
  void TrySizes() {
    for (const char* const size : {"cube-size-large", "cube-size-automatic", "cube-size-normal",
                                   "cube-size-small", "cube-size-tiny"}) {
      SCOPED_TRACE(size);
      Run(size);
      Run("device-page");
      ExpectBesideCube("###Six-axis devices");
      Run("device-page");
      Run("add-shot");
      ExpectBesideCube("###Shot");
      viewer->GetView(0).GetStory().BeginEmpty();
      ComeToRest();
    }
  }
};

TEST_F(ViewerPagesTest, stand_beside_the_cube_of_each_size) { TrySizes(); }

TEST_F(ViewerPagesTest, stand_beside_the_cube_in_the_lower_corner) {
  Run("cube-bottom-right");
  TrySizes();
}

TEST_F(ViewerPagesTest, stand_beside_the_cube_where_the_window_reads_from_the_right) {
  viewer->GetPreferences().Edit([](zovview::Choices& choices) { choices.language = "ar"; });
  ComeToRest();
  ASSERT_TRUE(zovhost::ArePanelsMirrored());
  TrySizes();
}

}  // namespace
