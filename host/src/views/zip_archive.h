#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct zip;

namespace zovhost {

/// The files of a zip archive in memory.
class ZipReader {
 public:
  /// The bytes must outlive it. Null puts one line into `error`.
  static std::unique_ptr<ZipReader> Open(std::string_view bytes, std::string& error);
  ~ZipReader();
  ZipReader(const ZipReader&) = delete;
  ZipReader& operator=(const ZipReader&) = delete;

  std::size_t GetCount() const;
  /// Empty for one whose name cannot be had.
  std::string GetName(std::size_t index) const;
  /// Not more than `most` bytes. False puts what is wrong into `error`.
  bool Read(std::size_t index, std::size_t most, std::string& bytes, std::string& error) const;

 private:
  explicit ZipReader(zip* opened) : archive(opened) {}

  zip* archive;
};

struct ZipEntry {
  std::string name;
  std::string bytes;
  bool compressed = true;
};

/// False puts one line into `error`.
bool WriteZip(const std::vector<ZipEntry>& entries, std::string& bytes, std::string& error);

}  // namespace zovhost
