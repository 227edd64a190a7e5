#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "zovhost/scene.h"

namespace zovhost {

/// Takes over a mesh as soon as it is whole; the next one gets the next index.
using MeshSink = std::function<void(SceneMesh&& mesh)>;

struct ImportOptions {
  MeshSink sink = {};  // the data keep no meshes where there is one
  /// The most that the pixels of all pictures may take.
  std::size_t imageBytes = std::size_t{1} << 30;
};

/// Reads a model with assimp in this very process. False puts the reason into `error`, without the name of
/// the file. assimp reads some forty formats with forty hand-written parsers; a broken file can make one of
/// them crash, hang or take all memory, so whoever cannot afford that calls LoadScene, which contains it.
/// What `progress` answers is heard between two meshes.
bool ImportScene(const std::filesystem::path& path, const Progress& progress, SceneData& data,
                 std::string& error, const ImportOptions& options = {});

}  // namespace zovhost
