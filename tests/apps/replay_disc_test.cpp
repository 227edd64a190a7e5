// Recordings of hands on the navigation discs: what the wedge is for comes of it.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "korvane/math.h"
#include "replayed.h"

namespace {

using apps_test::AngleBetween;
using apps_test::Camera;
using apps_test::CLOSE;
using apps_test::Level;
using apps_test::Play;
using apps_test::UP;
using Korvane::Math;
using Korvane::Vector3;

// Before a moment of the recording, milliseconds.
const Camera& FindBefore(const std::vector<Camera>& cameras, int time) {
  const Camera* last = &cameras.front();
  for (const Camera& camera : cameras) {
    if (camera.time < time) last = &camera;
  }
  return *last;
}

double Turned(const Camera& a, const Camera& b) {
  return AngleBetween(Level(a.Direction()), Level(b.Direction()));
}

TEST(ReplayDiscTest, the_orbit_wedge_turns_as_far_as_the_orbit_tool) {
  const std::vector<Camera> cameras = Play("disc_orbit");
  // A fifth of the width is a radian.
  EXPECT_NEAR(Turned(cameras.front(), cameras.back()), Math::RAD_TO_DEG, 1e-6);
  EXPECT_NEAR(cameras.back().ToPivot(), cameras.front().ToPivot(), CLOSE);
  EXPECT_EQ(cameras.back().eye, Play("orbit").back().eye);
}

TEST(ReplayDiscTest, the_pan_wedge_moves_sideways_only) {
  const std::vector<Camera> cameras = Play("disc_pan");
  const Vector3 way = cameras.back().eye - cameras.front().eye;
  EXPECT_GT(way.Length(), 1.0);
  EXPECT_NEAR(way.Dot(cameras.front().Direction()), 0.0, CLOSE);
  EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-6);
}

TEST(ReplayDiscTest, the_zoom_wedge_comes_nearer_to_the_point_under_it) {
  const std::vector<Camera> cameras = Play("disc_zoom");
  const Vector3 point = cameras.back().pivot;
  const Vector3 start = cameras.front().eye;
  EXPECT_LT(AngleBetween(point - start, cameras.back().eye - start), 1e-6);
  EXPECT_LT((point - cameras.back().eye).Length(), (point - start).Length() * 0.8);
}

TEST(ReplayDiscTest, the_walk_wedge_keeps_the_height_and_goes_forward) {
  const std::vector<Camera> cameras = Play("disc_walk");
  const Vector3 way = cameras.back().eye - cameras.front().eye;
  EXPECT_NEAR(way.z, 0.0, CLOSE);
  EXPECT_GT(way.Dot(Level(cameras.front().Direction())), 0.5);
  EXPECT_LT(AngleBetween(way, Level(cameras.front().Direction())), 1.0);
}

// Nothing but the height changes, by the wedge itself and by the one that Shift puts in the place of the
// walk.
TEST(ReplayDiscTest, up_and_down_keeps_the_place_on_the_ground_and_the_direction) {
  for (const char* name : {"disc_up_down", "disc_shift"}) {
    const std::vector<Camera> cameras = Play(name);
    const Vector3 way = cameras.back().eye - cameras.front().eye;
    EXPECT_LT(way.z, -0.1) << name;
    EXPECT_NEAR((way - UP * way.z).Length(), 0.0, CLOSE) << name;
    EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-6) << name;
  }
}

TEST(ReplayDiscTest, shift_makes_the_orbit_wedge_roll_where_nothing_is_kept_upright) {
  const std::vector<Camera> cameras = Play("disc_roll");
  EXPECT_GT(AngleBetween(cameras.front().up, cameras.back().up), 5.0);
  EXPECT_NEAR((cameras.back().eye - cameras.front().eye).Length(), 0.0, CLOSE);
  EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-5);
}

TEST(ReplayDiscTest, the_centre_wedge_brings_a_point_to_the_middle) {
  const std::vector<Camera> cameras = Play("disc_centre");
  EXPECT_LT(cameras.back().FromAxis(), 1e-6);
  EXPECT_NE(cameras.back().pivot, cameras.front().pivot);
}

TEST(ReplayDiscTest, the_look_wedge_turns_the_head_and_keeps_the_place) {
  const std::vector<Camera> cameras = Play("disc_look");
  for (const Camera& camera : cameras) EXPECT_EQ(camera.eye, cameras.front().eye);
  EXPECT_GT(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 5.0);
}

// In half a second, a third of the way to the point under the wedge, which is the pivot then.
TEST(ReplayDiscTest, a_click_on_forward_flies_a_third_of_the_way) {
  const std::vector<Camera> cameras = Play("disc_forward");
  const Camera& last = cameras.back();
  const Vector3 start = cameras.front().eye;
  EXPECT_GT((last.eye - start).Length(), 1.0);
  EXPECT_GE(last.time - 300, 400);
  EXPECT_NEAR(AngleBetween(last.Direction(), cameras.front().Direction()), 0.0, 1e-6);
}

TEST(ReplayDiscTest, a_mini_disc_orbits_as_a_large_one) {
  const std::vector<Camera> cameras = Play("disc_mini");
  EXPECT_NEAR(Turned(cameras.front(), cameras.back()), 0.5 * Math::RAD_TO_DEG, 1e-6);  // 80 pixels
}

TEST(ReplayDiscTest, the_hot_key_opens_a_disc_closes_it_and_leaves_the_tool_of_before) {
  const std::vector<Camera> cameras = Play("disc_hot_key");
  // 80 pixels by the wedge, and 80 by the tool.
  EXPECT_NEAR(Turned(cameras.front(), FindBefore(cameras, 1200)), 0.5 * Math::RAD_TO_DEG, 1e-6);
  EXPECT_NEAR(Turned(cameras.front(), cameras.back()), Math::RAD_TO_DEG, 1e-6);
}

TEST(ReplayDiscTest, escape_closes_the_disc) {
  const std::vector<Camera> cameras = Play("disc_escape");
  EXPECT_NEAR(Turned(cameras.front(), cameras.back()), 0.5 * Math::RAD_TO_DEG, 1e-6) << "by the tool";
}

// ---- rewind ----

TEST(ReplayDiscTest, a_click_on_rewind_travels_back_to_before_the_orbit) {
  const std::vector<Camera> cameras = Play("disc_rewind_click");
  EXPECT_GT(Turned(cameras.front(), FindBefore(cameras, 900)), 20.0) << "the orbit";
  EXPECT_LT((cameras.back().eye - cameras.front().eye).Length(), CLOSE);
  EXPECT_LT((cameras.back().centre - cameras.front().centre).Length(), CLOSE);
}

// Each orbit is of 40 pixels, a quarter of a radian: the view after the first is where the strip is let go
// of, and on the way there it goes back through all the angles between.
TEST(ReplayDiscTest, a_scrub_along_the_strip_takes_the_view_back_with_it) {
  const std::vector<Camera> cameras = Play("disc_rewind_scrub");
  const Camera& start = cameras.front();
  const double orbit = 0.25 * Math::RAD_TO_DEG;
  EXPECT_NEAR(Turned(start, FindBefore(cameras, 2400)), 3.0 * orbit, 1e-6);
  EXPECT_NEAR(Turned(start, cameras.back()), orbit, 1e-6);
  double before = 3.0 * orbit;
  int steps = 0;
  for (const Camera& camera : cameras) {
    if (camera.time < 2400) continue;
    const double now = Turned(start, camera);
    EXPECT_LE(now, before + 1e-6) << camera.time;
    EXPECT_NEAR(camera.ToPivot(), start.ToPivot(), 1e-6) << "it turns about the pivot";
    before = now;
    ++steps;
  }
  EXPECT_GT(steps, 10);
}

TEST(ReplayDiscTest, alt_and_the_arrows_step_through_the_views) {
  const std::vector<Camera> cameras = Play("previous_view");
  EXPECT_LT(AngleBetween(cameras.back().Direction(), -UP), 1e-5) << "from the front two back, one forward";
  EXPECT_LT((FindBefore(cameras, 3700).eye - cameras.front().eye).Length(), CLOSE) << "the start between";
}

}  // namespace
