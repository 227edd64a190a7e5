#include "zovhost/whole_file.h"

#include <cerrno>
#include <cstring>
#include <random>

namespace zovhost {

WholeFile::WholeFile(const std::filesystem::path& path) : finalPath(path), temporaryPath(path) {
  // Two programs that write the same picture at once must not write into the same temporary file.
  temporaryPath += ".part" + std::to_string(std::random_device()());
  file = std::fopen(temporaryPath.string().c_str(), "wb");
  Note(file != nullptr);
}

WholeFile::~WholeFile() {
  if (file == nullptr) return;
  std::fclose(file);
  std::error_code ignored;
  std::filesystem::remove(temporaryPath, ignored);
}

void WholeFile::Note(bool success) {
  if (!success && failure == 0) failure = errno != 0 ? errno : EIO;
}

bool WholeFile::Write(const void* bytes, std::size_t size) {
  if (failure == 0) Note(std::fwrite(bytes, 1, size, file) == size);
  return failure == 0;
}

bool WholeFile::Finish(std::string& error) {
  std::error_code renaming;
  if (failure == 0) Note(std::fflush(file) == 0);
  if (failure == 0) {
    Note(std::fclose(file) == 0);
    file = nullptr;
    std::filesystem::rename(temporaryPath, finalPath, renaming);
  }
  if (failure == 0 && !renaming) return true;
  error = finalPath.string() + ": it cannot be written: " +
          (failure != 0 ? std::string(std::strerror(failure)) : renaming.message());
  std::error_code ignored;
  if (file == nullptr) std::filesystem::remove(temporaryPath, ignored);
  return false;
}

}  // namespace zovhost
