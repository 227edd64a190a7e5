#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "view_commands.h"
#include "zovhost/window.h"

namespace zovview {

/// Something that happened to a view, in a recording.
struct RecordedEvent {
  std::uint32_t time = 0;  ///< Milliseconds from the start of the recording.
  /// Of a window. Resized: to `x` by `y` pixels. FileDropped: the file has been opened.
  zovhost::WindowEvent event;
  const ViewCommand* command = nullptr;  ///< Instead of an event, where it is not null.
};

/// What a user did, and with what; docs/recordings.md tells the format of the file.
struct Recording {
  std::string model;  ///< "house", "building", or "file" and a path.
  int width = 0;      ///< Pixels.
  int height = 0;
  bool orthographic = false;
  std::vector<RecordedEvent> events;  ///< In the order of time.
  std::uint32_t end = 0;              ///< Milliseconds.
};

constexpr int LARGEST_RECORDED_SIDE = 8192;
constexpr std::uint32_t LONGEST_RECORDING = 3'600'000;  // milliseconds

/// False for a recording that is broken anywhere; `error` then holds the line and what is wrong with it.
bool ReadRecording(std::istream& input, Recording& recording, std::string& error);

/// Repetitions of a key, keys without a name, closing and such paths as no line holds have none.
bool HasWords(const zovhost::WindowEvent& event);

/// The shortest text that is read as the same number again.
std::string FormatNumber(double value);
std::string FormatHeader(const Recording& recording);
/// One line.
std::string FormatEvent(const RecordedEvent& event);
std::string FormatEnd(std::uint32_t time);

}  // namespace zovview
