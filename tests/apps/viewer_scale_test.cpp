// The viewer on displays of more than one pixel a point: everything is where it is, counted in points, and is
// drawn anew when the scale changes.
#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "korvane/helm_disc.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/icon2d.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/story.h"
#include "korvane/toolbar.h"
#include "korvane/track_menu.h"
#include "tour/disc_wedges.h"
#include "viewer_fixture.h"
#include "zovhost/click_watch.h"

namespace {

using apps_test::HEIGHT;
using apps_test::WIDTH;
using Korvane::Box2;
using Korvane::Orientor;
using Korvane::Vector2;

constexpr double SCALES[] = {1.0, 1.25, 1.5, 2.0, 3.0};
// Points. Places are whole pixels, those of the cube are searched for, and the few pixels between the items
// of a bar, and between it and the edge of the view, are the library's.
constexpr double SAME_PLACE = 4.0;
constexpr double SAME_SIZE = 2.0;

/// Middles and sizes of what can be hit, in points from the lower left corner.
using Places = std::map<std::string, Box2>;

class ViewerScaleTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {}

  // A window of the same size in points.
  void Start(double scale) {
    viewer.reset();
    window.reset();
    zovhost::Window::Options options;
    options.width = WIDTH;
    options.height = HEIGHT;
    options.offscreen = true;
    options.scale = scale;
    std::string error;
    window = zovhost::Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    viewer = std::make_unique<zovview::Viewer>(*window);
    viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
    ComeToRest();
  }

  // The window keeps its pixels, so it is another size in points.
  void ChangeScale(double scale) {
    window->SetScale(scale);
    ComeToRest();
  }

  zovview::Viewport& GetView() const { return viewer->GetView(0); }
  Vector2 ToPoints(const Vector2& pixels) const { return pixels * (1.0 / window->GetScale()); }

  void AddCube(Places& places) const {
    Orientor& cube = GetView().GetCube();
    for (int part = 0; part < Orientor::PART_COUNT; ++part) {
      int x = 0;
      int y = 0;
      if (cube.GetPartPosition(part, x, y))
        places["cube " + std::to_string(part)] = Box2(ToPoints(Vector2(x, y)), Vector2());
    }
    const double size = cube.GetScreenSize() / window->GetScale();
    places["cube"].halfExtent = Vector2(size, size);
  }
  void AddBar(Places& places) const {
    const Korvane::Toolbar& strip = *GetView().GetBars().GetBar().GetToolbar();
    for (int i = 0; i < strip.GetItems().GetCount(); ++i) {
      const Korvane::ToolbarItem& item = strip.GetItems().GetAt(i);
      if (item.IsHidden() || item.IsExcluded()) continue;
      const Box2& bounds = item.GetNonFlyoutIconBounds();
      places["bar " + std::to_string(item.GetTag()) + " " + std::to_string(i)] =
          Box2(ToPoints(bounds.center), ToPoints(bounds.halfExtent));
    }
  }
  void AddPanel(Places& places) const {
    for (const ImGuiWindow* const panel : ImGui::GetCurrentContext()->Windows) {
      if (!panel->WasActive) continue;
      const ImVec2 middle = panel->Rect().GetCenter();
      const ImVec2 size = panel->Rect().GetSize();
      places[std::string("panel ") + panel->Name] =
          Box2(Vector2(middle.x, middle.y), Vector2(size.x / 2.0, size.y / 2.0));
    }
  }
  Box2 ToPoints(const Box2& pixels) const { return {ToPoints(pixels.center), ToPoints(pixels.halfExtent)}; }

  void AddStoryboard(Places& places) const {
    using Korvane::Storyboard;
    const Storyboard& board = GetView().GetStory().GetBoard();
    for (const auto part : {Storyboard::TITLE_PLAY, Storyboard::TITLE_CLOSE})
      places["story title " + std::to_string(part)] = ToPoints(board.GetTitleBounds(part));
    const Korvane::Sequence* const sequence = board.GetStory()->GetFirstSequence();
    for (const auto part : {Storyboard::SLIDE_ITSELF, Storyboard::SLIDE_PLAY, Storyboard::SLIDE_TARGET}) {
      Box2 bounds;
      if (board.GetSlideBounds(sequence, part, bounds))
        places["sequence " + std::to_string(part)] = ToPoints(bounds);
      if (board.GetSlideBounds(sequence->GetFirstShot(), part, bounds))
        places["shot " + std::to_string(part)] = ToPoints(bounds);
    }
  }
  // Its wedges are pressed, which show the film strip and say what rests.
  void AddDiscTools(Places& places) {
    for (const SDL_Keycode key : {SDLK_5, SDLK_HOME}) PressAndRest(key);  // something to go back to
    GetView().Run(*zovview::FindViewCommand("disc-tour-building"));
    ComeToRest();
    PressWedge(Korvane::HelmDiscZone::Rewind, [&] {
      const Korvane::RewindHistory& strip = *GetView().GetDisc().GetHistory();
      EXPECT_TRUE(strip.IsTimelineOpen());
      const Korvane::DynamicIcon2D* const picture = strip.GetElementThumbnail(0);
      ASSERT_NE(picture, nullptr) << strip.GetElementCount();
      places["film strip"].halfExtent = ToPoints(picture->GetBounds().halfExtent);
    });
    PressWedge(Korvane::HelmDiscZone::Forward, [&] {
      const double rest = GetHub().GetApplicationParameters().zoom_out_snap_size / window->GetScale();
      places["gauge"].halfExtent = Vector2(rest, rest);
    });
  }
  template <class Look>
  void PressWedge(Korvane::HelmDiscZone zone, const Look& look) {
    Push(SDL_MOUSEMOTION, window->GetWidth() / 2, window->GetHeight() / 2);
    ComeToRest();
    int x = 0;
    int y = 0;
    ASSERT_TRUE(zovview::FindWedge(GetView().GetDisc(), static_cast<int>(zone), x, y));
    const int row = window->GetHeight() - 1 - y;
    Push(SDL_MOUSEMOTION, x, row);
    ComeToRest();
    Push(SDL_MOUSEBUTTONDOWN, x, row);
    Push(SDL_MOUSEMOTION, x + static_cast<int>(20.0 * window->GetScale()), row);
    DrawFrames(3);
    look();
    Push(SDL_MOUSEBUTTONUP, x, row);
    ComeToRest();
  }
  static void Push(Uint32 type, int x, int row, Uint8 button = SDL_BUTTON_LEFT) {
    SDL_Event event = {};
    event.type = type;
    if (type == SDL_MOUSEMOTION) {
      event.motion.x = x;
      event.motion.y = row;
    } else {
      event.button.button = button;
      event.button.clicks = 1;
      event.button.x = x;
      event.button.y = row;
    }
    SDL_PushEvent(&event);
  }
  // In the middle, strayed by so many points.
  bool OpensMenu(double strayed) {
    const int x = window->GetWidth() / 2;
    const int row = window->GetHeight() / 2;
    const int to = x + static_cast<int>(std::floor(strayed * window->GetScale()));
    Push(SDL_MOUSEMOTION, x, row);
    Push(SDL_MOUSEBUTTONDOWN, x, row, SDL_BUTTON_RIGHT);
    Push(SDL_MOUSEMOTION, to, row);
    Push(SDL_MOUSEBUTTONUP, to, row, SDL_BUTTON_RIGHT);
    ComeToRest();
    const bool open = viewer->IsMenuOpen();
    if (open) PressAndRest(SDLK_ESCAPE);
    return open;
  }
  Places FindPlaces() {
    Places places;
    AddCube(places);
    AddBar(places);
    AddPanel(places);
    PressAndRest(SDLK_n);
    AddStoryboard(places);
    PressAndRest(SDLK_y);
    AddDiscTools(places);
    const double disc = GetView().GetDisc().GetParameters().largeDiscSize / window->GetScale();
    places["disc"].halfExtent = Vector2(disc, disc);
    return places;
  }

  static void ExpectSame(const Places& expected, const Places& places) {
    ASSERT_EQ(expected.size(), places.size());
    for (const auto& [name, box] : expected) {
      const auto found = places.find(name);
      ASSERT_NE(found, places.end()) << name;
      EXPECT_NEAR(box.center.x, found->second.center.x, SAME_PLACE) << name;
      EXPECT_NEAR(box.center.y, found->second.center.y, SAME_PLACE) << name;
      EXPECT_NEAR(box.halfExtent.x, found->second.halfExtent.x, SAME_SIZE) << name;
      EXPECT_NEAR(box.halfExtent.y, found->second.halfExtent.y, SAME_SIZE) << name;
    }
  }
};

TEST_F(ViewerScaleTest, what_can_be_hit_is_the_same_in_points_at_each_scale) {
  Start(1.0);
  const Places expected = FindPlaces();
  EXPECT_GT(expected.size(), 15u);
  for (const double scale : SCALES) {
    SCOPED_TRACE(scale);
    Start(scale);
    EXPECT_EQ(window->GetWidth(), static_cast<int>(std::lround(WIDTH * scale)));
    ExpectSame(expected, FindPlaces());
  }
}

TEST_F(ViewerScaleTest, a_button_of_the_panel_is_pressed_where_it_shows) {
  for (const double scale : SCALES) {
    SCOPED_TRACE(scale);
    Start(scale);
    UnfoldPanel();
    ComeToRest();
    // The button of the pan tool is the second of the first row.
    const ImGuiWindow* const panel = ImGui::FindWindowByName("###panel");
    ASSERT_NE(panel, nullptr);
    const double x = panel->Pos.x + panel->Size.x * 0.75;
    const double y = panel->Pos.y + 62.0;
    const auto pixel = [scale](double points) { return static_cast<int>(std::lround(points * scale)); };
    for (const Uint32 type : {SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONUP}) {
      SDL_Event event = {};
      event.type = type;
      event.button.button = SDL_BUTTON_LEFT;
      event.button.clicks = 1;
      event.button.x = pixel(x);
      event.button.y = pixel(y);
      SDL_PushEvent(&event);
      ComeToRest();
    }
    EXPECT_TRUE(zovview::FindViewCommand("pan")->isOn(GetView().GetTarget()));
  }
}

TEST_F(ViewerScaleTest, a_right_click_may_stray_by_as_many_points_in_each_style) {
  constexpr double REACH = zovhost::ClickWatch::REACH;
  for (const double scale : SCALES) {
    Start(scale);
    for (const char* const style : {"", "right-orbits"}) {
      SCOPED_TRACE(std::to_string(scale) + style);
      viewer->GetPreferences().Edit([=](zovview::Choices& choices) { choices.navigationStyle = style; });
      EXPECT_TRUE(OpensMenu(0.0));
      EXPECT_TRUE(OpensMenu(REACH));
      EXPECT_FALSE(OpensMenu(REACH + 1.0));
    }
  }
}

TEST_F(ViewerScaleTest, another_scale_while_it_runs_draws_everything_anew) {
  Start(1.0);
  const int size = GetView().GetCube().GetScreenSize();
  const int disc = GetView().GetDisc().GetParameters().largeDiscSize;
  const int width = window->GetWidth();
  for (const double scale : {1.5, 1.0, 3.0, 1.25}) {
    const int drawn = GetView().GetRenderer().GetDrawnPictureCount();
    ChangeScale(scale);
    EXPECT_EQ(window->GetScale(), scale);
    EXPECT_EQ(window->GetWidth(), width);
    EXPECT_GT(GetView().GetRenderer().GetDrawnPictureCount(), drawn);
    EXPECT_EQ(GetView().GetDisc().GetParameters().largeDiscSize, static_cast<int>(std::lround(disc * scale)));
    EXPECT_NEAR(ImGui::GetIO().DisplaySize.x * scale, width, 0.5);
  }
  ChangeScale(1.0);
  EXPECT_EQ(GetView().GetCube().GetScreenSize(), size);
  EXPECT_EQ(GetView().GetDisc().GetParameters().largeDiscSize, disc);
}

TEST_F(ViewerScaleTest, the_storyboard_follows_while_it_runs) {
  Start(1.0);
  PressAndRest(SDLK_n);
  Places before;
  AddStoryboard(before);
  ASSERT_EQ(before.size(), 8U);
  for (const double scale : {2.0, 1.25, 1.0}) {
    SCOPED_TRACE(scale);
    ChangeScale(scale);
    Places now;
    AddStoryboard(now);
    ExpectSame(before, now);
  }
}

TEST_F(ViewerScaleTest, the_welcome_screen_is_as_large_in_points) {
  for (const double scale : SCALES) {
    SCOPED_TRACE(scale);
    Start(scale);
    zovview::SettingsFile settings(folder.GetPath() / ("settings" + std::to_string(scale) + ".json"));
    zovview::Viewer::Options options;
    options.settings = &settings;
    viewer.reset();
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("triangle.obj", apps_test::TRIANGLE)});
    ComeToRest();
    for (const double shown : {scale, 2.0, scale}) {
      ChangeScale(shown);
      const Korvane::TrackMenu* const menu = GetView().GetDisc().GetWelcomeTrackMenu();
      ASSERT_NE(menu, nullptr);
      EXPECT_EQ(menu->GetWidth(), static_cast<int>(512.0 * shown));
      const Vector2 middle(window->GetWidth() / 2.0, window->GetHeight() / 2.0);
      const Vector2 place = GetView().GetDisc().GetWelcomeTrackMenu()->GetRegionMap()->GetPosition();
      EXPECT_NEAR(place.x, middle.x, 1.0);
      EXPECT_NEAR(place.y, middle.y, 1.0);
    }
    viewer.reset();  // before its settings
  }
}

TEST_F(ViewerScaleTest, a_size_that_is_chosen_is_one_of_points) {
  Start(2.0);
  const zovview::ViewCommand& command = *zovview::FindViewCommand("disc-size-large");
  GetView().Run(command);
  EXPECT_EQ(GetView().GetDisc().GetParameters().largeDiscSize,
            2 * Korvane::HelmDiscParameters::SIZE_LARGE_LARGE);
  EXPECT_TRUE(command.isOn(GetView().GetTarget()));
  ChangeScale(1.0);
  EXPECT_TRUE(command.isOn(GetView().GetTarget()));
}

}  // namespace
