#pragma once

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "zovhost/image.h"
#include "zovhost/picture.h"

namespace zovview {

/// What a film is called in its files, and how fast it is.
struct FilmLabels {
  std::string title;
  std::string subtitle;
  std::string animation = "tour.webp";  ///< The name of the file.
  int millisecondsPerPicture = 0;
};

/// The files of a film: its pictures, a sheet of some of them, an animation and a page that shows it. They
/// are written into a folder beside their place and moved there together at the end; a film that fails or is
/// broken off leaves nothing behind. Pictures are compressed on a thread of their own while the next ones are
/// drawn.
class FilmOutput {
 public:
  FilmOutput(const std::filesystem::path& directory, FilmLabels labels);
  /// Removes what was not published.
  ~FilmOutput();
  FilmOutput(const FilmOutput&) = delete;
  FilmOutput& operator=(const FilmOutput&) = delete;

  // Each of these is false on failure, with one line in `error`.

  bool Begin(std::string& error);
  /// `onSheet`: it appears on the contact sheet as well, under its caption.
  /// An earlier picture's failure is told here too.
  bool Add(zovhost::Image picture, const std::string& caption, bool onSheet, std::string& error);
  /// Whether a film in this folder replaces files that are there.
  static bool ReplacesFiles(const std::filesystem::path& directory, const std::string& animation);
  /// Writes the sheet, the animation and the page, and moves everything to its place. Pictures of an
  /// earlier, longer film, which its page counts, are removed there; nothing else is touched.
  bool Publish(std::string& error);

  int GetPictureCount() const { return pictureCount; }
  const std::filesystem::path& GetDirectory() const { return directory; }

 private:
  struct Job {
    zovhost::Image picture;
    std::filesystem::path path;
  };
  void WritePictures();
  bool WritePicture(const Job& job, std::string& error);
  bool FinishPictures(std::string& error);

  bool WriteSheet(std::string& error);
  bool WritePage(std::string& error);
  bool MoveInPlace(std::string& error);
  void RemoveOldPictures(int formerCount) const;

  std::filesystem::path directory;
  std::filesystem::path partial;
  FilmLabels labels;
  int pictureCount = 0;
  std::vector<zovhost::LabelledImage> sheetPictures;
  zovhost::AnimationWriter animation;  // the writer's, while it runs

  std::thread writer;
  std::mutex mutex;  // of what follows
  std::condition_variable changed;
  std::deque<Job> jobs;
  bool finishing = false;
  std::string writeError;
};

}  // namespace zovview
