#pragma once

#include <array>
#include <cstddef>

#include "zovhost/languages.h"

namespace zovview {

class Preferences;
struct ViewTarget;

/// The languages to choose from, by their tags; the first is that of the environment.
inline constexpr std::array<const char*, 9> LANGUAGE_TAGS = {"",   "en", "de", "fr", "es",
                                                             "pl", "ar", "ja", "zh"};

/// The one that the program is to speak: of the session, or else the choice, or else of the environment.
const zovhost::Language& FindLanguage(const Preferences& preferences);

/// By a tag of LANGUAGE_TAGS. Nothing without preferences.
void ChooseLanguage(const ViewTarget& target, const char* tag);
bool IsLanguageChosen(const ViewTarget& target, const char* tag);

template <std::size_t INDEX>
void UseLanguage(const ViewTarget& target) {
  ChooseLanguage(target, LANGUAGE_TAGS[INDEX]);
}
template <std::size_t INDEX>
bool IsLanguage(const ViewTarget& target) {
  return IsLanguageChosen(target, LANGUAGE_TAGS[INDEX]);
}

}  // namespace zovview
