// Recordings of hands on the navigation bar: what the item shows comes of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "replayed.h"

namespace {

using apps_test::AngleBetween;
using apps_test::Camera;
using apps_test::CLOSE;
using apps_test::Play;
using Korvane::Vector3;

// Two cameras are told apart by the library from here on.
constexpr double SAME_CAMERA = 3.45e-4;

// An orbit of a tenth of the width, half a radian, from the start.
double FarthestTurn(const std::vector<Camera>& cameras) {
  double most = 0.0;
  for (const Camera& camera : cameras) {
    most = std::max(most, AngleBetween(camera.Direction(), cameras.front().Direction()));
  }
  return most;
}

bool IsHomeAgain(const std::vector<Camera>& cameras) {
  const Camera& first = cameras.front();
  const Camera& last = cameras.back();
  return (last.eye - first.eye).Length() < SAME_CAMERA && (last.centre - first.centre).Length() < SAME_CAMERA;
}

TEST(ReplayBarTest, the_way_home_leads_back_from_an_orbit) {
  const std::vector<Camera> cameras = Play("bar_home");
  EXPECT_GT(FarthestTurn(cameras), 20.0);
  EXPECT_TRUE(IsHomeAgain(cameras));
}

TEST(ReplayBarTest, the_projection_is_another_after_a_click_and_the_same_after_a_slide_off) {
  EXPECT_EQ(Play("bar_projection").back().projection, "orthographic");
  EXPECT_EQ(Play("bar_slide_off").back().projection, "perspective");
  EXPECT_EQ(Play("bar_slide_off").size(), 1u);
}

TEST(ReplayBarTest, the_items_go_along_to_the_edge_that_the_bar_is_dragged_to) {
  const std::vector<Camera> cameras = Play("bar_drag");
  EXPECT_GT(cameras.at(1).time, 1200) << "the drag of the bar moves no camera";
  EXPECT_GT(FarthestTurn(cameras), 20.0);
  EXPECT_TRUE(IsHomeAgain(cameras));
}

TEST(ReplayBarTest, a_disc_of_the_flyout_pans_and_turns_nothing) {
  const std::vector<Camera> cameras = Play("bar_flyout");
  EXPECT_GT((cameras.back().eye - cameras.front().eye).Length(), 1.0);
  EXPECT_LT(FarthestTurn(cameras), 1e-6);
  EXPECT_NEAR((cameras.back().eye - cameras.front().eye).Dot(cameras.front().Direction()), 0.0, CLOSE);
}

TEST(ReplayBarTest, what_has_no_room_is_chosen_of_the_more_controls) {
  EXPECT_EQ(Play("bar_more").back().projection, "orthographic");
}

TEST(ReplayBarTest, a_bar_under_the_cube_leads_home_as_well) {
  const std::vector<Camera> cameras = Play("bar_linked");
  EXPECT_GT(FarthestTurn(cameras), 20.0);
  EXPECT_TRUE(IsHomeAgain(cameras));
}

TEST(ReplayBarTest, a_bar_that_is_closed_leads_nowhere) {
  const std::vector<Camera> cameras = Play("bar_closed");
  EXPECT_GT(FarthestTurn(cameras), 20.0);
  EXPECT_FALSE(IsHomeAgain(cameras));
}

}  // namespace
