// Recordings of hands on the storyboard: what the shots are comes of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "replayed.h"

namespace {

using apps_test::AngleBetween;
using apps_test::Camera;
using apps_test::Play;
using Korvane::Vector3;

// Two cameras are told apart by the library from here on.
constexpr double SAME_CAMERA = 3.45e-4;
// A drag of 80 or 40 of the 800 pixels turns by a tenth of 5 radians, or a twentieth.
constexpr double TURN = 0.5 * 180.0 / 3.14159265358979323846;

double AngleFromStart(const std::vector<Camera>& cameras, const Camera& camera) {
  return AngleBetween(apps_test::Level(camera.Direction()), apps_test::Level(cameras.front().Direction()));
}
bool IsSameView(const Camera& a, const Camera& b) {
  return (a.eye - b.eye).Length() < SAME_CAMERA && (a.centre - b.centre).Length() < SAME_CAMERA;
}
// In the frames before the end of a move that is eased, a hundredth of what it went.
bool IsNearView(const Camera& a, const Camera& b) {
  return (a.eye - b.eye).Length() < 0.05 && (a.centre - b.centre).Length() < 0.05;
}
// The last at or before a moment.
const Camera& At(const std::vector<Camera>& cameras, int time) {
  const auto after = std::find_if(cameras.begin(), cameras.end(),
                                  [time](const Camera& camera) { return camera.time > time; });
  return after == cameras.begin() ? cameras.front() : *(after - 1);
}

TEST(ReplayStoryTest, the_target_of_a_shot_leads_to_its_view) {
  const std::vector<Camera> cameras = Play("story_target");
  EXPECT_NEAR(AngleFromStart(cameras, At(cameras, 1500)), TURN, 1e-6);
  EXPECT_TRUE(IsSameView(cameras.back(), cameras.front()));
}

// Each shot comes closer for three seconds and ends at its view.
TEST(ReplayStoryTest, a_story_plays_its_shots_one_after_the_other) {
  const std::vector<Camera> cameras = Play("story_play");
  constexpr int BEGIN = 1620;  // the press on the button
  const Camera& second = At(cameras, BEGIN - 1);
  EXPECT_TRUE(IsNearView(At(cameras, BEGIN + 3015), cameras.front()));
  EXPECT_TRUE(IsSameView(cameras.back(), second));
  EXPECT_GT((At(cameras, BEGIN + 60).eye - cameras.front().eye).Length(), 10.0) << "from afar";
  EXPECT_LT(cameras.back().time, BEGIN + 6150)
      << "two shots of three seconds, and a frame or two between them";
}

TEST(ReplayStoryTest, a_deleted_shot_that_is_put_back_leads_to_its_view) {
  const std::vector<Camera> cameras = Play("story_undo");
  EXPECT_TRUE(IsSameView(cameras.back(), cameras.front()));
}

TEST(ReplayStoryTest, a_deletion_that_is_made_again_leaves_the_other_shot) {
  const std::vector<Camera> cameras = Play("story_redo");
  EXPECT_NEAR(AngleFromStart(cameras, cameras.back()), TURN, 1e-6);
}

TEST(ReplayStoryTest, a_shot_that_is_dragged_before_another_is_the_first) {
  const std::vector<Camera> cameras = Play("story_drag");
  EXPECT_NEAR(AngleFromStart(cameras, At(cameras, 2800)), 1.5 * TURN, 1e-6);
  EXPECT_NEAR(AngleFromStart(cameras, cameras.back()), TURN, 1e-6);
}

// Paused a second after its begin, it has two seconds to go when it goes on.
TEST(ReplayStoryTest, a_pause_holds_the_view_and_what_goes_on_goes_on_from_there) {
  const std::vector<Camera> cameras = Play("story_pause");
  constexpr int BEGIN = 1680;  // the release on the button
  constexpr int PAUSE = 2680;
  constexpr int RESUME = 4740;
  const Camera& held = At(cameras, PAUSE + 100);
  EXPECT_TRUE(IsSameView(At(cameras, RESUME - 1), held));
  EXPECT_FALSE(IsSameView(held, At(cameras, BEGIN - 1)));
  EXPECT_TRUE(IsSameView(cameras.back(), At(cameras, BEGIN - 1)));
  EXPECT_NEAR(cameras.back().time, RESUME + 3000 - (PAUSE - BEGIN), 60);
}

TEST(ReplayStoryTest, a_press_ends_a_presentation_and_orbits_nothing) {
  const std::vector<Camera> cameras = Play("story_present");
  constexpr int PRESS = 3180;
  const Camera& last = cameras.back();
  EXPECT_LT(last.time, PRESS + 20);
  EXPECT_NEAR(AngleFromStart(cameras, last), 0.0, 1e-6) << "the first shot was going on";
  EXPECT_GT((last.eye - cameras.front().eye).Length(), 1.0);
}

// The walk goes on as long as the button is held; the shot leads along the same way to the same end.
TEST(ReplayStoryTest, a_recorded_walk_is_walked_again) {
  const std::vector<Camera> cameras = Play("story_walk");
  constexpr int RELEASE = 1700;
  constexpr int PLAY = 3900;
  const Camera& walked = At(cameras, RELEASE);
  EXPECT_GT((walked.eye - cameras.front().eye).Length(), 1.0);
  EXPECT_TRUE(IsSameView(At(cameras, PLAY - 1), cameras.front())) << "home";
  EXPECT_TRUE(IsSameView(cameras.back(), walked));
}

TEST(ReplayStoryTest, a_preview_goes_back_to_the_view_of_before) {
  const std::vector<Camera> cameras = Play("story_preview");
  constexpr int BEGIN = 1880;
  EXPECT_TRUE(IsSameView(cameras.back(), At(cameras, BEGIN - 1)));
  EXPECT_TRUE(IsNearView(At(cameras, BEGIN + 3010), cameras.front())) << "the end of the first shot";
}

}  // namespace
