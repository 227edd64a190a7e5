#include "scene/model_folder.h"

#include <algorithm>

namespace zovhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* NO_FILE = "it is not a regular file and is not read";

bool IsBelow(const fs::path& file, const fs::path& folder) {
  const auto [end, ignored] = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
  return !folder.empty() && end == folder.end();
}

}  // namespace

ModelFolder::ModelFolder(const fs::path& file) {
  std::error_code failure;
  const fs::path parent = file.parent_path();
  folder = fs::canonical(parent.empty() ? fs::path(".") : parent, failure);
  model = fs::canonical(file, failure);
}

fs::path ModelFolder::Find(const fs::path& written, std::string& reason) const {
  std::error_code failure;
  fs::path file = fs::canonical(written, failure);
  if (failure) {  // a pipe behind a name of the system's has no place of its own
    if (fs::exists(written, failure)) reason = NO_FILE;
    return {};
  }
  if (fs::is_directory(file, failure)) return {};
  if (file != model && !IsBelow(file, folder)) {
    reason = "it lies outside of the model's folder and is not read";
    return {};
  }
  if (fs::is_regular_file(file, failure)) return file;
  reason = NO_FILE;
  return {};
}

}  // namespace zovhost
