#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "zovhost/scene.h"

namespace zovview {

/// What to open: a file, or the generated building where there is none.
struct ModelSource {
  std::filesystem::path file;  // empty: the generated building
  std::string GetName() const;
};

/// What came of it: a scene, or one line that says why not.
struct LoadedModel {
  ModelSource source;
  std::unique_ptr<zovhost::Scene> scene;
  std::string error;
};

/// The sample house where the system has it installed, looked for in its data directories; otherwise the
/// generated building.
ModelSource FindDefaultModel();

/// What was left out of the file is told on the error stream, a line each.
LoadedModel LoadModel(const ModelSource& source, const zovhost::Progress& progress);

}  // namespace zovview
