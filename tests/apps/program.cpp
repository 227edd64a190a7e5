#include "program.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace apps_test {

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Redirect(int stream, const fs::path& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(file, stream);
  close(file);
}

[[noreturn]] void BecomeViewer(const std::vector<std::string>& arguments, const fs::path& out,
                               const fs::path& error) {
  Redirect(STDOUT_FILENO, out);
  Redirect(STDERR_FILENO, error);
  unsetenv("DISPLAY");
  unsetenv("WAYLAND_DISPLAY");
  unsetenv("SDL_VIDEODRIVER");
  std::vector<std::string> words = {ZOVVIEW_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  execv(argv[0], argv.data());
  _exit(127);
}

}  // namespace

ProgramResult RunViewer(const std::vector<std::string>& arguments) {
  const TemporaryFolder folder;
  const fs::path out = folder.GetPath() / "out";
  const fs::path error = folder.GetPath() / "error";
  const pid_t child = fork();
  if (child == 0) BecomeViewer(arguments, out, error);
  int status = 0;
  ProgramResult result;
  rusage used{};
  if (child > 0 && wait4(child, &status, 0, &used) == child && WIFEXITED(status)) {
    result.exitCode = WEXITSTATUS(status);
  }
  result.peakMegabytes = static_cast<double>(used.ru_maxrss) / 1024.0;
  result.out = ReadFile(out);
  result.error = ReadFile(error);
  return result;
}

int CountLines(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

std::string LastLine(const std::string& text) {
  const std::size_t end = text.find_last_not_of('\n');
  if (end == std::string::npos) return {};
  const std::size_t before = text.rfind('\n', end);
  const std::size_t begin = before == std::string::npos ? 0 : before + 1;
  return text.substr(begin, end + 1 - begin);
}

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "zovview-test-XXXXXX").string();
  path = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path, ignored);
}

fs::path TemporaryFolder::Write(const std::string& name, const std::string& contents) const {
  std::ofstream(path / name, std::ios::binary) << contents;
  return path / name;
}

bool TemporaryFolder::IsEmpty() const { return fs::is_empty(path); }

}  // namespace apps_test
