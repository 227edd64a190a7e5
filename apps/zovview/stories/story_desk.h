#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "files/file_question.h"
#include "stories/story_export.h"
#include "stories/story_request.h"

namespace zovview {

class ViewStory;

/// Where a story comes from and goes to: asks for its file, asks before changes are lost, and makes it a
/// film. What it asks itself stands over the window; to be drawn within a frame of the Gui.
class StoryDesk {
 public:
  /// What it shows.
  enum class Page : int { None, Losing, Exporting, Export, File };

  struct Surroundings {
    std::function<void()> requestFrame;
    /// One line for the user.
    std::function<void(const std::string& line)> tell;
    /// Where files of stories go at first.
    std::function<std::filesystem::path()> findFolder;
    /// A file has become the story of the view.
    std::function<void(const std::filesystem::path& file)> opened;
    /// Null with one line in `error`.
    std::function<std::unique_ptr<StoryExport>(const Korvane::Story& story,
                                               const StoryExport::Options& options, std::string& error)>
        beginExport;
    /// Whom the files of stories are asked of, as those of models are. Empty: its own page.
    std::function<void(FileQuestion question)> askForFile = {};
  };

  explicit StoryDesk(Surroundings around) : surroundings(std::move(around)) {}

  /// The story is borrowed for as long as something is asked.
  void Ask(StoryRequest request, ViewStory& of);
  /// Runs `then` at once where no change of the story is lost by it, or else when the user has saved or
  /// dropped the changes, and never when the user cancels.
  void Guard(ViewStory& of, std::function<void()> then);
  /// A file that was named outside, as by a drop on the window.
  void Open(const std::filesystem::path& file, ViewStory& of);
  /// On its page. Nothing while something is asked already.
  void AskForFile(FileQuestion wanted);
  void Draw();
  /// A picture more of an export that goes on; before each frame.
  void Advance();

  bool IsOpen() const { return page != Page::None; }
  Page GetPage() const { return page; }
  /// Of the page of a file.
  const FileQuestion& GetQuestion() const { return question; }
  bool IsExporting() const { return exported != nullptr; }

  // What its buttons do.

  void SetPath(const std::string& value) { path = value; }
  const std::string& GetPath() const { return path; }
  /// The button on the left: opens, saves, exports.
  void Confirm();
  /// Loses the changes.
  void Drop();
  void Cancel();
  /// Why the last attempt failed; empty for none.
  const std::string& GetProblem() const { return problem; }

 private:
  void Show(Page next, const std::string& suggestion = {});
  void Finish();
  void AskForStory(bool saves);
  bool Read(ViewStory& into, const std::filesystem::path& file, std::string& error) const;
  void TakeFile();
  std::filesystem::path FindTyped() const;
  void BeginExport();
  void DrawPage();
  void DrawLosing();
  void DrawFile();
  void DrawExport();
  void DrawExporting();

  const Surroundings surroundings;
  Page page = Page::None;
  ViewStory* story = nullptr;
  FileQuestion question;       // of the page of a file
  std::function<void()> then;  // after a question; empty: nothing
  std::string path;            // UTF-8
  std::string problem;
  bool focuses = false;  // its text is to have the keys
  int rate = 1;          // rows of tables
  int size = 0;
  std::unique_ptr<StoryExport> exported;
};

/// By its name.
bool IsStoryFile(const std::filesystem::path& file);

}  // namespace zovview
