// Recordings of a six-axis device: what its mode makes of it comes of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "replayed.h"

namespace {

using apps_test::AngleBetween;
using apps_test::Camera;
using apps_test::CLOSE;
using apps_test::Level;
using apps_test::Play;
using apps_test::UP;
using Korvane::Vector3;

constexpr double PI = 3.14159265358979323846;

// The last at or before a moment.
const Camera& At(const std::vector<Camera>& cameras, int time) {
  const auto after = std::find_if(cameras.begin(), cameras.end(),
                                  [time](const Camera& camera) { return camera.time > time; });
  return after == cameras.begin() ? cameras.front() : *(after - 1);
}

Vector3 RightOf(const Camera& camera) { return camera.Direction().Cross(camera.up).Normalized(); }

// The input of the first frame begins the motion, and each later one is a step. One of `beyond` the threshold
// turns by so much times the sensitivity, for as many frames as there are in this time but the first.
double StepsOf(double seconds, double beyond, double sensitivity = 0.0009) {
  return (seconds * 60.0 - 1.0) * beyond * sensitivity;
}
// A frame more or less at either end.
double FrameOf(double beyond, double sensitivity = 0.0009) { return 2.0 * beyond * sensitivity; }

TEST(ReplayDeviceTest, the_model_turns_upright_about_its_pivot_and_comes_closer) {
  const std::vector<Camera> cameras = Play("device_object");
  const Camera& first = cameras.front();
  const Camera& turned = At(cameras, 690);
  EXPECT_NEAR(turned.ToPivot(), first.ToPivot(), 1e-9 * first.ToPivot());
  EXPECT_NEAR(RightOf(turned).Dot(UP), 0.0, 1e-9) << "no roll";
  // The cap turns about the up of the view, of which the part along that of the scene counts.
  const double turn = first.up.Normalized().Dot(UP) * StepsOf(0.5, 55.5);
  EXPECT_NEAR(AngleBetween(Level(turned.Direction()), Level(first.Direction())), turn * 180.0 / PI,
              FrameOf(55.5) * 180.0 / PI);
  const Camera& tilted = At(cameras, 990);
  EXPECT_NEAR(AngleBetween(tilted.Direction(), turned.Direction()), StepsOf(0.2, 15.25) * 180.0 / PI,
              FrameOf(15.25) * 180.0 / PI);
  EXPECT_NEAR(RightOf(tilted).Dot(RightOf(turned)), 1.0, 1e-9);
  const Camera& last = cameras.back();
  EXPECT_LT(last.ToPivot(), 0.95 * tilted.ToPivot());
  EXPECT_NEAR(AngleBetween(last.Direction(), tilted.Direction()), 0.0, 1e-6);
}

TEST(ReplayDeviceTest, a_walk_goes_on_the_level_and_a_turn_of_the_head_stays_in_place) {
  const std::vector<Camera> cameras = Play("device_walk");
  const Camera& first = cameras.front();
  const Camera& walked = At(cameras, 1190);
  const Vector3 way = walked.eye - first.eye;
  EXPECT_NEAR(way.Dot(UP), 0.0, CLOSE);
  EXPECT_GT(way.Length(), 1.0);
  EXPECT_NEAR(AngleBetween(way, Level(first.Direction())), 0.0, 1e-6) << "ahead";
  const Camera& last = cameras.back();
  EXPECT_NEAR((last.eye - walked.eye).Length(), 0.0, CLOSE);
  EXPECT_GT(AngleBetween(Level(last.Direction()), Level(walked.Direction())), 10.0);
  EXPECT_NEAR(RightOf(last).Dot(UP), 0.0, 1e-9);
}

TEST(ReplayDeviceTest, a_flight_goes_where_the_view_goes) {
  const std::vector<Camera> cameras = Play("device_fly");
  const Camera& first = cameras.front();
  const Camera& ahead = At(cameras, 1190);
  EXPECT_GT((ahead.eye - first.eye).Length(), 1.0);
  EXPECT_NEAR(AngleBetween(ahead.eye - first.eye, first.Direction()), 0.0, 1e-6);
  const Vector3 aside = cameras.back().eye - ahead.eye;
  EXPECT_GT(aside.Length(), 0.5);
  EXPECT_NEAR(AngleBetween(aside, RightOf(ahead)), 0.0, 1e-6);
}

TEST(ReplayDeviceTest, a_page_moves_within_its_plane) {
  const std::vector<Camera> cameras = Play("device_pan");
  const Camera& first = cameras.front();
  const Camera& last = cameras.back();
  const Vector3 way = last.eye - first.eye;
  EXPECT_GT(way.Length(), 0.5);
  EXPECT_NEAR(way.Dot(first.Direction()), 0.0, 1e-9 * way.Length());
  EXPECT_NEAR((last.centre - first.centre - way).Length(), 0.0, CLOSE) << "nothing turns";
  EXPECT_LT(way.Dot(RightOf(first)), 0.0) << "the page goes to the right, and so who looks to the left";
}

TEST(ReplayDeviceTest, a_walk_in_a_parallel_view_makes_it_a_perspective_one) {
  const std::vector<Camera> cameras = Play("device_parallel");
  EXPECT_EQ(cameras.front().projection, "orthographic");
  EXPECT_EQ(cameras.back().projection, "perspective");
  EXPECT_GT((cameras.back().eye - cameras.front().eye).Length(), 1.0);
}

TEST(ReplayDeviceTest, buttons_are_commands_of_the_view) {
  const std::vector<Camera> cameras = Play("device_buttons");
  const Camera& top = At(cameras, 890);
  EXPECT_NEAR(AngleBetween(top.Direction(), -UP), 0.0, 1e-6);
  const Camera& turned = At(cameras, 1490);
  EXPECT_GT(AngleBetween(turned.up, top.up), 5.0);
  const Camera& fitted = At(cameras, 2390);
  EXPECT_NEAR(AngleBetween(fitted.Direction(), turned.Direction()), 0.0, 1e-6);
  // The views that are gone back over are those before the button's move.
  EXPECT_NEAR((cameras.back().eye - turned.eye).Length(), 0.0, 1e-3 * turned.ToPivot());
}

TEST(ReplayDeviceTest, a_drag_has_the_view_to_itself_and_the_device_goes_on_afterwards) {
  const std::vector<Camera> cameras = Play("device_mouse");
  const Camera& pressed = At(cameras, 440);
  const Camera& released = At(cameras, 880);
  EXPECT_NEAR((released.eye - pressed.eye).Length(), 0.0, 1e-6 * pressed.ToPivot()) << "there and back";
  EXPECT_GT(AngleBetween(At(cameras, 1290).Direction(), released.Direction()), 5.0);
}

TEST(ReplayDeviceTest, its_settings_hold) {
  const std::vector<Camera> cameras = Play("device_settings");
  const Camera& first = cameras.front();
  const Camera& last = cameras.back();
  EXPECT_NEAR(last.ToPivot(), first.ToPivot(), 1e-9 * first.ToPivot()) << "no translation";
  EXPECT_NEAR(AngleBetween(last.Direction(), first.Direction()), 0.0, 1e-6) << "a roll alone";
  EXPECT_NEAR(AngleBetween(last.up, first.up), StepsOf(0.8, 100.0, 0.0003) * 180.0 / PI,
              FrameOf(100.0, 0.0003) * 180.0 / PI);
}

}  // namespace
