#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "zovhost/scene.h"

namespace zovhost {

/// Takes over a mesh as soon as it is whole; the next one gets the next index.
using MeshSink = std::function<void(SceneMesh&& mesh)>;

/// Reads a model with assimp in this very process. False puts the reason into `error`, without the name of
/// the file. assimp reads some forty formats with forty hand-written parsers; a broken file can make one of
/// them crash, hang or take all memory, so whoever cannot afford that calls LoadScene, which contains it.
/// With a `sink` the data keep no meshes. What `progress` answers is heard between two meshes.
bool ImportScene(const std::filesystem::path& path, const Progress& progress, SceneData& data,
                 std::string& error, const MeshSink& sink = {});

}  // namespace zovhost
