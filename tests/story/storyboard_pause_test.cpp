#include "story/open_storyboard.h"

using namespace Korvane;

namespace {

using PauseTest = StoryboardTest;

// It goes on, and ends with the frame that finds nothing to show.
TEST_F(PauseTest, a_playback_whose_shot_cannot_begin_again_is_resumed_all_the_same) {
  ShotSpecification* const shot = AddShot(*AddSequence(), 10.0);
  board->PlaybackSingleShot(shot);
  FramesFor(1000);
  ASSERT_TRUE(board->PausePlayback());
  shot->SetShotType(static_cast<ShotSpecification::ShotType>(99));
  Forget();
  EXPECT_TRUE(board->ResumePlayback());
  EXPECT_EQ(journal.lines, Lines({"resumed"}));
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_GT(hub.requested, 0);
  FramesFor(500);
  EXPECT_FALSE(board->IsPlayingBack());
}

}  // namespace
