#include "files/file_desk.h"

#include <optional>
#include <utility>

#include "zovhost/phrases.h"

namespace zovview {

using zovhost::FileDialog;

namespace {

constexpr const char* ALREADY_OPEN =
    "the desktop's dialog for files is open already, perhaps behind this window";

FileDialog::Question Translate(const FileQuestion& question) {
  using Kind = FileDialog::Question::Kind;
  FileDialog::Question asked;
  asked.kind = question.saves ? Kind::Save : Kind::Open;
  asked.title = zovhost::GetPhrases().SayPlain(question.text);
  asked.folder = question.suggestion.parent_path();
  const std::u8string name = question.suggestion.filename().u8string();
  if (question.saves) asked.name.assign(name.begin(), name.end());
  return asked;
}

}  // namespace

void FileDesk::Ask(FileQuestion wanted) {
  if (dialog.IsAsking()) return surroundings.tell(ALREADY_OPEN);
  question = std::move(wanted);
  const bool isAsked = FileDialog::IsAvailable() && dialog.Ask(Translate(question));
  if (!isAsked) surroundings.askInWindow(std::exchange(question, {}));
}

void FileDesk::TakeAnswer() {
  using Kind = FileDialog::Answer::Kind;
  const std::optional<FileDialog::Answer> answer = dialog.TakeAnswer();
  if (!answer.has_value()) return;
  std::string error;
  if (answer->kind == Kind::Unavailable) surroundings.askInWindow(std::exchange(question, {}));
  if (answer->kind != Kind::Chosen) return;
  const FileQuestion answered = std::exchange(question, {});  // what follows may ask another
  if (!answered.take(answer->file, error)) return surroundings.tell(error);
  if (answered.then) answered.then();
}

}  // namespace zovview
