// When the pivot ball shows.
#include <limits>

#include "controller/controller_scene.h"

using namespace Korvane;

namespace {

using NavigationMode = Cam3DControllerParameters::NavigationMode;

class BallTest : public ControllerScene {};

}  // namespace

TEST_F(BallTest, the_ball_shows_only_after_more_than_three_inputs_with_a_rotation) {
  Turn();  // begins
  for (int i = 0; i < 3; ++i) Turn();
  EXPECT_FALSE(ball.IsVisible());
  TakeLines();
  Turn();
  EXPECT_TRUE(ball.IsVisible());
  EXPECT_EQ(TakeLines(),
            (Lines{"size ball", "show ball", "update (0 0 0) (0 0.09 0)", "input (0 0 0) (0 0.09 0)"}));
  Turn();
  EXPECT_EQ(TakeLines(), (Lines{"show ball", "update (0 0 0) (0 0.09 0)", "input (0 0 0) (0 0.09 0)"}));
}

TEST_F(BallTest, an_input_without_rotation_counts_from_the_beginning) {
  Turn();
  for (int i = 0; i < 3; ++i) Turn();
  Push();
  for (int i = 0; i < 3; ++i) Turn();
  EXPECT_FALSE(ball.IsVisible());
  Turn();
  EXPECT_TRUE(ball.IsVisible());
}

TEST_F(BallTest, the_ball_goes_half_a_second_after_the_rotation) {
  for (int i = 0; i < 6; ++i) Turn();
  ASSERT_TRUE(ball.IsVisible());
  Push();  // the stopwatch starts
  platform.Advance(500);
  Push();
  EXPECT_TRUE(ball.IsVisible());  // exactly half a second is not more
  platform.Advance(1);
  Push();
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_TRUE(controller->IsOperating());
}

TEST_F(BallTest, a_rotation_meanwhile_starts_the_half_second_anew) {
  for (int i = 0; i < 6; ++i) Turn();
  Push();
  platform.Advance(400);
  for (int i = 0; i < 4; ++i) Turn();
  Push();
  platform.Advance(400);
  Push();
  EXPECT_TRUE(ball.IsVisible());
  platform.Advance(101);
  Push();
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(BallTest, the_ball_goes_with_the_motion) {
  for (int i = 0; i < 6; ++i) Turn();
  Rest();
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(BallTest, walking_and_flying_show_no_ball) {
  for (const NavigationMode mode : {Mode::MODE_WALK, Mode::MODE_FLY}) {
    controller->SetNavigationMode(mode);
    for (int i = 0; i < 10; ++i) Turn();
    EXPECT_FALSE(ball.IsVisible()) << mode;
    Rest();
  }
}

TEST_F(BallTest, another_threshold_of_the_ball_counts) {
  controller->SetPivotBallThreshold(0);
  Turn();
  EXPECT_FALSE(ball.IsVisible());
  Turn();
  EXPECT_TRUE(ball.IsVisible());
  Rest();
  controller->SetPivotBallThreshold(std::numeric_limits<int>::max());
  for (int i = 0; i < 50; ++i) Turn();
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(BallTest, the_ball_is_labelled_as_the_pivot) {
  ball.SetLabel(static_cast<StringID>(39));
  renderer.TakeCalls();
  for (int i = 0; i < 6; ++i) Turn();
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"LoadStringResource(41)", "CreatePivotLabel(text 41)"}));
}

TEST_F(BallTest, a_ball_that_shows_already_keeps_its_size_and_its_label) {
  ball.SetVisible(true);
  ball.SetLabel(static_cast<StringID>(39));
  renderer.TakeCalls();
  TakeLines();
  for (int i = 0; i < 5; ++i) Turn();
  EXPECT_TRUE(renderer.TakeCalls().empty());
  EXPECT_EQ(journal.Count("size ball"), 0);
  EXPECT_EQ(journal.Count("show ball"), 1);
}

// ---- another motion ----

TEST_F(BallTest, a_new_motion_counts_its_turns_anew) {
  for (int i = 0; i < 4; ++i) Turn();  // the first begins: three are counted
  Rest();
  Turn();
  Turn();
  EXPECT_FALSE(ball.IsVisible());
}

// Of a ball that somebody else has shown the motion knows nothing.
TEST_F(BallTest, a_new_motion_counts_the_half_second_anew) {
  for (int i = 0; i < 6; ++i) Turn();
  Push();  // the stopwatch starts
  Rest();
  platform.Advance(600);
  ball.SetVisible(true);
  Push();
  Push();  // the stopwatch starts
  EXPECT_TRUE(ball.IsVisible());
  platform.Advance(501);
  Push();
  EXPECT_FALSE(ball.IsVisible());
}
