#pragma once

#include "commands/view_commands.h"

namespace zovview {

// What can be done with the story of a view; none of it does anything in a view without one.

void ToggleStoryboard(const ViewTarget& target);
bool IsStoryboardShown(const ViewTarget& target);
void UndoEdit(const ViewTarget& target);
void RedoEdit(const ViewTarget& target);

/// With a shot of the view of now.
void AddSequence(const ViewTarget& target);
/// Of the view of now, to the sequence that is selected; without one a sequence.
void AddShot(const ViewTarget& target);

/// The story; what plays pauses, and what is paused goes on.
void PlayStory(const ViewTarget& target);
bool IsStoryPlaying(const ViewTarget& target);
void StopStory(const ViewTarget& target);
void ToggleLoop(const ViewTarget& target);
bool IsLooping(const ViewTarget& target);
/// The story with nothing else over the view.
void PresentStory(const ViewTarget& target);

// Of the shot whose menu was opened last, or else of the one in the editor.

void PlayShot(const ViewTarget& target);
void PreviewShot(const ViewTarget& target);
void FlyToShot(const ViewTarget& target);
void EditShot(const ViewTarget& target);
void DeleteShot(const ViewTarget& target);
/// The next press of the left button walks, into that shot.
void RecordWalk(const ViewTarget& target);

template <StoryRequest REQUEST>
void AskForStory(const ViewTarget& target) {
  if (target.askForStory) target.askForStory(REQUEST);
}

}  // namespace zovview
