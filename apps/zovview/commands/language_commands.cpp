#include "commands/language_commands.h"

#include <string_view>

#include "commands/view_commands.h"
#include "views/preferences.h"

namespace zovview {

const zovhost::Language& FindLanguage(const Preferences& preferences) {
  for (const std::string& tag : {preferences.GetSessionLanguage(), preferences.Get().language}) {
    if (const zovhost::Language* const language = zovhost::FindLanguage(tag)) return *language;
  }
  return zovhost::GetUsersLanguage();
}

void ChooseLanguage(const ViewTarget& target, const char* tag) {
  if (target.preferences == nullptr) return;
  target.preferences->SetSessionLanguage({});
  target.preferences->Edit([tag](Choices& choices) { choices.language = tag; });
}

bool IsLanguageChosen(const ViewTarget& target, const char* tag) {
  if (target.preferences == nullptr) return false;
  const std::string& session = target.preferences->GetSessionLanguage();
  const std::string& chosen = session.empty() ? target.preferences->Get().language : session;
  const zovhost::Language* const language = zovhost::FindLanguage(chosen);
  return (language != nullptr ? language->tag : std::string_view()) == tag;
}

}  // namespace zovview
