#include "story/storyboard_commands.h"

#include "korvane/shot_specification.h"

namespace Korvane {

void StoryboardUndoCommand::UpdateStoryboard() const {
  if (Storyboard* const board = storyboard.Get()) board->RebuildDisplayElements();
}

void StoryboardUndoCommand::OpenShotEditor(ShotSpecification* shot) const {
  if (Storyboard* const board = storyboard.Get()) board->EditShot(shot);
}

void StoryboardUndoCommand::CloseShotEditor(const Sequence* sequence) const {
  Storyboard* const board = storyboard.Get();
  if (board == nullptr || sequence == nullptr) return;
  if (sequence->ContainsShot(board->GetShotInShotEditor())) board->CloseShotEditor();
}

void StoryboardUndoCommand::CloseShotEditor(const ShotSpecification* shot) const {
  Storyboard* const board = storyboard.Get();
  if (board != nullptr && shot != nullptr && board->GetShotInShotEditor() == shot) board->CloseShotEditor();
}

}  // namespace Korvane
