// What people complain of most in round menus, held against the whole road from the event to the camera: the
// view manager, the discs with the kit's region maps, their wedges, the rewind history and a real scene.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "korvane/pivot_ball.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "scenarios/disc_view.h"

namespace {

using Korvane::CameraParameters;
using Korvane::DiscType;
using Korvane::HelmDiscZone;
using Korvane::Math;
using Korvane::RewindHistory;
using Korvane::Vector2;
using Korvane::Vector3;
using scenarios::DiscView;

constexpr double HALF_PIXEL = 0.5;
constexpr double EXACT = 1e-9;  // world units, of some tens; a few digits of sixteen are lost in a frame

double Distance(const Vector2& pixel, const Vector2& other) {
  return std::hypot(pixel.x - other.x, pixel.y - other.y);
}

Vector3 DirectionOf(const CameraParameters& camera) { return (camera.centre - camera.eye).Normalized(); }

// How far the right of a view points up or down; the house stands on z.
double GetTilt(const CameraParameters& camera) { return DirectionOf(camera).Cross(camera.up).Normalized().z; }

void ExpectSameView(const CameraParameters& a, const CameraParameters& b) {
  EXPECT_EQ(a.eye, b.eye);
  EXPECT_EQ(a.centre, b.centre);
  EXPECT_EQ(a.up, b.up);
  EXPECT_EQ(a.pivot, b.pivot);
  EXPECT_EQ(a.projection_type, b.projection_type);
  EXPECT_EQ(a.ortho_width, b.ortho_width);
  EXPECT_EQ(a.ortho_height, b.ortho_height);
  EXPECT_EQ(a.left_fov, b.left_fov);
  EXPECT_EQ(a.top_fov, b.top_fov);
}

void ExpectNothingGoesOn(const DiscView& view) {
  EXPECT_FALSE(view.hub.IsOperationActive(Korvane::OPERATION_ALL));
  EXPECT_FALSE(view.hub.IsShotActive());
  EXPECT_FALSE(view.disc.IsDragActive());
  EXPECT_FALSE(view.disc.GetPivotBall()->IsVisible());
}

class DiscComplaints : public testing::TestWithParam<bool> {
 protected:
  bool IsOrthographic() const { return GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Projection, DiscComplaints, testing::Bool(), [](const auto& instance) {
  return std::string(instance.param ? "orthographic" : "perspective");
});

// ---- the disc comes and goes ----

TEST_P(DiscComplaints, the_hot_key_opens_the_disc_around_the_pointer_and_puts_it_away_and_the_view_stays) {
  DiscView view(IsOrthographic());
  const CameraParameters before = view.hub.view;
  view.MovePointer(300, 520);
  view.Frame();
  view.PressHotKey();
  ASSERT_EQ(view.disc.GetActiveDisc(), DiscType::FullNavigation);
  ASSERT_TRUE(view.IsDiscShown());
  const Vector2 middle = view.disc.GetActiveTrackMenu()->GetRegionMap()->GetPosition();
  EXPECT_LT(Distance(middle, {300, 520}), view.disc.GetActiveTrackMenu()->GetWidth() / 2.0);
  view.PressHotKey();
  EXPECT_EQ(view.disc.GetActiveDisc(), DiscType::None);
  ExpectSameView(view.hub.view, before);
  EXPECT_EQ(view.disc.GetHistory()->GetElementCount(), 0);
  ExpectNothingGoesOn(view);
}

// ---- orbit ----

TEST_P(DiscComplaints, an_orbit_by_its_wedge_keeps_the_pivot_in_its_place_and_the_horizon_level) {
  for (const Vector2& place : {Vector2(500, 400), Vector2(420, 380), Vector2(560, 430)}) {
    DiscView view(IsOrthographic());
    Vector3 pivot;
    ASSERT_TRUE(view.PointAt(static_cast<int>(place.x), static_cast<int>(place.y), pivot));
    view.hub.view.pivot = pivot;
    const double distance = (view.hub.view.eye - pivot).Length();
    const Vector3 direction = DirectionOf(view.hub.view);
    view.PressHotKey();
    ASSERT_TRUE(view.FindWedge(HelmDiscZone::Orbit));
    const Vector2 pivotPixel = view.PixelOf(pivot);
    view.Press();
    EXPECT_FALSE(view.IsDiscShown());
    view.Draw(240, 60, 60, [&] {
      EXPECT_LT(Distance(view.PixelOf(pivot), pivotPixel), HALF_PIXEL);
      EXPECT_NEAR((view.hub.view.eye - pivot).Length(), distance, EXACT);
      EXPECT_NEAR(GetTilt(view.hub.view), 0.0, EXACT);
    });
    view.Release();
    // The width of the view turns by the multiplier, in radians.
    const double turn = view.hub.GetApplicationParameters().orbit_multiplier * 240 / DiscView::WIDTH;
    const Vector3 now = DirectionOf(view.hub.view);
    const double turned =
        std::atan2(direction.x * now.y - direction.y * now.x, direction.x * now.x + direction.y * now.y);
    EXPECT_NEAR(std::abs(turned), turn, 1e-6);
    EXPECT_EQ(view.hub.view.pivot, pivot);
    EXPECT_TRUE(view.IsDiscShown());
    EXPECT_EQ(view.disc.GetHistory()->GetElementCount(), 2);
    ExpectNothingGoesOn(view);
  }
}

// ---- walk ----

TEST(DiscWalk, a_walk_by_its_wedge_keeps_its_height_and_the_horizon_level_and_ends_with_the_button) {
  DiscView view;
  const CameraParameters start = view.hub.view;
  view.PressHotKey();
  ASSERT_TRUE(view.FindWedge(HelmDiscZone::Walk));
  view.Press();
  EXPECT_FALSE(view.IsDiscShown());
  // Up is forward, and to the side turns.
  view.Draw(60, 120, 20, [&] {
    EXPECT_NEAR(view.hub.view.eye.z, start.eye.z, EXACT);
    EXPECT_NEAR(GetTilt(view.hub.view), 0.0, EXACT);
  });
  for (int frame = 0; frame < 40; ++frame) {
    const CameraParameters last = view.hub.view;
    view.Frame();
    EXPECT_NEAR(view.hub.view.eye.z, start.eye.z, EXACT);
    EXPECT_NEAR(GetTilt(view.hub.view), 0.0, EXACT);
    EXPECT_GT((view.hub.view.eye - last.eye).Dot(DirectionOf(last)), 0.0) << "frame " << frame;
  }
  view.Release();
  view.Wait(1000);
  const Vector3 rest = view.hub.view.eye;
  view.Wait(1000);
  EXPECT_EQ(view.hub.view.eye, rest);
  EXPECT_TRUE(view.IsDiscShown());
  ExpectNothingGoesOn(view);
}

// ---- forward ----

TEST_P(DiscComplaints, a_drag_of_the_forward_wedge_goes_straight_to_the_point_under_it_and_back) {
  DiscView view(IsOrthographic());
  view.hub.GetApplicationParameters().auto_switch_projection = false;
  view.disc.SetActiveDisc(DiscType::TourBuilding);
  ASSERT_TRUE(view.FindWedgeAt(HelmDiscZone::Forward, 470, 380));
  Vector3 point;
  ASSERT_TRUE(view.PointAt(view.x, view.y, point));
  const Vector2 place = view.PixelOf(point);
  view.Press();
  const CameraParameters start = view.hub.view;
  double distance = (start.eye - point).Length();
  view.Draw(0, 150, 50, [&] {
    EXPECT_LT(Distance(view.PixelOf(point), place), HALF_PIXEL);
    EXPECT_NEAR(GetTilt(view.hub.view), 0.0, EXACT);
    EXPECT_NEAR((DirectionOf(view.hub.view) - DirectionOf(start)).Length(), 0.0, EXACT);
    const double now = (view.hub.view.eye - point).Length();
    EXPECT_LE(now, distance + EXACT);
    distance = now;
  });
  EXPECT_LT(distance, 0.8 * (start.eye - point).Length());
  view.Draw(0, -150, 50);
  EXPECT_LT((view.hub.view.eye - start.eye).Length(), 1e-6);
  view.Release();
  EXPECT_TRUE(view.IsDiscShown());
  ExpectNothingGoesOn(view);
}

TEST(DiscForward, a_click_flies_a_third_of_the_way_without_turning_the_view_and_the_disc_comes_back) {
  DiscView view;
  view.disc.SetActiveDisc(DiscType::TourBuilding);
  ASSERT_TRUE(view.FindWedgeAt(HelmDiscZone::Forward, 470, 380));
  Vector3 point;
  ASSERT_TRUE(view.PointAt(view.x, view.y, point));
  const Vector2 place = view.PixelOf(point);
  const CameraParameters start = view.hub.view;
  view.Press();
  view.Release();
  EXPECT_FALSE(view.IsDiscShown());
  for (int frame = 0; frame < 25; ++frame) {
    view.Frame();
    EXPECT_LT(Distance(view.PixelOf(point), place), HALF_PIXEL);
    EXPECT_NEAR((DirectionOf(view.hub.view) - DirectionOf(start)).Length(), 0.0, EXACT);
  }
  view.Wait(500);
  const double whole = (point - start.eye).Length();
  EXPECT_NEAR((view.hub.view.eye - start.eye).Length(), whole / 3.0, 1e-6 * whole);
  EXPECT_TRUE(view.IsDiscShown());
  EXPECT_EQ(view.disc.GetHistory()->GetElementCount(), 2);
  ExpectNothingGoesOn(view);
}

// ---- rewind ----

// Looks at the same house from all around, by four orbits; the view after each, the start first.
std::vector<CameraParameters> OrbitFourTimes(DiscView& view) {
  std::vector<CameraParameters> views = {view.hub.view};
  for (int orbit = 0; orbit < 4; ++orbit) {
    if (!view.FindWedge(HelmDiscZone::Orbit)) ADD_FAILURE() << "there is no wedge to orbit by";
    view.Press();
    view.Draw(60 + 10 * orbit, 15 - 10 * orbit, 10);
    view.Release();
    views.push_back(view.hub.view);
  }
  return views;
}

constexpr int PITCH = 68;  // pixels from one picture of the strip to the next
// The shortest rotation between two level views is level at its ends only; half a degree is not seen.
const double BETWEEN_VIEWS = std::sin(0.5 * Math::DEG_TO_RAD);

TEST_P(DiscComplaints, a_scrub_along_the_strip_shows_each_view_of_before_exactly) {
  DiscView view(IsOrthographic());
  view.PressHotKey();
  const std::vector<CameraParameters> views = OrbitFourTimes(view);
  const RewindHistory& history = *view.disc.GetHistory();
  ASSERT_EQ(history.GetElementCount(), static_cast<int>(views.size()));
  ASSERT_TRUE(view.FindWedge(HelmDiscZone::Rewind));
  view.Press();
  for (std::size_t back = 1; back < views.size(); ++back) {
    SCOPED_TRACE(back);
    view.Draw(-PITCH, 0, 17, [&] { EXPECT_LT(std::abs(GetTilt(view.hub.view)), BETWEEN_VIEWS); });
    ExpectSameView(view.hub.view, views[views.size() - 1 - back]);
  }
  EXPECT_TRUE(history.IsTimelineOpen());
  view.Draw(2 * PITCH, 0, 34);
  ExpectSameView(view.hub.view, views[2]);
  view.Release();
  ExpectSameView(view.hub.view, views[2]);
  EXPECT_EQ(history.GetCurrentElementIndex(), 2);
  EXPECT_EQ(history.GetElementCount(), static_cast<int>(views.size())) << "a scrub is no move of its own";
  EXPECT_FALSE(history.IsTimelineOpen());
  EXPECT_TRUE(view.IsDiscShown());
  ExpectNothingGoesOn(view);
}

// A move after a scrub sets out from the view that the scrub has left, and cuts the views after it off.
TEST_P(DiscComplaints, an_orbit_after_a_scrub_goes_on_from_the_view_that_was_chosen) {
  DiscView view(IsOrthographic());
  view.PressHotKey();
  const std::vector<CameraParameters> views = OrbitFourTimes(view);
  ASSERT_TRUE(view.FindWedge(HelmDiscZone::Rewind));
  view.Press();
  view.Draw(-3 * PITCH, 0, 51);
  view.Release();
  ASSERT_TRUE(view.FindWedge(HelmDiscZone::Orbit));
  view.Press();
  ExpectSameView(view.hub.view, views[1]);
  view.Draw(50, 0, 10);
  view.Release();
  const RewindHistory& history = *view.disc.GetHistory();
  ASSERT_EQ(history.GetElementCount(), 3);
  CameraParameters kept;
  ASSERT_TRUE(history.GetElementCamera(1, kept));
  ExpectSameView(kept, views[1]);
}

TEST_P(DiscComplaints, a_click_on_rewind_travels_to_the_view_before) {
  DiscView view(IsOrthographic());
  view.PressHotKey();
  const std::vector<CameraParameters> views = OrbitFourTimes(view);
  for (std::size_t back = 1; back < views.size(); ++back) {
    SCOPED_TRACE(back);
    ASSERT_TRUE(view.FindWedge(HelmDiscZone::Rewind));
    view.Press();
    view.Release();
    view.Wait(1200);
    const CameraParameters& before = views[views.size() - 1 - back];
    EXPECT_LT((view.hub.view.eye - before.eye).Length(), EXACT);
    EXPECT_EQ(view.hub.view.centre, before.centre);
    EXPECT_EQ(view.hub.view.pivot, before.pivot);
    EXPECT_LT((view.hub.view.up - before.up).Length(), EXACT);
  }
  EXPECT_TRUE(view.IsDiscShown());
  ExpectNothingGoesOn(view);
}

}  // namespace
