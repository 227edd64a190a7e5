#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace Korvane {
class Story;
}

namespace zovhost {

struct UnknownFields;

/// Stories in files: JSON, of which docs/stories.md tells each field.
///
///     zovhost::StoryFile file;
///     std::unique_ptr<Korvane::Story> story = file.Read("house.json", error);
///     if (story != nullptr) storyboard.SetStory(story.release());
///     ...
///     file.Write(*storyboard.GetStory(), "house.json", error);
///
/// Every field comes back as it was, numbers bit for bit, but for wide characters that are no characters:
/// they become U+FFFD.
///
/// The story is the caller's. What the file says beyond what is known here stays with this object, and is
/// written again where the object of which it was said stands by then: with a sequence or a shot that has
/// moved, been renamed, edited, or taken out and put back, and no longer once it has been deleted. A copy of
/// a shot has none of it. What is said of a camera stays with its shot; with an element of a recorded walk,
/// while the element stands at its place as it was read.
///
/// One thread, that of the story. To write a story that was never read, a StoryFile that has read nothing.
class StoryFile {
 public:
  StoryFile();
  ~StoryFile();
  StoryFile(const StoryFile&) = delete;
  StoryFile& operator=(const StoryFile&) = delete;

  /// Null puts one line that names the file into `error`, and this object is as it was.
  std::unique_ptr<Korvane::Story> Read(const std::filesystem::path& path, std::string& error);
  /// The file appears whole or not at all: what was there before stays until then. False puts one line into
  /// `error`: for a file that cannot be written, a shot or a camera with a number that stands for nothing,
  /// and a story beyond the limits within which one is read.
  bool Write(const Korvane::Story& story, const std::filesystem::path& path, std::string& error) const;

  /// The same for texts in memory. Null, or an empty text, for a failure.
  std::unique_ptr<Korvane::Story> Parse(std::string_view text, std::string& error);
  std::string Format(const Korvane::Story& story, std::string& error) const;

 private:
  std::unique_ptr<UnknownFields> unknown;  // of the story that was read last
};

}  // namespace zovhost
