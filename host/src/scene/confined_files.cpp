#include "scene/confined_files.h"

namespace zovhost {

namespace {

constexpr std::size_t MOST_LINES = 20;  // a file may name any number of others

}  // namespace

Assimp::IOStream* ConfinedFiles::Open(const char* path, const char* mode) {
  const std::filesystem::path file = Find(path);
  const bool reading = mode != nullptr && mode[0] == 'r' && std::string(mode).find('+') == std::string::npos;
  return reading && !file.empty() ? DefaultIOSystem::Open(file.string().c_str(), mode) : nullptr;
}

// An importer puts its folder before an absolute name as well, which then stands behind two strokes.
std::filesystem::path ConfinedFiles::Find(const char* path) const {
  std::string name = path;
  std::string reason;
  std::filesystem::path file = folder.Find(name, reason);
  const std::size_t strokes = name.rfind("//");
  if (file.empty() && reason.empty() && strokes != std::string::npos) {
    name.erase(0, strokes + 1);
    file = folder.Find(name, reason);
  }
  if (!reason.empty()) Tell(std::filesystem::path(name).lexically_normal().string() + ": " + reason);
  return file;
}

void ConfinedFiles::Tell(const std::string& line) const {
  if (told.size() < MOST_LINES && told.insert(line).second) lines.push_back(line);
}

}  // namespace zovhost
