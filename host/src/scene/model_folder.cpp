#include "scene/model_folder.h"

#include <algorithm>

namespace zovhost {

namespace fs = std::filesystem;

namespace {

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
  if (failure || fs::is_directory(file, failure)) return {};
  if (file != model && !IsBelow(file, folder)) {
    reason = "it lies outside of the model's folder and is not read";
    return {};
  }
  if (fs::is_regular_file(file, failure)) return file;
  reason = "it is not a regular file and is not read";
  return {};
}

}  // namespace zovhost
