// What people complain of most in viewers, held against the whole road from the event to the camera: the view
// manager, the tools, the hub and the rays of a real scene.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "korvane/pivot_ball.h"
#include "scenarios/house_view.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector2;
using Korvane::Vector3;
using scenarios::HouseView;

constexpr int MIDDLE_X = HouseView::WIDTH / 2;
constexpr int MIDDLE_Y = HouseView::HEIGHT / 2;
constexpr double HALF_PIXEL = 0.5;

double Distance(const Vector2& pixel, double x, double y) { return std::hypot(pixel.x - x, pixel.y - y); }

double AngleBetween(const Vector3& a, const Vector3& b) {
  return std::acos(Math::Clamp(a.Normalized().Dot(b.Normalized()), -1.0, 1.0));
}

// The greatest distance between two cameras' points, in world units.
double Difference(const CameraParameters& a, const CameraParameters& b) {
  const double points = std::max((a.eye - b.eye).Length(), (a.centre - b.centre).Length());
  return std::max(points, (a.up.Normalized() - b.up.Normalized()).Length());
}

class Complaints : public testing::TestWithParam<bool> {
 protected:
  bool IsOrthographic() const { return GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Projection, Complaints, testing::Bool(), [](const auto& instance) {
  return std::string(instance.param ? "orthographic" : "perspective");
});

// ---- the point under the cursor stays there ----

// Points of the house over the middle of the view.
const Vector2 GRABBED[] = {{500, 400}, {420, 380}, {560, 430}, {470, 350}, {530, 360}};

TEST_P(Complaints, a_panned_point_stays_under_the_cursor) {
  for (const Vector2& grabbed : GRABBED) {
    HouseView view(IsOrthographic());
    view.Choose(HouseView::PAN);
    const int x = static_cast<int>(grabbed.x);
    const int y = static_cast<int>(grabbed.y);
    Vector3 point;
    ASSERT_TRUE(view.PointAt(x, y, point));
    view.manager->OnLeftMouseDown(x, y);
    for (int step = 1; step <= 50; ++step) {
      view.manager->OnMouseMove(x + 6 * step, y - 5 * step);
      view.Frame();
      ASSERT_LT(Distance(view.PixelOf(point), x + 6 * step, y - 5 * step), HALF_PIXEL) << "step " << step;
    }
    view.manager->OnLeftMouseUp(x + 300, y - 250);
  }
}

TEST_P(Complaints, a_zoomed_point_stays_where_it_was_pressed) {
  for (const Vector2& grabbed : GRABBED) {
    for (const int direction : {1, -1}) {
      HouseView view(IsOrthographic());
      view.Choose(HouseView::ZOOM);
      const int x = static_cast<int>(grabbed.x);
      const int y = static_cast<int>(grabbed.y);
      Vector3 point;
      ASSERT_TRUE(view.PointAt(x, y, point));
      const double distance = (view.hub.view.eye - point).Length();
      view.manager->OnLeftMouseDown(x, y);
      for (int step = 1; step <= 30; ++step) {
        view.manager->OnMouseMove(x, y + direction * 4 * step);
        view.Frame();
        ASSERT_LT(Distance(view.PixelOf(point), x, y), HALF_PIXEL) << "step " << step;
      }
      view.manager->OnLeftMouseUp(x, y + direction * 120);
      const double after = (view.hub.view.eye - point).Length();
      EXPECT_TRUE(direction > 0 ? after < 0.8 * distance : after > 1.2 * distance)
          << distance << " " << after;
    }
  }
}

TEST_P(Complaints, a_point_under_a_turning_wheel_stays_there) {
  for (const Vector2& grabbed : GRABBED) {
    for (const int notch : {1, -1}) {
      HouseView view(IsOrthographic());
      const int x = static_cast<int>(grabbed.x);
      const int y = static_cast<int>(grabbed.y);
      Vector3 point;
      ASSERT_TRUE(view.PointAt(x, y, point));
      const double distance = (view.hub.view.eye - point).Length();
      for (int i = 0; i < 20; ++i) {
        view.Notch(x, y, notch);
        ASSERT_LT(Distance(view.PixelOf(point), x, y), HALF_PIXEL) << "notch " << i;
      }
      view.Settle();
      const double after = (view.hub.view.eye - point).Length();
      EXPECT_TRUE(notch > 0 ? after < 0.8 * distance : after > 1.2 * distance) << distance << " " << after;
      EXPECT_LT(Distance(view.PixelOf(point), x, y), HALF_PIXEL);
    }
  }
}

TEST_P(Complaints, a_rectangle_ends_with_its_middle_in_the_middle_and_its_longer_side_filling_the_view) {
  HouseView view(IsOrthographic());
  view.Choose(HouseView::RECT_ZOOM);
  // From (420, 360) to (520, 420): 100 by 60, wider than the view's 5 to 4, so the width decides: 10 times.
  Vector3 middle;
  Vector3 edge;
  ASSERT_TRUE(view.PointAt(470, 390, middle));
  ASSERT_TRUE(view.PointBeside(middle, 520, 390, edge));
  view.Drag(420, 360, 520, 420, 10, 160);
  view.Settle();
  EXPECT_LT(Distance(view.PixelOf(middle), MIDDLE_X, MIDDLE_Y), HALF_PIXEL);
  EXPECT_LT(Distance(view.PixelOf(edge), HouseView::WIDTH, MIDDLE_Y), HALF_PIXEL);
  EXPECT_FALSE(view.hub.IsShotActive());
  EXPECT_EQ(view.disc.GetRecord().GetOpenCount(), 0);
}

// ---- orbits ----

TEST_P(Complaints, an_orbit_begins_without_a_jump) {
  HouseView view(IsOrthographic());
  view.Choose(HouseView::ORBIT);
  const CameraParameters before = view.hub.view;
  view.manager->OnLeftMouseDown(300, 500);
  view.Frame();
  EXPECT_LT(Difference(view.hub.view, before), 1e-9);
  view.manager->OnMouseMove(301, 500);
  view.Frame();
  // One pixel of a thousand turns by a thousandth of the multiplier.
  const double turn = view.hub.GetApplicationParameters().orbit_multiplier / HouseView::WIDTH;
  const Vector3 now = view.hub.view.centre - view.hub.view.eye;
  EXPECT_LE(AngleBetween(now, before.centre - before.eye), turn * 1.001);
  EXPECT_GT(Difference(view.hub.view, before), 0.0);
}

TEST_P(Complaints, an_orbit_turns_about_the_marked_pivot_also_off_centre) {
  for (const Vector2& place : GRABBED) {
    HouseView view(IsOrthographic());
    Vector3 pivot;
    ASSERT_TRUE(view.PointAt(static_cast<int>(place.x), static_cast<int>(place.y), pivot));
    view.hub.view.pivot = pivot;
    view.Choose(HouseView::ORBIT);
    view.manager->OnLeftMouseDown(500, 400);
    ASSERT_TRUE(view.manager->GetPivotBall() != nullptr);
    for (int step = 1; step <= 60; ++step) {
      view.manager->OnMouseMove(500 + 5 * step, 400 + 2 * step);
      view.Frame();
      ASSERT_LT(Distance(view.PixelOf(pivot), place.x, place.y), HALF_PIXEL) << "step " << step;
    }
    view.manager->OnLeftMouseUp(800, 520);
    EXPECT_EQ(view.hub.view.pivot, pivot);
  }
}

TEST_P(Complaints, a_sweep_over_both_poles_never_flips) {
  HouseView view(IsOrthographic());
  view.Choose(HouseView::ORBIT);
  view.manager->OnLeftMouseDown(500, 400);
  const double turn = view.hub.GetApplicationParameters().orbit_multiplier / HouseView::HEIGHT;
  int y = 400;
  CameraParameters last = view.hub.view;
  for (const int target : {4000, -4000, 400}) {
    while (y != target) {
      y += y < target ? 2 : -2;
      view.manager->OnMouseMove(500, y);
      view.Frame();
      const CameraParameters& now = view.hub.view;
      // Two pixels turn by no more than two pixels' worth.
      ASSERT_LE(AngleBetween(now.centre - now.eye, last.centre - last.eye), 2.0 * turn * 1.001) << y;
      ASSERT_LE(AngleBetween(now.up, last.up), 2.0 * turn * 1.001) << y;
      last = now;
    }
  }
}

// ---- the wheel ----

// 120 of the window system's units a notch, 30 a pixel of drag.
constexpr int PIXELS_A_NOTCH = 4;

TEST(ComplaintsWheel, a_thousand_notches_in_one_go_push_through_the_pivot_and_as_many_outward_come_back) {
  HouseView view;
  const CameraParameters start = view.hub.view;
  // Only the stretch through which the user has to push stands still.
  const int dead = view.hub.GetApplicationParameters().zoom_in_snap_size / PIXELS_A_NOTCH + 1;
  Vector3 pivot;
  ASSERT_TRUE(view.PointAt(470, 390, pivot));
  CameraParameters last = start;
  int still = 0;
  for (int i = 0; i < 1000; ++i) {
    view.Notch(470, 390, 1);
    if (Difference(view.hub.view, last) == 0.0) ++still;
    last = view.hub.view;
  }
  EXPECT_LE(still, dead);
  const Vector3 forward = start.centre - start.eye;
  EXPECT_GT((view.hub.view.eye - pivot).Dot(forward), 0.0) << "the camera has not gone through the pivot";
  for (int i = 0; i < 1000; ++i) view.Notch(470, 390, -1);
  EXPECT_LT((view.hub.view.eye - start.eye).Length(), 1e-9);
  EXPECT_LT(AngleBetween(view.hub.view.centre - view.hub.view.eye, forward), 1e-7);
}

// Each notch is a gesture of its own, about the point of the house that is then under the cursor.
TEST(ComplaintsWheel, notches_one_by_one_go_on_moving_until_the_eye_touches_the_house_and_lead_back_out) {
  constexpr double TOUCHES = 1e-5;  // metres
  HouseView view;
  CameraParameters last = view.hub.view;
  for (int i = 0; i < 1000; ++i) {
    view.Notch(470, 390, 1, 600);
    view.Frame();
    const bool touching = (view.hub.view.pivot - view.hub.view.eye).Length() < TOUCHES;
    ASSERT_TRUE(touching || Difference(view.hub.view, last) > 0.0) << "notch " << i;
    last = view.hub.view;
  }
  for (int i = 0; i < 1000; ++i) {
    view.Notch(470, 390, -1, 600);
    view.Frame();
    ASSERT_TRUE(view.hub.view.IsFinite());
    ASSERT_GT(Difference(view.hub.view, last), 0.0) << "notch " << i;
    last = view.hub.view;
  }
  const Vector3 centre = scenarios::GetHouse().GetCentre();
  EXPECT_GT((view.hub.view.eye - centre).Length(), 3.0 * scenarios::GetHouse().GetRadius());
}

// In orthographic the way in ends where the viewing distance falls below the limit.
TEST_P(Complaints, bursts_of_notches_inward_go_on_moving_to_the_limit_and_bursts_outward_come_back) {
  HouseView view(IsOrthographic());
  const CameraParameters start = view.hub.view;
  CameraParameters last = start;
  const auto turnBurst = [&view](int notch) {
    for (int i = 0; i < 10; ++i) view.Notch(470, 390, notch);
    view.Frame(600);
    view.Frame();
  };
  const double limit = view.hub.GetApplicationParameters().zoom_min_limit;
  for (int burst = 0; burst < 40; ++burst) {
    turnBurst(1);
    const double distance = (last.centre - last.eye).Length();
    const bool atLimit = IsOrthographic() ? distance < limit : distance < 1e-5;
    ASSERT_TRUE(atLimit || Difference(view.hub.view, last) > 0.0) << "burst " << burst;
    last = view.hub.view;
  }
  EXPECT_LT(view.hub.view.ortho_width, start.ortho_width * 0.01);
  for (int burst = 0; burst < 60; ++burst) {
    turnBurst(-1);
    ASSERT_GT(Difference(view.hub.view, last), 0.0) << "burst " << burst;
    last = view.hub.view;
  }
  EXPECT_GT(view.hub.view.ortho_width, start.ortho_width);
}

// ---- the same gesture at other rates of frames ----

struct Gesture {
  const char* name;
  HouseView::ToolID tool;
  double bound;  // world units; 0: exactly
};

CameraParameters Perform(const Gesture& gesture, int framesPerSecond, bool orthographic) {
  HouseView view(orthographic);
  view.Choose(gesture.tool);
  view.Drag(470, 390, 610, 270, framesPerSecond, 1000);
  view.Settle();
  return view.hub.view;
}

TEST_P(Complaints, a_gesture_of_the_cursor_alone_ends_at_the_same_camera_at_30_60_and_144_frames_a_second) {
  const Gesture gestures[] = {{"orbit", HouseView::ORBIT, 0.0},
                              // A pan adds up its motion frame by frame; what differs is its rounding.
                              {"pan", HouseView::PAN, 1e-11},
                              {"zoom", HouseView::ZOOM, 0.0},
                              {"rectangle", HouseView::RECT_ZOOM, 0.0}};
  for (const Gesture& gesture : gestures) {
    const CameraParameters slow = Perform(gesture, 30, IsOrthographic());
    for (const int rate : {60, 144}) {
      const CameraParameters fast = Perform(gesture, rate, IsOrthographic());
      EXPECT_LE(Difference(slow, fast), gesture.bound) << gesture.name << " at " << rate;
    }
  }
}

// A look turns by the motion of each frame, pitch before yaw, so the order of small turns matters a little; a
// walk integrates its speed.
TEST(ComplaintsRate, a_look_and_a_walk_end_close_together_at_30_60_and_144_frames_a_second) {
  const double radius = scenarios::GetHouse().GetRadius();
  const Gesture gestures[] = {{"look", HouseView::LOOK, 0.01 * radius},
                              {"walk", HouseView::WALK, 0.05 * radius}};
  for (const Gesture& gesture : gestures) {
    const CameraParameters slow = Perform(gesture, 30, false);
    EXPECT_GT(Difference(slow, HouseView().hub.view), 0.1 * radius) << gesture.name << " did not move";
    for (const int rate : {60, 144}) {
      EXPECT_LE(Difference(slow, Perform(gesture, rate, false)), gesture.bound)
          << gesture.name << " at " << rate;
    }
  }
}

// ---- gestures that are cut off ----

bool HasActiveOperation(const HouseView& view) {
  return view.hub.IsOperationActive(Korvane::OPERATION_ALL) || view.hub.IsShotActive();
}

// The fields that gestures change and have to put back.
std::vector<double> SettingsOf(const HouseView& view) {
  const Korvane::ApplicationParameters& parameters = view.hub.GetApplicationParameters();
  return {static_cast<double>(parameters.preserve_orbit_up_direction),
          static_cast<double>(parameters.align_orbit_up_direction),
          static_cast<double>(parameters.look_invert_vertical_axis),
          static_cast<double>(parameters.do_custom_orbit),
          static_cast<double>(parameters.do_snap_orbit),
          static_cast<double>(parameters.mouse_drag),
          static_cast<double>(parameters.zoom_min_limit_motion),
          parameters.zoom_back_distance,
          parameters.orbit_multiplier};
}

const HouseView::ToolID EVERY_TOOL[] = {HouseView::ORBIT,     HouseView::PAN,    HouseView::ZOOM,
                                        HouseView::RECT_ZOOM, HouseView::LOOK,   HouseView::LOOK_MOVE,
                                        HouseView::LOOK_AT,   HouseView::CENTER, HouseView::WALK};

// What a host does when its window loses the focus: it lets go of what is held.
TEST_P(Complaints, a_gesture_that_ends_with_the_focus_leaves_nothing_behind) {
  for (const HouseView::ToolID tool : EVERY_TOOL) {
    HouseView view(IsOrthographic());
    view.hub.GetApplicationParameters().look_invert_vertical_axis = true;
    view.hub.GetApplicationParameters().zoom_back_distance = 1234.5;
    const std::vector<double> settings = SettingsOf(view);
    view.Choose(tool);
    view.Press(470, 390, 560, 330, 5, 80);
    view.manager->OnLeftMouseUp(560, 330);
    view.Settle();
    EXPECT_FALSE(HasActiveOperation(view)) << tool;
    EXPECT_EQ(SettingsOf(view), settings) << tool;
    EXPECT_EQ(view.disc.GetRecord().GetOpenCount(), 0) << tool;
    EXPECT_EQ(view.platform.GetTimerCount(), 0) << tool;
    EXPECT_FALSE(view.manager->GetPivotBall()->IsVisible()) << tool;
    EXPECT_FALSE(view.manager->wantCursorWrapping) << tool;
  }
}

TEST_P(Complaints, a_gesture_whose_viewport_is_resized_goes_on_and_leaves_nothing_behind) {
  for (const HouseView::ToolID tool : EVERY_TOOL) {
    for (const int size : {0, 1, 65535}) {
      HouseView view(IsOrthographic());
      const std::vector<double> settings = SettingsOf(view);
      view.Choose(tool);
      view.Press(470, 390, 560, 330, 5, 80);
      view.manager->SetViewportSize(size, size);
      view.manager->OnMouseMove(570, 320);
      view.Frame();
      view.manager->OnLeftMouseUp(570, 320);
      view.Settle();
      EXPECT_TRUE(view.hub.view.IsFinite()) << tool;
      EXPECT_FALSE(HasActiveOperation(view)) << tool;
      EXPECT_EQ(SettingsOf(view), settings) << tool;
      EXPECT_EQ(view.hub.GetApplicationParameters().viewport_width, size) << tool;
    }
  }
}

TEST_P(Complaints, a_tool_in_the_middle_of_its_gesture_cannot_be_taken_away) {
  for (const HouseView::ToolID tool : EVERY_TOOL) {
    HouseView view(IsOrthographic());
    view.Choose(tool);
    view.Press(470, 390, 560, 330, 5, 80);
    if (tool == HouseView::LOOK_AT) continue;  // this renderer tells no faces, so that it never operates
    EXPECT_FALSE(view.manager->SetActiveTool(0)) << tool;
    EXPECT_EQ(view.manager->RemoveTool(tool), nullptr) << tool;
    view.manager->OnLeftMouseUp(560, 330);
  }
}

TEST_P(Complaints, a_view_manager_that_goes_in_the_middle_of_a_gesture_leaves_nothing_behind) {
  for (const HouseView::ToolID tool : EVERY_TOOL) {
    for (const bool destroyFirst : {true, false}) {
      HouseView view(IsOrthographic());
      view.hub.GetApplicationParameters().look_invert_vertical_axis = true;
      view.hub.GetApplicationParameters().zoom_back_distance = 1234.5;
      const std::vector<double> settings = SettingsOf(view);
      view.Choose(tool);
      view.Press(470, 390, 560, 330, 5, 80);
      if (destroyFirst) view.manager->Destroy();
      view.manager.reset();
      EXPECT_FALSE(HasActiveOperation(view)) << tool << destroyFirst;
      EXPECT_EQ(SettingsOf(view), settings) << tool << destroyFirst;
      EXPECT_EQ(view.disc.GetRecord().GetOpenCount(), 0) << tool << destroyFirst;
      EXPECT_EQ(view.platform.GetTimerCount(), 0) << tool << destroyFirst;
      view.Settle();  // nothing dangles in the hub
      EXPECT_TRUE(view.hub.view.IsFinite());
    }
  }
}

TEST(ComplaintsLeaks, ten_thousand_rounds_of_create_drag_and_destroy_leave_nothing_behind) {
  for (int round = 0; round < 10000; ++round) {
    HouseView view;
    view.Choose(EVERY_TOOL[round % 9]);
    view.Press(470, 390, 480 + round % 50, 380, 2, 32);
    if (round % 2 == 0) view.manager->OnLeftMouseUp(480, 380);
    if (round % 3 == 0) view.manager->Destroy();
    view.manager.reset();
    ASSERT_FALSE(HasActiveOperation(view)) << round;
    ASSERT_EQ(view.disc.GetRecord().GetOpenCount(), 0) << round;
    ASSERT_EQ(view.platform.GetTimerCount(), 0) << round;
  }
}

}  // namespace
