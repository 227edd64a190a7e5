#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace zovview {

/// A file that the user is asked for.
struct FileQuestion {
  const char* text = "";    ///< What it is for, a line.
  const char* button = "";  ///< What is done with it, a word.
  bool saves = false;       ///< It is written, over whatever is there.
  std::filesystem::path suggestion = {};
  /// False, with one line in `error`, leaves the question open.
  std::function<bool(const std::filesystem::path& file, std::string& error)> take = {};
  std::filesystem::path present = {};  ///< Written over without a word; empty for none.
  /// Once the file is taken and the question closed. Empty: nothing.
  std::function<void()> then = {};
};

}  // namespace zovview
