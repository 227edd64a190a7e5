#include "zovhost/languages.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>

namespace zovhost {

namespace {

constexpr Language languages[] = {
    {"en", "English", false, "English"}, {"ar", "العربية", true, "Arabic"},
    {"de", "Deutsch", false, "German"},  {"es", "Español", false, "Spanish"},
    {"fr", "Français", false, "French"}, {"ja", "日本語", false, "Japanese"},
    {"pl", "Polski", false, "Polish"},   {"zh", "简体中文", false, "Chinese"},
};

// Of Chinese, whose two ways of writing have one tag.
constexpr std::string_view traditionalMarks[] = {"hant", "tw", "hk", "mo"};

char ToLower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

std::string_view TakePart(std::string_view& text, std::string_view ends) {
  const std::size_t end = text.find_first_of(ends);
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return part;
}

bool IsTraditional(std::string_view parts) {
  while (!parts.empty()) {
    const std::string_view part = TakePart(parts, "-_");
    if (std::ranges::find(traditionalMarks, part) != std::end(traditionalMarks)) return true;
  }
  return false;
}

const char* GetVariable(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
  return value != nullptr ? value : "";
}

// The first of these that is set is the one that counts.
std::string_view GetMessagesLocale() {
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::string_view value = GetVariable(name);
    if (!value.empty()) return value;
  }
  return {};
}

}  // namespace

std::span<const Language> GetLanguages() { return languages; }

const Language* FindLanguage(std::string_view wanted) {
  std::string name(wanted.substr(0, wanted.find_first_of(".@")));
  std::ranges::transform(name, name.begin(), ToLower);
  std::string_view rest = name;
  const std::string_view tag = TakePart(rest, "-_");
  const auto found = std::ranges::find(languages, tag, &Language::tag);
  if (found == std::end(languages) || (tag == "zh" && IsTraditional(rest))) return nullptr;
  return found;
}

// A locale of "C" has no translations, whatever the list says.
const Language& GetUsersLanguage() {
  const std::string_view locale = GetMessagesLocale();
  if (locale.empty() || locale == "C" || locale.starts_with("C.") || locale == "POSIX") return languages[0];
  std::string_view list = GetVariable("LANGUAGE");
  while (!list.empty()) {
    if (const Language* const language = FindLanguage(TakePart(list, ":"))) return *language;
  }
  const Language* const language = FindLanguage(locale);
  return language != nullptr ? *language : languages[0];
}

}  // namespace zovhost
