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

/// The files of a tour. They are written into a folder beside their place and moved there together at the
/// end; a tour that fails leaves nothing behind. Pictures are compressed on a thread of their own while the
/// next ones are drawn.
class TourOutput {
 public:
  /// `title` names the model.
  TourOutput(const std::filesystem::path& directory, std::string title);
  /// Removes what was not published.
  ~TourOutput();
  TourOutput(const TourOutput&) = delete;
  TourOutput& operator=(const TourOutput&) = delete;

  // Each of these is false on failure, with one line in `error`.

  bool Begin(std::string& error);
  /// `onSheet`: it appears on the contact sheet as well, under its caption.
  /// An earlier picture's failure is told here too.
  bool Add(zovhost::Image picture, const std::string& caption, bool onSheet, std::string& error);
  /// Writes the sheet, the animation and the page, and moves everything to its place. Pictures of an
  /// earlier, longer tour are removed there; nothing else is touched.
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
  void RemoveOldPictures();

  std::filesystem::path directory;
  std::filesystem::path partial;
  std::string title;
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
