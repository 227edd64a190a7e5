#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "recordings/recording.h"

namespace zovview {

/// Writes what happens to a view into a file, which comes to stand in its place at the end.
class Recorder {
 public:
  /// Null when the file cannot be written; `error` then holds one line.
  static std::unique_ptr<Recorder> Create(const std::filesystem::path& file, std::string& error);
  ~Recorder();
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  /// A model stands in its start view: time begins, and what happened before is forgotten.
  void Begin(const Recording& header);
  bool HasBegun() const { return begun; }
  /// What comes before the begin, repetitions of a key, and what a recording has no words for are left out.
  void Add(const zovhost::WindowEvent& event);
  void Add(const ViewCommand& command);
  void Add(const DeviceEvent& event);
  void Add(const Korvane::FitMargins& margins);
  /// A flight to this camera.
  void Add(const Korvane::CameraParameters& camera);
  /// False when not all could be written, or nothing was ever begun; `error` then holds one line, and no file
  /// is left.
  bool Finish(std::string& error);

 private:
  explicit Recorder(std::filesystem::path file);
  std::uint32_t GetTime() const;

  std::filesystem::path file;
  std::filesystem::path target;  // where the links of that lead
  std::filesystem::path partial;
  std::ofstream output;
  bool begun = false;
  std::uint32_t start = 0;
};

}  // namespace zovview
