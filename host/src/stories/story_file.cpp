#include "zovhost/story_file.h"

#include <utility>

#include "stories/story_reader.h"
#include "stories/story_writer.h"
#include "zovhost/whole_file.h"

namespace zovhost {

StoryFile::StoryFile() : unknown(std::make_unique<UnknownFields>()) {}
StoryFile::~StoryFile() = default;

std::unique_ptr<Korvane::Story> StoryFile::Parse(std::string_view text, std::string& error) {
  Json file;
  if (!ParseJson(text, file, error)) return nullptr;
  auto left = std::make_unique<UnknownFields>();
  std::unique_ptr<Korvane::Story> story = ReadStory(std::move(file), *left, error);
  if (story != nullptr) unknown = std::move(left);
  return story;
}

std::string StoryFile::Format(const Korvane::Story& story, std::string& error) const {
  OrderedJson file;
  if (!WriteStory(story, *unknown, file, error)) return {};
  std::string text = PrintJson(file);
  Json readable;  // what would not be read is not written
  return ParseJson(text, readable, error) ? text : std::string();
}

std::unique_ptr<Korvane::Story> StoryFile::Read(const std::filesystem::path& path, std::string& error) {
  std::string text;
  if (!ReadWholeFile(path, LARGEST_TEXT, text, error)) return nullptr;
  std::unique_ptr<Korvane::Story> story = Parse(text, error);
  if (story == nullptr) error.insert(0, path.string() + ": ");
  return story;
}

bool StoryFile::Write(const Korvane::Story& story, const std::filesystem::path& path,
                      std::string& error) const {
  const std::string text = Format(story, error);
  if (text.empty()) {
    error.insert(0, path.string() + ": ");
    return false;
  }
  WholeFile file(path);
  file.Write(text.data(), text.size());
  return file.Finish(error);
}

}  // namespace zovhost
