#pragma once

#include <filesystem>
#include <string>

namespace zovhost {

/// The files that a model may have read: itself, and regular files in its folder and below. Links are
/// followed before that is judged, so none leads out.
class ModelFolder {
 public:
  explicit ModelFolder(const std::filesystem::path& model);

  const std::filesystem::path& GetPath() const { return folder; }

  /// Where the file really lies. Empty when it is not there, or when the model may not have it read: only
  /// then is `reason` set.
  std::filesystem::path Find(const std::filesystem::path& written, std::string& reason) const;

 private:
  std::filesystem::path folder;  // both without links
  std::filesystem::path model;
};

}  // namespace zovhost
