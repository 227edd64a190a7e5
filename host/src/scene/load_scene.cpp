#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <new>
#include <utility>

#include "scene/contained_import.h"
#include "zovhost/scene.h"

namespace zovhost {

namespace {

constexpr double IMPORT_SHARE = 0.7;  // of the progress; the rest goes to the ray index
constexpr const char* CANCELLED = "loading it was broken off";
constexpr std::size_t LONGEST_REASON = 300;

// Never falls, whatever the importer claims.
class MonotoneProgress {
 public:
  explicit MonotoneProgress(const Progress& target) : progress(target) {}
  // False once the load is broken off.
  bool Report(double fraction, const char* what) {
    if (std::isfinite(fraction)) reached = std::clamp(fraction, reached, 1.0);
    wanted = wanted && (!progress || progress(reached, what));
    return wanted;
  }
  bool IsWanted() const { return wanted; }

 private:
  const Progress& progress;
  double reached = 0.0;
  bool wanted = true;
};

// Names and reasons come from files, so they may hold anything.
std::string MakeLine(const std::string& text) {
  std::string line;
  for (const char c : text) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    if (!control)
      line += c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  while (!line.empty() && (line.back() == ' ' || line.back() == '.')) line.pop_back();
  return line;
}

std::string MakeReason(const std::string& text) {
  const std::string line = MakeLine(text);
  return line.size() <= LONGEST_REASON ? line : line.substr(0, LONGEST_REASON) + "...";
}

// The importer of PLY files turns in circles on a header without an end. By the first bytes, as it goes by
// them.
bool IsCutOffPly(std::istream& file) {
  constexpr std::size_t longest = std::size_t{1} << 20;
  std::string head(longest, '\0');
  file.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(file.gcount()));
  if (head.compare(0, 3, "ply") != 0) return false;
  const bool asWord = head.size() == 3 || std::isspace(static_cast<unsigned char>(head[3])) != 0;
  return asWord && head.find("end_header") == std::string::npos;
}

// The reasons that do not need an importer; empty when there are none.
std::string FindObstacle(const std::filesystem::path& path) {
  std::error_code failure;
  const std::filesystem::file_status status = std::filesystem::status(path, failure);
  if (status.type() == std::filesystem::file_type::not_found) return "there is no such file";
  if (failure) return failure.message();
  if (std::filesystem::is_directory(status)) return "it is a directory, not a model file";
  if (!std::filesystem::is_regular_file(status)) return "it is not a regular file";
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::string("it cannot be opened: ") + std::strerror(errno);
  if (file.peek() == std::ifstream::traits_type::eof()) return "the file is empty";
  return IsCutOffPly(file) ? "its header has no end" : "";
}

}  // namespace

std::unique_ptr<Scene> LoadScene(const std::filesystem::path& path, const Progress& progress,
                                 std::string& error) try {
  MonotoneProgress monotone(progress);
  const Progress importing = [&monotone](double fraction, const char* what) {
    return monotone.Report(fraction * IMPORT_SHARE, what);
  };
  const Progress making = [&monotone](double fraction, const char* what) {
    return monotone.Report(IMPORT_SHARE + fraction * (1.0 - IMPORT_SHARE), what);
  };
  const auto fail = [&](const std::string& reason) {
    error = MakeLine(path.string()) + ": " + MakeReason(monotone.IsWanted() ? reason : CANCELLED);
    return nullptr;
  };
  if (!monotone.Report(0.0, "Reading the file")) return fail({});
  const std::string obstacle = FindObstacle(path);
  if (!obstacle.empty()) return fail(obstacle);

  SceneData data;
  std::string reason;
  const bool imported = ImportContained(path, GetImportLimits(path), importing, data, reason);
  if (!imported || !monotone.IsWanted()) return fail(reason);
  for (std::string& warning : data.warnings) warning = MakeReason(warning);
  std::unique_ptr<Scene> scene = MakeScene(std::move(data), making, reason);
  if (scene == nullptr || !monotone.Report(1.0, "Done")) return fail(reason);
  return scene;
} catch (const std::bad_alloc&) {
  error = MakeLine(path.string()) + ": there is not enough memory for it";
  return nullptr;
}

}  // namespace zovhost
