#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace apps_test {

struct ProgramResult {
  int exitCode = -1;  // -1: ended by a signal, or not started
  std::string out;
  std::string error;
  double peakMegabytes = 0.0;  // of memory that was resident
};

/// Runs the viewer without a display and waits for it.
ProgramResult RunViewer(const std::vector<std::string>& arguments);

int CountLines(const std::string& text);
std::string LastLine(const std::string& text);

/// A folder of its own for one test, removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& GetPath() const { return path; }
  /// A file in it with these contents.
  std::filesystem::path Write(const std::string& name, const std::string& contents) const;
  bool IsEmpty() const;

 private:
  std::filesystem::path path;
};

}  // namespace apps_test
