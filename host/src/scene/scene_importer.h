#pragma once

#include <filesystem>
#include <string>

#include "zovhost/scene.h"

namespace zovhost {

/// Reads a model with assimp in this very process. False puts the reason into `error`, without the name of
/// the file. assimp reads some forty formats with forty hand-written parsers; a broken file can make one of
/// them crash, hang or take all memory, so whoever cannot afford that calls LoadScene, which contains it.
bool ImportScene(const std::filesystem::path& path, const Progress& progress, SceneData& data,
                 std::string& error);

}  // namespace zovhost
