// A story from a file, edited, and written again.
#include "zovhost/story_file.h"

#include <cstdio>

#include "korvane/story.h"

namespace {

bool LengthenShots(const std::filesystem::path& path, std::string& error) {
  zovhost::StoryFile file;
  const std::unique_ptr<Korvane::Story> story = file.Read(path, error);
  if (story == nullptr) return false;
  for (std::uint64_t i = 0; i < story->GetSequenceCount(); ++i) {
    const Korvane::Sequence& sequence = *story->GetSequence(i);
    for (std::uint64_t k = 0; k < sequence.GetShotCount(); ++k) {
      Korvane::ShotSpecification& shot = *sequence.GetShot(k);
      shot.SetDuration(2.0 * shot.GetDuration());
    }
  }
  return file.Write(*story, path, error);
}

}  // namespace

int main() {
  const char* const path = "story.json";
  Korvane::Story story;
  auto sequence = std::make_unique<Korvane::Sequence>();
  sequence->AddShot(std::make_unique<Korvane::ShotSpecification>(Korvane::CameraParameters()).release());
  story.AddSequence(sequence.release());

  std::string error;
  zovhost::StoryFile file;
  const bool good = file.Write(story, path, error) && LengthenShots(path, error);
  if (!good) std::fprintf(stderr, "%s\n", error.c_str());
  const std::unique_ptr<Korvane::Story> read = file.Read(path, error);
  std::remove(path);
  return good && read != nullptr && read->GetFirstSequence()->GetFirstShot()->GetDuration() == 6.0 ? 0 : 1;
}
