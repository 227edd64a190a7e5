// Model files, of the kind that the first byte tells, read as the viewer reads them: by a child process
// within limits, and made a scene. It is slow, a child for each; what it looks at is this side of the border.
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "scene/contained_import.h"

namespace {

using namespace std::chrono_literals;

constexpr const char* EXTENSIONS[] = {".obj", ".gltf", ".glb", ".ply", ".stl", ".off", ".dae", ".3mf",
                                      ".fbx", ".ifc",  ".dxf", ".x",   ".3ds", ".lwo", ".ac",  ".ms3d"};

// Of this process; gone with it.
struct Folder {
  Folder() { std::filesystem::create_directories(path); }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("model_fuzzer." + std::to_string(getpid()));
};

void RequireSound(const zovhost::Scene& scene) {
  if (!scene.GetMin().IsFinite() || !scene.GetMax().IsFinite() || scene.GetTriangleCount() == 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  if (count == 0) return 0;
  static const Folder folder;
  const std::filesystem::path path =
      folder.path / (std::string("model") + EXTENSIONS[bytes[0] % std::size(EXTENSIONS)]);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes) + 1, static_cast<std::streamsize>(count - 1));
  zovhost::SceneData data;
  std::string error;
  const zovhost::ImportLimits limits{300ms, 10s, 1e9, 1e8, 1 << 24};
  if (zovhost::ImportContained(path, limits, {}, data, error)) {
    const auto scene = zovhost::MakeScene(std::move(data), error);
    if (scene != nullptr) RequireSound(*scene);
  }
  std::filesystem::remove(path);
  return 0;
}
