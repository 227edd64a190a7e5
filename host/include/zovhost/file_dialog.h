#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zovhost {

/// The desktop's own dialog for files, by its portal. It belongs to another program and stands beside the
/// window, which goes on meanwhile; the answer comes later. Where the kit was made without the portal, or the
/// desktop has none, the answer is Unavailable, and the host asks in a way of its own.
///
/// All calls belong on one thread.
class FileDialog {
 public:
  struct Filter {
    std::string name;                   ///< UTF-8, for the user: "Models".
    std::vector<std::string> patterns;  ///< Such as "*.obj".
  };
  struct Question {
    enum class Kind : int { Open, Save };
    Kind kind = Kind::Open;
    std::string title;             ///< UTF-8.
    std::filesystem::path folder;  ///< Where it begins, for Save; empty: where the desktop thinks best.
    std::string name;              ///< Of the file that is to be saved, a suggestion; UTF-8.
    std::vector<Filter> filters;   ///< The first is the one that is chosen. None: every file.
  };
  struct Answer {
    enum class Kind : int { Chosen, Cancelled, Unavailable };
    Kind kind = Kind::Unavailable;
    std::filesystem::path file;  ///< Of Chosen; on this machine, and absolute.
  };

  /// Whether the kit was made with the portal.
  static bool IsBuiltIn();
  /// Whether there may be one: the kit was made with the portal, and the process is in a session of a
  /// desktop.
  static bool IsAvailable();

  /// `wake` is called when an answer has come, from another thread; see Window::Wake. Empty: nobody is.
  explicit FileDialog(std::function<void()> wake);
  /// Closes a dialog that is open.
  ~FileDialog();
  FileDialog(const FileDialog&) = delete;
  FileDialog& operator=(const FileDialog&) = delete;

  /// False while one is open, or while its answer has not been taken, and where the system has no thread for
  /// it.
  bool Ask(const Question& question);
  bool IsAsking() const;
  /// None while there is none.
  std::optional<Answer> TakeAnswer();
  /// The answer will be Cancelled.
  void Close();

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
