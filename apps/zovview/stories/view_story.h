#pragma once

#include <filesystem>
#include <string>

#include "korvane/storyboard.h"
#include "korvane/storyboard_observer.h"
#include "korvane/undo_queue.h"
#include "zovhost/shot_editor_panel.h"
#include "zovhost/story_file.h"

namespace zovhost {
class ViewHub;
}

namespace zovview {

class ViewerViewManager;

/// The story of a view: its storyboard and shot editor, what undoes its edits, and the file that it is kept
/// in.
class ViewStory {
 public:
  /// Points between the corner of the view and the panel.
  static constexpr int MARGIN = 12;
  /// Of what the panel takes of the view, in points from its lower edge.
  static constexpr float HEIGHT = MARGIN + 243.0F + 16.0F;

  ViewStory(ViewerViewManager& manager, zovhost::ViewHub& hub);
  ~ViewStory();
  ViewStory(const ViewStory&) = delete;
  ViewStory& operator=(const ViewStory&) = delete;

  Korvane::Storyboard& GetBoard() { return board; }
  const Korvane::Storyboard& GetBoard() const { return board; }
  zovhost::ShotEditorPanel& GetEditor() { return editor; }

  bool IsShown() const { return board.IsVisible(); }
  void Show(bool shown);
  bool Undo();
  bool Redo();

  /// The story from its begin, with nothing over the view, until it ends or is cancelled. False when there is
  /// nothing to play.
  bool Present();
  /// The view is the story's alone.
  bool IsPresenting() const;
  /// Ends a recording of a walk, or what plays. False when there is neither.
  bool Cancel();

  // ---- the file; what could have been undone goes with the story ----

  /// An empty story without a file. Once when the view manager has been created, and whenever.
  void BeginEmpty();
  /// False, with one line in `error` and the story as it was.
  bool Read(const std::filesystem::path& path, std::string& error);
  /// False with one line in `error`.
  bool Write(const std::filesystem::path& path, std::string& error);
  /// The story is another than its file's.
  bool IsChanged() const;
  /// Empty for none.
  const std::filesystem::path& GetPath() const { return path; }

 private:
  // Brings the panels back with the end of a presentation.
  class PresentationEnd : public Korvane::StoryboardObserver {
   public:
    explicit PresentationEnd(Korvane::Storyboard* subject) : StoryboardObserver(subject) {}
    void OnOpened(Korvane::Storyboard::Mode /*mode*/) override {}
    void OnClosed() override {}
    void OnModeChanged(Korvane::Storyboard::Mode /*mode*/) override {}
    void OnPartClicked(StoryboardPart /*part*/) override {}
    void OnShotCreated() override {}
    void OnPlaybackStory(Korvane::Story* /*story*/) override {}
    void OnPlaybackSequence(Korvane::Sequence* /*sequence*/) override {}
    void OnPlaybackSingleShot(Korvane::ShotSpecification* /*shot*/) override {}
    void OnPreviewShot(Korvane::ShotSpecification* /*shot*/, bool /*loop*/) override {}
    void OnPlaybackStopped() override;
    void OnPlaybackResumed() override {}
    void OnTargetShot(Korvane::ShotSpecification* /*shot*/) override {}
  };

  void Take(Korvane::Story* story, const std::filesystem::path& from);
  std::string FormatStory() const;

  ViewerViewManager& manager;
  zovhost::ViewHub& hub;
  zovhost::ShotEditorPanel editor;
  Korvane::UndoQueue queue;
  Korvane::Storyboard board;
  PresentationEnd presentationEnd;
  zovhost::StoryFile file;
  std::filesystem::path path;
  std::string kept;  // the story as its file has it, or as it began
};

}  // namespace zovview
