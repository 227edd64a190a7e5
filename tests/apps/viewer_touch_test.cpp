// Fingers and pens in the viewer's window: what they do to the view, the cube, the discs, the bars and the
// panels.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "korvane/math.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor_observer.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"

namespace {

using apps_test::HEIGHT;
using apps_test::SQUARE;
using apps_test::WIDTH;
using Korvane::CameraParameters;
using Korvane::DiscType;
using Korvane::Math;
using Korvane::Vector2;
using Korvane::Vector3;

constexpr int MIDDLE_X = WIDTH / 2;
constexpr int MIDDLE_Y = HEIGHT / 2;

class ViewerTouchTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Drop(folder.Write("square.obj", SQUARE));
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }

  void Down(int finger, double x, double y) {
    PushFinger(SDL_FINGERDOWN, finger, x, y);
    DrawFrames(4);
  }
  void MoveFinger(int finger, double x, double y) {
    PushFinger(SDL_FINGERMOTION, finger, x, y);
    DrawFrames(2);
  }
  void Up(int finger, double x, double y) {
    PushFinger(SDL_FINGERUP, finger, x, y);
    DrawFrames(4);
  }
  void Tap(double x, double y) {
    PushFinger(SDL_FINGERDOWN, 0, x, y);
    PushFinger(SDL_FINGERUP, 0, x, y);
    ComeToRest();
  }
  void Tap(const Vector2& at) { Tap(at.x, at.y); }
  template <class Condition>
  void WaitFor(Condition condition) {
    for (int i = 0; i < 6000 && !condition(); ++i) window->Step(10);
    EXPECT_TRUE(condition());
  }

  zovview::Viewport& GetView() const { return viewer->GetView(0); }
  CameraParameters GetCamera() const { return GetHub().GetView(); }
  Vector3 GetDirection() const { return (GetCamera().centre - GetCamera().eye).Normalized(); }
  double GetDistance() const { return (GetCamera().pivot - GetCamera().eye).Length(); }
  int CountRecords() const { return GetView().GetManager().GetRewindHistory()->GetElementCount(); }
  const Korvane::ToolbarItem& GetItem(int tag) const {
    const Korvane::ToolbarItem::List& items = GetView().GetBars().GetBar().GetToolbar()->GetItems();
    int index = 0;
    while (items.GetAt(index).GetTag() != tag) ++index;
    return items.GetAt(index);
  }
};

// ---- the camera ----

TEST_F(ViewerTouchTest, one_finger_orbits_about_the_pivot) {
  const CameraParameters before = GetCamera();
  Down(0, 300, 300);
  for (int x = 300; x <= 400; x += 10) MoveFinger(0, x, 300);
  Up(0, 400, 300);
  EXPECT_EQ(GetCamera().pivot, before.pivot);
  EXPECT_NEAR(GetDistance(), (before.pivot - before.eye).Length(), 1e-9);
  EXPECT_GT((GetCamera().eye - before.eye).Length(), 0.1);
}

TEST_F(ViewerTouchTest, a_finger_that_hardly_moves_moves_nothing) {
  const CameraParameters before = GetCamera();
  Down(0, 300, 300);
  MoveFinger(0, 306, 305);
  Up(0, 306, 305);
  EXPECT_EQ(GetCamera().eye, before.eye);
}

TEST_F(ViewerTouchTest, two_fingers_shift_what_lies_between_them) {
  const Vector3 point = GetCamera().pivot;
  const Vector2 before = Project(point);
  const Vector3 direction = GetDirection();
  Down(0, before.x - 60, before.y);
  Down(1, before.x + 60, before.y);
  MoveFinger(0, before.x + 20, before.y + 50);
  MoveFinger(1, before.x + 140, before.y + 50);
  const Vector2 now = Project(point);
  EXPECT_NEAR(now.x - before.x, 80.0, 1.5);
  EXPECT_NEAR(now.y - before.y, 50.0, 1.5);
  EXPECT_LT((GetDirection() - direction).Length(), 1e-9);
}

TEST_F(ViewerTouchTest, two_fingers_enlarge_about_their_middle) {
  const Vector3 point = GetCamera().pivot;
  const Vector2 before = Project(point);
  const double distance = GetDistance();
  Down(0, before.x - 50, before.y);
  Down(1, before.x + 50, before.y);
  for (int i = 50; i <= 100; i += 10) {
    MoveFinger(0, before.x - i, before.y);
    MoveFinger(1, before.x + i, before.y);
  }
  EXPECT_LT((Project(point) - before).Length(), 2.0) << "what was between them stays there";
  EXPECT_NEAR((point - GetCamera().eye).Length(), distance / 2.0, distance * 0.02);
  Up(0, before.x - 100, before.y);
  Up(1, before.x + 100, before.y);
}

TEST_F(ViewerTouchTest, two_fingers_turn_the_picture_and_an_upright_view_about_its_up) {
  const auto turn = [this] {
    Down(0, MIDDLE_X - 100, MIDDLE_Y);
    Down(1, MIDDLE_X + 100, MIDDLE_Y);
    for (int degree = 0; degree <= 60; degree += 5) {
      const double angle = degree * Math::DEG_TO_RAD;
      MoveFinger(0, MIDDLE_X - 100 * std::cos(angle), MIDDLE_Y - 100 * std::sin(angle));
      MoveFinger(1, MIDDLE_X + 100 * std::cos(angle), MIDDLE_Y + 100 * std::sin(angle));
    }
    Up(0, MIDDLE_X, MIDDLE_Y);
    Up(1, MIDDLE_X, MIDDLE_Y);
  };
  const Vector3 up = GetHub().GetWorldUpDirection();
  const auto isUpright = [&] {
    return std::abs(GetDirection().Cross(GetCamera().up).Normalized().Dot(up)) < 1e-6;
  };
  const Vector3 direction = GetDirection();
  turn();
  EXPECT_TRUE(isUpright());
  EXPECT_GT((GetDirection() - direction).Length(), 0.3);
  Press(SDLK_u);
  const Vector3 now = GetDirection();
  turn();
  EXPECT_FALSE(isUpright());
  EXPECT_LT((GetDirection() - now).Length(), 1e-9) << "a roll";
}

TEST_F(ViewerTouchTest, three_fingers_walk_and_with_the_look_tool_they_look) {
  const auto drag = [this] {
    for (int i = 0; i < 3; ++i) PushFinger(SDL_FINGERDOWN, i, 300 + i * 60, 100);
    DrawFrames(4);
    const int frames = 30;
    for (int step = 0; step < frames; ++step) {
      for (int i = 0; i < 3; ++i) PushFinger(SDL_FINGERMOTION, i, 300 + i * 60, 100 + step * 15);
      DrawFrames(2);
    }
    for (int i = 0; i < 3; ++i) PushFinger(SDL_FINGERUP, i, 300, 200);
    ComeToRest();
  };
  // Cameras that are too near count as one.
  Drop(folder.Write("large.obj", "v 0 0 0\nv 90 0 0\nv 90 90 0\nv 0 90 0\nf 1 2 3 4\n"));
  const CameraParameters before = GetCamera();
  drag();
  EXPECT_GT((GetCamera().eye - before.eye).Length(), 0.1) << "forward";
  GetView().GetManager().SetActiveTool(zovview::TOOL_LOOK);
  const CameraParameters walked = GetCamera();
  drag();
  EXPECT_EQ(GetCamera().eye, walked.eye);
  EXPECT_GT((GetCamera().centre - walked.centre).Length(), 0.05);
}

TEST_F(ViewerTouchTest, a_finger_more_or_less_never_makes_the_picture_jump) {
  Down(0, 250, 250);
  MoveFinger(0, 300, 250);
  CameraParameters before = GetCamera();
  const auto expectSame = [&](const char* when) {
    EXPECT_LT((GetCamera().eye - before.eye).Length(), 1e-9) << when;
    EXPECT_LT((GetCamera().centre - before.centre).Length(), 1e-9) << when;
  };
  Down(1, 450, 350);
  expectSame("a second finger");
  MoveFinger(1, 480, 380);
  before = GetCamera();
  PushFinger(SDL_FINGERDOWN, 2, 100, 350);
  PushFinger(SDL_FINGERUP, 2, 100, 350);
  DrawFrames(4);
  expectSame("a third finger comes and goes");
  Up(0, 310, 250);
  expectSame("the first is lifted");
  MoveFinger(1, 484, 384);
  expectSame("the last one is about to be");
  Up(1, 484, 384);
  expectSame("the last one is lifted");
}

TEST_F(ViewerTouchTest, a_gesture_is_one_record_of_the_history) {
  Drag(300, 320, 300);
  const int before = CountRecords();
  Down(0, 250, 250);
  MoveFinger(0, 320, 250);
  Down(1, 450, 350);
  MoveFinger(1, 500, 380);
  Up(1, 500, 380);
  MoveFinger(0, 380, 290);
  Up(0, 380, 290);
  EXPECT_EQ(CountRecords(), before + 1);
}

TEST_F(ViewerTouchTest, a_lost_focus_and_escape_end_what_the_fingers_do) {
  for (const bool byKey : {false, true}) {
    const int records = CountRecords();
    Down(0, 250, 250);
    MoveFinger(0, 320, 250);
    MoveFinger(0, 380, 250);
    Down(1, 450, 350);
    MoveFinger(1, 480, 380);
    if (byKey) {
      Press(SDLK_ESCAPE);
    } else {
      SDL_Event event = {};
      event.type = SDL_WINDOWEVENT;
      event.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
      SDL_PushEvent(&event);
    }
    ComeToRest();
    EXPECT_GT(CountRecords(), records);
    EXPECT_FALSE(GetView().IsPressed());
    const Vector3 eye = GetCamera().eye;
    MoveFinger(1, 600, 350);
    Up(1, 600, 350);
    Up(0, 600, 350);
    EXPECT_EQ(GetCamera().eye, eye);
    EXPECT_FALSE(GetHub().IsOperationActive(Korvane::OPERATION_ALL));
  }
}

TEST_F(ViewerTouchTest, a_finger_takes_the_view_from_a_move_that_runs) {
  Press(SDLK_HOME);
  Press(SDLK_1);
  ASSERT_TRUE(GetHub().IsShotActive());
  PushFinger(SDL_FINGERDOWN, 0, 300, 200);
  MoveFinger(0, 350, 200);
  EXPECT_FALSE(GetHub().IsShotActive());
  Up(0, 350, 200);
}

// ---- clicks ----

TEST_F(ViewerTouchTest, a_tap_selects_and_a_double_tap_brings_to_the_middle) {
  const Vector2 place = Project({0.8, 0.2, 0.0});
  Tap(place);
  EXPECT_NE(GetView().GetSelection().GetPart(), -1);
  Tap(WIDTH - 300.0, 20.0);  // far from it
  PushFinger(SDL_FINGERDOWN, 0, place.x, place.y);
  PushFinger(SDL_FINGERUP, 0, place.x, place.y);
  PushFinger(SDL_FINGERDOWN, 0, place.x + 2, place.y);
  PushFinger(SDL_FINGERUP, 0, place.x + 2, place.y);
  ComeToRest();
  EXPECT_LT((Project({0.8, 0.2, 0.0}) - Vector2(MIDDLE_X, MIDDLE_Y)).Length(), 6.0);
}

TEST_F(ViewerTouchTest, a_long_press_opens_the_menu) {
  Down(0, 200, 500);
  EXPECT_FALSE(viewer->IsMenuOpen());
  WaitFor([this] { return viewer->IsMenuOpen(); });
  EXPECT_EQ(viewer->GetOpenMenu(), zovview::ViewerMenus::Kind::View);
  Up(0, 200, 500);
  EXPECT_TRUE(viewer->IsMenuOpen()) << "it is lifted from where it opened";
  Tap(600.0, 60.0);
  WaitFor([this] { return !viewer->IsMenuOpen(); });
}

TEST_F(ViewerTouchTest, a_tap_on_the_cube_shows_that_side_and_a_long_press_its_menu) {
  int x = 0;
  int y = 0;
  ASSERT_TRUE(GetView().GetCube().GetPartPosition(Korvane::OrientorObserver::PART_TOP, x, y));
  Tap(x, y);
  EXPECT_LT((GetDirection() + GetHub().GetWorldUpDirection()).Length(), 1e-5);
  Down(0, x, y);
  WaitFor([this] { return viewer->IsMenuOpen(); });
  EXPECT_EQ(viewer->GetOpenMenu(), zovview::ViewerMenus::Kind::Cube);
  Up(0, x, y);
}

TEST_F(ViewerTouchTest, a_finger_that_begins_on_the_cube_drags_it) {
  int x = 0;
  int y = 0;
  ASSERT_TRUE(GetView().GetCube().GetPartPosition(Korvane::OrientorObserver::PART_TOP, x, y));
  const Vector3 direction = GetDirection();
  Down(0, x, y);
  MoveFinger(0, x - 20, y);
  MoveFinger(0, x - 40, y);
  EXPECT_TRUE(GetView().GetCube().IsDragActive());
  Down(1, 300, 300);
  MoveFinger(1, 400, 300);
  EXPECT_TRUE(GetView().GetCube().IsDragActive()) << "another finger does nothing beside it";
  Up(0, x - 40, y);
  EXPECT_FALSE(GetView().GetCube().IsDragActive());
  EXPECT_GT((GetDirection() - direction).Length(), 0.05);
}

TEST_F(ViewerTouchTest, a_tap_on_the_bar_opens_the_disc_and_a_finger_on_a_wedge_uses_it) {
  Tap(GetItem(Korvane::NavigationBar::TAG_FULL_NAVIGATION).GetNonFlyoutIconBounds().center);
  ASSERT_EQ(GetView().GetDisc().GetActiveDisc(), DiscType::FullNavigation);
  const Korvane::PixelIcon2D& map = *GetView().GetDisc().GetActiveTrackMenu()->GetRegionMap();
  // Beside it a tap brings it there, and fingers move the camera.
  Tap(300, 300);
  EXPECT_LT((map.GetPosition() - Vector2(300, 300)).Length(), map.GetWidth());
  const Vector3 eye = GetCamera().eye;
  Down(0, 500, 450);
  MoveFinger(0, 540, 450);
  MoveFinger(0, 560, 450);
  Up(0, 560, 450);
  EXPECT_NE(GetCamera().eye, eye);
  EXPECT_EQ(GetView().GetDisc().GetActiveDisc(), DiscType::FullNavigation);
  // The wedge at its top zooms.
  const Vector2 wedge = map.GetPosition() + Vector2(0.0, map.GetHeight() * 0.4);
  const double distance = GetDistance();
  Down(0, wedge.x, wedge.y);
  EXPECT_TRUE(GetView().GetManager().IsLeftMouseDown());
  for (int i = 0; i <= 60; i += 10) MoveFinger(0, wedge.x, wedge.y + i);
  Up(0, wedge.x, wedge.y + 60);
  EXPECT_FALSE(GetView().GetManager().IsLeftMouseDown());
  EXPECT_NE(GetDistance(), distance);
}

TEST_F(ViewerTouchTest, the_pointer_is_nowhere_when_the_finger_is_lifted) {
  const Vector2 home = GetItem(201).GetNonFlyoutIconBounds().center;
  Tap(home);
  EXPECT_TRUE(GetView().GetManager().GetTooltip().empty());
}

// ---- panels ----

TEST_F(ViewerTouchTest, a_finger_on_the_panel_is_its_mouse) {
  UnfoldPanel();
  Press(SDLK_F1, KMOD_LSHIFT);
  ComeToRest();
  const Vector3 eye = GetCamera().eye;
  // All over it, with the view beside it out of reach.
  const Vector3 direction = GetDirection();
  for (int y = HEIGHT - 60; y > HEIGHT - 260; y -= 12) {
    Tap(40.0, y);
    if (GetDirection() != direction) break;
  }
  EXPECT_NE(GetCamera().eye, eye) << "one of its buttons shows another view";
  const Vector3 now = GetCamera().eye;
  Down(0, 40, HEIGHT - 20);
  MoveFinger(0, 400, 200);
  Up(0, 400, 200);
  EXPECT_EQ(GetCamera().eye, now) << "a finger that came down on it";
}

// ---- trackpads ----

TEST_F(ViewerTouchTest, ten_tenths_of_a_notch_zoom_as_far_as_one) {
  const auto turn = [this](int count, float notches) {
    const double before = GetDistance();
    for (int i = 0; i < count; ++i) {
      SDL_Event wheel = {};
      wheel.type = SDL_MOUSEWHEEL;
      wheel.wheel.preciseY = notches;
      wheel.wheel.mouseX = MIDDLE_X;
      wheel.wheel.mouseY = MIDDLE_Y;
      SDL_PushEvent(&wheel);
    }
    window->Step(0);
    ComeToRest();
    return GetDistance() / before;
  };
  turn(1, 1.0F);  // the pivot is under the pointer from here on
  const double whole = turn(1, 1.0F);
  EXPECT_LT(whole, 0.99);
  EXPECT_NEAR(turn(10, 0.1F), whole, 1e-9);
  EXPECT_LT(turn(1, 0.25F), 1.0) << "a quarter shows by itself";
}

// ---- recordings ----

TEST_F(ViewerTouchTest, what_fingers_do_is_recorded) {
  const std::filesystem::path file = folder.GetPath() / "touch.txt";
  std::string error;
  auto recorder = zovview::Recorder::Create(file, error);
  ASSERT_NE(recorder, nullptr) << error;
  viewer.reset();
  zovview::Viewer::Options options;
  options.recorder = recorder.get();
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.Write("square.obj", SQUARE)});
  ComeToRest();
  Press(SDLK_F1, KMOD_LSHIFT);
  ComeToRest();
  Down(0, 300, 300);
  Down(1, 400, 310);
  MoveFinger(1, 420, 330);
  Up(0, 300, 300);
  Up(1, 420, 330);
  ASSERT_TRUE(recorder->Finish(error)) << error;
  std::stringstream text;
  text << std::ifstream(file).rdbuf();
  for (const char* line : {" finger-down 0 300 300\n", " finger-down 1 400 310\n", " finger-move 1 420 330\n",
                           " finger-up 0 300 300\n", " finger-up 1 420 330\n"}) {
    EXPECT_NE(text.str().find(line), std::string::npos) << line;
  }
  EXPECT_EQ(text.str().find("press"), std::string::npos);
  viewer.reset();
}

// ---- pens ----

class ViewerPenTest : public ViewerTouchTest {
 protected:
  zovhost::Window::Options GetOptions() const override {
    zovhost::Window::Options options = ViewerTouchTest::GetOptions();
    options.touchDevice = [](std::int64_t) { return zovhost::TouchDevice::Pen; };
    return options;
  }
};

TEST_F(ViewerPenTest, a_pen_drags_with_the_active_tool) {
  GetView().GetManager().SetActiveTool(zovview::TOOL_PAN);
  const Vector2 before = Project(GetCamera().pivot);
  const Vector3 point = GetCamera().pivot;
  const Vector3 direction = GetDirection();
  Down(0, 300, 300);
  EXPECT_TRUE(GetView().GetManager().IsLeftMouseDown());
  MoveFinger(0, 330, 320);
  Up(0, 330, 320);
  EXPECT_LT((GetDirection() - direction).Length(), 1e-9);
  EXPECT_NEAR(Project(point).x - before.x, 30.0, 4.0);
}

TEST_F(ViewerPenTest, a_pen_at_the_edge_is_not_set_to_the_other) {
  const CameraParameters before = GetCamera();
  Down(0, WIDTH - 60, 300);
  MoveFinger(0, WIDTH - 1, 300);
  MoveFinger(0, WIDTH - 60, 300);
  Up(0, WIDTH - 60, 300);
  EXPECT_LT((GetCamera().eye - before.eye).Length(), 1e-6) << "there and back";
}

}  // namespace
