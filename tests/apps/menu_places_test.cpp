// Menus are in the window as a whole, wherever they are asked for.
#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <string>

#include "commands/viewer_menus.h"
#include "panel_stage.h"
#include "viewer_fixture.h"
#include "zovhost/panel_texts.h"

namespace {

using Kind = zovview::ViewerMenus::Kind;

ImRect FindMenu() {
  const auto& open = ImGui::GetCurrentContext()->OpenPopupStack;
  return open.empty() ? ImRect() : open[0].Window->Rect();
}

void ExpectInWindow(const ImRect& menu) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  EXPECT_GT(menu.GetWidth(), 50.0F);
  EXPECT_GE(menu.Min.x, 0.0F);
  EXPECT_GE(menu.Min.y, 0.0F);
  EXPECT_LE(menu.Max.x, size.x);
  EXPECT_LE(menu.Max.y, size.y);
}

// ---- of a place that somebody gives ----

class MenuPlacesTest : public testing::TestWithParam<double>, public apps_test::PanelStage {
 protected:
  static constexpr double OUTSIDE = 40.0;  // points: what is beside a window that became smaller

  ImRect OpenAt(Kind kind, double x, double y, double pivotX, double pivotY) {
    zovview::ViewerMenus menus;
    menus.Open(kind, zovview::ViewerMenus::Corner{x, y, pivotX, pivotY});
    Draw([&] { menus.Draw(view->GetTarget()); });
    const ImRect menu = FindMenu();
    menus.Close();
    Draw([&] { menus.Draw(view->GetTarget()); });
    return menu;
  }
  void TryEdges(Kind kind) {
    for (const double x : {-OUTSIDE, 0.0, WIDTH - 1.0, WIDTH + OUTSIDE}) {
      for (const double y : {-OUTSIDE, 0.0, HEIGHT - 1.0, HEIGHT + OUTSIDE}) {
        SCOPED_TRACE(std::to_string(x) + " " + std::to_string(y));
        for (const double pivot : {0.0, 1.0}) ExpectInWindow(OpenAt(kind, x, y, pivot, pivot));
      }
    }
  }
};

TEST_P(MenuPlacesTest, stand_by_their_corner_where_there_is_room) {
  Begin(zovhost::GetLanguages().front(), GetParam());
  const ImRect menu = OpenAt(Kind::Cube, 600.0, 900.0, 0.0, 0.0);
  EXPECT_NEAR(menu.Min.x, 600.0, 1.0);
  EXPECT_NEAR(menu.Min.y, 900.0, 1.0);
  const ImRect other = OpenAt(Kind::Cube, 600.0, 900.0, 1.0, 1.0);
  EXPECT_NEAR(other.Max.x, 600.0, 1.0);
  EXPECT_NEAR(other.Max.y, 900.0, 1.0);
}

TEST_P(MenuPlacesTest, are_moved_into_the_window_from_each_edge) {
  for (const char* const tag : {"en", "ar"}) {
    SCOPED_TRACE(tag);
    Begin(*zovhost::FindLanguage(tag), GetParam());
    for (const Kind kind : {Kind::View, Kind::Cube, Kind::Bar, Kind::FullNavigation}) TryEdges(kind);
  }
}

INSTANTIATE_TEST_SUITE_P(EachScale, MenuPlacesTest, testing::Values(1.0, 1.5, 3.0));

// ---- of the pointer ----

class PointerMenuTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    PressAndRest(SDLK_F1, KMOD_LSHIFT);  // the panel goes, and the bar
    viewer->GetView(0).Run(*zovview::FindViewCommand("toggle-bar"));
    ComeToRest();
  }
  void ExpectMenusInWindow() {
    for (const int x : {2, apps_test::WIDTH / 2, apps_test::WIDTH - 2}) {
      for (const int y : {2, apps_test::HEIGHT / 2, apps_test::HEIGHT - 2}) {
        SCOPED_TRACE(std::to_string(x) + " " + std::to_string(y));
        RightClick(x, y);
        ASSERT_TRUE(viewer->IsMenuOpen());
        DrawFrames(2);
        ExpectInWindow(FindMenu());
        PressAndRest(SDLK_ESCAPE);
      }
    }
  }
};

TEST_F(PointerMenuTest, are_in_the_window_at_each_of_its_edges) { ExpectMenusInWindow(); }

TEST_F(PointerMenuTest, are_in_the_window_where_it_reads_from_the_right) {
  viewer->GetPreferences().Edit([](zovview::Choices& choices) { choices.language = "ar"; });
  ComeToRest();
  ASSERT_TRUE(zovhost::ArePanelsMirrored());
  ExpectMenusInWindow();
}

}  // namespace
