#pragma once

#include <functional>
#include <string>

#include "files/file_question.h"
#include "zovhost/file_dialog.h"

namespace zovview {

/// Asks for files: by the desktop's dialog where there is one, in the window otherwise.
class FileDesk {
 public:
  struct Surroundings {
    std::function<void()> wake;  ///< From another thread: there is an answer to take.
    std::function<void(FileQuestion question)> askInWindow;
    /// One line for the user.
    std::function<void(const std::string& line)> tell;
  };

  explicit FileDesk(Surroundings around) : surroundings(std::move(around)), dialog(surroundings.wake) {}

  /// One at a time: while a dialog of the desktop's is open, that is told, and another is not asked.
  void Ask(FileQuestion wanted);
  void TakeAnswer();
  /// A dialog of the desktop's is open.
  bool IsAsking() const { return dialog.IsAsking(); }

 private:
  Surroundings surroundings;
  FileQuestion question;
  zovhost::FileDialog dialog;
};

}  // namespace zovview
