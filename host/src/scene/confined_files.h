#pragma once

#include <assimp/DefaultIOSystem.h>

#include <set>
#include <string>
#include <vector>

#include "scene/model_folder.h"

namespace zovhost {

/// The importer's way to files: those of the model's folder, for reading. A file that is there and is refused
/// becomes a line, once.
class ConfinedFiles : public Assimp::DefaultIOSystem {
 public:
  /// Both outlive this.
  ConfinedFiles(const ModelFolder& modelFolder, std::vector<std::string>& refusalLines)
      : folder(modelFolder), lines(refusalLines) {}

  bool Exists(const char* path) const override { return !Find(path).empty(); }
  Assimp::IOStream* Open(const char* path, const char* mode) override;

 private:
  std::filesystem::path Find(const char* path) const;
  void Tell(const std::string& line) const;

  const ModelFolder& folder;
  std::vector<std::string>& lines;
  mutable std::set<std::string> told;
};

}  // namespace zovhost
