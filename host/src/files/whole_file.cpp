#include "zovhost/whole_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>
#include <utility>

namespace zovhost {

namespace {

// Not by its size: that of some files of the system is 0, and a file may grow meanwhile. Null, or what is
// wrong.
const char* ReadBytes(std::istream& input, std::size_t most, std::string& bytes) {
  std::array<char, 65'536> chunk;
  while (input && bytes.size() <= most) {
    input.read(chunk.data(), chunk.size());
    bytes.append(chunk.data(), static_cast<std::size_t>(input.gcount()));
  }
  if (input.bad()) return "it cannot be read";
  return bytes.size() > most ? "it is too large" : nullptr;
}

}  // namespace

bool ReadWholeFile(const std::filesystem::path& path, std::size_t most, std::string& bytes,
                   std::string& error) {
  const auto fail = [&](const std::string& reason) {
    error = path.string() + ": " + reason;
    return false;
  };
  std::error_code failure;
  const std::filesystem::file_status status = std::filesystem::status(path, failure);
  if (failure) return fail(failure.message());
  if (!std::filesystem::is_regular_file(status)) return fail("it is no file");
  std::ifstream input(path, std::ios::binary);
  if (!input) return fail("it cannot be opened");
  std::string read;
  if (const char* const wrong = ReadBytes(input, most, read)) return fail(wrong);
  bytes = std::move(read);
  return true;
}

std::filesystem::path FollowLinks(const std::filesystem::path& path) {
  std::error_code failure;
  if (!std::filesystem::is_symlink(path, failure)) return path;
  const std::filesystem::path target = std::filesystem::canonical(path, failure);
  return failure ? path : target;
}

WholeFile::WholeFile(const std::filesystem::path& path)
    : givenPath(path), finalPath(FollowLinks(path)), temporaryPath(finalPath) {
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
  error = givenPath.string() + ": it cannot be written: " +
          (failure != 0 ? std::string(std::strerror(failure)) : renaming.message());
  std::error_code ignored;
  if (file == nullptr) std::filesystem::remove(temporaryPath, ignored);
  return false;
}

}  // namespace zovhost
