#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "story/open_storyboard.h"

using namespace Korvane;

namespace {

using PlaybackTest = StoryboardTest;

TEST_F(PlaybackTest, a_story_is_played_from_its_first_shot_to_the_frame_after_its_last) {
  Sequence* const first = AddSequence(2);
  Sequence* const second = AddSequence(1);
  ASSERT_TRUE(board->PlaybackStory(board->GetStory()));
  EXPECT_EQ(journal.lines, (Lines{"plays story"}));
  EXPECT_TRUE(board->IsPlayingBack());
  EXPECT_EQ(hub.view.eye, Vector3(10, 0, 10));
  EXPECT_TRUE(history.Has(1, 0));
  FramesFor(2200);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), first->GetShot(1));
  FramesFor(2200);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), second->GetShot(0));
  EXPECT_TRUE(history.Has(1, 0));
  int frames = 0;
  while (board->IsPlayingBack() && frames++ < 1000) {
    const bool moves = hub.IsShotActive();
    Frame(100);
    EXPECT_TRUE(board->IsPlayingBack() || moves);  // it ends in the frame after the last move
  }
  EXPECT_LT(frames, 30);
  EXPECT_EQ(journal.lines, (Lines{"plays story", "stopped"}));
  EXPECT_TRUE(history.Has(1, 1));
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), nullptr);
}

TEST_F(PlaybackTest, empty_sequences_are_passed_over) {
  AddSequence(1);
  AddSequence(0);
  Sequence* const last = AddSequence(1);
  board->PlaybackStory(board->GetStory());
  FramesFor(2300);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), last->GetShot(0));
}

TEST_F(PlaybackTest, nothing_to_play_is_refused) {
  EXPECT_FALSE(board->PlaybackStory(nullptr));
  EXPECT_FALSE(board->PlaybackStory(board->GetStory()));
  Sequence* const empty = AddSequence(0);
  EXPECT_FALSE(board->PlaybackStory(board->GetStory()));
  EXPECT_FALSE(board->PlaybackSequence(empty));
  EXPECT_FALSE(board->PlaybackSequence(nullptr));
  EXPECT_FALSE(board->PlaybackSingleShot(nullptr));
  EXPECT_FALSE(board->PreviewShot(nullptr, true));
  EXPECT_FALSE(board->TargetShot(nullptr));
  EXPECT_FALSE(board->TargetSequence(nullptr));
  EXPECT_FALSE(board->TargetSequence(empty));
  ShotSpecification* const shot = AddShot(*empty);
  board->SetKorvane(nullptr);
  EXPECT_FALSE(board->PlaybackStory(board->GetStory()));
  EXPECT_FALSE(board->PlaybackSequence(empty));
  EXPECT_FALSE(board->PlaybackSingleShot(shot));
  EXPECT_FALSE(board->PreviewShot(shot, false));
  EXPECT_FALSE(board->BeginShot(shot));
  EXPECT_FALSE(board->PausePlayback());
  EXPECT_FALSE(board->ResumePlayback());
  EXPECT_FALSE(board->StopPlayback());
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(PlaybackTest, a_sequence_ends_with_its_last_shot_and_loops_where_it_is_told_to) {
  Sequence* const sequence = AddSequence(2);
  AddSequence(1);
  board->SetLoop(true);
  board->PlaybackSequence(sequence);
  EXPECT_EQ(journal.lines, (Lines{"plays sequence"}));
  FramesFor(4400);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), sequence->GetShot(0));
  board->SetLoop(false);
  FramesFor(4500);
  EXPECT_FALSE(board->IsPlayingBack());
}

TEST_F(PlaybackTest, a_story_that_loops_goes_on_with_its_first_shot) {
  Sequence* const first = AddSequence(1);
  AddSequence(1);
  board->SetLoop(true);
  board->PlaybackStory(board->GetStory());
  FramesFor(4400);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), first->GetShot(0));
  EXPECT_TRUE(board->IsPlayingBack());
}

TEST_F(PlaybackTest, a_looped_single_shot_restarts_from_its_camera) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  board->SetLoop(true);
  board->PlaybackSingleShot(shot);
  FramesFor(1900);
  EXPECT_GT((hub.view.eye - Vector3(10, 0, 10)).Length(), 5.0);
  FramesFor(300);
  ASSERT_TRUE(board->IsPlayingBack());
  EXPECT_LT((hub.view.eye - Vector3(10, 0, 10)).Length(), 3.0);
  board->SetLoop(false);
  FramesFor(2500);
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_EQ(journal.lines, (Lines{"plays shot", "stopped"}));
}

// ---- pause ----

TEST_F(PlaybackTest, a_pause_remembers_the_time_and_a_resume_advances_by_it) {
  ShotSpecification* const shot = AddShot(*AddSequence(), 10.0);
  board->PlaybackSingleShot(shot);
  FramesFor(4000);
  const double elapsed = hub.GetActiveShot()->GetElapsedTime();
  EXPECT_NEAR(elapsed, 4.0, 0.2);
  EXPECT_TRUE(board->PausePlayback());
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_TRUE(board->IsPaused());
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_FALSE(board->PausePlayback());
  Frame();
  EXPECT_TRUE(history.Has(1, 1));
  EXPECT_TRUE(board->ResumePlayback());
  EXPECT_FALSE(board->ResumePlayback());
  EXPECT_TRUE(board->IsPlayingBack());
  EXPECT_FALSE(board->IsPaused());
  EXPECT_EQ(hub.GetActiveShot()->GetElapsedTime(), elapsed);
  EXPECT_EQ(journal.lines, (Lines{"plays shot", "stopped", "resumed"}));
  EXPECT_TRUE(history.Has(2, 1));
}

TEST_F(PlaybackTest, a_paused_story_goes_on_where_it_was) {
  AddSequence(2);
  board->PlaybackStory(board->GetStory());
  FramesFor(2500);
  ShotSpecification* const current = board->GetParts().playback.GetCurrentShot();
  board->PausePlayback();
  FramesFor(500);
  board->ResumePlayback();
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), current);
  FramesFor(3000);
  EXPECT_FALSE(board->IsPlayingBack());
}

TEST_F(PlaybackTest, a_stop_of_a_paused_story_forgets_it) {
  AddSequence(1);
  board->PlaybackStory(board->GetStory());
  board->PausePlayback();
  EXPECT_TRUE(board->StopPlayback());
  EXPECT_FALSE(board->IsPaused());
  EXPECT_FALSE(board->ResumePlayback());
  EXPECT_FALSE(board->StopPlayback());
}

// ---- previews ----

TEST_F(PlaybackTest, a_preview_puts_the_camera_back_and_records_nothing) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  const CameraParameters before = hub.view;
  EXPECT_TRUE(board->PreviewShot(shot, false));
  EXPECT_EQ(journal.lines, (Lines{"previews 0", "editor previews 1"}));
  EXPECT_TRUE(board->IsPreviewing());
  EXPECT_EQ(hub.view.eye, shot->GetCameraParameters().eye);
  FramesFor(2500);
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_FALSE(board->IsPreviewing());
  EXPECT_EQ(hub.view.eye, before.eye);
  EXPECT_EQ(journal.lines, (Lines{"previews 0", "editor previews 1", "stopped", "editor previews 0"}));
  EXPECT_TRUE(history.Has(0, 0));
}

TEST_F(PlaybackTest, a_pause_of_a_preview_in_its_fade_is_a_stop) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_BLACK);
  const CameraParameters before = hub.view;
  board->PreviewShot(shot, true);
  Frame(100);
  EXPECT_GT(board->GetParts().overlay.alpha, 0.0);
  EXPECT_TRUE(board->PausePlayback());
  EXPECT_FALSE(board->IsPaused());
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_FALSE(board->IsPreviewing());
  EXPECT_EQ(hub.view.eye, before.eye);
}

TEST_F(PlaybackTest, a_looped_preview_goes_on) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  board->PreviewShot(shot, true);
  FramesFor(9000);
  EXPECT_TRUE(board->IsPreviewing());
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_TRUE(board->StopPlayback());
}

TEST_F(PlaybackTest, a_playback_ends_a_preview_for_the_editor_first) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  board->PreviewShot(shot, true);
  journal.lines.clear();
  board->PlaybackStory(board->GetStory());
  EXPECT_EQ(journal.lines, (Lines{"editor previews 0", "plays story"}));
  EXPECT_FALSE(board->IsPreviewing());
}

// ---- fades ----

struct FadeRow {
  int type;
  double transition;
  double shot;
  double duration;
  double level;
};

TEST(FadeTransitions, last_at_most_as_long_as_their_shot) {
  constexpr FadeRow ROWS[] = {{0, 1.0, 3.0, 1.0, 0.0}, {1, 1.0, 3.0, 1.0, 1.0},  {2, 1.0, 3.0, 0.0, 0.0},
                              {3, 1.0, 3.0, 0.0, 0.0}, {-1, 1.0, 3.0, 0.0, 0.0}, {0, 5.0, 3.0, 3.0, 0.0},
                              {1, 5.0, 0.5, 0.5, 1.0}};
  for (const FadeRow& row : ROWS) {
    ShotSpecification shot{CameraParameters()};
    shot.SetTransitionType(static_cast<ShotSpecification::TransitionType>(row.type));
    shot.SetTransitionDuration(row.transition);
    shot.SetDuration(row.shot);
    EXPECT_EQ(GetFadeTransition(&shot).duration, row.duration) << row.type;
    EXPECT_EQ(GetFadeTransition(&shot).level, row.level) << row.type;
  }
  EXPECT_EQ(GetFadeTransition(nullptr).duration, 0.0);
}

TEST_F(PlaybackTest, a_shot_fades_in_over_its_own_transition) {
  ShotSpecification* const shot = AddShot(*AddSequence(), 4.0);
  shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
  shot->SetTransitionDuration(2.0);
  board->PlaybackSingleShot(shot);
  FramesFor(500);
  const double elapsed = hub.GetActiveShot()->GetElapsedTime();
  EXPECT_NEAR(elapsed, 0.5, 0.11);
  EXPECT_EQ(board->GetParts().overlay.alpha, 1.0 - elapsed / 2.0);
  EXPECT_EQ(board->GetParts().overlay.level, 1.0);
  FramesFor(2000);
  EXPECT_EQ(board->GetParts().overlay.alpha, 0.0);
}

TEST_F(PlaybackTest, the_fade_out_belongs_to_the_next_shot) {
  Sequence* const sequence = AddSequence();
  AddShot(*sequence, 4.0);
  ShotSpecification* const next = AddShot(*sequence, 4.0);
  next->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
  next->SetTransitionDuration(1.0);
  board->PlaybackSequence(sequence);
  bool faded = false;
  while (board->GetParts().playback.GetCurrentShot() != next) {
    Frame(50);
    const Shot* const move = hub.GetActiveShot();
    if (board->GetParts().playback.GetCurrentShot() == next || move == nullptr) continue;
    const double elapsed = move->GetElapsedTime();
    const double remaining = elapsed / move->GetUnitTime() - elapsed;
    const bool fades = remaining >= 0.0 && remaining < 1.0;
    EXPECT_EQ(board->GetParts().overlay.alpha, fades ? 1.0 - remaining : 0.0);
    EXPECT_EQ(board->GetParts().overlay.level, fades ? 1.0 : 0.0);
    faded = faded || fades;
  }
  EXPECT_TRUE(faded);
  EXPECT_EQ(board->GetParts().overlay.alpha, 1.0);  // in the frame in which the next one begins
}

TEST_F(PlaybackTest, a_fade_covers_the_view_with_one_grey) {
  ShotSpecification* const shot = AddShot(*AddSequence(), 4.0);
  shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
  board->SetVisible(false);
  board->PlaybackSingleShot(shot);
  Frame(250);
  ASSERT_EQ(renderer.GetGeometry().size(), 1U);
  const auto& quad = renderer.GetGeometry().front();
  EXPECT_EQ(quad.vertices, (std::vector<float>{0, 0, 0, 0, 600, 0, 1000, 600, 0, 1000, 0, 0}));
  EXPECT_TRUE(quad.texCoords.empty());
  EXPECT_EQ(quad.material.texture, TEXTURE_NONE);
  EXPECT_EQ(quad.material.colour[0], 1.0F);
  EXPECT_EQ(quad.material.colour[3], static_cast<float>(board->GetParts().overlay.alpha));
}

TEST_F(PlaybackTest, presenting_draws_nothing_but_a_fade_that_is_wanted) {
  ShotSpecification* const shot = AddShot(*AddSequence(), 4.0);
  shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_BLACK);
  board->SetMode(Storyboard::MODE_PRESENTING);
  board->PlaybackSingleShot(shot);
  renderer.ClearCalls();
  Frame(100);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ORBIT_CUBE);
  board->SetFadeWhilePresenting(true);
  Frame(100);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  EXPECT_EQ(renderer.CountCalls("RenderGeometry"), 1);
  EXPECT_EQ(CountPictures(), 0);
  board->StopPlayback();
  Frame(100);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ARROW);
  EXPECT_GT(CountPictures(), 0);
}

// ---- what a host does meanwhile ----

TEST_F(PlaybackTest, a_shot_that_is_deleted_while_it_plays_ends_the_playback_with_its_move) {
  Sequence* const sequence = AddSequence(1);
  board->PlaybackSingleShot(sequence->GetShot(0));
  FramesFor(500);
  sequence->DeleteShot(sequence->GetShot(0));
  FramesFor(2500);
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_TRUE(history.Has(1, 1));
}

TEST_F(PlaybackTest, a_sequence_that_is_deleted_while_it_plays_ends_it) {
  Sequence* const sequence = AddSequence(3);
  board->PlaybackStory(board->GetStory());
  FramesFor(500);
  board->GetStory()->DeleteSequence(sequence);
  FramesFor(2500);
  EXPECT_FALSE(board->IsPlayingBack());
}

TEST_F(PlaybackTest, a_story_that_is_replaced_while_it_plays_stops) {
  AddSequence(3);
  board->PlaybackStory(board->GetStory());
  FramesFor(500);
  board->SetStory(new Story);
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_FALSE(hub.IsShotActive());
  FramesFor(500);
  EXPECT_TRUE(history.Has(1, 1));
}

TEST_F(PlaybackTest, a_camera_that_the_host_moves_in_between_is_none_of_its_business) {
  AddSequence(2);
  board->PlaybackStory(board->GetStory());
  FramesFor(700);
  TransitionShotParameters move;
  move.targetCamera = LookAt({0, 50, 0}, {0, 0, 0}, {0, 0, 1});
  move.duration = 1.0;
  hub.BeginShot(move);
  FramesFor(1200);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), board->GetStory()->GetSequence(0)->GetShot(1));
  FramesFor(2500);
  EXPECT_FALSE(board->IsPlayingBack());
}

TEST_F(PlaybackTest, a_shot_that_is_no_type_is_passed_over) {
  Sequence* const sequence = AddSequence(3);
  sequence->GetShot(1)->SetShotType(static_cast<ShotSpecification::ShotType>(11));
  board->PlaybackSequence(sequence);
  FramesFor(2300);
  Frame(16);
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), sequence->GetShot(2));
  board->StopPlayback();
  board->SetLoop(true);
  board->PlaybackSingleShot(sequence->GetShot(1));
  Frame(16);
  EXPECT_FALSE(board->IsPlayingBack());
}

TEST(PlaybackStages, an_observer_may_end_the_storyboard_in_every_word) {
  for (const char* const word : {"plays story", "stopped", "resumed", "previews 0", "targets"}) {
    StoryboardStage each;
    ShotSpecification* const shot = each.AddShot(*each.AddSequence());
    each.observer.onCall = [&] {
      if (each.journal.lines.back() == word) each.board.reset();
    };
    const auto step = [&](auto act) {
      if (each.board != nullptr) act();
    };
    step([&] { each.board->PlaybackStory(each.board->GetStory()); });
    step([&] { each.board->PausePlayback(); });
    step([&] { each.board->ResumePlayback(); });
    step([&] { each.board->StopPlayback(); });
    step([&] { each.board->PreviewShot(shot, false); });
    step([&] { each.board->StopPlayback(); });
    step([&] { each.board->TargetShot(shot); });
    EXPECT_EQ(each.board, nullptr) << word;
  }
}

TEST_F(PlaybackTest, a_target_is_flown_to_in_a_quarter_of_a_second_and_recorded) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  EXPECT_TRUE(board->TargetShot(shot));
  EXPECT_EQ(journal.lines, (Lines{"targets"}));
  FramesFor(200, 50);
  EXPECT_TRUE(hub.IsShotActive());
  FramesFor(200, 50);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_NEAR((hub.view.eye - Vector3(10, 0, 10)).Length(), 0.0, 1e-9);
  EXPECT_TRUE(history.Has(1, 1));
}

// A move shows the camera of the moment at which its frame begins. The rates share many such moments of each
// shot, and differ there by the rounding of their sums, and by the least change of a camera that the hub
// hands to the host.
TEST(PlaybackStages, gives_the_same_cameras_at_every_rate) {
  const double LEAST_CHANGE = 1.001 * std::sqrt(1.1920928955078125e-7);
  using Moments = std::map<std::pair<const void*, int>, Vector3>;  // by the shot and its milliseconds
  StoryboardStage each;
  Sequence* const sequence = each.AddSequence(3);
  sequence->GetShot(1)->SetShotType(ShotSpecification::SHOT_CRANE_UP);
  sequence->GetShot(1)->SetUpDownDistance(4.0);
  sequence->GetShot(2)->SetShotType(ShotSpecification::SHOT_LOOK);
  const auto play = [&](unsigned step) {
    Moments seen;
    each.board->PlaybackSequence(sequence);
    while (each.board->IsPlayingBack()) {
      const void* const shot = each.board->GetParts().playback.GetCurrentShot();
      const Shot* const move = each.hub.GetActiveShot();
      const double begin = move != nullptr ? move->GetElapsedTime() : -1.0;
      each.Frame(step);
      if (each.hub.GetActiveShot() == move && move != nullptr && begin >= 0.0) {
        seen[{shot, static_cast<int>(std::lround(begin * 1000.0))}] = each.hub.view.eye;
      }
    }
    return seen;
  };
  const Moments slow = play(35);  // about 30 frames a second
  for (const unsigned step : {15U, 7U}) {
    int compared = 0;
    for (const auto& [moment, eye] : play(step)) {
      const auto found = slow.find(moment);
      if (found == slow.end()) continue;
      ++compared;
      EXPECT_NEAR((found->second - eye).Length(), 0.0, LEAST_CHANGE) << moment.second;
    }
    EXPECT_GT(compared, 30) << step;
  }
}

}  // namespace
