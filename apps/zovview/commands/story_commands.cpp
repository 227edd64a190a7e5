#include "commands/story_commands.h"

#include "stories/view_story.h"
#include "views/selection.h"

namespace zovview {

using Korvane::ShotSpecification;
using Korvane::Storyboard;

namespace {

ShotSpecification* FindShot(const Storyboard& board) {
  ShotSpecification* const ofMenu = board.GetShotForOpenMenu();
  return ofMenu != nullptr ? ofMenu : board.GetShotInShotEditor();
}

void WithShot(const ViewTarget& target, bool (Storyboard::*act)(ShotSpecification*)) {
  if (target.story == nullptr) return;
  Storyboard& board = target.story->GetBoard();
  if (ShotSpecification* const shot = FindShot(board)) (board.*act)(shot);
}

// Of nothing there is no story: it would be lost when the first model stands there.
ViewStory* FindStoryOfModel(const ViewTarget& target) {
  return target.selection.GetScene() != nullptr ? target.story : nullptr;
}

}  // namespace

// ---- the panel ----

void ToggleStoryboard(const ViewTarget& target) {
  if (ViewStory* const story = FindStoryOfModel(target)) story->Show(!story->IsShown());
}
bool IsStoryboardShown(const ViewTarget& target) {
  return target.story != nullptr && target.story->IsShown();
}

// ---- edits ----

void UndoEdit(const ViewTarget& target) {
  if (target.story != nullptr) target.story->Undo();
}
void RedoEdit(const ViewTarget& target) {
  if (target.story != nullptr) target.story->Redo();
}

void AddSequence(const ViewTarget& target) {
  ViewStory* const story = FindStoryOfModel(target);
  if (story == nullptr) return;
  story->Show(true);
  story->GetBoard().CreateSequence();
}

void AddShot(const ViewTarget& target) {
  ViewStory* const story = FindStoryOfModel(target);
  if (story == nullptr) return;
  Storyboard& board = story->GetBoard();
  Korvane::Sequence* const sequence = board.GetSelectedSequence();
  if (sequence == nullptr) return AddSequence(target);
  story->Show(true);
  board.CreateShot(sequence);
}

// ---- playing ----

void PlayStory(const ViewTarget& target) {
  if (target.story == nullptr) return;
  Storyboard& board = target.story->GetBoard();
  if (board.IsPlayingBack()) {
    board.PausePlayback();
  } else if (board.IsPaused()) {
    board.ResumePlayback();
  } else {
    board.PlaybackStory(board.GetStory());
  }
}
bool IsStoryPlaying(const ViewTarget& target) {
  return target.story != nullptr && target.story->GetBoard().IsPlayingBack();
}

void StopStory(const ViewTarget& target) {
  if (target.story != nullptr) target.story->Cancel();
}

void ToggleLoop(const ViewTarget& target) {
  if (target.story == nullptr) return;
  Storyboard& board = target.story->GetBoard();
  board.SetLoop(!board.GetLoop());
  target.hub.RequestApplicationUpdate();
}
bool IsLooping(const ViewTarget& target) {
  return target.story != nullptr && target.story->GetBoard().GetLoop();
}

void PresentStory(const ViewTarget& target) {
  if (target.story != nullptr) target.story->Present();
}

// ---- a shot ----

void PlayShot(const ViewTarget& target) { WithShot(target, &Storyboard::PlaybackSingleShot); }
void FlyToShot(const ViewTarget& target) { WithShot(target, &Storyboard::TargetShot); }
void EditShot(const ViewTarget& target) { WithShot(target, &Storyboard::EditShot); }
void DeleteShot(const ViewTarget& target) { WithShot(target, &Storyboard::DeleteShot); }

void PreviewShot(const ViewTarget& target) {
  if (target.story == nullptr) return;
  Storyboard& board = target.story->GetBoard();
  if (ShotSpecification* const shot = FindShot(board)) board.PreviewShot(shot, false);
}

void RecordWalk(const ViewTarget& target) {
  if (target.story == nullptr) return;
  Storyboard& board = target.story->GetBoard();
  if (board.EditShot(FindShot(board))) board.BeginRecordWalk();
}

}  // namespace zovview
