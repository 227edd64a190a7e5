#include "files/film_output.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

namespace zovview {

namespace fs = std::filesystem;

namespace {

constexpr int SHEET_COLUMNS = 4;
constexpr int THUMBNAIL_WIDTH = 400;
constexpr std::size_t LONGEST_QUEUE = 4;  // pictures that wait to be written
constexpr const char* PAGE = "index.html";
constexpr const char* SHEET = "contact_sheet.png";
constexpr const char* COUNT_MARK = "<meta name=\"zovtools-pictures\" content=\"";  // and the number
constexpr std::size_t PAGE_HEAD = 4096;   // bytes of a page, in which it stands
constexpr int MOST_PICTURES = 1'000'000;  // that anybody believes

std::string PictureName(int number) {
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "%03d.png", number);
  return name.data();
}

std::string EscapeHtml(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

// Of the film that wrote this page; 0 for none of this program's.
int ReadPictureCount(const fs::path& page) {
  std::error_code ignored;
  if (!fs::is_regular_file(page, ignored)) return 0;
  std::ifstream input(page, std::ios::binary);
  std::string head(PAGE_HEAD, '\0');
  input.read(head.data(), static_cast<std::streamsize>(head.size()));
  const std::string_view mark = COUNT_MARK;
  const std::size_t at = head.find(mark);
  if (at == std::string::npos) return 0;
  int count = 0;
  std::from_chars(head.data() + at + mark.size(), head.data() + head.size(), count);
  return std::clamp(count, 0, MOST_PICTURES);
}

std::string Describe(const fs::path& path, const std::error_code& failure) {
  return path.string() + ": " + failure.message();
}

}  // namespace

FilmOutput::FilmOutput(const fs::path& place, FilmLabels texts)
    : directory(fs::absolute(place).lexically_normal()), labels(std::move(texts)) {
  if (!directory.has_filename()) directory = directory.parent_path();  // "out/" names "out"
}

FilmOutput::~FilmOutput() {
  std::string ignoredError;
  FinishPictures(ignoredError);
  std::error_code ignored;
  if (!partial.empty()) fs::remove_all(partial, ignored);
}

bool FilmOutput::Begin(std::string& error) {
  std::error_code failure;
  if (fs::exists(directory, failure) && !fs::is_directory(directory, failure)) {
    error = directory.string() + ": is not a folder";
    return false;
  }
  // Beside the place, so that moving is renaming.
  const fs::path beside =
      directory.parent_path() / std::string(".").append(directory.filename().string()).append(".partial");
  fs::remove_all(beside, failure);
  if (!fs::create_directories(beside, failure)) {
    error = Describe(beside, failure);
    return false;
  }
  partial = beside;
  writer = std::thread([this] { WritePictures(); });
  return true;
}

bool FilmOutput::Add(zovhost::Image picture, const std::string& caption, bool onSheet, std::string& error) {
  const std::string name = PictureName(pictureCount);
  if (onSheet) {
    const int tenths = pictureCount * labels.millisecondsPerPicture / 100;
    sheetPictures.push_back({picture, name + "  " + std::to_string(tenths / 10) + "." +
                                          std::to_string(tenths % 10) + " s  " + caption});
  }
  ++pictureCount;

  std::unique_lock lock(mutex);
  changed.wait(lock, [this] { return jobs.size() < LONGEST_QUEUE || !writeError.empty(); });
  error = writeError;
  if (!error.empty()) return false;
  jobs.push_back({std::move(picture), partial / name});
  changed.notify_all();
  return true;
}

// ---- the writer's thread ----

void FilmOutput::WritePictures() {
  std::unique_lock lock(mutex);
  while (writeError.empty()) {
    changed.wait(lock, [this] { return !jobs.empty() || finishing; });
    if (jobs.empty()) return;
    const Job job = std::move(jobs.front());
    jobs.pop_front();
    changed.notify_all();
    lock.unlock();
    std::string error;
    const bool written = WritePicture(job, error);
    lock.lock();
    if (!written) writeError = error;
    changed.notify_all();
  }
}

bool FilmOutput::WritePicture(const Job& job, std::string& error) {
  return zovhost::WritePng(job.path, job.picture, error) &&
         animation.Add(job.picture, labels.millisecondsPerPicture, error);
}

bool FilmOutput::FinishPictures(std::string& error) {
  if (!writer.joinable()) return writeError.empty();
  {
    const std::lock_guard lock(mutex);
    finishing = true;
    changed.notify_all();
  }
  writer.join();
  error = writeError;
  return writeError.empty();
}

// ---- the rest ----

bool FilmOutput::Publish(std::string& error) {
  return FinishPictures(error) && WriteSheet(error) && animation.Write(partial / labels.animation, error) &&
         WritePage(error) && MoveInPlace(error);
}

bool FilmOutput::WriteSheet(std::string& error) {
  zovhost::ContactSheetParameters parameters;
  parameters.title = labels.title;
  parameters.subtitle = labels.subtitle;
  parameters.columns = SHEET_COLUMNS;
  parameters.thumbnailWidth = THUMBNAIL_WIDTH;
  zovhost::Image sheet;
  return zovhost::MakeContactSheet(sheetPictures, parameters, sheet, error) &&
         zovhost::WritePng(partial / SHEET, sheet, error);
}

bool FilmOutput::WritePage(std::string& error) {
  const fs::path path = partial / PAGE;
  std::ofstream page(path);
  page << "<!doctype html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
       << COUNT_MARK << pictureCount << "\">\n<title>" << EscapeHtml(labels.title)
       << "</title>\n<style>body{font-family:sans-serif;margin:2rem auto;max-width:80rem;"
          "background:#f4f5f6;color:#222}img{max-width:100%}</style>\n<h1>"
       << EscapeHtml(labels.title) << "</h1>\n<p><img src=\"" << EscapeHtml(labels.animation)
       << "\" alt=\"The film\"></p>\n"
          "<p><img src=\"contact_sheet.png\" alt=\"Contact sheet of the film\"></p>\n</html>\n";
  page.close();
  if (page) return true;
  error = path.string() + ": cannot be written";
  return false;
}

bool FilmOutput::MoveInPlace(std::string& error) {
  std::error_code failure;
  const int formerCount = ReadPictureCount(directory / PAGE);
  fs::create_directories(directory, failure);
  std::vector<fs::path> files;
  fs::directory_iterator file(partial, failure);
  for (; !failure && file != fs::directory_iterator(); file.increment(failure)) files.push_back(file->path());
  for (const fs::path& each : files) {
    if (!failure) fs::rename(each, directory / each.filename(), failure);
  }
  if (failure) {
    error = Describe(directory, failure);
    return false;
  }
  RemoveOldPictures(formerCount);
  return true;
}

void FilmOutput::RemoveOldPictures(int formerCount) const {
  std::error_code ignored;
  for (int number = pictureCount; number < formerCount; ++number) {
    fs::remove(directory / PictureName(number), ignored);
  }
}

bool FilmOutput::ReplacesFiles(const fs::path& directory, const std::string& animation) {
  const std::string names[] = {PictureName(0), SHEET, PAGE, animation};
  return std::any_of(std::begin(names), std::end(names), [&directory](const std::string& name) {
    std::error_code ignored;
    return fs::exists(directory / name, ignored);
  });
}

}  // namespace zovview
