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

std::filesystem::path ConfinedFiles::Find(const char* path) const {
  std::string reason;
  std::filesystem::path file = folder.Find(path, reason);
  if (!reason.empty()) Tell(std::filesystem::path(path).lexically_normal().string() + ": " + reason);
  return file;
}

void ConfinedFiles::Tell(const std::string& line) const {
  if (told.size() < MOST_LINES && told.insert(line).second) lines.push_back(line);
}

}  // namespace zovhost
