// Story files. What is read is written, and what is written is read as the same again.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "korvane/korvane.h"
#include "zovhost/story_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  std::string error;
  zovhost::StoryFile file;
  const auto story = file.Parse({reinterpret_cast<const char*>(bytes), count}, error);
  if (story == nullptr) {
    if (error.empty() || error.find('\n') != std::string::npos) std::abort();
    return 0;
  }
  const std::string text = file.Format(*story, error);
  if (text.empty()) std::abort();
  zovhost::StoryFile again;
  const auto same = again.Parse(text, error);
  if (same == nullptr || again.Format(*same, error) != text) std::abort();
  return 0;
}
