#include "stories/view_story.h"

#include <memory>

#include "korvane/story.h"
#include "views/viewer_view_manager.h"
#include "zovhost/view_hub.h"

namespace zovview {

using Korvane::Storyboard;

void ViewStory::PresentationEnd::OnPlaybackStopped() {
  if (!storyboard->IsPaused()) storyboard->SetMode(Storyboard::MODE_EDITING);
}

ViewStory::ViewStory(ViewerViewManager& viewManager, zovhost::ViewHub& viewHub)
    : manager(viewManager), hub(viewHub), presentationEnd(&board) {
  board.SetShotEditor(&editor);
  board.SetUndoQueue(&queue);
  board.SetMargin(MARGIN);
  board.SetFadeWhilePresenting(true);
  board.SetReleaseEndsHeight(true);
  board.AddObserver(&presentationEnd);
  manager.SetStoryboard(&board);
}

ViewStory::~ViewStory() {
  manager.SetStoryboard(nullptr);
  board.RemoveObserver(&presentationEnd);
}

void ViewStory::Show(bool shown) {
  if (shown != IsShown()) board.SetVisible(shown);
}

bool ViewStory::Undo() {
  hub.RequestApplicationUpdate();
  return queue.Undo();
}

bool ViewStory::Redo() {
  hub.RequestApplicationUpdate();
  return queue.Redo();
}

// ---- playing ----

bool ViewStory::Present() {
  board.StopPlayback();
  board.SetMode(Storyboard::MODE_PRESENTING);
  if (board.PlaybackStory(board.GetStory())) return true;
  board.SetMode(Storyboard::MODE_EDITING);
  return false;
}

bool ViewStory::IsPresenting() const {
  return board.GetMode() == Storyboard::MODE_PRESENTING && board.IsPlayingBack();
}

bool ViewStory::Cancel() {
  const bool isPaused = board.IsPaused();
  const bool cancelled = board.CancelRecordWalk() || board.StopPlayback();
  if (isPaused) board.SetMode(Storyboard::MODE_EDITING);  // which nobody is told of
  hub.RequestApplicationUpdate();
  return cancelled;
}

// ---- the file ----

void ViewStory::BeginEmpty() { Take(new Korvane::Story, {}); }

bool ViewStory::Read(const std::filesystem::path& from, std::string& error) {
  std::unique_ptr<Korvane::Story> story = file.Read(from, error);
  if (story == nullptr) return false;
  Take(story.release(), from);
  return true;
}

bool ViewStory::Write(const std::filesystem::path& to, std::string& error) {
  const Korvane::Story* const story = board.GetStory();
  if (story == nullptr || !file.Write(*story, to, error)) return false;
  path = to;
  kept = FormatStory();
  return true;
}

bool ViewStory::IsChanged() const { return FormatStory() != kept; }

void ViewStory::Take(Korvane::Story* story, const std::filesystem::path& from) {
  Cancel();
  board.SetStory(story);
  queue.Clear();
  path = from;
  kept = FormatStory();
}

// Empty for one that cannot be kept at all.
std::string ViewStory::FormatStory() const {
  std::string ignored;
  const Korvane::Story* const story = board.GetStory();
  return story != nullptr ? file.Format(*story, ignored) : std::string();
}

}  // namespace zovview
