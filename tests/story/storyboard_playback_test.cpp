#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iterator>
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

TEST_F(PlaybackTest, where_only_cuts_are_wanted_no_shot_fades_and_each_takes_its_time) {
  Sequence* const sequence = AddSequence();
  ShotSpecification* const shot = AddShot(*sequence, 2.0);
  shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
  ShotSpecification* const next = AddShot(*sequence, 2.0);
  next->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_BLACK);
  board->SetCutsOnly(true);
  board->SetVisible(false);
  board->PlaybackSequence(sequence);
  int frames = 0;
  for (; board->IsPlayingBack() && frames < 1000; ++frames) {
    Frame(50);
    EXPECT_EQ(board->GetParts().overlay.alpha, 0.0);
  }
  EXPECT_EQ(renderer.GetGeometry().size(), 0U);
  EXPECT_GE(frames, 80);
  EXPECT_LT(frames, 90);
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

// ---- a host that does something else meanwhile ----

/// Whatever begins shots: the first, or a second one as well.
using Begin = void (*)(StoryboardStage& stage);
Sequence* GetFirst(const StoryboardStage& stage) { return stage.board->GetStory()->GetSequence(0); }
void PlayOn(StoryboardStage& stage) { stage.FramesFor(2100); }

void PreviewOverAndOver(StoryboardStage& stage) {
  stage.board->PreviewShot(GetFirst(stage)->GetShot(0), true);
  PlayOn(stage);
}

constexpr Begin BEGINS[] = {
    [](StoryboardStage& stage) { stage.board->PlaybackSequence(GetFirst(stage)); },
    [](StoryboardStage& stage) { stage.board->PlaybackSingleShot(GetFirst(stage)->GetShot(0)); },
    [](StoryboardStage& stage) { stage.board->PlaybackStory(stage.board->GetStory()), PlayOn(stage); },
    [](StoryboardStage& stage) {
      stage.board->SetLoop(true);
      stage.board->PlaybackSingleShot(GetFirst(stage)->GetShot(0));
      PlayOn(stage);
    },
    [](StoryboardStage& stage) {
      stage.board->PlaybackStory(stage.board->GetStory());
      stage.board->PausePlayback();
      stage.board->ResumePlayback();
    },
    PreviewOverAndOver,
};

/// Has a host act where a shot begins for the `place`th time: in the call that gives it the camera of the
/// shot, or in that which tells it of the move.
struct ActAtBegin {
  ActAtBegin(StoryboardStage& theStage, bool inApply, int place, std::function<void()> toDo)
      : stage(theStage), left(place), act(std::move(toDo)) {
    if (inApply)
      stage.hub.onApply = [this] {
        if (IsAtStart()) Count();
      };
    if (!inApply) stage.hub.onBeginShotHook = [this](Shot*) { Count(); };
  }
  ActAtBegin(const ActAtBegin&) = delete;
  ActAtBegin& operator=(const ActAtBegin&) = delete;
  ~ActAtBegin() { stage.hub.onApply = nullptr, stage.hub.onBeginShotHook = nullptr; }

  bool IsAtStart() const {
    for (std::uint64_t i = 0; i < 2; ++i) {
      if (stage.hub.view.eye == GetFirst(stage)->GetShot(i)->GetCameraParameters().eye) return true;
    }
    return false;
  }
  void Count() {
    if (--left == 0) act();
  }

  StoryboardStage& stage;
  int left;
  std::function<void()> act;
};

/// In every call in which a shot begins, each on a stage of its own: `act(stage)`, and `check(stage)` when
/// what has begun it is through.
template <class Act, class Check>
void ActWhereverAShotBegins(const std::vector<Begin>& begins, const Act& act, const Check& check) {
  int acted = 0;
  for (std::size_t i = 0; i < begins.size(); ++i) {
    for (const int place : {1, 2, -1, -2}) {
      StoryboardStage each;
      each.AddSequence(2);
      {
        const ActAtBegin host(each, place > 0, std::abs(place), [&] { act(each), ++acted; });
        begins[i](each);
        if (host.left > 0) continue;
      }
      SCOPED_TRACE(::testing::Message() << "begin " << i << ", place " << place);
      check(each);
    }
  }
  EXPECT_GE(acted, static_cast<int>(2 * begins.size()));
}

TEST(PlaybackStages, a_stop_while_a_shot_begins_is_a_stop) {
  ActWhereverAShotBegins(
      {std::begin(BEGINS), std::end(BEGINS)},
      [](StoryboardStage& each) { EXPECT_TRUE(each.board->StopPlayback()); },
      [](StoryboardStage& each) {
        EXPECT_FALSE(each.board->IsPlayingBack());
        EXPECT_FALSE(each.board->IsPreviewing());
        EXPECT_FALSE(each.hub.IsShotActive());
        const auto& lines = each.journal.lines;
        EXPECT_EQ(std::count(lines.begin(), lines.end(), "stopped"),
                  1 + std::count(lines.begin(), lines.end(), "resumed"));
        each.Frame();
        EXPECT_EQ(each.history.GetOpenCount(), 0);
      });
}

TEST(PlaybackStages, a_pause_while_a_shot_begins_is_a_pause) {
  ActWhereverAShotBegins(
      {std::begin(BEGINS), std::end(BEGINS) - 2},  // the others go on themselves, or it is a stop there
      [](StoryboardStage& each) { EXPECT_TRUE(each.board->PausePlayback()); },
      [](StoryboardStage& each) {
        EXPECT_TRUE(each.board->IsPaused());
        EXPECT_FALSE(each.board->IsPlayingBack());
        EXPECT_FALSE(each.hub.IsShotActive());
        EXPECT_TRUE(each.board->ResumePlayback());
        EXPECT_TRUE(each.hub.IsShotActive());
      });
}

TEST(PlaybackStages, what_is_begun_while_a_shot_begins_goes_on) {
  const auto getLast = [](const StoryboardStage& each) {
    return each.board->GetStory()->GetSequence(1)->GetShot(0);
  };
  ActWhereverAShotBegins(
      {std::begin(BEGINS), std::end(BEGINS)},
      [](StoryboardStage& each) {
        EXPECT_TRUE(each.board->PlaybackSingleShot(each.AddShot(*each.AddSequence(), 30.0)));
      },
      [&](StoryboardStage& each) {
        EXPECT_TRUE(each.board->IsPlayingBack());
        EXPECT_EQ(each.board->GetParts().playback.GetCurrentShot(), getLast(each));
        ASSERT_TRUE(each.hub.IsShotActive());
        EXPECT_LT(each.hub.GetActiveShot()->GetUnitTime(), 0.1);  // of 30 seconds
        EXPECT_EQ(each.hub.view.centre, getLast(each)->GetCameraParameters().centre);
      });
}

TEST_F(PlaybackTest, a_preview_within_a_preview_goes_back_to_the_view_of_before_both) {
  ShotSpecification* const shot = AddShot(*AddSequence());
  const Vector3 before = hub.view.eye;
  observer.onCall = [&] {
    observer.onCall = nullptr;
    EXPECT_TRUE(board->PreviewShot(shot, true));
  };
  EXPECT_FALSE(board->PreviewShot(shot, false));  // it is the other one that runs
  EXPECT_TRUE(board->IsPreviewing());
  Frame();
  board->StopPlayback();
  EXPECT_EQ(hub.view.eye, before);
}

TEST_F(PlaybackTest, a_playback_that_is_begun_in_the_word_of_a_target_goes_on) {
  Sequence* const sequence = AddSequence(2);
  observer.onCall = [&] {
    observer.onCall = nullptr;
    EXPECT_TRUE(board->PlaybackSequence(sequence));
  };
  EXPECT_FALSE(board->TargetShot(sequence->GetShot(1)));
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), sequence->GetShot(0));
  Frame(1000);
  EXPECT_TRUE(hub.IsShotActive());  // it lasts two seconds, and a target a quarter of one
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

TEST_F(PlaybackTest, a_shot_that_is_deleted_as_its_camera_is_shown_does_not_begin) {
  Sequence* const sequence = AddSequence(2);
  bool deleted = false;
  hub.onApply = [&] {
    if (!std::exchange(deleted, true)) sequence->DeleteShot(sequence->GetFirstShot());
  };
  board->PlaybackSingleShot(sequence->GetFirstShot());
  for (int i = 0; i < 3; ++i) Frame();
  EXPECT_TRUE(deleted);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(sequence->GetShotCount(), 1U);
}

}  // namespace
