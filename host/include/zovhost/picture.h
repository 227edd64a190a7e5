#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "zovhost/image.h"

namespace zovhost {

/// Writes a PNG. The file appears whole or not at all: it is written beside its place and renamed.
/// False puts one line into `error`; an image without pixels is refused.
bool WritePng(const std::filesystem::path& path, const Image& image, std::string& error);

/// The same into memory, for what is no file of its own.
bool EncodePng(const Image& image, std::string& bytes, std::string& error);

struct LabelledImage {
  Image image;
  std::string label;  // UTF-8, one line; too long a label ends in an ellipsis
};

struct ContactSheetParameters {
  std::string title;         // UTF-8; empty: no heading
  std::string subtitle;      // smaller, below the title
  int columns = 4;           // fewer when there are fewer pictures
  int thumbnailWidth = 480;  // pixels; pictures keep their proportions
};

/// Arranges pictures in rows on a light sheet, each with its label below. False puts one line into `error`;
/// no pictures, or one without pixels, are refused.
bool MakeContactSheet(const std::vector<LabelledImage>& pictures, const ContactSheetParameters& parameters,
                      Image& sheet, std::string& error);

/// Collects frames of one size into an animation (animated WebP, which every current browser plays) that
/// repeats for ever. Frames are compressed as they come, so memory does not grow with their number.
class AnimationWriter {
 public:
  /// `quality` 0 to 100, of lossy compression.
  explicit AnimationWriter(float quality = 80.0f);
  ~AnimationWriter();
  AnimationWriter(const AnimationWriter&) = delete;
  AnimationWriter& operator=(const AnimationWriter&) = delete;

  /// Appends a frame that stands for `milliseconds`, 1 or more. The first frame sets the size.
  bool Add(const Image& frame, int milliseconds, std::string& error);
  /// Writes the file, whole or not at all, and ends the animation: later calls are refused.
  bool Write(const std::filesystem::path& path, std::string& error);

 private:
  struct State;
  std::unique_ptr<State> state;
};

}  // namespace zovhost
