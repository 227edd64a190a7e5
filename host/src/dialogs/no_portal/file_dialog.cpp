// Where the library of the desktop's portal is not to be had.
#include "zovhost/file_dialog.h"

#include <utility>

namespace zovhost {

class FileDialog::Impl {
 public:
  std::function<void()> wake;
  bool asking = false;
};

bool FileDialog::IsBuiltIn() { return false; }
bool FileDialog::IsAvailable() { return false; }

FileDialog::FileDialog(std::function<void()> wake) : impl(std::make_unique<Impl>()) {
  impl->wake = std::move(wake);
}
FileDialog::~FileDialog() = default;

bool FileDialog::Ask([[maybe_unused]] const Question& question) {
  if (std::exchange(impl->asking, true)) return false;
  if (impl->wake) impl->wake();
  return true;
}

bool FileDialog::IsAsking() const { return impl->asking; }

std::optional<FileDialog::Answer> FileDialog::TakeAnswer() {
  if (!std::exchange(impl->asking, false)) return std::nullopt;
  return Answer{};
}

void FileDialog::Close() {}

}  // namespace zovhost
