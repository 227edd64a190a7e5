#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>

namespace zovhost {

/// All bytes of a file that has `most` of them at most. False, with `bytes` as they were, puts one line that
/// names the file into `error`.
bool ReadWholeFile(const std::filesystem::path& path, std::size_t most, std::string& bytes,
                   std::string& error);

/// Where what is written to `path` arrives: the file to which a symbolic link leads, over however many
/// others. A link that leads nowhere, or round in a circle, is itself the place, as is every path that is
/// none.
std::filesystem::path FollowLinks(const std::filesystem::path& path);

/// A file that appears whole or not at all: it is written under a temporary name beside its place, where
/// links lead to, and takes its name when everything has arrived. Dropped without Finish, it leaves nothing
/// behind.
class WholeFile {
 public:
  explicit WholeFile(const std::filesystem::path& path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Appends. After a failure everything further fails too.
  bool Write(const void* bytes, std::size_t size);
  bool HasFailed() const { return failure != 0; }
  /// Gives the file its name. False puts one line that names the file into `error`.
  bool Finish(std::string& error);

 private:
  void Note(bool success);

  const std::filesystem::path givenPath;
  const std::filesystem::path finalPath;
  std::filesystem::path temporaryPath;
  std::FILE* file = nullptr;
  int failure = 0;  // the system's error number of the first failure
};

}  // namespace zovhost
