#include "files/model_source.h"

#include <cstdlib>
#include <new>
#include <sstream>
#include <system_error>

#include "files/progress_line.h"

namespace zovview {

namespace fs = std::filesystem;

namespace {

constexpr const char* SAMPLE_HOUSE = "assimp/models/IFC/AC14-FZK-Haus.ifc";
constexpr const char* TOO_LARGE = ": reading it takes more memory than there is";
constexpr const char* DATA_DIRECTORIES = "/usr/local/share:/usr/share";

std::string GetDataDirectories() {
  const char* const named = std::getenv("XDG_DATA_DIRS");
  const bool useful = named != nullptr && *named != '\0';
  // The usual places count in any case: some sessions name only their own.
  return useful ? std::string(named) + ":" + DATA_DIRECTORIES : DATA_DIRECTORIES;
}

}  // namespace

std::string ModelSource::GetName() const {
  return file.empty() ? "generated building" : file.filename().string();
}

ModelSource FindDefaultModel() {
  std::istringstream directories(GetDataDirectories());
  for (std::string directory; std::getline(directories, directory, ':');) {
    const fs::path house = fs::path(directory) / SAMPLE_HOUSE;
    std::error_code failure;
    if (fs::is_regular_file(house, failure)) return {house};
  }
  return {};
}

LoadedModel LoadModel(const ModelSource& source, const zovhost::Progress& progress) try {
  LoadedModel model{source, nullptr, {}};
  model.scene = source.file.empty() ? zovhost::MakeDemoBuilding()
                                    : zovhost::LoadScene(source.file, progress, model.error);
  if (model.scene == nullptr) return model;
  for (const std::string& line : model.scene->GetWarnings()) PrintLine(source.GetName() + ": " + line);
  return model;
} catch (const std::bad_alloc&) {
  return {source, nullptr, source.GetName() + TOO_LARGE};
} catch (const std::system_error&) {  // no thread can be had
  return {source, nullptr, source.GetName() + TOO_LARGE};
}

}  // namespace zovview
