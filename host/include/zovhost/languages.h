#pragma once

#include <span>
#include <string_view>

namespace zovhost {

/// A language that the kit has its texts in.
struct Language {
  std::string_view tag;      // BCP 47: "de", "zh"
  std::string_view ownName;  // in the language itself, as a list of languages shows it; UTF-8
  bool rightToLeft = false;
  std::string_view englishName = {};
};

/// English first, then by their tags. They live as long as the process.
std::span<const Language> GetLanguages();

/// The language that whoever asks for `wanted` can read: a tag or the name of a locale, in any case, as "de",
/// "pt-BR" or "de_AT.UTF-8". Null when the kit has none: Chinese in traditional characters is another one.
const Language* FindLanguage(std::string_view wanted);

/// What the user has chosen for the desktop, by the environment: the first of the list in LANGUAGE that the
/// kit has, else the locale of messages (LC_ALL, LC_MESSAGES, LANG). English when there is none of these.
const Language& GetUsersLanguage();

}  // namespace zovhost
