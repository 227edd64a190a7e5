// The viewer in a window, offscreen: models come and go by dropped files.
#include "viewer/viewer.h"

#include <SDL.h>
#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "korvane/helm_disc_observer.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "program.h"
#include "replayed.h"
#include "tour/disc_wedges.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"

namespace {

using apps_test::HEIGHT;
using apps_test::SQUARE;
using apps_test::TemporaryFolder;
using apps_test::TRIANGLE;
using apps_test::ViewerTest;
using apps_test::WIDTH;

constexpr const char* TWO_SQUARES =
    "o lower\nv 0 0 0\nv 2 0 0\nv 2 2 0\nv 0 2 0\nf 1 2 3 4\n"
    "o upper\nv 0 3 0\nv 2 3 0\nv 2 5 0\nv 0 5 0\nf 5 6 7 8\n";

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
  EXPECT_TRUE(GetHub().GetView().IsOrthographic()) << "home is a place, the projection a choice";
}

TEST_F(ViewerTest, the_note_of_a_chosen_tool_goes_by_itself) {
  Move(400, 200);
  Press(SDLK_h);
  EXPECT_TRUE(viewer->GetView(0).GetManager().GetToolNote().IsShown());
  const auto isShown = [this] { return viewer->GetView(0).GetManager().GetToolNote().IsShown(); };
  for (int i = 0; i < 6000 && isShown(); ++i) window->Step(10);
  EXPECT_FALSE(isShown());
}

TEST_F(ViewerTest, with_reduced_motion_the_bars_do_not_fade) {
  zovview::ViewBars& bars = viewer->GetView(0).GetBars();
  for (const bool reduced : {true, false}) {
    viewer->GetPreferences().Edit([=](zovview::Choices& choices) { choices.reducedMotion = reduced; });
    EXPECT_EQ(bars.GetBar().GetToolbar()->GetWantAnimation(), !reduced);
    EXPECT_EQ(bars.GetTools().GetWantAnimation(), !reduced);
  }
}

TEST_F(ViewerTest, the_compass_follows_the_pointer) {
  EXPECT_TRUE(viewer->GetView(0).GetCube().CompassFollowsPointer());
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

// ---- menus ----

// The panel is at the top left. The cube is at the top right, 102 pixels in a view of 600. Menus open at the
// pointer, to the left of it where there is no room; their items are 19 pixels high, the first begins some
// ten below.
class MenuTest : public ViewerTest {
 protected:
  static constexpr int CUBE_X = WIDTH - 60;
  static constexpr int CUBE_Y = HEIGHT - 60;

  void Open(int pixelX, int pixelY) { RightClick(pixelX, pixelY); }
};

TEST_F(MenuTest, a_click_on_the_item_of_a_tool_chooses_it_and_closes_the_menu) {
  ASSERT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT);
  Open(500, 580);  // high enough for the whole menu
  ASSERT_TRUE(viewer->IsMenuOpen());
  Move(530, 544);  // the second item
  Click({530, 544});
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_PAN);
  EXPECT_FALSE(viewer->IsMenuOpen());
}

TEST_F(MenuTest, a_press_beside_a_menu_closes_it_and_does_nothing_else) {
  const Korvane::Vector3 before = GetHub().GetView().eye;
  Open(500, 500);
  ASSERT_TRUE(viewer->IsMenuOpen());
  Drag(400, 440, 60);
  EXPECT_FALSE(viewer->IsMenuOpen());
  EXPECT_EQ(GetHub().GetView().eye, before);
  Drag(400, 440, 60);
  EXPECT_NE(GetHub().GetView().eye, before) << "the next one drags again";
}

TEST_F(MenuTest, escape_closes_a_menu) {
  Open(500, 500);
  ASSERT_TRUE(viewer->IsMenuOpen());
  Press(SDLK_ESCAPE);
  ComeToRest();
  EXPECT_FALSE(viewer->IsMenuOpen());
}

TEST_F(MenuTest, a_right_click_on_a_disc_opens_the_menu_of_its_kind) {
  using Kind = zovview::ViewerMenus::Kind;
  struct Row {
    SDL_Keycode key;
    Kind menu;
  };
  for (const Row& row : {Row{SDLK_F2, Kind::ViewObject},
                         {SDLK_F3, Kind::TourBuilding},
                         {SDLK_F4, Kind::FullNavigation},
                         {SDLK_F5, Kind::TwoD},
                         {SDLK_F6, Kind::FullNavigation},
                         {SDLK_F7, Kind::FullNavigation},
                         {SDLK_F8, Kind::FullNavigation}}) {
    Move(400, 300);
    Press(row.key);
    RightClick(400, 300);
    ASSERT_TRUE(viewer->IsMenuOpen()) << row.key;
    EXPECT_EQ(viewer->GetOpenMenu(), row.menu) << row.key;
    Press(SDLK_ESCAPE);
    ComeToRest();
    EXPECT_FALSE(viewer->IsMenuOpen());
  }
}

TEST_F(MenuTest, a_right_drag_that_comes_back_to_its_start_opens_none) {
  for (const char* const style : {"own", "right-orbits"}) {
    SCOPED_TRACE(style);
    viewer->GetPreferences().Edit([&](zovview::Choices& choices) { choices.navigationStyle = style; });
    Move(400, 100);
    PushButton(SDL_MOUSEBUTTONDOWN, 400, 100, 1, SDL_BUTTON_RIGHT);
    window->Step(0);
    for (const int x : {410, 440, 410, 400}) {
      PushMotion(x, 100);
      window->Step(0);
    }
    PushButton(SDL_MOUSEBUTTONUP, 400, 100, 1, SDL_BUTTON_RIGHT);
    ComeToRest();
    EXPECT_FALSE(viewer->IsMenuOpen());
    RightClick(400, 100);
    EXPECT_TRUE(viewer->IsMenuOpen()) << "a click does";
    PressAndRest(SDLK_ESCAPE);
  }
}

TEST_F(MenuTest, a_right_drag_opens_none) {
  PushMotion(500, 300);
  PushButton(SDL_MOUSEBUTTONDOWN, 500, 300, 1, SDL_BUTTON_RIGHT);
  PushMotion(530, 300);
  PushButton(SDL_MOUSEBUTTONUP, 530, 300, 1, SDL_BUTTON_RIGHT);
  ComeToRest();
  EXPECT_FALSE(viewer->IsMenuOpen());
}

TEST_F(MenuTest, the_cube_has_a_menu_of_its_own) {
  Move(CUBE_X, CUBE_Y);
  ASSERT_TRUE(viewer->GetView(0).GetCube().IsMouseOnGeometryPart());
  Open(CUBE_X, CUBE_Y);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), zovview::ViewerMenus::Kind::Cube);
}

// ---- two views ----

class SplitTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    viewer.reset();
    zovview::Viewer::Options options;
    options.views = 2;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("square.obj", SQUARE)});
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }

  Korvane::Vector3 EyeOf(std::size_t view) { return viewer->GetView(view).GetHub().GetView().eye; }
};

TEST_F(SplitTest, the_views_share_the_window) {
  ASSERT_EQ(viewer->GetViewCount(), 2U);
  EXPECT_EQ(viewer->GetView(0).GetX(), 0);
  EXPECT_EQ(viewer->GetView(0).GetWidth(), WIDTH / 2 - 1);
  EXPECT_EQ(viewer->GetView(1).GetX(), WIDTH / 2 + 1);
  EXPECT_EQ(viewer->GetView(1).GetWidth(), WIDTH / 2 - 1);
}

TEST_F(SplitTest, a_drag_moves_the_view_in_which_it_began) {
  const std::array<Korvane::Vector3, 2> start = {EyeOf(0), EyeOf(1)};
  Drag(WIDTH * 3 / 4, WIDTH / 4, 200);
  EXPECT_EQ(EyeOf(0), start[0]);
  EXPECT_NE(EyeOf(1), start[1]);
  Drag(WIDTH / 3, WIDTH / 3 + 40, 200);
  EXPECT_NE(EyeOf(0), start[0]);
}

TEST_F(SplitTest, a_key_goes_to_the_view_under_the_pointer) {
  Move(WIDTH * 3 / 4, 200);
  Press(SDLK_w);
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT);
  EXPECT_EQ(viewer->GetView(1).GetManager().GetActiveTool(), zovview::TOOL_WALK);
}

TEST_F(SplitTest, reduced_motion_is_of_both_views) {
  const zovview::ViewCommand& toggle = *zovview::FindViewCommand("toggle-motion");
  for (const bool reduced : {true, false}) {
    viewer->GetView(1).Run(toggle);
    EXPECT_EQ(viewer->GetView(0).GetHub().IsMotionReduced(), reduced);
    EXPECT_EQ(viewer->GetView(1).GetHub().IsMotionReduced(), reduced);
  }
}

class GridTest : public ViewerTest {
 protected:
  void Show(int count) {
    viewer.reset();
    zovview::Viewer::Options options;
    options.views = count;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("square.obj", SQUARE)});
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }
  const Korvane::CameraParameters& CameraOf(std::size_t view) {
    return viewer->GetView(view).GetHub().GetView();
  }
};

TEST_F(GridTest, up_to_four_views_can_be_had) {
  for (const auto& [wanted, had] : {std::pair(0, 1U), {1, 1U}, {2, 2U}, {3, 3U}, {4, 4U}, {5, 4U}}) {
    Show(wanted);
    EXPECT_EQ(viewer->GetViewCount(), had);
  }
}

TEST_F(GridTest, the_further_ones_show_the_sides_in_parallel) {
  Show(4);
  EXPECT_FALSE(CameraOf(0).IsOrthographic());
  const Korvane::Vector3 toEye[] = {{}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}};  // of a model that stands on y
  for (std::size_t view = 1; view < 4; ++view) {
    EXPECT_TRUE(CameraOf(view).IsOrthographic());
    const Korvane::Vector3 seen = (CameraOf(view).eye - CameraOf(view).centre).Normalized();
    EXPECT_LT((seen - toEye[view]).Length(), 1e-9) << view << " " << seen.x << " " << seen.y << " " << seen.z;
    EXPECT_FALSE(viewer->GetView(view).GetHub().IsMotionReduced());
  }
}

TEST_F(GridTest, a_drag_below_moves_the_view_below) {
  Show(4);
  std::array<Korvane::Vector3, 4> start;
  for (std::size_t view = 0; view < 4; ++view) start[view] = CameraOf(view).eye;
  Drag(WIDTH / 4, WIDTH / 4 + 60, HEIGHT / 4);
  EXPECT_NE(CameraOf(2).eye, start[2]);
  for (const std::size_t view : {0U, 1U, 3U}) EXPECT_EQ(CameraOf(view).eye, start[view]) << view;
}

class FramedViewTest : public GridTest, public testing::WithParamInterface<const char*> {};

TEST_P(FramedViewTest, is_the_one_that_the_keys_go_to) {
  Show(4);
  viewer->GetView(0).Run(*zovview::FindViewCommand(GetParam()));
  ComeToRest();
  for (std::size_t view = 0; view < 4; ++view) {
    const zovview::Viewport& shown = viewer->GetView(view);
    Move(shown.GetX() + shown.GetWidth() / 2, shown.GetY() + shown.GetHeight() / 2);
    window->RequestFrame();
    ComeToRest();
    for (std::size_t other = 0; other < 4; ++other) {
      const zovview::Viewport& beside = viewer->GetView(other);
      std::array<unsigned char, 4> edge{};
      glReadPixels(beside.GetX() + beside.GetWidth() / 2, beside.GetY(), 1, 1, GL_RGBA, GL_UNSIGNED_BYTE,
                   edge.data());
      const bool blue = edge[0] < 20 && edge[2] > 180;
      EXPECT_EQ(blue, other == view) << view << " " << other;
    }
  }
  viewer->GetView(0).Run(*zovview::FindViewCommand("language-en"));
  ComeToRest();
}

// Panels are mirrored in the second.
INSTANTIATE_TEST_SUITE_P(each, FramedViewTest, testing::Values("language-en", "language-ar"));

// ---- two views ----

TEST_F(SplitTest, each_has_a_cube_that_the_pointer_leaves) {
  const auto isOnCube = [this](std::size_t view) {
    return viewer->GetView(view).GetCube().IsMouseInRegion();
  };
  Move(WIDTH / 2 - 40, HEIGHT - 40);
  EXPECT_TRUE(isOnCube(0));
  Move(WIDTH - 40, HEIGHT - 40);
  EXPECT_FALSE(isOnCube(0));
  EXPECT_TRUE(isOnCube(1));
}

TEST_F(SplitTest, a_key_that_is_released_over_the_other_view_is_released) {
  const auto direction = [this] {
    const Korvane::CameraParameters& camera = viewer->GetView(0).GetHub().GetView();
    return (camera.centre - camera.eye).Normalized();
  };
  const Korvane::Vector3 before = direction();
  const Korvane::Vector3 eye = EyeOf(0);
  Move(350, 50);
  PushKey(SDL_KEYDOWN, SDLK_LSHIFT);
  Move(WIDTH - 100, 50);
  PushKey(SDL_KEYUP, SDLK_LSHIFT);
  Move(350, 50);
  PushButton(SDL_MOUSEBUTTONDOWN, 350, 50, 1, SDL_BUTTON_MIDDLE);
  PushMotion(390, 60);
  PushButton(SDL_MOUSEBUTTONUP, 390, 60, 1, SDL_BUTTON_MIDDLE);
  ComeToRest();
  EXPECT_NE(EyeOf(0), eye);
  EXPECT_NEAR(direction().Dot(before), 1.0, 1e-12) << "a pan, no orbit";
}

// ---- the wedges of the discs ----

TEST_F(ViewerTest, each_wedge_is_found_where_the_disc_has_it) {
  struct Row {
    SDL_Keycode key;
    int wedges;
  };
  for (const Row& row : {Row{SDLK_F2, 6},
                         {SDLK_F3, 6},
                         {SDLK_F4, 10},
                         {SDLK_F5, 5},
                         {SDLK_F6, 4},
                         {SDLK_F7, 4},
                         {SDLK_F8, 8}}) {
    Move(400, 300);
    Press(row.key);
    ComeToRest();
    Korvane::HelmDisc& disc = viewer->GetView(0).GetDisc();
    int found = 0;
    for (int zone = 0; zone <= 10; ++zone) {
      int pixelX = 0;
      int pixelY = 0;
      if (!zovview::FindWedge(disc, zone, pixelX, pixelY)) continue;
      ++found;
      Move(pixelX, pixelY);
      EXPECT_EQ(disc.GetActiveTrackMenu()->GetActiveRegion().zone, zone) << row.key;
    }
    EXPECT_EQ(found, row.wedges) << row.key;
    Press(SDLK_ESCAPE);
  }
  int untouched = 7;
  EXPECT_FALSE(zovview::FindWedge(viewer->GetView(0).GetDisc(), 0, untouched, untouched));
  EXPECT_EQ(untouched, 7);
}

TEST_F(ViewerTest, the_menu_wedge_opens_the_menu_and_the_close_wedge_closes_the_disc) {
  Move(400, 300);
  Press(SDLK_F2);
  ComeToRest();
  Korvane::HelmDisc& disc = viewer->GetView(0).GetDisc();
  const auto clickOn = [&](Korvane::HelmDiscZone zone) {
    int pixelX = 0;
    int pixelY = 0;
    ASSERT_TRUE(zovview::FindWedge(disc, static_cast<int>(zone), pixelX, pixelY));
    Move(pixelX, pixelY);
    Click(Korvane::Vector2(pixelX, pixelY));
  };
  clickOn(Korvane::HelmDiscZone::Menu);
  EXPECT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), zovview::ViewerMenus::Kind::ViewObject);
  Press(SDLK_ESCAPE);
  ComeToRest();
  ASSERT_EQ(disc.GetActiveDisc(), Korvane::DiscType::ViewObject) << "the key was the menu's";
  clickOn(Korvane::HelmDiscZone::Close);
  EXPECT_EQ(disc.GetActiveDisc(), Korvane::DiscType::None);
}

// ---- further hands ----

TEST_F(ViewerTest, side_buttons_step_through_the_views) {
  const auto side = [this](Uint8 button) {
    PushButton(SDL_MOUSEBUTTONDOWN, 500, 300, 1, button);
    PushButton(SDL_MOUSEBUTTONUP, 500, 300, 1, button);
    ComeToRest();
  };
  const Korvane::Vector3 start = GetHub().GetView().eye;
  Press(SDLK_5);
  ComeToRest();
  const Korvane::Vector3 top = GetHub().GetView().eye;
  ASSERT_GT((top - start).Length(), 0.1);
  side(SDL_BUTTON_X1);
  EXPECT_LT((GetHub().GetView().eye - start).Length(), 1e-9);
  side(SDL_BUTTON_X2);
  EXPECT_LT((GetHub().GetView().eye - top).Length(), 1e-9);

  PushButton(SDL_MOUSEBUTTONDOWN, 500, 300, 1);
  PushButton(SDL_MOUSEBUTTONDOWN, 500, 300, 1, SDL_BUTTON_X1);
  PushButton(SDL_MOUSEBUTTONUP, 500, 300, 1, SDL_BUTTON_X1);
  do window->Step(0);
  while (SDL_HasEvent(SDL_MOUSEBUTTONUP) == SDL_TRUE);
  EXPECT_LT((GetHub().GetView().eye - top).Length(), 1e-9) << "not in the middle of a drag";
  PushButton(SDL_MOUSEBUTTONUP, 500, 300, 1);
  ComeToRest();
}

TEST_F(ViewerTest, the_middle_button_pressed_twice_fits_all) {
  const double home = (GetHub().GetView().eye - GetHub().GetView().centre).Length();
  for (int i = 0; i < 4; ++i) {
    SDL_Event event = {};
    event.type = SDL_MOUSEWHEEL;
    event.wheel.y = -1;
    event.wheel.preciseY = -1.0F;
    event.wheel.mouseX = 500;
    event.wheel.mouseY = 300;
    SDL_PushEvent(&event);
    ComeToRest();
  }
  const auto distance = [this] { return (GetHub().GetView().eye - GetHub().GetView().pivot).Length(); };
  const double away = distance();
  ASSERT_GT(away, 1.2 * home);
  const auto middle = [this](Uint8 clicks, int toX) {
    PushMotion(500, 300);
    PushButton(SDL_MOUSEBUTTONDOWN, 500, 300, clicks, SDL_BUTTON_MIDDLE);
    PushMotion(toX, 300);
    PushButton(SDL_MOUSEBUTTONUP, toX, 300, clicks, SDL_BUTTON_MIDDLE);
    ComeToRest();
  };
  middle(1, 500);
  middle(2, 540);
  EXPECT_GT(distance(), 0.9 * away) << "a drag is no click";
  middle(1, 500);
  EXPECT_GT(distance(), 0.9 * away);
  middle(2, 500);
  EXPECT_LT(distance(), 0.9 * away);
}

// Over the panel a button of the pointer is the panel's.
TEST_F(ViewerTest, shift_with_the_key_of_the_help_hides_the_panel_and_shows_it) {
  const auto isOverPanel = [this] {
    const Korvane::Vector3 before = GetHub().GetView().eye;
    Press(SDLK_5);
    ComeToRest();
    PushMotion(40, HEIGHT - 60);
    PushButton(SDL_MOUSEBUTTONDOWN, 40, HEIGHT - 60, 1, SDL_BUTTON_X1);
    PushButton(SDL_MOUSEBUTTONUP, 40, HEIGHT - 60, 1, SDL_BUTTON_X1);
    ComeToRest();
    const bool stepped = (GetHub().GetView().eye - before).Length() < 1e-9;
    Press(SDLK_HOME);
    ComeToRest();
    return !stepped;
  };
  EXPECT_TRUE(isOverPanel());
  PressAndRest(SDLK_F1, KMOD_LSHIFT);
  EXPECT_FALSE(isOverPanel());
  PressAndRest(SDLK_F1, KMOD_LSHIFT);
  EXPECT_TRUE(isOverPanel());
}

// ---- the welcome screen ----

class WelcomeTest : public ViewerTest {
 protected:
  void Start() {
    viewer.reset();
    settings.emplace(file);
    zovview::Viewer::Options options;
    options.settings = &*settings;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("square.obj", SQUARE)});
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }
  Korvane::HelmDisc& GetDisc() { return viewer->GetView(0).GetDisc(); }
  bool IsWelcomeShown() {
    const Korvane::TrackMenu* const menu = GetDisc().GetWelcomeTrackMenu();
    return menu != nullptr && menu->GetVisible();
  }

  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();  // before what it keeps its settings in
  }

  // By the index of a region.
  Korvane::Vector2 MoveOver(int part) {
    Korvane::TrackMenu& welcome = *GetDisc().GetWelcomeTrackMenu();
    int pixelX = 0;
    int pixelY = 0;
    EXPECT_TRUE(zovview::FindColour(welcome, welcome.GetRegion(part)->color, pixelX, pixelY)) << part;
    Move(pixelX, pixelY);
    return {static_cast<double>(pixelX), static_cast<double>(pixelY)};
  }

  static constexpr int TITLE = 1;
  static constexpr int MINI_OBJECT = 5;
  const std::filesystem::path file = folder.GetPath() / "settings.json";
  std::optional<zovview::SettingsFile> settings;
};

TEST_F(WelcomeTest, shows_in_the_middle_on_the_first_start_until_the_pointer_has_been_over_it) {
  for (const bool first : {true, false}) {
    Start();
    ASSERT_EQ(IsWelcomeShown(), first);
    if (!first) break;
    const Korvane::Vector2 middle = GetDisc().GetWelcomeTrackMenu()->GetRegionMap()->GetPosition();
    EXPECT_EQ(middle, Korvane::Vector2(WIDTH / 2, HEIGHT / 2));
    EXPECT_FALSE(GetDisc().GetParameters().welcomeSeen);
    MoveOver(TITLE);
    EXPECT_TRUE(GetDisc().GetParameters().welcomeSeen);
    EXPECT_TRUE(std::filesystem::exists(file));
  }
}

// Until then the progress of the load stands in its place.
TEST_F(WelcomeTest, waits_until_there_is_a_model) {
  viewer.reset();
  settings.emplace(file);
  zovview::Viewer::Options options;
  options.settings = &*settings;
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  ASSERT_NE(GetDisc().GetWelcomeTrackMenu(), nullptr);
  EXPECT_FALSE(IsWelcomeShown());
  viewer->Open({folder.Write("square.obj", SQUARE)});
  ComeToRest();
  EXPECT_TRUE(IsWelcomeShown());
}

TEST_F(WelcomeTest, a_click_on_a_choice_opens_the_disc_under_the_pointer_and_selects_nothing) {
  Start();
  MoveOver(TITLE);
  const Korvane::Vector2 pixel = MoveOver(MINI_OBJECT);
  Click(pixel);
  EXPECT_FALSE(IsWelcomeShown());
  ASSERT_EQ(GetDisc().GetActiveDisc(), Korvane::DiscType::MiniViewObject);
  EXPECT_EQ(GetDisc().GetActiveTrackMenu()->GetRegionMap()->GetPosition(), pixel);
  EXPECT_EQ(viewer->GetView(0).GetSelection().GetPart(), -1);
}

TEST_F(WelcomeTest, does_not_show_where_nobody_keeps_that_it_was_seen) { EXPECT_FALSE(IsWelcomeShown()); }

// ---- settings ----

TEST_F(ViewerTest, settings_are_kept_at_rest_and_are_there_the_next_time) {
  const std::filesystem::path file = folder.GetPath() / "settings.json";
  for (const bool first : {true, false}) {
    viewer.reset();
    zovview::SettingsFile settings(file);
    zovview::Viewer::Options options;
    options.settings = &settings;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    ComeToRest();
    EXPECT_EQ(std::filesystem::exists(file), !first);
    viewer->Open({folder.Write("square.obj", SQUARE)});
    ComeToRest();
    const auto expected = first ? Korvane::DiscType::FullNavigation : Korvane::DiscType::MiniTourBuilding;
    EXPECT_EQ(viewer->GetView(0).GetDisc().GetDefaultDiscType(), expected);
    EXPECT_EQ(GetHub().GetApplicationParameters().preserve_orbit_up_direction, first);
    Press(SDLK_F7);
    Press(SDLK_u);
    ComeToRest();
    EXPECT_TRUE(std::filesystem::exists(file));
    viewer.reset();  // before its settings
  }
}

TEST_F(ViewerTest, settings_that_cannot_be_used_are_told_in_one_line) {
  viewer.reset();
  zovview::SettingsFile settings(folder.Write("settings.json", "broken"));
  zovview::Viewer::Options options;
  options.settings = &settings;
  testing::internal::CaptureStderr();
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_EQ(apps_test::CountLines(told), 1) << told;
  EXPECT_NE(told.find("settings.json"), std::string::npos) << told;
  viewer.reset();
}

// ---- the film strip ----

TEST_F(ViewerTest, each_view_on_the_strip_has_a_picture_of_the_model) {
  Press(SDLK_5);
  ComeToRest();
  Press(SDLK_1);
  ComeToRest();
  const Korvane::RewindHistory& history = *viewer->GetView(0).GetDisc().GetHistory();
  ASSERT_EQ(history.GetElementCount(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_NE(history.GetElementThumbnail(i), nullptr) << i;
}

TEST_F(ViewerTest, another_model_has_no_views_of_before) {
  Press(SDLK_5);
  ComeToRest();
  Drop(folder.Write("square.obj", SQUARE));
  EXPECT_EQ(viewer->GetView(0).GetDisc().GetHistory()->GetElementCount(), 0);
}

// ---- recordings ----

TEST_F(ViewerTest, a_session_is_written_down_and_ends_in_a_whole_file) {
  viewer.reset();
  std::string error;
  const std::unique_ptr<zovview::Recorder> recorder =
      zovview::Recorder::Create(folder.GetPath() / "session.txt", error);
  ASSERT_NE(recorder, nullptr) << error;
  zovview::Viewer::Options options;
  options.recorder = recorder.get();
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.Write("square.obj", SQUARE)});
  ComeToRest();
  Drag(500, 600, 200);
  Press(SDLK_5);
  ComeToRest();
  Drop(folder.Write("triangle.obj", TRIANGLE));
  viewer.reset();
  ASSERT_TRUE(recorder->Finish(error)) << error;

  std::ifstream file(folder.GetPath() / "session.txt");
  zovview::Recording recording;
  ASSERT_TRUE(zovview::ReadRecording(file, recording, error)) << error;
  EXPECT_EQ(recording.model, "file " + (folder.GetPath() / "square.obj").string());
  EXPECT_EQ(recording.width, WIDTH);
  EXPECT_EQ(recording.height, HEIGHT);
  using Type = zovhost::WindowEvent::Type;
  std::vector<Type> types;
  for (const zovview::RecordedEvent& event : recording.events) {
    if (!event.margins.has_value()) types.push_back(event.event.type);
  }
  const std::vector<Type> expected = {Type::MouseMove, Type::MouseDown, Type::MouseMove,  Type::MouseUp,
                                      Type::KeyDown,   Type::KeyUp,     Type::FileDropped};
  EXPECT_EQ(types, expected);
}

// The panel takes a part of the view from what is fitted; whoever plays the recording has none.
TEST_F(ViewerTest, what_was_fitted_beside_the_panel_is_so_when_the_recording_is_played) {
  viewer.reset();
  std::string error;
  const std::filesystem::path file = folder.GetPath() / "session.txt";
  const std::unique_ptr<zovview::Recorder> recorder = zovview::Recorder::Create(file, error);
  ASSERT_NE(recorder, nullptr) << error;
  zovview::Viewer::Options options;
  options.recorder = recorder.get();
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  UnfoldPanel();
  viewer->Open({folder.Write("square.obj", SQUARE)});
  ComeToRest();
  Press(SDLK_1);
  ComeToRest();
  const Korvane::CameraParameters shown = GetHub().GetView();
  EXPECT_GT(Project({0.5, 0.5, 0.0}).x, 0.55 * WIDTH);
  viewer.reset();
  ASSERT_TRUE(recorder->Finish(error)) << error;
  const std::vector<apps_test::Camera> played =
      apps_test::ReadCameras(apps_test::RunViewer(std::vector<std::string>{"--replay", file.string()}).out);
  ASSERT_FALSE(played.empty());
  EXPECT_LT((played.back().eye - shown.eye).Length(), 1e-9);
}

}  // namespace
